// The registry of a figure's own tokens: values, descriptions, sub-interfaces and its stream form.
#include "data_interface_fixture.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

unsigned int counterOf(DataInterface const &registry, char const *name, Variable_t type)
{
    return registry.getModifiedCounter({QString::fromLatin1(name), type});
}

/// What the registry throws for an integer "a" that it does not have.
std::string missingText()
{
    QString const token = Token_t("a", VARIABLE_INTEGER).getParameterString("token");
    return "fig_data_interface: Token not registered: " + token.toStdString();
}

TEST(SystemTokens, haveAPatternForTheirNames)
{
    EXPECT_EQ(DataInterface::SYSTEM_TOKEN_TEMPLATE, QLatin1StringView("Zem_Fig2_SystemToken_%1"));
    EXPECT_EQ(DataInterface::MERGE_KEEP_REFERENCE, 0U);
    EXPECT_EQ(DataInterface::MERGE_RESOLVE_REFERENCE, 1U);
}

TEST(DataInterface, startsEmpty)
{
    DataInterface const registry;
    EXPECT_EQ(registry.getTokenBegin(), registry.getTokenEnd());
    EXPECT_EQ(registry.getSubDataBegin(), registry.getSubDataEnd());
    EXPECT_EQ(registry.toString(), "");
}

TEST(DataInterface, keepsTheSameNameOncePerType)
{
    DataInterface registry;
    registry.setString("a", "text");
    registry.setInt("a", 5);
    registry.setDouble("a", 2.5, uForce);
    registry.setInt("A", 1);
    EXPECT_EQ(contentOf(registry), "A integer 0, a integer 0, a double 0, a string 0, ");
    EXPECT_EQ(registry.getInt("a"), 5);
    EXPECT_EQ(registry.getInt("A"), 1);
    EXPECT_EQ(registry.getString("a"), "text");
    UnitData unit;
    EXPECT_EQ(registry.getDouble("a", &unit), 2.5);
    EXPECT_EQ(unit, UnitData(uForce));
    EXPECT_EQ(registry.getDouble("a", nullptr), 2.5);
}

TEST(DataInterface, countsAValueOnlyWhenItDiffers)
{
    DataInterface registry;
    registry.setInt("a", 5);
    registry.setInt("a", 5);
    EXPECT_EQ(counterOf(registry, "a", VARIABLE_INTEGER), 0U);
    registry.setInt("a", 6);
    EXPECT_EQ(counterOf(registry, "a", VARIABLE_INTEGER), 1U);
    EXPECT_EQ(registry.getInt("a"), 6);

    registry.setString("a", "x");
    registry.setString("a", "x");
    EXPECT_EQ(counterOf(registry, "a", VARIABLE_STRING), 0U);
    registry.setString("a", "y");
    EXPECT_EQ(counterOf(registry, "a", VARIABLE_STRING), 1U);
    EXPECT_EQ(registry.getString("a"), "y");
}

TEST(DataInterface, countsADoubleForItsValueAndForItsUnit)
{
    Unit::Units_t centimetre{};
    ASSERT_TRUE(uLength->parseUnit("cm", &centimetre));
    DataInterface registry;
    auto const counter = [&] { return counterOf(registry, "a", VARIABLE_DOUBLE); };
    registry.setDouble("a", 2.5, UnitData(uLength));
    registry.setDouble("a", 2.5, uLength);
    EXPECT_EQ(counter(), 0U);
    registry.setDouble("a", 3.5, UnitData(uLength));
    EXPECT_EQ(counter(), 1U);
    registry.setDouble("a", 3.5, UnitData(uLength, centimetre));
    EXPECT_EQ(counter(), 2U);
    registry.setDouble("a", 3.5, static_cast<Unit const *>(nullptr));
    EXPECT_EQ(counter(), 3U);
    UnitData unit(uForce);
    EXPECT_EQ(registry.getDouble("a", &unit), 3.5);
    EXPECT_FALSE(unit.hasUnit());
}

