// Areas, worked out by hand: 10 pixels of the picture are a millimetre.
#include "page_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace Zem::Support {
namespace {

using namespace Fig2;

TEST(PaintedPolygon, isFilledAndOutlined)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawRect({5, 5}, {10, 8}, fullLine(1.0, BLUE), FillStyle(RED), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 10, 9), "red");
    EXPECT_EQ(colorAt(image, 5.05, 9), "blue");
    EXPECT_EQ(colorAt(image, 4.55, 4.55), "blue");
    EXPECT_EQ(colorAt(image, 4.45, 9), "white");
}

TEST(PaintedPolygon, leavesOutWhatItsOutlineCirclesTwice)
{
    // Two squares, one in the other, run through in the same sense.
    Polygon2d frame({{2, 2}, {18, 2}, {18, 18}, {2, 18}, {2, 2}, {6, 6}, {14, 6}, {14, 14}, {6, 14}, {6, 6}}, true);
    QImage const image = paint({20, 20}, [&](Painter &painter) {
        painter.drawPolygon(frame, LineStyle::null, FillStyle(RED), Rotation::null, true);
    });

    EXPECT_EQ(colorAt(image, 10, 10), "white");
    EXPECT_EQ(colorAt(image, 10, 4), "red");
}

TEST(PaintedPolygon, ofSeveralPartsHasHoles)
{
    Polygon2d area({{2, 2}, {18, 2}, {18, 18}, {2, 18}}, true);
    area.addPolygon(Polygon2d({{6, 6}, {14, 6}, {14, 14}, {6, 14}}, true));
    QImage const image = paint({20, 20}, [&](Painter &painter) {
        painter.drawPolygon(area, LineStyle::null, FillStyle(RED), Rotation::null, true);
    });

    EXPECT_EQ(colorAt(image, 10, 10), "white");
    EXPECT_EQ(colorAt(image, 10, 4), "red");
}

TEST(PaintedPolygon, withoutPointsIsNothing)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawPolygon(Polygon2d(true), fullLine(1.0), FillStyle(RED), Rotation::null, true);
        painter.drawSymbol({10, 10}, Symbol::null, fullLine(1.0), FillStyle(RED), Rotation::null);
    });

    EXPECT_TRUE(inkOf(image).isNull());
}

TEST(PaintedSymbol, ofTheFrameTypeIsHollow)
{
    Symbol const frame(Symbol::TYPE_BORDER, 10.0, false);
    QImage const image = paint({20, 20}, [&](Painter &painter) {
        painter.drawSymbol({10, 10}, frame, LineStyle::null, FillStyle(BLACK), Rotation::null);
    });

    EXPECT_EQ(inkOf(image), QRectF(50, 50, 100, 100));
    EXPECT_EQ(colorAt(image, 10, 10), "white");
    EXPECT_EQ(colorAt(image, 10, 6), "black");
}

TEST(PaintedEllipse, reachesItsRadii)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawEllipse({10, 10}, {8, 4}, 0.0, LineStyle::null, FillStyle(BLACK), Rotation::null);
    });

    QRectF const ink = inkOf(image);
    EXPECT_NEAR(ink.left(), 20, 1);
    EXPECT_NEAR(ink.right(), 180, 1);
    EXPECT_NEAR(ink.top(), 60, 1);
    EXPECT_NEAR(ink.bottom(), 140, 1);
}

TEST(PaintedEllipse, turnsCounterClockwiseByItsAngle)
{
    // An eighth turn: the long axis points to the upper right.
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawEllipse({10, 10}, {8, 2}, M_PI / 4.0, LineStyle::null, FillStyle(BLACK), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 15, 5), "black");
    EXPECT_EQ(colorAt(image, 15, 15), "white");
}

TEST(PaintedEllipse, turnsAboutTheBaseAsWell)
{
    // A quarter turn about the page centre takes (15, 10) to (10, 5).
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawEllipse({15, 10}, {1, 3}, 0.0, LineStyle::null, FillStyle(BLACK), Rotation({10, 10}, M_PI / 2.0));
    });

    QRectF const ink = inkOf(image);
    EXPECT_NEAR(ink.center().x(), 100, 1);
    EXPECT_NEAR(ink.center().y(), 50, 1);
    EXPECT_NEAR(ink.width(), 60, 2);
}

