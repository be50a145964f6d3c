// What it costs to draw labels and to write pages: PDF, PNG, SVG.
#include <ZemFig2Painter.h>
#include <ZemFig2QtCalculator.h>
#include <ZemFig2QtPageWriter.h>
#include <figqt_png_encoder.h>
#include <figqt_text_engine.h>

#include <benchmark/benchmark.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <cmath>
#include <memory>
#include <vector>

namespace Zem::Fig2Qt {
namespace {

constexpr int LABELS = 1000;
BaVec2d<double> const PAGE(210.0, 297.0);
Font const FONT(Font::DEFAULT_FONT_SANS, 10.0, 0);

std::vector<QString> formattedLabels()
{
    std::vector<QString> labels;
    for (int i = 0; i < LABELS; ++i)
        labels.push_back(
            QStringLiteral("Run <b>B%1</b> &sigma;<sub>max</sub> = <span style=\"color:#b02020\">%2</span> "
                           "<i>MPa</i>")
                .arg(i)
                .arg(std::sin(i) * 1000.0, 0, 'f', 2));
    return labels;
}

void drawLabels(std::vector<QString> const &labels, Fig2::Painter *painter)
{
    for (int i = 0; i < LABELS; ++i)
        painter->drawRichText({5.0 + i % 5 * 40.0, 5.0 + i / 5 * 1.43}, labels[static_cast<std::size_t>(i)], FONT, -1.0,
                              Fig2::Rotation::null, i);
}

/// `warm` keeps the laid-out texts from one page to the next, as when a page is drawn again.
void writeLabels(benchmark::State &state, char const *name, bool warm)
{
    QTemporaryDir const folder;
    QString const file = folder.filePath(QLatin1StringView(name));
    std::vector<QString> const labels = formattedLabels();
    PageOptions options;
    options.dpi = 150.0;
    for ([[maybe_unused]] auto _ : state) {
        if (!warm)
            TextEngine::forThisThread().clear();
        auto const writer = createPageWriter(file, options);
        drawLabels(labels, &writer->beginPage(PAGE));
        writer->close();
    }
    state.SetItemsProcessed(state.iterations() * LABELS);
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
}

BENCHMARK_CAPTURE(writeLabels, first_pdf, "labels.pdf", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeLabels, again_pdf, "labels.pdf", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeLabels, first_png, "labels.png", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeLabels, again_png, "labels.png", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeLabels, first_svg, "labels.svg", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeLabels, again_svg, "labels.svg", true)->Unit(benchmark::kMillisecond);

void measureLabels(benchmark::State &state)
{
    std::vector<QString> const labels = formattedLabels();
    TextEngine &engine = TextEngine::forThisThread();
    for ([[maybe_unused]] auto _ : state) {
        engine.clear();
        for (QString const &label : labels)
            benchmark::DoNotOptimize(engine.layOutRich(label, FONT, -1.0));
    }
    state.SetItemsProcessed(state.iterations() * LABELS);
}
BENCHMARK(measureLabels)->Unit(benchmark::kMillisecond);

/// What a label costs that needs all of Qt's rich text.
void measureDocumentLabels(benchmark::State &state)
{
    std::vector<QString> const labels = formattedLabels();
    TextEngine &engine = TextEngine::forThisThread();
    QFont const font = toQFont(FONT);
    for ([[maybe_unused]] auto _ : state) {
        for (QString const &label : labels)
            benchmark::DoNotOptimize(engine.layOutDocument(label, font, -1.0));
    }
    state.SetItemsProcessed(state.iterations() * LABELS);
}
BENCHMARK(measureDocumentLabels)->Unit(benchmark::kMillisecond);

/// A page as reports have them: text, lines, and a field of colours.
QImage reportPage(int dpi)
{
    double const scale = dpi / 25.4;
    QImage image(static_cast<int>(PAGE.x * scale), static_cast<int>(PAGE.y * scale), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 160; ++x)
            painter.fillRect(QRectF(25 + x, 180 + y, 1, 1), QColor::fromHsv((x * x + y * 17) % 360, 200, 220));
    }
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(4);
    painter.setFont(font);
    for (int i = 0; i < 200; ++i)
        painter.drawText(QPointF(10 + i % 4 * 50, 12 + i / 4 * 3.2), QStringLiteral("%1 MPa").arg(i * 1.37));
    painter.setPen(QPen(QColor(31, 119, 180), 0.2));
    for (int i = 0; i < 2000; ++i)
        painter.drawLine(QPointF(10 + i * 0.095, 100 + 40 * std::sin(i * 0.01)),
                         QPointF(10.095 + i * 0.095, 100 + 40 * std::sin(i * 0.01 + 0.01)));
    return image;
}

void encode(benchmark::State &state)
{
    QImage const image = reportPage(300);
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        bytes = 0;
        encodePng(image, 300.0, static_cast<unsigned>(state.range(0)),
                  [&bytes](std::string_view piece) { bytes += piece.size(); });
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(encode)->Unit(benchmark::kMillisecond)->Arg(1)->Arg(2)->UseRealTime();

} // namespace
} // namespace Zem::Fig2Qt