TEST(DataInterface, countsEveryNewDescription)
{
    DataInterface registry;
    registry.setInt("a", 5);
    Token_t const token("a", VARIABLE_INTEGER);
    for (int i = 0; i < 2; ++i) {
        registry.setDisplayText(token, "text");
        registry.setSortIndex(token, 3);
        registry.setGroupToken(token, "group");
        registry.setDefaultFormat(token, "5.1");
        registry.setIconId(token, "icon");
        registry.setTypeHint(token, "hint");
        registry.setModified(token);
        EXPECT_EQ(registry.getModifiedCounter(token), 7U * static_cast<unsigned int>(i + 1));
    }
    EXPECT_EQ(registry.getDisplayText(token), "text");
    EXPECT_EQ(registry.getSortIndex(token), 3);
    EXPECT_EQ(registry.getGroupToken(token), "group");
    EXPECT_EQ(registry.getTypeHint(token), "hint");
    EXPECT_EQ(registry.getTokenBegin()->second->defaultFormat, "5.1");
    EXPECT_EQ(registry.getTokenBegin()->second->iconId, "icon");
}

TEST(DataInterface, countsTokensWithoutAValueEachTime)
{
    DataInterface registry;
    for (int i = 0; i < 2; ++i) {
        registry.setImageReference("a");
        registry.setChartReference("a");
        registry.setSnapshotReference("a");
        registry.setGroup("a");
        registry.setSeparator("a");
    }
    EXPECT_EQ(contentOf(registry),
              "a image_reference 1, a chart_reference 1, a group 1, a snapshot_reference 1, a separator 1, ");
}

TEST(DataInterface, ownsImagesAndHandsThemOut)
{
    DataInterface registry;
    auto *image = new Image8(1, 1);
    auto *overlay = new ImageColor(1, 1);
    auto *data = new ImageData;
    registry.setImage("a", image, overlay, data);
    Zem::Image const *foundImage = nullptr;
    Zem::ImageColor const *foundOverlay = nullptr;
    ImageData const *foundData = nullptr;
    registry.getImage("a", &foundImage, &foundOverlay, &foundData);
    EXPECT_EQ(foundImage, image);
    EXPECT_EQ(foundOverlay, overlay);
    EXPECT_EQ(foundData, data);
    EXPECT_EQ(counterOf(registry, "a", VARIABLE_IMAGE), 0U);

    registry.setImage("a", new Image16(1, 1), nullptr, nullptr);
    registry.getImage("a", &foundImage, &foundOverlay, &foundData);
    EXPECT_EQ(foundImage->getType(), Zem::Image::TYPE_IMAGE16);
    EXPECT_EQ(foundOverlay, nullptr);
    EXPECT_EQ(foundData, nullptr);
    EXPECT_EQ(counterOf(registry, "a", VARIABLE_IMAGE), 1U);
}

TEST(DataInterface, ownsChartsAndSnapshotsAndHandsThemOut)
{
    DataInterface registry;
    registry.setChart("a", new ChartData);
    registry.setSnapshot("a", new SnapshotData);
    auto *chart = new ChartData;
    auto *snapshot = new SnapshotData;
    registry.setChart("a", chart);
    registry.setSnapshot("a", snapshot);
    ChartData const *foundChart = nullptr;
    SnapshotData const *foundSnapshot = nullptr;
    registry.getChart("a", &foundChart);
    registry.getSnapshot("a", &foundSnapshot);
    EXPECT_EQ(foundChart, chart);
    EXPECT_EQ(foundSnapshot, snapshot);
    EXPECT_EQ(contentOf(registry), "a chart 1, a snapshot 1, ");
}

