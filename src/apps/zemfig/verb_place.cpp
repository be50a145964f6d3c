#include "verbs.h"

#include "cli.h"
#include "page_output.h"
#include "page_run.h"
#include "placement_options.h"

#include <ZemFig2QtCalculator.h>

#include <memory>

namespace Zem::Zemfig {

namespace {

struct PlaceArguments
{
    PageArguments page;
    std::string output;
    PlacementArguments placement{.where = "border", .distances = {}};
};

void place(PlaceArguments const &arguments)
{
    QString const page = QString::fromStdString(arguments.page.page);
    Fig2Qt::QtCalculator const calculator;
    PageRun run(arguments.page);
    if (run.stages().size() != 1)
        throw UsageError(QStringLiteral("labels are arranged for one stage, not for %1").arg(run.stages().size()));
    StageIdentifier const stage = run.stages().front();
    if (arrangeLabels(run.at(stage), stage, *arguments.placement.placement()) == 0)
        message(QStringLiteral("%1: no label points at anything, so none was moved").arg(page));
    writePage(run.document(), page, QString::fromStdString(arguments.output));
}

} // namespace

void addPlaceVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<PlaceArguments>();
    CLI::App *verb = app->add_subcommand("place", "Arrange the labels of a page that point at something");
    arguments->page.addTo(verb);
    verb->add_option("-o,--output", arguments->output, "target, .figure.toml or .fig")->required();
    arguments->placement.addTo(verb);
    verb->callback([arguments, run] { *run = [arguments] { place(*arguments); }; });
}

} // namespace Zem::Zemfig
