// meas_schema.h: the tables of a project.
#pragma once

#include "meas_sql.h"

namespace Zem::Measurement {

/// Raised with every change of the tables; a project of a higher version is refused.
inline constexpr int SCHEMA_VERSION = 3; // 2: series; 3: views

/// Throws ProjectError when the database holds no project that this release can read. With CREATE an empty database
/// becomes one. Unless the project is only read, one of an older release is brought up to this one.
void prepareSchema(SqlConnection const &connection, OpenMode_t mode);

} // namespace Zem::Measurement
