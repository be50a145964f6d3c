// What long series in a measurement project cost: reading the file, storing, reading back, making a chart.
#include <ZemFig2ChartInterface.h>
#include <ZemMeasTokenInterface.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace Zem::Measurement {
namespace {

constexpr int COLUMNS = 6;

QByteArray textOf(int rows)
{
    QByteArray text("time [s],a [kN],b [mm],c [V],d,e\n");
    for (int row = 0; row < rows; ++row) {
        text += QByteArray::number(0.001 * row, 'f', 3);
        for (int column = 1; column < COLUMNS; ++column) {
            text += ',' + QByteArray::number((row * column) % 9973 * 0.0625, 'f', 4);
        }
        text += '\n';
    }
    return text;
}

/// A file of series, and a project with them.
class LoggerFiles
{
public:
    explicit LoggerFiles(int rows)
    {
        QFile file(csv());
        if (!file.open(QIODevice::WriteOnly)) {
            std::abort();
        }
        file.write(textOf(rows));
        file.close();
        Project(project(), OpenMode_t::CREATE).importSeries(readCsv(csv()));
    }

    QString csv() const { return folder_.filePath(QStringLiteral("log.csv")); }
    QString project() const { return folder_.filePath(QStringLiteral("log.zem")); }

private:
    QTemporaryDir folder_;
};

void importSeries(benchmark::State &state)
{
    LoggerFiles const files(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Project project(QStringLiteral(":memory:"), OpenMode_t::CREATE);
        benchmark::DoNotOptimize(project.importSeries(readCsv(files.csv())).rows);
    }
}
BENCHMARK(importSeries)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void storeSeries(benchmark::State &state)
{
    LoggerFiles const files(static_cast<int>(state.range(0)));
    CsvTable const table = readCsv(files.csv());
    for (auto _ : state) {
        QFile::remove(files.project());
        Project project(files.project(), OpenMode_t::CREATE);
        benchmark::DoNotOptimize(project.importSeries(table).rows);
    }
}
BENCHMARK(storeSeries)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void loadOneSeries(benchmark::State &state)
{
    LoggerFiles const files(static_cast<int>(state.range(0)));
    Project const project(files.project(), OpenMode_t::READ);
    ProjectSeries const series = project.series().at(2);
    for (auto _ : state) {
        benchmark::DoNotOptimize(project.seriesNumbers(series).size());
    }
}
BENCHMARK(loadOneSeries)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void chartOfSeries(benchmark::State &state)
{
    LoggerFiles const files(static_cast<int>(state.range(0)));
    Project const project(files.project(), OpenMode_t::READ);
    ProjectTokenInterface const tokens(&project);
    QString const token = Fig2::ChartInterface::createToken(QStringLiteral("log.time"),
                                                            {QStringLiteral("log.a"), QStringLiteral("log.b")});
    for (auto _ : state) {
        benchmark::DoNotOptimize(tokens.getChart(token));
        tokens.releaseChart(token);
    }
}
BENCHMARK(chartOfSeries)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Measurement
