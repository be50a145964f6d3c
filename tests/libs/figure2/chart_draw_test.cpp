// What a chart paints around its curves, in which order and in which steps.
#include "chart_drawing_fixture.h"

#include <ZemError.h>
#include <ZemFig2Figure.h>

#include <cfloat>

namespace Zem::Fig2 {
namespace {

std::string const FRAME = "polygon 10,20 210,20 210,120 10,120 pen 0.1 full #000000ff sharp no fill\n";
std::string const CLIP = "clip 10,20 210,20 210,120 10,120\n";

class ChartDrawTest : public ChartDrawingTest
{
protected:
    ChartDrawTest()
    {
        Grid grid;
        grid.setLineStyle(LineStyle::null);
        chart.setGrid(grid);
    }

    /// Without axes: the plot takes all of the chart from -1.1,17.5 on.
    void hideAxes()
    {
        Axis x = handAxis(Axis::HORIZONTAL_BOTTOM);
        Axis y = handAxis(Axis::VERTICAL_LEFT);
        x.setVisible(false);
        y.setVisible(false);
        chart.setAxisX(x);
        chart.setAxisY(y);
    }

    static std::size_t count(std::string const &calls, std::string const &wanted)
    {
        std::size_t number = 0;
        for (std::size_t at = calls.find(wanted); at != std::string::npos; at = calls.find(wanted, at + 1))
            ++number;
        return number;
    }
};

TEST_F(ChartDrawTest, paintsAxesFrameCurvesAndTheFrameAgain)
{
    add("a", looks(ChartParameters::STYLE_POINTS), {{1, 1}});
    std::string const calls = drawn();
    std::string const xAxis = "line 10,120 10,123 pen 0.1 full #000000ff sharp\ntext 7,123.1 '0.0'";
    std::string const yAxis = "line 7,120 10,120 pen 0.1 full #000000ff sharp\ntext 0.9,117.5 '0.0'";
    EXPECT_NE(calls.find(xAxis), std::string::npos) << calls;
    EXPECT_LT(calls.find(xAxis), calls.find(yAxis));
    EXPECT_TRUE(calls.ends_with(FRAME + CLIP + box(30, 110) + "unclip\n" + FRAME)) << calls;
}

TEST_F(ChartDrawTest, paintsBackgroundFirstAndBorderAroundAndAfterTheCurves)
{
    hideAxes();
    chart.setBackground(FillStyle(Color(10, 20, 30)));
    LineStyle border = chart.getBorder();
    EXPECT_EQ(border.getWidth(), 0.1);
    chart.setBorder(LineStyle(0.1, LineStyle::STYLE_FULL, Color(40, 50, 60)));
    std::string const calls = drawn();
    std::string const outer = "polygon -1.1,17.5 214,17.5 214,128.1 -1.1,128.1";
    std::string const inner =
        "polygon -1.05,17.55 213.95,17.55 213.95,128.05 -1.05,128.05 pen 0.1 full #000000ff sharp "
        "no fill\n";
    std::string const frame = outer + " pen 0.1 full #28323cff sharp no fill\n";
    EXPECT_EQ(calls, outer + " no pen fill #0a141eff\n" + inner + frame + inner + frame);
}

TEST_F(ChartDrawTest, theGridComesBetweenAxesAndFrame)
{
    Grid grid;
    grid.setLineStyle(LineStyle(0.2, LineStyle::STYLE_DASHED, Color(1, 2, 3)));
    chart.setGrid(grid);
    std::string const calls = drawn();
    std::string const line = "line 110,120 110,20 pen 0.2 dashed #010203ff sharp\n";
    EXPECT_NE(calls.find(line), std::string::npos) << calls;
    EXPECT_LT(calls.find("'10.0'"), calls.find(line));
    EXPECT_LT(calls.find(line), calls.find(FRAME));
}

struct AxisPlaces
{
    Axis::Type x;
    Axis::Type y;
    char const *xTick; ///< the line of the tick at 0
    char const *yTick;
};

class AxisPlaceTest : public ChartDrawTest, public testing::WithParamInterface<AxisPlaces>
{
};

/// Chart from -1.1,17.5 to 214,128.1. A top axis takes the 8.1 mm from below, a right one its 11.1 mm from the left.
TEST_P(AxisPlaceTest, axesStandOnTheirSides)
{
    chart.setAxisX(handAxis(GetParam().x));
    chart.setAxisY(handAxis(GetParam().y));
    std::string const calls = drawn();
    EXPECT_NE(calls.find(std::string("line ") + GetParam().xTick + " pen"), std::string::npos) << calls;
    EXPECT_NE(calls.find(std::string("line ") + GetParam().yTick + " pen"), std::string::npos) << calls;
}

INSTANTIATE_TEST_SUITE_P(
    All, AxisPlaceTest,
    testing::Values(
        // The plot is 10,20 to 210,120.
        AxisPlaces{Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, "10,120 10,123", "7,120 10,120"},
        // The plot is 10,25.6 to 210,125.6; labels 17.5 to 22.5, ticks 22.6 to 25.6.
        AxisPlaces{Axis::HORIZONTAL_TOP, Axis::VERTICAL_LEFT, "10,22.6 10,25.6", "7,125.6 10,125.6"},
        // The plot is 2.9,20 to 202.9,120.
        AxisPlaces{Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_RIGHT, "2.9,120 2.9,123", "202.9,120 205.9,120"},
        AxisPlaces{Axis::HORIZONTAL_TOP, Axis::VERTICAL_RIGHT, "2.9,22.6 2.9,25.6", "202.9,125.6 205.9,125.6"}));

TEST_F(ChartDrawTest, anAxisAlongXIsPaintedWithoutOneAlongY)
{
    hideAxes();
    chart.setAxisX(handAxis(Axis::HORIZONTAL_BOTTOM));
    std::string const calls = drawn();
    // The plot is 2.9,17.5 to 210,120.
    EXPECT_NE(calls.find("line 2.9,120 2.9,123 pen"), std::string::npos) << calls;
    EXPECT_EQ(count(calls, "text "), 3U) << calls;
}

TEST_F(ChartDrawTest, anAxisAlongYIsPaintedWithoutOneAlongX)
{
    hideAxes();
    chart.setAxisY(handAxis(Axis::VERTICAL_LEFT));
    std::string const calls = drawn();
    // The plot is 10,20 to 214,125.6.
    EXPECT_NE(calls.find("line 7,125.6 10,125.6 pen"), std::string::npos) << calls;
    EXPECT_EQ(count(calls, "text "), 3U) << calls;
}

TEST_F(ChartDrawTest, axesThatStandOnNoSidesThrow)
{
    chart.setAxisX(handAxis(Axis::VERTICAL_LEFT));
    update(&chart);
    Support::RecordingPainter painter;
    try {
        chart.draw(&tokens, &painter, 0);
        FAIL() << "nothing thrown";
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().endsWith(QStringLiteral("Unhandled axis position")));
    }
    EXPECT_EQ(tokens.onLoan(), 0);
}

TEST_F(ChartDrawTest, withoutDataThereIsAMessageInABox)
{
    chart.setToken("a/b");
    tokens.remove("c");
    chart.setFontColor(Color(200, 0, 0));
    std::string const calls = drawn();
    std::string const outer = "-1.1,17.5 214,17.5 214,128.1 -1.1,128.1";
    EXPECT_EQ(calls, "polygon " + outer + " no pen no fill\npolygon " + outer +
                         " pen 0.1 full #c80000ff sharp no fill\nclip " + outer +
                         "\ntext -0.1,18.5 'unknown chart token: a/b' font Liberation Sans 12 0 #c80000ff\nunclip\n");
}

TEST_F(ChartDrawTest, withoutATokenTheMessageSaysSo)
{
    chart.setToken(QString());
    EXPECT_NE(drawn().find("'chart token not set'"), std::string::npos);
}

TEST_F(ChartDrawTest, aChartWithoutDataPaintsItsBorderOnce)
{
    chart.setToken(QString());
    chart.setBorder(LineStyle(0.2, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(count(drawn(), "pen 0.2 full"), 1U);
}

TEST_F(ChartDrawTest, barsLieUnderAllOtherCurves)
{
    add("a", looks(ChartParameters::STYLE_POINTS), {{1, 1}});
    add("b", looks(ChartParameters::STYLE_BARS), {{5, 5}});
    add("c", looks(ChartParameters::STYLE_POINTS), {{2, 1}});
    add("d", looks(ChartParameters::STYLE_BARS), {{6, 5}});
    std::string const bar = " pen 0.3 full #0000ffff sharp fill #00ff00ff\n";
    EXPECT_EQ(curves(), "polygon 100,70.1 120,70.1 120,70 100,70" + bar + "polygon 120,70.1 140,70.1 140,70 120,70" +
                            bar + box(30, 110) + box(50, 110));
}

TEST_F(ChartDrawTest, curvesOfOneOrderFollowTheirIds)
{
    add("c", looks(ChartParameters::STYLE_POINTS), {{3, 1}});
    add("a", looks(ChartParameters::STYLE_POINTS), {{1, 1}});
    add("b", looks(ChartParameters::STYLE_POINTS), {{2, 1}});
    EXPECT_EQ(curves(), box(30, 110) + box(50, 110) + box(70, 110));
}

TEST_F(ChartDrawTest, theFrameHasTheStyleOfTheChart)
{
    chart.setInnerBorder(LineStyle(0.4, LineStyle::STYLE_DASHED, Color(1, 2, 3)));
    EXPECT_EQ(count(drawn(), "polygon 10,20 210,20 210,120 10,120 pen 0.4 dashed #010203ff sharp no fill\n"), 2U);
}

TEST_F(ChartDrawTest, theMessageIsWrittenInTheFontOfTheChart)
{
    chart.setToken(QString());
    chart.setUseSystemFont(false);
    chart.setFont(Font("Serif", 7.0, 0));
    EXPECT_NE(drawn().find("'chart token not set' font Serif 7 0"), std::string::npos);
}

/// Shows dataset "a" as points; the data have another one, and another look.
TEST_F(ChartDrawTest, aGenericChartPaintsItsEntriesInItsLooks)
{
    GenericChart generic;
    prepare(&generic);
    generic.setTokenX("x");
    generic.setData({{ChartInterface::DataToken("a"), looks(ChartParameters::STYLE_POINTS)}});
    ChartData &offered = tokens.add(generic.getToken());
    addTo(&offered, "a", looks(ChartParameters::STYLE_LINE), {{1, 1}, {2, 1}});
    addTo(&offered, "b", looks(ChartParameters::STYLE_POINTS), {{3, 3}});
    update(&generic);
    Support::RecordingPainter painter;
    EXPECT_TRUE(generic.draw(&tokens, &painter, 0));
    EXPECT_EQ(clipped(painter), box(30, 110) + box(50, 110));
}

TEST_F(ChartDrawTest, infoPointsAndMarkersComeLast)
{
    add("a", looks(ChartParameters::STYLE_POINTS), {{1, 1}});
    data.setInfoPointColor(Color(7, 8, 9));
    data.getInfoPoints() = {{2, DBL_MAX}, {DBL_MAX, 3}, {4, 5}};
    data.addMarker(new LineChartMarker(6));
    chart.setShowCurrentStage(true);
    std::string const pen = " pen 0.1 full #070809ff sharp\n";
    std::string const calls = drawn();
    EXPECT_TRUE(calls.ends_with(CLIP + box(30, 110) + "unclip\n" + CLIP + "line 50,20 50,120" + pen +
                                "line 10,90 210,90" + pen + "line 90,20 90,120" + pen + "line 10,70 210,70" + pen +
                                "unclip\n" + CLIP + "line 130,20 130,120 pen 0.1 dotted #000000ff sharp\nunclip\n" +
                                FRAME))
        << calls;
}

TEST_F(ChartDrawTest, overlayAndMarkersTurnWithTheChart)
{
    chart.setAngle(0.5);
    data.getInfoPoints() = {{2, 2}};
    data.addMarker(new LineChartMarker(6));
    data.addMarker(new PointsChartMarker({{1, 1}}));
    auto *named = new NamedPointChartMarker;
    named->setPoint({3, 3});
    named->setName("P");
    named->setSymbol(Symbol(Symbol::TYPE_BOX, 2.0, false));
    data.addMarker(named);
    chart.setShowCurrentStage(true);
    chart.setShowPointMarkers(true);
    std::string const calls = drawn();
    EXPECT_EQ(count(calls, "\n"), count(calls, " turned 0.5 about 106.45,72.8\n") + 2 * count(calls, "unclip\n"));
}

// Steps.

ChartDataset *fill(ChartDataset *dataset, int points)
{
    for (int i = 0; i < points; ++i)
        dataset->addPoint({i, {5, 5}, 0});
    return dataset;
}

class ChartStepTest : public ChartDrawTest
{
protected:
    /// How much is painted within clippings in each step until the chart has finished.
    std::vector<std::size_t> steps(Painter::Mode_t mode = 1)
    {
        update(&chart);
        std::vector<std::size_t> result;
        for (bool finished = false; !finished && result.size() < 100;) {
            Support::RecordingPainter painter;
            painter.setMode(mode);
            finished = chart.draw(&tokens, &painter, static_cast<int>(result.size()));
            result.push_back(count(clipped(painter), "\n"));
            EXPECT_EQ(count(painter.transcript(), FRAME), (result.size() == 1 ? 1U : 0U) + (finished ? 1U : 0U));
            EXPECT_EQ(tokens.onLoan(), 0);
        }
        return result;
    }

    void addPoints(char const *id, ChartParameters::Style_t style, int points)
    {
        fill(add(id, looks(style), {}), points);
    }
};

using Counts = std::vector<std::size_t>;

TEST_F(ChartStepTest, shortDataTakeOneStep)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 9999);
    EXPECT_EQ(steps(), Counts{9999});
}

TEST_F(ChartStepTest, tenThousandPointsTakeAStepAnEmptyOneAndTheOverlay)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 10000);
    EXPECT_EQ(steps(), (Counts{10000, 0, 0}));
}

