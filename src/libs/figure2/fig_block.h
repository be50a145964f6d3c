// fig_block.h: how the library's classes list the fields of a stream block once, for size, saving and loading alike.
// Layer: streams. Internal to the library.
#pragma once

#include "fig_since.h"

#include <ZemColor.h>
#include <ZemStream.h>
#include <ZemTranslate.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <type_traits>

namespace Zem::Fig2 {

/// Adds up the declared size of a block.
class BlockSize
{
public:
    static constexpr bool isReader = false;

    unsigned int bytes() const { return bytes_; }

    void field(bool) { bytes_ += 1; }
    void field(int) { bytes_ += 4; }
    void field(unsigned int) { bytes_ += 4; }
    void field(double) { bytes_ += 8; }
    void field(Color const &) { bytes_ += 4; }
    void field(BaVec2d<double> const &) { bytes_ += 16; }
    void field(BaVec3d<double> const &) { bytes_ += 24; }
    void field(QString const &text) { bytes_ += IO::Stream::sizeOf(text); }
    template <class Enum>
    void list(Enum const &, unsigned int)
    {
        bytes_ += 4;
    }
    template <class T>
    void field(T const &value, Since, std::type_identity_t<T> const &)
    {
        field(value);
    }
    template <class T>
    void keep(T const &value, Since)
    {
        field(value);
    }
    template <class Enum>
    void keepList(Enum const &value, unsigned int count, Since)
    {
        list(value, count);
    }

private:
    unsigned int bytes_ = 0;
};

/// Writes the fields of a block that is open.
class BlockWriter
{
public:
    static constexpr bool isReader = false;

    explicit BlockWriter(IO::OutStream *stream) : stream_(stream) {}

    void field(bool value) { stream_->writeBool(value); }
    void field(int value) { stream_->writeInt(value); }
    void field(unsigned int value) { stream_->writeUInt(value); }
    void field(double value) { stream_->writeDouble(value); }
    void field(Color const &value) { stream_->writeColor(value); }
    void field(BaVec2d<double> const &value) { IO::writeVec2d(stream_, value); }
    void field(BaVec3d<double> const &value) { IO::writeVec3d(stream_, value); }
    void field(QString const &value) { stream_->writeString(value); }
    template <class Enum>
    void list(Enum const &value, unsigned int)
    {
        stream_->writeUInt(static_cast<unsigned int>(value));
    }
    template <class T>
    void field(T const &value, Since, std::type_identity_t<T> const &)
    {
        field(value);
    }
    template <class T>
    void keep(T const &value, Since)
    {
        field(value);
    }
    template <class Enum>
    void keepList(Enum const &value, unsigned int count, Since)
    {
        list(value, count);
    }

private:
    IO::OutStream *stream_;
};

/// Throws the refusal of a number that is none of its enumeration.
[[noreturn]] void throwIllegalNumber(unsigned int number);

/// Reads the fields of a block that is open, each under the version of that block.
/// Every operation throws IO::StreamException for data that is missing or damaged.
class BlockReader
{
public:
    static constexpr bool isReader = true;

    BlockReader(IO::InStream *stream, unsigned int version) : stream_(stream), version_(version) {}

    unsigned int version() const { return version_; }

    void field(bool &value) { stream_->readBool(&value); }
    void field(int &value) { stream_->readInt(&value); }
    void field(unsigned int &value) { stream_->readUInt(&value); }
    void field(double &value) { stream_->readDouble(&value); }
    void field(Color &value) { stream_->readColor(&value); }
    void field(BaVec2d<double> &value) { IO::readVec2d(stream_, &value); }
    void field(BaVec3d<double> &value) { IO::readVec3d(stream_, &value); }
    void field(QString &value) { stream_->readString(&value); }

    /// An enumeration stored as an unsigned number: values from `count` on are refused.
    template <class Enum>
    void list(Enum &value, unsigned int count)
    {
        unsigned int number = 0;
        stream_->readUInt(&number);
        if (number >= count)
            throwIllegalNumber(number);
        value = static_cast<Enum>(number);
    }

    /// A field that older blocks lack; there it takes `older`.
    template <class T>
    void field(T &value, Since since, std::type_identity_t<T> const &older)
    {
        if (version_ >= since.version)
            field(value);
        else
            value = older;
    }

    /// A field that older blocks lack; there it keeps the value it has.
    template <class T>
    void keep(T &value, Since since)
    {
        if (version_ >= since.version)
            field(value);
    }

    template <class Enum>
    void keepList(Enum &value, unsigned int count, Since since)
    {
        if (version_ >= since.version)
            list(value, count);
    }

    /// Reads a field that has no place in today's record.
    template <class T>
    void drop()
    {
        T dropped{};
        field(dropped);
    }

private:
    IO::InStream *stream_;
    unsigned int version_;
};

/// Throws the refusal of a block version that this release does not know.
[[noreturn]] void throwWrongBlockVersion();

/// Throws IO::StreamException with translate(context, text), %1 being what went wrong inside.
[[noreturn]] void throwWrapped(char const *context, char const *text, Exception const &cause);

/// Writes one block of exactly the fields that `fields` lists. `fields` is called twice: to count, then to write.
template <class Fields>
void saveBlock(IO::OutStream *stream, unsigned int version, Fields const &fields)
{
    BlockSize size;
    fields(size);
    stream->beginBlock(size.bytes(), version);
    BlockWriter writer(stream);
    fields(writer);
    stream->endBlock();
}

/// Opens the next block, refuses versions below 1 and above `newest`, reads the fields that `fields` lists and
/// closes it. The result is the version of the block.
template <class Fields>
unsigned int loadBlock(IO::InStream *stream, unsigned int newest, Fields const &fields)
{
    stream->openBlock();
    unsigned int const version = stream->getBlockVersion();
    if (version < 1 || version > newest)
        throwWrongBlockVersion();
    BlockReader reader(stream, version);
    fields(reader);
    stream->closeBlock();
    return version;
}

/// Runs `load` and gives a failure inside it, mostly that of the stream, the class's own text, "... : %1".
template <class Failure = IO::StreamException, class Load>
void loadWrapped(char const *context, char const *text, Load const &load)
{
    try {
        load();
    } catch (Failure const &cause) {
        throwWrapped(context, text, cause);
    }
}

} // namespace Zem::Fig2
