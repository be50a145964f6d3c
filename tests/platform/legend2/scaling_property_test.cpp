#include <ZemScaling.h>

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <QtCore/QString>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace Zem::Legend2 {
namespace {

/// Any double at all: all magnitudes, infinities and NaN too.
rc::Gen<double> anyDouble()
{
    return rc::gen::map(rc::gen::arbitrary<std::uint64_t>(),
                        [](std::uint64_t bits) { return std::bit_cast<double>(bits * 0x9e3779b97f4a7c15u); });
}

/// Numbers as measurements have them.
rc::Gen<double> usualDouble()
{
    return rc::gen::map(rc::gen::pair(rc::gen::inRange<std::int64_t>(-1000000000, 1000000000), rc::gen::inRange(-9, 3)),
                        [](std::pair<std::int64_t, int> const &parts) {
                            return static_cast<double>(parts.first) * std::pow(10.0, parts.second);
                        });
}

std::vector<double> ticks(double minimum, double maximum, int count, ColorMode_t mode)
{
    std::vector<double> values;
    Scaling::computeDistribution(minimum, maximum, count, false, mode, &values);
    return values;
}

void requireSound(std::vector<double> const &values, double minimum, double maximum, int count)
{
    RC_ASSERT(values.size() <= static_cast<std::size_t>(std::max(count, 0)));
    RC_ASSERT(std::adjacent_find(values.begin(), values.end(), std::greater_equal<>()) == values.end());
    for (double value : values)
        RC_ASSERT(value >= minimum && value <= maximum);
}

void requireEvenSteps(std::vector<double> const &values)
{
    double const greatest = std::max(std::abs(values.front()), std::abs(values.back()));
    double const step = values[1] - values[0];
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        RC_ASSERT(std::abs(values[i + 1] - values[i] - step) <= 4e-16 * greatest);
}

TEST(Ticks, ofAnyBoundsAreAscendingWithinThemAndNotTooMany)
{
    EXPECT_TRUE(rc::check([] {
        double const a = *anyDouble();
        double const b = *anyDouble();
        int const count = *rc::gen::inRange(-2, 60);
        auto const mode = static_cast<ColorMode_t>(*rc::gen::inRange(0, 2));
        requireSound(ticks(a, b, count, mode), a, b, count);
        requireSound(ticks(b, a, count, mode), b, a, count);
    }));
}

/// The next larger round step is at most 2.5 times the one that gave a tick too many.
TEST(Ticks, ofUsualBoundsAreEvenAndTwoFifthsAsManyAsAllowedOrMore)
{
    EXPECT_TRUE(rc::check([] {
        double const a = *usualDouble();
        double const b = *usualDouble();
        RC_PRE(std::abs(a - b) > 1e-9 * std::max(std::abs(a), std::abs(b)));
        auto const [minimum, maximum] = std::minmax(a, b);
        int const count = *rc::gen::inRange(4, 60);
        std::vector<double> const values = ticks(minimum, maximum, count, COLOR_MODE_LINEAR);
        requireSound(values, minimum, maximum, count);
        RC_ASSERT(values.size() >= static_cast<std::size_t>(count) * 2 / 5);
        requireEvenSteps(values);
    }));
}

/// Powers of ten may: of 0.001 to 100 every third begins lower than every second.
TEST(Ticks, ofALinearScaleNeedNoMoreDecimalsWhenTheyAreFewer)
{
    EXPECT_TRUE(rc::check([] {
        double const a = *usualDouble();
        double const b = *usualDouble();
        RC_PRE(std::abs(a - b) > 1e-9 * std::max(std::abs(a), std::abs(b)));
        int digits = 0;
        for (int count = 1; count < 60; ++count) {
            int const more =
                Scaling::getNumberOfDigits(ticks(std::min(a, b), std::max(a, b), count, COLOR_MODE_LINEAR));
            RC_ASSERT(digits <= more);
            digits = more;
        }
    }));
}

/// As the labels of a scale are made: six decimals, then cut.
std::string cutText(double value, int digits)
{
    QString const text = QString::number(value, 'f', 6);
    return text.left(text.indexOf(u'.') + (digits > 0 ? digits + 1 : 0)).toStdString();
}

TEST(NumberOfDigits, cutsOnlyZerosFromTheTextOfATick)
{
    EXPECT_TRUE(rc::check([] {
        double const a = *usualDouble();
        double const b = *usualDouble();
        RC_PRE(std::abs(a - b) > 1e-9 * std::max(std::abs(a), std::abs(b)));
        std::vector<double> const values = ticks(std::min(a, b), std::max(a, b), 11, COLOR_MODE_LINEAR);
        int const digits = Scaling::getNumberOfDigits(values);
        RC_ASSERT(digits >= 0 && digits <= Scaling::MAX_DIGITS);
        for (double value : values)
            RC_ASSERT(digits > 6 || std::stod(cutText(value, digits)) == std::stod(cutText(value, 6)));
    }));
}

TEST(NumberOfDigits, isBoundedForAnyValues)
{
    EXPECT_TRUE(rc::check([] {
        auto const values = *rc::gen::container<std::vector<double>>(anyDouble());
        int const digits = Scaling::getNumberOfDigits(values);
        RC_ASSERT(digits >= 0 && digits <= Scaling::MAX_DIGITS);
    }));
}

} // namespace
} // namespace Zem::Legend2
