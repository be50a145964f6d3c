#include "ZemFig2ImportHook.h"

#include <ZemError.h>

#include <algorithm>

namespace Zem::Fig2 {

ImportHook::~ImportHook() = default;

QString ImportHook::convertLabelText(Element const *, QString const &text)
{
    return text;
}

std::vector<ImportHook *> &ImportHook::hooks()
{
    static std::vector<ImportHook *> _hooks;
    return _hooks;
}

void ImportHook::registerImportHook(ImportHook *hook)
{
    hooks().push_back(hook);
}

void ImportHook::unregisterImportHook(ImportHook *hook)
{
    auto const found = std::find(hooks().begin(), hooks().end(), hook);
    if (found == hooks().end())
        throw ProgError("Zem::Fig2::ImportHook::unregisterImportHook", "fig_import_hook", __LINE__,
                        "Import hook is not registered");
    hooks().erase(found);
}

// Both walk over a copy: a hook may take itself from the list when it is called.

void ImportHook::callConvertFigure(Figure *figure)
{
    for (ImportHook *hook : std::vector<ImportHook *>(hooks()))
        hook->convertFigure(figure);
}

QString ImportHook::callConvertLabelText(Element const *element, QString const &text)
{
    QString converted = text;
    for (ImportHook *hook : std::vector<ImportHook *>(hooks()))
        converted = hook->convertLabelText(element, converted);
    return converted;
}

} // namespace Zem::Fig2
