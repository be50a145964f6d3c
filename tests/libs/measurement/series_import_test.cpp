#include "project_support.h"

using namespace Zem::Measurement;

namespace {

class SeriesImportTest : public ProjectTest
{
protected:
    Project project{path(), OpenMode_t::CREATE};

    SeriesResult import(std::string_view text, SeriesOptions const &options = {})
    {
        return project.importSeries(parse(text), options);
    }

    static SeriesOptions inGroup(char const *group) { return {QString::fromUtf8(group), {}}; }
    unsigned int modified(char const *name) const { return seriesOf(project, name).modified; }

    /// As an older release would have left it.
    void makeOlder() const
    {
        for (char const *const statement : {"DROP TABLE series", "DROP TABLE series_table", "DROP TABLE series_chunk",
                                            "DROP TABLE view", "DROP TABLE view_picture", "DROP TABLE point_set",
                                            "DROP TABLE point_stage", "UPDATE zem_project SET version = 1"}) {
            executeRaw(path(), statement);
        }
    }
};

QStringList list(std::initializer_list<char const *> words)
{
    QStringList result;
    for (char const *const word : words) {
        result << QString::fromUtf8(word);
    }
    return result;
}

} // namespace

TEST_F(SeriesImportTest, takesNumbersAndMomentsByRow)
{
    SeriesResult const result = import("when,force [kN],n,note\n1970-01-01,1.5,7,x\n1970-01-02,,8,y\n");

    EXPECT_EQ(result.group, QStringLiteral("a")); // of a.csv
    EXPECT_EQ(result.series, list({"a.when", "a.force", "a.n"}));
    EXPECT_EQ(result.changed, result.series);
    EXPECT_EQ(result.skipped, list({"note"}));
    EXPECT_EQ(result.rows, 2u);
    EXPECT_EQ(rowsOf(project, "a.when"), "0 86400000");
    EXPECT_EQ(rowsOf(project, "a.force"), "1.5 -");
    EXPECT_EQ(rowsOf(project, "a.n"), "7 8");
}

TEST_F(SeriesImportTest, keepsWhatTheColumnTells)
{
    import("engineering strain [%],conc [mg/L]\n0.5,2\n");

    ProjectSeries const strain = seriesOf(project, "a.engineering_strain");
    EXPECT_EQ(strain.title, QStringLiteral("engineering strain"));
    EXPECT_EQ(strain.unit.getUnitName(), QStringLiteral("%"));
    EXPECT_EQ(strain.group, QStringLiteral("a"));
    EXPECT_EQ(strain.type, ColumnType_t::NUMBER);
    EXPECT_EQ(strain.rows, 1u);
    EXPECT_EQ(strain.table, seriesOf(project, "a.conc").table);
    EXPECT_EQ(seriesOf(project, "a.conc").unitText, QStringLiteral("mg/L"));
}

TEST_F(SeriesImportTest, makesNeitherStagesNorTokens)
{
    import("a,b\n1,2\n3,4\n");

    EXPECT_TRUE(project.stages().empty());
    EXPECT_TRUE(project.tokens().empty());
}

TEST_F(SeriesImportTest, keepsNumbersToTheLastBitThroughManyChunks)
{
    CsvTable table = parse("v\n1.5\n");
    std::size_t const rows = 2 * 65536 + 3; // two whole chunks and a rest
    table.lines.assign(rows, 1);
    table.columns[0].numbers.clear();
    for (std::size_t row = 0; row < rows; ++row) {
        table.columns[0].numbers.push_back(1.0 / static_cast<double>(row + 1));
    }
    project.importSeries(table);

    EXPECT_EQ(project.seriesNumbers(seriesOf(project, "a.v")), table.columns[0].numbers);
}

TEST_F(SeriesImportTest, turnsInfiniteNumbersIntoMissingOnes)
{
    CsvTable table = parse("v\n1.5\n2.5\n3.5\n");
    table.columns[0].numbers[0] = std::numeric_limits<double>::infinity();
    table.columns[0].numbers[2] = -std::numeric_limits<double>::infinity();
    project.importSeries(table);

    EXPECT_EQ(rowsOf(project, "a.v"), "- 2.5 -");
}

