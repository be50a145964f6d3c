// Chart data of releases that had other tokens behind them.
#include "chart_fixture.h"

#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// All that the block of a version holds, without datasets.
Payload olderBlock(unsigned int version)
{
    Payload payload;
    payload.u(0).u(1).c(5, 6, 7, 8).v(1, 2);
    if (version >= 8)
        payload.b(true).b(false);
    if (version >= 3)
        payload.v(9, 10).v(11, 12);
    if (version >= 6)
        payload.b(false);
    if (version >= 2)
        payload.d(3.0);
    if (version >= 7)
        payload.u(1).d(7.0);
    if (version >= 4)
        payload.b(true);
    if (version >= 5)
        payload.b(false);
    return payload;
}

/// An integer "a" of 5, in the form of a registry or in the older one.
BlockCrafter &addTokens(BlockCrafter &crafter, unsigned int version)
{
    if (version == 9)
        return crafter.block(1, Payload().u(1).s("a"))
            .block(6, Payload().u(0).s("").s("").i(-1).s("").s("").s(""))
            .block(1, Payload().i(5));
    return crafter.block(1, Payload().u(1).s("a").u(1)).block(1, Payload().i(5));
}

std::string olderBytes(unsigned int version)
{
    BlockCrafter crafter;
    crafter.block(version, olderBlock(version));
    addRecords(crafter, Legend2::Legend(uForce), Legend2::Data());
    addTokens(crafter, version);
    return addRecords(crafter, UnitData(uTime), UnitData(uForce)).bytes();
}

ChartData const &load(ChartData &data, unsigned int version)
{
    EXPECT_EQ(loadError(data, olderBytes(version)), "nothing thrown") << version;
    return data;
}

/// Data in which every value differs from those that an older block leaves behind.
ChartData other()
{
    ChartData data;
    data.setHasAxisXRange(true);
    data.setHasAxisYRange(true);
    data.setAxisXRange({1, 1});
    data.setAxisYRange({1, 1});
    data.computeLegendData();
    return data;
}

TEST(OlderChartData, haveAnIntegerFromEitherFormOfTokens)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data;
        load(data, version);
        ASSERT_NE(data.getTokenContainer(), nullptr) << version;
        EXPECT_EQ(data.getTokenInterface(), data.getTokenContainer());
        EXPECT_EQ(data.getTokenContainer()->getValue("a", IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
                  Value(5));
        // The units behind the tokens are found.
        EXPECT_EQ(data.getUnitX(), UnitData(uTime));
        EXPECT_EQ(data.getUnitY(), UnitData(uForce));
    }
}

TEST(OlderChartData, keepTheInfoPointsOfEveryVersion)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data;
        load(data, version);
        EXPECT_EQ(data.getInfoPoints(), (std::vector<BaVec2d<double>>{{1, 2}}));
        EXPECT_EQ(data.getInfoPointColor(), Color(5, 6, 7, 8));
    }
}

TEST(OlderChartData, haveRangesFromVersion3AndTellWhichFromVersion8)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data(other());
        load(data, version);
        EXPECT_EQ(data.getHasAxisXRange(), version >= 8);
        EXPECT_FALSE(data.getHasAxisYRange());
        BaVec2d<double> const none(DBL_MAX, DBL_MAX);
        EXPECT_EQ(data.getAxisXRange(), version >= 3 ? BaVec2d<double>(9, 10) : none);
        EXPECT_EQ(data.getAxisYRange(), version >= 3 ? BaVec2d<double>(11, 12) : none);
    }
}

TEST(OlderChartData, tellWhetherMarkersAreSupportedFromVersion6)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data;
        load(data, version);
        EXPECT_EQ(data.getSupportsStageMarkers(), version < 6);
        EXPECT_EQ(data.getSupportsPointMarkers(), version < 6);
    }
}

TEST(OlderChartData, haveAMarkedPositionWithItsValuesFromVersion7)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data;
        load(data, version);
        EXPECT_EQ(data.getChartMarkerEnd() - data.getChartMarkerBegin(), version >= 7 ? 2 : 0) << version;
    }
}

TEST(OlderChartData, haveAColourScaleThatCountsFromVersion4)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data;
        load(data, version);
        Legend2::Legend const *legend = nullptr;
        Legend2::Data const *values = nullptr;
        EXPECT_EQ(data.getLegendData(&legend, &values), version >= 4);
    }
}

TEST(OlderChartData, computedStatisticsBeforeVersion5)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        ChartData data;
        load(data, version);
        EXPECT_EQ(data.getComputeStatistics(), version < 5);
    }
}

TEST(OlderChartData, withinEachOtherBeyondAllMeasureAreRefused)
{
    BlockCrafter crafter;
    for (int level = 0; level < 5000; ++level) {
        crafter.block(9, olderBlock(9));
        addRecords(crafter, Legend2::Legend(), Legend2::Data());
        crafter.block(1, Payload().u(1).s("a")).block(6, Payload().u(4).s("").s("").i(-1).s("").s("").s(""));
    }
    ChartData data;
    EXPECT_NE(loadError(data, crafter.bytes()).find("cannot load figure token data"), std::string::npos);
}

TEST(OlderChartData, cutAnywhereAreRefused)
{
    for (unsigned int version : {1U, 8U, 9U}) {
        std::string const bytes = olderBytes(version);
        for (std::size_t size = 64; size < bytes.size(); ++size) {
            ChartData read;
            EXPECT_THROW(loadFrom(read, bytes.substr(0, size)), IO::StreamException) << size;
        }
    }
}

} // namespace
} // namespace Zem::Fig2
