#include "tiff_layout.h"

#include <algorithm>

namespace Zem {

namespace {

using Samples = TiffLayout::Samples;
using Alpha = TiffLayout::Alpha;
using Meaning = TiffLayout::Meaning;

template <class Number>
Number fieldOf(TiffMemory const &file, ttag_t tag)
{
    Number value = 0;
    TIFFGetFieldDefaulted(file.get(), tag, &value);
    return value;
}

/// Those that cameras and picture programs use. Fax codes, which make any number of pixels out of a bit, and what is
/// rarer have no place where files are not trusted.
void requireKnownCompression(unsigned int compression)
{
    constexpr std::array<unsigned int, 6> KNOWN{COMPRESSION_NONE,          COMPRESSION_LZW,     COMPRESSION_JPEG,
                                                COMPRESSION_ADOBE_DEFLATE, COMPRESSION_DEFLATE, COMPRESSION_PACKBITS};
    if (std::find(KNOWN.begin(), KNOWN.end(), compression) == KNOWN.end()) {
        failImage("this compression of TIFF files is not supported");
    }
}

Meaning meaningOf(TiffMemory const &file, unsigned int samplesPerPixel, unsigned int compression)
{
    std::uint16_t photometric = samplesPerPixel < 3 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB;
    TIFFGetField(file.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    switch (photometric) {
    case PHOTOMETRIC_MINISBLACK:
        return Meaning::GREY;
    case PHOTOMETRIC_MINISWHITE:
        return Meaning::GREY_FROM_WHITE;
    case PHOTOMETRIC_PALETTE:
        return Meaning::PALETTE;
    case PHOTOMETRIC_RGB:
        return Meaning::RGB;
    case PHOTOMETRIC_YCBCR:
        if (compression == COMPRESSION_JPEG && TIFFSetField(file.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB)) {
            return Meaning::RGB;
        }
        break;
    default:
        break;
    }
    failImage("these colours of TIFF files are not supported");
}

Samples samplesOf(TiffMemory const &file)
{
    switch (fieldOf<std::uint16_t>(file, TIFFTAG_SAMPLEFORMAT)) {
    case SAMPLEFORMAT_UINT:
    case SAMPLEFORMAT_VOID:
        return Samples::UNSIGNED;
    case SAMPLEFORMAT_INT:
        return Samples::SIGNED;
    case SAMPLEFORMAT_IEEEFP:
        return Samples::FLOAT;
    default:
        failImage("these samples of TIFF files are not supported");
    }
}

/// The first of the samples behind the colours that is an alpha; others are passed over.
void findAlpha(TiffMemory const &file, unsigned int samplesPerPixel, TiffLayout *layout)
{
    std::uint16_t count = 0;
    std::uint16_t *kinds = nullptr;
    if (layout->meaning == Meaning::PALETTE || !TIFFGetField(file.get(), TIFFTAG_EXTRASAMPLES, &count, &kinds)) {
        return;
    }
    for (unsigned int i = 0; i < count && layout->colors() + i < samplesPerPixel; ++i) {
        if (kinds[i] == EXTRASAMPLE_ASSOCALPHA || kinds[i] == EXTRASAMPLE_UNASSALPHA) {
            layout->alpha = kinds[i] == EXTRASAMPLE_ASSOCALPHA ? Alpha::MULTIPLIED : Alpha::STRAIGHT;
            layout->alphaSample = layout->colors() + i;
            return;
        }
    }
}

void readPalette(TiffMemory const &file, TiffLayout *layout)
{
    std::uint16_t *red = nullptr;
    std::uint16_t *green = nullptr;
    std::uint16_t *blue = nullptr;
    if (layout->bits > 8 || !TIFFGetField(file.get(), TIFFTAG_COLORMAP, &red, &green, &blue)) {
        failImage("the TIFF file has no usable palette");
    }
    std::size_t const size = std::size_t{1} << layout->bits;
    // Some programs write 8 bit values where 16 are meant.
    auto const isNarrow = [&](std::uint16_t const *channel) {
        return std::all_of(channel, channel + size, [](unsigned int value) { return value < 256; });
    };
    unsigned int const shift = isNarrow(red) && isNarrow(green) && isNarrow(blue) ? 0 : 8;
    auto const channel = [&](unsigned int value) { return static_cast<unsigned char>(value >> shift); };
    for (std::size_t i = 0; i < size; ++i) {
        layout->palette[i] = Color(channel(red[i]), channel(green[i]), channel(blue[i]));
    }
}

/// Cameras of 8 bits often write their grey values as a palette.
Image::Type typeOf(TiffLayout const &layout)
{
    bool const isUnsigned = layout.samples == Samples::UNSIGNED;
    unsigned int const bits = layout.bits;
    if (layout.meaning == Meaning::PALETTE && isUnsigned) {
        bool const isGrey = std::all_of(layout.palette.begin(), layout.palette.end(), isGreyColor);
        return isGrey ? Image::TYPE_IMAGE8 : Image::TYPE_COLOR;
    }
    if (layout.meaning == Meaning::RGB || layout.alpha != Alpha::NONE) {
        if (isUnsigned && (bits == 8 || bits == 16)) {
            return Image::TYPE_COLOR;
        }
    } else if (isUnsigned && bits >= 1 && bits <= 16) {
        return bits <= 8 ? Image::TYPE_IMAGE8 : Image::TYPE_IMAGE16;
    } else if (layout.meaning == Meaning::GREY &&
               (bits == 32 || (layout.samples == Samples::SIGNED && (bits == 8 || bits == 16)))) {
        return Image::TYPE_IMAGE32;
    }
    failImage("samples of this depth are not supported");
}

std::size_t pixelBytesOf(Image::Type type)
{
    return makeImage(type, 0, 0)->getBpp() / 8;
}

void readChunks(TiffMemory const &file, TiffLayout *layout)
{
    TIFF *const tiff = file.get();
    layout->tiled = TIFFIsTiled(tiff) != 0;
    layout->chunkWidth = layout->tiled ? fieldOf<std::uint32_t>(file, TIFFTAG_TILEWIDTH) : layout->width;
    layout->chunkHeight = layout->tiled ? fieldOf<std::uint32_t>(file, TIFFTAG_TILELENGTH)
                                        : std::min(fieldOf<std::uint32_t>(file, TIFFTAG_ROWSPERSTRIP), layout->height);
    std::uint64_t const rowBytes = layout->tiled ? TIFFTileRowSize64(tiff) : TIFFScanlineSize64(tiff);
    std::uint64_t const rowBits = std::uint64_t{layout->chunkWidth} * layout->pixelSteps * layout->bits;
    if (rowBits == 0 || rowBytes != (rowBits + 7) / 8) {
        failImage("the rows of the TIFF file have an unexpected size");
    }
    requireImageBytes(layout->chunkHeight, rowBytes);
    layout->chunkRowBytes = static_cast<std::size_t>(rowBytes);
}

/// All chunks together, as far as the file can have them.
void requireChunks(TiffMemory const &file, TiffLayout const &layout)
{
    std::uint64_t const rows =
        layout.tiled ? std::uint64_t{TIFFNumberOfTiles(file.get())} * layout.chunkHeight : std::uint64_t{layout.height};
    requireImageBytes(rows, 1);
    requireExpansion(rows * layout.chunkRowBytes, file.getSize(), FILE_EXPANSION);
}

} // namespace

TiffLayout readTiffLayout(TiffMemory const &file)
{
    TiffLayout layout;
    auto const compression = fieldOf<std::uint16_t>(file, TIFFTAG_COMPRESSION);
    auto const samplesPerPixel = fieldOf<std::uint16_t>(file, TIFFTAG_SAMPLESPERPIXEL);
    layout.width = fieldOf<std::uint32_t>(file, TIFFTAG_IMAGEWIDTH);
    layout.height = fieldOf<std::uint32_t>(file, TIFFTAG_IMAGELENGTH);
    layout.bits = fieldOf<std::uint16_t>(file, TIFFTAG_BITSPERSAMPLE);
    layout.separate = fieldOf<std::uint16_t>(file, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
    layout.orientation = fieldOf<std::uint16_t>(file, TIFFTAG_ORIENTATION);
    layout.pixelSteps = layout.separate ? 1U : samplesPerPixel;
    requireKnownCompression(compression);
    layout.meaning = meaningOf(file, samplesPerPixel, compression);
    layout.samples = samplesOf(file);
    if (samplesPerPixel < layout.colors()) {
        failImage("the TIFF file has too few samples for its colours");
    }
    findAlpha(file, samplesPerPixel, &layout);
    if (layout.meaning == Meaning::PALETTE) {
        readPalette(file, &layout);
    }
    layout.type = typeOf(layout);
    requireImageSize(layout.width, layout.height, pixelBytesOf(layout.type));
    readChunks(file, &layout);
    requireChunks(file, layout);
    return layout;
}

} // namespace Zem
