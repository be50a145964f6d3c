// meas_field.h: what is computed of the points of a set.
#pragma once

#include "meas_contents.h"

#include <ZemFig2ImageDataPoints.h>

namespace Zem::Measurement {

/// The lengths of the vectors: a column that every set has unless it has its own of that name.
inline constexpr QLatin1StringView LENGTH_COLUMN{"length"};

bool hasVectors(ProjectPointSet const &set);
/// The column of the first component that the vectors have; that of x without vectors.
QString vectorColumn(ProjectPointSet const &set);

/// Where the pictures show the points.
std::vector<BaVec3d<double>> shownPlaces(ProjectPointSet const &set, PointField const &field);

/// The points as they are drawn; those without a value are coloured by their vectors.
Fig2::ImageDataPoints marksOf(PointField const &field, std::vector<BaVec3d<double>> const &places);

/// Numbers by point, in the base unit; NaN for those that are missing, and for points that are not valid.
struct PointNumbers
{
    std::vector<double> numbers;
    UnitData unit;

    /// Those that are there.
    std::vector<double> known() const;
};

/// Those of a column. All are missing where the stage has no such column.
PointNumbers numbersOf(ProjectContents const &contents, ProjectPointSet const &set, PointField const &field,
                       QString const &column, unsigned int stage);
/// Those that colour the vectors: the values, else the lengths; all are missing where there is neither.
PointNumbers coloringOf(ProjectContents const &contents, ProjectPointSet const &set, PointField const &field,
                        unsigned int stage);

/// All columns of numbers that a set has at any stage, `LENGTH_COLUMN` among them where it has vectors.
QStringList columnsOf(ProjectContents const &contents, ProjectPointSet const &set);
/// The unit that the column has at the first stage that has the column.
UnitData unitOf(ProjectContents const &contents, ProjectPointSet const &set, QString const &column);
/// The unit at a stage; none for a column that is not there.
UnitData unitOf(ProjectContents const &contents, ProjectPointSet const &set, QString const &column, unsigned int stage);

} // namespace Zem::Measurement
