// ZemFig2QtPageWriter.h: PageWriter, a file of pages to draw figures on.
// Layer: Qt backend. Each writer is used from one thread, different ones from different threads at once; all need a
// QGuiApplication, see ensureGuiApplication.
#pragma once

#include <ZemOutputFile.h>
#include <ZemVec.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <memory>
#include <optional>

namespace Zem::Fig2 {
class Figure;
class Painter;
} // namespace Zem::Fig2

namespace Zem::Fig2Qt {

/// The output cannot be written, or is not one that can be. The text names the file and the reason.
using OutputError = FileError;

/// What the formats leave open.
struct PageOptions
{
    double dpi = 300.0;                    ///< of PNG
    double pictureDpi = 300.0;             ///< of PDF and SVG: pictures get no more pixels to an inch
    QString title;                         ///< of PDF and SVG; left out when empty
    std::optional<QDateTime> creationDate; ///< of PDF; left out when not given
};

/// Takes pages one after the other. The same drawing gives the same bytes: no file holds a time that was not given, or
/// a random number. The file appears under its name in close(); without it, and after a failure, a file of that name
/// stays as it was. Painters are in mode 0, which draws everything at once. What is wrong with the output is an
/// OutputError, a page after close() or a cache id left on a painter's stack a ProgError.
class PageWriter
{
public:
    virtual ~PageWriter() = default;
    PageWriter(PageWriter const &) = delete;
    PageWriter &operator=(PageWriter const &) = delete;

    /// Ends the page before, and begins one of `size` page millimetres, white for PNG, else transparent. The painter is
    /// valid until the next page or close(). Throws OutputError for a size that is not positive, or too large for the
    /// format, and for a second page in a format of one.
    virtual Fig2::Painter &beginPage(BaVec2d<double> const &size) = 0;
    /// All bytes are on the medium when this returns. Throws OutputError, also for a file without pages. A second call
    /// does nothing.
    virtual void close() = 0;

protected:
    PageWriter() = default;
};

/// By the ending of the name: .pdf, .png or .svg, of either case. Throws OutputError for another one, and for a file
/// that cannot be written.
std::unique_ptr<PageWriter> createPageWriter(QString const &fileName, PageOptions const &options = {});

/// Draws what is visible of the figure, which is up to date, on a page of its size.
void drawPage(Fig2::Figure const &figure, PageWriter *writer);

/// Draws the background, the connector lines and the visible elements of the figure, which is up to date. Without a
/// token interface only the background.
void drawPage(Fig2::Figure const &figure, Fig2::Painter *painter);

} // namespace Zem::Fig2Qt
