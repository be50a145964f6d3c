#include "CommandRun.h"

#include <ZemImage.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

constexpr char PAGE[] = R"([[element]]
type = "label"
name = "title"
origin = [20, 20]
text = "Force $.1[kN]force$"

[[element]]
type = "line"
name = "far"
point1 = [500, 10]
point2 = [510, 10]
)";

TEST(Zemfig, tellsItsVerbsAndExitCodes)
{
    CommandResult const result = Workplace().zemfig({"--help"});

    EXPECT_EQ(result.exitCode, 0);
    for (char const *word : {"import", "render", "place", "convert", "show", "check", "Exit codes"})
        EXPECT_NE(result.output.find(word), std::string::npos) << word;
}

TEST(Zemfig, answersWrongUseWithExitCode1)
{
    Workplace const place;
    EXPECT_EQ(place.zemfig({}).exitCode, 1);
    EXPECT_EQ(place.zemfig({"rendr"}).exitCode, 1);
    EXPECT_EQ(place.zemfig({"convert", "page.toml"}).exitCode, 1);
}

TEST(ZemfigConvert, givesTheSameBytesThereAndBack)
{
    Workplace const place;
    place.write("page.figure.toml", PAGE);

    ASSERT_EQ(place.zemfig({"convert", "page.figure.toml", "-o", "a.fig"}).exitCode, 0);
    ASSERT_EQ(place.zemfig({"convert", "a.fig", "-o", "back.figure.toml"}).exitCode, 0);
    ASSERT_EQ(place.zemfig({"convert", "back.figure.toml", "-o", "b.fig"}).exitCode, 0);

    EXPECT_FALSE(place.read("a.fig").isEmpty());
    EXPECT_EQ(place.read("a.fig"), place.read("b.fig"));
}

QByteArray picture(Workplace const &place, QString const &name, Color color)
{
    ImageColor image(4, 3);
    for (unsigned int y = 0; y < 3; ++y)
        std::fill_n(image.getRow(y), 4, color);
    EXPECT_TRUE(image.saveImage(place.path(name), nullptr));
    return place.read(name);
}

TEST(ZemfigConvert, takesThePicturesOfLogosFromTheFolderOfThePage)
{
    Workplace const place;
    ASSERT_TRUE(QDir(place.path({})).mkdir(QStringLiteral("pages")));
    picture(place, "logo.png", Color(1, 2, 3));
    picture(place, "pages/logo.png", Color(200, 100, 50));
    QByteArray const page = "[[element]]\ntype = \"logo\"\nname = \"sign\"\nfile_name = \"logo.png\"\n";
    place.write("pages/page.figure.toml", page);
    place.write("page.figure.toml", page);

    EXPECT_EQ(place.zemfig({"convert", "pages/page.figure.toml", "-o", "a.fig"}).exitCode, 0);
    EXPECT_EQ(place.zemfig({"convert", "page.figure.toml", "-o", "b.fig"}).exitCode, 0);
    EXPECT_NE(place.read("a.fig"), place.read("b.fig"));

    // The name is that of the folder which the page is in.
    EXPECT_EQ(place.zemfig({"convert", "a.fig", "-o", "pages/back.figure.toml"}).errors, "");
    EXPECT_EQ(place.zemfig({"convert", "pages/back.figure.toml", "-o", "c.fig"}).exitCode, 0);
    EXPECT_EQ(place.read("c.fig"), place.read("a.fig"));
}

TEST(ZemfigConvert, tellsOfPicturesThatAPageCannotHold)
{
    Workplace const place;
    picture(place, "logo.png", Color(1, 2, 3));
    place.write("page.figure.toml", "[[element]]\ntype = \"logo\"\nname = \"sign\"\nfile_name = \"logo.png\"\n");
    ASSERT_EQ(place.zemfig({"convert", "page.figure.toml", "-o", "a.fig"}).exitCode, 0);
    EXPECT_EQ(place.zemfig({"convert", "a.fig", "-o", "b.figure.toml"}).errors, "");

    picture(place, "logo.png", Color(200, 100, 50));
    std::string const changed = place.zemfig({"convert", "a.fig", "-o", "b.figure.toml"}).errors;
    EXPECT_NE(changed.find("a page document holds no pictures"), std::string::npos) << changed;
    EXPECT_NE(changed.find("sign"), std::string::npos) << changed;
    ASSERT_TRUE(QFile::remove(place.path("logo.png")));
    std::string const gone = place.zemfig({"convert", "a.fig", "-o", "b.figure.toml"}).errors;
    EXPECT_NE(gone.find("'./logo.png' does not hold it"), std::string::npos) << gone;
}

