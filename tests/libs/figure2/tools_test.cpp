#include <BlockCrafter.h>
#include <RecordingPainter.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Line.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2Tools.h>

#include <ZemError.h>
#include <ZemParse.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

QString textOfError(std::function<void()> const &action)
{
    try {
        action();
    } catch (Exception const &error) {
        return error.getText();
    }
    return QStringLiteral("nothing was thrown");
}

Font loadFont(std::string const &bytes)
{
    Font font("Before", 3.0, 1);
    Support::readFrom(bytes, [&font](IO::InStream &stream) { Tools::load(&stream, &font); });
    return font;
}

TEST(ToolsFont, isABlockOfVersion1)
{
    Font const font(QString::fromUtf8("Ü"), 9.5, 33);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { Tools::save(&stream, font); });
    // 4 + 2 bytes of UTF-8, 8, 4
    EXPECT_EQ(Support::blocksOf(bytes), "1:18 ");
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().s("\xc3\x9c").d(9.5).u(33)).bytes());
    EXPECT_EQ(loadFont(bytes), font);
}

TEST(ToolsFont, ofAnotherVersionIsRefused)
{
    for (unsigned int version : {0U, 2U}) {
        std::string const bytes = BlockCrafter().block(version, Payload().s("A").d(9).u(0)).bytes();
        EXPECT_EQ(textOfError([&] { loadFont(bytes); }), "wrong block version");
    }
}

Polygon2d loadPolygon(std::string const &bytes)
{
    Polygon2d polygon({{9, 9}}, true);
    Support::readFrom(bytes, [&polygon](IO::InStream &stream) { Tools::load(&stream, &polygon); });
    return polygon;
}

TEST(ToolsPolygon, isABlockOfCountAndPoints)
{
    Polygon2d const polygon({{1, 2}, {3, 4}, {-5, 6}}, true);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { Tools::save(&stream, polygon); });
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().u(3).v(1, 2).v(3, 4).v(-5, 6)).bytes());
    EXPECT_EQ(Support::blocksOf(bytes), "1:52 ");
    EXPECT_EQ(loadPolygon(bytes), polygon);
}

TEST(ToolsPolygon, withAWrongCountOrVersionIsRefused)
{
    for (std::string const &bytes :
         {BlockCrafter().block(1, Payload().u(4294967295U).v(1, 2)).bytes(),
          BlockCrafter().block(2, Payload().u(0)).bytes(), BlockCrafter().block(0, Payload().u(0)).bytes()})
        EXPECT_THROW(loadPolygon(bytes), IO::StreamException);
}

QString loadToken(std::string const &bytes, Variable_t *type)
{
    QString token;
    Support::readFrom(bytes, [&](IO::InStream &stream) { token = Tools::loadToken(&stream, type); });
    return token;
}

TEST(ToolsToken, isABlockOfVersion3WithTheName)
{
    std::string const bytes = Support::streamOf([](IO::OutStream &stream) { Tools::saveToken(&stream, "force"); });
    EXPECT_EQ(bytes, BlockCrafter().block(3, Payload().s("force")).bytes());
    Variable_t type = VARIABLE_GROUP;
    EXPECT_EQ(loadToken(bytes, &type), "force");
    EXPECT_EQ(type, VARIABLE_GROUP);
}

TEST(ToolsToken, ofOlderVersionsHasAType)
{
    for (unsigned int version : {1U, 2U}) {
        std::string const bytes = BlockCrafter().block(version, Payload().s("force").u(5)).bytes();
        Variable_t type = VARIABLE_GROUP;
        EXPECT_EQ(loadToken(bytes, &type), "force");
        EXPECT_EQ(type, VARIABLE_IMAGE_REFERENCE);
        EXPECT_EQ(loadToken(bytes, nullptr), "force");
    }
}

TEST(ToolsToken, ofAnotherVersionOrTypeIsRefused)
{
    for (std::string const &bytes :
         {BlockCrafter().block(4, Payload().s("a")).bytes(), BlockCrafter().block(0, Payload().s("a").u(1)).bytes(),
          BlockCrafter().block(2, Payload().s("a").u(11)).bytes(), BlockCrafter().block(2, Payload().s("a")).bytes()})
        EXPECT_THROW(loadToken(bytes, nullptr), IO::StreamException);
}

