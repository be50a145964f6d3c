#include "ZemFig2InitLibrary.h"

#include "fig_element_tokens.h"

#include <ZemTranslate.h>

namespace Zem::Fig2 {

void InitLibrary()
{
    installTranslator("ZemFigure2"); // each time: the first call may have come before the application object
    static bool const initialised = [] {
        registerElementTokens();
        return true;
    }();
    static_cast<void>(initialised);
}

} // namespace Zem::Fig2
