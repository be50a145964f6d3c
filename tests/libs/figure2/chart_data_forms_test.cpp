#include "chart_fixture.h"

#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// What the block of a version holds when there are no datasets and no info points.
struct EmptyBlock
{
    unsigned int version;
    bool stageMarkers = false;
    bool pointMarkers = false;
    bool legacyMarkers = false;
    double position = DBL_MAX;
    std::vector<double> values = {};
    bool hasLegend = false;
    bool hasContainer = false;
    bool interfaceIsContainer = false;

    Payload payload() const
    {
        Payload payload;
        payload.u(0).u(0).c(0, 0, 0, 255).b(false).b(false).v(DBL_MAX, DBL_MAX).v(DBL_MAX, DBL_MAX);
        if (version >= 12)
            payload.b(stageMarkers).b(pointMarkers);
        if (version <= 12) {
            payload.b(legacyMarkers).d(position).u(static_cast<unsigned int>(values.size()));
            for (double value : values)
                payload.d(value);
        }
        payload.b(hasLegend).b(false);
        if (version >= 11)
            payload.b(hasContainer).b(interfaceIsContainer);
        return payload;
    }
};

/// The block and what stands behind it, with the markers (from version 12 on) and tokens given.
std::string streamOf(EmptyBlock const &block, std::vector<ChartMarker *> const &markers = {},
                     TokenContainer const *tokens = nullptr)
{
    BlockCrafter crafter;
    crafter.block(block.version, block.payload());
    if (block.version >= 12)
        crafter.add([&](IO::OutStream &stream) { ChartMarker::save(&stream, markers); });
    addRecords(crafter, Legend2::Legend(uForce), Legend2::Data());
    if (block.version >= 14)
        addRecords(crafter, Legend2::HistogramData());
    addRecords(crafter, UnitData(uTime), UnitData(uForce));
    if (tokens)
        addRecords(crafter, *tokens);
    return crafter.bytes();
}

/// A block of today's version that names two datasets.
Payload twoDatasets(char const *first, char const *second)
{
    Payload payload;
    payload.u(2).s(first).s(second).u(0).c(0, 0, 0, 255).b(false).b(false).v(0, 0).v(0, 0);
    return payload.b(false).b(false).b(false).b(false).b(false).b(false);
}

std::vector<ChartMarker const *> markersOf(ChartData const &data)
{
    return {data.getChartMarkerBegin(), data.getChartMarkerEnd()};
}

