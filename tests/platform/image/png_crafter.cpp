#include "png_crafter.h"

#include <zlib.h>

namespace Zem::Test {

namespace {

unsigned char const *unsignedBytes(std::string const &bytes)
{
    return reinterpret_cast<unsigned char const *>(bytes.data());
}

} // namespace

std::string bigEndian(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
    return bytes;
}

std::string deflated(std::string const &bytes)
{
    uLongf size = compressBound(bytes.size());
    std::string packed(size, '\0');
    compress2(reinterpret_cast<Bytef *>(packed.data()), &size, unsignedBytes(bytes), bytes.size(), 9);
    packed.resize(size);
    return packed;
}

std::string PngCrafter::chunk(std::string const &type, std::string const &data)
{
    std::string const checked = type + data;
    uLong const checksum = crc32(0, unsignedBytes(checked), static_cast<uInt>(checked.size()));
    return bigEndian(static_cast<std::uint32_t>(data.size())) + checked +
           bigEndian(static_cast<std::uint32_t>(checksum));
}

std::string PngCrafter::bytes() const
{
    std::string header = bigEndian(width) + bigEndian(height);
    header += {static_cast<char>(depth), static_cast<char>(format), 0, 0, static_cast<char>(interlaced)};
    std::string file = "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + ancillary;
    if (!palette.empty())
        file += chunk("PLTE", palette);
    if (!transparency.empty())
        file += chunk("tRNS", transparency);
    return file + chunk("IDAT", deflated(rows)) + chunk("IEND", "");
}

} // namespace Zem::Test