TEST_F(SeriesImportTest, takesTheGroupThatIsGiven)
{
    EXPECT_EQ(import("load\n1\n", inGroup("R1.S1")).series, list({"R1.S1.load"}));
    EXPECT_EQ(seriesOf(project, "R1.S1.load").group, QStringLiteral("R1.S1"));
}

TEST_F(SeriesImportTest, refusesAGroupThatIsNoTokenText)
{
    EXPECT_EQ(errorOf([&] { import("load\n1\n", inGroup("R 1/S")); }),
              "a.csv: the group \"R 1/S\" holds more than letters, digits and . _ - + \\");
}

TEST_F(SeriesImportTest, makesAGroupOfAnyFileName)
{
    CsvTable table = parse("v\n1\n");
    table.fileName = QStringLiteral("/data/day 1/Run (2)/bar 7.old.csv");
    EXPECT_EQ(seriesGroup(table, {}), QStringLiteral("bar_7.old"));
    table.fileName = QStringLiteral("???.csv");
    EXPECT_EQ(seriesGroup(table, {}), QStringLiteral("series"));
}

TEST_F(SeriesImportTest, takesOnlyTheColumnsThatAreNamed)
{
    SeriesOptions options;
    options.columns = list({"c d", "a"});

    EXPECT_EQ(import("a,b,c d\n1,2,3\n", options).series, list({"a.a", "a.c_d"}));
}

TEST_F(SeriesImportTest, refusesAColumnThatIsNotThere)
{
    SeriesOptions options;
    options.columns = list({"a", "z"});

    EXPECT_EQ(errorOf([&] { import("a,b\n1,2\n", options); }), "a.csv: there is no column \"z\"");
    EXPECT_TRUE(project.series().empty());
}

TEST_F(SeriesImportTest, refusesATableWithoutNumbers)
{
    EXPECT_EQ(errorOf([&] { import("a,b\nx,y\n"); }), "a.csv: there is no column of numbers");
}

TEST_F(SeriesImportTest, refusesAColumnThatIsShorterThanItsTable)
{
    CsvTable table = parse("v,w\n1.5,1\n2.5,2\n");
    table.columns[0].numbers.pop_back();

    EXPECT_EQ(errorOf([&] { project.importSeries(table); }), "a.csv: column \"v\" has not one value for each row");
    EXPECT_TRUE(project.series().empty());
}

TEST_F(SeriesImportTest, takesATableWithoutRows)
{
    CsvTable table = parse("v\n1.5\n");
    table.lines.clear();
    table.columns[0].numbers.clear();

    EXPECT_EQ(project.importSeries(table).rows, 0u);
    EXPECT_EQ(rowsOf(project, "a.v"), "");
}

