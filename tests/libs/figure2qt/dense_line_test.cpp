// Lines with more points than the output can show, beside pictures of all their points.
#include "page_support.h"

#include <ZemFig2QtPainter.h>

#include <gtest/gtest.h>

#include <QtGui/QPainter>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace Zem::Support {
namespace {

using namespace Fig2;

Vec const PAGE(30.0, 10.0); // 300 x 100 pixels
constexpr double WIDTH = 0.12;

Drawing lineOf(std::vector<Vec> const &points, LineStyle const &style = fullLine(WIDTH), bool closed = false)
{
    return [=](Painter &painter) {
        painter.drawPolygon(Polygon2d(points, closed), style, FillStyle::null, Rotation::null, closed);
    };
}

std::vector<Vec> noise(int count)
{
    std::mt19937 engine(3);
    std::normal_distribution<double> noise(0.0, 1.0);
    std::vector<Vec> points;
    for (int i = 0; i < count; ++i) {
        double const x = 1.0 + 28.0 * i / count;
        points.emplace_back(x, 5.0 + 1.5 * std::sin(x) + noise(engine) * 0.6);
    }
    return points;
}

/// All points, by another program's means: no pixel is half covered at 8 times the resolution, so nothing can count
/// twice, and the mean of 64 of them is what a pixel shows.
QImage allPoints(std::vector<Vec> const &points, double width, bool closed = false, bool round = false)
{
    constexpr int FINER = 8;
    QImage large(300 * FINER, 100 * FINER, QImage::Format_RGB32);
    large.fill(Qt::white);
    {
        QPainter painter(&large);
        painter.scale(10.0 * FINER, 10.0 * FINER);
        painter.setPen(QPen(Qt::black, width, Qt::SolidLine, round ? Qt::RoundCap : Qt::FlatCap,
                            round ? Qt::RoundJoin : Qt::BevelJoin));
        for (std::size_t i = 0; i + 1 < points.size() + (closed ? 1 : 0); ++i) {
            Vec const &from = points[i];
            Vec const &to = points[(i + 1) % points.size()];
            Vec const &after = points[std::min(i + 2, points.size() - 1)];
            painter.drawPolyline(QPolygonF({{from.x, from.y}, {to.x, to.y}, {after.x, after.y}}));
        }
    }
    QImage small(300, 100, QImage::Format_RGB32);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 300; ++x) {
            int sum = 0;
            for (int i = 0; i < FINER * FINER; ++i)
                sum += qGray(large.pixel(x * FINER + i % FINER, y * FINER + i / FINER));
            int const grey = sum / (FINER * FINER);
            small.setPixel(x, y, qRgb(grey, grey, grey));
        }
    }
    return small;
}

/// The root of the mean square of the differences, in levels of 255.
double distance(QImage const &a, QImage const &b)
{
    double sum = 0.0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            double const difference = qGray(a.pixel(x, y)) - qGray(b.pixel(x, y));
            sum += difference * difference;
        }
    }
    return std::sqrt(sum / (static_cast<double>(a.width()) * a.height()));
}

// One level of the 8 x 8 samples of the reference is 4 of 255, and a line of 1.2 pixels is nearly all border.
constexpr double LIKE_ALL_POINTS = 5.0;

