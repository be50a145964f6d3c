// ZemAlignment.h: where something lies along one direction.
#pragma once

namespace Zem {

/// Begin is left or top, end is right or bottom. Stored in files as these numbers.
enum Alignment_t { ALIGN_BEGIN = 0, ALIGN_CENTER = 1, ALIGN_END = 2 };

} // namespace Zem
