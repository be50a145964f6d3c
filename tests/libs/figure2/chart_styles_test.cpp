// What a chart paints for each style of a curve.
#include "chart_drawing_fixture.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>

namespace Zem::Fig2 {
namespace {

constexpr BaVec2d<double> GAP{DBL_MAX, DBL_MAX};
std::string const LINE = " pen 0.3 full #0000ffff sharp";

class ChartStyleTest : public ChartDrawingTest
{
};

TEST_F(ChartStyleTest, aSymbolIsABoxAboutItsPoint)
{
    add("a", looks(ChartParameters::STYLE_POINTS), {{1, 1}});
    EXPECT_EQ(curves(), box(30, 110));
}

/// Keeps what a symbol is drawn with.
class SymbolWatch : public Support::RecordingPainter
{
public:
    void drawSymbol(BaVec2d<double> const &, Symbol const &, LineStyle const &line, FillStyle const &fill,
                    Rotation const &) override
    {
        lines.push_back(line);
        fills.push_back(fill);
    }

    std::vector<LineStyle> lines;
    std::vector<FillStyle> fills;
};

TEST_F(ChartStyleTest, aSymbolHasAThinOutlineInItsColourThatIsSwitchedOff)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_POINTS);
    Symbol symbol = parameters.getSymbol();
    symbol.setColor(Color(9, 8, 7));
    parameters.setSymbol(symbol);
    add("a", parameters, {{1, 1}});
    update(&chart);
    SymbolWatch painter;
    EXPECT_TRUE(chart.draw(&tokens, &painter, 0));
    ASSERT_EQ(painter.lines.size(), 1U);
    LineStyle outline(0.1, LineStyle::STYLE_NONE, Color(9, 8, 7));
    outline.setCapStyle(LineStyle::CAP_SHARP);
    EXPECT_EQ(painter.lines[0], outline);
    EXPECT_EQ(painter.fills[0], FillStyle(Color(9, 8, 7)));
}

TEST_F(ChartStyleTest, aDatasetWithoutPointsIsPassedOver)
{
    add("a", looks(ChartParameters::STYLE_POINTS), {});
    EXPECT_EQ(drawn().find("clip"), std::string::npos);
}

TEST_F(ChartStyleTest, aLineIsOnePolylineUnderItsSymbols)
{
    add("a", looks(ChartParameters::STYLE_LINE), {{0, 0}, {5, 10}, {10, 0}});
    EXPECT_EQ(curves(),
              "polyline 10,120 110,20 210,120" + LINE + " no fill\n" + box(10, 120) + box(110, 20) + box(210, 120));
}

TEST_F(ChartStyleTest, aLineBreaksAtInvalidPoints)
{
    add("a", looks(ChartParameters::STYLE_LINE, Symbol::TYPE_NONE), {{0, 0}, {1, 1}, GAP, {2, 2}, {3, 3}, {4, 4}});
    EXPECT_EQ(curves(),
              "polyline 10,120 30,110" + LINE + " no fill\npolyline 50,100 70,90 90,80" + LINE + " no fill\n");
}

TEST_F(ChartStyleTest, twoPointsApartMakeNoLine)
{
    add("a", looks(ChartParameters::STYLE_LINE), {{1, 1}, GAP, {3, 3}});
    EXPECT_EQ(curves(), box(30, 110) + box(70, 90));
}

TEST_F(ChartStyleTest, aLonePointOfALineIsAHorizontalLineAcrossThePlot)
{
    add("a", looks(ChartParameters::STYLE_LINE), {GAP, {1, 4}, GAP});
    EXPECT_EQ(curves(), "line 10,80 210,80" + LINE + "\n" + box(30, 80));
}

TEST_F(ChartStyleTest, theSymbolsOfALineTakeNoPartOfItsFill)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_LINE);
    Symbol symbol = parameters.getSymbol();
    symbol.setColor(Color(9, 8, 7));
    parameters.setSymbol(symbol);
    add("a", parameters, {{1, 1}, {2, 1}});
    EXPECT_EQ(curves(),
              "polyline 30,110 50,110" + LINE + " no fill\n" + box(30, 110, "#090807ff") + box(50, 110, "#090807ff"));
}

