#include "meas_series_import.h"

#include "meas_names.h"
#include "meas_records.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Zem::Measurement {

namespace {

constexpr double GAP = std::numeric_limits<double>::quiet_NaN();

bool holdsNumbers(CsvColumn const &column)
{
    return column.type == ColumnType_t::NUMBER || column.type == ColumnType_t::INTEGER ||
           column.type == ColumnType_t::DATE_TIME;
}

std::vector<double> numbersOf(CsvColumn const &column)
{
    std::vector<double> numbers(column.numbers.size() + column.integers.size());
    if (column.type == ColumnType_t::NUMBER) {
        std::transform(column.numbers.begin(), column.numbers.end(), numbers.begin(),
                       [](double number) { return std::isfinite(number) ? number : GAP; });
    } else {
        std::transform(column.integers.begin(), column.integers.end(), numbers.begin(), [](std::int64_t number) {
            return number == CsvColumn::MISSING ? GAP : static_cast<double>(number);
        });
    }
    return numbers;
}

/// Gaps are equal to each other.
bool haveSameBits(std::vector<double> const &a, std::vector<double> const &b)
{
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0);
}

} // namespace

QString seriesGroup(CsvTable const &table, SeriesOptions const &options)
{
    if (options.group.isEmpty()) {
        QString const base = makeTokenName(QFileInfo(table.fileName).completeBaseName());
        return base.isEmpty() ? QStringLiteral("series") : base;
    }
    if (!isTokenText(options.group)) {
        throw ImportError(QStringLiteral("%1: the group \"%2\" holds more than letters, digits and . _ - + \\")
                              .arg(table.fileName, options.group));
    }
    return options.group;
}

SeriesImport::SeriesImport(SqlConnection const &connection, CsvTable const &table, SeriesOptions const &options)
    : connection_(connection), table_(table), options_(options)
{
    result_.group = seriesGroup(table, options);
    result_.rows = table.rowCount();
}

SeriesResult SeriesImport::run()
{
    readKnown();
    chooseColumns();
    prepareTable();
    for (auto const &[column, name] : columns_) {
        importColumn(*column, name);
    }
    removeOthers();
    countChange();
    return result_;
}

void SeriesImport::readKnown()
{
    if (result_.rows > MAX_SERIES_ROWS) {
        throw ImportError(QStringLiteral("%1: %2 rows are too many").arg(table_.fileName).arg(result_.rows));
    }
    for (ProjectToken const &token : readTokens(connection_)) {
        tokens_.insert(token.name);
    }
    for (ProjectSeries const &series : readSeries(connection_)) {
        known_[series.name] = series;
        nextId_ = std::max(nextId_, series.id + 1);
    }
    QSqlQuery query = connection_.execute(QStringLiteral("SELECT change FROM zem_project"));
    change_ = query.next() ? readWhole(connection_, query, 0) + 1 : 1;
}

void SeriesImport::chooseColumns()
{
    for (QString const &name : options_.columns) {
        if (!table_.findColumn(name)) {
            throw ImportError(QStringLiteral("%1: there is no column \"%2\"").arg(table_.fileName, name));
        }
    }
    for (std::size_t index = 0; index < table_.columns.size(); ++index) {
        if (options_.columns.isEmpty() || options_.columns.contains(table_.columns[index].name)) {
            addColumn(index);
        }
    }
    if (columns_.empty()) {
        throw ImportError(QStringLiteral("%1: there is no column of numbers").arg(table_.fileName));
    }
}

void SeriesImport::addColumn(std::size_t index)
{
    CsvColumn const &column = table_.columns[index];
    if (!holdsNumbers(column)) {
        result_.skipped << column.name;
        return;
    }
    QString const name = uniqueName(result_.group + QLatin1Char('.') + columnName(column.name, index), names_);
    requireFreeName(name);
    names_.insert(name);
    columns_.emplace_back(&column, name);
    result_.series << name;
    result_.columns << column.name;
}

void SeriesImport::requireFreeName(QString const &name) const
{
    if (tokens_.contains(name)) {
        throw ImportError(QStringLiteral("%1: '%2' is a token of the project already").arg(table_.fileName, name));
    }
    auto const known = known_.find(name);
    if (known != known_.end() && known->second.group != result_.group) {
        throw ImportError(QStringLiteral("%1: '%2' is a series of the group '%3' already")
                              .arg(table_.fileName, name, known->second.group));
    }
}

void SeriesImport::prepareTable()
{
    std::optional<SeriesTableRow> table = findSeriesTable(connection_, result_.group);
    if (!table) {
        table = insertSeriesTable(connection_, result_.group, result_.rows);
        changed_ = true;
    } else if (table->rows != result_.rows) {
        table->rows = result_.rows;
        changed_ = true;
    }
    tableId_ = table->id;
}

void SeriesImport::importColumn(CsvColumn const &column, QString const &name)
{
    auto const found = known_.find(name);
    bool const exists = found != known_.end();
    ProjectSeries series = describe(column, name);
    std::vector<double> const numbers = numbersOf(column);
    if (numbers.size() != result_.rows) {
        throw ImportError(
            QStringLiteral("%1: column \"%2\" has not one value for each row").arg(table_.fileName, column.name));
    }
    bool changed = true;
    if (exists) {
        ProjectSeries const &old = found->second;
        changed = old.type != series.type || old.unit != series.unit || old.unitText != series.unitText ||
                  !haveSameBits(readSeriesNumbers(connection_, old), numbers);
        series.modified = changed ? series.modified : old.modified;
    } else {
        ++nextId_;
    }
    if (changed || series.title != found->second.title) {
        writeSeries(connection_, series, exists);
        changed_ = true;
    }
    if (changed) {
        writeSeriesNumbers(connection_, series.id, numbers);
        result_.changed << name;
    }
}

ProjectSeries SeriesImport::describe(CsvColumn const &column, QString const &name) const
{
    auto const found = known_.find(name);
    ProjectSeries series;
    series.id = found != known_.end() ? found->second.id : nextId_;
    series.name = name;
    series.title = column.name;
    series.type = column.type;
    series.unit = column.unit;
    series.unitText = column.unit.hasUnit() ? column.unit.getUnitName() : column.unitText;
    series.modified = static_cast<unsigned int>(change_);
    series.table = tableId_;
    return series;
}

/// Series that are not in the table any more cannot share its rows.
void SeriesImport::removeOthers()
{
    for (auto const &[name, series] : known_) {
        if (series.table == tableId_ && !names_.contains(name)) {
            deleteSeries(connection_, series.id);
            changed_ = true;
        }
    }
}

void SeriesImport::countChange()
{
    if (changed_) {
        updateSeriesTable(connection_, {tableId_, result_.rows});
        connection_.execute(QStringLiteral("UPDATE zem_project SET change = change + 1"));
    }
}

} // namespace Zem::Measurement
