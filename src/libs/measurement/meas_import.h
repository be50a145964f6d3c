// meas_import.h: a table taken over into a project.
#pragma once

#include "meas_records.h"

#include <set>

namespace Zem::Measurement {

/// Works inside a transaction of the caller. Throws ImportError and ProjectError.
class TableImport
{
public:
    TableImport(SqlConnection const &connection, CsvTable const &table, ImportOptions const &options);

    ImportResult run();

private:
    void readStageNumbers();
    void checkStage(std::int64_t stage, std::size_t row) const;
    void orderRows();
    void chooseNames();

    void importColumn(CsvColumn const &column, QString const &name);
    ProjectToken describe(CsvColumn const &column, QString const &name) const;
    std::vector<ValueRow> collect(CsvColumn const &column) const;
    void replaceValues(ProjectToken const &token, std::vector<ValueRow> const &before,
                       std::vector<ValueRow> const &rows);
    void updateStages();
    void countChange();

    SqlConnection const &connection_;
    CsvTable const &table_;
    ImportOptions const &options_;
    ImportResult result_;
    std::set<QString> names_;
    CsvColumn const *stageColumn_ = nullptr;
    std::vector<std::int64_t> stages_;  ///< by row
    std::vector<std::size_t> rowOrder_; ///< rows by ascending stage
    std::vector<std::pair<CsvColumn const *, QString>> columns_;
    std::map<QString, ProjectToken> known_;
    std::int64_t nextId_ = 1;
    std::vector<std::int64_t> emptiedStages_; ///< that lost a value and are not in the table
    bool changed_ = false;
};

} // namespace Zem::Measurement
