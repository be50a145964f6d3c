#include "meas_csv_rows.h"

#include "meas_csv_cells.h"
#include "meas_csv_header.h"

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

constexpr std::size_t SAMPLE_ROWS = 50;

enum class Kind_t { NOTHING, TEXT, DATA };

Kind_t kindOf(std::string_view cell)
{
    cell = trimmed(cell);
    if (cell.empty() || isMissingWord(cell)) {
        return Kind_t::NOTHING;
    }
    bool const data = parseNumber(cell, false) || parseNumber(cell, true) ||
                      parseDateTime(cell, DateOrder_t::MONTH_DAY) || parseDateTime(cell, DateOrder_t::DAY_MONTH);
    return data ? Kind_t::DATA : Kind_t::TEXT;
}

std::size_t countCells(CsvGrid const &grid, std::size_t row, Kind_t kind)
{
    std::size_t count = 0;
    for (std::size_t column = 0; column < grid.width(row); ++column) {
        count += kindOf(grid.cell(row, column)) == kind ? 1u : 0u;
    }
    return count;
}

std::size_t sampleEnd(CsvGrid const &grid)
{
    return std::min(grid.rowCount(), SAMPLE_ROWS + 1);
}

/// Whether the cells below the first row are all numbers or dates, as far as they hold anything.
bool isDataBelow(CsvGrid const &grid, std::size_t column)
{
    bool data = false;
    for (std::size_t row = 1; row < sampleEnd(grid); ++row) {
        Kind_t const kind = kindOf(grid.cell(row, column));
        if (kind == Kind_t::TEXT) {
            return false;
        }
        data = data || kind == Kind_t::DATA;
    }
    return data;
}

/// Whether a column of fractions stands below a whole number far beyond all of them.
bool isForeignNumber(CsvGrid const &grid, std::size_t column)
{
    constexpr double FAR = 10.0;
    double largest = 0.0;
    for (std::size_t row = 1; row < sampleEnd(grid); ++row) {
        auto const number = parseNumber(grid.cell(row, column), false);
        if (!number || number->isWhole) {
            return false;
        }
        largest = std::max(largest, std::abs(number->value));
    }
    auto const first = parseNumber(grid.cell(0, column), false);
    return first && first->value > FAR * largest && largest > 0.0;
}

/// Some writers name columns by numeric codes: a row of whole numbers that does not fit what follows.
bool isRowOfCodes(CsvGrid const &grid)
{
    constexpr std::size_t MIN_ROWS = 4;
    bool foreign = false;
    for (std::size_t column = 0; column < grid.width(0); ++column) {
        auto const number = parseNumber(grid.cell(0, column), false);
        if (!number || !number->isWhole) {
            return false;
        }
        foreign = foreign || isForeignNumber(grid, column);
    }
    return foreign && grid.rowCount() >= MIN_ROWS;
}

bool isTypeCell(std::string_view cell)
{
    std::size_t const letter = cell.find_first_not_of("0123456789");
    return letter != std::string_view::npos && letter > 0 && letter + 1 == cell.size() &&
           (cell.back() == 's' || cell.back() == 'n' || cell.back() == 'd');
}

bool isComma(std::string_view cell)
{
    return cell.find(',') != std::string_view::npos && parseNumber(cell, true);
}

bool isPoint(std::string_view cell)
{
    return cell.find('.') != std::string_view::npos && parseNumber(cell, false);
}

bool mayFollow(CsvGrid const &grid, std::size_t row, bool rowsMayEnd)
{
    std::size_t const wanted = grid.width(0);
    std::size_t const width = grid.width(row);
    bool const surplusEmpty = width == wanted + 1 && grid.cell(row, wanted).empty();
    bool const lastLeftOut = width + 1 == wanted && grid.cell(0, wanted - 1).empty();
    return width == wanted || surplusEmpty || lastLeftOut || (rowsMayEnd && width < wanted);
}

} // namespace

bool isHeaderRow(CsvGrid const &grid)
{
    std::size_t const texts = countCells(grid, 0, Kind_t::TEXT);
    std::size_t const data = countCells(grid, 0, Kind_t::DATA);
    if (texts == 0) {
        return isRowOfCodes(grid);
    }
    if (data == 0) {
        return true;
    }
    for (std::size_t column = 0; column < grid.width(0); ++column) {
        if (texts >= data && kindOf(grid.cell(0, column)) == Kind_t::TEXT && isDataBelow(grid, column)) {
            return true;
        }
    }
    return false;
}

bool isUnitsRow(CsvSource const &source, CsvGrid const &grid, std::size_t row)
{
    if (row >= grid.rowCount()) {
        return false;
    }
    std::size_t known = 0;
    for (std::size_t column = 0; column < grid.width(row); ++column) {
        QString const cell = source.decode(trimmed(grid.cell(row, column)));
        QString const unit = plainUnitText(cell);
        bool const bracketed = unit.size() + 2 == cell.size();
        if (!unit.isEmpty() && !bracketed && !looksLikeUnit(unit) && !findUnit(unit).hasUnit()) {
            return false;
        }
        known += (bracketed && !unit.isEmpty()) || findUnit(unit).hasUnit() ? 1u : 0u;
    }
    bool const valuesBelow = row + 1 < grid.rowCount() && countCells(grid, row + 1, Kind_t::DATA) > 0;
    return known > 0 && valuesBelow;
}

bool isTypeRow(CsvGrid const &grid, std::size_t row)
{
    if (row >= grid.rowCount()) {
        return false;
    }
    for (std::size_t column = 0; column < grid.width(row); ++column) {
        if (!isTypeCell(grid.cell(row, column))) {
            return false;
        }
    }
    return true;
}

bool usesDecimalComma(CsvGrid const &grid, char delimiter)
{
    if (delimiter == ',') {
        return false;
    }
    std::size_t commas = 0;
    std::size_t points = 0;
    for (std::size_t row = 0; row < grid.rowCount(); ++row) {
        for (std::size_t column = 0; column < grid.width(row); ++column) {
            commas += isComma(grid.cell(row, column)) ? 1u : 0u;
            points += isPoint(grid.cell(row, column)) ? 1u : 0u;
        }
    }
    return commas > points;
}

void requireEvenRows(CsvGrid const &grid, bool rowsMayEnd)
{
    std::size_t const wanted = grid.width(0);
    for (std::size_t row = 1; row < grid.rowCount(); ++row) {
        if (!mayFollow(grid, row, rowsMayEnd)) {
            grid.failAt(row, std::min(grid.width(row), wanted),
                        QStringLiteral("this row has %1 cells, the first one %2").arg(grid.width(row)).arg(wanted));
        }
    }
}

} // namespace Zem::Measurement
