#include "figqt_run_packer.h"

#include "figqt_huffman.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t SHORTEST_RUN = 3;
constexpr std::size_t LONGEST_RUN = 258;
constexpr std::uint16_t RUN = 256; // of length 0, among the symbols
constexpr std::size_t END_OF_BLOCK = 256;
constexpr std::size_t LENGTH_CODES = 257; // the first of them
constexpr std::size_t CODES = 286;

/// How deflate writes a run: a code, and bits that follow it.
struct LengthCode
{
    std::uint16_t code;
    unsigned char extraBits;
    unsigned char extra;
};

constexpr std::array<LengthCode, LONGEST_RUN + 1> lengthCodes()
{
    std::array<LengthCode, LONGEST_RUN + 1> table = {};
    std::size_t length = SHORTEST_RUN;
    for (std::size_t i = 0; i < 28; ++i) {
        std::size_t const extraBits = i < 8 ? 0 : i / 4 - 1;
        for (std::size_t extra = 0; extra < std::size_t{1} << extraBits && length < LONGEST_RUN; ++extra)
            table[length++] = {static_cast<std::uint16_t>(LENGTH_CODES + i), static_cast<unsigned char>(extraBits),
                               static_cast<unsigned char>(extra)};
    }
    table[LONGEST_RUN] = {285, 0, 0};
    return table;
}

constexpr std::array<LengthCode, LONGEST_RUN + 1> LENGTH_TABLE = lengthCodes();

/// Gathers bits, lowest first, into bytes.
class BitWriter
{
public:
    explicit BitWriter(std::string *to) : to_(to) {}

    void write(std::uint64_t bits, unsigned count)
    {
        held_ |= bits << count_;
        count_ += count;
        if (count_ >= 32) {
            char bytes[4];
            auto const low = static_cast<std::uint32_t>(held_);
            for (unsigned i = 0; i < 4; ++i)
                bytes[i] = static_cast<char>(low >> 8U * i);
            to_->append(static_cast<char const *>(bytes), 4);
            held_ >>= 32U;
            count_ -= 32;
        }
    }
    void fillByte()
    {
        while (count_ > 0) {
            to_->push_back(static_cast<char>(held_));
            held_ >>= 8U;
            count_ -= std::min(count_, 8U);
        }
        held_ = 0;
    }

private:
    std::string *to_;
    std::uint64_t held_ = 0;
    unsigned count_ = 0;
};

/// The head of a block: the lengths of the words of both codes, themselves in a code.
void writeLengths(std::vector<unsigned char> const &lengths, BitWriter *bits)
{
    constexpr unsigned char ORDER[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    std::array<std::uint32_t, 19> counts = {};
    for (unsigned char const length : lengths)
        ++counts[length];
    ++counts[1]; // of the one distance
    HuffmanCode const code(counts, 7);
    bits->write(lengths.size() - LENGTH_CODES, 5);
    bits->write(0, 5); // one distance
    bits->write(sizeof ORDER - 4, 4);
    for (unsigned char const symbol : ORDER)
        bits->write(code.getLengths()[symbol], 3);
    for (unsigned char const length : lengths)
        bits->write(code.getWord(length), code.getLengths()[length]);
    bits->write(code.getWord(1), code.getLengths()[1]);
}

/// How many bytes from `at` on are like the one there.
std::size_t runAt(unsigned char const *at, unsigned char const *end)
{
    std::uint64_t const pattern = *at * 0x0101010101010101ULL;
    unsigned char const *next = at + 1;
    for (; end - next >= 8; next += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, next, 8);
        if (word == pattern)
            continue;
        while (*next == *at)
            ++next;
        return static_cast<std::size_t>(next - at);
    }
    while (next < end && *next == *at)
        ++next;
    return static_cast<std::size_t>(next - at);
}

} // namespace

void RunPacker::addRun(std::size_t length)
{
    while (length >= SHORTEST_RUN) {
        std::size_t const part = std::min(length, LONGEST_RUN);
        symbols_.push_back(static_cast<std::uint16_t>(RUN + part));
        ++counts_[LENGTH_TABLE[part].code];
        length -= part;
    }
}

void RunPacker::findRuns(std::span<unsigned char const> bytes)
{
    symbols_.clear();
    counts_.assign(CODES, 0);
    counts_[END_OF_BLOCK] = 1;
    unsigned char const *const end = bytes.data() + bytes.size();
    for (unsigned char const *at = bytes.data(); at < end;) {
        std::size_t const run = at + 1 < end && at[1] == at[0] ? runAt(at, end) : 1;
        // The byte itself comes first, then how often it comes again; what is too short for that as bytes.
        std::size_t const again = run - 1;
        std::size_t const rest = again % LONGEST_RUN < SHORTEST_RUN ? again % LONGEST_RUN : 0;
        symbols_.insert(symbols_.end(), 1 + rest, *at);
        counts_[*at] += static_cast<std::uint32_t>(1 + rest);
        addRun(again - rest);
        at += run;
    }
}

void RunPacker::pack(std::span<unsigned char const> bytes, bool last, std::string *to)
{
    findRuns(bytes);
    HuffmanCode const code(counts_, 15);
    BitWriter bits(to);
    bits.write(last ? 1 : 0, 1);
    bits.write(2, 2); // a block with codes of its own
    writeLengths(code.getLengths(), &bits);
    for (std::uint16_t const symbol : symbols_) {
        if (symbol < RUN) {
            bits.write(code.getWord(symbol), code.getLengths()[symbol]);
            continue;
        }
        LengthCode const &length = LENGTH_TABLE[symbol - RUN];
        unsigned const bitCount = code.getLengths()[length.code];
        // The distance, always the byte before, is one bit of 0 at the end.
        bits.write(code.getWord(length.code) | static_cast<std::uint64_t>(length.extra) << bitCount,
                   bitCount + length.extraBits + 1);
    }
    bits.write(code.getWord(END_OF_BLOCK), code.getLengths()[END_OF_BLOCK]);
    if (!last)
        bits.write(0, 3); // a block of bytes as they are, which begins at a whole byte, and is empty
    bits.fillByte();
    if (!last)
        to->append("\x00\x00\xff\xff", 4);
}

} // namespace Zem::Fig2Qt
