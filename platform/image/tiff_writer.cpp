#include "tiff_format.h"
#include "tiff_memory.h"

#include <cstring>

namespace Zem {

namespace {

class TiffWriter
{
public:
    explicit TiffWriter(Image const &image) : image_(image), file_(&bytes_) {}

    StructVector<unsigned char> write();

private:
    bool isColor() const { return image_.getType() == Image::TYPE_COLOR; }
    bool isFloat() const { return image_.getType() == Image::TYPE_IMAGE32; }
    unsigned int sampleCount() const { return !isColor() ? 1 : image_.hasAlphaChannel() ? 4 : 3; }
    template <class Value>
    void set(ttag_t tag, Value value);
    void writeHeader();
    void writeRow(unsigned int y);

    Image const &image_;
    StructVector<unsigned char> bytes_;
    TiffMemory file_;
    StructVector<unsigned char> row_;
};

template <class Value>
void TiffWriter::set(ttag_t tag, Value value)
{
    if (!TIFFSetField(file_.get(), tag, value)) {
        file_.fail();
    }
}

void TiffWriter::writeHeader()
{
    set(TIFFTAG_IMAGEWIDTH, image_.getWidth());
    set(TIFFTAG_IMAGELENGTH, image_.getHeight());
    set(TIFFTAG_BITSPERSAMPLE, isColor() ? 8 : static_cast<int>(image_.getBpp()));
    set(TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(sampleCount()));
    set(TIFFTAG_SAMPLEFORMAT, isFloat() ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    set(TIFFTAG_PHOTOMETRIC, isColor() ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
    set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    set(TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
    set(TIFFTAG_PREDICTOR, isFloat() ? PREDICTOR_FLOATINGPOINT : PREDICTOR_HORIZONTAL);
    if (image_.hasAlphaChannel()) {
        std::uint16_t const kind = EXTRASAMPLE_UNASSALPHA;
        if (!TIFFSetField(file_.get(), TIFFTAG_EXTRASAMPLES, 1, &kind)) {
            file_.fail();
        }
    }
    set(TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(file_.get(), 0));
}

/// libtiff works in the row that it is given.
void TiffWriter::writeRow(unsigned int y)
{
    unsigned char const *source = image_.getRowBytes(y);
    std::size_t const taken = isColor() ? sampleCount() : image_.getBpp() / 8;
    row_.resize(image_.getWidth() * taken);
    for (std::size_t at = 0; at < row_.size(); at += taken, source += image_.getBpp() / 8) {
        std::memcpy(row_.data() + at, source, taken);
    }
    if (TIFFWriteScanline(file_.get(), row_.data(), y) != 1) {
        file_.fail();
    }
}

StructVector<unsigned char> TiffWriter::write()
{
    writeHeader();
    for (unsigned int y = 0; y < image_.getHeight(); ++y) {
        writeRow(y);
    }
    file_.close();
    file_.requireNoError();
    return std::move(bytes_);
}

} // namespace

StructVector<unsigned char> writeTiff(Image const &image)
{
    return TiffWriter(image).write();
}

} // namespace Zem
