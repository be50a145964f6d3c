#include <BlockCrafter.h>
#include <ZemFig2Variable.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

TEST(VariableTypes, haveADisplayNameAndAParameterText)
{
    char const *const displayNames[] = {"INTEGER", "DOUBLE", "STRING",   "IMAGE",
                                        "CHART",   "IMAGE_REFERENCE",    "CHART_REFERENCE",
                                        "GROUP",   "SNAPSHOT", "SNAPSHOT_REFERENCE", "SEPARATOR"};
    char const *const parameterTexts[] = {"integer", "double", "string",   "image",
                                          "chart",   "image_reference",    "chart_reference",
                                          "group",   "snapshot", "snapshot_reference", "separator"};
    for (unsigned int i = 0; i < 11; ++i) {
        EXPECT_EQ(getVariableDisplayName(Variable_t(i)), displayNames[i]);
        EXPECT_EQ(getVariableParameterText(Variable_t(i)), parameterTexts[i]);
    }
    EXPECT_EQ(getVariableDisplayName(Variable_t(11)), "");
    EXPECT_EQ(getVariableParameterText(Variable_t(11)), "");
}

TEST(TokenKey, isEmptyWithoutAName)
{
    EXPECT_TRUE(Token_t().isEmpty());
    EXPECT_TRUE(Token_t("", VARIABLE_CHART).isEmpty());
    Token_t const token("a", VARIABLE_CHART);
    EXPECT_FALSE(token.isEmpty());
    EXPECT_EQ(token.getName(), "a");
    EXPECT_EQ(token.getType(), VARIABLE_CHART);
}

TEST(TokenKey, equalsByNameAndTypeButEmptyNamesAreAllEqual)
{
    EXPECT_EQ(Token_t("a", VARIABLE_IMAGE), Token_t("a", VARIABLE_IMAGE));
    EXPECT_NE(Token_t("a", VARIABLE_IMAGE), Token_t("a", VARIABLE_CHART));
    EXPECT_NE(Token_t("a", VARIABLE_IMAGE), Token_t("A", VARIABLE_IMAGE));
    EXPECT_NE(Token_t("", VARIABLE_IMAGE), Token_t("a", VARIABLE_IMAGE));
    EXPECT_TRUE(Token_t("", VARIABLE_IMAGE) == Token_t("", VARIABLE_CHART));
    EXPECT_FALSE(Token_t("", VARIABLE_IMAGE) != Token_t("", VARIABLE_CHART));
}

TEST(TokenKey, isOrderedByNameThenType)
{
    EXPECT_LT(Token_t("a", VARIABLE_SEPARATOR), Token_t("b", VARIABLE_INTEGER));
    EXPECT_LT(Token_t("B", VARIABLE_SEPARATOR), Token_t("a", VARIABLE_INTEGER));
    EXPECT_LT(Token_t("a", VARIABLE_INTEGER), Token_t("a", VARIABLE_DOUBLE));
    EXPECT_FALSE(Token_t("a", VARIABLE_DOUBLE) < Token_t("a", VARIABLE_DOUBLE));
    EXPECT_LT(Token_t("", VARIABLE_INTEGER), Token_t("", VARIABLE_DOUBLE));
    EXPECT_FALSE(Token_t("", VARIABLE_DOUBLE) < Token_t("", VARIABLE_INTEGER));
}

TEST(TokenCharacters, areLettersNumbersAndSevenOthers)
{
    for (QChar character : QStringLiteral("azAZ09._-+[]\\äΩ¾"))
        EXPECT_TRUE(Token_t::isTokenChar(character)) << static_cast<int>(character.unicode());
    for (QChar character : QStringLiteral(" $/:;,(){}<>\"'=*\n&%#@"))
        EXPECT_FALSE(Token_t::isTokenChar(character)) << static_cast<int>(character.unicode());
}

Token_t loadToken(std::string const &bytes)
{
    Token_t token("before", VARIABLE_GROUP);
    Support::readFrom(bytes, [&token](IO::InStream &stream) { token.load(&stream); });
    return token;
}

std::string tokenBlock(unsigned int version, unsigned int type)
{
    return BlockCrafter().block(version, Payload().s("a").u(type)).bytes();
}

TEST(TokenBlock, hasVersion2WithNameAndType)
{
    std::string const bytes =
        Support::streamOf([](IO::OutStream &stream) { Token_t("a", VARIABLE_SNAPSHOT).save(&stream); });
    EXPECT_EQ(bytes, tokenBlock(2, 8));
    EXPECT_EQ(Support::blocksOf(bytes), "2:9 ");
    EXPECT_EQ(loadToken(bytes), Token_t("a", VARIABLE_SNAPSHOT));
}

