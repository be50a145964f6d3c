#include <ZemOutStream.h>

#include "stream_format.h"
#include "stream_sink.h"
#include "utf8.h"

#include <ZemTranslate.h>

#include <algorithm>

namespace Zem::IO {

namespace {

// Blocks are small and many: they reach the medium in pieces of about this size.
constexpr std::size_t BUFFER_SIZE = 1 << 20;

bool isFileType(QString const &fileType)
{
    auto const isPrintable = [](QChar c) { return c >= u' ' && c <= u'~'; };
    return !fileType.isEmpty() && std::size_t(fileType.size()) < Format::TYPE_SIZE &&
           std::all_of(fileType.begin(), fileType.end(), isPrintable);
}

} // namespace

OutStream::OutStream(QString const &fileName, QString const &fileType, unsigned int version) : Stream(fileName)
{
    start(fileType, version);
    try {
        sink_ = std::make_unique<FileSink>(fileName);
    } catch (StreamException const &exception) {
        setError(exception.getText());
    }
}

OutStream::OutStream(std::ostream *stream, QString const &fileType, unsigned int version)
    : Stream(translate("IO_Stream_err", "(stream)"))
{
    if (!stream) {
        throw ProgError("Zem::IO::OutStream::OutStream", "out_stream", __LINE__, "null stream");
    }
    start(fileType, version);
    sink_ = std::make_unique<ForeignSink>(stream, getName());
}

OutStream::~OutStream() = default;

void OutStream::start(QString const &fileType, unsigned int version)
{
    if (!isFileType(fileType)) {
        throw ProgError("Zem::IO::OutStream::OutStream", "out_stream", __LINE__, "bad file type word");
    }
    setHeader(fileType, version);
    char header[Format::HEADER_SIZE] = {};
    QByteArray const word = fileType.toLatin1();
    std::memcpy(header, Format::MAGIC, sizeof Format::MAGIC);
    std::memcpy(header + Format::TYPE_POSITION, word.constData(), std::size_t(word.size()));
    Format::encode<std::uint32_t>(version, header + Format::VERSION_POSITION);
    Format::encode(Format::checksum(0, header, Format::CHECKSUM_POSITION), header + Format::CHECKSUM_POSITION);
    buffer_.reserve(BUFFER_SIZE);
    buffer_.assign(header, header + sizeof header);
}

void OutStream::requireOpen(char const *operation) const
{
    requireInit();
    if (!failure_.isEmpty()) {
        throw StreamException(failure_);
    }
    if (closed_) {
        throw ProgError(operation, "out_stream", __LINE__, "the stream is closed");
    }
}

/// A file with a mistake in it must never be completed.
void OutStream::require(bool condition, char const *operation, int line, char const *text)
{
    if (!condition) {
        ProgError const error(operation, "out_stream", static_cast<unsigned int>(line), text);
        abandon(QStringLiteral("%1: %2").arg(getName(), error.getText()));
        throw error;
    }
}

void OutStream::abandon(QString const &reason)
{
    failure_ = reason;
    sink_.reset();
    buffer_ = {};
}

void OutStream::beginBlock(unsigned int size, unsigned int version)
{
    constexpr char const *OPERATION = "Zem::IO::OutStream::beginBlock";
    requireOpen(OPERATION);
    require(!inBlock_, OPERATION, __LINE__, "a block is open already");
    appendUInt(size);
    checksum_ = 0;
    checksumStart_ = buffer_.size();
    appendUInt(version);
    declared_ = size;
    written_ = 0;
    inBlock_ = true;
}

void OutStream::endBlock()
{
    constexpr char const *OPERATION = "Zem::IO::OutStream::endBlock";
    requireOpen(OPERATION);
    require(inBlock_, OPERATION, __LINE__, "no block is open");
    require(written_ == declared_, OPERATION, __LINE__, "the block's size is not the one declared");
    addToChecksum();
    inBlock_ = false;
    appendUInt(checksum_);
}

void OutStream::appendUInt(std::uint32_t value)
{
    Format::encode(value, grow(Format::UINT_SIZE));
}

char *OutStream::grow(std::size_t size)
{
    if (buffer_.size() + size > BUFFER_SIZE) {
        flush();
    }
    std::size_t const position = buffer_.size();
    buffer_.resize(position + size);
    return buffer_.data() + position;
}

void OutStream::flush()
{
    if (inBlock_) {
        addToChecksum();
    }
    try {
        sink_->write(buffer_.data(), buffer_.size());
    } catch (StreamException const &exception) {
        abandon(exception.getText());
        throw;
    }
    buffer_.clear();
    checksumStart_ = 0;
}

void OutStream::addToChecksum()
{
    checksum_ = Format::checksum(checksum_, buffer_.data() + checksumStart_, buffer_.size() - checksumStart_);
    checksumStart_ = buffer_.size();
}

char *OutStream::value(std::size_t size, char const *operation)
{
    requireOpen(operation);
    require(inBlock_, operation, __LINE__, "no block is open");
    written_ += size;
    return grow(size);
}

void OutStream::writeBool(bool truth)
{
    *value(Format::BOOL_SIZE, "Zem::IO::OutStream::writeBool") = truth ? 1 : 0;
}

void OutStream::writeInt(int number)
{
    Format::encode(std::bit_cast<std::uint32_t>(number), value(Format::UINT_SIZE, "Zem::IO::OutStream::writeInt"));
}

void OutStream::writeUInt(unsigned int number)
{
    Format::encode<std::uint32_t>(number, value(Format::UINT_SIZE, "Zem::IO::OutStream::writeUInt"));
}

void OutStream::writeDouble(double number)
{
    Format::encode(std::bit_cast<std::uint64_t>(number), value(Format::DOUBLE_SIZE, "Zem::IO::OutStream::writeDouble"));
}

void OutStream::writeColor(Color const &color)
{
    unsigned char const bytes[] = {color.getRed(), color.getGreen(), color.getBlue(), color.getAlpha()};
    std::memcpy(value(sizeof bytes, "Zem::IO::OutStream::writeColor"), bytes, sizeof bytes);
}

void OutStream::writeString(QString const &text)
{
    std::size_t const size = sizeOf(text);
    if (size - Format::UINT_SIZE > Format::MAX_STRING_SIZE) {
        abandon(translate("IO_Stream_err", "%1: cannot save a text of more than 16 MiB").arg(getName()));
        throw StreamException(failure_);
    }
    char *const bytes = value(size, "Zem::IO::OutStream::writeString");
    Format::encode<std::uint32_t>(static_cast<std::uint32_t>(size - Format::UINT_SIZE), bytes);
    Utf8::encode(text, bytes + Format::UINT_SIZE);
}

void OutStream::writeData(void const *data, unsigned int size)
{
    auto const *const bytes = static_cast<char const *>(data);
    for (std::size_t done = 0; done < size;) {
        std::size_t const step = std::min<std::size_t>(BUFFER_SIZE / 2, size - done);
        std::memcpy(value(step, "Zem::IO::OutStream::writeData"), bytes + done, step);
        done += step;
    }
}

void OutStream::close()
{
    constexpr char const *OPERATION = "Zem::IO::OutStream::close";
    if (closed_) {
        return;
    }
    requireOpen(OPERATION);
    require(!inBlock_, OPERATION, __LINE__, "a block is open");
    flush();
    try {
        sink_->commit();
    } catch (StreamException const &exception) {
        abandon(exception.getText());
        throw;
    }
    closed_ = true;
    sink_.reset();
    buffer_ = {};
}

} // namespace Zem::IO
