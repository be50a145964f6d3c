// What holds for every type of element, also for one that is added: nothing that lists the types has forgotten it.
#include "generated_elements.h"

#include <ElementForms.h>
#include <ZemFig2Chart.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Rectangle.h>

#include <ZemScriptObject.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <set>
#include <typeinfo>

namespace Zem::Fig2 {
namespace {

/// The types that the library makes.
std::vector<Element::Type_t> makeableTypes()
{
    std::vector<Element::Type_t> types;
    for (unsigned int number = 0; number < Element::NUMBER_OF_TYPES; ++number) {
        auto const type = static_cast<Element::Type_t>(number);
        // Image labels come from their creators; create throws.
        if (type == Element::IMAGE_LABEL)
            continue;
        if (std::unique_ptr<Element> const element{Element::create(type)})
            types.push_back(type);
    }
    return types;
}

class EveryType : public testing::TestWithParam<Element::Type_t>
{
protected:
    std::unique_ptr<Element> create() const { return std::unique_ptr<Element>(Element::create(GetParam())); }
};

INSTANTIATE_TEST_SUITE_P(ElementTypes, EveryType, testing::ValuesIn(makeableTypes()),
                         [](auto const &test) { return Element::getTypeParameterName(test.param).toStdString(); });

TEST_P(EveryType, isTheTypeOfWhatCreateMakes)
{
    EXPECT_EQ(create()->getType(), GetParam());
}

TEST_P(EveryType, hasTextsForTheUser)
{
    EXPECT_FALSE(create()->getTypeName().isEmpty());
}

TEST_P(EveryType, keepsItsClassInACopy)
{
    std::unique_ptr<Element> const element = create();
    std::unique_ptr<Element> const copy(element->copy());

    Element const &original = *element;
    Element const &other = *copy;
    EXPECT_EQ(typeid(other), typeid(original));
}

TEST_P(EveryType, leavesItsNeighbourInAGroupReadable)
{
    Group group;
    group.addChild(create().release());
    auto *after = new Rectangle;
    after->getScriptObject()->setName(QStringLiteral("after"));
    group.addChild(after);
    Group read;

    Support::loadBlocks(read, Support::blockForm(group));

    ASSERT_EQ(read.getChildEnd() - read.getChildBegin(), 2);
    EXPECT_EQ(read.getChildBegin()[0]->getType(), GetParam());
    EXPECT_EQ(read.getChildBegin()[1]->getScriptObject()->getName(), QStringLiteral("after"));
}

TEST_P(EveryType, isDrawnWithItsFigure)
{
    Figure figure;
    Element *element = create().release();
    figure.getRoot()->addChild(element);

    std::vector<Element const *> order;
    figure.computeRenderingOrder(&order);

    EXPECT_EQ(std::count(order.begin(), order.end(), element), 1);
}

TEST(ElementTypes, haveWordsThatReadBackToThem)
{
    for (unsigned int number = 0; number < Element::NUMBER_OF_TYPES; ++number) {
        QString const word = Element::getTypeParameterName(static_cast<Element::Type_t>(number));
        Element::Type_t type{};
        EXPECT_TRUE(Element::getTypeFromParameterName(word, &type)) << number;
        EXPECT_EQ(type, number);
    }
}

TEST(ElementTypes, endWithTheLastThatCanBeMade)
{
    std::unique_ptr<Element> const next(Element::create(static_cast<Element::Type_t>(Element::NUMBER_OF_TYPES)));
    EXPECT_EQ(next, nullptr);
}

TEST(ElementTypes, areAllGenerated)
{
    std::vector<Element::Type_t> const made = makeableTypes();
    std::set<Element::Type_t> generated(leafTypes().begin(), leafTypes().end());
    generated.insert(Element::GROUP);

    EXPECT_EQ(generated, std::set<Element::Type_t>(made.begin(), made.end()));
}

/// Whether saving it as a text succeeds.
bool hasTextForm(Element const &element)
{
    try {
        Support::textForm(element);
        return true;
    } catch (ProgError const &) {
        return false;
    }
}

TEST_P(EveryType, isGeneratedAsATextIfItHasOne)
{
    bool const generated = std::count(textTypes().begin(), textTypes().end(), GetParam()) > 0;

    EXPECT_EQ(generated, hasTextForm(*create()));
}

/// The keys of a parameter string with their values.
std::map<QString, QString> entriesOf(Element const &element)
{
    std::map<QString, QString> entries;
    for (QString const &line : element.getParameterString().split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        qsizetype const equals = line.indexOf(QLatin1StringView(" = "));
        entries[line.left(equals)] = line.mid(equals + 3);
    }
    return entries;
}

std::set<std::string> namesOf(std::map<QString, QString> const &entries)
{
    std::set<std::string> names;
    for (auto const &[key, value] : entries)
        names.insert(key.toStdString());
    return names;
}

/// But for the curves of a generic chart, which documents keep in tables of their own.
void eraseCurves(std::map<QString, QString> &entries)
{
    std::erase_if(entries, [](auto const &entry) {
        return entry.first.startsWith(QString(GenericChart::PARAM_TOKENS_Y).arg(QString()));
    });
}

// Documents learn from a fresh element which parameters there are.
TEST_P(EveryType, hasTheSameParametersWhateverItHolds)
{
    std::set<std::string> const fresh = namesOf(entriesOf(*create()));

    EXPECT_TRUE(rc::check([&] {
        std::map<QString, QString> entries = entriesOf(*generateElement(GetParam()));
        eraseCurves(entries);
        RC_ASSERT(namesOf(entries) == fresh);
    }));
}

/// The type, and what the parameter string shows though no setter of the element takes it.
void eraseWhatCannotBeSet(Element const &element, std::map<QString, QString> &entries)
{
    entries.erase(Element::PARAM_TYPE);
    if (!element.hasFontColor())
        entries.erase(Element::PARAM_FONT_COLOR);
    if (!element.hasMargin())
        entries.erase(Element::PARAM_MARGIN);
    if (!element.hasSpacing())
        entries.erase(Element::PARAM_SPACING);
    // A group stands where its master stands.
    if (element.getType() == Element::GROUP)
        entries.erase(Element::PARAM_ORIGIN);
}

TEST_P(EveryType, isGeneratedWithOtherValuesOfAllItsParameters)
{
    std::map<QString, QString> unchanged = entriesOf(*create());
    eraseWhatCannotBeSet(*create(), unchanged);

    rc::check([&] {
        for (auto const &[key, value] : entriesOf(*generateElement(GetParam()))) {
            auto const entry = unchanged.find(key);
            if (entry != unchanged.end() && entry->second != value)
                unchanged.erase(entry);
        }
    });

    EXPECT_EQ(namesOf(unchanged), std::set<std::string>());
}

} // namespace
} // namespace Zem::Fig2
