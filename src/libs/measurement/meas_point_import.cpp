#include "meas_point_import.h"

#include "meas_names.h"
#include "meas_point_grid.h"
#include "meas_records.h"
#include "meas_series_import.h"

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

constexpr QString PointColumns::*ROLES[] = {&PointColumns::x,  &PointColumns::y,     &PointColumns::z,
                                            &PointColumns::dx, &PointColumns::dy,    &PointColumns::dz,
                                            &PointColumns::id, &PointColumns::valid, &PointColumns::value};

double numberAt(CsvColumn const &column, std::size_t row)
{
    if (column.isMissing(row)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return column.type == ColumnType_t::NUMBER ? column.numbers[row] : static_cast<double>(column.integers[row]);
}

} // namespace

unsigned int nextChange(SqlConnection const &connection)
{
    QSqlQuery query = connection.execute(QStringLiteral("SELECT change FROM zem_project"));
    return static_cast<unsigned int>(query.next() ? readWhole(connection, query, 0) + 1 : 1);
}

ProjectView findView(SqlConnection const &connection, QString const &name)
{
    for (ProjectView const &view : readViews(connection)) {
        if (view.name == name) {
            return view;
        }
    }
    ProjectView view;
    view.name = name;
    return view;
}

void requireTokenName(QString const &source, QString const &name)
{
    if (name.isEmpty() || makeTokenName(name) != name) {
        throw ImportError(
            QStringLiteral("%1: the name \"%2\" holds more than letters, digits and . _ - + \\, or nothing")
                .arg(source, name));
    }
}

void requireStageNumber(QString const &source, unsigned int stage)
{
    if (stage == std::numeric_limits<unsigned int>::max()) {
        throw ImportError(QStringLiteral("%1: %2 cannot be the number of a stage").arg(source).arg(stage));
    }
}

void requireNoPoints(SqlConnection const &connection, QString const &source, QString const &group)
{
    QString const set = pointSetOfGroup(connection, group);
    if (!set.isEmpty()) {
        throw ImportError(
            QStringLiteral("%1: the series of '%2' are the points of '%3': import points").arg(source, group, set));
    }
}

PointImport::PointImport(SqlConnection const &connection, CsvTable const &table, PointOptions const &options)
    : connection_(connection), table_(table), options_(options)
{
    result_.set = options.set;
    result_.group = QStringLiteral("%1.%2").arg(options.set).arg(options.stage);
    result_.points = table.rowCount();
}

PointResult PointImport::run()
{
    requireTokenName(table_.fileName, options_.set);
    requireTokenName(table_.fileName, options_.view);
    requireStageNumber(table_.fileName, options_.stage);
    chooseColumns();
    findSet();
    unsigned int const before = nextChange(connection_);
    SeriesOptions const series{result_.group, {}};
    series_ = SeriesImport(connection_, table_, series).run();
    for (auto const role : ROLES) {
        parts_.*role = partOf(result_.columns.*role);
    }
    requireSameColumns();
    requireGrid();
    storeSet(nextChange(connection_) != before);
    return result_;
}

/// Counters stand still when everything is as it was.
void PointImport::storeSet(bool haveNumbersChanged)
{
    ProjectPointSet const old = set_;
    ProjectView view = findView(connection_, options_.view);
    set_.view = view.id;
    set_.columns = parts_;
    set_.moved = options_.moved;
    set_.painted = options_.painted;
    set_.groups[options_.stage] = result_.group;
    if (!haveNumbersChanged && view.id != 0 && set_ == old) {
        return;
    }
    unsigned int const change = nextChange(connection_);
    view.modified = change;
    writeView(connection_, &view);
    countChangeOfView(connection_, old.view, change);
    set_.view = view.id;
    set_.modified = change;
    writePointSet(connection_, &set_);
    writePointStage(connection_, set_.id, options_.stage, result_.group);
    requireStage(connection_, options_.stage);
    connection_.execute(QStringLiteral("UPDATE zem_project SET change = change + 1"));
}

void PointImport::chooseColumns()
{
    result_.columns = detectPointColumns(table_);
    for (auto const role : ROLES) {
        QString const &wish = options_.columns.*role;
        if (!wish.isEmpty()) {
            requireColumn(wish);
            result_.columns.*role = wish;
        }
    }
    if (result_.columns.x.isEmpty() || result_.columns.y.isEmpty()) {
        throw ImportError(
            QStringLiteral("%1: no column is known to hold %2: name it")
                .arg(table_.fileName, result_.columns.x.isEmpty() ? QStringLiteral("x") : QStringLiteral("y")));
    }
}

void PointImport::requireColumn(QString const &name) const
{
    CsvColumn const *const column = table_.findColumn(name);
    if (!column || (column->type != ColumnType_t::NUMBER && column->type != ColumnType_t::INTEGER)) {
        throw ImportError(QStringLiteral("%1: there is no column \"%2\" of numbers").arg(table_.fileName, name));
    }
}

QString PointImport::partOf(QString const &column) const
{
    qsizetype const index = column.isEmpty() ? -1 : series_.columns.indexOf(column);
    return index < 0 ? QString() : series_.series[index].mid(result_.group.size() + 1);
}

void PointImport::findSet()
{
    for (ProjectPointSet const &set : readPointSets(connection_)) {
        if (set.name == options_.set) {
            set_ = set;
        }
    }
    set_.name = options_.set;
}

void PointImport::requireGrid() const
{
    if (!options_.painted) {
        return;
    }
    CsvColumn const &x = *table_.findColumn(result_.columns.x);
    CsvColumn const &y = *table_.findColumn(result_.columns.y);
    std::vector<BaVec3d<double>> points(table_.rowCount());
    for (std::size_t row = 0; row < points.size(); ++row) {
        points[row] = {numberAt(x, row), numberAt(y, row), 0.0};
    }
    std::erase_if(points, [](BaVec3d<double> const &point) { return std::isnan(point.x + point.y); });
    if (!PointGrid::find(points)) {
        throw ImportError(QStringLiteral("%1: the points lie on no grid, so nothing can be painted between them")
                              .arg(table_.fileName));
    }
}

/// Stages that are read alike are shown alike; a set of one stage may become another one.
void PointImport::requireSameColumns() const
{
    bool const hasOthers = std::any_of(set_.groups.begin(), set_.groups.end(),
                                       [this](auto const &group) { return group.first != options_.stage; });
    if (hasOthers && set_.columns != parts_) {
        throw ImportError(QStringLiteral("%1: the points of '%2' have other columns than at the other stages")
                              .arg(table_.fileName, set_.name));
    }
}

} // namespace Zem::Measurement
