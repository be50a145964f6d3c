// fig_alignment.h: where a content lies in a room larger than it.
// Layer: values. Internal to the library.
#pragma once

#include <ZemAlignment.h>

namespace Zem::Fig2 {

/// The part of the free room in front of the content.
constexpr double alignedRoom(Alignment_t alignment, double room)
{
    switch (alignment) {
    case ALIGN_CENTER:
        return room / 2.0;
    case ALIGN_END:
        return room;
    case ALIGN_BEGIN:
        break;
    }
    return 0.0;
}

} // namespace Zem::Fig2
