// Projects whose series somebody has damaged behind the back of the library.
#include "project_support.h"

#include <ZemFig2ChartInterface.h>
#include <ZemMeasTokenInterface.h>

using namespace Zem::Measurement;

namespace {

class DamagedSeries : public ProjectTest
{
protected:
    void SetUp() override { Project(path(), OpenMode_t::CREATE).importSeries(parse("v,w\n1.5,10\n2.5,20\n")); }

    std::string error() const
    {
        std::string const text = errorOf([this] {
            Project const project(path(), OpenMode_t::READ);
            rowsOf(project, "a.v");
        });
        std::string const place = path().toStdString() + ": the project is damaged: ";
        return text.starts_with(place) ? text.substr(place.size()) : text;
    }

    void damage(char const *statement) const { executeRaw(path(), statement); }

    static constexpr char const *WRONG_VALUES = "series 'a.v' has not the values of its 2 rows";
};

} // namespace

TEST_F(DamagedSeries, isNamedWhenItsBytesAreTooFew)
{
    damage("UPDATE series_chunk SET data = x'0000000000' WHERE series = 1");
    EXPECT_EQ(error(), WRONG_VALUES);
}

TEST_F(DamagedSeries, isNamedWhenItsBytesAreTooMany)
{
    damage("UPDATE series_chunk SET data = zeroblob(24) WHERE series = 1");
    EXPECT_EQ(error(), WRONG_VALUES);
}

TEST_F(DamagedSeries, isNamedWhenItsBytesAreAText)
{
    damage("UPDATE series_chunk SET data = '0123456789abcdef' WHERE series = 1");
    EXPECT_EQ(error(), WRONG_VALUES);
}

TEST_F(DamagedSeries, isNamedWhenItsBytesHaveGone)
{
    damage("DELETE FROM series_chunk WHERE series = 1");
    EXPECT_EQ(error(), WRONG_VALUES);
}

TEST_F(DamagedSeries, isNamedWhenAChunkIsOneTooMany)
{
    damage("INSERT INTO series_chunk VALUES (1, 1, zeroblob(16))");
    EXPECT_EQ(error(), WRONG_VALUES);
}

TEST_F(DamagedSeries, isNamedWhenItsChunksHaveWrongNumbers)
{
    damage("UPDATE series_chunk SET chunk = 7 WHERE series = 1");
    EXPECT_EQ(error(), WRONG_VALUES);
    damage("UPDATE series_chunk SET chunk = -1 WHERE series = 1");
    EXPECT_EQ(error(), WRONG_VALUES);
}

TEST_F(DamagedSeries, costsNoMemoryWhenItsRowsAreCountedHigh)
{
    damage("UPDATE series_table SET row_count = 2147483647");
    EXPECT_EQ(error(), "series 'a.v' has not the values of its 2147483647 rows");
}

TEST_F(DamagedSeries, isNamedWhenItsRowsCannotBe)
{
    damage("UPDATE series_table SET row_count = 2147483648");
    EXPECT_EQ(error(), "a series cannot have 2147483648 rows");
    damage("UPDATE series_table SET row_count = -1");
    EXPECT_EQ(error(), "a series cannot have -1 rows");
    damage("UPDATE series_table SET row_count = 'many'");
    EXPECT_EQ(error(), "a number is missing");
}

TEST_F(DamagedSeries, isNamedWhenItsTableHasGone)
{
    damage("DELETE FROM series_table");
    EXPECT_EQ(error(), "a number is missing");
}

TEST_F(DamagedSeries, isNamedWhenItIsOfNoTypeOrOfText)
{
    damage("UPDATE series SET type = 77");
    EXPECT_EQ(error(), "there is no token type 77");
    damage("UPDATE series SET type = 3");
    EXPECT_EQ(error(), "series 'a.v' is of text");
}

TEST_F(DamagedSeries, givesGapsForNumbersThatAreNone)
{
    // The lowest byte first: infinity, then a NaN of other bits than the usual one, then 1.5 with such a NaN.
    damage("UPDATE series_chunk SET data = x'000000000000f07f010000000000f8ff' WHERE series = 1");
    EXPECT_EQ(rowsOf(Project(path(), OpenMode_t::READ), "a.v"), "- -");
    damage("UPDATE series_chunk SET data = x'000000000000f83f010000000000f8ff' WHERE series = 1");
    EXPECT_EQ(rowsOf(Project(path(), OpenMode_t::READ), "a.v"), "1.5 -");
}

TEST_F(DamagedSeries, makesGettingItsChartAnErrorAndLendsNothing)
{
    damage("UPDATE series_chunk SET data = x'00' WHERE series = 1");
    Project const project(path(), OpenMode_t::READ);
    ProjectTokenInterface const tokens(&project);
    QString const chart = Zem::Fig2::ChartInterface::createToken(QStringLiteral("stage"), {QStringLiteral("a.v")});

    EXPECT_TRUE(std::string_view(errorOf([&] { tokens.getChart(chart); })).ends_with(WRONG_VALUES));
    EXPECT_THROW(tokens.releaseChart(chart), Zem::ProgError);
}

TEST_F(DamagedSeries, harmsNoChartOfOthers)
{
    damage("UPDATE series_chunk SET data = x'00' WHERE series = 1");
    Project const project(path(), OpenMode_t::READ);
    ProjectTokenInterface const tokens(&project);
    QString const chart = Zem::Fig2::ChartInterface::createToken(QStringLiteral("stage"), {QStringLiteral("a.w")});

    EXPECT_NE(tokens.getChart(chart), nullptr); // only the series asked for is read
    tokens.releaseChart(chart);
}
