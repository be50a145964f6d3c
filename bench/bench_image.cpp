// What pictures of a camera cost: 2048 by 2048 pixels of 16 bits, bright spots with noise.
#include <ZemErrorLog.h>
#include <ZemImage.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <cmath>
#include <memory>
#include <random>

namespace Zem {
namespace {

constexpr unsigned int SIDE = 2048;
constexpr std::int64_t BYTES = std::int64_t{SIDE} * SIDE * 2;

Image16 const &speckles()
{
    static Image16 const image = [] {
        std::mt19937 random(1);
        std::normal_distribution<double> noise(0.0, 100.0);
        Image16 made(SIDE, SIDE);
        for (unsigned int y = 0; y < SIDE; ++y) {
            for (unsigned int x = 0; x < SIDE; ++x) {
                double const spot = std::sin(x * 0.7) * std::sin(y * 0.6) * 15000.0;
                made.getRow(y)[x] = static_cast<std::uint16_t>(30000.0 + spot + noise(random));
            }
        }
        return made;
    }();
    return image;
}

void packPicture(benchmark::State &state)
{
    StructVector<unsigned char> bytes;
    for (auto _ : state)
        speckles().compressImage(&bytes);
    state.SetBytesProcessed(state.iterations() * BYTES);
    state.counters["bytes"] = static_cast<double>(bytes.size());
}
BENCHMARK(packPicture)->Unit(benchmark::kMillisecond);

void unpackPicture(benchmark::State &state)
{
    StructVector<unsigned char> bytes;
    speckles().compressImage(&bytes);
    Image16 image;
    for (auto _ : state)
        benchmark::DoNotOptimize(image.uncompressImage(bytes));
    state.SetBytesProcessed(state.iterations() * BYTES);
}
BENCHMARK(unpackPicture)->Unit(benchmark::kMillisecond);

void loadPicture(benchmark::State &state, char const *name)
{
    QTemporaryDir const folder;
    QString const file = folder.filePath(QLatin1StringView(name));
    ErrorLog log(true);
    speckles().saveImage(file, &log);
    for (auto _ : state)
        std::unique_ptr<Image>(Image::loadImage(file, &log, -1, -1)).reset();
    state.SetBytesProcessed(state.iterations() * BYTES);
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
}
BENCHMARK_CAPTURE(loadPicture, png, "a.png")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadPicture, tiff, "a.tif")->Unit(benchmark::kMillisecond);

void savePicture(benchmark::State &state, char const *name)
{
    QTemporaryDir const folder;
    QString const file = folder.filePath(QLatin1StringView(name));
    ErrorLog log(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(speckles().saveImage(file, &log));
    state.SetBytesProcessed(state.iterations() * BYTES);
}
BENCHMARK_CAPTURE(savePicture, png, "a.png")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(savePicture, tiff, "a.tif")->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem
