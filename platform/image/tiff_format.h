// tiff_format.h: TIFF pictures as bytes and back.
#pragma once

#include "image_limits.h"

namespace Zem {

/// The first picture of the file. Throws ImageError.
std::unique_ptr<Image> readTiff(ImageBytes bytes);
/// Throws ImageError.
StructVector<unsigned char> writeTiff(Image const &image);

} // namespace Zem
