// Series: importing them, and the [[series]] tables of page documents.
#include "CommandRun.h"

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

constexpr char const *LOG = "time [s],force [kN],note\n0.0,1.5,x\n0.5,2.5,y\n1.0,,z\n";
constexpr char const *LABEL = "[[element]]\ntype = \"label\"\norigin = [9, 9]\ntext = \"$stage.count$\"\n";

/// A page with these [[series]] lines beside a log file.
class SeriesPage : public testing::Test
{
protected:
    void SetUp() override { place.write("log.csv", LOG); }

    CommandResult check(QByteArray const &series, QStringList const &more = {}) const
    {
        place.write("page.figure.toml", series + LABEL);
        return place.zemfig(QStringList{"check", "page.figure.toml"} + more);
    }

    Workplace place;
};

TEST(ZemfigImportSeries, tellsWhatItTookIn)
{
    Workplace const place;
    place.write("log.csv", LOG);

    CommandResult const result = place.zemfig({"import", "log.csv", "--series", "--project", "p.zem"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "log.csv: 3 rows of 2 series in 'log', 2 series changed\n");
    EXPECT_NE(result.errors.find("log.csv: column \"note\" holds no numbers: left out"), std::string::npos);
}

TEST(ZemfigImportSeries, tellsItAsJson)
{
    Workplace const place;
    place.write("log.csv", LOG);

    CommandResult const result =
        place.zemfig({"import", "log.csv", "--series", "--group", "R1", "--project", "p.zem", "--json"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    for (char const *const part : {"\"group\": \"R1\"", "\"rows\": 3", "\"R1.force\"", "\"note\""})
        EXPECT_NE(result.output.find(part), std::string::npos) << result.output;
}

TEST(ZemfigImportSeries, ofTheSameFileChangesNothing)
{
    Workplace const place;
    place.write("log.csv", LOG);
    place.zemfig({"import", "log.csv", "--series", "--project", "p.zem"});

    EXPECT_EQ(place.zemfig({"import", "log.csv", "--series", "--project", "p.zem"}).output,
              "log.csv: 3 rows of 2 series in 'log', 0 series changed\n");
}

TEST(ZemfigImportSeries, refusesOptionsOfStages)
{
    Workplace const place;
    place.write("log.csv", LOG);

    CommandResult const result =
        place.zemfig({"import", "log.csv", "--series", "--project", "p.zem", "--prefix", "x."});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("--series goes without --prefix"), std::string::npos) << result.errors;
    EXPECT_FALSE(place.exists("p.zem"));
}

TEST(ZemfigImportSeries, wantsSeriesForAGroup)
{
    Workplace const place;
    place.write("log.csv", LOG);

    EXPECT_EQ(place.zemfig({"import", "log.csv", "--group", "R1", "--project", "p.zem"}).exitCode, 1);
    EXPECT_FALSE(place.exists("p.zem"));
}

TEST(ZemfigImportSeries, refusesTwoFilesOfOneGroup)
{
    Workplace const place;
    place.write("a.csv", LOG);
    place.write("b.csv", LOG);

    CommandResult const result =
        place.zemfig({"import", "a.csv", "b.csv", "--series", "--group", "R1", "--project", "p.zem"});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("'a.csv' and 'b.csv' are both of the group 'R1'"), std::string::npos) << result.errors;
    EXPECT_FALSE(place.exists("p.zem"));
}

TEST(ZemfigImportSeries, refusesAFileWithoutNumbers)
{
    Workplace const place;
    place.write("a.csv", "a,b\nx,y\n");

    CommandResult const result = place.zemfig({"import", "a.csv", "--series", "--project", "p.zem"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("a.csv: there is no column of numbers"), std::string::npos) << result.errors;
}

TEST_F(SeriesPage, needsNoOtherData)
{
    CommandResult const result = check("[[series]]\nfile = \"log.csv\"\n");

    EXPECT_EQ(result.exitCode, 0) << result.output << result.errors;
}

TEST_F(SeriesPage, mayStandBesideAFileOfStages)
{
    place.write("stages.csv", "a\n1\n2\n");
    place.write("page.figure.toml", QByteArray("[data]\nfile = \"stages.csv\"\n[[series]]\nfile = \"log.csv\"\n"
                                               "columns = [\"time\", \"force\"]\n") +
                                        LABEL);

    CommandResult const result = place.zemfig({"render", "page.figure.toml", "-o", "out.svg", "--stage", "all"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(place.exists("out-1.svg"));
    EXPECT_TRUE(place.exists("out-2.svg"));
}

/// A page with one chart: what is in the [data] and [[series]] tables, over x, with an orange curve.
QByteArray chartPage(QByteArray const &data, char const *x, char const *y)
{
    return data + "[[element]]\ntype = \"generic_chart\"\norigin = [100, 100]\nsize = [150, 80]\ntoken_x = \"" + x +
           "\"\nshow_current_stage = true\ncurrent_stage_style = { width = 0.2, color = \"#009e73\" }\n"
           "[[element.curve]]\ntoken = \"" +
           y + "\"\nline_style = { width = 0.3, color = \"#d55e00\" }\n";
}

TEST_F(SeriesPage, drawsTheCurveOfASeriesThatIsThere)
{
    place.write("known.figure.toml", chartPage("[[series]]\nfile = \"log.csv\"\n", "log.time", "log.force"));
    place.write("gone.figure.toml", chartPage("[[series]]\nfile = \"log.csv\"\n", "log.time", "log.farce"));

    EXPECT_EQ(place.zemfig({"render", "known.figure.toml", "-o", "known.svg"}).exitCode, 0);
    EXPECT_EQ(place.zemfig({"render", "gone.figure.toml", "-o", "gone.svg"}).exitCode, 0);

    EXPECT_TRUE(place.read("known.svg").contains("stroke=\"#d55e00\""));
    EXPECT_FALSE(place.read("gone.svg").contains("stroke=\"#d55e00\""));
}

TEST_F(SeriesPage, isToldTheSeriesThatIsMissing)
{
    place.write("page.figure.toml", chartPage("[[series]]\nfile = \"log.csv\"\n", "log.tyme", "log.farce"));

    CommandResult const result = place.zemfig({"check", "page.figure.toml"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.output.find("no data has 'log.tyme' for this axis (did you mean 'log.time'?)"), std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("no data has 'log.farce' for this axis (did you mean 'log.force'?)"),
              std::string::npos)
        << result.output;
}

TEST_F(SeriesPage, marksTheStageThatIsDrawn)
{
    place.write("stages.csv", "a\n10\n20\n30\n");
    place.write("page.figure.toml", chartPage("[data]\nfile = \"stages.csv\"\n", "stage", "a"));

    EXPECT_EQ(place.zemfig({"render", "page.figure.toml", "-o", "out.svg", "--stage", "1..2"}).exitCode, 0);

    EXPECT_TRUE(place.read("out-1.svg").contains("stroke=\"#009e73\""));
    EXPECT_TRUE(place.read("out-2.svg").contains("stroke=\"#009e73\""));
    EXPECT_NE(place.read("out-1.svg"), place.read("out-2.svg"));
}

TEST_F(SeriesPage, namesPointsOfItsCurves)
{
    QByteArray const page = chartPage("[[series]]\nfile = \"log.csv\"\n", "log.time", "log.force");
    place.write("page.figure.toml", page + "[[point]]\nname = \"highest\"\ntoken = \"log.force\"\nat = \"maximum\"\n");

    EXPECT_EQ(place.zemfig({"check", "page.figure.toml"}).exitCode, 0);
    EXPECT_EQ(place.zemfig({"render", "page.figure.toml", "-o", "page.svg"}).exitCode, 0);
    EXPECT_TRUE(place.read("page.svg").contains("highest"));

    place.zemfig({"import", "log.csv", "--series", "--project", "p.zem"});
    EXPECT_EQ(place.zemfig({"render", "page.figure.toml", "--project", "p.zem", "-o", "of_project.svg"}).exitCode, 0);
    EXPECT_EQ(place.read("of_project.svg"), place.read("page.svg"));
}

TEST_F(SeriesPage, isToldThePointsThatItsDataDoNotHave)
{
    CommandResult const result = check("[[series]]\nfile = \"log.csv\"\n"
                                       "[[point]]\nname = \"a\"\ntoken = \"log.farce\"\nat = \"last\"\n"
                                       "[[point]]\nname = \"b\"\ntoken = \"log.force\"\nat = 2\n"
                                       "[[point]]\nname = \"c\"\ntoken = \"log.force\"\nat = 3\n");

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "page.figure.toml:3: the point 'a': no data has the curve 'log.farce' (did you mean "
                             "'log.force'?)\n"
                             "page.figure.toml:11: the point 'c': 'log.force' has no such point\n");
}

TEST_F(SeriesPage, keepsItsNamedPointsAsADocumentOnly)
{
    QByteArray const point = "[[point]]\nname = \"c\"\ntoken = \"log.force\"\nat = 3\n";
    place.write("page.figure.toml", point + LABEL);

    EXPECT_EQ(place.zemfig({"convert", "page.figure.toml", "-o", "copy.figure.toml"}).exitCode, 0);
    EXPECT_TRUE(place.read("copy.figure.toml").contains(point)) << place.read("copy.figure.toml").toStdString();
    CommandResult const figure = place.zemfig({"convert", "page.figure.toml", "-o", "page.fig"});
    EXPECT_EQ(figure.exitCode, 0) << figure.errors;
    EXPECT_NE(figure.errors.find("a figure file holds no named points: [[point]] is left out"), std::string::npos)
        << figure.errors;
}

TEST_F(SeriesPage, isToldThatAProjectIsDamaged)
{
    place.zemfig({"import", "log.csv", "--series", "--project", "p.zem"});
    place.write("page.figure.toml", chartPage("[data]\nproject = \"p.zem\"\n", "log.time", "log.force"));
    QByteArray bytes = place.read("p.zem");
    place.write("p.zem", bytes.left(bytes.size() - 4096));

    CommandResult const result = place.zemfig({"render", "page.figure.toml", "-o", "out.svg"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.errors.starts_with("zemfig: p.zem: ")) << result.errors; // in the words of SQLite
    EXPECT_FALSE(place.exists("out.svg"));
}

TEST_F(SeriesPage, isToldTheFileThatIsMissing)
{
    CommandResult const result = check("[page]\nsize = [100, 100]\n[[series]]\nfile = \"lag.csv\"\n");

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("page.figure.toml:3: the data file 'lag.csv' does not exist"), std::string::npos)
        << result.errors;
}

TEST_F(SeriesPage, mayNotLeaveItsFolder)
{
    CommandResult const result = check("[[series]]\nfile = \"../log.csv\"\n");

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("leaves the folder of the document"), std::string::npos) << result.errors;
}

TEST_F(SeriesPage, isToldTheColumnThatIsMissing)
{
    CommandResult const result = check("[[series]]\nfile = \"log.csv\"\ncolumns = [\"time\", \"farce\"]\n");

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("log.csv: there is no column \"farce\""), std::string::npos) << result.errors;
}

TEST_F(SeriesPage, isToldTheKeyThatDoesNotExist)
{
    CommandResult const misspelt = check("[[series]]\nfile = \"log.csv\"\ngruop = \"R1\"\n");
    EXPECT_EQ(misspelt.exitCode, 2);
    EXPECT_NE(misspelt.errors.find("page.figure.toml:1: unknown key 'gruop' in [[series]] (did you mean 'group'?)"),
              std::string::npos)
        << misspelt.errors;

    CommandResult const ofStages = check("[[series]]\nfile = \"log.csv\"\nfirst_stage = 3\n");
    EXPECT_NE(ofStages.errors.find("unknown key 'first_stage'"), std::string::npos) << ofStages.errors;
}

TEST_F(SeriesPage, isToldThatASeriesNeedsAFile)
{
    CommandResult const result = check("[[series]]\ngroup = \"R1\"\n");

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("page.figure.toml:1: a series wants a 'file'"), std::string::npos) << result.errors;
}

TEST_F(SeriesPage, isToldOfTwoFilesOfOneGroup)
{
    place.write("other.csv", LOG);

    CommandResult const result =
        check("[[series]]\nfile = \"log.csv\"\n[[series]]\nfile = \"other.csv\"\ngroup = \"log\"\n");

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("other.csv: 'log.csv' has the group 'log' already"), std::string::npos)
        << result.errors;
}

