// ZemInStream.h: reads a block stream, and trusts nothing in it.
#pragma once

#include <ZemColor.h>
#include <ZemStreamBase.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

namespace Zem::IO {

/// A reader enters a block, reads its values in the order in which they were written, and leaves it:
///
///     InStream stream(fileName);
///     if (!stream.isInit() || !stream.isOfType("Figure")) ...
///     stream.openBlock();
///     if (stream.getBlockVersion() > 1) throw StreamException(...);
///     stream.readDouble(&width);
///     stream.closeBlock();
///
/// A block is in memory and its checksum is tested before its first value is read, so damaged data never reaches a
/// reader; what a block claims to hold is taken from memory only as far as the stream really holds it. Anything wrong
/// in the data is a StreamException that names the file, the block and the fault; the value pointed at is then as it
/// was. A block entered or left out of turn is a ProgError. After an exception the stream can only be destroyed
/// sensibly. One stream is used from one thread at a time.
class InStream : public Stream
{
public:
    /// A file that cannot be opened or is no block stream leaves isInit() false.
    explicit InStream(QString const &fileName);
    /// Reads from the present position on. The stream is not owned and must live as long as this object; null is a
    /// ProgError.
    explicit InStream(std::istream *stream);
    ~InStream();

    /// Enters the next block. Throws StreamException at the end of the stream, when the block reaches past that end, or
    /// for a bad checksum; ProgError while a block is open.
    void openBlock();
    /// The version of the block entered last.
    unsigned int getBlockVersion() const noexcept { return blockVersion_; }
    /// Skips what was not read. Throws ProgError outside a block.
    void closeBlock();

    /// The unread bytes of the open block, 0 outside one: no count read from a block can be larger.
    unsigned int getBytesLeft() const noexcept { return static_cast<unsigned int>(end_ - position_); }

    /// Each throws StreamException outside a block, past its end, or for bytes that are no such value: a bool is 0 or
    /// 1, a string is valid UTF-8 of at most 16 MiB.
    void readBool(bool *value);
    void readByte(unsigned char *value);
    void readInt(int *value);
    void readUInt(unsigned int *value);
    void readDouble(double *value);
    void readColor(Color *color);
    void readString(QString *text);
    /// Copies `size` bytes to `data`.
    void readData(void *data, unsigned int size);

    /// The stream underneath, behind the last block entered; null when the file could not be opened.
    std::istream *getStream() const noexcept { return stream_; }

private:
    void readHeader();
    bool tryRead(char *bytes, std::size_t size);
    void readBytes(char *bytes, std::size_t size);
    void readFrame(std::uint32_t *size);
    void readPayload(std::size_t size);
    void checkChecksum();
    std::uint64_t getStreamBytesLeft();
    char const *take(std::size_t size);
    [[noreturn]] void failInBlock(QString const &what) const;

    std::unique_ptr<std::istream> file_;
    std::istream *stream_ = nullptr;
    std::vector<char> payload_; // only grows: most blocks need no allocation
    std::size_t position_ = 0;
    std::size_t end_ = 0;
    unsigned int blockVersion_ = 0;
    std::uint64_t blockNumber_ = 0;
    bool inBlock_ = false;
};

} // namespace Zem::IO
