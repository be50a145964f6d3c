#include "fig_box_distributor.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr double GROWTH = 1e-12;
constexpr std::size_t MAXIMUM_CELLS_PER_SIDE = 32;

Rect grown(Rect const &rect)
{
    return {rect.x - GROWTH, rect.y - GROWTH, rect.width + 2.0 * GROWTH, rect.height + 2.0 * GROWTH};
}

bool overlap(Rect const &a, Rect const &b)
{
    BaVec2d<double> const aEnd = a.p2();
    BaVec2d<double> const bEnd = b.p2();
    return a.x < bEnd.x && b.x < aEnd.x && a.y < bEnd.y && b.y < aEnd.y;
}

std::size_t cellsPerSide(std::size_t boxes)
{
    auto const side = static_cast<std::size_t>(std::sqrt(static_cast<double>(boxes)));
    return std::clamp<std::size_t>(side, 1, MAXIMUM_CELLS_PER_SIDE);
}

} // namespace

BoxDistributor::Obstacles::Obstacles(Rule_t rule, Search_t search, BaVec2d<double> const &pageSize, Boxes const &boxes,
                                     std::size_t more)
    : rule_(rule), search_(search), cellsPerSide_(cellsPerSide(boxes.size() + more)),
      cell_(BaVec2d<double>(std::abs(pageSize.x), std::abs(pageSize.y)) / static_cast<double>(cellsPerSide_)),
      cells_(cellsPerSide_ * cellsPerSide_)
{
    for (auto const &box : boxes)
        add(box.get());
}

void BoxDistributor::Obstacles::add(TextBox const *box)
{
    std::size_t const number = boxes_.size();
    boxes_.push_back(box);
    extents_.push_back(rule_ == RULE_TOUCHING ? grown(box->getRect()) : box->getRect());
    if (search_ == SEARCH_PLAIN)
        return;
    auto const [columns, rows] = cellsOf(extents_.back());
    for (std::size_t row = rows.first; row <= rows.last; ++row) {
        for (std::size_t column = columns.first; column <= columns.last; ++column)
            cells_[row * cellsPerSide_ + column].push_back(number);
    }
}

bool BoxDistributor::Obstacles::meets(std::size_t box, Rect const &rect) const
{
    return rule_ == RULE_TOUCHING ? extents_[box].intersects(rect) : overlap(extents_[box], rect);
}

BoxDistributor::TextBox const *BoxDistributor::Obstacles::firstMeeting(Rect const &rect) const
{
    std::size_t found = boxes_.size();
    if (search_ == SEARCH_PLAIN) {
        found = 0;
        while (found < boxes_.size() && !meets(found, rect))
            ++found;
    } else {
        auto const [columns, rows] = cellsOf(rect);
        for (std::size_t row = rows.first; row <= rows.last; ++row) {
            for (std::size_t column = columns.first; column <= columns.last; ++column)
                found = firstOf(cells_[row * cellsPerSide_ + column], rect, found);
        }
    }
    return found < boxes_.size() ? boxes_[found] : nullptr;
}

/// The first of the ascending numbers whose box meets the rectangle; `limit` when none below it does.
std::size_t BoxDistributor::Obstacles::firstOf(std::span<std::size_t const> boxes, Rect const &rect,
                                               std::size_t limit) const
{
    for (std::size_t box : boxes) {
        if (box >= limit)
            break;
        if (meets(box, rect))
            return box;
    }
    return limit;
}

/// Never decreases when `value` grows, so rectangles that meet share a cell; what lies off the page, and what is no
/// number, counts to the rim.
std::size_t BoxDistributor::Obstacles::cellOf(double value, double cell) const
{
    double const number = value / cell;
    if (!(number >= 1.0))
        return 0;
    auto const last = static_cast<double>(cellsPerSide_ - 1);
    return static_cast<std::size_t>(std::min(number, last));
}

std::array<BoxDistributor::Obstacles::Span, 2> BoxDistributor::Obstacles::cellsOf(Rect const &rect) const
{
    BaVec2d<double> const end = rect.p2();
    return {Span{cellOf(std::min(rect.x, end.x), cell_.x), cellOf(std::max(rect.x, end.x), cell_.x)},
            Span{cellOf(std::min(rect.y, end.y), cell_.y), cellOf(std::max(rect.y, end.y), cell_.y)}};
}

} // namespace Zem::Fig2
