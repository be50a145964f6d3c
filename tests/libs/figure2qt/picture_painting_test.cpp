// Pictures on pages of pixels.
#include "picture_support.h"

#include <ZemFig2QtPainter.h>
#include <figqt_picture_scaler.h>

#include <gtest/gtest.h>

#include <QtGui/QPainter>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace Zem::Support {
namespace {

using namespace Fig2;

Vec const PAGE(10.0, 6.0);
Color const GREY(100, 100, 100);

/// The grey of the pixel of paint(), whose side is a tenth of a millimetre.
int greyAt(QImage const &image, int x, int y)
{
    QRgb const pixel = image.pixel(x, y);
    EXPECT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel)) << x << ", " << y;
    return qRed(pixel);
}

/// One that tells every pixel from its neighbours.
Image8 numbered(unsigned int width, unsigned int height)
{
    Image8 image(width, height);
    for (unsigned int i = 0; i < width * height; ++i)
        image.getRow(0)[i] = static_cast<std::uint8_t>(i * 37 % 251);
    return image;
}

Image8 const &fourSquares()
{
    static auto const image = imageOf<Image8>(2, {0, 50, 100, 150});
    return image;
}

TEST(PaintedPicture, ShowsItsPixelsWhereTheyBelong)
{
    QImage const image = paint(PAGE, [](Painter &painter) { drawWhole(painter, fourSquares(), {1, 2}, 1.0); });

    for (int const inside : {0, 5, 9}) {
        EXPECT_EQ(greyAt(image, 10 + inside, 20 + inside), 0);
        EXPECT_EQ(greyAt(image, 20 + inside, 20 + inside), 50);
        EXPECT_EQ(greyAt(image, 10 + inside, 30 + inside), 100);
        EXPECT_EQ(greyAt(image, 20 + inside, 30 + inside), 150);
    }
    EXPECT_EQ(colorAt(image, 0.95, 2.55), "white");
    EXPECT_EQ(colorAt(image, 3.05, 2.55), "white");
    EXPECT_EQ(colorAt(image, 1.55, 1.95), "white");
    EXPECT_EQ(colorAt(image, 1.55, 4.05), "white");
}

TEST(PaintedPicture, ShowsThePartThatTheInnerOriginAsksFor)
{
    // Pixel (0.5, 1) lies at (1, 2), and 1.2 mm are 1.2 pixels.
    QImage const image = paint(PAGE, [](Painter &painter) {
        painter.drawImage({1, 2}, {1.2, 0.5}, &fourSquares(), nullptr, {0.5, 1.0}, 1.0, {}, ImageConversion::null,
                          Rotation::null);
    });

    EXPECT_EQ(greyAt(image, 10, 20), 100);
    EXPECT_EQ(greyAt(image, 14, 24), 100);
    EXPECT_EQ(greyAt(image, 15, 20), 150);
    EXPECT_EQ(greyAt(image, 21, 24), 150);
    EXPECT_EQ(greyAt(image, 22, 22), 255);
    EXPECT_EQ(greyAt(image, 15, 25), 255);
}

TEST(PaintedPicture, EndsWithThePictureWhereThePlaceIsLarger)
{
    QImage const image = paint(PAGE, [](Painter &painter) {
        painter.drawImage({1, 1}, {8, 4}, &fourSquares(), nullptr, {-1.0, -1.0}, 1.0, {}, ImageConversion::null,
                          Rotation::null);
    });

    EXPECT_EQ(greyAt(image, 19, 25), 255);
    EXPECT_EQ(greyAt(image, 20, 20), 0);
    EXPECT_EQ(greyAt(image, 39, 39), 150);
    EXPECT_EQ(greyAt(image, 40, 39), 255);
}

TEST(PaintedPicture, IsExactWherePixelsAreThoseOfThePage)
{
    Image8 const picture = numbered(60, 40);
    QImage const image = paint(PAGE, [&](Painter &painter) { drawWhole(painter, picture, {2, 1}, 0.1); });

    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 60; ++x)
            ASSERT_EQ(greyAt(image, 20 + x, 10 + y), picture.getRow(static_cast<unsigned>(y))[x]) << x << ", " << y;
    }
}

