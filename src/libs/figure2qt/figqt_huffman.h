// figqt_huffman.h: prefix codes as deflate uses them.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// A code word for each symbol that occurs, the shorter the more often it does.
class HuffmanCode
{
public:
    /// No word gets longer than `longest` bits, 15 at most; there must be no more symbols than that allows.
    HuffmanCode(std::span<std::uint32_t const> counts, unsigned longest);

    /// 0 for a symbol that does not occur.
    std::vector<unsigned char> const &getLengths() const { return lengths_; }
    /// The word with its first bit lowest, as it goes into the stream.
    std::uint32_t getWord(std::size_t symbol) const { return words_[symbol]; }

private:
    void limit(unsigned longest);
    unsigned char &longestBelow(unsigned limit);
    void assignWords();

    std::vector<unsigned char> lengths_;
    std::vector<std::uint16_t> words_;
};

} // namespace Zem::Fig2Qt
