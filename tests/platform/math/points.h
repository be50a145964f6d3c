// points.h: a short vocabulary for points in tests.
#pragma once

#include <ZemVec.h>

#include <gmock/gmock.h>

#include <limits>

using Point = Zem::BaVec2d<double>;

inline constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
inline constexpr double INFINITE = std::numeric_limits<double>::infinity();

namespace Zem {

inline void PrintTo(Point const &point, std::ostream *stream)
{
    *stream << '(' << point.x << ", " << point.y << ')';
}

} // namespace Zem

MATCHER_P2(IsNear, x, y, "")
{
    return std::abs(arg.x - x) < 1e-12 && std::abs(arg.y - y) < 1e-12;
}
