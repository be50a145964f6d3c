#include "page_output.h"

#include "cli.h"
#include "page_file.h"
#include "page_schema.h"
#include "page_template.h"
#include "page_tokens.h"

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

/// The library's own saving logs a file that it cannot open without failing; here that is a failure.
template <class Save>
void saveBlocks(QString const &fileName, QLatin1StringView type, Save const &save)
{
    try {
        IO::OutStream stream(fileName, type, 1);
        if (!stream.isInit())
            throw OutputFailure(stream.getError());
        save(&stream);
        stream.close();
    } catch (IO::StreamException const &error) {
        throw OutputFailure(error.getText());
    }
}

void saveFigureFile(Fig2::Figure const &figure, QString const &fileName)
{
    // Of a template the page alone: what follows it in a file is no part of a figure file.
    saveBlocks(fileName, Fig2::Figure::FILE_TYPE_ID,
               [&figure](IO::OutStream *stream) { figure.Figure::save(stream, -1, -1); });
}

/// The colour scale of the first element that has one.
void freezeScale(Fig2::Figure const &figure, Fig2::Snippet *snippet)
{
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        Legend2::Legend legend;
        Legend2::Data data;
        bool showTolerances = false;
        Legend2::ToleranceParams tolerance;
        Legend2::HistogramData histogram;
        bool canDrawColors = false;
        if (!it->hasLegendData() || !it->getLegendData(figure.getTokenInterface(), &legend, &data, &showTolerances,
                                                       &tolerance, &histogram, &canDrawColors))
            continue;
        snippet->setLegendData(legend, data, showTolerances, tolerance, histogram);
        return;
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
    bool const isSnippet = output.endsWith(SNIPPET_ENDING);
    if (document.ownData && !isSnippet)
        message(QStringLiteral("%1: the data that it brings are left out, only a snippet holds them").arg(input));
    if (isSnippet) {
        if (!document.ownData)
            throw UsageError(QStringLiteral("%1 brings no data: use 'zemfig freeze'").arg(input));
        document.figure->update(StageIdentifier::NO_STAGE, true);
        writeSnippet(*document.figure, StageIdentifier::NO_STAGE, output);
    } else if (output.endsWith(TEMPLATE_ENDING)) {
        tellLostData(document, input, "a template names no data");
        tellLostLooks(document, input);
        writeTemplate(*document.figure, output);
    } else if (output.endsWith(Fig2::Figure::FILE_EXTENSION)) {
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
        throw UsageError(QStringLiteral("'%1' is no .fig, .toml, .template or .snippet file").arg(output));
    }
}

void writeTemplate(Fig2::Figure const &figure, QString const &output)
{
    std::unique_ptr<Fig2::FigureTemplate> const made = makeTemplate(figure);
    saveBlocks(output, Fig2::FigureTemplate::TEMPLATE_FILE_TYPE_ID,
               [&made](IO::OutStream *stream) { made->save(stream, -1, -1); });
}

void writeSnippet(Fig2::Figure &figure, StageIdentifier const &stage, QString const &output)
{
    Fig2::FigureTokenInterface const *const tokens = figure.getTokenInterface();
    ShownTokens const shown(tokens, &figure);
    figure.setTokenInterface(&shown);
    Fig2::Snippet snippet(stage, &figure, Fig2::SnapshotAllElementFilter());
    figure.setTokenInterface(tokens);
    copyNames(figure, snippet.getFigure());
    freezeScale(figure, &snippet);
    saveBlocks(output, Fig2::Snippet::FILE_TYPE_ID, [&snippet](IO::OutStream *stream) { snippet.save(stream); });
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
