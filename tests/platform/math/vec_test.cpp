#include "points.h"

using Zem::BaVec2d;
using Zem::BaVec3d;

TEST(Vec2d, isZeroByDefault)
{
    EXPECT_EQ(Point(), Point(0, 0));
}

TEST(Vec2d, calculatesByComponent)
{
    EXPECT_EQ(Point(1, 2) + Point(10, 20), Point(11, 22));
    EXPECT_EQ(Point(1, 2) - Point(10, 20), Point(-9, -18));
    EXPECT_EQ(-Point(1, -2), Point(-1, 2));
    EXPECT_EQ(Point(1, 2) * 3.0, Point(3, 6));
    EXPECT_EQ(3.0 * Point(1, 2), Point(3, 6));
    EXPECT_EQ(Point(3, 6) / 3.0, Point(1, 2));
}

TEST(Vec2d, changesInPlace)
{
    Point v(1, 2);
    v += Point(3, 3);
    v -= Point(2, 1);
    v *= 6.0;
    v /= 2.0;
    EXPECT_EQ(v, Point(6, 12));
}

TEST(Vec2d, knowsLengthAndScalarProduct)
{
    EXPECT_EQ(Point(3, 4).length(), 5);
    EXPECT_EQ(Point(1e200, 0).length(), 1e200);
    EXPECT_EQ(Point(1, 2).dot(Point(3, 4)), 11);
}

TEST(Vec2d, differsWhenOneComponentDiffers)
{
    EXPECT_NE(Point(1, 2), Point(1, 3));
    EXPECT_NE(Point(1, 2), Point(0, 2));
}

TEST(Vec2d, worksInConstantExpressions)
{
    static_assert(BaVec2d<int>(1, 2) + BaVec2d<int>(1, 1) == BaVec2d<int>(2, 3));
    constexpr Point point;
    EXPECT_EQ(point.x, 0);
}

TEST(Vec3d, calculatesByComponent)
{
    using Vec = BaVec3d<double>;
    EXPECT_EQ(Vec(1, 2, 3) + Vec(10, 20, 30), Vec(11, 22, 33));
    EXPECT_EQ(Vec(1, 2, 3) - Vec(10, 20, 30), Vec(-9, -18, -27));
    EXPECT_EQ(-Vec(1, 2, 3), Vec(-1, -2, -3));
    EXPECT_EQ(2.0 * Vec(1, 2, 3) / 4.0, Vec(0.5, 1, 1.5));
    EXPECT_EQ(Vec(2, 3, 6).length(), 7);
    EXPECT_EQ(Vec(1, 2, 3).dot(Vec(4, 5, 6)), 32);
    EXPECT_NE(Vec(1, 2, 3), Vec(1, 2, 4));
}

TEST(Vec3d, changesInPlace)
{
    BaVec3d<double> v(1, 2, 3);
    v += {1, 1, 1};
    v -= {0, 1, 2};
    v *= 4.0;
    v /= 2.0;
    EXPECT_EQ(v, (BaVec3d<double>(4, 4, 4)));
}
