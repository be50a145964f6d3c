#include "page_file.h"

#include "cli.h"
#include "page_schema.h"

#include <ZemFig2Connector.h>
#include <ZemFig2DataInterface.h>
#include <ZemFig2Import.h>
#include <ZemFig2ImportReport.h>
#include <ZemFig2Template.h>
#include <ZemFig2TokenContainer.h>

#include <ZemScriptObject.h>

#include <QtCore/QFile>

#include <algorithm>
#include <string_view>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

constexpr qint64 HEAD_SIZE = 4096;

std::vector<char> headOf(QString const &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw InputError(fileName + QStringLiteral(": ") + file.errorString());
    QByteArray const head = file.read(HEAD_SIZE);
    return {head.begin(), head.end()};
}

/// Whether the bytes are text: a page document; block files hold zero bytes within their header.
bool looksLikeText(std::vector<char> const &head)
{
    return std::find(head.begin(), head.end(), '\0') == head.end();
}

/// A project in a file is a database.
bool isProject(std::vector<char> const &head)
{
    constexpr std::string_view SIGN("SQLite format 3\0", 16);
    return std::string_view(head.data(), head.size()).starts_with(SIGN);
}

/// A file may hold connectors that no program can make; an update takes them for a mistake of the program.
void findIllegalConnectors(Element const &element, QString const &fileName, std::vector<Problem> *problems)
{
    for (auto it = element.getConnectorBegin(); it != element.getConnectorEnd(); ++it) {
        Connector const &connector = **it;
        if (connector.getSource() == &element &&
            !element.canConnectTo(connector.getTarget(), connector.getTargetName()))
            problems->push_back({fileName, 0,
                                 QStringLiteral("%1 cannot be connected to %2")
                                     .arg(describe(element), describe(*connector.getTarget()))});
    }
}

std::vector<Problem> illegalConnectors(Figure const &figure, QString const &fileName)
{
    std::vector<Problem> problems;
    findIllegalConnectors(*figure.getRoot(), fileName, &problems);
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
        findIllegalConnectors(**it, fileName, &problems);
    return problems;
}

/// Runs what reads a file of blocks; what it throws becomes the problem of the page.
template <class Read>
void readBlocks(QString const &fileName, PageDocument *document, Read const &read)
{
    try {
        IO::InStream stream(fileName);
        if (!stream.isInit())
            throw IO::StreamException(stream.getError());
        read(&stream);
        document->problems = illegalConnectors(*document->figure, fileName);
    } catch (Exception const &error) {
        document->problems.push_back({fileName, 0, error.getText()});
    }
    // A page that cannot be updated is of no use.
    if (!document->problems.empty())
        document->figure.reset();
}

template <class Kind>
PageDocument openFigureFile(QString const &fileName)
{
    PageDocument document;
    readBlocks(fileName, &document, [&document](IO::InStream *stream) {
        auto figure = std::make_unique<Kind>();
        figure->load(stream, -1, -1);
        document.figure = std::move(figure);
    });
    return document;
}

/// A copy of the frozen page, which looks at the data of the snippet.
PageDocument openSnippetFile(QString const &fileName)
{
    PageDocument document;
    readBlocks(fileName, &document, [&document](IO::InStream *stream) {
        auto const snippet = std::make_shared<Snippet>();
        snippet->load(stream);
        Figure const *const page = snippet->getFigure();
        document.figure = page ? std::make_unique<Figure>(*page) : std::make_unique<Figure>();
        if (page)
            copyNames(*page, document.figure.get());
        document.ownData = snippet;
    });
    return document;
}

QString noteOf(ImportEntry const &entry)
{
    return QStringLiteral("%1 %2: %3: %4")
        .arg(entry.record, entry.place, ImportReport::getOutcomeName(entry.outcome), entry.text);
}

/// The page looks at what the older file has of values, pictures and charts.
PageDocument openOlderFigure(QString const &fileName)
{
    PageDocument document;
    readBlocks(fileName, &document, [&document](IO::InStream *stream) {
        ImportReport report;
        DataInterface tokens;
        document.figure.reset(Import::importTemplate(stream, &report, &tokens));
        auto const data = std::make_shared<FigureTokenContainer>(document.figure.get(), &tokens);
        document.figure->setTokenInterface(data.get());
        document.ownData = data;
        for (ImportEntry const &entry : report.getEntries())
            document.notes.push_back(noteOf(entry));
    });
    return document;
}

} // namespace

FileKind kindOfFile(QString const &fileName)
{
    std::vector<char> const head = headOf(fileName);
    if (Import::canImportFile(head))
        return FileKind::OlderFigure;
    if (Figure::canOpenFile(head))
        return FileKind::Figure;
    if (FigureTemplate::canOpenFile(head))
        return FileKind::Template;
    if (Snippet::canOpenFile(head))
        return FileKind::Snippet;
    if (isProject(head))
        return FileKind::Project;
    return looksLikeText(head) ? FileKind::PageDocument : FileKind::Unknown;
}

QString nameOf(FileKind kind)
{
    switch (kind) {
    case FileKind::Figure:
        return QStringLiteral("figure file");
    case FileKind::Template:
        return QStringLiteral("template");
    case FileKind::Snippet:
        return QStringLiteral("snippet");
    case FileKind::OlderFigure:
        return QStringLiteral("older figure file");
    case FileKind::PageDocument:
        return QStringLiteral("page document");
    case FileKind::Project:
        return QStringLiteral("project");
    case FileKind::Unknown:
        break;
    }
    return QStringLiteral("unknown file");
}

PageDocument openPage(QString const &fileName)
{
    switch (kindOfFile(fileName)) {
    case FileKind::Figure:
        return openFigureFile<Figure>(fileName);
    case FileKind::Template:
        return openFigureFile<FigureTemplate>(fileName);
    case FileKind::Snippet:
        return openSnippetFile(fileName);
    case FileKind::OlderFigure:
        return openOlderFigure(fileName);
    case FileKind::PageDocument:
        return readPageDocument(fileName);
    case FileKind::Project:
    case FileKind::Unknown:
        break;
    }
    PageDocument refused;
    refused.problems.push_back(
        {fileName, 0, QStringLiteral("is neither a page document nor a figure file, template or snippet")});
    return refused;
}

void copyNames(Figure const &from, Figure *to)
{
    auto original = from.getElementBegin();
    for (auto copy = to->getElementBegin(); copy != to->getElementEnd() && original != from.getElementEnd(); ++copy) {
        copy->getScriptObject()->setName(original->getScriptObject()->getName());
        ++original;
    }
}

std::unique_ptr<Snippet> openSnippet(QString const &fileName)
{
    if (kindOfFile(fileName) != FileKind::Snippet)
        throw InputError(QStringLiteral("%1: is no snippet").arg(fileName));
    ErrorLog log(false);
    std::unique_ptr<Snippet> snippet(Snippet::loadFile(fileName, &log));
    if (!snippet)
        throw InputError(QStringLiteral("%1: %2").arg(fileName, log.getLog().trimmed()));
    return snippet;
}

PageDocument openSoundPage(QString const &fileName)
{
    PageDocument document = openPage(fileName);
    if (document.problems.empty())
        return document;
    QStringList lines;
    for (Problem const &problem : document.problems)
        lines += problem.toString();
    throw InputError(lines.join(QLatin1Char('\n')));
}

} // namespace Zem::Zemfig
