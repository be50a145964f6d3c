// What it costs to write a camera picture with a field of vectors on it.
#include <ZemFig2Painter.h>
#include <ZemFig2QtPageWriter.h>
#include <ZemImage.h>
#include <figqt_picture.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace Zem::Fig2Qt {
namespace {

using Fig2::FillStyle;
using Fig2::LineStyle;
using Fig2::Rotation;
using Vec = BaVec2d<double>;

constexpr unsigned int SIDE = 2048;
constexpr int VECTORS = 100'000;
constexpr double SCALING = 186.27 / SIDE; // 2200 pixels at 300 to the inch
Vec const PAGE(210.0, 297.0);
Vec const CORNER(11.85, 25.4);

/// A soft light, and noise of the sensor.
Image16 const &cameraPicture()
{
    static Image16 const picture = [] {
        Image16 image(SIDE, SIDE);
        std::mt19937 engine(7);
        std::normal_distribution<double> noise(0.0, 6000.0);
        for (unsigned int y = 0; y < SIDE; ++y) {
            for (unsigned int x = 0; x < SIDE; ++x) {
                double const light = 30000.0 + 14000.0 * std::sin(x / 97.0) * std::cos(y / 61.0);
                image.getRow(y)[x] = static_cast<std::uint16_t>(std::clamp(light + noise(engine), 0.0, 65535.0));
            }
        }
        return image;
    }();
    return picture;
}

struct Vector
{
    Vec from;
    Vec to;
    Color color;
};

std::vector<Vector> const &field()
{
    static std::vector<Vector> const vectors = [] {
        std::vector<Vector> made;
        std::mt19937 engine(6);
        std::uniform_real_distribution<double> place(5.0, SIDE - 15.0);
        std::uniform_real_distribution<double> share;
        for (int i = 0; i < VECTORS; ++i) {
            Vec const from(place(engine), place(engine));
            double const value = share(engine);
            double const angle = 3.0 * (std::sin(from.x / 200.0) + std::cos(from.y / 170.0));
            Vec const way = Vec(std::cos(angle), std::sin(angle)) * (4.0 + 8.0 * value);
            auto const level = static_cast<unsigned char>(255.0 * value);
            made.push_back({CORNER + from * SCALING, CORNER + (from + way) * SCALING,
                            Color(level, static_cast<unsigned char>(255 - level / 2), 128)});
        }
        return made;
    }();
    return vectors;
}

void drawVector(Vector const &vector, bool dotted, Fig2::Painter *painter)
{
    Vec const way = vector.to - vector.from;
    Vec const head = way * 0.35;
    Vec const across(-head.y * 0.48, head.x * 0.48);
    Vec const neck = vector.to - head;
    painter->drawLine(vector.from, neck, LineStyle(0.1, LineStyle::STYLE_FULL, vector.color), Rotation::null);
    painter->drawPolygon(Polygon2d({vector.to, neck + across, neck - across}, true), LineStyle::null,
                         FillStyle(vector.color), Rotation::null, true);
    if (dotted)
        painter->drawEllipse(vector.from, {0.12, 0.12}, 0.0, LineStyle::null, FillStyle(vector.color), Rotation::null);
}

void drawOverlay(bool picture, bool vectors, bool dotted, Fig2::Painter *painter)
{
    double const size = SIDE * SCALING;
    painter->setClipping(Rect(CORNER, {size, size}), Rotation::null);
    if (picture)
        painter->drawImage(CORNER, {size, size}, &cameraPicture(), nullptr, {0, 0}, SCALING, {},
                           Fig2::ImageConversion::null, Rotation::null);
    if (vectors) {
        for (Vector const &vector : field())
            drawVector(vector, dotted, painter);
    }
    painter->resetClipping();
}

void writeOverlay(benchmark::State &state, char const *name, bool picture, bool vectors, bool dotted)
{
    QTemporaryDir const folder;
    QString const file = folder.filePath(QLatin1StringView(name));
    cameraPicture();
    field();
    for ([[maybe_unused]] auto _ : state) {
        auto const writer = createPageWriter(file);
        drawOverlay(picture, vectors, dotted, &writer->beginPage(PAGE));
        writer->close();
    }
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
}

BENCHMARK_CAPTURE(writeOverlay, blank_png, "a.png", false, false, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, picture_png, "a.png", true, false, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, vectors_png, "a.png", false, true, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, all_png, "a.png", true, true, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, picture_pdf, "a.pdf", true, false, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, vectors_pdf, "a.pdf", false, true, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, all_pdf, "a.pdf", true, true, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeOverlay, vectors_svg, "a.svg", false, true, true)->Unit(benchmark::kMillisecond)->UseRealTime();

void convert(benchmark::State &state)
{
    Fig2::ImageConversion conversion;
    conversion.setType(static_cast<Fig2::ImageConversion::Type>(state.range(0)));
    cameraPicture();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(convertPicture(cameraPicture(), conversion).pixels);
}
BENCHMARK(convert)->Unit(benchmark::kMillisecond)->DenseRange(0, 5);

} // namespace
} // namespace Zem::Fig2Qt
