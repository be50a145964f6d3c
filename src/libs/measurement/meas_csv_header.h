// meas_csv_header.h: column names and units out of header cells.
#pragma once

#include <ZemUnit.h>

#include <QtCore/QString>

namespace Zem::Measurement {

struct ColumnTitle
{
    QString name;
    QString unitText; ///< empty when the cell names none
};

/// Takes "force [kN]", "force (kN)" and "force, kN" apart; a note in parentheses behind the last form is dropped.
/// Parentheses that hold no unit stay in the name, as in "CO(GT)".
ColumnTitle parseColumnTitle(QString const &header);

/// The same for "force kN", the form of VARIABLES lists: the last word counts as unit only when it is a known one.
ColumnTitle parseVariableTitle(QString const &header);

/// A unit of any quantity in any usual spelling ("g" is a mass); without quantity when the text is none.
UnitData findUnit(QString const &text);

/// The same with the meaning that fits the column: "g" below "Acceleration" or "ax" is no mass.
UnitData findColumnUnit(QString const &columnName, QString const &text);

/// Whether a text has the look of a unit, known or not: "W/m^2", "°C", "mg/L".
bool looksLikeUnit(QString const &text);

/// Takes enclosing brackets away; "-" and "1" say that there is no unit and become empty.
QString plainUnitText(QString const &text);

} // namespace Zem::Measurement