TEST(DataInterface, keepsDataThatAreHandedToItOnceMore)
{
    DataInterface registry;
    auto *image = new Image8(1, 1);
    auto *data = new ImageData;
    auto *chart = new ChartData;
    auto *snapshot = new SnapshotData;
    for (int i = 0; i < 2; ++i) {
        registry.setImage("a", image, nullptr, data);
        registry.setChart("a", chart);
        registry.setSnapshot("a", snapshot);
    }
    EXPECT_EQ(image->getWidth(), 1U);
    EXPECT_FALSE(chart->datasetExists("x"));
    EXPECT_EQ(contentOf(registry), "a image 1, a chart 1, a snapshot 1, ");
}

TEST(DataInterface, refusesMissingDataAndStaysAsItWas)
{
    DataInterface registry;
    EXPECT_EQ(progError([&] { registry.setImage("a", nullptr, nullptr, nullptr); }),
              "fig_data_interface: Image must not be NULL");
    EXPECT_EQ(progError([&] { registry.setChart("a", nullptr); }), "fig_data_interface: ChartData must not be NULL");
    EXPECT_EQ(progError([&] { registry.setSnapshot("a", nullptr); }), "fig_data_interface: Snapshot must not be NULL");
    EXPECT_EQ(contentOf(registry), "");
}

