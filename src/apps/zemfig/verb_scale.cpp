#include "verbs.h"

#include "cli.h"
#include "page_schema.h"

#include <ZemMeasProject.h>
#include <ZemParse.h>

#include <memory>

namespace Zem::Zemfig {

using namespace Measurement;

namespace {

struct ScaleArguments
{
    std::string project;
    std::vector<std::string> settings;
};

/// The entry of a parameter string for a value as a user types it.
QString entryOf(Parameter const &parameter, QString const &value)
{
    if (parameter.kind == ParameterKind::Text)
        return Parse::createString(parameter.key, value);
    return QStringLiteral("%1 = %2\n").arg(parameter.key, value);
}

void change(ColorScale *scale, QString const &setting)
{
    qsizetype const equals = setting.indexOf(QLatin1Char('='));
    if (equals <= 0)
        throw UsageError(QStringLiteral("a setting is KEY=VALUE, not '%1'").arg(setting));
    QString const key = setting.left(equals);
    std::vector<Parameter> const known = entriesOf(scale->getParameterString());
    auto const found = findParameter(known, key);
    if (!found)
        throw UsageError(QStringLiteral("a colour scale has no '%1'%2").arg(key, suggestion(key, keysOf(known))));
    QString entry = entryOf(*found, setting.mid(equals + 1));
    try {
        scale->createFromParameterString(entry);
    } catch (ParamError const &error) {
        throw UsageError(QStringLiteral("'%1': %2").arg(setting, error.getText()));
    }
}

void scale(ScaleArguments const &arguments)
{
    QString const name = QString::fromStdString(arguments.project);
    Project project(name, arguments.settings.empty() ? OpenMode_t::READ : OpenMode_t::WRITE);
    ColorScale scale = project.colorScale().value_or(ColorScale());
    for (std::string const &setting : arguments.settings)
        change(&scale, QString::fromStdString(setting));
    if (!arguments.settings.empty()) {
        // Refused before it is stored: a token that the project does not have.
        applyColorScale(project, scale);
        project.setColorScale(scale);
    }
    print(scale.getParameterString());
}

} // namespace

void addScaleVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<ScaleArguments>();
    CLI::App *verb = app->add_subcommand("scale", "Show or change the colour scale of a project");
    verb->add_option("--project", arguments->project, "project file or URL")->required();
    verb->add_option("settings", arguments->settings,
                     "KEY=VALUE, as token=strain legend_color_map=rainbow; without any the scale is shown");
    verb->callback([arguments, run] { *run = [arguments] { scale(*arguments); }; });
}

} // namespace Zem::Zemfig
