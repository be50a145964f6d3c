#include "verbs.h"

#include "cli.h"
#include "page_output.h"
#include "page_run.h"

#include <ZemFig2QtCalculator.h>

#include <memory>

namespace Zem::Zemfig {

namespace {

struct FreezeArguments
{
    PageArguments page;
    std::string output;
};

void freeze(FreezeArguments const &arguments)
{
    QString const output = QString::fromStdString(arguments.output);
    if (!output.endsWith(SNIPPET_ENDING))
        throw UsageError(QStringLiteral("'%1' does not end in %2").arg(output, SNIPPET_ENDING));
    Fig2Qt::QtCalculator const calculator;
    PageRun run(arguments.page);
    if (run.stages().size() != 1)
        throw UsageError(QStringLiteral("a snippet holds one stage, not %1").arg(run.stages().size()));
    writeSnippet(*run.at(run.stages().front()), run.stages().front(), output);
}

} // namespace

void addFreezeVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<FreezeArguments>();
    CLI::App *verb = app->add_subcommand("freeze", "Keep a page of one stage with all that it shows, in a snippet");
    arguments->page.addTo(verb);
    verb->add_option("-o,--output", arguments->output, "target, a .snippet file")->required();
    verb->callback([arguments, run] { *run = [arguments] { freeze(*arguments); }; });
}

} // namespace Zem::Zemfig
