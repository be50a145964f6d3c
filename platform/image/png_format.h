// png_format.h: PNG pictures as bytes and back.
#pragma once

#include "image_limits.h"

namespace Zem {

/// Throws ImageError.
std::unique_ptr<Image> readPng(ImageBytes bytes);
/// Throws ImageError for an Image32, which no PNG can hold.
StructVector<unsigned char> writePng(Image const &image);

} // namespace Zem
