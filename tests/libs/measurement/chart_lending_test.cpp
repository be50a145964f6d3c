// How long chart data live, when they are made anew, and what moves their counters.
#include "chart_support.h"

using namespace Zem::Measurement;
using Zem::StageIdentifier;

namespace {

class ChartLending : public ProjectChartTest
{
protected:
    ProjectChartInterface charts{&tokens};

    /// Makes the values behind the interface's back unreadable; its revision stays.
    void breakValues() const { executeRaw(path(), "UPDATE series_chunk SET data = x'00'"); }
};

} // namespace

TEST_F(ChartLending, givesTheSameDataAsLongAsTheyAreLent)
{
    importSeries("v\n1\n2\n");
    QString const token = chart("stage", {"a.v"});
    Borrowed const first(tokens, token);
    breakValues();
    Borrowed const second(tokens, token);

    EXPECT_EQ(first.get(), second.get());
}

TEST_F(ChartLending, ofSomethingThatIsNotLentCannotEnd)
{
    importSeries("v\n1\n");
    QString const token = chart("stage", {"a.v"});

    EXPECT_THROW(tokens.releaseChart(token), Zem::ProgError);
    ASSERT_NE(tokens.getChart(token), nullptr);
    ASSERT_NE(tokens.getChart(token), nullptr);
    tokens.releaseChart(token);
    tokens.releaseChart(token);
    EXPECT_THROW(tokens.releaseChart(token), Zem::ProgError);
}

TEST_F(ChartLending, readsAnewWhatNobodyHoldsOrRegistered)
{
    importSeries("v\n1\n2\n");
    QString const token = chart("stage", {"a.v"});
    {
        Borrowed const data(tokens, token);
    }
    breakValues();

    EXPECT_THROW(tokens.getChart(token), ProjectError);
}

TEST_F(ChartLending, readsNothingAnewThatIsRegistered)
{
    importSeries("v\n1\n2\n");
    QString const token = chart("stage", {"a.v"});
    charts.registerChartToken(token);
    {
        Borrowed const data(tokens, token);
    }
    breakValues();

    EXPECT_EQ(pointsOf(Borrowed(tokens, token), "a.v"), "0:(1, 1) 1:(2, 2)");
}

TEST_F(ChartLending, givesUpWhatIsRegisteredNoMore)
{
    importSeries("v\n1\n2\n");
    QString const token = chart("stage", {"a.v"});
    charts.registerChartToken(token);
    {
        Borrowed const data(tokens, token);
    }
    breakValues();
    charts.unregisterChartToken(token);

    EXPECT_THROW(tokens.getChart(token), ProjectError);
}

TEST_F(ChartLending, givesUpWhatAnInterfaceThatHasGoneHadRegistered)
{
    importSeries("v\n1\n2\n");
    QString const token = chart("stage", {"a.v"});
    {
        ProjectChartInterface other(&tokens);
        other.registerChartToken(token);
        Borrowed const data(tokens, token);
    }
    breakValues();

    EXPECT_THROW(tokens.getChart(token), ProjectError);
}

TEST_F(ChartLending, showsNewValuesBesideOldOnesThatAreStillLent)
{
    importSeries("v\n1\n2\n");
    QString const token = chart("stage", {"a.v"});
    Borrowed const before(tokens, token);
    importSeries("v\n1\n5\n7\n");
    Borrowed const after(tokens, token);

    EXPECT_EQ(pointsOf(before, "a.v"), "0:(1, 1) 1:(2, 2)");
    EXPECT_EQ(pointsOf(after, "a.v"), "0:(1, 1) 1:(2, 5) 2:(3, 7)");
}

TEST_F(ChartLending, showsWhatAnotherConnectionStored)
{
    importSeries("v\n1\n");
    QString const token = chart("stage", {"a.v"});
    unsigned int const before = counter(token);

    Project(path(), OpenMode_t::WRITE).importSeries(parse("v\n9\n"));
    while (counter(token) == before) { // up to a millisecond late
    }

    EXPECT_EQ(pointsOf(Borrowed(tokens, token), "a.v"), "0:(1, 9)");
}

TEST_F(ChartLending, endsWellWhenTheTokenHasGoneMeanwhile)
{
    importSeries("v,w\n1,2\n");
    QString const token = chart("stage", {"a.v"});
    ASSERT_NE(tokens.getChart(token), nullptr);
    importSeries("w\n2\n");

    EXPECT_EQ(tokens.getChart(token), nullptr);
    EXPECT_EQ(counter(token), 0u);
    tokens.releaseChart(token);
}

TEST_F(ChartLending, movesTheCounterWithItsOwnValuesOnly)
{
    import("x,y,z\n1,2,3\n");
    QString const token = chart("x", {"y"});
    unsigned int const before = counter(token);

    import("x,y,z\n1,2,4\n");
    EXPECT_EQ(counter(token), before);
    import("x,y,z\n1,5,4\n");
    unsigned int const afterY = counter(token);
    EXPECT_NE(afterY, before);
    import("x,y,z\n7,5,4\n");
    EXPECT_NE(counter(token), afterY);
}

