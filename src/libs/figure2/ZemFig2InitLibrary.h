// ZemFig2InitLibrary.h: InitLibrary, the application's first call.
// Layer: services. Called once, on the thread that starts the application.
#pragma once

namespace Zem::Fig2 {

/// Installs the translations of the library and registers what it offers by itself, each once. Call it when the
/// application object exists, without which there are no translations, and before the first figure is made.
void InitLibrary();

} // namespace Zem::Fig2