TEST(ChartDataBlock, holdsEveryValueInItsPlace)
{
    ChartData data;
    data.addDataset(new ChartDataset("b"));
    data.addDataset(new ChartDataset("a"));
    data.getInfoPoints() = {{1, 2}, {3, 4}};
    data.setInfoPointColor(Color(5, 6, 7, 8));
    data.setHasAxisYRange(true);
    data.setAxisXRange({9, 10});
    data.setAxisYRange({11, 12});
    data.setSupportsPointMarkers(true);
    Legend2::HistogramData counts;
    ASSERT_TRUE(counts.addHistogram({{1.0, 2U}}));
    data.setLegendData(Legend2::Legend(uForce), Legend2::Data(), counts);
    data.setUnitX(UnitData(uTime));
    data.addMarker(new LineChartMarker(4.0));
    auto *const tokens = new TokenContainer;
    tokens->setValue(TokenInfo::getSelectedInfo(), Value(1));
    data.setTokenContainer(tokens);
    data.setTokenInterface(tokens);

    // 52 + 2 * 16 for the info points + 5 for each id.
    BlockCrafter crafter;
    Payload block;
    block.u(2).s("a").s("b").u(2).c(5, 6, 7, 8).v(1, 2).v(3, 4);
    block.b(false).b(true).v(9, 10).v(11, 12).b(false).b(true);
    block.b(true).b(false).b(true).b(true);
    crafter.block(14, block);
    addRecords(crafter, ChartDataset("a"), ChartDataset("b"));
    crafter.block(1, Payload().u(1).u(0)).block(1, Payload().u(0)).block(2, Payload().d(4.0));
    addRecords(crafter, Legend2::Legend(uForce), Legend2::Data(), counts, UnitData(uTime), UnitData(uLength), *tokens);

    EXPECT_EQ(blocksWith(data), crafter.bytes());
    EXPECT_TRUE(Support::blocksOf(crafter.bytes()).starts_with("14:94 "));

    ChartData read;
    loadFrom(read, crafter.bytes());
    EXPECT_EQ(blocksWith(read), crafter.bytes());
    EXPECT_EQ(read.toString(), data.toString());
    EXPECT_EQ(read.getTokenInterface(), read.getTokenContainer());
    EXPECT_EQ(read.getTokenContainer()->getValue("Zem_Selected", IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
              Value(1));
}

TEST(ChartDataBlock, ofNothingSaysThatInterfaceAndContainerAreTheSame)
{
    Payload block;
    block.u(0).u(0).c(0, 0, 0, 255).b(false).b(false).v(DBL_MAX, DBL_MAX).v(DBL_MAX, DBL_MAX);
    block.b(false).b(false).b(false).b(false).b(false).b(true);
    EXPECT_TRUE(blocksWith(ChartData()).starts_with(BlockCrafter().block(14, block).bytes()));
}

TEST(ChartDataBlock, tellsATokenInterfaceOutsideFromTheContainer)
{
    TokenContainer const outside;
    ChartData data;
    data.setTokenContainer(new TokenContainer);
    data.setTokenInterface(&outside);
    ChartData read;
    loadFrom(read, blocksWith(data));
    EXPECT_NE(read.getTokenContainer(), nullptr);
    EXPECT_EQ(read.getTokenInterface(), nullptr);
}

TEST(ChartDataBlock, replacesAllThatWasThere)
{
    ChartData data;
    data.addDataset(new ChartDataset("old"));
    data.addMarker(new LineChartMarker(4.0));
    data.getInfoPoints().push_back({1, 2});
    data.computeLegendData();
    data.setTokenContainer(new TokenContainer);
    data.setTokenInterface(data.getTokenContainer());
    loadFrom(data, blocksWith(ChartData()));
    EXPECT_EQ(blocksWith(data), blocksWith(ChartData()));
    EXPECT_EQ(data.getTokenContainer(), nullptr);
    EXPECT_EQ(data.getTokenInterface(), nullptr);
}

TEST(ChartDataBlock, withoutTokensTakesAForeignInterfaceAway)
{
    TokenContainer const outside;
    ChartData data;
    data.setTokenInterface(&outside);
    loadFrom(data, streamOf({.version = 14}));
    EXPECT_EQ(data.getTokenInterface(), nullptr);
    EXPECT_EQ(data.getTokenContainer(), nullptr);
}

TEST(ChartDataBlock, ofVersion13HasNoHistogram)
{
    Legend2::HistogramData counts;
    ASSERT_TRUE(counts.addHistogram({{1.0, 2U}}));
    ChartData data;
    data.setLegendData(Legend2::Legend(), Legend2::Data(), counts);
    loadFrom(data, streamOf({.version = 13, .stageMarkers = true, .hasLegend = true}));
    EXPECT_TRUE(data.getSupportsStageMarkers());
    EXPECT_FALSE(data.getSupportsPointMarkers());
    EXPECT_EQ(data.getUnitX(), UnitData(uTime));
    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *values = nullptr;
    Legend2::HistogramData const *histogram = nullptr;
    ASSERT_TRUE(data.getLegendData(&legend, &values, &histogram));
    EXPECT_EQ(*legend, Legend2::Legend(uForce));
    EXPECT_FALSE(histogram->isValid());
}

TEST(ChartDataBlock, ofVersion12LetsTheThirdFlagRule)
{
    ChartData data;
    loadFrom(data, streamOf({.version = 12, .stageMarkers = true, .pointMarkers = false, .legacyMarkers = false}));
    EXPECT_FALSE(data.getSupportsStageMarkers());
    EXPECT_FALSE(data.getSupportsPointMarkers());
    loadFrom(data, streamOf({.version = 12, .stageMarkers = false, .pointMarkers = false, .legacyMarkers = true}));
    EXPECT_TRUE(data.getSupportsStageMarkers());
    EXPECT_TRUE(data.getSupportsPointMarkers());
}

TEST(ChartDataBlock, ofVersion12PutsItsOldMarkersBehindTheList)
{
    NamedPointChartMarker named;
    ChartData data;
    loadFrom(data, streamOf({.version = 12, .position = 3.0, .values = {7.0, 8.0}}, {&named}));
    std::vector<ChartMarker const *> const markers = markersOf(data);
    ASSERT_EQ(markers.size(), 3U);
    EXPECT_EQ(markers[0]->getType(), ChartMarker::TYPE_NAMED_POINT);
    ASSERT_EQ(markers[1]->getType(), ChartMarker::TYPE_LINE);
    EXPECT_EQ(static_cast<LineChartMarker const *>(markers[1])->getX(), 3.0);
    ASSERT_EQ(markers[2]->getType(), ChartMarker::TYPE_POINTS);
    EXPECT_EQ(static_cast<PointsChartMarker const *>(markers[2])->getPoints(),
              (std::vector<BaVec2d<double>>{{3.0, 7.0}, {3.0, 8.0}}));
}

TEST(ChartDataBlock, makesNoMarkersOfAPositionAloneOrOfValuesAlone)
{
    ChartData data;
    loadFrom(data, streamOf({.version = 12, .position = 3.0}));
    EXPECT_TRUE(markersOf(data).empty());
    loadFrom(data, streamOf({.version = 12, .values = {7.0}}));
    EXPECT_TRUE(markersOf(data).empty());
}

TEST(ChartDataBlock, ofVersion11HasOneFlagForMarkersAndNoList)
{
    TokenContainer tokens;
    ChartData data;
    loadFrom(data, streamOf({.version = 11,
                             .legacyMarkers = true,
                             .position = 3.0,
                             .values = {7.0},
                             .hasContainer = true,
                             .interfaceIsContainer = true},
                            {}, &tokens));
    EXPECT_TRUE(data.getSupportsStageMarkers());
    EXPECT_TRUE(data.getSupportsPointMarkers());
    EXPECT_EQ(markersOf(data).size(), 2U);
    EXPECT_NE(data.getTokenContainer(), nullptr);
    EXPECT_EQ(data.getTokenInterface(), data.getTokenContainer());
}

TEST(ChartDataBlock, ofVersion10HasNoTokens)
{
    ChartData data;
    data.setSupportsStageMarkers(true);
    loadFrom(data, streamOf({.version = 10, .legacyMarkers = false}));
    EXPECT_FALSE(data.getSupportsStageMarkers());
    EXPECT_EQ(data.getUnitY(), UnitData(uForce));
    EXPECT_EQ(data.getTokenContainer(), nullptr);
    EXPECT_EQ(data.getTokenInterface(), nullptr);
}

TEST(ChartDataBlock, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 15U}) {
        ChartData data;
        EXPECT_EQ(loadError(data, streamOf({.version = version})),
                  "cannot load figure chart data: wrong block version");
    }
}

