#include "verbs.h"

#include "cli.h"
#include "page_schema.h"
#include "page_source.h"

#include <ZemFig2Connector.h>
#include <ZemFig2Group.h>
#include <ZemScriptObject.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <memory>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

struct ShowArguments
{
    std::string page;
    bool json = false;
};

QJsonArray toJson(BaVec2d<double> const &vector)
{
    return {vector.x, vector.y};
}

QJsonArray connectionsOf(Element const &element)
{
    QJsonArray connections;
    for (auto it = element.getConnectorBegin(); it != element.getConnectorEnd(); ++it) {
        if ((*it)->getSource() == &element)
            connections.append(QJsonObject{{"to", (*it)->getTarget()->getScriptObject()->getName()},
                                           {"part", (*it)->getTargetName()}});
    }
    return connections;
}

QJsonObject toJson(Element const &element)
{
    QJsonObject parameters;
    for (Parameter const &parameter : entriesOf(element.getParameterString()))
        parameters[parameter.key] = parameter.value;
    QJsonObject object{{"type", Element::getTypeParameterName(element.getType())},
                       {"name", element.getScriptObject()->getName()},
                       {"parameters", parameters}};
    if (QJsonArray const connections = connectionsOf(element); !connections.isEmpty())
        object["connect"] = connections;
    if (auto const *group = dynamic_cast<Group const *>(&element)) {
        QJsonArray children;
        for (auto child = group->getChildBegin(); child != group->getChildEnd(); ++child)
            children.append(toJson(**child));
        object["children"] = children;
    }
    return object;
}

QJsonObject toJson(Figure const &figure)
{
    QJsonArray elements;
    for (auto child = figure.getRoot()->getChildBegin(); child != figure.getRoot()->getChildEnd(); ++child)
        elements.append(toJson(**child));
    return {{"size", toJson(figure.getSize())}, {"elements", elements}};
}

/// One line an element: what it is, where, and the text of a label.
void appendTree(Group const &group, int depth, QString *text)
{
    for (auto it = group.getChildBegin(); it != group.getChildEnd(); ++it) {
        Element const &element = **it;
        *text += QString(2 * depth, QLatin1Char(' ')) + element.getTypeName() + QLatin1Char(' ') +
                 element.getScriptObject()->getName();
        auto const *inner = dynamic_cast<Group const *>(&element);
        if (!inner)
            *text += QStringLiteral(" at %1, %2").arg(element.getOrigin().x).arg(element.getOrigin().y);
        if (element.hasSize())
            *text += QStringLiteral(" size %1 x %2").arg(element.getSize().x).arg(element.getSize().y);
        if (!element.getVisible())
            *text += QLatin1StringView(" hidden");
        for (Parameter const &parameter : entriesOf(element.getParameterString())) {
            if (parameter.key == QLatin1StringView("text"))
                *text += QLatin1Char(' ') + parameter.value;
        }
        *text += QLatin1Char('\n');
        if (inner)
            appendTree(*inner, depth + 1, text);
    }
}

void show(ShowArguments const &arguments)
{
    PageDocument const document = openSoundPage(QString::fromStdString(arguments.page));
    if (arguments.json) {
        print(QString::fromUtf8(QJsonDocument(toJson(*document.figure)).toJson()));
        return;
    }
    QString text = QStringLiteral("page %1 x %2\n")
                       .arg(document.figure->getSize().x)
                       .arg(document.figure->getSize().y);
    appendTree(*document.figure->getRoot(), 1, &text);
    print(text);
}

} // namespace

void addShowVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<ShowArguments>();
    CLI::App *verb = app->add_subcommand("show", "Show the tree of elements of a page");
    verb->add_option("page", arguments->page, PAGE_HELP)->required();
    verb->add_flag("--json", arguments->json, "with all parameters, as JSON");
    verb->callback([arguments, run] { *run = [arguments] { show(*arguments); }; });
}

} // namespace Zem::Zemfig
