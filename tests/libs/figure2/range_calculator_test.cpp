#include <FakeCalculator.h>
#include <ZemFig2RangeCalculator.h>

#include <ZemError.h>
#include <ZemLegend.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Fig2 {
namespace {

using Legend2::Data;
using Legend2::Legend;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double MAX = std::numeric_limits<double>::max();
constexpr double INF = std::numeric_limits<double>::infinity();
constexpr int DERIVE = -1;
constexpr int INT_MOST = std::numeric_limits<int>::max();

std::vector<QString> texts(std::initializer_list<char const *> list)
{
    std::vector<QString> result;
    for (char const *text : list)
        result.push_back(QString::fromLatin1(text));
    return result;
}

/// Every character is 2 mm wide and 5 mm high.
class RangeCalculatorTest : public testing::Test
{
protected:
    RangeCalculator horizontal(double minimum, double maximum, double length, int digits = DERIVE, int ticks = 0) const
    {
        RangeCalculator range{Font()};
        range.computeHorizontal(minimum, maximum, length, digits, ticks);
        return range;
    }
    RangeCalculator vertical(double minimum, double maximum, double length, int digits = DERIVE, int ticks = 0) const
    {
        RangeCalculator range{Font()};
        range.computeVertical(minimum, maximum, length, digits, ticks);
        return range;
    }
    RangeCalculator forLegend(Legend const &legend, bool horizontal, double length, int digits = DERIVE) const
    {
        Data const data;
        RangeCalculator range{Font()};
        range.computeForLegend(&legend, &data, horizontal, length, digits);
        return range;
    }

    Support::FakeCalculator calculator_;
};

Legend legendOf(double minimum, double maximum)
{
    Legend legend(uLength);
    legend.setFixedMinimum(minimum);
    legend.setFixedMaximum(maximum);
    return legend;
}

Legend inMicrometres(Legend legend)
{
    Unit::Units_t unit{};
    EXPECT_TRUE(uLength->parseUnit(QStringLiteral("um"), &unit));
    legend.setUnitData(UnitData(uLength, unit));
    return legend;
}

TEST_F(RangeCalculatorTest, startsWithTheWidestIntervalAndNoTicks)
{
    RangeCalculator const range{Font()};
    EXPECT_EQ(range.getMinimum(), -MAX);
    EXPECT_EQ(range.getMaximum(), MAX);
    EXPECT_EQ(range.getDigits(), 0);
    EXPECT_EQ(range.getMaxLabelWidth(), 0.0);
    EXPECT_THAT(range.getTickValues(), IsEmpty());
    EXPECT_THAT(range.getTickPositions(), IsEmpty());
    EXPECT_THAT(range.getTickIndices(), IsEmpty());
    EXPECT_THAT(range.getTexts(), IsEmpty());
    EXPECT_THAT(range.getTextSizes(), IsEmpty());
    EXPECT_THAT(range.getDrawTexts(), IsEmpty());
}

TEST_F(RangeCalculatorTest, measuresLabelsWithOneDecimalMore)
{
    RangeCalculator const range{Font()};
    EXPECT_EQ(range.getMaxLabelWidth(0, 10, 0), 2.0 * 4);      // "10.0"
    EXPECT_EQ(range.getMaxLabelWidth(0, 10, 2), 2.0 * 6);      // "10.000"
    EXPECT_EQ(range.getMaxLabelWidth(0, 10, -5), 2.0 * 4);     // as without decimals
    EXPECT_EQ(range.getMaxLabelWidth(-100, 10, 0), 2.0 * 6);   // "-100.0"
    EXPECT_EQ(range.getMaxLabelWidth(9.99, 9.99, 0), 2.0 * 4); // rounded: "10.0"
    EXPECT_EQ(range.getMaxLabelWidth(), 0.0);
}

TEST_F(RangeCalculatorTest, laysOutAHorizontalScale)
{
    // Labels of at most "10.0", 8 mm: 12 intervals on 100 mm.
    RangeCalculator const range = horizontal(0, 10, 100);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100));
    EXPECT_EQ(range.getTexts(), texts({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}));
    EXPECT_EQ(range.getTextSizes().front(), BaVec2d<double>(2, 5));
    EXPECT_EQ(range.getTextSizes().back(), BaVec2d<double>(4, 5));
    EXPECT_EQ(range.getMaxLabelWidth(), 4.0);
    EXPECT_EQ(range.getDigits(), 0);
    EXPECT_EQ(range.getMinimum(), 0);
    EXPECT_EQ(range.getMaximum(), 10);
    EXPECT_THAT(range.getTickIndices(), IsEmpty());
    EXPECT_EQ(range.getDrawTexts(), std::vector<bool>(11, true));
}

