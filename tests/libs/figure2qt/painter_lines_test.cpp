// Lines, worked out by hand: 10 pixels of the picture are a millimetre.
#include "page_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Zem::Support {
namespace {

using namespace Fig2;

/// A horizontal line from (5, 5) to (25, 5) on a page of 30 x 10.
QImage horizontalLine(LineStyle const &style)
{
    return paint({30, 10}, [&](Painter &painter) { painter.drawLine({5, 5}, {25, 5}, style, Rotation::null); });
}

/// The colours of the base line at these places.
std::vector<bool> inkAt(QImage const &image, std::vector<double> const &places, double y = 5.0)
{
    std::vector<bool> ink;
    for (double const x : places)
        ink.push_back(colorAt(image, x, y) == "black");
    return ink;
}

TEST(PaintedLine, endsExactlyAtItsPointsWhenSharp)
{
    EXPECT_EQ(inkOf(horizontalLine(fullLine(2.0))), QRectF(50, 40, 200, 20));
}

TEST(PaintedLine, reachesHalfItsWidthBeyondItsPointsWhenRound)
{
    QImage const image = horizontalLine(styledLine(2.0, LineStyle::STYLE_FULL, LineStyle::CAP_ROUND));

    QRectF const ink = inkOf(image);
    EXPECT_NEAR(ink.left(), 40, 1);
    EXPECT_NEAR(ink.right(), 260, 1);
    EXPECT_EQ(colorAt(image, 4.15, 4.15), "white"); // the corner that a square end would fill
}

TEST(PaintedLine, isNotDrawnInStyleNone)
{
    EXPECT_TRUE(inkOf(horizontalLine(LineStyle(2.0, LineStyle::STYLE_NONE, BLACK))).isNull());
    EXPECT_TRUE(inkOf(horizontalLine(LineStyle::null)).isNull());
}

TEST(PaintedLine, ofWidthZeroIsATenthOfAMillimetre)
{
    QImage const image = paint({30, 10}, [](Painter &painter) {
        painter.drawLine({5, 5.05}, {25, 5.05}, fullLine(0.0), Rotation::null);
    });

    EXPECT_EQ(inkOf(image), QRectF(50, 50, 200, 1));
}

TEST(PaintedLine, hasDashesOfFourWidthsAndGapsOfTwo)
{
    QImage const image = horizontalLine(styledLine(1.0, LineStyle::STYLE_DASHED, LineStyle::CAP_SHARP));

    EXPECT_EQ(inkAt(image, {5.1, 8.9, 9.1, 10.9, 11.1, 14.9, 15.1, 16.9, 17.1}),
              (std::vector{true, true, false, false, true, true, false, false, true}));
}

TEST(PaintedLine, hasDotsOfOneWidthAndGapsOfTwo)
{
    QImage const image = horizontalLine(styledLine(1.0, LineStyle::STYLE_DOTTED, LineStyle::CAP_SHARP));

    EXPECT_EQ(inkAt(image, {5.1, 5.9, 6.1, 7.9, 8.1, 8.9, 9.1}),
              (std::vector{true, true, false, false, true, true, false}));
}

TEST(PaintedLine, alternatesDashesAndDots)
{
    QImage const image = horizontalLine(styledLine(1.0, LineStyle::STYLE_DASH_DOTTED, LineStyle::CAP_SHARP));

    EXPECT_EQ(inkAt(image, {5.1, 8.9, 9.1, 10.9, 11.1, 11.9, 12.1, 13.9, 14.1, 17.9, 18.1}),
              (std::vector{true, true, false, false, true, true, false, false, true, true, false}));
}

TEST(PaintedLine, scalesItsDashesWithItsWidth)
{
    QImage const image = horizontalLine(styledLine(2.0, LineStyle::STYLE_DASHED, LineStyle::CAP_SHARP));

    EXPECT_EQ(inkAt(image, {12.9, 13.1, 16.9, 17.1}), (std::vector{true, false, false, true}));
}

TEST(PaintedLine, hasRoundDashesAsLongAsSharpOnes)
{
    // The dash itself is 3 long from 5 to 8; its ends reach from 4.5 to 8.5. Then a gap of 3 less the ends.
    QImage const image = horizontalLine(styledLine(1.0, LineStyle::STYLE_DASHED, LineStyle::CAP_ROUND));

    EXPECT_EQ(inkAt(image, {4.7, 8.3, 8.6, 10.4, 10.7, 14.3, 14.6}),
              (std::vector{true, true, false, false, true, true, false}));
}

TEST(PaintedLine, hasMitredCornersWhenSharpAndRoundOnesElse)
{
    auto const corner = [](LineStyle::CapStyle cap) {
        return paint({20, 20}, [cap](Painter &painter) {
            painter.drawPolygon(Polygon2d({{5, 15}, {5, 5}, {15, 5}}, false),
                                styledLine(2.0, LineStyle::STYLE_FULL, cap), FillStyle::null, Rotation::null, false);
        });
    };

    EXPECT_EQ(colorAt(corner(LineStyle::CAP_SHARP), 4.15, 4.15), "black");
    EXPECT_EQ(colorAt(corner(LineStyle::CAP_ROUND), 4.15, 4.15), "white");
}

TEST(PaintedLine, turnsCounterClockwiseAboutTheBase)
{
    // A quarter turn about (5, 15) takes the line along x up the page.
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.drawLine({5, 15}, {15, 15}, fullLine(2.0), Rotation({5, 15}, M_PI / 2.0));
    });

    EXPECT_EQ(inkOf(image), QRectF(40, 50, 20, 100));
}