TEST(ZemfigConvert, refusesDamagedFilesAndLeavesTheTarget)
{
    Workplace const place;
    place.write("page.figure.toml", PAGE);
    place.zemfig({"convert", "page.figure.toml", "-o", "good.fig"});
    QByteArray const good = place.read("good.fig");
    QByteArray flipped = good;
    flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 4);
    place.write("flipped.fig", flipped);
    place.write("short.fig", good.left(good.size() - 20));
    place.write("foreign.fig", QByteArray("\0\1\2 something else", 18));
    place.write("out.toml", "as before");

    for (char const *name : {"flipped.fig", "short.fig", "foreign.fig", "missing.fig"}) {
        CommandResult const result = place.zemfig({"convert", name, "-o", "out.toml"});
        EXPECT_EQ(result.exitCode, 2) << name;
        EXPECT_NE(result.errors.find(name), std::string::npos) << result.errors;
    }
    EXPECT_EQ(place.read("out.toml"), "as before");
}

TEST(ZemfigConvert, answersAnUnwritableTargetWithExitCode3)
{
    Workplace const place;
    place.write("page.figure.toml", PAGE);

    for (char const *target : {"nowhere/out.fig", "nowhere/out.toml"}) {
        CommandResult const result = place.zemfig({"convert", "page.figure.toml", "-o", target});
        EXPECT_EQ(result.exitCode, 3) << target;
        EXPECT_NE(result.errors.find("nowhere/out"), std::string::npos) << result.errors;
    }
    EXPECT_EQ(place.files(), QStringList{"page.figure.toml"});
}

TEST(ZemfigShow, printsTheTree)
{
    Workplace const place;
    place.write("page.figure.toml", PAGE);

    CommandResult const result = place.zemfig({"show", "page.figure.toml"});

    EXPECT_EQ(result.output, "page 210 x 297\n"
                             "  label title at 20, 20 size 0 x 0 \"Force $.1[kN]force$\"\n"
                             "  line far at 500, 10\n");
}

TEST(ZemfigShow, printsJson)
{
    Workplace const place;
    place.write("page.figure.toml", PAGE);

    CommandResult const result = place.zemfig({"show", "--json", "page.figure.toml"});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.output.find("\"name\": \"title\""), std::string::npos);
    EXPECT_NE(result.output.find("\"point1\": \"(500, 10)\""), std::string::npos);
}

TEST(ZemfigCheck, findsUnknownTokensAndElementsOffThePage)
{
    Workplace const place;
    place.write("page.figure.toml", PAGE);
    place.write("data.csv", "forse [kN]\n1\n2\n");

    CommandResult const result = place.zemfig({"check", "page.figure.toml", "--data", "data.csv"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "page.figure.toml: label 'title': no data has the token 'force' (did you mean 'forse'?)\n"
                             "page.figure.toml: line 'far' lies off the page\n");
}

TEST(ZemfigCheck, readsTheDataThatThePageNames)
{
    Workplace const place;
    place.write("page.figure.toml", "[data]\nfile = \"data.csv\"\n[[element]]\ntype = \"label\"\norigin = [9, 9]\n"
                                    "text = \"$force$\"\n");
    place.write("data.csv", "force [kN]\n1\n");

    EXPECT_EQ(place.zemfig({"check", "page.figure.toml"}).exitCode, 0);
}

TEST(ZemfigCheck, refusesDataOutsideTheFolderOfThePage)
{
    Workplace const place;
    for (char const *path : {"../data.csv", "/etc/passwd", "sub/../../data.csv"}) {
        place.write("page.figure.toml", QByteArray("[data]\nfile = \"") + path + "\"\n");
        CommandResult const result = place.zemfig({"check", "page.figure.toml"});
        EXPECT_EQ(result.exitCode, 2) << path;
        EXPECT_NE(result.errors.find(path), std::string::npos) << result.errors;
    }
}

} // namespace
} // namespace Zem::Support