TEST_F(RangeCalculatorTest, placesTicksByTheirDistanceFromTheMinimum)
{
    RangeCalculator const range = horizontal(5, 30, 50, 0, 5);
    EXPECT_THAT(range.getTickValues(), ElementsAre(5, 10, 15, 20, 25, 30));
    EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 10, 20, 30, 40, 50));
}

TEST_F(RangeCalculatorTest, measuresASecondTimeWithTheDecimalsItFound)
{
    // First pass: "1.0", 6 mm, 10 intervals on 60 mm: ticks of 0.1, so one decimal. Second pass: "1.00", 8 mm, 7
    // intervals.
    RangeCalculator const range = horizontal(0, 1, 60);
    EXPECT_EQ(range.getDigits(), 1);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 0.2, 0.4, 0.6, 0.8, 1.0));
    EXPECT_EQ(range.getTexts(), texts({"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
}

TEST_F(RangeCalculatorTest, keepsTheDecimalsItFoundFirst)
{
    // First pass: "10.0", 8 mm, 20 intervals on 165 mm: 0.5, one decimal. Second pass: "10.00", 10 mm, 16 intervals.
    RangeCalculator const range = horizontal(0, 10, 165);
    EXPECT_EQ(range.getDigits(), 1);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_EQ(range.getTexts()[3], QStringLiteral("3.0"));
}

TEST_F(RangeCalculatorTest, measuresOnceWithDecimalsThatAreFixed)
{
    // "1.0000", 12 mm, 5 intervals on 60 mm.
    RangeCalculator const range = horizontal(0, 1, 60, 3);
    EXPECT_EQ(range.getDigits(), 3);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 0.2, 0.4, 0.6, 0.8, 1.0));
    EXPECT_EQ(range.getTexts(), texts({"0.000", "0.200", "0.400", "0.600", "0.800", "1.000"}));
}

TEST_F(RangeCalculatorTest, hasAtMostTheIntervalsAskedFor)
{
    EXPECT_THAT(horizontal(0, 10, 1000, DERIVE, 5).getTickValues(), ElementsAre(0, 2, 4, 6, 8, 10));
    EXPECT_THAT(vertical(0, 10, 1000, DERIVE, 5).getTickValues(), ElementsAre(0, 2, 4, 6, 8, 10));
}

