// tiff_crafter.h: TIFF files byte by byte, from nothing but the format and zlib.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Zem::Test {

enum TiffTag : std::uint16_t {
    TIFF_WIDTH = 256,
    TIFF_HEIGHT = 257,
    TIFF_BITS = 258,
    TIFF_COMPRESSION = 259,
    TIFF_PHOTOMETRIC = 262,
    TIFF_STRIP_OFFSETS = 273,
    TIFF_ORIENTATION = 274,
    TIFF_SAMPLES = 277,
    TIFF_ROWS_PER_STRIP = 278,
    TIFF_STRIP_SIZES = 279,
    TIFF_PLANAR = 284,
    TIFF_PREDICTOR = 317,
    TIFF_PALETTE = 320,
    TIFF_TILE_WIDTH = 322,
    TIFF_TILE_HEIGHT = 323,
    TIFF_TILE_OFFSETS = 324,
    TIFF_TILE_SIZES = 325,
    TIFF_EXTRA = 338,
    TIFF_FORMAT = 339
};

using Numbers = std::vector<std::uint32_t>;

/// A file of either byte order. Without other settings a grey picture of one strip.
class TiffCrafter
{
public:
    TiffCrafter(std::uint32_t width, std::uint32_t height, std::uint32_t bits, bool bigEndian = false);

    /// One value or several, in the type that the tag usually has.
    TiffCrafter &with(TiffTag tag, Numbers const &values);
    TiffCrafter &without(TiffTag tag);
    /// The strips or tiles, packed already.
    TiffCrafter &chunks(std::vector<std::string> const &chunks);
    TiffCrafter &tiles(std::uint32_t width, std::uint32_t height);

    std::string bytes() const;
    /// Samples of that many bytes in the order of the file.
    std::string samples(Numbers const &values, std::size_t size) const;

private:
    std::string number(std::uint64_t value, std::size_t size) const;

    bool bigEndian_;
    bool tiled_ = false;
    std::map<std::uint16_t, Numbers> tags_;
    std::vector<std::string> chunks_;
};

/// Packed as LZW without ever using what it has seen.
std::string lzw(std::string const &bytes);
/// Packed as one literal run of at most 128 bytes.
std::string packBits(std::string const &bytes);

} // namespace Zem::Test
