#include "chart_fixture.h"

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Range = BaVec2d<double>;

Range rangeX(ChartDataset const &dataset)
{
    Range x;
    Range y;
    dataset.getRange(&x, &y);
    return x;
}

Range rangeY(ChartDataset const &dataset)
{
    Range x;
    Range y;
    dataset.getRange(&x, &y);
    return y;
}

std::vector<ChartPoint> pointsOf(ChartDataset const &dataset)
{
    return {dataset.getPointBegin(0), dataset.getPointEnd()};
}

/// Two points and a gap.
ChartDataset smallDataset()
{
    ChartDataset dataset("d");
    dataset.setDisplayText("shown");
    dataset.addPoint(ChartPoint(3, {1.0, 20.0}, 0.5));
    dataset.addPoint(ChartPoint(4, {DBL_MAX, 0.0}, 0.0));
    dataset.addPoint(ChartPoint(5, {-2.0, 10.0}, 0.25));
    return dataset;
}

Payload pointPayload(int id, double x, double y, double value)
{
    return Payload().i(id).v(x, y).d(value);
}

TEST(ChartPoint, isNoStageAtTheOriginByDefault)
{
    ChartPoint const point;
    EXPECT_EQ(point.id, -1);
    EXPECT_EQ(point.point, (BaVec2d<double>(0, 0)));
    EXPECT_EQ(point.value, 0.0);
    EXPECT_TRUE(point.isValid());
}

TEST(ChartPoint, isInvalidWhenACoordinateIsMissing)
{
    EXPECT_TRUE(ChartPoint(0, {-DBL_MAX, 0}, DBL_MAX).isValid());
    EXPECT_FALSE(ChartPoint(0, {DBL_MAX, 0}, 0).isValid());
    EXPECT_FALSE(ChartPoint(0, {0, DBL_MAX}, 0).isValid());
}

TEST(ChartPointBlock, hasVersion1With28Bytes)
{
    std::string const bytes = blocksWith(ChartPoint(-7, {1.5, DBL_MAX}, 2.5));
    EXPECT_EQ(bytes, BlockCrafter().block(1, pointPayload(-7, 1.5, DBL_MAX, 2.5)).bytes());
    EXPECT_EQ(Support::blocksOf(bytes), "1:28 ");
    ChartPoint read;
    loadFrom(read, bytes);
    EXPECT_EQ(read, ChartPoint(-7, {1.5, DBL_MAX}, 2.5));
}

TEST(ChartPointBlock, ofAnUnknownVersionIsRefused)
{
    ChartPoint point;
    EXPECT_EQ(loadError(point, BlockCrafter().block(2, pointPayload(1, 2, 3, 4)).bytes()), "wrong block version");
}

TEST(ChartDataset, isEmptyAndShowsItsIdByDefault)
{
    ChartDataset const dataset("d");
    EXPECT_EQ(dataset.getId(), "d");
    EXPECT_EQ(dataset.getDisplayText(), "d");
    EXPECT_EQ(dataset.getNumberOfPoints(), 0U);
    EXPECT_EQ(dataset.getParameters(), ChartParameters());
    EXPECT_EQ(rangeX(dataset), Range(DBL_MAX, -DBL_MAX));
    EXPECT_EQ(rangeY(dataset), Range(DBL_MAX, -DBL_MAX));
}

TEST(ChartDataset, keepsIdTextAndParametersApart)
{
    ChartDataset dataset("d");
    dataset.setId("e");
    EXPECT_EQ(dataset.getDisplayText(), "d");
    dataset.setDisplayText("f");
    EXPECT_EQ(dataset.getId(), "e");
    ChartParameters parameters;
    parameters.setName("g");
    dataset.setParameters(parameters);
    EXPECT_EQ(dataset.getParameters(), parameters);
}

TEST(ChartDataset, keepsPointsInTheirOrderAndWidensItsRanges)
{
    ChartDataset const dataset = smallDataset();
    EXPECT_EQ(pointsOf(dataset),
              (std::vector<ChartPoint>{{3, {1.0, 20.0}, 0.5}, {4, {DBL_MAX, 0.0}, 0.0}, {5, {-2.0, 10.0}, 0.25}}));
    EXPECT_EQ(rangeX(dataset), Range(-2.0, 1.0));
    EXPECT_EQ(rangeY(dataset), Range(10.0, 20.0));
}

TEST(ChartDataset, leavesBothRangesForAPointWithOneCoordinate)
{
    ChartDataset dataset("d");
    dataset.addPoint(ChartPoint(0, {5.0, DBL_MAX}, 0));
    dataset.addPoint(ChartPoint(1, {DBL_MAX, 5.0}, 0));
    EXPECT_EQ(dataset.getNumberOfPoints(), 2U);
    EXPECT_EQ(rangeX(dataset), Range(DBL_MAX, -DBL_MAX));
    EXPECT_EQ(rangeY(dataset), Range(DBL_MAX, -DBL_MAX));
}

TEST(ChartDataset, givesTheEndForAnIndexPastIt)
{
    ChartDataset dataset = smallDataset();
    ChartDataset const &fixed = dataset;
    EXPECT_EQ(fixed.getPointBegin(2)->id, 5);
    EXPECT_EQ(fixed.getPointBegin(3), fixed.getPointEnd());
    EXPECT_EQ(fixed.getPointBegin(4294967295U), fixed.getPointEnd());
    EXPECT_EQ(dataset.getPointBegin(3), dataset.getPointEnd());
}

