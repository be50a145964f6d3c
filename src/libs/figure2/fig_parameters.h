// fig_parameters.h: how the library's classes write and read their named parameters.
// Layer: streams. Internal to the library.
#pragma once

#include "fig_words.h"

#include <ZemAlignment.h>
#include <ZemParse.h>
#include <ZemV541Parser.h>

#include <QtCore/QString>

#include <limits>
#include <span>
#include <vector>

namespace Zem::Fig2 {

/// The widest range that a parameter can have: reading with it refuses nothing but what is no number.
inline constexpr double ANY_DOUBLE = std::numeric_limits<double>::max();
inline constexpr unsigned int ANY_COUNT = std::numeric_limits<unsigned int>::max();

/// Prefix, underscore and key; an empty prefix gives the bare key.
QString parameterKey(QString const &prefix, QLatin1StringView key);

/// The words of an enumeration, as a list parameter wants them.
std::vector<QString> parameterWords(std::span<char const *const> words);

/// Appends entries to a parameter string.
class ParameterWriter
{
public:
    explicit ParameterWriter(QString &parameters, QString const &prefix = QString())
        : parameters_(parameters), prefix_(prefix)
    {
    }

    QString key(QLatin1StringView name) const { return parameterKey(prefix_, name); }

    void item(QLatin1StringView name, bool value) { parameters_ += Parse::createBool(key(name), value); }
    void item(QLatin1StringView name, int value) { parameters_ += Parse::createInt(key(name), value); }
    void item(QLatin1StringView name, unsigned int value) { parameters_ += Parse::createUInt(key(name), value); }
    void item(QLatin1StringView name, double value, double = 0, double = 0)
    {
        parameters_ += Parse::createDouble(key(name), value);
    }
    void item(QLatin1StringView name, QString const &value) { parameters_ += Parse::createString(key(name), value); }
    void item(QLatin1StringView name, Color const &value) { parameters_ += Parse::createColor(key(name), value); }
    void item(QLatin1StringView name, BaVec2d<double> const &value)
    {
        parameters_ += Parse::createVec2d(key(name), value);
    }
    void item(QLatin1StringView name, BaVec3d<double> const &value)
    {
        parameters_ += Parse::createVec3dString(key(name), value);
    }
    void item(QLatin1StringView name, Font const &value)
    {
        parameters_ += Parse::getParameterString(key(name), value);
    }
    void item(QLatin1StringView name, Alignment_t value);
    template <class Enum>
    void list(QLatin1StringView name, Enum value, std::span<char const *const> words)
    {
        parameters_ += Parse::createList(key(name), static_cast<unsigned int>(value), parameterWords(words));
    }
    /// An enumeration as one of its words.
    template <class Enum, std::size_t count>
    void word(QLatin1StringView name, Enum value, std::array<char const *, count> const &words, char const *,
              char const *)
    {
        item(name, wordOf(words, value));
    }
    /// A record that writes its own entries under a prefix.
    template <class Record>
    void record(QLatin1StringView name, Record const &value)
    {
        parameters_ += value.getParameterString(key(name));
    }

private:
    QString &parameters_;
    QString prefix_;
};

/// Takes entries out of a parameter string that `Parser` reads; a member whose entry is missing is left alone.
/// Every operation throws ParamError for a value that cannot be read or is out of range.
template <class Parser>
class BasicParameterReader
{
public:
    explicit BasicParameterReader(QString &parameters, QString const &prefix = QString())
        : parameters_(parameters), prefix_(prefix)
    {
    }

    QString key(QLatin1StringView name) const { return parameterKey(prefix_, name); }
    bool exists(QLatin1StringView name) const { return Parser::parameterExists(parameters_, key(name)); }

    void item(QLatin1StringView name, bool &value)
    {
        if (exists(name))
            value = Parser::getBool(parameters_, key(name));
    }
    void item(QLatin1StringView name, double &value, double minimum = -ANY_DOUBLE, double maximum = ANY_DOUBLE)
    {
        if (exists(name))
            value = Parser::getDouble(parameters_, key(name), minimum, maximum);
    }
    void item(QLatin1StringView name, QString &value)
    {
        if (exists(name))
            value = Parser::getString(parameters_, key(name));
    }
    void item(QLatin1StringView name, Color &value)
    {
        if (exists(name))
            value = Parser::getColor(parameters_, key(name));
    }
    void item(QLatin1StringView name, BaVec2d<double> &value)
    {
        if (exists(name))
            value = Parser::getVec2d(parameters_, key(name));
    }

protected:
    QString &parameters_;
    QString prefix_;
};

/// Reads today's parameter strings.
class ParameterReader : public BasicParameterReader<Parse>
{
public:
    using BasicParameterReader::BasicParameterReader;
    using BasicParameterReader::item;

    void item(QLatin1StringView name, int &value)
    {
        if (exists(name))
            value = Parse::getInt(parameters_, key(name), std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    }
    void item(QLatin1StringView name, unsigned int &value)
    {
        if (exists(name))
            value = Parse::getUInt(parameters_, key(name), 0, ANY_COUNT);
    }
    void item(QLatin1StringView name, BaVec3d<double> &value)
    {
        if (exists(name))
            value = Parse::getVec3dFromString(parameters_, key(name));
    }
    void item(QLatin1StringView name, Font &value)
    {
        Parse::createFromParameterString(parameters_, key(name), &value);
    }
    void item(QLatin1StringView name, Alignment_t &value);
    template <class Enum>
    void list(QLatin1StringView name, Enum &value, std::span<char const *const> words)
    {
        if (exists(name))
            value = static_cast<Enum>(Parse::getList(parameters_, key(name), parameterWords(words)));
    }
    /// An unknown word is a ParamError with translate(context, error).
    template <class Enum, std::size_t count>
    void word(QLatin1StringView name, Enum &value, std::array<char const *, count> const &words, char const *context,
              char const *error)
    {
        if (exists(name))
            value = requireValueOf<Enum>(words, Parse::getString(parameters_, key(name)), context, error);
    }
    template <class Record>
    void record(QLatin1StringView name, Record &value)
    {
        value.createFromParameterString(parameters_, key(name));
    }
};

/// Reads the parameter strings of an older release.
class V541ParameterReader : public BasicParameterReader<V541Parser>
{
public:
    using BasicParameterReader::BasicParameterReader;
    using BasicParameterReader::item;

    void item(QLatin1StringView name, Alignment_t &value);
};

} // namespace Zem::Fig2
