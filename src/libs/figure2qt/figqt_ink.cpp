#include "figqt_ink.h"

#include <algorithm>

namespace Zem::Fig2Qt {

namespace {

constexpr std::uint32_t OPAQUE = 0xff000000U;

std::uint32_t divideBy255(std::uint32_t value)
{
    return (value + 128U + ((value + 128U) >> 8U)) >> 8U;
}

/// The channels apart, so that none runs over into the next.
std::uint32_t mixed(std::uint32_t below, std::uint32_t above, std::uint32_t share)
{
    std::uint32_t result = OPAQUE;
    for (std::uint32_t const shift : {0U, 8U, 16U}) {
        std::uint32_t const a = below >> shift & 0xffU;
        std::uint32_t const b = above >> shift & 0xffU;
        result |= divideBy255(a * (255U - share) + b * share) << shift;
    }
    return result;
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

void Ink::paintOpen(std::uint32_t *pixel, std::span<unsigned char const> covered) const
{
    if (alpha_ == 255) {
        for (std::size_t i = 0; i < covered.size(); ++i)
            pixel[i] = mixed(pixel[i], opaque_, covered[i]);
        return;
    }
    for (std::size_t i = 0; i < covered.size(); ++i)
        pixel[i] = mixed(pixel[i], opaque_, divideBy255(covered[i] * alpha_));
}

void Ink::paintMasked(std::uint32_t *pixel, int x, int y, std::span<unsigned char const> covered,
                      ClipArea const &clip) const
{
    for (std::size_t i = 0; i < covered.size(); ++i) {
        std::uint32_t const open = clip.openAt(x + static_cast<int>(i), y);
        pixel[i] = mixed(pixel[i], opaque_, divideBy255(divideBy255(covered[i] * alpha_) * open));
    }
}

} // namespace Zem::Fig2Qt