TEST(PaintedPicture, HasTheMeanOfAllThatAPixelCovers)
{
    // Three by two pixels to one, and then one and a half by one.
    auto const picture = imageOf<Image8>(6, {0, 30, 60, 7, 9, 11, 90, 120, 150, 13, 15, 17});
    Vec const scale(0.1 / 3.0, 0.1 / 3.0);
    QImage const thirds = paint(PAGE, [&](Painter &painter) { drawWhole(painter, picture, {1, 1}, scale.x); });
    // Two of three rows of the pixel are covered: 2/3 of the mean 75 and 1/3 of white.
    EXPECT_EQ(greyAt(thirds, 10, 10), 135);
    EXPECT_EQ(greyAt(thirds, 11, 10), 93); // 12 * 2/3 + 85

    auto const row = imageOf<Image8>(3, {0, 90, 30});
    Fig2Qt::Picture const shown = Fig2Qt::convertPicture(row, ImageConversion::null);
    Fig2Qt::Picture const two = Fig2Qt::scaled(shown, shown.getRect(), 2, 1);
    EXPECT_EQ(two.pixels[0], 30); // (0 + 90 / 2) / 1.5
    EXPECT_EQ(two.pixels[1], 50); // (90 / 2 + 30) / 1.5
}

TEST(PaintedPicture, KeepsItsBrightnessHoweverSmallItIs)
{
    Image16 picture(3000, 2000);
    for (unsigned int y = 0; y < 2000; ++y) {
        for (unsigned int x = 0; x < 3000; ++x)
            picture.getRow(y)[x] = (x + y) % 2 == 0 ? 65535 : 0;
    }
    // 300 pixels to one.
    QImage const image = paint(PAGE, [&](Painter &painter) { drawWhole(painter, picture, {1, 1}, 0.1 / 300.0); });

    for (int y = 10; y < 16; ++y) {
        for (int x = 10; x < 20; ++x)
            ASSERT_EQ(greyAt(image, x, y), 128);
    }
}

TEST(PaintedPicture, LiesAtAFractionOfAPixel)
{
    // The border between 0 and 200 lies at 2.03 mm, 0.3 into the pixel 20; the picture begins 0.3 into pixel 10.
    auto const picture = imageOf<Image8>(2, {0, 200});
    QImage const image = paint(PAGE, [&](Painter &painter) { drawWhole(painter, picture, {1.03, 1}, 1.0); });

    EXPECT_EQ(greyAt(image, 19, 15), 0);
    EXPECT_NEAR(greyAt(image, 20, 15), 140, 1);
    EXPECT_EQ(greyAt(image, 21, 15), 200);
    EXPECT_NEAR(greyAt(image, 10, 15), 77, 1); // 0.3 of white, 0.7 of black
    EXPECT_EQ(greyAt(image, 11, 15), 0);
    EXPECT_NEAR(greyAt(image, 30, 15), 239, 1); // 0.7 of white, 0.3 of 200
}

TEST(PaintedPicture, PutsEdgesATenthOfAPixelApartApart)
{
    // An edge in the middle of a reduced picture: where it lies is told by the shades about it.
    Image8 picture(200, 10);
    for (unsigned int y = 0; y < 10; ++y)
        std::fill_n(picture.getRow(y) + 100, 100, std::uint8_t{250});
    for (double const shift : {0.0, 0.1, 0.3, 0.7, 0.9}) {
        // A pixel of the page is 4 of the picture: the edge lies 25 + shift / 4 pixels from the left.
        double const scaling = 0.1 / 4.0;
        QImage const image = paint(PAGE, [&](Painter &painter) {
            drawWhole(painter, picture, {1.0 + shift * scaling, 1}, scaling);
        });

        EXPECT_NEAR(greyAt(image, 35, 11), 250.0 - 250.0 * shift / 4.0, 0.51) << shift;
        EXPECT_EQ(greyAt(image, 34, 11), 0);
        EXPECT_EQ(greyAt(image, 36, 11), 250);
    }
}

TEST(PaintedPicture, RunsFromPixelToPixelWhenALittleEnlarged)
{
    // Two pixels of 0.4 mm: their middles at 1.2 and 1.6 mm, between them a line from 0 to 200.
    auto const picture = imageOf<Image8>(2, {0, 200});
    QImage const image = paint(PAGE, [&](Painter &painter) { drawWhole(painter, picture, {1, 1}, 0.4); });

    std::array const expected{0, 0, 25, 75, 125, 175, 200, 200}; // (12.5 - 12) / 4 * 200 = 25
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(greyAt(image, 10 + i, 12), expected[static_cast<std::size_t>(i)]) << i;
}

