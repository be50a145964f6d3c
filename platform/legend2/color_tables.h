// color_tables.h: the colours of the named colour maps.
#pragma once

#include <ZemLegend.h>

namespace Zem::Legend2 {

constexpr unsigned int COLOR_TABLE_SIZE = 1024;

/// COLOR_TABLE_SIZE colours at even distances, from that of the minimum to that of the maximum. They live as long as
/// the program. May be called from any thread.
Color const *colorTable(ColorMapName_t name);

} // namespace Zem::Legend2
