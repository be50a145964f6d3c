// legend_forms.h: the forms in which the records of this library are stored. Each record lists its fields once, as
// calls on one of these forms: size and bytes of a block, writing and reading of parameters.
#pragma once

#include <ZemParse.h>
#include <ZemStream.h>

#include <QtCore/QString>

#include <cmath>
#include <limits>
#include <span>

namespace Zem::Legend2::Forms {

using Key = QString;
using Words = std::span<char const *const>;

inline constexpr double ANY_DOUBLE = std::numeric_limits<double>::max();

/// Adds up the declared size of a block.
class BlockSize
{
public:
    unsigned int bytes() const { return bytes_; }

    void flag(Key const &, bool) { bytes_ += 1; }
    void number(Key const &, double, double, double) { bytes_ += 8; }
    void measured(Key const &, double) { bytes_ += 8; }
    void integer(Key const &, int, int, int) { bytes_ += 4; }
    void count(Key const &, unsigned int, unsigned int, unsigned int) { bytes_ += 4; }
    void text(Key const &, QString const &value) { bytes_ += IO::Stream::sizeOf(value); }
    void color(Key const &, Color const &) { bytes_ += 4; }
    template <class Enum>
    void word(Key const &, Enum, Words)
    {
        bytes_ += 4;
    }

private:
    unsigned int bytes_ = 0;
};

class BlockWriter
{
public:
    explicit BlockWriter(IO::OutStream *stream) : stream_(stream) {}

    void flag(Key const &, bool value) { stream_->writeBool(value); }
    void number(Key const &, double value, double, double) { stream_->writeDouble(value); }
    void measured(Key const &, double value) { stream_->writeDouble(value); }
    void integer(Key const &, int value, int, int) { stream_->writeInt(value); }
    void count(Key const &, unsigned int value, unsigned int, unsigned int) { stream_->writeUInt(value); }
    void text(Key const &, QString const &value) { stream_->writeString(value); }
    void color(Key const &, Color const &value) { stream_->writeColor(value); }
    template <class Enum>
    void word(Key const &, Enum value, Words)
    {
        stream_->writeUInt(static_cast<unsigned int>(value));
    }

private:
    IO::OutStream *stream_;
};

/// Every operation throws IO::StreamException for a value out of range.
class BlockReader
{
public:
    explicit BlockReader(IO::InStream *stream) : stream_(stream) {}

    void flag(Key const &, bool &value) { stream_->readBool(&value); }
    void number(Key const &key, double &value, double minimum, double maximum);
    void measured(Key const &, double &value) { stream_->readDouble(&value); }
    void integer(Key const &key, int &value, int minimum, int maximum);
    void count(Key const &key, unsigned int &value, unsigned int minimum, unsigned int maximum);
    void text(Key const &, QString &value) { stream_->readString(&value); }
    void color(Key const &, Color &value) { stream_->readColor(&value); }
    template <class Enum>
    void word(Key const &key, Enum &value, Words words)
    {
        unsigned int number = 0;
        count(key, number, 0, static_cast<unsigned int>(words.size() - 1));
        value = static_cast<Enum>(number);
    }

private:
    IO::InStream *stream_;
};

class ParameterWriter
{
public:
    explicit ParameterWriter(QLatin1StringView prefix) : prefix_(prefix) {}

    QString const &parameters() const { return parameters_; }

