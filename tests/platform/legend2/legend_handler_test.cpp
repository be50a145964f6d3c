#include <ZemColorMap.h>
#include <ZemLegendHandler.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Legend2 {
namespace {

constexpr double MAX = std::numeric_limits<double>::max();
constexpr double INF = std::numeric_limits<double>::infinity();
constexpr Color FALLBACK(1, 2, 3, 4);
constexpr Color BLUE(0, 0, 255);
constexpr Color CYAN(0, 255, 255);
constexpr Color GREEN(0, 255, 0);
constexpr Color RED(255, 0, 0);

Legend rainbow(double minimum, double maximum)
{
    Legend legend;
    legend.setColorMapName(COLOR_MAP_RAINBOW);
    legend.setFixedMinimum(minimum);
    legend.setFixedMaximum(maximum);
    return legend;
}

Legend discreteRainbow(double minimum, double maximum, unsigned int classes)
{
    Legend legend = rainbow(minimum, maximum);
    legend.setScaleMode(SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(classes);
    return legend;
}

/// A handler with data that lives as long.
struct Scale
{
    explicit Scale(Legend const &params, Data const &values = Data())
        : legend(params), data(values), handler(&legend, &data)
    {
    }

    Color at(double value) const { return handler.getColor(value, FALLBACK); }
    bool has(double value) const { return handler.isValid(value); }

    Legend legend;
    Data data;
    LegendHandler handler;
};

bool isNear(Color const &a, Color const &b, int tolerance)
{
    return std::abs(a.getRed() - b.getRed()) <= tolerance && std::abs(a.getGreen() - b.getGreen()) <= tolerance &&
           std::abs(a.getBlue() - b.getBlue()) <= tolerance && a.getAlpha() == b.getAlpha();
}

Color mapColor(ColorMapName_t name, double position)
{
    Legend legend = rainbow(0, 1);
    legend.setColorMapName(name);
    return Scale(legend).at(position);
}

TEST(ColorMaps, beginAndEndInTheirPublishedColors)
{
    EXPECT_EQ(mapColor(COLOR_MAP_VIRIDIS, 0), Color(68, 1, 84));
    EXPECT_EQ(mapColor(COLOR_MAP_VIRIDIS, 1), Color(253, 231, 37));
    EXPECT_EQ(mapColor(COLOR_MAP_PLASMA, 0), Color(13, 8, 135));
    EXPECT_EQ(mapColor(COLOR_MAP_PLASMA, 1), Color(240, 249, 33));
    EXPECT_EQ(mapColor(COLOR_MAP_CIVIDIS, 0), Color(0, 34, 78));
    EXPECT_EQ(mapColor(COLOR_MAP_CIVIDIS, 1), Color(254, 232, 56));
    EXPECT_EQ(mapColor(COLOR_MAP_RAINBOW, 0), BLUE);
    EXPECT_EQ(mapColor(COLOR_MAP_RAINBOW, 1), RED);
}

TEST(ColorMaps, matchTheirPublishedTablesInBetween)
{
    // The entries 64, 128 and 191 of 256.
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_VIRIDIS, 128.0 / 255), Color(33, 145, 140), 2));
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_PLASMA, 128.0 / 255), Color(204, 71, 120), 2));
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_CIVIDIS, 128.0 / 255), Color(125, 124, 120), 2));
}

TEST(ColorMaps, ofColdAndWarmMatchTheirPublishedColors)
{
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_COOL_WARM, 0.0), Color(59, 76, 192), 1));
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_COOL_WARM, 0.25), Color(141, 176, 254), 2));
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_COOL_WARM, 0.5), Color(221, 221, 221), 2));
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_COOL_WARM, 0.75), Color(244, 154, 123), 2));
    EXPECT_TRUE(isNear(mapColor(COLOR_MAP_COOL_WARM, 1.0), Color(180, 4, 38), 1));
}

TEST(ColorMaps, runWithoutJumps)
{
    for (unsigned int map = 0; map < Legend::getColorMapNames().size(); ++map) {
        for (int i = 0; i < 256; ++i) {
            auto const name = static_cast<ColorMapName_t>(map);
            EXPECT_TRUE(isNear(mapColor(name, i / 256.0), mapColor(name, (i + 1) / 256.0), 10)) << map << ' ' << i;
        }
    }
}

TEST(LegendHandler, spreadsTheColorsEvenlyOverTheLimits)
{
    Scale const scale(rainbow(-2, 6));
    EXPECT_EQ(scale.at(-2), BLUE);
    EXPECT_TRUE(isNear(scale.at(0), CYAN, 1));
    EXPECT_TRUE(isNear(scale.at(2), GREEN, 1));
    EXPECT_TRUE(isNear(scale.at(4), Color(255, 255, 0), 1));
    EXPECT_EQ(scale.at(6), RED);
}

