// verbs.h: the verbs of the command. Each reads its options from CLI11 and throws what runVerb() turns into messages.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>

namespace Zem::Zemfig {

/// Adds the verb's subcommand to `app`. `run` is set to what is to be done when the user chose it.
using Run = std::function<void()>;
void addImportVerb(CLI::App *app, Run *run);
void addRenderVerb(CLI::App *app, Run *run);
void addFreezeVerb(CLI::App *app, Run *run);
void addTemplateVerb(CLI::App *app, Run *run);
void addConvertVerb(CLI::App *app, Run *run);
void addPlaceVerb(CLI::App *app, Run *run);
void addPlotVerb(CLI::App *app, Run *run);
void addOverlayVerb(CLI::App *app, Run *run);
void addScaleVerb(CLI::App *app, Run *run);
void addCameraVerb(CLI::App *app, Run *run);
void addDiffVerb(CLI::App *app, Run *run);
void addInfoVerb(CLI::App *app, Run *run);
void addRepairVerb(CLI::App *app, Run *run);
void addShowVerb(CLI::App *app, Run *run);
void addCheckVerb(CLI::App *app, Run *run);

} // namespace Zem::Zemfig
