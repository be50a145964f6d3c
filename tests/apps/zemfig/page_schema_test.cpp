#include <page_schema.h>

#include <gtest/gtest.h>

namespace Zem::Zemfig {
namespace {

using Fig2::Element;

ParameterKind kindOf(Element::Type_t type, char const *key)
{
    auto const parameter = findParameter(type, QString::fromLatin1(key));
    EXPECT_TRUE(parameter.has_value()) << key;
    return parameter->kind;
}

TEST(PageSchema, tellsWhatAParameterHolds)
{
    EXPECT_EQ(kindOf(Element::RECTANGLE, "visible"), ParameterKind::Bool);
    EXPECT_EQ(kindOf(Element::RECTANGLE, "angle"), ParameterKind::Number);
    EXPECT_EQ(kindOf(Element::RECTANGLE, "border_style"), ParameterKind::Text);
    EXPECT_EQ(kindOf(Element::RECTANGLE, "border_color"), ParameterKind::Color);
    EXPECT_EQ(kindOf(Element::RECTANGLE, "origin"), ParameterKind::Vector);
    EXPECT_EQ(kindOf(Element::POLYGON, "polygon"), ParameterKind::VectorList);
    EXPECT_EQ(kindOf(Element::IMAGE, "image_cs_origin"), ParameterKind::SpaceVector);
}

TEST(PageSchema, knowsNoParametersOfATypeThatCannotBeMade)
{
    EXPECT_TRUE(parametersOf(Element::IMAGE_LABEL).empty());
    EXPECT_FALSE(findParameter(Element::LINE, QStringLiteral("size")));
}

TEST(PageSchema, hasNoParameterThatTheTablesOfADocumentTakeForTheirOwn)
{
    for (unsigned int type = 0; type < Element::NUMBER_OF_TYPES; ++type) {
        for (Parameter const &parameter : parametersOf(static_cast<Element::Type_t>(type))) {
            bool const isType = parameter.key == Element::PARAM_TYPE;
            EXPECT_EQ(isStructureKey(parameter.key), isType) << type << ' ' << parameter.key.toStdString();
        }
    }
}

TEST(PageSchema, suggestsTheNearestWordOnly)
{
    std::vector<QString> const words{"origin", "size", "angle"};
    EXPECT_EQ(suggestion("orgin", words), " (did you mean 'origin'?)");
    EXPECT_EQ(suggestion("SIZE", words), " (did you mean 'size'?)");
    EXPECT_EQ(suggestion("completely_else", words), "");
}

} // namespace
} // namespace Zem::Zemfig
