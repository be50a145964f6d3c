#include "token_streams.h"

#include <ZemTokenContainer.h>
#include <ZemTokenFilter.h>

#include <gtest/gtest.h>

#include <random>

using namespace Zem;
using namespace Zem::Test;

namespace {

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

TokenInfo integer(char const *name)
{
    return TokenInfo(TokenInfo::TYPE_INTEGER, q(name), q("text of ") + q(name));
}

Value plain(TokenInterface const &source, char const *name)
{
    return source.getValue(q(name), IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE);
}

QStringList names(TokenInterface const &source)
{
    std::vector<TokenInfo> infos;
    source.getTokens(&infos);
    QStringList list;
    for (TokenInfo const &info : infos) {
        list += info.getName();
    }
    return list;
}

/// Tells the stage it is asked for, and offers a name that is no token.
class StageSource : public TokenInterface
{
public:
    void getTokens(std::vector<TokenInfo> *tokens) const override
    {
        *tokens = {integer("stage"), integer("no token"), integer("other"), integer("list[1]")};
    }
    Value getValue(QString, IndexIdentifier const &, StageIdentifier const &stage) const override
    {
        return Value(static_cast<int>(stage.getIdentifier()));
    }
};

struct Block
{
    unsigned int version = 0;
    std::string payload;
};

std::vector<Block> blocksOf(std::string const &bytes, std::size_t count)
{
    std::istringstream source(bytes);
    IO::InStream stream(&source);
    std::vector<Block> blocks(count);
    for (Block &block : blocks) {
        stream.openBlock();
        block.version = stream.getBlockVersion();
        block.payload.resize(stream.getBytesLeft());
        stream.readData(block.payload.data(), stream.getBytesLeft());
        stream.closeBlock();
    }
    return blocks;
}

std::string bytesOf(std::vector<Block> const &blocks)
{
    return savedBytes([&](IO::OutStream *stream) {
        for (Block const &block : blocks) {
            auto const size = static_cast<unsigned int>(block.payload.size());
            stream->beginBlock(size, block.version);
            stream->writeData(block.payload.data(), size);
            stream->endBlock();
        }
    });
}

class OtherFilter : public TokenFilter
{
public:
    bool isFilteredOut(TokenInfo const &info) const override { return info.getName() == q("other"); }
};

struct Split
{
    bool good;
    QString name;
    QString index;
    bool operator==(Split const &) const = default;
};

Split split(char const *text)
{
    QString name = q("-");
    QString index = q("-");
    bool const good = TokenInterface::parseToken(q(text), &name, &index);
    return {good, name, index};
}

} // namespace

TEST(TokenText, isANameWithOrWithoutAnIndex)
{
    EXPECT_EQ(split("part.length"), (Split{true, q("part.length"), q("")}));
    EXPECT_EQ(split("part[3]"), (Split{true, q("part"), q("3")}));
    EXPECT_EQ(split("a_b-c+d\\e"), (Split{true, q("a_b-c+d\\e"), q("")}));
    EXPECT_EQ(split("Größe[upper left]"), (Split{true, q("Größe"), q("upper left")}));
}

TEST(TokenText, isNothingElse)
{
    for (char const *bad :
         {"", " ", "a b", "a/b", "[1]", "a[]", "a[", "a]", "a[1", "a[1]b", "a[1][2]", "a[[1]]", "a$"}) {
        EXPECT_EQ(split(bad), (Split{false, q("-"), q("-")})) << bad;
    }
}

TEST(TokenText, maySplitIntoItself)
{
    QString text = q("part[3]");
    QString index;
    EXPECT_TRUE(TokenInterface::parseToken(text, &text, &index));
    EXPECT_EQ(text, q("part"));
    EXPECT_EQ(index, q("3"));
    EXPECT_TRUE(TokenInterface::parseToken(text, nullptr, nullptr));
}

TEST(TokenInterfaceBase, hasNoCounterAndNoLog)
{
    StageSource const source;
    EXPECT_EQ(source.getModifiedCounter(q("stage")), 0u);
    EXPECT_TRUE(source.getTokenChangeLog().empty());
}

TEST(TokenContainer, tellsAMissingTokenFromAMissingIndex)
{
    TokenContainer container;
    container.setValue(integer("a"), Value(5));
    EXPECT_EQ(plain(container, "a"), Value(5));
    EXPECT_EQ(plain(container, "b"), Value::UNKNOWN);
    EXPECT_EQ(container.getValue(q("a"), IndexIdentifier(0), StageIdentifier(1)), Value::INVALID);
    EXPECT_EQ(container.getValue(q("a"), IndexIdentifier::NO_INDEX, StageIdentifier(1)), Value(5));
}

TEST(TokenContainer, offersTokensInTheOrderOfTheirFirstValue)
{
    TokenContainer container;
    container.setValue(integer("b"), Value(1));
    container.setValue(integer("a"), Value(2));
    container.setValue(integer("b"), Value(3));
    EXPECT_EQ(names(container), (QStringList{q("b"), q("a")}));
    EXPECT_EQ(plain(container, "b"), Value(3));
}

TEST(TokenContainer, addressesATokenByItsBareName)
{
    TokenContainer container;
    container.setValue(integer("a[1]"), Value(1));
    container.setValue(integer("a"), Value(2));
    EXPECT_EQ(names(container), QStringList{q("a")});
    EXPECT_EQ(plain(container, "a"), Value(2));
}

