// TIFF files of grey values: depths, byte orders, strips and tiles, compressions, orientations.
#include "picture_files.h"
#include "png_crafter.h"
#include "tiff_crafter.h"

#include <cmath>
#include <utility>

namespace Zem::Test {
namespace {

using namespace std::string_literals;

class TiffTest : public PictureFiles
{
protected:
    std::vector<std::uint8_t> bytesOf(TiffCrafter const &file)
    {
        return pixelsOf<Image8>(loadBytes(file.bytes()).get());
    }
    std::vector<std::uint16_t> wordsOf(TiffCrafter const &file)
    {
        return pixelsOf<Image16>(loadBytes(file.bytes()).get());
    }
    std::vector<float> floatsOf(TiffCrafter const &file) { return pixelsOf<Image32>(loadBytes(file.bytes()).get()); }
};

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint16_t>;
using Floats = std::vector<float>;

TEST_F(TiffTest, ofGreyBytesIsTakenAsItIs)
{
    auto const image = loadBytes(TiffCrafter(2, 2, 8).chunks({"\x00\x7f\x80\xff"s}).bytes());

    ASSERT_TRUE(image) << log.getLog().toStdString();
    EXPECT_EQ(pixelsOf<Image8>(image.get()), (Bytes{0, 0x7f, 0x80, 0xff}));
    EXPECT_TRUE(log.getLog().isEmpty());
}

TEST_F(TiffTest, ofGreyWordsIsTakenAsItIsInEitherByteOrder)
{
    for (bool bigEndian : {false, true}) {
        TiffCrafter file(2, 2, 16, bigEndian);
        file.chunks({file.samples({0x1234, 0xfffe, 0, 1}, 2)});
        EXPECT_EQ(wordsOf(file), (Words{0x1234, 0xfffe, 0, 1})) << bigEndian;
    }
}

TEST_F(TiffTest, ofFloatsIsTakenAsItIsInEitherByteOrder)
{
    for (bool bigEndian : {false, true}) {
        TiffCrafter file(4, 1, 32, bigEndian);
        file.with(TIFF_FORMAT, {3});
        // 1.5, -2^-10, infinity, not a number
        file.chunks({file.samples({0x3fc00000, 0xba800000, 0x7f800000, 0x7fc00000}, 4)});

        Floats const values = floatsOf(file);

        ASSERT_EQ(values.size(), 4U);
        EXPECT_EQ(values[0], 1.5F);
        EXPECT_EQ(values[1], -0.0009765625F);
        EXPECT_TRUE(std::isinf(values[2]));
        EXPECT_TRUE(std::isnan(values[3]));
    }
}

TEST_F(TiffTest, ofIntegersOfThirtyTwoBitsHasThemAsFloats)
{
    TiffCrafter file(2, 1, 32);
    file.chunks({file.samples({16777215, 4294967295}, 4)});
    EXPECT_EQ(floatsOf(file), (Floats{16777215.0F, 4294967296.0F}));
}

TEST_F(TiffTest, ofSignedIntegersHasThemAsFloats)
{
    TiffCrafter words(3, 1, 16);
    words.with(TIFF_FORMAT, {2}).chunks({words.samples({0x8000, 0xffff, 0x7fff}, 2)});
    EXPECT_EQ(floatsOf(words), (Floats{-32768.0F, -1.0F, 32767.0F}));
    TiffCrafter bytes(2, 1, 8);
    bytes.with(TIFF_FORMAT, {2}).chunks({"\x80\x7f"});
    EXPECT_EQ(floatsOf(bytes), (Floats{-128.0F, 127.0F}));
}

TEST_F(TiffTest, ofFewBitsReachesFromBlackToWhite)
{
    EXPECT_EQ(bytesOf(TiffCrafter(3, 1, 1).chunks({"\xa0"})), (Bytes{255, 0, 255}));
    EXPECT_EQ(bytesOf(TiffCrafter(4, 1, 2).chunks({"\x1b"})), (Bytes{0, 85, 170, 255}));
    EXPECT_EQ(bytesOf(TiffCrafter(3, 1, 4).chunks({"\x1f\x20"})), (Bytes{17, 255, 34}));
}

TEST_F(TiffTest, ofTwelveBitsHasTheNumbersOfTheCamera)
{
    EXPECT_EQ(wordsOf(TiffCrafter(3, 1, 12).chunks({"\x12\x3f\xff\x00\x10"s})), (Words{0x123, 0xfff, 1}));
}

TEST_F(TiffTest, whoseZeroIsWhiteIsTurnedRound)
{
    EXPECT_EQ(bytesOf(TiffCrafter(2, 1, 8).with(TIFF_PHOTOMETRIC, {0}).chunks({"\x01\xff"})), (Bytes{254, 0}));
    EXPECT_EQ(bytesOf(TiffCrafter(2, 1, 1).with(TIFF_PHOTOMETRIC, {0}).chunks({"\x40"})), (Bytes{255, 0}));
    TiffCrafter words(1, 1, 16);
    words.with(TIFF_PHOTOMETRIC, {0}).chunks({words.samples({1}, 2)});
    EXPECT_EQ(wordsOf(words), Words{0xfffe});
}

TEST_F(TiffTest, withPlacesOfSixtyFourBitsIsRead)
{
    auto const number = [](std::uint64_t value, std::size_t size) {
        std::string bytes;
        for (std::size_t i = 0; i < size; ++i)
            bytes += static_cast<char>(static_cast<unsigned char>(value >> 8 * i));
        return bytes;
    };
    // Width, height, bits, packing, meaning, strip at 16, samples, rows of the strip, size of the strip; all as words.
    std::vector<std::pair<std::uint64_t, std::uint64_t>> const tags{{256, 2},  {257, 1}, {258, 8}, {259, 1}, {262, 1},
                                                                    {273, 16}, {277, 1}, {278, 1}, {279, 2}};
    std::string file = "II" + number(43, 2) + number(8, 2) + number(0, 2) + number(18, 8) + "\x0b\x16";
    file += number(tags.size(), 8);
    for (auto const &[tag, value] : tags)
        file += number(tag, 2) + number(3, 2) + number(1, 8) + number(value, 8);
    file += number(0, 8);

    EXPECT_EQ(pixelsOf<Image8>(loadBytes(file).get()), (Bytes{11, 22})) << log.getLog().toStdString();
}

TEST_F(TiffTest, inStripsHasItsRowsInOrder)
{
    EXPECT_EQ(bytesOf(TiffCrafter(2, 5, 8)
                          .with(TIFF_ROWS_PER_STRIP, {2})
                          .chunks({"\x01\x02\x03\x04", "\x05\x06\x07\x08", "\x09\x0a"})),
              (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

/// A tile of 16 by 16 bytes that count up from its number on, each row by one.
std::string tile(unsigned char first)
{
    std::string bytes;
    for (unsigned int y = 0; y < 16; ++y)
        bytes += std::string(16, static_cast<char>(first + y));
    return bytes;
}

TEST_F(TiffTest, inTilesLeavesOutWhatReachesPastThePicture)
{
    auto const image =
        loadBytes(TiffCrafter(17, 18, 8).tiles(16, 16).chunks({tile(0), tile(50), tile(100), tile(150)}).bytes());

    auto const pixels = pixelsOf<Image8>(image.get());
    ASSERT_EQ(pixels.size(), 17U * 18U);
    EXPECT_EQ(pixels[0], 0);
    EXPECT_EQ(pixels[15], 0);
    EXPECT_EQ(pixels[16], 50);
    EXPECT_EQ(pixels[15 * 17], 15);
    EXPECT_EQ(pixels[16 * 17], 100);
    EXPECT_EQ(pixels[17 * 17 + 16], 151);
}

TEST_F(TiffTest, isUnpacked)
{
    std::string const pixels = "\x01\x02\x03\x04\x05\x06"s;
    Bytes const expected{1, 2, 3, 4, 5, 6};
    EXPECT_EQ(bytesOf(TiffCrafter(3, 2, 8).with(TIFF_COMPRESSION, {5}).chunks({lzw(pixels)})), expected);
    EXPECT_EQ(bytesOf(TiffCrafter(3, 2, 8).with(TIFF_COMPRESSION, {8}).chunks({deflated(pixels)})), expected);
    EXPECT_EQ(bytesOf(TiffCrafter(3, 2, 8).with(TIFF_COMPRESSION, {32946}).chunks({deflated(pixels)})), expected);
    EXPECT_EQ(bytesOf(TiffCrafter(3, 2, 8).with(TIFF_COMPRESSION, {32773}).chunks({packBits(pixels)})), expected);
}

TEST_F(TiffTest, undoesTheDifferencesOfNeighbours)
{
    TiffCrafter file(3, 1, 16);
    file.with(TIFF_COMPRESSION, {5}).with(TIFF_PREDICTOR, {2}).chunks({lzw(file.samples({1000, 1, 0xffff}, 2))});
    EXPECT_EQ(wordsOf(file), (Words{1000, 1001, 1000}));
}

TEST_F(TiffTest, isShownTheWayItsOrientationSays)
{
    // Stored as 1 2 3 above 4 5 6.
    struct Case
    {
        std::uint32_t orientation;
        unsigned int width;
        Bytes pixels;
    };
    for (Case const &one :
         {Case{1, 3, {1, 2, 3, 4, 5, 6}}, Case{2, 3, {3, 2, 1, 6, 5, 4}}, Case{3, 3, {6, 5, 4, 3, 2, 1}},
          Case{4, 3, {4, 5, 6, 1, 2, 3}}, Case{5, 2, {1, 4, 2, 5, 3, 6}}, Case{6, 2, {4, 1, 5, 2, 6, 3}},
          Case{7, 2, {6, 3, 5, 2, 4, 1}}, Case{8, 2, {3, 6, 2, 5, 1, 4}}}) {
        auto const image = loadBytes(TiffCrafter(3, 2, 8)
                                         .with(TIFF_ORIENTATION, {one.orientation})
                                         .chunks({"\x01\x02\x03\x04\x05\x06"})
                                         .bytes());
        EXPECT_EQ(pixelsOf<Image8>(image.get()), one.pixels) << one.orientation;
        ASSERT_TRUE(image);
        EXPECT_EQ(image->getWidth(), one.width) << one.orientation;
    }
}

TEST_F(TiffTest, ofSeveralGreySamplesHasTheFirst)
{
    EXPECT_EQ(bytesOf(TiffCrafter(2, 1, 8)
                          .with(TIFF_SAMPLES, {2})
                          .with(TIFF_BITS, {8, 8})
                          .with(TIFF_EXTRA, {0})
                          .chunks({"\x01\x09\x02\x08"})),
              (Bytes{1, 2}));
}

TEST_F(TiffTest, withAHugeHeaderIsRefusedBeforeMemoryIsTaken)
{
    EXPECT_FALSE(loadBytes(TiffCrafter(0xffffffff, 0xffffffff, 8).chunks({"x"}).bytes()));
    EXPECT_EQ(refusal(TiffCrafter(32768, 8192, 8).chunks({"x"}).bytes()), "the file is too short for its picture");
    EXPECT_EQ(refusal(TiffCrafter(32768, 8193, 8).chunks({"x"}).bytes()), "the picture is larger than 256 MiB");
    EXPECT_EQ(refusal(TiffCrafter(32769, 8, 8).chunks({"x"}).bytes()),
              "the picture has a side of more than 32768 pixels");
    EXPECT_EQ(refusal(TiffCrafter(8, 32769, 8).chunks({"x"}).bytes()),
              "the picture has a side of more than 32768 pixels");
    // A small picture in a huge tile.
    EXPECT_EQ(refusal(TiffCrafter(1, 1, 8).tiles(16384, 16384).chunks({"x"}).bytes()),
              "the file is too short for its picture");
}

TEST_F(TiffTest, withoutPixelsIsRefused)
{
    EXPECT_FALSE(loadBytes(TiffCrafter(0, 1, 8).chunks({"x"}).bytes()));
    EXPECT_FALSE(loadBytes(TiffCrafter(1, 0, 8).chunks({"x"}).bytes()));
    EXPECT_FALSE(loadBytes(TiffCrafter(1, 1, 8).without(TIFF_WIDTH).chunks({"x"}).bytes()));
}

TEST_F(TiffTest, thatIsNotSupportedSaysWhatIsNot)
{
    EXPECT_EQ(refusal(TiffCrafter(1, 1, 64).with(TIFF_FORMAT, {3}).chunks({"12345678"}).bytes()),
              "samples of this depth are not supported");
    EXPECT_EQ(refusal(TiffCrafter(1, 1, 8).with(TIFF_FORMAT, {5}).chunks({"x"}).bytes()),
              "these samples of TIFF files are not supported");
    for (std::uint32_t compression : {2U, 4U, 6U, 34925U, 50000U}) {
        EXPECT_EQ(refusal(TiffCrafter(1, 1, 8).with(TIFF_COMPRESSION, {compression}).chunks({"x"}).bytes()),
                  "this compression of TIFF files is not supported");
    }
    EXPECT_EQ(refusal(TiffCrafter(1, 1, 8).with(TIFF_PHOTOMETRIC, {8}).chunks({"x"}).bytes()),
              "these colours of TIFF files are not supported");
}

TEST_F(TiffTest, whoseStripUnpacksToTooLittleIsRefused)
{
    EXPECT_FALSE(loadBytes(TiffCrafter(3, 3, 8).with(TIFF_COMPRESSION, {8}).chunks({deflated("12345678")}).bytes()));
    EXPECT_FALSE(loadBytes(TiffCrafter(3, 3, 8).with(TIFF_COMPRESSION, {5}).chunks({lzw("12345678")}).bytes()));
}

} // namespace
} // namespace Zem::Test
