#include "GoldenDocuments.h"

#include <ZemFig2Figure.h>
#include <ZemFig2Import.h>
#include <ZemFig2Snippet.h>
#include <ZemFig2Template.h>

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

/// Older figures are read only: what they become is a figure of today.
std::string saveOlderFigure(QByteArray const &bytes)
{
    std::istringstream input(bytes.toStdString());
    IO::InStream stream(&input);
    if (!stream.isInit())
        throw IO::StreamException(stream.getError());
    std::unique_ptr<FigureTemplate> const figure(Import::importTemplate(&stream));
    std::ostringstream output;
    IO::OutStream saved(&output, Figure::FILE_TYPE_ID, 1);
    figure->Figure::save(&saved, -1, -1);
    saved.close();
    return output.str();
}

constexpr GoldenKind KINDS[] = {{"fig", "Figure file", saveFigureAgain},
                                {"old", "Figure file", saveOlderFigure},
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
