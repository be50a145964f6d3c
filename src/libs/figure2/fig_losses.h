// fig_losses.h: what the file of a figure does not keep.
// Layer: document. Internal to the library.
#pragma once

#include <ZemErrorLog.h>

namespace Zem::Fig2 {

class Figure;

/// Tells of each element of older files whose own snapshot was not saved with it.
void logLosses(Figure const &figure, ErrorLog *log);

} // namespace Zem::Fig2