TEST(ChartDataBlock, keepsADatasetUnderTheIdOfTheList)
{
    ChartData data;
    data.addDataset(new ChartDataset("listed"));
    data.getDataset("listed")->setId("own");
    ChartData read;
    loadFrom(read, blocksWith(data));
    ASSERT_TRUE(read.datasetExists("listed"));
    EXPECT_EQ(read.getDataset("listed")->getId(), "own");
}

TEST(ChartDataBlock, keepsTheSecondOfTwoDatasetsWithOneId)
{
    BlockCrafter crafter;
    crafter.block(14, twoDatasets("a", "a"));
    addRecords(crafter, ChartDataset("first"), ChartDataset("second"));
    crafter.block(1, Payload().u(0));
    addRecords(crafter, Legend2::Legend(), Legend2::Data(), Legend2::HistogramData(), UnitData(), UnitData());
    ChartData data;
    loadFrom(data, crafter.bytes());
    EXPECT_EQ(data.getDataset("a")->getId(), "second");
}

TEST(ChartDataBlock, wrapsAFailureOncePerLevelAndStaysDestructible)
{
    BlockCrafter crafter;
    crafter.block(14, twoDatasets("a", "b"));
    addRecords(crafter, ChartDataset("a"));
    crafter.block(2, Payload().s("b").s("").v(0, 0).v(0, 0).u(0)).block(6, Payload());
    ChartData data;
    EXPECT_EQ(loadError(data, crafter.bytes()),
              "cannot load figure chart data: cannot load figure chart dataset: cannot load figure chart parameters: "
              "wrong block version");
    EXPECT_TRUE(data.datasetExists("a"));
    EXPECT_FALSE(data.datasetExists("b"));
}

TEST(ChartDataBlock, thatPromisesMoreThanItHoldsIsRefused)
{
    Payload const ids = Payload().u(4294967295U).s("a");
    Payload const infoPoints = Payload().u(0).u(4294967295U).c(0, 0, 0, 255).v(1, 2);
    Payload const values =
        Payload().u(0).u(0).c(0, 0, 0, 255).b(false).b(false).v(0, 0).v(0, 0).b(true).d(1.0).u(4294967295U);
    for (Payload const &payload : {ids, infoPoints}) {
        ChartData data;
        EXPECT_NE(loadError(data, BlockCrafter().block(14, payload).bytes()), "nothing thrown");
    }
    ChartData data;
    EXPECT_NE(loadError(data, BlockCrafter().block(10, values).bytes()), "nothing thrown");
}

TEST(ChartDataBlock, cutAnywhereIsRefused)
{
    ChartData data;
    data.addDataset(new ChartDataset("a"));
    data.getDataset("a")->addPoint(ChartPoint(1, {2, 3}, 4));
    data.addMarker(new NamedPointChartMarker);
    data.setTokenContainer(new TokenContainer);
    std::string const bytes = blocksWith(data);
    // Behind the header of the stream.
    for (std::size_t size = 64; size < bytes.size(); ++size) {
        ChartData read;
        EXPECT_THROW(loadFrom(read, bytes.substr(0, size)), IO::StreamException) << size;
    }
}

} // namespace
} // namespace Zem::Fig2
