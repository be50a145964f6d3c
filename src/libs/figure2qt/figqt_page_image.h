// figqt_page_image.h: the pixels of a page.
#pragma once

#include <QtGui/QImage>

namespace Zem::Fig2Qt {

/// A white picture of Format_RGB32; a null one when there is not enough memory.
QImage createPageImage(int width, int height);

} // namespace Zem::Fig2Qt