TEST(ToolsAlignment, isOneOfThreeWords)
{
    char const *const words[] = {"begin", "center", "end"};
    for (unsigned int i = 0; i < 3; ++i) {
        QString parameters = Tools::createAlignment("key", Alignment_t(i));
        EXPECT_EQ(parameters.toStdString(), std::string("key = \"") + words[i] + "\"\n");
        EXPECT_EQ(Tools::getAlignment(parameters, "key"), Alignment_t(i));
        EXPECT_EQ(parameters, "");
        QString old = QStringLiteral("key=\"%1\";").arg(QLatin1StringView(words[i]));
        EXPECT_EQ(Tools::getV541Alignment(old, "key"), Alignment_t(i));
    }
}

TEST(ToolsAlignment, refusesOtherWords)
{
    QString parameters = QStringLiteral("key = \"middle\"\n");
    EXPECT_THROW(Tools::getAlignment(parameters, "key"), ParamError);
    QString old = QStringLiteral("key=\"middle\";");
    try {
        Tools::getV541Alignment(old, "key");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown alignment type");
        EXPECT_EQ(error.getPosition(), -1);
    }
}

TEST(ToolsGetToken, takesATextParameter)
{
    QString parameters = QStringLiteral("a = 1\ntoken = \"part.length\"\n");
    EXPECT_EQ(Tools::getToken(parameters, "token"), "part.length");
    EXPECT_EQ(parameters, "a = 1\n");
    EXPECT_THROW(Tools::getToken(parameters, "token"), ParamError);
}

TEST(ToolsReplaceString, replacesFromLeftToRightWithoutLookingAgain)
{
    EXPECT_EQ(Tools::replaceString("", "a", "b"), "");
    EXPECT_EQ(Tools::replaceString("aaa", "aa", "ba"), "baa");
    EXPECT_EQ(Tools::replaceString("aXbX", "X", "XX"), "aXXbXX");
    EXPECT_EQ(Tools::replaceString("abc", "", "z"), "abc");
    EXPECT_EQ(Tools::replaceString("abAB", "ab", ""), "AB");
}

TEST(ToolsInsertString, insertsAtAPosition)
{
    EXPECT_EQ(Tools::insertString("abc", "X", 0), "Xabc");
    EXPECT_EQ(Tools::insertString("abc", "X", 2), "abXc");
    EXPECT_EQ(Tools::insertString("abc", "X", 3), "abcX");
    EXPECT_EQ(Tools::insertString("abc", "X", 4294967295U), "abcX");
}

TEST(ToolsStripCRLF, removesAllLineEndsAtTheEnd)
{
    EXPECT_EQ(Tools::stripCRLF("a\nb\r\n\n\r"), "a\nb");
    EXPECT_EQ(Tools::stripCRLF("\n\r"), "");
    EXPECT_EQ(Tools::stripCRLF("a "), "a ");
}

TEST(ToolsStripRTFTags, dropsTagsAndAnUnclosedOneToTheEnd)
{
    EXPECT_EQ(Tools::stripRTFTags("a<b>c</b>d"), "acd");
    EXPECT_EQ(Tools::stripRTFTags("<a <b>x"), "x");
    EXPECT_EQ(Tools::stripRTFTags("1 > 0 <br"), "1 > 0 ");
}

struct TokenText
{
    char const *text;
    bool accepted;
    char const *name;
    char const *format;
};

class ToolsParseToken : public testing::TestWithParam<TokenText>
{
};

