// Damaged registries and containers load or are refused, in memory that goes with their bytes; what was loaded can be
// copied and saved.
#include "block_damage.h"
#include "data_interface_fixture.h"
#include "load_limit.h"
#include "token_container_fixture.h"

#include <AllocationPeak.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

constexpr unsigned int TOO_MANY = 4294967295U;

ImageColor smallPicture()
{
    ImageColor picture(3, 2);
    picture.setPixel(1, 1, Color(1, 2, 3));
    return picture;
}

/// A registry with a token of each type.
std::string registryBytes()
{
    DataInterface registry;
    registry.setInt("a", 5);
    registry.setDouble("b", 2.5, UnitData(uForce));
    registry.setString("c", "text");
    registry.setImage("d", new Image8(2, 1), new ImageColor(smallPicture()), new ImageData);
    registry.setChart("e", chartWith("x"));
    registry.setSnapshot("f", snapshotWith(3));
    registry.setImageReference("g");
    registry.setGroup("h");
    registry.setDisplayText({"a", VARIABLE_INTEGER}, "text");
    registry.setDefaultFormat({"b", VARIABLE_DOUBLE}, "5.1");
    return Support::streamOf([&](IO::OutStream &stream) { registry.save(&stream, -1, -1); });
}

/// A container with a token of each kind.
std::string containerBytes()
{
    ImageColor const picture = smallPicture();
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("t[1]"), Value(QString("value")));
    auto *data = imageWith(&picture, &picture);
    auto *object = new ImageDataObject("o");
    object->setTokenContainer(new TokenContainer);
    data->addObject(object);
    tokens.setValue(imageInfo("i"), data, true);
    tokens.setValue(chartInfo("c"), chartWith("x"));
    tokens.setValue(snapshotInfo("s"), snapshotWith(3));
    tokens.setValue({TokenInfo::TYPE_GROUP, "g", "group"}, Value(5));
    return blocksWith(tokens);
}

void saveAll(DataInterface const &registry)
{
    Support::streamOf([&](IO::OutStream &stream) { registry.save(&stream, -1, -1); });
    registry.toString();
}

void saveAll(FigureTokenContainer const &tokens)
{
    blocksWith(tokens);
}

void loadAll(DataInterface &registry, IO::InStream &stream)
{
    registry.load(&stream, -1, -1);
}

void loadAll(FigureTokenContainer &tokens, IO::InStream &stream)
{
    tokens.load(&stream);
}

/// False when the bytes are refused. Whatever they claim, loading keeps to its limit.
template <class Tokens>
bool loads(std::string const &bytes)
{
    std::istringstream input(bytes);
    Tokens tokens;
    {
        Support::AllocationPeak const peak;
        bool isRefused = false;
        try {
            IO::InStream stream(&input);
            loadAll(tokens, stream);
        } catch (IO::StreamException const &) {
            isRefused = true;
        } catch (ProgError const &error) { // a picture of something else
            EXPECT_TRUE(error.getText().contains("Wrong entry type for adding")) << error.what();
            isRefused = true;
        }
        EXPECT_LE(peak.bytes(), loadLimit(bytes.size()));
        if (isRefused)
            return false;
    }
    Tokens const copied(tokens);
    saveAll(copied);
    saveAll(tokens);
    return true;
}

template <class Tokens>
void expectTruncationsToBeRefused(std::string const &bytes)
{
    ASSERT_TRUE(loads<Tokens>(bytes));
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(loads<Tokens>(bytes.substr(0, length))) << length;
}

template <class Tokens>
int countLoadsOfMutations(std::string const &bytes, int count)
{
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    std::mt19937 random(20240611);
    int loaded = 0;
    for (int i = 0; i < count; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        loaded += loads<Tokens>(damaged) ? 1 : 0;
    }
    return loaded;
}

TEST(DamagedRegistry, isRefusedAfterEveryTruncation)
{
    expectTruncationsToBeRefused<DataInterface>(registryBytes());
}

TEST(DamagedRegistry, loadsOrIsRefusedAfterAnyMutationWithARightChecksum)
{
    int const loaded = countLoadsOfMutations<DataInterface>(registryBytes(), 5000);
    EXPECT_GT(loaded, 500);
    EXPECT_LT(loaded, 4500);
}

TEST(DamagedContainer, isRefusedAfterEveryTruncation)
{
    expectTruncationsToBeRefused<FigureTokenContainer>(containerBytes());
}

TEST(DamagedContainer, loadsOrIsRefusedAfterAnyMutationWithARightChecksum)
{
    int const loaded = countLoadsOfMutations<FigureTokenContainer>(containerBytes(), 5000);
    EXPECT_GT(loaded, 500);
    EXPECT_LT(loaded, 4500);
}

template <class Tokens>
std::size_t peakOf(std::string const &bytes)
{
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    Tokens tokens;
    Support::AllocationPeak const peak;
    Support::thrownText<IO::StreamException>([&] { loadAll(tokens, stream); });
    return peak.bytes();
}

TEST(TokenMemory, isNotTakenForWhatABlockOnlyClaims)
{
    EXPECT_LE(peakOf<DataInterface>(BlockCrafter().block(1, Payload().u(TOO_MANY)).bytes()), 100000U);
    for (unsigned int place = 0; place < 4; ++place) {
        Payload counts;
        for (unsigned int i = 0; i < 4; ++i)
            counts.u(i == place ? TOO_MANY : 0);
        EXPECT_LE(peakOf<FigureTokenContainer>(BlockCrafter().block(3, counts).bytes()), 100000U) << place;
    }
    BlockCrafter sources;
    sources.block(3, Payload().u(0).u(1).u(0).u(0).s("t")).block(2, Payload().b(true).u(TOO_MANY));
    EXPECT_LE(peakOf<FigureTokenContainer>(sources.bytes()), 100000U);
}

TEST(TokenMemory, ofManyTokensIsASmallMultipleOfTheirBytes)
{
    DataInterface registry;
    FigureTokenContainer tokens;
    for (int i = 0; i < 20000; ++i) {
        QString const name = QString::number(i);
        registry.setInt(name, i);
        tokens.setValue({TokenInfo::TYPE_INTEGER, name, name}, Value(i));
    }
    std::string const registered = Support::streamOf([&](IO::OutStream &stream) { registry.save(&stream, -1, -1); });
    EXPECT_LE(peakOf<DataInterface>(registered), loadLimit(registered.size()));
    std::string const frozen = blocksWith(tokens);
    EXPECT_LE(peakOf<FigureTokenContainer>(frozen), loadLimit(frozen.size()));
}

} // namespace
} // namespace Zem::Fig2
