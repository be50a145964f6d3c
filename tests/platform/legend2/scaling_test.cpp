#include <ZemScaling.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Legend2 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double MAX = std::numeric_limits<double>::max();
constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double TINY = std::numeric_limits<double>::denorm_min();
double const NOT_A_NUMBER = std::nan("");

std::vector<double> ticks(double minimum, double maximum, int count, ColorMode_t mode = COLOR_MODE_LINEAR,
                          bool withBounds = false)
{
    std::vector<double> values{99.0};
    Scaling::computeDistribution(minimum, maximum, count, withBounds, mode, &values);
    return values;
}

std::vector<double> logTicks(double minimum, double maximum, int count)
{
    return ticks(minimum, maximum, count, COLOR_MODE_LOGARITHMIC);
}

TEST(LinearTicks, fillARoundIntervalFromBoundToBound)
{
    EXPECT_THAT(ticks(0, 10, 11), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10));
    EXPECT_THAT(ticks(0, 10, 6), ElementsAre(0, 2, 4, 6, 8, 10));
    EXPECT_THAT(ticks(0, 100, 5), ElementsAre(0, 25, 50, 75, 100));
    EXPECT_THAT(ticks(-1, 1, 5), ElementsAre(-1, -0.5, 0, 0.5, 1));
}

TEST(LinearTicks, areTheDoublesNearestToTheirDecimals)
{
    EXPECT_THAT(ticks(0, 1, 11), ElementsAre(0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1.0));
    EXPECT_THAT(ticks(0, 6e-30, 7), ElementsAre(0, 1e-30, 2e-30, 3e-30, 4e-30, 5e-30, 6e-30));
    EXPECT_THAT(ticks(0, 3e300, 4), ElementsAre(0, 1e300, 2e300, 3e300));
}

TEST(LinearTicks, reachBoundsThatRoundingWouldMiss)
{
    // 0.7 / 0.1 is 6.999...
    EXPECT_THAT(ticks(0.3, 0.7, 5), ElementsAre(0.3, 0.4, 0.5, 0.6, 0.7));
}

TEST(LinearTicks, stayWithinBoundsThatAreNotRound)
{
    std::vector<double> const values = ticks(0.13, 9.87, 6);
    EXPECT_THAT(values, ElementsAre(2, 4, 6, 8));
}

TEST(LinearTicks, haveAnExactZero)
{
    std::vector<double> const values = ticks(-0.3, 0.3, 7);
    ASSERT_EQ(values.size(), 7u);
    EXPECT_EQ(values[3], 0.0);
    EXPECT_FALSE(std::signbit(values[3]));
}

TEST(LinearTicks, areNoneWhenNoneAreAskedFor)
{
    EXPECT_THAT(ticks(0, 10, 0), IsEmpty());
    EXPECT_THAT(ticks(0, 10, -5), IsEmpty());
    EXPECT_THAT(ticks(0, 10, std::numeric_limits<int>::min()), IsEmpty());
}

TEST(LinearTicks, areTheRoundestNumberWhenOneIsAskedFor)
{
    EXPECT_THAT(ticks(-3, 10, 1), ElementsAre(0));
    EXPECT_THAT(ticks(4, 12, 1), ElementsAre(10));
    EXPECT_THAT(ticks(41, 59, 1), ElementsAre(50));
    EXPECT_THAT(ticks(-59, -41, 1), ElementsAre(-50));
    EXPECT_THAT(ticks(1.31, 1.37, 1), ElementsAre(1.35));
}

TEST(LinearTicks, areMultiplesOfTheirDistance)
{
    EXPECT_THAT(ticks(0.9, 9.1, 5), ElementsAre(2, 4, 6, 8)); // not 1, 3, 5, 7, 9
}

TEST(LinearTicks, areQuartersOfWholeNumbersOnly)
{
    EXPECT_THAT(ticks(0, 100, 5), ElementsAre(0, 25, 50, 75, 100));
    // 0.25 needs more decimals than the 0.2 of six ticks.
    EXPECT_THAT(ticks(0, 1, 5), ElementsAre(0, 0.5, 1));
    EXPECT_THAT(ticks(0, 1, 4), ElementsAre(0, 0.5, 1));
}

