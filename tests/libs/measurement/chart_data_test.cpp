// What a chart token shows of a project.
#include "chart_support.h"

#include <cfloat>

using namespace Zem::Measurement;
using Zem::UnitData;
using Vec = Zem::BaVec2d<double>;

namespace {

using ChartDataByToken = ProjectChartTest;

} // namespace

TEST_F(ChartDataByToken, goesOverAllStages)
{
    ImportOptions options;
    options.stageColumn = QStringLiteral("no");
    import("no,a,b\n3,30,300\n1,10,100\n7,70,700\n", options);
    Borrowed const data(tokens, chart("stage", {"a", "b"}));

    EXPECT_EQ(pointsOf(data, "a"), "0:(1, 10) 1:(3, 30) 2:(7, 70)");
    EXPECT_EQ(pointsOf(data, "b"), "0:(1, 100) 1:(3, 300) 2:(7, 700)");
}

TEST_F(ChartDataByToken, putsOneTokenOverAnother)
{
    import("x,y\n5,50\n4,40\n");
    Borrowed const data(tokens, chart("x", {"y"}));

    EXPECT_EQ(pointsOf(data, "y"), "0:(5, 50) 1:(4, 40)");
}

TEST_F(ChartDataByToken, leavesGapsForMissingValues)
{
    import("x,y\n1,10\n,20\n3,\n4,40\n");
    Borrowed const data(tokens, chart("x", {"y"}));

    EXPECT_EQ(pointsOf(data, "y"), "0:(1, 10) 1:gap 2:gap 3:(4, 40)");
}

TEST_F(ChartDataByToken, putsSeriesOfOneTableOverEachOther)
{
    importSeries("t,v\n0.5,1\n1.5,\n2.5,3\n");
    Borrowed const data(tokens, chart("a.t", {"a.v"}));

    EXPECT_EQ(pointsOf(data, "a.v"), "0:(0.5, 1) 1:gap 2:(2.5, 3)");
}

TEST_F(ChartDataByToken, numbersTheRowsOfASeriesFromOneAgainstTheStage)
{
    importSeries("v\n10\n20\n");
    Borrowed const data(tokens, chart("stage", {"a.v"}));

    EXPECT_EQ(pointsOf(data, "a.v"), "0:(1, 10) 1:(2, 20)");
}

TEST_F(ChartDataByToken, isEmptyWhereXAndYDoNotBelongTogether)
{
    import("x,y\n1,10\n");
    importSeries("t,v\n1,2\n", "one");
    importSeries("w\n1\n", "two");

    Borrowed const overToken(tokens, chart("x", {"y", "one.v"}));
    EXPECT_EQ(pointsOf(overToken, "y"), "0:(1, 10)");
    EXPECT_EQ(pointsOf(overToken, "one.v"), "");
    Borrowed const overSeries(tokens, chart("one.t", {"y", "one.v", "two.w"}));
    EXPECT_EQ(pointsOf(overSeries, "y"), "");
    EXPECT_EQ(pointsOf(overSeries, "one.v"), "0:(1, 2)");
    EXPECT_EQ(pointsOf(overSeries, "two.w"), "");
}

TEST_F(ChartDataByToken, isInTheBaseUnit)
{
    import("x [cm],y [kN]\n1.5,2\n");
    importSeries("t [min],v [km/h]\n2,36\n");

    Borrowed const byStage(tokens, chart("x", {"y"}));
    EXPECT_EQ(pointsOf(byStage, "y"), "0:(15, 2000)"); // mm, N
    EXPECT_EQ(byStage->getUnitX().getUnitName(), QStringLiteral("cm"));
    EXPECT_EQ(byStage->getUnitY().getUnitName(), QStringLiteral("kN"));
    Borrowed const byRow(tokens, chart("a.t", {"a.v"}));
    EXPECT_EQ(pointsOf(byRow, "a.v"), "0:(120, 10)"); // s, m/s
}