TEST_F(RangeCalculatorTest, hasAtMostFiftyIntervalsWhenNoneAreAskedFor)
{
    for (int none : {0, -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(horizontal(0, 50, 1e6, DERIVE, none).getTickValues().size(), 51u);
        EXPECT_EQ(vertical(0, 50, 1e6, DERIVE, none).getTickValues().size(), 51u);
        EXPECT_EQ(vertical(0, 100, 1e6, DERIVE, none).getTickValues().size(), 51u);
    }
}

TEST_F(RangeCalculatorTest, hasAtMostTheLabelsThatHaveRoomAmongFifty)
{
    EXPECT_THAT(vertical(0, 10, 27, DERIVE, 0).getTickValues(), ElementsAre(0, 2, 4, 6, 8, 10)); // 5 of 5 mm
}

TEST_F(RangeCalculatorTest, hasOneTickOnALengthShorterThanALabel)
{
    EXPECT_THAT(horizontal(0, 10, 7.9).getTickValues(), ElementsAre(0)); // "10.0" takes 8 mm
    EXPECT_THAT(vertical(0, 10, 4.9).getTickValues(), ElementsAre(0));
    EXPECT_THAT(horizontal(0, 10, 0).getTickValues(), ElementsAre(0));
    EXPECT_THAT(horizontal(0, 10, -5).getTickValues(), ElementsAre(0));
    EXPECT_THAT(vertical(0, 10, std::nan("")).getTickValues(), ElementsAre(0));
}

TEST_F(RangeCalculatorTest, laysOutAVerticalScaleByTheHeightOfZero)
{
    // Labels 5 mm high: 10 intervals on 50 mm, whatever their width.
    RangeCalculator const range = vertical(0, 1, 50);
    EXPECT_EQ(range.getTickValues().size(), 11u);
    EXPECT_EQ(range.getDigits(), 1);
    EXPECT_EQ(range.getTexts()[3], QStringLiteral("0.3"));
    EXPECT_NEAR(range.getTickPositions()[3], 15.0, 1e-12);
}

TEST_F(RangeCalculatorTest, givesAnIntervalWithoutExtentItsTwoEnds)
{
    for (RangeCalculator const &range : {horizontal(2.5, 2.5, 40), vertical(2.5, 2.5, 40)}) {
        EXPECT_THAT(range.getTickValues(), ElementsAre(2.5, 2.5));
        EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 40));
        EXPECT_EQ(range.getTexts(), texts({"2.5", "2.5"}));
        EXPECT_EQ(range.getDigits(), 1);
        EXPECT_EQ(range.getDrawTexts(), std::vector<bool>(2, true));
    }
    EXPECT_EQ(horizontal(2.5, 2.5, 40, 3).getTexts(), texts({"2.500", "2.500"}));
    EXPECT_EQ(vertical(2.5, 2.5, 40, 0).getTexts(), texts({"2", "2"}));
}

TEST_F(RangeCalculatorTest, takesNearlyEqualBoundsForEqual)
{
    auto const isDegenerate = [this](double minimum, double maximum) {
        std::vector<double> const values = horizontal(minimum, maximum, 100).getTickValues();
        return values == std::vector<double>{minimum, maximum};
    };
    // Against a maximum of 0: 1e-50.
    EXPECT_TRUE(isDegenerate(-1e-50, 0));
    EXPECT_FALSE(isDegenerate(-1.1e-50, 0));
    // Otherwise a millionth of a millionth of the maximum, not of the minimum.
    EXPECT_TRUE(isDegenerate(1000, 1000 + 0.9e-9));
    EXPECT_FALSE(isDegenerate(1000, 1000 + 1.1e-9));
    EXPECT_FALSE(isDegenerate(0, 1e-60));
    EXPECT_TRUE(isDegenerate(-1000 - 0.9e-9, -1000));
}

TEST_F(RangeCalculatorTest, replacesInfiniteBoundsByTheGreatestNumbers)
{
    RangeCalculator const range = horizontal(-INF, INF, 1e5);
    EXPECT_EQ(range.getMinimum(), -MAX);
    EXPECT_EQ(range.getMaximum(), MAX);
    ASSERT_GE(range.getTickValues().size(), 3u);
    for (double position : range.getTickPositions())
        EXPECT_TRUE(position >= 0 && position <= 1e5) << position;

    EXPECT_EQ(vertical(0, INF, 100).getMaximum(), MAX);
    EXPECT_EQ(vertical(-INF, 0, 100).getMinimum(), -MAX);
}

TEST_F(RangeCalculatorTest, takesTwoInfiniteBoundsOfOneSignForEqual)
{
    RangeCalculator const range = vertical(INF, INF, 30);
    EXPECT_THAT(range.getTickValues(), ElementsAre(MAX, MAX));
    EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 30));
}