TEST_F(SeriesPage, isToldThatAProjectHasItsOwn)
{
    place.zemfig({"import", "log.csv", "--project", "p.zem"});

    CommandResult const both = check("[data]\nproject = \"p.zem\"\n[[series]]\nfile = \"log.csv\"\n");
    EXPECT_EQ(both.exitCode, 2);
    EXPECT_NE(both.errors.find("page.figure.toml:3: [[series]] cannot stand beside a project"), std::string::npos)
        << both.errors;

    CommandResult const overridden = check("[[series]]\nfile = \"log.csv\"\n", {"--project", "p.zem"});
    EXPECT_EQ(overridden.exitCode, 0) << overridden.output << overridden.errors;
}

TEST_F(SeriesPage, isReadWithItsOwnOptions)
{
    place.write("log.csv", "t;v\n0,5;-200\n1,5;7\n");

    CommandResult const good =
        check("[[series]]\nfile = \"log.csv\"\ndelimiter = \"semicolon\"\ndecimal_comma = true\nmissing = -200\n"
              "[series.unit]\nt = \"s\"\n");
    EXPECT_EQ(good.exitCode, 0) << good.output << good.errors;

    CommandResult const bad = check("[[series]]\nfile = \"log.csv\"\n[series.unit]\nz = \"s\"\n");
    EXPECT_NE(bad.errors.find("log.csv: there is no column \"z\""), std::string::npos) << bad.errors;
}

