// page_support.h: writes small pages and looks at what came out.
#pragma once

#include <ZemFig2Painter.h>
#include <ZemFig2QtPageWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QRectF>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

#include <functional>
#include <vector>

namespace Zem::Support {

using Vec = BaVec2d<double>;
using Drawing = std::function<void(Fig2::Painter &)>;

inline constexpr Color BLACK{0, 0, 0};
inline constexpr Color RED{255, 0, 0};
inline constexpr Color BLUE{0, 0, 255};

/// A full, sharp line.
Fig2::LineStyle fullLine(double width, Color const &color = BLACK);
Fig2::LineStyle styledLine(double width, Fig2::LineStyle::Style style, Fig2::LineStyle::CapStyle cap);

/// A folder that goes with the test.
class Folder
{
public:
    QString file(char const *name) const { return folder_.filePath(QString::fromLatin1(name)); }
    QString path() const { return folder_.path(); }
    QStringList names() const;

private:
    QTemporaryDir folder_;
};

/// Writes a page of `size` millimetres; the ending of the name is the format.
void writePage(QString const &fileName, Vec const &size, Drawing const &drawing, Fig2Qt::PageOptions const &options = {});
QByteArray bytesOf(QString const &fileName);

/// A page of 254 dpi: 10 pixels are a millimetre.
QImage paint(Vec const &size, Drawing const &drawing);
/// As paint(), through the SVG writer and rsvg-convert, or the PDF writer and pdftoppm.
QImage paintThroughSvg(Vec const &size, Drawing const &drawing);
QImage paintThroughPdf(Vec const &size, Drawing const &drawing);
/// The pixel of paint() in the middle of which the place, in millimetres, lies: "white", "black", "red", "blue" or
/// "#rrggbb".
std::string colorAt(QImage const &image, double x, double y);

/// The smallest rectangle, in pixels, around what is darker than half.
QRectF inkOf(QImage const &image);
/// The share of pixels whose channels differ by more than `tolerance`.
double difference(QImage const &a, QImage const &b, int tolerance);

/// Runs a program of the system and gives what it wrote. Fails the test when the program does.
QString run(QString const &program, QStringList const &arguments);

} // namespace Zem::Support