TEST(TokenBlock, ofVersion1CountedTypesFromABoolean)
{
    EXPECT_EQ(loadToken(tokenBlock(1, 0)), Token_t("a", VARIABLE_INTEGER));
    EXPECT_EQ(loadToken(tokenBlock(1, 1)), Token_t("a", VARIABLE_INTEGER));
    EXPECT_EQ(loadToken(tokenBlock(1, 2)), Token_t("a", VARIABLE_DOUBLE));
    EXPECT_EQ(loadToken(tokenBlock(1, 11)), Token_t("a", VARIABLE_SEPARATOR));
}

TEST(TokenBlock, thatIsNewerOrDamagedIsRefusedAndChangesNothing)
{
    for (std::string const &bytes : {tokenBlock(3, 1), tokenBlock(0, 1), tokenBlock(2, 11), tokenBlock(1, 12)}) {
        Token_t token("before", VARIABLE_GROUP);
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { token.load(&stream); }),
                     IO::StreamException);
        EXPECT_EQ(token, Token_t("before", VARIABLE_GROUP));
    }
    try {
        loadToken(tokenBlock(3, 1));
    } catch (IO::StreamException const &error) {
        EXPECT_EQ(error.getText(), "cannot load figure token: wrong block version");
    }
}

TEST(TokenParameter, isAVectorOfNameAndType)
{
    EXPECT_EQ(Token_t("force", VARIABLE_CHART_REFERENCE).getParameterString("key").toStdString(),
              "key = [\"force\", \"chart_reference\"]\n");
    EXPECT_EQ(Token_t("force", Variable_t(11)).getParameterString("key").toStdString(), "key = [\"force\", \"\"]\n");
}

Token_t readParameter(char const *value)
{
    Token_t token("before", VARIABLE_GROUP);
    QString parameters = QStringLiteral("key = %1\n").arg(QString::fromUtf8(value));
    token.createFromParameterString(parameters, "key");
    EXPECT_EQ(parameters, "");
    return token;
}

TEST(TokenParameter, readsEachTypeText)
{
    std::pair<char const *, Variable_t> const types[] = {{"integer", VARIABLE_INTEGER},
                                                         {"double", VARIABLE_DOUBLE},
                                                         {"string", VARIABLE_STRING},
                                                         {"image", VARIABLE_IMAGE},
                                                         {"chart", VARIABLE_CHART},
                                                         {"image_reference", VARIABLE_IMAGE_REFERENCE},
                                                         {"chart_reference", VARIABLE_CHART_REFERENCE},
                                                         {"snapshot_reference", VARIABLE_SNAPSHOT_REFERENCE},
                                                         {"group", VARIABLE_GROUP},
                                                         {"separator", VARIABLE_SEPARATOR},
                                                         {"boolean", VARIABLE_STRING},
                                                         {"snapshot", VARIABLE_CHART}};
    for (auto const &[text, type] : types) {
        std::string const value = std::string("[\"a\", \"") + text + "\"]";
        EXPECT_EQ(readParameter(value.c_str()), Token_t("a", type)) << text;
    }
}

TEST(TokenParameter, thatIsMissingChangesNothing)
{
    Token_t token("before", VARIABLE_GROUP);
    QString parameters = QStringLiteral("other = 1\n");
    token.createFromParameterString(parameters, "key");
    EXPECT_EQ(token, Token_t("before", VARIABLE_GROUP));
    EXPECT_EQ(parameters, "other = 1\n");
}

TEST(TokenParameter, withAnEmptyNameKeepsTheTypeAndDoesNotLookAtItsText)
{
    Token_t const token = readParameter("[\"\", \"nonsense\"]");
    EXPECT_EQ(token.getName(), "");
    EXPECT_EQ(token.getType(), VARIABLE_GROUP);
}

TEST(TokenParameter, refusesAnythingButTwoTextsAndAKnownType)
{
    auto const textFor = [](char const *value) {
        try {
            readParameter(value);
        } catch (ParamError const &error) {
            return error.getText() + QStringLiteral(" %1").arg(error.getPosition());
        }
        return QString();
    };
    EXPECT_EQ(textFor("[\"a\"]"), "wrong token parameter format for 'key' -1");
    EXPECT_EQ(textFor("[]"), "wrong token parameter format for 'key' -1");
    EXPECT_EQ(textFor("[\"a\", \"chart\", \"b\"]"), "wrong token parameter format for 'key' -1");
    EXPECT_EQ(textFor("[\"a\", \"Chart\"]"), "unknown token type 'Chart' in parameter 'key' -1");
    EXPECT_EQ(textFor("[\"a\", \"\"]"), "unknown token type '' in parameter 'key' -1");
}

} // namespace
} // namespace Zem::Fig2
