#include "meas_field.h"

#include <QtCore/QSet>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace Zem::Measurement {

namespace {

constexpr double MISSING = std::numeric_limits<double>::quiet_NaN();

/// Null when the stage has no such column.
ProjectSeries const *seriesOf(ProjectContents const &contents, ProjectPointSet const &set, QString const &column,
                              unsigned int stage)
{
    auto const group = set.groups.find(stage);
    return group == set.groups.end() ? nullptr : contents.findSeries(group->second + QLatin1Char('.') + column);
}

std::vector<double> lengthsOf(PointField const &field)
{
    std::vector<double> lengths;
    lengths.reserve(field.vectors.size());
    for (BaVec3d<double> const &v : field.vectors) {
        lengths.push_back(std::hypot(v.x, v.y, v.z));
    }
    return lengths;
}

std::vector<double> byPoint(std::vector<double> const &byRow, ProjectPointSet const &set, PointField const &field,
                            Project const &project)
{
    if (!field.rows.empty() && field.rows.back() >= byRow.size()) {
        throw ProjectError(
            QStringLiteral("%1: the columns of the points '%2' have not the same rows").arg(project.name(), set.name));
    }
    std::vector<double> numbers;
    numbers.reserve(field.rows.size());
    std::transform(field.rows.begin(), field.rows.end(), std::back_inserter(numbers),
                   [&byRow](std::size_t row) { return byRow[row]; });
    return numbers;
}

void hideInvalid(PointField const &field, std::vector<double> *numbers)
{
    for (std::size_t i = 0; i < numbers->size(); ++i) {
        (*numbers)[i] = field.valid[i] ? (*numbers)[i] : MISSING;
    }
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

std::vector<double> PointNumbers::known() const
{
    std::vector<double> known;
    known.reserve(numbers.size());
    std::copy_if(numbers.begin(), numbers.end(), std::back_inserter(known),
                 [](double number) { return !std::isnan(number); });
    return known;
}

PointNumbers numbersOf(ProjectContents const &contents, ProjectPointSet const &set, PointField const &field,
                       QString const &column, unsigned int stage)
{
    PointNumbers result{{}, unitOf(contents, set, column, stage)};
    if (seriesOf(contents, set, column, stage)) {
        result.numbers =
            byPoint(contents.project().pointNumbers(set, column, stage, nullptr), set, field, contents.project());
    } else if (column == LENGTH_COLUMN && hasVectors(set)) {
        result.numbers = lengthsOf(field);
    } else {
        result.numbers.assign(field.rows.size(), MISSING);
    }
    hideInvalid(field, &result.numbers);
    return result;
}

PointNumbers coloringOf(ProjectContents const &contents, ProjectPointSet const &set, PointField const &field,
                        unsigned int stage)
{
    bool const hasValue = !set.columns.value.isEmpty();
    PointNumbers result{field.values, unitOf(contents, set, hasValue ? set.columns.value : vectorColumn(set), stage)};
    if (!hasValue) {
        result.numbers = hasVectors(set) ? lengthsOf(field) : std::vector<double>(field.rows.size(), MISSING);
    }
    hideInvalid(field, &result.numbers);
    return result;
}

UnitData unitOf(ProjectContents const &contents, ProjectPointSet const &set, QString const &column, unsigned int stage)
{
    ProjectSeries const *series = seriesOf(contents, set, column, stage);
    if (!series && column == LENGTH_COLUMN && hasVectors(set)) {
        series = seriesOf(contents, set, vectorColumn(set), stage);
    }
    return series ? series->unit : UnitData();
}

UnitData unitOf(ProjectContents const &contents, ProjectPointSet const &set, QString const &column)
{
    for (auto const &[stage, group] : set.groups) {
        if (seriesOf(contents, set, column, stage) || column == LENGTH_COLUMN) {
            return unitOf(contents, set, column, stage);
        }
    }
    return {};
}

QStringList columnsOf(ProjectContents const &contents, ProjectPointSet const &set)
{
    QSet<QString> groups;
    for (auto const &[stage, group] : set.groups) {
        groups.insert(group);
    }
    QStringList columns;
    QSet<QString> known;
    for (ProjectSeries const &series : contents.series()) {
        QString const column = series.name.mid(series.group.size() + 1);
        if (groups.contains(series.group) && series.type != ColumnType_t::DATE_TIME && !known.contains(column)) {
            columns << column;
            known.insert(column);
        }
    }
    if (hasVectors(set) && !columns.contains(LENGTH_COLUMN)) {
        columns << LENGTH_COLUMN;
    }
    return columns;
}

} // namespace Zem::Measurement
