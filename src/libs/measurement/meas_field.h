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

/// The numbers of a column by point of the field; NaN for those that are missing, and for points that are not valid.
std::vector<double> numbersOf(Project const &project, ProjectPointSet const &set, PointField const &field,
                              QString const &column, unsigned int stage, UnitData *unit);

/// The column that colours the vectors.
QString coloringColumn(ProjectPointSet const &set);

/// All columns of numbers that a set has, `LENGTH_COLUMN` among them where it has vectors.
QStringList columnsOf(ProjectContents const &contents, ProjectPointSet const &set);

} // namespace Zem::Measurement
