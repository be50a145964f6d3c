#include "legend_forms_support.h"

#include <ZemHistogramData.h>
#include <ZemLegendHandler.h>

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

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

/// The values of the first block, as bytes.
std::string firstPayload(std::string const &bytes)
{
    constexpr std::size_t HEADER_SIZE = 64;
    std::uint32_t size = 0;
    std::memcpy(&size, bytes.data() + HEADER_SIZE, sizeof size);
    return bytes.substr(HEADER_SIZE + 8, size);
}

/// With a checksum that fits.
template <class T>
std::string blockWith(std::string const &payload, T const &following)
{
    return bytesOf([&](IO::OutStream &stream) {
        auto const size = static_cast<unsigned int>(payload.size());
        stream.beginBlock(size, 1);
        stream.writeData(payload.data(), size);
        stream.endBlock();
        following.save(&stream);
    });
}

void damage(std::string *bytes)
{
    auto const place = *rc::gen::inRange<std::size_t>(0, bytes->size());
    (*bytes)[place] = static_cast<char>((*bytes)[place] ^ *rc::gen::inRange(1, 256));
}

TEST(DamagedScale, isRefusedAndLeavesTheScaleAloneOrIsOneThatCanBeStored)
{
    EXPECT_TRUE(rc::check([] {
        std::string payload = firstPayload(savedBytes(anyLegend()));
        damage(&payload);
        Legend legend;
        if (loadError(blockWith(payload, UnitData()), &legend).isEmpty())
            RC_ASSERT(throughStream(legend) == legend && throughParameters(legend) == legend);
        else
            RC_ASSERT(legend == Legend());
    }));
}

TEST(DamagedHistogram, isRefusedOrCountsSomethingFinite)
{
    EXPECT_TRUE(rc::check([] {
        HistogramData histogram;
        for (double value : {anyFinite(), anyFinite(), 1.0})
            RC_ASSERT(histogram.addHistogram(std::map<double, unsigned int>{{value, 3}}));
        std::string payload = firstPayload(savedBytes(histogram));
        damage(&payload);
        HistogramData read;
        if (loadError(blockWith(payload, UnitData()), &read).isEmpty())
            RC_ASSERT(read == HistogramData() || read.getMaxCount() > 0);
        else
            RC_ASSERT(!read.isValid());
    }));
}

} // namespace
} // namespace Zem::Legend2
