#include "figqt_line_reducer.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

LineReducer::LineReducer(double cell, QRectF const &visible, std::vector<QPointF> *to)
    : cell_(cell), left_(visible.left()), right_(visible.right()), top_(visible.top()), bottom_(visible.bottom()),
      to_(to)
{
}

void LineReducer::finish()
{
    if (anyHeld_)
        pass(held_);
    anyHeld_ = false;
    if (running_)
        endRun(true);
    running_ = false;
}

void LineReducer::beginRun(Place const &at)
{
    if (running_) {
        keepFirst_ = !isNextTo(at);
        endRun(keepFirst_);
    }
    running_ = inColumn_ = inRow_ = true;
    columnBegin_ = std::floor(at.x / cell_) * cell_;
    rowBegin_ = std::floor(at.y / cell_) * cell_;
    first_ = last_ = leftmost_ = rightmost_ = topmost_ = bottommost_ = {at, 0};
}

/// From the run to a place in the next cell, it does not matter from where the line goes.
bool LineReducer::isNextTo(Place const &at) const
{
    if (inColumn_)
        return at.x >= columnBegin_ - cell_ && at.x < columnBegin_ + 2.0 * cell_;
    return at.y >= rowBegin_ - cell_ && at.y < rowBegin_ + 2.0 * cell_;
}

void LineReducer::endRun(bool keepLast)
{
    appended_ = 0;
    if (keepFirst_)
        append(first_);
    Extreme const &low = inColumn_ ? topmost_ : leftmost_;
    Extreme const &high = inColumn_ ? bottommost_ : rightmost_;
    bool lowFirst = low.number < high.number;
    // The shorter way, so that the line does not cross the cells once more than it has to.
    if (last_.number > 1 && !to_->empty()) {
        double const from = inColumn_ ? to_->back().y() : to_->back().x();
        double const toLow = std::abs((inColumn_ ? low.at.y : low.at.x) - from);
        double const toHigh = std::abs((inColumn_ ? high.at.y : high.at.x) - from);
        lowFirst = toLow != toHigh ? toLow < toHigh : lowFirst;
    }
    append(lowFirst ? low : high);
    append(lowFirst ? high : low);
    if (keepLast)
        append(last_);
}

void LineReducer::append(Extreme const &point)
{
    if (appended_ == point.number + 1)
        return;
    appended_ = point.number + 1;
    to_->emplace_back(point.at.x, point.at.y);
}

} // namespace Zem::Fig2Qt
