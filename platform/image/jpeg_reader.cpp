#include "jpeg_reader.h"

#include <algorithm>
#include <limits>
#include <turbojpeg.h>

namespace Zem {

namespace {

class JpegReader
{
public:
    explicit JpegReader(ImageBytes bytes);
    ~JpegReader() { tjDestroy(handle_); }
    JpegReader(JpegReader const &) = delete;
    JpegReader &operator=(JpegReader const &) = delete;

    bool isGrey() const { return space_ == TJCS_GRAY; }
    std::unique_ptr<Image> readGrey();
    std::unique_ptr<ImageColor> readColor();

private:
    bool isCmyk() const { return space_ == TJCS_CMYK || space_ == TJCS_YCCK; }
    unsigned int width() const { return static_cast<unsigned int>(width_); }
    unsigned int height() const { return static_cast<unsigned int>(height_); }
    void readHeader();
    void decode(Image *picture, TJPF format);
    [[noreturn]] void fail() const;

    ImageBytes bytes_;
    tjhandle handle_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    int space_ = 0;
};

JpegReader::JpegReader(ImageBytes bytes) : bytes_(bytes), handle_(tjInitDecompress())
{
    if (!handle_) {
        failImage("no JPEG reader");
    }
    try {
        readHeader();
    } catch (...) {
        tjDestroy(handle_);
        throw;
    }
}

void JpegReader::readHeader()
{
    int sampling = 0;
    if (bytes_.size() > std::numeric_limits<int>::max() ||
        tjDecompressHeader3(handle_, bytes_.data(), bytes_.size(), &width_, &height_, &sampling, &space_) != 0) {
        fail();
    }
    requireImageSize(width(), height(), sizeof(Color));
    requireExpansion(std::uint64_t{width()} * height() * sizeof(Color), bytes_.size(), FILE_EXPANSION);
}

/// A warning is a failure: what comes behind the damage is not what was photographed.
void JpegReader::decode(Image *picture, TJPF format)
{
    int const flags = TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS | TJFLAG_ACCURATEDCT;
    if (tjDecompress2(handle_, bytes_.data(), bytes_.size(), picture->getRowBytes(0), width_, 0, height_, format,
                      flags) != 0) {
        fail();
    }
}

void JpegReader::fail() const
{
    throw ImageError(QString::fromLocal8Bit(tjGetErrorStr2(handle_)));
}

std::unique_ptr<Image> JpegReader::readGrey()
{
    auto picture = std::make_unique<Image8>(width(), height());
    decode(picture.get(), TJPF_GRAY);
    return picture;
}

/// The four bytes of a pixel are amounts of ink, 255 for none, as all programs that make such files have them.
Color colorOfInk(Color const &ink)
{
    auto const channel = [&](unsigned int amount) {
        return static_cast<unsigned char>((amount * ink.getAlpha() + 127) / 255);
    };
    return {channel(ink.getRed()), channel(ink.getGreen()), channel(ink.getBlue())};
}

std::unique_ptr<ImageColor> JpegReader::readColor()
{
    auto picture = std::make_unique<ImageColor>(width(), height());
    decode(picture.get(), isCmyk() ? TJPF_CMYK : TJPF_RGBA);
    if (isCmyk()) {
        for (unsigned int y = 0; y < height(); ++y) {
            Color *const row = picture->getRow(y);
            std::transform(row, row + width(), row, colorOfInk);
        }
    }
    return picture;
}

} // namespace

std::unique_ptr<Image> readJpeg(ImageBytes bytes)
{
    JpegReader reader(bytes);
    if (reader.isGrey()) {
        return reader.readGrey();
    }
    return reader.readColor();
}

std::unique_ptr<ImageColor> readColorJpeg(ImageBytes bytes)
{
    return JpegReader(bytes).readColor();
}

} // namespace Zem
