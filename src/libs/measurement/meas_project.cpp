#include <ZemMeasProject.h>

#include "meas_import.h"
#include "meas_point_import.h"
#include "meas_records.h"
#include "meas_schema.h"
#include "meas_series_import.h"
#include "meas_series_records.h"
#include "meas_sql.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <ZemParse.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>
#include <set>

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

namespace {

/// The tokens of number type that a list of names stands for.
std::vector<ProjectToken> selectNumbers(SqlConnection const &connection, QString const &names)
{
    std::vector<ProjectToken> const known = readTokens(connection);
    std::vector<ProjectToken> selected;
    std::set<std::int64_t> taken; // two names may stand for one token
    for (QString const &piece : names.split(QLatin1Char(','))) {
        QString const name = piece.trimmed();
        bool const isPrefix = name.endsWith(QLatin1Char('*'));
        bool isKnown = false;
        for (ProjectToken const &token : known) {
            if (!(isPrefix ? token.name.startsWith(name.chopped(1)) : token.name == name)) {
                continue;
            }
            isKnown = true;
            if (taken.insert(token.id).second) {
                selected.push_back(token);
            }
        }
        if (!isKnown) {
            connection.fail(QStringLiteral("there is no token '%1'").arg(name));
        }
    }
    for (ProjectToken const &token : selected) {
        if (token.type != ColumnType_t::NUMBER && token.type != ColumnType_t::INTEGER) {
            connection.fail(QStringLiteral("the values of '%1' are no numbers").arg(token.name));
        }
        if (token.unit.getUnit() != selected.front().unit.getUnit()) {
            connection.fail(
                QStringLiteral("'%1' and '%2' are different quantities").arg(selected.front().name, token.name));
        }
    }
    return selected;
}

double plainNumber(StoredValue const &value)
{
    auto const *whole = std::get_if<std::int64_t>(&value);
    return whole ? static_cast<double>(*whole) : std::get<double>(value);
}

double inBaseUnit(StoredValue const &value, UnitData const &unit)
{
    double const number = plainNumber(value);
    return unit.hasUnit() ? unit.getUnit()->toBase(number, unit.getCurrentUnit()) : number;
}

} // namespace

std::vector<double> Project::numbers(QString const &tokens, UnitData *unit) const
{
    std::vector<ProjectToken> const selected = selectNumbers(*connection_, tokens);
    *unit = selected.front().unit;
    std::vector<double> numbers;
    for (ProjectToken const &token : selected) {
        for (ValueRow const &row : readTokenValues(*connection_, token)) {
            numbers.push_back(inBaseUnit(row.value, token.unit));
        }
    }
    return numbers;
}

std::vector<double> Project::numbersByStage(ProjectToken const &token, std::vector<unsigned int> const &stages) const
{
    if (token.type == ColumnType_t::TEXT) {
        connection_->fail(QStringLiteral("the values of '%1' are no numbers").arg(token.name));
    }
    std::vector<double> numbers(stages.size(), std::numeric_limits<double>::quiet_NaN());
    auto stage = stages.begin();
    for (ValueRow const &row : readTokenValues(*connection_, token)) {
        stage = std::lower_bound(stage, stages.end(), row.stage,
                                 [](unsigned int a, std::int64_t b) { return std::int64_t(a) < b; });
        if (stage != stages.end() && *stage == row.stage) {
            numbers[static_cast<std::size_t>(stage - stages.begin())] = plainNumber(row.value);
        }
    }
    return numbers;
}

std::vector<ProjectSeries> Project::series() const
{
    return readSeries(*connection_);
}

std::vector<double> Project::seriesNumbers(ProjectSeries const &series) const
{
    return readSeriesNumbers(*connection_, series);
}

std::optional<ColorScale> Project::colorScale() const
{
    QString parameters;
    if (!readColorScale(*connection_, &parameters)) {
        return std::nullopt;
    }
    try {
        ColorScale scale;
        scale.createFromParameterString(parameters);
        return scale;
    } catch (ParamError const &error) {
        connection_->fail(QStringLiteral("the project is damaged: its colour scale: %1").arg(error.getText()));
    }
}

void Project::setColorScale(ColorScale const &scale)
{
    SqlTransaction transaction(*connection_);
    writeColorScale(*connection_, scale.getParameterString());
    connection_->execute(QStringLiteral("UPDATE zem_project SET change = change + 1"));
    transaction.commit();
    revision_->readAt.reset();
}

void Project::change(std::function<void()> const &work)
{
    SqlTransaction transaction(*connection_);
    connection_->lockProject();
    work();
    transaction.commit();
    revision_->readAt.reset();
}

ImportResult Project::importTable(CsvTable const &table, ImportOptions const &options)
{
    ImportResult result;
    change([&] { result = TableImport(*connection_, table, options).run(); });
    return result;
}

SeriesResult Project::importSeries(CsvTable const &table, SeriesOptions const &options)
{
    SeriesResult result;
    change([&] {
        requireNoPoints(*connection_, table.fileName, seriesGroup(table, options));
        result = SeriesImport(*connection_, table, options).run();
    });
    return result;
}

} // namespace Zem::Measurement