TEST(LegendHandler, takesDynamicLimitsFromTheData)
{
    Legend legend = rainbow(0, 1);
    legend.setDynamicMinimum();
    legend.setDynamicMaximum();
    Data data;
    data.setDynamicMinimum(10);
    data.setDynamicMaximum(20);
    Scale const scale(legend, data);
    EXPECT_EQ(scale.at(10), BLUE);
    EXPECT_EQ(scale.at(20), RED);
    EXPECT_FALSE(scale.has(9.9));
}

TEST(LegendHandler, hasNoColorBeyondTheLimits)
{
    Scale const scale(rainbow(0, 1));
    for (double value : {-0.001, 1.001, INF, -INF}) {
        EXPECT_FALSE(scale.has(value)) << value;
        EXPECT_EQ(scale.at(value), FALLBACK) << value;
    }
    EXPECT_TRUE(scale.has(0));
    EXPECT_TRUE(scale.has(1));
}

TEST(LegendHandler, hasTheExtremaColorsBeyondTheLimitsWhereTheyAreValid)
{
    Legend legend = rainbow(0, 1);
    legend.setUseExtremaColors(true);
    legend.setMinColor(Color(10, 10, 10));
    legend.setMaxColor(Color(20, 20, 20));
    EXPECT_EQ(Scale(legend).at(-5), Color(10, 10, 10));
    EXPECT_EQ(Scale(legend).at(-INF), Color(10, 10, 10));
    EXPECT_EQ(Scale(legend).at(5), Color(20, 20, 20));
    EXPECT_TRUE(Scale(legend).has(5));

    legend.setMinColorInvalid();
    EXPECT_EQ(Scale(legend).at(-5), FALLBACK);
    EXPECT_FALSE(Scale(legend).has(-5));
    EXPECT_TRUE(Scale(legend).has(5));

    legend.setMaxColorInvalid();
    EXPECT_FALSE(Scale(legend).has(5));
}

TEST(LegendHandler, hasNoColorForNaN)
{
    Legend legend = rainbow(0, 1);
    legend.setUseExtremaColors(true);
    EXPECT_FALSE(Scale(legend).has(std::nan("")));
    EXPECT_EQ(Scale(legend).at(std::nan("")), FALLBACK);
}

TEST(LegendHandler, hasNoColorsWithoutLegendOrData)
{
    Legend const legend;
    Data const data;
    for (LegendHandler const &handler :
         {LegendHandler(nullptr, &data), LegendHandler(&legend, nullptr), LegendHandler(nullptr, nullptr)}) {
        EXPECT_EQ(handler.getColor(0.5, FALLBACK), FALLBACK);
        EXPECT_FALSE(handler.isValid(0.5));
        EXPECT_TRUE(handler.getColors().empty());
    }
}

TEST(LegendHandler, hasNoColorsForLimitsThatMakeNoScale)
{
    double const nan = std::nan("");
    for (auto const &[minimum, maximum] : {std::pair(1.0, 0.0), {nan, 1.0}, {0.0, nan}, {-INF, 1.0}, {0.0, INF}}) {
        Data data;
        data.setDynamicMinimum(minimum);
        data.setDynamicMaximum(maximum);
        Legend legend;
        legend.setUseExtremaColors(true);
        Scale const scale(legend, data);
        for (double value : {0.0, 0.5, 1.0, -1e300, nan})
            EXPECT_FALSE(scale.has(value));
        EXPECT_TRUE(scale.handler.getColors().empty());
    }
}

TEST(LegendHandler, showsASingleValueInTheMiddleColor)
{
    Scale const scale(rainbow(5, 5));
    EXPECT_TRUE(isNear(scale.at(5), GREEN, 1));
    EXPECT_FALSE(scale.has(5.1));
    EXPECT_FALSE(scale.has(4.9));
}

TEST(LegendHandler, spansTheWidestAndTheNarrowestLimits)
{
    Scale const wide(rainbow(-MAX, MAX));
    EXPECT_EQ(wide.at(-MAX), BLUE);
    EXPECT_TRUE(isNear(wide.at(0), GREEN, 1));
    EXPECT_EQ(wide.at(MAX), RED);

    double const tiny = std::numeric_limits<double>::denorm_min();
    Scale const narrow(rainbow(0, tiny));
    EXPECT_EQ(narrow.at(0), BLUE);
    EXPECT_EQ(narrow.at(tiny), RED);
}

TEST(LegendHandler, hasOneColorPerClass)
{
    Scale const scale(discreteRainbow(0, 5, 5));
    EXPECT_EQ(scale.at(0), BLUE);
    EXPECT_EQ(scale.at(0.99), BLUE);
    EXPECT_TRUE(isNear(scale.at(1.0), CYAN, 1));
    EXPECT_TRUE(isNear(scale.at(2.5), GREEN, 1));
    EXPECT_EQ(scale.at(4.0), RED);
    EXPECT_EQ(scale.at(5), RED);
}

TEST(LegendHandler, showsASingleClassInTheMiddleColor)
{
    Scale const scale(discreteRainbow(0, 5, 1));
    EXPECT_TRUE(isNear(scale.at(0), GREEN, 1));
    EXPECT_EQ(scale.at(0), scale.at(5));
}

