// figqt_mark_sprites.h: small shapes as pixels.
#pragma once

#include <QtGui/QPainterPath>

#include <array>
#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// How a shape covers the pixels about a place, for all places within a pixel, in steps of a sixteenth of it. Each is
/// painted when it is asked for first.
class MarkSprites
{
public:
    /// Larger shapes are not worth being kept.
    static constexpr double LARGEST = 48.0;

    struct Sprite
    {
        int left = 0; ///< from the pixel in which the place lies
        int top = 0;
        int width = 0; ///< 0 for one that was not painted yet
        std::vector<unsigned char> covered;

        int getHeight() const { return static_cast<int>(covered.size()) / width; }
        std::span<unsigned char const> getRow(int row) const
        {
            auto const length = static_cast<std::size_t>(width);
            return std::span(covered).subspan(static_cast<std::size_t>(row) * length, length);
        }
    };

    /// `path` about the origin, in pixels, not larger than LARGEST to a side.
    explicit MarkSprites(QPainterPath const &path) : path_(path) {}

    /// For a place that is `x`, `y` sixteenths right of and below the corner of its pixel, 0 to 15.
    Sprite const &get(unsigned x, unsigned y);

private:
    QPainterPath path_;
    std::array<Sprite, 256> sprites_;
};

} // namespace Zem::Fig2Qt
