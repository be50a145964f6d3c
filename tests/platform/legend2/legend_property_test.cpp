#include "legend_forms_support.h"

#include <ZemHistogramData.h>
#include <ZemLegendHandler.h>

#include <gtest/gtest.h>

// rapidcheck is not written for these warnings.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wpedantic"
#include <rapidcheck/gtest.h>
#pragma GCC diagnostic pop

#include <bit>
#include <cmath>
#include <cstdint>

namespace Zem::Legend2 {
namespace {

using namespace Test;

/// Any double at all: all magnitudes, infinities and NaN too.
double anyDouble()
{
    return std::bit_cast<double>(*rc::gen::arbitrary<std::uint64_t>() * 0x9e3779b97f4a7c15u);
}

double anyFinite()
{
    double const number = anyDouble();
    return std::isfinite(number) ? number : 0.0;
}

bool anyBool()
{
    return *rc::gen::arbitrary<bool>();
}

Color anyColor()
{
    return std::bit_cast<Color>(*rc::gen::arbitrary<std::uint32_t>());
}

template <class Enum>
Enum anyOf(int count)
{
    return static_cast<Enum>(*rc::gen::inRange(0, count));
}

QString anyText()
{
    QString text;
    for (char c : *rc::gen::arbitrary<std::string>())
        text += QChar(0x20 + static_cast<unsigned char>(c) * 3);
    return text;
}

UnitData anyUnitData()
{
    static Unit const *const units[] = {uLength, uForce, uStrain, uTemperature};
    if (anyBool())
        return UnitData();
    Unit const *const unit = units[*rc::gen::inRange(0, 4)];
    return UnitData(unit, anyOf<Unit::Units_t>(static_cast<int>(unit->getNumberOfUnits())));
}

Legend anyLegend()
{
    Legend legend;
    legend.setUnitData(anyUnitData());
    legend.setUnitName(anyText());
    legend.setFixedMinimum(anyFinite());
    legend.setFixedMaximum(anyFinite());
    if (anyBool())
        legend.setDynamicMinimum();
    if (anyBool())
        legend.setDynamicMaximum();
    legend.setColorMode(anyOf<ColorMode_t>(2));
    legend.setScaleMode(anyOf<ScaleMode_t>(2));
    legend.setNumberOfClasses(*rc::gen::inRange(1u, Legend::MAX_CLASSES + 1));
    legend.setColorMapName(anyOf<ColorMapName_t>(5));
    legend.setDigits(*rc::gen::inRange(-3, Legend::MAX_DIGITS + 1));
    legend.setMaxTicks(*rc::gen::arbitrary<int>());
    legend.setUseExtremaColors(anyBool());
    legend.setMinColor(anyColor());
    legend.setMaxColor(anyColor());
    if (anyBool())
        legend.setMinColorInvalid();
    if (anyBool())
        legend.setMaxColorInvalid();
    legend.setV602CompatibilityMode(anyBool());
    return legend;
}

Data anyData()
{
    Data data;
    data.setDynamicMinimum(anyDouble());
    data.setDynamicMaximum(anyDouble());
    data.setAverage(anyFinite());
    data.setSigmaValue(anyFinite());
    return data;
}

TEST(AnyLegend, comesBackFromEveryForm)
{
    EXPECT_TRUE(rc::check([] {
        Legend const legend = anyLegend();
        RC_ASSERT(throughStream(legend) == legend);
        RC_ASSERT(throughParameters(legend, anyLegend()) == legend);
    }));
}

TEST(AnyLegendData, comeBackFromEveryForm)
{
    EXPECT_TRUE(rc::check([] {
        Data data = anyData();
        RC_ASSERT(savedBytes(throughStream(data)) == savedBytes(data)); // NaN included
        data.setDynamicMinimum(anyFinite());
        data.setDynamicMaximum(anyFinite());
        RC_ASSERT(throughParameters(data) == data);
    }));
}

TEST(AnyHistogram, comesBackFromAStream)
{
    EXPECT_TRUE(rc::check([] {
        HistogramData histogram;
        int const count = *rc::gen::inRange(0, 20);
        for (int i = 0; i < count; ++i) {
            std::map<double, unsigned int> const counts{{anyFinite(), *rc::gen::inRange(0u, 1000u)}};
            RC_ASSERT(histogram.addHistogram(counts));
        }
        RC_ASSERT(throughStream(histogram) == histogram);
    }));
}

TEST(AnyScale, colorsExactlyWhatIsValid)
{
    EXPECT_TRUE(rc::check([] {
        Legend const legend = anyLegend();
        Data const data = anyData();
        LegendHandler handler(&legend, &data);
        handler.setToleranceMode(anyBool());
        double const minimum = legend.getMinimum(data);
        double const maximum = legend.getMaximum(data);
        for (double value : {anyDouble(), minimum, maximum, minimum * 0.5 + maximum * 0.5}) {
            Color const first = handler.getColor(value, Color(0, 0, 0, 0));
            Color const second = handler.getColor(value, Color(255, 255, 255, 255));
            RC_ASSERT((first == second) == handler.isValid(value));
        }
        RC_ASSERT(handler.getColors().size() == 0 || handler.getColors().size() == LegendHandler::NUMBER_OF_COLORS);
    }));
}

TEST(AnyDiscreteScale, hasAscendingBoundariesBetweenItsLimits)
{
    EXPECT_TRUE(rc::check([] {
        Legend const legend = anyLegend();
        Data const data = anyData();
        std::vector<double> values;
        std::vector<int> indices;
        legend.getDiscreteTicks(data, false, &values, &indices);
        RC_ASSERT(values.size() == indices.size());
        RC_PRE(!values.empty());
        RC_ASSERT(values.size() == legend.getNumberOfClasses() + 1);
        RC_ASSERT(std::is_sorted(values.begin(), values.end()));
        RC_ASSERT(values.front() == legend.getMinimum(data));
        RC_ASSERT(values.back() == legend.getMaximum(data));
    }));
}

TEST(DamagedScale, isRefusedOrReadAndNeverAnythingElse)
{
    EXPECT_TRUE(rc::check([] {
        std::string bytes = savedBytes(anyLegend());
        auto const place = *rc::gen::inRange<std::size_t>(0, bytes.size());
        bytes[place] = static_cast<char>(bytes[place] ^ *rc::gen::inRange(1, 256));
        Legend legend;
        if (!loadError(bytes, &legend).isEmpty())
            RC_ASSERT(legend == Legend());
    }));
}

} // namespace
} // namespace Zem::Legend2