TEST(PaintedEllipseSegment, runsCounterClockwiseFromTheRight)
{
    // A quarter arc from the right to the top.
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawEllipseSegment({10, 10}, {8, 8}, 0.0, M_PI / 2.0, 0.0, fullLine(1.0), FillStyle::null,
                                   Rotation::null);
    });
    double const diagonal = 8.0 * std::sqrt(0.5);

    EXPECT_EQ(colorAt(image, 10 + diagonal, 10 - diagonal), "black");
    EXPECT_EQ(colorAt(image, 10 + diagonal, 10 + diagonal), "white");
    EXPECT_EQ(colorAt(image, 10 - diagonal, 10 - diagonal), "white");
    EXPECT_EQ(colorAt(image, 14, 6), "white"); // no chord
}

TEST(PaintedEllipseSegment, isFilledUpToItsChord)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawEllipseSegment({10, 10}, {8, 8}, 0.0, M_PI / 2.0, 0.0, LineStyle::null, FillStyle(RED),
                                   Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 15, 5), "red");   // beyond the chord from (18, 10) to (10, 2)
    EXPECT_EQ(colorAt(image, 12, 8), "white"); // between chord and centre
}

TEST(PaintedStrip, runsFromTheFirstColourToTheLast)
{
    std::vector<Color> const colors{RED, Color(255, 255, 255), BLUE};
    QImage const image = paint({20, 20}, [&](Painter &painter) {
        painter.drawColors({5, 1}, {4, 18}, true, colors, Rotation::null);
        painter.drawColors({11, 8}, {8, 4}, false, {RED, BLUE}, Rotation::null);
    });

    EXPECT_GT(qRed(image.pixel(70, 12)), 250);
    EXPECT_LT(qBlue(image.pixel(70, 12)), 10);
    EXPECT_GT(qGreen(image.pixel(70, 100)), 245); // white in the middle
    EXPECT_GT(qBlue(image.pixel(70, 188)), 250);
    EXPECT_NEAR(qRed(image.pixel(150, 100)), 128, 6); // half way from red to blue
    EXPECT_NEAR(qBlue(image.pixel(150, 100)), 128, 6);
    EXPECT_EQ(colorAt(image, 10, 10), "white");
}

/// The greatest step of a channel between neighbouring pixels of a column.
int greatestStep(QImage const &image, int x, int from, int to)
{
    int greatest = 0;
    for (int y = from + 1; y < to; ++y) {
        QRgb const a = image.pixel(x, y - 1);
        QRgb const b = image.pixel(x, y);
        greatest = std::max(
            {greatest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
    }
    return greatest;
}

TEST(PaintedStrip, ofAScaleShowsNoBands)
{
    // Three colours on 1500 pixels: every colour in between must be there.
    std::vector<Color> const few{Color(0, 0, 40), Color(0, 160, 0), Color(250, 250, 0)};
    Drawing const drawing = [&](Painter &painter) { painter.drawColors({1, 1}, {4, 150}, true, few, Rotation::null); };

    for (QImage const &image :
         {paint({6, 152}, drawing), paintThroughSvg({6, 152}, drawing), paintThroughPdf({6, 152}, drawing)}) {
        EXPECT_LE(greatestStep(image, 30, 12, 1508), 2);
        // Between the first two colours green rises by 160 on 750 pixels, and nothing stands still for long.
        EXPECT_NEAR(qGreen(image.pixel(30, 10 + 375)), 80, 3);
        EXPECT_NEAR(qGreen(image.pixel(30, 10 + 187)), 40, 3);
    }
}

TEST(PaintedStrip, ofOneColourIsPlainAndOfNoneIsNothing)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawColors({2, 2}, {4, 4}, true, {RED}, Rotation::null);
        painter.drawColors({10, 2}, {4, 4}, true, {}, Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 2.1, 2.1), "red");
    EXPECT_EQ(colorAt(image, 5.9, 5.9), "red");
    EXPECT_EQ(colorAt(image, 12, 4), "white");
}

TEST(Transformation, scalesThenMovesWhatFollows)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.pushTransformation({10, 4}, 0.5, Rotation::null);
        painter.drawRect({0, 0}, {8, 8}, LineStyle::null, FillStyle(BLACK), Rotation::null);
        painter.popTransformation();
        painter.drawRect({0, 0}, {2, 2}, LineStyle::null, FillStyle(RED), Rotation::null);
    });

    EXPECT_EQ(inkOf(image).bottomRight(), QPointF(140, 80));
    EXPECT_EQ(colorAt(image, 10.05, 4.05), "black");
    EXPECT_EQ(colorAt(image, 9.95, 4.05), "white");
    EXPECT_EQ(colorAt(image, 1, 1), "red");
}

