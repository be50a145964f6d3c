#include "PackedPicture.h"

#include "FormatPage.h"

#include <cstdint>
#include <cstdio>
#include <zlib.h>

namespace Zem::Support {

namespace {

constexpr std::size_t HEADER_SIZE = 16;
constexpr std::size_t PIXEL_SIZES[] = {1, 2, 4, 4};

struct PackedHeader
{
    unsigned char kind;
    unsigned char flags;
    std::uint32_t width;
    std::uint32_t height;
};

PackedHeader headerOf(std::string_view bytes)
{
    auto const byte = [bytes](std::size_t place) { return static_cast<unsigned char>(bytes[place]); };
    auto const number = [&byte](std::size_t place) {
        return byte(place) | std::uint32_t{byte(place + 1)} << 8 | std::uint32_t{byte(place + 2)} << 16 |
               std::uint32_t{byte(place + 3)} << 24;
    };
    if (bytes.size() < HEADER_SIZE || bytes.substr(0, 5) != "\x8aZP\n\x01" || byte(7) != 0)
        throw FormatError("no packed picture");
    PackedHeader const header{byte(5), byte(6), number(8), number(12)};
    if (header.kind >= std::size(PIXEL_SIZES) || header.flags > 1)
        throw FormatError("unknown kind of packed picture");
    return header;
}

std::string inflated(std::string_view bytes, std::size_t size)
{
    std::string stored(size + 1, '\0');
    auto length = static_cast<uLongf>(stored.size());
    if (uncompress(reinterpret_cast<Bytef *>(stored.data()), &length, reinterpret_cast<Bytef const *>(bytes.data()),
                   static_cast<uLong>(bytes.size())) != Z_OK ||
        length != size)
        throw FormatError("the pixels of a packed picture do not fit its size");
    stored.resize(size);
    return stored;
}

/// The bytes of a row pixel by pixel.
std::string rowOf(std::string_view stored, std::size_t width, std::size_t pixelSize)
{
    std::string row(stored.size(), '\0');
    for (std::size_t place = 0; place < pixelSize; ++place) {
        unsigned char left = 0;
        for (std::size_t x = 0; x < width; ++x) {
            left = static_cast<unsigned char>(left + static_cast<unsigned char>(stored[place * width + x]));
            row[x * pixelSize + place] = static_cast<char>(left);
        }
    }
    return row;
}

} // namespace

std::string tellPackedPicture(std::string_view bytes)
{
    PackedHeader const header = headerOf(bytes);
    std::size_t const pixelSize = PIXEL_SIZES[header.kind];
    std::size_t const rowSize = header.width * pixelSize;
    std::string const stored = inflated(bytes.substr(HEADER_SIZE), rowSize * header.height);
    uLong sum = crc32(0, nullptr, 0);
    for (std::size_t y = 0; y < header.height; ++y) {
        std::string const row = rowOf(std::string_view(stored).substr(y * rowSize, rowSize), header.width, pixelSize);
        sum = crc32(sum, reinterpret_cast<Bytef const *>(row.data()), static_cast<uInt>(row.size()));
    }
    char text[64];
    std::snprintf(text, sizeof text, "%u %ux%u%s %08lx", header.kind, header.width, header.height,
                  header.flags ? " alpha" : "", sum);
    return text;
}

} // namespace Zem::Support
