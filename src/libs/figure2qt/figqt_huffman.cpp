#include "figqt_huffman.h"

#include <algorithm>
#include <array>
#include <functional>
#include <queue>
#include <utility>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MOST_BITS = 15;

std::vector<std::size_t> symbolsOf(std::span<std::uint32_t const> counts)
{
    std::vector<std::size_t> symbols;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] > 0)
            symbols.push_back(i);
    }
    return symbols;
}

/// How deep each of the leaves stands in the tree; two at least.
std::vector<std::size_t> depthsOf(std::vector<std::uint64_t> const &leaves)
{
    using Node = std::pair<std::uint64_t, std::size_t>; // weight, number
    std::priority_queue<Node, std::vector<Node>, std::greater<>> open;
    for (std::size_t i = 0; i < leaves.size(); ++i)
        open.emplace(leaves[i], i);
    std::vector<std::size_t> parents(2 * leaves.size() - 1);
    for (std::size_t inner = leaves.size(); inner < parents.size(); ++inner) {
        std::uint64_t weight = 0;
        for (int child = 0; child < 2; ++child) {
            weight += open.top().first;
            parents[open.top().second] = inner;
            open.pop();
        }
        open.emplace(weight, inner);
    }
    std::vector<std::size_t> depths(parents.size());
    for (std::size_t node = parents.size() - 1; node-- > 0;)
        depths[node] = depths[parents[node]] + 1;
    depths.resize(leaves.size());
    return depths;
}

} // namespace

HuffmanCode::HuffmanCode(std::span<std::uint32_t const> counts, unsigned longest)
    : lengths_(counts.size()), words_(counts.size())
{
    std::vector<std::size_t> const symbols = symbolsOf(counts);
    if (symbols.size() == 1)
        lengths_[symbols.front()] = 1;
    if (symbols.size() > 1) {
        std::vector<std::uint64_t> weights;
        for (std::size_t const symbol : symbols)
            weights.push_back(counts[symbol]);
        std::vector<std::size_t> const depths = depthsOf(weights);
        for (std::size_t i = 0; i < symbols.size(); ++i)
            lengths_[symbols[i]] = static_cast<unsigned char>(std::min<std::size_t>(depths[i], longest));
        limit(longest);
    }
    assignWords();
}

/// Cutting words short took more of the code's room than there is: others get longer until it fits again. What that
/// leaves is given back, as deflate wants no room unused.
void HuffmanCode::limit(unsigned longest)
{
    std::uint32_t const room = 1U << longest;
    std::uint32_t used = 0;
    for (unsigned char const length : lengths_)
        used += length ? room >> length : 0;
    while (used > room) {
        unsigned char &grown = longestBelow(longest);
        used -= room >> (grown + 1U);
        ++grown;
    }
    while (used < room) {
        unsigned char &shortened = longestBelow(longest + 1);
        used += room >> shortened;
        --shortened;
    }
}

/// The longest that can still grow takes the least from the text.
unsigned char &HuffmanCode::longestBelow(unsigned limit)
{
    auto longest = lengths_.begin();
    for (auto length = lengths_.begin(); length != lengths_.end(); ++length) {
        if (*length < limit && (*length > *longest || *longest >= limit))
            longest = length;
    }
    return *longest;
}

void HuffmanCode::assignWords()
{
    std::array<std::uint32_t, MOST_BITS + 2> next = {};
    for (unsigned char const length : lengths_)
        next[length + 1U] += length ? 1 : 0;
    for (std::size_t bits = 1; bits < next.size(); ++bits)
        next[bits] = (next[bits - 1] + next[bits]) << 1U;
    for (std::size_t symbol = 0; symbol < lengths_.size(); ++symbol) {
        unsigned const length = lengths_[symbol];
        if (length == 0)
            continue;
        std::uint32_t word = next[length]++;
        std::uint32_t reversed = 0;
        for (unsigned bit = 0; bit < length; ++bit, word >>= 1U)
            reversed = reversed << 1U | (word & 1U);
        words_[symbol] = static_cast<std::uint16_t>(reversed);
    }
}

} // namespace Zem::Fig2Qt
