// Taking over the tokens of another registry.
#include "data_interface_fixture.h"

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

constexpr auto KEEP = DataInterface::MERGE_KEEP_REFERENCE;
constexpr auto RESOLVE = DataInterface::MERGE_RESOLVE_REFERENCE;

void describe(DataInterface &registry, Token_t const &token)
{
    registry.setDisplayText(token, "text");
    registry.setDefaultFormat(token, "5.1");
    registry.setGroupToken(token, "group");
    registry.setSortIndex(token, 3);
    registry.setIconId(token, "icon");
    registry.setTypeHint(token, "hint");
}

TEST(Merge, takesValuesAndDescriptionsButNoTypeHint)
{
    DataInterface source;
    source.setInt("a", 5);
    source.setDouble("b", 2.5, UnitData(uForce));
    source.setString("c", "text");
    source.setGroup("d");
    source.setSeparator("e");
    describe(source, {"b", VARIABLE_DOUBLE});
    DataInterface target;
    target.merge(source, false, KEEP);

    // Five descriptions, each a change.
    EXPECT_EQ(contentOf(target), "a integer 5, b double 5, c string 5, d group 5, e separator 5, ");
    EXPECT_EQ(target.getInt("a"), 5);
    UnitData unit;
    EXPECT_EQ(target.getDouble("b", &unit), 2.5);
    EXPECT_EQ(unit, UnitData(uForce));
    EXPECT_EQ(target.getString("c"), "text");
    Token_t const token("b", VARIABLE_DOUBLE);
    EXPECT_EQ(target.getDisplayText(token), "text");
    EXPECT_EQ(target.getSortIndex(token), 3);
    EXPECT_EQ(target.getGroupToken(token), "group");
    EXPECT_EQ(target.getTypeHint(token), "");
    Variable const &merged = *std::next(target.getTokenBegin())->second;
    EXPECT_EQ(merged.defaultFormat, "5.1");
    EXPECT_EQ(merged.iconId, "icon");
}

TEST(Merge, copiesDataDeeply)
{
    DataInterface source;
    auto *image = new Image8(1, 1);
    auto *overlay = new ImageColor(1, 1);
    auto *data = new ImageData;
    data->addPointMask({1, "mask"});
    source.setImage("a", image, overlay, data);
    source.setImage("b", new Image16(1, 1), nullptr, nullptr);
    auto *chart = new ChartData;
    chart->addDataset(new ChartDataset("x"));
    source.setChart("c", chart);
    auto *snapshot = new SnapshotData;
    snapshot->setDrawingMode(SnapshotData::DrawingMode{3});
    source.setSnapshot("d", snapshot);
    DataInterface target;
    target.merge(source, false, KEEP);

    Zem::Image const *foundImage = nullptr;
    Zem::ImageColor const *foundOverlay = nullptr;
    ImageData const *foundData = nullptr;
    target.getImage("a", &foundImage, &foundOverlay, &foundData);
    EXPECT_NE(foundImage, image);
    EXPECT_EQ(foundImage->getType(), Zem::Image::TYPE_IMAGE8);
    EXPECT_NE(foundOverlay, overlay);
    EXPECT_NE(foundOverlay, nullptr);
    EXPECT_NE(foundData, data);
    EXPECT_EQ(foundData->getPointMasks().size(), 1U);
    target.getImage("b", &foundImage, &foundOverlay, &foundData);
    EXPECT_EQ(foundImage->getType(), Zem::Image::TYPE_IMAGE16);
    EXPECT_EQ(foundOverlay, nullptr);
    EXPECT_EQ(foundData, nullptr);
    ChartData const *foundChart = nullptr;
    target.getChart("c", &foundChart);
    EXPECT_NE(foundChart, chart);
    EXPECT_TRUE(foundChart->datasetExists("x"));
    SnapshotData const *foundSnapshot = nullptr;
    target.getSnapshot("d", &foundSnapshot);
    EXPECT_NE(foundSnapshot, snapshot);
    EXPECT_EQ(foundSnapshot->getDrawingMode(), 3U);
}

