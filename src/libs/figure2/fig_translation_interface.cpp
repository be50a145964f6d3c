#include "ZemFig2TranslationInterface.h"

#include <ZemError.h>

namespace Zem::Fig2 {

constinit TranslationInterface const *TranslationInterface::_instance = nullptr;

TranslationInterface::TranslationInterface()
{
    if (_instance)
        throw ProgError("Zem::Fig2::TranslationInterface::TranslationInterface", "fig_translation_interface", __LINE__,
                        "Only one instance is allowed");
    _instance = this;
}

TranslationInterface::~TranslationInterface()
{
    _instance = nullptr;
}

TranslationInterface const *TranslationInterface::getInterface()
{
    return _instance;
}

} // namespace Zem::Fig2
