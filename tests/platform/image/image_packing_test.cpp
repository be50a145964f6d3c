// Pictures are packed without loss, and only what was packed is unpacked.
#include "picture_files.h"
#include "png_crafter.h"

#include <ZemError.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace Zem::Test {
namespace {

using Packed = StructVector<unsigned char>;

Packed packed(Image const &image)
{
    Packed bytes;
    image.compressImage(&bytes);
    return bytes;
}

/// 2 by 1 pixels, packed by hand: a header of 16 bytes, then the deflated row.
Packed handmade(unsigned char type, unsigned char flags, std::string const &row)
{
    std::string const bytes =
        std::string{char(0x8a), 'Z', 'P', '\n', 1, static_cast<char>(type), static_cast<char>(flags), 0, 2, 0, 0,
                    0,          1,   0,   0,    0} +
        deflated(row);
    return {bytes.begin(), bytes.end()};
}

template <class Picture>
class EveryPackedImage : public testing::Test
{
};
using Pictures = testing::Types<Image8, Image16, Image32, ImageColor>;
TYPED_TEST_SUITE(EveryPackedImage, Pictures);

TYPED_TEST(EveryPackedImage, comesBackToTheBit)
{
    std::mt19937 random(1);
    TypeParam image(37, 11);
    for (unsigned int y = 0; y < 11; ++y)
        for (unsigned int i = 0; i < 37 * image.getBpp() / 8; ++i)
            image.getRowBytes(y)[i] = static_cast<unsigned char>(random());

    TypeParam read;
    ASSERT_TRUE(read.uncompressImage(packed(image)));

    ASSERT_EQ(read.getWidth(), 37U);
    ASSERT_EQ(read.getHeight(), 11U);
    for (unsigned int y = 0; y < 11; ++y)
        EXPECT_EQ(std::memcmp(read.getRowBytes(y), image.getRowBytes(y), 37 * image.getBpp() / 8), 0) << y;
}

TYPED_TEST(EveryPackedImage, mayBeOfOnePixelOrNone)
{
    TypeParam read(5, 5);
    ASSERT_TRUE(read.uncompressImage(packed(TypeParam(1, 1))));
    EXPECT_EQ(read.getWidth(), 1U);
    ASSERT_TRUE(read.uncompressImage(packed(TypeParam())));
    EXPECT_EQ(read.getWidth(), 0U);
}

TYPED_TEST(EveryPackedImage, isRefusedAtEveryTruncationAndStaysAsItWas)
{
    Packed const bytes = packed(TypeParam(3, 3));
    TypeParam image(2, 1);
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(image.uncompressImage(Packed(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size))))
            << size;
    EXPECT_EQ(image.getWidth(), 2U);
    EXPECT_EQ(pixelsOf<TypeParam>(&image), std::vector<typename TypeParam::Pixel>(2));
}

TYPED_TEST(EveryPackedImage, isRefusedOrWholeWhenAByteIsChanged)
{
    TypeParam const original(3, 3);
    Packed const bytes = packed(original);
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        for (unsigned int change = 1; change < 256; ++change) {
            Packed mutant = bytes;
            mutant[place] = static_cast<unsigned char>(mutant[place] ^ change);
            TypeParam image;
            if (image.uncompressImage(mutant)) {
                EXPECT_EQ(image.getWidth() * image.getHeight(), 9U) << place << ' ' << change;
                EXPECT_EQ(pixelsOf<TypeParam>(&image), pixelsOf<TypeParam>(&original)) << place << ' ' << change;
            }
        }
    }
}

TEST(PackedImage, ofBytesHasThemAsDifferences)
{
    Image8 image;
    ASSERT_TRUE(image.uncompressImage(handmade(0, 0, "\x05\x03")));
    EXPECT_EQ(pixelsOf<Image8>(&image), (std::vector<std::uint8_t>{5, 8}));
}

TEST(PackedImage, ofWordsHasTheirLowBytesFirst)
{
    Image16 image;
    ASSERT_TRUE(image.uncompressImage(handmade(1, 0, "\xff\x02\x01\x01")));
    EXPECT_EQ(pixelsOf<Image16>(&image), (std::vector<std::uint16_t>{0x01ff, 0x0201}));
}

TEST(PackedImage, ofFloatsHasThemAsFourBytes)
{
    // 1.0 is 0x3f800000, -2.0 is 0xc0000000; the highest byte goes from 0x3f to 0xc0 by 0x81.
    Image32 image;
    ASSERT_TRUE(image.uncompressImage(handmade(2, 0, std::string("\0\0\0\0\x80\x80\x3f\x81", 8))));
    EXPECT_EQ(pixelsOf<Image32>(&image), (std::vector<float>{1.0F, -2.0F}));
}

