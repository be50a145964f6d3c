#include "meas_schema.h"

#include <QtCore/QFileInfo>

namespace Zem::Measurement {

namespace {

// Stages are kept apart from the values, for a stage may have none. A value stands in the column of its token's type.
constexpr char const *TABLES[] = {
    "CREATE TABLE zem_project (version INTEGER NOT NULL, change BIGINT NOT NULL)",
    "CREATE TABLE stage (number BIGINT PRIMARY KEY)",
    "CREATE TABLE token (id BIGINT PRIMARY KEY, name TEXT NOT NULL UNIQUE, title TEXT NOT NULL, type INTEGER NOT NULL, "
    "quantity TEXT NOT NULL, unit TEXT NOT NULL, modified BIGINT NOT NULL)",
    "CREATE TABLE value (token BIGINT NOT NULL, stage BIGINT NOT NULL, number DOUBLE PRECISION, integer BIGINT, text "
    "TEXT, "
    "PRIMARY KEY (token, stage))",
    "CREATE INDEX value_of_stage ON value (stage)",
};

// The series of one table have the same rows. Numbers stand in chunks of their bytes: "BYTEA" is the word of
// PostgreSQL, SQLite stores bytes as they are under any word.
constexpr char const *SERIES_TABLES[] = {
    "CREATE TABLE series_table (id BIGINT PRIMARY KEY, name TEXT NOT NULL UNIQUE, row_count BIGINT NOT NULL)",
    "CREATE TABLE series (id BIGINT PRIMARY KEY, name TEXT NOT NULL UNIQUE, title TEXT NOT NULL, type INTEGER NOT "
    "NULL, "
    "quantity TEXT NOT NULL, unit TEXT NOT NULL, modified BIGINT NOT NULL, series_table BIGINT NOT NULL)",
    "CREATE TABLE series_chunk (series BIGINT NOT NULL, chunk BIGINT NOT NULL, data BYTEA NOT NULL, "
    "PRIMARY KEY (series, chunk))",
};

// "view" is a word of SQL, so it stands in quotes. A picture is the name of a file or its packed pixels.
constexpr char const *VIEW_TABLES[] = {
    "CREATE TABLE \"view\" (id BIGINT PRIMARY KEY, name TEXT NOT NULL UNIQUE, camera TEXT NOT NULL, "
    "modified BIGINT NOT NULL)",
    "CREATE TABLE view_picture (\"view\" BIGINT NOT NULL, stage BIGINT NOT NULL, kind INTEGER NOT NULL, "
    "file TEXT NOT NULL, type INTEGER NOT NULL, pixels BYTEA NOT NULL, PRIMARY KEY (\"view\", stage, kind))",
    "CREATE TABLE point_set (id BIGINT PRIMARY KEY, name TEXT NOT NULL UNIQUE, \"view\" BIGINT NOT NULL, "
    "roles TEXT NOT NULL, moved INTEGER NOT NULL, painted INTEGER NOT NULL, modified BIGINT NOT NULL)",
    "CREATE TABLE point_stage (point_set BIGINT NOT NULL, stage BIGINT NOT NULL, series_group TEXT NOT NULL, "
    "PRIMARY KEY (point_set, stage))",
};

template <class Tables>
void createAll(SqlConnection const &connection, Tables const &tables)
{
    for (char const *const table : tables) {
        connection.execute(QString::fromLatin1(table));
    }
}

/// The tables that releases behind `version` have added.
void createNewerTables(SqlConnection const &connection, int version)
{
    if (version < 2) {
        createAll(connection, SERIES_TABLES);
    }
    if (version < 3) {
        createAll(connection, VIEW_TABLES);
    }
}

void createTables(SqlConnection const &connection)
{
    SqlTransaction transaction(connection);
    createAll(connection, TABLES);
    createNewerTables(connection, 1);
    connection.execute(QStringLiteral("INSERT INTO zem_project (version, change) VALUES (%1, 0)").arg(SCHEMA_VERSION));
    transaction.commit();
}

std::int64_t readNumber(SqlConnection const &connection, char const *statement)
{
    QSqlQuery query = connection.execute(QString::fromLatin1(statement));
    return query.next() ? query.value(0).toLongLong() : 0;
}

/// SQLite itself notices missing pages only when it comes across them.
void requireWholeFile(SqlConnection const &connection)
{
    std::int64_t const size = readNumber(connection, "PRAGMA page_count") * readNumber(connection, "PRAGMA page_size");
    if (QFileInfo(connection.name()).size() < size) {
        connection.fail(QStringLiteral("the file is damaged: its end is missing"));
    }
}

int readVersion(SqlConnection const &connection)
{
    QSqlQuery query = connection.execute(QStringLiteral("SELECT version FROM zem_project"));
    bool number = false;
    int const version = query.next() ? query.value(0).toInt(&number) : 0;
    if (!number || version < 1) {
        connection.fail(QStringLiteral("the project is damaged: it has no version"));
    }
    return version;
}

void migrate(SqlConnection const &connection)
{
    SqlTransaction transaction(connection);
    connection.lockProject();
    if (int const version = readVersion(connection); version < SCHEMA_VERSION) { // unless another process was faster
        createNewerTables(connection, version);
        connection.execute(QStringLiteral("UPDATE zem_project SET version = %1").arg(SCHEMA_VERSION));
    }
    transaction.commit();
}

} // namespace

void prepareSchema(SqlConnection const &connection, OpenMode_t mode)
{
    if (connection.kind() == SqlKind_t::SQLITE) {
        connection.execute(QStringLiteral("PRAGMA schema_version")); // the first look into the file
        requireWholeFile(connection);
    }
    QStringList const tables = connection.tables();
    if (tables.isEmpty() && mode == OpenMode_t::CREATE) {
        return createTables(connection);
    }
    if (!tables.contains(QStringLiteral("zem_project"))) {
        connection.fail(QStringLiteral("this is no measurement project"));
    }
    int const version = readVersion(connection);
    if (version > SCHEMA_VERSION) {
        connection.fail(QStringLiteral("the project has version %1, newer than %2, the last one known here")
                            .arg(version)
                            .arg(SCHEMA_VERSION));
    }
    if (version < SCHEMA_VERSION && mode != OpenMode_t::READ) {
        migrate(connection);
    }
}

} // namespace Zem::Measurement
