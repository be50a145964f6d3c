#include "png_format.h"
#include "png_guard.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace Zem {

namespace {

class PngReader
{
public:
    explicit PngReader(ImageBytes bytes);
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    PngReader(PngReader const &) = delete;
    PngReader &operator=(PngReader const &) = delete;

    std::unique_ptr<Image> read();

private:
    static void giveBytes(png_structp png, png_bytep target, std::size_t size);
    void readHeader();
    bool hasGreyPalette() const;
    bool isColor() const { return ((format_ & PNG_COLOR_MASK_COLOR) != 0 && !hasGreyPalette()) || hasAlpha(); }
    bool hasAlpha() const { return (format_ & PNG_COLOR_MASK_ALPHA) != 0 || hasTransparency_; }
    Image::Type type() const;
    void requestPixels();
    void readRows(Image *picture);

    ImageBytes rest_;
    PngGuard guard_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    png_uint_32 width_ = 0;
    png_uint_32 height_ = 0;
    int depth_ = 0;
    int format_ = 0;
    bool hasTransparency_ = false;
};

PngReader::PngReader(ImageBytes bytes) : rest_(bytes)
{
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, &guard_, PngGuard::onError, PngGuard::onWarning);
    info_ = png_ ? png_create_info_struct(png_) : nullptr;
    if (!info_) {
        png_destroy_read_struct(&png_, &info_, nullptr);
        throw std::bad_alloc();
    }
    png_set_read_fn(png_, this, giveBytes);
}

void PngReader::giveBytes(png_structp png, png_bytep target, std::size_t size)
{
    auto *const reader = static_cast<PngReader *>(png_get_io_ptr(png));
    if (size > reader->rest_.size()) {
        png_error(png, "the file ends too early");
    }
    std::memcpy(target, reader->rest_.data(), size);
    reader->rest_ = reader->rest_.subspan(size);
}

void PngReader::readHeader()
{
    std::size_t const fileSize = rest_.size();
    guard_.run(png_, [this] {
        // Texts, profiles and the like may unpack to far more than the picture, and say nothing of its pixels.
        png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        // Its own limits are narrower than those of the format; ours are looked at before any row is read.
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_read_info(png_, info_);
        png_get_IHDR(png_, info_, &width_, &height_, &depth_, &format_, nullptr, nullptr, nullptr);
        hasTransparency_ = png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    });
    requireImageSize(width_, height_, sizeof(Color));
    requireExpansion(std::uint64_t{png_get_rowbytes(png_, info_)} * height_, fileSize, DEFLATE_EXPANSION);
}

bool PngReader::hasGreyPalette() const
{
    png_colorp colors = nullptr;
    int count = 0;
    return format_ == PNG_COLOR_TYPE_PALETTE && png_get_PLTE(png_, info_, &colors, &count) != 0 &&
           std::all_of(colors, colors + count,
                       [](png_color const &color) { return isGreyColor(Color(color.red, color.green, color.blue)); });
}

Image::Type PngReader::type() const
{
    if (isColor()) {
        return Image::TYPE_COLOR;
    }
    return depth_ == 16 ? Image::TYPE_IMAGE16 : Image::TYPE_IMAGE8;
}

void PngReader::requestPixels()
{
    png_set_expand(png_); // palettes, fewer than 8 bits, a transparent colour
    if (isColor()) {
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        png_set_add_alpha(png_, 0xff, PNG_FILLER_AFTER);
    } else if (hasGreyPalette()) {
        png_set_rgb_to_gray_fixed(png_, PNG_ERROR_ACTION_NONE, PNG_RGB_TO_GRAY_DEFAULT, PNG_RGB_TO_GRAY_DEFAULT);
    } else if (std::endian::native == std::endian::little) {
        png_set_swap(png_);
    }
    png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
}

void PngReader::readRows(Image *picture)
{
    StructVector<png_bytep> rows(height_);
    for (unsigned int y = 0; y < height_; ++y) {
        rows[y] = picture->getRowBytes(y);
    }
    guard_.run(png_, [this, &rows] {
        png_read_image(png_, rows.data());
        png_read_end(png_, nullptr); // a file that ends before its end is no whole one
    });
}

std::unique_ptr<Image> PngReader::read()
{
    readHeader();
    std::unique_ptr<Image> picture = makeImage(type(), width_, height_);
    guard_.run(png_, [this] { requestPixels(); });
    if (png_get_rowbytes(png_, info_) != std::size_t{width_} * (picture->getBpp() / 8)) {
        failImage("unexpected size of the rows");
    }
    readRows(picture.get());
    if (auto *const color = dynamic_cast<ImageColor *>(picture.get())) {
        color->setHasAlphaChannel(hasAlpha());
    }
    return picture;
}

} // namespace

std::unique_ptr<Image> readPng(ImageBytes bytes)
{
    return PngReader(bytes).read();
}

} // namespace Zem
