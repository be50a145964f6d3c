#include "meas_import.h"

#include "meas_names.h"
#include "meas_series_records.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace Zem::Measurement {

namespace {

constexpr std::int64_t MAX_STAGE = std::numeric_limits<unsigned int>::max() - 1; // the largest number means no stage

StoredValue valueAt(CsvColumn const &column, std::size_t row)
{
    switch (column.type) {
    case ColumnType_t::NUMBER:
        return column.numbers[row];
    case ColumnType_t::TEXT:
        return column.texts[row];
    default:
        return column.integers[row];
    }
}

/// Whether values of the two tokens mean the same when they are stored alike.
bool isSameKind(ProjectToken const &a, ProjectToken const &b)
{
    return a.type == b.type && a.unit == b.unit && a.unitText == b.unitText;
}

} // namespace

TableImport::TableImport(SqlConnection const &connection, CsvTable const &table, ImportOptions const &options)
    : connection_(connection), table_(table), options_(options)
{
}

ImportResult TableImport::run()
{
    readStageNumbers();
    orderRows();
    for (ProjectToken const &token : readTokens(connection_)) {
        known_[token.name] = token;
        nextId_ = std::max(nextId_, token.id + 1);
    }
    chooseNames();
    for (auto const &[column, name] : columns_) {
        importColumn(*column, name);
    }
    updateStages();
    countChange();
    result_.stages = stages_.size();
    return result_;
}

void TableImport::readStageNumbers()
{
    stages_.resize(table_.rowCount());
    if (options_.stageColumn.isEmpty()) {
        std::iota(stages_.begin(), stages_.end(), std::int64_t(options_.firstStage));
    } else {
        stageColumn_ = table_.findColumn(options_.stageColumn);
        if (!stageColumn_ || stageColumn_->type != ColumnType_t::INTEGER) {
            throw ImportError(QStringLiteral("%1: there is no column \"%2\" of whole numbers for the stages")
                                  .arg(table_.fileName, options_.stageColumn));
        }
        stages_ = stageColumn_->integers;
    }
    for (std::size_t row = 0; row < stages_.size(); ++row) {
        checkStage(stages_[row], row);
    }
}

void TableImport::checkStage(std::int64_t stage, std::size_t row) const
{
    if (stage >= 0 && stage <= MAX_STAGE) {
        return;
    }
    QString const reason = stage == CsvColumn::MISSING
                               ? QStringLiteral("the number of the stage is missing")
                               : QStringLiteral("%1 cannot be the number of a stage").arg(stage);
    throw ImportError(QStringLiteral("%1:%2: %3").arg(table_.fileName).arg(table_.lines[row]).arg(reason));
}

void TableImport::orderRows()
{
    rowOrder_.resize(stages_.size());
    std::iota(rowOrder_.begin(), rowOrder_.end(), std::size_t(0));
    std::stable_sort(rowOrder_.begin(), rowOrder_.end(), [this](auto a, auto b) { return stages_[a] < stages_[b]; });
    auto const twice = std::adjacent_find(rowOrder_.begin(), rowOrder_.end(),
                                          [this](auto a, auto b) { return stages_[a] == stages_[b]; });
    if (twice != rowOrder_.end()) {
        throw ImportError(QStringLiteral("%1:%2: stage %3 stands in line %4 already")
                              .arg(table_.fileName)
                              .arg(table_.lines[*(twice + 1)])
                              .arg(stages_[*twice])
                              .arg(table_.lines[*twice]));
    }
}

void TableImport::chooseNames()
{
    QString const prefix = options_.prefix;
    if (!isTokenText(prefix)) {
        throw ImportError(QStringLiteral("%1: the prefix \"%2\" holds more than letters, digits and . _ - + \\")
                              .arg(table_.fileName, prefix));
    }
    std::set<QString> const series = readSeriesNames(connection_);
    for (CsvColumn const &column : table_.columns) {
        if (&column == stageColumn_) {
            continue;
        }
        auto const index = static_cast<std::size_t>(&column - table_.columns.data());
        QString const name = uniqueName(prefix + columnName(column.name, index), names_);
        if (series.contains(name)) {
            throw ImportError(QStringLiteral("%1: '%2' is a series of the project already").arg(table_.fileName, name));
        }
        columns_.emplace_back(&column, name);
        names_.insert(name);
        result_.tokens << name;
    }
}

