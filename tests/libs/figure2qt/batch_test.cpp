// Marks, bars and lines that follow each other in great numbers.
#include "page_support.h"

#include <figqt_mark_thinner.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace Zem::Support {
namespace {

using namespace Fig2;

Vec const PAGE(30.0, 10.0);
LineStyle const NO_LINE(0.1, LineStyle::STYLE_NONE, BLACK);

void drawMark(Painter &painter, Vec const &at, Color const &color, double size = 2.0,
              Symbol::Type type = Symbol::TYPE_CIRCLE, Rotation const &rotation = Rotation::null)
{
    painter.drawSymbol(at, Symbol(type, size, false), NO_LINE, FillStyle(color), rotation);
}

/// What a symbol is: a polygon through its corners.
void drawAsPolygon(Painter &painter, Vec const &at, Color const &color, double size, Symbol::Type type)
{
    painter.Painter::drawSymbol(at, Symbol(type, size, false), NO_LINE, FillStyle(color), Rotation::null);
}

enum class Output { PNG, PDF, SVG };

class OnEveryOutput : public testing::TestWithParam<Output>
{
protected:
    static QImage painted(Drawing const &drawing)
    {
        switch (GetParam()) {
        case Output::PDF:
            return paintThroughPdf(PAGE, drawing);
        case Output::SVG:
            return paintThroughSvg(PAGE, drawing);
        default:
            return paint(PAGE, drawing);
        }
    }
};

std::string nameOf(testing::TestParamInfo<Output> const &info)
{
    return info.param == Output::PNG ? "png" : info.param == Output::PDF ? "pdf" : "svg";
}

INSTANTIATE_TEST_SUITE_P(Batch, OnEveryOutput, testing::Values(Output::PNG, Output::PDF, Output::SVG), nameOf);

TEST_P(OnEveryOutput, laterMarksLieAboveEarlierOnes)
{
    QImage const image = painted([](Painter &painter) {
        drawMark(painter, {10, 5}, RED);
        drawMark(painter, {10.5, 5}, BLUE);
        drawMark(painter, {20, 5}, BLUE);
        drawMark(painter, {20.5, 5}, RED);
    });

    EXPECT_EQ(colorAt(image, 9.25, 5.05), "red");
    EXPECT_EQ(colorAt(image, 10.25, 5.05), "blue");
    EXPECT_EQ(colorAt(image, 19.25, 5.05), "blue");
    EXPECT_EQ(colorAt(image, 20.25, 5.05), "red");
}

TEST_P(OnEveryOutput, whatComesBetweenMarksLiesBetweenThem)
{
    QImage const image = painted([](Painter &painter) {
        drawMark(painter, {10, 5}, RED);
        painter.drawRect({9, 4.8}, {2, 0.4}, LineStyle::null, FillStyle(BLACK), Rotation::null);
        drawMark(painter, {10.5, 5}, BLUE);
        painter.drawLine({10, 5.05}, {15, 5.05}, fullLine(0.3, RED), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 9.45, 5.55), "red");
    EXPECT_EQ(colorAt(image, 9.25, 5.05), "black");
    EXPECT_EQ(colorAt(image, 9.85, 5.05), "blue");
    EXPECT_EQ(colorAt(image, 10.55, 5.05), "red");
}

TEST_P(OnEveryOutput, linesAndBarsOfTwoColoursKeepTheirOrder)
{
    QImage const image = painted([](Painter &painter) {
        for (int i = 0; i < 4; ++i) {
            Color const color = i % 2 ? BLUE : RED;
            painter.drawLine({5.0 + i, 3}, {25, 3}, fullLine(1.0, color), Rotation::null);
            painter.drawRect({5.0 + i, 6}, {20.0 - i, 1}, LineStyle::null, FillStyle(color), Rotation::null);
        }
    });

    for (double const y : {3.05, 6.55}) {
        EXPECT_EQ(colorAt(image, 5.5, y), "red") << y;
        EXPECT_EQ(colorAt(image, 6.5, y), "blue") << y;
        EXPECT_EQ(colorAt(image, 7.5, y), "red") << y;
        EXPECT_EQ(colorAt(image, 20.5, y), "blue") << y;
    }
}

TEST_P(OnEveryOutput, aClipHoldsForTheMarksDrawnInItOnly)
{
    QImage const image = painted([](Painter &painter) {
        drawMark(painter, {5, 5}, RED, 4.0);
        painter.setClipping(Rect({9, 0}, {10, 10}), Rotation::null);
        drawMark(painter, {10, 5}, BLUE, 4.0);
        painter.resetClipping();
        drawMark(painter, {20, 5}, RED, 4.0);
    });

    EXPECT_EQ(colorAt(image, 6.5, 5.05), "red");
    EXPECT_EQ(colorAt(image, 9.5, 5.05), "blue");
    EXPECT_EQ(colorAt(image, 8.5, 5.05), "white");
    EXPECT_EQ(colorAt(image, 21.5, 5.05), "red");
}

TEST_P(OnEveryOutput, marksAreTurnedWithTheirElement)
{
    // A pyramid of 4 about (15, 5), its point up; half a turn takes it down.
    QImage const image = painted([](Painter &painter) {
        drawMark(painter, {15, 5}, BLACK, 4.0, Symbol::TYPE_PYRAMID, Rotation({15, 5}, std::numbers::pi));
    });

    EXPECT_EQ(colorAt(image, 13.5, 3.35), "black");
    EXPECT_EQ(colorAt(image, 13.5, 6.65), "white");
    EXPECT_EQ(colorAt(image, 15.0, 6.55), "black");
}

TEST_P(OnEveryOutput, marksOfAllShapesLookLikeTheirPolygons)
{
    auto const all = [](auto const &draw) {
        return [draw](Painter &painter) {
            for (int type = 0; type <= 13; ++type)
                draw(painter, Vec(2.033 + type * 2.01, 3.0 + type * 0.317), type % 2 ? RED : BLUE, 1.7,
                     static_cast<Symbol::Type>(type));
        };
    };
    QImage const marks = painted(all([](Painter &painter, Vec const &at, Color const &color, double size,
                                        Symbol::Type type) { drawMark(painter, at, color, size, type); }));

    // A sixteenth of a pixel makes a border pixel differ by up to 16 levels along straight sides, twice at corners.
    EXPECT_LT(difference(marks, painted(all(drawAsPolygon)), 40), 0.002);
    EXPECT_GT(difference(marks, painted([](Painter &) {}), 40), 0.03);
}

TEST_P(OnEveryOutput, translucentMarksAddUp)
{
    QImage const image = painted([](Painter &painter) {
        for (int i = 0; i < 2; ++i)
            drawMark(painter, {15, 5}, Color(255, 0, 0, 51), 4.0, Symbol::TYPE_BOX);
    });

    // 255 * 0.8 * 0.8 = 163.2
    EXPECT_NEAR(qGreen(image.pixel(150, 50)), 163, 2);
}

TEST_P(OnEveryOutput, barsNarrowerThanAPixelCloseToOneArea)
{
    QImage const image = painted([](Painter &painter) {
        for (int i = 0; i < 20'000; ++i)
            painter.drawRect({5.0 + i * 0.001, 8.0}, {0.001, -6.0}, LineStyle::null, FillStyle(BLACK), Rotation::null);
    });

    EXPECT_EQ(inkOf(image), QRectF(50, 20, 200, 60));
    for (int x = 51; x < 249; ++x)
        EXPECT_EQ(qGray(image.pixel(x, 50)), 0) << x;
}

TEST_P(OnEveryOutput, spikesShowTheLongestOfThoseAtOnePlace)
{
    QImage const image = painted([](Painter &painter) {
        for (int i = 0; i < 5'000; ++i) {
            double const x = 15.05 + (i % 100) * 1e-5;
            painter.drawLine({x, 9.0}, {x, i == 2'500 ? 1.0 : 6.0}, fullLine(0.3), Rotation::null);
        }
    });

    EXPECT_EQ(colorAt(image, 15.05, 2.05), "black");
    EXPECT_EQ(colorAt(image, 15.05, 7.05), "black");
    EXPECT_EQ(colorAt(image, 15.05, 0.55), "white");
    EXPECT_EQ(colorAt(image, 15.55, 7.05), "white");
}

TEST_P(OnEveryOutput, levelAndUprightLinesThroughOnePlaceStayApart)
{
    QImage const image = painted([](Painter &painter) {
        painter.drawLine({15.02, 5.02}, {15.02, 5.03}, fullLine(0.3), Rotation::null);
        painter.drawLine({10, 5.025}, {20, 5.025}, fullLine(0.3), Rotation::null);
        painter.drawLine({15.02, 2}, {15.02, 8}, fullLine(0.3), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 11.05, 5.02), "black");
    EXPECT_EQ(colorAt(image, 15.02, 2.55), "black");
    EXPECT_EQ(colorAt(image, 12.05, 3.05), "white");
}

TEST_P(OnEveryOutput, marksFarAwayOrNowhereAreNoHarm)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    QImage const image = painted([none](Painter &painter) {
        for (Vec const &at : {Vec(1e300, 5), Vec(5, -1e300), Vec(none, 5), Vec(5, none)})
            drawMark(painter, at, BLACK);
        drawMark(painter, {5, 5}, BLACK, none);
        drawMark(painter, {5, 5}, BLACK, 0.0);
        drawMark(painter, {5, 5}, BLACK, 2.0, Symbol::TYPE_NONE);
        drawMark(painter, {20, 5}, BLUE);
    });

    EXPECT_EQ(inkOf(image).left() > 150.0, true);
    EXPECT_EQ(colorAt(image, 20.05, 5.05), "blue");
}

TEST(ManyLines, acrossThePageAreDrawn)
{
    QImage const image = paint({300, 100}, [](Painter &painter) {
        for (int i = 0; i < 300'000; ++i) {
            double const y = 20.0 + i % 60'000 * 7919 % 60'000 * 0.001;
            painter.drawLine({10, y}, {290, y}, fullLine(0.1), Rotation::null);
        }
    });

    // Half a line above the first one, and half of the pixel row below the last one less its hundredth.
    EXPECT_EQ(inkOf(image), QRectF(100, 199, 2800, 601));
}

TEST(ManyMarks, keepTheirOrderFromOneBatchToTheNext)
{
    // More marks than are gathered, all but the last two of them red.
    QImage const image = paint(PAGE, [](Painter &painter) {
        for (int i = 0; i < 300'000; ++i)
            drawMark(painter, {1.0 + i % 280 * 0.1, 1.0 + i / 280 % 80 * 0.1}, RED, 0.4);
        drawMark(painter, {10, 5}, BLUE);
        drawMark(painter, {20, 6.4}, BLUE); // across the border of the band at 64 rows
    });

    EXPECT_EQ(colorAt(image, 10.05, 5.05), "blue");
    EXPECT_EQ(colorAt(image, 20.05, 6.05), "blue");
    EXPECT_EQ(colorAt(image, 20.05, 6.75), "blue");
    EXPECT_EQ(colorAt(image, 15.05, 5.05), "red");
}

TEST(ManyMarks, takeNoMoreOfAFileWhenTheyHideEachOther)
{
    auto const clouds = [](int count) {
        return [count](Painter &painter) {
            std::mt19937 engine(4);
            std::uniform_real_distribution<double> share;
            for (int i = 0; i < count; ++i)
                drawMark(painter, {5.0 + 3.0 * share(engine), 5.0 + 3.0 * share(engine)}, i % 2 ? RED : BLUE, 1.0);
        };
    };
    Folder const folder;
    for (char const *name : {"page.pdf", "page.svg", "page.png"}) {
        writePage(folder.file(name), PAGE, clouds(20'000));
        auto const some = bytesOf(folder.file(name)).size();
        writePage(folder.file(name), PAGE, clouds(200'000));
        EXPECT_LT(static_cast<double>(bytesOf(folder.file(name)).size()), 2.0 * static_cast<double>(some)) << name;
    }
}

TEST(HiddenMarks, areLeftOutWhenLaterOnesCoverThem)
{
    QPainterPath square;
    square.addRect(-1, -1, 2, 2);
    Fig2Qt::Mark const mark{square, 1};
    Color const translucent(0, 0, 255, 128);
    auto const kept = [&mark](std::vector<Fig2Qt::PlacedMark> const &places) {
        return Fig2Qt::withoutHidden(mark, places, 0.1).size();
    };

    EXPECT_EQ(kept({{{5, 5}, RED}, {{5, 5}, BLUE}}), 1U);
    EXPECT_EQ(kept({{{5, 5}, RED}, {{5, 5}, translucent}}), 2U);
    EXPECT_EQ(kept({{{5, 5}, translucent}, {{5, 5}, BLUE}}), 1U);
    EXPECT_EQ(kept({{{5, 5}, RED}, {{5.5, 5}, BLUE}}), 2U);
    // Two halves cover it together.
    EXPECT_EQ(kept({{{5, 5}, RED}, {{4.1, 5}, BLUE}, {{5.9, 5}, BLUE}}), 2U);
}

TEST(HiddenMarks, areKeptWhereTheyAreNotCovered)
{
    QPainterPath square;
    square.addRect(-1, -1, 2, 2);
    std::vector<Fig2Qt::PlacedMark> places;
    for (int i = 0; i < 100; ++i)
        places.push_back({{-300.0 + i * 6.4, 5.0 - i}, RED});

    EXPECT_EQ(Fig2Qt::withoutHidden({square, 1}, places, 0.1).size(), 100U);
}

} // namespace
} // namespace Zem::Support
