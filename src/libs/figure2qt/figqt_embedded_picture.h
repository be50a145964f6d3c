// figqt_embedded_picture.h: pictures on their way into a file.
#pragma once

#include "figqt_canvas.h"

#include <QtCore/QByteArray>

#include <string>
#include <vector>

namespace Zem::Fig2Qt {

/// What goes into a file of a picture that is placed on a page.
struct Excerpt
{
    QRectF part;   ///< of the picture, in its pixels; holds all that shows
    int width = 0; ///< pixels in the file
    int height = 0;
};

/// All of the picture, or only what shows when that is less than half of it; no more pixels than `dpi` to the inch of
/// the page, and no more than there are.
Excerpt excerptOf(PlacedPicture const &placed, double dpi);
/// The pixels of the picture itself where they are what is wanted.
Picture cutOut(Picture const &picture, Excerpt const &excerpt);

/// Rows of `rowBytes` bytes, each as its difference to its neighbours by the filters of PNG, and all packed by zlib:
/// what PNG and PDF have in common. `pixelBytes` tells the neighbour to the left. Throws std::bad_alloc.
std::string packRows(unsigned char const *bytes, std::size_t rowBytes, std::size_t rows, std::size_t pixelBytes);

/// The picture as a PNG file.
std::string pngOf(Picture const &picture);

/// Pixels as they go into a PDF: the colours without, and the alpha apart.
struct ColorPlanes
{
    std::vector<unsigned char> colors; ///< three bytes a pixel
    std::vector<unsigned char> alpha;  ///< empty for a picture that is opaque everywhere
};
ColorPlanes planesOf(Picture const &picture);

/// The same for the same pixels, whatever they are called.
QByteArray fingerprintOf(Picture const &picture);

} // namespace Zem::Fig2Qt