TEST(PaintedPicture, IsClipped)
{
    QImage const image = paint(PAGE, [](Painter &painter) {
        painter.setClipping(Rect({1.5, 2.5}, {1, 1}), Rotation::null);
        drawWhole(painter, fourSquares(), {1, 2}, 1.0);
        painter.resetClipping();
        painter.setClipping(Polygon2d({{5, 1}, {7, 1}, {5, 3}}, true));
        drawWhole(painter, fourSquares(), {5, 1}, 1.0);
        painter.resetClipping();
    });

    EXPECT_EQ(greyAt(image, 14, 27), 255);
    EXPECT_EQ(greyAt(image, 15, 25), 0);
    EXPECT_EQ(greyAt(image, 24, 34), 150);
    EXPECT_EQ(greyAt(image, 24, 35), 255);
    EXPECT_EQ(greyAt(image, 55, 15), 0);
    EXPECT_EQ(greyAt(image, 64, 28), 255);
    EXPECT_NEAR(greyAt(image, 65, 14), 152, 2); // the border halves the pixel: 50 and white
}

TEST(PaintedPicture, TurnsWithItsElement)
{
    // A quarter counter-clockwise about the middle: the top left pixel goes to the bottom left.
    for (double const scale : {1.0, 0.5}) {
        QImage const image = paint(PAGE, [scale](Painter &painter) {
            drawWhole(painter, fourSquares(), {5.0 - scale, 3.0 - scale}, scale,
                      Rotation({5, 3}, std::numbers::pi / 2.0));
        });

        int const half = static_cast<int>(scale * 5);
        EXPECT_NEAR(greyAt(image, 50 - half, 29 + half), 0, 1);
        EXPECT_NEAR(greyAt(image, 50 - half, 30 - half), 50, 1);
        EXPECT_NEAR(greyAt(image, 49 + half, 29 + half), 100, 1);
        EXPECT_NEAR(greyAt(image, 49 + half, 30 - half), 150, 1);
    }
}

TEST(PaintedPicture, ThatIsTurnedAndReducedHasTheMeanOfWhatAPixelCovers)
{
    Image8 picture(400, 400);
    for (unsigned int y = 0; y < 400; ++y) {
        for (unsigned int x = 0; x < 400; ++x)
            picture.getRow(y)[x] = (x / 2 + y) % 2 == 0 ? 200 : 0;
    }
    QImage const image = paint(PAGE, [&](Painter &painter) {
        drawWhole(painter, picture, {3, 1}, 0.01, Rotation({5, 3}, 0.5));
    });

    for (int y = 20; y < 40; ++y) {
        for (int x = 40; x < 60; ++x)
            ASSERT_NEAR(greyAt(image, x, y), 100, 3) << x << ", " << y;
    }
}

TEST(PaintedPicture, FollowsNestedTransformations)
{
    QImage const image = paint(PAGE, [](Painter &painter) {
        painter.pushTransformation({1, 1}, 2.0, Rotation::null);
        painter.pushTransformation({0.5, 0.25}, 0.5, Rotation::null);
        drawWhole(painter, fourSquares(), {1, 0.5}, 1.0);
        painter.popTransformation();
        painter.popTransformation();
    });

    // (1, 0.5) * 0.5 + (0.5, 0.25) = (1, 0.5); that times 2 and (1, 1) more is (3, 2); a pixel is 1 mm.
    EXPECT_EQ(greyAt(image, 29, 20), 255);
    EXPECT_EQ(greyAt(image, 30, 20), 0);
    EXPECT_EQ(greyAt(image, 40, 20), 50);
    EXPECT_EQ(greyAt(image, 49, 39), 150);
    EXPECT_EQ(greyAt(image, 50, 39), 255);
}