void TableImport::importColumn(CsvColumn const &column, QString const &name)
{
    auto const found = known_.find(name);
    bool const exists = found != known_.end();
    ProjectToken token = describe(column, name);
    std::vector<ValueRow> const rows = collect(column);
    std::vector<ValueRow> before;
    bool changed = true;
    if (exists) {
        before = readTokenValues(connection_, found->second);
        changed = before != rows || !isSameKind(found->second, token);
        token.modified = found->second.modified + (changed ? 1u : 0u);
    } else {
        token.modified = 1;
        ++nextId_;
    }
    if (changed || token.title != found->second.title) {
        writeToken(connection_, token, exists);
        changed_ = true;
    }
    if (changed) {
        replaceValues(token, before, rows);
        result_.changed << name;
    }
    result_.values += rows.size();
}

/// A token that exists keeps its type where the table has no value to tell it.
ProjectToken TableImport::describe(CsvColumn const &column, QString const &name) const
{
    auto const found = known_.find(name);
    bool const exists = found != known_.end();
    ProjectToken token;
    token.id = exists ? found->second.id : nextId_;
    token.name = name;
    token.title = column.name;
    token.type = column.type;
    token.unit = column.unit;
    token.unitText = column.unit.hasUnit() ? column.unit.getUnitName() : column.unitText;
    if (column.type == ColumnType_t::EMPTY) {
        token.type = exists ? found->second.type : ColumnType_t::TEXT;
    }
    return token;
}

std::vector<ValueRow> TableImport::collect(CsvColumn const &column) const
{
    std::vector<ValueRow> rows;
    rows.reserve(rowOrder_.size());
    for (std::size_t const row : rowOrder_) {
        if (!column.isMissing(row)) {
            rows.push_back({stages_[row], valueAt(column, row)});
        }
    }
    return rows;
}

void TableImport::replaceValues(ProjectToken const &token, std::vector<ValueRow> const &before,
                                std::vector<ValueRow> const &rows)
{
    if (!before.empty()) {
        deleteTokenValues(connection_, token.id);
    }
    insertTokenValues(connection_, token.id, rows);
    for (ValueRow const &row : before) {
        emptiedStages_.push_back(row.stage);
    }
}

/// Stages of the table come to stay; those that held nothing but replaced values go.
void TableImport::updateStages()
{
    std::vector<std::int64_t> wanted = stages_;
    std::sort(wanted.begin(), wanted.end());
    std::vector<std::int64_t> const existing = readStages(connection_);
    std::vector<std::int64_t> added;
    std::set_difference(wanted.begin(), wanted.end(), existing.begin(), existing.end(), std::back_inserter(added));
    insertStages(connection_, added);

    std::sort(emptiedStages_.begin(), emptiedStages_.end());
    auto const end = std::unique(emptiedStages_.begin(), emptiedStages_.end());
    std::vector<std::int64_t> left;
    std::set_difference(emptiedStages_.begin(), end, wanted.begin(), wanted.end(), std::back_inserter(left));
    QSqlQuery query = connection_.prepare(QStringLiteral(
        "DELETE FROM stage WHERE number = ? AND NOT EXISTS (SELECT 1 FROM value WHERE value.stage = stage.number)"));
    for (std::int64_t const stage : left) {
        query.bindValue(0, static_cast<qlonglong>(stage));
        connection_.run(query);
    }
    changed_ = changed_ || !added.empty() || !left.empty();
}

void TableImport::countChange()
{
    if (changed_) {
        connection_.execute(QStringLiteral("UPDATE zem_project SET change = change + 1"));
    }
}

} // namespace Zem::Measurement
