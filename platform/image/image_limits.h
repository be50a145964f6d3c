// image_limits.h: what every reader of pictures checks before it takes memory, and how it refuses.
#pragma once

#include <ZemError.h>
#include <ZemImage.h>

#include <cstdint>
#include <memory>
#include <span>

namespace Zem {

using ImageBytes = std::span<unsigned char const>;

/// The bytes are no picture, or one that cannot be had. The text is the reason, without the name of the file.
class ImageError : public Exception
{
public:
    using Exception::Exception;
};

[[noreturn]] void failImage(char const *reason);

/// Throws ImageError for none and for more than Image::MAX_BYTES.
void requireImageBytes(std::uint64_t rows, std::uint64_t rowBytes);

/// Throws ImageError for a side of zero, one of more than Image::MAX_SIDE, and for more than Image::MAX_BYTES.
void requireImageSize(std::uint64_t width, std::uint64_t height, std::size_t pixelBytes);

/// Throws ImageError for more than `most` bytes out of each of `packed`: so much no packing can save, and the rest of
/// a header that claims it is no truer. Rows of a few bytes are let pass.
void requireExpansion(std::uint64_t bytes, std::size_t packed, std::uint64_t most);

/// Deflate makes at most 258 bytes out of 2 bits.
inline constexpr std::uint64_t DEFLATE_EXPANSION = 1032;
/// No packing of the files that we read does better: an 8 by 8 block of a JPEG has a bit at least,
/// and a code of 12 bits in a TIFF stands for fewer than 4096 bytes.
inline constexpr std::uint64_t FILE_EXPANSION = 4096;

inline bool isGreyColor(Color const &color)
{
    return color.getRed() == color.getGreen() && color.getGreen() == color.getBlue();
}

/// Pixels as those of a new picture; 0 by 0 is an empty one. Throws ProgError for other sizes that no picture has.
std::unique_ptr<Image> makeImage(Image::Type type, unsigned int width, unsigned int height);

} // namespace Zem
