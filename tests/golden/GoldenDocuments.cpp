#include "GoldenDocuments.h"

#include <ZemFig2DataInterface.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Import.h>
#include <ZemFig2Snippet.h>
#include <ZemFig2Template.h>
#include <ZemFig2TokenContainer.h>
#include <ZemIdentifiers.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <memory>
#include <sstream>

namespace Zem::Support {

namespace {

using namespace Fig2;

/// Saves what `load` reads from the bytes; `save` writes it to a stream of the type.
template <class Document, class Load, class Save>
std::string saveAgain(QByteArray const &bytes, QString const &type, Load const &load, Save const &save)
{
    std::istringstream input(bytes.toStdString());
    IO::InStream stream(&input);
    if (!stream.isInit())
        throw IO::StreamException(stream.getError());
    Document document;
    load(&document, &stream);
    std::ostringstream output;
    IO::OutStream saved(&output, type, 1);
    save(document, &saved);
    saved.close();
    return output.str();
}

std::string saveFigureAgain(QByteArray const &bytes)
{
    return saveAgain<Figure>(
        bytes, Figure::FILE_TYPE_ID, [](Figure *figure, IO::InStream *stream) { figure->load(stream, -1, -1); },
        [](Figure const &figure, IO::OutStream *stream) { figure.save(stream, -1, -1); });
}

std::string saveSnippetAgain(QByteArray const &bytes)
{
    return saveAgain<Snippet>(
        bytes, Snippet::FILE_TYPE_ID, [](Snippet *snippet, IO::InStream *stream) { snippet->load(stream); },
        [](Snippet const &snippet, IO::OutStream *stream) { snippet.save(stream); });
}

/// As templates are opened: what is no template is taken in.
void loadTemplate(FigureTemplate *figure, IO::InStream *stream)
{
    if (stream->isOfType(FigureTemplate::TEMPLATE_FILE_TYPE_ID))
        figure->load(stream, -1, -1);
    else
        figure->import(stream, -1, -1);
}

std::string saveTemplateAgain(QByteArray const &bytes)
{
    return saveAgain<FigureTemplate>(
        bytes, FigureTemplate::TEMPLATE_FILE_TYPE_ID, loadTemplate,
        [](FigureTemplate const &figure, IO::OutStream *stream) { figure.save(stream, -1, -1); });
}

/// Older figures are read only: what they become is written to a stream of the type.
template <class Save>
std::string saveOlder(QByteArray const &bytes, QString const &type, Save const &save)
{
    std::istringstream input(bytes.toStdString());
    IO::InStream stream(&input);
    if (!stream.isInit())
        throw IO::StreamException(stream.getError());
    DataInterface tokens;
    std::unique_ptr<Figure> const figure(Import::importTemplate(&stream, nullptr, &tokens));
    std::ostringstream output;
    IO::OutStream saved(&output, type, 1);
    save(*figure, tokens, &saved);
    saved.close();
    return output.str();
}

std::string saveOlderFigure(QByteArray const &bytes)
{
    return saveOlder(bytes, Figure::FILE_TYPE_ID,
                     [](Figure const &figure, DataInterface const &, IO::OutStream *stream) {
                         figure.Figure::save(stream, -1, -1);
                     });
}

/// The figure with the tokens that it shows.
std::string saveOlderTokens(QByteArray const &bytes)
{
    return saveOlder(bytes, Snippet::FILE_TYPE_ID,
                     [](Figure const &figure, DataInterface const &tokens, IO::OutStream *stream) {
                         auto page = std::make_unique<Figure>(figure);
                         auto container = std::make_unique<FigureTokenContainer>(page.get(), &tokens);
                         SnapshotData(StageIdentifier::NO_STAGE, page.release(), container.release()).save(stream);
                     });
}

constexpr GoldenKind KINDS[] = {{"fig", "Figure file", saveFigureAgain},
                                {"old", "Figure file", saveOlderFigure},
                                {"oldtokens", "Snippet file", saveOlderTokens},
                                {"snippet", "Snippet file", saveSnippetAgain},
                                {"template", "Template file", saveTemplateAgain}};

} // namespace

QString goldenPath(QString const &name)
{
    return QStringLiteral(ZEM_SOURCE_DIR "/tests/golden/") + name;
}

QByteArray goldenContent(QString const &name)
{
    QFile file(goldenPath(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + name.toStdString());
    return file.readAll();
}

QStringList goldenDocuments()
{
    QStringList names;
    for (QString const &name : QDir(goldenPath("files")).entryList(QDir::Files, QDir::Name)) {
        if (!name.endsWith(QLatin1String(".txt")))
            names += name;
    }
    return names;
}

GoldenKind const &goldenKindOf(QString const &name)
{
    for (GoldenKind const &kind : KINDS) {
        if (name.endsWith(QLatin1Char('.') + QLatin1String(kind.extension)))
            return kind;
    }
    throw std::runtime_error("no such kind of document: " + name.toStdString());
}

FormatForms const &formatForms()
{
    static FormatForms const read = readFormatPages(ZEM_SOURCE_DIR "/docs/formats");
    return read;
}

} // namespace Zem::Support
