// TIFF files of colours: palettes, planes, alpha.
#include "jpeg_crafter.h"
#include "picture_files.h"
#include "tiff_crafter.h"

namespace Zem::Test {
namespace {

using namespace std::string_literals;

class TiffColorTest : public PictureFiles
{
};

using Colors = std::vector<Color>;

TiffCrafter rgb(std::uint32_t width, std::uint32_t height, bool bigEndian = false)
{
    return TiffCrafter(width, height, 8, bigEndian)
        .with(TIFF_PHOTOMETRIC, {2})
        .with(TIFF_SAMPLES, {3})
        .with(TIFF_BITS, {8, 8, 8});
}

/// `kind` 1: the colours are multiplied by the alpha, 2: they are not, 0: it is something else.
TiffCrafter rgba(std::uint32_t width, std::uint32_t kind)
{
    return rgb(width, 1).with(TIFF_SAMPLES, {4}).with(TIFF_BITS, {8, 8, 8, 8}).with(TIFF_EXTRA, {kind});
}

TEST_F(TiffColorTest, ofColoursIsOpaque)
{
    auto const image = loadBytes(rgb(2, 1).chunks({"\x01\x02\x03\xff\xfe\xfd"}).bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 2, 3}, {255, 254, 253}}));
    EXPECT_FALSE(image->hasAlphaChannel());
}

TEST_F(TiffColorTest, inPlanesIsPutTogether)
{
    auto const image = loadBytes(rgb(2, 1).with(TIFF_PLANAR, {2}).chunks({"\x01\x02", "\x03\x04", "\x05\x06"}).bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 3, 5}, {2, 4, 6}}));
}

TEST_F(TiffColorTest, inPlanesWithAlphaIsPutTogether)
{
    auto const image =
        loadBytes(rgba(2, 2).with(TIFF_PLANAR, {2}).chunks({"\x01\x02", "\x03\x04", "\x05\x06", "\x07\x08"}).bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 3, 5, 7}, {2, 4, 6, 8}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

TEST_F(TiffColorTest, ofSixteenBitsIsRoundedToEightInEitherByteOrder)
{
    for (bool bigEndian : {false, true}) {
        TiffCrafter file = rgb(1, 1, bigEndian).with(TIFF_BITS, {16, 16, 16});
        // 384 / 257 = 1.49, 386 / 257 = 1.502
        auto const image = loadBytes(file.chunks({file.samples({384, 386, 65535}, 2)}).bytes());
        EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 2, 255}})) << bigEndian;
    }
}

TEST_F(TiffColorTest, keepsStraightAlpha)
{
    auto const image = loadBytes(rgba(1, 2).chunks({"\x10\x20\x30\x40"}).bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{0x10, 0x20, 0x30, 0x40}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

TEST_F(TiffColorTest, dividesColoursThatWereMultipliedByAlpha)
{
    // 32 * 255 / 64 = 127.5; 80 of 64 is more than all; nothing can be said behind an alpha of 0.
    auto const image = loadBytes(rgba(2, 1).chunks({"\x20\x40\x50\x40\x09\x09\x09\x00"s}).bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{128, 255, 255, 64}, {0, 0, 0, 0}}));
}

TEST_F(TiffColorTest, passesOverSamplesThatAreNoAlpha)
{
    auto const image = loadBytes(rgba(1, 0).chunks({"\x10\x20\x30\x40"}).bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{0x10, 0x20, 0x30}}));
    EXPECT_FALSE(image->hasAlphaChannel());
}

TEST_F(TiffColorTest, ofGreyValuesWithAlphaBecomesColours)
{
    auto const image = loadBytes(TiffCrafter(1, 1, 8)
                                     .with(TIFF_SAMPLES, {2})
                                     .with(TIFF_BITS, {8, 8})
                                     .with(TIFF_EXTRA, {2})
                                     .chunks({"\x50\x60"})
                                     .bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{0x50, 0x50, 0x50, 0x60}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

/// Four colours: black, 1 2 3, 4 5 6 and 255 254 253, each times `factor`.
TiffCrafter withPalette(std::uint32_t factor)
{
    Numbers palette{0, 1, 4, 255, 0, 2, 5, 254, 0, 3, 6, 253};
    for (std::uint32_t &value : palette)
        value *= factor;
    return TiffCrafter(3, 1, 2).with(TIFF_PHOTOMETRIC, {3}).with(TIFF_PALETTE, palette).chunks({"\xd8"}); // 3, 1, 2
}

TEST_F(TiffColorTest, withAPaletteBecomesColours)
{
    auto const image = loadBytes(withPalette(257).bytes());
    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{255, 254, 253}, {1, 2, 3}, {4, 5, 6}}));
}

TEST_F(TiffColorTest, withAPaletteOfBytesBecomesTheSame)
{
    auto const image = loadBytes(withPalette(1).bytes());
    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{255, 254, 253}, {1, 2, 3}, {4, 5, 6}}));
}

TEST_F(TiffColorTest, withAPaletteOfGreyValuesBecomesThem)
{
    Numbers const grey{0, 0x1000, 0x2000, 0xff00};
    Numbers palette;
    for (int i = 0; i < 3; ++i)
        palette.insert(palette.end(), grey.begin(), grey.end());
    auto const image = loadBytes(TiffCrafter(3, 1, 2)
                                     .with(TIFF_PHOTOMETRIC, {3})
                                     .with(TIFF_PALETTE, palette)
                                     .chunks({"\xd8"}) // 3, 1, 2
                                     .bytes());
    EXPECT_EQ(pixelsOf<Image8>(image.get()), (std::vector<std::uint8_t>{0xff, 0x10, 0x20}));
}

TEST_F(TiffColorTest, withoutItsPaletteIsRefused)
{
    EXPECT_FALSE(loadBytes(withPalette(1).without(TIFF_PALETTE).bytes()));
}

TEST_F(TiffColorTest, packedAsJpegBecomesColours)
{
    std::string const jpeg = flatJpeg(16, 16, "\xc8\x64\x1e", TJPF_RGB, TJSAMP_444);
    auto const image =
        loadBytes(rgb(16, 16).with(TIFF_PHOTOMETRIC, {6}).with(TIFF_COMPRESSION, {7}).chunks({jpeg}).bytes());

    Colors const pixels = pixelsOf<ImageColor>(image.get());
    ASSERT_EQ(pixels.size(), 256U) << log.getLog().toStdString();
    EXPECT_NEAR(pixels[0].getRed(), 200, 2);
    EXPECT_NEAR(pixels[255].getGreen(), 100, 2);
    EXPECT_NEAR(pixels[100].getBlue(), 30, 2);
}

TEST_F(TiffColorTest, withTooFewSamplesIsRefused)
{
    EXPECT_FALSE(loadBytes(TiffCrafter(1, 1, 8).with(TIFF_PHOTOMETRIC, {2}).chunks({"123"}).bytes()));
}

} // namespace
} // namespace Zem::Test
