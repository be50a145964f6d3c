#include "page_support.h"

#include <figqt_png_encoder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Support {
namespace {

using namespace Fig2;

std::string encoded(QImage const &image, unsigned int threads = 0)
{
    std::string bytes;
    Fig2Qt::encodePng(image, 300.0, threads, [&bytes](std::string_view piece) { bytes += piece; });
    return bytes;
}

QImage decoded(std::string const &bytes)
{
    QImage image;
    image.loadFromData(QByteArray::fromStdString(bytes), "png");
    return image.convertToFormat(QImage::Format_RGB32);
}

/// A picture of every colour there is, more or less.
QImage colourful(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 13 % 256, (x + y) * 3 % 256));
    }
    return image;
}

TEST(PngEncoder, givesBackTheSamePixels)
{
    for (QSize const size : {QSize(1, 1), QSize(1, 700), QSize(700, 1), QSize(333, 217), QSize(900, 1100)}) {
        QImage const image = colourful(size.width(), size.height());
        EXPECT_EQ(decoded(encoded(image)), image) << size.width() << " x " << size.height();
    }
}

TEST(PngEncoder, takesAByteForAGreyPixel)
{
    QImage grey(300, 200, QImage::Format_RGB32);
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 300; ++x)
            grey.setPixel(x, y, qRgb(x % 256, x % 256, x % 256));
    }

    EXPECT_EQ(encoded(grey)[25], 0); // the colour type in the header
    EXPECT_EQ(decoded(encoded(grey)), grey);
    grey.setPixel(299, 199, qRgb(0, 0, 1));
    EXPECT_EQ(encoded(grey)[25], 2);
    EXPECT_EQ(decoded(encoded(grey)), grey);
}

TEST(PngEncoder, givesTheSameBytesWithAnyNumberOfThreads)
{
    QImage const image = colourful(1200, 1500);
    std::string const one = encoded(image, 1);

    for (unsigned int threads : {0U, 2U, 3U, 7U})
        EXPECT_EQ(encoded(image, threads), one) << threads;
}

TEST(PngEncoder, passesErrorsOfTheReceiverOn)
{
    EXPECT_THROW(Fig2Qt::encodePng(colourful(10, 10), 300.0, 0,
                                   [](std::string_view) { throw Fig2Qt::OutputError(QStringLiteral("full")); }),
                 Fig2Qt::OutputError);
}

TEST(Png, hasThePixelsOfItsResolutionAndTellsIt)
{
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = 150.0;
    writePage(
        folder.file("page.png"), {210, 297}, [](Painter &) {}, options);
    QImage const image(folder.file("page.png"));

    EXPECT_EQ(image.size(), QSize(1240, 1754)); // 210 / 25.4 * 150 = 1240.2, 297 / 25.4 * 150 = 1753.9
    EXPECT_EQ(image.dotsPerMeterX(), 5906);     // 150 / 0.0254 = 5905.5
    EXPECT_EQ(image.dotsPerMeterY(), 5906);
}

TEST(Png, hasAtLeastOnePixel)
{
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = 1.0;
    writePage(
        folder.file("page.png"), {1, 1}, [](Painter &) {}, options);

    EXPECT_EQ(QImage(folder.file("page.png")).size(), QSize(1, 1));
}

struct Refused
{
    char const *name;
    Vec size;
    double dpi;
};

class RefusedPicture : public testing::TestWithParam<Refused>
{
};

TEST_P(RefusedPicture, isAnErrorThatNamesTheFile)
{
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = GetParam().dpi;
    try {
        writePage(
            folder.file("page.png"), GetParam().size, [](Painter &) {}, options);
        FAIL() << "nothing was thrown";
    } catch (Fig2Qt::OutputError const &error) {
        EXPECT_TRUE(error.getText().contains(folder.file("page.png"))) << error.what();
    }
    EXPECT_TRUE(folder.names().isEmpty());
}

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Sizes, RefusedPicture,
    testing::Values(Refused{"tooWide", {1e6, 10}, 300.0}, Refused{"tooManyPixels", {1500, 1500}, 500.0},
                    Refused{"tooFine", {210, 297}, 1e9}, Refused{"noResolution", {210, 297}, 0.0},
                    Refused{"negativeResolution", {210, 297}, -72.0}, Refused{"resolutionNoNumber", {210, 297}, NONE},
                    Refused{"endlessResolution", {210, 297}, ENDLESS}, Refused{"noWidth", {0, 10}, 300.0},
                    Refused{"negativeHeight", {10, -10}, 300.0}, Refused{"sizeNoNumber", {NONE, 10}, 300.0},
                    Refused{"endlessSize", {10, ENDLESS}, 300.0}),
    [](auto const &instance) { return std::string(instance.param.name); });

TEST(Png, tellsHowManyPixelsWereTooMany)
{
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = 25'400.0; // 1,000 to the millimetre
    try {
        writePage(
            folder.file("page.png"), {210, 297}, [](Painter &) {}, options);
        FAIL() << "nothing was thrown";
    } catch (Fig2Qt::OutputError const &error) {
        EXPECT_TRUE(error.getText().contains(QLatin1StringView("210000 x 297000 pixels"))) << error.what();
    }
}

} // namespace
} // namespace Zem::Support
