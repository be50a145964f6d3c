// meas_series_records.h: series as rows of the tables, their numbers as chunks of bytes.
#pragma once

#include "meas_sql.h"

#include <limits>
#include <set>

namespace Zem::Measurement {

/// Rows of all chunks but the last one. Stored in projects: never change.
inline constexpr std::size_t SERIES_CHUNK_ROWS = 65536;
/// Rows are numbered by int where they are points of a curve.
inline constexpr std::size_t MAX_SERIES_ROWS = std::numeric_limits<int>::max();

/// Empty in a project of an older release.
std::vector<ProjectSeries> readSeries(SqlConnection const &connection);
/// None when there is none of this name.
std::optional<ProjectSeries> findSeries(SqlConnection const &connection, QString const &name);
std::set<QString> readSeriesNames(SqlConnection const &connection);
/// Adds the series, or stores all of it but its numbers anew when `exists`.
void writeSeries(SqlConnection const &connection, ProjectSeries const &series, bool exists);
/// With its numbers.
void deleteSeries(SqlConnection const &connection, std::int64_t series);

struct SeriesTableRow
{
    std::int64_t id = 0;
    std::size_t rows = 0;
};

/// None when there is no table of this name.
std::optional<SeriesTableRow> findSeriesTable(SqlConnection const &connection, QString const &name);
/// Adds the table with a new id.
SeriesTableRow insertSeriesTable(SqlConnection const &connection, QString const &name, std::size_t rows);
void updateSeriesTable(SqlConnection const &connection, SeriesTableRow const &table);

/// What is missing or not finite is NaN. Throws ProjectError when the chunks are not what their table tells.
std::vector<double> readSeriesNumbers(SqlConnection const &connection, ProjectSeries const &series);
/// Replaces those that are there.
void writeSeriesNumbers(SqlConnection const &connection, std::int64_t series, std::vector<double> const &numbers);

} // namespace Zem::Measurement
