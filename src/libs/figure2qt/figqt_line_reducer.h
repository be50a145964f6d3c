// figqt_line_reducer.h: takes from a line the points that no output can show.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <cstddef>
#include <vector>

namespace Zem::Fig2Qt {

/// Thins one line while its points pass by, in one go and without keeping them. The line that remains runs within a cell
/// of the one that came in, wherever that could be seen, and reaches as far in every cell. As long as points stay in one
/// column of cells, or in one row, only the outermost of them are kept, and those from where the line goes on further
/// than to the next cell. Of what is wholly on one side of `visible` the ends are kept. So what remains follows the
/// cells and not the points. First and last points are kept as they are.
class LineReducer
{
public:
    /// `cell` is above 0. `to` is not owned; the points that remain are appended.
    LineReducer(double cell, QRectF const &visible, std::vector<QPointF> *to);

    void add(double x, double y)
    {
        // One comparison for both: a difference is not 0 for endless values, nor for NaN.
        finite_ &= x - x == 0.0 && y - y == 0.0;
        unsigned const side = sideOf(x, y);
        if ((common_ &= side) != 0) {
            held_ = Place{x, y};
            anyHeld_ = true;
            return;
        }
        if (anyHeld_)
            pass(held_);
        anyHeld_ = false;
        common_ = side;
        pass({x, y});
    }
    /// Hands out what is left. Nothing may be added after it.
    void finish();
    /// Whether all coordinates so far were finite; else what was appended means nothing.
    bool isFinite() const { return finite_; }

private:
    struct Place
    {
        double x;
        double y;
    };
    /// A point of the run in hand, and its number in the run.
    struct Extreme
    {
        Place at;
        std::size_t number;
    };

    unsigned sideOf(double x, double y) const
    {
        return (x < left_ ? 1U : 0U) | (x > right_ ? 2U : 0U) | (y < top_ ? 4U : 0U) | (y > bottom_ ? 8U : 0U);
    }
    void pass(Place const &at)
    {
        bool const sameColumn = inColumn_ && at.x >= columnBegin_ && at.x < columnBegin_ + cell_;
        bool const sameRow = inRow_ && at.y >= rowBegin_ && at.y < rowBegin_ + cell_;
        if (sameColumn || sameRow)
            extend(at, sameColumn, sameRow);
        else
            beginRun(at);
    }
    void extend(Place const &at, bool sameColumn, bool sameRow)
    {
        inColumn_ = sameColumn;
        inRow_ = sameRow;
        last_ = {at, last_.number + 1};
        if (at.x < leftmost_.at.x)
            leftmost_ = last_;
        if (at.x > rightmost_.at.x)
            rightmost_ = last_;
        if (at.y < topmost_.at.y)
            topmost_ = last_;
        if (at.y > bottommost_.at.y)
            bottommost_ = last_;
    }
    void beginRun(Place const &at);
    void endRun(bool keepLast);
    bool isNextTo(Place const &at) const;
    void append(Extreme const &point);

    double cell_;
    double left_;
    double right_;
    double top_;
    double bottom_;
    std::vector<QPointF> *to_;
    bool finite_ = true;
    unsigned common_ = 0; // the sides on which everything lies since the last point that was passed on
    bool anyHeld_ = false;
    Place held_ = {};

    bool running_ = false;
    bool keepFirst_ = true;
    bool inColumn_ = false;
    bool inRow_ = false;
    double columnBegin_ = 0.0;
    double rowBegin_ = 0.0;
    Extreme first_ = {};
    Extreme last_ = {};
    Extreme leftmost_ = {};
    Extreme rightmost_ = {};
    Extreme topmost_ = {};
    Extreme bottommost_ = {};
    std::size_t appended_ = 0; // number of the last appended point of the run, plus one
};

} // namespace Zem::Fig2Qt
