// What it costs to draw charts with more points than the page can show, drawing and writing.
// Data: made up here, or read from the folder ZEM_BENCH_DATA (line_1e4.bin, line_1e6.bin and line_1e7.bin of x and y,
// scatter_1e6.bin of x, y and a value from 0 to 1; doubles in the machine's order), to draw the same as other programs.
#include <ZemFig2Painter.h>
#include <ZemFig2QtPageWriter.h>
#include <figqt_png_encoder.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

namespace Zem::Fig2Qt {
namespace {

using Vec = BaVec2d<double>;

// An A4 page of 2480 x 3508 pixels at 300 dpi.
constexpr double MM = 25.4 / 300.0;
Vec const PAGE(2480.0 * MM, 3508.0 * MM);
constexpr double LEFT = 0.12 * 2480.0 * MM;
constexpr double TOP = 0.06 * 3508.0 * MM;
constexpr double WIDTH = 0.83 * 2480.0 * MM;
constexpr double HEIGHT = 0.86 * 3508.0 * MM;
constexpr double BOTTOM = TOP + HEIGHT;
Color const LINE_COLOR(31, 119, 180);
constexpr double LINE_WIDTH = 0.1;

/// x from 0 to 10, y from -3 to 3.
Vec onPage(double x, double y)
{
    return {LEFT + x / 10.0 * WIDTH, BOTTOM - (y + 3.0) / 6.0 * HEIGHT};
}

std::vector<double> readNumbers(QString const &name)
{
    QFile file(qEnvironmentVariable("ZEM_BENCH_DATA") + QLatin1Char('/') + name);
    if (!qEnvironmentVariableIsSet("ZEM_BENCH_DATA") || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray const bytes = file.readAll();
    std::vector<double> numbers(static_cast<std::size_t>(bytes.size()) / sizeof(double));
    std::memcpy(numbers.data(), bytes.constData(), numbers.size() * sizeof(double));
    return numbers;
}

/// Two waves and noise.
std::vector<double> waves(int count)
{
    std::mt19937 engine(1000);
    std::normal_distribution<double> noise(0.0, 0.25);
    std::vector<double> numbers;
    for (int i = 0; i < count; ++i) {
        double const x = 10.0 * i / count;
        double const y = std::sin(2.0 * std::numbers::pi * 0.7 * x) + 0.5 * std::sin(2.0 * std::numbers::pi * 9.0 * x);
        numbers.insert(numbers.end(), {x, std::clamp(y + noise(engine), -2.95, 2.95)});
    }
    return numbers;
}

std::vector<double> clusters(int count)
{
    constexpr Vec CENTRES[] = {{2, -1}, {4, 1}, {6, -1.5}, {8, 1.5}, {5, 0}};
    std::mt19937 engine(7);
    std::normal_distribution<double> noise;
    std::vector<double> numbers;
    for (int i = 0; i < count; ++i) {
        Vec const centre = CENTRES[engine() % 5];
        double const x = std::clamp(centre.x + 0.7 * noise(engine), 0.0, 10.0);
        double const y = std::clamp(centre.y + 0.6 * noise(engine), -3.0, 3.0);
        double const value = x * 0.07 + (y + 3.0) * 0.05 + 0.05 * noise(engine);
        numbers.insert(numbers.end(), {x, y, std::clamp(value, 0.0, 1.0)});
    }
    return numbers;
}

std::vector<double> lineNumbers(int count)
{
    int const power = static_cast<int>(std::lround(std::log10(count)));
    std::vector<double> numbers = readNumbers(QStringLiteral("line_1e%1.bin").arg(power));
    return numbers.empty() ? waves(count) : numbers;
}

Polygon2d lineOnPage(int count)
{
    std::vector<double> const numbers = lineNumbers(count);
    std::vector<Vec> points;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        points.push_back(onPage(numbers[i], numbers[i + 1]));
    return {points, false};
}

void drawAxes(Fig2::Painter *painter)
{
    Fig2::LineStyle const line(0.2, Fig2::LineStyle::STYLE_FULL, Color(0, 0, 0));
    Font const font(Font::DEFAULT_FONT_SANS, 10.0, 0);
    painter->drawRect({LEFT, TOP}, {WIDTH, HEIGHT}, line, Fig2::FillStyle::null, Fig2::Rotation::null);
    for (int i = 0; i <= 10; ++i) {
        double const x = LEFT + WIDTH * i / 10.0;
        double const y = BOTTOM - HEIGHT * i / 10.0;
        painter->drawLine({x, BOTTOM}, {x, BOTTOM - 2.0}, line, Fig2::Rotation::null);
        painter->drawLine({LEFT, y}, {LEFT + 2.0, y}, line, Fig2::Rotation::null);
        painter->drawText({x - 2.0, BOTTOM + 1.0}, font, QString::number(i), Color(0, 0, 0), Fig2::Rotation::null);
        painter->drawText({LEFT - 9.0, y - 2.0}, font, QString::number(-3.0 + 0.6 * i), Color(0, 0, 0),
                          Fig2::Rotation::null);
    }
}

Rect plotArea()
{
    return Rect({LEFT, TOP}, {LEFT + WIDTH, BOTTOM});
}

void drawChartLine(Polygon2d const &line, Fig2::LineStyle::Style style, Fig2::Painter *painter)
{
    drawAxes(painter);
    painter->setClipping(plotArea(), Fig2::Rotation::null);
    painter->drawPolygon(line, {LINE_WIDTH, style, LINE_COLOR}, Fig2::FillStyle::null, Fig2::Rotation::null, false);
    painter->resetClipping();
}

template <class Drawing>
void writePages(benchmark::State &state, char const *name, Drawing const &drawing)
{
    QTemporaryDir const folder;
    QString const file = folder.filePath(QString::fromLatin1(name));
    for ([[maybe_unused]] auto _ : state) {
        auto const writer = createPageWriter(file);
        drawing(&writer->beginPage(PAGE));
        writer->close();
    }
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
    if (qEnvironmentVariableIsSet("ZEM_BENCH_KEEP"))
        QFile::copy(file, qEnvironmentVariable("ZEM_BENCH_KEEP") + QLatin1Char('/') + QString::number(state.range(0)) +
                              QString::fromLatin1(name));
}

void writeLine(benchmark::State &state, char const *name, Fig2::LineStyle::Style style)
{
    Polygon2d const line = lineOnPage(static_cast<int>(state.range(0)));
    writePages(state, name, [&](Fig2::Painter *painter) { drawChartLine(line, style, painter); });
}
BENCHMARK_CAPTURE(writeLine, png, "line.png", Fig2::LineStyle::STYLE_FULL)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(writeLine, dashed_png, "dashed.png", Fig2::LineStyle::STYLE_DASHED)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(writeLine, pdf, "line.pdf", Fig2::LineStyle::STYLE_FULL)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(writeLine, svg, "line.svg", Fig2::LineStyle::STYLE_FULL)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// The same line, all points in one call of a QPainter. More of them would take minutes.
void writeLineThroughQPainter(benchmark::State &state)
{
    Polygon2d const line = lineOnPage(static_cast<int>(state.range(0)));
    QPolygonF points;
    for (Vec const &point : line.getPoints())
        points.append({point.x / MM, point.y / MM});
    QTemporaryDir const folder;
    for ([[maybe_unused]] auto _ : state) {
        QImage image(2480, 3508, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(QRectF(LEFT / MM, TOP / MM, WIDTH / MM, HEIGHT / MM));
        painter.setPen(QPen(QColor(31, 119, 180), LINE_WIDTH / MM, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
        painter.drawPolyline(points);
        painter.end();
        image.save(folder.filePath(QStringLiteral("line.png")));
    }
}
BENCHMARK(writeLineThroughQPainter)->Arg(10'000)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

Color colorOf(double value)
{
    auto const channel = [](double share) { return static_cast<unsigned char>(std::lround(share * 255.0)); };
    return {channel(value), channel(1.0 - std::abs(2.0 * value - 1.0)), channel(1.0 - value)};
}

void writeScatter(benchmark::State &state, char const *name)
{
    std::vector<double> numbers = readNumbers(QStringLiteral("scatter_1e6.bin"));
    if (numbers.empty())
        numbers = clusters(1'000'000);
    Fig2::Symbol const symbol(Fig2::Symbol::TYPE_CIRCLE, 0.5, false);
    Fig2::LineStyle const noLine(0.1, Fig2::LineStyle::STYLE_NONE, Color(0, 0, 0));
    std::size_t const end = std::min(numbers.size(), static_cast<std::size_t>(state.range(0)) * 3);
    writePages(state, name, [&](Fig2::Painter *painter) {
        drawAxes(painter);
        painter->setClipping(plotArea(), Fig2::Rotation::null);
        for (std::size_t i = 0; i + 2 < end; i += 3)
            painter->drawSymbol(onPage(numbers[i], numbers[i + 1]), symbol, noLine,
                                Fig2::FillStyle(colorOf(numbers[i + 2])), Fig2::Rotation::null);
        painter->resetClipping();
    });
}
BENCHMARK_CAPTURE(writeScatter, png, "scatter.png")->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeScatter, pdf, "scatter.pdf")->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writeScatter, svg, "scatter.svg")->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();

enum class Upright { SPIKES, BARS };

/// A line or a bar from the axis to each point.
void writeUpright(benchmark::State &state, char const *name, Upright kind)
{
    Polygon2d const line = lineOnPage(static_cast<int>(state.range(0)));
    double const width = WIDTH / static_cast<double>(line.size());
    Fig2::LineStyle const style(LINE_WIDTH, Fig2::LineStyle::STYLE_FULL, LINE_COLOR);
    writePages(state, name, [&](Fig2::Painter *painter) {
        for (Vec const &point : line.getPoints()) {
            if (kind == Upright::SPIKES)
                painter->drawLine({point.x, BOTTOM}, point, style, Fig2::Rotation::null);
            else
                painter->drawRect({point.x, BOTTOM}, {width, point.y - BOTTOM}, Fig2::LineStyle::null,
                                  Fig2::FillStyle(LINE_COLOR), Fig2::Rotation::null);
        }
    });
}
BENCHMARK_CAPTURE(writeUpright, spikes_png, "spikes.png", Upright::SPIKES)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(writeUpright, spikes_pdf, "spikes.pdf", Upright::SPIKES)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(writeUpright, bars_png, "bars.png", Upright::BARS)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(writeUpright, bars_pdf, "bars.pdf", Upright::BARS)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
} // namespace Zem::Fig2Qt
