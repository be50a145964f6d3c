#include "meas_csv_notes.h"

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

std::vector<double> valuesOf(CsvColumn const &column)
{
    std::vector<double> values;
    if (column.type == ColumnType_t::NUMBER) {
        std::copy_if(column.numbers.begin(), column.numbers.end(), std::back_inserter(values),
                     [](double value) { return !std::isnan(value); });
    } else if (column.type == ColumnType_t::INTEGER) {
        for (std::int64_t const value : column.integers) {
            if (value != CsvColumn::MISSING) {
                values.push_back(static_cast<double>(value));
            }
        }
    }
    return values;
}

/// A negative whole number that is the smallest value several times, with a gap to all others.
std::optional<double> findLikelyMarker(CsvColumn const &column)
{
    constexpr double LARGEST_MARKER = -99.0;
    constexpr std::ptrdiff_t OFTEN = 3;
    std::vector<double> const values = valuesOf(column);
    auto const least = std::min_element(values.begin(), values.end());
    if (least == values.end() || *least > LARGEST_MARKER || *least != std::trunc(*least)) {
        return std::nullopt;
    }
    double const marker = *least;
    bool const far = std::none_of(values.begin(), values.end(),
                                  [marker](double value) { return value != marker && value < marker / 2.0; });
    bool const often = std::count(values.begin(), values.end(), marker) >= OFTEN;
    return often && far ? std::optional(marker) : std::nullopt;
}

QString quotedList(QStringList const &names)
{
    return QStringLiteral("\"%1\"").arg(names.join(QStringLiteral("\", \"")));
}

} // namespace

QStringList noteColumns(std::vector<CsvColumn> const &columns)
{
    QStringList empty;
    std::map<double, QStringList> markers;
    for (CsvColumn const &column : columns) {
        if (column.type == ColumnType_t::EMPTY) {
            empty << column.name;
        } else if (auto const marker = findLikelyMarker(column)) {
            markers[*marker] << column.name;
        }
    }
    QStringList notes;
    if (!empty.isEmpty()) {
        notes << QStringLiteral("no values in: %1").arg(quotedList(empty));
    }
    for (auto const &[marker, names] : markers) {
        notes << QStringLiteral(
                     "%1 stands again and again, far from all other values, in: %2; if it marks missing values, "
                     "say so")
                     .arg(QString::number(marker, 'g', 15), quotedList(names));
    }
    return notes;
}

} // namespace Zem::Measurement
