#include "page_run.h"

#include "cli.h"

namespace Zem::Zemfig {

namespace {

DataChoice chooseData(PageArguments const &arguments, PageDocument const &document)
{
    DataChoice choice;
    if (arguments.project.empty() && arguments.data.empty()) {
        choice = dataOfDocument(document, QString::fromStdString(arguments.page));
    } else {
        choice.project = QString::fromStdString(arguments.project);
        choice.csv = QString::fromStdString(arguments.data);
        askOfData(document, &choice);
        DataChoice named;
        addSourcesOfDocument(document, QString::fromStdString(arguments.page),
                             arguments.project.empty() ? &choice : &named);
        // A project holds all but frozen pages.
        if (!arguments.project.empty())
            choice.snippets = named.snippets;
    }
    arguments.csv.apply(&choice);
    return choice;
}

} // namespace

void PageArguments::addTo(CLI::App *verb)
{
    verb->add_option("page", page, PAGE_HELP)->required();
    auto *projectOption = verb->add_option("--project", project, "project file or URL");
    verb->add_option("--data", data, "CSV file")->excludes(projectOption);
    verb->add_option("--stage", stage, "12, 3..40, 1,5,9 or all; the last one when not given");
    csv.addTo(verb);
}

namespace {

/// What a page was frozen with is all that it shows.
void requireNoChoice(PageArguments const &arguments)
{
    if (!arguments.project.empty() || !arguments.data.empty() || !arguments.stage.empty())
        throw UsageError(QStringLiteral("%1 brings its own data: --project, --data and --stage make no sense")
                             .arg(QString::fromStdString(arguments.page)));
}

} // namespace

PageRun::PageRun(PageArguments const &arguments) : document_(openSoundPage(QString::fromStdString(arguments.page)))
{
    for (QString const &note : document_.notes)
        message(QString::fromStdString(arguments.page) + QStringLiteral(": ") + note);
    if (document_.ownData) {
        requireNoChoice(arguments);
        stages_.push_back(StageIdentifier::NO_STAGE);
        return;
    }
    data_ = std::make_unique<PageData>(chooseData(arguments, document_));
    data_->showOn(document_.figure.get());
    QString wish = QString::fromStdString(arguments.stage);
    if (wish.isEmpty() && arguments.project.empty() && arguments.data.empty())
        wish = document_.data.value(QStringLiteral("stage")).toString();
    for (unsigned int stage : selectStages(wish, data_->stages(), data_->name()))
        stages_.push_back(StageIdentifier(stage));
    if (stages_.empty())
        stages_.push_back(StageIdentifier::NO_STAGE);
}

Fig2::Figure *PageRun::at(StageIdentifier const &stage)
{
    if (data_)
        data_->setStage(stage);
    document_.figure->update(stage, true);
    return document_.figure.get();
}

} // namespace Zem::Zemfig
