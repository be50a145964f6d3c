#include "token_streams.h"

#include <ZemIdentifiers.h>
#include <ZemTokenInfo.h>
#include <ZemTokenTools.h>

#include <gtest/gtest.h>

#include <set>

using namespace Zem;
using namespace Zem::Test;

namespace {

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

} // namespace

TEST(TokenDescription, hasTheNumbersThatFilesRelyOn)
{
    EXPECT_EQ(static_cast<int>(TokenInfo::TYPE_STRING), 0);
    EXPECT_EQ(static_cast<int>(TokenInfo::TYPE_INTEGER), 1);
    EXPECT_EQ(static_cast<int>(TokenInfo::TYPE_IMAGE), 11);
    EXPECT_EQ(static_cast<int>(TokenInfo::TYPE_CHART), 16);
    EXPECT_EQ(static_cast<int>(TokenInfo::TYPE_SNAPSHOT), 17);
    EXPECT_EQ(static_cast<int>(TokenInfo::TYPE_QUANTITY), 22);
    EXPECT_EQ(static_cast<int>(TokenInfo::CATEGORY_UNIT), 8);
    EXPECT_EQ(static_cast<int>(TokenInfo::CATEGORY_UNDEFINED), 26);
}

TEST(TokenDescription, isAStringWithoutANameByDefault)
{
    TokenInfo const info;
    EXPECT_EQ(info.getCategory(), TokenInfo::CATEGORY_GENERAL);
    EXPECT_EQ(info.getType(), TokenInfo::TYPE_STRING);
    EXPECT_TRUE(info.getName().isEmpty());
    EXPECT_EQ(info, TokenInfo(TokenInfo::TYPE_STRING, QString(), QString()));
}

TEST(TokenDescription, tellsEachCategoryByAWordOfItsOwn)
{
    std::set<QString> words;
    for (int i = 0; i <= 26; ++i) {
        auto const category = static_cast<TokenInfo::Category_t>(i);
        QString const word = TokenInfo::getCategoryTypeName(category);
        EXPECT_EQ(TokenInfo::getCategoryByTypeName(word), category);
        words.insert(word);
    }
    EXPECT_EQ(words.size(), 27u);
    EXPECT_EQ(TokenInfo::getCategoryByTypeName(q("nonsense")), TokenInfo::CATEGORY_UNDEFINED);
    EXPECT_EQ(TokenInfo::getCategoryTypeName(static_cast<TokenInfo::Category_t>(27)), q("undefined"));
    EXPECT_EQ(TokenInfo::getCategoryTypeName(TokenInfo::CATEGORY_UNIT), q("unit"));
}

TEST(TokenDescription, offersTheSelectionOfAnElement)
{
    EXPECT_EQ(TokenInfo::getSelectedInfo().getName(), q("Zem_Selected"));
    EXPECT_EQ(TokenInfo::getSelectedInfo().getType(), TokenInfo::TYPE_BOOLEAN);
    EXPECT_TRUE(TokenInfo::getSelectedValue(true).getBool());
    EXPECT_FALSE(TokenInfo::getSelectedValue(false).getBool());
}

TEST(TokenDescription, isKeptByAStream)
{
    TokenInfo const info(TokenInfo::CATEGORY_STRAIN, TokenInfo::TYPE_QUANTITY, q("a.b"), q("Größe"));
    EXPECT_EQ(throughStream(info), info);
}

TEST(TokenDescription, refusesUnknownKindsInAStream)
{
    for (auto const &[category, type] : {std::pair(27u, 0u), std::pair(0u, 23u)}) {
        std::string const bytes = savedBytes([category = category, type = type](IO::OutStream *stream) {
            stream->beginBlock(16, 1);
            stream->writeUInt(category);
            stream->writeUInt(type);
            stream->writeString(QString());
            stream->writeString(QString());
            stream->endBlock();
        });
        TokenInfo info(TokenInfo::TYPE_CHART, q("old"), q("old"));
        TokenInfo const before = info;
        EXPECT_THROW(loadFrom(bytes, &info), IO::StreamException);
        EXPECT_EQ(info, before);
    }
}

TEST(TokenTypeOfAUnit, fitsTheQuantity)
{
    EXPECT_EQ(TokenTools::getTokenType(nullptr), TokenInfo::TYPE_DOUBLE);
    EXPECT_EQ(TokenTools::getTokenType(uLength), TokenInfo::TYPE_LENGTH);
    EXPECT_EQ(TokenTools::getTokenType(uForce), TokenInfo::TYPE_FORCE);
    EXPECT_EQ(TokenTools::getTokenType(uMass), TokenInfo::TYPE_QUANTITY);
}

TEST(Identifiers, compareByTheirNumber)
{
    EXPECT_EQ(StageIdentifier(), StageIdentifier::NO_STAGE);
    EXPECT_FALSE(StageIdentifier(0) == StageIdentifier::NO_STAGE);
    EXPECT_LT(StageIdentifier(1), StageIdentifier(2));
    StageIdentifier stage;
    stage.setIdentifier(5);
    EXPECT_EQ(stage.getIdentifier(), 5u);
    EXPECT_EQ(IndexIdentifier(), IndexIdentifier::NO_INDEX);
    EXPECT_NE(IndexIdentifier(0), IndexIdentifier::NO_INDEX);
}