TEST_F(SeriesPage, keepsItsSeriesAsADocument)
{
    QByteArray const series = "[[series]]\ncolumns = [\"time\", \"a \\\"b\\\"\"]\nfile = \"log.csv\"\ngroup = \"R1\"\n";
    place.write("page.figure.toml", series + LABEL);

    CommandResult const result = place.zemfig({"convert", "page.figure.toml", "-o", "copy.figure.toml"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(place.read("copy.figure.toml").contains(series)) << place.read("copy.figure.toml").toStdString();
}

TEST_F(SeriesPage, tellsThatAFigureFileHoldsNone)
{
    place.write("page.figure.toml", QByteArray("[[series]]\nfile = \"log.csv\"\n") + LABEL);

    CommandResult const result = place.zemfig({"convert", "page.figure.toml", "-o", "page.fig"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_NE(result.errors.find("[[series]] is left out"), std::string::npos) << result.errors;
}

TEST_F(SeriesPage, isToldWhereItIsNoListOfTables)
{
    CommandResult const oneTable = check("[series]\nfile = \"log.csv\"\n");
    EXPECT_NE(oneTable.output.find("page.figure.toml:1: 'series' wants a list of tables: [[series]]"),
              std::string::npos)
        << oneTable.output;

    CommandResult const number = check("series = [\n  5]\n");
    EXPECT_NE(number.output.find("page.figure.toml:2: [[series]] wants a table, not a number"), std::string::npos)
        << number.output;
}

} // namespace
} // namespace Zem::Support
