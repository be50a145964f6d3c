// figqt_picture_ink.h: puts pictures on the pixels of a page.
#pragma once

#include "figqt_clip_area.h"
#include "figqt_picture.h"

#include <QtGui/QTransform>

namespace Zem::Fig2Qt {

/// Lays a part of a picture over a page of Format_RGB32 as far as the clip is open. `toPixels` stretches and moves, it
/// neither turns nor mirrors. Pixels of the page at the border of the part are blended by how much of them it covers.
void layPicture(Picture const &picture, QRectF const &part, QTransform const &toPixels, ClipArea const &clip,
                QImage *page);

} // namespace Zem::Fig2Qt
