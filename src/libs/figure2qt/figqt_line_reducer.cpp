#include "figqt_line_reducer.h"

#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MANY = 8; // points of a run
constexpr double TALL = 8.0;    // cells

} // namespace

LineReducer::LineReducer(double cell, QRectF const &visible, std::vector<QPointF> *to)
    : cell_(cell), left_(visible.left()), right_(visible.right()), top_(visible.top()), bottom_(visible.bottom()),
      to_(to)
{
}

void LineReducer::add(std::span<QPointF const> points)
{
    for (std::size_t i = 0; i < points.size();) {
        std::size_t const followed = common_ == 0 ? follow(points.subspan(i)) : 0;
        i += followed;
        if (followed == 0)
            addPoint(points[i++]);
    }
}

/// The short way for the many points that only stretch a column that lies within what is visible. Tells how many.
std::size_t LineReducer::follow(std::span<QPointF const> points)
{
    if (run_ != Run::COLUMN || column_.begin < left_ || column_.end > right_)
        return 0;
    Cells const column = column_;
    Cells const visible{top_, bottom_};
    Range reach = reach_;
    std::size_t count = 0;
    while (count < points.size() && column.contain(points[count].x()) && visible.contain(points[count].y()))
        reach.extend(points[count++].y());
    if (count == 0)
        return 0;
    reach_ = reach;
    last_ = points[count - 1];
    count_ += count;
    return count;
}

unsigned LineReducer::sideOf(QPointF const &at) const
{
    return (at.x() < left_ ? 1U : 0U) | (at.x() > right_ ? 2U : 0U) | (at.y() < top_ ? 4U : 0U) |
           (at.y() > bottom_ ? 8U : 0U);
}

void LineReducer::addPoint(QPointF const &at)
{
    unsigned const side = sideOf(at);
    if ((common_ &= side) != 0) {
        held_ = at;
        anyHeld_ = true;
        return;
    }
    if (anyHeld_)
        pass(held_);
    anyHeld_ = false;
    common_ = side;
    pass(at);
}

void LineReducer::pass(QPointF const &at)
{
    if (run_ == Run::COLUMN && column_.contain(at.x()))
        reach_.extend(at.y());
    else if (run_ == Run::ROW && row_.contain(at.y()))
        reach_.extend(at.x());
    else
        return beginOrTurn(at);
    last_ = at;
    ++count_;
}

void LineReducer::finish()
{
    if (anyHeld_)
        pass(held_);
    anyHeld_ = false;
    if (run_ != Run::NONE)
        endRun(true);
    run_ = Run::NONE;
}

/// The second point of a run decides whether it goes up and down or to the sides.
void LineReducer::beginOrTurn(QPointF const &at)
{
    bool const sameColumn = run_ == Run::POINT && column_.contain(at.x());
    bool const sameRow = run_ == Run::POINT && row_.contain(at.y());
    if (!sameColumn && !sameRow)
        return beginRun(at);
    last_ = at;
    ++count_;
    if (at == first_)
        return; // nothing is decided yet
    run_ = sameColumn ? Run::COLUMN : Run::ROW;
    reach_ = sameColumn ? Range{first_.y(), first_.y()} : Range{first_.x(), first_.x()};
    reach_.extend(sameColumn ? at.y() : at.x());
}

void LineReducer::beginRun(QPointF const &at)
{
    if (run_ != Run::NONE) {
        bool const further = !isNextTo(at);
        endRun(further);
        keepFirst_ = further;
    }
    double const column = std::floor(at.x() / cell_) * cell_;
    double const row = std::floor(at.y() / cell_) * cell_;
    run_ = Run::POINT;
    column_ = {column, column + cell_};
    row_ = {row, row + cell_};
    first_ = last_ = at;
    count_ = 1;
}

/// From the run to a place in the next cell, it does not matter from where the line goes.
bool LineReducer::isNextTo(QPointF const &at) const
{
    if (run_ == Run::ROW)
        return at.y() >= row_.begin - cell_ && at.y() < row_.end + cell_;
    return at.x() >= column_.begin - cell_ && at.x() < column_.end + cell_;
}

void LineReducer::endRun(bool keepLast)
{
    bool const plain = isPlain();
    if (plain || keepFirst_)
        to_->push_back(first_);
    if (!plain)
        appendReach();
    if (count_ > 1 && (plain || keepLast))
        to_->push_back(last_);
}

/// Whether the ends of the run tell all of it. They keep the direction of a smooth line, on which its width depends.
bool LineReducer::isPlain() const
{
    if (count_ <= 2 || run_ == Run::POINT || reach_.high - reach_.low <= cell_)
        return true;
    double const from = run_ == Run::COLUMN ? first_.y() : first_.x();
    double const to = run_ == Run::COLUMN ? last_.y() : last_.x();
    return std::min(from, to) == reach_.low && std::max(from, to) == reach_.high;
}

/// The nearer end first, so that the line does not cross the cells once more than it has to.
void LineReducer::appendReach()
{
    bool const column = run_ == Run::COLUMN;
    double const from =
        to_->empty() ? (column ? first_.y() : first_.x()) : (column ? to_->back().y() : to_->back().x());
    bool const lowFirst = std::abs(reach_.low - from) <= std::abs(reach_.high - from);
    double near = lowFirst ? reach_.low : reach_.high;
    double far = lowFirst ? reach_.high : reach_.low;
    Cells const &cells = column ? column_ : row_;
    double entry = column ? first_.x() : first_.y();
    double exit = column ? last_.x() : last_.y();
    // Of many points none stands out; places on the grid repeat from run to run, which packs well.
    if (count_ > MANY) {
        entry = exit = (cells.begin + cells.end) / 2.0;
        if (reach_.high - reach_.low > TALL * cell_) {
            near = std::round(near / cell_) * cell_;
            far = std::round(far / cell_) * cell_;
        }
    }
    to_->push_back(column ? QPointF(entry, near) : QPointF(near, entry));
    if (near != far)
        to_->push_back(column ? QPointF(exit, far) : QPointF(far, exit));
}

} // namespace Zem::Fig2Qt
