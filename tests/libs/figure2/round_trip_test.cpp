// What an element writes in any of its forms, an element of its type reads back to the same form.
#include "generated_elements.h"

#include <ElementForms.h>
#include <ZemFig2Figure.h>

#include <rapidcheck/gtest.h>

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

RC_GTEST_PROP(RoundTrip, ofTextLosesNothing, ())
{
    std::unique_ptr<Element> const element = generateElement(generateTextType());
    std::unique_ptr<Element> const read(Element::create(element->getType()));
    std::string const form = Support::textForm(*element);

    RC_ASSERT(Support::loadText(*read, form));

    RC_ASSERT(Support::textForm(*read) == form);
    // Texts hold no fonts of symbols; all else is there.
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
