// ZemVec.h: vectors of two and three numbers. Plain values without a unit of their own; several threads may read one.
#pragma once

#include <cmath>

namespace Zem {

/// A point or a direction in the plane.
template <class T>
struct BaVec2d
{
    T x{};
    T y{};

    constexpr BaVec2d() noexcept = default;
    constexpr BaVec2d(T x_, T y_) noexcept : x(x_), y(y_) {}

    constexpr BaVec2d operator-() const noexcept { return {-x, -y}; }
    constexpr BaVec2d &operator+=(BaVec2d const &v) noexcept { return *this = *this + v; }
    constexpr BaVec2d &operator-=(BaVec2d const &v) noexcept { return *this = *this - v; }
    constexpr BaVec2d &operator*=(T s) noexcept { return *this = *this * s; }
    constexpr BaVec2d &operator/=(T s) noexcept { return *this = *this / s; }
    constexpr bool operator==(BaVec2d const &) const noexcept = default;

    constexpr T dot(BaVec2d const &v) const noexcept { return x * v.x + y * v.y; }
    T length() const noexcept { return std::hypot(x, y); }

    friend constexpr BaVec2d operator+(BaVec2d const &a, BaVec2d const &b) noexcept { return {a.x + b.x, a.y + b.y}; }
    friend constexpr BaVec2d operator-(BaVec2d const &a, BaVec2d const &b) noexcept { return {a.x - b.x, a.y - b.y}; }
    friend constexpr BaVec2d operator*(BaVec2d const &v, T s) noexcept { return {v.x * s, v.y * s}; }
    friend constexpr BaVec2d operator*(T s, BaVec2d const &v) noexcept { return v * s; }
    friend constexpr BaVec2d operator/(BaVec2d const &v, T s) noexcept { return {v.x / s, v.y / s}; }
};
static_assert(sizeof(BaVec2d<double>) == 16, "blocks count 16 bytes for each");

/// A point or a direction in space.
template <class T>
struct BaVec3d
{
    T x{};
    T y{};
    T z{};

    constexpr BaVec3d() noexcept = default;
    constexpr BaVec3d(T x_, T y_, T z_) noexcept : x(x_), y(y_), z(z_) {}

    constexpr BaVec3d operator-() const noexcept { return {-x, -y, -z}; }
    constexpr BaVec3d &operator+=(BaVec3d const &v) noexcept { return *this = *this + v; }
    constexpr BaVec3d &operator-=(BaVec3d const &v) noexcept { return *this = *this - v; }
    constexpr BaVec3d &operator*=(T s) noexcept { return *this = *this * s; }
    constexpr BaVec3d &operator/=(T s) noexcept { return *this = *this / s; }
    constexpr bool operator==(BaVec3d const &) const noexcept = default;

    constexpr T dot(BaVec3d const &v) const noexcept { return x * v.x + y * v.y + z * v.z; }
    T length() const noexcept { return std::hypot(x, y, z); }

    friend constexpr BaVec3d operator+(BaVec3d const &a, BaVec3d const &b) noexcept
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr BaVec3d operator-(BaVec3d const &a, BaVec3d const &b) noexcept
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr BaVec3d operator*(BaVec3d const &v, T s) noexcept { return {v.x * s, v.y * s, v.z * s}; }
    friend constexpr BaVec3d operator*(T s, BaVec3d const &v) noexcept { return v * s; }
    friend constexpr BaVec3d operator/(BaVec3d const &v, T s) noexcept { return {v.x / s, v.y / s, v.z / s}; }
};

} // namespace Zem
