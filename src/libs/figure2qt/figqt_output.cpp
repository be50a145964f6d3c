#include "ZemFig2QtOutput.h"

#include "ZemFig2QtPainter.h"

#include <ZemFig2LabelBase.h>

#include <QtGui/QImage>
#include <QtGui/QImageWriter>
#include <QtGui/QPageSize>
#include <QtGui/QPdfWriter>

#include <cmath>

namespace Zem::Fig2Qt {

using namespace Fig2;

namespace {

constexpr double MILLIMETRES_PER_INCH = 25.4;
constexpr int PDF_DPI = 1200;
constexpr int KEPT_LAYOUTS = 20000;
constexpr double LARGEST_PICTURE = 400e6; ///< pixels
/// Compresses ten times faster than the default for files a few percent larger.
constexpr int PNG_QUALITY = 80;

void requireExtent(BaVec2d<double> const &size)
{
    // The largest page that PDF readers are bound to show is 200 inches wide.
    constexpr double LARGEST = 200.0 * MILLIMETRES_PER_INCH;
    if (!(size.x > 0.0 && size.y > 0.0 && size.x <= LARGEST && size.y <= LARGEST))
        throw OutputError(QStringLiteral("a page of %1 x %2 mm cannot be drawn").arg(size.x).arg(size.y));
}

/// The writer notes the time at which it ran; the same page is to give the same file.
void fixCreationDate(QByteArray *pdf)
{
    static QByteArray const mark("/CreationDate (");
    qsizetype const begin = pdf->indexOf(mark);
    qsizetype const end = begin < 0 ? -1 : pdf->indexOf(')', begin);
    if (end < 0)
        return;
    qsizetype const first = begin + mark.size();
    // The length stays: the file holds the places of its objects.
    QByteArray const fixed = QByteArray("D:20000101000000Z").leftJustified(end - first, ' ', true);
    pdf->replace(first, end - first, fixed);
}

} // namespace

void drawPage(Figure const &figure, Painter *painter)
{
    figure.drawBackground(painter);
    FigureTokenInterface const *tokens = figure.getTokenInterface();
    if (!tokens)
        return;
    std::vector<Element const *> order;
    figure.computeRenderingOrder(&order);
    for (Element const *element : order) {
        if (auto const *label = dynamic_cast<LabelBase const *>(element))
            label->drawConnectorLine(painter);
    }
    for (Element const *element : order) {
        for (int step = 0; !element->draw(tokens, painter, step); ++step) {
        }
    }
}

PdfOutput::PdfOutput() : layouts_(KEPT_LAYOUTS), buffer_(&bytes_)
{
    buffer_.open(QIODevice::WriteOnly);
}

PdfOutput::~PdfOutput() = default;

void PdfOutput::beginPage(BaVec2d<double> const &size)
{
    QPageSize const pageSize(QSizeF(size.x, size.y), QPageSize::Millimeter, QString(), QPageSize::ExactMatch);
    if (!writer_) {
        writer_ = std::make_unique<QPdfWriter>(&buffer_);
        writer_->setResolution(PDF_DPI);
        writer_->setCreator(QStringLiteral("ZemFigure2"));
        writer_->setPageMargins(QMarginsF(0, 0, 0, 0));
        writer_->setPageSize(pageSize);
        painter_.begin(writer_.get());
    } else {
        writer_->setPageSize(pageSize);
        writer_->newPage();
        painter_.resetTransform();
    }
    double const unitsPerMillimetre = PDF_DPI / MILLIMETRES_PER_INCH;
    painter_.scale(unitsPerMillimetre, unitsPerMillimetre);
}

void PdfOutput::addPage(Figure const &figure)
{
    requireExtent(figure.getSize());
    beginPage(figure.getSize());
    QtPainter painter(&painter_, &layouts_);
    painter.setMode(0);
    drawPage(figure, &painter);
}

QByteArray PdfOutput::finish()
{
    if (!writer_)
        throw OutputError(QStringLiteral("a document without pages"));
    painter_.end();
    writer_.reset();
    fixCreationDate(&bytes_);
    return bytes_;
}

QByteArray renderPng(Figure const &figure, double dpi, TextLayoutCache *layouts)
{
    requireExtent(figure.getSize());
    double const pixelsPerMillimetre = dpi / MILLIMETRES_PER_INCH;
    BaVec2d<double> const pixels(std::round(figure.getSize().x * pixelsPerMillimetre),
                                 std::round(figure.getSize().y * pixelsPerMillimetre));
    if (!(dpi > 0.0) || pixels.x < 1.0 || pixels.y < 1.0 || pixels.x * pixels.y > LARGEST_PICTURE)
        throw OutputError(QStringLiteral("a page of %1 x %2 mm cannot be drawn with %3 dpi")
                              .arg(figure.getSize().x)
                              .arg(figure.getSize().y)
                              .arg(dpi));
    QImage image(static_cast<int>(pixels.x), static_cast<int>(pixels.y), QImage::Format_RGB32);
    if (image.isNull())
        throw OutputError(QStringLiteral("not enough memory for the picture"));
    image.fill(Qt::white);
    image.setDotsPerMeterX(qRound(pixelsPerMillimetre * 1000.0));
    image.setDotsPerMeterY(qRound(pixelsPerMillimetre * 1000.0));
    {
        QPainter device(&image);
        device.scale(pixelsPerMillimetre, pixelsPerMillimetre);
        QtPainter painter(&device, layouts);
        painter.setMode(0);
        drawPage(figure, &painter);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(PNG_QUALITY);
    if (!writer.write(image))
        throw OutputError(writer.errorString());
    return bytes;
}

} // namespace Zem::Fig2Qt
