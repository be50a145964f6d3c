#include "meas_series_records.h"

#include "meas_records.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

constexpr std::size_t NUMBER_BYTES = sizeof(double);

std::size_t readRowCount(SqlConnection const &connection, QSqlQuery const &query, int column)
{
    std::int64_t const rows = readWhole(connection, query, column);
    if (rows < 0 || rows > static_cast<std::int64_t>(MAX_SERIES_ROWS)) {
        connection.fail(QStringLiteral("the project is damaged: a series cannot have %1 rows").arg(rows));
    }
    return static_cast<std::size_t>(rows);
}

QSqlQuery prepareFor(SqlConnection const &connection, char const *statement, std::int64_t id)
{
    QSqlQuery query = connection.prepare(QString::fromLatin1(statement));
    query.addBindValue(static_cast<qlonglong>(id));
    return query;
}

QByteArray toBytes(double const *numbers, std::size_t count)
{
    QByteArray bytes(static_cast<qsizetype>(count * NUMBER_BYTES), Qt::Uninitialized);
    qToLittleEndian<quint64>(numbers, static_cast<qsizetype>(count), bytes.data());
    return bytes;
}

/// Puts the chunks of one series together, trusting none of them.
class ChunkReader
{
public:
    ChunkReader(SqlConnection const &connection, QString const &name, std::size_t rows)
        : connection_(connection), name_(name), rows_(rows)
    {
        constexpr std::size_t TRUSTED_ROWS = 1 << 20; // what a damaged count may cost
        numbers_.reserve(std::min(rows, TRUSTED_ROWS));
    }

    void take(QSqlQuery const &query, int chunkColumn, int dataColumn)
    {
        std::size_t const expected = std::min(rows_ - numbers_.size(), SERIES_CHUNK_ROWS);
        QVariant const data = query.value(dataColumn);
        if (readWhole(connection_, query, chunkColumn) != next_++ || expected == 0 ||
            data.typeId() != QMetaType::QByteArray ||
            data.toByteArray().size() != static_cast<qsizetype>(expected * NUMBER_BYTES)) {
            fail();
        }
        append(data.toByteArray(), expected);
    }

    std::vector<double> finish()
    {
        if (numbers_.size() != rows_) {
            fail();
        }
        return std::move(numbers_);
    }

private:
    [[noreturn]] void fail() const
    {
        connection_.fail(QStringLiteral("the project is damaged: series '%1' has not the values of its %2 rows")
                             .arg(name_)
                             .arg(rows_));
    }

    void append(QByteArray const &bytes, std::size_t count)
    {
        std::size_t const first = numbers_.size();
        numbers_.resize(first + count);
        qFromLittleEndian<quint64>(bytes.constData(), static_cast<qsizetype>(count), numbers_.data() + first);
        std::replace_if(
            numbers_.begin() + static_cast<std::ptrdiff_t>(first), numbers_.end(),
            [](double number) { return !std::isfinite(number); }, std::numeric_limits<double>::quiet_NaN());
    }

    SqlConnection const &connection_;
    QString const &name_;
    std::size_t rows_;
    std::int64_t next_ = 0;
    std::vector<double> numbers_;
};

} // namespace

namespace {

constexpr char const *SELECT_SERIES =
    "SELECT %1, series_table, "
    "(SELECT series_table.name FROM series_table WHERE series_table.id = series.series_table), "
    "(SELECT row_count FROM series_table WHERE series_table.id = series.series_table) FROM series ";

QString selectSeries(char const *rest)
{
    return (QLatin1String(SELECT_SERIES) + QLatin1String(rest)).arg(QLatin1String(TOKEN_COLUMNS));
}

ProjectSeries readSeriesRow(SqlConnection const &connection, QSqlQuery const &query)
{
    ProjectSeries series{readTokenRow(connection, query), readWhole(connection, query, 7), query.value(8).toString(),
                         readRowCount(connection, query, 9)};
    if (series.type == ColumnType_t::TEXT) {
        connection.fail(QStringLiteral("the project is damaged: series '%1' is of text").arg(series.name));
    }
    return series;
}

} // namespace

std::vector<ProjectSeries> readSeries(SqlConnection const &connection)
{
    std::vector<ProjectSeries> all;
    if (!connection.tables().contains(QStringLiteral("series"))) {
        return all;
    }
    QSqlQuery query = connection.execute(selectSeries("ORDER BY id"));
    while (query.next()) {
        all.push_back(readSeriesRow(connection, query));
    }
    return all;
}

