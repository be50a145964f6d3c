// Which values a chart shows, and where they lie on the page.
#include "axis_fixture.h"
#include "chart_element_fixture.h"

#include <ZemFig2Rotation.h>

#include <cmath>

namespace Zem::Fig2 {
namespace {

class ChartRange : public ChartTest
{
protected:
    void setModes(Axis::RangeMode minimum, Axis::RangeMode maximum)
    {
        auto const set = [=](Axis &axis) {
            axis.setRangeModeMin(minimum);
            axis.setRangeModeMax(maximum);
            axis.setRange({-4, 9});
        };
        changeAxisX(set);
        changeAxisY(set);
    }
    void expectRanges(BaVec2d<double> const &x, BaVec2d<double> const &y)
    {
        update();
        EXPECT_EQ(chart.getAxisX().getRange(), x);
        EXPECT_EQ(chart.getAxisY().getRange(), y);
    }
    void askFor(BaVec2d<double> const &x, BaVec2d<double> const &y)
    {
        data.setHasAxisXRange(true);
        data.setHasAxisYRange(true);
        data.setAxisXRange(x);
        data.setAxisYRange(y);
    }
};

TEST_F(ChartRange, isThatOfAllDatasets)
{
    addDataset(data, "b", {{-1, 5}, {1, 7}});
    addDataset(data, "empty");

    expectRanges({-1, 2}, {0, 7});
}

TEST_F(ChartRange, isThatOfTheDataWhateverTheyAskForInAutoMode)
{
    askFor({-10, 10}, {-20, 20});
    setModes(Axis::RANGE_MODE_AUTO, Axis::RANGE_MODE_AUTO);

    expectRanges({0, 2}, {0, 2});
}

TEST_F(ChartRange, isTheUsersInManualMode)
{
    askFor({-10, 10}, {-20, 20});
    setModes(Axis::RANGE_MODE_MANUAL, Axis::RANGE_MODE_MANUAL);

    expectRanges({-4, 9}, {-4, 9});
}

TEST_F(ChartRange, isWhatTheDataAskForInOptimumMode)
{
    askFor({-10, 10}, {-20, 20});
    setModes(Axis::RANGE_MODE_OPTIMUM, Axis::RANGE_MODE_OPTIMUM);

    expectRanges({-10, 10}, {-20, 20});
}

TEST_F(ChartRange, isThatOfTheDataInOptimumModeWhenTheyAskForNone)
{
    setModes(Axis::RANGE_MODE_OPTIMUM, Axis::RANGE_MODE_OPTIMUM);
    data.setHasAxisXRange(true);
    data.setAxisXRange({-10, 10});

    expectRanges({-10, 10}, {0, 2});
}

TEST_F(ChartRange, hasAModeForEachEnd)
{
    askFor({-10, 10}, {-20, 20});

    setModes(Axis::RANGE_MODE_MANUAL, Axis::RANGE_MODE_OPTIMUM);
    expectRanges({-4, 10}, {-4, 20});
    setModes(Axis::RANGE_MODE_OPTIMUM, Axis::RANGE_MODE_AUTO);
    expectRanges({-10, 2}, {-20, 2});
    setModes(Axis::RANGE_MODE_AUTO, Axis::RANGE_MODE_MANUAL);
    expectRanges({0, 9}, {0, 9});
}

TEST_F(ChartRange, staysAsItIsWithoutValues)
{
    show({});
    setModes(Axis::RANGE_MODE_AUTO, Axis::RANGE_MODE_AUTO);
    expectRanges({-4, 9}, {-4, 9});
    setModes(Axis::RANGE_MODE_OPTIMUM, Axis::RANGE_MODE_OPTIMUM);
    expectRanges({-4, 9}, {-4, 9});

    show({{DBL_MAX, 1}, {1, DBL_MAX}});
    expectRanges({-4, 9}, {-4, 9});

    data.clear();
    expectRanges({-4, 9}, {-4, 9});
    askFor({-10, 10}, {-20, 20});
    expectRanges({-10, 10}, {-20, 20});
}

TEST_F(ChartRange, ofOneValueIsWidenedByOneToEachSide)
{
    show({{3, 1}, {3, 5}});
    expectRanges({2, 4}, {1, 5});

    show({{1, 7}, {5, 7}});
    expectRanges({1, 5}, {6, 8});

    show({{3, 7}});
    expectRanges({2, 4}, {6, 8});
}

TEST_F(ChartRange, countsAsOneValueBelowATinyExtent)
{
    show({{0, 0}, {0.9e-50, 1.1e-50}});

    expectRanges({-1, 0.9e-50 + 1}, {0, 1.1e-50});
}

TEST_F(ChartRange, holdsNoPointsThatAreNoNumbers)
{
    addDataset(data, "b", {{NOT_A_NUMBER, 1}, {1, NOT_A_NUMBER}});

    expectRanges({0, 2}, {0, 2});
}

TEST_F(ChartRange, mayReachToInfinity)
{
    addDataset(data, "b", {{INF, 1}, {1, -INF}});

    expectRanges({0, INF}, {-INF, 2});

    BaVec2d<double> size;
    BaVec2d<double> offset;
    chart.getSizeAndOffset(&size, &offset);
    EXPECT_TRUE(size.x >= 0.0 && size.y >= 0.0);
    // All finite values lie at the finite end.
    EXPECT_NEAR(chart.getFigureCoordinates({1, 1}).x, offset.x, 1e-9);
}

TEST_F(ChartRange, withoutANumberIsRefused)
{
    setModes(Axis::RANGE_MODE_MANUAL, Axis::RANGE_MODE_MANUAL);
    changeAxisY([](Axis &axis) { axis.setRange({0, NOT_A_NUMBER}); });

    EXPECT_THROW(update(), ProgError);

    EXPECT_EQ(tokens.lent(), 1);
    EXPECT_EQ(tokens.onLoan(), 0);
}

class ChartCoordinates : public ChartRange
{
protected:
    void expectPlace(BaVec2d<double> const &point, double x, double y)
    {
        expectAt(chart.getFigureCoordinates(point), x, y);
    }
    void expectOriginAndScale(BaVec2d<double> const &origin, BaVec2d<double> const &scale)
    {
        BaVec2d<double> foundOrigin;
        BaVec2d<double> foundScale;
        chart.getDataOriginAndScale(&foundOrigin, &foundScale);
        expectAt(foundOrigin, origin.x, origin.y);
        expectAt(foundScale, scale.x, scale.y);
    }
    void showUnit(char const *name)
    {
        data.setUnitX(UnitData(uLength));
        data.setUnitY(UnitData(uLength));
        auto const set = [name](Axis &axis) { axis.setUnit(unitOf(uLength, name)); };
        changeAxisX(set);
        changeAxisY(set);
    }
};

TEST_F(ChartCoordinates, growToTheRightAndUpwards)
{
    update();

    expectPlace({0, 0}, 19.1, 72.5);
    expectPlace({2, 2}, 119.1, 22.5);
    expectPlace({1, 1.5}, 69.1, 35);
    expectPlace({-1, 3}, -30.9, -2.5);
}

TEST_F(ChartCoordinates, endOneRangeOutsideThePlot)
{
    update();

    expectPlace({DBL_MAX, DBL_MAX}, 219.1, -27.5);
    expectPlace({-DBL_MAX, -DBL_MAX}, -80.9, 122.5);
    expectPlace({INF, -INF}, 219.1, 122.5);
    expectPlace({4, -2}, 219.1, 122.5);
    expectPlace({3.5, -1.5}, 194.1, 110);
}

TEST_F(ChartCoordinates, ofWhatIsNoNumberAreNone)
{
    update();

    EXPECT_TRUE(std::isnan(chart.getFigureCoordinates({NOT_A_NUMBER, 1}).x));
    EXPECT_EQ(chart.getFigureCoordinates({NOT_A_NUMBER, 1}).y, 47.5);
    EXPECT_TRUE(std::isnan(chart.getFigureCoordinates({1, NOT_A_NUMBER}).y));
}

TEST_F(ChartCoordinates, takeValuesInTheBaseUnit)
{
    showUnit("cm");
    show({{0, 0}, {20, 20}});

    update();

    EXPECT_EQ(chart.getAxisX().getVisibleRange(), BaVec2d<double>(0, 2));
    expectPlace({10, 10}, 69.1, 47.5);
    expectPlace({DBL_MAX, DBL_MAX}, 219.1, -27.5);
    expectPlace({39, 0}, 19.1 + 3.9 * 50, 72.5);
    // Back come values in the unit shown.
    expectAt(chart.getChartCoordinates({69.1, 47.5}), 1, 1);
    expectOriginAndScale({19.1, 72.5}, {50, 25});
}

TEST_F(ChartCoordinates, endAtTheLimitWhenTheUnitMakesThemTooGreat)
{
    showUnit("um");
    show({{0, 0}, {0.002, 0.002}});

    update();

    expectPlace({DBL_MAX, -DBL_MAX}, 219.1, 122.5);
    expectPlace({0.001, 0.001}, 69.1, 47.5);
}

TEST_F(ChartCoordinates, goWithACopy)
{
    update();
    Chart const copy(chart);

    expectAt(copy.getFigureCoordinates({1, 1}), 69.1, 47.5);
    expectAt(copy.getFigureCoordinates({DBL_MAX, DBL_MAX}), 219.1, -27.5);
    expectAt(copy.getFigureCoordinates({-DBL_MAX, -DBL_MAX}), -80.9, 122.5);
}

TEST_F(ChartCoordinates, areThoseOfTheLastUpdate)
{
    update();
    chart.setOrigin({0, 0});

    expectPlace({1, 1}, 69.1, 47.5);
    // These two look at the chart as it stands.
    expectOriginAndScale({19.1 - 66.05, 72.5 - 50.3}, {50, 25});
    expectAt(chart.getChartCoordinates({69.1 - 66.05, 47.5 - 50.3}), 1, 1);
}

TEST_F(ChartCoordinates, haveTheirOriginWhereZeroWouldBe)
{
    show({{1, 10}, {3, 12}});
    changeAxisY([](Axis &axis) { axis.setDigits(0); });

    update();

    // "10" is 4 mm wide: the plot begins 7.1 mm from the left and is 112.1 - 7.1 - 3 = 102 mm wide.
    expectOriginAndScale({17.1 - 51, 72.5 + 25 * 10}, {51, 25});
    expectPlace({1, 10}, 17.1, 72.5);
    expectPlace({3, 12}, 119.1, 22.5);
}

TEST_F(ChartCoordinates, mirrorAReversedRange)
{
    changeAxisX([](Axis &axis) {
        axis.setRangeModeMin(Axis::RANGE_MODE_MANUAL);
        axis.setRangeModeMax(Axis::RANGE_MODE_MANUAL);
        axis.setRange({2, 0});
    });

    update();

    // Without ticks there are no labels that stick out: the plot is 112.1 - 9.1 = 103 mm wide.
    expectPlace({2, 0}, 19.1, 75 + 2.5);
    expectPlace({0, 0}, 122.1, 77.5);
    expectPlace({1.5, 0}, 19.1 + 103 * 0.25, 77.5);
    // Only values between 2 - 2 and 0 + 2 have places of their own.
    expectPlace({DBL_MAX, 0}, 19.1, 77.5);
    expectPlace({-5, 0}, 122.1, 77.5);
}

TEST_F(ChartCoordinates, ofARangeWithoutExtentAreOnePlace)
{
    setModes(Axis::RANGE_MODE_MANUAL, Axis::RANGE_MODE_MANUAL);
    auto const set = [](Axis &axis) { axis.setRange({5, 5}); };
    changeAxisX(set);
    changeAxisY(set);

    update();

    expectPlace({5, 5}, 19.1, 72.5);
    expectPlace({7, DBL_MAX}, 19.1, 72.5);
    expectOriginAndScale({19.1, 72.5}, {0, 0});
}

TEST_F(ChartCoordinates, ofThePageAreTurnedBack)
{
    chart.setAngle(M_PI / 2);
    update();

    // The value 1,1 lies 3.05 to the right of the centre and 2.8 above it; turned, it is 2.8 to the left and 3.05
    // above.
    expectPlace({1, 1}, 69.1, 47.5);
    expectAt(chart.getChartCoordinates({66.05 - 2.8, 50.3 - 3.05}), 1, 1);
}

TEST_F(ChartCoordinates, thereAndBackLoseNothing)
{
    show({{-3, 100}, {11, 250}});
    for (double angle : {0.0, 0.3, -2.0, 4.5}) {
        chart.setAngle(angle);
        update();
        for (BaVec2d<double> const &point : Points{{-3, 100}, {0, 170}, {11, 250}, {20, 90}}) {
            BaVec2d<double> const place = chart.getRotation().applyTo(chart.getFigureCoordinates(point));
            BaVec2d<double> const back = chart.getChartCoordinates(place);
            expectAt(back, point.x, point.y);
        }
    }
}

} // namespace
} // namespace Zem::Fig2
