#include "meas_records.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Measurement {

namespace {

/// Stored in projects: never renumber.
constexpr std::array<std::pair<ColumnType_t, int>, 4> TYPE_NUMBERS = {
    {{ColumnType_t::INTEGER, 1}, {ColumnType_t::NUMBER, 2}, {ColumnType_t::TEXT, 3}, {ColumnType_t::DATE_TIME, 4}}};

int typeNumber(ColumnType_t type)
{
    auto const found = std::find_if(TYPE_NUMBERS.begin(), TYPE_NUMBERS.end(),
                                    [type](auto const &entry) { return entry.first == type; });
    return found == TYPE_NUMBERS.end() ? 3 : found->second; // a column without values may become anything
}

UnitData unitOf(QString const &quantity, QString const &unitName)
{
    Unit const *const unit = Unit::getUnit(quantity);
    Unit::Units_t current{};
    if (quantity.isEmpty() || !unit || !unit->parseUnit(unitName, &current)) {
        return {};
    }
    return {unit, current};
}

QString quantityOf(UnitData const &unit)
{
    return unit.hasUnit() ? unit.getUnit()->getName() : QStringLiteral("");
}

/// An empty text, never NULL.
QString notNull(QString const &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

/// Inserts many rows by few statements.
class RowInserter
{
public:
    RowInserter(SqlConnection const &connection, QString const &table, int columns)
        : connection_(connection), table_(table), columns_(columns)
    {
    }

    void add(std::initializer_list<QVariant> row)
    {
        pending_.insert(pending_.end(), row.begin(), row.end());
        if (pending_.size() == static_cast<std::size_t>(ROWS * columns_)) {
            if (!many_) {
                many_ = connection_.prepare(statement(ROWS));
            }
            bindAndRun(*many_, 0, pending_.size());
            pending_.clear();
        }
    }

    void finish()
    {
        if (pending_.empty()) {
            return;
        }
        QSqlQuery rest = connection_.prepare(statement(static_cast<int>(pending_.size()) / columns_));
        bindAndRun(rest, 0, pending_.size());
        pending_.clear();
    }

private:
    static constexpr int ROWS = 64;

    QString statement(int rows) const
    {
        QStringList const places(columns_, QStringLiteral("?"));
        QStringList const row(rows, QStringLiteral("(%1)").arg(places.join(QLatin1Char(','))));
        return QStringLiteral("INSERT INTO %1 VALUES %2").arg(table_, row.join(QLatin1Char(',')));
    }

    void bindAndRun(QSqlQuery &query, std::size_t first, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            query.bindValue(static_cast<int>(i), pending_[first + i]);
        }
        connection_.run(query);
    }

    SqlConnection const &connection_;
    QString table_;
    int columns_;
    std::optional<QSqlQuery> many_;
    std::vector<QVariant> pending_;
};

template <class T>
QVariant variantOf(StoredValue const &value)
{
    T const *const held = std::get_if<T>(&value);
    if constexpr (std::is_same_v<T, std::int64_t>) {
        return held ? QVariant::fromValue<qlonglong>(*held) : QVariant(QMetaType::fromType<qlonglong>());
    } else {
        return held ? QVariant::fromValue(*held) : QVariant(QMetaType::fromType<T>());
    }
}

} // namespace

std::int64_t readWhole(SqlConnection const &connection, QSqlQuery const &query, int column)
{
    bool whole = false;
    qlonglong const value = query.value(column).toLongLong(&whole);
    if (!whole || query.isNull(column)) {
        connection.fail(QStringLiteral("the project is damaged: a number is missing"));
    }
    return value;
}

ColumnType_t readType(SqlConnection const &connection, QSqlQuery const &query, int column)
{
    std::int64_t const number = readWhole(connection, query, column);
    auto const found = std::find_if(TYPE_NUMBERS.begin(), TYPE_NUMBERS.end(),
                                    [number](auto const &entry) { return entry.second == number; });
    if (found == TYPE_NUMBERS.end()) {
        connection.fail(QStringLiteral("the project is damaged: there is no token type %1").arg(number));
    }
    return found->first;
}

StoredValue readValue(SqlConnection const &connection, QSqlQuery const &query, int first, ColumnType_t type)
{
    if (type == ColumnType_t::TEXT && !query.isNull(first + 2)) {
        return query.value(first + 2).toString();
    }
    if (type == ColumnType_t::NUMBER && !query.isNull(first)) {
        bool isNumber = false;
        double const number = query.value(first).toDouble(&isNumber);
        if (isNumber && std::isfinite(number)) {
            return number;
        }
    }
    if (type == ColumnType_t::INTEGER || type == ColumnType_t::DATE_TIME) {
        return readWhole(connection, query, first + 1);
    }
    connection.fail(QStringLiteral("the project is damaged: a value has not the type of its token"));
}

