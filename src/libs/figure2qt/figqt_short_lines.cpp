#include "figqt_short_lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Zem::Fig2Qt {

namespace {

constexpr double FLATNESS = 0.03; // in pixels, what round ends are off
constexpr double SHORTEST = 1e-3;

} // namespace

void ShortLines::clear()
{
    count_ = 0;
    edges_.clear();
}

bool ShortLines::add(Polyline const &line, Stroke const &stroke, double pixels)
{
    if (line.points.size() != 2 || line.closed || !stroke.dashes.empty() || count_ == MOST)
        return false;
    if (count_ > 0 && (stroke != stroke_ || stroke.color.getAlpha() != 255))
        return false;
    QPointF const from = line.points[0] * pixels;
    QPointF const to = line.points[1] * pixels;
    QRectF const box = QRectF(from, to).normalized();
    QPointF const topLeft(std::min(count_ > 0 ? box_.left() : box.left(), box.left()),
                          std::min(count_ > 0 ? box_.top() : box.top(), box.top()));
    QPointF const bottomRight(std::max(count_ > 0 ? box_.right() : box.right(), box.right()),
                              std::max(count_ > 0 ? box_.bottom() : box.bottom(), box.bottom()));
    double const margin = stroke.width * pixels;
    if (std::max(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y()) + margin > SmallShape::LARGEST ||
        std::max(box.width(), box.height()) < SHORTEST)
        return false;
    if (count_ == 0) {
        stroke_ = stroke;
        setHalf(stroke.width * pixels / 2.0, stroke.round);
    }
    box_ = QRectF(topLeft, bottomRight);
    ends_[2 * count_] = from;
    ends_[2 * count_ + 1] = to;
    ++count_;
    addOutline(from, to);
    return true;
}

void ShortLines::setHalf(double half, bool round)
{
    if (half == half_ && round == !arc_.empty())
        return;
    half_ = half;
    arc_.clear();
    if (!round)
        return;
    double const step = 2.0 * std::acos(std::clamp(1.0 - FLATNESS / half, 0.0, 1.0));
    auto const pieces = static_cast<int>(std::ceil(std::numbers::pi / step)) + 1;
    for (int i = 0; i <= pieces; ++i) {
        double const angle = std::numbers::pi * (static_cast<double>(i) / pieces - 0.5);
        arc_.emplace_back(half * std::cos(angle), half * std::sin(angle));
    }
}

void ShortLines::addOutline(QPointF const &from, QPointF const &to)
{
    QPointF const way = to - from;
    QPointF const along = way / std::hypot(way.x(), way.y());
    QPointF const across = QPointF(-along.y(), along.x()) * half_;
    corners_.clear();
    if (arc_.empty()) {
        corners_ = {from - across, to - across, to + across, from + across};
    } else {
        auto const turned = [&along](QPointF const &p) {
            return QPointF(p.x() * along.x() - p.y() * along.y(), p.x() * along.y() + p.y() * along.x());
        };
        for (QPointF const &p : arc_)
            corners_.push_back(to + turned(p));
        for (QPointF const &p : arc_)
            corners_.push_back(from - turned(p));
    }
    appendEdges(corners_, &edges_);
}

} // namespace Zem::Fig2Qt