TEST_F(SeriesImportTest, takesTenThousandColumns)
{
    QStringList header;
    QStringList row;
    for (int i = 0; i < 10'000; ++i) {
        header << QStringLiteral("c%1").arg(i);
        row << QStringLiteral("%1.5").arg(i);
    }
    QString const text =
        header.join(QLatin1Char(',')) + QLatin1Char('\n') + row.join(QLatin1Char(',')) + QLatin1Char('\n');

    EXPECT_EQ(import(text.toStdString()).series.size(), 10'000);
    EXPECT_EQ(project.series().size(), 10'000u);
    EXPECT_EQ(rowsOf(project, "a.c9999"), "9999.5");
}

TEST_F(SeriesImportTest, makesNamesOfAnyColumnNameAndKeepsThemApart)
{
    EXPECT_EQ(import("CO/GT,COGT,a\\b,(?)\n1,2,3,4\n").series, list({"a.COGT", "a.COGT_2", "a.a\\b", "a.column4"}));
}

TEST_F(SeriesImportTest, leavesTheNamesOfBuiltInTokensAlone)
{
    EXPECT_EQ(import("count\n1\n", inGroup("stage")).series, list({"stage.count_2"}));
}

TEST_F(SeriesImportTest, ofTheSameTableChangesNothing)
{
    import("a,b\n1,\n2,3.5\n");
    std::int64_t const before = project.revision();

    EXPECT_TRUE(import("a,b\n1,\n2,3.5\n").changed.isEmpty());
    EXPECT_EQ(project.revision(), before);
    EXPECT_EQ(modified("a.b"), 1u);
}

TEST_F(SeriesImportTest, movesTheCountersOfChangedSeriesOnly)
{
    import("a,b\n1,5\n2,6\n");

    EXPECT_EQ(import("a,b\n1,5\n3,6\n").changed, list({"a.a"}));
    EXPECT_EQ(modified("a.a"), 2u);
    EXPECT_EQ(modified("a.b"), 1u);
    EXPECT_EQ(rowsOf(project, "a.a"), "1 3");
}

TEST_F(SeriesImportTest, anotherUnitOrTypeIsAChange)
{
    import("a [kN],b\n1.5,2\n");

    EXPECT_EQ(import("a [N],b\n1.5,2.5\n").changed, list({"a.a", "a.b"}));
}

TEST_F(SeriesImportTest, ofOtherLengthReplacesTheWholeGroup)
{
    import("a,b\n1,5\n2,6\n3,7\n");
    import("c\n9\n", inGroup("other"));

    import("a\n4\n");

    EXPECT_EQ(project.series().size(), 2u);
    EXPECT_EQ(rowsOf(project, "a.a"), "4");
    EXPECT_EQ(rowsOf(project, "other.c"), "9");
}

TEST_F(SeriesImportTest, aSeriesThatComesBackHasANewCounter)
{
    import("a,b\n1,5\n");
    import("a\n1\n");
    import("a,b\n1,5\n");

    EXPECT_EQ(modified("a.a"), 1u);
    EXPECT_EQ(modified("a.b"), 3u);
}

TEST_F(SeriesImportTest, refusesTheNameOfAToken)
{
    ImportOptions options;
    options.prefix = QStringLiteral("a.");
    project.importTable(parse("force\n1\n"), options);

    EXPECT_EQ(errorOf([&] { import("force\n1\n"); }), "a.csv: 'a.force' is a token of the project already");
    EXPECT_TRUE(project.series().empty());
}

TEST_F(SeriesImportTest, keepsItsNamesFromTokens)
{
    import("force\n1\n");
    ImportOptions options;
    options.prefix = QStringLiteral("a.");

    EXPECT_EQ(errorOf([&] { project.importTable(parse("force\n1\n"), options); }),
              "a.csv: 'a.force' is a series of the project already");
    EXPECT_TRUE(project.tokens().empty());
}

TEST_F(SeriesImportTest, refusesTheNameOfASeriesOfAnotherGroup)
{
    import("b.c\n1\n");

    EXPECT_EQ(errorOf([&] { import("c\n1\n", inGroup("a.b")); }),
              "a.csv: 'a.b.c' is a series of the group 'a' already");
}

TEST_F(SeriesImportTest, thatFailsHalfwayStoresNothing)
{
    import("a,b\n1,5\n2,6\n");
    executeRaw(path(), "CREATE TRIGGER no_c BEFORE INSERT ON series WHEN NEW.name = 'a.c' "
                       "BEGIN SELECT RAISE(ABORT, 'no c'); END");

    EXPECT_EQ(errorOf([&] { import("a,c\n7,8\n"); }), path().toStdString() + ": no c");
    EXPECT_EQ(rowsOf(project, "a.a"), "1 2");
    EXPECT_EQ(rowsOf(project, "a.b"), "5 6");
    EXPECT_EQ(modified("a.a"), 1u);
}

TEST_F(SeriesImportTest, intoAnOlderProjectBringsItUpToDate)
{
    project.importTable(parse("a\n1\n"));
    makeOlder();

    Project older(path(), OpenMode_t::WRITE);
    older.importSeries(parse("v\n5\n"));

    EXPECT_EQ(rowsOf(older, "a.v"), "5");
    EXPECT_EQ(valueOf(older, "a", 1), "1");
    EXPECT_EQ(rowsOf(Project(path(), OpenMode_t::READ), "a.v"), "5");
}

TEST_F(SeriesImportTest, anOlderProjectThatIsOnlyReadStaysAsItIs)
{
    project.importTable(parse("a\n1\n"));
    makeOlder();
    QByteArray const before = content(path());

    Project const older(path(), OpenMode_t::READ);

    EXPECT_TRUE(older.series().empty());
    EXPECT_EQ(valueOf(older, "a", 1), "1");
    EXPECT_EQ(content(path()), before);
}
