// jpeg_reader.h: reads JPEG pictures.
#pragma once

#include "image_limits.h"

namespace Zem {

/// An Image8 or ImageColor. Throws ImageError.
std::unique_ptr<Image> readJpeg(ImageBytes bytes);
/// Grey pictures as colours too. Throws ImageError.
std::unique_ptr<ImageColor> readColorJpeg(ImageBytes bytes);

} // namespace Zem
