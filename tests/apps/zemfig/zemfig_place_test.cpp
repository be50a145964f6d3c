#include "CommandRun.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

/// Two labels of 20 x 6 that point left and right of the middle, a heading and a background over the whole page.
constexpr char PAGE[] = R"([page]
size = [200, 100]

[[element]]
type = "rectangle"
name = "paper"
origin = [100, 50]
size = [190, 90]
border = { style = "none" }

[[element]]
type = "label"
name = "heading"
origin = [12, 50]
size = [10, 4]
auto_size = false
text = ""

[[element]]
type = "label"
name = "left"
origin = [1, 2]
size = [20, 6]
auto_size = false
text = "$.1[kN]force$"
connector_point = [60, 50]

[[element]]
type = "label"
name = "right"
origin = [3, 4]
size = [20, 6]
auto_size = false
text = ""
connector_point = [140, 50]
)";

constexpr char DATA[] = "force [kN]\n1\n22222222222\n";

class ZemfigPlace : public testing::Test
{
protected:
    Workplace place;

    void SetUp() override { place.write("page.figure.toml", PAGE); }

    CommandResult arrange(QStringList const &options = {}, QString const &output = "out.figure.toml")
    {
        return place.zemfig(QStringList{"place", "page.figure.toml", "-o", output} + options);
    }
    /// The origin of an element as its parameter has it.
    std::string origin(QString const &name, QString const &page = "out.figure.toml") const
    {
        std::string const json = place.zemfig({"show", "--json", page}).output;
        QJsonObject const figure = QJsonDocument::fromJson(QByteArray::fromStdString(json)).object();
        for (QJsonValue const element : figure["elements"].toArray()) {
            if (element["name"].toString() == name)
                return element["parameters"]["origin"].toString().toStdString();
        }
        return "no element " + name.toStdString();
    }
    std::string svgOf(QString const &page, QStringList const &options)
    {
        QStringList const render{"render", page, "-o", "out.svg"};
        EXPECT_EQ(place.zemfig(render + options).exitCode, 0);
        return place.read("out.svg").toStdString();
    }
};

TEST_F(ZemfigPlace, arrangesAlongTheBorder)
{
    CommandResult const result = arrange({"--edge-distance", "10", "--box-distance", "0"});

    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(origin("right"), "(180, 50)");
    // The heading is 10 x 4 around (12, 50): y = 48 to 52; down by 5.1 as up.
    EXPECT_EQ(origin("left"), "(20, 55.1)");
    EXPECT_EQ(origin("heading"), "(12, 50)");
    EXPECT_EQ(origin("paper"), "(100, 50)");
}

TEST_F(ZemfigPlace, keepsTheBoxDistanceAroundLabelsAndWhatStays)
{
    ASSERT_EQ(arrange({"--edge-distance", "10", "--box-distance", "1"}).exitCode, 0);

    EXPECT_EQ(origin("right"), "(179, 50)");
    // The heading keeps y = 47 to 53 free, the label takes 8: its middle is at 53 + 0.1 + 4.
    EXPECT_EQ(origin("left"), "(21, 57.1)");
}

TEST_F(ZemfigPlace, arrangesAtTheElements)
{
    ASSERT_EQ(arrange({"--place", "element", "--box-distance", "0"}).exitCode, 0);

    // 0.7 % of the page is 1.4 to the side and 0.7 above the points.
    EXPECT_EQ(origin("left"), "(48.6, 46.3)");
    EXPECT_EQ(origin("right"), "(128.6, 46.3)");
}

TEST_F(ZemfigPlace, keepsClearOfElementsButOfTheOneThatIsAnnotated)
{
    QByteArray page = PAGE;
    page += "\n[[element]]\ntype = \"rectangle\"\nname = \"specimen\"\norigin = [140, 50]\nsize = [70, 40]\n"
            "border = { style = \"none\" }\n"
            "\n[[element]]\ntype = \"rectangle\"\nname = \"corner\"\norigin = [120, 44]\nsize = [2, 2]\n"
            "border = { style = \"none\" }\n";
    place.write("page.figure.toml", page);

    ASSERT_EQ(arrange({"--place", "element", "--box-distance", "0"}).exitCode, 0);

    // The first place, 118.6 to 138.6 at y = 43.3 to 49.3, meets the corner; right above it would hide the point; the
    // third begins 1.4 to the right.
    EXPECT_EQ(origin("right"), "(151.4, 46.3)");
}

TEST_F(ZemfigPlace, measuresTheLabelsAtTheStage)
{
    QByteArray page = PAGE;
    page.replace("size = [20, 6]\nauto_size = false\ntext = \"$", "text = \"$");
    place.write("page.figure.toml", page);
    place.write("data.csv", DATA);
    QStringList const options{"--place", "element", "--data", "data.csv"};

    ASSERT_EQ(arrange(options + QStringList{"--stage", "1"}, "a.figure.toml").exitCode, 0);
    ASSERT_EQ(arrange(options + QStringList{"--stage", "2"}, "b.figure.toml").exitCode, 0);

    EXPECT_NE(origin("left", "a.figure.toml"), origin("left", "b.figure.toml"));
}

