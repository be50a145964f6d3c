// meas_csv_layout.h: where the table begins in a file and what separates its cells.
#pragma once

#include "meas_csv_source.h"

#include <string>
#include <string_view>

namespace Zem::Measurement {

/// What the lines before the table say about it.
struct PreambleHints
{
    std::optional<char> delimiter;
    std::optional<bool> decimalComma;
    QStringList names;       ///< of a VARIABLES= list
    QStringList units;       ///< by column
    bool rowsMayEnd = false; ///< rows may leave out cells at their end
};

struct CsvLayout
{
    std::size_t bodyOffset = 0;     ///< of the first row, the header if there is one
    unsigned int preambleLines = 0; ///< lines passed over that are no comments
    std::string commentPrefix;
    char delimiter = ',';
    std::string_view commentHeader; ///< the column names, when they stand in the last comment line
    QStringList preamble;
    PreambleHints hints;
};

CsvLayout findLayout(CsvSource const &source, CsvOptions const &options);

} // namespace Zem::Measurement
