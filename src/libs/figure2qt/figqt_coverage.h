// figqt_coverage.h: how much of each pixel an area covers.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRect>

#include <functional>
#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// The union of many convex areas, in pixels, y down. Each pixel column is looked at along upright lines; where an area
/// enters and leaves such a line is kept, neighbours being joined, so that time and memory follow the outlines and not
/// what they enclose, and where areas overlap nothing counts twice.
class Coverage
{
public:
    /// Of one row, from `x` on: what of each pixel is covered, 255 for all of it.
    using PaintRow = std::function<void(int x, int y, std::span<unsigned char const> covered)>;

    /// An area of this width, in pixels, is never missed.
    static constexpr double FINEST = 1.0 / 16.0;

    Coverage(int width, int height);

    /// Only what lies within `bounds` counts from now on.
    void setBounds(QRect const &bounds);
    bool isEmpty() const { return begin_ >= end_ && boxes_.empty(); }
    /// The corners of a convex area, in either direction. Any finite numbers.
    void addConvex(std::span<QPointF const> corners);
    /// The same for a rectangle along the axes. Many that are as far left and right, one after the other, are joined
    /// before they are looked at, so that level lines across the picture take no longer than upright ones.
    void addBox(QPointF const &topLeft, QPointF const &bottomRight);
    /// Hands out the rows that are covered somewhere, and begins anew.
    void take(PaintRow const &paint);

private:
    struct Span
    {
        int top;
        int bottom;
    };
    using Line = std::vector<Span>;

    int firstLineFrom(double x) const;
    void walkEdge(QPointF const &from, QPointF const &to);
    int stepOf(double y) const;
    static void addTo(Line *spans, Span const &span);
    void addBoxes();
    static void join(Line *spans);
    void takeTile(int firstPixel, PaintRow const &paint);
    static void paintRow(int firstPixel, int y, std::span<unsigned char const> row, PaintRow const &paint);
    void addPixelColumn(int pixel);
    int skipBlank(int y) const;
    void sumPixelColumn(int column);

    int const width_;
    int const height_;
    QRect bounds_;
    std::vector<Line> lines_;
    int boxesBegin_ = 0; // the lines that the boxes at hand cover
    int boxesEnd_ = 0;
    Line boxes_;
    std::vector<int> forth_; // where the edges that run to the right, and back, cross each line
    std::vector<int> back_;
    int begin_; // the lines that were touched
    int end_;
    int top_ = 0; // the rows that were touched, of the pixel column in hand
    int bottom_ = 0;
    std::vector<int> steps_;          // of a pixel column: by how much the covered part changes from row to row
    std::vector<unsigned char> tile_; // some pixel columns, row by row
};

} // namespace Zem::Fig2Qt
