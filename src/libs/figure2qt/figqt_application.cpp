#include "ZemFig2QtApplication.h"

#include <ZemError.h>

namespace Zem::Fig2Qt {

std::unique_ptr<QGuiApplication> ensureGuiApplication(int &argc, char **argv)
{
    if (QCoreApplication::instance()) {
        requireGuiApplication();
        return nullptr;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

void requireGuiApplication()
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        throw ProgError("Zem::Fig2Qt::requireGuiApplication", "figqt_application", __LINE__,
                        "Painting and measuring text need a QGuiApplication: call ensureGuiApplication first");
}

} // namespace Zem::Fig2Qt
