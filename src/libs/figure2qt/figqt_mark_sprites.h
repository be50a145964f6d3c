// figqt_mark_sprites.h: small shapes as pixels.
#pragma once

#include <QtGui/QPainterPath>

#include <array>
#include <cstdint>
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
        std::uint32_t covered = 0; ///< where its pixels begin
        std::int16_t left = 0;     ///< from the pixel in which the place lies
        std::int16_t top = 0;
        std::int16_t width = 0; ///< 0 for one that was not painted yet
        std::int16_t height = 0;
    };

    /// `path` about the origin, in pixels, not larger than LARGEST to a side.
    explicit MarkSprites(QPainterPath const &path);

    /// How many pixels about a place a sprite may cover, up and down.
    int getReach() const { return reach_; }

    /// For a place that is `x`, `y` sixteenths right of and below the corner of its pixel, 0 to 15.
    Sprite const &get(unsigned x, unsigned y)
    {
        Sprite &sprite = sprites_[y * 16U + x];
        if (sprite.width == 0)
            paint(x, y, &sprite);
        return sprite;
    }
    /// `row` from 0 to the sprite's height.
    std::span<unsigned char const> getRow(Sprite const &sprite, int row) const
    {
        auto const width = static_cast<std::size_t>(sprite.width);
        return std::span(covered_).subspan(sprite.covered + static_cast<std::size_t>(row) * width, width);
    }

private:
    void paint(unsigned x, unsigned y, Sprite *sprite);

    QPainterPath path_;
    int reach_;
    std::array<Sprite, 256> sprites_;
    std::vector<unsigned char> covered_; // all together, so that they stay near each other
};

} // namespace Zem::Fig2Qt
