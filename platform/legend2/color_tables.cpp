#include "color_tables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Zem::Legend2 {

namespace {

// Viridis and Plasma: Nathaniel J. Smith, Stefan van der Walt and Eric Firing, released under CC0 with matplotlib.
// Cividis: Jamie R. Nunez, Christopher R. Anderton and Ryan S. Renslow, "Optimizing colormaps with consideration for
// color vision deficiency", PLoS ONE 13(7), 2018; published as a table of 256 colours.
// Each is that table at 33 even distances. Linear in between, a channel is never more than 6 of 255 off.
constexpr Color VIRIDIS[] = {
    {68, 1, 84},    {71, 13, 96},   {72, 24, 106},  {72, 35, 116},  {71, 45, 123},  {69, 54, 129},  {66, 64, 134},
    {63, 73, 137},  {59, 82, 139},  {55, 90, 141},  {51, 99, 141},  {47, 106, 142}, {44, 114, 142}, {41, 122, 142},
    {38, 129, 142}, {35, 137, 142}, {33, 144, 140}, {31, 152, 139}, {31, 159, 136}, {33, 166, 133}, {40, 174, 128},
    {49, 181, 123}, {62, 188, 116}, {76, 194, 108}, {93, 201, 99},  {110, 206, 88}, {130, 211, 76}, {150, 216, 63},
    {171, 220, 50}, {192, 223, 36}, {213, 226, 26}, {234, 229, 26}, {253, 231, 37}};

constexpr Color PLASMA[] = {
    {13, 8, 135},   {34, 6, 144},   {49, 5, 150},   {63, 4, 156},   {76, 2, 161},   {89, 1, 165},   {102, 0, 167},
    {114, 1, 168},  {126, 3, 168},  {137, 9, 166},  {149, 17, 162}, {159, 26, 156}, {169, 35, 150}, {178, 44, 142},
    {187, 53, 135}, {195, 62, 128}, {203, 71, 120}, {210, 80, 113}, {217, 89, 106}, {224, 98, 99},  {230, 108, 92},
    {235, 117, 85}, {240, 127, 79}, {244, 138, 72}, {248, 148, 65}, {251, 159, 58}, {253, 171, 51}, {254, 183, 45},
    {253, 195, 40}, {252, 208, 37}, {249, 221, 37}, {245, 235, 39}, {240, 249, 33}};

constexpr Color CIVIDIS[] = {{0, 34, 78},     {0, 40, 91},     {0, 46, 106},    {4, 51, 113},    {26, 56, 111},
                             {39, 62, 110},   {50, 67, 109},   {59, 73, 108},   {67, 78, 108},   {75, 84, 108},
                             {82, 89, 109},   {90, 95, 110},   {97, 101, 111},  {104, 106, 113}, {111, 112, 115},
                             {117, 118, 118}, {124, 123, 120}, {132, 129, 121}, {139, 135, 120}, {147, 141, 120},
                             {155, 147, 118}, {163, 154, 117}, {171, 160, 114}, {179, 166, 112}, {187, 173, 108},
                             {195, 180, 105}, {204, 186, 100}, {212, 193, 95},  {221, 201, 88},  {230, 208, 81},
                             {239, 215, 72},  {248, 223, 60},  {254, 232, 56}};

constexpr Color RAINBOW[] = {{0, 0, 255}, {0, 255, 255}, {0, 255, 0}, {255, 255, 0}, {255, 0, 0}};

// The diverging map of Kenneth Moreland, "Diverging Color Maps for Scientific Visualization", ISVC 2009: its colours
// run in polar coordinates of CIELAB, magnitude, saturation and hue, from either end to an unsaturated middle.
struct Msh
{
    double magnitude;
    double saturation;
    double hue;
};

constexpr Msh COOL{80.0, 1.08, -1.1};
constexpr Msh WARM{80.0, 1.08, 0.5};
constexpr double MIDDLE_MAGNITUDE = 88.0;

/// The hue that a way from `end` to the grey middle has to end at, so that it is even to the eye.
double spunHue(Msh const &end)
{
    double const spin = end.saturation *
                        std::sqrt(MIDDLE_MAGNITUDE * MIDDLE_MAGNITUDE - end.magnitude * end.magnitude) /
                        (end.magnitude * std::sin(end.saturation));
    return end.hue > -std::numbers::pi / 3.0 ? end.hue + spin : end.hue - spin;
}

/// The inverse of CIELAB's compression.
double expanded(double f)
{
    return f > 6.0 / 29.0 ? f * f * f : (f - 16.0 / 116.0) * 3.0 * (6.0 / 29.0) * (6.0 / 29.0);
}

unsigned char channelOf(double linear)
{
    double const c = std::clamp(linear, 0.0, 1.0);
    double const coded = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1.0 / 2.4) - 0.055;
    return static_cast<unsigned char>(std::lround(coded * 255.0));
}

