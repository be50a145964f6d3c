// figqt_png_encoder.h: pictures as PNG.
#pragma once

#include <QtGui/QImage>

#include <functional>
#include <string>
#include <string_view>

namespace Zem::Fig2Qt {

/// What of PNG is a choice; the defaults were chosen by measurement, see bench/bench_qt.cpp.
struct PngCoding
{
    enum class Filter { NONE, UP };

    Filter filter = Filter::UP;
    int level = 3;            ///< of zlib, 1 to 9
    unsigned int threads = 0; ///< 0 for as many as the machine has; the bytes do not depend on it
};

/// Hands a PNG file piece by piece to `write`. `image` is of Format_RGB32. A picture of grey pixels alone takes a byte
/// for each. Throws std::bad_alloc, and what `write` throws.
void encodePng(QImage const &image, double dpi, PngCoding const &coding,
               std::function<void(std::string_view)> const &write);

} // namespace Zem::Fig2Qt