TEST_F(ChartDataByToken, hasAGapWhereABaseUnitOverflows)
{
    importSeries("t [m]\n1e308\n2\n");
    Borrowed const data(tokens, chart("stage", {"a.t"}));

    EXPECT_EQ(pointsOf(data, "a.t"), "0:gap 1:(2, 2000)");
}

TEST_F(ChartDataByToken, hasNoUnitWithoutOneAndAtStages)
{
    import("x,y\n1,2\n");

    Borrowed const overToken(tokens, chart("x", {"y"}));
    EXPECT_FALSE(overToken->getUnitX().hasUnit());
    EXPECT_FALSE(overToken->getUnitY().hasUnit());
    Borrowed const overStage(tokens, chart("stage", {"y"}));
    EXPECT_FALSE(overStage->getUnitX().hasUnit());
}

TEST_F(ChartDataByToken, hasAUnitOfYOnlyWhereAllAgreeInTheQuantity)
{
    import("a [kN],b [N],c [mm]\n1,2,3\n");

    EXPECT_EQ(Borrowed(tokens, chart("stage", {"a", "b"}))->getUnitY().getUnitName(), QStringLiteral("kN"));
    EXPECT_FALSE(Borrowed(tokens, chart("stage", {"a", "b", "c"}))->getUnitY().hasUnit());
}

TEST_F(ChartDataByToken, countsMomentsInSecondsFromTheFirst)
{
    import("when,y\n2017-07-26 12:00:00,1\n2017-07-26 12:00:01.5,2\n2017-07-26 13:00:00,3\n");
    importSeries("when,v\n,1\n2017-07-26 12:00:00,2\n2017-07-26 11:59:00,3\n");

    Borrowed const byStage(tokens, chart("when", {"y"}));
    EXPECT_EQ(pointsOf(byStage, "y"), "0:(0, 1) 1:(1.5, 2) 2:(3600, 3)");
    EXPECT_EQ(byStage->getUnitX(), UnitData(Zem::uTime));
    EXPECT_EQ(pointsOf(Borrowed(tokens, chart("a.when", {"a.v"})), "a.v"), "0:gap 1:(0, 2) 2:(-60, 3)");
}

TEST_F(ChartDataByToken, asksForTheRangeOfTheWholeSeries)
{
    importSeries("t,v,w\n0,5,\n1,,-7\n2,9,\n3,,\n");
    Borrowed const data(tokens, chart("a.t", {"a.v", "a.w"}));

    EXPECT_TRUE(data->getHasAxisXRange());
    EXPECT_EQ(data->getAxisXRange(), (Vec{0, 3}));
    EXPECT_TRUE(data->getHasAxisYRange());
    EXPECT_EQ(data->getAxisYRange(), (Vec{-7, 9}));
}

TEST_F(ChartDataByToken, asksForNoRangeOfASingleValue)
{
    importSeries("t,v\n1,5\n2,5\n");
    Borrowed const data(tokens, chart("a.t", {"a.v"}));

    EXPECT_TRUE(data->getHasAxisXRange());
    EXPECT_FALSE(data->getHasAxisYRange());
}

TEST_F(ChartDataByToken, namesItsCurvesByTheirTitles)
{
    import("engineering strain,conc [mg/L]\n1,2\n");
    Borrowed const data(tokens, chart("stage", {"engineering_strain", "conc"}));

    EXPECT_EQ(data->getDataset(QStringLiteral("engineering_strain"))->getDisplayText(),
              QStringLiteral("engineering strain"));
    EXPECT_EQ(data->getDataset(QStringLiteral("conc"))->getDisplayText(), QStringLiteral("conc [mg/L]"));
}

TEST_F(ChartDataByToken, offersStatisticsAlwaysAndMarkersOverStages)
{
    import("y\n1\n");
    importSeries("v\n1\n");
    Borrowed const byStage(tokens, chart("stage", {"y"}));
    Borrowed const byRow(tokens, chart("stage", {"a.v"}));

    EXPECT_TRUE(byStage->getComputeStatistics());
    EXPECT_TRUE(byStage->getSupportsStageMarkers());
    EXPECT_TRUE(byStage->getSupportsPointMarkers());
    EXPECT_TRUE(byRow->getComputeStatistics());
    EXPECT_FALSE(byRow->getSupportsStageMarkers());
    EXPECT_FALSE(byRow->getSupportsPointMarkers());
}

