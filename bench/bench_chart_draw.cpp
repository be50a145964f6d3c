// What charts cost: update and drawing into a painter that does nothing, beside a plain pass over the same points, and to
// whole pages.
#include "no_painter.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Figure.h>
#include <ZemFig2QtCalculator.h>
#include <ZemFig2QtPageWriter.h>
#include <ZemFig2TokenInterface.h>

#include <benchmark/benchmark.h>

#include <QtCore/QTemporaryDir>

#include <memory>

namespace Zem::Fig2 {
namespace {

class OneChart : public EmptyFigureTokenInterface
{
public:
    explicit OneChart(int points)
    {
        auto *dataset = new ChartDataset("curve");
        for (int i = 0; i < points; ++i)
            dataset->addPoint({i, {0.001 * i, 0.25 * (i % 1000)}, static_cast<double>(i % 1000)});
        data.addDataset(dataset);
        Legend2::Legend legend(uLength);
        legend.setFixedMinimum(0.0);
        legend.setFixedMaximum(1000.0);
        data.setLegendData(legend, Legend2::Data());
    }
    ChartData const *getChart(QString const &) const override { return &data; }
    void releaseChart(QString const &) const override {}

    ChartData data;
};

OneChart &chartOf(int points)
{
    static std::map<int, std::unique_ptr<OneChart>> charts;
    std::unique_ptr<OneChart> &chart = charts[points];
    if (!chart)
        chart = std::make_unique<OneChart>(points);
    return *chart;
}

void drawChart(benchmark::State &state, ChartParameters::Style_t style, bool computeColor, Symbol::Type symbolType)
{
    OneChart &tokens = chartOf(static_cast<int>(state.range(0)));
    ChartDataset *dataset = tokens.data.getDataset("curve");
    ChartParameters looks;
    looks.setStyle(style);
    looks.setComputeColor(computeColor);
    looks.setSymbol(Symbol(symbolType, 1.0, false));
    dataset->setParameters(looks);
    Chart chart;
    chart.setOrigin({105, 100});
    chart.setSize({180, 120});
    chart.setToken("c");
    for (auto _ : state) {
        chart.computeDynamicData(StageIdentifier(1), &tokens);
        NoPainter painter;
        painter.setMode(0);
        chart.draw(&tokens, &painter, 0);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void drawLineChart(benchmark::State &state)
{
    drawChart(state, ChartParameters::STYLE_LINE, false, Symbol::TYPE_NONE);
}
BENCHMARK(drawLineChart)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

void drawColoredPoints(benchmark::State &state)
{
    drawChart(state, ChartParameters::STYLE_POINTS, true, Symbol::TYPE_CIRCLE);
}
BENCHMARK(drawColoredPoints)->Arg(1000000)->Unit(benchmark::kMillisecond);

void drawBarChart(benchmark::State &state)
{
    drawChart(state, ChartParameters::STYLE_BARS, false, Symbol::TYPE_NONE);
}
BENCHMARK(drawBarChart)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The two multiplications of each point into a polyline, and nothing else.
void plainPass(benchmark::State &state)
{
    OneChart &tokens = chartOf(static_cast<int>(state.range(0)));
    ChartDataset const *dataset = tokens.data.getDataset("curve");
    for (auto _ : state) {
        std::vector<BaVec2d<double>> places;
        places.reserve(dataset->getNumberOfPoints());
        for (auto it = dataset->getPointBegin(0); it != dataset->getPointEnd(); ++it)
            places.push_back({10.0 + 0.02 * it->point.x, 120.0 - 0.4 * it->point.y});
        benchmark::DoNotOptimize(places.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(plainPass)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

void updateChart(benchmark::State &state)
{
    OneChart &tokens = chartOf(static_cast<int>(state.range(0)));
    Chart chart;
    chart.setOrigin({105, 100});
    chart.setSize({180, 120});
    chart.setToken("c");
    for (auto _ : state)
        chart.computeDynamicData(StageIdentifier(1), &tokens);
}
BENCHMARK(updateChart)->Arg(10000)->Arg(10000000)->Unit(benchmark::kMicrosecond);

/// A page with the chart alone, updated, drawn and written at 300 dpi.
void writeChartPage(benchmark::State &state, char const *fileName)
{
    OneChart &tokens = chartOf(static_cast<int>(state.range(0)));
    ChartParameters looks;
    looks.setSymbol(Symbol(Symbol::TYPE_NONE, 1.0, false));
    tokens.data.getDataset("curve")->setParameters(looks);
    Fig2Qt::QtCalculator const calculator;
    Figure figure(&tokens);
    auto *chart = new Chart;
    chart->setOrigin({105, 100});
    chart->setSize({180, 120});
    chart->setToken("c");
    figure.getRoot()->addChild(chart);
    QTemporaryDir const folder;
    for (auto _ : state) {
        figure.update(StageIdentifier(1), true);
        std::unique_ptr<Fig2Qt::PageWriter> const writer = Fig2Qt::createPageWriter(folder.filePath(fileName));
        Fig2Qt::drawPage(figure, writer.get());
        writer->close();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void chartToPng(benchmark::State &state)
{
    writeChartPage(state, "page.png");
}
BENCHMARK(chartToPng)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond)->UseRealTime();

void chartToPdf(benchmark::State &state)
{
    writeChartPage(state, "page.pdf");
}
BENCHMARK(chartToPdf)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace Zem::Fig2
