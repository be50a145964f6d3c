#include "png_format.h"
#include "png_guard.h"

#include <bit>
#include <new>
#include <utility>

namespace Zem {

namespace {

class PngWriter
{
public:
    explicit PngWriter(Image const &image);
    ~PngWriter() { png_destroy_write_struct(&png_, &info_); }
    PngWriter(PngWriter const &) = delete;
    PngWriter &operator=(PngWriter const &) = delete;

    StructVector<unsigned char> write();

private:
    static void takeBytes(png_structp png, png_bytep bytes, std::size_t size);
    int format() const;
    void writeHeader();

    Image const &image_;
    PngGuard guard_;
    StructVector<unsigned char> bytes_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

PngWriter::PngWriter(Image const &image) : image_(image)
{
    png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, &guard_, PngGuard::onError, PngGuard::onWarning);
    info_ = png_ ? png_create_info_struct(png_) : nullptr;
    if (!info_) {
        png_destroy_write_struct(&png_, &info_);
        throw std::bad_alloc();
    }
    png_set_write_fn(png_, this, takeBytes, nullptr);
}

void PngWriter::takeBytes(png_structp png, png_bytep bytes, std::size_t size)
{
    auto *const writer = static_cast<PngWriter *>(png_get_io_ptr(png));
    try {
        writer->bytes_.insert(writer->bytes_.end(), bytes, bytes + size);
        return;
    } catch (std::bad_alloc const &) {
        // An exception must not pass through libpng, and a jump not out of its handler.
    }
    png_error(png, "not enough memory");
}

int PngWriter::format() const
{
    if (image_.getType() != Image::TYPE_COLOR) {
        return PNG_COLOR_TYPE_GRAY;
    }
    return image_.hasAlphaChannel() ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
}

void PngWriter::writeHeader()
{
    int const depth = image_.getType() == Image::TYPE_IMAGE16 ? 16 : 8;
    // Its own limits are narrower than those of the format.
    png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_IHDR(png_, info_, image_.getWidth(), image_.getHeight(), depth, format(), PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png_, info_);
    if (format() == PNG_COLOR_TYPE_RGB) {
        png_set_filler(png_, 0, PNG_FILLER_AFTER); // the alpha is left out
    }
    if (depth == 16 && std::endian::native == std::endian::little) {
        png_set_swap(png_);
    }
}

StructVector<unsigned char> PngWriter::write()
{
    guard_.run(png_, [this] {
        writeHeader();
        for (unsigned int y = 0; y < image_.getHeight(); ++y) {
            png_write_row(png_, image_.getRowBytes(y));
        }
        png_write_end(png_, info_);
    });
    return std::move(bytes_);
}

} // namespace

StructVector<unsigned char> writePng(Image const &image)
{
    if (image.getType() == Image::TYPE_IMAGE32) {
        failImage("a PNG holds no picture of 32 bit grey values");
    }
    return PngWriter(image).write();
}

} // namespace Zem
