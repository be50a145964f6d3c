#include "page_output.h"

#include "cli.h"
#include "page_schema.h"

#include <ZemFig2Logo.h>
#include <ZemFig2QtPageWriter.h>
#include <ZemImage.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <memory>
#include <set>

namespace Zem::Zemfig {

namespace {

void saveFigureFile(Fig2::Figure const &figure, QString const &fileName)
{
    // The library's own saving logs a file that it cannot open without failing; here that is a failure.
    try {
        IO::OutStream stream(fileName, Fig2::Figure::FILE_TYPE_ID, 1);
        if (!stream.isInit())
            throw OutputFailure(stream.getError());
        figure.save(&stream, -1, -1);
        stream.close();
    } catch (IO::StreamException const &error) {
        throw OutputFailure(error.getText());
    }
}

/// Paths to data are relative to the folder of a document.
bool areInOneFolder(QString const &a, QString const &b)
{
    return QFileInfo(QFileInfo(a).absolutePath()).canonicalFilePath() ==
           QFileInfo(QFileInfo(b).absolutePath()).canonicalFilePath();
}

void tellLostData(PageDocument const &document, QString const &input, char const *reason)
{
    if (!document.data.isEmpty())
        message(QStringLiteral("%1: %2: [data] is left out, give --project or --data when rendering")
                    .arg(input, QString::fromLatin1(reason)));
    std::set<QString> sections;
    for (SourceTable const &source : document.sources)
        sections.insert(source.section);
    for (QString const &section : sections)
        message(QStringLiteral("%1: %2: [[%3]] is left out, give a project that holds it when rendering")
                    .arg(input, QString::fromLatin1(reason), section));
}

/// A figure file holds neither scale nor named points.
void tellLostLooks(PageDocument const &document, QString const &input)
{
    if (document.scale)
        message(QStringLiteral("%1: a figure file holds no colour scale: [scale] is left out, store it in the project")
                    .arg(input));
    if (!document.points.empty())
        message(QStringLiteral("%1: a figure file holds no named points: [[point]] is left out").arg(input));
}

bool isSamePicture(Zem::Image const &a, Zem::Image const *b)
{
    if (!b || a.getType() != b->getType() || a.getWidth() != b->getWidth() || a.getHeight() != b->getHeight())
        return false;
    StructVector<unsigned char> bytesOfA;
    StructVector<unsigned char> bytesOfB;
    a.compressImage(&bytesOfA);
    b->compressImage(&bytesOfB);
    return std::equal(bytesOfA.data(), bytesOfA.data() + bytesOfA.size(), bytesOfB.data(),
                      bytesOfB.data() + bytesOfB.size());
}

/// A page document names the pictures of logos, and holds none.
void tellLostPictures(Fig2::Figure const &figure, QString const &input, QString const &output)
{
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        auto const *const logo = dynamic_cast<Fig2::Logo const *>(*it);
        if (!logo || !logo->getImage())
            continue;
        QString const file = QFileInfo(output).dir().filePath(logo->getFileName());
        Zem::Image::FileType type{};
        bool const isThere = !logo->getFileName().isEmpty() && Zem::Image::getFileType(file, &type);
        std::unique_ptr<Zem::Image> const named(isThere ? Zem::Image::loadImage(file, nullptr, -1, -1) : nullptr);
        if (!isSamePicture(*logo->getImage(), named.get()))
            message(
                QStringLiteral("%1: a page document holds no pictures: that of %2 is left out, '%3' does not hold it")
                    .arg(input, describe(*logo), file));
    }
}

} // namespace

void writePage(PageDocument const &document, QString const &input, QString const &output)
{
    if (output.endsWith(Fig2::Figure::FILE_EXTENSION)) {
        tellLostData(document, input, "a figure file names no data");
        tellLostLooks(document, input);
        saveFigureFile(*document.figure, output);
    } else if (output.endsWith(QLatin1StringView(".toml"))) {
        bool const keepsData = areInOneFolder(input, output);
        tellLostPictures(*document.figure, input, output);
        if (!keepsData)
            tellLostData(document, input, "its data cannot be named from another folder");
        QMap<QString, QVariant> const data = keepsData ? document.data : QMap<QString, QVariant>();
        std::vector<SourceTable> const sources = keepsData ? document.sources : std::vector<SourceTable>();
        writeFile(output, writePageDocument(*document.figure, data, document.scale, sources, document.points).toUtf8());
    } else {
        throw UsageError(QStringLiteral("'%1' is neither a .fig nor a .toml file").arg(output));
    }
}

void writePicture(Fig2::Figure const &figure, QString const &output, double dpi)
{
    Fig2Qt::PageOptions options;
    options.dpi = dpi;
    try {
        std::unique_ptr<Fig2Qt::PageWriter> const writer = Fig2Qt::createPageWriter(output, options);
        Fig2Qt::drawPage(figure, writer.get());
        writer->close();
    } catch (Fig2Qt::OutputError const &error) {
        throw OutputFailure(error.getText());
    }
}

QString pathFromPage(QString const &file, QString const &page)
{
    QString const path = QDir(QFileInfo(page).absolutePath()).relativeFilePath(QFileInfo(file).absoluteFilePath());
    if (path.startsWith(QLatin1StringView("..")))
        throw UsageError(QStringLiteral("'%1' must stand in the folder of its data, or above it").arg(page));
    return path;
}

QString pictureEnding(QString const &output)
{
    QString const ending = output.mid(output.lastIndexOf(QLatin1Char('.')) + 1).toLower();
    if (!QStringList{QStringLiteral("pdf"), QStringLiteral("png"), QStringLiteral("svg")}.contains(ending))
        throw UsageError(QStringLiteral("'%1' ends in none of .pdf, .png and .svg").arg(output));
    return ending;
}

} // namespace Zem::Zemfig
