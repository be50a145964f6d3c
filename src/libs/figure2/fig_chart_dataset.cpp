#include "ZemFig2ChartData.h"

#include "fig_block.h"

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int POINT_VERSION = 1;
constexpr unsigned int DATASET_VERSION = 2; // 2: ranges

constexpr BaVec2d<double> EMPTY_RANGE{DBL_MAX, -DBL_MAX};

void widen(BaVec2d<double> &range, double value)
{
    range.x = std::min(range.x, value);
    range.y = std::max(range.y, value);
}

QString rangeText(char const *format, BaVec2d<double> const &range)
{
    return QString::fromLatin1(format).arg(range.x, 0, 'f', 2).arg(range.y, 0, 'f', 2);
}

template <class Points>
auto iteratorAt(Points &points, unsigned int index)
{
    return index < points.size() ? points.begin() + static_cast<std::ptrdiff_t>(index) : points.end();
}

} // namespace

template <class Archive, class Self>
void ChartPoint::blockFields(Archive &archive, Self &self)
{
    archive.field(self.id);
    archive.field(self.point);
    archive.field(self.value);
}

void ChartPoint::save(IO::OutStream *stream) const
{
    saveBlock(stream, POINT_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void ChartPoint::load(IO::InStream *stream)
{
    loadBlock(stream, POINT_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

ChartDataset::ChartDataset(QString const &id) : id_(id), displayText_(id)
{
}

ChartDataset::Points::const_iterator ChartDataset::getPointBegin(unsigned int index) const
{
    return iteratorAt(points_, index);
}

ChartDataset::Points::iterator ChartDataset::getPointBegin(unsigned int index)
{
    return iteratorAt(points_, index);
}

void ChartDataset::addPoint(ChartPoint const &point)
{
    points_.push_back(point);
    if (!point.isValid())
        return;
    widen(rangeX_, point.point.x);
    widen(rangeY_, point.point.y);
}

bool ChartDataset::pointExists(int id) const
{
    return std::any_of(points_.begin(), points_.end(), [id](ChartPoint const &point) { return point.id == id; });
}

void ChartDataset::getRange(BaVec2d<double> *rangeX, BaVec2d<double> *rangeY) const
{
    *rangeX = rangeX_;
    *rangeY = rangeY_;
}

QString ChartDataset::toString() const
{
    return QStringLiteral("Chart Dataset ID: %1\n").arg(id_) +
           QStringLiteral("  Points: %1\n").arg(getNumberOfPoints(), 0, 10) +
           rangeText("  Range X: %1, %2\n", rangeX_) + rangeText("  Range Y: %1, %2\n", rangeY_) +
           QStringLiteral("  Display text: %1\n").arg(displayText_);
}

template <class Archive, class Self>
void ChartDataset::blockFields(Archive &archive, Self &self, unsigned int &count)
{
    archive.field(self.id_);
    archive.field(self.displayText_);
    archive.field(self.rangeX_, Since{2}, EMPTY_RANGE);
    archive.field(self.rangeY_, Since{2}, EMPTY_RANGE);
    archive.field(count);
}

void ChartDataset::save(IO::OutStream *stream) const
{
    unsigned int count = getNumberOfPoints();
    saveBlock(stream, DATASET_VERSION, [&](auto &archive) { blockFields(archive, *this, count); });
    for (ChartPoint const &point : points_)
        point.save(stream);
    parameters_.save(stream);
}

void ChartDataset::load(IO::InStream *stream)
{
    loadWrapped("Figure_ChartData_err", "cannot load figure chart dataset: %1", [&] { loadAll(stream); });
}

void ChartDataset::loadAll(IO::InStream *stream)
{
    unsigned int count = 0;
    points_.clear();
    loadBlock(stream, DATASET_VERSION, [&](auto &archive) { blockFields(archive, *this, count); });
    // Nothing is reserved: the count is only as good as the points that follow.
    for (unsigned int i = 0; i < count; ++i) {
        ChartPoint point;
        point.load(stream);
        points_.push_back(point);
    }
    parameters_.load(stream);
}

} // namespace Zem::Fig2