TEST_F(RangeCalculatorTest, refusesNaNAndStaysAsItWas)
{
    RangeCalculator range = horizontal(0, 10, 100);
    for (auto const &[minimum, maximum] : {std::pair(std::nan(""), 1.0), {0.0, std::nan("")}}) {
        for (bool isHorizontal : {true, false}) {
            try {
                if (isHorizontal)
                    range.computeHorizontal(minimum, maximum, 50, 2, 3);
                else
                    range.computeVertical(minimum, maximum, 50, 2, 3);
                FAIL() << "NaN was taken";
            } catch (ProgError const &error) {
                std::string const text = error.what();
                EXPECT_THAT(text, testing::HasSubstr("Range interval can not be computed, boundary is NaN !"));
                EXPECT_THAT(text, testing::HasSubstr("fig_range_calc"));
                EXPECT_THAT(text, testing::HasSubstr(isHorizontal ? "Zem::Fig2::RangeCalculator::computeHorizontal"
                                                                  : "Zem::Fig2::RangeCalculator::computeVertical"));
            }
            EXPECT_EQ(range.getTickValues(), horizontal(0, 10, 100).getTickValues());
            EXPECT_EQ(range.getTexts(), horizontal(0, 10, 100).getTexts());
            EXPECT_EQ(range.getMaximum(), 10);
        }
    }
}

TEST_F(RangeCalculatorTest, hasNoTicksInAnInvertedInterval)
{
    for (RangeCalculator const &range : {horizontal(10, 0, 100), vertical(10, 0, 100)}) {
        EXPECT_THAT(range.getTickValues(), IsEmpty());
        EXPECT_THAT(range.getTickPositions(), IsEmpty());
        EXPECT_THAT(range.getTexts(), IsEmpty());
        EXPECT_EQ(range.getDigits(), 0);
    }
}

TEST_F(RangeCalculatorTest, startsOverWithEachComputation)
{
    RangeCalculator range{Font()};
    Legend legend = legendOf(0, 1);
    legend.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    Data const data;
    range.computeForLegend(&legend, &data, true, 100, 4);
    EXPECT_FALSE(range.getTickIndices().empty());
    range.computeHorizontal(0, 10, 100, DERIVE, 0);
    EXPECT_THAT(range.getTickIndices(), IsEmpty());
    EXPECT_EQ(range.getTexts(), horizontal(0, 10, 100).getTexts());
    EXPECT_EQ(range.getTickPositions(), horizontal(0, 10, 100).getTickPositions());
    EXPECT_EQ(range.getMaxLabelWidth(), 4.0);
}

TEST_F(RangeCalculatorTest, isAPlainValue)
{
    RangeCalculator const range = horizontal(0, 10, 100);
    RangeCalculator copy = range;
    copy.computeVertical(0, 1, 5, DERIVE, 0);
    EXPECT_EQ(range.getTickValues().size(), 11u);
    copy = range;
    EXPECT_EQ(copy.getTexts(), range.getTexts());
}

TEST_F(RangeCalculatorTest, cutsAndFillsTheDecimalsOfLabels)
{
    auto const label = [this](double value, int digits) { return vertical(value, value, 10, digits).getTexts()[0]; };
    EXPECT_EQ(label(2, 3), QStringLiteral("2.000"));
    EXPECT_EQ(label(2, 8), QStringLiteral("2.00000000"));
    EXPECT_EQ(label(2.9, 0), QStringLiteral("2"));
    EXPECT_EQ(label(1.999999, 2), QStringLiteral("1.99"));  // cut
    EXPECT_EQ(label(1.9999999, 2), QStringLiteral("2.00")); // six decimals are rounded
    EXPECT_EQ(label(-0.125, 2), QStringLiteral("-0.12"));
    EXPECT_EQ(label(0.1234567, 8), QStringLiteral("0.12345700"));
}

TEST_F(RangeCalculatorTest, boundsTheDecimalsThatAFileAsksFor)
{
    RangeCalculator const range = vertical(2, 2, 10, INT_MOST);
    EXPECT_EQ(range.getTexts()[0].size(), 2 + 100);
    EXPECT_EQ(range.getDigits(), INT_MOST);
    EXPECT_EQ(range.getMaxLabelWidth(2, 2, INT_MOST), 2.0 * (2 + 101));
    EXPECT_EQ(horizontal(0, 10, 1e9, INT_MOST, INT_MOST).getTexts()[0].size(), 2 + 100);
}

