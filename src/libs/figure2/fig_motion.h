// fig_motion.h: the motion of a transformation that must not be changed.
// Layer: services. Internal to the library.
#pragma once

#include "ZemFig2Transformation.h"

namespace Zem::Fig2 {

/// Asking for the motion changes nothing, though the operation is not declared so; a copy would have to be asked
/// otherwise, and not every transformation has one.
inline Zem::Transformation motionOf(Transformation const &transformation)
{
    return const_cast<Transformation &>(transformation).getTransformation();
}

} // namespace Zem::Fig2