TEST_F(ChartStyleTest, symbolsKeepTheirSpacingCountingGaps)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_POINTS);
    Symbol symbol = parameters.getSymbol();
    symbol.setSpacing(2);
    parameters.setSymbol(symbol);
    add("a", parameters, {{0, 0}, {1, 0}, {2, 0}, GAP, {4, 0}, {5, 0}, {6, 0}});
    EXPECT_EQ(curves(), box(10, 120) + box(130, 120));
}

TEST_F(ChartStyleTest, theLargestSpacingShowsTheFirstSymbolOnly)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_POINTS);
    Symbol symbol = parameters.getSymbol();
    symbol.setSpacing(std::numeric_limits<unsigned int>::max());
    parameters.setSymbol(symbol);
    add("a", parameters, {{0, 0}, {1, 0}});
    EXPECT_EQ(curves(), box(10, 120));
}

TEST_F(ChartStyleTest, aSymbolWithItsValueWritesItBelowAndToTheRight)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_POINTS);
    Symbol symbol(Symbol::TYPE_BOX, 2.0, true);
    symbol.setDigits(1);
    symbol.setColor(Color(255, 0, 0));
    symbol.setFont(Font("Serif", 6.0, 0));
    parameters.setSymbol(symbol);
    add("a", parameters, {{1, 1}, {2, 1}});
    EXPECT_EQ(curves(), box(30, 110, "#ff0000ff") + "text 31,111 '0.0' font Serif 6 0 #ff0000ff\n" +
                            box(50, 110, "#ff0000ff") + "text 51,111 '1.0' font Serif 6 0 #ff0000ff\n");
}

TEST_F(ChartStyleTest, aValueWithAnAbsurdNumberOfDigitsIsWrittenNevertheless)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_POINTS);
    Symbol symbol(Symbol::TYPE_BOX, 2.0, true);
    symbol.setDigits(4000000000U);
    parameters.setSymbol(symbol);
    add("a", parameters, {{1, 1}});
    EXPECT_NE(curves().find("'0." + std::string(99, '0') + "'"), std::string::npos);
}

TEST_F(ChartStyleTest, barsStandOnZeroBetweenTheMiddlesToTheirNeighbours)
{
    // Places 30, 50, 90: the bars reach from 20 to 40, 40 to 70 and 70 to 110, less a tenth on each side.
    add("a", looks(ChartParameters::STYLE_BARS), {{1, 5}, {2, 2}, {4, 10}});
    std::string const fill = LINE + " fill #00ff00ff\n";
    EXPECT_EQ(curves(), "polygon 22,70 38,70 38,120 22,120" + fill + "polygon 43,100 67,100 67,120 43,120" + fill +
                            "polygon 74,20 106,20 106,120 74,120" + fill);
}

TEST_F(ChartStyleTest, barsAreSortedAlongX)
{
    add("a", looks(ChartParameters::STYLE_BARS), {{3, 2}, {1, 5}});
    std::string const fill = LINE + " fill #00ff00ff\n";
    EXPECT_EQ(curves(), "polygon 14,70 46,70 46,120 14,120" + fill + "polygon 54,100 86,100 86,120 54,120" + fill);
}

TEST_F(ChartStyleTest, aBarNearZeroStaysVisible)
{
    add("a", looks(ChartParameters::STYLE_BARS), {{1, 0}, {3, 0.005}});
    std::string const fill = LINE + " fill #00ff00ff\n";
    EXPECT_EQ(curves(), "polygon 14,120 46,120 46,120.1 14,120.1" + fill +
                            "polygon 54,119.95 86,119.95 86,120.05 54,120.05" + fill);
}

