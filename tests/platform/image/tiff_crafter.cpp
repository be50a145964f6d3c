#include "tiff_crafter.h"

#include <set>

namespace Zem::Test {

TiffCrafter::TiffCrafter(std::uint32_t width, std::uint32_t height, std::uint32_t bits, bool bigEndian)
    : bigEndian_(bigEndian), tags_{{TIFF_WIDTH, {width}},   {TIFF_HEIGHT, {height}},        {TIFF_BITS, {bits}},
                                   {TIFF_COMPRESSION, {1}}, {TIFF_PHOTOMETRIC, {1}},        {TIFF_SAMPLES, {1}},
                                   {TIFF_PLANAR, {1}},      {TIFF_ROWS_PER_STRIP, {height}}}
{
}

TiffCrafter &TiffCrafter::with(TiffTag tag, Numbers const &values)
{
    tags_[tag] = values;
    return *this;
}

TiffCrafter &TiffCrafter::without(TiffTag tag)
{
    tags_.erase(tag);
    return *this;
}

TiffCrafter &TiffCrafter::chunks(std::vector<std::string> const &chunks)
{
    chunks_ = chunks;
    return *this;
}

TiffCrafter &TiffCrafter::tiles(std::uint32_t width, std::uint32_t height)
{
    tiled_ = true;
    return without(TIFF_ROWS_PER_STRIP).with(TIFF_TILE_WIDTH, {width}).with(TIFF_TILE_HEIGHT, {height});
}

std::string TiffCrafter::number(std::uint64_t value, std::size_t size) const
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> 8 * (bigEndian_ ? size - 1 - i : i)));
    return bytes;
}

std::string TiffCrafter::samples(Numbers const &values, std::size_t size) const
{
    std::string bytes;
    for (std::uint32_t value : values)
        bytes += number(value, size);
    return bytes;
}

/// Header, chunks, values that are too long for the directory, directory.
std::string TiffCrafter::bytes() const
{
    static std::set<std::uint16_t> const longs{TIFF_WIDTH,        TIFF_HEIGHT,     TIFF_STRIP_OFFSETS, TIFF_STRIP_SIZES,
                                               TIFF_TILE_OFFSETS, TIFF_TILE_SIZES, TIFF_ROWS_PER_STRIP};
    constexpr std::size_t HEADER = 8;
    std::string body;
    auto tags = tags_;
    Numbers &offsets = tags[tiled_ ? TIFF_TILE_OFFSETS : TIFF_STRIP_OFFSETS];
    Numbers &sizes = tags[tiled_ ? TIFF_TILE_SIZES : TIFF_STRIP_SIZES];
    for (std::string const &chunk : chunks_) {
        offsets.push_back(static_cast<std::uint32_t>(HEADER + body.size()));
        sizes.push_back(static_cast<std::uint32_t>(chunk.size()));
        body += chunk;
    }
    std::string directory = number(tags.size(), 2);
    for (auto const &[tag, values] : tags) {
        std::size_t const size = longs.contains(tag) ? 4 : 2;
        std::string content = samples(values, size);
        if (content.size() > 4) {
            std::size_t const place = HEADER + body.size();
            body += content;
            content = number(place, 4);
        }
        content.resize(4);
        directory += number(tag, 2) + number(size == 4 ? 4 : 3, 2) + number(values.size(), 4) + content;
    }
    std::string const header = (bigEndian_ ? "MM" : "II") + number(42, 2) + number(HEADER + body.size(), 4);
    return header + body + directory + number(0, 4);
}

std::string lzw(std::string const &bytes)
{
    constexpr unsigned int CLEAR = 256;
    constexpr unsigned int END = 257;
    std::vector<unsigned int> codes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % 200 == 0) // before the codes grow to ten bits
            codes.push_back(CLEAR);
        codes.push_back(static_cast<unsigned char>(bytes[i]));
    }
    codes.push_back(END);
    std::string bits;
    for (unsigned int code : codes)
        for (int bit = 8; bit >= 0; --bit)
            bits += (code >> bit & 1U) != 0 ? '1' : '0';
    bits.resize((bits.size() + 7) / 8 * 8, '0');
    std::string packed;
    for (std::size_t i = 0; i < bits.size(); i += 8)
        packed += static_cast<char>(std::stoi(bits.substr(i, 8), nullptr, 2));
    return packed;
}

std::string packBits(std::string const &bytes)
{
    return static_cast<char>(bytes.size() - 1) + bytes;
}

} // namespace Zem::Test