TEST_P(ToolsParseToken, putsTheFormatInFrontOfTheName)
{
    QString name = QStringLiteral("old");
    QString format = QStringLiteral("old");
    EXPECT_EQ(Tools::parseToken(QString::fromUtf8(GetParam().text), &name, &format), GetParam().accepted);
    EXPECT_EQ(name.toStdString(), GetParam().name);
    EXPECT_EQ(format.toStdString(), GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(Texts, ToolsParseToken,
                         testing::Values(TokenText{"+10.2[mm]part.length", true, "part.length", "+10.2[mm]"},
                                         TokenText{"name", true, "name", ""}, TokenText{"", false, "", ""},
                                         TokenText{"5", true, "5", ""}, TokenText{"+-.12", true, "+-.12", ""},
                                         TokenText{"[mm]", true, "[mm]", ""}, TokenText{"[mm]x", true, "x", "[mm]"},
                                         TokenText{"[a[b]c]d", true, "c]d", "[a[b]"},
                                         TokenText{"[open name", true, "[open name", ""},
                                         TokenText{"]x", true, "x", "]"}, TokenText{"8.2 x", true, " x", "8.2"},
                                         TokenText{"a[1]", true, "a[1]", ""}, TokenText{"x5.2", true, "x5.2", ""}));

TEST(ToolsParseTokens, pairsEachSeparatorWithTheNext)
{
    std::vector<QString> names{"old"};
    std::vector<QString> formats{"old"};
    Tools::parseTokens("a $5.1x$ b $$ c $y$d$ lost", '$', &names, &formats);
    EXPECT_EQ(names, (std::vector<QString>{"x", "y"}));
    EXPECT_EQ(formats, (std::vector<QString>{"5.1", ""}));
    Tools::parseTokens("nothing", '$', &names, &formats);
    EXPECT_TRUE(names.empty());
    EXPECT_TRUE(formats.empty());
}

TEST(ToolsTokenize, leavesEmptyPiecesOut)
{
    EXPECT_EQ(Tools::tokenize(";a;b,,c;", ";,"), (std::vector<QString>{"a", "b", "c"}));
    EXPECT_EQ(Tools::tokenize("a b", ";"), (std::vector<QString>{"a b"}));
    EXPECT_TRUE(Tools::tokenize("", ";").empty());
    EXPECT_TRUE(Tools::tokenize(";;", ";").empty());
}

TEST(ToolsParseRTFAttribute, findsAWholeName)
{
    QString value = QStringLiteral("old");
    EXPECT_TRUE(Tools::parseRTFAttribute("<td mystyle=\"no\" style=\"yes\">", "style", &value));
    EXPECT_EQ(value, "yes");
    EXPECT_FALSE(Tools::parseRTFAttribute("<td mystyle=\"no\">", "style", &value));
    EXPECT_FALSE(Tools::parseRTFAttribute("<td style=\"open", "style", &value));
    EXPECT_EQ(value, "yes");
    EXPECT_TRUE(Tools::parseRTFAttribute("style=\"\"", "style", &value));
    EXPECT_EQ(value, "");
}

TEST(ToolsRotateVector, turnsAboutTheOrigin)
{
    BaVec2d<double> const turned = Tools::rotateVector({2, 1}, M_PI / 2);
    // (x cos + y sin, y cos - x sin)
    EXPECT_NEAR(turned.x, 1.0, 1e-12);
    EXPECT_NEAR(turned.y, -2.0, 1e-12);
    EXPECT_EQ(Tools::rotateVector({2, 1}, 1e-51), BaVec2d<double>(2, 1));
}

TEST(ToolsArrowHead, hasItsTipBetweenTwoBackCorners)
{
    Polygon2d head({{1, 1}}, true);
    BaVec2d<double> base;
    Tools::getArrowHead({10, 10}, {30, 10}, 2.0, M_PI / 6, &head, &base);
    // Corners at 30 degrees to the direction (1, 0): 2 cos 30 = 1.73205, 2 sin 30 = 1; base at 0.95 * 2.
    EXPECT_EQ(Support::text(head), "11.7321,11 10,10 11.7321,9");
    EXPECT_EQ(Support::text(base), "11.9,10");
}

TEST(ToolsArrowHead, ofNoLengthHasItsBaseAtTheTip)
{
    Polygon2d head(true);
    BaVec2d<double> base;
    Tools::getArrowHead({0, 0}, {0, 5}, 0.0, 0.3, &head, &base);
    EXPECT_EQ(Support::text(head), "0,0 0,0 0,0");
    EXPECT_EQ(Support::text(base), "0,0");
}

TEST(ToolsDrawCross, drawsTwoLines)
{
    Support::RecordingPainter painter;
    Tools::drawCross(&painter, {10, 20});
    EXPECT_EQ(painter.transcript(), "line 7.5,20 12.5,20 pen 1 full #000000ff sharp\n"
                                    "line 10,17.5 10,22.5 pen 1 full #000000ff sharp\n");
}

TEST(ToolsPrintFigure, listsTheTree)
{
    Figure figure;
    auto *group = new Group;
    figure.getRoot()->addChild(group);
    auto *line = new Line;
    group->addChild(line);
    std::ostringstream output;

    Tools::printFigure(&figure, output);

    QString const expected = QStringLiteral("ELEMENTS:\n=========\n%1 %2\n    %1 %3\n        %4 %5\n")
                                 .arg(group->getTypeName())
                                 .arg(figure.getRoot()->getId())
                                 .arg(group->getId())
                                 .arg(line->getTypeName())
                                 .arg(line->getId());
    EXPECT_EQ(output.str(), expected.toStdString());
}

} // namespace
} // namespace Zem::Fig2
