// meas_records.h: tokens and values as rows of the tables.
#pragma once

#include "meas_sql.h"

namespace Zem::Measurement {

inline constexpr char const *VALUE_COLUMNS = "number, integer, text";

/// Reads the columns of VALUE_COLUMNS, which begin at `first`, for a token of `type`; throws ProjectError when nothing
/// of that type stands there.
StoredValue readValue(SqlConnection const &connection, QSqlQuery const &query, int first, ColumnType_t type);

/// Throws ProjectError for a number that is no type.
ColumnType_t readType(SqlConnection const &connection, QSqlQuery const &query, int column);

inline constexpr char const *TOKEN_COLUMNS = "id, name, title, type, quantity, unit, modified";

/// Reads TOKEN_COLUMNS, the first seven of the query.
ProjectToken readTokenRow(SqlConnection const &connection, QSqlQuery const &query);

/// Binds the columns without the id, then the id.
void bindToken(QSqlQuery *query, ProjectToken const &token);

std::vector<ProjectToken> readTokens(SqlConnection const &connection);

/// Adds the token, or stores all of it anew when `exists`.
void writeToken(SqlConnection const &connection, ProjectToken const &token, bool exists);

/// Whole number from the database; throws ProjectError for anything else.
std::int64_t readWhole(SqlConnection const &connection, QSqlQuery const &query, int column);

struct ValueRow
{
    std::int64_t stage = 0;
    StoredValue value;

    bool operator==(ValueRow const &) const = default;
};

/// Values of one token, ascending by stage.
std::vector<ValueRow> readTokenValues(SqlConnection const &connection, ProjectToken const &token);
void deleteTokenValues(SqlConnection const &connection, std::int64_t token);
void insertTokenValues(SqlConnection const &connection, std::int64_t token, std::vector<ValueRow> const &rows);

/// Inserts the stages; none of them is there yet.
void insertStages(SqlConnection const &connection, std::vector<std::int64_t> const &stages);
std::vector<std::int64_t> readStages(SqlConnection const &connection);

/// The entries of the project's colour scale; false when none is stored.
bool readColorScale(SqlConnection const &connection, QString *parameters);
void writeColorScale(SqlConnection const &connection, QString const &parameters);

} // namespace Zem::Measurement
