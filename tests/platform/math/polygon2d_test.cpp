#include <ZemLine2d.h>
#include <ZemPolygon2d.h>

#include "points.h"

#include <numbers>

using Zem::LineSegment2d;
using Zem::Polygon2d;

namespace {

Polygon2d polygon(std::vector<Point> const &points)
{
    return Polygon2d(points, true);
}

Polygon2d square(double x, double y, double size)
{
    return polygon({{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}});
}

/// Two squares of edge 10 with a gap between x = 10 and x = 20.
Polygon2d twoSquares()
{
    Polygon2d both = square(0, 0, 10);
    both.addPolygon(square(20, 0, 10));
    return both;
}

bool overlapBothWays(Polygon2d const &a, Polygon2d const &b)
{
    bool const result = a.overlap(b);
    EXPECT_EQ(b.overlap(a), result);
    return result;
}

} // namespace

TEST(Polygon2d, isEmptyWithoutPoints)
{
    Polygon2d const none(true);
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(none.size(), 0u);
    EXPECT_EQ(none.getNumberOfParts(), 0u);
    EXPECT_FALSE(none.isInPolygon({0, 0}));
    EXPECT_FALSE(none.overlap(none));
    EXPECT_FALSE(none.intersect(LineSegment2d({0, 0}, {1, 1}), nullptr));
}

TEST(Polygon2d, takesPointsOneByOne)
{
    Polygon2d triangle(true);
    triangle.addPoint({0, 0});
    triangle.push_back({1, 0});
    triangle.addPoint({0, 1});
    triangle[2].y = 5;
    EXPECT_EQ(triangle, polygon({{0, 0}, {1, 0}, {0, 5}}));
    EXPECT_EQ(triangle.getNumberOfPoints(), 3u);
    EXPECT_EQ(std::as_const(triangle)[2], Point(0, 5));
}

TEST(Polygon2d, keepsTheAddedPolygonAsAPartOfItsOwn)
{
    Polygon2d area = twoSquares();
    area.addPolygon(polygon({{5, 50}}));
    EXPECT_EQ(area.size(), 9u);
    ASSERT_EQ(area.getNumberOfParts(), 3u);
    EXPECT_THAT(area.getPart(1), testing::ElementsAreArray(square(20, 0, 10).getPoints()));
    EXPECT_THAT(area.getPart(2), testing::ElementsAre(Point(5, 50)));
}

TEST(Polygon2d, addsLaterPointsToItsLastPart)
{
    Polygon2d area = square(0, 0, 1);
    area.addPolygon(polygon({{5, 5}}));
    area.addPoint({6, 6});
    EXPECT_THAT(area.getPart(1), testing::ElementsAre(Point(5, 5), Point(6, 6)));
}

TEST(Polygon2d, takesOverAllPartsOfAnAddedPolygon)
{
    Polygon2d area = square(50, 50, 1);
    area.addPolygon(twoSquares());
    EXPECT_EQ(area.getNumberOfParts(), 3u);
    EXPECT_THAT(area.getPart(2), testing::ElementsAreArray(square(20, 0, 10).getPoints()));
}

TEST(Polygon2d, isTheAddedPolygonWhenItWasEmpty)
{
    Polygon2d area(true);
    area.addPolygon(Polygon2d(true));
    area.addPolygon(twoSquares());
    area.addPolygon(Polygon2d(true));
    EXPECT_EQ(area, twoSquares());
}

TEST(Polygon2d, canBeAddedToItself)
{
    Polygon2d area = twoSquares();
    area.addPolygon(area);
    EXPECT_EQ(area.getNumberOfParts(), 4u);
    EXPECT_THAT(area.getPart(3), testing::ElementsAreArray(square(20, 0, 10).getPoints()));
}

TEST(Polygon2d, differsInPointsOrParts)
{
    EXPECT_NE(square(0, 0, 1), square(0, 0, 2));
    EXPECT_NE(twoSquares(), polygon(twoSquares().getPoints()));
}

TEST(Polygon2d, forgetsItsPartsWhenCleared)
{
    Polygon2d area = twoSquares();
    area.clear();
    EXPECT_EQ(area, Polygon2d(true));
    area.addPoint({1, 1});
    EXPECT_EQ(area.getNumberOfParts(), 1u);
}

