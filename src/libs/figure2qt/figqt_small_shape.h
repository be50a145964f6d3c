// figqt_small_shape.h: small areas as pixels.
#pragma once

#include "figqt_ink.h"

#include <QtCore/QPointF>

#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// A side of an area, in pixels. The sides of an area run about it in one direction.
struct Edge
{
    float fromX;
    float fromY;
    float toX;
    float toY;
};

/// Adds the sides of a convex area, clockwise whatever way its corners run.
void appendEdges(std::span<QPointF const> corners, std::vector<Edge> *edges);

/// Finds how much of each pixel small areas cover, exactly: each side adds what lies to the right of it, a row at a
/// time, and the sum from left to right is what is covered. Costs as much as there are sides and pixels on them.
class SmallShape
{
public:
    /// Larger ones to a side are not for this.
    static constexpr double LARGEST = 64.0;

    SmallShape();

    /// The union of clockwise areas; pixels at which the borders of two meet may be covered a little more than by both.
    void paint(std::span<Edge const> edges, Ink const &ink, ClipArea const &clip);

private:
    static constexpr int SIDE = static_cast<int>(LARGEST) + 4;

    struct Row
    {
        int first = SIDE; // the cells that were touched
        int last = -1;
        float cells[SIDE] = {};
    };

    void add(Edge const &edge, float left, int top, int end);
    static void addToRow(Row *row, float from, float to, float height);
    void paintRow(Row *row, int left, int y, Ink const &ink, ClipArea const &clip);

    std::vector<Row> rows_;
    std::vector<unsigned char> covered_;
};

} // namespace Zem::Fig2Qt
