// meas_series_import.h: the columns of a table taken over into a project as series.
#pragma once

#include "meas_series_records.h"

#include <map>

namespace Zem::Measurement {

/// Works inside a transaction of the caller. Throws ImportError and ProjectError.
class SeriesImport
{
public:
    SeriesImport(SqlConnection const &connection, CsvTable const &table, SeriesOptions const &options);

    SeriesResult run();

private:
    void readKnown();
    void chooseColumns();
    void addColumn(std::size_t index);
    void requireFreeName(QString const &name) const;
    void prepareTable();
    void importColumn(CsvColumn const &column, QString const &name);
    ProjectSeries describe(CsvColumn const &column, QString const &name) const;
    void removeOthers();
    void countChange();

    SqlConnection const &connection_;
    CsvTable const &table_;
    SeriesOptions const &options_;
    SeriesResult result_;
    std::set<QString> tokens_;
    std::map<QString, ProjectSeries> known_;
    std::set<QString> names_;
    std::vector<std::pair<CsvColumn const *, QString>> columns_;
    std::int64_t nextId_ = 1;
    std::int64_t tableId_ = 0;
    std::int64_t change_ = 0; ///< number of this change of the project
    bool changed_ = false;
};

} // namespace Zem::Measurement