TEST(DataInterface, namesTheTokenThatItDoesNotHave)
{
    DataInterface registry;
    registry.setDouble("a", 1, uLength); // another type is another token
    Token_t const token("a", VARIABLE_INTEGER);
    EXPECT_EQ(progError([&] { registry.getInt("a"); }), missingText());
    EXPECT_EQ(progError([&] { registry.getTokenValue(token, ""); }), missingText());
    EXPECT_EQ(progError([&] { registry.getModifiedCounter(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.getDisplayText(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.getSortIndex(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.getGroupToken(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.getTypeHint(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.releaseReferenceData(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.removeToken(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.setModified(token); }), missingText());
    EXPECT_EQ(progError([&] { registry.setDisplayText(token, ""); }), missingText());
    EXPECT_EQ(progError([&] { registry.setSortIndex(token, 0); }), missingText());
    EXPECT_EQ(progError([&] { registry.setGroupToken(token, ""); }), missingText());
    EXPECT_EQ(progError([&] { registry.setDefaultFormat(token, ""); }), missingText());
    EXPECT_EQ(progError([&] { registry.setIconId(token, ""); }), missingText());
    EXPECT_EQ(progError([&] { registry.setTypeHint(token, ""); }), missingText());
    EXPECT_FALSE(registry.tokenExists(token));
}

TEST(DataInterface, looksForEachKindOfDataUnderItsOwnType)
{
    DataInterface registry;
    registry.setInt("a", 1);
    auto const missing = [](Variable_t type) {
        return "fig_data_interface: Token not registered: " +
               Token_t("a", type).getParameterString("token").toStdString();
    };
    Zem::Image const *image = nullptr;
    Zem::ImageColor const *overlay = nullptr;
    ImageData const *data = nullptr;
    ChartData const *chart = nullptr;
    SnapshotData const *snapshot = nullptr;
    EXPECT_EQ(progError([&] { registry.getDouble("a", nullptr); }), missing(VARIABLE_DOUBLE));
    EXPECT_EQ(progError([&] { registry.getString("a"); }), missing(VARIABLE_STRING));
    EXPECT_EQ(progError([&] { registry.getImage("a", &image, &overlay, &data); }), missing(VARIABLE_IMAGE));
    EXPECT_EQ(progError([&] { registry.getChart("a", &chart); }), missing(VARIABLE_CHART));
    EXPECT_EQ(progError([&] { registry.getSnapshot("a", &snapshot); }), missing(VARIABLE_SNAPSHOT));
    EXPECT_EQ(progError([&] { registry.getImageReference("a", &image, &overlay, &data); }),
              missing(VARIABLE_IMAGE_REFERENCE));
    EXPECT_EQ(progError([&] { registry.getChartReference("a", &chart); }), missing(VARIABLE_CHART_REFERENCE));
    EXPECT_EQ(progError([&] { registry.getSnapshotReference("a", &snapshot); }), missing(VARIABLE_SNAPSHOT_REFERENCE));
}

TEST(DataInterface, givesTheValueInTheFormatThatIsAskedFor)
{
    DataInterface registry;
    registry.setDouble("a", 25, UnitData(uLength));
    EXPECT_EQ(registry.getTokenValue({"a", VARIABLE_DOUBLE}, "+[cm]6.1"), "  +2.5");
}

TEST(DataInterface, takesRecordsAndReplacesThoseOfTheSameToken)
{
    DataInterface registry;
    registry.setInt("a", 1);
    Token_t const token("a", VARIABLE_INTEGER);
    auto *record = new Variable(VARIABLE_INTEGER);
    record->intValue = 7;
    // The key may be part of the record that goes.
    registry.addVariable(registry.getTokenBegin()->first, record);
    EXPECT_EQ(registry.getInt("a"), 7);
    registry.addVariable(token, record);
    EXPECT_EQ(registry.getInt("a"), 7);
    registry.addVariable({"b", VARIABLE_GROUP}, new Variable(VARIABLE_GROUP));
    EXPECT_EQ(contentOf(registry), "a integer 0, b group 0, ");
}

TEST(DataInterface, forgetsTokens)
{
    DataInterface registry;
    registry.setInt("a", 1);
    registry.setChart("b", new ChartData);
    registry.removeToken({"a", VARIABLE_INTEGER});
    EXPECT_EQ(contentOf(registry), "b chart 0, ");
    registry.clear();
    EXPECT_EQ(contentOf(registry), "");
}

TEST(DataInterfaceCopy, hasTokensOfItsOwnAndNoNeighbours)
{
    DataInterface sub;
    Provider const provider;
    DataInterface registry;
    registry.registerSubDataInterface(&sub);
    registry.registerReferenceInterface(&provider);
    registry.setChart("a", new ChartData);
    registry.setInt("b", 5);
    registry.setInt("b", 6);

    DataInterface copy(registry);
    EXPECT_EQ(contentOf(copy), "a chart 0, b integer 1, ");
    EXPECT_NE(copy.getTokenBegin()->second->chartData, registry.getTokenBegin()->second->chartData);
    EXPECT_EQ(copy.getSubDataBegin(), copy.getSubDataEnd());
    EXPECT_EQ(progError([&] { copy.unregisterReferenceInterface(&provider); }),
              "fig_data_interface: Interface not registered");
    EXPECT_FALSE(std::is_copy_assignable_v<DataInterface>);
}

/// A registry with one token of its own, above two others.
class DataInterfaceWithSubs : public testing::Test
{
protected:
    DataInterfaceWithSubs()
    {
        registry.setString("a", "own");
        first.setInt("a", 1);
        first.setString("a", "first");
        second.setInt("a", 2);
        second.setDouble("b", 2.5, UnitData(uForce));
        registry.registerSubDataInterface(&first);
        registry.registerSubDataInterface(&second);
    }

    DataInterface first;
    DataInterface second;
    DataInterface registry;
};

TEST_F(DataInterfaceWithSubs, prefersItsOwnTokensAndThenTheFirst)
{
    EXPECT_EQ(registry.getString("a"), "own");
    EXPECT_EQ(registry.getInt("a"), 1);
    EXPECT_EQ(registry.getDouble("b", nullptr), 2.5);
    EXPECT_TRUE(registry.tokenExists({"b", VARIABLE_DOUBLE}));
    EXPECT_FALSE(registry.tokenExists({"b", VARIABLE_STRING}));
}

TEST_F(DataInterfaceWithSubs, looksAllTheWayDown)
{
    DataInterface top;
    top.registerSubDataInterface(&registry);
    EXPECT_EQ(top.getDouble("b", nullptr), 2.5);
    second.setDisplayText({"b", VARIABLE_DOUBLE}, "text");
    second.setSortIndex({"b", VARIABLE_DOUBLE}, 4);
    second.setGroupToken({"b", VARIABLE_DOUBLE}, "group");
    second.setTypeHint({"b", VARIABLE_DOUBLE}, "hint");
    EXPECT_EQ(top.getDisplayText({"b", VARIABLE_DOUBLE}), "text");
    EXPECT_EQ(top.getSortIndex({"b", VARIABLE_DOUBLE}), 4);
    EXPECT_EQ(top.getGroupToken({"b", VARIABLE_DOUBLE}), "group");
    EXPECT_EQ(top.getTypeHint({"b", VARIABLE_DOUBLE}), "hint");
    EXPECT_EQ(top.getModifiedCounter({"b", VARIABLE_DOUBLE}), 4U);
    EXPECT_EQ(top.getTokenValue({"b", VARIABLE_DOUBLE}, ".1"), "2.5");
}

TEST_F(DataInterfaceWithSubs, tellsEachTypeOfANameOnce)
{
    EXPECT_EQ(registry.getTokenTypes("a"), (std::vector<Variable_t>{VARIABLE_INTEGER, VARIABLE_STRING}));
    EXPECT_EQ(registry.getTokenTypes("b"), std::vector<Variable_t>{VARIABLE_DOUBLE});
    EXPECT_TRUE(registry.getTokenTypes("c").empty());
    registry.setSeparator("b");
    EXPECT_EQ(registry.getTokenTypes("b"), (std::vector<Variable_t>{VARIABLE_DOUBLE, VARIABLE_SEPARATOR}));
}

TEST_F(DataInterfaceWithSubs, changesItsOwnTokensOnly)
{
    EXPECT_EQ(progError([&] { registry.setSortIndex({"a", VARIABLE_INTEGER}, 1); }), missingText());
    EXPECT_EQ(progError([&] { registry.setModified({"a", VARIABLE_INTEGER}); }), missingText());
    EXPECT_EQ(progError([&] { registry.removeToken({"a", VARIABLE_INTEGER}); }), missingText());
    registry.setInt("a", 9);
    EXPECT_EQ(registry.getInt("a"), 9);
    EXPECT_EQ(first.getInt("a"), 1);
    EXPECT_EQ(contentOf(registry), "a integer 0, a string 0, ");
}

TEST_F(DataInterfaceWithSubs, takesNoRecordOfATokenThatOnlyTheyHave)
{
    Variable record(VARIABLE_INTEGER);
    EXPECT_EQ(progError([&] { registry.addVariable({"a", VARIABLE_INTEGER}, &record); }), missingText());
    EXPECT_EQ(contentOf(registry), "a string 0, ");
}

TEST_F(DataInterfaceWithSubs, knowsThemInTheOrderOfRegistration)
{
    DataInterface third;
    EXPECT_TRUE(registry.isSubDataInterfaceRegistered(&first));
    EXPECT_FALSE(registry.isSubDataInterfaceRegistered(&third));
    registry.registerSubDataInterface(&third);
    registry.unregisterSubDataInterface(&second);
    EXPECT_EQ(std::vector(registry.getSubDataBegin(), registry.getSubDataEnd()),
              (std::vector<DataInterface const *>{&first, &third}));
    EXPECT_EQ(progError([&] { registry.registerSubDataInterface(&third); }),
              "fig_data_interface: Interface is already registered");
    EXPECT_EQ(progError([&] { registry.unregisterSubDataInterface(&second); }),
              "fig_data_interface: Interface not registered");
}

TEST_F(DataInterfaceWithSubs, leavesThemAliveWhenItGoes)
{
    {
        DataInterface top;
        top.registerSubDataInterface(&registry);
    }
    EXPECT_EQ(registry.getString("a"), "own");
}

TEST(DataInterfaceText, isALineForEachOwnToken)
{
    DataInterface sub;
    sub.setInt("hidden", 1);
    DataInterface registry;
    registry.registerSubDataInterface(&sub);
    registry.setDouble("b", 2.5, uLength);
    registry.setDisplayText({"b", VARIABLE_DOUBLE}, "B %1");
    registry.setSortIndex({"b", VARIABLE_DOUBLE}, 4);
    registry.setGroupToken({"b", VARIABLE_DOUBLE}, "group");
    registry.setInt("a", 42);
    registry.setImageReference("c");
    registry.addVariable({"d", Variable_t(11)}, new Variable(VARIABLE_STRING));
    EXPECT_EQ(registry.toString(),
              "Token: token='a', type=INTEGER, value='42.00', text='', sort_index='-1', group=''\n"
              "Token: token='b', type=DOUBLE, value='2.50', text='B %1', sort_index='4', group='group'\n"
              "Token: token='c', type=IMAGE_REFERENCE, value='\?\?\?', text='', sort_index='-1', group=''\n"
              "Token: token='d', type=(unknown), value='', text='', sort_index='-1', group=''\n");
}

std::string saved(DataInterface const &registry)
{
    return Support::streamOf([&](IO::OutStream &stream) { registry.save(&stream, -1, -1); });
}

std::string loadError(DataInterface &registry, std::string const &bytes)
{
    return thrownText<IO::StreamException>(
        [&] { Support::readFrom(bytes, [&](IO::InStream &stream) { registry.load(&stream, -1, -1); }); });
}

TEST(DataInterfaceBlocks, areTheNamesAndThenTheRecords)
{
    DataInterface sub;
    sub.setInt("hidden", 1);
    DataInterface registry;
    registry.registerSubDataInterface(&sub);
    registry.setString("bb", "text");
    registry.setInt("a", 5);
    registry.setInt("bb", 6);
    BlockCrafter crafter;
    crafter.block(1, Payload().u(3).s("a").s("bb").s("bb"));
    for (auto it = registry.getTokenBegin(); it != registry.getTokenEnd(); ++it)
        addRecords(crafter, *it->second);
    EXPECT_EQ(saved(registry), crafter.bytes());

    DataInterface read;
    read.setInt("old", 1);
    ASSERT_EQ(loadError(read, saved(registry)), "nothing thrown");
    EXPECT_EQ(contentOf(read), "a integer 0, bb integer 0, bb string 0, ");
    EXPECT_EQ(read.getInt("bb"), 6);
    EXPECT_EQ(read.getString("bb"), "text");
}

TEST(DataInterfaceBlocks, ofNewerVersionsAreRefused)
{
    DataInterface registry;
    registry.setInt("old", 1);
    EXPECT_EQ(loadError(registry, BlockCrafter().block(2, Payload().u(0)).bytes()), "wrong block version");
    EXPECT_EQ(contentOf(registry), "");
}

TEST(DataInterfaceBlocks, keepTheSecondOfTwoEqualTokens)
{
    Variable one(VARIABLE_INTEGER);
    one.intValue = 1;
    Variable two(VARIABLE_INTEGER);
    two.intValue = 2;
    BlockCrafter crafter;
    crafter.block(1, Payload().u(2).s("a").s("a"));
    DataInterface registry;
    EXPECT_EQ(loadError(registry, addRecords(crafter, one, two).bytes()), "nothing thrown");
    EXPECT_EQ(registry.getInt("a"), 2);
    EXPECT_EQ(contentOf(registry), "a integer 0, ");
}

TEST(DataInterfaceBlocks, damagedHalfWayKeepWhatWasReadSoFar)
{
    Variable one(VARIABLE_INTEGER);
    BlockCrafter crafter;
    crafter.block(1, Payload().u(2).s("a").s("b"));
    DataInterface registry;
    EXPECT_NE(loadError(registry, addRecords(crafter, one).bytes()), "nothing thrown");
    EXPECT_EQ(contentOf(registry), "a integer 0, ");
}

} // namespace
} // namespace Zem::Fig2
