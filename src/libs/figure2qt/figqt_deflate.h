// figqt_deflate.h: packs bytes on all cores.
#pragma once

#include <string>
#include <string_view>

namespace Zem::Fig2Qt {

/// A stream of zlib, `level` from 2 to 5. Large ones are packed in pieces on all cores, each of which knows what stands
/// before it; the bytes do not depend on how many cores there are. Throws std::bad_alloc.
std::string deflated(std::string_view bytes, int level);

} // namespace Zem::Fig2Qt
