#include <ZemStreamBase.h>

#include "stream_format.h"
#include "utf8.h"

#include <zlib.h>

#include <limits>

namespace Zem::IO {

std::uint32_t Format::checksum(std::uint32_t before, char const *bytes, std::size_t size) noexcept
{
    return static_cast<std::uint32_t>(
        crc32(before, reinterpret_cast<unsigned char const *>(bytes), static_cast<uInt>(size)));
}

StreamException::StreamException(QString const &text) : Exception(text)
{
}

StreamException::~StreamException() = default;

Stream::Stream(QString const &name) : name_(name)
{
}

Stream::~Stream() = default;

void Stream::setHeader(QString const &fileType, unsigned int version)
{
    fileType_ = fileType;
    version_ = version;
}

void Stream::fail(QString const &what) const
{
    throw StreamException(QStringLiteral("%1: %2").arg(name_, what));
}

void Stream::requireInit() const
{
    if (!isInit()) {
        throw StreamException(error_);
    }
}

bool Stream::isOfFileType(std::vector<char> const &head, QString const &fileType)
{
    QByteArray const word = fileType.toLatin1();
    if (head.size() < Format::HEADER_SIZE || word.isEmpty() || std::size_t(word.size()) >= Format::TYPE_SIZE) {
        return false;
    }
    return std::memcmp(head.data(), Format::MAGIC, sizeof Format::MAGIC) == 0 &&
           std::strncmp(head.data() + Format::TYPE_POSITION, word.constData(), Format::TYPE_SIZE) == 0;
}

unsigned int Stream::sizeOf(QString const &text)
{
    std::size_t const size = Format::UINT_SIZE + Utf8::size(text);
    if (size > std::numeric_limits<unsigned int>::max()) {
        throw ProgError("Zem::IO::Stream::sizeOf", "stream_base", __LINE__, "text too long for a block");
    }
    return static_cast<unsigned int>(size);
}

} // namespace Zem::IO