TEST_F(ChartDataByToken, hasCurvesOfDifferentColours)
{
    import("a,b\n1,2\n");
    Borrowed const data(tokens, chart("stage", {"a", "b"}));

    auto const colorOf = [&](char const *id) {
        return data->getDataset(QString::fromLatin1(id))->getParameters().getLineStyle().getColor();
    };
    EXPECT_EQ(colorOf("a"), Zem::Color(0, 114, 178));
    EXPECT_EQ(colorOf("b"), Zem::Color(213, 94, 0));
}

TEST_F(ChartDataByToken, doesNotExistWithoutAKnownX)
{
    import("y,note\n1,x\n");

    EXPECT_EQ(tokens.getChart(chart("x", {"y"})), nullptr);
    EXPECT_EQ(tokens.getChart(chart("note", {"y"})), nullptr);
    EXPECT_EQ(counter(chart("x", {"y"})), 0u);
}

TEST_F(ChartDataByToken, doesNotExistWithoutAKnownY)
{
    import("y,note,when\n1,x,2017-07-26\n");

    for (char const *const y : {"z", "note", "when", "stage"}) {
        EXPECT_EQ(tokens.getChart(chart("stage", {y})), nullptr) << y;
        EXPECT_EQ(counter(chart("stage", {y})), 0u) << y;
    }
    EXPECT_EQ(tokens.getChart(QStringLiteral("GENERIC_CHART/stage")), nullptr);
    EXPECT_EQ(tokens.getChart(QStringLiteral("GENERIC_CHART")), nullptr);
}

TEST_F(ChartDataByToken, leavesUnknownAndDoubleNamesOut)
{
    import("y\n1\n");
    Borrowed const data(tokens, chart("stage", {"z", "y", "y"}));

    EXPECT_TRUE(data->datasetExists(QStringLiteral("y")));
    EXPECT_FALSE(data->datasetExists(QStringLiteral("z")));
}

TEST_F(ChartDataByToken, findsNamesWithBackslashesAndTakesSlashesForOthers)
{
    import("a\\b\n5\n");

    EXPECT_EQ(pointsOf(Borrowed(tokens, chart("stage", {"a\\b"})), "a\\b"), "0:(1, 5)");
    EXPECT_EQ(tokens.getChart(chart("stage", {"a/b"})), nullptr);
}

TEST_F(ChartDataByToken, hasAColourScaleOverAllCurves)
{
    import("y [kN],z [N]\n1,500\n,3000\n2,\n");
    Borrowed const data(tokens, chart("stage", {"y", "z"}));
    Zem::Legend2::Legend const *legend = nullptr;
    Zem::Legend2::Data const *scale = nullptr;

    ASSERT_TRUE(data->getLegendData(&legend, &scale));
    EXPECT_EQ(legend->getUnitData().getUnit(), Zem::uForce);
    EXPECT_EQ(scale->getDynamicMinimum(), 500.0);
    EXPECT_EQ(scale->getDynamicMaximum(), 3000.0);
    EXPECT_EQ(scale->getAverage(), 1625.0);
}

TEST_F(ChartDataByToken, hasNoColourScaleOverASingleValue)
{
    import("y\n1\n1\n");
    Borrowed const data(tokens, chart("stage", {"y"}));
    Zem::Legend2::Legend const *legend = nullptr;
    Zem::Legend2::Data const *scale = nullptr;

    EXPECT_FALSE(data->getLegendData(&legend, &scale));
}

TEST_F(ChartDataByToken, showsASeriesWithoutRowsAsAnEmptyCurve)
{
    CsvTable table = parse("v\n1.5\n");
    table.lines.clear();
    table.columns[0].numbers.clear();
    project.importSeries(table);
    Borrowed const data(tokens, chart("stage", {"a.v"}));

    EXPECT_EQ(pointsOf(data, "a.v"), "");
    EXPECT_FALSE(data->getHasAxisXRange());
}
