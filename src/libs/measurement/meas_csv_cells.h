// meas_csv_cells.h: what a single cell says: a number, a date, nothing. Independent of any locale.
#pragma once

#include <ZemMeasCsv.h>

#include <optional>
#include <string_view>

namespace Zem::Measurement {

struct CellNumber
{
    double value = 0.0;
    bool isWhole = false; ///< written as digits alone, behind a sign at most
};

std::string_view trimmed(std::string_view text);

/// Null for anything that is no finite decimal number.
std::optional<CellNumber> parseNumber(std::string_view cell, bool decimalComma);

/// A date, or date and time, as UTC milliseconds since 1970-01-01: yyyy-MM-dd, yyyy/MM/dd, dd.MM.yyyy, dd-MM-yyyy, and
/// a/b/yyyy in the given order; then, behind a blank or T, h:mm[:ss[.fraction]] and Z or +hh:mm.
std::optional<std::int64_t> parseDateTime(std::string_view cell, DateOrder_t order);

/// Whether the order of day and month matters for this date.
bool isSlashDate(std::string_view cell);

/// Words such as NaN and N/A.
bool isMissingWord(std::string_view cell);

/// A run of five or more digits with a leading zero, or more digits than a number can hold: a key, no quantity.
bool isIdentifier(std::string_view cell);

} // namespace Zem::Measurement
