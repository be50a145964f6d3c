#include "verbs.h"

#include "cli.h"
#include "page_check.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <memory>

namespace Zem::Zemfig {

namespace {

struct CheckArguments
{
    std::string page;
    std::string project;
    std::string data;
    bool json = false;
};

QJsonArray toJson(std::vector<Problem> const &problems)
{
    QJsonArray array;
    for (Problem const &problem : problems)
        array.append(QJsonObject{{"file", problem.file}, {"line", problem.line}, {"text", problem.text}});
    return array;
}

void check(CheckArguments const &arguments)
{
    QString const fileName = QString::fromStdString(arguments.page);
    PageDocument document = openPage(fileName);
    if (document.figure && !document.ownData) {
        DataChoice choice = dataOfDocument(document, fileName);
        if (!arguments.project.empty() || !arguments.data.empty()) {
            choice.project = QString::fromStdString(arguments.project);
            choice.csv = QString::fromStdString(arguments.data);
        }
        if (!arguments.project.empty()) {
            choice.series.clear();
            choice.pictures.clear();
            choice.points.clear();
            choice.cameras.clear();
        }
        PageData data(choice);
        checkAgainst(data, fileName, &document);
        // The figure must not outlive the data it looks at.
        document.figure.reset();
    }
    if (arguments.json)
        print(QString::fromUtf8(QJsonDocument(toJson(document.problems)).toJson()));
    if (document.problems.empty()) {
        if (!arguments.json)
            print(fileName + QStringLiteral(": good\n"));
        return;
    }
    if (!arguments.json) {
        for (Problem const &problem : document.problems)
            print(problem.toString() + QLatin1Char('\n'));
    }
    throw InputError(QStringLiteral("%1: %2 found")
                         .arg(fileName)
                         .arg(document.problems.size() == 1
                                  ? QStringLiteral("1 problem")
                                  : QStringLiteral("%1 problems").arg(document.problems.size())));
}

} // namespace

void addCheckVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<CheckArguments>();
    CLI::App *verb = app->add_subcommand("check", "Say what is wrong with a page");
    verb->add_option("page", arguments->page, PAGE_HELP)->required();
    auto *project = verb->add_option("--project", arguments->project, "project file or URL");
    verb->add_option("--data", arguments->data, "CSV file")->excludes(project);
    verb->add_flag("--json", arguments->json, "as JSON");
    verb->callback([arguments, run] { *run = [arguments] { check(*arguments); }; });
}

} // namespace Zem::Zemfig
