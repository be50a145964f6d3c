#include "ZemFig2InitLibrary.h"

#include "ZemFig2ImageDataObjectLabel.h"
#include "fig_element_tokens.h"

#include <ZemTranslate.h>

namespace Zem::Fig2 {

namespace {

/// Lives as long as the process, unless all creators are destroyed.
void registerImageLabels()
{
    if (!ImageLabelCreator::getCreators().contains(ImageLabelCreator::TYPE_IMPORTED_IMAGE_DATA))
        new ImageDataObjectLabelCreator;
}

} // namespace

void InitLibrary()
{
    installTranslator("ZemFigure2"); // each time: the first call may have come before the application object
    static bool const initialised = [] {
        registerElementTokens();
        return true;
    }();
    static_cast<void>(initialised);
    registerImageLabels();
}

} // namespace Zem::Fig2
