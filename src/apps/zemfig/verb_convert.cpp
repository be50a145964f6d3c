#include "verbs.h"

#include "page_output.h"
#include "page_source.h"

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
    writePage(openSoundPage(input), input, QString::fromStdString(arguments.output));
}

} // namespace

void addConvertVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<ConvertArguments>();
    CLI::App *verb = app->add_subcommand("convert", "Turn a page document into a figure file, or back");
    verb->add_option("page", arguments->page, "page document (.figure.toml) or figure file (.fig)")->required();
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses the kind")->required();
    verb->callback([arguments, run] { *run = [arguments] { convert(*arguments); }; });
}

} // namespace Zem::Zemfig
