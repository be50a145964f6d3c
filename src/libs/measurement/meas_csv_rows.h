// meas_csv_rows.h: what the first rows of a table are: names, units, types or already values.
#pragma once

#include "meas_csv_grid.h"

namespace Zem::Measurement {

/// Whether the first row holds the column names.
bool isHeaderRow(CsvGrid const &grid);

/// Whether the row holds units, and the ones below it do not.
bool isUnitsRow(CsvSource const &source, CsvGrid const &grid, std::size_t row);

/// Whether the row holds widths with a letter for the type, as in "5s", "10n", "8d".
bool isTypeRow(CsvGrid const &grid, std::size_t row);

/// Whether the file uses commas in numbers.
bool usesDecimalComma(CsvGrid const &grid, char delimiter);

/// Throws ImportError for the first row that has not as many cells as the first one. An empty cell at the end of a row
/// is allowed; with `rowsMayEnd` cells may be missing there.
void requireEvenRows(CsvGrid const &grid, bool rowsMayEnd);

} // namespace Zem::Measurement