    void flag(Key const &key, bool value) { parameters_ += Parse::createBool(prefix_ + key, value); }
    void number(Key const &key, double value, double, double)
    {
        parameters_ += Parse::createDouble(prefix_ + key, value);
    }
    /// There is no text form for what is not finite.
    void measured(Key const &key, double value)
    {
        if (std::isfinite(value)) {
            parameters_ += Parse::createDouble(prefix_ + key, value);
        }
    }
    void integer(Key const &key, int value, int, int) { parameters_ += Parse::createInt(prefix_ + key, value); }
    void count(Key const &key, unsigned int value, unsigned int, unsigned int)
    {
        parameters_ += Parse::createUInt(prefix_ + key, value);
    }
    void text(Key const &key, QString const &value) { parameters_ += Parse::createString(prefix_ + key, value); }
    void color(Key const &key, Color const &value) { parameters_ += Parse::createColor(prefix_ + key, value); }
    template <class Enum>
    void word(Key const &key, Enum value, Words words)
    {
        text(key, QString::fromLatin1(words[static_cast<std::size_t>(value)]));
    }

private:
    QString prefix_;
    QString parameters_;
};

[[noreturn]] void failParameter(QString const &key, QString const &value, char const *what);

/// Throws ParamError for a text that is none of the words.
std::size_t indexOfWord(QString const &key, QString const &word, Words words);

/// Consumes entries of today's form or, with V541Parser, of that of an older release; a value without an entry is left
/// alone. Every operation throws ParamError for a value out of range.
template <class Parser>
class ParameterReader
{
public:
    ParameterReader(QString &parameters, QLatin1StringView prefix) : parameters_(parameters), prefix_(prefix) {}

    void flag(Key const &key, bool &value) { take(key, value, &Parser::getBool); }
    void number(Key const &key, double &value, double minimum, double maximum)
    {
        take(key, value, [=](QString &parameters, QString const &name) {
            return Parser::getDouble(parameters, name, minimum, maximum);
        });
    }
    void measured(Key const &key, double &value) { number(key, value, -ANY_DOUBLE, ANY_DOUBLE); }
    void integer(Key const &key, int &value, int minimum, int maximum) { whole(key, value, minimum, maximum); }
    void count(Key const &key, unsigned int &value, unsigned int minimum, unsigned int maximum)
    {
        whole(key, value, minimum, maximum);
    }
    void text(Key const &key, QString &value) { take(key, value, &Parser::getString); }
    void color(Key const &key, Color &value) { take(key, value, &Parser::getColor); }
    template <class Enum>
    void word(Key const &key, Enum &value, Words words)
    {
        take(key, value, [words](QString &parameters, QString const &name) {
            return static_cast<Enum>(indexOfWord(name, Parser::getString(parameters, name), words));
        });
    }

private:
    template <class Value, class Get>
    void take(Key const &key, Value &value, Get get)
    {
        QString const name = prefix_ + key;
        if (Parser::parameterExists(parameters_, name)) {
            value = get(parameters_, name);
        }
    }

    /// The older form has no integers of its own.
    template <class Integer>
    void whole(Key const &key, Integer &value, Integer minimum, Integer maximum)
    {
        take(key, value, [=](QString &parameters, QString const &name) {
            double const number = Parser::getDouble(parameters, name, minimum, maximum);
            if (number != std::floor(number)) {
                failParameter(name, QString::number(number), "is no whole number");
            }
            return static_cast<Integer>(number);
        });
    }

    QString &parameters_;
    QString prefix_;
};

/// Throws IO::StreamException for a version below 1 or above `newest`.
void openBlock(IO::InStream *stream, unsigned int newest);

/// Writes one block of what `fields` lists. `fields` is called twice: to count, then to write.
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

template <class Fields>
void loadBlock(IO::InStream *stream, unsigned int newest, Fields const &fields)
{
    openBlock(stream, newest);
    BlockReader reader(stream);
    fields(reader);
    stream->closeBlock();
}

/// `prefix` stands in front of every key.
template <class Fields>
QString parameterString(QLatin1StringView prefix, Fields const &fields)
{
    ParameterWriter writer(prefix);
    fields(writer);
    return writer.parameters();
}

template <class Parser, class Fields>
void readParameters(QString &parameters, QLatin1StringView prefix, Fields const &fields)
{
    ParameterReader<Parser> reader(parameters, prefix);
    fields(reader);
}

} // namespace Zem::Legend2::Forms
