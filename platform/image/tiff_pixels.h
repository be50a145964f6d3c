// tiff_pixels.h: TIFF samples become pixels.
#pragma once

#include "tiff_layout.h"

namespace Zem {

/// Puts a row of samples into the picture, from the pixel (x, y) on to the right. Without `separate` the row has all
/// samples of its pixels, else only those with the number `plane`.
void storeTiffRow(TiffLayout const &layout, unsigned char const *row, unsigned int plane, unsigned int x,
                  unsigned int y, unsigned int count, Image *picture);

/// Takes the alpha out of the colours that were multiplied by it.
void divideByAlpha(ImageColor *picture);

/// The picture as it is meant to be seen; `orientation` as TIFF numbers them, others than 1 to 8 mean nothing.
std::unique_ptr<Image> orientImage(std::unique_ptr<Image> picture, unsigned int orientation);

} // namespace Zem
