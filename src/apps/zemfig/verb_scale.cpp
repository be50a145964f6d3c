#include "verbs.h"

#include "cli.h"
#include "settings.h"

#include <ZemMeasProject.h>

#include <memory>

namespace Zem::Zemfig {

using namespace Measurement;

namespace {

struct ScaleArguments
{
    std::string project;
    std::vector<std::string> settings;
};

void scale(ScaleArguments const &arguments)
{
    QString const name = QString::fromStdString(arguments.project);
    Project project(name, arguments.settings.empty() ? OpenMode_t::READ : OpenMode_t::WRITE);
    ColorScale scale = project.colorScale().value_or(ColorScale());
    for (std::string const &setting : arguments.settings)
        changeSetting(&scale, QString::fromStdString(setting), "a colour scale");
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
