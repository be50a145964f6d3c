#include "meas_csv_columns.h"

#include "meas_csv_cells.h"

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

struct ColumnReader::Cells
{
    std::vector<double> numbers;
    std::vector<std::int64_t> times;
    std::size_t good = 0;
    std::size_t bad = 0;
    std::size_t firstBad = 0; ///< row in the grid
    bool allWhole = true;
    bool allFitInteger = true;
    bool holdsIdentifier = false;

    void noteBad(std::size_t row) { firstBad = bad++ == 0 ? row : firstBad; }
};

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

bool fitsInteger(double value)
{
    return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
}

} // namespace

ColumnReader::ColumnReader(CsvSource const &source, CsvGrid const &grid, std::size_t firstRow, CellRules const &rules)
    : source_(source), grid_(grid), firstRow_(firstRow), rules_(rules)
{
    for (QString const &marker : rules.missing) {
        QByteArray const text =
            source.encoding() == CsvEncoding_t::UTF8 ? marker.trimmed().toUtf8() : marker.trimmed().toLatin1();
        markers_.push_back(text.toStdString());
        // A marker may be given with a point where the file has commas.
        auto number = parseNumber(markers_.back(), rules.decimalComma);
        number = number ? number : parseNumber(markers_.back(), false);
        if (number) {
            numberMarkers_.push_back(number->value);
        }
    }
}

bool ColumnReader::isMarker(std::string_view cell) const
{
    return cell.empty() || std::find(markers_.begin(), markers_.end(), cell) != markers_.end();
}

bool ColumnReader::isMissing(std::string_view cell) const
{
    return isMarker(cell) || isMissingWord(cell);
}

ColumnReader::Cells ColumnReader::parseNumbers(std::size_t index) const
{
    Cells cells;
    cells.numbers.reserve(grid_.rowCount() - firstRow_);
    for (std::size_t row = firstRow_; row < grid_.rowCount(); ++row) {
        std::string_view const cell = trimmed(grid_.cell(row, index));
        auto const number = parseNumber(cell, rules_.decimalComma);
        bool const marker =
            number && std::find(numberMarkers_.begin(), numberMarkers_.end(), number->value) != numberMarkers_.end();
        bool const present = number && !marker;
        cells.numbers.push_back(present ? number->value : NOT_A_NUMBER);
        if (present) {
            ++cells.good;
            cells.allWhole = cells.allWhole && number->isWhole;
            cells.allFitInteger = cells.allFitInteger && fitsInteger(number->value);
            cells.holdsIdentifier = cells.holdsIdentifier || isIdentifier(cell);
        } else if (!marker && !isMissing(cell)) {
            cells.noteBad(row);
        }
    }
    return cells;
}

ColumnReader::Cells ColumnReader::parseDates(std::size_t index, DateOrder_t order) const
{
    Cells cells;
    cells.times.reserve(grid_.rowCount() - firstRow_);
    for (std::size_t row = firstRow_; row < grid_.rowCount(); ++row) {
        std::string_view const cell = trimmed(grid_.cell(row, index));
        auto const time = isMissing(cell) ? std::nullopt : parseDateTime(cell, order);
        cells.times.push_back(time.value_or(CsvColumn::MISSING));
        if (time) {
            ++cells.good;
        } else if (!isMissing(cell)) {
            cells.noteBad(row);
        }
    }
    return cells;
}

ColumnReader::Cells ColumnReader::parseDates(std::size_t index)
{
    DateOrder_t order = rules_.dateOrder.value_or(DateOrder_t::MONTH_DAY);
    Cells cells = parseDates(index, order);
    bool slashes = false;
    for (std::size_t row = firstRow_; row < grid_.rowCount() && !slashes; ++row) {
        slashes = isSlashDate(grid_.cell(row, index));
    }
    if (!slashes) {
        return cells;
    }
    bool guessed = false;
    if (!rules_.dateOrder) {
        Cells other = parseDates(index, DateOrder_t::DAY_MONTH);
        guessed = other.bad == cells.bad;
        if (other.bad < cells.bad) {
            order = DateOrder_t::DAY_MONTH;
            cells = std::move(other);
        }
    }
    if (cells.bad == 0) {
        usedDateOrder_ = order;
        dateOrderGuessed_ = guessed;
    }
    return cells;
}