TEST(PackedImage, ofColoursHasTheirChannelsOneAfterTheOther)
{
    ImageColor image;
    ASSERT_TRUE(image.uncompressImage(handmade(3, 1, std::string("\x01\x01\x02\x01\x03\x01\x04\x01", 8))));
    EXPECT_EQ(pixelsOf<ImageColor>(&image), (std::vector<Color>{{1, 2, 3, 4}, {2, 3, 4, 5}}));
    EXPECT_TRUE(image.hasAlphaChannel());
}

TEST(PackedImage, keepsValuesThatAreNoNumbers)
{
    Image32 image(3, 1);
    image.getRow(0)[0] = std::numeric_limits<float>::quiet_NaN();
    image.getRow(0)[1] = -std::numeric_limits<float>::infinity();
    Image32 read;

    ASSERT_TRUE(read.uncompressImage(packed(image)));

    EXPECT_TRUE(std::isnan(read.getRow(0)[0]));
    EXPECT_EQ(read.getRow(0)[1], -std::numeric_limits<float>::infinity());
}

TEST(PackedImage, takesTheAlphaFlagOfWhatIsReadInEitherDirection)
{
    ImageColor plain(1, 1);
    ImageColor transparent(1, 1);
    transparent.setHasAlphaChannel(true);
    ImageColor read;

    ASSERT_TRUE(read.uncompressImage(packed(transparent)));
    EXPECT_TRUE(read.hasAlphaChannel());
    ASSERT_TRUE(read.uncompressImage(packed(plain)));
    EXPECT_FALSE(read.hasAlphaChannel());
}

TEST(PackedImage, isNotReadAsAPictureOfAnotherClass)
{
    EXPECT_FALSE(Image16().uncompressImage(packed(Image8(2, 2))));
    EXPECT_FALSE(ImageColor().uncompressImage(packed(Image32(2, 2))));
}

TEST(PackedImage, withAlphaIsOneOfColoursOnly)
{
    EXPECT_TRUE(Image8().uncompressImage(handmade(0, 0, "\x05\x03")));
    EXPECT_FALSE(Image8().uncompressImage(handmade(0, 1, "\x05\x03")));
}

TEST(PackedImage, ofAnotherVersionIsRefused)
{
    Packed const bytes = packed(ImageColor(2, 2));
    for (std::size_t place : {0, 3, 4, 5, 7}) { // magic, version, type, what is kept free
        Packed other = bytes;
        ++other[place];
        EXPECT_FALSE(ImageColor().uncompressImage(other)) << place;
    }
    Packed other = bytes;
    other[6] = 2; // a flag that nobody knows
    EXPECT_FALSE(ImageColor().uncompressImage(other));
}

TEST(PackedImage, withTooFewOrTooManyPixelsIsRefused)
{
    EXPECT_FALSE(Image8().uncompressImage(handmade(0, 0, "\x05")));
    EXPECT_FALSE(Image8().uncompressImage(handmade(0, 0, "\x05\x03\x01")));
}

TEST(PackedImage, withBytesBehindItsEndIsRefused)
{
    Packed bytes = packed(Image8(2, 2));
    bytes.push_back(0);
    EXPECT_FALSE(Image8().uncompressImage(bytes));
}

TEST(PackedImage, withOneSideOfZeroIsRefused)
{
    Packed bytes = packed(Image8());
    bytes[8] = 5; // 5 by 0
    EXPECT_FALSE(Image8().uncompressImage(bytes));
}

TEST(PackedImage, withAHugeHeaderIsRefusedBeforeMemoryIsTaken)
{
    Packed bytes = packed(Image8(4, 4));
    for (std::size_t i = 8; i < 16; ++i)
        bytes[i] = 0xff;
    EXPECT_FALSE(Image8().uncompressImage(bytes));
    for (std::size_t i : {10, 11, 14, 15})
        bytes[i] = 0; // 65535 by 65535 are still too many
    EXPECT_FALSE(Image8().uncompressImage(bytes));
    bytes[9] = 0x7f;
    bytes[13] = 0x3f; // 32767 by 16383 are allowed, but not out of a few bytes
    EXPECT_FALSE(Image8().uncompressImage(bytes));
}

TEST(PackedImage, thatIsAllOfOneColourUnpacksInFull)
{
    ImageColor image(2000, 2000);
    Packed const bytes = packed(image);
    ImageColor read;

    EXPECT_LT(bytes.size(), 80000U);
    EXPECT_TRUE(read.uncompressImage(bytes));
    EXPECT_EQ(read.getPixel(1999, 1999), Color());
}

TEST(PackedImage, replacesTheBytesThatWereThere)
{
    Packed bytes(100, 7);
    Image8(1, 1).compressImage(&bytes);
    EXPECT_TRUE(Image8().uncompressImage(bytes));
}

TEST(PackedImage, needsAPlace)
{
    EXPECT_THROW(Image8(1, 1).compressImage(nullptr), ProgError);
}

} // namespace
} // namespace Zem::Test
