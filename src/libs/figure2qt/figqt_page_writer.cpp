#include "ZemFig2QtPageWriter.h"

#include "ZemFig2QtPdfWriter.h"
#include "ZemFig2QtPngWriter.h"
#include "ZemFig2QtSvgWriter.h"
#include "figqt_page_check.h"

#include <ZemFig2Figure.h>
#include <ZemFig2LabelBase.h>
#include <ZemFig2Painter.h>
#include <ZemTranslate.h>

#include <QtCore/QFileInfo>

#include <cmath>

namespace Zem::Fig2Qt {

namespace {

QString text(char const *message)
{
    return translate("Figure2Qt_err", message);
}

} // namespace

void requireOpen(bool open, char const *function, char const *file, unsigned int line)
{
    if (!open)
        throw ProgError(function, file, line, "The writer is closed");
}

void requirePageSize(BaVec2d<double> const &size, double largest, QString const &fileName)
{
    // Written so that NaN is refused, too.
    if (size.x > 0.0 && size.y > 0.0 && size.x <= largest && size.y <= largest)
        return;
    throw OutputError(text("%1: a page of %2 x %3 mm cannot be written, the largest is %4 mm")
                          .arg(fileName)
                          .arg(size.x)
                          .arg(size.y)
                          .arg(largest));
}

void requireResolution(double dpi, QString const &fileName)
{
    if (!(dpi > 0.0) || !std::isfinite(dpi))
        throw OutputError(text("%1: %2 dpi is no resolution").arg(fileName).arg(dpi));
}

void requirePages(int count, QString const &fileName)
{
    if (count == 0)
        throw OutputError(text("%1: there are no pages to write").arg(fileName));
}

void requireFirstPage(bool first, QString const &fileName)
{
    if (!first)
        throw OutputError(text("%1: this format holds one page only").arg(fileName));
}

std::unique_ptr<PageWriter> createPageWriter(QString const &fileName, PageOptions const &options)
{
    QString const ending = QFileInfo(fileName).suffix().toLower();
    if (ending == QLatin1StringView("pdf"))
        return std::make_unique<PdfWriter>(fileName, options);
    if (ending == QLatin1StringView("png"))
        return std::make_unique<PngWriter>(fileName, options);
    if (ending == QLatin1StringView("svg"))
        return std::make_unique<SvgWriter>(fileName, options);
    throw OutputError(text("%1: the name must end in .pdf, .png or .svg").arg(fileName));
}

void drawPage(Fig2::Figure const &figure, PageWriter *writer)
{
    drawPage(figure, &writer->beginPage(figure.getSize()));
}

void drawPage(Fig2::Figure const &figure, Fig2::Painter *painter)
{
    figure.drawBackground(painter);
    Fig2::FigureTokenInterface const *tokens = figure.getTokenInterface();
    if (!tokens)
        return;
    std::vector<Fig2::Element const *> order;
    figure.computeRenderingOrder(&order);
    for (Fig2::Element const *element : order) {
        if (auto const *label = dynamic_cast<Fig2::LabelBase const *>(element))
            label->drawConnectorLine(painter);
    }
    for (Fig2::Element const *element : order) {
        for (int step = 0; !element->draw(tokens, painter, step); ++step) {
        }
    }
}

} // namespace Zem::Fig2Qt
