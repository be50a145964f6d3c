// What zemfig diff finds in two pages, and in two stages of one.
#include "CommandRun.h"

#include <ZemImage.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <memory>

namespace Zem::Support {
namespace {

constexpr int DIFFERENT = 4;
constexpr char DATA[] = "time [s],force [kN],note\n0,1,slow\n1,2.5,fast\n";

constexpr char PAGE[] = R"([page]
size = [100, 60]
[data]
file = "data.csv"
[[element]]
type = "label"
name = "title"
origin = [10, 10]
text = "Force $.1[N]force$, again $.1[N]force$, $note$"
[[element]]
type = "rectangle"
name = "box"
origin = [50, 40]
size = [20, 10]
)";

class Diff : public testing::Test
{
protected:
    void SetUp() override
    {
        place.write("data.csv", DATA);
        place.write("a.figure.toml", PAGE);
        place.write("b.figure.toml", PAGE);
    }

    /// The page with other words.
    void change(QByteArray const &before, QByteArray const &after) const
    {
        EXPECT_TRUE(QByteArray(PAGE).contains(before));
        place.write("b.figure.toml", QByteArray(PAGE).replace(before, after));
    }

    QJsonObject facts(QStringList const &arguments, int exitCode = DIFFERENT) const
    {
        CommandResult const result = place.zemfig(QStringList{"diff", "--json"} + arguments);
        EXPECT_EQ(result.exitCode, exitCode) << result.errors;
        EXPECT_EQ(result.errors, "");
        return QJsonDocument::fromJson(QByteArray::fromStdString(result.output)).object();
    }
    QJsonObject pages(int exitCode = DIFFERENT) const { return facts({"a.figure.toml", "b.figure.toml"}, exitCode); }

    std::unique_ptr<ImageColor> picture(QString const &name) const
    {
        std::unique_ptr<Image> image(Image::loadImage(place.path(name), nullptr, -1, -1));
        EXPECT_TRUE(dynamic_cast<ImageColor *>(image.get()));
        return std::unique_ptr<ImageColor>(static_cast<ImageColor *>(image.release()));
    }