/// Through CIELAB and XYZ under D65 to sRGB.
Color colorOf(Msh const &msh)
{
    double const lightness = msh.magnitude * std::cos(msh.saturation);
    double const chroma = msh.magnitude * std::sin(msh.saturation);
    double const fy = (lightness + 16.0) / 116.0;
    double const x = 0.9505 * expanded(fy + chroma * std::cos(msh.hue) / 500.0);
    double const y = expanded(fy);
    double const z = 1.0890 * expanded(fy - chroma * std::sin(msh.hue) / 200.0);
    return Color(channelOf(3.2406 * x - 1.5372 * y - 0.4986 * z), channelOf(-0.9689 * x + 1.8758 * y + 0.0415 * z),
                 channelOf(0.0557 * x - 0.2040 * y + 1.0570 * z));
}

Color coolWarm(double position)
{
    Msh const &end = position < 0.5 ? COOL : WARM;
    double const t = std::abs(2.0 * position - 1.0); // 0 in the middle, 1 at the ends
    return colorOf(
        {std::lerp(MIDDLE_MAGNITUDE, end.magnitude, t), t * end.saturation, std::lerp(spunHue(end), end.hue, t)});
}

unsigned char mixed(unsigned char a, unsigned char b, double t)
{
    return static_cast<unsigned char>(std::lround(std::lerp(double(a), double(b), t)));
}

Color interpolated(std::span<Color const> colors, double position)
{
    double const place = position * static_cast<double>(colors.size() - 1);
    auto const index = std::min(static_cast<std::size_t>(place), colors.size() - 2);
    double const t = place - static_cast<double>(index);
    Color const &a = colors[index];
    Color const &b = colors[index + 1];
    return Color(mixed(a.getRed(), b.getRed(), t), mixed(a.getGreen(), b.getGreen(), t),
                 mixed(a.getBlue(), b.getBlue(), t));
}

Color computed(ColorMapName_t name, double position)
{
    switch (name) {
    case COLOR_MAP_VIRIDIS:
        return interpolated(VIRIDIS, position);
    case COLOR_MAP_PLASMA:
        return interpolated(PLASMA, position);
    case COLOR_MAP_CIVIDIS:
        return interpolated(CIVIDIS, position);
    case COLOR_MAP_COOL_WARM:
        return coolWarm(position);
    case COLOR_MAP_RAINBOW:
        break;
    }
    return interpolated(RAINBOW, position);
}

using Table = std::array<Color, COLOR_TABLE_SIZE>;
constexpr std::size_t NUMBER_OF_MAPS = COLOR_MAP_RAINBOW + 1;

std::array<Table, NUMBER_OF_MAPS> makeTables()
{
    std::array<Table, NUMBER_OF_MAPS> tables;
    for (std::size_t map = 0; map < NUMBER_OF_MAPS; ++map) {
        for (std::size_t i = 0; i < COLOR_TABLE_SIZE; ++i) {
            tables[map][i] = computed(static_cast<ColorMapName_t>(map), double(i) / (COLOR_TABLE_SIZE - 1));
        }
    }
    return tables;
}

} // namespace

Color const *colorTable(ColorMapName_t name)
{
    static std::array<Table, NUMBER_OF_MAPS> const tables = makeTables();
    return tables[name].data();
}

} // namespace Zem::Legend2
