// What an element writes in any of its forms, an element of its type reads back to the same form.
#include "generated_elements.h"

#include <ElementForms.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2Logo.h>

#include <ZemScriptObject.h>

#include <rapidcheck/gtest.h>

#include <cstring>

namespace Zem::Fig2 {
namespace {

RC_GTEST_PROP(RoundTrip, ofBlocksLosesNothing, ())
{
    std::unique_ptr<Element> const element = generateElement(generateLeafType());
    std::unique_ptr<Element> const read(Element::create(element->getType()));

    Support::loadBlocks(*read, Support::blockForm(*element));

    RC_ASSERT(Support::blockForm(*read) == Support::blockForm(*element));
    RC_ASSERT(Support::parameterForm(*read) == Support::parameterForm(*element));
}

RC_GTEST_PROP(RoundTrip, ofGroupBlocksLosesNothing, ())
{
    std::unique_ptr<Element> const group = generateElement(Element::GROUP);
    Group read;

    Support::loadBlocks(read, Support::blockForm(*group));

    RC_ASSERT(Support::blockForm(read) == Support::blockForm(*group));
}

/// The fonts of symbols, and the tokens of images.
void dropWhatTextsLack(Element &element)
{
    if (auto *line = dynamic_cast<Line *>(&element)) {
        auto [first, second] = line->getSymbolInfo();
        first.setFont({});
        second.setFont({});
        line->setSymbolInfo({first, second});
    }
    if (auto *image = dynamic_cast<ImageBase *>(&element))
        image->setToken(QString());
}

RC_GTEST_PROP(RoundTrip, ofTextLosesNothing, ())
{
    std::unique_ptr<Element> const element = generateElement(generateTextType());
    dropWhatTextsLack(*element);
    std::unique_ptr<Element> const read(Element::create(element->getType()));
    std::string const form = Support::textForm(*element);

    RC_ASSERT(Support::loadText(*read, form));

    RC_ASSERT(Support::textForm(*read) == form);
    RC_ASSERT(read->getParameterString() == element->getParameterString());
}

RC_GTEST_PROP(RoundTrip, ofParametersLosesNothing, ())
{
    std::unique_ptr<Element> const element = generateElement(generateLeafType());
    std::unique_ptr<Element> const read(Element::create(element->getType()));
    std::string const form = Support::parameterForm(*element);

    std::string const rest = Support::loadParameters(*read, form);

    RC_ASSERT(rest.empty());
    RC_ASSERT(Support::parameterForm(*read) == form);
}

/// The blocks of the element without its id.
std::string blockFormWithoutId(Element const &element)
{
    std::string form = Support::blockForm(element);
    std::string const header = Support::streamOf([](IO::OutStream &) {});
    std::string const base = Support::streamOf([&element](IO::OutStream &stream) {
                                 element.Element::save(&stream, -1, -1);
                             }).substr(header.size());
    std::size_t const place = form.find(base);
    RC_ASSERT(place != std::string::npos);
    // Size, version and checksum stand around the payload, which begins with the id.
    constexpr std::size_t ID = 8;
    form.erase(place + ID, sizeof(int));
    std::uint32_t payload = 0;
    std::memcpy(&payload, base.data(), sizeof payload);
    return form.erase(place + payload + ID - sizeof(int), sizeof(std::uint32_t));
}

/// Deliberately no parameters: the name, the histogram of a legend, the picture of a logo, of which there is the file
/// name, and switches for what the element cannot do.
void dropWhatIsNoParameter(Element &element)
{
    element.getScriptObject()->setName({});
    if (!element.canLinkTo3D())
        element.setLinkTo3D(false);
    if (!element.hasAutoSize())
        element.setAutoSize(false);
    if (!element.hasMaximize())
        element.setMaximize(false);
    if (auto *legend = dynamic_cast<Legend *>(&element))
        legend->setLocalHistogramData({});
    else if (auto *logo = dynamic_cast<Logo *>(&element))
        logo->setImage(nullptr);
}

RC_GTEST_PROP(RoundTrip, ofParametersKeepsAllThatBlocksHold, ())
{
    std::unique_ptr<Element> const element = generateElement(generateLeafType());
    dropWhatIsNoParameter(*element);
    std::unique_ptr<Element> const read(Element::create(element->getType()));

    Support::loadParameters(*read, Support::parameterForm(*element));

    RC_ASSERT(blockFormWithoutId(*read) == blockFormWithoutId(*element));
}

RC_GTEST_PROP(RoundTrip, throughACopyLosesNothing, ())
{
    std::unique_ptr<Element> const element = generateElement(generateLeafType());
    std::unique_ptr<Element> const copy(element->copy());

    RC_ASSERT(Support::parameterForm(*copy) == Support::parameterForm(*element));
}

RC_GTEST_PROP(RoundTrip, ofAFigureLosesNothing, ())
{
    Figure figure;
    figure.setRoot(static_cast<Group *>(generateElement(Element::GROUP).release()));
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    Figure read;

    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });

    RC_ASSERT(read.toString() == figure.toString());
    RC_ASSERT(Figure(figure).toString() == figure.toString());
}

} // namespace
} // namespace Zem::Fig2
