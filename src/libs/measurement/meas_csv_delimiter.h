// meas_csv_delimiter.h: a first look at lines: their cells, and the delimiter they agree on.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Zem::Measurement {

/// Cells of one line as a first look sees them: quotes around a cell removed, doubled quotes left alone. A blank as
/// delimiter means any number of blanks and tabs.
std::vector<std::string_view> splitLine(std::string_view line, char delimiter);

/// Where the cell of this number begins in `text`, which begins with its row and may hold line ends inside quotes; the
/// end of the row when that has no such cell.
std::size_t cellOffset(std::string_view text, std::size_t column, char delimiter);

struct CommonWidth
{
    std::size_t width = 1; ///< number of cells that most lines have
    double share = 0.0;    ///< of the lines that have it
};

/// Lines of one cell count only when no line has more.
CommonWidth commonWidth(std::vector<std::string_view> const &lines, char delimiter);

/// A comma when nothing separates the lines into columns.
char detectDelimiter(std::vector<std::string_view> const &lines);

/// Whether the line holds a number or a date.
bool holdsData(std::string_view line, char delimiter);

} // namespace Zem::Measurement