TEST(PaintedLine, isTranslucentWithATranslucentColour)
{
    EXPECT_EQ(colorAt(horizontalLine(fullLine(2.0, Color(255, 0, 0, 51))), 15, 5), "#ffcccc");
}

/// A zigzag with points at every tenth of a millimetre between heights 4 and 6.
Polygon2d zigzag(int points)
{
    Polygon2d line(false);
    for (int i = 0; i < points; ++i)
        line.addPoint({1.0 + i * 28.0 / points, i % 2 ? 4.0 : 6.0});
    return line;
}

TEST(LongPolyline, fillsTheBandThatItSwingsIn)
{
    QImage const image = paint({30, 10}, [](Painter &painter) {
        painter.drawPolygon(zigzag(20'000), fullLine(0.1), FillStyle::null, Rotation::null, false);
    });

    // Half the width of the line, which is a pixel, may stand out on each side.
    EXPECT_TRUE(inkOf(image).contains(QRectF(10, 40, 280, 20)));
    EXPECT_TRUE(QRectF(9, 39, 282, 22).contains(inkOf(image)));
}

TEST(LongPolyline, keepsItsCornersWhereThePiecesMeet)
{
    // 60 steps of 1 mm in 90 degree corners: every corner is mitred, whichever piece it belongs to.
    Polygon2d stairs(false);
    for (int i = 0; i < 60; ++i)
        stairs.addPoint({2.0 + (i + 1) / 2, 2.0 + i / 2});
    QImage const image = paint({40, 40}, [&](Painter &painter) {
        painter.drawPolygon(stairs, fullLine(0.4), FillStyle::null, Rotation::null, false);
    });

    for (int i = 1; i + 1 < 60; ++i) {
        double const outwards = i % 2 ? 0.15 : -0.15;
        EXPECT_EQ(colorAt(image, stairs[static_cast<std::size_t>(i)].x + outwards,
                          stairs[static_cast<std::size_t>(i)].y - outwards),
                  "black")
            << i;
    }
}

TEST(LongPolyline, goesOnWithItsDashesFromPieceToPiece)
{
    Polygon2d line(false);
    for (int i = 0; i <= 100; ++i)
        line.addPoint({5.0 + i * 0.2, 5.0});
    QImage const image = paint({30, 10}, [&](Painter &painter) {
        painter.drawPolygon(line, styledLine(0.5, LineStyle::STYLE_DASHED, LineStyle::CAP_SHARP), FillStyle::null,
                            Rotation::null, false);
    });

    // Dashes of 2, gaps of 1: the middle of each.
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(colorAt(image, 6.05 + 3 * i, 5.0), "black") << i;
        EXPECT_EQ(colorAt(image, 7.55 + 3 * i, 5.0), "white") << i;
    }
}

TEST(LongPolyline, ofATranslucentColourHasOneShade)
{
    Polygon2d line(false);
    for (int i = 0; i <= 100; ++i)
        line.addPoint({5.0 + i * 0.2, 5.0});
    QImage const image = paint({30, 10}, [&](Painter &painter) {
        painter.drawPolygon(line, fullLine(2.0, Color(255, 0, 0, 51)), FillStyle::null, Rotation::null, false);
    });

    EXPECT_NEAR(qGreen(image.pixel(150, 50)), 204, 1);
    for (int x = 52; x < 249; ++x)
        EXPECT_EQ(image.pixel(x, 50), image.pixel(150, 50)) << x;
}

TEST(LongPolyline, closesWithACorner)
{
    Polygon2d square(true);
    for (int side = 0; side < 4; ++side) {
        for (int i = 0; i < 20; ++i) {
            double const t = i * 0.5;
            square.addPoint(side == 0   ? Vec(5 + t, 5)
                            : side == 1 ? Vec(15, 5 + t)
                            : side == 2 ? Vec(15 - t, 15)
                                        : Vec(5, 15 - t));
        }
    }
    QImage const image = paint({20, 20}, [&](Painter &painter) {
        painter.drawPolygon(square, fullLine(1.0), FillStyle::null, Rotation::null, true);
    });

    EXPECT_EQ(inkOf(image), QRectF(45, 45, 110, 110));
    EXPECT_EQ(colorAt(image, 4.55, 4.55), "black");
}

} // namespace
} // namespace Zem::Support
