// What becomes of the numbers of a picture.
#include "picture_support.h"

#include <figqt_picture.h>
#include <figqt_picture_cache.h>

#include <gtest/gtest.h>

#include <limits>

namespace Zem::Support {
namespace {

using Fig2::ImageConversion;
using Fig2Qt::convertPicture;
using Fig2Qt::Picture;

constexpr float NOTHING = std::numeric_limits<float>::quiet_NaN();
constexpr float ENDLESS = std::numeric_limits<float>::infinity();

std::vector<int> greysOf(Image const &image, ImageConversion const &conversion)
{
    Picture const picture = convertPicture(image, conversion);
    EXPECT_EQ(picture.format, Picture::GREY);
    EXPECT_EQ(picture.width, static_cast<int>(image.getWidth()));
    EXPECT_EQ(picture.height, static_cast<int>(image.getHeight()));
    return {picture.pixels, picture.pixels + picture.getBytes()};
}

std::vector<Color> colorsOf(Image const &image, ImageConversion const &conversion, Picture::Format format)
{
    Picture const picture = convertPicture(image, conversion);
    EXPECT_EQ(picture.format, format);
    std::vector<Color> colors;
    for (std::size_t i = 0; i < picture.getBytes(); i += 4) {
        unsigned char const *pixel = picture.pixels + i;
        colors.emplace_back(pixel[0], pixel[1], pixel[2], format == Picture::ALPHA ? pixel[3] : 255);
    }
    return colors;
}

TEST(NormalPicture, OfEightBitsIsAsItIs)
{
    auto const image = imageOf<Image8>(2, {0, 1, 254, 255});

    EXPECT_EQ(greysOf(image, conversionOf(ImageConversion::TYPE_NORMAL, 7, 9)), (std::vector{0, 1, 254, 255}));
    EXPECT_EQ(convertPicture(image, ImageConversion::null).pixels, image.getRow(0));
}

TEST(NormalPicture, OfSixteenBitsGoesFromBlackToTheWhiteOfItsCamera)
{
    // 2048 / 4095 * 255 = 127.53, 1024 / 4095 * 255 = 63.8; 128 / 257 = 0.498, 129 / 257 = 0.502.
    EXPECT_EQ(greysOf(imageOf<Image16>(2, {0, 4095, 2048, 1024}), ImageConversion::null),
              (std::vector{0, 255, 128, 64}));
    EXPECT_EQ(greysOf(imageOf<Image16>(2, {128, 129, 257, 65535}), ImageConversion::null), (std::vector{0, 1, 1, 255}));
    EXPECT_EQ(greysOf(imageOf<Image16>(2, {1, 2, 77, 200}), ImageConversion::null), (std::vector{1, 2, 77, 200}));
    // Just above 10 bits: white is 4095.
    EXPECT_EQ(greysOf(imageOf<Image16>(1, {1023, 1024}), ImageConversion::null), (std::vector{64, 64}));
    EXPECT_EQ(greysOf(imageOf<Image16>(1, {1022, 1023}), ImageConversion::null), (std::vector{255, 255}));
}

TEST(NormalPicture, OfFloatingPointGoesFromItsLeastNumberToItsGreatest)
{
    EXPECT_EQ(greysOf(imageOf<Image32>(1, {-2.0F, 0.0F, 2.0F, 1.0F}), ImageConversion::null),
              (std::vector{0, 128, 255, 191}));
    EXPECT_EQ(greysOf(imageOf<Image32>(1, {1e-3F, 2e-3F}), ImageConversion::null), (std::vector{0, 255}));
    EXPECT_EQ(greysOf(imageOf<Image32>(1, {-3e38F, 3e38F, 0.0F}), ImageConversion::null), (std::vector{0, 255, 128}));
    EXPECT_EQ(greysOf(imageOf<Image32>(1, {5.0F, 5.0F}), ImageConversion::null), (std::vector{0, 0}));
}

TEST(NormalPicture, ShowsNothingWhereThereIsNoNumber)
{
    auto const colors =
        colorsOf(imageOf<Image32>(2, {0.0F, NOTHING, 1.0F, ENDLESS}), ImageConversion::null, Picture::ALPHA);

    EXPECT_EQ(colors, (std::vector{BLACK, Color(0, 0, 0, 0), Color(255, 255, 255), Color(255, 255, 255)}));
    EXPECT_EQ(colorsOf(imageOf<Image32>(1, {NOTHING}), ImageConversion::null, Picture::ALPHA),
              std::vector{Color(0, 0, 0, 0)});
    EXPECT_EQ(greysOf(imageOf<Image32>(1, {-ENDLESS, 1.0F, 2.0F}), ImageConversion::null), (std::vector{0, 0, 255}));
}

TEST(NormalPicture, OfColoursKeepsThemAndTheirAlphaWhenItMeansAnything)
{
    auto image = imageOf<ImageColor>(2, {RED, Color(1, 2, 3, 100)});

    EXPECT_EQ(colorsOf(image, ImageConversion::null, Picture::COLOR), (std::vector{RED, Color(1, 2, 3)}));
    image.setHasAlphaChannel(true);
    EXPECT_EQ(colorsOf(image, ImageConversion::null, Picture::ALPHA), (std::vector{RED, Color(1, 2, 3, 100)}));
}

TEST(LightenedPicture, TakesTheRootOfItsBrightness)
{
    auto const lighten = conversionOf(ImageConversion::TYPE_LIGHTEN);

    // 255 * sqrt(64 / 255) = 127.7, 255 * sqrt(1 / 255) = 15.97, 255 * sqrt(1024 / 4095) = 127.5
    EXPECT_EQ(greysOf(imageOf<Image8>(2, {0, 64, 1, 255}), lighten), (std::vector{0, 128, 16, 255}));
    EXPECT_EQ(greysOf(imageOf<Image16>(2, {0, 1024, 4095, 0}), lighten), (std::vector{0, 128, 255, 0}));
    EXPECT_EQ(greysOf(imageOf<Image32>(1, {-4.0F, -3.0F, 0.0F}), lighten), (std::vector{0, 128, 255}));
    EXPECT_EQ(colorsOf(imageOf<ImageColor>(1, {Color(0, 64, 255)}), lighten, Picture::COLOR),
              std::vector{Color(0, 128, 255)});
}

TEST(OverexposedPicture, MarksWhatReachedTheWhiteOfTheCamera)
{
    auto const overexposed = conversionOf(ImageConversion::TYPE_OVEREXPOSED);

    EXPECT_EQ(colorsOf(imageOf<Image8>(2, {255, 254}), overexposed, Picture::COLOR),
              (std::vector{RED, Color(254, 254, 254)}));
    EXPECT_EQ(colorsOf(imageOf<Image16>(2, {4095, 0}), overexposed, Picture::COLOR), (std::vector{RED, BLACK}));
    EXPECT_EQ(greysOf(imageOf<Image16>(2, {4094, 0}), overexposed), (std::vector{255, 0}));
    EXPECT_EQ(greysOf(imageOf<Image32>(2, {4095.0F, 0.0F}), overexposed), (std::vector{255, 0}));
    EXPECT_EQ(colorsOf(imageOf<Image32>(3, {1.0F, ENDLESS, 0.0F}), overexposed, Picture::COLOR),
              (std::vector{Color(255, 255, 255), RED, BLACK}));
    EXPECT_EQ(colorsOf(imageOf<ImageColor>(2, {Color(3, 255, 0), Color(3, 254, 0)}), overexposed, Picture::COLOR),
              (std::vector{RED, Color(3, 254, 0)}));
}

TEST(PictureOfARange, GoesFromBlackAtItsBeginningToWhiteAtItsEnd)
{
    auto const range = conversionOf(ImageConversion::TYPE_RANGE, 100, 300);

    EXPECT_EQ(greysOf(imageOf<Image16>(5, {50, 100, 200, 300, 4000}), range), (std::vector{0, 0, 128, 255, 255}));
    EXPECT_EQ(greysOf(imageOf<Image8>(2, {100, 250}), range), (std::vector{0, 191}));
    EXPECT_EQ(greysOf(imageOf<Image32>(2, {150.0F, -ENDLESS, ENDLESS, 101.0F}), range), (std::vector{64, 0, 255, 1}));
    EXPECT_EQ(colorsOf(imageOf<ImageColor>(1, {Color(50, 200, 250)}), range, Picture::COLOR),
              std::vector{Color(0, 128, 191)});
}

TEST(PictureOfARange, IsANegativeWhenItRunsBackwards)
{
    auto const range = conversionOf(ImageConversion::TYPE_RANGE, 300, 100);

    EXPECT_EQ(greysOf(imageOf<Image16>(5, {50, 100, 200, 300, 4000}), range), (std::vector{255, 255, 128, 0, 0}));
    EXPECT_EQ(greysOf(imageOf<Image32>(4, {-ENDLESS, 200.0F, 400.0F, ENDLESS}), range), (std::vector{255, 128, 0, 0}));
}

TEST(PictureOfARange, IsCutInTwoWhereItHasNoLength)
{
    auto const range = conversionOf(ImageConversion::TYPE_RANGE, 100, 100);

    EXPECT_EQ(greysOf(imageOf<Image16>(3, {99, 100, 101}), range), (std::vector{0, 0, 255}));
    EXPECT_EQ(greysOf(imageOf<Image32>(3, {99.0F, 100.0F, 100.5F}), range), (std::vector{0, 0, 255}));
}

TEST(EqualizedPicture, HasItsShadesAsOftenAsEachOther)
{
    auto const equalize = conversionOf(ImageConversion::TYPE_EQUALIZE);

    // Of four pixels two are darkest; one more is half of the rest, 127.5.
    EXPECT_EQ(greysOf(imageOf<Image8>(2, {10, 10, 20, 200}), equalize), (std::vector{0, 0, 128, 255}));
    EXPECT_EQ(greysOf(imageOf<Image16>(2, {1000, 1001, 1002, 60000}), equalize), (std::vector{0, 85, 170, 255}));
    EXPECT_EQ(greysOf(imageOf<Image32>(2, {-1.0F, 1.0F, 1.5F, 9.0F}), equalize), (std::vector{0, 85, 170, 255}));
    // One shade alone stays what it is.
    EXPECT_EQ(greysOf(imageOf<Image8>(2, {77, 77}), equalize), (std::vector{77, 77}));
}

TEST(EqualizedPicture, ScalesColoursByTheirBrightness)
{
    auto const equalize = conversionOf(ImageConversion::TYPE_EQUALIZE);

    // Brightnesses (77 * 20 + 151 * 40 + 28 * 10 + 128) / 256 = 31 and 10, 200: the middle one becomes 128.
    EXPECT_EQ(colorsOf(imageOf<ImageColor>(3, {Color(10, 10, 10), Color(20, 40, 10), Color(200, 200, 200)}), equalize,
                       Picture::COLOR),
              (std::vector{BLACK, Color(83, 165, 41), Color(255, 255, 255)}));
    // What cannot be seen does not count.
    auto image = imageOf<ImageColor>(3, {Color(5, 5, 5, 0), Color(10, 10, 10), Color(20, 20, 20)});
    image.setHasAlphaChannel(true);
    EXPECT_EQ(colorsOf(image, equalize, Picture::ALPHA)[1], BLACK);
}

TEST(PseudoColouredPicture, RunsFromBlueToRed)
{
    auto const pseudo = conversionOf(ImageConversion::TYPE_PSEUDO);
    Color const green(0, 255, 0);

    // A quarter is 63.75 shades: 51 is four fifths of the way from blue to cyan.
    EXPECT_EQ(colorsOf(imageOf<Image8>(3, {0, 51, 255}), pseudo, Picture::COLOR),
              (std::vector{BLUE, Color(0, 204, 255), RED}));
    EXPECT_EQ(colorsOf(imageOf<Image16>(2, {0, 4095}), pseudo, Picture::COLOR), (std::vector{BLUE, RED}));
    EXPECT_EQ(colorsOf(imageOf<Image32>(3, {-1.0F, NOTHING, 1.0F}), pseudo, Picture::ALPHA),
              (std::vector{BLUE, Color(0, 0, 0, 0), RED}));
    // Shade 128: 128 / 63.75 - 2 = 0.0078 of the way from green to yellow.
    EXPECT_EQ(colorsOf(imageOf<ImageColor>(1, {Color(128, 128, 128)}), pseudo, Picture::COLOR),
              std::vector{Color(2, green.getGreen(), 0)});
}

TEST(PictureCache, ConvertsOnceUnderOneId)
{
    Fig2Qt::PictureCache cache(1000);
    auto const image = imageOf<Image16>(2, {1, 2, 3, 4});
    auto const lighten = conversionOf(ImageConversion::TYPE_LIGHTEN);
    QString const id = Fig2Qt::pictureId(QStringLiteral("a"), image, lighten);

    Picture const first = cache.convert(id, image, lighten);
    EXPECT_EQ(cache.convert(id, image, lighten).pixels, first.pixels);
    EXPECT_NE(cache.convert({}, image, lighten).pixels, first.pixels);
}

TEST(PictureCache, ForgetsWhatWasNotAskedForLately)
{
    Fig2Qt::PictureCache cache(100);
    auto const image = imageOf<Image16>(10, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9,
                                             0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    std::vector<std::weak_ptr<std::vector<unsigned char> const>> made;
    for (int i = 0; i < 20; ++i) {
        made.push_back(cache.convert(QString::number(i), image, ImageConversion::null).owned);
        cache.convert(QStringLiteral("0"), image, ImageConversion::null);
    }

    // 40 bytes each, so five at most of 200.
    EXPECT_LE(std::count_if(made.begin(), made.end(), [](auto const &one) { return !one.expired(); }), 5);
    EXPECT_FALSE(made.front().expired());
    EXPECT_FALSE(made.back().expired());
}

TEST(PictureCache, KeepsNothingLargerThanItself)
{
    Fig2Qt::PictureCache cache(3);
    auto const image = imageOf<Image16>(2, {1, 2, 3, 4});

    std::weak_ptr<std::vector<unsigned char> const> const made =
        cache.convert(QStringLiteral("a"), image, ImageConversion::null).owned;
    EXPECT_TRUE(made.expired());
}

TEST(PictureId, TellsConversionsKindsSizesAndPixelsApart)
{
    auto const image = imageOf<Image8>(2, {1, 2, 3, 4});
    auto const idOf = [](Image const &one, ImageConversion const &conversion = ImageConversion::null) {
        return Fig2Qt::pictureId(QStringLiteral("a"), one, conversion);
    };

    EXPECT_EQ(idOf(image), idOf(imageOf<Image8>(2, {1, 2, 3, 4})));
    EXPECT_NE(idOf(image), Fig2Qt::pictureId(QStringLiteral("b"), image, ImageConversion::null));
    EXPECT_NE(idOf(image), idOf(image, conversionOf(ImageConversion::TYPE_PSEUDO)));
    EXPECT_NE(idOf(image), idOf(image, conversionOf(ImageConversion::TYPE_NORMAL, 0, 254)));
    EXPECT_NE(idOf(image), idOf(imageOf<Image16>(2, {1, 2, 3, 4})));
    EXPECT_NE(idOf(image), idOf(imageOf<Image8>(4, {1, 2, 3, 4})));
    EXPECT_NE(idOf(image), idOf(imageOf<Image8>(2, {1, 2, 4, 4})));
    EXPECT_TRUE(Fig2Qt::pictureId({}, image, ImageConversion::null).isEmpty());
}

} // namespace
} // namespace Zem::Support
