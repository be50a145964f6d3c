#include "ZemFig2SnapshotFilter.h"

namespace Zem::Fig2 {

SnapshotElementFilter::~SnapshotElementFilter() = default;

bool SnapshotAllElementFilter::isFiltered(Element const *) const
{
    return false;
}

} // namespace Zem::Fig2
