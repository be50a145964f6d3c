#include "meas_field.h"

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

bool isLength(ProjectPointSet const &set, QString const &column)
{
    return column == LENGTH_COLUMN && set.columns.value != LENGTH_COLUMN;
}

std::vector<double> lengthsOf(PointField const &field)
{
    std::vector<double> lengths;
    lengths.reserve(field.vectors.size());
    for (BaVec3d<double> const &v : field.vectors) {
        lengths.push_back(std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z));
    }
    return lengths;
}

} // namespace

bool hasVectors(ProjectPointSet const &set)
{
    return !set.columns.dx.isEmpty() || !set.columns.dy.isEmpty() || !set.columns.dz.isEmpty();
}

QString vectorColumn(ProjectPointSet const &set)
{
    for (QString const &column : {set.columns.dx, set.columns.dy, set.columns.dz}) {
        if (!column.isEmpty()) {
            return column;
        }
    }
    return set.columns.x;
}

std::vector<BaVec3d<double>> shownPlaces(ProjectPointSet const &set, PointField const &field)
{
    std::vector<BaVec3d<double>> places = field.points;
    for (std::size_t i = 0; set.moved && i < places.size(); ++i) {
        places[i] = places[i] + field.vectors[i];
    }
    return places;
}

Fig2::ImageDataPoints marksOf(PointField const &field, std::vector<BaVec3d<double>> const &places)
{
    using Fig2::ImageDataPoints;
    constexpr int EVERY_MASK = -1;
    ImageDataPoints marks;
    for (std::size_t i = 0; i < places.size(); ++i) {
        bool const hasValue = !field.values.empty() && !std::isnan(field.values[i]);
        marks.addPoint(field.ids[i], places[i], field.vectors[i],
                       hasValue ? field.values[i] : ImageDataPoints::INVALID_VALUE, field.valid[i], EVERY_MASK);
    }
    return marks;
}

std::vector<double> numbersOf(Project const &project, ProjectPointSet const &set, PointField const &field,
                              QString const &column, unsigned int stage, UnitData *unit)
{
    constexpr double MISSING = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> numbers;
    if (isLength(set, column)) {
        project.pointNumbers(set, vectorColumn(set), stage, unit);
        numbers = lengthsOf(field);
    } else {
        std::vector<double> const byRow = project.pointNumbers(set, column, stage, unit);
        numbers.reserve(field.rows.size());
        for (std::size_t const row : field.rows) {
            numbers.push_back(byRow[row]);
        }
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = field.valid[i] ? numbers[i] : MISSING;
    }
    return numbers;
}

QString coloringColumn(ProjectPointSet const &set)
{
    return set.columns.value.isEmpty() ? QString(LENGTH_COLUMN) : set.columns.value;
}

QStringList columnsOf(ProjectContents const &contents, ProjectPointSet const &set)
{
    QStringList columns;
    QString const group = set.groups.empty() ? QString() : set.groups.begin()->second;
    for (ProjectSeries const &series : contents.series()) {
        if (series.group == group && series.type != ColumnType_t::DATE_TIME) {
            columns << series.name.mid(group.size() + 1);
        }
    }
    if (hasVectors(set) && !columns.contains(LENGTH_COLUMN)) {
        columns << LENGTH_COLUMN;
    }
    return columns;
}

} // namespace Zem::Measurement
