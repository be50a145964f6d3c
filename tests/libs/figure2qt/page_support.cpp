#include "page_support.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <algorithm>
#include <cstdlib>

namespace Zem::Support {

using namespace Fig2;

namespace {

constexpr double DPI = 254.0;

Fig2Qt::PageOptions atTenPixels()
{
    Fig2Qt::PageOptions options;
    options.dpi = DPI;
    return options;
}

} // namespace

LineStyle fullLine(double width, Color const &color)
{
    return {width, LineStyle::STYLE_FULL, color};
}

LineStyle styledLine(double width, LineStyle::Style style, LineStyle::CapStyle cap)
{
    LineStyle line(width, style, BLACK);
    line.setCapStyle(cap);
    return line;
}

QStringList Folder::names() const
{
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void writePage(QString const &fileName, Vec const &size, Drawing const &drawing, Fig2Qt::PageOptions const &options)
{
    auto const writer = Fig2Qt::createPageWriter(fileName, options);
    drawing(writer->beginPage(size));
    writer->close();
}

QByteArray bytesOf(QString const &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage paint(Vec const &size, Drawing const &drawing)
{
    Folder const folder;
    writePage(folder.file("page.png"), size, drawing, atTenPixels());
    return QImage(folder.file("page.png")).convertToFormat(QImage::Format_RGB32);
}

QImage paintThroughSvg(Vec const &size, Drawing const &drawing)
{
    Folder const folder;
    writePage(folder.file("page.svg"), size, drawing);
    run(QStringLiteral("rsvg-convert"),
        {QStringLiteral("-d254"), QStringLiteral("-p254"), QStringLiteral("-bwhite"), QStringLiteral("-o"),
         folder.file("page.png"), folder.file("page.svg")});
    return QImage(folder.file("page.png")).convertToFormat(QImage::Format_RGB32);
}

QImage paintThroughPdf(Vec const &size, Drawing const &drawing)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), size, drawing);
    run(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("254"), QStringLiteral("-png"),
                                     QStringLiteral("-singlefile"), QStringLiteral("-thinlinemode"),
                                     QStringLiteral("none"), folder.file("page.pdf"), folder.file("page")});
    return QImage(folder.file("page.png")).convertToFormat(QImage::Format_RGB32);
}

std::string colorAt(QImage const &image, double x, double y)
{
    std::string const name = image.pixelColor(static_cast<int>(x * 10.0), static_cast<int>(y * 10.0)).name().toStdString();
    for (auto const &[code, word] : {std::pair("#ffffff", "white"), std::pair("#000000", "black"),
                                     std::pair("#ff0000", "red"), std::pair("#0000ff", "blue")}) {
        if (name == code)
            return word;
    }
    return name;
}

QRectF inkOf(QImage const &image)
{
    int left = image.width();
    int top = image.height();
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) >= 128)
                continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    return right < 0 ? QRectF() : QRectF(left, top, right + 1 - left, bottom + 1 - top);
}

double difference(QImage const &a, QImage const &b, int tolerance)
{
    if (a.size() != b.size() || a.isNull())
        return 1.0;
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            QRgb const p = a.pixel(x, y);
            QRgb const q = b.pixel(x, y);
            int const most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                       std::abs(qBlue(p) - qBlue(q))});
            count += most > tolerance ? 1 : 0;
        }
    }
    return static_cast<double>(count) / (static_cast<double>(a.width()) * a.height());
}

QString run(QString const &program, QStringList const &arguments)
{
    QProcess process;
    process.start(program, arguments);
    bool const finished = process.waitForFinished(60'000);
    EXPECT_TRUE(finished && process.exitCode() == 0)
        << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace Zem::Support
