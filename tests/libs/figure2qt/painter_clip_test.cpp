// Clipping: 10 pixels of the picture are a millimetre.
#include "page_support.h"

#include <ZemRect.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Zem::Support {
namespace {

using namespace Fig2;

void fillPage(Painter &painter)
{
    painter.drawRect({0, 0}, {20, 20}, LineStyle::null, FillStyle(BLACK), Rotation::null);
}

/// What a drawing that fills a page of 20 x 20 leaves on each output.
void expectInk(Drawing const &drawing, QRectF const &ink)
{
    EXPECT_EQ(inkOf(paint({20, 20}, drawing)), ink) << "PNG";
    EXPECT_EQ(inkOf(paintThroughSvg({20, 20}, drawing)), ink) << "SVG";
    // pdftoppm paints pixels of which a clipping leaves the slightest part.
    QRectF const pdf = inkOf(paintThroughPdf({20, 20}, drawing));
    EXPECT_TRUE((pdf.isEmpty() && ink.isEmpty()) ||
                (pdf.adjusted(-1, -1, 1, 1).contains(ink) && ink.adjusted(-1, -1, 1, 1).contains(pdf)))
        << "PDF";
}

TEST(Clipping, limitsDrawingToAnArea)
{
    expectInk(
        [](Painter &painter) {
            painter.setClipping(Rect(2, 3, 10, 12), Rotation::null);
            fillPage(painter);
            painter.resetClipping();
        },
        QRectF(20, 30, 100, 120));
}

TEST(Clipping, withinAnotherLeavesWhatIsInBoth)
{
    expectInk(
        [](Painter &painter) {
            painter.setClipping(Rect(2, 2, 10, 10), Rotation::null);
            painter.setClipping(Rect(6, 4, 12, 12), Rotation::null);
            fillPage(painter);
            painter.resetClipping();
            painter.resetClipping();
        },
        QRectF(60, 40, 60, 80));
}

TEST(Clipping, resetGivesBackTheOneBefore)
{
    expectInk(
        [](Painter &painter) {
            painter.setClipping(Rect(2, 2, 10, 10), Rotation::null);
            painter.setClipping(Rect(6, 4, 12, 12), Rotation::null);
            painter.resetClipping();
            fillPage(painter);
            painter.resetClipping();
        },
        QRectF(20, 20, 100, 100));
}

TEST(Clipping, ofAnEmptyAreaHidesEverything)
{
    expectInk(
        [](Painter &painter) {
            painter.setClipping(Polygon2d(true));
            fillPage(painter);
            painter.resetClipping();
        },
        QRectF());
}

TEST(Clipping, leavesColoursAndStylesOfBeforeInForceBehindIt)
{
    // Within a clipping another colour is set; the next shape must still get its own.
    Drawing const drawing = [](Painter &painter) {
        painter.drawRect({0, 0}, {4, 4}, LineStyle::null, FillStyle(RED), Rotation::null);
        painter.setClipping(Rect(5, 5, 4, 4), Rotation::null);
        painter.drawRect({0, 0}, {20, 20}, LineStyle::null, FillStyle(BLUE), Rotation::null);
        painter.resetClipping();
        painter.drawRect({10, 10}, {4, 4}, LineStyle::null, FillStyle(RED), Rotation::null);
    };
    for (QImage const &image :
         {paint({20, 20}, drawing), paintThroughSvg({20, 20}, drawing), paintThroughPdf({20, 20}, drawing)}) {
        EXPECT_EQ(colorAt(image, 7, 7), "blue");
        EXPECT_EQ(colorAt(image, 12, 12), "red");
    }
}

TEST(Clipping, turnsWithItsRotation)
{
    QImage const image = paint({20, 20}, [](Painter &painter) {
        painter.setClipping(Rect(6, 6, 8, 8), Rotation({10, 10}, M_PI / 4.0));
        fillPage(painter);
        painter.resetClipping();
    });

    EXPECT_EQ(colorAt(image, 10, 4.6), "black"); // the corner, turned to the top
    EXPECT_EQ(colorAt(image, 6.3, 6.3), "white");
}

TEST(Clipping, moveWithTheTransformation)
{
    expectInk(
        [](Painter &painter) {
            painter.pushTransformation({4, 4}, 2.0, Rotation::null);
            painter.setClipping(Rect(1, 1, 3, 3), Rotation::null);
            fillPage(painter);
            painter.resetClipping();
            painter.popTransformation();
        },
        QRectF(60, 60, 60, 60));
}

TEST(Clipping, ofPartsThatOverlapIsTheirUnion)
{
    Polygon2d area({{2, 2}, {10, 2}, {10, 10}, {2, 10}}, true);
    area.addPolygon(Polygon2d({{6, 6}, {14, 6}, {14, 14}, {6, 14}}, true));
    QImage const image = paint({20, 20}, [&](Painter &painter) {
        painter.setClipping(area);
        fillPage(painter);
        painter.resetClipping();
    });

    EXPECT_EQ(colorAt(image, 8, 8), "black");
    EXPECT_EQ(colorAt(image, 12, 12), "black");
    EXPECT_EQ(colorAt(image, 12, 4), "white");
}

class ClippingArea : public testing::Test
{
    Folder folder_;
    std::unique_ptr<Fig2Qt::PageWriter> writer_ = Fig2Qt::createPageWriter(folder_.file("page.svg"));

protected:
    Painter &painter_ = writer_->beginPage({20, 20});
};

TEST_F(ClippingArea, isNoneAtFirst)
{
    Polygon2d area({{1, 1}}, true);

    EXPECT_FALSE(painter_.getClipping(&area));
    EXPECT_EQ(area.size(), 1U);
}

TEST_F(ClippingArea, isThePolygonThatWasSet)
{
    Polygon2d const set({{2, 2}, {10, 2}, {10, 12}, {2, 12}}, true);
    painter_.setClipping(set);

    Polygon2d area;
    ASSERT_TRUE(painter_.getClipping(&area));

    EXPECT_EQ(area.getPoints(), set.getPoints());
}

TEST_F(ClippingArea, isWhatAllClippingsShare)
{
    painter_.setClipping(Rect(2, 2, 10, 10), Rotation::null);
    painter_.setClipping(Rect(6, 4, 12, 12), Rotation::null);

    Polygon2d area;
    ASSERT_TRUE(painter_.getClipping(&area));

    EXPECT_EQ(Rect(area), Rect(6, 4, 6, 8));
}

TEST_F(ClippingArea, comesInTheCoordinatesInForce)
{
    painter_.setClipping(Rect(2, 2, 10, 10), Rotation::null);
    painter_.pushTransformation({2, 4}, 2.0, Rotation::null);

    Polygon2d area;
    ASSERT_TRUE(painter_.getClipping(&area));

    EXPECT_EQ(Rect(area), Rect(0, -1, 5, 5));
}

TEST_F(ClippingArea, mayBeAskedForWithoutAPlaceForIt)
{
    painter_.setClipping(Rect(2, 2, 10, 10), Rotation::null);

    EXPECT_TRUE(painter_.getClipping(nullptr));
}

} // namespace
} // namespace Zem::Support
