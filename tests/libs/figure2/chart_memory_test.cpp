// How much memory the data of charts take while they are loaded.
#include "chart_fixture.h"
#include "load_limit.h"

#include <AllocationPeak.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Support::AllocationPeak;

/// The peak while the bytes are loaded, whether they are good or not.
template <class Record>
std::size_t peakOf(Record &record, std::string const &bytes)
{
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    AllocationPeak const peak;
    thrownText<IO::StreamException>([&] { record.load(&stream); });
    return peak.bytes();
}

TEST(ChartMemory, ofADatasetGoesWithItsPoints)
{
    ChartDataset dataset("d");
    for (int i = 0; i < 100000; ++i)
        dataset.addPoint(ChartPoint(i, {0.5 * i, 1.0}, 2.0));
    std::string const bytes = blocksWith(dataset);
    ChartDataset read("d");
    // Forty bytes in the stream, thirty-two in memory, and twice that and the half while the list grows.
    EXPECT_LE(peakOf(read, bytes), 3 * bytes.size());
    EXPECT_EQ(read.getNumberOfPoints(), 100000U);
}

TEST(ChartMemory, isNotTakenForWhatABlockOnlyClaims)
{
    ChartDataset dataset("d");
    EXPECT_LE(peakOf(dataset, BlockCrafter().block(2, Payload().s("").s("").v(0, 0).v(0, 0).u(4294967295U)).bytes()),
              100000U);
    ChartData data;
    EXPECT_LE(peakOf(data, BlockCrafter().block(14, Payload().u(4294967295U)).bytes()), 100000U);
    PointsChartMarker points;
    EXPECT_LE(peakOf(points, BlockCrafter().block(1, Payload().u(1)).block(1, Payload().u(4294967295U)).bytes()),
              100000U);
}

TEST(ChartMemory, ofManyEmptyIdsIsASmallMultipleOfTheirBytes)
{
    Payload payload;
    payload.u(1000000U);
    for (int i = 0; i < 1000000; ++i)
        payload.s("");
    std::string const bytes = BlockCrafter().block(14, payload).bytes();
    ChartData data;
    EXPECT_LE(peakOf(data, bytes), loadLimit(bytes.size()));
}

} // namespace
} // namespace Zem::Fig2
