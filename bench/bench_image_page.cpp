// What a page with a camera picture and 100,000 vectors costs: the whole page, and what changes when one label does.
#include "vector_field.h"

#include <ZemFig2Figure.h>
#include <ZemFig2Group.h>
#include <ZemFig2Image.h>
#include <ZemFig2Invalidator.h>
#include <ZemFig2Label.h>
#include <ZemFig2QtCalculator.h>
#include <ZemFig2QtPageWriter.h>
#include <ZemFig2QtPainter.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>

namespace Zem::Fig2Qt {
namespace {

using namespace Fig2;

constexpr double PIXELS_PER_MILLIMETRE = 300.0 / 25.4;

/// The picture, 186 mm wide, and a label below it.
class PicturePage
{
public:
    PicturePage() : figure(&tokens)
    {
        ImageDataVisualisation look(false);
        look.setVectorLineWidth(0.1);
        auto *image = new Fig2::Image;
        image->setToken(QStringLiteral("camera"));
        image->setOrigin({105, 120});
        image->setSize({186, 186});
        image->setVisualisation(QString(), look);
        figure.getRoot()->addChild(image);
        auto *label = new Label;
        label->setAlignmentOrigin({20, 240});
        label->setText(QStringLiteral("call $number$"));
        figure.getRoot()->addChild(label);
        figure.update(StageIdentifier(1), true);
    }

    QtCalculator calculator;
    OnePicture tokens;
    Figure figure;
};

void writePicturePage(benchmark::State &state, char const *name)
{
    PicturePage const page;
    QTemporaryDir const folder;
    QString const file = folder.filePath(QLatin1StringView(name));
    for ([[maybe_unused]] auto _ : state) {
        auto const writer = createPageWriter(file);
        drawPage(page.figure, writer.get());
        writer->close();
    }
    state.counters["bytes"] = static_cast<double>(QFileInfo(file).size());
}
BENCHMARK_CAPTURE(writePicturePage, png, "a.png")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(writePicturePage, pdf, "a.pdf")->Unit(benchmark::kMillisecond)->UseRealTime();

QImage blankPage()
{
    return {static_cast<int>(210 * PIXELS_PER_MILLIMETRE), static_cast<int>(297 * PIXELS_PER_MILLIMETRE),
            QImage::Format_RGB32};
}

QTransform pageToDevice()
{
    return QTransform::fromScale(PIXELS_PER_MILLIMETRE, PIXELS_PER_MILLIMETRE);
}

void redrawAll(benchmark::State &state)
{
    PicturePage const page;
    QImage image = blankPage();
    for ([[maybe_unused]] auto _ : state) {
        QPainter device(&image);
        QtPainter painter(&device, pageToDevice());
        drawPage(page.figure, &painter);
    }
}
BENCHMARK(redrawAll)->Unit(benchmark::kMillisecond)->UseRealTime();

/// As a program on a screen does it: only the elements in the region that changed.
void redrawOneLabel(benchmark::State &state)
{
    PicturePage page;
    Invalidator invalidator;
    page.figure.registerInvalidator(&invalidator);
    QImage image = blankPage();
    for ([[maybe_unused]] auto _ : state) {
        page.tokens.count();
        page.figure.update(StageIdentifier(1), false);
        QPainter device(&image);
        QtPainter painter(&device, pageToDevice());
        painter.setClipping(invalidator.getInvalidArea());
        page.figure.drawBackground(&painter);
        std::vector<Element const *> order;
        page.figure.computeRenderingOrder(&order);
        for (Element const *element : order) {
            if (!element->getCoveredPolygon().overlap(invalidator.getInvalidArea()))
                continue;
            for (int step = 0; !element->draw(&page.tokens, &painter, step); ++step) {
            }
        }
        painter.resetClipping();
        invalidator.reset();
    }
    page.figure.unregisterInvalidator(&invalidator);
}
BENCHMARK(redrawOneLabel)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace Zem::Fig2Qt
