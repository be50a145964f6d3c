// How much memory picture data take while they are loaded.
#include "load_limit.h"

#include <AllocationPeak.h>
#include <BlockCrafter.h>
#include <ElementForms.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

constexpr unsigned int TOO_MANY = 4294967295U;

/// The peak while the bytes are loaded, whether they are good or not.
template <class Record>
std::size_t peakOf(Record &record, std::string const &bytes)
{
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    Support::AllocationPeak const peak;
    Support::thrownText<IO::StreamException>([&] { record.load(&stream); });
    return peak.bytes();
}

TEST(ImageMemory, ofPointsGoesWithTheirNumber)
{
    ImageDataPoints points;
    for (int i = 0; i < 100000; ++i)
        points.addPoint(i, {0.5 * i, 1, 2}, {3, 4, 5}, 6, true, 7);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { points.save(&stream); });
    ImageDataPoints read;
    // Sixty-five bytes in the block, which is held as a whole; seventy-two in the list, and up to three times that while
    // it grows.
    EXPECT_LE(peakOf(read, bytes), 4 * bytes.size());
    EXPECT_EQ(read.getNumberOfPoints(), 100000U);
}

TEST(ImageMemory, isNotTakenForWhatABlockOnlyClaims)
{
    ImageDataPoints points;
    EXPECT_LE(peakOf(points, BlockCrafter().block(2, Payload().u(4)).block(2, Payload().u(TOO_MANY)).bytes()), 100000U);
    ImageDataObject object("");
    EXPECT_LE(peakOf(object, BlockCrafter().block(9, Payload().s("").v(0, 0).u(TOO_MANY)).bytes()), 100000U);
    ImageData data;
    EXPECT_LE(peakOf(data, BlockCrafter().block(6, Payload().u(TOO_MANY)).bytes()), 100000U);
    BlockCrafter masks;
    masks.block(6, Payload().u(0)).block(1, Payload().b(false).b(true).b(false)).block(1, Payload().u(TOO_MANY));
    EXPECT_LE(peakOf(data, masks.bytes()), 100000U);
}

TEST(ImageMemory, ofManyIdsAndTypesIsASmallMultipleOfTheirBytes)
{
    Payload ids;
    ids.u(1000000U);
    for (int i = 0; i < 1000000; ++i)
        ids.s("");
    std::string const manyIds = BlockCrafter().block(6, ids).bytes();
    ImageData data;
    EXPECT_LE(peakOf(data, manyIds), loadLimit(manyIds.size()));

    Payload types;
    types.s("").v(0, 0).u(1000000U);
    for (int i = 0; i < 1000000; ++i)
        types.u(4);
    std::string const manyTypes = BlockCrafter().block(7, types.s("").u(0).b(false).b(true)).bytes();
    ImageDataObject object("");
    EXPECT_LE(peakOf(object, manyTypes), loadLimit(manyTypes.size()));
}

TEST(ImageMemory, ofManyObjectsIsASmallMultipleOfTheirBytes)
{
    ImageData data;
    for (int i = 0; i < 20000; ++i)
        data.addObject(new ImageDataObject(QString::number(i)));
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { data.save(&stream); });
    ImageData read;
    EXPECT_LE(peakOf(read, bytes), loadLimit(bytes.size()));
    EXPECT_TRUE(read.objectExists("19999"));
}

} // namespace
} // namespace Zem::Fig2
