#include "meas_view_records.h"

#include "meas_records.h"

#include <ZemParse.h>

namespace Zem::Measurement {

namespace {

unsigned int readStage(SqlConnection const &connection, QSqlQuery const &query, int column)
{
    std::int64_t const stage = readWhole(connection, query, column);
    if (stage < 0 || stage >= std::numeric_limits<unsigned int>::max()) {
        connection.fail(QStringLiteral("the project is damaged: there is no stage %1").arg(stage));
    }
    return static_cast<unsigned int>(stage);
}

bool hasViews(SqlConnection const &connection)
{
    return connection.tables().contains(QStringLiteral("view"));
}

std::int64_t nextId(SqlConnection const &connection, char const *table)
{
    QSqlQuery query =
        connection.execute(QStringLiteral("SELECT COALESCE(MAX(id), 0) FROM \"%1\"").arg(QLatin1String(table)));
    return query.next() ? readWhole(connection, query, 0) + 1 : 1;
}

/// Runs a statement with these numbers for its first question marks.
QSqlQuery runFor(SqlConnection const &connection, char const *statement, std::initializer_list<std::int64_t> numbers)
{
    QSqlQuery query = connection.prepare(QString::fromLatin1(statement));
    for (std::int64_t const number : numbers) {
        query.addBindValue(static_cast<qlonglong>(number));
    }
    connection.run(query);
    return query;
}

/// Reads what is stored as parameters; `what` is for the message.
template <class Record>
void readParameters(SqlConnection const &connection, QString const &what, QString parameters, Record *record)
{
    try {
        record->createFromParameterString(parameters);
    } catch (ParamError const &error) {
        connection.fail(QStringLiteral("the project is damaged: %1: %2").arg(what, error.getText()));
    }
}

void readStagesOfPictures(SqlConnection const &connection, ProjectView *view)
{
    QSqlQuery query = runFor(connection, "SELECT stage, kind FROM view_picture WHERE \"view\" = ?", {view->id});
    while (query.next()) {
        bool const isOverlay = readWhole(connection, query, 1) == static_cast<std::int64_t>(PictureKind_t::OVERLAY);
        (isOverlay ? view->stagesOfOverlays : view->stagesOfPictures).insert(readStage(connection, query, 0));
    }
}

void readStagesOfPoints(SqlConnection const &connection, ProjectPointSet *set)
{
    QSqlQuery query = runFor(connection, "SELECT stage, series_group FROM point_stage WHERE point_set = ?", {set->id});
    while (query.next()) {
        set->groups[readStage(connection, query, 0)] = query.value(1).toString();
    }
}

} // namespace

std::vector<ProjectView> readViews(SqlConnection const &connection)
{
    std::vector<ProjectView> views;
    if (!hasViews(connection)) {
        return views;
    }
    QSqlQuery query = connection.execute(QStringLiteral("SELECT id, name, camera, modified FROM \"view\" ORDER BY id"));
    while (query.next()) {
        ProjectView view;
        view.id = readWhole(connection, query, 0);
        view.name = query.value(1).toString();
        readParameters(connection, QStringLiteral("camera of '%1'").arg(view.name), query.value(2).toString(),
                       &view.camera);
        view.modified = static_cast<unsigned int>(readWhole(connection, query, 3));
        views.push_back(std::move(view));
    }
    for (ProjectView &view : views) {
        readStagesOfPictures(connection, &view);
    }
    return views;
}

std::vector<ProjectPointSet> readPointSets(SqlConnection const &connection)
{
    std::vector<ProjectPointSet> sets;
    if (!hasViews(connection)) {
        return sets;
    }
    QSqlQuery query = connection.execute(
        QStringLiteral("SELECT id, name, \"view\", roles, moved, painted, modified FROM point_set ORDER BY id"));
    while (query.next()) {
        ProjectPointSet set;
        set.id = readWhole(connection, query, 0);
        set.name = query.value(1).toString();
        set.view = readWhole(connection, query, 2);
        readParameters(connection, QStringLiteral("columns of '%1'").arg(set.name), query.value(3).toString(),
                       &set.columns);
        set.moved = readWhole(connection, query, 4) != 0;
        set.painted = readWhole(connection, query, 5) != 0;
        set.modified = static_cast<unsigned int>(readWhole(connection, query, 6));
        sets.push_back(std::move(set));
    }
    for (ProjectPointSet &set : sets) {
        readStagesOfPoints(connection, &set);
    }
    return sets;
}

void writeView(SqlConnection const &connection, ProjectView *view)
{
    bool const exists = view->id != 0;
    if (!exists) {
        view->id = nextId(connection, "view");
    }
    QSqlQuery query = connection.prepare(
        exists ? QStringLiteral("UPDATE \"view\" SET name = ?, camera = ?, modified = ? WHERE id = ?")
               : QStringLiteral("INSERT INTO \"view\" (name, camera, modified, id) VALUES (?, ?, ?, ?)"));
    query.addBindValue(view->name);
    query.addBindValue(view->camera.getParameterString());
    query.addBindValue(static_cast<qlonglong>(view->modified));
    query.addBindValue(static_cast<qlonglong>(view->id));
    connection.run(query);
}

void countChangeOfView(SqlConnection const &connection, std::int64_t view, unsigned int change)
{
    runFor(connection, "UPDATE \"view\" SET modified = ? WHERE id = ?", {change, view});
}

void writePointSet(SqlConnection const &connection, ProjectPointSet *set)
{
    bool const exists = set->id != 0;
    if (!exists) {
        set->id = nextId(connection, "point_set");
    }
    QSqlQuery query = connection.prepare(
        exists ? QStringLiteral("UPDATE point_set SET name = ?, \"view\" = ?, roles = ?, moved = ?, painted = ?, "
                                "modified = ? WHERE id = ?")
               : QStringLiteral("INSERT INTO point_set (name, \"view\", roles, moved, painted, modified, id) "
                                "VALUES (?, ?, ?, ?, ?, ?, ?)"));
    query.addBindValue(set->name);
    query.addBindValue(static_cast<qlonglong>(set->view));
    query.addBindValue(set->columns.getParameterString());
    query.addBindValue(set->moved ? 1 : 0);
    query.addBindValue(set->painted ? 1 : 0);
    query.addBindValue(static_cast<qlonglong>(set->modified));
    query.addBindValue(static_cast<qlonglong>(set->id));
    connection.run(query);
}

void writePointStage(SqlConnection const &connection, std::int64_t set, unsigned int stage, QString const &group)
{
    runFor(connection, "DELETE FROM point_stage WHERE point_set = ? AND stage = ?", {set, stage});
    QSqlQuery query =
        connection.prepare(QStringLiteral("INSERT INTO point_stage (point_set, stage, series_group) VALUES (?, ?, ?)"));
    query.addBindValue(static_cast<qlonglong>(set));
    query.addBindValue(static_cast<qlonglong>(stage));
    query.addBindValue(group);
    connection.run(query);
}

std::optional<StoredPicture> readPicture(SqlConnection const &connection, std::int64_t view, unsigned int stage,
                                         PictureKind_t kind)
{
    if (!hasViews(connection)) {
        return std::nullopt;
    }
    QSqlQuery query =
        runFor(connection, "SELECT file, type, pixels FROM view_picture WHERE \"view\" = ? AND stage = ? AND kind = ?",
               {view, stage, static_cast<std::int64_t>(kind)});
    if (!query.next()) {
        return std::nullopt;
    }
    return StoredPicture{query.value(0).toString(), static_cast<int>(readWhole(connection, query, 1)),
                         query.value(2).toByteArray()};
}

void writePicture(SqlConnection const &connection, std::int64_t view, unsigned int stage, PictureKind_t kind,
                  StoredPicture const &picture)
{
    runFor(connection, "DELETE FROM view_picture WHERE \"view\" = ? AND stage = ? AND kind = ?",
           {view, stage, static_cast<std::int64_t>(kind)});
    QSqlQuery query = connection.prepare(QStringLiteral(
        "INSERT INTO view_picture (\"view\", stage, kind, file, type, pixels) VALUES (?, ?, ?, ?, ?, ?)"));
    query.addBindValue(static_cast<qlonglong>(view));
    query.addBindValue(static_cast<qlonglong>(stage));
    query.addBindValue(static_cast<int>(kind));
    query.addBindValue(picture.file.isNull() ? QLatin1String("") : picture.file);
    query.addBindValue(picture.type);
    query.addBindValue(picture.pixels.isNull() ? QByteArray("") : picture.pixels);
    connection.run(query);
}

QString pointSetOfGroup(SqlConnection const &connection, QString const &group)
{
    QSqlQuery query = connection.prepare(
        QStringLiteral("SELECT point_set.name FROM point_stage JOIN point_set ON point_set.id = point_stage.point_set "
                       "WHERE point_stage.series_group = ?"));
    query.addBindValue(group);
    connection.run(query);
    return query.next() ? query.value(0).toString() : QString();
}

void requireStage(SqlConnection const &connection, unsigned int stage)
{
    QSqlQuery query = runFor(connection, "SELECT number FROM stage WHERE number = ?", {stage});
    if (!query.next()) {
        insertStages(connection, {stage});
    }
}

} // namespace Zem::Measurement
