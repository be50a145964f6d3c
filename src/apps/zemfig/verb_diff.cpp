#include "verbs.h"

#include "cli.h"
#include "page_diff.h"
#include "page_file.h"
#include "page_run.h"

#include <ZemFig2QtCalculator.h>

#include <QtCore/QBuffer>
#include <QtCore/QJsonDocument>

#include <memory>

namespace Zem::Zemfig {

namespace {

struct DiffArguments
{
    PageArguments page;
    std::string other;
    std::string otherStage;
    std::string output;
    double dpi = 100.0;
    bool json = false;
};

bool bringsData(std::string const &page)
{
    FileKind const kind = kindOfFile(QString::fromStdString(page));
    return kind == FileKind::Snippet || kind == FileKind::OlderFigure;
}

/// What was chosen is for the page that needs data, when the other one brings its own.
PageArguments withoutChoice(PageArguments arguments)
{
    arguments.project.clear();
    arguments.data.clear();
    arguments.stage.clear();
    arguments.csv = CsvArguments();
    return arguments;
}

/// One page after the other is open: its data and its colour scale are those of the whole process.
PageLook lookAt(PageArguments const &arguments, double dpi)
{
    PageRun run(arguments);
    if (run.stages().size() != 1)
        throw UsageError(QStringLiteral("%1: one stage is compared, not %2")
                             .arg(QString::fromStdString(arguments.page))
                             .arg(run.stages().size()));
    StageIdentifier const stage = run.stages().front();
    return lookOf(*run.at(stage), stage, dpi);
}

std::pair<PageArguments, PageArguments> pagesToCompare(DiffArguments const &arguments)
{
    if (arguments.other.empty() && (arguments.page.stage.empty() || arguments.otherStage.empty()))
        throw UsageError(QStringLiteral("give two pages, or --stage and --with-stage for two stages of one"));
    PageArguments a = arguments.page;
    PageArguments b = arguments.page;
    if (!arguments.other.empty())
        b.page = arguments.other;
    if (!arguments.otherStage.empty())
        b.stage = arguments.otherStage;
    if (bringsData(a.page) && !bringsData(b.page))
        a = withoutChoice(a);
    else if (bringsData(b.page) && !bringsData(a.page))
        b = withoutChoice(b);
    return {a, b};
}

/// For the legend of the picture.
QString titleOf(PageArguments const &page)
{
    QString const name = QString::fromStdString(page.page);
    return page.stage.empty() ? name : QStringLiteral("%1, stage %2").arg(name, QString::fromStdString(page.stage));
}

void writeDifference(QImage const &picture, QString const &output)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG"))
        throw OutputFailure(QStringLiteral("%1: the picture cannot be made").arg(output));
    writeFile(output, bytes);
}

void diff(DiffArguments const &arguments)
{
    QString const output = QString::fromStdString(arguments.output);
    if (!output.isEmpty() && !output.endsWith(QLatin1StringView(".png"), Qt::CaseInsensitive))
        throw UsageError(QStringLiteral("'%1' does not end in .png").arg(output));
    auto const [first, second] = pagesToCompare(arguments);
    Fig2Qt::QtCalculator const calculator;
    PageLook const a = lookAt(first, arguments.dpi);
    PageLook const b = lookAt(second, arguments.dpi);
    PageDifference const difference = compare(a, b);
    if (!output.isEmpty())
        writeDifference(differencePicture(a, titleOf(first), b, titleOf(second)), output);
    print(arguments.json ? QString::fromUtf8(QJsonDocument(difference.facts.toJson()).toJson())
                         : difference.facts.toText());
    if (!difference.isEqual)
        throw PagesDiffer();
}

} // namespace

void addDiffVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<DiffArguments>();
    CLI::App *verb = app->add_subcommand("diff", "Compare two pages, or two stages of one");
    arguments->page.addTo(verb);
    verb->add_option("other", arguments->other, "the page to compare with; the same one when not given");
    verb->add_option("--with-stage", arguments->otherStage,
                     "stage of the second page; that of the first when not given");
    verb->add_option("-o,--output", arguments->output, "picture of the difference, a .png file");
    verb->add_option("--dpi", arguments->dpi, "resolution of the comparison")->check(CLI::Range(1.0, 1200.0));
    verb->add_flag("--json", arguments->json, "as JSON");
    verb->callback([arguments, run] { *run = [arguments] { diff(*arguments); }; });
}

} // namespace Zem::Zemfig
