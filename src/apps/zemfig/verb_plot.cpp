#include "verbs.h"

#include "cli.h"
#include "csv_options.h"
#include "page_output.h"
#include "page_schema.h"
#include "page_source.h"
#include "plot_page.h"

#include <ZemFig2QtCalculator.h>

#include <QtCore/QFileInfo>

#include <memory>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Fig2Qt;

namespace {

struct PlotArguments
{
    std::string csv;
    std::string x;
    std::vector<std::string> y;
    std::string style;
    std::string title;
    std::string output;
    std::string page;
    double dpi = 150.0;
    CsvArguments reading;
};

std::optional<ChartParameters::Style_t> styleOf(std::string const &word)
{
    if (word.empty())
        return std::nullopt;
    std::vector<QString> words;
    for (ChartParameters::Style_t style : ChartParameters::getAllStyles()) {
        words.push_back(ChartParameters::getStyleParameterName(style));
        if (words.back() == QString::fromStdString(word))
            return style;
    }
    throw UsageError(QStringLiteral("there is no style '%1'%2")
                         .arg(QString::fromStdString(word), suggestion(QString::fromStdString(word), words)));
}

PlotWish wishOf(PlotArguments const &arguments)
{
    QFileInfo const file(QString::fromStdString(arguments.csv));
    PlotWish wish;
    wish.title = arguments.title.empty() ? file.completeBaseName() : QString::fromStdString(arguments.title);
    wish.subtitle = file.fileName();
    wish.x = QString::fromStdString(arguments.x);
    for (std::string const &name : arguments.y)
        wish.y << QString::fromStdString(name).trimmed();
    wish.style = styleOf(arguments.style);
    return wish;
}

/// The [[series]] table of a page beside or above the file.
SourceTable sourceOf(PlotArguments const &arguments)
{
    SourceTable source;
    source.values[QStringLiteral("file")] =
        pathFromPage(QString::fromStdString(arguments.csv), QString::fromStdString(arguments.page));
    arguments.reading.addTo(&source);
    return source;
}

void plot(PlotArguments const &arguments)
{
    if (arguments.output.empty() && arguments.page.empty())
        throw UsageError(QStringLiteral("nothing to be written: give --output, --save or both"));
    if (!arguments.output.empty())
        pictureEnding(QString::fromStdString(arguments.output));
    QtCalculator const calculator;
    PlotWish const wish = wishOf(arguments);
    DataChoice choice;
    arguments.reading.apply(&choice);
    choice.series = {{QString::fromStdString(arguments.csv), choice.csvOptions, {}}};
    PageData const data(choice);
    PageDocument document;
    PlotPage page = makePlotPage(data.charts(), data.tokens(), wish);
    if (!page.leftOut.isEmpty())
        message(QStringLiteral("no room for %1: choose with --y").arg(page.leftOut.join(QStringLiteral(", "))));
    document.figure = std::move(page.figure);
    if (!arguments.page.empty()) {
        document.sources = {sourceOf(arguments)};
        // The paths are those of the page.
        writePage(document, QString::fromStdString(arguments.page), QString::fromStdString(arguments.page));
    }
    if (arguments.output.empty())
        return;
    data.showOn(document.figure.get());
    document.figure->update(StageIdentifier::NO_STAGE, true);
    writePicture(*document.figure, QString::fromStdString(arguments.output), arguments.dpi);
}

} // namespace

void addPlotVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<PlotArguments>();
    CLI::App *verb = app->add_subcommand("plot", "Make a page of charts from a CSV file");
    verb->add_option("csv", arguments->csv, "CSV file")->required();
    verb->add_option("--x", arguments->x, "the column along x; else the first of dates, or of numbers");
    verb->add_option("--y", arguments->y, "the columns to show, with commas in between; else all of numbers")
        ->delimiter(',');
    verb->add_option("--style", arguments->style, "line, bars, points, spline, spikes, x_marker or y_marker");
    verb->add_option("--title", arguments->title, "else the name of the file");
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses pdf, svg or png");
    verb->add_option("--save", arguments->page, "page document (.figure.toml) to go on with");
    verb->add_option("--dpi", arguments->dpi, "resolution of pictures")->check(CLI::Range(1.0, 10000.0));
    arguments->reading.addReadingTo(verb);
    verb->callback([arguments, run] { *run = [arguments] { plot(*arguments); }; });
}

} // namespace Zem::Zemfig