TEST_F(RangeCalculatorTest, writesNoNegativeZero)
{
    EXPECT_EQ(vertical(-0.9e-10, -0.9e-10, 10, 2).getTexts()[0], QStringLiteral("0.00"));
    EXPECT_EQ(vertical(-1.1e-10, -1.1e-10, 10, 2).getTexts()[0], QStringLiteral("-0.00")); // no dust any more
}

TEST_F(RangeCalculatorTest, dropsLabelsBesideTheFirstAndTheLastThatTheyReach)
{
    // Ticks 0, 5, 10 mm, labels 5 mm high: 5 mm does not reach the next, on 9.9 mm it does.
    EXPECT_EQ(vertical(0, 2, 10, 0, 2).getDrawTexts(), (std::vector<bool>{true, true, true}));
    std::vector<bool> const crowded = forLegend(legendOf(0, 2), false, 10, 0).getDrawTexts();
    EXPECT_EQ(crowded, (std::vector<bool>{true, true, true}));

    Legend legend = legendOf(0, 4);
    legend.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(4);
    // Ticks each 4.9 mm.
    EXPECT_EQ(forLegend(legend, false, 19.6, 0).getDrawTexts(), (std::vector<bool>{true, false, true, false, true}));
}

TEST_F(RangeCalculatorTest, measuresCrowdedLabelsByTheirWidthOnAHorizontalScale)
{
    Legend legend = legendOf(0, 40);
    legend.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(4);
    // Labels "0", "10", ..., "40" each 3 mm: the first is 2 mm wide, the second last 4 mm.
    EXPECT_EQ(forLegend(legend, true, 12, 0).getDrawTexts(), (std::vector<bool>{true, true, true, false, true}));
}

TEST_F(RangeCalculatorTest, dropsTheOnlyLabelBetweenTheFirstAndTheLast)
{
    Legend legend = legendOf(0, 2);
    legend.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(2);
    EXPECT_EQ(forLegend(legend, false, 8, 0).getDrawTexts(), (std::vector<bool>{true, false, true}));
}

TEST_F(RangeCalculatorTest, neverDropsOneOfTwoLabels)
{
    Legend legend = legendOf(0, 2);
    legend.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(1);
    EXPECT_EQ(forLegend(legend, false, 0.1, 0).getDrawTexts(), (std::vector<bool>{true, true}));
    EXPECT_EQ(horizontal(5, 5, 0.0).getDrawTexts(), (std::vector<bool>{true, true}));
}

TEST_F(RangeCalculatorTest, givesNoLegendTwoTicksAtZero)
{
    Legend const legend;
    Data const data;
    for (auto const &[first, second] :
         {std::pair<Legend const *, Data const *>(nullptr, &data), {&legend, nullptr}, {nullptr, nullptr}}) {
        RangeCalculator range{Font()};
        range.computeForLegend(first, second, false, 30, 2);
        EXPECT_EQ(range.getMinimum(), 0);
        EXPECT_EQ(range.getMaximum(), 0);
        EXPECT_THAT(range.getTickValues(), ElementsAre(0, 0));
        EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 30));
        EXPECT_EQ(range.getTexts(), texts({"0.00", "0.00"})); // still with the digits asked for
        EXPECT_EQ(range.getDigits(), 0);
    }
}

TEST_F(RangeCalculatorTest, givesALegendWithoutExtentItsTwoEndsInTheirOwnDigits)
{
    RangeCalculator const range = forLegend(inMicrometres(legendOf(0.0025, 0.0025)), false, 30, 4);
    EXPECT_THAT(range.getTickValues(), ElementsAre(2.5, 2.5));
    EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 30));
    EXPECT_EQ(range.getDigits(), 1);
    EXPECT_EQ(range.getTexts(), texts({"2.5", "2.5"}));
}