TEST_F(ZemfigPlace, givesThePageThatRenderingWithPlaceDraws)
{
    QByteArray page = PAGE;
    page.replace("size = [20, 6]\nauto_size = false\ntext = \"$", "text = \"$");
    page += "\n[data]\nfile = \"data.csv\"\nstage = \"1\"\n";
    place.write("page.figure.toml", page);
    place.write("data.csv", DATA);
    for (char const *where : {"border", "element"}) {
        ASSERT_EQ(arrange({"--place", where}).exitCode, 0);
        std::string const arranged = svgOf("page.figure.toml", {"--place", where});
        EXPECT_EQ(svgOf("out.figure.toml", {}), arranged) << where;
        EXPECT_NE(svgOf("page.figure.toml", {}), arranged) << where;
    }
}

TEST_F(ZemfigPlace, arrangesEachStageAnewWhileRendering)
{
    QByteArray page = PAGE;
    page.replace("size = [20, 6]\nauto_size = false\ntext = \"$", "text = \"$");
    place.write("page.figure.toml", page);
    place.write("data.csv", DATA);
    QStringList const options{"--data", "data.csv", "--place", "element", "-o", "all.svg", "--stage"};

    ASSERT_EQ(place.zemfig(QStringList{"render", "page.figure.toml"} + options + QStringList{"all"}).exitCode, 0);

    EXPECT_EQ(place.read("all-2.svg").toStdString(),
              svgOf("page.figure.toml", {"--data", "data.csv", "--place", "element", "--stage", "2"}));
}

TEST_F(ZemfigPlace, writesFigureFilesAndTheSameBytesTwice)
{
    ASSERT_EQ(arrange({}, "a.fig").exitCode, 0);
    ASSERT_EQ(arrange({}, "b.fig").exitCode, 0);
    ASSERT_EQ(arrange().exitCode, 0);

    EXPECT_FALSE(place.read("a.fig").isEmpty());
    EXPECT_EQ(place.read("a.fig"), place.read("b.fig"));
    EXPECT_EQ(origin("left", "a.fig"), origin("left"));
}

TEST_F(ZemfigPlace, keepsTheDataThatThePageNames)
{
    place.write("page.figure.toml", QByteArray(PAGE) + "\n[data]\nfile = \"data.csv\"\nfirst_stage = 4\n"
                                                       "decimal_comma = true\n");
    place.write("data.csv", DATA);

    ASSERT_EQ(arrange().exitCode, 0);

    EXPECT_NE(
        place.read("out.figure.toml").indexOf("[data]\ndecimal_comma = true\nfile = \"data.csv\"\nfirst_stage = 4\n"),
        -1);
    EXPECT_EQ(place.zemfig({"render", "out.figure.toml", "--stage", "5", "-o", "out.svg"}).exitCode, 0);
}

TEST_F(ZemfigPlace, tellsWhenTheDataCannotStayNamed)
{
    place.write("page.figure.toml", QByteArray(PAGE) + "\n[data]\nfile = \"data.csv\"\n");
    place.write("data.csv", DATA);
    QTemporaryDir const elsewhere;
    for (QString const &output : {QString("out.fig"), elsewhere.filePath("out.figure.toml")}) {
        CommandResult const result = arrange({}, output);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_NE(result.errors.find("[data] is left out"), std::string::npos) << result.errors;
    }
}

TEST_F(ZemfigPlace, leavesAPageWhoseLabelsPointNowhere)
{
    place.write("page.figure.toml", "[[element]]\ntype = \"label\"\nname = \"a\"\norigin = [9, 9]\ntext = \"\"\n");
    CommandResult const result = arrange();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.errors.find("no label points at anything"), std::string::npos) << result.errors;
    EXPECT_TRUE(place.exists("out.figure.toml"));
}

TEST_F(ZemfigPlace, leavesHiddenLabels)
{
    QByteArray page = PAGE;
    page.replace("name = \"left\"", "name = \"left\"\nvisible = false");
    place.write("page.figure.toml", page);
    ASSERT_EQ(arrange().exitCode, 0);
    EXPECT_EQ(origin("left"), "(1, 2)");
}

TEST_F(ZemfigPlace, answersWrongUseWithExitCode1)
{
    place.write("data.csv", DATA);
    for (char const *options : {"--place top", "--edge-distance -1", "--box-distance x", "--edge-distance 60",
                                "--data data.csv --stage all"}) {
        CommandResult const result = arrange(QString(options).split(' '));
        EXPECT_EQ(result.exitCode, 1) << options;
        EXPECT_NE(result.errors, "");
    }
    EXPECT_EQ(arrange({}, "out.pdf").exitCode, 1);
    EXPECT_EQ(place.files(), (QStringList{"data.csv", "page.figure.toml"}));
}

TEST_F(ZemfigPlace, answersBadInputAndUnwritableTargets)
{
    EXPECT_EQ(place.zemfig({"place", "missing.toml", "-o", "out.fig"}).exitCode, 2);
    EXPECT_EQ(arrange({}, "nowhere/out.fig").exitCode, 3);
    EXPECT_EQ(arrange({}, "nowhere/out.figure.toml").exitCode, 3);
}

} // namespace
} // namespace Zem::Support
