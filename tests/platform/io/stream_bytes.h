// stream_bytes.h: block streams in memory for tests.
#pragma once

#include <ZemStream.h>

#include <functional>
#include <sstream>
#include <string>

namespace Zem::IO::Test {

inline QString const FILE_TYPE = QStringLiteral("Figure");
constexpr unsigned int FILE_VERSION = 7;
constexpr std::size_t HEADER_SIZE = 64;

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
