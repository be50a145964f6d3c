// meas_csv_preamble.h: the lines that some writers put before the table.
#pragma once

#include "meas_csv_layout.h"

namespace Zem::Measurement {

/// Number of lines at the start of the file that belong to a header with a form of its own: keys and values up to an
/// end marker, or a TITLE= and VARIABLES= line. 0 when there is none.
unsigned int countHeaderBlock(CsvSource const &source);

/// What the lines of the preamble say about the table.
PreambleHints readHints(QStringList const &preamble);

/// Whether the line is a title above a table of `width` columns: a single cell, a key with its value, or a record in
/// braces. A line that is only too short for the table is none.
bool isTitleLine(std::string_view line, std::string_view following, char delimiter, std::size_t width);

} // namespace Zem::Measurement
