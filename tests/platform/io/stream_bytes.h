// stream_bytes.h: block streams in memory for tests.
#pragma once

#include <ZemStream.h>

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>

namespace Zem::IO::Test {

inline QString const FILE_TYPE = QStringLiteral("Figure");
constexpr unsigned int FILE_VERSION = 7;
constexpr std::size_t HEADER_SIZE = 64;

/// CRC-32 (polynomial 0xedb88320 reflected), least significant byte first.
inline std::string checksumOf(std::string_view bytes)
{
    std::uint32_t crc = 0xffffffff;
    for (char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320u : 0u);
        }
    }
    std::string result;
    for (unsigned int shift = 0; shift < 32; shift += 8) {
        result += static_cast<char>(~crc >> shift & 0xff);
    }
    return result;
}

/// The bytes of a whole stream whose blocks `write` makes.
inline std::string bytesOf(std::function<void(OutStream &)> const &write)
{
    std::ostringstream bytes;
    OutStream stream(&bytes, FILE_TYPE, FILE_VERSION);
    write(stream);
    stream.close();
    return bytes.str();
}

/// The bytes of a stream with one block of version 1 that `write` fills.
inline std::string bytesOfBlock(unsigned int size, std::function<void(OutStream &)> const &write)
{
    return bytesOf([&](OutStream &stream) {
        stream.beginBlock(size, 1);
        write(stream);
        stream.endBlock();
    });
}

/// Reads a stream whose first block `read` is given.
inline void readBlock(std::string const &bytes, std::function<void(InStream &)> const &read)
{
    std::istringstream source(bytes);
    InStream stream(&source);
    stream.openBlock();
    read(stream);
    stream.closeBlock();
}

/// The text of the StreamException that `action` throws; empty when it throws none.
inline QString streamError(std::function<void()> const &action)
{
    try {
        action();
    } catch (StreamException const &exception) {
        return exception.getText();
    }
    return QString();
}

} // namespace Zem::IO::Test