TEST(LegendHandler, spreadsColorsByMagnitudeOnALogarithmicScale)
{
    Legend legend = rainbow(0.01, 100);
    legend.setColorMode(COLOR_MODE_LOGARITHMIC);
    legend.setUseExtremaColors(true);
    Scale const scale(legend);
    EXPECT_EQ(scale.at(0.01), BLUE);
    EXPECT_TRUE(isNear(scale.at(0.1), CYAN, 1));
    EXPECT_TRUE(isNear(scale.at(1), GREEN, 1));
    EXPECT_EQ(scale.at(100), RED);
    EXPECT_TRUE(scale.has(0.001));
    EXPECT_FALSE(scale.has(0));
    EXPECT_FALSE(scale.has(-1));
}

TEST(LegendHandler, hasNoLogarithmicScaleDownToZero)
{
    for (double minimum : {0.0, -1.0}) {
        Legend legend = rainbow(minimum, 100);
        legend.setColorMode(COLOR_MODE_LOGARITHMIC);
        Scale const scale(legend);
        EXPECT_FALSE(scale.has(10));
        EXPECT_TRUE(scale.handler.getColors().empty());
    }
}

TEST(LegendHandler, givesTheStripFromTheMinimumToTheMaximum)
{
    std::vector<Color> const colors = Scale(rainbow(0, 1)).handler.getColors();
    ASSERT_EQ(colors.size(), LegendHandler::NUMBER_OF_COLORS);
    EXPECT_EQ(colors.front(), BLUE);
    EXPECT_EQ(colors.back(), RED);
    EXPECT_TRUE(isNear(colors[64], CYAN, 4));
}

TEST(LegendHandler, givesTheStripEvenlyInTheValueAlsoOnALogarithmicScale)
{
    Legend legend = rainbow(1, 256);
    legend.setColorMode(COLOR_MODE_LOGARITHMIC);
    Scale const scale(legend);
    std::vector<Color> const colors = scale.handler.getColors();
    ASSERT_EQ(colors.size(), 256u);
    // Color i belongs to the value i + 1.
    EXPECT_EQ(colors[15], scale.at(16));
    EXPECT_TRUE(isNear(colors[15], GREEN, 1));
}

TEST(LegendHandlerInToleranceMode, colorsValuesByTheirPassType)
{
    ToleranceParams params;
    params.setWarningShare(0.1);
    params.setColor(TOLERANCE_FAIL_LOW, Color(1, 0, 0));
    params.setColor(TOLERANCE_WARNING_LOW, Color(2, 0, 0));
    params.setColor(TOLERANCE_PASS, Color(3, 0, 0));
    params.setColor(TOLERANCE_WARNING_HIGH, Color(4, 0, 0));
    params.setColor(TOLERANCE_FAIL_HIGH, Color(5, 0, 0));
    Scale scale(rainbow(0, 10));
    scale.handler.setToleranceParams(&params);
    EXPECT_EQ(scale.at(0), BLUE); // the mode is still off
    scale.handler.setToleranceMode(true);

    EXPECT_EQ(scale.at(-0.1), Color(1, 0, 0));
    EXPECT_EQ(scale.at(-INF), Color(1, 0, 0));
    EXPECT_EQ(scale.at(0), Color(2, 0, 0));
    EXPECT_EQ(scale.at(0.9), Color(2, 0, 0));
    EXPECT_EQ(scale.at(1), Color(3, 0, 0));
    EXPECT_EQ(scale.at(9), Color(3, 0, 0));
    EXPECT_EQ(scale.at(9.1), Color(4, 0, 0));
    EXPECT_EQ(scale.at(10), Color(4, 0, 0));
    EXPECT_EQ(scale.at(10.1), Color(5, 0, 0));
    EXPECT_FALSE(scale.has(std::nan("")));

    scale.handler.setToleranceMode(false);
    EXPECT_EQ(scale.at(0), BLUE);
}

TEST(LegendHandlerInToleranceMode, hasNoColorForPassTypesWithoutOne)
{
    ToleranceParams params;
    params.setColorInvalid(TOLERANCE_PASS);
    Scale scale(rainbow(0, 10));
    scale.handler.setToleranceParams(&params);
    scale.handler.setToleranceMode(true);
    EXPECT_FALSE(scale.has(5));
    EXPECT_EQ(scale.at(5), FALLBACK);
    EXPECT_TRUE(scale.has(11));
}

TEST(LegendHandlerInToleranceMode, usesTheApplicationsColorsWithoutItsOwn)
{
    ToleranceParams params;
    params.setColor(TOLERANCE_PASS, Color(7, 8, 9));
    ColorMap::setTolerance(false, params);
    Scale scale(rainbow(0, 10));
    scale.handler.setToleranceMode(true);
    EXPECT_EQ(scale.at(5), Color(7, 8, 9));
    ColorMap::setTolerance(false, ToleranceParams());
}

} // namespace
} // namespace Zem::Legend2
