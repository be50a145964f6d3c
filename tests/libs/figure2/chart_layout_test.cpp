// How a chart shares its room among axes, margins and plot.
#include "chart_element_fixture.h"

#include <ZemColorMap.h>
#include <ZemParse.h>

namespace Zem::Fig2 {
namespace {

class ChartLayout : public ChartTest
{
protected:
    void expectMargins(double left, double right, double top, double bottom)
    {
        double margins[4] = {-1, -1, -1, -1};
        chart.getMargins(&margins[0], &margins[1], &margins[2], &margins[3]);
        EXPECT_NEAR(margins[0], left, 1e-9);
        EXPECT_NEAR(margins[1], right, 1e-9);
        EXPECT_NEAR(margins[2], top, 1e-9);
        EXPECT_NEAR(margins[3], bottom, 1e-9);
    }
    void expectPlot(BaVec2d<double> const &offset, BaVec2d<double> const &size)
    {
        BaVec2d<double> foundSize;
        BaVec2d<double> foundOffset;
        chart.getSizeAndOffset(&foundSize, &foundOffset);
        expectAt(foundOffset, offset.x, offset.y);
        expectAt(foundSize, size.x, size.y);
    }
    void expectScale(double x, double y)
    {
        BaVec2d<double> origin;
        BaVec2d<double> scale;
        chart.getDataOriginAndScale(&origin, &scale);
        expectAt(scale, x, y);
    }
    void updateWith(double leftMargin, double rightMargin)
    {
        chart.setLeftMargin(leftMargin);
        chart.setRightMargin(rightMargin);
        update();
    }
};

TEST_F(ChartLayout, putsThePlotBetweenTheAxes)
{
    update();

    expectMargins(9.1, 3, 2.5, 8.1);
    expectPlot({19.1, 22.5}, {100, 50});
    EXPECT_NEAR(chart.getAxisX().getLength(), 106, 1e-9); // the plot and both margins
    EXPECT_NEAR(chart.getAxisY().getLength(), 55, 1e-9);
    EXPECT_EQ(chart.getAxisX().getTickPositions().size(), 3U);
    EXPECT_EQ(chart.getAxisY().getTickPositions().size(), 3U);
}

TEST_F(ChartLayout, followsTheSidesOfItsAxes)
{
    setAxes(Axis::HORIZONTAL_TOP, Axis::VERTICAL_LEFT);
    update();
    expectMargins(9.1, 3, 8.1, 2.5);
    expectPlot({19.1, 28.1}, {100, 50});

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_RIGHT);
    update();
    expectMargins(3, 9.1, 2.5, 8.1);
    expectPlot({13, 22.5}, {100, 50});

    setAxes(Axis::HORIZONTAL_TOP, Axis::VERTICAL_RIGHT);
    update();
    expectMargins(3, 9.1, 8.1, 2.5);
    expectPlot({13, 28.1}, {100, 50});
    expectScale(50, 25);
}

TEST_F(ChartLayout, ofTheXAxisAloneKeepsItsLabelsInside)
{
    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, true, false);
    update();
    expectMargins(3, 3, 0, 8.1);
    expectPlot({13, 20}, {106.1, 52.5});

    setAxes(Axis::HORIZONTAL_TOP, Axis::VERTICAL_RIGHT, true, false);
    update();
    expectMargins(3, 3, 8.1, 0);
    expectPlot({13, 28.1}, {106.1, 52.5});
    // The hidden axis still leaves room for half a line at the other end.
    expectScale(106.1 / 2, 50.0 / 2);
}

TEST_F(ChartLayout, ofTheYAxisAloneKeepsItsLabelsInside)
{
    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, false, true);
    update();
    expectMargins(9.1, 0, 2.5, 2.5);
    expectPlot({19.1, 22.5}, {103, 55.6});

    setAxes(Axis::HORIZONTAL_TOP, Axis::VERTICAL_RIGHT, false, true);
    update();
    expectMargins(0, 9.1, 2.5, 2.5);
    expectPlot({10, 22.5}, {103, 55.6});
    expectScale(100.0 / 2, 55.6 / 2);
}

