#include <ZemPolygon2d.h>

#include "points.h"

#include <random>

using testing::ElementsAre;
using testing::IsEmpty;
using Zem::Polygon2d;

namespace {

std::vector<Point> hullOf(std::vector<Point> const &points)
{
    return Polygon2d(points, true).getConvexHull().getPoints();
}

} // namespace

TEST(ConvexHull, dropsInnerCollinearAndRepeatedPoints)
{
    EXPECT_THAT(hullOf({{4, 4}, {2, 0}, {0, 0}, {2, 1}, {4, 0}, {4, 4}, {0, 4}, {4, 2}, {0, 0}}),
                ElementsAre(Point(0, 0), Point(4, 0), Point(4, 4), Point(0, 4)));
}

TEST(ConvexHull, goesAroundAllPartsInOnePart)
{
    Polygon2d area({{0, 0}, {1, 0}, {0, 1}}, true);
    area.addPolygon(Polygon2d({{5, 5}}, true));
    Polygon2d const hull = area.getConvexHull();
    EXPECT_EQ(hull.getNumberOfParts(), 1u);
    EXPECT_THAT(hull.getPoints(), ElementsAre(Point(0, 0), Point(1, 0), Point(5, 5), Point(0, 1)));
}

TEST(ConvexHull, ofPointsOnOneLineHasTwoEnds)
{
    EXPECT_THAT(hullOf({{1, 1}, {3, 3}, {2, 2}, {0, 0}}), ElementsAre(Point(0, 0), Point(3, 3)));
}

TEST(ConvexHull, ofFewerThanThreeDifferentPointsIsThePolygonItself)
{
    EXPECT_THAT(hullOf({}), IsEmpty());
    EXPECT_THAT(hullOf({{3, 1}}), ElementsAre(Point(3, 1)));
    EXPECT_THAT(hullOf({{3, 1}, {0, 0}, {3, 1}}), ElementsAre(Point(3, 1), Point(0, 0), Point(3, 1)));
}

TEST(ConvexHull, leavesOutPointsThatAreNotFinite)
{
    EXPECT_THAT(hullOf({{0, 0}, {NOT_A_NUMBER, 9}, {4, 0}, {INFINITE, 1}, {0, 4}, {1, -INFINITE}}),
                ElementsAre(Point(0, 0), Point(4, 0), Point(0, 4)));
}

TEST(ConvexHull, containsAllPointsAndTurnsLeftEverywhere)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(-20, 20); // whole numbers, so that sides are exact
    for (int round = 0; round < 200; ++round) {
        Polygon2d cloud(true);
        for (int i = 0; i < 30; ++i) {
            cloud.addPoint(Point(coordinate(random), coordinate(random)));
        }
        Polygon2d const hull = cloud.getConvexHull();
        for (Point const &point : cloud.getPoints()) {
            EXPECT_TRUE(hull.isInPolygon(point));
        }
        for (std::size_t i = 0; i < hull.size(); ++i) {
            Point const along = hull[(i + 1) % hull.size()] - hull[i];
            Point const next = hull[(i + 2) % hull.size()] - hull[i];
            EXPECT_GT(along.x * next.y - along.y * next.x, 0);
        }
    }
}
