// figqt_stroke.h: from the line style of an element to the outline of a canvas.
#pragma once

#include "figqt_canvas.h"

#include <ZemFig2LineStyle.h>

#include <optional>

namespace Zem::Fig2Qt {

/// Nothing for a style that draws no line. The width times `scale`, not thinner than `hairline`; dots and dashes are
/// multiples of the width. Sharp lines end at their points; so round dashes are shortened by what their ends add.
std::optional<Stroke> toStroke(Fig2::LineStyle const &style, double scale, double hairline);

} // namespace Zem::Fig2Qt
