// figqt_line_reducer.h: takes from a line the points that no output can show.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// Thins one line while its points pass by, in one go and without keeping them. The line that remains runs within a
/// cell of the one that came in, wherever that could be seen, and reaches as far in every cell. As long as points stay
/// in one column of cells, or in one row, only how far they reach is kept, and where the line comes from or goes on to
/// further than the next cell. Of what is wholly on one side of `visible` the ends are kept. So what remains follows
/// the cells and not the points. First and last points are kept as they are.
class LineReducer
{
public:
    /// `cell` is above 0. `to` is not owned; the points that remain are appended.
    LineReducer(double cell, QRectF const &visible, std::vector<QPointF> *to);

    /// Any number of points after those that were added before, all finite.
    void add(std::span<QPointF const> points);
    /// Hands out what is left. Nothing may be added after it.
    void finish();

private:
    struct Range
    {
        double low;
        double high;
        void extend(double value)
        {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    };
    /// The cells that a run stays in.
    struct Cells
    {
        double begin;
        double end;
        bool contain(double value) const { return value >= begin && value < end; }
    };
    enum class Run { NONE, POINT, COLUMN, ROW };

    unsigned sideOf(QPointF const &at) const;
    void addPoint(QPointF const &at);
    std::size_t follow(std::span<QPointF const> points);
    void pass(QPointF const &at);
    void beginOrTurn(QPointF const &at);
    void beginRun(QPointF const &at);
    void endRun(bool keepLast);
    bool isPlain() const;
    bool isNextTo(QPointF const &at) const;
    void appendReach();

    double cell_;
    double left_;
    double right_;
    double top_;
    double bottom_;
    std::vector<QPointF> *to_;
    unsigned common_ = 0; // the sides on which everything lies since the last point that was passed on
    bool anyHeld_ = false;
    QPointF held_;

    Run run_ = Run::NONE;
    bool keepFirst_ = true;
    Cells column_ = {};
    Cells row_ = {};
    Range reach_ = {}; // of a column up and down, of a row to the sides
    QPointF first_;
    QPointF last_;
    std::size_t count_ = 0;
};

} // namespace Zem::Fig2Qt
