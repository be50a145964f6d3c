// ZemColor.h: a colour of 8 bits per channel.
#pragma once

#include <iosfwd>

namespace Zem {

/// Red, green, blue and alpha (0 transparent, 255 opaque), four bytes in this order. A plain value; several
/// threads may read it.
class Color
{
public:
    /// Opaque black.
    constexpr Color() noexcept = default;
    constexpr Color(unsigned char red, unsigned char green, unsigned char blue) noexcept : Color(red, green, blue, 255)
    {
    }
    constexpr Color(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha) noexcept
        : red_(red), green_(green), blue_(blue), alpha_(alpha)
    {
    }

    constexpr unsigned char getRed() const noexcept { return red_; }
    constexpr unsigned char getGreen() const noexcept { return green_; }
    constexpr unsigned char getBlue() const noexcept { return blue_; }
    constexpr unsigned char getAlpha() const noexcept { return alpha_; }

    constexpr bool operator==(Color const &) const noexcept = default;

private:
    unsigned char red_ = 0;
    unsigned char green_ = 0;
    unsigned char blue_ = 0;
    unsigned char alpha_ = 255;
};
static_assert(sizeof(Color) == 4, "a colour is stored as four packed bytes");

/// One word, "#rrggbbaa" in lower case hexadecimal digits, whatever the flags of the stream.
std::ostream &operator<<(std::ostream &stream, Color const &color);
/// Digits of either case. Any other word sets failbit and leaves the colour alone.
std::istream &operator>>(std::istream &stream, Color &color);

} // namespace Zem
