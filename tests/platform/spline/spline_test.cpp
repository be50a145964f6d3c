#include <ZemSpline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace Zem {
namespace {

using Points = std::vector<BaVec3d<double>>;

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

Spline splineOf(Points const &points)
{
    Spline spline;
    for (BaVec3d<double> const &point : points)
        spline.appendPoint(point);
    return spline;
}

Points curve(Points const &points, unsigned int count, double from = 0.0, double to = 1.0)
{
    Points out{{9, 9, 9}};
    splineOf(points).interpolatePoints(from, to, count, &out);
    return out;
}

void expectNear(BaVec3d<double> const &actual, BaVec3d<double> const &expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

TEST(Spline, countsAllPointsThatWereAdded)
{
    EXPECT_EQ(Spline().getNumberOfPoints(), 0U);
    EXPECT_EQ(splineOf({{0, 0, 0}, {0, 0, 0}, {NOT_A_NUMBER, 0, 0}}).getNumberOfPoints(), 3U);
}

TEST(Spline, withoutPointsIsEmpty)
{
    EXPECT_TRUE(curve({}, 5).empty());
}

TEST(Spline, ofOnePointRepeatsIt)
{
    EXPECT_EQ(curve({{1, 2, 3}}, 2), (Points{{1, 2, 3}, {1, 2, 3}}));
}

TEST(Spline, ofTwoPointsIsAStraightLine)
{
    Points const line = curve({{0, 0, 0}, {4, 8, -4}}, 5);
    ASSERT_EQ(line.size(), 5U);
    for (unsigned int i = 0; i < 5; ++i)
        expectNear(line[i], {1.0 * i, 2.0 * i, -1.0 * i});
}

TEST(Spline, bendsThroughTheMiddleOfThreePoints)
{
    // Equal segments. The tangent in the middle is level; at the ends it is the chord.
    Points const arch = curve({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}, 5);
    ASSERT_EQ(arch.size(), 5U);
    EXPECT_EQ(arch.front(), (BaVec3d<double>{0, 0, 0}));
    expectNear(arch[1], {0.5, 0.625, 0});
    expectNear(arch[2], {1, 1, 0});
    expectNear(arch[3], {1.5, 0.625, 0});
    EXPECT_EQ(arch.back(), (BaVec3d<double>{2, 0, 0}));
}

TEST(Spline, givesEachSegmentTheSquareRootOfItsLength)
{
    // Lengths 1 and 4, so shares 1 and 2 of 3; the slope at the middle point is 1 * 2/3 + 2 * 1/3.
    Points const points = curve({{0, 0, 0}, {1, 0, 0}, {5, 0, 0}}, 4);
    ASSERT_EQ(points.size(), 4U);
    expectNear(points[1], {1, 0, 0});
    expectNear(points[2], {3.0 - 1.0 / 6.0, 0, 0});
    EXPECT_EQ(points[3], (BaVec3d<double>{5, 0, 0}));
}

TEST(Spline, passesThroughEveryBasePoint)
{
    // All segments are 5 long.
    Points const base{{0, 0, 0}, {3, 4, 0}, {3, 4, 5}, {-1, 1, 5}, {-1, 6, 5}};
    Points const points = curve(base, 5);
    ASSERT_EQ(points.size(), 5U);
    for (std::size_t i = 0; i < base.size(); ++i)
        expectNear(points[i], base[i]);
}

TEST(Spline, takesAPartOfTheCurveAndAlsoBackwards)
{
    Points const line{{0, 0, 0}, {10, 0, 0}};
    Points const part = curve(line, 3, 0.8, 0.2);
    ASSERT_EQ(part.size(), 3U);
    expectNear(part[0], {8, 0, 0});
    expectNear(part[1], {5, 0, 0});
    expectNear(part[2], {2, 0, 0});
}

TEST(Spline, takesParametersOutsideAsTheNearerEnd)
{
    Points const line{{0, 0, 0}, {10, 0, 0}};
    EXPECT_EQ(curve(line, 2, -3.0, 7.0), (Points{{0, 0, 0}, {10, 0, 0}}));
    EXPECT_EQ(curve(line, 1, NOT_A_NUMBER, 1.0), (Points{{0, 0, 0}}));
}

TEST(Spline, ofASinglePointAskedForIsThatAtTheBeginning)
{
    Points const line{{0, 0, 0}, {10, 0, 0}};
    EXPECT_EQ(curve(line, 1, 0.0, 1.0), (Points{{0, 0, 0}}));
    EXPECT_EQ(curve(line, 1, 1.0, 0.0), (Points{{10, 0, 0}}));
    EXPECT_TRUE(curve(line, 0).empty());
}

TEST(Spline, passesOverRepeatedPoints)
{
    Points const once = curve({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}, 9);
    Points const repeated = curve({{0, 0, 0}, {0, 0, 0}, {1, 1, 0}, {1, 1, 0}, {1, 1, 0}, {2, 0, 0}, {2, 0, 0}}, 9);
    EXPECT_EQ(repeated, once);
    EXPECT_EQ(curve({{7, 7, 7}, {7, 7, 7}}, 2), (Points{{7, 7, 7}, {7, 7, 7}}));
}

TEST(Spline, passesOverPointsThatAreNotFinite)
{
    Points const clean = curve({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}}, 9);
    Points const dirty = curve({{INF, 0, 0}, {0, 0, 0}, {1, NOT_A_NUMBER, 0}, {1, 1, 0}, {0, 0, -INF}, {2, 0, 0}}, 9);
    EXPECT_EQ(dirty, clean);
    EXPECT_TRUE(curve({{NOT_A_NUMBER, 0, 0}}, 9).empty());
}

TEST(Spline, passesOverPointsTooNearToTellApart)
{
    double const smallest = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(curve({{0, 0, 0}, {smallest, 0, 0}, {1, 0, 0}}, 5), curve({{0, 0, 0}, {1, 0, 0}}, 5));
}

TEST(Spline, staysFiniteForVeryUnequalSegments)
{
    for (BaVec3d<double> const &point : curve({{0, 0, 0}, {1e-200, 0, 0}, {1e200, 1, 0}, {1e200, 2, 0}}, 1000)) {
        EXPECT_TRUE(std::isfinite(point.x));
        EXPECT_TRUE(std::isfinite(point.y));
    }
}

TEST(Spline, followsAPointThatReturns)
{
    // There and back: the two segments mirror each other.
    Points const points = curve({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}, 5);
    ASSERT_EQ(points.size(), 5U);
    EXPECT_EQ(points[1], points[3]);
    expectNear(points[2], {1, 0, 0});
    expectNear(points[4], {0, 0, 0});
}

TEST(Spline, staysNearItsBasePoints)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(-1.0, 1.0);
    Points base;
    for (int i = 0; i < 200; ++i)
        base.push_back({anywhere(random), anywhere(random), anywhere(random)});
    for (BaVec3d<double> const &point : curve(base, 5000))
        EXPECT_LT(point.length(), 4.0);
}

} // namespace
} // namespace Zem
