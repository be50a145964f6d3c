#include "verbs.h"

#include "cli.h"
#include "page_source.h"

#include <memory>

namespace Zem::Zemfig {

namespace {

struct Arguments
{
    std::string page;
    std::string output;
};

void saveFigureFile(Fig2::Figure const &figure, QString const &fileName)
{
    // The library's own saving logs a file that it cannot open without failing; here that is a failure.
    try {
        IO::OutStream stream(fileName, Fig2::Figure::FILE_TYPE_ID, 1);
        if (!stream.isInit())
            throw OutputFailure(stream.getError());
        figure.save(&stream, -1, -1);
        stream.close();
    } catch (IO::StreamException const &error) {
        throw OutputFailure(error.getText());
    }
}

void convert(Arguments const &arguments)
{
    QString const input = QString::fromStdString(arguments.page);
    QString const output = QString::fromStdString(arguments.output);
    PageDocument const document = openSoundPage(input);
    if (output.endsWith(Fig2::Figure::FILE_EXTENSION)) {
        if (!document.data.isEmpty())
            message(QStringLiteral("%1: a figure file names no data: [data] is left out, give --project or --data when "
                                   "rendering")
                        .arg(input));
        saveFigureFile(*document.figure, output);
    } else if (output.endsWith(QLatin1StringView(".toml"))) {
        writeFile(output, writePageDocument(*document.figure).toUtf8());
    } else {
        throw UsageError(QStringLiteral("'%1' is neither a .fig nor a .toml file").arg(output));
    }
}

} // namespace

void addConvertVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<Arguments>();
    CLI::App *verb = app->add_subcommand("convert", "Turn a page document into a figure file, or back");
    verb->add_option("page", arguments->page, "page document (.figure.toml) or figure file (.fig)")->required();
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses the kind")->required();
    verb->callback([arguments, run] { *run = [arguments] { convert(*arguments); }; });
}

} // namespace Zem::Zemfig
