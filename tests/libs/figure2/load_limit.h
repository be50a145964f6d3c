// load_limit.h: how much memory loading a file may hold at its peak.
#pragma once

#include <cstddef>

namespace Zem::Fig2 {

/// Elements, names and texts take a small multiple of their bytes in the file; what a damaged file only claims takes
/// nothing.
constexpr std::size_t loadLimit(std::size_t fileSize)
{
    return 16 * fileSize + (1 << 20);
}

} // namespace Zem::Fig2
