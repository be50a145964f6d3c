#include "figqt_mark_thinner.h"

#include <QtGui/QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

namespace Zem::Fig2Qt {

namespace {

constexpr int SIDE = 64; // of a tile
constexpr double LARGEST_MARK = 48.0;
// Beyond this, counting cells in whole numbers is not safe, and no page reaches there.
constexpr double FAR_AWAY = 1e9;

/// Which corners of the grid a mark covers, a row a number, the lowest bit leftmost.
struct Stencil
{
    int left = 0; ///< from the mark's place
    int top = 0;
    std::vector<std::uint64_t> rows;
};

Stencil stencilOf(QPainterPath const &path, double cell)
{
    QPainterPath const shape = QTransform::fromScale(1.0 / cell, 1.0 / cell).map(path);
    QRect const box = shape.boundingRect().toAlignedRect() | QRect(0, 0, 1, 1);
    Stencil stencil{box.left(), box.top(), {}};
    for (int y = box.top(); y <= box.bottom(); ++y) {
        std::uint64_t row = 0;
        for (int x = box.left(); x <= box.right(); ++x)
            row |= static_cast<std::uint64_t>(shape.contains(QPointF(x, y))) << static_cast<unsigned>(x - box.left());
        stencil.rows.push_back(row);
    }
    return stencil;
}

/// The corners that are covered, in tiles.
class CoveredCorners
{
public:
    /// Whether the stencil at this place shows one that was not; with `cover` all of its are covered from then on.
    bool show(Stencil const &stencil, int x, int y, bool cover)
    {
        int const left = x + stencil.left;
        auto const shift = static_cast<unsigned>(left & (SIDE - 1));
        bool shown = false;
        for (std::size_t i = 0; i < stencil.rows.size(); ++i) {
            int const row = y + stencil.top + static_cast<int>(i);
            std::uint64_t const bits = stencil.rows[i];
            shown |= showIn(left >> 6, row, bits << shift, cover);
            if (shift > 0)
                shown |= showIn((left >> 6) + 1, row, bits >> (64U - shift), cover);
        }
        return shown;
    }

private:
    using Tile = std::array<std::uint64_t, SIDE>;

    bool showIn(int column, int row, std::uint64_t bits, bool cover)
    {
        if (bits == 0)
            return false;
        std::uint64_t &covered = tileAt(column, row >> 6)[static_cast<std::size_t>(row & (SIDE - 1))];
        bool const shown = (bits & ~covered) != 0;
        if (cover)
            covered |= bits;
        return shown;
    }

    Tile &tileAt(int column, int row)
    {
        std::uint64_t const key =
            static_cast<std::uint64_t>(static_cast<std::uint32_t>(column)) << 32U | static_cast<std::uint32_t>(row);
        // The rows of a mark ask for the same tiles again and again.
        Recent &recent = recent_[static_cast<std::size_t>(column & 1)];
        if (!recent.tile || recent.key != key)
            recent = {key, &tiles_[key]};
        return *recent.tile;
    }

    struct Recent
    {
        std::uint64_t key = 0;
        Tile *tile = nullptr;
    };
    std::unordered_map<std::uint64_t, Tile> tiles_;
    std::array<Recent, 2> recent_;
};

} // namespace

std::vector<PlacedMark> withoutHidden(Mark const &mark, std::vector<PlacedMark> const &places, double cell)
{
    QRectF const box = mark.path.boundingRect();
    double const size = std::max(cell, std::max(box.width(), box.height()) / LARGEST_MARK);
    Stencil const stencil = stencilOf(mark.path, size);
    // A mark too small for the grid hides nothing.
    if (std::all_of(stencil.rows.begin(), stencil.rows.end(), [](std::uint64_t row) { return row == 0; }))
        return places;
    CoveredCorners corners;
    std::vector<PlacedMark> kept;
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        auto const x = static_cast<int>(std::lround(std::clamp(place->at.x() / size, -FAR_AWAY, FAR_AWAY)));
        auto const y = static_cast<int>(std::lround(std::clamp(place->at.y() / size, -FAR_AWAY, FAR_AWAY)));
        if (corners.show(stencil, x, y, place->color.getAlpha() == 255))
            kept.push_back(*place);
    }
    std::reverse(kept.begin(), kept.end());
    return kept;
}

} // namespace Zem::Fig2Qt
