// ZemFig2QtApplication.h: the application object that fonts and text need.
// Layer: Qt backend. Called from the main thread, before anything else of this library.
#pragma once

#include <QtGui/QGuiApplication>

#include <memory>

namespace Zem::Fig2Qt {

/// Makes sure that there is a QGuiApplication, without which Qt has no fonts. When there is none, one is created that
/// needs no display: platform "offscreen", unless the environment variable QT_QPA_PLATFORM asks for another. The caller
/// keeps it until all painting is done; null when there was one already. `argc` and `argv` must live as long. Throws
/// ProgError when there is an application object without QtGui, a plain QCoreApplication.
[[nodiscard]] std::unique_ptr<QGuiApplication> ensureGuiApplication(int &argc, char **argv);

/// Throws ProgError when there is no QGuiApplication.
void requireGuiApplication();

} // namespace Zem::Fig2Qt