TEST_F(ChartStepTest, modeZeroPaintsAllAtOnce)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 25000);
    EXPECT_EQ(steps(0), Counts{25000});
    EXPECT_EQ(steps(2), (Counts{10000, 10000, 5000, 0}));
}

TEST_F(ChartStepTest, eachStyleKnowsWhetherItCanStop)
{
    std::map<ChartParameters::Style_t, Counts> const expected{
        {ChartParameters::STYLE_LINE, {10001, 0}},        {ChartParameters::STYLE_BARS, {10000, 0}},
        {ChartParameters::STYLE_POINTS, {10000, 0, 0}},   {ChartParameters::STYLE_SPLINE, {10000 + 99999, 0}},
        {ChartParameters::STYLE_SPIKES, {20000, 0, 0}},   {ChartParameters::STYLE_X_MARKER, {20000, 0, 0}},
        {ChartParameters::STYLE_Y_MARKER, {20000, 0, 0}},
    };
    for (auto const &[style, counts] : expected) {
        data.clear();
        addPoints("a", style, 10000);
        EXPECT_EQ(steps(), counts) << style;
    }
}

TEST_F(ChartStepTest, theStepsOfSeveralDatasetsFollowEachOther)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 12000);
    addPoints("b", ChartParameters::STYLE_LINE, 20000);
    addPoints("c", ChartParameters::STYLE_POINTS, 3);
    addPoints("d", ChartParameters::STYLE_BARS, 2);
    data.getInfoPoints() = {{5, 5}};
    EXPECT_EQ(steps(), (Counts{2, 10000, 2000, 20001, 3, 2}));
}