    Workplace place;
};

TEST_F(Diff, ofEqualPagesIsEmpty)
{
    CommandResult const result = place.zemfig({"diff", "a.figure.toml", "b.figure.toml"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "equal: yes\n");
    EXPECT_EQ(pages(0), (QJsonObject{{"equal", true}}));
}

TEST_F(Diff, ofAFrozenPageAndTheLiveOneIsEmpty)
{
    ASSERT_EQ(place.zemfig({"freeze", "a.figure.toml", "--stage", "1", "-o", "a.snippet"}).exitCode, 0);
    EXPECT_EQ(facts({"a.snippet", "b.figure.toml", "--stage", "1"}, 0)["equal"], true);
    EXPECT_EQ(facts({"b.figure.toml", "a.snippet", "--stage", "1"}, 0)["equal"], true);
    EXPECT_EQ(facts({"a.snippet", "b.figure.toml", "--stage", "2"})["equal"], false);
}

TEST_F(Diff, ofTwoStagesHasValuesAndTheirDifference)
{
    QJsonObject const found = facts({"a.figure.toml", "--stage", "1", "--with-stage", "2"});
    QJsonArray const values{
        QJsonObject{
            {"name", "label 'title'"}, {"token", "force"}, {"a", "1000.0"}, {"b", "2500.0"}, {"difference", 1500}},
        QJsonObject{{"name", "label 'title'"}, {"token", "note"}, {"a", "slow"}, {"b", "fast"}}};
    EXPECT_EQ(found["values"].toArray(), values);
    EXPECT_FALSE(found.contains("texts"));
    // The box of the label grows about its corner: that is no move.
    EXPECT_FALSE(found.contains("moved"));
    EXPECT_FALSE(found.contains("resized"));
    EXPECT_GT(found["different_pixels"].toInt(), 0);
}

TEST_F(Diff, tellsItInWords)
{
    CommandResult const result = place.zemfig({"diff", "a.figure.toml", "--stage", "1", "--with-stage", "2"});
    EXPECT_EQ(result.exitCode, DIFFERENT);
    EXPECT_EQ(result.output.find("equal: no\nvalues:\n"
                                 "  label 'title': a 1000.0, b 2500.0, difference 1500, token force\n"
                                 "  label 'title': a slow, b fast, token note\n"
                                 "different pixels: "),
              0U)
        << result.output;
}

TEST_F(Diff, seesWhatTheDigitsOfALabelHide)
{
    place.write("data.csv", "time [s],force [kN],note\n0,1,x\n1,1.00001,x\n");
    QJsonObject const value =
        facts({"a.figure.toml", "--stage", "1", "--with-stage", "2"})["values"].toArray()[0].toObject();
    EXPECT_EQ(value["a"], "1000.000000000000");
    EXPECT_EQ(value["b"], "1000.010000000000");
    EXPECT_NEAR(value["difference"].toDouble(), 0.01, 1e-9);
}

TEST_F(Diff, takesTheStagesFromAProject)
{
    ASSERT_EQ(place.zemfig({"import", "data.csv", "--project", "p.zem"}).exitCode, 0);
    QJsonObject const found = facts({"a.figure.toml", "--stage", "1", "--with-stage", "2", "--project", "p.zem"});
    EXPECT_EQ(found["values"].toArray().size(), 2);
}

TEST_F(Diff, findsOtherTexts)
{
    change("again", "and <b>again</b>");
    EXPECT_EQ(pages()["texts"].toArray(), (QJsonArray{QJsonObject{{"name", "label 'title'"},
                                                                  {"a", "Force 2500.0, again 2500.0, fast"},
                                                                  {"b", "Force 2500.0, and again 2500.0, fast"}}}));
    // Where only the look of the text differs it is told as it stands.
    change("again", "<b>again</b>");
    EXPECT_TRUE(pages()["texts"].toArray()[0].toObject()["b"].toString().contains("<b>again</b>"));
}

TEST_F(Diff, findsMovedElements)
{
    change("[50, 40]", "[52, 39.5]");
    QJsonObject const found = pages();
    EXPECT_EQ(found["moved"].toArray(), (QJsonArray{QJsonObject{{"name", "rectangle 'box'"},
                                                                {"a", QJsonObject{{"x", 50}, {"y", 40}}},
                                                                {"b", QJsonObject{{"x", 52}, {"y", 39.5}}}}}));
    EXPECT_FALSE(found.contains("resized"));
    EXPECT_FALSE(found.contains("parameters"));
}

TEST_F(Diff, findsResizedElements)
{
    change("[20, 10]", "[20, 12]");
    QJsonObject const found = pages();
    EXPECT_EQ(found["resized"].toArray(), (QJsonArray{QJsonObject{{"name", "rectangle 'box'"},
                                                                  {"a", QJsonObject{{"x", 20}, {"y", 10}}},
                                                                  {"b", QJsonObject{{"x", 20}, {"y", 12}}}}}));
    EXPECT_FALSE(found.contains("moved"));
}

TEST_F(Diff, findsOtherParameters)
{
    change("size = [20, 10]", "size = [20, 10]\nborder = { width = 0.5 }");
    QJsonArray const parameters = pages()["parameters"].toArray();
    ASSERT_EQ(parameters.size(), 1);
    EXPECT_EQ(parameters[0].toObject()["name"], "rectangle 'box'");
    EXPECT_EQ(parameters[0].toObject()["parameter"], "border_width");
    EXPECT_EQ(parameters[0].toObject()["b"], "0.5");
}

TEST_F(Diff, findsAddedAndRemovedElements)
{
    QByteArray const more = "[[element]]\ntype = \"ellipse\"\nname = \"ring\"\norigin = [80, 20]\nsize = [9, 9]\n";
    place.write("b.figure.toml", PAGE + more);
    QJsonArray const ring{QJsonObject{{"name", "ellipse 'ring'"}, {"at", QJsonObject{{"x", 80}, {"y", 20}}}}};
    EXPECT_EQ(pages()["only_in_b"].toArray(), ring);
    EXPECT_EQ(facts({"b.figure.toml", "a.figure.toml"})["only_in_a"].toArray(), ring);
}

/// What is new stands in front: the names tell which is which all the same.
TEST_F(Diff, matchesElementsByNameFirst)
{
    QByteArray const front = "[[element]]\ntype = \"rectangle\"\nname = \"new\"\norigin = [9, 50]\nsize = [4, 4]\n";
    place.write("b.figure.toml",
                QByteArray(PAGE).replace("[[element]]\ntype = \"label\"", front + "[[element]]\ntype = \"label\""));
    QJsonObject const found = pages();
    EXPECT_EQ(found["only_in_b"].toArray()[0].toObject()["name"], "rectangle 'new'");
    EXPECT_FALSE(found.contains("moved"));
}

TEST_F(Diff, matchesElementsOfOtherNamesByTypeAndOrder)
{
    change("name = \"box\"", "name = \"frame\"");
    QJsonObject const found = pages();
    EXPECT_FALSE(found.contains("only_in_a"));
    EXPECT_EQ(
        found["parameters"].toArray(),
        (QJsonArray{QJsonObject{{"name", "rectangle 'box'"}, {"parameter", "name"}, {"a", "box"}, {"b", "frame"}}}));
}

TEST_F(Diff, findsPagesOfOtherSizes)
{
    change("size = [100, 60]", "size = [100, 80]");
    EXPECT_EQ(pages()["page"].toObject(), (QJsonObject{{"a", QJsonArray{100, 60}}, {"b", QJsonArray{100, 80}}}));
}

/// Neither a value nor an element tells of the background.
TEST_F(Diff, findsWhatOnlyThePictureShows)
{
    change("size = [100, 60]", "size = [100, 60]\nbackground = { filled = true, color = \"#ffffee\" }");
    QJsonObject const found = pages();
    EXPECT_EQ(found.keys(), (QStringList{"different_pixels", "equal"}));
    EXPECT_EQ(found["equal"], false);
}

TEST_F(Diff, findsOtherCurves)
{
    QByteArray const chart = "[[element]]\ntype = \"generic_chart\"\nname = \"chart\"\norigin = [50, 30]\n"
                             "size = [60, 30]\ntoken_x = \"time\"\n[[element.curve]]\ntoken = \"force\"\n";
    place.write("a.figure.toml", "[data]\nfile = \"data.csv\"\n" + chart);
    place.write("more.csv", "time [s],force [kN]\n0,1\n1,2.25\n2,3\n");
    place.write("b.figure.toml", "[data]\nfile = \"more.csv\"\n" + chart);
    QJsonObject const curve =
        facts({"a.figure.toml", "b.figure.toml", "--stage", "1"})["curves"].toArray()[0].toObject();
    // In newtons, which is what data are kept in.
    EXPECT_EQ(curve, (QJsonObject{{"name", "generic chart 'chart'"},
                                  {"curve", "force"},
                                  {"points_in_a", 2},
                                  {"points_in_b", 3},
                                  {"largest_difference_in_y", 250}}));
}

TEST_F(Diff, paintsWhatIsEqualPaleAndWhatOnlyOnePageHasInColour)
{
    place.write("a.figure.toml",
                "[page]\nsize = [50.8, 25.4]\n[[element]]\ntype = \"rectangle\"\nname = \"same\"\n"
                "origin = [25.4, 6]\nsize = [10, 6]\nbackground = { filled = true, color = "
                "\"#000000\" }\n[[element]]\ntype = \"rectangle\"\nname = \"left\"\norigin = [10, 18]\n"
                "size = [8, 8]\nbackground = { filled = true, color = \"#000000\" }\n");
    place.write("b.figure.toml", place.read("a.figure.toml").replace("[10, 18]", "[40, 18]"));
    EXPECT_EQ(place.zemfig({"diff", "a.figure.toml", "b.figure.toml", "-o", "d.png", "--dpi", "100"}).exitCode,
              DIFFERENT);

    std::unique_ptr<ImageColor> const found = picture("d.png");
    ASSERT_TRUE(found);
    // 2 x 1 inches, and a strip of 8 mm for the legend.
    EXPECT_EQ(found->getWidth(), 200U);
    EXPECT_EQ(found->getHeight(), 131U);
    auto const pixel = [&found](unsigned int x, unsigned int y) { return found->getRow(y)[x]; };
    EXPECT_EQ(pixel(100, 24), Color(191, 191, 191)); // a quarter of the black that both have
    EXPECT_EQ(pixel(39, 71), Color(213, 94, 0));     // only in the first one
    EXPECT_EQ(pixel(157, 71), Color(0, 114, 178));   // only in the second one
    EXPECT_EQ(pixel(80, 80), Color(255, 255, 255));
    // The patches of the legend.
    EXPECT_EQ(pixel(10, 115), Color(213, 94, 0));
    EXPECT_EQ(pixel(110, 115), Color(0, 114, 178));
}

TEST_F(Diff, writesThePictureOfEqualPagesToo)
{
    EXPECT_EQ(place.zemfig({"diff", "a.figure.toml", "b.figure.toml", "-o", "d.png"}).exitCode, 0);
    EXPECT_TRUE(place.read("d.png").startsWith("\x89PNG"));
}

TEST_F(Diff, wantsTwoPagesOrTwoStages)
{
    EXPECT_EQ(place.zemfig({"diff"}).exitCode, 1);
    for (QStringList const &stages : {QStringList(), QStringList{"--stage", "1"}, QStringList{"--with-stage", "1"}}) {
        CommandResult const result = place.zemfig(QStringList{"diff", "a.figure.toml"} + stages);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_NE(result.errors.find("give two pages, or --stage and --with-stage"), std::string::npos)
            << result.errors;
    }
    CommandResult const many = place.zemfig({"diff", "a.figure.toml", "--stage", "all", "--with-stage", "1"});
    EXPECT_EQ(many.exitCode, 1);
    EXPECT_NE(many.errors.find("one stage is compared, not 2"), std::string::npos) << many.errors;
}

TEST_F(Diff, writesPicturesAsPngOnly)
{
    CommandResult const result = place.zemfig({"diff", "a.figure.toml", "b.figure.toml", "-o", "d.pdf"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("'d.pdf' does not end in .png"), std::string::npos) << result.errors;
    EXPECT_EQ(place.zemfig({"diff", "a.figure.toml", "b.figure.toml", "-o", "nowhere/d.png"}).exitCode, 3);
}

TEST_F(Diff, refusesWhatCannotBeRead)
{
    EXPECT_EQ(place.zemfig({"diff", "a.figure.toml", "missing.fig"}).exitCode, 2);
    place.write("big.figure.toml", "[page]\nsize = [100000, 100000]\n");
    CommandResult const big = place.zemfig({"diff", "big.figure.toml", "big.figure.toml"});
    EXPECT_EQ(big.exitCode, 2);
    EXPECT_NE(big.errors.find("too large to be compared"), std::string::npos) << big.errors;
}

TEST_F(Diff, tellsItsExitCodeInTheHelp)
{
    EXPECT_NE(place.zemfig({"--help"}).output.find("4 compared and found different"), std::string::npos);
}

} // namespace
} // namespace Zem::Support
