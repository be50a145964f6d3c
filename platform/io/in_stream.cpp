#include <ZemInStream.h>

#include "stream_format.h"
#include "utf8.h"

#include <ZemTranslate.h>

#include <QtCore/QFile>

#include <algorithm>
#include <fstream>
#include <limits>

namespace Zem::IO {

namespace {

// A block that claims more than it has is refused before more than this is taken from memory for it.
constexpr std::size_t CHUNK_SIZE = 1 << 20;

QString text(char const *message)
{
    return translate("IO_Stream_err", message);
}

std::unique_ptr<std::istream> openFile(QString const &fileName)
{
    auto file = std::make_unique<std::ifstream>();
    file->imbue(std::locale::classic());
    file->open(QFile::encodeName(fileName).constData(), std::ios::in | std::ios::binary);
    return file;
}

} // namespace

InStream::InStream(QString const &fileName) : Stream(fileName), file_(openFile(fileName))
{
    if (!*file_) {
        setError(text("%1: cannot be opened for reading").arg(fileName));
        return;
    }
    stream_ = file_.get();
    readHeader();
}

InStream::InStream(std::istream *stream) : Stream(text("(stream)")), stream_(stream)
{
    if (!stream_) {
        throw ProgError("Zem::IO::InStream::InStream", "in_stream", __LINE__, "null stream");
    }
    readHeader();
}

InStream::~InStream() = default;

void InStream::readHeader()
{
    char header[Format::HEADER_SIZE];
    bool const complete = tryRead(header, sizeof header);
    if (!complete || std::memcmp(header, Format::MAGIC, sizeof Format::MAGIC) != 0) {
        setError(text("%1: is no block stream").arg(getName()));
        return;
    }
    if (Format::decode<std::uint32_t>(header + Format::CHECKSUM_POSITION) !=
            Format::checksum(0, header, Format::CHECKSUM_POSITION) ||
        header[Format::TYPE_POSITION + Format::TYPE_SIZE - 1] != 0) {
        setError(text("%1: the header is damaged").arg(getName()));
        return;
    }
    setHeader(QString::fromLatin1(header + Format::TYPE_POSITION),
              Format::decode<std::uint32_t>(header + Format::VERSION_POSITION));
}

bool InStream::tryRead(char *bytes, std::size_t size)
{
    try {
        stream_->read(bytes, static_cast<std::streamsize>(size));
    } catch (std::ios_base::failure const &) {
        // The caller's stream may be set to throw: what was read tells all that is needed here.
    }
    return static_cast<std::size_t>(stream_->gcount()) == size;
}

void InStream::readBytes(char *bytes, std::size_t size)
{
    if (!tryRead(bytes, size)) {
        failInBlock(text("the block reaches past the end of the file"));
    }
}

void InStream::openBlock()
{
    requireInit();
    if (inBlock_) {
        throw ProgError("Zem::IO::InStream::openBlock", "in_stream", __LINE__, "a block is open already");
    }
    ++blockNumber_;
    std::uint32_t size = 0;
    readFrame(&size);
    readPayload(size + Format::CHECKSUM_SIZE);
    end_ = size;
    checkChecksum();
    inBlock_ = true;
}

void InStream::readFrame(std::uint32_t *size)
{
    char frame[Format::FRAME_SIZE];
    position_ = end_ = 0;
    if (!tryRead(frame, sizeof frame)) {
        failInBlock(stream_->gcount() == 0 ? text("the file has no further block")
                                           : text("the file ends inside a block"));
    }
    *size = Format::decode<std::uint32_t>(frame);
    blockVersion_ = Format::decode<std::uint32_t>(frame + Format::UINT_SIZE);
}

void InStream::readPayload(std::size_t size)
{
    if (size > CHUNK_SIZE && size > getStreamBytesLeft()) {
        failInBlock(text("the block reaches past the end of the file"));
    }
    for (std::size_t done = 0; done < size;) {
        std::size_t const step = std::min(CHUNK_SIZE, size - done);
        payload_.resize(std::max(payload_.size(), done + step));
        readBytes(payload_.data() + done, step);
        done += step;
    }
}

void InStream::checkChecksum()
{
    char version[Format::UINT_SIZE];
    Format::encode<std::uint32_t>(blockVersion_, version);
    std::uint32_t const before = Format::checksum(0, version, sizeof version);
    if (Format::checksum(before, payload_.data(), end_) != Format::decode<std::uint32_t>(payload_.data() + end_)) {
        end_ = 0;
        failInBlock(text("bad checksum, the file is damaged"));
    }
}

std::uint64_t InStream::getStreamBytesLeft()
{
    constexpr std::uint64_t UNKNOWN = std::numeric_limits<std::uint64_t>::max();
    try {
        std::istream::pos_type const here = stream_->tellg();
        stream_->seekg(0, std::ios::end);
        std::istream::pos_type const end = stream_->tellg();
        stream_->seekg(here);
        if (stream_->good() && end >= here) {
            return static_cast<std::uint64_t>(end - here);
        }
    } catch (std::ios_base::failure const &) {
        // A stream that cannot seek is read piece by piece instead.
    }
    stream_->clear();
    return UNKNOWN;
}

void InStream::closeBlock()
{
    if (!inBlock_) {
        throw ProgError("Zem::IO::InStream::closeBlock", "in_stream", __LINE__, "no block is open");
    }
    inBlock_ = false;
    position_ = end_ = 0;
}

char const *InStream::take(std::size_t size)
{
    requireInit();
    if (!inBlock_) {
        failInBlock(text("a value was read outside a block"));
    }
    if (size > end_ - position_) {
        failInBlock(text("a value reaches past the end of the block"));
    }
    char const *const bytes = payload_.data() + position_;
    position_ += size;
    return bytes;
}

void InStream::readBool(bool *value)
{
    char const byte = *take(Format::BOOL_SIZE);
    if (byte != 0 && byte != 1) {
        failInBlock(text("a truth value is neither 0 nor 1"));
    }
    *value = byte == 1;
}

void InStream::readByte(unsigned char *value)
{
    *value = static_cast<unsigned char>(*take(1));
}

void InStream::readInt(int *value)
{
    *value = std::bit_cast<int>(Format::decode<std::uint32_t>(take(Format::UINT_SIZE)));
}

void InStream::readUInt(unsigned int *value)
{
    *value = Format::decode<std::uint32_t>(take(Format::UINT_SIZE));
}

void InStream::readDouble(double *value)
{
    *value = std::bit_cast<double>(Format::decode<std::uint64_t>(take(Format::DOUBLE_SIZE)));
}

void InStream::readColor(Color *color)
{
    auto const *const bytes = reinterpret_cast<unsigned char const *>(take(Format::COLOR_SIZE));
    *color = Color(bytes[0], bytes[1], bytes[2], bytes[3]);
}

void InStream::readString(QString *string)
{
    std::size_t const size = Format::decode<std::uint32_t>(take(Format::UINT_SIZE));
    if (size > end_ - position_) {
        failInBlock(text("a text reaches past the end of the block"));
    }
    if (size > Format::MAX_STRING_SIZE) {
        failInBlock(text("a text has more than 16 MiB"));
    }
    if (!Utf8::decode(take(size), size, string)) {
        failInBlock(text("a text is no valid UTF-8"));
    }
}

void InStream::readData(void *data, unsigned int size)
{
    char const *const bytes = take(size);
    if (size > 0) {
        std::memcpy(data, bytes, size);
    }
}

void InStream::failInBlock(QString const &what) const
{
    fail(text("block %1: %2").arg(QString::number(blockNumber_), what));
}

} // namespace Zem::IO
