#include <ZemMeasProject.h>

#include "meas_import.h"
#include "meas_records.h"
#include "meas_schema.h"
#include "meas_sql.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <chrono>
#include <limits>
#include <optional>

namespace Zem::Measurement {

/// The change counter of the project with the time when it was looked up.
struct Project::Revision
{
    QSqlQuery query;
    std::int64_t number = 0;
    std::optional<std::chrono::steady_clock::time_point> readAt;
};

Project::Project(QString const &location, OpenMode_t mode)
{
    bool const mayMake = mode == OpenMode_t::CREATE && !QFileInfo::exists(location);
    try {
        connection_ = std::make_unique<SqlConnection>(location, mode);
        prepareSchema(*connection_, mode);
    } catch (...) {
        connection_.reset();
        if (mayMake && QFileInfo(location).size() == 0) { // unless another process has made it meanwhile
            QFile::remove(location);
        }
        throw;
    }
    revision_.reset(new Revision{connection_->prepare(QStringLiteral("SELECT change FROM zem_project")), 0, {}});
}

Project::~Project() = default;

QString const &Project::name() const
{
    return connection_->name();
}

std::vector<unsigned int> Project::stages() const
{
    std::vector<unsigned int> stages;
    for (std::int64_t const stage : readStages(*connection_)) {
        if (stage < 0 || stage >= std::numeric_limits<unsigned int>::max()) {
            connection_->fail(QStringLiteral("the project is damaged: there is no stage %1").arg(stage));
        }
        stages.push_back(static_cast<unsigned int>(stage));
    }
    return stages;
}

std::vector<ProjectToken> Project::tokens() const
{
    return readTokens(*connection_);
}

std::int64_t Project::revision() const
{
    constexpr std::chrono::milliseconds KEPT{1};
    auto const now = std::chrono::steady_clock::now();
    if (revision_->readAt && now - *revision_->readAt < KEPT) {
        return revision_->number;
    }
    connection_->run(revision_->query);
    if (!revision_->query.next()) {
        connection_->fail(QStringLiteral("the project is damaged: it has no version"));
    }
    revision_->number = readWhole(*connection_, revision_->query, 0);
    revision_->query.finish(); // or it would keep writers out
    revision_->readAt = now;
    return revision_->number;
}

std::vector<StageValue> Project::values(unsigned int stage) const
{
    std::vector<StageValue> values;
    QSqlQuery query = connection_->prepare(
        QStringLiteral(
            "SELECT value.token, token.type, %1 FROM value JOIN token ON token.id = value.token WHERE stage = ?")
            .arg(QLatin1String(VALUE_COLUMNS)));
    query.addBindValue(static_cast<qlonglong>(stage));
    connection_->run(query);
    while (query.next()) {
        ColumnType_t const type = readType(*connection_, query, 1);
        values.push_back({readWhole(*connection_, query, 0), readValue(*connection_, query, 2, type)});
    }
    return values;
}

ImportResult Project::importTable(CsvTable const &table, ImportOptions const &options)
{
    SqlTransaction transaction(*connection_);
    if (connection_->kind() == SqlKind_t::POSTGRESQL) {
        connection_->execute(QStringLiteral("LOCK TABLE zem_project IN EXCLUSIVE MODE")); // one writer at a time
    }
    ImportResult const result = TableImport(*connection_, table, options).run();
    transaction.commit();
    revision_->readAt.reset();
    return result;
}

} // namespace Zem::Measurement
