#include "ZemFig2InitLibrary.h"

#include "fig_element_tokens.h"

#include <ZemTranslate.h>

namespace Zem::Fig2 {

void InitLibrary()
{
    static bool const initialised = [] {
        installTranslator("ZemFigure2");
        registerElementTokens();
        return true;
    }();
    static_cast<void>(initialised);
}

} // namespace Zem::Fig2
