// The data tokens of charts and their forms.
#include <ElementForms.h>
#include <ZemFig2ChartInterface.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using DataToken = ChartInterface::DataToken;
using Groups = std::vector<QString>;
using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

DataToken filled()
{
    DataToken token("force", Groups{"machine", "cell 1"});
    token.setCategory(TokenInfo::CATEGORY_SENSOR);
    return token;
}

DataToken tokenOf(char const *name, TokenInfo::Category_t category, Groups const &groups)
{
    DataToken token(name, groups);
    token.setCategory(category);
    return token;
}

std::string sensor()
{
    return TokenInfo::getCategoryTypeName(TokenInfo::CATEGORY_SENSOR).toStdString();
}

/// The token behind which another block stands.
DataToken load(BlockCrafter crafter, DataToken token = filled())
{
    crafter.block(1, Payload().u(77));
    Support::readFrom(crafter.bytes(), [&token](IO::InStream &stream) {
        token.load(&stream);
        unsigned int next = 0;
        stream.openBlock();
        stream.readUInt(&next);
        stream.closeBlock();
        EXPECT_EQ(next, 77U);
    });
    return token;
}

TEST(DataToken, isEmptyWithoutAName)
{
    EXPECT_TRUE(DataToken().isEmpty());
    EXPECT_TRUE(DataToken("", QString("machine")).isEmpty());
    EXPECT_FALSE(DataToken("force").isEmpty());
    EXPECT_EQ(DataToken().getCategory(), TokenInfo::CATEGORY_UNDEFINED);
}

TEST(DataToken, hasNoGroupOneOrMany)
{
    EXPECT_EQ(DataToken("force").getGroups(), Groups());
    EXPECT_EQ(DataToken("force", QString("machine")).getGroups(), Groups{"machine"});
    EXPECT_EQ(filled().getGroups(), (Groups{"machine", "cell 1"}));
}

TEST(DataToken, takesNameAndGroupsTogether)
{
    DataToken token = filled();

    token.setParams("way", {"crosshead"});

    EXPECT_EQ(token, tokenOf("way", TokenInfo::CATEGORY_SENSOR, {"crosshead"}));
}

TEST(DataToken, differsInEachOfItsThreeParts)
{
    DataToken name = filled();
    name.setName("way");
    DataToken groups = filled();
    groups.setGroups({"machine"});
    DataToken category = filled();
    category.setCategory(TokenInfo::CATEGORY_FILE);

    EXPECT_EQ(filled(), filled());
    for (DataToken const &other : {name, groups, category})
        EXPECT_FALSE(other == filled());
}

TEST(DataToken, isOrderedByNameCategoryAndNumberOfGroups)
{
    DataToken const ascending[] = {
        tokenOf("a", TokenInfo::CATEGORY_STAGE, {"x", "x"}), tokenOf("b", TokenInfo::CATEGORY_PROJECT, {"x", "x"}),
        tokenOf("b", TokenInfo::CATEGORY_STAGE, {"x"}), tokenOf("b", TokenInfo::CATEGORY_STAGE, {"a", "a"})};
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j)
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
    }
}

TEST(DataToken, isLessEitherWayWhenOnlyGroupsDiffer)
{
    DataToken const one("a", Groups{"x", "y"});
    DataToken const other("a", Groups{"x", "z"});

    EXPECT_TRUE(one < other);
    EXPECT_TRUE(other < one);
}

TEST(DataTokenBlock, comesBack)
{
    EXPECT_EQ(load(BlockCrafter().add([](IO::OutStream &stream) { filled().save(&stream); }), DataToken()), filled());
    EXPECT_EQ(load(BlockCrafter().add([](IO::OutStream &stream) { DataToken().save(&stream); })), DataToken());
}

TEST(DataTokenBlock, hasVersion5AndTheSizeOfItsTexts)
{
    // Each text has 4 bytes for its length; "force" + category + count + "machine" + "cell 1".
    std::size_t const size = 9 + 4 + sensor().size() + 4 + 11 + 10;

    EXPECT_EQ(Support::blocksOf(Support::streamOf([](IO::OutStream &stream) { filled().save(&stream); })),
              "5:" + std::to_string(size) + " ");
}

TEST(DataTokenBlock, ofVersion5HoldsItsFieldsInOrder)
{
    Payload const fields = Payload().s("force").s(sensor()).u(2).s("machine").s("cell 1");

    EXPECT_EQ(load(BlockCrafter().block(5, fields), DataToken()), filled());
}

TEST(DataTokenBlock, ofVersion4HadNoCategory)
{
    Payload const fields = Payload().s("force").u(2).s("machine").s("cell 1");

    EXPECT_EQ(load(BlockCrafter().block(4, fields)), DataToken("force", Groups{"machine", "cell 1"}));
}

TEST(DataTokenBlock, ofVersion3HadOneGroup)
{
    Payload const fields = Payload().s("force").s("machine");

    EXPECT_EQ(load(BlockCrafter().block(3, fields)), DataToken("force", QString("machine")));
}

