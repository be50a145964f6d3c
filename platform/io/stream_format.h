// stream_format.h: the bytes of a block stream. docs/formats/block-stream.md tells them in words.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Zem::IO::Format {

// The first byte is no ASCII and the last is a line feed, so that a transfer in text mode shows.
inline constexpr unsigned char MAGIC[4] = {0x8a, 'Z', 'B', '\n'};

// The header: magic, type word filled up with zeros, version, checksum of all before it.
inline constexpr std::size_t HEADER_SIZE = 64;
inline constexpr std::size_t TYPE_POSITION = 4;
inline constexpr std::size_t TYPE_SIZE = 52; // at least one closing zero included
inline constexpr std::size_t VERSION_POSITION = 56;
inline constexpr std::size_t CHECKSUM_POSITION = 60;

// A block: size of the payload, version, payload, checksum of version and payload.
inline constexpr std::size_t FRAME_SIZE = 8;
inline constexpr std::size_t CHECKSUM_SIZE = 4;

/// The bytes of a text: a reader can trust that no file holds a longer one.
inline constexpr std::size_t MAX_STRING_SIZE = std::size_t{16} << 20;

inline constexpr std::size_t COLOR_SIZE = 4;
inline constexpr std::size_t BOOL_SIZE = 1;
inline constexpr std::size_t UINT_SIZE = 4;
inline constexpr std::size_t DOUBLE_SIZE = 8;

/// Least significant byte first, whatever the host does.
template <class Unsigned>
void encode(Unsigned value, char *bytes) noexcept
{
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
    }
}

template <class Unsigned>
Unsigned decode(char const *bytes) noexcept
{
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        value |= static_cast<Unsigned>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    }
    return value;
}

/// Carries on the checksum of what came before; 0 starts one. At most 4 GiB at a time.
std::uint32_t checksum(std::uint32_t before, char const *bytes, std::size_t size) noexcept;

} // namespace Zem::IO::Format