TEST(LinearTicks, areTwoOnBothSidesOfZeroWhenTwoAreAskedFor)
{
    EXPECT_THAT(ticks(-5, 5, 2), ElementsAre(-5, 5));
}

TEST(LinearTicks, ofEqualBoundsAreThatValue)
{
    EXPECT_THAT(ticks(2.5, 2.5, 10), ElementsAre(2.5));
    std::vector<double> const values = ticks(-0.0, -0.0, 10);
    EXPECT_THAT(values, ElementsAre(0.0));
    EXPECT_FALSE(std::signbit(values[0]));
}

TEST(LinearTicks, areNoneForBoundsThatMakeNoInterval)
{
    EXPECT_THAT(ticks(10, 0, 5), IsEmpty());
    EXPECT_THAT(ticks(NOT_A_NUMBER, 1, 5), IsEmpty());
    EXPECT_THAT(ticks(0, NOT_A_NUMBER, 5), IsEmpty());
    EXPECT_THAT(ticks(-INF, 1, 5), IsEmpty());
    EXPECT_THAT(ticks(0, INF, 5), IsEmpty());
}

TEST(LinearTicks, coverTheWidestInterval)
{
    EXPECT_THAT(ticks(-MAX, MAX, 4), ElementsAre(-1e308, 0, 1e308));
    EXPECT_THAT(ticks(0, MAX, 3), ElementsAre(0, 1e308));
}

TEST(LinearTicks, surviveIntervalsOfTheSmallestNumbers)
{
    EXPECT_THAT(ticks(0, TINY, 5), ElementsAre(0));
    EXPECT_THAT(ticks(-TINY, TINY, 5), ElementsAre(0));
    EXPECT_LE(ticks(TINY, 3 * TINY, 5).size(), 1u);
    for (double value : ticks(1e-310, 9e-310, 5))
        EXPECT_TRUE(value >= 1e-310 && value <= 9e-310);
}

TEST(LinearTicks, surviveIntervalsBetweenNeighbours)
{
    EXPECT_THAT(ticks(1.0, std::nextafter(1.0, 2.0), 5), ElementsAre(1.0));
    EXPECT_THAT(ticks(1e300, std::nextafter(1e300, MAX), 5), ElementsAre(1e300));
    for (double value : ticks(0.1234567890123456, std::nextafter(0.1234567890123456, 1.0), 5))
        EXPECT_NEAR(value, 0.1234567890123456, 1e-16);
}

TEST(LinearTicks, areNeverMoreThanTheLimit)
{
    EXPECT_LE(ticks(0, 1, std::numeric_limits<int>::max()).size(), std::size_t(Scaling::MAX_TICKS));
    EXPECT_GT(ticks(0, 1, std::numeric_limits<int>::max()).size(), std::size_t(Scaling::MAX_TICKS / 3));
}

TEST(LinearTicks, includeTheBoundsOnRequest)
{
    EXPECT_THAT(ticks(0.13, 9.87, 6, COLOR_MODE_LINEAR, true), ElementsAre(0.13, 2, 4, 6, 8, 9.87));
    EXPECT_THAT(ticks(0, 10, 8, COLOR_MODE_LINEAR, true), ElementsAre(0, 2, 4, 6, 8, 10));
    EXPECT_THAT(ticks(0.5, 9.5, 2, COLOR_MODE_LINEAR, true), ElementsAre(0.5, 9.5));
    EXPECT_THAT(ticks(0.5, 9.5, 1, COLOR_MODE_LINEAR, true), ElementsAre(5));
}

TEST(LinearTicks, leaveRoomForBothBounds)
{
    EXPECT_THAT(ticks(1, 9, 3, COLOR_MODE_LINEAR, true), ElementsAre(1, 5, 9));
}

TEST(LogarithmicTicks, dividePowersOfTenWhenThereIsRoom)
{
    EXPECT_THAT(logTicks(1, 1000, 10), ElementsAre(1, 2, 5, 10, 20, 50, 100, 200, 500, 1000));
    EXPECT_THAT(logTicks(0.3, 7, 10), ElementsAre(0.5, 1, 2, 5));
}

