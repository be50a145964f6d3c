#include "figqt_ink.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Zem::Fig2Qt {

namespace {

constexpr std::uint32_t OPAQUE = 0xff000000U;

// Two pixels, a number of 16 bits for each channel: GCC and Clang make one or two instructions of each step.
using Bytes = unsigned char __attribute__((vector_size(8)));
using Channels = std::uint16_t __attribute__((vector_size(16)));

constexpr std::uint32_t divideBy255(std::uint32_t value)
{
    return (value + 128U + ((value + 128U) >> 8U)) >> 8U;
}

Channels channelsOf(std::uint64_t pixels)
{
    return __builtin_convertvector(std::bit_cast<Bytes>(pixels), Channels);
}

/// The same share for the four channels of a pixel.
Channels sharesOf(std::uint32_t first, std::uint32_t second)
{
    constexpr std::uint64_t FOUR_TIMES = 0x01010101U;
    return channelsOf(first * FOUR_TIMES | second * FOUR_TIMES << 32U);
}

std::uint64_t mixed(Channels below, Channels above, Channels share)
{
    Channels const sum = below * (255 - share) + above * share + 128;
    Channels const result = (sum + (sum >> 8)) >> 8;
    return std::bit_cast<std::uint64_t>(__builtin_convertvector(result, Bytes));
}

} // namespace

void Ink::setColor(Color const &color)
{
    opaque_ = OPAQUE | static_cast<std::uint32_t>(color.getRed()) << 16U |
              static_cast<std::uint32_t>(color.getGreen()) << 8U | color.getBlue();
    alpha_ = color.getAlpha();
}

void Ink::paint(int x, int y, std::span<unsigned char const> covered, ClipArea const &clip) const
{
    QRect const &open = clip.getRect();
    int const first = std::max(x, open.left());
    int const end = std::min(x + static_cast<int>(covered.size()), open.right() + 1);
    if (first >= end || y < open.top() || y > open.bottom())
        return;
    auto const part = covered.subspan(static_cast<std::size_t>(first - x), static_cast<std::size_t>(end - first));
    std::uint32_t *pixel = bits_ + y * stride_ + first;
    if (clip.isRectangle())
        paintOpen(pixel, part);
    else
        paintMasked(pixel, first, y, part, clip);
}

void Ink::paintPixel(std::uint32_t *pixel, std::uint32_t covered) const
{
    std::uint64_t const result = mixed(channelsOf(*pixel), channelsOf(opaque_), sharesOf(covered, covered));
    *pixel = static_cast<std::uint32_t>(result);
}

void Ink::paintOpen(std::uint32_t *pixel, std::span<unsigned char const> covered) const
{
    if (alpha_ == 255)
        paintPairs(pixel, covered, [](std::uint32_t share) { return share; });
    else
        paintPairs(pixel, covered, [this](std::uint32_t share) { return divideBy255(share * alpha_); });
}

template <class ShareOf>
void Ink::paintPairs(std::uint32_t *pixel, std::span<unsigned char const> covered, ShareOf const &shareOf) const
{
    Channels const above = channelsOf(static_cast<std::uint64_t>(opaque_) << 32U | opaque_);
    std::size_t i = 0;
    for (; i + 2 <= covered.size(); i += 2) {
        std::uint64_t below = 0;
        std::memcpy(&below, pixel + i, sizeof below);
        below = mixed(channelsOf(below), above, sharesOf(shareOf(covered[i]), shareOf(covered[i + 1])));
        std::memcpy(pixel + i, &below, sizeof below);
    }
    if (i < covered.size())
        paintPixel(pixel + i, shareOf(covered[i]));
}

void Ink::paintMasked(std::uint32_t *pixel, int x, int y, std::span<unsigned char const> covered,
                      ClipArea const &clip) const
{
    for (std::size_t i = 0; i < covered.size(); ++i) {
        std::uint32_t const open = clip.openAt(x + static_cast<int>(i), y);
        paintPixel(pixel + i, divideBy255(divideBy255(covered[i] * alpha_) * open));
    }
}

} // namespace Zem::Fig2Qt