TEST_F(ChartStyleTest, aBarOfNegativeValueHangsFromZero)
{
    Axis axis = handAxis(Axis::VERTICAL_LEFT);
    axis.setRange({-5, 5});
    chart.setAxisY(axis);
    add("a", looks(ChartParameters::STYLE_BARS), {{1, -2}, {3, 2}});
    std::string const fill = LINE + " fill #00ff00ff\n";
    // The labels "-5.0" are no longer than "10.0": the plot is where it was, zero at 70.
    EXPECT_EQ(curves(), "polygon 14,90 46,90 46,70 14,70" + fill + "polygon 54,50 86,50 86,70 54,70" + fill);
}

TEST_F(ChartStyleTest, aLoneBarIsAFlatMark)
{
    add("a", looks(ChartParameters::STYLE_BARS), {GAP, {5, 5}});
    EXPECT_EQ(curves(), "polygon 100,70.1 120,70.1 120,70 100,70" + LINE + " fill #00ff00ff\n");
}

TEST_F(ChartStyleTest, barsWithoutAValidPointPaintNothing)
{
    add("a", looks(ChartParameters::STYLE_BARS), {GAP, GAP});
    EXPECT_EQ(curves(), "");
}

TEST_F(ChartStyleTest, aSplineIsTenLinesForEachPointAndEndsAtTheLast)
{
    add("a", looks(ChartParameters::STYLE_SPLINE), {{0, 0}, GAP, {10, 10}});
    std::string const calls = curves();
    // Two valid points, 20 places, 19 lines on the straight line between them.
    EXPECT_EQ(std::count(calls.begin(), calls.end(), '\n'), 19 + 2);
    EXPECT_TRUE(calls.starts_with("line 10,120 20.5263,114.737" + LINE + "\n"));
    EXPECT_TRUE(calls.ends_with("210,20" + LINE + "\n" + box(10, 120) + box(210, 20)));
}

TEST_F(ChartStyleTest, aSplineWithoutBasePointsShowsItsSymbolsOnly)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_SPLINE);
    parameters.setNumberOfBasePoints(0);
    add("a", parameters, {{0, 0}, {10, 10}});
    EXPECT_EQ(curves(), box(10, 120) + box(210, 20));
}

TEST_F(ChartStyleTest, aSplineOfOnePointHasNoCurve)
{
    add("a", looks(ChartParameters::STYLE_SPLINE), {{5, 5}});
    EXPECT_EQ(curves(), box(110, 70));
}

TEST_F(ChartStyleTest, spikesStandOnZeroUnderTheirSymbols)
{
    add("a", looks(ChartParameters::STYLE_SPIKES), {{1, 5}, GAP, {2, 2}});
    EXPECT_EQ(curves(),
              "line 30,70 30,120" + LINE + "\n" + box(30, 70) + "line 50,100 50,120" + LINE + "\n" + box(50, 100));
}

TEST_F(ChartStyleTest, aSpikeOfNegativeValueHangsFromZero)
{
    Axis axis = handAxis(Axis::VERTICAL_LEFT);
    axis.setRange({-5, 5});
    chart.setAxisY(axis);
    add("a", looks(ChartParameters::STYLE_SPIKES), {{1, -2}});
    EXPECT_EQ(curves(), "line 30,90 30,70" + LINE + "\n" + box(30, 90));
}

TEST_F(ChartStyleTest, spikesFollowTheSpacingOfTheSymbolEvenWithoutOne)
{
    ChartParameters parameters = looks(ChartParameters::STYLE_SPIKES, Symbol::TYPE_NONE);
    Symbol symbol = parameters.getSymbol();
    symbol.setSpacing(1);
    parameters.setSymbol(symbol);
    add("a", parameters, {{1, 5}, {2, 5}, {3, 5}});
    EXPECT_EQ(curves(), "line 30,70 30,120" + LINE + "\nline 70,70 70,120" + LINE + "\n");
}

TEST_F(ChartStyleTest, anXMarkerIsALineAlongXAtTheHeightOfItsPoint)
{
    add("a", looks(ChartParameters::STYLE_X_MARKER), {{1, 5}});
    EXPECT_EQ(curves(), "line 10,70 210,70" + LINE + "\n" + box(30, 70));
}

