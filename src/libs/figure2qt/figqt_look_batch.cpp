#include "figqt_look_batch.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Zem::Fig2Qt {

namespace {

constexpr double CELL = 0.25; // millimetres
constexpr double LARGEST = 20.0;
// Beyond this no page reaches, and cells cannot be counted.
constexpr double FAR_AWAY = 1e6;
constexpr std::size_t MOST = 1U << 20U;
constexpr std::uint32_t MOST_LAYERS = 60'000;
constexpr std::size_t MOST_STROKES = 1000;
constexpr std::uint32_t AREAS = 0;
constexpr std::uint32_t MARKS = 1;
constexpr std::uint32_t LINES = 2; // and more, by their stroke

std::uint32_t numberOf(Color const &color)
{
    return static_cast<std::uint32_t>(color.getRed()) << 16U | static_cast<std::uint32_t>(color.getGreen()) << 8U |
           color.getBlue();
}

int cellOf(double place)
{
    double const cells = place / CELL;
    auto const whole = static_cast<int>(cells);
    return whole > cells ? whole - 1 : whole;
}

} // namespace

bool LookBatch::isFull() const
{
    return count_ >= MOST || layers_ >= MOST_LAYERS || strokes_.size() >= MOST_STROKES;
}

LookBatch::Group *LookBatch::addLine(QPointF const &from, QPointF const &to, Stroke const &stroke)
{
    QPointF const way = to - from;
    double const length = std::hypot(way.x(), way.y());
    if (length < 1e-9)
        return nullptr;
    double const half = stroke.width / 2.0;
    QPointF const along = way * (half / length);
    QPointF const across(-along.y(), along.x());
    QPointF const &ends = stroke.round ? along : QPointF();
    std::array const corners{from - ends - across, to + ends - across, to + ends + across, from - ends + across};
    Group *group = add(corners, stroke.color, kindOf(stroke));
    if (group) {
        group->outlined = true;
        group->stroke = stroke;
    }
    return group;
}

LookBatch::Group *LookBatch::addArea(std::span<QPointF const> corners, Color const &color)
{
    return add(corners, color, AREAS);
}

LookBatch::Group *LookBatch::addMark(QRectF const &box, Color const &color)
{
    return add(std::array{box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()}, color, MARKS);
}

std::uint32_t LookBatch::kindOf(Stroke const &stroke)
{
    auto const known = std::find_if(strokes_.begin(), strokes_.end(), [&stroke](Stroke const &one) {
        return one.width == stroke.width && one.round == stroke.round;
    });
    if (known == strokes_.end()) {
        strokes_.push_back(stroke);
        return LINES + static_cast<std::uint32_t>(strokes_.size()) - 1;
    }
    return LINES + static_cast<std::uint32_t>(known - strokes_.begin());
}

LookBatch::Group *LookBatch::add(std::span<QPointF const> corners, Color const &color, std::uint32_t kind)
{
    if (!findRows(corners))
        return nullptr;
    ++count_;
    std::uint32_t const number = numberOf(color);
    std::uint32_t const layer = putOnTop(number);
    layers_ = std::max(layers_, layer);
    std::uint64_t const key =
        static_cast<std::uint64_t>(layer) << 40U | static_cast<std::uint64_t>(number) << 16U | kind;
    Group &group = groups_[key];
    group.color = color;
    return &group;
}

/// The cells that the area touches, and perhaps some at its borders that it does not.
bool LookBatch::findRows(std::span<QPointF const> corners)
{
    auto const [left, right] = std::minmax_element(corners.begin(), corners.end(),
                                                   [](QPointF const &a, QPointF const &b) { return a.x() < b.x(); });
    auto const [top, bottom] = std::minmax_element(corners.begin(), corners.end(),
                                                   [](QPointF const &a, QPointF const &b) { return a.y() < b.y(); });
    if (right->x() - left->x() > LARGEST || bottom->y() - top->y() > LARGEST || std::abs(left->x()) > FAR_AWAY ||
        std::abs(top->y()) > FAR_AWAY)
        return false;
    int const first = cellOf(top->y());
    rows_.clear();
    for (int y = first; y <= cellOf(bottom->y()); ++y)
        rows_.push_back({y, cellOf(right->x()), cellOf(left->x())});
    for (std::size_t i = 0; i < corners.size(); ++i) {
        QPointF const &a = corners[i];
        QPointF const &b = corners[i + 1 < corners.size() ? i + 1 : 0];
        QPointF const &upper = a.y() < b.y() ? a : b;
        QPointF const &lower = a.y() < b.y() ? b : a;
        double const slope = upper.y() < lower.y() ? (lower.x() - upper.x()) / (lower.y() - upper.y()) : 0.0;
        for (int y = cellOf(upper.y()); y <= cellOf(lower.y()); ++y) {
            double const begin = upper.x() + (std::max(upper.y(), y * CELL) - upper.y()) * slope;
            bool const ends = lower.y() <= (y + 1) * CELL;
            double const end = ends ? lower.x() : upper.x() + ((y + 1) * CELL - upper.y()) * slope;
            Row &row = rows_[static_cast<std::size_t>(y - first)];
            row.first = std::min({row.first, cellOf(begin), cellOf(end)});
            row.last = std::max({row.last, cellOf(begin), cellOf(end)});
        }
    }
    return true;
}

/// The layer in which a thing of this colour lies that touches the cells of the rows.
std::uint32_t LookBatch::putOnTop(std::uint32_t color)
{
    std::uint32_t layer = 1;
    for (Row const &row : rows_) {
        for (int x = row.first; x <= row.last; ++x) {
            Cell const &cell = cellAt(x, row.y);
            layer = std::max(layer, cell.layer + (cell.layer > 0 && cell.color != color ? 1 : 0));
        }
    }
    for (Row const &row : rows_) {
        for (int x = row.first; x <= row.last; ++x)
            cellAt(x, row.y) = {layer, color};
    }
    return layer;
}

LookBatch::Cell &LookBatch::cellAt(int x, int y)
{
    std::uint64_t const key =
        static_cast<std::uint64_t>(static_cast<std::uint32_t>(x >> 6)) << 32U | static_cast<std::uint32_t>(y >> 6);
    if (!lastTile_ || key != lastKey_) {
        lastKey_ = key;
        lastTile_ = &tiles_[key];
    }
    return (*lastTile_)[static_cast<std::size_t>((y & (SIDE - 1)) * SIDE + (x & (SIDE - 1)))];
}

std::vector<LookBatch::Group> LookBatch::take()
{
    std::vector<std::uint64_t> keys;
    for (auto const &[key, group] : groups_)
        keys.push_back(key);
    std::sort(keys.begin(), keys.end());
    std::vector<Group> groups;
    for (std::uint64_t const key : keys)
        groups.push_back(std::move(groups_.at(key)));
    *this = {};
    return groups;
}

} // namespace Zem::Fig2Qt
