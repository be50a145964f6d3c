#include "figqt_picture_tones.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Zem::Fig2Qt {

using Fig2::ImageConversion;

namespace {

constexpr double BRIGHTEST = 255.0;

std::array<Color, 256> rainbow()
{
    static constexpr std::array<Color, 5> CORNERS{Color(0, 0, 255), Color(0, 255, 255), Color(0, 255, 0),
                                                  Color(255, 255, 0), Color(255, 0, 0)};
    constexpr double STEP = BRIGHTEST / (CORNERS.size() - 1);
    std::array<Color, 256> colors;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        double const place = static_cast<double>(i) / STEP;
        auto const lower = std::min(static_cast<std::size_t>(place), CORNERS.size() - 2);
        double const share = place - static_cast<double>(lower);
        auto const mixed = [share](int a, int b) {
            return static_cast<unsigned char>(std::lround(a + (b - a) * share));
        };
        Color const &from = CORNERS[lower];
        Color const &to = CORNERS[lower + 1];
        colors[i] = Color(mixed(from.getRed(), to.getRed()), mixed(from.getGreen(), to.getGreen()),
                          mixed(from.getBlue(), to.getBlue()));
    }
    return colors;
}

} // namespace

unsigned int whiteOf(unsigned int most)
{
    for (unsigned int const bits : {8U, 10U, 12U, 14U}) {
        if (most < 1U << bits)
            return (1U << bits) - 1U;
    }
    return 65535U;
}

unsigned char toneBetween(double value, double black, double white)
{
    if (black == white)
        return value > white ? 255 : 0;
    return static_cast<unsigned char>(std::lround(std::clamp((value - black) / (white - black), 0.0, 1.0) * BRIGHTEST));
}

Tones tonesOf(ImageConversion const &conversion, std::size_t size, unsigned int white)
{
    Tones tones(size);
    for (std::size_t i = 0; i < size; ++i) {
        auto const value = static_cast<double>(i);
        if (conversion.getType() == ImageConversion::TYPE_RANGE)
            tones[i] = toneBetween(value, conversion.getMin(), conversion.getMax());
        else if (conversion.getType() == ImageConversion::TYPE_LIGHTEN)
            tones[i] = toneBetween(std::sqrt(value), 0.0, std::sqrt(white));
        else
            tones[i] = toneBetween(value, 0.0, white);
    }
    return tones;
}

Tones equalizedTones(Histogram const &histogram)
{
    std::uint64_t total = 0;
    std::uint64_t least = 0; // of the darkest that there are
    for (std::uint32_t const count : histogram) {
        least = least == 0 ? count : least;
        total += count;
    }
    if (total == least)
        return {};
    Tones tones(histogram.size());
    std::uint64_t below = 0;
    for (std::size_t i = 0; i < histogram.size(); ++i) {
        below += histogram[i];
        tones[i] = toneBetween(static_cast<double>(below), static_cast<double>(least), static_cast<double>(total));
    }
    return tones;
}

std::array<Color, 256> const &pseudoColors()
{
    static std::array<Color, 256> const colors = rainbow();
    return colors;
}

} // namespace Zem::Fig2Qt
