#include "verbs.h"

#include "block_facts.h"
#include "cli.h"
#include "page_facts.h"
#include "page_file.h"

#include <ZemFig2QtCalculator.h>

#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

#include <memory>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

struct InfoArguments
{
    std::string file;
    bool json = false;
};

void tell(Facts const &facts, bool json)
{
    print(json ? QString::fromUtf8(QJsonDocument(facts.toJson()).toJson()) : facts.toText());
}

QString textOf(std::vector<Problem> const &problems)
{
    QStringList lines;
    for (Problem const &problem : problems)
        lines += problem.toString();
    return lines.join(QLatin1Char('\n'));
}

/// Adds what the page holds; the result is what is wrong with it, empty for a sound one.
QString addContent(QString const &fileName, FileKind kind, Facts *facts)
{
    PageDocument const document = openPage(fileName);
    if (!document.problems.empty() || !document.figure)
        return textOf(document.problems);
    addPageFacts(*document.figure, facts);
    if (kind == FileKind::Snippet)
        addSnapshotFacts(*openSnippet(fileName), facts);
    if (kind == FileKind::PageDocument)
        addSourceFacts(document, facts);
    if (document.ownData)
        addTokenFacts(document.figure->getTokenInterface(), facts);
    return QString();
}

bool isBlockFile(FileKind kind)
{
    return kind == FileKind::Figure || kind == FileKind::Template || kind == FileKind::Snippet ||
           kind == FileKind::OlderFigure;
}

void info(InfoArguments const &arguments)
{
    QString const fileName = QString::fromStdString(arguments.file);
    FileKind const kind = kindOfFile(fileName);
    Fig2Qt::QtCalculator const calculator;
    Facts facts;
    facts.add(QStringLiteral("file"), fileName);
    facts.add(QStringLiteral("kind"), nameOf(kind));
    facts.add(QStringLiteral("bytes"), static_cast<double>(QFileInfo(fileName).size()));
    if (isBlockFile(kind))
        addBlockFacts(scanFile(fileName), &facts);
    QString damage;
    if (kind == FileKind::Project)
        addProjectFacts(Measurement::Project(fileName, Measurement::OpenMode_t::READ), &facts);
    else
        damage = addContent(fileName, kind, &facts);
    tell(facts, arguments.json);
    if (!damage.isEmpty())
        throw InputError(damage);
}

} // namespace

void addInfoVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<InfoArguments>();
    CLI::App *verb = app->add_subcommand("info", "Tell what a file holds, also a damaged one");
    verb->add_option("file", arguments->file, "page of any kind, or project file")->required();
    verb->add_flag("--json", arguments->json, "as JSON");
    verb->callback([arguments, run] { *run = [arguments] { info(*arguments); }; });
}

} // namespace Zem::Zemfig
