// Pictures in memory: sizes, rows, pixels, copies.
#include "picture_files.h"

#include <ZemError.h>

namespace Zem::Test {
namespace {

template <class Picture>
class EveryImage : public testing::Test
{
};
using Pictures = testing::Types<Image8, Image16, Image32, ImageColor>;
TYPED_TEST_SUITE(EveryImage, Pictures);

TYPED_TEST(EveryImage, isEmptyAtFirst)
{
    TypeParam const image;

    EXPECT_EQ(image.getWidth(), 0U);
    EXPECT_EQ(image.getHeight(), 0U);
    EXPECT_FALSE(image.hasAlphaChannel());
    EXPECT_THROW(image.getRow(0), ProgError);
}

TYPED_TEST(EveryImage, ofASizeHasThePixelsOfAnEmptyPage)
{
    TypeParam const image(3, 2);

    EXPECT_EQ(image.getWidth(), 3U);
    EXPECT_EQ(image.getHeight(), 2U);
    EXPECT_EQ(pixelsOf<TypeParam>(&image), std::vector<typename TypeParam::Pixel>(6));
}

TYPED_TEST(EveryImage, hasNoSideOfZero)
{
    EXPECT_THROW(TypeParam(0, 5), ProgError);
    EXPECT_THROW(TypeParam(5, 0), ProgError);
    EXPECT_THROW(TypeParam(0, 0), ProgError);
}

TYPED_TEST(EveryImage, hasNoMoreBytesThanAllowed)
{
    auto const most = static_cast<unsigned int>(Image::MAX_BYTES / sizeof(typename TypeParam::Pixel));
    EXPECT_THROW(TypeParam(most / 16384 + 1, 16384), ProgError);
    EXPECT_THROW(TypeParam(16384, most / 16384 + 1), ProgError);
    EXPECT_NO_THROW(TypeParam(most / 16384, 16384));
    EXPECT_THROW(TypeParam(0xffffffff, 0xffffffff), ProgError);
    EXPECT_THROW(TypeParam(0x80000000, 2), ProgError);
}

TYPED_TEST(EveryImage, hasNoLongerSideThanAllowed)
{
    EXPECT_NO_THROW(TypeParam(32768, 1));
    EXPECT_NO_THROW(TypeParam(1, 32768));
    EXPECT_THROW(TypeParam(32769, 1), ProgError);
    EXPECT_THROW(TypeParam(1, 32769), ProgError);
}

TYPED_TEST(EveryImage, hasItsRowsOneBehindTheOther)
{
    TypeParam image(3, 2);

    EXPECT_EQ(image.getRow(1), image.getRow(0) + 3);
    EXPECT_EQ(image.getRowBytes(1), reinterpret_cast<unsigned char *>(image.getRow(1)));
    EXPECT_THROW(image.getRow(2), ProgError);
    EXPECT_THROW(image.getRowBytes(2), ProgError);
}

TYPED_TEST(EveryImage, isCopiedDeeply)
{
    using Pixel = typename TypeParam::Pixel;
    TypeParam image(2, 1);
    image.getRowBytes(0)[0] = 9;
    std::unique_ptr<TypeParam> const copy(image.copy(true));

    image.getRowBytes(0)[0] = 1;

    EXPECT_EQ(copy->getRowBytes(0)[0], 9);
    EXPECT_EQ(copy->getRow(0)[1], Pixel());
}

TYPED_TEST(EveryImage, isCopiedWithoutItsPixelsWhenTheyAreNotWanted)
{
    TypeParam image(2, 3);
    image.getRowBytes(0)[0] = 9;

    std::unique_ptr<TypeParam> const copy(image.copy(false));

    EXPECT_EQ(pixelsOf<TypeParam>(copy.get()), std::vector<typename TypeParam::Pixel>(6));
    EXPECT_EQ(copy->getHeight(), 3U);
}

TYPED_TEST(EveryImage, isCopiedWhenItIsEmpty)
{
    std::unique_ptr<TypeParam> const copy(TypeParam().copy(false));
    EXPECT_EQ(copy->getWidth(), 0U);
}

TEST(Images, haveTheTypesAndBitsOfStoredPictures)
{
    EXPECT_EQ(Image8().getType(), 0);
    EXPECT_EQ(Image16().getType(), 1);
    EXPECT_EQ(Image32().getType(), 2);
    EXPECT_EQ(ImageColor().getType(), 3);
    EXPECT_EQ(Image8().getBpp(), 8U);
    EXPECT_EQ(Image16().getBpp(), 16U);
    EXPECT_EQ(Image32().getBpp(), 32U);
    EXPECT_EQ(ImageColor().getBpp(), 32U);
}

TEST(ColorImage, givesBackThePixelThatWasSet)
{
    ImageColor image(2, 2);

    image.setPixel(1, 0, Color(1, 2, 3, 4));

    EXPECT_EQ(image.getPixel(1, 0), Color(1, 2, 3, 4));
    EXPECT_EQ(image.getPixel(0, 1), Color(0, 0, 0, 255));
}

TEST(ColorImage, hasNoPixelsOutside)
{
    ImageColor image(2, 2);

    EXPECT_THROW(image.getPixel(2, 0), ProgError);
    EXPECT_THROW(image.getPixel(0, 2), ProgError);
    EXPECT_THROW(image.setPixel(2, 0, Color()), ProgError);
    EXPECT_THROW(image.setPixel(0, 2, Color()), ProgError);
}

TEST(ColorImage, keepsTheAlphaOfItsPixelsWhenTheFlagIsSet)
{
    ImageColor image(1, 1);
    image.setPixel(0, 0, Color(1, 2, 3, 4));

    image.setHasAlphaChannel(true);

    EXPECT_TRUE(image.hasAlphaChannel());
    EXPECT_EQ(image.getPixel(0, 0), Color(1, 2, 3, 4));
}

TEST(ColorImage, isCopiedWithItsAlphaFlag)
{
    ImageColor image(1, 1);
    image.setHasAlphaChannel(true);

    EXPECT_TRUE(std::unique_ptr<ImageColor>(image.copy(true))->hasAlphaChannel());
    EXPECT_TRUE(std::unique_ptr<ImageColor>(image.copy(false))->hasAlphaChannel());
}

} // namespace
} // namespace Zem::Test
