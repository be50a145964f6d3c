#include "verbs.h"

#include "cli.h"
#include "settings.h"

#include <ZemMeasProject.h>

#include <algorithm>
#include <memory>

namespace Zem::Zemfig {

using namespace Measurement;

namespace {

struct CameraArguments
{
    std::string project;
    std::string view = PictureOptions().view.toStdString();
    double plane = 0.0;
    std::vector<double> origin{0.0, 0.0};
    bool upwards = false;
    std::vector<std::string> settings;

    bool change() const { return !settings.empty() || plane > 0.0; }
};

CameraModel cameraOf(Project const &project, QString const &view)
{
    std::vector<ProjectView> const views = project.views();
    auto const found =
        std::find_if(views.begin(), views.end(), [&](ProjectView const &one) { return one.name == view; });
    return found == views.end() ? CameraModel() : found->camera;
}

void camera(CameraArguments const &arguments)
{
    QString const view = QString::fromStdString(arguments.view);
    Project project(QString::fromStdString(arguments.project),
                    arguments.change() ? OpenMode_t::CREATE : OpenMode_t::READ);
    CameraModel camera = cameraOf(project, view);
    for (std::string const &setting : arguments.settings)
        changeSetting(&camera, QString::fromStdString(setting), "a camera");
    if (arguments.plane > 0.0)
        camera = CameraModel::plane(camera.width, camera.height, arguments.plane,
                                    {arguments.origin[0], arguments.origin[1]}, arguments.upwards);
    if (arguments.change())
        project.setCamera(view, camera);
    print(camera.getParameterString());
}

} // namespace

void addCameraVerb(CLI::App *app, Run *run)
{
    auto arguments = std::make_shared<CameraArguments>();
    CLI::App *verb = app->add_subcommand("camera", "Show or change the camera of a view of a project");
    verb->add_option("--project", arguments->project, "project file or URL")->required();
    verb->add_option("--view", arguments->view, "the view; camera when not given");
    auto *plane = verb->add_option("--plane", arguments->plane,
                                   "look straight onto a plane: how many pixels a unit of the points has")
                      ->check(CLI::PositiveNumber);
    verb->add_option("--origin", arguments->origin, "where the point (0, 0) lies, in pixels")
        ->expected(2)
        ->needs(plane);
    verb->add_flag("--upwards", arguments->upwards, "y of the points runs upwards")->needs(plane);
    verb->add_option("settings", arguments->settings,
                     "KEY=VALUE, as width=1024 image_distance=(2000,2000); without any the camera is shown");
    verb->callback([arguments, run] { *run = [arguments] { camera(*arguments); }; });
}

} // namespace Zem::Zemfig
