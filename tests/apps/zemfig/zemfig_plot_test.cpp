// Pages made from nothing but a CSV file.
#include "CommandRun.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

class ZemfigPlot : public testing::Test
{
protected:
    ZemfigPlot()
    {
        // Mean 2.5 kN; squares of deviation 2.25, 0.25, 0.25, 2.25: 5 / 3 kN^2, so 1290.99 N.
        place.write("run.csv", "time [s];force [kN];stress [MPa];load [N];name\n"
                               "0;1;10;1000;a\n1;2;30;2000;b\n2;3;20;3000;c\n3;4;40;4000;d\n");
    }

    CommandResult plot(QStringList const &options) const
    {
        return place.zemfig(QStringList{"plot", "run.csv"} + options);
    }

    /// The page as SVG, with plain blanks and the words of a line together.
    std::string texts(QStringList const &options) const
    {
        CommandResult const result = plot(options + QStringList{"-o", "page.svg"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        QString page = QString::fromUtf8(place.read("page.svg"));
        page.remove(QRegularExpression(QStringLiteral("</?tspan[^>]*>")));
        return page.replace(QChar::Nbsp, QLatin1Char(' ')).toStdString();
    }

    static bool holds(std::string const &text, std::string const &piece) { return text.find(piece) != std::string::npos; }

    Workplace place;
};

TEST_F(ZemfigPlot, showsTitleAxesLegendAndStatistics)
{
    std::string const page = texts({"--title", "A test run"});
    for (char const *text : {"A test run", "run.csv", "force [kN]", "stress [MPa]", "time [s]", "std. deviation"})
        EXPECT_TRUE(holds(page, text)) << text;
    // In base units: N, with as many decimals as four digits of the greatest value leave.
    for (char const *text : {">1000<", ">4000<", ">2500<", ">1291<", ">N<", ">MPa<", ">10.00<", ">40.00<", ">25.00<"})
        EXPECT_TRUE(holds(page, text)) << text;
}

TEST_F(ZemfigPlot, curvesOfOneUnitShareAChart)
{
    ASSERT_EQ(plot({"--save", "page.figure.toml"}).exitCode, 0);
    QByteArray const page = place.read("page.figure.toml");
    EXPECT_EQ(page.count("type = \"generic_chart\""), 2);
    EXPECT_EQ(page.count("[[element.curve]]"), 3);
    EXPECT_FALSE(page.contains("run.name"));
    EXPECT_TRUE(page.contains("token_x = \"run.time\""));
}

TEST_F(ZemfigPlot, showsTheColumnsThatAreChosen)
{
    ASSERT_EQ(plot({"--x", "force", "--y", "stress", "--save", "page.figure.toml"}).exitCode, 0);
    QByteArray const page = place.read("page.figure.toml");
    EXPECT_TRUE(page.contains("token_x = \"run.force\""));
    EXPECT_TRUE(page.contains("token = \"run.stress\""));
    EXPECT_EQ(page.count("[[element.curve]]"), 1);
}

TEST_F(ZemfigPlot, aSavedPageRendersToTheSamePicture)
{
    QByteArray const csv = place.read("run.csv");
    ASSERT_EQ(plot({"--y", "force,stress", "--unit", "time=min", "-o", "a.png", "--save", "page.figure.toml"}).exitCode, 0);
    CommandResult const again = place.zemfig({"render", "page.figure.toml", "-o", "b.png"});
    ASSERT_EQ(again.exitCode, 0) << again.errors;
    EXPECT_EQ(place.read("a.png"), place.read("b.png"));
    EXPECT_EQ(place.zemfig({"check", "page.figure.toml"}).exitCode, 0);
    EXPECT_EQ(place.read("run.csv"), csv);
}

TEST_F(ZemfigPlot, drawsInTheStyleThatIsWished)
{
    ASSERT_EQ(plot({"--style", "bars", "--save", "page.figure.toml"}).exitCode, 0);
    EXPECT_EQ(place.read("page.figure.toml").count("style = \"bars\""), 3);
}

TEST_F(ZemfigPlot, longTimesAreShownInHours)
{
    place.write("run.csv", "time [s];force\n0;1\n36000;2\n");
    EXPECT_TRUE(holds(texts({}), "time [h]"));
}

TEST_F(ZemfigPlot, textsOfTheFileAreShownAsTheyStand)
{
    place.write("run.csv", "time;<b>a & $b$\n0;1\n1;2\n");
    std::string const page = texts({"--title", "1 < 2 $ & more"});
    EXPECT_TRUE(holds(page, "1 &lt; 2 $ &amp; more"));
    EXPECT_TRUE(holds(page, "&lt;b&gt;a &amp; $b$"));
}

TEST_F(ZemfigPlot, whatFindsNoRoomIsTold)
{
    QByteArray head = "time";
    QByteArray row = "0";
    for (int i = 0; i < 20; ++i) {
        head += ";y" + QByteArray::number(i);
        row += ";" + QByteArray::number(i);
    }
    place.write("run.csv", head + "\n" + row + "\n" + row + "\n");
    CommandResult const result = plot({"-o", "page.png"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(holds(result.errors, "no room for run.y")) << result.errors;
    EXPECT_TRUE(holds(result.errors, "run.y19: choose with --y")) << result.errors;
    CommandResult const wished = plot({"--y", "y0,y1,y2,y3,y4,y5,y6,y7,y8", "-o", "page.pdf"});
    EXPECT_EQ(wished.exitCode, 1);
    EXPECT_TRUE(holds(wished.errors, "do not fit on a page")) << wished.errors;
    EXPECT_FALSE(place.exists("page.pdf"));
}

TEST_F(ZemfigPlot, tellsWhatIsWrong)
{
    struct Case
    {
        QStringList options;
        int code;
        char const *text;
    };
    for (Case const &wrong : {Case{{}, 1, "give --output, --save or both"},
                              Case{{"--y", "forze", "-o", "p.pdf"}, 1, "nothing called 'forze' to plot (did you mean 'force'?)"},
                              Case{{"--style", "lin", "-o", "p.pdf"}, 1, "no style 'lin' (did you mean 'line'?)"},
                              Case{{"-o", "p.doc"}, 1, "'p.doc' ends in none of"},
                              Case{{"--save", "p.txt"}, 1, "is no .fig, .toml, .template or .snippet file"},
                              Case{{"--save", "missing/p.toml"}, 1, "in the folder of its data"}}) {
        CommandResult const result = plot(wrong.options);
        EXPECT_EQ(result.exitCode, wrong.code) << wrong.text;
        EXPECT_TRUE(holds(result.errors, wrong.text)) << result.errors;
    }
    CommandResult const missing = place.zemfig({"plot", "none.csv", "-o", "p.pdf"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_TRUE(holds(missing.errors, "none.csv")) << missing.errors;
    EXPECT_EQ(place.files(), QStringList{"run.csv"});
}

TEST_F(ZemfigPlot, aFileWithoutNumbersCannotBePlotted)
{
    place.write("run.csv", "name;town\na;b\nc;d\n");
    EXPECT_NE(plot({"-o", "p.pdf"}).exitCode, 0);
    EXPECT_FALSE(place.exists("p.pdf"));
}

} // namespace
} // namespace Zem::Support
