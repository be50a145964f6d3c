// PNG files of every kind become pictures with the pixels that the format says.
#include "picture_files.h"
#include "png_crafter.h"

#include <AllocationPeak.h>

namespace Zem::Test {
namespace {

using namespace std::string_literals;

class PngTest : public PictureFiles
{
};

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint16_t>;
using Colors = std::vector<Color>;

TEST_F(PngTest, ofGreyBytesIsTakenAsItIs)
{
    auto const image = loadBytes(PngCrafter{.width = 2, .height = 2, .rows = "\0\0\x7f\0\x80\xff"s}.bytes());

    ASSERT_TRUE(image) << log.getLog().toStdString();
    EXPECT_EQ(pixelsOf<Image8>(image.get()), (Bytes{0, 0x7f, 0x80, 0xff}));
    EXPECT_EQ(image->getWidth(), 2U);
    EXPECT_EQ(image->getHeight(), 2U);
    EXPECT_FALSE(image->hasAlphaChannel());
    EXPECT_TRUE(log.getLog().isEmpty());
}

TEST_F(PngTest, ofGreyWordsIsTakenAsItIs)
{
    auto const image = loadBytes(PngCrafter{.width = 3, .depth = 16, .rows = "\0\x12\x34\xff\xfe\x00\x01"s}.bytes());

    EXPECT_EQ(pixelsOf<Image16>(image.get()), (Words{0x1234, 0xfffe, 1}));
}

TEST_F(PngTest, ofFewBitsReachesFromBlackToWhite)
{
    EXPECT_EQ(pixelsOf<Image8>(loadBytes(PngCrafter{.width = 3, .depth = 1, .rows = "\0\xa0"s}.bytes()).get()),
              (Bytes{255, 0, 255}));
    EXPECT_EQ(pixelsOf<Image8>(loadBytes(PngCrafter{.width = 4, .depth = 2, .rows = "\0\x1b"s}.bytes()).get()),
              (Bytes{0, 85, 170, 255}));
    EXPECT_EQ(pixelsOf<Image8>(loadBytes(PngCrafter{.width = 2, .depth = 4, .rows = "\0\x1f"s}.bytes()).get()),
              (Bytes{17, 255}));
}

TEST_F(PngTest, undoesTheFiltersOfItsRows)
{
    // The second row is the difference to its left neighbours, the third the one to the row above.
    auto const image =
        loadBytes(PngCrafter{.width = 3, .height = 3, .rows = "\0\x01\x02\x03\1\x0a\x01\x01\2\x05\x05\x05"s}.bytes());

    EXPECT_EQ(pixelsOf<Image8>(image.get()), (Bytes{1, 2, 3, 10, 11, 12, 15, 16, 17}));
}

TEST_F(PngTest, thatIsInterlacedHasItsPixelsInPlace)
{
    // Of 3 by 2 pixels the passes 1, 4 (x = 2), 6 (x = 1) and 7 (the second row) hold some.
    auto const image = loadBytes(
        PngCrafter{.width = 3, .height = 2, .interlaced = true, .rows = "\0\x01\0\x03\0\x02\0\x04\x05\x06"s}.bytes());

    EXPECT_EQ(pixelsOf<Image8>(image.get()), (Bytes{1, 2, 3, 4, 5, 6}));
}

TEST_F(PngTest, ofColoursIsOpaque)
{
    auto const image =
        loadBytes(PngCrafter{.width = 2, .format = PNG_RGB, .rows = "\0\x01\x02\x03\xff\xfe\xfd"s}.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 2, 3, 255}, {255, 254, 253, 255}}));
    EXPECT_FALSE(image->hasAlphaChannel());
}

TEST_F(PngTest, ofColoursWithAlphaKeepsBoth)
{
    auto const image = loadBytes(
        PngCrafter{.width = 2, .format = PNG_RGB_ALPHA, .rows = "\0\x01\x02\x03\x00\xff\xfe\xfd\x80"s}.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 2, 3, 0}, {255, 254, 253, 128}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

TEST_F(PngTest, ofColoursOfSixteenBitsIsRoundedToEight)
{
    // 0x0180 / 257 = 1.49, 0x0182 / 257 = 1.502
    auto const image =
        loadBytes(PngCrafter{.depth = 16, .format = PNG_RGB, .rows = "\0\x01\x80\x01\x82\xff\xff"s}.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{1, 2, 255, 255}}));
}

