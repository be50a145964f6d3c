// figqt_picture_tones.h: from the numbers of a picture to shades of grey.
#pragma once

#include <ZemColor.h>
#include <ZemFig2ImageConversion.h>

#include <array>
#include <cstdint>
#include <vector>

namespace Zem::Fig2Qt {

/// A shade for each of the numbers 0 ... size - 1.
using Tones = std::vector<unsigned char>;
/// How often each of the numbers 0 ... size - 1 occurs.
using Histogram = std::vector<std::uint32_t>;

/// The number at which a camera whose pictures are no brighter than `most` is white: that of 8, 10, 12, 14 or 16 bits.
unsigned int whiteOf(unsigned int most);

/// From 0 at `black` to 255 at `white`, nearest shade, `black` above `white` being a negative. Where both are the same,
/// all above is white.
unsigned char toneBetween(double value, double black, double white);

/// For conversions to grey that look at each number by itself; the others get the tones of normal.
Tones tonesOf(Fig2::ImageConversion const &conversion, std::size_t size, unsigned int white);

/// Shades that are as frequent as each other, as far as that is possible: the least number that occurs is black, the
/// greatest white. Empty when fewer than two numbers occur.
Tones equalizedTones(Histogram const &histogram);

/// For the shades 0 to 255, from blue over cyan, green and yellow to red.
std::array<Color, 256> const &pseudoColors();

} // namespace Zem::Fig2Qt
