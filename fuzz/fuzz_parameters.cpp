// Every element takes any parameter string or refuses it.
#include <ZemFig2Element.h>

#include <ZemParse.h>

#include <cstdint>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using Zem::Fig2::Element;
    QString const text = QString::fromUtf8(reinterpret_cast<char const *>(data), static_cast<qsizetype>(size));
    for (unsigned int type = 0; type < Element::NUMBER_OF_TYPES; ++type) {
        if (type == Element::IMAGE_LABEL || type == Element::GROUP)
            continue;
        std::unique_ptr<Element> const element(Element::create(static_cast<Element::Type_t>(type)));
        if (!element)
            continue;
        try {
            QString parameters = text;
            element->createFromParameterString(parameters);
            element->getParameterString();
        } catch (Zem::ParamError const &) {
            // Refused, with a reason.
        }
    }
    return 0;
}
