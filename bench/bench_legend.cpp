// What colour scales cost: looking colours up, and choosing ticks.
#include <ZemFig2RangeCalculator.h>
#include <ZemLegendHandler.h>
#include <ZemScaling.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace Zem::Legend2 {
namespace {

constexpr std::size_t VALUES = 1000000;
constexpr std::size_t RANGES = 10000;

std::vector<double> randomValues()
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> anywhere(0.5, 105.0);
    std::vector<double> values(VALUES);
    for (double &value : values)
        value = anywhere(random);
    return values;
}

/// From 1e-6 to 1e6 wide, anywhere.
std::vector<std::pair<double, double>> randomRanges()
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> middle(-1000.0, 1000.0);
    std::uniform_real_distribution<double> magnitude(-6.0, 6.0);
    std::vector<std::pair<double, double>> ranges;
    for (std::size_t i = 0; i < RANGES; ++i) {
        double const start = middle(random);
        ranges.emplace_back(start, start + std::pow(10.0, magnitude(random)));
    }
    return ranges;
}

void lookUpColors(benchmark::State &state, ColorMode_t colorMode, ScaleMode_t scaleMode, bool tolerance)
{
    std::vector<double> const values = randomValues();
    Legend legend;
    legend.setFixedMinimum(1.0);
    legend.setFixedMaximum(100.0);
    legend.setColorMode(colorMode);
    legend.setScaleMode(scaleMode);
    Data const data;
    LegendHandler handler(&legend, &data);
    handler.setToleranceMode(tolerance);
    for (auto _ : state) {
        unsigned int sum = 0;
        for (double value : values)
            sum += handler.getColor(value, Color()).getRed();
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(VALUES));
}
BENCHMARK_CAPTURE(lookUpColors, continuous, COLOR_MODE_LINEAR, SCALE_MODE_CONTINUOUS, false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookUpColors, discrete, COLOR_MODE_LINEAR, SCALE_MODE_DISCRETE, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookUpColors, logarithmic, COLOR_MODE_LOGARITHMIC, SCALE_MODE_CONTINUOUS, false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookUpColors, tolerance, COLOR_MODE_LINEAR, SCALE_MODE_CONTINUOUS, true)
    ->Unit(benchmark::kMillisecond);

void makeHandler(benchmark::State &state)
{
    Legend const legend;
    Data const data;
    for (auto _ : state)
        benchmark::DoNotOptimize(LegendHandler(&legend, &data));
}
BENCHMARK(makeHandler);

void chooseTicks(benchmark::State &state)
{
    auto const ranges = randomRanges();
    auto const count = static_cast<int>(state.range(0));
    std::vector<double> ticks;
    for (auto _ : state) {
        for (auto const &[minimum, maximum] : ranges) {
            Scaling::computeDistribution(minimum, maximum, count, false, COLOR_MODE_LINEAR, &ticks);
            benchmark::DoNotOptimize(Scaling::getNumberOfDigits(ticks));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(RANGES));
}
BENCHMARK(chooseTicks)->Arg(2)->Arg(11)->Arg(51)->Unit(benchmark::kMillisecond);

/// With labels, each measuring 1 mm.
void layOutRanges(benchmark::State &state)
{
    auto const ranges = randomRanges();
    Fig2::RangeCalculator range{Font()};
    for (auto _ : state) {
        for (auto const &[minimum, maximum] : ranges) {
            range.computeHorizontal(minimum, maximum, 10.0, -1, 0);
            benchmark::DoNotOptimize(range.getTexts().size());
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(RANGES));
}
BENCHMARK(layOutRanges)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Legend2
