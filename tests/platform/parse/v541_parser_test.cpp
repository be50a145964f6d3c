#include "parameter_errors.h"

#include <ZemV541Parser.h>

#include <gtest/gtest.h>

using namespace Zem;
using namespace Zem::Test;

namespace {

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

} // namespace

TEST(OlderParameterString, givesEveryKindOfValueAndIsConsumed)
{
    QString parameters = q("visible=true;angle=1.5;name=\"a; \\\"b\\\" \\\\ \\n=c\";color=255,0,16;origin=1,-2.5");
    EXPECT_TRUE(V541Parser::getBool(parameters, q("visible")));
    EXPECT_EQ(V541Parser::getDouble(parameters, q("angle"), 0, 2), 1.5);
    EXPECT_EQ(V541Parser::getString(parameters, q("name")), q("a; \"b\" \\ \n=c"));
    EXPECT_EQ(V541Parser::getColor(parameters, q("color")), Color(255, 0, 16));
    EXPECT_EQ(V541Parser::getVec2d(parameters, q("origin")), (BaVec2d<double>{1, -2.5}));
    EXPECT_EQ(parameters, QString());
}

TEST(OlderParameterString, takesBlanksAndLineEndsBetweenEntries)
{
    QString parameters = q(" a = 1 ;\n\tb = word ;\r\n c=1,2,3,4;");
    EXPECT_TRUE(V541Parser::parameterExists(parameters, q("b")));
    EXPECT_EQ(V541Parser::getString(parameters, q("b")), q("word"));
    EXPECT_TRUE(V541Parser::getBool(parameters, q("a")));
    EXPECT_EQ(V541Parser::getColor(parameters, q("c")), Color(1, 2, 3, 4));
}

TEST(OlderParameterString, doesNotSeeEntriesInsideAText)
{
    QString const parameters = q("a=\"b=1;c=2;\";d=3;");
    EXPECT_FALSE(V541Parser::parameterExists(parameters, q("c")));
    EXPECT_TRUE(V541Parser::parameterExists(parameters, q("d")));
}

TEST(OlderParameterString, givesTheFirstOfSeveralEntries)
{
    QString parameters = q("a=1;a=2;");
    EXPECT_EQ(V541Parser::getDouble(parameters, q("a"), 0, 9), 1);
    EXPECT_EQ(parameters, q("a=2;"));
}

TEST(OlderParameterString, refusesBadValuesByNameAndStaysAsItWas)
{
    struct
    {
        char const *value;
        std::function<void(QString &)> read;
    } const cases[] = {
        {"maybe", [](QString &p) { V541Parser::getBool(p, q("k")); }},
        {"x", [](QString &p) { V541Parser::getDouble(p, q("k"), 0, 1); }},
        {"2", [](QString &p) { V541Parser::getDouble(p, q("k"), 0, 1); }},
        {"nan", [](QString &p) { V541Parser::getDouble(p, q("k"), 0, 1); }},
        {"\"open", [](QString &p) { V541Parser::getString(p, q("k")); }},
        {"\"a\"b", [](QString &p) { V541Parser::getString(p, q("k")); }},
        {"1,2", [](QString &p) { V541Parser::getColor(p, q("k")); }},
        {"1,2,256", [](QString &p) { V541Parser::getColor(p, q("k")); }},
        {"1,2,2.5", [](QString &p) { V541Parser::getColor(p, q("k")); }},
        {"1,2,3,4,5", [](QString &p) { V541Parser::getColor(p, q("k")); }},
        {"1,2,3", [](QString &p) { V541Parser::getVec2d(p, q("k")); }},
    };
    for (auto const &test : cases) {
        QString parameters = q("k=") + q(test.value);
        QString const before = parameters;
        QString const error = paramError([&] { test.read(parameters); });
        EXPECT_TRUE(error.startsWith(q("parameter 'k', value '") + q(test.value))) << error.toStdString();
        EXPECT_EQ(parameters, before);
    }
}

TEST(OlderParameterString, namesTheMissingKey)
{
    QString parameters;
    EXPECT_EQ(paramError([&] { V541Parser::getBool(parameters, q("k")); }), q("parameter 'k' is missing"));
}
