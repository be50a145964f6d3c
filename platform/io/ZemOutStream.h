// ZemOutStream.h: writes a block stream that replaces its file only when all of it is safely stored.
#pragma once

#include <ZemColor.h>
#include <ZemStreamBase.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

namespace Zem::IO {

class StreamSink;

/// A writer declares the exact size of each block, writes its values and ends it; close() completes the file:
///
///     OutStream stream(fileName, "Figure", 3);
///     if (!stream.isInit()) ...
///     stream.beginBlock(8, 1);
///     stream.writeDouble(width);
///     stream.endBlock();
///     stream.close();
///
/// Until close() has returned, the file of that name, if there is one, stays as it was: the bytes go to a temporary
/// file in the same folder. Without close() that file is removed by the destructor. A medium that takes no more is a
/// StreamException, a mistake of the writer a ProgError; either gives the file up, and from then on every operation,
/// close() included, throws StreamException. After close() there is nothing left to write: that is a ProgError. One
/// stream is used from one thread at a time.
class OutStream : public Stream
{
public:
    /// `fileType` is a word of 1 to 51 printable ASCII characters, else ProgError. A symbolic link is followed. A
    /// folder that cannot be written, a write-protected file, or a name of something else than a file leaves isInit()
    /// false. A file that is replaced keeps its permissions.
    OutStream(QString const &fileName, QString const &fileType, unsigned int version);
    /// Writes to a stream that is not owned and must live until close() or destruction; null is a ProgError. It is
    /// complete after close() only.
    OutStream(std::ostream *stream, QString const &fileType, unsigned int version);
    /// Gives up what close() has not completed.
    ~OutStream();

    /// `size` is the number of bytes that will be written until endBlock(): 1 per bool, 4 per colour, int and unsigned
    /// int, 8 per double, 16 per vec2d, 24 per vec3d, sizeOf() per string. Throws ProgError when a block is open.
    void beginBlock(unsigned int size, unsigned int version);
    /// Throws ProgError when the bytes written differ from the size declared, or outside a block.
    void endBlock();

    /// Each throws ProgError outside a block, and StreamException when the medium takes no more.
    void writeBool(bool value);
    void writeInt(int value);
    void writeUInt(unsigned int value);
    void writeDouble(double value);
    void writeColor(Color const &color);
    /// An unpaired surrogate is written as U+FFFD. Throws StreamException for more than 16 MiB of UTF-8, which no
    /// InStream reads.
    void writeString(QString const &text);
    void writeData(void const *data, unsigned int size);

    /// Completes the file: all bytes are on the medium under the file's name when this returns. A second call does
    /// nothing. Throws StreamException with file, step and reason, and ProgError inside a block; then the temporary
    /// file is gone and the old one as it was (only if the folder's own entry cannot be synchronised, the last step, is
    /// the new file already in place).
    void close();

private:
    void start(QString const &fileType, unsigned int version);
    void requireOpen(char const *operation) const;
    void require(bool condition, char const *operation, int line, char const *text);
    char *grow(std::size_t size);
    void flush();
    void addToChecksum();
    void appendUInt(std::uint32_t value);
    char *value(std::size_t size, char const *operation);
    void abandon(QString const &reason);

    std::unique_ptr<StreamSink> sink_;
    std::vector<char> buffer_;
    std::size_t checksumStart_ = 0; // the first byte of the buffer that the checksum lacks
    std::uint32_t checksum_ = 0;
    std::uint64_t written_ = 0; // payload bytes of the open block
    unsigned int declared_ = 0;
    bool inBlock_ = false;
    bool closed_ = false;
    QString failure_;
};

} // namespace Zem::IO
