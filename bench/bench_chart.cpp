// What the data of charts cost: adding, storing and reading points.
#include <ZemFig2ChartData.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <sstream>
#include <string>

namespace Zem::Fig2 {
namespace {

ChartPoint pointAt(int number)
{
    return ChartPoint(number, {0.5 * number, 0.25 * (number % 1000)}, 0.0);
}

std::unique_ptr<ChartDataset> datasetOf(int points)
{
    auto dataset = std::make_unique<ChartDataset>("curve");
    for (int i = 0; i < points; ++i)
        dataset->addPoint(pointAt(i));
    return dataset;
}

std::string streamOf(ChartData const &data)
{
    std::ostringstream bytes;
    IO::OutStream stream(&bytes, "Figure", 1);
    data.save(&stream);
    stream.close();
    return bytes.str();
}

void addPoints(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(datasetOf(static_cast<int>(state.range(0)))->getNumberOfPoints());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(addPoints)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void saveChart(benchmark::State &state)
{
    ChartData data;
    data.addDataset(datasetOf(static_cast<int>(state.range(0))).release());
    std::size_t bytes = 0;
    for (auto _ : state)
        bytes = streamOf(data).size();
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(saveChart)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void loadChart(benchmark::State &state)
{
    ChartData data;
    data.addDataset(datasetOf(static_cast<int>(state.range(0))).release());
    std::string const bytes = streamOf(data);
    for (auto _ : state) {
        std::istringstream input(bytes);
        IO::InStream stream(&input);
        data.load(&stream);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(loadChart)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Fig2
