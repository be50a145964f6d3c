#include <figqt_huffman.h>
#include <figqt_run_packer.h>

#include <gtest/gtest.h>

#include <zlib.h>

#include <random>

namespace Zem::Fig2Qt {
namespace {

using Bytes = std::vector<unsigned char>;

std::string packed(Bytes const &bytes)
{
    std::string result;
    RunPacker().pack(bytes, true, &result);
    return result;
}

/// What zlib makes of a stream without a head; nothing when it is not one.
Bytes unpacked(std::string const &stream, std::size_t size)
{
    Bytes result(size + 1);
    z_stream zlib = {};
    inflateInit2(&zlib, -MAX_WBITS);
    zlib.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(stream.data()));
    zlib.avail_in = static_cast<uInt>(stream.size());
    zlib.next_out = result.data();
    zlib.avail_out = static_cast<uInt>(result.size());
    bool const complete = inflate(&zlib, Z_FINISH) == Z_STREAM_END && zlib.avail_in == 0;
    result.resize(complete ? zlib.total_out : 0);
    inflateEnd(&zlib);
    return result;
}

Bytes randomBytes(std::size_t count, int most)
{
    std::mt19937 engine(5);
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes.push_back(static_cast<unsigned char>(engine() % static_cast<unsigned>(most)));
    return bytes;
}

TEST(RunPacker, givesBackRunsOfEveryLength)
{
    Bytes bytes;
    for (std::size_t length = 1; length <= 1100; ++length)
        bytes.insert(bytes.end(), length, static_cast<unsigned char>(length % 251));

    EXPECT_EQ(unpacked(packed(bytes), bytes.size()), bytes);
}

TEST(RunPacker, givesBackBytesWithoutRuns)
{
    for (int const most : {2, 3, 256}) {
        Bytes const bytes = randomBytes(200'000, most);
        EXPECT_EQ(unpacked(packed(bytes), bytes.size()), bytes) << most;
    }
}

TEST(RunPacker, givesBackFewBytesAndNone)
{
    for (Bytes const &bytes : {Bytes{}, Bytes{7}, Bytes{7, 7}, Bytes(3, 0), Bytes(259, 0), Bytes(260, 0)})
        EXPECT_EQ(unpacked(packed(bytes), bytes.size()), bytes) << bytes.size();
}

TEST(RunPacker, makesNextToNothingOfAnEmptyPage)
{
    // A million equal bytes are 3,876 runs of one bit for the length and one for the distance.
    EXPECT_LT(packed(Bytes(1'000'000, 0)).size(), 1100U);
}

TEST(RunPacker, joinsPartsToOneStream)
{
    Bytes const first = randomBytes(1000, 5);
    Bytes const second(500, 9);
    std::string stream;
    RunPacker packer;
    packer.pack(first, false, &stream);
    packer.pack(second, true, &stream);

    Bytes both = first;
    both.insert(both.end(), second.begin(), second.end());
    EXPECT_EQ(unpacked(stream, both.size()), both);
}

TEST(RunPacker, staysWithinTheLongestWordsForVeryUnevenBytes)
{
    // Each byte occurs as often as the two before it together: the rarest would get words of 24 bits.
    Bytes bytes;
    std::size_t count = 1;
    std::size_t before = 1;
    for (unsigned char byte = 0; byte < 25; ++byte) {
        for (std::size_t i = 0; i < count; ++i)
            bytes.insert(bytes.end(), {byte, 100});
        before = std::exchange(count, count + before);
    }

    EXPECT_EQ(unpacked(packed(bytes), bytes.size()), bytes);
}

TEST(HuffmanCode, usesAllOfItsRoomWhateverItsLimit)
{
    std::vector<std::uint32_t> counts;
    for (std::uint32_t i = 0; i < 19; ++i)
        counts.push_back(1U << i);
    for (unsigned const longest : {5U, 7U, 15U}) {
        HuffmanCode const code(counts, longest);
        double room = 0.0;
        for (unsigned char const length : code.getLengths()) {
            EXPECT_LE(length, longest);
            room += 1.0 / (1U << length);
        }
        EXPECT_EQ(room, 1.0) << longest;
    }
}

TEST(HuffmanCode, givesRareSymbolsLongerWords)
{
    std::vector<std::uint32_t> const counts{0, 8, 4, 2, 2};
    HuffmanCode const code(counts, 15);

    EXPECT_EQ(code.getLengths(), (std::vector<unsigned char>{0, 1, 2, 3, 3}));
    // The canonical words 0, 10, 110 and 111, first bit lowest.
    EXPECT_EQ(code.getWord(1), 0U);
    EXPECT_EQ(code.getWord(2), 1U);
    EXPECT_EQ(code.getWord(3), 3U);
    EXPECT_EQ(code.getWord(4), 7U);
}

} // namespace
} // namespace Zem::Fig2Qt
