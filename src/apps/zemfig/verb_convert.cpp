#include "verbs.h"

#include "cli.h"
#include "page_output.h"
#include "page_source.h"

#include <ZemFig2QtCalculator.h>

#include <memory>

namespace Zem::Zemfig {

namespace {

struct ConvertArguments
{
    std::string page;
    std::string output;
};

void convert(ConvertArguments const &arguments)
{
    QString const input = QString::fromStdString(arguments.page);
    Fig2Qt::QtCalculator const calculator;
    PageDocument const document = openSoundPage(input);
    // What an older figure became is the result, not an aside.
    for (QString const &note : document.notes)
        print(note + QLatin1Char('\n'));
    writePage(document, input, QString::fromStdString(arguments.output));
}

} // namespace

void addConvertVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<ConvertArguments>();
    CLI::App *verb = app->add_subcommand("convert", "Turn a page into another kind of file");
    verb->add_option("page", arguments->page, PAGE_HELP)->required();
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses the kind")->required();
    verb->callback([arguments, run] { *run = [arguments] { convert(*arguments); }; });
}

} // namespace Zem::Zemfig
