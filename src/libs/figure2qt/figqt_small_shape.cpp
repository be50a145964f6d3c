#include "figqt_small_shape.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr float FULL = 255.0F;

double doubleArea(std::span<QPointF const> corners)
{
    double area = 0.0;
    QPointF last = corners.back();
    for (QPointF const &corner : corners) {
        area += last.x() * corner.y() - last.y() * corner.x();
        last = corner;
    }
    return area;
}

} // namespace

void appendEdges(std::span<QPointF const> corners, std::vector<Edge> *edges)
{
    bool const clockwise = doubleArea(corners) >= 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        QPointF const &a = corners[i];
        QPointF const &b = corners[i + 1 < corners.size() ? i + 1 : 0];
        QPointF const &from = clockwise ? a : b;
        QPointF const &to = clockwise ? b : a;
        edges->push_back({static_cast<float>(from.x()), static_cast<float>(from.y()), static_cast<float>(to.x()),
                          static_cast<float>(to.y())});
    }
}

SmallShape::SmallShape() : rows_(SIDE), covered_(SIDE)
{
}

void SmallShape::paint(std::span<Edge const> edges, Ink const &ink, ClipArea const &clip)
{
    float left = edges[0].fromX;
    float top = edges[0].fromY;
    float bottom = top;
    for (Edge const &edge : edges) {
        left = std::min(left, edge.fromX);
        top = std::min(top, edge.fromY);
        bottom = std::max(bottom, edge.fromY);
    }
    auto const first = static_cast<int>(std::floor(left));
    int const firstRow = std::max(static_cast<int>(std::floor(top)), clip.getRect().top());
    int const endRow = std::min({static_cast<int>(std::ceil(bottom)), clip.getRect().bottom() + 1, firstRow + SIDE});
    if (firstRow >= endRow)
        return;
    for (Edge const &edge : edges)
        add(edge, static_cast<float>(first), firstRow, endRow);
    for (int y = firstRow; y < endRow; ++y)
        paintRow(&rows_[static_cast<std::size_t>(y - firstRow)], first, y, ink, clip);
}

void SmallShape::add(Edge const &edge, float left, int top, int end)
{
    bool const down = edge.fromY < edge.toY;
    float const upperX = (down ? edge.fromX : edge.toX) - left;
    float const upperY = down ? edge.fromY : edge.toY;
    float const lowerX = (down ? edge.toX : edge.fromX) - left;
    float const lowerY = down ? edge.toY : edge.fromY;
    float const begin = std::max(upperY, static_cast<float>(top));
    float const stop = std::min(lowerY, static_cast<float>(end));
    if (!(begin < stop))
        return;
    float const slope = (lowerX - upperX) / (lowerY - upperY);
    float const least = std::min(upperX, lowerX);
    float const most = std::max(upperX, lowerX);
    float x = upperX + (begin - upperY) * slope;
    for (auto y = static_cast<int>(begin); static_cast<float>(y) < stop; ++y) {
        float const height = std::min(stop, static_cast<float>(y + 1)) - std::max(begin, static_cast<float>(y));
        float const next = std::clamp(x + slope * height, least, most);
        addToRow(&rows_[static_cast<std::size_t>(y - top)], std::min(x, next), std::max(x, next),
                 down ? -height : height);
        x = next;
    }
}

/// What a piece of a side within a row adds to its cells: each gets what of it lies to the right of the piece, less
/// what the cell before it got.
void SmallShape::addToRow(Row *row, float from, float to, float height)
{
    auto const first = static_cast<int>(from);
    auto const last = static_cast<int>(to);
    row->first = std::min(row->first, first);
    row->last = std::max(row->last, last + 1);
    float *cells = row->cells;
    float const start = from - static_cast<float>(first);
    if (first == last) {
        float const middle = (start + to - static_cast<float>(last)) * 0.5F;
        cells[first] += height * (1.0F - middle);
        cells[first + 1] += height * middle;
        return;
    }
    float const slope = height / (to - from);
    float const inFirst = 1.0F - start;
    float sum = 0.5F * slope * inFirst * inFirst; // of what lies to the right, up to the cell at hand
    cells[first] += sum;
    for (int cell = first + 1; cell < last; ++cell) {
        float const covered = slope * (static_cast<float>(cell) + 0.5F - from);
        cells[cell] += covered - sum;
        sum = covered;
    }
    float const inLast = to - static_cast<float>(last);
    float const onLast = slope * (static_cast<float>(last) - from + inLast - 0.5F * inLast * inLast);
    cells[last] += onLast - sum;
    cells[last + 1] += height - onLast;
}

void SmallShape::paintRow(Row *row, int left, int y, Ink const &ink, ClipArea const &clip)
{
    if (row->last < row->first)
        return;
    float sum = 0.0F;
    for (int i = row->first; i <= row->last; ++i) {
        sum += row->cells[i];
        row->cells[i] = 0.0F;
        covered_[static_cast<std::size_t>(i - row->first)] =
            static_cast<unsigned char>(std::clamp(sum, 0.0F, 1.0F) * FULL + 0.5F);
    }
    auto const count = static_cast<std::size_t>(row->last - row->first + 1);
    ink.paint(left + row->first, y, std::span(covered_).first(count), clip);
    row->first = SIDE;
    row->last = -1;
}

} // namespace Zem::Fig2Qt