TEST_F(ChartLayout, withoutAxesIsAllPlot)
{
    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, false, false);
    chart.setLeftMargin(20);
    chart.setRightMargin(20);

    update();

    expectMargins(0, 0, 0, 0);
    expectPlot({10, 20}, {112.1, 60.6});
    EXPECT_NEAR(chart.getAxisX().getLength(), 112.1, 1e-9);
    EXPECT_NEAR(chart.getAxisY().getLength(), 60.6, 1e-9);
}

TEST_F(ChartLayout, liesWithinADrawnBorder)
{
    chart.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color(0, 0, 0)));

    update();

    expectPlot({20.1, 23.5}, {98, 48});
    expectScale(49, 24);
}

TEST_F(ChartLayout, givesTheYAxisTheRoomAskedForAtItsSide)
{
    updateWith(20, 0);
    expectMargins(20, 3, 2.5, 8.1);
    EXPECT_NEAR(chart.getAxisY().getSize().x, 20, 1e-9);
    expectScale((112.1 - 23) / 2, 25);

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_RIGHT);
    updateWith(0, 20);
    expectMargins(3, 20, 2.5, 8.1);
    expectScale((112.1 - 23) / 2, 25);
}

TEST_F(ChartLayout, leavesTheRoomAskedForAtTheOtherSide)
{
    updateWith(0, 10);
    expectMargins(9.1, 10, 2.5, 8.1);
    expectScale((112.1 - 19.1) / 2, 25);

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_RIGHT);
    updateWith(10, 0);
    expectMargins(10, 9.1, 2.5, 8.1);
    expectScale((112.1 - 19.1) / 2, 25);
}

TEST_F(ChartLayout, needsNoMoreRoomThanItHasWhenLessIsAskedFor)
{
    updateWith(9, 2);

    expectMargins(9.1, 3, 2.5, 8.1);
}

TEST_F(ChartLayout, leavesTheRoomAskedForBesideAnXAxisAlone)
{
    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, true, false);

    updateWith(20, 10);

    expectMargins(20, 10, 0, 8.1);
}

TEST_F(ChartLayout, leavesNoRoomOppositeAYAxisAlone)
{
    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, false, true);
    updateWith(0, 10);
    expectMargins(9.1, 0, 2.5, 2.5);
    // At its own side the axis itself takes the room.
    updateWith(20, 0);
    expectMargins(20, 0, 2.5, 2.5);

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_RIGHT, false, true);
    updateWith(10, 0);
    expectMargins(0, 9.1, 2.5, 2.5);
}

TEST_F(ChartLayout, leavesTwoFifthsOfTheWidthAtASideAtMost)
{
    updateWith(100, 100);

    expectMargins(44.84, 44.84, 2.5, 8.1);
    EXPECT_NEAR(chart.getAxisY().getSize().x, 44.84, 1e-9);
    expectPlot({54.84, 22.5}, {22.42, 50});
    expectScale(22.42 / 2, 25);
}

TEST_F(ChartLayout, cutsTheRoomOfAWideAxis)
{
    chart.setSize({20, 60.6});

    update();

    // 9.1 mm are more than two fifths of 20.
    expectMargins(8, 3, 2.5, 8.1);
    expectPlot({66.05 - 10 + 8, 22.5}, {9, 50});
}

TEST_F(ChartLayout, hasAnEmptyPlotWhenItIsSmallerThanItsAxes)
{
    chart.setOrigin({50, 50});
    chart.setSize({2, 3});
    update();
    expectPlot({49.8, 51}, {0.4, 0});

    chart.setSize({0, 0});
    update();
    expectPlot({50, 52.5}, {0, 0});
}

TEST_F(ChartLayout, doesNotDependOnTheOneBefore)
{
    // The ticks up to "10.0" have a margin of 4, those of the layout before have one of 3.
    show({{0, 0}, {10, 10}});
    for (int updates = 0; updates < 3; ++updates) {
        update();
        EXPECT_NEAR(chart.getAxisX().getLength(), 112.1 - (11.1 - 4), 1e-9);
        expectMargins(11.1, 4, 2.5, 8.1);
        expectScale((112.1 - 15.1) / 10, 5);
    }
}

