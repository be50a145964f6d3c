// The blocks that a scan finds in sound and in damaged streams.
#include "stream_bytes.h"

#include <ZemBlockScan.h>
#include <ZemError.h>

#include <gtest/gtest.h>

namespace Zem::IO {
namespace {

using Test::bytesOf;
using Test::HEADER_SIZE;

constexpr std::size_t OVERHEAD = 12;

/// Blocks of 4, 8 and 12 bytes, of the versions 1, 2 and 3; each holds its version again and again.
std::string threeBlocks()
{
    return bytesOf([](OutStream &stream) {
        for (unsigned int version = 1; version <= 3; ++version) {
            stream.beginBlock(4 * version, version);
            for (unsigned int i = 0; i < version; ++i)
                stream.writeUInt(version);
            stream.endBlock();
        }
    });
}

constexpr std::size_t SECOND = HEADER_SIZE + OVERHEAD + 4;
constexpr std::size_t THIRD = SECOND + OVERHEAD + 8;
constexpr std::size_t END = THIRD + OVERHEAD + 12;

std::string changed(std::size_t position, char with)
{
    std::string bytes = threeBlocks();
    bytes.at(position) = static_cast<char>(bytes[position] ^ with);
    return bytes;
}

std::vector<unsigned int> versionsOf(BlockScan const &scan)
{
    std::vector<unsigned int> versions;
    for (BlockPlace const &block : scan.getBlocks())
        versions.push_back(block.version);
    return versions;
}

TEST(BlockScan, findsTheBlocksOfASoundStream)
{
    BlockScan const scan(threeBlocks());

    EXPECT_TRUE(scan.isSound());
    EXPECT_TRUE(scan.hasSoundHeader());
    EXPECT_EQ(scan.getFileType(), QStringLiteral("Figure"));
    EXPECT_EQ(scan.getVersion(), 7U);
    EXPECT_EQ(scan.getSize(), END);
    EXPECT_EQ(scan.getFirstDamage(), END);
    ASSERT_EQ(scan.getBlocks().size(), 3U);
    EXPECT_EQ(scan.getBlocks()[0].position, HEADER_SIZE);
    EXPECT_EQ(scan.getBlocks()[1].position, SECOND);
    EXPECT_EQ(scan.getBlocks()[2].position, THIRD);
    EXPECT_EQ(scan.getBlocks()[2].size, 12U);
    EXPECT_EQ(scan.getBlocks()[2].end(), END);
    EXPECT_EQ(versionsOf(scan), (std::vector<unsigned int>{1, 2, 3}));
}

TEST(BlockScan, tellsADamagedBlockWhoseSizeIsRight)
{
    BlockScan const scan(changed(SECOND + 8, 1));

    EXPECT_FALSE(scan.isSound());
    EXPECT_EQ(versionsOf(scan), (std::vector<unsigned int>{1, 2, 3}));
    EXPECT_FALSE(scan.getBlocks()[1].isSound);
    EXPECT_FALSE(scan.getBlocks()[2].isBehindAHole);
    EXPECT_EQ(scan.getFirstDamage(), SECOND);
    EXPECT_TRUE(scan.isSound(0, 1));
    EXPECT_FALSE(scan.isSound(0, 2));
    EXPECT_TRUE(scan.isSound(2, 3));
}

TEST(BlockScan, tellsADamagedBlockAtTheEnd)
{
    BlockScan const scan(changed(END - 1, 1));
    ASSERT_EQ(scan.getBlocks().size(), 3U);
    EXPECT_FALSE(scan.getBlocks()[2].isSound);
}

TEST(BlockScan, goesOnBehindABlockWhoseSizeIsWrong)
{
    BlockScan const scan(changed(SECOND, 0x40));

    EXPECT_EQ(versionsOf(scan), (std::vector<unsigned int>{1, 3}));
    EXPECT_TRUE(scan.getBlocks()[1].isSound);
    EXPECT_TRUE(scan.getBlocks()[1].isBehindAHole);
    EXPECT_EQ(scan.getFirstDamage(), SECOND);
    // What begins behind the hole is sound by itself.
    EXPECT_FALSE(scan.isSound(0, 2));
    EXPECT_TRUE(scan.isSound(1, 2));
}

TEST(BlockScan, goesOnBehindForeignBytes)
{
    std::string bytes = threeBlocks();
    bytes.insert(SECOND, "foreign");
    EXPECT_EQ(versionsOf(BlockScan(bytes)), (std::vector<unsigned int>{1, 2, 3}));
}

TEST(BlockScan, endsWhereTheStreamIsCut)
{
    for (std::size_t size = THIRD + 1; size < END; ++size) {
        BlockScan const scan(threeBlocks().substr(0, size));
        EXPECT_FALSE(scan.isSound()) << size;
        EXPECT_EQ(versionsOf(scan), (std::vector<unsigned int>{1, 2})) << size;
        EXPECT_EQ(scan.getFirstDamage(), THIRD) << size;
    }
    EXPECT_TRUE(BlockScan(threeBlocks().substr(0, THIRD)).isSound());
}

TEST(BlockScan, readsADamagedHeader)
{
    for (std::size_t position : {std::size_t{0}, std::size_t{56}, std::size_t{60}}) {
        BlockScan const scan(changed(position, 1));
        EXPECT_FALSE(scan.hasSoundHeader()) << position;
        EXPECT_FALSE(scan.isSound()) << position;
        EXPECT_EQ(scan.getFirstDamage(), 0U) << position;
        EXPECT_EQ(scan.getFileType(), QStringLiteral("Figure")) << position;
        EXPECT_EQ(scan.getBlocks().size(), 3U) << position;
    }
}

TEST(BlockScan, findsNothingInOtherFiles)
{
    for (std::string const &bytes : {std::string(), std::string("short"), std::string(500, '\0')}) {
        BlockScan const scan(bytes);
        EXPECT_FALSE(scan.isSound());
        EXPECT_TRUE(scan.getBlocks().empty());
        EXPECT_EQ(scan.getFirstDamage(), 0U);
    }
}

TEST(BlockScan, opensAStreamAtABlock)
{
    BlockScan const scan(threeBlocks());
    std::unique_ptr<std::istream> const source = scan.openStream(1);
    InStream stream(source.get());
    ASSERT_TRUE(stream.isInit());
    EXPECT_EQ(scan.getBlock(source.get()), 1U);
    stream.openBlock();
    EXPECT_EQ(stream.getBlockVersion(), 2U);
    stream.closeBlock();
    EXPECT_EQ(scan.getBlock(source.get()), 2U);
    stream.openBlock();
    stream.closeBlock();
    EXPECT_EQ(scan.getBlock(source.get()), 3U);
    EXPECT_THROW(stream.openBlock(), StreamException);
}

TEST(BlockScan, opensAStreamThatEndsBeforeABlock)
{
    BlockScan const scan(threeBlocks());
    std::unique_ptr<std::istream> const source = scan.openStream(0, 1);
    InStream stream(source.get());
    stream.openBlock();
    stream.closeBlock();
    EXPECT_THROW(stream.openBlock(), StreamException);
    EXPECT_THROW((void)scan.openStream(4), ProgError);
    EXPECT_THROW((void)scan.openStream(2, 1), ProgError);
}

TEST(BlockScan, mendsChecksumsAndHeaderOfItsStreams)
{
    std::string bytes = changed(SECOND + 8, 1);
    bytes[0] = 'x';
    BlockScan const scan(bytes);
    std::unique_ptr<std::istream> const source = scan.openStream(1);
    InStream stream(source.get());
    ASSERT_TRUE(stream.isInit());
    stream.openBlock();
    unsigned int first = 0;
    stream.readUInt(&first);
    EXPECT_EQ(first, 3U); // 2 with the lowest bit turned
}

TEST(BlockScan, givesTheBytesOfBlocks)
{
    BlockScan const scan(threeBlocks());
    EXPECT_EQ(scan.getBytes(1, 3), threeBlocks().substr(SECOND));
    EXPECT_EQ(scan.getBytes(1, 1), "");
}

TEST(BlockScan, knowsOnlyItsOwnStreams)
{
    std::istringstream other(threeBlocks());
    EXPECT_THROW((void)BlockScan(threeBlocks()).getBlock(&other), ProgError);
}

/// Every byte begins what could be a block of half the file: checked one by one they would take minutes.
TEST(BlockScan, isDoneSoonWithBytesThatLookLikeBlocks)
{
    std::string bytes = threeBlocks();
    while (bytes.size() < (std::size_t{4} << 20))
        bytes += std::string("\x01\0\x10\0", 4);
    EXPECT_EQ(BlockScan(bytes).getBlocks().size(), 3U);
}

} // namespace
} // namespace Zem::IO