TEST_F(ChartStyleTest, anXMarkerWithoutAnXStands)
{
    // A range width beyond the plot: x 20 lies at 410.
    add("a", looks(ChartParameters::STYLE_X_MARKER), {{DBL_MAX, 5}});
    EXPECT_EQ(curves(), "line 10,70 210,70" + LINE + "\n" + box(410, 70));
}

TEST_F(ChartStyleTest, aYMarkerIsALineAlongYAtThePlaceOfItsPoint)
{
    add("a", looks(ChartParameters::STYLE_Y_MARKER), {{1, 5}, {2, DBL_MAX}});
    EXPECT_EQ(curves(),
              "line 30,20 30,120" + LINE + "\n" + box(30, 70) + "line 50,20 50,120" + LINE + "\n" + box(50, -80));
}

/// A scale in two classes: dark blue below 1, yellow above.
class ChartColorTest : public ChartStyleTest
{
protected:
    ChartColorTest()
    {
        Legend2::Legend legend(uLength);
        legend.setFixedMinimum(0.0);
        legend.setFixedMaximum(1.0);
        data.setLegendData(legend, Legend2::Data());
        Legend2::Data const limits;
        Legend2::LegendHandler const handler(&legend, &limits);
        low = handler.getColor(0.0, Color(1, 1, 1));
        high = handler.getColor(1.0, Color(1, 1, 1));
    }

    static ChartParameters colored(ChartParameters::Style_t style)
    {
        ChartParameters parameters = looks(style);
        parameters.setComputeColor(true);
        return parameters;
    }
    static std::string nameOf(Color const &color)
    {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, "#%02x%02x%02xff", color.getRed(), color.getGreen(), color.getBlue());
        return buffer;
    }
    std::string lowLine() const { return " pen 0.3 full " + nameOf(low) + " sharp\n"; }
    std::string highLine() const { return " pen 0.3 full " + nameOf(high) + " sharp\n"; }
    std::string lowBox(double x, double y) const { return box(x, y, nameOf(low).c_str()); }
    std::string highBox(double x, double y) const { return box(x, y, nameOf(high).c_str()); }

    Color low;
    Color high;
};

TEST_F(ChartColorTest, theValueOfAPointChoosesTheColourOfItsSymbol)
{
    ASSERT_NE(low, high);
    add("a", colored(ChartParameters::STYLE_POINTS), {{1, 1}, {2, 1}});
    EXPECT_EQ(curves(), lowBox(30, 110) + highBox(50, 110));
}

TEST_F(ChartColorTest, aValueThatTheScaleDoesNotKnowIsBlack)
{
    Legend2::Legend legend(uLength);
    legend.setFixedMinimum(0.0);
    legend.setFixedMaximum(0.5);
    data.setLegendData(legend, Legend2::Data());
    add("a", colored(ChartParameters::STYLE_POINTS), {{1, 1}, {2, 1}});
    EXPECT_TRUE(curves().ends_with(box(50, 110, "#000000ff")));
}

TEST_F(ChartColorTest, theLineOfACurveKeepsItsColour)
{
    add("a", colored(ChartParameters::STYLE_LINE), {{1, 1}, {2, 1}});
    EXPECT_EQ(curves(), "polyline 30,110 50,110" + LINE + " no fill\n" + lowBox(30, 110) + highBox(50, 110));
}

TEST_F(ChartColorTest, spikesAndMarkersAreColouredWithTheirSymbols)
{
    add("a", colored(ChartParameters::STYLE_SPIKES), {{1, 1}, {2, 1}});
    EXPECT_EQ(curves(), "line 30,110 30,120" + lowLine() + lowBox(30, 110) + "line 50,110 50,120" + highLine() +
                            highBox(50, 110));
}

TEST_F(ChartColorTest, markersAlongXAreColouredByTheirPoints)
{
    add("a", colored(ChartParameters::STYLE_X_MARKER), {{1, 1}, {2, 2}});
    EXPECT_EQ(curves(), "line 10,110 210,110" + lowLine() + lowBox(30, 110) + "line 10,100 210,100" + highLine() +
                            highBox(50, 100));
}

