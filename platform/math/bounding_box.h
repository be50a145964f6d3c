// bounding_box.h: the extent of points, inside this library.
#pragma once

#include <ZemVec.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

namespace Zem {

inline bool isFinite(BaVec2d<double> const &point) noexcept
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Grows around the finite points it is given; without any it is empty and meets nothing.
struct BoundingBox
{
    BaVec2d<double> low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    BaVec2d<double> high = -low;

    BoundingBox() noexcept = default;
    explicit BoundingBox(std::span<BaVec2d<double> const> points) noexcept
    {
        for (BaVec2d<double> const &point : points) {
            add(point);
        }
    }

    void add(BaVec2d<double> const &point) noexcept
    {
        if (isFinite(point)) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
    }

    bool empty() const noexcept { return !(low.x <= high.x); }
    bool contains(BaVec2d<double> const &point) const noexcept
    {
        return low.x <= point.x && point.x <= high.x && low.y <= point.y && point.y <= high.y;
    }
    bool meets(BoundingBox const &other) const noexcept
    {
        return low.x <= other.high.x && other.low.x <= high.x && low.y <= other.high.y && other.low.y <= high.y;
    }
};

} // namespace Zem
