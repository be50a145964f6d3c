// What it costs to project points of space into a picture.
#include <ZemFig2Transformation.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace Zem::Fig2 {
namespace {

constexpr std::size_t POINTS = 1000000;

/// A lens that distorts in every way, before a scene 500 away.
CameraTransformation cameraTransformation()
{
    Cal::InternalOrientation orientation;
    orientation.setImageDistance({5000, 5000});
    orientation.setPrincipalPoint({1024, 1024});
    orientation.setRadialDistortion(0.03, -0.7, 0.09);
    orientation.setTangentialDistortion(0.001, -0.001);
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(2048, 2048);
    return {camera, Zem::Transformation({0, 0, 500}, {0.1, -0.2, 0.3}, 1.0)};
}

/// In a cube about the origin with edges of twice `half`.
std::vector<BaVec3d<double>> randomPoints(double half)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> any(-half, half);
    std::vector<BaVec3d<double>> points(POINTS);
    for (BaVec3d<double> &point : points)
        point = {any(random), any(random), any(random)};
    return points;
}

void project(benchmark::State &state, Transformation const &transformation, double half)
{
    std::vector<BaVec3d<double>> const points = randomPoints(half);
    std::size_t seen = 0;
    for (auto _ : state) {
        seen = 0;
        for (BaVec3d<double> const &point : points) {
            BaVec2d<double> image;
            seen += transformation.computeImagePoint(point, &image) ? 1U : 0U;
            benchmark::DoNotOptimize(image);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(POINTS));
    state.counters["seen"] = static_cast<double>(seen) / static_cast<double>(POINTS);
}

void projectInFrame(benchmark::State &state)
{
    project(state, cameraTransformation(), 50.0);
}

/// Most points lie outside of the frame and are projected a second time, without its limits.
void projectAroundFrame(benchmark::State &state)
{
    project(state, cameraTransformation(), 400.0);
}

/// A picture of a picture, each half as large as the one before.
void projectScaledTwice(benchmark::State &state)
{
    CameraTransformation const camera = cameraTransformation();
    ScaledImageTransformation const half(&camera, 0.5);
    project(state, ScaledImageTransformation(&half, 0.5), 50.0);
}

BENCHMARK(projectInFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(projectAroundFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(projectScaledTwice)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Fig2
