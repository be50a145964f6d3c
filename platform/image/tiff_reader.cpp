#include "tiff_format.h"
#include "tiff_pixels.h"

#include <algorithm>

namespace Zem {

namespace {

class TiffReader
{
public:
    explicit TiffReader(ImageBytes bytes)
        : file_(bytes), layout_(readTiffLayout(file_)),
          chunk_(static_cast<std::size_t>(layout_.chunkHeight) * layout_.chunkRowBytes)
    {
    }

    std::unique_ptr<Image> read();

private:
    void readPlane(unsigned int plane, Image *picture);
    void readChunk(unsigned int x, unsigned int y, unsigned int rows, unsigned int plane);

    TiffMemory file_;
    TiffLayout layout_;
    StructVector<unsigned char> chunk_;
};

/// A tile is whole in the file even where it reaches past the picture, a strip is not.
void TiffReader::readChunk(unsigned int x, unsigned int y, unsigned int rows, unsigned int plane)
{
    TIFF *const tiff = file_.get();
    auto const sample = static_cast<std::uint16_t>(plane);
    auto const size = static_cast<tmsize_t>((layout_.tiled ? layout_.chunkHeight : rows) * layout_.chunkRowBytes);
    tmsize_t const done = layout_.tiled
                              ? TIFFReadEncodedTile(tiff, TIFFComputeTile(tiff, x, y, 0, sample), chunk_.data(), size)
                              : TIFFReadEncodedStrip(tiff, TIFFComputeStrip(tiff, y, sample), chunk_.data(), size);
    if (done != size) {
        file_.fail();
    }
}

void TiffReader::readPlane(unsigned int plane, Image *picture)
{
    for (unsigned int y = 0; y < layout_.height; y += std::min(layout_.chunkHeight, layout_.height - y)) {
        unsigned int const rows = std::min(layout_.chunkHeight, layout_.height - y);
        for (unsigned int x = 0; x < layout_.width; x += std::min(layout_.chunkWidth, layout_.width - x)) {
            unsigned int const columns = std::min(layout_.chunkWidth, layout_.width - x);
            readChunk(x, y, rows, plane);
            for (unsigned int i = 0; i < rows; ++i) {
                storeTiffRow(layout_, chunk_.data() + i * layout_.chunkRowBytes, plane, x, y + i, columns, picture);
            }
        }
    }
}

std::unique_ptr<Image> TiffReader::read()
{
    std::unique_ptr<Image> picture = makeImage(layout_.type, layout_.width, layout_.height);
    bool const hasAlpha = layout_.alpha != TiffLayout::Alpha::NONE;
    for (unsigned int color = 0; color < (layout_.separate ? layout_.colors() : 1); ++color) {
        readPlane(color, picture.get());
    }
    if (layout_.separate && hasAlpha) {
        readPlane(layout_.alphaSample, picture.get());
    }
    if (auto *const color = dynamic_cast<ImageColor *>(picture.get())) {
        color->setHasAlphaChannel(hasAlpha);
        if (layout_.alpha == TiffLayout::Alpha::MULTIPLIED) {
            divideByAlpha(color);
        }
    }
    return orientImage(std::move(picture), layout_.orientation);
}

} // namespace

std::unique_ptr<Image> readTiff(ImageBytes bytes)
{
    return TiffReader(bytes).read();
}

} // namespace Zem