TEST(Polygon2dWhenRotated, turnsAllPartsCounterClockwiseOnThePage)
{
    Polygon2d area = polygon({{2, 1}});
    area.addPolygon(polygon({{1, 3}}));
    area.rotate({1, 1}, std::numbers::pi / 2);
    // d = (1, 0) goes to (0, -1), d = (0, 2) to (2, 0).
    EXPECT_THAT(area[0], IsNear(1, 0));
    EXPECT_THAT(area[1], IsNear(3, 1));
    EXPECT_EQ(area.getNumberOfParts(), 2u);
}

TEST(Polygon2dWhenRotated, byNothingKeepsEachBit)
{
    Polygon2d area = polygon({{0.1, 0.7}});
    area.rotate({1e9, 1e9}, 0);
    EXPECT_EQ(area, polygon({{0.1, 0.7}}));
}

TEST(PointInPolygon, isInsideOrOnTheBorder)
{
    Polygon2d const triangle = polygon({{0, 0}, {4, 0}, {0, 4}});
    EXPECT_TRUE(triangle.isInPolygon({1, 1}));
    EXPECT_TRUE(triangle.isInPolygon({2, 2}));
    EXPECT_TRUE(triangle.isInPolygon({0, 0}));
    EXPECT_TRUE(triangle.isInPolygon({0, 3}));
    EXPECT_FALSE(triangle.isInPolygon({3, 3}));
    EXPECT_FALSE(triangle.isInPolygon({-1, 0}));
    EXPECT_FALSE(triangle.isInPolygon({5, 0}));
}

TEST(PointInPolygon, isNotMistakenWhenTheRayPassesACorner)
{
    Polygon2d const diamond = polygon({{0, -2}, {2, 0}, {0, 2}, {-2, 0}});
    EXPECT_TRUE(diamond.isInPolygon({0, 0}));
    EXPECT_FALSE(diamond.isInPolygon({-1.5, 1.5}));
    EXPECT_FALSE(diamond.isInPolygon({-3, 0}));
    EXPECT_FALSE(diamond.isInPolygon({-1, 2}));
}

TEST(PointInPolygon, leavesOutTheNotchOfAConcaveShape)
{
    Polygon2d const notched = polygon({{0, 0}, {6, 0}, {6, 6}, {3, 2}, {0, 6}});
    EXPECT_TRUE(notched.isInPolygon({3, 1}));
    EXPECT_FALSE(notched.isInPolygon({3, 4}));
}

TEST(PointInPolygon, isInTheUnionOfTheParts)
{
    Polygon2d area = twoSquares();
    EXPECT_TRUE(area.isInPolygon({5, 5}));
    EXPECT_TRUE(area.isInPolygon({25, 5}));
    EXPECT_FALSE(area.isInPolygon({15, 5}));

    area.addPolygon(square(0, 0, 10));
    EXPECT_TRUE(area.isInPolygon({5, 5})) << "covered twice is still covered";
}

TEST(PointInPolygon, canLieOnADegeneratePart)
{
    EXPECT_TRUE(polygon({{1, 2}}).isInPolygon({1, 2}));
    EXPECT_FALSE(polygon({{1, 2}}).isInPolygon({1, 2.5}));
    EXPECT_TRUE(polygon({{0, 0}, {4, 4}}).isInPolygon({3, 3}));
    EXPECT_FALSE(polygon({{0, 0}, {4, 4}}).isInPolygon({3, 2}));
}

TEST(PointInPolygon, mustBeANumber)
{
    EXPECT_FALSE(square(0, 0, 10).isInPolygon({NOT_A_NUMBER, 5}));
    EXPECT_FALSE(square(0, 0, 10).isInPolygon({5, INFINITE}));
}

TEST(OpenPolygon, coversOnlyItsLine)
{
    Polygon2d const open({{0, 0}, {4, 0}, {4, 4}}, false);
    EXPECT_TRUE(open.isInPolygon({2, 0}));
    EXPECT_FALSE(open.isInPolygon({3, 1}));
    EXPECT_FALSE(open.isInPolygon({2, 2})) << "no closing edge";
    EXPECT_TRUE(Polygon2d({{1, 1}}, false).isInPolygon({1, 1}));
}

