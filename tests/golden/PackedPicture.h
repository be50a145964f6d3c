// PackedPicture.h: what is in a packed picture, as docs/formats/packed-picture.md tells.
#pragma once

#include <string>
#include <string_view>

namespace Zem::Support {

/// The kind, the size, whether the alpha counts, and the CRC-32 of the pixels: rows from the top, numbers with their
/// lowest byte first. Throws FormatError.
std::string tellPackedPicture(std::string_view bytes);

} // namespace Zem::Support