TEST_F(ChartStepTest, symbolsCountOnFromStepToStep)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_POINTS);
    Symbol symbol = parameters.getSymbol();
    symbol.setSpacing(2);
    parameters.setSymbol(symbol);
    fill(add("a", parameters, {}), 20001);
    // 0, 3, .. 9999: 3334; then 10002 .. 19998: 3333; then none of 20000.
    EXPECT_EQ(steps(), (Counts{3334, 3333, 0, 0}));
}

TEST_F(ChartStepTest, anEmptyDatasetTakesItsStep)
{
    addPoints("a", ChartParameters::STYLE_LINE, 0);
    addPoints("b", ChartParameters::STYLE_LINE, 10000);
    EXPECT_EQ(steps(), (Counts{0, 10001, 0}));
}

TEST_F(ChartStepTest, drawingsThatTakeTurnsAreBothWhole)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 20000);
    update(&chart);
    Support::RecordingPainter one;
    Support::RecordingPainter other;
    for (int step = 0; step < 4; ++step) {
        EXPECT_EQ(chart.draw(&tokens, &one, step), step == 3);
        EXPECT_EQ(chart.draw(&tokens, &other, step), step == 3);
    }
    EXPECT_EQ(count(clipped(one), "\n"), 20000U);
    EXPECT_EQ(one.transcript(), other.transcript());
}