TEST(Merge, leavesWhatIsThereAlone)
{
    DataInterface source;
    source.setInt("a", 5);
    source.setString("a", "new");
    describe(source, {"a", VARIABLE_INTEGER});
    DataInterface target;
    target.setInt("a", 1);
    target.merge(source, false, KEEP);
    EXPECT_EQ(contentOf(target), "a integer 0, a string 5, ");
    EXPECT_EQ(target.getInt("a"), 1);
    EXPECT_EQ(target.getDisplayText({"a", VARIABLE_INTEGER}), "");
}

TEST(Merge, replacesWhatIsThereOnDemand)
{
    DataInterface source;
    source.setInt("a", 5);
    DataInterface target;
    target.setInt("a", 1);
    target.setTypeHint({"a", VARIABLE_INTEGER}, "hint");
    target.setInt("b", 2);
    target.merge(source, true, KEEP);
    EXPECT_EQ(contentOf(target), "a integer 5, b integer 0, ");
    EXPECT_EQ(target.getInt("a"), 5);
    EXPECT_EQ(target.getTypeHint({"a", VARIABLE_INTEGER}), ""); // all of it is new
}

TEST(Merge, takesTheOwnTokensOfTheSourceOnly)
{
    DataInterface sub;
    sub.setInt("a", 5);
    DataInterface source;
    source.registerSubDataInterface(&sub);
    DataInterface target;
    target.merge(source, false, KEEP);
    EXPECT_EQ(contentOf(target), "");
}

TEST(Merge, isForTargetsWithoutSubInterfaces)
{
    DataInterface sub;
    DataInterface source;
    source.setInt("a", 5);
    DataInterface target;
    target.registerSubDataInterface(&sub);
    EXPECT_EQ(progError([&] { target.merge(source, false, KEEP); }),
              "fig_data_interface: Merging into an interface with sub-interfaces");
    EXPECT_EQ(contentOf(target), "");
}

TEST(Merge, ofARegistryIntoItselfChangesNothing)
{
    DataInterface registry;
    registry.setInt("a", 5);
    registry.merge(registry, true, KEEP);
    EXPECT_EQ(contentOf(registry), "a integer 0, ");
}

TEST(Merge, ofRecordsWithoutDataFailsAndKeepsTheTokensBefore)
{
    DataInterface source;
    source.setInt("a", 5);
    source.addVariable({"b", VARIABLE_CHART}, new Variable(VARIABLE_CHART));
    source.setInt("c", 6);
    DataInterface target;
    EXPECT_EQ(progError([&] { target.merge(source, false, KEEP); }), "fig_data_interface: ChartData must not be NULL");
    EXPECT_EQ(contentOf(target), "a integer 5, ");

    DataInterface snapshots;
    snapshots.addVariable({"b", VARIABLE_SNAPSHOT}, new Variable(VARIABLE_SNAPSHOT));
    EXPECT_EQ(progError([&] { target.merge(snapshots, false, KEEP); }),
              "fig_data_interface: Snapshot must not be NULL");
    DataInterface images;
    images.addVariable({"b", VARIABLE_IMAGE}, new Variable(VARIABLE_IMAGE));
    EXPECT_EQ(progError([&] { target.merge(images, false, KEEP); }), "fig_data_interface: Image must not be NULL");
}

/// A source with references of each kind and a provider behind them.
class MergeReferences : public testing::Test
{
protected:
    MergeReferences()
    {
        source.setImageReference("a");
        source.setChartReference("a");
        source.setSnapshotReference("a");
        source.registerReferenceInterface(&provider);
        provider.image = &image;
        provider.chart = &chart;
        provider.snapshot = &snapshot;
    }

    std::string log;
    Provider provider{&log};
    Image8 const image{1, 1};
    ImageColor const overlay{1, 1};
    ImageData const imageData;
    ChartData const chart;
    SnapshotData const snapshot;
    DataInterface source;
    DataInterface target;
};

TEST_F(MergeReferences, keepsThemAsReferences)
{
    describe(source, {"a", VARIABLE_CHART_REFERENCE});
    target.merge(source, false, KEEP);
    EXPECT_EQ(contentOf(target), "a image_reference 5, a chart_reference 5, a snapshot_reference 5, ");
    EXPECT_EQ(target.getDisplayText({"a", VARIABLE_CHART_REFERENCE}), "text");
    EXPECT_EQ(log, "");
}

