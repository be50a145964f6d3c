// Pictures and points: importing them, the page of one picture, and the tables of page documents.
#include "CommandRun.h"

#include <ZemImage.h>
#include <ZemVec.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>

#include <cmath>

namespace Zem::Support {
namespace {

constexpr char const *POINTS = "id,x [px],y [px],dx [px],dy [px],s [%]\n"
                               "1,10,5,2,0,1\n2,30,5,2,0,2\n3,10,25,2,0,3\n4,30,25,2,0,4\n";

/// A folder with a picture of 40 x 30 pixels: dark, with a bright spot about (25.25, 14.5).
class PicturePlace : public testing::Test
{
protected:
    static constexpr BaVec2d<double> SPOT{25.25, 14.5};

    void SetUp() override
    {
        place.write("field.csv", POINTS);
        writePicture("a.tif");
        writePicture("b.tif");
    }

    void writePicture(char const *name, unsigned int width = 40) const
    {
        Image16 picture(width, 30);
        for (unsigned int y = 0; y < 30; ++y) {
            for (unsigned int x = 0; x < width; ++x) {
                double const dx = x + 0.5 - SPOT.x;
                double const dy = y + 0.5 - SPOT.y;
                picture.getRow(y)[x] =
                    static_cast<std::uint16_t>(std::lround(60000.0 * std::exp(-(dx * dx + dy * dy) / 4.0)));
            }
        }
        ASSERT_TRUE(picture.saveImage(place.path(QLatin1StringView(name)), nullptr));
    }