TEST(PolygonOverlap, needsACommonPoint)
{
    Polygon2d const area = square(0, 0, 10);
    EXPECT_TRUE(overlapBothWays(area, square(5, 5, 10)));
    EXPECT_TRUE(overlapBothWays(area, square(10, 0, 10))) << "touching along an edge";
    EXPECT_TRUE(overlapBothWays(area, square(10, 10, 10))) << "touching in a corner";
    EXPECT_TRUE(overlapBothWays(area, square(4, 4, 1))) << "one inside the other";
    EXPECT_FALSE(overlapBothWays(area, square(10.5, 0, 10)));
}

TEST(PolygonOverlap, isTrueForACrossWhoseCornersAllLieOutside)
{
    EXPECT_TRUE(
        overlapBothWays(polygon({{-5, 4}, {15, 4}, {15, 6}, {-5, 6}}), polygon({{4, -5}, {6, -5}, {6, 15}, {4, 15}})));
}

TEST(PolygonOverlap, isFalseWhereOnlyTheBoundingBoxesMeet)
{
    EXPECT_FALSE(overlapBothWays(polygon({{0, 0}, {10, 0}, {0, 10}}), square(8, 8, 2)));
}

TEST(PolygonOverlap, treatsTheUnionOfTheParts)
{
    EXPECT_TRUE(overlapBothWays(twoSquares(), square(25, 5, 1)));
    EXPECT_FALSE(overlapBothWays(twoSquares(), square(12, 2, 5))) << "in the gap";
}

TEST(PolygonOverlap, knowsPointsAndSegments)
{
    Polygon2d const area = square(0, 0, 10);
    EXPECT_TRUE(overlapBothWays(area, polygon({{5, 5}})));
    EXPECT_FALSE(overlapBothWays(area, polygon({{15, 5}})));
    EXPECT_TRUE(overlapBothWays(area, polygon({{-5, 5}, {15, 6}})));
    EXPECT_TRUE(overlapBothWays(polygon({{1, 1}}), polygon({{1, 1}})));
    EXPECT_FALSE(overlapBothWays(polygon({{1, 1}}), polygon({{1, 2}})));
}

TEST(PolygonOverlap, isFalseForPartsWithoutNumbers)
{
    Polygon2d const odd = polygon({{NOT_A_NUMBER, 1}, {INFINITE, 2}, {3, -INFINITE}});
    EXPECT_FALSE(overlapBothWays(odd, square(0, 0, 10)));
    EXPECT_FALSE(overlapBothWays(odd, odd));
}

TEST(PolygonAndSegment, meetNearestToTheFirstPoint)
{
    Polygon2d const area = twoSquares();
    Point crossing;
    EXPECT_TRUE(area.intersect(LineSegment2d({-5, 5}, {50, 5}), &crossing));
    EXPECT_THAT(crossing, IsNear(0, 5));
    EXPECT_TRUE(area.intersect(LineSegment2d({50, 5}, {-5, 5}), &crossing));
    EXPECT_THAT(crossing, IsNear(30, 5));
    EXPECT_TRUE(area.intersect(LineSegment2d({5, 5}, {50, 5}), &crossing));
    EXPECT_THAT(crossing, IsNear(10, 5));
}

TEST(PolygonAndSegment, meetAtTheClosingEdge)
{
    Point crossing;
    EXPECT_TRUE(polygon({{0, 0}, {4, 0}, {4, 4}}).intersect(LineSegment2d({0, 4}, {4, 0}), &crossing));
    EXPECT_THAT(crossing, IsNear(2, 2));
}

TEST(PolygonAndSegment, meetAtACornerThatTwoEdgesShare)
{
    Point crossing;
    EXPECT_TRUE(square(0, 0, 10).intersect(LineSegment2d({-5, -5}, {5, 5}), &crossing));
    EXPECT_THAT(crossing, IsNear(0, 0));
}

TEST(PolygonAndSegment, doNotMeetWhenTheSegmentLiesInside)
{
    Point crossing(77, 77);
    EXPECT_FALSE(square(0, 0, 10).intersect(LineSegment2d({2, 2}, {8, 8}), &crossing));
    EXPECT_EQ(crossing, Point(77, 77));
}