TEST(ChartDataset, letsPointsBeChangedInPlace)
{
    ChartDataset dataset = smallDataset();
    dataset.getPointBegin(1)->value = 9.0;
    EXPECT_EQ(pointsOf(dataset)[1].value, 9.0);
}

TEST(ChartDataset, findsPointsByTheirId)
{
    ChartDataset const dataset = smallDataset();
    EXPECT_TRUE(dataset.pointExists(3));
    EXPECT_TRUE(dataset.pointExists(4));
    EXPECT_FALSE(dataset.pointExists(0));
}

TEST(ChartDataset, isCopiedWithItsPoints)
{
    ChartDataset dataset = smallDataset();
    ChartDataset copy(dataset);
    copy.getPointBegin(0)->id = 99;
    EXPECT_EQ(dataset.getPointBegin(0)->id, 3);
    EXPECT_EQ(copy.getDisplayText(), "shown");
}

TEST(ChartDataset, isToldInFiveLines)
{
    EXPECT_EQ(smallDataset().toString(), "Chart Dataset ID: d\n"
                                         "  Points: 3\n"
                                         "  Range X: -2.00, 1.00\n"
                                         "  Range Y: 10.00, 20.00\n"
                                         "  Display text: shown\n");
}

TEST(ChartDataset, isToldWithMarksOfFormatsInItsNames)
{
    ChartDataset dataset("%1");
    dataset.setDisplayText("%2");
    EXPECT_TRUE(dataset.toString().startsWith("Chart Dataset ID: %1\n"));
    EXPECT_TRUE(dataset.toString().endsWith("  Display text: %2\n"));
}

TEST(ChartDatasetBlock, hasVersion2AndItsPointsAndParametersBehind)
{
    BlockCrafter crafter;
    crafter.block(2, Payload().s("d").s("shown").v(-2, 1).v(10, 20).u(3));
    crafter.block(1, pointPayload(3, 1, 20, 0.5));
    crafter.block(1, pointPayload(4, DBL_MAX, 0, 0));
    crafter.block(1, pointPayload(5, -2, 10, 0.25));
    addRecords(crafter, ChartParameters());

    EXPECT_EQ(blocksWith(smallDataset()), crafter.bytes());

    ChartDataset read("other");
    read.addPoint(ChartPoint(1, {1, 1}, 1));
    loadFrom(read, crafter.bytes());
    EXPECT_EQ(read.toString(), smallDataset().toString());
    EXPECT_EQ(pointsOf(read), pointsOf(smallDataset()));
}

TEST(ChartDatasetBlock, ofVersion1HasPointsButEmptyRanges)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().s("d").s("shown").u(1)).block(1, pointPayload(3, 1, 20, 0.5));
    ChartDataset read = smallDataset();
    loadFrom(read, addRecords(crafter, ChartParameters()).bytes());
    EXPECT_EQ(pointsOf(read), (std::vector<ChartPoint>{{3, {1.0, 20.0}, 0.5}}));
    EXPECT_EQ(rangeX(read), Range(DBL_MAX, -DBL_MAX));
    EXPECT_EQ(rangeY(read), Range(DBL_MAX, -DBL_MAX));
}

TEST(ChartDatasetBlock, takesRangesAsStored)
{
    BlockCrafter crafter;
    crafter.block(2, Payload().s("d").s("").v(7, 8).v(9, 10).u(0));
    ChartDataset read("d");
    loadFrom(read, addRecords(crafter, ChartParameters()).bytes());
    EXPECT_EQ(rangeX(read), Range(7, 8));
    EXPECT_EQ(rangeY(read), Range(9, 10));
    EXPECT_EQ(read.getDisplayText(), "");
}

TEST(ChartDatasetBlock, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 3U}) {
        BlockCrafter crafter;
        crafter.block(version, Payload().s("d").s("").v(7, 8).v(9, 10).u(0));
        ChartDataset read("d");
        EXPECT_EQ(loadError(read, addRecords(crafter, ChartParameters()).bytes()),
                  "cannot load figure chart dataset: wrong block version");
    }
}

TEST(ChartDatasetBlock, wrapsAFailureOncePerLevel)
{
    BlockCrafter crafter;
    crafter.block(2, Payload().s("d").s("").v(7, 8).v(9, 10).u(0)).block(6, Payload());
    ChartDataset read("d");
    EXPECT_EQ(loadError(read, crafter.bytes()),
              "cannot load figure chart dataset: cannot load figure chart parameters: wrong block version");
}

TEST(ChartDatasetBlock, thatPromisesMorePointsThanFollowIsRefusedWithThoseItHas)
{
    BlockCrafter crafter;
    crafter.block(2, Payload().s("d").s("").v(7, 8).v(9, 10).u(4294967295U)).block(1, pointPayload(3, 1, 20, 0.5));
    ChartDataset read("d");
    EXPECT_NE(loadError(read, crafter.bytes()), "nothing thrown");
    EXPECT_EQ(read.getNumberOfPoints(), 1U);
}

} // namespace
} // namespace Zem::Fig2