TEST_F(ChartStepTest, aDatasetThatGoesAwayBetweenStepsIsPassedOver)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 20000);
    update(&chart);
    Support::RecordingPainter painter;
    EXPECT_FALSE(chart.draw(&tokens, &painter, 0));
    data.removeDataset("a");
    EXPECT_FALSE(chart.draw(&tokens, &painter, 1));
    EXPECT_FALSE(chart.draw(&tokens, &painter, 2));
    EXPECT_TRUE(chart.draw(&tokens, &painter, 3));
}

TEST_F(ChartStepTest, tenThousandDatasetsAreDrawnInSteps)
{
    for (int i = 0; i < 10000; ++i)
        addPoints(std::to_string(i).c_str(), ChartParameters::STYLE_POINTS, 1);
    update(&chart);
    std::size_t painted = 0;
    int step = 0;
    for (bool finished = false; !finished; ++step) {
        Support::RecordingPainter painter;
        finished = chart.draw(&tokens, &painter, step);
        painted += count(clipped(painter), "\n");
    }
    EXPECT_EQ(step, 10001);
    EXPECT_EQ(painted, 10000U);
}

TEST_F(ChartStepTest, aFigureDrawsAllSteps)
{
    addPoints("a", ChartParameters::STYLE_POINTS, 25000);
    Figure figure(&tokens);
    auto *element = new Chart;
    prepare(element);
    element->setToken("c");
    figure.getRoot()->addChild(element);
    figure.update(stage, true);
    Support::RecordingPainter painter;
    figure.draw(&painter);
    EXPECT_EQ(count(clipped(painter), "\n"), 25000U);
}

} // namespace
} // namespace Zem::Fig2
