// ZemFig2QtOutput.h: pages of figures as PDF and PNG.
// Layer: output. Used from one thread, after a QGuiApplication was made. The same pages give the same bytes.
#pragma once

#include "ZemFig2QtTextLayout.h"

#include <ZemFig2Figure.h>

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtGui/QPainter>

#include <memory>

class QPdfWriter;

namespace Zem::Fig2Qt {

/// A page cannot be turned into the wanted output. The text says why.
class OutputError : public Exception
{
public:
    using Exception::Exception;
};

/// Draws a figure that was updated: background, connector lines, and the visible elements in layer order.
void drawPage(Fig2::Figure const &figure, Fig2::Painter *painter);

/// A PDF of any number of pages, each with the size of its figure.
class PdfOutput
{
public:
    PdfOutput();
    ~PdfOutput();
    PdfOutput(PdfOutput const &) = delete;
    PdfOutput &operator=(PdfOutput const &) = delete;

    /// Throws OutputError for a page without extent.
    void addPage(Fig2::Figure const &figure);
    /// Ends the document. Throws OutputError when it has no page.
    QByteArray finish();

private:
    void beginPage(BaVec2d<double> const &size);

    TextLayoutCache layouts_;
    QByteArray bytes_;
    QBuffer buffer_;
    std::unique_ptr<QPdfWriter> writer_;
    QPainter painter_;
};

/// One page as a picture. Throws OutputError for a resolution or a page that makes no sense, or too large a picture.
QByteArray renderPng(Fig2::Figure const &figure, double dpi, TextLayoutCache *layouts);

} // namespace Zem::Fig2Qt
