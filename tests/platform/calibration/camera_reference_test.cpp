// Projections beside those of an implementation of its own, with cameras that were really calibrated.
#include <ZemCamera.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace Cal {
namespace {

using Real = long double;
using Vector = std::array<Real, 3>;

/// One camera of a stereo rig as its calibration file tells it; angles in degrees, pixels from the centre of the first.
struct CameraFile
{
    double cx, cy, fx, fy, k1, k2, k3, p1, p2;
    double tx, ty, tz, alpha, beta, gamma;
};

constexpr unsigned int WIDTH = 1920;
constexpr unsigned int HEIGHT = 1200;

// sim_checkerboard_cal_gold.xml and sim_dot_cal_gold.xml of https://github.com/dicengine/dice, commit 5ebcdfaf,
// BSD 3-Clause, Copyright 2015 National Technology & Engineering Solutions of Sandia, LLC (NTESS). The last camera is
// the first with tangential coefficients of a usual size, which those files do not have.
constexpr CameraFile CAMERAS[] = {
    {872.1577, 579.955, 6673.3159, 6669.3027, 0.0319436, -0.702904, 0.0873144, 0, 0, 0, 0, 0, 0, 0, 0},
    {917.973, 531.635, 6607.61, 6602.85, 0.0602367, -3.87837, -0.245217, 0, 0, 122.2488, 1.84888, 17.62463, 0.13068954,
     -19.0676936, 0.281404038},
    {872.1577, 579.955, 6673.3159, 6669.3027, 0.021682, -0.01028, 2.0585, 0, 0, 0, 0, 0, 0, 0, 0},
    {917.973, 531.635, 6607.61, 6602.85, 0.052631, -3.4485, -0.91399, 0, 0, 122.2488, 1.84888, 17.62463, 0.13068954,
     -19.0676936, 0.281404038},
    {872.1577, 579.955, 6673.3159, 6669.3027, 0.0319436, -0.702904, 0.0873144, 0.0012, -0.0007, 3, -2, 40, 5, -8, 170}};

Camera cameraOf(CameraFile const &file)
{
    InternalOrientation orientation;
    orientation.setImageDistance({file.fx, file.fy});
    orientation.setPrincipalPoint({file.cx + 0.5, file.cy + 0.5});
    orientation.setRadialDistortion(file.k1, file.k2, file.k3);
    orientation.setTangentialDistortion(file.p1, file.p2);
    Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(WIDTH, HEIGHT);
    return camera;
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

Zem::Transformation motionOf(CameraFile const &file)
{
    return {{file.tx, file.ty, file.tz}, {radians(file.alpha), radians(file.beta), radians(file.gamma)}, 1.0};
}

/// Turns in the plane of two axes, from the first towards the second.
void turn(Vector &v, std::size_t from, std::size_t to, double degrees)
{
    Real const angle = static_cast<Real>(degrees) * std::numbers::pi_v<Real> / 180;
    Real const a = v[from];
    Real const b = v[to];
    v[from] = a * std::cos(angle) - b * std::sin(angle);
    v[to] = a * std::sin(angle) + b * std::cos(angle);
}

/// Pixels from the corner of the frame.
std::array<Real, 2> referenceImage(CameraFile const &file, Zem::BaVec3d<double> const &point)
{
    Vector v{point.x, point.y, point.z};
    turn(v, 1, 2, file.alpha);
    turn(v, 2, 0, file.beta);
    turn(v, 0, 1, file.gamma);
    Real const z = v[2] + file.tz;
    Real const x = (v[0] + file.tx) / z;
    Real const y = (v[1] + file.ty) / z;
    Real const r2 = x * x + y * y;
    Real const radial = 1 + file.k1 * r2 + file.k2 * r2 * r2 + file.k3 * r2 * r2 * r2;
    Real const xd = x * radial + 2 * file.p1 * x * y + file.p2 * (r2 + 2 * x * x);
    Real const yd = y * radial + file.p1 * (r2 + 2 * y * y) + 2 * file.p2 * x * y;
    return {file.fx * xd + file.cx + 0.5L, file.fy * yd + file.cy + 0.5L};
}

/// Around the place that both cameras of the rig look at, somewhat larger than what they see.
Zem::BaVec3d<double> randomPoint(std::mt19937_64 &random)
{
    std::uniform_real_distribution<double> across(-70.0, 70.0);
    std::uniform_real_distribution<double> along(340.0, 400.0);
    double const x = across(random);
    double const y = across(random);
    return {x, y, along(random)};
}

TEST(CalibratedCamera, projectsLikeTheReference)
{
    std::mt19937_64 random(2);
    for (CameraFile const &file : CAMERAS) {
        Camera const camera = cameraOf(file);
        Zem::Transformation const motion = motionOf(file);
        for (int i = 0; i < 20000; ++i) {
            Zem::BaVec3d<double> const point = randomPoint(random);
            std::array<Real, 2> const expected = referenceImage(file, point);
            Zem::BaVec2d<double> pixel;
            ASSERT_TRUE(camera.computeImagePointUnchecked(motion, point, pixel));
            EXPECT_NEAR(pixel.x, static_cast<double>(expected[0]), 1e-6);
            EXPECT_NEAR(pixel.y, static_cast<double>(expected[1]), 1e-6);
        }
    }
}

TEST(CalibratedCamera, seesExactlyWhatLiesInTheFrame)
{
    std::mt19937_64 random(3);
    for (CameraFile const &file : CAMERAS) {
        Camera const camera = cameraOf(file);
        Zem::Transformation const motion = motionOf(file);
        int seen = 0;
        for (int i = 0; i < 20000; ++i) {
            Zem::BaVec3d<double> const point = randomPoint(random);
            std::array<Real, 2> const expected = referenceImage(file, point);
            bool const inFrame = expected[0] >= 0 && expected[0] <= WIDTH && expected[1] >= 0 && expected[1] <= HEIGHT;
            Zem::BaVec2d<double> pixel;
            EXPECT_EQ(camera.computeImagePointChecked(motion, point, pixel), inFrame);
            seen += inFrame ? 1 : 0;
        }
        EXPECT_GT(seen, 4000);
        EXPECT_LT(seen, 19000);
    }
}

TEST(CalibratedCamera, projectsTheSameWithCoefficientsBasedOnAnotherR0)
{
    std::mt19937_64 random(4);
    constexpr double R0 = 0.125;
    for (CameraFile const &file : CAMERAS) {
        Camera camera = cameraOf(file);
        InternalOrientation orientation = camera.getOrientation();
        // A share of r^n on the radius 1 is R0^n times that on R0.
        orientation.setRadialDistortion(file.k1 * std::pow(R0, 2), file.k2 * std::pow(R0, 4),
                                        file.k3 * std::pow(R0, 6));
        orientation.setTangentialDistortion(file.p1 * R0, file.p2 * R0);
        camera.setOrientation(orientation);
        camera.setR0(R0);
        for (int i = 0; i < 1000; ++i) {
            Zem::BaVec3d<double> const point = randomPoint(random);
            std::array<Real, 2> const expected = referenceImage(file, point);
            Zem::BaVec2d<double> pixel;
            ASSERT_TRUE(camera.computeImagePointUnchecked(motionOf(file), point, pixel));
            EXPECT_NEAR(pixel.x, static_cast<double>(expected[0]), 1e-6);
            EXPECT_NEAR(pixel.y, static_cast<double>(expected[1]), 1e-6);
        }
    }
}

} // namespace
} // namespace Cal
