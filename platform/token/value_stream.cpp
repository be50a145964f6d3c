#include <ZemValue.h>

#include "token_stream.h"

#include <ZemTranslate.h>

namespace Zem {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

// How a point in time is meant. Stored in files: never renumber.
enum TimeKind_t { KIND_LOCAL = 0, KIND_UTC = 1, KIND_OFFSET = 2 };

constexpr unsigned int TIME_SIZE = 1 + 8 + 4 + 4 + 4;
constexpr unsigned int MILLISECONDS_PER_DAY = 24 * 60 * 60 * 1000;

TimeKind_t kindOf(QDateTime const &time)
{
    switch (time.timeSpec()) {
    case Qt::LocalTime:
        return KIND_LOCAL;
    case Qt::UTC:
        return KIND_UTC;
    case Qt::OffsetFromUTC:
    case Qt::TimeZone:
        break;
    }
    return KIND_OFFSET;
}

/// Always of the same size, so that an invalid point in time is no special case.
void writeTime(IO::OutStream *stream, QDateTime const &time)
{
    bool const valid = time.isValid();
    auto const day = static_cast<quint64>(valid ? time.date().toJulianDay() : 0);
    stream->writeBool(valid);
    stream->writeUInt(static_cast<unsigned int>(day & 0xffffffffu));
    stream->writeUInt(static_cast<unsigned int>(day >> 32));
    stream->writeUInt(valid ? static_cast<unsigned int>(time.time().msecsSinceStartOfDay()) : 0);
    stream->writeUInt(kindOf(time));
    stream->writeInt(valid ? time.offsetFromUtc() : 0);
}

QDateTime makeTime(QDate date, QTime time, TimeKind_t kind, int offset)
{
    switch (kind) {
    case KIND_LOCAL:
        return QDateTime(date, time, Qt::LocalTime);
    case KIND_UTC:
        return QDateTime(date, time, Qt::UTC);
    case KIND_OFFSET:
        break;
    }
    return QDateTime(date, time, Qt::OffsetFromUTC, offset);
}

QDateTime readTime(IO::InStream *stream)
{
    constexpr int DAY = 24 * 60 * 60;
    bool valid = false;
    unsigned int low = 0;
    unsigned int high = 0;
    int offset = 0;
    stream->readBool(&valid);
    stream->readUInt(&low);
    stream->readUInt(&high);
    unsigned int const milliseconds = TokenStream::readUpTo(stream, MILLISECONDS_PER_DAY - 1);
    auto const kind = TokenStream::readEnum<TimeKind_t>(stream, KIND_OFFSET);
    stream->readInt(&offset);
    if (!valid) {
        return QDateTime();
    }
    QDate const date = QDate::fromJulianDay(static_cast<qint64>(quint64(high) << 32 | low));
    if (!date.isValid() || offset <= -DAY || offset >= DAY) {
        throw IO::StreamException(translate("Token_Stream_err", "bad point in time in a token"));
    }
    return makeTime(date, QTime::fromMSecsSinceStartOfDay(static_cast<int>(milliseconds)), kind, offset);
}

/// Writes the payload of a value behind its type; with a null stream it only tells the payload's size.
struct PayloadWriter
{
    IO::OutStream *stream = nullptr;

    template <class Write>
    unsigned int put(unsigned int size, Write write) const
    {
        if (stream) {
            write();
        }
        return size;
    }

    unsigned int operator()(std::monostate) const { return 0; }
    unsigned int operator()(int number) const
    {
        return put(4, [&] { stream->writeInt(number); });
    }
    unsigned int operator()(double number) const
    {
        return put(8, [&] { stream->writeDouble(number); });
    }
    unsigned int operator()(QString const &text) const
    {
        return put(IO::Stream::sizeOf(text), [&] { stream->writeString(text); });
    }
    unsigned int operator()(bool truth) const
    {
        return put(1, [&] { stream->writeBool(truth); });
    }
    unsigned int operator()(QDateTime const &time) const
    {
        return put(TIME_SIZE, [&] { writeTime(stream, time); });
    }
    unsigned int operator()(BaVec2d<double> const &vector) const
    {
        return put(16, [&] { IO::writeVec2d(stream, vector); });
    }
    unsigned int operator()(BaVec3d<double> const &vector) const
    {
        return put(24, [&] { IO::writeVec3d(stream, vector); });
    }
    // Follows in a block of its own.
    unsigned int operator()(FormattedText const &) const { return 0; }
    template <class Quantity>
    requires requires(Quantity quantity) { quantity.number; }
    unsigned int operator()(Quantity const &quantity) const { return (*this)(quantity.number); }
};

struct PayloadReader
{
    IO::InStream *stream;

    void operator()(std::monostate) const {}
    void operator()(int &number) const { stream->readInt(&number); }
    void operator()(double &number) const { stream->readDouble(&number); }
    void operator()(QString &text) const { stream->readString(&text); }
    void operator()(bool &truth) const { stream->readBool(&truth); }
    void operator()(QDateTime &time) const { time = readTime(stream); }
    void operator()(BaVec2d<double> &vector) const { IO::readVec2d(stream, &vector); }
    void operator()(BaVec3d<double> &vector) const { IO::readVec3d(stream, &vector); }
    void operator()(FormattedText &) const {}
    template <class Quantity>
    requires requires(Quantity quantity) { quantity.number; }
    void operator()(Quantity &quantity) const { (*this)(quantity.number); }
};

} // namespace

void Value::save(IO::OutStream *stream) const
{
    stream->beginBlock(4 + std::visit(PayloadWriter{}, data_), BLOCK_VERSION);
    stream->writeUInt(type_);
    std::visit(PayloadWriter{stream}, data_);
    stream->endBlock();
    std::visit(
        [stream](auto const &data) {
            if constexpr (requires { data.unit; }) {
                data.unit.save(stream);
            } else if constexpr (requires { data.save(stream); }) {
                data.save(stream);
            }
        },
        data_);
}

void Value::load(IO::InStream *stream)
{
    TokenStream::openBlock(stream, BLOCK_VERSION);
    Value read(TokenStream::readEnum<Type_t>(stream, TYPE_FORMATTED_TEXT));
    std::visit(PayloadReader{stream}, read.data_);
    stream->closeBlock();
    std::visit(
        [stream](auto &data) {
            if constexpr (requires { data.unit; }) {
                data.unit.load(stream);
            } else if constexpr (requires { data.load(stream); }) {
                data.load(stream);
            }
        },
        read.data_);
    *this = std::move(read);
}

} // namespace Zem
