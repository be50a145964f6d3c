#include "image_limits.h"

#include <ZemTranslate.h>

namespace Zem {

namespace {

template <class Picture>
std::unique_ptr<Image> makePicture(unsigned int width, unsigned int height)
{
    bool const empty = width == 0 && height == 0;
    return empty ? std::make_unique<Picture>() : std::make_unique<Picture>(width, height);
}

} // namespace

void failImage(char const *reason)
{
    throw ImageError(translate("Image_err", reason));
}

void requireImageBytes(std::uint64_t rows, std::uint64_t rowBytes)
{
    if (rows == 0 || rowBytes == 0) {
        failImage("the picture has no pixels");
    }
    if (rowBytes > Image::MAX_BYTES || rows > Image::MAX_BYTES / rowBytes) {
        failImage("the picture is larger than 256 MiB");
    }
}

void requireImageSize(std::uint64_t width, std::uint64_t height, std::size_t pixelBytes)
{
    if (width > Image::MAX_SIDE || height > Image::MAX_SIDE) {
        failImage("the picture has a side of more than 32768 pixels");
    }
    requireImageBytes(height, width * pixelBytes);
}

void requireExpansion(std::uint64_t bytes, std::size_t packed, std::uint64_t most)
{
    constexpr std::uint64_t FEW_BYTES = 4096;
    if (bytes > FEW_BYTES && (bytes - FEW_BYTES) / most > packed) {
        failImage("the file is too short for its picture");
    }
}

std::unique_ptr<Image> makeImage(Image::Type type, unsigned int width, unsigned int height)
{
    switch (type) {
    case Image::TYPE_IMAGE8:
        return makePicture<Image8>(width, height);
    case Image::TYPE_IMAGE16:
        return makePicture<Image16>(width, height);
    case Image::TYPE_IMAGE32:
        return makePicture<Image32>(width, height);
    case Image::TYPE_COLOR:
        break;
    }
    return makePicture<ImageColor>(width, height);
}

} // namespace Zem
