// The legends of older files and the elements whose colours they show.
#include "ZemFig2Chart.h"
#include "ZemFig2Figure.h"
#include "ZemFig2Image.h"
#include "ZemFig2Legend.h"
#include "fig_import_data.h"
#include "fig_import_record.h"
#include "fig_importer.h"

#include <QtCore/QHash>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int LEGEND_VERSION = 3;  // 2: token; 3: frame, own scale
constexpr unsigned int DISPLAY_VERSION = 2; // 2: histogram, blocks

struct OldLegend
{
    OldFrame frame;
    QString token;
    OldPen border;
    OldBrush background;
    bool hasScale = false;

    void read(BlockReader &reader)
    {
        frame.read(reader);
        reader.keep(token, Since{2});
        readSince(reader, Since{3}, border);
        readSince(reader, Since{3}, background);
        reader.keep(hasScale, Since{3});
    }

    void apply(Legend *legend) const
    {
        legend->setOrigin(frame.center());
        legend->setSize(frame.size);
        legend->setBorder(border.lineStyle());
        legend->setBackground(background.fillStyle());
    }
};

void importDisplay(IO::InStream *stream, Legend *legend)
{
    loadRecord(stream, DISPLAY_VERSION, "invalid legend display parameter version: %1", [legend](BlockReader &reader) {
        double barWidth = 0.0;
        OldPen box;
        OldPen ticks;
        OldFont font;
        bool showHistogram = false;
        bool equalBlocks = false;
        reader.field(barWidth);
        box.read(reader);
        ticks.read(reader);
        font.read(reader);
        reader.keep(showHistogram, Since{2});
        reader.keep(equalBlocks, Since{2});

        legend->setBarWidth(barWidth);
        legend->setTickBoxStyle(box.lineStyle());
        legend->setTickStyle(ticks.lineStyle());
        legend->setFont(font.font());
        legend->setFontColor(font.color);
        legend->setShowHistogram(showHistogram);
        legend->setEqualSizedBlocks(equalBlocks);
    });
}

QString tokenOf(Element const *element)
{
    if (auto const *image = dynamic_cast<ImageBase const *>(element))
        return image->getToken();
    auto const *chart = dynamic_cast<ChartBase const *>(element);
    return chart ? chart->getToken() : QString();
}

/// The first element of each token.
QHash<QString, Element *> elementsByToken(Figure *figure)
{
    QHash<QString, Element *> elements;
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it)
        if (QString const token = tokenOf(*it); !token.isEmpty() && !elements.contains(token))
            elements.insert(token, *it);
    return elements;
}

} // namespace

std::unique_ptr<Element> Importer::importLegend(IO::InStream *stream)
{
    OldLegend record;
    loadRecord(stream, LEGEND_VERSION, "invalid legend header version: %1",
               [&record](BlockReader &reader) { record.read(reader); });
    auto legend = std::make_unique<Legend>();
    record.apply(legend.get());
    importDisplay(stream, legend.get());
    kept("legend");
    if (record.hasScale) {
        Legend2::Legend scale(uLength);
        Legend2::Data data;
        importLegendData(stream, &scale, &data);
        legend->setLocalLegendData(scale, data);
        legend->setLegendDataMode(Legend::LEGEND_DATA_MODE_MANUAL);
    }
    if (!record.token.isEmpty())
        legends_.push_back({legend.get(), place(), record.token});
    return legend;
}

void Importer::connectLegends(Figure *figure)
{
    if (legends_.empty())
        return;
    QHash<QString, Element *> const elements = elementsByToken(figure);
    for (auto const &[legend, place, token] : std::exchange(legends_, {})) {
        QString const shown =
            token == Import::TOKEN_LEGEND_OVERLAY_STRAIN ? QString(Import::TOKEN_IMAGE_OVERLAY_STRAIN) : token;
        if (Element *element = elements.value(shown))
            legend->connect(element, QString());
        else
            report("legend", place, ImportEntry::DROPPED, "the element whose colours it shows is not there");
    }
}

} // namespace Zem::Fig2