void ColumnReader::read(std::size_t index, std::optional<ColumnType_t> forced, bool mayBeText, CsvColumn &column)
{
    if (forced) {
        return readForced(index, *forced, column);
    }
    Cells numbers = parseNumbers(index);
    if (numbers.good + numbers.bad == 0) {
        column.type = ColumnType_t::EMPTY;
        return;
    }
    if (numbers.bad == 0 && numbers.allWhole && numbers.holdsIdentifier) {
        return storeTexts(index, column);
    }
    if (numbers.bad == 0) {
        // A quantity is a number even where it happens to be whole.
        bool const whole = numbers.allWhole && numbers.allFitInteger && column.unitText.isEmpty();
        return storeNumbers(std::move(numbers), whole, column);
    }
    if (!mayBeText && numbers.good >= numbers.bad) {
        requireClean(numbers, index, column.name, "number");
    }
    Cells dates = parseDates(index);
    if (dates.bad == 0) {
        return storeDates(std::move(dates), column);
    }
    if (!mayBeText && dates.good >= dates.bad) {
        requireClean(dates, index, column.name, "date");
    }
    storeTexts(index, column);
}

void ColumnReader::readForced(std::size_t index, ColumnType_t type, CsvColumn &column)
{
    if (type == ColumnType_t::TEXT) {
        return storeTexts(index, column);
    }
    if (type == ColumnType_t::EMPTY) {
        column.type = type;
        return;
    }
    if (type == ColumnType_t::DATE_TIME) {
        Cells dates = parseDates(index);
        requireClean(dates, index, column.name, "date");
        return storeDates(std::move(dates), column);
    }
    Cells numbers = parseNumbers(index);
    requireClean(numbers, index, column.name, "number");
    if (type == ColumnType_t::INTEGER) {
        requireIntegers(numbers, index, column.name);
    }
    storeNumbers(std::move(numbers), type == ColumnType_t::INTEGER, column);
}

void ColumnReader::requireIntegers(Cells &numbers, std::size_t index, QString const &name) const
{
    for (std::size_t i = 0; i < numbers.numbers.size(); ++i) {
        double const value = numbers.numbers[i];
        if (!std::isnan(value) && (value != std::trunc(value) || !fitsInteger(value))) {
            numbers.noteBad(firstRow_ + i);
        }
    }
    requireClean(numbers, index, name, "integer");
}

void ColumnReader::storeNumbers(Cells &&cells, bool asIntegers, CsvColumn &column) const
{
    if (!asIntegers) {
        column.type = ColumnType_t::NUMBER;
        column.numbers = std::move(cells.numbers);
        return;
    }
    column.type = ColumnType_t::INTEGER;
    column.integers.reserve(cells.numbers.size());
    for (double const number : cells.numbers) {
        column.integers.push_back(std::isnan(number) ? CsvColumn::MISSING : static_cast<std::int64_t>(number));
    }
}

void ColumnReader::storeDates(Cells &&cells, CsvColumn &column) const
{
    column.type = ColumnType_t::DATE_TIME;
    column.integers = std::move(cells.times);
}

void ColumnReader::storeTexts(std::size_t index, CsvColumn &column) const
{
    column.type = ColumnType_t::TEXT;
    column.texts.reserve(grid_.rowCount() - firstRow_);
    for (std::size_t row = firstRow_; row < grid_.rowCount(); ++row) {
        std::string_view const cell = trimmed(grid_.cell(row, index));
        column.texts.push_back(isMarker(cell) ? QString() : source_.decode(cell));
    }
}

void ColumnReader::requireClean(Cells const &cells, std::size_t index, QString const &name, char const *what) const
{
    if (cells.bad == 0) {
        return;
    }
    QString const cell = source_.decode(grid_.cell(cells.firstBad, index).substr(0, 40));
    grid_.failAt(cells.firstBad, index,
                 QStringLiteral("\"%1\" is no %2, as column \"%3\" holds").arg(cell, QLatin1String(what), name));
}

} // namespace Zem::Measurement
