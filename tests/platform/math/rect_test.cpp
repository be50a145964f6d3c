#include <ZemLine2d.h>
#include <ZemPolygon2d.h>
#include <ZemRect.h>

#include "points.h"

using Zem::LineSegment2d;
using Zem::Polygon2d;
using Zem::Rect;

TEST(Rect, isMadeOfCornerAndSize)
{
    EXPECT_EQ(Rect(Point(1, 2), Point(3, 4)), Rect(1, 2, 3, 4));
}

TEST(Rect, givesItsCornersAlongTheWidthFirst)
{
    Rect const rect(1, 2, 10, 20);
    EXPECT_EQ(rect.p0(), Point(1, 2));
    EXPECT_EQ(rect.p1(), Point(11, 2));
    EXPECT_EQ(rect.p2(), Point(11, 22));
    EXPECT_EQ(rect.p3(), Point(1, 22));
}

TEST(Rect, isTheBoundingBoxOfAllPartsOfAPolygon)
{
    Polygon2d polygon({{3, 4}, {1, 9}}, true);
    polygon.addPolygon(Polygon2d({{-2, 5}}, true));
    EXPECT_EQ(Rect(polygon), Rect(-2, 4, 5, 5));
}

TEST(Rect, ofAPolygonWithoutPointsIsZero)
{
    EXPECT_EQ(Rect(Polygon2d(true)), Rect(0, 0, 0, 0));
    EXPECT_EQ(Rect(Polygon2d({{NOT_A_NUMBER, 1}, {2, INFINITE}}, true)), Rect(0, 0, 0, 0));
}

TEST(Rect, leavesOutPointsThatAreNotFinite)
{
    EXPECT_EQ(Rect(Polygon2d({{1, 1}, {NOT_A_NUMBER, 50}, {3, 2}, {50, -INFINITE}}, true)), Rect(1, 1, 2, 1));
}

TEST(RectAndRect, intersectWhenTheyShareAreaOrTouch)
{
    Rect const rect(0, 0, 10, 10);
    EXPECT_TRUE(rect.intersects(Rect(5, 5, 10, 10)));
    EXPECT_TRUE(rect.intersects(Rect(2, 2, 1, 1)));
    EXPECT_TRUE(rect.intersects(Rect(10, 0, 5, 5)));
    EXPECT_TRUE(rect.intersects(Rect(10, 10, 5, 5)));
    EXPECT_FALSE(rect.intersects(Rect(10.5, 0, 5, 5)));
    EXPECT_FALSE(rect.intersects(Rect(0, -6, 5, 5)));
}

TEST(RectAndRect, intersectWhenTheSizeIsNegative)
{
    EXPECT_TRUE(Rect(10, 10, -10, -10).intersects(Rect(1, 1, 1, 1)));
    EXPECT_FALSE(Rect(10, 10, -2, -2).intersects(Rect(1, 1, 1, 1)));
}

TEST(RectAndRect, doNotIntersectWithoutNumbers)
{
    EXPECT_FALSE(Rect(0, 0, NOT_A_NUMBER, 10).intersects(Rect(0, 0, 10, 10)));
    EXPECT_FALSE(Rect(0, 0, 10, 10).intersects(Rect(NOT_A_NUMBER, 0, 10, 10)));
}

TEST(RectAndPoint, intersectInsideAndOnTheBorder)
{
    Rect const rect(0, 0, 10, 5);
    EXPECT_TRUE(rect.intersects(Point(3, 3)));
    EXPECT_TRUE(rect.intersects(Point(10, 5)));
    EXPECT_FALSE(rect.intersects(Point(10, 5.1)));
    EXPECT_FALSE(rect.intersects(Point(NOT_A_NUMBER, 3)));
}

TEST(RectAndSegment, meetNearestToTheFirstPoint)
{
    Rect const rect(0, 0, 10, 10);
    Point crossing;
    EXPECT_TRUE(rect.intersect(LineSegment2d({-5, 5}, {15, 5}), &crossing));
    EXPECT_THAT(crossing, IsNear(0, 5));
    EXPECT_TRUE(rect.intersect(LineSegment2d({15, 5}, {-5, 5}), &crossing));
    EXPECT_THAT(crossing, IsNear(10, 5));
    EXPECT_TRUE(rect.intersect(LineSegment2d({4, 4}, {4, -8}), nullptr));
}

TEST(RectAndSegment, doNotMeetWhenTheSegmentLiesInside)
{
    Point crossing(77, 77);
    EXPECT_FALSE(Rect(0, 0, 10, 10).intersect(LineSegment2d({2, 2}, {8, 8}), &crossing));
    EXPECT_EQ(crossing, Point(77, 77));
}
