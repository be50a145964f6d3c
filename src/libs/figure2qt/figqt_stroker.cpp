#include "figqt_stroker.h"

#include "figqt_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

namespace Zem::Fig2Qt {

namespace {

// In pixels: what is smaller than this changes no pixel that can be told from before.
constexpr double FLATNESS = 0.03;
constexpr double SHORTEST_SEGMENT = 1e-3;

double dot(QPointF const &a, QPointF const &b)
{
    return QPointF::dotProduct(a, b);
}

double cross(QPointF const &a, QPointF const &b)
{
    return a.x() * b.y() - a.y() * b.x();
}

std::vector<QPointF> discOf(double radius)
{
    double const step = std::acos(std::clamp(1.0 - FLATNESS / radius, 0.0, 0.98));
    auto const corners = static_cast<int>(std::ceil(std::numbers::pi / step)) + 1;
    double const turn = 2.0 * std::numbers::pi / corners;
    double const reach = radius * std::sqrt(turn / std::sin(turn)); // so that the area is that of the disc
    std::vector<QPointF> disc;
    for (int i = 0; i < corners; ++i)
        disc.emplace_back(reach * std::cos(turn * i), reach * std::sin(turn * i));
    return disc;
}

} // namespace

Stroker::Stroker(double width, bool round, Coverage *target) : half_(width / 2.0), round_(round), target_(target)
{
    if (round_) {
        disc_ = discOf(half_);
        moved_.resize(disc_.size());
    }
}

void Stroker::add(std::span<QPointF const> points, bool closed)
{
    QPointF at = points.front();
    std::optional<QPointF> before; // half the width, across the last segment
    QPointF first;
    if (round_)
        addDisc(at);
    std::size_t const segments = closed ? points.size() : points.size() - 1;
    for (std::size_t i = 1; i <= segments; ++i) {
        QPointF const &to = points[i < points.size() ? i : 0];
        QPointF const along = to - at;
        double const length = std::hypot(along.x(), along.y());
        if (length < SHORTEST_SEGMENT)
            continue;
        QPointF const across = QPointF(-along.y(), along.x()) * (half_ / length);
        addSegment(at, to, across);
        if (before)
            addCorner(at, *before, across);
        else
            first = across;
        before = across;
        at = to;
    }
    if (before && closed)
        addCorner(at, *before, first);
    else if (before && round_)
        addDisc(at);
}

void Stroker::addSegment(QPointF const &from, QPointF const &to, QPointF const &across)
{
    if (from.x() != to.x() && from.y() != to.y())
        return target_->addConvex(std::array{from + across, to + across, to - across, from - across});
    QPointF const half(std::abs(across.x()), std::abs(across.y()));
    target_->addBox(QPointF(std::min(from.x(), to.x()), std::min(from.y(), to.y())) - half,
                    QPointF(std::max(from.x(), to.x()), std::max(from.y(), to.y())) + half);
}

void Stroker::addCorner(QPointF const &at, QPointF const &before, QPointF const &after)
{
    QPointF const turn = after - before;
    if (dot(turn, turn) < FLATNESS * FLATNESS)
        return;
    if (round_)
        return addDisc(at);
    // A line that goes back on itself has an end there, and no corner.
    QPointF const middle = before + after;
    if (dot(middle, middle) < FLATNESS * FLATNESS)
        return;
    if (cross(before, after) > 0.0)
        addMitre(at, -before, -after);
    else
        addMitre(at, before, after);
}

void Stroker::addMitre(QPointF const &at, QPointF const &before, QPointF const &after)
{
    // The tip is where both edges meet, along the sum of both; its distance is half_ / cos of half the turn.
    QPointF const middle = before + after;
    double const reach = 2.0 * half_ * half_ / std::max(dot(middle, middle), 1e-12 * half_ * half_);
    double const cosine = std::sqrt(dot(middle, middle)) / (2.0 * half_);
    if (cosine * MITER_LIMIT < 1.0)
        return target_->addConvex(std::array{at, at + before, at + after});
    target_->addConvex(std::array{at, at + before, at + middle * reach, at + after});
}

void Stroker::addDisc(QPointF const &centre)
{
    std::transform(disc_.begin(), disc_.end(), moved_.begin(), [&](QPointF const &corner) { return centre + corner; });
    target_->addConvex(moved_);
}

} // namespace Zem::Fig2Qt
