#include "figqt_dashes.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace Zem::Fig2Qt {

namespace {

/// The part of a segment, 0 to 1, that lies in the rectangle; the second is below the first when none does.
std::pair<double, double> insideOf(QPointF const &from, QPointF const &to, QRectF const &visible)
{
    std::pair<double, double> part(0.0, 1.0);
    auto const narrow = [&part](double start, double step, double low, double high) {
        if (step == 0.0) {
            if (start < low || start > high)
                part = {1.0, 0.0};
            return;
        }
        double const a = (low - start) / step;
        double const b = (high - start) / step;
        part = {std::max(part.first, std::min(a, b)), std::min(part.second, std::max(a, b))};
    };
    narrow(from.x(), to.x() - from.x(), visible.left(), visible.right());
    narrow(from.y(), to.y() - from.y(), visible.top(), visible.bottom());
    return part;
}

class DashCutter
{
public:
    DashCutter(std::vector<double> const &pattern, QRectF const &visible,
               std::function<void(std::span<QPointF const>)> const &paint)
        : pattern_(pattern), total_(std::accumulate(pattern.begin(), pattern.end(), 0.0)), visible_(visible),
          paint_(paint), left_(pattern.front())
    {
    }

    void addSegment(QPointF const &from, QPointF const &to)
    {
        double const length = std::hypot(to.x() - from.x(), to.y() - from.y());
        if (!(length > 0.0))
            return;
        auto const [enter, leave] = insideOf(from, to, visible_);
        if (enter >= leave) {
            endDash();
            return skip(length);
        }
        double place = 0.0;
        if (enter > 0.0) {
            endDash();
            skip(place = enter * length);
        }
        double const end = leave * length;
        auto const at = [&](double way) { return from + (to - from) * (way / length); };
        if (isDash() && dash_.empty())
            dash_.push_back(at(place));
        while (place + left_ <= end) {
            place += left_;
            turn(at(place));
        }
        left_ -= end - place;
        if (isDash() && place < end)
            dash_.push_back(leave < 1.0 ? at(end) : to);
        if (leave < 1.0) {
            endDash();
            skip(length - end);
        }
    }

    void endDash()
    {
        if (dash_.size() > 1)
            paint_(dash_);
        dash_.clear();
    }

private:
    bool isDash() const { return index_ % 2 == 0; }

    /// From dash to gap, or back.
    void turn(QPointF const &at)
    {
        if (isDash()) {
            dash_.push_back(at);
            endDash();
        }
        advance();
        if (isDash())
            dash_.push_back(at);
    }

    void advance()
    {
        index_ = (index_ + 1) % pattern_.size();
        left_ = pattern_[index_];
    }

    void skip(double length)
    {
        length = std::fmod(length, total_);
        while (length >= left_) {
            length -= left_;
            advance();
        }
        left_ -= length;
    }

    std::vector<double> const &pattern_;
    double const total_;
    QRectF const visible_;
    std::function<void(std::span<QPointF const>)> const &paint_;
    std::size_t index_ = 0;
    double left_; // of the dash or gap in hand
    std::vector<QPointF> dash_;
};

} // namespace

void cutIntoDashes(std::span<QPointF const> points, bool closed, std::vector<double> const &pattern,
                   QRectF const &visible, std::function<void(std::span<QPointF const>)> const &paint)
{
    if (std::accumulate(pattern.begin(), pattern.end(), 0.0) <= 0.0)
        return paint(points);
    DashCutter cutter(pattern, visible, paint);
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        cutter.addSegment(points[i], points[i + 1]);
    if (closed && points.size() > 1)
        cutter.addSegment(points.back(), points.front());
    cutter.endDash();
}

} // namespace Zem::Fig2Qt