TEST(DataTokenBlock, ofVersion2HadNoGroup)
{
    EXPECT_EQ(load(BlockCrafter().block(2, Payload().s("force"))), DataToken("force"));
}

TEST(DataTokenBlock, ofVersion1HadATextAndAUnit)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().s("force").s("old"));
    crafter.add([](IO::OutStream &stream) { UnitData(uForce).save(&stream); });

    EXPECT_EQ(load(crafter), DataToken("force"));
}

TEST(DataTokenBlock, ofANewerVersionIsRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([] { load(BlockCrafter().block(6, Payload())); }),
              "cannot load figure generic chart data token: wrong block version");
}

TEST(DataTokenBlock, withMoreGroupsThanItHoldsChangesNothing)
{
    std::string const bytes =
        BlockCrafter().block(5, Payload().s("way").s(sensor()).u(4294967295U).s("machine")).bytes();
    DataToken token = filled();

    Support::readFrom(bytes, [&token](IO::InStream &stream) {
        EXPECT_EQ(thrownText<IO::StreamException>([&] { token.load(&stream); }).substr(0, 45),
                  "cannot load figure generic chart data token: ");
    });

    EXPECT_EQ(token, filled());
}

std::string textOf(DataToken const &token)
{
    std::ostringstream stream;
    stream << token;
    return stream.str();
}

/// The token and whether the stream is still good.
std::pair<DataToken, bool> parsed(std::string const &text)
{
    std::istringstream stream(text);
    DataToken token = filled();
    bool const good = static_cast<bool>(stream >> token);
    return {token, good};
}

TEST(DataTokenText, beginsWithItsVersion)
{
    DataToken token("force", QString("machine"));
    token.setCategory(TokenInfo::CATEGORY_SENSOR);

    EXPECT_EQ(textOf(token), "5 force " + sensor() + " 1 machine ");
}

TEST(DataTokenText, comesBack)
{
    std::istringstream stream(textOf(filled()) + "next");
    DataToken token;
    std::string next;

    stream >> token >> next;

    EXPECT_EQ(token, filled());
    EXPECT_EQ(next, "next");
}

TEST(DataTokenText, ofOlderVersionsIsRead)
{
    EXPECT_EQ(parsed("4 force 2 machine cell "), std::pair(DataToken("force", Groups{"machine", "cell"}), true));
    EXPECT_EQ(parsed("3 force machine "), std::pair(DataToken("force", QString("machine")), true));
    EXPECT_EQ(parsed("2 force "), std::pair(DataToken("force"), true));
    EXPECT_EQ(parsed("1 force old force N "), std::pair(DataToken("force"), true));
}

TEST(DataTokenText, ofANewerVersionIsRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([] { parsed("6 force "); }), "wrong block version");
}

TEST(DataTokenText, thatIsDamagedChangesNothing)
{
    for (char const *text : {"", "x", "5", "5 way", "5 way Sensor", "5 way Sensor 4294967295 machine", "5 way Sensor x",
                             "3 way", "1 way old nothing N"})
        EXPECT_EQ(parsed(text), std::pair(filled(), false)) << text;
}

TEST(DataTokenParameters, comeBackUnderAnyPrefix)
{
    for (QString const &prefix : {QString(), QStringLiteral("token_0")}) {
        QString parameters = filled().getParameterString(prefix);
        DataToken token;

        token.createFromParameterString(parameters, prefix);

        EXPECT_EQ(token, filled());
        EXPECT_EQ(parameters, QString());
    }
}

TEST(DataTokenParameters, areNameGroupsAndCategory)
{
    std::vector<QString> const groups{"machine", "cell 1"};

    EXPECT_EQ(filled().getParameterString("y"),
              Parse::createString("y_name", "force") + Parse::createStringVector("y_groups", groups) +
                  Parse::createString("y_category", QString::fromStdString(sensor())));
}

TEST(DataTokenParameters, thatAreAbsentLeaveTheTokenAlone)
{
    QString parameters;
    DataToken token = filled();

    token.createFromParameterString(parameters, "y");

    EXPECT_EQ(token, filled());
}

TEST(DataTokenParameters, ofOlderReleasesNameOneGroup)
{
    QString parameters = Parse::createString("group", "cell");
    DataToken token = filled();

    token.createFromParameterString(parameters, QString());

    EXPECT_EQ(token.getGroups(), Groups{"cell"});
    EXPECT_EQ(parameters, QString());
}

TEST(DataTokenParameters, withAnUnknownCategoryHaveNone)
{
    QString parameters = Parse::createString("category", "no such");
    DataToken token = filled();

    token.createFromParameterString(parameters, QString());

    EXPECT_EQ(token.getCategory(), TokenInfo::CATEGORY_UNDEFINED);
}

} // namespace
} // namespace Zem::Fig2
