// png_crafter.h: PNG files byte by byte, from nothing but the format and zlib.
#pragma once

#include <cstdint>
#include <string>

namespace Zem::Test {

enum PngFormat { PNG_GREY = 0, PNG_RGB = 2, PNG_PALETTE = 3, PNG_GREY_ALPHA = 4, PNG_RGB_ALPHA = 6 };

struct PngCrafter
{
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    unsigned char depth = 8;
    PngFormat format = PNG_GREY;
    bool interlaced = false;
    std::string palette{};      // of PLTE
    std::string transparency{}; // of tRNS
    std::string rows{};         // each begins with the number of its filter
    std::string ancillary{};    // whole chunks before the pixels

    std::string bytes() const;
    static std::string chunk(std::string const &type, std::string const &data);
};

std::string bigEndian(std::uint32_t value);
/// Deflated, with the frame of zlib.
std::string deflated(std::string const &bytes);

} // namespace Zem::Test
