// What it costs to lay out the scale of a chart.
#include <ZemFig2Axis.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

namespace Zem::Fig2 {
namespace {

constexpr std::size_t RANGES = 10000;

/// From 1e-6 to 1e6 wide, anywhere.
std::vector<BaVec2d<double>> randomRanges()
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> middle(-1000.0, 1000.0);
    std::uniform_real_distribution<double> magnitude(-6.0, 6.0);
    std::vector<BaVec2d<double>> ranges;
    for (std::size_t i = 0; i < RANGES; ++i) {
        double const start = middle(random);
        ranges.emplace_back(start, start + std::pow(10.0, magnitude(random)));
    }
    return ranges;
}

/// Text is measured by the dummy: this is the cost of ticks and labels alone.
void updateAxes(benchmark::State &state, Axis::Type type)
{
    std::vector<BaVec2d<double>> const ranges = randomRanges();
    Axis axis(type);
    axis.setLength(100.0);
    axis.setDigitsMode(Axis::DIGITS_MODE_AUTO);
    for (auto _ : state) {
        for (BaVec2d<double> const &range : ranges) {
            axis.setRange(range);
            axis.update(0.0, 0.0, 2);
        }
        benchmark::DoNotOptimize(axis.getTickPositions().data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(RANGES));
}

BENCHMARK_CAPTURE(updateAxes, horizontal, Axis::HORIZONTAL_BOTTOM)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(updateAxes, vertical, Axis::VERTICAL_LEFT)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Fig2
