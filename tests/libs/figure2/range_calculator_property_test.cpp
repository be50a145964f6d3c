#include <FakeCalculator.h>
#include <ZemFig2RangeCalculator.h>

#include <ZemLegend.h>

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace Zem::Fig2 {
namespace {

/// Labels as wide and high as their font is large.
class ScaledCalculator : public Support::FakeCalculator
{
public:
    BaVec2d<double> computeTextSize(Font const &font, QString const &text) const override
    {
        return {0.2 * font.getSize() * static_cast<double>(text.size()), 0.4 * font.getSize()};
    }
};

double anyDouble()
{
    return std::bit_cast<double>(*rc::gen::arbitrary<std::uint64_t>() * 0x9e3779b97f4a7c15u);
}

/// Numbers as measurements have them.
double usualDouble()
{
    double const number = static_cast<double>(*rc::gen::inRange<std::int64_t>(-1000000, 1000000));
    return number * std::pow(10.0, *rc::gen::inRange(-6, 3));
}

Font anyFont()
{
    return Font(QString(), *rc::gen::inRange(1, 40), 0);
}

/// What was asked for.
struct Request
{
    double length = *rc::gen::inRange(0, 300);
    int digits = *rc::gen::inRange(-2, 9);
    int ticks = *rc::gen::inRange(-2, 80);
    bool horizontal = *rc::gen::arbitrary<bool>();
    Font font = anyFont();
};

RangeCalculator computed(double minimum, double maximum, Request const &request)
{
    RangeCalculator range(request.font);
    if (request.horizontal)
        range.computeHorizontal(minimum, maximum, request.length, request.digits, request.ticks);
    else
        range.computeVertical(minimum, maximum, request.length, request.digits, request.ticks);
    return range;
}

void requireParallel(RangeCalculator const &range)
{
    std::size_t const count = range.getTickValues().size();
    RC_ASSERT(range.getTickPositions().size() == count);
    RC_ASSERT(range.getTexts().size() == count);
    RC_ASSERT(range.getTextSizes().size() == count);
    RC_ASSERT(range.getDrawTexts().size() == count);
}

/// `ascending` values within the bounds, positions within the length.
void requireSound(RangeCalculator const &range, double length)
{
    requireParallel(range);
    std::vector<double> const &values = range.getTickValues();
    RC_ASSERT(std::is_sorted(values.begin(), values.end()));
    for (double value : values)
        RC_ASSERT(value >= range.getMinimum() && value <= range.getMaximum());
    RC_ASSERT(std::is_sorted(range.getTickPositions().begin(), range.getTickPositions().end()));
    for (double position : range.getTickPositions())
        RC_ASSERT(position >= 0.0 && position <= length * (1 + 1e-12));
}

TEST(AnyRange, hasParallelTicksWithinItsBounds)
{
    ScaledCalculator const calculator;
    EXPECT_TRUE(rc::check([] {
        double const a = anyDouble();
        double const b = anyDouble();
        RC_PRE(!std::isnan(a) && !std::isnan(b));
        Request const request;
        requireSound(computed(std::min(a, b), std::max(a, b), request), request.length);
        requireParallel(computed(std::max(a, b), std::min(a, b), request));
    }));
}

TEST(AnyRange, hasNoMoreTicksThanAskedForAndThanHaveRoom)
{
    ScaledCalculator const calculator;
    EXPECT_TRUE(rc::check([&calculator] {
        double const a = usualDouble();
        double const b = usualDouble();
        RC_PRE(a != b);
        Request const request;
        RangeCalculator const range = computed(std::min(a, b), std::max(a, b), request);
        auto const count = static_cast<double>(range.getTickValues().size());
        RC_ASSERT(count <= (request.ticks < 1 ? 50 : request.ticks) + 1);
        double const extent = request.horizontal
                                  ? range.getMaxLabelWidth(range.getMinimum(), range.getMaximum(), range.getDigits())
                                  : calculator.computeTextSize(request.font, QStringLiteral("0")).y;
        RC_ASSERT(count <= std::floor(request.length / extent) + 1);
    }));
}

TEST(AnyRange, hasLabelsThatSayTheirValuesWhenDigitsAreDerived)
{
    ScaledCalculator const calculator;
    EXPECT_TRUE(rc::check([] {
        double const a = usualDouble();
        double const b = usualDouble();
        RC_PRE(std::abs(a - b) > 1e-4);
        Request request;
        request.digits = -1;
        // With decimals left over from the first pass, labels say more than they need, never less.
        RangeCalculator const range = computed(std::min(a, b), std::max(a, b), request);
        for (std::size_t i = 0; i < range.getTickValues().size(); ++i)
            RC_ASSERT(std::abs(range.getTexts()[i].toDouble() - range.getTickValues()[i]) <=
                      5e-7 + 1e-15 * std::abs(range.getTickValues()[i]));
    }));
}

TEST(AnyRange, hasLabelsOfTheDigitsAskedFor)
{
    ScaledCalculator const calculator;
    EXPECT_TRUE(rc::check([] {
        double const a = usualDouble();
        double const b = usualDouble();
        Request request;
        request.digits = *rc::gen::inRange(0, 9);
        RangeCalculator const range = computed(std::min(a, b), std::max(a, b), request);
        RC_ASSERT(range.getDigits() == request.digits);
        for (QString const &text : range.getTexts()) {
            qsizetype const point = text.indexOf(u'.');
            qsizetype const decimals = point < 0 ? 0 : text.size() - point - 1;
            RC_ASSERT(decimals == request.digits);
        }
    }));
}

TEST(AnyLegendRange, hasParallelTicks)
{
    ScaledCalculator const calculator;
    EXPECT_TRUE(rc::check([] {
        Legend2::Data data;
        data.setDynamicMinimum(*rc::gen::arbitrary<bool>() ? anyDouble() : usualDouble());
        data.setDynamicMaximum(*rc::gen::arbitrary<bool>() ? anyDouble() : usualDouble());
        Legend2::Legend legend(uTemperature);
        legend.setUnitData(UnitData(uTemperature, static_cast<Unit::Units_t>(*rc::gen::inRange(0, 3))));
        legend.setColorMode(static_cast<Legend2::ColorMode_t>(*rc::gen::inRange(0, 2)));
        legend.setScaleMode(static_cast<Legend2::ScaleMode_t>(*rc::gen::inRange(0, 2)));
        legend.setMaxTicks(*rc::gen::inRange(-1, 30));
        Request const request;
        RangeCalculator range(request.font);
        range.computeForLegend(&legend, &data, request.horizontal, request.length, request.digits);
        requireParallel(range);
        for (double position : range.getTickPositions())
            RC_ASSERT(std::isfinite(position));
    }));
}

} // namespace
} // namespace Zem::Fig2
