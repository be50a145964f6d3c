// What placing label boxes costs, with the grid and by the plain walk.
#include <ZemFig2BoxDistributor.h>
#include <ZemFig2Label.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

namespace Zem::Fig2 {
namespace {

constexpr double EDGE_DISTANCE = 5.0;
constexpr double BOX_DISTANCE = 1.0;

/// Labels of about 16 x 5 that point into a page with room for all of them: `roomPerLabel` square millimetres each.
class Page
{
public:
    Page(int count, double roomPerLabel) : size_(std::sqrt(count * roomPerLabel))
    {
        unsigned int state = 1;
        auto const random = [&state] {
            state = state * 1664525u + 1013904223u;
            return static_cast<double>(state >> 8) / 16777216.0;
        };
        for (int i = 0; i < count; ++i) {
            auto label = std::make_unique<Label>();
            label->setAutoSize(false);
            label->setSize({12.0 + 8.0 * random(), 5.0});
            label->setConnectorPoint({size_ * random(), size_ * random()});
            labels_.push_back(std::move(label));
        }
    }

    BoxDistributor distributor(BoxDistributor::Search_t search) const
    {
        BoxDistributor distributor(size_, size_, EDGE_DISTANCE, BOX_DISTANCE);
        distributor.setSearch(search);
        for (auto const &label : labels_)
            distributor.addTextBox(label.get());
        return distributor;
    }

private:
    double size_;
    std::vector<std::unique_ptr<Label>> labels_;
};

using Operation = void (BoxDistributor::*)(StageIdentifier const &);

void place(benchmark::State &state, double roomPerLabel, Operation operation, BoxDistributor::Search_t search)
{
    BoxDistributor::setElementDistance(1.5, 2.0);
    Page const page(static_cast<int>(state.range(0)), roomPerLabel);
    for (auto _ : state) {
        BoxDistributor distributor = page.distributor(search);
        (distributor.*operation)(StageIdentifier(1));
        benchmark::DoNotOptimize(distributor.getFixedBoxes().data());
    }
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(20)->Arg(100)->Arg(500)->Arg(2000)->Unit(benchmark::kMicrosecond);
}

constexpr double A4_FOR_20 = 210.0 * 297.0 / 20.0;

void distribute(benchmark::State &state)
{
    place(state, A4_FOR_20, &BoxDistributor::distribute, BoxDistributor::SEARCH_GRID);
}
BENCHMARK(distribute)->Apply(sizes);

void distributePlain(benchmark::State &state)
{
    place(state, A4_FOR_20, &BoxDistributor::distribute, BoxDistributor::SEARCH_PLAIN);
}
BENCHMARK(distributePlain)->Apply(sizes);

/// On a page with room for all labels along its border nothing fails early.
void distributeWithRoom(benchmark::State &state)
{
    double const side = static_cast<double>(state.range(0)) * 8.0;
    place(state, side * side / static_cast<double>(state.range(0)), &BoxDistributor::distribute,
          BoxDistributor::SEARCH_GRID);
}
BENCHMARK(distributeWithRoom)->Apply(sizes);

void distributeWithRoomPlain(benchmark::State &state)
{
    double const side = static_cast<double>(state.range(0)) * 8.0;
    place(state, side * side / static_cast<double>(state.range(0)), &BoxDistributor::distribute,
          BoxDistributor::SEARCH_PLAIN);
}
BENCHMARK(distributeWithRoomPlain)->Apply(sizes);

void placeAtElement(benchmark::State &state)
{
    place(state, A4_FOR_20 / 4.0, &BoxDistributor::placeAtElement, BoxDistributor::SEARCH_GRID);
}
BENCHMARK(placeAtElement)->Apply(sizes);

void placeAtElementPlain(benchmark::State &state)
{
    place(state, A4_FOR_20 / 4.0, &BoxDistributor::placeAtElement, BoxDistributor::SEARCH_PLAIN);
}
BENCHMARK(placeAtElementPlain)->Apply(sizes);

} // namespace
} // namespace Zem::Fig2
