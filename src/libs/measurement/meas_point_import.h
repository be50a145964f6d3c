// meas_point_import.h: a table taken over into a project as the points of a set at a stage.
#pragma once

#include "meas_view_records.h"

namespace Zem::Measurement {

/// Works inside a transaction of the caller. Throws ImportError and ProjectError.
class PointImport
{
public:
    PointImport(SqlConnection const &connection, CsvTable const &table, PointOptions const &options);

    PointResult run();

private:
    void chooseColumns();
    void requireColumn(QString const &name) const;
    /// The last part of the name of the series that a column has become.
    QString partOf(QString const &column) const;
    void findSet();
    void requireSameColumns() const;
    void requireGrid() const;
    void storeSet(bool haveNumbersChanged);

    SqlConnection const &connection_;
    CsvTable const &table_;
    PointOptions const &options_;
    PointResult result_;
    SeriesResult series_;
    PointColumns parts_;
    ProjectPointSet set_;
};

/// The number of the next change of the project: what changes now is marked with it.
unsigned int nextChange(SqlConnection const &connection);

/// The view of that name; without an id when there is none.
ProjectView findView(SqlConnection const &connection, QString const &name);

/// Throws ImportError, which names `source`, for a text that cannot be a token.
void requireTokenName(QString const &source, QString const &name);

/// Throws ImportError, which names `source`, for a group of series that holds the points of a set.
void requireNoPoints(SqlConnection const &connection, QString const &source, QString const &group);

/// Throws ImportError, which names `source`, for the number that means no stage.
void requireStageNumber(QString const &source, unsigned int stage);

} // namespace Zem::Measurement
