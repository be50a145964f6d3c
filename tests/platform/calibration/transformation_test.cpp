// The rigid motion with a scale.
#include <ZemTransformation.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace Zem {
namespace {

constexpr double PI = std::numbers::pi;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

void expectNear(BaVec3d<double> const &actual, BaVec3d<double> const &expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

TEST(RigidMotion, leavesPointsAloneAtFirst)
{
    EXPECT_EQ(Transformation().applyTo({1, 2, 3}), BaVec3d<double>(1, 2, 3));
    EXPECT_EQ(Transformation().getTranslation(), BaVec3d<double>());
    EXPECT_EQ(Transformation().getAngles(), BaVec3d<double>());
    EXPECT_EQ(Transformation().getScale(), 1.0);
}

TEST(RigidMotion, keepsWhatItWasMadeOf)
{
    Transformation const motion({1, -2, 1e300}, {7.5, -9, 0.1}, 2.5);

    EXPECT_EQ(motion.getTranslation(), BaVec3d<double>(1, -2, 1e300));
    EXPECT_EQ(motion.getAngles(), BaVec3d<double>(7.5, -9, 0.1));
    EXPECT_EQ(motion.getScale(), 2.5);
}

TEST(RigidMotion, turnsCounterClockwiseAboutEachAxis)
{
    expectNear(Transformation({}, {PI / 2, 0, 0}, 1).applyTo({1, 2, 3}), {1, -3, 2});
    expectNear(Transformation({}, {0, PI / 2, 0}, 1).applyTo({1, 2, 3}), {3, 2, -1});
    expectNear(Transformation({}, {0, 0, PI / 2}, 1).applyTo({1, 2, 3}), {-2, 1, 3});
}

TEST(RigidMotion, turnsAboutXThenYThenZ)
{
    // About x: (0,1,0) to (0,0,1); about y: to (1,0,0); about z: to (0,1,0).
    expectNear(Transformation({}, {PI / 2, PI / 2, PI / 2}, 1).applyTo({0, 1, 0}), {0, 1, 0});
    // About x: (0,0,1) to (0,-1,0); about y it stays; about z: to (1,0,0).
    expectNear(Transformation({}, {PI / 2, PI / 2, PI / 2}, 1).applyTo({0, 0, 1}), {1, 0, 0});
}

TEST(RigidMotion, scalesBeforeItMoves)
{
    expectNear(Transformation({10, 20, 30}, {0, 0, PI / 2}, 2).applyTo({1, 2, 3}), {6, 22, 36});
}

TEST(RigidMotion, takesWhatIsPrependedFirst)
{
    Transformation motion({10, 0, 0}, {0, 0, PI / 2}, 2);

    motion.prepend(Transformation({0, 1, 0}, {}, 3));

    // (1,1,1) times 3 is (3,3,3), moved (3,4,3), turned (-4,3,3), doubled and moved (2,6,6).
    expectNear(motion.applyTo({1, 1, 1}), {2, 6, 6});
    expectNear(motion.getTranslation(), {8, 0, 0});
    EXPECT_EQ(motion.getScale(), 6.0);
}

TEST(RigidMotion, keepsTheBitsOfAnglesThatNothingIsAddedTo)
{
    BaVec3d<double> const angles(4, 5, 6);
    Transformation scaled({1, 2, 3}, angles, 1);
    scaled.prepend(Transformation({}, {}, 7));
    Transformation moved({1, 2, 3}, {}, 1);
    moved.prepend(Transformation({}, angles, 7));

    EXPECT_EQ(scaled.getAngles(), angles);
    EXPECT_EQ(moved.getAngles(), angles);
}

TEST(RigidMotion, composesLikeOneMotionAfterTheOther)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> any(-4.0, 4.0);
    auto const anyVector = [&] { return BaVec3d<double>(any(random), any(random), any(random)); };
    for (int i = 0; i < 1000; ++i) {
        Transformation const second(anyVector(), anyVector(), any(random));
        Transformation const first(anyVector(), anyVector(), any(random));
        BaVec3d<double> const point = anyVector();

        Transformation composed = second;
        composed.prepend(first);

        expectNear(composed.applyTo(point), second.applyTo(first.applyTo(point)), 1e-11);
        // What it tells about itself makes the same motion again.
        Transformation const rebuilt(composed.getTranslation(), composed.getAngles(), composed.getScale());
        expectNear(rebuilt.applyTo(point), composed.applyTo(point), 1e-11);
    }
}

TEST(RigidMotion, findsAnglesWhereTwoTurnsAreAboutOneAxis)
{
    for (double y : {PI / 2, -PI / 2}) {
        Transformation composed({}, {0, y, 0}, 1);
        composed.prepend(Transformation({}, {0.3, 0, 0}, 1));

        expectNear(composed.getAngles(), {0.3, y, 0});
        expectNear(composed.applyTo({1, 2, 3}),
                   Transformation({}, {0, y, 0}, 1).applyTo(Transformation({}, {0.3, 0, 0}, 1).applyTo({1, 2, 3})));
    }
}

TEST(RigidMotion, ofNumbersThatAreNoneMakesPointsThatAreNone)
{
    EXPECT_TRUE(std::isnan(Transformation({NOT_A_NUMBER, 0, 0}, {}, 1).applyTo({1, 2, 3}).x));
    EXPECT_TRUE(std::isnan(Transformation({}, {NOT_A_NUMBER, 0, 0}, 1).applyTo({1, 2, 3}).z));
    Transformation composed({}, {NOT_A_NUMBER, 1, 1}, 1);
    composed.prepend(Transformation({}, {1, 1, 1}, 1));
    EXPECT_TRUE(std::isnan(composed.getAngles().x));
}

} // namespace
} // namespace Zem
