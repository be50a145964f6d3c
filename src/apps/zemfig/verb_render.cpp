#include "verbs.h"

#include "cli.h"
#include "page_output.h"
#include "page_run.h"
#include "placement_options.h"

#include <ZemFig2QtCalculator.h>
#include <ZemFig2QtPageWriter.h>

#include <memory>
#include <optional>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Fig2Qt;

namespace {

struct RenderArguments
{
    PageArguments page;
    std::string output;
    double dpi = 150.0;
    PlacementArguments placement;
};

/// The pages to draw, each arranged when the user wished so.
struct Pages
{
    PageRun run;
    std::optional<Placement> placement;

    std::vector<StageIdentifier> const &stages() const { return run.stages(); }
    Figure const &at(StageIdentifier const &stage)
    {
        Figure *figure = run.at(stage);
        if (placement)
            arrangeLabels(figure, stage, *placement);
        return *figure;
    }
};

/// "page.png" for one page, "page-012.png" for stage 12 of up to 999.
QString numbered(QString const &output, StageIdentifier const &stage, Pages const &pages)
{
    if (pages.stages().size() == 1)
        return output;
    int width = 1;
    for (StageIdentifier const &each : pages.stages())
        width = std::max(width, static_cast<int>(QString::number(each.getIdentifier()).size()));
    qsizetype const dot = output.lastIndexOf(QLatin1Char('.'));
    return QStringLiteral("%1-%2%3")
        .arg(output.left(dot))
        .arg(stage.getIdentifier(), width, 10, QLatin1Char('0'))
        .arg(output.mid(dot));
}

/// All stages in one file.
void renderDocument(Pages *pages, QString const &output, PageOptions const &options)
{
    std::unique_ptr<PageWriter> const writer = createPageWriter(output, options);
    Progress progress(static_cast<int>(pages->stages().size()));
    for (StageIdentifier const &stage : pages->stages()) {
        drawPage(pages->at(stage), writer.get());
        progress.advance();
    }
    writer->close();
}

/// One file for each stage.
void renderFiles(Pages *pages, QString const &output, PageOptions const &options)
{
    Progress progress(static_cast<int>(pages->stages().size()));
    for (StageIdentifier const &stage : pages->stages()) {
        std::unique_ptr<PageWriter> const writer = createPageWriter(numbered(output, stage, *pages), options);
        drawPage(pages->at(stage), writer.get());
        writer->close();
        progress.advance();
    }
}

void render(RenderArguments const &arguments)
{
    QString const output = QString::fromStdString(arguments.output);
    QString const ending = pictureEnding(output);
    QtCalculator const calculator;
    Pages pages{PageRun(arguments.page), arguments.placement.placement()};
    PageOptions options;
    options.dpi = arguments.dpi;
    try {
        if (ending == QLatin1StringView("pdf"))
            renderDocument(&pages, output, options);
        else
            renderFiles(&pages, output, options);
    } catch (OutputError const &error) {
        throw OutputFailure(error.getText());
    }
}

} // namespace

void addRenderVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<RenderArguments>();
    CLI::App *verb = app->add_subcommand("render", "Draw a page for one stage or many");
    arguments->page.addTo(verb);
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses pdf, svg or png")->required();
    verb->add_option("--dpi", arguments->dpi, "resolution of pictures")->check(CLI::Range(1.0, 10000.0));
    arguments->placement.addTo(verb);
    verb->callback([arguments, run] { *run = [arguments] { render(*arguments); }; });
}

} // namespace Zem::Zemfig
