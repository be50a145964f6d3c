#include "verbs.h"

#include "cli.h"
#include "page_check.h"
#include "page_output.h"
#include "page_run.h"
#include "page_template.h"

#include <ZemFig2QtCalculator.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <memory>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

struct TemplateArguments
{
    PageArguments page;
    std::string pattern;
    std::vector<std::string> use;
    std::string output;
    bool json = false;
};

void make(TemplateArguments const &arguments)
{
    QString const output = QString::fromStdString(arguments.output);
    if (!output.endsWith(TEMPLATE_ENDING))
        throw UsageError(QStringLiteral("'%1' does not end in %2").arg(output, TEMPLATE_ENDING));
    Fig2Qt::QtCalculator const calculator;
    PageRun run(arguments.page);
    writeTemplate(*run.at(run.stages().front()), output);
}

QJsonArray toJson(std::vector<Expectation> const &wanted)
{
    QJsonArray array;
    for (Expectation const &each : wanted)
        array.append(QJsonObject{{"element", each.element},
                                 {"kind", wordOf(each.kind)},
                                 {"name", each.name},
                                 {each.kind == Expectation::Kind::Value ? "format" : "hint", each.detail}});
    return array;
}

void list(TemplateArguments const &arguments)
{
    PageDocument const document = openSoundPage(QString::fromStdString(arguments.pattern));
    std::vector<Expectation> const wanted = expectationsOf(*document.figure);
    if (arguments.json) {
        print(QString::fromUtf8(QJsonDocument(toJson(wanted)).toJson()));
        return;
    }
    for (Expectation const &each : wanted) {
        QString const detail = each.detail.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(each.detail);
        print(QStringLiteral("%1: %2 %3%4\n").arg(each.element, wordOf(each.kind), each.name, detail));
    }
}

std::map<QString, QString> namesOf(std::vector<std::string> const &use)
{
    std::map<QString, QString> names;
    for (std::string const &each : use) {
        QString const text = QString::fromStdString(each);
        qsizetype const equals = text.indexOf(QLatin1Char('='));
        if (equals <= 0)
            throw UsageError(QStringLiteral("--use wants WANTED=THERE, not '%1'").arg(text));
        names[text.left(equals)] = text.mid(equals + 1);
    }
    return names;
}

/// Every name that is told to be replaced must be wanted: a slip of the pen changes nothing silently.
void requireWanted(std::map<QString, QString> const &names, std::vector<Expectation> const &wanted)
{
    std::vector<QString> known;
    for (Expectation const &each : wanted)
        known.push_back(each.name);
    for (auto const &[name, there] : names) {
        if (std::find(known.begin(), known.end(), name) == known.end())
            throw UsageError(QStringLiteral("the template wants no '%1'%2").arg(name, suggestion(name, known)));
    }
}

void requireNothingMissing(PageDocument const &document)
{
    QStringList lines;
    for (Problem const &problem : document.problems)
        lines += problem.toString();
    if (!lines.isEmpty())
        throw InputError(lines.join(QLatin1Char('\n')));
}

void bind(TemplateArguments const &arguments)
{
    QString const fileName = QString::fromStdString(arguments.pattern);
    QString const output = QString::fromStdString(arguments.output);
    Fig2Qt::QtCalculator const calculator;
    PageDocument document = openSoundPage(fileName);
    std::map<QString, QString> const names = namesOf(arguments.use);
    requireWanted(names, expectationsOf(*document.figure));
    renameTokens(document.figure.get(), names);

    DataChoice choice;
    choice.project = QString::fromStdString(arguments.page.project);
    choice.csv = QString::fromStdString(arguments.page.data);
    arguments.page.csv.apply(&choice);
    PageData data(choice);
    checkAgainst(data, fileName, &document);
    requireNothingMissing(document);
    if (output.endsWith(QLatin1StringView(".toml"))) {
        bool const isProject = !choice.project.isEmpty();
        SourceTable reading;
        arguments.page.csv.addTo(&reading);
        document.data.insert(reading.values);
        document.data[isProject ? QStringLiteral("project") : QStringLiteral("file")] =
            pathFromPage(isProject ? choice.project : choice.csv, output);
    }
    writePage(document, output, output);
    document.figure.reset();
}

} // namespace

void addTemplateVerb(CLI::App *app, Run *run)
{
    CLI::App *verb = app->add_subcommand("template", "Make pages patterns for other data, and patterns pages");
    verb->require_subcommand(1);

    auto made = std::make_shared<TemplateArguments>();
    CLI::App *maker = verb->add_subcommand("make", "Make a template of a page");
    made->page.addTo(maker);
    maker->add_option("-o,--output", made->output, "target, a .template file")->required();
    maker->callback([made, run] { *run = [made] { make(*made); }; });

    auto listed = std::make_shared<TemplateArguments>();
    CLI::App *lister = verb->add_subcommand("list", "Tell which data a template expects");
    lister->add_option("template", listed->pattern, PAGE_HELP)->required();
    lister->add_flag("--json", listed->json, "as JSON");
    lister->callback([listed, run] { *run = [listed] { list(*listed); }; });

    auto bound = std::make_shared<TemplateArguments>();
    CLI::App *binder = verb->add_subcommand("bind", "Make a page of a template and the data of a project");
    binder->add_option("template", bound->pattern, PAGE_HELP)->required();
    auto *source = binder->add_option_group("data", "where the values come from");
    source->add_option("--project", bound->page.project, "project file or URL");
    source->add_option("--data", bound->page.data, "CSV file");
    source->require_option(1);
    bound->page.csv.addTo(binder);
    binder->add_option("--use", bound->use, "WANTED=THERE: take another name than the template has");
    binder->add_option("-o,--output", bound->output, "page document (.figure.toml) or figure file (.fig)")->required();
    binder->callback([bound, run] { *run = [bound] { bind(*bound); }; });
}

} // namespace Zem::Zemfig
