// ZemStructVector.h: StructVector, records in one piece of memory.
#pragma once

#include <type_traits>
#include <vector>

namespace Zem {

/// Any number of records that are nothing but their bytes: they may be copied and stored as such. Several threads may
/// read one vector, one may change it.
template <class Record>
requires std::is_trivially_copyable_v<Record>
using StructVector = std::vector<Record>;

} // namespace Zem