TEST(DenseLine, ofAFewPointsToAPixelLooksAsWithAllOfThem)
{
    std::vector<Vec> const points = noise(1'500);

    EXPECT_LT(distance(paint(PAGE, lineOf(points)), allPoints(points, WIDTH)), LIKE_ALL_POINTS);
}

TEST(DenseLine, ofHundredsOfPointsToAPixelLooksAsWithAllOfThem)
{
    std::vector<Vec> const points = noise(60'000);

    EXPECT_LT(distance(paint(PAGE, lineOf(points)), allPoints(points, WIDTH)), LIKE_ALL_POINTS);
}

TEST(DenseLine, showsASinglePeakAmongThousandsOfPoints)
{
    std::vector<Vec> points;
    for (int i = 0; i < 100'000; ++i)
        points.emplace_back(1.0 + 28.0 * i / 100'000.0, 8.0);
    points[50'000].y = 1.0;
    QImage const image = paint(PAGE, lineOf(points));

    // In the middle of the page, up to a millimetre from the top.
    EXPECT_LT(qGray(image.pixel(149, 20)) + qGray(image.pixel(150, 20)), 2 * 255 - 120);
    EXPECT_EQ(qGray(image.pixel(150, 5)), 255);
}

TEST(DenseLine, looksAsWithAllPointsWhenItRunsUpThePage)
{
    std::vector<Vec> points;
    for (Vec const &point : noise(40'000))
        points.emplace_back(3.0 * point.y, point.x / 3.0);

    EXPECT_LT(distance(paint(PAGE, lineOf(points)), allPoints(points, WIDTH)), LIKE_ALL_POINTS);
}

TEST(DenseLine, looksAsWithAllPointsWhenItTurnsBackOnItself)
{
    std::vector<Vec> points;
    for (int i = 0; i < 20'000; ++i)
        points.emplace_back(15.0 + 12.0 * std::sin(i * 0.37), 5.0 + 4.0 * std::sin(i * 0.0011));

    EXPECT_LT(distance(paint(PAGE, lineOf(points)), allPoints(points, WIDTH)), LIKE_ALL_POINTS);
}

TEST(DenseLine, looksAsWithAllPointsWhenItIsSmooth)
{
    std::vector<Vec> points;
    for (int i = 0; i < 50'000; ++i) {
        double const angle = 2.0 * std::numbers::pi * i / 50'000.0;
        points.emplace_back(15.0 + 12.0 * std::cos(angle), 5.0 + 4.0 * std::sin(2.0 * angle));
    }

    EXPECT_LT(distance(paint(PAGE, lineOf(points)), allPoints(points, WIDTH)), LIKE_ALL_POINTS);
}

TEST(DenseLine, goesOnFromWhereItWasToAPlaceFarAway)
{
    // A cloud of points at the left, then a step to the right: the step begins at the last point, not at an extreme.
    std::vector<Vec> points;
    for (int i = 0; i < 1'000; ++i)
        points.emplace_back(2.0 + i * 1e-6, i % 2 ? 2.0 : 8.0);
    points.emplace_back(2.001, 5.0);
    points.emplace_back(28.0, 5.0);
    QImage const image = paint(PAGE, lineOf(points, fullLine(0.4)));

    EXPECT_EQ(colorAt(image, 15.05, 5.05), "black");
    EXPECT_EQ(colorAt(image, 15.05, 4.05), "white");
    EXPECT_EQ(colorAt(image, 15.05, 6.05), "white");
}

TEST(DenseLine, looksAsWithAllPointsWhenItIsClosedAndRound)
{
    std::vector<Vec> const points = noise(5'000);
    LineStyle const style = styledLine(WIDTH, LineStyle::STYLE_FULL, LineStyle::CAP_ROUND);

    EXPECT_LT(distance(paint(PAGE, lineOf(points, style, true)), allPoints(points, WIDTH, true, true)),
              LIKE_ALL_POINTS);
}

TEST(DenseLine, hasOneShadeWhenItIsTranslucent)
{
    std::vector<Vec> points;
    for (int i = 0; i < 100'000; ++i)
        points.emplace_back(5.0 + 20.0 * i / 100'000.0, i % 2 ? 3.0 : 7.0);
    QImage const image = paint(PAGE, lineOf(points, fullLine(WIDTH, Color(255, 0, 0, 51))));

    // A fifth of red on white, wherever the zigzag is closed.
    for (int y = 32; y < 68; ++y) {
        for (int x = 52; x < 248; ++x)
            ASSERT_EQ(colorAt(image, x / 10.0 + 0.05, y / 10.0 + 0.05), "#ffcccc") << x << ", " << y;
    }
}

TEST(DenseLine, keepsItsDashesWhereItIsSmooth)
{
    // 20 mm with 20,000 points, dashes of 2 mm and gaps of 1 mm.
    std::vector<Vec> points;
    for (int i = 0; i <= 20'000; ++i)
        points.emplace_back(5.0 + i * 0.001, 5.0);
    QImage const image = paint(PAGE, lineOf(points, styledLine(0.5, LineStyle::STYLE_DASHED, LineStyle::CAP_SHARP)));

    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(colorAt(image, 6.05 + 3 * i, 5.0), "black") << i;
        EXPECT_EQ(colorAt(image, 7.55 + 3 * i, 5.0), "white") << i;
    }
}

TEST(DenseLine, looksThroughPdfAndSvgAsInThePicture)
{
    std::vector<Vec> const points = noise(60'000);
    QImage const picture = paint(PAGE, lineOf(points));

    // The programs that show the files cover pixels in their own ways; a line missing would count for 100 and more.
    EXPECT_LT(distance(paintThroughPdf(PAGE, lineOf(points)), picture), 16.0);
    EXPECT_LT(distance(paintThroughSvg(PAGE, lineOf(points)), picture), 16.0);
}

TEST(DenseLine, takesNoMoreOfAFileWithMorePoints)
{
    Folder const folder;
    for (char const *name : {"page.pdf", "page.svg", "page.png"}) {
        writePage(folder.file(name), PAGE, lineOf(noise(50'000)));
        auto const some = bytesOf(folder.file(name)).size();
        writePage(folder.file(name), PAGE, lineOf(noise(500'000)));
        EXPECT_LT(static_cast<double>(bytesOf(folder.file(name)).size()), 1.3 * static_cast<double>(some)) << name;
    }
}

TEST(DenseLine, givesTheSameBytesEveryTime)
{
    Folder const folder;
    for (char const *name : {"page.pdf", "page.svg", "page.png"}) {
        writePage(folder.file(name), PAGE, lineOf(noise(30'000)));
        QByteArray const first = bytesOf(folder.file(name));
        writePage(folder.file(name), PAGE, lineOf(noise(30'000)));
        EXPECT_EQ(bytesOf(folder.file(name)), first) << name;
    }
}

TEST(DenseLine, staysWithinAClipThatIsTurned)
{
    QImage const image = paint(PAGE, [](Painter &painter) {
        painter.setClipping(Rect({10, 2}, {20, 8}), Rotation::null);
        painter.setClipping(Rect({12, 2}, {18, 8}), Rotation({15, 5}, std::numbers::pi / 4.0));
        lineOf(noise(50'000), fullLine(20.0))(painter);
        painter.resetClipping();
        painter.resetClipping();
    });

    // The square of 6 turned by 45 degrees reaches from 10.76 to 19.24 at the height of its middle.
    EXPECT_EQ(colorAt(image, 15.05, 5.05), "black");
    EXPECT_EQ(colorAt(image, 11.55, 5.05), "black");
    EXPECT_EQ(colorAt(image, 10.35, 5.05), "white");
    EXPECT_EQ(colorAt(image, 11.55, 2.55), "white");
    EXPECT_EQ(colorAt(image, 15.05, 1.55), "white");
}

TEST(DenseLine, isLeftOutWithACoordinateThatIsNotFinite)
{
    for (double const bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        std::vector<Vec> points = noise(10'000);
        points[7'000].y = bad;
        EXPECT_TRUE(inkOf(paint(PAGE, lineOf(points, fullLine(1.0)))).isNull()) << bad;
    }
}

TEST(DenseLine, withCoordinatesFarBeyondThePageIsPaintedWhereItCrossesIt)
{
    std::vector<Vec> points;
    for (int i = 0; i < 1'000; ++i)
        points.emplace_back(i % 2 ? 1e300 : -1e300, 5.05);
    for (LineStyle const &style : {fullLine(0.3), styledLine(0.3, LineStyle::STYLE_DASHED, LineStyle::CAP_ROUND)}) {
        QImage const image = paint(PAGE, lineOf(points, style));
        EXPECT_EQ(colorAt(image, 0.05, 3.0), "white");
        EXPECT_LT(inkOf(image).height(), 5.0);
        EXPECT_GT(inkOf(image).width(), 290.0);
    }
}

TEST(DenseLine, withAllPointsAtOnePlaceIsADotIfItIsRound)
{
    std::vector<Vec> const points(1'000'000, Vec(15, 5));

    EXPECT_TRUE(inkOf(paint(PAGE, lineOf(points, fullLine(2.0)))).isNull());
    QRectF const dot = inkOf(paint(PAGE, lineOf(points, styledLine(2.0, LineStyle::STYLE_FULL, LineStyle::CAP_ROUND))));
    EXPECT_NEAR(dot.left(), 140, 1);
    EXPECT_NEAR(dot.width(), 20, 2);
    EXPECT_NEAR(dot.height(), 20, 2);
}

/// What a QPainter makes of all points when it gets few of them at a time.
QImage allPointsInPieces(std::vector<Vec> const &points, double width)
{
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(10.0, 10.0);
    painter.setPen(QPen(Qt::black, width, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    for (std::size_t i = 0; i + 1 < points.size(); i += 16) {
        QPolygonF piece;
        for (std::size_t j = i; j < std::min(i + 17, points.size()); ++j)
            piece.append({points[j].x, points[j].y});
        painter.drawPolyline(piece);
    }
    return image;
}

TEST(DenseLine, throughThePainterOfAHostIsAsNearAsAllPointsThroughIt)
{
    std::vector<Vec> const points = noise(60'000);
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter qPainter(&image);
        Fig2Qt::QtPainter painter(&qPainter, QTransform::fromScale(10.0, 10.0));
        lineOf(points)(painter);
    }

    QImage const all = allPoints(points, WIDTH);
    EXPECT_LT(distance(image, all), 1.1 * distance(allPointsInPieces(points, WIDTH), all));
}

TEST(DenseLine, isNearerToAllPointsThanAQPainterThatDrawsThem)
{
    for (int const count : {1'500, 60'000}) {
        std::vector<Vec> const points = noise(count);
        QImage const all = allPoints(points, WIDTH);
        EXPECT_LT(distance(paint(PAGE, lineOf(points)), all), distance(allPointsInPieces(points, WIDTH), all)) << count;
    }
}

TEST(DenseLine, isDrawnWhateverItsShape)
{
    std::vector<Vec> column;
    std::vector<Vec> spiral;
    std::vector<Vec> scribble;
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> share;
    for (int i = 0; i < 300'000; ++i) {
        column.emplace_back(15.0, 1.0 + 8.0 * share(engine));
        spiral.emplace_back(15.0 + 3e-5 * i * std::cos(i * 0.01), 5.0 + 1e-5 * i * std::sin(i * 0.01));
        if (i % 30 == 0)
            scribble.emplace_back(30.0 * share(engine), 10.0 * share(engine));
    }

    LineStyle const dotted = styledLine(WIDTH, LineStyle::STYLE_DOTTED, LineStyle::CAP_ROUND);
    for (std::vector<Vec> const &points : {column, spiral, scribble}) {
        for (LineStyle const &style : {styledLine(WIDTH, LineStyle::STYLE_FULL, LineStyle::CAP_ROUND), dotted})
            EXPECT_LT(qGray(paint(PAGE, lineOf(points, style)).pixel(150, 50)), 128); // all of them go through the middle
    }
}

} // namespace
} // namespace Zem::Support
