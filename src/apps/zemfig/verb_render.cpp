#include "verbs.h"

#include "cli.h"
#include "csv_options.h"
#include "page_source.h"

#include <ZemFig2QtCalculator.h>
#include <ZemFig2QtPageWriter.h>

#include <memory>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Fig2Qt;

namespace {

struct Arguments
{
    std::string page;
    std::string output;
    std::string project;
    std::string data;
    std::string stage;
    double dpi = 150.0;
    CsvArguments csv;
};

/// The stages to draw; one without a number when the page has no data.
struct Pages
{
    PageDocument document;
    std::unique_ptr<PageData> data;
    std::vector<StageIdentifier> stages;

    /// Brings the page to a stage. Another stage is a forced update: no counter tells of it.
    Figure const &at(StageIdentifier const &stage)
    {
        document.figure->update(stage, true);
        return *document.figure;
    }
};

DataChoice chooseData(Arguments const &arguments, PageDocument const &document)
{
    if (arguments.project.empty() && arguments.data.empty()) {
        DataChoice choice = dataOfDocument(document, QString::fromStdString(arguments.page));
        arguments.csv.apply(&choice);
        return choice;
    }
    DataChoice choice;
    choice.project = QString::fromStdString(arguments.project);
    choice.csv = QString::fromStdString(arguments.data);
    arguments.csv.apply(&choice);
    return choice;
}

Pages openPages(Arguments const &arguments)
{
    Pages pages;
    pages.document = openSoundPage(QString::fromStdString(arguments.page));
    pages.data = std::make_unique<PageData>(chooseData(arguments, pages.document));
    pages.document.figure->setTokenInterface(pages.data->tokens());
    QString wish = QString::fromStdString(arguments.stage);
    if (wish.isEmpty() && arguments.project.empty() && arguments.data.empty())
        wish = pages.document.data.value(QStringLiteral("stage")).toString();
    for (unsigned int stage : selectStages(wish, pages.data->stages(), pages.data->name()))
        pages.stages.push_back(StageIdentifier(stage));
    if (pages.stages.empty())
        pages.stages.push_back(StageIdentifier::NO_STAGE);
    return pages;
}

/// "page.png" for one page, "page-012.png" for stage 12 of up to 999.
QString numbered(QString const &output, StageIdentifier const &stage, Pages const &pages)
{
    if (pages.stages.size() == 1)
        return output;
    int width = 1;
    for (StageIdentifier const &each : pages.stages)
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
    Progress progress(static_cast<int>(pages->stages.size()));
    for (StageIdentifier const &stage : pages->stages) {
        drawPage(pages->at(stage), writer.get());
        progress.advance();
    }
    writer->close();
}

/// One file for each stage.
void renderFiles(Pages *pages, QString const &output, PageOptions const &options)
{
    Progress progress(static_cast<int>(pages->stages.size()));
    for (StageIdentifier const &stage : pages->stages) {
        std::unique_ptr<PageWriter> const writer = createPageWriter(numbered(output, stage, *pages), options);
        drawPage(pages->at(stage), writer.get());
        writer->close();
        progress.advance();
    }
}

void render(Arguments const &arguments)
{
    QString const output = QString::fromStdString(arguments.output);
    QString const ending = output.mid(output.lastIndexOf(QLatin1Char('.')) + 1).toLower();
    if (!QStringList{QStringLiteral("pdf"), QStringLiteral("png"), QStringLiteral("svg")}.contains(ending))
        throw UsageError(QStringLiteral("'%1' ends in none of .pdf, .png and .svg").arg(output));
    QtCalculator const calculator;
    Pages pages = openPages(arguments);
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
    auto arguments = std::make_shared<Arguments>();
    CLI::App *verb = app->add_subcommand("render", "Draw a page for one stage or many");
    verb->add_option("page", arguments->page, "page document (.figure.toml) or figure file (.fig)")->required();
    verb->add_option("-o,--output", arguments->output, "target; its ending chooses pdf, svg or png")->required();
    auto *project = verb->add_option("--project", arguments->project, "project file or URL");
    verb->add_option("--data", arguments->data, "CSV file")->excludes(project);
    verb->add_option("--stage", arguments->stage, "12, 3..40, 1,5,9 or all; the last one when not given");
    verb->add_option("--dpi", arguments->dpi, "resolution of pictures")->check(CLI::Range(1.0, 10000.0));
    arguments->csv.addTo(verb);
    verb->callback([arguments, run] { *run = [arguments] { render(*arguments); }; });
}

} // namespace Zem::Zemfig
