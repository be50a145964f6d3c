#include "verbs.h"

#include "cli.h"

#include <ZemFig2InitLibrary.h>
#include <ZemFig2QtApplication.h>
#include <ZemMeasImageLabels.h>

#include <csignal>

namespace {

/// Passes on what Qt has to say, but not that there is no desktop session: none is needed.
void tellQtMessage(QtMsgType, QMessageLogContext const &, QString const &text)
{
    if (!text.startsWith(QLatin1StringView("QStandardPaths: XDG_RUNTIME_DIR")))
        Zem::Zemfig::message(text);
}

} // namespace

int main(int argc, char **argv)
{
    using namespace Zem::Zemfig;

    CLI::App app("Report pages from measured values: PDF, SVG and PNG from a CSV file and a page description");
    app.require_subcommand(1);
    app.footer("Exit codes: 0 done, 1 wrong use, 2 bad input, 3 output failed, 4 compared and found different.");
    // A file that may not grow is a failed write with a message, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    qInstallMessageHandler(tellQtMessage);
    Run run;
    addImportVerb(&app, &run);
    addRenderVerb(&app, &run);
    addFreezeVerb(&app, &run);
    addTemplateVerb(&app, &run);
    addConvertVerb(&app, &run);
    addPlaceVerb(&app, &run);
    addPlotVerb(&app, &run);
    addOverlayVerb(&app, &run);
    addScaleVerb(&app, &run);
    addCameraVerb(&app, &run);
    addDiffVerb(&app, &run);
    addInfoVerb(&app, &run);
    addRepairVerb(&app, &run);
    addShowVerb(&app, &run);
    addCheckVerb(&app, &run);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const &error) {
        return app.exit(error) == 0 ? EXIT_DONE : EXIT_USAGE;
    }
    return runVerb([&] {
        auto const application = Zem::Fig2Qt::ensureGuiApplication(argc, argv);
        Zem::Fig2::InitLibrary();
        Zem::Measurement::registerImageLabels();
        run();
    });
}
