// Vectors, that is lines with triangles and dots, coloured by value.
#include "page_support.h"

#include <ZemFig2QtPainter.h>

#include <gtest/gtest.h>

#include <QtGui/QPainter>

#include <cmath>
#include <random>

namespace Zem::Support {
namespace {

using namespace Fig2;

Vec const PAGE(30.0, 20.0);
Color const GREEN(0, 255, 0);

void fillTriangle(Painter &painter, Vec const &a, Vec const &b, Vec const &c, Color const &color)
{
    painter.drawPolygon(Polygon2d({a, b, c}, true), LineStyle::null, FillStyle(color), Rotation::null, true);
}

void drawVector(Painter &painter, Vec const &from, Vec const &way, Color const &color)
{
    Vec const across(-way.y * 0.15, way.x * 0.15);
    painter.drawLine(from, from + way * 0.7, fullLine(0.1, color), Rotation::null);
    fillTriangle(painter, from + way, from + way * 0.7 + across, from + way * 0.7 - across, color);
    painter.drawEllipse(from, {0.15, 0.15}, 0.0, LineStyle::null, FillStyle(color), Rotation::null);
}

Drawing field(int count, double longest)
{
    return [count, longest](Painter &painter) {
        std::mt19937 engine(8);
        std::uniform_real_distribution<double> share;
        for (int i = 0; i < count; ++i) {
            double const angle = 6.3 * share(engine);
            double const length = longest * (0.3 + 0.7 * share(engine));
            auto const level = static_cast<unsigned char>(static_cast<int>(100.0 * share(engine)) * 2);
            Vec const from(2.0 + 26.0 * share(engine), 2.0 + 16.0 * share(engine));
            drawVector(painter, from, Vec(std::cos(angle), std::sin(angle)) * length, Color(level, 200, 30));
        }
    };
}

using Paint = QImage (*)(Vec const &, Drawing const &);

class VectorsOn : public testing::TestWithParam<std::pair<char const *, Paint>>
{
protected:
    static QImage painted(Drawing const &drawing) { return GetParam().second(PAGE, drawing); }
};

INSTANTIATE_TEST_SUITE_P(Outputs, VectorsOn,
                         testing::Values(std::pair<char const *, Paint>("png", paint),
                                         std::pair<char const *, Paint>("pdf", paintThroughPdf),
                                         std::pair<char const *, Paint>("svg", paintThroughSvg)),
                         [](auto const &one) { return std::string(one.param.first); });

TEST_P(VectorsOn, laterOnesLieAboveEarlierOnes)
{
    QImage const image = painted([](Painter &painter) {
        for (int i = 0; i < 5; ++i) {
            double const x = 3.0 + 5.0 * i;
            fillTriangle(painter, {x, 3}, {x + 4, 3}, {x, 7}, RED);
            fillTriangle(painter, {x + 4, 7}, {x + 4, 3}, {x, 7}, GREEN);
            painter.drawLine({x, 3.1}, {x + 4, 6.9}, fullLine(0.5, BLUE), Rotation::null);
            fillTriangle(painter, {x + 2, 4}, {x + 3, 6}, {x + 1, 6}, RED);
        }
    });

    for (int i = 0; i < 5; ++i) {
        double const x = 3.0 + 5.0 * i;
        EXPECT_EQ(colorAt(image, x + 1.55, 3.55), "red") << i;
        EXPECT_EQ(colorAt(image, x + 2.55, 6.55), "#00ff00") << i;
        EXPECT_EQ(colorAt(image, x + 0.75, 3.75), "blue") << i;
        EXPECT_EQ(colorAt(image, x + 2.05, 5.05), "red") << i;
        EXPECT_EQ(colorAt(image, x + 3.35, 6.35), "blue") << i;
    }
}

TEST_P(VectorsOn, whatTrianglesOfOneColourShareIsFilledWhateverTheirDirection)
{
    QImage const image = painted([](Painter &painter) {
        fillTriangle(painter, {3, 3}, {7, 3}, {3, 7}, RED);
        fillTriangle(painter, {3, 3}, {3, 7}, {7, 7}, RED);
        fillTriangle(painter, {7, 3}, {7, 7}, {3, 3}, RED);
    });

    EXPECT_EQ(colorAt(image, 3.45, 4.55), "red");
    EXPECT_EQ(colorAt(image, 5.55, 4.05), "red");
    EXPECT_EQ(colorAt(image, 5.05, 5.95), "red");
}

TEST_P(VectorsOn, translucentOnesShowWhatLiesBelow)
{
    Color const translucent(255, 0, 0, 51);
    QImage const image = painted([&translucent](Painter &painter) {
        fillTriangle(painter, {3, 3}, {9, 3}, {3, 9}, BLUE);
        fillTriangle(painter, {3, 3}, {9, 3}, {3, 9}, translucent);
        fillTriangle(painter, {13, 3}, {19, 3}, {13, 9}, translucent);
        fillTriangle(painter, {13, 3}, {19, 3}, {13, 9}, translucent);
        painter.drawLine({3, 12}, {6, 15}, fullLine(1.0, translucent), Rotation::null);
        painter.drawLine({3, 15}, {6, 12}, fullLine(1.0, translucent), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 4.55, 4.55), "#3300cc");
    EXPECT_NEAR(qGreen(image.pixel(145, 45)), 163, 2); // 255 * 0.8 * 0.8
    EXPECT_NEAR(qGreen(image.pixel(35, 125)), 204, 2);
    EXPECT_NEAR(qGreen(image.pixel(45, 135)), 163, 2);
}

TEST_P(VectorsOn, aClipHoldsForTheOnesDrawnInIt)
{
    QImage const image = painted([](Painter &painter) {
        fillTriangle(painter, {2, 2}, {8, 2}, {2, 8}, BLUE);
        painter.setClipping(Rect({12, 4}, {3, 3}), Rotation::null);
        fillTriangle(painter, {10, 2}, {18, 2}, {10, 10}, RED);
        painter.drawLine({11, 5.5}, {16, 5.6}, fullLine(0.5, BLUE), Rotation::null);
        painter.resetClipping();
        fillTriangle(painter, {20, 2}, {28, 2}, {20, 10}, RED);
    });

    EXPECT_EQ(colorAt(image, 3.05, 3.05), "blue");
    EXPECT_EQ(colorAt(image, 11.55, 5.55), "white");
    EXPECT_EQ(colorAt(image, 13.05, 5.55), "blue");
    EXPECT_EQ(colorAt(image, 12.55, 4.55), "red");
    EXPECT_EQ(colorAt(image, 12.55, 3.55), "white");
    EXPECT_EQ(colorAt(image, 21.05, 5.05), "red");
}

TEST_P(VectorsOn, lookAsIfEachWerePaintedByItself)
{
    Drawing const drawing = field(600, 3.0);
    QImage const image = painted(drawing);
    QImage single(image.size(), QImage::Format_RGB32);
    single.fill(Qt::white);
    {
        QPainter painter(&single);
        Fig2Qt::QtPainter onImage(&painter, QTransform::fromScale(10.0, 10.0));
        drawing(onImage);
    }

    EXPECT_LT(difference(image, single, 100), 0.01);
    EXPECT_GT(difference(image, paint(PAGE, [](Painter &) {}), 100), 0.1);
}

TEST_P(VectorsOn, shortLinesLieBetweenWhatComesBeforeAndAfter)
{
    QImage const image = painted([](Painter &painter) {
        painter.drawLine({2, 5}, {28, 5}, fullLine(1.0, RED), Rotation::null);
        painter.drawLine({4, 4}, {6, 6}, fullLine(0.5, BLUE), Rotation::null);
        painter.drawLine({4, 6}, {6, 4}, fullLine(0.5, GREEN), Rotation::null);
        painter.drawLine({2, 4.7}, {28, 4.7}, fullLine(0.2, BLACK), Rotation::null);
        painter.drawLine({12, 4}, {14, 6}, fullLine(0.5, BLUE), Rotation::null);
        painter.drawRect({12.5, 4.5}, {1, 1}, LineStyle::null, FillStyle(BLUE), Rotation::null);
        painter.drawRect({12.8, 4.8}, {0.4, 0.4}, LineStyle::null, FillStyle(RED), Rotation::null);
        for (int i = 0; i < 12; ++i)
            painter.drawLine({20.0 + 0.1 * i, 4}, {20.4 + 0.1 * i, 6}, fullLine(0.2, GREEN), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 3.05, 5.25), "red");
    EXPECT_EQ(colorAt(image, 5.35, 5.35), "blue");
    EXPECT_EQ(colorAt(image, 5.05, 5.05), "#00ff00");
    EXPECT_EQ(colorAt(image, 5.35, 4.7), "black");
    EXPECT_EQ(colorAt(image, 12.35, 4.35), "blue");
    EXPECT_EQ(colorAt(image, 12.65, 5.35), "blue");
    EXPECT_EQ(colorAt(image, 13.05, 5.05), "red");
    EXPECT_EQ(colorAt(image, 20.75, 5.05), "#00ff00");
    EXPECT_EQ(colorAt(image, 20.75, 4.7), "#00ff00");
}

TEST_P(VectorsOn, crossesOfChangingColoursKeepTheirs)
{
    QImage const image = painted([](Painter &painter) {
        for (int i = 0; i < 20; ++i) {
            Color const color = i % 2 ? RED : BLUE;
            double const x = 2.05 + i;
            painter.drawLine({x - 0.4, 5.05}, {x + 0.4, 5.05}, fullLine(0.2, color), Rotation::null);
            painter.drawLine({x, 4.65}, {x, 5.45}, fullLine(0.2, color), Rotation::null);
        }
    });

    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(colorAt(image, 2.05 + i, 4.75), i % 2 ? "red" : "blue") << i;
        EXPECT_EQ(colorAt(image, 2.25 + i, 5.05), i % 2 ? "red" : "blue") << i;
        EXPECT_EQ(colorAt(image, 2.35 + i, 4.75), "white") << i;
    }
}

TEST(ManyVectors, takeFewBytesOfAFile)
{
    Folder const folder;
    for (auto const &[name, bytes] : {std::pair("page.pdf", 50), std::pair("page.svg", 160)}) {
        writePage(folder.file(name), PAGE, field(20'000, 0.5));
        EXPECT_LT(bytesOf(folder.file(name)).size(), 20'000 * bytes) << name;
        EXPECT_GT(bytesOf(folder.file(name)).size(), 20'000 * 10) << name;
    }
}

TEST(ManyVectors, giveTheSameBytesEveryTime)
{
    Folder const folder;
    for (char const *name : {"page.png", "page.pdf", "page.svg"}) {
        writePage(folder.file(name), PAGE, field(20'000, 1.0));
        QByteArray const first = bytesOf(folder.file(name));
        writePage(folder.file(name), PAGE, field(20'000, 1.0));
        EXPECT_EQ(bytesOf(folder.file(name)), first) << name;
    }
}

TEST(ManyLinesOfOneColour, areStillGathered)
{
    // Ten lines next to each other, each half a pixel wide, slanted a little: together they leave no gaps.
    QImage const image = paint(PAGE, [](Painter &painter) {
        for (int i = 0; i < 40; ++i) {
            double const x = 5.0 + i * 0.05;
            painter.drawLine({x, 5}, {x + 0.001, 9}, fullLine(0.05), Rotation::null);
        }
    });

    for (int x = 51; x < 69; ++x)
        EXPECT_LE(qGray(image.pixel(x, 70)), 2) << x;
}

} // namespace
} // namespace Zem::Support
