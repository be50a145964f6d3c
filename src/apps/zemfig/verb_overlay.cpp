#include "verbs.h"

#include "cli.h"
#include "csv_options.h"
#include "overlay_page.h"
#include "page_output.h"
#include "page_source.h"
#include "point_options.h"

#include <ZemFig2QtCalculator.h>

#include <QtCore/QFileInfo>

#include <memory>

namespace Zem::Zemfig {

using namespace Fig2Qt;
using namespace Measurement;

namespace {

struct OverlayArguments
{
    std::string picture;
    std::string points;
    std::string title;
    std::string output;
    std::string page;
    double dpi = 150.0;
    double vectorScaling = 0.0;
    PointArguments columns;
    CsvArguments reading;
};

DataChoice choiceOf(OverlayArguments const &arguments)
{
    DataChoice choice;
    arguments.reading.apply(&choice);
    choice.pictures = {{QString::fromStdString(arguments.picture), {}}};
    choice.points = {{QString::fromStdString(arguments.points), choice.csvOptions, {}}};
    arguments.columns.apply(&choice.points.front().options);
    return choice;
}

/// The tables of a page beside or above the files.
std::vector<SourceTable> sourcesOf(OverlayArguments const &arguments)
{
    QString const page = QString::fromStdString(arguments.page);
    SourceTable picture;
    picture.section = QStringLiteral("picture");
    picture.values[QStringLiteral("file")] = pathFromPage(QString::fromStdString(arguments.picture), page);
    SourceTable points;
    points.section = QStringLiteral("points");
    points.values[QStringLiteral("file")] = pathFromPage(QString::fromStdString(arguments.points), page);
    for (auto const &[key, value] : arguments.columns.values())
        points.values[key] = value;
    arguments.reading.addTo(&points);
    return {picture, points};
}

OverlayWish wishOf(OverlayArguments const &arguments)
{
    QFileInfo const picture(QString::fromStdString(arguments.picture));
    QFileInfo const points(QString::fromStdString(arguments.points));
    OverlayWish wish;
    wish.title = arguments.title.empty() ? picture.completeBaseName() : QString::fromStdString(arguments.title);
    wish.subtitle = QStringLiteral("%1 on %2").arg(points.fileName(), picture.fileName());
    wish.view = PictureOptions().view;
    wish.set = PointOptions().set;
    wish.stage = PointOptions().stage;
    if (arguments.vectorScaling > 0.0)
        wish.vectorScaling = arguments.vectorScaling;
    return wish;
}

void overlay(OverlayArguments const &arguments)
{
    if (arguments.output.empty() && arguments.page.empty())
        throw UsageError(QStringLiteral("nothing to be written: give --output, --save or both"));
    if (!arguments.output.empty())
        pictureEnding(QString::fromStdString(arguments.output));
    QtCalculator const calculator;
    OverlayWish const wish = wishOf(arguments);
    PageData data(choiceOf(arguments));
    PageDocument document;
    document.figure = makeOverlayPage(*data.project(), wish);
    if (!arguments.page.empty()) {
        document.sources = sourcesOf(arguments);
        // The paths are those of the page.
        writePage(document, QString::fromStdString(arguments.page), QString::fromStdString(arguments.page));
    }
    if (arguments.output.empty())
        return;
    StageIdentifier const stage(wish.stage);
    data.showOn(document.figure.get());
    data.setStage(stage);
    document.figure->update(stage, true);
    writePicture(*document.figure, QString::fromStdString(arguments.output), arguments.dpi);
    document.figure.reset(); // before the data that it looks at
}

} // namespace

void addOverlayVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<OverlayArguments>();
    CLI::App *verb = app->add_subcommand("overlay", "Make a page of a picture and the points measured on it");
    verb->add_option("picture", arguments->picture, "PNG, JPEG or TIFF file")->required();
    verb->add_option("--points", arguments->points, "CSV file of points, in pixels of the picture, and their vectors")
        ->required();
    verb->add_option("--vector-scaling", arguments->vectorScaling, "how many times longer the vectors are drawn")
        ->check(CLI::PositiveNumber);
    verb->add_option("--title", arguments->title, "else the name of the picture");
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses pdf, svg or png");
    verb->add_option("--save", arguments->page, "page document (.figure.toml) to go on with");
    verb->add_option("--dpi", arguments->dpi, "resolution of pictures")->check(CLI::Range(1.0, 10000.0));
    arguments->columns.addTo(verb);
    arguments->reading.addReadingTo(verb);
    verb->callback([arguments, run] { *run = [arguments] { overlay(*arguments); }; });
}

} // namespace Zem::Zemfig