TEST_F(ChartLending, movesTheCounterWithTheStages)
{
    import("y\n1\n2\n");
    importSeries("v\n1\n");
    unsigned int const byStage = counter(chart("stage", {"y"}));
    unsigned int const byRow = counter(chart("stage", {"a.v"}));

    import("other\n1\n2\n3\n");

    EXPECT_NE(counter(chart("stage", {"y"})), byStage);
    EXPECT_EQ(counter(chart("stage", {"a.v"})), byRow);
}

TEST_F(ChartLending, movesTheCounterWithATitle)
{
    importSeries("v w\n1\n");
    unsigned int const before = counter(chart("stage", {"a.v_w"}));
    importSeries("v_w\n1\n");

    EXPECT_NE(counter(chart("stage", {"a.v_w"})), before);
}

TEST_F(ChartLending, keepsTheCounterWithoutAChange)
{
    import("y\n1\n2\n");
    unsigned int const before = counter(chart("stage", {"y"}));
    import("y\n1\n2\n");
    {
        Borrowed const data(tokens, chart("stage", {"y"}));
    }

    EXPECT_EQ(counter(chart("stage", {"y"})), before);
}

TEST_F(ChartLending, aTokenThatComesBackHasANewCounter)
{
    importSeries("v,w\n1,2\n");
    QString const token = chart("stage", {"a.v"});
    unsigned int const before = counter(token);
    importSeries("w\n2\n");
    EXPECT_EQ(counter(token), 0u);
    importSeries("v,w\n1,2\n");

    EXPECT_GT(counter(token), before);
}

TEST_F(ChartLending, tellsTheCounterOfASeriesWithoutReadingIt)
{
    importSeries("v\n1\n");
    breakValues();
    charts.setCurrentStage(StageIdentifier(1));

    EXPECT_NE(counter(chart("stage", {"a.v"})), 0u);
}

TEST_F(ChartLending, marksTheCurrentStage)
{
    import("x,a,b\n10,1,\n20,2,5\n30,,\n,4,4\n");
    QString const token = chart("x", {"a", "b"});

    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "");
    charts.setCurrentStage(StageIdentifier(2));
    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "line 20, points (20, 2) (20, 5)");
    charts.setCurrentStage(StageIdentifier(1));
    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "line 10, points (10, 1)");
    charts.setCurrentStage(StageIdentifier(3));
    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "line 30, points");
    charts.setCurrentStage(StageIdentifier(4)); // without x
    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "");
    charts.setCurrentStage(StageIdentifier(99));
    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "");
}

TEST_F(ChartLending, marksNoStageOverRows)
{
    import("y\n1\n2\n");
    importSeries("t,v\n1,2\n");
    charts.setCurrentStage(StageIdentifier(1));

    EXPECT_EQ(markersOf(Borrowed(tokens, chart("a.t", {"a.v", "y"}))), "");
    EXPECT_EQ(markersOf(Borrowed(tokens, chart("stage", {"a.v", "y"}))), "line 1, points (1, 1)");
}

TEST_F(ChartLending, movesTheMarkOfWhatIsRegistered)
{
    import("y\n1\n2\n");
    QString const token = chart("stage", {"y"});
    charts.registerChartToken(token);
    {
        Borrowed const data(tokens, token);
    }
    charts.setCurrentStage(StageIdentifier(2));

    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "line 2, points (2, 2)");
}

TEST_F(ChartLending, leavesTheMarkOfLentDataWhereItWas)
{
    import("y\n1\n2\n");
    QString const token = chart("stage", {"y"});
    charts.setCurrentStage(StageIdentifier(1));
    Borrowed const before(tokens, token);
    charts.setCurrentStage(StageIdentifier(2));
    Borrowed const after(tokens, token);

    EXPECT_EQ(markersOf(before), "line 1, points (1, 1)");
    EXPECT_EQ(markersOf(after), "line 2, points (2, 2)");
}

TEST_F(ChartLending, movesTheCounterOnlyWhenTheMarkMoves)
{
    import("x,y\n10,1\n20,2\n20,2\n");
    QString const token = chart("x", {"y"});
    charts.setCurrentStage(StageIdentifier(1));
    unsigned int const first = counter(token);

    charts.setCurrentStage(StageIdentifier(2));
    unsigned int const second = counter(token);
    EXPECT_NE(second, first);
    charts.setCurrentStage(StageIdentifier(3)); // at the same place
    EXPECT_EQ(counter(token), second);
    charts.setCurrentStage(StageIdentifier(2));
    EXPECT_EQ(counter(token), second);
}
