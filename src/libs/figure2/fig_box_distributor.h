// fig_box_distributor.h: what the sources of BoxDistributor share: which box stands in the way of a rectangle.
// Layer: labels. Internal to the library.
#pragma once

#include "ZemFig2BoxDistributor.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace Zem::Fig2 {

inline double squaredDistance(BaVec2d<double> const &a, BaVec2d<double> const &b)
{
    return (a - b).dot(a - b);
}

/// A growing list of boxes that stay where they are. The answer is always the first box in the order of adding; the
/// grid only spares looking at boxes far away.
class BoxDistributor::Obstacles
{
public:
    enum Rule_t {
        RULE_TOUCHING,   ///< boxes grown by 1e-12 to each side meet what they touch
        RULE_OVERLAPPING ///< boxes that only touch do not meet
    };

    /// Begins with `boxes`. The grid lies over a page of the size and suits about `more` further boxes.
    Obstacles(Rule_t rule, Search_t search, BaVec2d<double> const &pageSize, Boxes const &boxes, std::size_t more);

    /// Not owned; must not move any more.
    void add(TextBox const *box);
    std::vector<TextBox const *> const &getBoxes() const { return boxes_; }
    /// Null when there is none.
    TextBox const *firstMeeting(Rect const &rect) const;

private:
    struct Span
    {
        std::size_t first;
        std::size_t last;
    };

    bool meets(std::size_t box, Rect const &rect) const;
    std::size_t firstOf(std::span<std::size_t const> boxes, Rect const &rect, std::size_t limit) const;
    std::size_t cellOf(double value, double cell) const;
    std::array<Span, 2> cellsOf(Rect const &rect) const;

    Rule_t rule_;
    Search_t search_;
    std::size_t cellsPerSide_;
    BaVec2d<double> cell_;
    std::vector<TextBox const *> boxes_;
    std::vector<Rect> extents_;                   ///< of each box, as the rule takes it
    std::vector<std::vector<std::size_t>> cells_; ///< ascending numbers of boxes, row by row
};

} // namespace Zem::Fig2
