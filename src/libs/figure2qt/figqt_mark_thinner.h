// figqt_mark_thinner.h: leaves out marks that others hide.
#pragma once

#include "figqt_canvas.h"

namespace Zem::Fig2Qt {

struct PlacedMark
{
    QPointF at;
    Color color;
};

/// Those of the marks, in their order, of which something can be seen at the corners of a grid of `cell` millimetres,
/// or of 1/48 of the mark if that is more, when later ones that are opaque lie above. Places count to the nearest
/// corner. Time follows the marks, memory the area they cover.
std::vector<PlacedMark> withoutHidden(Mark const &mark, std::vector<PlacedMark> const &places, double cell);

} // namespace Zem::Fig2Qt
