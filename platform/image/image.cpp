#include "image_limits.h"
#include "image_packing.h"
#include "jpeg_reader.h"

#include <utility>

namespace Zem {

namespace {

template <class Picture>
Picture *copyOf(Picture const &picture, bool withPixels)
{
    if (withPixels || picture.getWidth() == 0) {
        return new Picture(picture);
    }
    return new Picture(picture.getWidth(), picture.getHeight());
}

} // namespace

Image::Image(unsigned int width, unsigned int height, std::size_t pixelBytes) : width_(width), height_(height)
{
    try {
        requireImageSize(width, height, pixelBytes);
    } catch (ImageError const &error) {
        throw ProgError("Zem::Image::Image", "image", __LINE__, error.what());
    }
}

Image::~Image() = default;

void Image::compressImage(StructVector<unsigned char> *bytes) const
{
    if (!bytes) {
        throw ProgError("Zem::Image::compressImage", "image", __LINE__, "no place for the bytes");
    }
    *bytes = packImage(*this);
}

bool Image::uncompressImage(StructVector<unsigned char> const &bytes)
{
    try {
        std::unique_ptr<Image> const packed = unpackImage(bytes, getType());
        swap(*packed);
        return true;
    } catch (ImageError const &) {
        return false;
    }
}

unsigned char const *Image::getRowBytes(unsigned int y) const
{
    requireRow(y);
    return bytesOfPixels() + static_cast<std::size_t>(y) * width_ * (getBpp() / 8);
}

unsigned char *Image::getRowBytes(unsigned int y)
{
    return const_cast<unsigned char *>(std::as_const(*this).getRowBytes(y)); // this picture is not const
}

void Image::requireRow(unsigned int y) const
{
    if (y >= height_) {
        throw ProgError("Zem::Image::getRow", "image", __LINE__, "no such row");
    }
}

void Image::swap(Image &other) noexcept
{
    std::swap(width_, other.width_);
    std::swap(height_, other.height_);
    std::swap(alphaChannel_, other.alphaChannel_);
}

Image8 *Image8::copy(bool withPixels) const
{
    return copyOf(*this, withPixels);
}

Image16 *Image16::copy(bool withPixels) const
{
    return copyOf(*this, withPixels);
}

Image32 *Image32::copy(bool withPixels) const
{
    return copyOf(*this, withPixels);
}

ImageColor *ImageColor::copy(bool withPixels) const
{
    ImageColor *const made = copyOf(*this, withPixels);
    made->setHasAlphaChannel(hasAlphaChannel());
    return made;
}

Color ImageColor::getPixel(unsigned int x, unsigned int y) const
{
    if (x >= getWidth()) {
        throw ProgError("Zem::ImageColor::getPixel", "image", __LINE__, "no such column");
    }
    return getRow(y)[x];
}

void ImageColor::setPixel(unsigned int x, unsigned int y, Color const &color)
{
    if (x >= getWidth()) {
        throw ProgError("Zem::ImageColor::setPixel", "image", __LINE__, "no such column");
    }
    getRow(y)[x] = color;
}

bool ImageColor::readJPEGFromBuffer(StructVector<unsigned char> const &bytes)
{
    try {
        std::unique_ptr<ImageColor> const picture = readColorJpeg(bytes);
        swap(*picture);
        return true;
    } catch (ImageError const &) {
        return false;
    }
}

} // namespace Zem
