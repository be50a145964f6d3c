// image_packing.h: pictures as few bytes, without loss. docs/formats/packed-picture.md tells them.
#pragma once

#include "image_limits.h"

namespace Zem {

StructVector<unsigned char> packImage(Image const &image);
/// Throws ImageError for bytes that packImage() cannot have made of a picture of this type.
std::unique_ptr<Image> unpackImage(ImageBytes bytes, Image::Type type);

} // namespace Zem
