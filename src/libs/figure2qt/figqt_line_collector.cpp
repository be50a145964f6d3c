#include "figqt_line_collector.h"

#include "figqt_line_reducer.h"

#include <algorithm>
#include <array>

namespace Zem::Fig2Qt {

namespace {

// Shapes of fewer points stay as they are.
constexpr std::size_t FEW = 100;
// Beyond this no page reaches; programs that show pages fail on numbers much larger.
constexpr double FAR_AWAY = 1e5;
constexpr double EVERYWHERE = 1e300;
// A dash is seen only where the line is not dense.
constexpr double DASHED_CELLS = 4.0;
constexpr std::size_t BLOCK = 256;

double bounded(double value)
{
    return std::clamp(value, -FAR_AWAY, FAR_AWAY);
}

/// False if a coordinate is not finite.
bool takeToPage(std::span<BaVec2d<double> const> points, QTransform const &toPage, QPointF *to)
{
    double const m11 = toPage.m11();
    double const m12 = toPage.m12();
    double const m21 = toPage.m21();
    double const m22 = toPage.m22();
    double const dx = toPage.dx();
    double const dy = toPage.dy();
    bool finite = true;
    for (auto const &point : points) {
        // A difference is not 0 for endless values, nor for NaN.
        finite &= point.x - point.x == 0.0 && point.y - point.y == 0.0;
        double const x = bounded(point.x);
        double const y = bounded(point.y);
        *to++ = {m11 * x + m21 * y + dx, m12 * x + m22 * y + dy};
    }
    return finite;
}

} // namespace

bool LineCollector::collect(Polygon2d const &polygon, QTransform const &toPage, Grid const &grid)
{
    points_.clear();
    parts_.clear();
    for (std::size_t i = 0; i < polygon.getNumberOfParts(); ++i) {
        auto const points = polygon.getPart(i);
        if (points.empty())
            continue;
        parts_.push_back({points_.size(), false});
        if (!(points.size() < FEW ? addExactly(points, toPage) : addThinned(points, toPage, grid)))
            return false;
    }
    return true;
}

bool LineCollector::addExactly(std::span<BaVec2d<double> const> points, QTransform const &toPage)
{
    std::size_t const before = points_.size();
    points_.resize(before + points.size());
    return takeToPage(points, toPage, points_.data() + before);
}

bool LineCollector::addThinned(std::span<BaVec2d<double> const> points, QTransform const &toPage, Grid const &grid)
{
    QRectF const everywhere(QPointF(-EVERYWHERE, -EVERYWHERE), QPointF(EVERYWHERE, EVERYWHERE));
    LineReducer reducer(grid.dashed ? grid.cell * DASHED_CELLS : grid.cell, grid.dashed ? everywhere : grid.visible,
                        &points_);
    std::size_t const before = points_.size();
    std::array<QPointF, BLOCK> block;
    for (std::size_t i = 0; i < points.size(); i += BLOCK) {
        auto const some = points.subspan(i, std::min(BLOCK, points.size() - i));
        if (!takeToPage(some, toPage, block.data()))
            return false;
        reducer.add(std::span(block).first(some.size()));
    }
    reducer.finish();
    parts_.back().thinned = points_.size() - before < points.size();
    return true;
}

std::vector<Polyline> LineCollector::getLines(bool closed) const
{
    std::vector<Polyline> lines;
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        std::size_t const end = i + 1 < parts_.size() ? parts_[i + 1].begin : points_.size();
        lines.push_back(
            {std::span(points_).subspan(parts_[i].begin, end - parts_[i].begin), closed, parts_[i].thinned});
    }
    return lines;
}

} // namespace Zem::Fig2Qt