TEST(LogarithmicTicks, arePowersOfTenWhenTheirPartsHaveNoRoom)
{
    EXPECT_THAT(logTicks(1, 1000, 9), ElementsAre(1, 10, 100, 1000));
    EXPECT_THAT(logTicks(0.02, 500, 5), ElementsAre(0.1, 1, 10, 100));
}

TEST(LogarithmicTicks, leaveOutPowersOfTenWhenThoseHaveNoRoom)
{
    EXPECT_THAT(logTicks(1e-6, 1e6, 5), ElementsAre(1e-6, 1e-3, 1, 1e3, 1e6));
    EXPECT_THAT(logTicks(0.1, 10, 2), ElementsAre(0.1, 10));
    EXPECT_THAT(logTicks(1e-5, 1e3, 3), ElementsAre(1e-3, 1, 1e3));
}

TEST(LogarithmicTicks, areLinearWithinOneStep)
{
    EXPECT_THAT(logTicks(2.1, 2.5, 5), ElementsAre(2.1, 2.2, 2.3, 2.4, 2.5));
    EXPECT_THAT(logTicks(2, 9, 1), ElementsAre(5));
}

TEST(LogarithmicTicks, areNoneDownToZeroOrBelow)
{
    EXPECT_THAT(logTicks(0, 10, 5), IsEmpty());
    EXPECT_THAT(logTicks(-1, 10, 5), IsEmpty());
    EXPECT_THAT(logTicks(-1, -1, 5), IsEmpty());
    EXPECT_THAT(logTicks(NOT_A_NUMBER, 10, 5), IsEmpty());
}

TEST(LogarithmicTicks, surviveAllMagnitudes)
{
    std::vector<double> const values = logTicks(TINY, MAX, 7);
    ASSERT_GE(values.size(), 4u);
    ASSERT_LE(values.size(), 7u);
    EXPECT_GE(values.front(), TINY);
    EXPECT_LE(values.back(), MAX);
}

TEST(NumberOfDigits, writesEveryValueWithoutLoss)
{
    EXPECT_EQ(Scaling::getNumberOfDigits({0.25, 0.5}), 2);
    EXPECT_EQ(Scaling::getNumberOfDigits({100, 200}), 0);
    EXPECT_EQ(Scaling::getNumberOfDigits({0.1, 0.2, 0.1 + 0.2}), 1);
    EXPECT_EQ(Scaling::getNumberOfDigits({-1.125}), 3);
    EXPECT_EQ(Scaling::getNumberOfDigits({0.000001}), 6);
    EXPECT_EQ(Scaling::getNumberOfDigits({1e300, 2e300}), 0);
    EXPECT_EQ(Scaling::getNumberOfDigits({100000000.1}), 1);
}

TEST(NumberOfDigits, isZeroWithoutValues)
{
    EXPECT_EQ(Scaling::getNumberOfDigits({}), 0);
    EXPECT_EQ(Scaling::getNumberOfDigits({0.0, 0.0}), 0);
    EXPECT_EQ(Scaling::getNumberOfDigits({NOT_A_NUMBER, INF, -INF}), 0);
}

TEST(NumberOfDigits, ofEndlessFractionsIsThatOfTheLabels)
{
    EXPECT_EQ(Scaling::getNumberOfDigits({0.0, 1.0 / 3.0, 2.0 / 3.0, 1.0}), 6);
}

TEST(NumberOfDigits, tellsSmallNeighboursApart)
{
    EXPECT_EQ(Scaling::getNumberOfDigits({1e-7, 2e-7}), 7);
    EXPECT_EQ(Scaling::getNumberOfDigits({0.0, 1e-9}), 9);
    EXPECT_EQ(Scaling::getNumberOfDigits({0.0, 1e-40}), Scaling::MAX_DIGITS);
}

TEST(NumberOfDigits, doesNotTellApartWhatRoundingMade)
{
    EXPECT_EQ(Scaling::getNumberOfDigits({1.0, std::nextafter(1.0, 2.0)}), 0);
    EXPECT_EQ(Scaling::getNumberOfDigits({-MAX, MAX}), 0);
}

} // namespace
} // namespace Zem::Legend2