ProjectToken readTokenRow(SqlConnection const &connection, QSqlQuery const &query)
{
    ProjectToken token;
    token.id = readWhole(connection, query, 0);
    token.name = query.value(1).toString();
    token.title = query.value(2).toString();
    token.type = readType(connection, query, 3);
    token.unitText = query.value(5).toString();
    token.unit = unitOf(query.value(4).toString(), token.unitText);
    token.modified = static_cast<unsigned int>(readWhole(connection, query, 6));
    return token;
}

void bindToken(QSqlQuery *query, ProjectToken const &token)
{
    query->addBindValue(token.name);
    query->addBindValue(notNull(token.title));
    query->addBindValue(typeNumber(token.type));
    query->addBindValue(quantityOf(token.unit));
    query->addBindValue(notNull(token.unitText));
    query->addBindValue(static_cast<qlonglong>(token.modified));
    query->addBindValue(static_cast<qlonglong>(token.id));
}

std::vector<ProjectToken> readTokens(SqlConnection const &connection)
{
    std::vector<ProjectToken> tokens;
    QSqlQuery query =
        connection.execute(QStringLiteral("SELECT %1 FROM token ORDER BY id").arg(QLatin1String(TOKEN_COLUMNS)));
    while (query.next()) {
        tokens.push_back(readTokenRow(connection, query));
    }
    return tokens;
}

void writeToken(SqlConnection const &connection, ProjectToken const &token, bool exists)
{
    QSqlQuery query = connection.prepare(
        exists ? QStringLiteral("UPDATE token SET name = ?, title = ?, type = ?, quantity = ?, unit = ?, modified = ? "
                                "WHERE id = ?")
               : QStringLiteral("INSERT INTO token (name, title, type, quantity, unit, modified, id) VALUES "
                                "(?, ?, ?, ?, ?, ?, ?)"));
    bindToken(&query, token);
    connection.run(query);
}

std::vector<ValueRow> readTokenValues(SqlConnection const &connection, ProjectToken const &token)
{
    std::vector<ValueRow> rows;
    QSqlQuery query = connection.prepare(
        QStringLiteral("SELECT stage, %1 FROM value WHERE token = ? ORDER BY stage").arg(QLatin1String(VALUE_COLUMNS)));
    query.addBindValue(static_cast<qlonglong>(token.id));
    connection.run(query);
    while (query.next()) {
        rows.push_back({readWhole(connection, query, 0), readValue(connection, query, 1, token.type)});
    }
    return rows;
}

void deleteTokenValues(SqlConnection const &connection, std::int64_t token)
{
    QSqlQuery query = connection.prepare(QStringLiteral("DELETE FROM value WHERE token = ?"));
    query.addBindValue(static_cast<qlonglong>(token));
    connection.run(query);
}

void insertTokenValues(SqlConnection const &connection, std::int64_t token, std::vector<ValueRow> const &rows)
{
    RowInserter inserter(connection, QStringLiteral("value (token, stage, number, integer, text)"), 5);
    for (ValueRow const &row : rows) {
        inserter.add({static_cast<qlonglong>(token), static_cast<qlonglong>(row.stage), variantOf<double>(row.value),
                      variantOf<std::int64_t>(row.value), variantOf<QString>(row.value)});
    }
    inserter.finish();
}

void insertStages(SqlConnection const &connection, std::vector<std::int64_t> const &stages)
{
    RowInserter inserter(connection, QStringLiteral("stage (number)"), 1);
    for (std::int64_t const stage : stages) {
        inserter.add({static_cast<qlonglong>(stage)});
    }
    inserter.finish();
}

std::vector<std::int64_t> readStages(SqlConnection const &connection)
{
    std::vector<std::int64_t> stages;
    QSqlQuery query = connection.execute(QStringLiteral("SELECT number FROM stage ORDER BY number"));
    while (query.next()) {
        stages.push_back(readWhole(connection, query, 0));
    }
    return stages;
}

// The table is made when it is first needed: projects of older releases have none.
bool readColorScale(SqlConnection const &connection, QString *parameters)
{
    if (!connection.tables().contains(QStringLiteral("color_scale"))) {
        return false;
    }
    QSqlQuery query = connection.execute(QStringLiteral("SELECT parameters FROM color_scale"));
    if (!query.next()) {
        return false;
    }
    *parameters = query.value(0).toString();
    return true;
}

void writeColorScale(SqlConnection const &connection, QString const &parameters)
{
    connection.execute(QStringLiteral("CREATE TABLE IF NOT EXISTS color_scale (parameters TEXT NOT NULL)"));
    connection.execute(QStringLiteral("DELETE FROM color_scale"));
    QSqlQuery query = connection.prepare(QStringLiteral("INSERT INTO color_scale (parameters) VALUES (?)"));
    query.addBindValue(parameters);
    connection.run(query);
}

} // namespace Zem::Measurement