std::optional<ProjectSeries> findSeries(SqlConnection const &connection, QString const &name)
{
    QSqlQuery query = connection.prepare(selectSeries("WHERE name = ?"));
    query.addBindValue(name);
    connection.run(query);
    return query.next() ? std::optional(readSeriesRow(connection, query)) : std::nullopt;
}

std::set<QString> readSeriesNames(SqlConnection const &connection)
{
    std::set<QString> names;
    QSqlQuery query = connection.execute(QStringLiteral("SELECT name FROM series"));
    while (query.next()) {
        names.insert(query.value(0).toString());
    }
    return names;
}

void writeSeries(SqlConnection const &connection, ProjectSeries const &series, bool exists)
{
    QSqlQuery query = connection.prepare(
        exists ? QStringLiteral("UPDATE series SET series_table = ?, name = ?, title = ?, type = ?, quantity = ?, "
                                "unit = ?, modified = ? WHERE id = ?")
               : QStringLiteral("INSERT INTO series (series_table, name, title, type, quantity, unit, modified, id) "
                                "VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
    query.addBindValue(static_cast<qlonglong>(series.table));
    bindToken(&query, series);
    connection.run(query);
}

void deleteSeries(SqlConnection const &connection, std::int64_t series)
{
    for (char const *const statement :
         {"DELETE FROM series_chunk WHERE series = ?", "DELETE FROM series WHERE id = ?"}) {
        QSqlQuery query = prepareFor(connection, statement, series);
        connection.run(query);
    }
}

std::optional<SeriesTableRow> findSeriesTable(SqlConnection const &connection, QString const &name)
{
    QSqlQuery query = connection.prepare(QStringLiteral("SELECT id, row_count FROM series_table WHERE name = ?"));
    query.addBindValue(name);
    connection.run(query);
    if (!query.next()) {
        return std::nullopt;
    }
    return SeriesTableRow{readWhole(connection, query, 0), readRowCount(connection, query, 1)};
}

SeriesTableRow insertSeriesTable(SqlConnection const &connection, QString const &name, std::size_t rows)
{
    QSqlQuery last = connection.execute(QStringLiteral("SELECT COALESCE(MAX(id), 0) FROM series_table"));
    SeriesTableRow const table{last.next() ? readWhole(connection, last, 0) + 1 : 1, rows};
    last.finish();
    QSqlQuery query =
        connection.prepare(QStringLiteral("INSERT INTO series_table (id, name, row_count) VALUES (?, ?, ?)"));
    query.addBindValue(static_cast<qlonglong>(table.id));
    query.addBindValue(name);
    query.addBindValue(static_cast<qlonglong>(rows));
    connection.run(query);
    return table;
}

void updateSeriesTable(SqlConnection const &connection, SeriesTableRow const &table)
{
    QSqlQuery query = connection.prepare(QStringLiteral("UPDATE series_table SET row_count = ? WHERE id = ?"));
    query.addBindValue(static_cast<qlonglong>(table.rows));
    query.addBindValue(static_cast<qlonglong>(table.id));
    connection.run(query);
}

// One statement, so that count and chunks are of the same moment whatever others write.
std::vector<double> readSeriesNumbers(SqlConnection const &connection, ProjectSeries const &series)
{
    QSqlQuery query = prepareFor(connection,
                                 "SELECT series_table.row_count, chunk, data FROM series "
                                 "JOIN series_table ON series_table.id = series.series_table "
                                 "LEFT JOIN series_chunk ON series_chunk.series = series.id "
                                 "WHERE series.id = ? ORDER BY chunk",
                                 series.id);
    connection.run(query);
    if (!query.next()) {
        return {};
    }
    ChunkReader reader(connection, series.name, readRowCount(connection, query, 0));
    if (!query.isNull(1)) {
        do {
            reader.take(query, 1, 2);
        } while (query.next());
    }
    return reader.finish();
}

void writeSeriesNumbers(SqlConnection const &connection, std::int64_t series, std::vector<double> const &numbers)
{
    QSqlQuery old = prepareFor(connection, "DELETE FROM series_chunk WHERE series = ?", series);
    connection.run(old);
    QSqlQuery query =
        connection.prepare(QStringLiteral("INSERT INTO series_chunk (series, chunk, data) VALUES (?, ?, ?)"));
    for (std::size_t first = 0; first < numbers.size(); first += SERIES_CHUNK_ROWS) {
        std::size_t const count = std::min(SERIES_CHUNK_ROWS, numbers.size() - first);
        query.bindValue(0, static_cast<qlonglong>(series));
        query.bindValue(1, static_cast<qlonglong>(first / SERIES_CHUNK_ROWS));
        query.bindValue(2, toBytes(numbers.data() + first, count));
        connection.run(query);
    }
}

} // namespace Zem::Measurement