TEST(TokenContainer, countsOnlyRealChanges)
{
    TokenContainer container;
    EXPECT_EQ(container.getModifiedCounter(q("a")), 0u);
    container.setValue(integer("a"), Value(1));
    EXPECT_EQ(container.getModifiedCounter(q("a")), 1u);
    container.setValue(integer("a"), Value(1));
    EXPECT_EQ(container.getModifiedCounter(q("a")), 1u);
    container.setValue(integer("a"), Value(2));
    EXPECT_EQ(container.getModifiedCounter(q("a")), 2u);
}

TEST(TokenContainer, refusesANameThatIsNoToken)
{
    TokenContainer container;
    EXPECT_THROW(container.setValue(integer("no token"), Value(1)), ProgError);
    EXPECT_TRUE(names(container).isEmpty());
}

TEST(TokenContainer, takesOverWhatTheFilterPassesAtAStage)
{
    StageSource const source;
    TokenContainer const all(&source, TokenAllPassFilter(), StageIdentifier(7));
    EXPECT_EQ(names(all), (QStringList{q("stage"), q("other"), q("list[1]")}));
    EXPECT_EQ(plain(all, "stage"), Value(7));

    TokenContainer const some(&source, OtherFilter(), StageIdentifier(7));
    EXPECT_EQ(names(some), (QStringList{q("stage"), q("list[1]")}));
}

TEST(TokenContainer, isCopiedByValue)
{
    TokenContainer container;
    container.setValue(integer("a"), Value(1));
    TokenContainer copy(container);
    copy.setValue(integer("a"), Value(2));
    EXPECT_EQ(plain(container, "a"), Value(1));
    EXPECT_EQ(plain(copy, "a"), Value(2));
}

TEST(TokenContainerInAStream, keepsItsTokens)
{
    TokenContainer container;
    container.setValue(integer("b"), Value(1));
    container.setValue(TokenInfo(TokenInfo::TYPE_FORCE, q("a"), q("force")), Value(2.5, uForce));
    TokenContainer const read = throughStream(container);
    EXPECT_EQ(names(read), names(container));
    EXPECT_EQ(plain(read, "b"), Value(1));
    EXPECT_EQ(plain(read, "a"), Value(2.5, uForce));
}

TEST(TokenContainerInAStream, replacesAllTokensAndCountsTheChanges)
{
    TokenContainer stored;
    stored.setValue(integer("same"), Value(1));
    stored.setValue(integer("changed"), Value(2));
    TokenContainer container;
    container.setValue(integer("gone"), Value(0));
    container.setValue(integer("same"), Value(1));
    container.setValue(integer("changed"), Value(1));
    loadFrom(savedBytes([&](IO::OutStream *stream) { stored.save(stream); }), &container);
    EXPECT_EQ(names(container), (QStringList{q("same"), q("changed")}));
    EXPECT_EQ(container.getModifiedCounter(q("same")), 1u);
    EXPECT_EQ(container.getModifiedCounter(q("changed")), 2u);
}

TEST(TokenContainerInAStream, staysAsItWasWhenTheStreamIsBad)
{
    TokenContainer stored;
    stored.setValue(integer("a"), Value(1));
    std::string const bytes = savedBytes([&](IO::OutStream *stream) { stored.save(stream); });
    TokenContainer container;
    container.setValue(integer("old"), Value(0));
    for (std::size_t size = 64; size < bytes.size(); ++size) {
        EXPECT_THROW(loadFrom(bytes.substr(0, size), &container), IO::StreamException) << size;
    }
    EXPECT_EQ(names(container), QStringList{q("old")});
}

TEST(TokenContainerInAStream, refusesANameThatIsNoTokenAndAWrongCount)
{
    TokenContainer container;
    std::string const badName = savedBytes([](IO::OutStream *stream) {
        stream->beginBlock(4, 1);
        stream->writeUInt(1);
        stream->endBlock();
        integer("no token").save(stream);
        Value(1).save(stream);
    });
    EXPECT_THROW(loadFrom(badName, &container), IO::StreamException);
    std::string const badCount = savedBytes([](IO::OutStream *stream) {
        stream->beginBlock(4, 1);
        stream->writeUInt(4294967295u);
        stream->endBlock();
    });
    EXPECT_THROW(loadFrom(badCount, &container), IO::StreamException);
}

TEST(TokenContainerInAStream, loadsOrThrowsWhateverStandsInItsBlocks)
{
    TokenContainer stored;
    stored.setValue(integer("a"), Value(1.5, uForce));
    stored.setValue(integer("b"), Value::fromDateTime(QDateTime(QDate(2024, 1, 2), QTime(3, 4), Qt::UTC)));
    stored.setValue(integer("c"), Value::fromFormattedText(FormattedText(q("x"))));
    std::string const bytes = savedBytes([&](IO::OutStream *stream) { stored.save(stream); });
    std::vector<Block> const blocks = blocksOf(bytes, 9); // the count, 3 x info and value, a unit, a text
    std::mt19937 random(5);
    int loaded = 0;
    for (int i = 0; i < 4000; ++i) {
        std::vector<Block> damaged = blocks;
        std::string &payload = damaged[random() % damaged.size()].payload;
        payload[random() % payload.size()] = static_cast<char>(random() & 0xff);
        TokenContainer container;
        try {
            loadFrom(bytesOf(damaged), &container);
            ++loaded;
        } catch (IO::StreamException const &) {
            EXPECT_TRUE(names(container).isEmpty());
        }
    }
    EXPECT_GT(loaded, 0);
    EXPECT_LT(loaded, 4000);
}
