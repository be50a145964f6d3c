// meas_csv_notes.h: what a user may want to know about the columns of a table.
#pragma once

#include <ZemMeasCsv.h>

namespace Zem::Measurement {

/// One note for all columns without values, and one for each number that probably marks missing values.
QStringList noteColumns(std::vector<CsvColumn> const &columns);

} // namespace Zem::Measurement
