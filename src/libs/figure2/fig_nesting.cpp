#include "fig_nesting.h"

#include <ZemStream.h>
#include <ZemTranslate.h>

namespace Zem::Fig2 {

thread_local unsigned int NestingLevel::_depth = 0;

NestingLevel::NestingLevel(unsigned int levels) : levels_(levels)
{
    if (levels > MAXIMUM - _depth)
        throw IO::StreamException(translate("Figure_SnapshotData_err", "snapshots nested too deeply"));
    _depth += levels;
}

} // namespace Zem::Fig2