TEST_F(RangeCalculatorTest, laysOutALegendInItsActiveUnit)
{
    RangeCalculator const range = forLegend(inMicrometres(legendOf(0, 0.01)), false, 1000);
    EXPECT_EQ(range.getMinimum(), 0);
    EXPECT_EQ(range.getMaximum(), 10);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_EQ(range.getTickPositions().back(), 1000);
}

TEST_F(RangeCalculatorTest, laysOutALegendWithoutQuantity)
{
    Legend legend;
    legend.setFixedMinimum(0);
    legend.setFixedMaximum(5);
    EXPECT_THAT(forLegend(legend, false, 25).getTickValues(), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(RangeCalculatorTest, givesALegendAtMostTenIntervalsUnlessItSaysOtherwise)
{
    Legend legend = legendOf(0, 20);
    for (bool isHorizontal : {true, false}) {
        legend.setMaxTicks(-1);
        EXPECT_EQ(forLegend(legend, isHorizontal, 1e5).getTickValues().size(), 11u);
        legend.setMaxTicks(20);
        EXPECT_EQ(forLegend(legend, isHorizontal, 1e5).getTickValues().size(), 21u);
        legend.setMaxTicks(4);
        EXPECT_EQ(forLegend(legend, isHorizontal, 1e5).getTickValues().size(), 5u);
        legend.setMaxTicks(0);
        EXPECT_EQ(forLegend(legend, isHorizontal, 1e5).getTickValues().size(), 1u);
        legend.setMaxTicks(INT_MOST);
        EXPECT_GT(forLegend(legend, isHorizontal, 1e5).getTickValues().size(), 21u);
    }
}

TEST_F(RangeCalculatorTest, givesAHorizontalLegendTheRoomOfItsLabels)
{
    // "1.0", 6 mm, 5 intervals on 30 mm: 0.2, one decimal. Then "1.00", 8 mm, 3 intervals.
    RangeCalculator const range = forLegend(legendOf(0, 1), true, 30);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 0.5, 1.0));
    EXPECT_EQ(range.getTexts(), texts({"0.0", "0.5", "1.0"}));
    EXPECT_EQ(forLegend(legendOf(0, 1), true, 60, 3).getTexts(),
              texts({"0.000", "0.200", "0.400", "0.600", "0.800", "1.000"}));
}

TEST_F(RangeCalculatorTest, givesAVerticalLegendTheRoomOfAZero)
{
    EXPECT_THAT(forLegend(legendOf(0, 1), false, 27).getTexts(),
                testing::ElementsAreArray(texts({"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"})));
}

TEST_F(RangeCalculatorTest, spreadsTheTicksOfALogarithmicLegendByMagnitudeButPlacesThemByValue)
{
    Legend legend = legendOf(1, 1000);
    legend.setColorMode(Legend2::COLOR_MODE_LOGARITHMIC);
    for (bool isHorizontal : {true, false}) {
        RangeCalculator const range = forLegend(legend, isHorizontal, 999);
        EXPECT_THAT(range.getTickValues(), ElementsAre(1, 2, 5, 10, 20, 50, 100, 200, 500, 1000));
        EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 1, 4, 9, 19, 49, 99, 199, 499, 999));
    }
}

