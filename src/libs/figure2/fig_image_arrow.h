// fig_image_arrow.h: the arrow heads of marks on a picture.
// Layer: painting. Internal to the library.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2LineStyle.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"

#include <ZemPolygon2d.h>
#include <ZemVec.h>

namespace Zem::Fig2 {

/// The length of the head of a line of this width and length, page millimetres. The smallest head is deliberately not
/// limited by the length of the line.
double arrowHeadLength(double lineWidth, double length);

/// Draws the head at `tip`, pointing away from `other`. The result is where the line is to end. `head` receives the
/// outline: who draws many hands in the same one, which then keeps its memory.
BaVec2d<double> drawArrowHead(Painter *painter, BaVec2d<double> const &tip, BaVec2d<double> const &other, double length,
                              FillStyle const &fill, Rotation const &rotation, Polygon2d *head);

} // namespace Zem::Fig2
