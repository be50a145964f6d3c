// figqt_png_encoder.h: pictures as PNG.
#pragma once

#include <QtGui/QImage>

#include <functional>
#include <string>
#include <string_view>

namespace Zem::Fig2Qt {

/// Hands a PNG file piece by piece to `write`. `image` is of Format_RGB32. A picture of grey pixels alone takes a byte
/// for each. Each row is written as the difference to the one above, runs packed: for pages of lines, marks and text
/// that is as small as a search for all that repeats, and several times as fast, see bench/RESULTS.md. With `threads` 0
/// it takes as many as the machine has; the bytes do not depend on it. Throws std::bad_alloc, and what `write` throws.
void encodePng(QImage const &image, double dpi, unsigned int threads,
               std::function<void(std::string_view)> const &write);

/// What a PNG file begins with.
std::string pngSignature();
/// A piece of a PNG file with its length and check.
std::string pngChunk(std::string_view type, std::string_view data);

} // namespace Zem::Fig2Qt