TEST_F(ChartColorTest, markersAlongYAreColouredByTheirPoints)
{
    add("a", colored(ChartParameters::STYLE_Y_MARKER), {{1, 1}, {2, 2}});
    EXPECT_EQ(curves(),
              "line 30,20 30,120" + lowLine() + lowBox(30, 110) + "line 50,20 50,120" + highLine() + highBox(50, 100));
}

TEST_F(ChartColorTest, barsAreFilledByTheirValues)
{
    add("a", colored(ChartParameters::STYLE_BARS), {{1, 5}, {3, 5}});
    EXPECT_EQ(curves(), "polygon 14,70 46,70 46,120 14,120" + LINE + " fill " + nameOf(low) +
                            "\npolygon 54,70 86,70 86,120 54,120" + LINE + " fill " + nameOf(high) + "\n");
}

TEST_F(ChartColorTest, aCopyPaintsAsItsOriginalWithoutAnUpdate)
{
    Legend2::Data limits;
    limits.setDynamicMinimum(0.0);
    limits.setDynamicMaximum(1.0);
    data.setLegendData(Legend2::Legend(uLength), limits);
    add("a", colored(ChartParameters::STYLE_POINTS), {{1, 1}, {2, 1}});
    std::string const original = drawn();
    std::unique_ptr<Chart> const copy(chart.copy());
    Support::RecordingPainter painter;
    EXPECT_TRUE(copy->draw(&tokens, &painter, 0));
    EXPECT_EQ(painter.transcript(), original);
    EXPECT_NE(original.find(highBox(50, 110)), std::string::npos);
}

// Values that are no places.

TEST_F(ChartStyleTest, aPointThatIsNoNumberIsAGapInEveryStyle)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (ChartParameters::Style_t style : ChartParameters::getAllStyles()) {
        data.clear();
        add("a", looks(style), {{nan, 1}, {1, nan}, {nan, nan}});
        EXPECT_EQ(curves(), "") << style;
    }
}

TEST_F(ChartStyleTest, infinitePointsLieAtTheLimits)
{
    double const infinity = std::numeric_limits<double>::infinity();
    add("a", looks(ChartParameters::STYLE_LINE, Symbol::TYPE_NONE), {{-infinity, -infinity}, {infinity, infinity}});
    EXPECT_EQ(curves(), "polyline -190,220 410,-80" + LINE + " no fill\n");
}

TEST_F(ChartStyleTest, hugePointsLieAtTheLimits)
{
    add("a", looks(ChartParameters::STYLE_POINTS), {{1e300, -1e300}, {-DBL_MAX, 5}});
    EXPECT_EQ(curves(), box(410, 220) + box(-190, 70));
}

TEST_F(ChartStyleTest, withoutAnExtentOfTheRangeAllValuesLieInOnePlace)
{
    Axis axis = handAxis(Axis::HORIZONTAL_BOTTOM);
    axis.setRange({3, 3});
    chart.setAxisX(axis);
    add("a", looks(ChartParameters::STYLE_POINTS), {{1, 5}, {3, 5}});
    std::string const calls = curves();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), '\n'), 2);
    EXPECT_EQ(calls.find("nan"), std::string::npos);
    EXPECT_EQ(calls.find("inf"), std::string::npos);
}

TEST_F(ChartStyleTest, aTurnedChartHandsItsTurnToEveryCall)
{
    chart.setAngle(0.5);
    for (ChartParameters::Style_t style : ChartParameters::getAllStyles()) {
        data.clear();
        add("a", looks(style), {{1, 1}, {2, 2}});
        std::string const calls = curves();
        auto const lines = std::count(calls.begin(), calls.end(), '\n');
        std::string const turn = " turned 0.5 about 106.45,72.8\n";
        long turned = 0;
        for (std::size_t at = calls.find(turn); at != std::string::npos; at = calls.find(turn, at + 1))
            ++turned;
        EXPECT_GT(lines, 0);
        EXPECT_EQ(turned, lines) << style;
    }
}

} // namespace
} // namespace Zem::Fig2
