// meas_names.h: names of tokens and series, and what they tell by themselves.
#pragma once

#include <ZemMeasProject.h>

#include <set>

namespace Zem::Measurement {

/// The number of the stage, and how many there are: tokens of every project.
inline constexpr QLatin1StringView STAGE_TOKEN{"stage"};
inline constexpr QLatin1StringView STAGE_COUNT_TOKEN{"stage.count"};

/// Whether a project gives the token by itself.
bool isBuiltIn(QString const &name);

/// The name, or the first of name_2, name_3, ... that is neither built in nor among `taken`.
QString uniqueName(QString const &name, std::set<QString> const &taken);

/// The token name of the column at `index` (from zero); never empty.
QString columnName(QString const &name, std::size_t index);

/// Whether a text may begin token names as it stands.
bool isTokenText(QString const &text);

/// What stands before the last point; empty without one.
QString groupOf(QString const &name);

/// The title, with the unit where that is no unit that can be converted.
QString displayText(ProjectToken const &token);

} // namespace Zem::Measurement