TEST_F(ChartLayout, goesOnUntilAxesAndPlotShareTheirEnds)
{
    show({{0, 0}, {1000000, 10}});
    update();
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
    chart.getMargins(&left, &right, &top, &bottom);
    double const ticks = chart.getAxisX().getLength() - 2.0 * chart.getAxisX().getMargin();
    EXPECT_NEAR(ticks, 112.1 - left - right, 1e-9);
}

TEST_F(ChartLayout, hasAMinimumSizeOfItsMarginsAndVisibleAxes)
{
    update();
    expectAt(chart.getMinimumSize(), 2 + 6 + 9.1, 2 + 8.1 + 5);

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, true, false);
    update();
    expectAt(chart.getMinimumSize(), 2 + 6, 2 + 8.1);

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, false, true);
    update();
    expectAt(chart.getMinimumSize(), 2 + 9.1, 2 + 5);

    setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, false, false);
    Support::loadParameters(chart, Parse::createDouble("margin", 4).toStdString());
    update();
    expectAt(chart.getMinimumSize(), 8, 8);
}

TEST_F(ChartLayout, givesItsFontToItsAxes)
{
    Font const font(QStringLiteral("Serif"), 9.0, Font::BOLD);
    chart.setFont(font);
    chart.setFontColor(Color(1, 2, 3));
    update();
    for (Axis const *axis : {&chart.getAxisX(), &chart.getAxisY()}) {
        EXPECT_EQ(axis->getFont(), font);
        EXPECT_EQ(axis->getFontColor(), Color(1, 2, 3));
    }

    chart.setUseSystemFont(true);
    update();
    EXPECT_EQ(chart.getAxisX().getFont(), Font::getSystemLabelFont());
    EXPECT_EQ(chart.getAxisY().getFont(), Font::getSystemLabelFont());
}

TEST_F(ChartLayout, takesTheDecimalsOfTheGlobalScaleWhereAnAxisAsksForThem)
{
    Legend2::Legend const before = Legend2::ColorMap::getGlobalLegendParams();
    Legend2::Legend scale = before;
    scale.setDigits(3);
    Legend2::ColorMap::setGlobalLegend(scale, Legend2::ColorMap::getGlobalLegendData());
    changeAxisY([](Axis &axis) { axis.setDigitsMode(Axis::DIGITS_MODE_3D); });

    update();

    Legend2::ColorMap::setGlobalLegend(before, Legend2::ColorMap::getGlobalLegendData());
    // "0.000" is 10 mm wide.
    EXPECT_NEAR(chart.getAxisY().getSize().x, 13.1, 1e-9);
    EXPECT_NEAR(chart.getAxisX().getMargin(), 3, 1e-9);
}

TEST_F(ChartLayout, ofAMaximizedChartFollowsThePage)
{
    chart.setMaximize(true);
    update();

    // Outside a figure there is no page.
    expectPlot({19.1, 22.5}, {100, 50});
}

TEST_F(ChartLayout, isLeftAloneWithoutToken)
{
    update();
    chart.setToken("");
    chart.setLeftMargin(30);
    chart.setSize({200, 100});
    show({{5, 5}, {7, 7}});

    update();

    EXPECT_NEAR(chart.getAxisX().getLength(), 106, 1e-9);
    EXPECT_EQ(chart.getAxisX().getRange(), BaVec2d<double>(0, 2));
    // The outline follows.
    EXPECT_EQ(Support::text(chart.getCoveredPolygon()), "-33.95,0.3 166.05,0.3 166.05,100.3 -33.95,100.3");
}

TEST_F(ChartLayout, isMadeForTheAxesAsTheyStandWithoutData)
{
    changeAxisX([](Axis &axis) { axis.setRange({0, 2}); });
    changeAxisY([](Axis &axis) { axis.setRange({0, 2}); });
    chart.setToken("unknown");

    update();

    expectPlot({19.1, 22.5}, {100, 50});
    expectScale(50, 25);
    EXPECT_EQ(tokens.lent(), 0);
}

} // namespace
} // namespace Zem::Fig2