TEST(Transformation, scalesLineWidths)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.pushTransformation({0, 0}, 2.0, Rotation::null);
        painter.drawLine({2, 5}, {8, 5}, fullLine(1.0), Rotation::null);
        painter.popTransformation();
    });

    EXPECT_EQ(inkOf(image), QRectF(40, 90, 120, 20));
}

TEST(Transformation, nestsAndTurns)
{
    // Inside out: times 2, to (1, 0); then times 2, turned a quarter about (10, 10): (1, 0) -> (2, 0) -> turned (0,
    // 18).
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.pushTransformation({0, 0}, 2.0, Rotation({10, 10}, M_PI / 2.0));
        painter.pushTransformation({1, 0}, 2.0, Rotation::null);
        painter.drawRect({0, 0}, {1, 2}, LineStyle::null, FillStyle(BLACK), Rotation::null);
        painter.popTransformation();
        painter.popTransformation();
    });

    // The rectangle of 4 x 8 at (2, 0) lies, turned, 8 wide and 4 high with its lower left corner at (0, 18).
    EXPECT_EQ(inkOf(image), QRectF(0, 140, 80, 40));
}

class NotFinite : public testing::TestWithParam<double>
{
};

TEST_P(NotFinite, isLeftOutAndHarmsNothingElse)
{
    double const bad = GetParam();
    Drawing const drawing = [bad](Painter &painter) {
        FillStyle const fill(BLACK);
        LineStyle const line = styledLine(0.5, LineStyle::STYLE_DASHED, LineStyle::CAP_ROUND);
        painter.drawLine({bad, 1}, {5, 5}, line, Rotation::null);
        painter.drawLine({1, 1}, {5, 5}, line, Rotation({0, 0}, bad));
        painter.drawLine({1, 1}, {5, 5}, fullLine(bad), Rotation::null);
        painter.drawPolygon(Polygon2d({{1, 1}, {bad, 5}, {5, 1}}, true), line, fill, Rotation::null, true);
        painter.drawEllipse({5, 5}, {bad, 1}, 0.0, line, fill, Rotation::null);
        painter.drawEllipse({5, 5}, {1, 1}, bad, line, fill, Rotation::null);
        painter.drawEllipseSegment({5, 5}, {2, 2}, 0.0, bad, 0.0, line, fill, Rotation::null);
        painter.drawText({bad, 1}, Font(), QStringLiteral("x"), BLACK, Rotation::null);
        painter.drawRichText({1, bad}, QStringLiteral("x"), Font(), -1.0, Rotation::null, 1);
        painter.drawColors({1, 1}, {bad, 1}, true, {RED, BLUE}, Rotation::null);
        painter.pushTransformation({bad, 0}, 1.0, Rotation::null);
        painter.drawRect({1, 1}, {5, 5}, line, fill, Rotation::null);
        painter.popTransformation();
        painter.pushTransformation({0, 0}, bad, Rotation::null);
        painter.drawRect({1, 1}, {5, 5}, line, fill, Rotation::null);
        painter.drawText({1, 1}, Font(), QStringLiteral("x"), BLACK, Rotation::null);
        painter.popTransformation();
        painter.drawRect({8, 8}, {1, 1}, LineStyle::null, fill, Rotation::null);
    };

    EXPECT_EQ(inkOf(paint({10, 10}, drawing)), QRectF(80, 80, 10, 10));
    EXPECT_EQ(inkOf(paintThroughSvg({10, 10}, drawing)), QRectF(80, 80, 10, 10));
    EXPECT_EQ(inkOf(paintThroughPdf({10, 10}, drawing)), QRectF(80, 80, 10, 10));
}

INSTANTIATE_TEST_SUITE_P(Numbers, NotFinite,
                         testing::Values(std::numeric_limits<double>::quiet_NaN(),
                                         std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity()));

TEST(FarAwayCoordinates, areDrawnAsFarAsThePageReaches)
{
    Drawing const drawing = [](Painter &painter) {
        painter.drawLine({-1e300, 5}, {1e300, 5}, fullLine(1.0), Rotation::null);
        painter.drawRect({-1e200, 7}, {2e200, 1}, LineStyle::null, FillStyle(RED), Rotation::null);
    };
    for (QImage const &image :
         {paint({10, 10}, drawing), paintThroughSvg({10, 10}, drawing), paintThroughPdf({10, 10}, drawing)}) {
        EXPECT_EQ(colorAt(image, 0.5, 5), "black");
        EXPECT_EQ(colorAt(image, 9.5, 5), "black");
        EXPECT_EQ(colorAt(image, 5, 7.5), "red");
    }
}

} // namespace
} // namespace Zem::Support
