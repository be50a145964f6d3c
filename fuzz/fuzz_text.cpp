// Every element reads any text, or its stream fails; what it read comes back equal.
#include <ZemFig2Element.h>

#include <ZemError.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace {

using Zem::Fig2::Element;

bool hasTextForm(unsigned int type)
{
    switch (type) {
    case Element::IMAGE_LABEL:
    case Element::GROUP:
    case Element::SNAPSHOT:
    case Element::SNAPSHOT_FRAME:
        return false;
    default:
        return true;
    }
}

/// Empty for an element that has no text form.
std::string textOf(Element const &element)
{
    std::ostringstream output;
    try {
        element.saveToStream(output);
    } catch (Zem::ProgError const &) {
        return {};
    }
    return output.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    for (unsigned int type = 0; type < Element::NUMBER_OF_TYPES; ++type) {
        if (!hasTextForm(type))
            continue;
        std::unique_ptr<Element> const element(Element::create(static_cast<Element::Type_t>(type)));
        try {
            std::istringstream input(text);
            element->loadFromStream(input);
            if (!input)
                continue;
        } catch (Zem::Exception const &) {
            continue; // refused, with a reason
        }
        std::string const saved = textOf(*element);
        std::unique_ptr<Element> const again(Element::create(static_cast<Element::Type_t>(type)));
        std::istringstream input(saved);
        again->loadFromStream(input);
        if (!saved.empty() && textOf(*again) != saved)
            std::abort();
    }
    return 0;
}
