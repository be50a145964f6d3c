// The camera model, its domain and what lies outside of it.
#include <ZemCamera.h>

#include <ZemCalibration.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace Cal {
namespace {

using Point = Zem::BaVec2d<double>;

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double HUGE_NUMBER = std::numeric_limits<double>::max();

/// Image distance 1000 and 800, principal point 500,400.
InternalOrientation plainOrientation()
{
    InternalOrientation orientation;
    orientation.setImageDistance({1000, 800});
    orientation.setPrincipalPoint({500, 400});
    return orientation;
}

/// In a frame of 1000 x 800.
Camera plainCamera()
{
    Camera camera(nullptr);
    camera.setOrientation(plainOrientation());
    camera.setImageSize(1000, 800);
    return camera;
}

/// With a frame so large that it never matters.
Camera distortingCamera(double k1, double k2, double k3, double p1 = 0, double p2 = 0)
{
    InternalOrientation orientation = plainOrientation();
    orientation.setImageDistance({1000, 1000});
    orientation.setPrincipalPoint({1e8, 1e8});
    orientation.setRadialDistortion(k1, k2, k3);
    orientation.setTangentialDistortion(p1, p2);
    Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(200000000, 200000000);
    return camera;
}

std::optional<Point> checkedImage(Camera const &camera, Zem::BaVec3d<double> const &point)
{
    Point pixel;
    bool const seen = camera.computeImagePointChecked(Zem::Transformation(), point, pixel);
    return seen ? std::optional(pixel) : std::nullopt;
}

std::optional<Point> uncheckedImage(Camera const &camera, Zem::BaVec3d<double> const &point)
{
    Point pixel;
    bool const seen = camera.computeImagePointUnchecked(Zem::Transformation(), point, pixel);
    return seen ? std::optional(pixel) : std::nullopt;
}

bool isSeen(Camera const &camera, Zem::BaVec3d<double> const &point)
{
    return checkedImage(camera, point).has_value();
}

void expectNear(std::optional<Point> const &actual, Point const &expected)
{
    ASSERT_TRUE(actual.has_value());
    EXPECT_NEAR(actual->x, expected.x, 1e-6);
    EXPECT_NEAR(actual->y, expected.y, 1e-6);
}

void expectNowhere(Camera const &camera, Zem::BaVec3d<double> const &point = {0, 0, 1})
{
    EXPECT_FALSE(checkedImage(camera, point));
    EXPECT_FALSE(uncheckedImage(camera, point));
}

TEST(Camera, withoutACalibrationHasEmptyValues)
{
    Camera const camera(nullptr);

    EXPECT_EQ(camera.getOrientation(), InternalOrientation());
    EXPECT_EQ(camera.getR0(), 1.0);
    EXPECT_EQ(camera.getHPXOffset(), 0);
    EXPECT_EQ(camera.getHPYOffset(), 0);
    EXPECT_EQ(camera.getImageWidth(), 0U);
    EXPECT_EQ(camera.getImageHeight(), 0U);
    EXPECT_EQ(camera.getCalibration(), nullptr);
    expectNowhere(camera);
}

TEST(Camera, beginsWithItsCalibration)
{
    Calibration calibration(plainOrientation(), 1000, 800);

    Camera const camera(&calibration);

    EXPECT_EQ(camera.getCalibration(), &calibration);
    EXPECT_EQ(camera.getOrientation(), plainOrientation());
    EXPECT_EQ(camera.getImageWidth(), 1000U);
    EXPECT_EQ(camera.getImageHeight(), 800U);
    EXPECT_EQ(checkedImage(camera, {1, 2, 10}), Point(600, 560));
}

TEST(Camera, isCopiedWithOrWithoutItsCalibration)
{
    Calibration calibration(plainOrientation(), 1000, 800);
    Camera camera(&calibration);
    camera.setR0(2.5);
    camera.setHPOffset(3, -4);

    Camera const bound(camera, true);
    Camera const alone(camera, false);

    EXPECT_EQ(bound.getCalibration(), &calibration);
    EXPECT_EQ(alone.getCalibration(), nullptr);
    EXPECT_EQ(alone.getOrientation(), plainOrientation());
    EXPECT_EQ(alone.getR0(), 2.5);
    EXPECT_EQ(alone.getHPXOffset(), 3);
    EXPECT_EQ(alone.getHPYOffset(), -4);
    EXPECT_EQ(alone.getImageHeight(), 800U);
    EXPECT_EQ(checkedImage(alone, {1, 2, 10}), checkedImage(camera, {1, 2, 10}));
}

TEST(Camera, projectsThroughAPinhole)
{
    EXPECT_EQ(checkedImage(plainCamera(), {0, 0, 7}), Point(500, 400));
    EXPECT_EQ(checkedImage(plainCamera(), {1, 2, 10}), Point(600, 560));
    EXPECT_EQ(uncheckedImage(plainCamera(), {1, 2, 10}), Point(600, 560));
}

TEST(Camera, takesThePointThroughTheTransformation)
{
    Point pixel;

    EXPECT_TRUE(plainCamera().computeImagePointChecked(Zem::Transformation({0, 0, 8}, {}, 2), {0.5, 1, 1}, pixel));

    EXPECT_EQ(pixel, Point(600, 560));
}

TEST(Camera, movesThePrincipalPointByTheOffset)
{
    Camera camera = plainCamera();
    camera.setHPOffset(-20, 30);

    EXPECT_EQ(checkedImage(camera, {1, 2, 10}), Point(580, 590));
}

TEST(Camera, bendsRaysByTheRadialCoefficients)
{
    // r^2 = 0.25: 1 + 0.1 * 0.25 + 0.2 * 0.0625 + 0.4 * 0.015625 = 1.04375; 1000 * (0.3, 0.4) * 1.04375.
    expectNear(checkedImage(distortingCamera(0.1, 0.2, 0.4), {3, 4, 10}), {1e8 + 313.125, 1e8 + 417.5});
}

TEST(Camera, bendsRaysByTheTangentialCoefficients)
{
    // 0.3 + 2 * 0.01 * 0.12 + 0.02 * (0.25 + 0.18) = 0.311, 0.4 + 0.01 * (0.25 + 0.32) + 2 * 0.02 * 0.12 = 0.4105.
    expectNear(checkedImage(distortingCamera(0, 0, 0, 0.01, 0.02), {3, 4, 10}), {1e8 + 311, 1e8 + 410.5});
}

TEST(Camera, basesTheCoefficientsOnR0)
{
    Camera camera = distortingCamera(0.2, 0, 0);
    camera.setR0(0.5);

    // The ray of 0.25 is 0.5 in units of R0: 1000 * 0.5 * 0.5 * (1 + 0.2 * 0.25).
    expectNear(checkedImage(camera, {0.25, 0, 1}), {1e8 + 262.5, 1e8});
}

TEST(Camera, withoutDistortionDoesNotDependOnR0)
{
    Camera camera = plainCamera();
    camera.setR0(0.25);

    EXPECT_EQ(checkedImage(camera, {1, 2, 10}), Point(600, 560));
}

TEST(CheckedImage, liesInTheFrameWithItsBorder)
{
    Camera const camera = plainCamera();

    EXPECT_EQ(checkedImage(camera, {0.5, 0.5, 1}), Point(1000, 800));
    EXPECT_EQ(checkedImage(camera, {-0.5, -0.5, 1}), Point(0, 0));
    for (Zem::BaVec3d<double> const &outside : {Zem::BaVec3d(0.50001, 0.0, 1.0), Zem::BaVec3d(-0.50001, 0.0, 1.0),
                                                Zem::BaVec3d(0.0, 0.50001, 1.0), Zem::BaVec3d(0.0, -0.50001, 1.0)}) {
        EXPECT_FALSE(isSeen(camera, outside));
        EXPECT_TRUE(uncheckedImage(camera, outside));
    }
}

TEST(CheckedImage, thatFailsLeavesTheResultAlone)
{
    Point pixel(7, 8);

    EXPECT_FALSE(plainCamera().computeImagePointChecked(Zem::Transformation(), {1, 0, 1}, pixel));
    EXPECT_FALSE(plainCamera().computeImagePointUnchecked(Zem::Transformation(), {0, 0, -1}, pixel));

    EXPECT_EQ(pixel, Point(7, 8));
}

TEST(CheckedImage, endsWhereTheRadialDistortionCeasesToIncrease)
{
    // 1 + 3 k1 s, 1 + 5 k2 s^2 and 1 + 7 k3 s^3 are 0 at s = 0.25, the radius 0.5.
    for (Camera const &camera : {distortingCamera(-4.0 / 3.0, 0, 0), distortingCamera(0, -16.0 / 5.0, 0),
                                 distortingCamera(0, 0, -64.0 / 7.0)}) {
        EXPECT_TRUE(isSeen(camera, {0.4999, 0, 1}));
        EXPECT_FALSE(isSeen(camera, {0.5001, 0, 1}));
        EXPECT_TRUE(isSeen(camera, {0.2999, 0.3999, 1}));
        EXPECT_FALSE(isSeen(camera, {0.3001, 0.4001, 1}));
    }
}

TEST(CheckedImage, doesNotBeginAgainWhereTheDistortionIncreasesAgain)
{
    // 1 - 10 s + 16 s^2 is negative from s = 0.125 to 0.5, the radii 0.35355 and 0.70711.
    Camera const camera = distortingCamera(-10.0 / 3.0, 16.0 / 5.0, 0);

    EXPECT_TRUE(isSeen(camera, {0.3535, 0, 1}));
    for (double x : {0.3536, 0.5, 0.7, 0.8, 2.0})
        EXPECT_FALSE(isSeen(camera, {x, 0, 1})) << x;
}

TEST(CheckedImage, findsTheEndBehindAnIncreaseAndATurn)
{
    // 1 + 7 s + 5 s^2 - 13 s^3 is 0 at s = 1; (1 - s) (1 + 8 s + 13 s^2).
    Camera const camera = distortingCamera(7.0 / 3.0, 1, -13.0 / 7.0);

    EXPECT_TRUE(isSeen(camera, {0.9999, 0, 1}));
    EXPECT_FALSE(isSeen(camera, {1.0001, 0, 1}));
}

TEST(CheckedImage, hasNoEndWhereTheDistortionAlwaysIncreases)
{
    for (Camera const &camera :
         {distortingCamera(0, 0, 0), distortingCamera(0.1, 0, 0), distortingCamera(-0.1, 1, 0)}) {
        EXPECT_TRUE(isSeen(camera, {3, 4, 1}));
        EXPECT_TRUE(isSeen(camera, {-6, 0, 1}));
    }
}

TEST(CheckedImage, endsAtOnceWithADistortionBeyondAllMeasure)
{
    expectNowhere(distortingCamera(-HUGE_NUMBER, -HUGE_NUMBER, -HUGE_NUMBER), {0.1, 0, 1});
    EXPECT_FALSE(isSeen(distortingCamera(HUGE_NUMBER, -HUGE_NUMBER, HUGE_NUMBER), {0.1, 0, 1}));
    EXPECT_TRUE(isSeen(distortingCamera(-1e-300, 0, 0), {1, 0, 1}));
}

TEST(CheckedImage, endsWhereTheTangentialDistortionFolds)
{
    // Along x the derivative is 1 + 6 p2 x: 0 at 1/3.
    Camera const camera = distortingCamera(0, 0, 0, 0, -0.5);

    EXPECT_TRUE(isSeen(camera, {0.333, 0, 1}));
    EXPECT_FALSE(isSeen(camera, {0.334, 0, 1}));
    EXPECT_TRUE(isSeen(camera, {-0.334, 0, 1}));
    // Folded across as well, which turns nothing inside out: 1 - 3 * 1.5 and 1 - 1.5.
    EXPECT_FALSE(isSeen(camera, {1.5, 0, 1}));
}

TEST(UncheckedImage, carriesTheDistortionOnBeyondItsRange)
{
    // At the limit of 0.5 the image of the ray is 0.5 * (1 - 4/3 * 0.25) = 1/3 away; twice as far, twice that.
    Camera const camera = distortingCamera(-4.0 / 3.0, 0, 0);

    expectNear(uncheckedImage(camera, {0.5, 0, 1}), {1e8 + 1000.0 / 3.0, 1e8});
    expectNear(uncheckedImage(camera, {1, 0, 1}), {1e8 + 2000.0 / 3.0, 1e8});
    expectNear(uncheckedImage(camera, {0, -5, 1}), {1e8, 1e8 - 10000.0 / 3.0});
}

TEST(UncheckedImage, neverComesBackIntoTheFrame)
{
    Camera const camera = distortingCamera(-1, 0.1, 0, 0.001, 0.001);
    double last = 0.0;
    for (double x = 0.01; x < 100.0; x *= 1.1) {
        std::optional<Point> const image = uncheckedImage(camera, {x, 0, 1});
        ASSERT_TRUE(image);
        EXPECT_GT(image->x, last) << x;
        last = image->x;
    }
}

TEST(Camera, seesNothingBehindIt)
{
    expectNowhere(plainCamera(), {0, 0, 0});
    expectNowhere(plainCamera(), {0, 0, -1});
    expectNowhere(plainCamera(), {0, 0, -1e-300});
}

TEST(Camera, seesNoPointThatIsNone)
{
    for (double none : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
        expectNowhere(plainCamera(), {none, 0, 1});
        expectNowhere(plainCamera(), {0, none, 1});
        EXPECT_FALSE(isSeen(plainCamera(), {none, none, none}));
    }
    expectNowhere(plainCamera(), {0, 0, NOT_A_NUMBER});
    expectNowhere(plainCamera(), {HUGE_NUMBER, 0, 1e-300});
}

TEST(Camera, seesNothingWithoutR0)
{
    for (double r0 : {0.0, -1.0, NOT_A_NUMBER, INFINITE}) {
        Camera camera = plainCamera();
        camera.setR0(r0);
        expectNowhere(camera);
    }
}

TEST(Camera, seesNothingWithoutAFrame)
{
    Camera camera = plainCamera();
    camera.setImageSize(0, 800);
    expectNowhere(camera);
    camera.setImageSize(1000, 0);
    expectNowhere(camera);
}

TEST(Camera, seesNothingThroughAnOrientationThatIsNone)
{
    for (double none : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
        InternalOrientation broken[5];
        for (InternalOrientation &orientation : broken)
            orientation = plainOrientation();
        broken[0].setImageDistance({none, 1000});
        broken[1].setPrincipalPoint({400, none});
        broken[2].setRadialDistortion(none, 0, 0);
        broken[3].setRadialDistortion(0, 0, none);
        broken[4].setTangentialDistortion(0, none);
        for (InternalOrientation const &orientation : broken) {
            Camera camera = plainCamera();
            camera.setOrientation(orientation);
            expectNowhere(camera);
        }
    }
    Camera camera = plainCamera();
    InternalOrientation flat = plainOrientation();
    flat.setImageDistance({1000, 0});
    camera.setOrientation(flat);
    expectNowhere(camera);
}

TEST(Camera, holdsTheLargestNumbersOfAFrame)
{
    Camera camera = plainCamera();
    camera.setImageSize(4294967295U, 4294967295U);
    camera.setHPOffset(2147483647, 2147483647);

    EXPECT_EQ(checkedImage(camera, {0, 0, 1}), Point(2147484147.0, 2147484047.0));
}

} // namespace
} // namespace Cal