TEST(PaintedPicture, LiesOverWhatCameBeforeAndUnderWhatComesAfter)
{
    QImage const image = paint(PAGE, [](Painter &painter) {
        painter.drawLine({0, 2.5}, {6, 2.5}, fullLine(0.4, RED), Rotation::null);
        drawWhole(painter, fourSquares(), {1, 2}, 1.0);
        painter.drawLine({1.5, 0}, {1.5, 6}, fullLine(0.4, BLUE), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 0.55, 2.55), "red");
    EXPECT_EQ(greyAt(image, 25, 25), 50);
    EXPECT_EQ(colorAt(image, 1.55, 2.55), "blue");
}

TEST(PaintedOverlay, IsBlendedByItsAlpha)
{
    auto const picture = imageOf<Image8>(2, {100, 100, 100, 100});
    auto overlay = imageOf<ImageColor>(2, {Color(255, 0, 0, 51), RED, Color(0, 0, 0, 0), Color(0, 0, 255, 128)});
    auto const drawn = [&] {
        return paint(PAGE, [&](Painter &painter) {
            drawWhole(painter, picture, {1, 1}, 1.0, Rotation::null, &overlay);
        });
    };

    // Without the flag it is opaque.
    EXPECT_EQ(colorAt(drawn(), 1.55, 1.55), "red");
    EXPECT_EQ(colorAt(drawn(), 1.55, 2.55), "black");
    overlay.setHasAlphaChannel(true);
    QImage const image = drawn();
    EXPECT_EQ(colorAt(image, 1.55, 1.55), "#835050"); // 100 * 0.8 + 51 = 131, 80
    EXPECT_EQ(colorAt(image, 2.55, 1.55), "red");
    EXPECT_EQ(colorAt(image, 1.55, 2.55), "#646464");
    EXPECT_EQ(colorAt(image, 2.55, 2.55), "#3232b2"); // 100 * 127 / 255 = 49.8, and 128 more
}

TEST(PaintedOverlay, CoversThePictureWhateverItsSize)
{
    // One by four pixels over two by two: columns of 2 mm, rows of half a millimetre.
    auto const overlay = imageOf<ImageColor>(1, {RED, BLUE, BLACK, Color(0, 255, 0)});
    QImage const image = paint(PAGE, [&](Painter &painter) {
        painter.drawImage({1, 1}, {1, 2}, &fourSquares(), &overlay, {1, 0}, 1.0, {}, ImageConversion::null,
                          Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 1.55, 1.25), "red");
    EXPECT_EQ(colorAt(image, 1.95, 1.75), "blue");
    EXPECT_EQ(colorAt(image, 1.05, 2.25), "black");
    EXPECT_EQ(colorAt(image, 1.55, 2.95), "#00ff00");
    EXPECT_EQ(colorAt(image, 2.05, 1.25), "white");
}

TEST(PaintedOverlay, IsNotConverted)
{
    auto overlay = imageOf<ImageColor>(2, {GREY, GREY, GREY, Color(0, 0, 0, 0)});
    overlay.setHasAlphaChannel(true);
    QImage const image = paint(PAGE, [&](Painter &painter) {
        painter.drawImage({1, 1}, {2, 2}, &fourSquares(), &overlay, {0, 0}, 1.0, QStringLiteral("a"),
                          conversionOf(ImageConversion::TYPE_RANGE, 0, 150), Rotation::null);
    });

    EXPECT_EQ(greyAt(image, 15, 15), 100);
    EXPECT_EQ(greyAt(image, 25, 25), 255);
}

TEST(PaintedPicture, WithHolesShowsWhatLiesBelow)
{
    auto const picture = imageOf<Image32>(2, {0.0F, std::numeric_limits<float>::quiet_NaN(), 1.0F, 1.0F});
    QImage const image = paint(PAGE, [&](Painter &painter) {
        painter.drawRect({0, 0}, {10, 6}, LineStyle::null, FillStyle(RED), Rotation::null);
        drawWhole(painter, picture, {1, 1}, 1.0);
    });

    EXPECT_EQ(colorAt(image, 1.55, 1.55), "black");
    EXPECT_EQ(colorAt(image, 2.55, 1.55), "red");
    EXPECT_EQ(colorAt(image, 1.55, 2.55), "white");
}

TEST(PaintedPicture, DoesNotBleedTheColourOfWhatCannotBeSeen)
{
    auto picture = imageOf<ImageColor>(2, {RED, Color(0, 255, 0, 0)});
    picture.setHasAlphaChannel(true);
    // Both in one pixel: half of it is red, and no green is in it.
    QImage const image = paint(PAGE, [&](Painter &painter) { drawWhole(painter, picture, {1, 1}, 0.05); });

    // The row is half a pixel high: 0.25 of red.
    EXPECT_EQ(colorAt(image, 1.05, 1.05), "#ffbfbf");
}

TEST(PaintedPicture, ThatCannotBeShownIsNoHarm)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    double const endless = std::numeric_limits<double>::infinity();
    Image8 const empty;
    ImageColor const emptyOverlay;
    Vec const at(1, 1);
    Vec const size(2, 2);
    auto const draw = [](Painter &painter, Image const *image, Vec const &position, Vec const &extent, Vec const &inner,
                         double scaling, Rotation const &rotation = Rotation::null) {
        painter.drawImage(position, extent, image, nullptr, inner, scaling, {}, ImageConversion::null, rotation);
    };
    for (char const *name : {"page.png", "page.pdf", "page.svg"}) {
        Folder const folder;
        Drawing const drawing = [&](Painter &painter) {
            draw(painter, nullptr, at, size, {0, 0}, 1.0);
            draw(painter, &empty, at, size, {0, 0}, 1.0);
            for (double const bad : {none, endless, -endless}) {
                draw(painter, &fourSquares(), {bad, 1}, size, {0, 0}, 1.0);
                draw(painter, &fourSquares(), at, {2, bad}, {0, 0}, 1.0);
                draw(painter, &fourSquares(), at, size, {bad, 0}, 1.0);
                draw(painter, &fourSquares(), at, size, {0, 0}, bad);
                draw(painter, &fourSquares(), at, size, {0, 0}, 1.0, Rotation({1, 1}, bad));
            }
            for (double const scaling : {0.0, -1.0, 1e-300, 1e300})
                draw(painter, &fourSquares(), at, size, {0, 0}, scaling);
            draw(painter, &fourSquares(), at, {-2, 2}, {0, 0}, 1.0);
            draw(painter, &fourSquares(), at, {2, 0}, {0, 0}, 1.0);
            draw(painter, &fourSquares(), at, size, {2, 0}, 1.0);
            draw(painter, &fourSquares(), at, size, {-3, 0}, 1.0);
            draw(painter, &fourSquares(), {1e300, 1}, size, {0, 0}, 1.0);
            painter.pushTransformation({0, 0}, 0.0, Rotation::null);
            draw(painter, &fourSquares(), at, size, {0, 0}, 1.0);
            painter.popTransformation();
            painter.drawImage(at, {1, 1}, &fourSquares(), &emptyOverlay, {0, 0}, 1.0, {}, ImageConversion::null,
                              Rotation::null);
        };
        writePage(folder.file(name), PAGE, drawing);
        if (QLatin1StringView(name) != QLatin1StringView("page.png"))
            continue;
        QImage const image = paint(PAGE, drawing);
        EXPECT_EQ(inkOf(image), QRectF(10, 10, 10, 10));
    }
}

TEST(PaintedPicture, MayBeOneHugePixel)
{
    for (Rotation const &rotation : {Rotation::null, Rotation({5, 3}, 0.3)}) {
        Drawing const drawing = [&rotation](Painter &painter) {
            for (double const huge : {1e8, 1e80})
                painter.drawImage({-huge, -huge}, {2 * huge, 2 * huge}, &fourSquares(), nullptr, {0.5, 0.5}, huge, {},
                                  ImageConversion::null, rotation);
        };

        EXPECT_EQ(greyAt(paint(PAGE, drawing), 50, 30), 150);
        Folder const folder;
        writePage(folder.file("page.pdf"), PAGE, drawing);
        writePage(folder.file("page.svg"), PAGE, drawing);
    }
}

TEST(PictureOnAQPainter, LooksLikeThatOfAPage)
{
    Image8 const picture = numbered(30, 20);
    for (double const scaling : {0.05, 0.137, 0.7}) {
        Drawing const drawing = [&](Painter &painter) { drawWhole(painter, picture, {1.03, 0.57}, scaling); };
        QImage const page = paint(PAGE, drawing);
        QImage image(page.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            Fig2Qt::QtPainter onImage(&painter, QTransform::fromScale(10.0, 10.0));
            drawing(onImage);
        }

        EXPECT_LT(difference(image, page, 60), 0.06) << scaling;
    }
}

} // namespace
} // namespace Zem::Support