    Workplace place;
};

bool contains(std::string const &text, char const *part)
{
    return text.find(part) != std::string::npos;
}

std::unique_ptr<ImageColor> readPage(Workplace const &place, char const *name)
{
    std::unique_ptr<Zem::Image> picture(Zem::Image::loadImage(place.path(QLatin1StringView(name)), nullptr, -1, -1));
    EXPECT_TRUE(picture);
    EXPECT_EQ(picture->getType(), Zem::Image::TYPE_COLOR);
    return std::unique_ptr<ImageColor>(static_cast<ImageColor *>(picture.release()));
}

/// The middle of what is bright in a part of a page, in its pixels.
BaVec2d<double> brightSpot(ImageColor const &page, unsigned int left, unsigned int top, unsigned int width,
                           unsigned int height)
{
    double sum = 0.0;
    BaVec2d<double> weighted;
    for (unsigned int y = top; y < top + height; ++y) {
        for (unsigned int x = left; x < left + width; ++x) {
            double const light = page.getPixel(x, y).getGreen();
            sum += light;
            weighted += BaVec2d<double>{x + 0.5, y + 0.5} * light;
        }
    }
    return weighted * (1.0 / sum);
}

} // namespace

TEST_F(PicturePlace, importsAStageFromEachFile)
{
    CommandResult const pictures =
        place.zemfig({"import", "--pictures", "a.tif", "b.tif", "--first-stage", "3", "--project", "p.zem"});
    EXPECT_EQ(pictures.exitCode, 0) << pictures.errors;
    EXPECT_EQ(pictures.output, "a.tif: stage 3 of 'camera'\nb.tif: stage 4 of 'camera'\n");
    CommandResult const points =
        place.zemfig({"import", "--points", "field.csv", "--first-stage", "4", "--project", "p.zem", "--json"});
    EXPECT_EQ(points.exitCode, 0) << points.errors;
    for (char const *const part : {"\"group\": \"field.4\"", "\"points\": 4", "\"dx\": \"dx\"", "\"id\": \"id\""})
        EXPECT_TRUE(contains(points.output, part)) << points.output;
}

TEST_F(PicturePlace, tellsWhyAPictureIsRefused)
{
    writePicture("c.tif", 50);
    CommandResult const size = place.zemfig({"import", "--pictures", "a.tif", "c.tif", "--project", "p.zem"});
    EXPECT_EQ(size.exitCode, 2);
    EXPECT_TRUE(contains(size.errors, "c.tif: 50 x 30 pixels, but view 'camera' has 40 x 30 pixels")) << size.errors;
    place.write("d.tif", "none");
    CommandResult const damaged = place.zemfig({"import", "--pictures", "d.tif", "--project", "p.zem"});
    EXPECT_EQ(damaged.exitCode, 2);
    EXPECT_TRUE(contains(damaged.errors, "d.tif")) << damaged.errors;
}

TEST_F(PicturePlace, makesAPageThatCanBeGoneOnWith)
{
    CommandResult const made = place.zemfig({"overlay", "a.tif", "--points", "field.csv", "--value", "s", "--painted",
                                             "-o", "page.png", "--save", "page.figure.toml", "--dpi", "100"});
    EXPECT_EQ(made.exitCode, 0) << made.errors;
    CommandResult const again = place.zemfig({"render", "page.figure.toml", "-o", "again.png", "--dpi", "100"});
    EXPECT_EQ(again.exitCode, 0) << again.errors;
    EXPECT_EQ(place.read("page.png"), place.read("again.png"));
    EXPECT_EQ(place.zemfig({"check", "page.figure.toml"}).output, "page.figure.toml: good\n");
}

TEST_F(PicturePlace, tellsOnThePageWhatThePointsAre)
{
    CommandResult const made =
        place.zemfig({"overlay", "a.tif", "--points", "field.csv", "-o", "page.svg", "--title", "Two $ & more"});
    EXPECT_EQ(made.exitCode, 0) << made.errors;
    std::string const page = place.read("page.svg").toStdString();
    for (char const *const text : {"Two", "$", "&amp;", "field.csv", "a.tif", "[%]", "2.500", "[px]"})
        EXPECT_TRUE(contains(page, text)) << text;
}

TEST_F(PicturePlace, refusesPointsThatItCannotPlace)
{
    place.write("bad.csv", "a,b\n1,2\n");
    CommandResult const result = place.zemfig({"overlay", "a.tif", "--points", "bad.csv", "-o", "page.png"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(contains(result.errors, "bad.csv: no column is known to hold x: name it")) << result.errors;
    EXPECT_FALSE(place.exists("page.png"));
    EXPECT_EQ(place.zemfig({"overlay", "a.tif", "--points", "field.csv"}).exitCode, 1);
}

TEST_F(PicturePlace, putsPixelsAndMarksWhereTheyBelong)
{
    // 40 pixels on 120 mm: a pixel is 3 mm, the spot lies at (20 + 75.75, 20 + 43.5) mm, at 254 dpi at ten times that.
    place.write(
        "page.figure.toml",
        "[[picture]]\nfile = \"a.tif\"\n[[points]]\nfile = \"spot.csv\"\n"
        "[[element]]\ntype = \"image\"\nname = \"plate\"\ntoken = \"camera\"\norigin = [80, 65]\nsize = [120, 90]\n"
        "[[element.look]]\nid = \"field\"\nvector_line_width = 6\n");
    place.write("spot.csv", "x,y,dx,dy\n25.25,14.5,0,0\n");
    ASSERT_EQ(place.zemfig({"render", "page.figure.toml", "-o", "marked.png", "--dpi", "254"}).exitCode, 0);
    place.write("spot.csv", "x,y,dx,dy\n1,1,0,0\n"); // away from the spot
    ASSERT_EQ(place.zemfig({"render", "page.figure.toml", "-o", "plain.png", "--dpi", "254"}).exitCode, 0);

    BaVec2d<double> const spot = brightSpot(*readPage(place, "plain.png"), 860, 540, 195, 190);
    EXPECT_NEAR(spot.x, 957.5, 3.0); // a tenth of a pixel of the picture is 3 pixels of the page
    EXPECT_NEAR(spot.y, 635.0, 3.0);
    // The mark is a dot of 6 mm; within it everything has its colour, the single colour of an empty scale.
    std::unique_ptr<ImageColor> const marked = readPage(place, "marked.png");
    Color const mark = marked->getPixel(957, 635);
    for (auto const &[dx, dy] : {std::pair(27, 0), std::pair(-27, 0), std::pair(0, 27), std::pair(0, -27)})
        EXPECT_EQ(marked->getPixel(static_cast<unsigned int>(957 + dx), static_cast<unsigned int>(635 + dy)), mark);
    for (auto const &[dx, dy] : {std::pair(34, 0), std::pair(-34, 0), std::pair(0, 34), std::pair(0, -34)})
        EXPECT_NE(marked->getPixel(static_cast<unsigned int>(957 + dx), static_cast<unsigned int>(635 + dy)), mark);
}

TEST_F(PicturePlace, changesTheCameraOfAView)
{
    auto const camera = [this](QStringList const &more) {
        return place.zemfig(QStringList{"camera", "--project", "p.zem"} + more);
    };
    ASSERT_EQ(place.zemfig({"import", "--pictures", "a.tif", "--project", "p.zem"}).exitCode, 0);
    EXPECT_TRUE(contains(camera({}).output, "width = 40\nheight = 30\nimage_distance = (1e+06, 1e+06)\n"));
    EXPECT_EQ(camera({"--plane", "2", "--origin", "5", "25", "--upwards"}).exitCode, 0);
    EXPECT_TRUE(contains(camera({}).output, "image_distance = (2e+06, 2e+06)\nprincipal_point = (5, 25)\n"));
    EXPECT_EQ(camera({"radial=(0.1, 0, 0)"}).exitCode, 0);
    EXPECT_TRUE(contains(camera({}).output, "radial = (0.1, 0, 0)\n")) << camera({}).output;
    CommandResult const size = camera({"width=41"});
    EXPECT_EQ(size.exitCode, 2);
    EXPECT_TRUE(contains(size.errors, "41 x 30 pixels, but view 'camera' has 40 x 30 pixels")) << size.errors;
    CommandResult const key = camera({"widht=41"});
    EXPECT_EQ(key.exitCode, 1);
    EXPECT_TRUE(contains(key.errors, "a camera has no 'widht' (did you mean 'width'?)")) << key.errors;
}

TEST_F(PicturePlace, isToldWhatIsWrongWithItsTables)
{
    auto const problem = [this](QByteArray const &tables) {
        place.write("page.figure.toml", tables);
        CommandResult const result = place.zemfig({"check", "page.figure.toml"});
        return result.output + result.errors;
    };
    EXPECT_TRUE(contains(problem("[[picture]]\nview = \"a\"\n"), "page.figure.toml:1: a picture wants a 'file'"));
    EXPECT_TRUE(contains(problem("[[picture]]\nfile = \"a.tif\"\nstages = 1\n"),
                         "page.figure.toml:1: unknown key 'stages' in [[picture]] (did you mean 'stage'?)"));
    EXPECT_TRUE(
        contains(problem("[[picture]]\nfile = \"a.tif\"\nkind = \"x\"\n"), "'kind' wants one of overlay, picture"));
    EXPECT_TRUE(
        contains(problem("[[points]]\nfile = \"field.csv\"\nmoved = \"perhaps\"\n"), "'moved' wants true or false"));
    EXPECT_TRUE(contains(problem("[[camera]]\nwidth = 3\nheight = 0.5\n"), "page.figure.toml:1: "));
    EXPECT_TRUE(contains(problem("[[camera]]\nwidth = 3\nheight = 3\nscale = 2\norigin = [1]\n"),
                         "'origin' wants two numbers"));
    EXPECT_TRUE(contains(problem("[[picture]]\nfile = \"a.tif\"\n[[element]]\ntype = \"image\"\nname = \"i\"\n"
                                 "token = \"camra\"\nsize = [10, 10]\norigin = [50, 50]\n"),
                         "image 'i': no data has the picture 'camra' (did you mean 'camera'?)"));
}

TEST_F(PicturePlace, showsLabelsOfWhatIsMeasured)
{
    place.write(
        "page.figure.toml",
        "[[picture]]\nfile = \"a.tif\"\n[[points]]\nfile = \"field.csv\"\n"
        "[[element]]\ntype = \"image\"\nname = \"plate\"\ntoken = \"camera\"\norigin = [80, 65]\nsize = [120, 90]\n"
        "[[element]]\ntype = \"image label\"\nlabel = \"line\"\nname = \"gauge\"\nconnect = [\"plate\"]\n"
        "image_label_element_id = \"field:1:2\"\norigin = [20, 150]\ntext = \"long $.1length$ px\"\n");
    EXPECT_EQ(place.zemfig({"check", "page.figure.toml"}).output, "page.figure.toml: good\n");
    CommandResult const result = place.zemfig({"render", "page.figure.toml", "-o", "page.svg"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(contains(place.read("page.svg").toStdString(), ">20.0"));
    ASSERT_EQ(place.zemfig({"convert", "page.figure.toml", "-o", "page.fig"}).exitCode, 0);
    ASSERT_EQ(place.zemfig({"convert", "page.fig", "-o", "back.figure.toml"}).exitCode, 0);
    EXPECT_TRUE(contains(place.read("back.figure.toml").toStdString(), "label = \"line\""));
}

TEST_F(PicturePlace, laysOutVectorsOfDepthAlone)
{
    place.write("deep.csv", "x [px],y [px],dz [mm]\n10,5,2\n30,25,4\n");
    CommandResult const made =
        place.zemfig({"overlay", "a.tif", "--points", "deep.csv", "-o", "page.svg", "--save", "page.figure.toml"});
    EXPECT_EQ(made.exitCode, 0) << made.errors;
    EXPECT_TRUE(contains(place.read("page.figure.toml").toStdString(), "length&nbsp;[mm]"));
}

} // namespace Zem::Support