TEST_F(RangeCalculatorTest, takesTheTicksOfADiscreteLegendFromIt)
{
    Legend legend = inMicrometres(legendOf(0, 0.004));
    legend.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(4);
    RangeCalculator const range = forLegend(legend, true, 80);
    EXPECT_THAT(range.getTickValues(), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(range.getTickIndices(), ElementsAre(0, 1, 2, 3, 3));
    EXPECT_THAT(range.getTickPositions(), ElementsAre(0, 20, 40, 60, 80));
    EXPECT_EQ(range.getTexts(), texts({"0", "1", "2", "3", "4"}));
    EXPECT_EQ(range.getDigits(), 0);
}

/// Ticks of a scale in micrometres; the bits of `kind` choose modes and direction.
RangeCalculator dynamicLegendRange(double minimum, double maximum, unsigned int kind)
{
    Data data;
    data.setDynamicMinimum(minimum);
    data.setDynamicMaximum(maximum);
    Legend legend = inMicrometres(Legend(uLength));
    legend.setScaleMode((kind & 1) != 0 ? Legend2::SCALE_MODE_DISCRETE : Legend2::SCALE_MODE_CONTINUOUS);
    legend.setColorMode((kind & 2) != 0 ? Legend2::COLOR_MODE_LOGARITHMIC : Legend2::COLOR_MODE_LINEAR);
    RangeCalculator range{Font()};
    range.computeForLegend(&legend, &data, (kind & 4) != 0, 100, DERIVE);
    return range;
}

TEST_F(RangeCalculatorTest, givesALegendWhoseLimitsMakeNoScaleNoTicks)
{
    double const nan = std::nan("");
    for (auto const &[minimum, maximum] :
         {std::pair(nan, 1.0), {0.0, nan}, {nan, nan}, {-INF, 1.0}, {5.0, 1.0}, {-1e308, 1.0}}) {
        for (unsigned int kind = 0; kind < 8; ++kind) {
            RangeCalculator const range = dynamicLegendRange(minimum, maximum, kind);
            EXPECT_THAT(range.getTickValues(), IsEmpty());
            EXPECT_THAT(range.getTickPositions(), IsEmpty());
            EXPECT_EQ(range.getDigits(), 0);
        }
    }
}

TEST_F(RangeCalculatorTest, givesALegendWithoutUpperLimitItsTwoEnds)
{
    // By the rule of near equality everything is near infinity. The last limit is infinite in micrometres.
    for (auto const &[minimum, maximum] : {std::pair(-INF, INF), {0.0, INF}, {0.0, 1e308}}) {
        for (unsigned int kind = 0; kind < 8; ++kind)
            EXPECT_THAT(dynamicLegendRange(minimum, maximum, kind).getTickPositions(), ElementsAre(0, 100));
    }
}

TEST_F(RangeCalculatorTest, survivesAnIntervalOfTheSmallestNumbers)
{
    for (double maximum : {std::numeric_limits<double>::denorm_min(), 1e-310, 1e-300}) {
        RangeCalculator const range = horizontal(0, maximum, 100);
        ASSERT_FALSE(range.getTickPositions().empty());
        for (double position : range.getTickPositions())
            EXPECT_TRUE(position >= 0 && position <= 100 * (1 + 1e-12)) << position;
    }
}

TEST(RangeCalculatorWithoutCalculator, measuresEveryLabelAsOneByOne)
{
    RangeCalculator range{Font()};
    range.computeHorizontal(0, 10, 10, DERIVE, 0);
    EXPECT_EQ(range.getTickValues().size(), 11u);
    EXPECT_EQ(range.getMaxLabelWidth(), 1.0);
}

/// Nothing has an extent, or none that is a number.
class FlatCalculator : public Calculator
{
public:
    explicit FlatCalculator(double size) : Calculator(96.0), size_(size) {}
    BaVec2d<double> computeTextSize(Font const &, QString const &) const override { return {size_, size_}; }
    BaVec2d<double> computeRichTextSize(QString const &, Font const &, double, BaVec2d<double> *) const override
    {
        return {size_, size_};
    }

private:
    double size_;
};

TEST(RangeCalculatorWithFlatLabels, hasAsManyTicksAsItMay)
{
    FlatCalculator const calculator(0.0);
    RangeCalculator range{Font()};
    range.computeHorizontal(0, 50, 10, DERIVE, 0);
    EXPECT_EQ(range.getTickValues().size(), 51u);
    range.computeVertical(0, 50, 10, DERIVE, INT_MOST);
    EXPECT_LE(range.getTickValues().size(), 10001u);
}

TEST(RangeCalculatorWithFlatLabels, hasOneTickForSizesThatAreNoNumbers)
{
    for (double size : {std::nan(""), -1.0, INF}) {
        FlatCalculator const calculator(size);
        RangeCalculator range{Font()};
        range.computeVertical(0, 50, 10, DERIVE, 0);
        EXPECT_EQ(range.getTickValues().size(), 1u);
    }
}

} // namespace
} // namespace Zem::Fig2
