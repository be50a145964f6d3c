// Pictures in PDF and SVG files.
#include "picture_support.h"

#include <figqt_embedded_picture.h>

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>

#include <array>
#include <limits>
#include <numbers>
#include <random>

namespace Zem::Support {
namespace {

using namespace Fig2;

Vec const PAGE(10.0, 6.0);

Image8 ramp(unsigned int width, unsigned int height)
{
    Image8 image(width, height);
    for (unsigned int i = 0; i < width * height; ++i)
        image.getRow(0)[i] = static_cast<std::uint8_t>(i % 241);
    return image;
}

/// The image dictionaries of a PDF.
QStringList imagesOf(QByteArray const &pdf)
{
    static QRegularExpression const dictionary(QStringLiteral("<<[^\n]*/Subtype/Image[^\n]*>>"));
    QStringList found;
    for (auto it = dictionary.globalMatch(QString::fromLatin1(pdf)); it.hasNext();)
        found.append(it.next().captured());
    return found;
}

QByteArray pdfOf(Drawing const &drawing, Fig2Qt::PageOptions const &options = {})
{
    Folder const folder;
    writePage(folder.file("page.pdf"), PAGE, drawing, options);
    return bytesOf(folder.file("page.pdf"));
}

QByteArray svgOf(Drawing const &drawing, Fig2Qt::PageOptions const &options = {})
{
    Folder const folder;
    writePage(folder.file("page.svg"), PAGE, drawing, options);
    return bytesOf(folder.file("page.svg"));
}

/// Width and height of the first picture in an SVG file.
QSize sizeInSvg(QByteArray const &svg)
{
    static QRegularExpression const data(QStringLiteral("data:image/png;base64,([^\"]*)\""));
    QString const text = data.match(QString::fromLatin1(svg)).captured(1);
    return QImage::fromData(QByteArray::fromBase64(text.toLatin1()), "PNG").size();
}

Drawing whole(Image const &image, double scaling)
{
    return [&image, scaling](Painter &painter) { drawWhole(painter, image, {1, 1}, scaling); };
}

TEST(PictureInAPdf, IsWrittenOnceHoweverOftenItIsShown)
{
    Image8 const picture = ramp(20, 10);
    Image8 const equal = ramp(20, 10);
    Folder const folder;
    auto const writer = Fig2Qt::createPageWriter(folder.file("page.pdf"));
    for (int page = 0; page < 2; ++page) {
        Painter &painter = writer->beginPage(PAGE);
        for (char const *id : {"a", "b", ""}) {
            painter.drawImage({1, 1}, {4, 2}, &picture, nullptr, {0, 0}, 0.2, QLatin1StringView(id),
                              ImageConversion::null, Rotation::null);
            painter.drawImage({1, 3}, {8, 2}, &equal, nullptr, {0, 0}, 0.4, QLatin1StringView(id),
                              ImageConversion::null, Rotation({3, 3}, 0.1));
        }
    }
    writer->close();

    EXPECT_EQ(imagesOf(bytesOf(folder.file("page.pdf"))).size(), 1);
}

TEST(PictureInAPdf, IsWrittenAgainOnlyWhenItIsShownLarger)
{
    Image8 const picture = ramp(200, 100);
    auto const shown = [&picture](std::vector<double> const &scalings) {
        return imagesOf(pdfOf([&](Painter &painter) {
            for (double const scaling : scalings)
                painter.drawImage({1, 1}, {200 * scaling, 100 * scaling}, &picture, nullptr, {0, 0}, scaling,
                                  QStringLiteral("a"), ImageConversion::null, Rotation::null);
        }));
    };

    EXPECT_EQ(shown({0.04, 0.02, 0.01}).size(), 1);
    EXPECT_EQ(shown({0.01, 0.02}).size(), 2);
}

TEST(PictureInAPdf, HasNoMorePixelsThanTheOutputShowsAndThanThereAre)
{
    Image8 const picture = ramp(400, 100);
    Fig2Qt::PageOptions options;
    options.pictureDpi = 254.0;

    // 10 pixels to a millimetre: 4 by 1 mm have 40 by 10.
    QString const reduced = imagesOf(pdfOf(whole(picture, 0.01), options)).value(0);
    EXPECT_TRUE(reduced.contains(QLatin1StringView("/Width 40/Height 10/"))) << reduced.toStdString();
    QString const enlarged = imagesOf(pdfOf(whole(picture, 0.5), options)).value(0);
    EXPECT_TRUE(enlarged.contains(QLatin1StringView("/Width 400/Height 100/"))) << enlarged.toStdString();
    // At 300 to the inch, 0.127 mm a pixel, there are 1.5 to one.
    QString const usual = imagesOf(pdfOf(whole(picture, 0.0254))).value(0);
    EXPECT_TRUE(usual.contains(QLatin1StringView("/Width 120/Height 30/"))) << usual.toStdString();
}

TEST(PictureInAPdf, OfWhichLittleShowsIsCutToThat)
{
    Image8 const picture = ramp(400, 100);
    auto const part = [&picture](Vec const &inner, Vec const &size) {
        return imagesOf(pdfOf([&](Painter &painter) {
                   painter.drawImage({1, 1}, size, &picture, nullptr, inner, 1.0, {}, ImageConversion::null,
                                     Rotation::null);
               }))
            .value(0);
    };

    EXPECT_TRUE(part({10.5, 20.0}, {4.0, 2.5}).contains(QLatin1StringView("/Width 5/Height 3/")));
    EXPECT_TRUE(part({10.5, 20.0}, {300.0, 75.0}).contains(QLatin1StringView("/Width 400/Height 100/")));
}

TEST(PictureInAPdf, StaysGreyAndKeepsItsAlphaApart)
{
    Image16 grey(2, 2);
    auto colors = imageOf<ImageColor>(1, {Color(10, 20, 30, 40), RED});

    EXPECT_TRUE(imagesOf(pdfOf(whole(grey, 1.0))).value(0).contains(QLatin1StringView("/DeviceGray")));
    QStringList const opaque = imagesOf(pdfOf(whole(colors, 1.0)));
    EXPECT_EQ(opaque.size(), 1);
    EXPECT_TRUE(opaque.value(0).contains(QLatin1StringView("/DeviceRGB")));
    EXPECT_FALSE(opaque.value(0).contains(QLatin1StringView("/SMask")));
    colors.setHasAlphaChannel(true);
    QStringList const translucent = imagesOf(pdfOf(whole(colors, 1.0)));
    EXPECT_EQ(translucent.size(), 2);
    EXPECT_EQ(translucent.filter(QStringLiteral("/SMask")).size(), 1);
    EXPECT_EQ(translucent.filter(QStringLiteral("/DeviceGray")).size(), 1);
    colors.setPixel(0, 0, BLUE); // an alpha that says nothing
    EXPECT_EQ(imagesOf(pdfOf(whole(colors, 1.0))).size(), 1);
}

TEST(PictureAsPng, ComesBackToTheBit)
{
    std::mt19937 engine(2);
    for (Fig2Qt::Picture::Format const format :
         {Fig2Qt::Picture::GREY, Fig2Qt::Picture::COLOR, Fig2Qt::Picture::ALPHA}) {
        for (int const width : {1, 2, 37}) {
            unsigned char *pixels = nullptr;
            Fig2Qt::Picture const picture = Fig2Qt::makePicture(format, width, 23, &pixels);
            // Noise, slopes and even rows, so that each filter has its turn.
            for (std::size_t i = 0; i < picture.getBytes(); ++i)
                pixels[i] = static_cast<unsigned char>(i % 300 < 100 ? engine() : i % 300 < 200 ? 2 * i : 7);
            std::string const png = Fig2Qt::pngOf(picture);
            QImage const image = QImage::fromData(QByteArray(png.data(), static_cast<qsizetype>(png.size())), "PNG")
                                     .convertToFormat(QImage::Format_RGBA8888);

            ASSERT_EQ(image.size(), QSize(width, 23));
            for (int y = 0; y < 23; ++y) {
                for (int x = 0; x < width; ++x) {
                    unsigned char const *wanted =
                        picture.getRow(y) + picture.getPixelBytes() * static_cast<std::size_t>(x);
                    unsigned char const *got = image.constScanLine(y) + 4 * x;
                    bool const grey = format == Fig2Qt::Picture::GREY;
                    ASSERT_EQ(got[0], wanted[0]);
                    ASSERT_EQ(got[1], wanted[grey ? 0 : 1]);
                    ASSERT_EQ(got[2], wanted[grey ? 0 : 2]);
                    ASSERT_EQ(got[3], format == Fig2Qt::Picture::ALPHA ? wanted[3] : 255);
                }
            }
        }
    }
}

TEST(PictureInAFile, HasAResolutionThatIsOne)
{
    Folder const folder;
    for (double const dpi :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        Fig2Qt::PageOptions options;
        options.pictureDpi = dpi;
        for (char const *name : {"page.pdf", "page.svg"})
            EXPECT_THROW(Fig2Qt::createPageWriter(folder.file(name), options), Fig2Qt::OutputError) << name << dpi;
    }
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(PictureInAnSvg, IsWrittenOnceHoweverOftenItIsShown)
{
    Image8 const picture = ramp(20, 10);
    QByteArray const svg = svgOf([&picture](Painter &painter) {
        for (int i = 0; i < 3; ++i)
            drawWhole(painter, picture, {1.0 + i, 1.0}, 0.2, Rotation({1, 1}, i));
    });

    EXPECT_EQ(svg.count("data:image/png;base64,"), 1);
    EXPECT_EQ(svg.count("<use "), 3);
}

TEST(PictureInAnSvg, AsksForPixelsThatAreSeenWhenTheyAreMuchEnlarged)
{
    Image8 const picture = ramp(4, 4);

    EXPECT_EQ(svgOf(whole(picture, 0.3)).count("image-rendering"), 0);
    EXPECT_EQ(svgOf(whole(picture, 0.4)).count("image-rendering=\"pixelated\""), 1); // 4 / 300 of an inch is 0.34 mm
}

TEST(PictureInAnSvg, HasNoMorePixelsThanTheOutputShowsAndThanThereAre)
{
    Image8 const picture = ramp(400, 100);
    Fig2Qt::PageOptions options;
    options.pictureDpi = 254.0;

    EXPECT_EQ(sizeInSvg(svgOf(whole(picture, 0.01), options)), QSize(40, 10));
    EXPECT_EQ(sizeInSvg(svgOf(whole(picture, 0.5), options)), QSize(400, 100));
}

TEST(PictureInAFile, IsTheSameEveryTime)
{
    Image8 const picture = ramp(100, 50);
    auto overlay = imageOf<ImageColor>(2, {Color(255, 0, 0, 100), BLUE});
    overlay.setHasAlphaChannel(true);
    Drawing const drawing = [&](Painter &painter) {
        drawWhole(painter, picture, {1, 1}, 0.05, Rotation({2, 2}, 0.2), &overlay);
        drawWhole(painter, picture, {1, 1}, 0.02);
    };

    EXPECT_EQ(pdfOf(drawing), pdfOf(drawing));
    EXPECT_EQ(svgOf(drawing), svgOf(drawing));
}

using Paint = QImage (*)(Vec const &, Drawing const &);

class PictureThrough : public testing::TestWithParam<std::pair<char const *, Paint>>
{
protected:
    static QImage painted(Drawing const &drawing) { return GetParam().second(PAGE, drawing); }
};

INSTANTIATE_TEST_SUITE_P(Files, PictureThrough,
                         testing::Values(std::pair<char const *, Paint>("pdf", paintThroughPdf),
                                         std::pair<char const *, Paint>("svg", paintThroughSvg)),
                         [](auto const &one) { return std::string(one.param.first); });

/// Green and blue of the pixel in the middle of which the place lies, in millimetres.
std::pair<int, int> channelsAt(QImage const &image, double x, double y)
{
    QRgb const pixel = image.pixel(static_cast<int>(x * 10.0), static_cast<int>(y * 10.0));
    return {qGreen(pixel), qBlue(pixel)};
}

TEST_P(PictureThrough, aProgramThatShowsItLooksLikeThePage)
{
    // Four squares of 10 by 10 pixels, since rsvg-convert softens pixels that are much enlarged.
    Image16 picture(20, 20);
    ImageColor colors(20, 20);
    colors.setHasAlphaChannel(true);
    for (unsigned int i = 0; i < 400; ++i) {
        unsigned int const square = (i % 20 >= 10 ? 1 : 0) + (i >= 200 ? 2 : 0);
        picture.getRow(0)[i] = std::array<std::uint16_t, 4>{0, 10000, 20000, 65535}[square];
        colors.getRow(0)[i] = std::array{RED, Color(0, 0, 255, 128), BLACK, Color(0, 0, 0, 0)}[square];
    }
    Drawing const drawing = [&](Painter &painter) {
        drawWhole(painter, picture, {1, 1}, 0.1);
        painter.drawImage({4, 1}, {1.5, 1.2}, &picture, nullptr, {5, 8}, 0.1, {}, ImageConversion::null,
                          Rotation::null);
        drawWhole(painter, picture, {6.5, 1}, 0.1, Rotation({7.5, 2}, std::numbers::pi / 2.0));
        drawWhole(painter, colors, {1, 3.5}, 0.1);
        painter.pushTransformation({3, 3}, 0.5, Rotation::null);
        drawWhole(painter, picture, {2, 1}, 0.1, Rotation::null, &colors);
        painter.popTransformation();
        painter.drawLine({1, 1.5}, {3, 1.5}, fullLine(0.3, RED), Rotation::null);
    };
    QImage const image = painted(drawing);
    QImage const page = paint(PAGE, drawing);

    // What differs lies along the borders, which pdftoppm puts on whole pixels.
    EXPECT_LT(difference(image, page, 3), 0.07);
    EXPECT_GT(difference(image, paint(PAGE, [](Painter &) {}), 3), 0.15);
    EXPECT_EQ(channelsAt(image, 1.55, 4.05), std::pair(0, 0));
    EXPECT_EQ(channelsAt(image, 2.55, 4.05), std::pair(127, 255));
    EXPECT_EQ(channelsAt(image, 2.55, 5.05), std::pair(255, 255));
}

TEST_P(PictureThrough, aProgramThatShowsItIsPlacedToAFractionOfItsPixel)
{
    // 20 pixels of 0.4 mm, black, grey, black and so on.
    Image8 picture(20, 10);
    for (unsigned int y = 0; y < 10; ++y) {
        for (unsigned int x = 0; x < 20; ++x)
            picture.getRow(y)[x] = x % 2 ? 200 : 0;
    }
    Drawing const drawing = [&](Painter &painter) { drawWhole(painter, picture, {1, 1}, 0.4); };
    QImage const image = painted(drawing);

    for (int x = 0; x < 20; ++x)
        EXPECT_NEAR(channelsAt(image, 1.25 + x * 0.4, 3.0).first, x % 2 ? 200 : 0, 30) << x;
}

} // namespace
} // namespace Zem::Support
