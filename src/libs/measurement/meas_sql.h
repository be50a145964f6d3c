// meas_sql.h: a connection to an SQL database that reports errors by exceptions.
#pragma once

#include <ZemMeasProject.h>

#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>

namespace Zem::Measurement {

enum class SqlKind_t { SQLITE, POSTGRESQL };

/// Owns a connection of its own name; nothing stays registered behind it.
class SqlConnection
{
public:
    /// Throws ProjectError when the database cannot be opened. An SQLite file that is not there is made with CREATE
    /// only.
    SqlConnection(QString const &location, OpenMode_t mode);
    ~SqlConnection();
    SqlConnection(SqlConnection const &) = delete;
    SqlConnection &operator=(SqlConnection const &) = delete;

    QString const &name() const { return name_; }
    SqlKind_t kind() const { return kind_; }

    /// Prepared; to be run by run(). Queries must not outlive the connection.
    QSqlQuery prepare(QString const &statement) const;
    /// Throws ProjectError with the reason of the database.
    void run(QSqlQuery &query) const;
    QSqlQuery execute(QString const &statement) const;
    QStringList tables() const;
    /// Within a transaction, until its end: keeps other writers of a project out.
    void lockProject() const;

    [[noreturn]] void fail(QString const &reason) const;

private:
    void openFile(QString const &fileName, OpenMode_t mode);
    void openServer(QString const &url);
    void open();
    void close();
    [[noreturn]] void fail(QSqlError const &error) const;

    QString name_;
    QString connectionName_;
    SqlKind_t kind_ = SqlKind_t::SQLITE;
    QSqlDatabase database_;
};

/// Rolls back unless commit() came through.
class SqlTransaction
{
public:
    explicit SqlTransaction(SqlConnection const &connection);
    ~SqlTransaction();
    SqlTransaction(SqlTransaction const &) = delete;
    SqlTransaction &operator=(SqlTransaction const &) = delete;

    void commit();

private:
    SqlConnection const &connection_;
    bool open_ = true;
};

} // namespace Zem::Measurement