TEST_F(PngTest, ofGreyValuesWithAlphaBecomesColours)
{
    auto const image = loadBytes(PngCrafter{.format = PNG_GREY_ALPHA, .rows = "\0\x50\x60"s}.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{0x50, 0x50, 0x50, 0x60}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

TEST_F(PngTest, withAPaletteBecomesColours)
{
    PngCrafter png{.width = 3, .depth = 2, .format = PNG_PALETTE};
    png.palette = "\x10\x20\x30\x40\x50\x60\x70\x80\x90"s;
    png.rows = "\0\x84"s; // 2, 0, 1

    auto const image = loadBytes(png.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{0x70, 0x80, 0x90}, {0x10, 0x20, 0x30}, {0x40, 0x50, 0x60}}));
    EXPECT_FALSE(image->hasAlphaChannel());
}

TEST_F(PngTest, withAPaletteOfGreyValuesBecomesThem)
{
    PngCrafter png{.width = 2, .format = PNG_PALETTE};
    png.palette = "\x01\x01\x01\xc3\xc3\xc3"s;
    png.rows = "\0\x01\x00"s;
    EXPECT_EQ(pixelsOf<Image8>(loadBytes(png.bytes()).get()), (Bytes{0xc3, 0x01}));

    png.transparency = "\x7f"s;
    EXPECT_EQ(pixelsOf<ImageColor>(loadBytes(png.bytes()).get()), (Colors{{0xc3, 0xc3, 0xc3, 0xff}, {1, 1, 1, 0x7f}}));
}

TEST_F(PngTest, hasTheAlphaOfItsPalette)
{
    PngCrafter png{.width = 2, .format = PNG_PALETTE};
    png.palette = "\x10\x20\x30\x40\x50\x60"s;
    png.transparency = "\x7f"s; // of the first colour; the others are opaque
    png.rows = "\0\x00\x01"s;

    auto const image = loadBytes(png.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{0x10, 0x20, 0x30, 0x7f}, {0x40, 0x50, 0x60, 0xff}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

TEST_F(PngTest, withATransparentGreyValueHasAlpha)
{
    auto const image = loadBytes(PngCrafter{.width = 2, .transparency = "\0\x05"s, .rows = "\0\x05\x06"s}.bytes());

    EXPECT_EQ(pixelsOf<ImageColor>(image.get()), (Colors{{5, 5, 5, 0}, {6, 6, 6, 255}}));
    EXPECT_TRUE(image->hasAlphaChannel());
}

TEST_F(PngTest, ofMoreRowsThanItHasIsRefused)
{
    EXPECT_EQ(refusal(PngCrafter{.width = 2, .height = 3, .rows = "\0\x01\x02\0\x03\x04"s}.bytes()),
              "Not enough image data");
}

TEST_F(PngTest, withoutPixelsIsRefused)
{
    EXPECT_FALSE(loadBytes(PngCrafter{.width = 0, .rows = "\0"s}.bytes()));
    EXPECT_FALSE(loadBytes(PngCrafter{.height = 0, .rows = "\0"s}.bytes()));
}

TEST_F(PngTest, withAHugeHeaderIsRefusedBeforeMemoryIsTaken)
{
    PngCrafter png{.width = 0x7fffffff, .height = 0x7fffffff, .rows = "\0"s};
    EXPECT_EQ(refusal(png.bytes()), "the picture has a side of more than 32768 pixels");
    png.width = 8192;
    png.height = 8192; // with four bytes for each pixel just what is allowed
    EXPECT_EQ(refusal(png.bytes()), "the file is too short for its picture");
    png.height = 8193;
    EXPECT_EQ(refusal(png.bytes()), "the picture is larger than 256 MiB");
}

TEST_F(PngTest, withTextsThatUnpackToMuchIsReadWithoutThem)
{
    PngCrafter png{.rows = "\0\x07"s};
    png.ancillary = PngCrafter::chunk("zTXt", "bomb\0\0"s + deflated(std::string(7000000, 'x')));
    std::string const bytes = png.bytes();
    Support::AllocationPeak const peak;

    EXPECT_EQ(pixelsOf<Image8>(loadBytes(bytes).get()), Bytes{7});
    EXPECT_LT(peak.bytes(), 1000000U);
}

} // namespace
} // namespace Zem::Test