TEST_F(MergeReferences, storesTheDataBehindThem)
{
    provider.servesOverlay = true;
    provider.servesChart = true;
    provider.servesSnapshot = true;
    provider.overlay = &overlay;
    provider.imageData = &imageData;
    describe(source, {"a", VARIABLE_CHART_REFERENCE});
    target.merge(source, false, RESOLVE);
    EXPECT_EQ(contentOf(target), "a image 5, a chart 5, a snapshot 5, ");
    EXPECT_EQ(log, "overlay a; release a; chart a; release a; snapshot a; release a; ");
    EXPECT_EQ(target.getDisplayText({"a", VARIABLE_CHART}), "text");

    Zem::Image const *foundImage = nullptr;
    Zem::ImageColor const *foundOverlay = nullptr;
    ImageData const *foundData = nullptr;
    target.getImage("a", &foundImage, &foundOverlay, &foundData);
    EXPECT_NE(foundImage, &image);
    EXPECT_NE(foundOverlay, &overlay);
    EXPECT_NE(foundOverlay, nullptr);
    EXPECT_NE(foundData, &imageData);
    EXPECT_NE(foundData, nullptr);
    ChartData const *foundChart = nullptr;
    target.getChart("a", &foundChart);
    EXPECT_NE(foundChart, &chart);
    SnapshotData const *foundSnapshot = nullptr;
    target.getSnapshot("a", &foundSnapshot);
    EXPECT_NE(foundSnapshot, &snapshot);
}

TEST_F(MergeReferences, storesAPictureAlone)
{
    provider.servesImage = true;
    target.merge(source, false, RESOLVE);
    EXPECT_EQ(contentOf(target), "a image 5, ");
    Zem::Image const *foundImage = nullptr;
    Zem::ImageColor const *foundOverlay = nullptr;
    ImageData const *foundData = nullptr;
    target.getImage("a", &foundImage, &foundOverlay, &foundData);
    EXPECT_EQ(foundOverlay, nullptr);
    EXPECT_EQ(foundData, nullptr);
}

TEST_F(MergeReferences, makesNothingOfWhatNobodyServes)
{
    target.merge(source, false, RESOLVE);
    EXPECT_EQ(contentOf(target), "");
    EXPECT_EQ(log, "overlay a; image a; chart a; snapshot a; "); // and nothing to give back
}

TEST_F(MergeReferences, describesTheRealTokenThatIsThereAlready)
{
    describe(source, {"a", VARIABLE_CHART_REFERENCE});
    target.setChart("a", new ChartData);
    target.merge(source, false, RESOLVE);
    EXPECT_EQ(contentOf(target), "a chart 5, ");
    EXPECT_EQ(target.getDisplayText({"a", VARIABLE_CHART}), "text");
}

TEST_F(MergeReferences, replacesTheRealTokenThatIsThereAlready)
{
    provider.servesChart = true;
    auto *before = new ChartData;
    before->addDataset(new ChartDataset("x"));
    target.setChart("a", before);
    target.merge(source, false, RESOLVE);
    ChartData const *found = nullptr;
    target.getChart("a", &found);
    EXPECT_FALSE(found->datasetExists("x"));
    EXPECT_EQ(contentOf(target), "a chart 6, ");
}

TEST_F(MergeReferences, leavesThemOutInAnyOtherMode)
{
    source.setInt("b", 5);
    target.merge(source, false, static_cast<DataInterface::MergeResolveMode_t>(2));
    EXPECT_EQ(contentOf(target), "b integer 5, ");
    EXPECT_EQ(log, "");
}

TEST_F(MergeReferences, keepsAReferenceThatIsThereAlready)
{
    provider.servesChart = true;
    target.setChartReference("a");
    target.merge(source, false, RESOLVE);
    EXPECT_EQ(contentOf(target), "a chart_reference 0, ");
    target.merge(source, true, RESOLVE);
    EXPECT_EQ(contentOf(target), "a chart 5, ");
}

} // namespace
} // namespace Zem::Fig2
