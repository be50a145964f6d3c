// figqt_ink.h: puts a colour on the pixels of a picture.
#pragma once

#include "figqt_clip_area.h"

#include <ZemColor.h>

#include <cstdint>
#include <span>

namespace Zem::Fig2Qt {

/// The pixels of a picture of Format_RGB32. They must stay where they are as long as this is used.
class Ink
{
public:
    explicit Ink(QImage *image)
        : bits_(reinterpret_cast<std::uint32_t *>(image->bits())), stride_(image->bytesPerLine() / 4)
    {
    }

    void setColor(Color const &color);
    /// Lays the colour over a row of pixels, as far as each is covered, and as far as the clip is open.
    void paint(int x, int y, std::span<unsigned char const> covered, ClipArea const &clip) const;

private:
    void paintPixel(std::uint32_t *pixel, std::uint32_t covered) const;
    void paintOpen(std::uint32_t *pixel, std::span<unsigned char const> covered) const;
    template <class ShareOf>
    void paintPairs(std::uint32_t *pixel, std::span<unsigned char const> covered, ShareOf const &shareOf) const;
    void paintMasked(std::uint32_t *pixel, int x, int y, std::span<unsigned char const> covered,
                     ClipArea const &clip) const;

    std::uint32_t *bits_;
    qsizetype stride_;
    std::uint32_t opaque_ = 0xff000000U;
    std::uint32_t alpha_ = 255;
};

} // namespace Zem::Fig2Qt
