// fig_text.h: how the library's classes write and read their text forms, item by item.
// Layer: streams. Internal to the library.
#pragma once

#include "fig_since.h"

#include <ZemColor.h>
#include <ZemFont.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <istream>
#include <ostream>
#include <type_traits>

namespace Zem::Fig2 {

/// Gives a standard stream the classic locale, plain flags and 17 digits as long as it lives.
class ClassicFormat
{
public:
    explicit ClassicFormat(std::ios &stream);
    ~ClassicFormat();
    ClassicFormat(ClassicFormat const &) = delete;
    ClassicFormat &operator=(ClassicFormat const &) = delete;

private:
    std::ios &stream_;
    std::ios saved_;
};

/// Writes items, each with one blank behind it. Numbers never depend on the caller's locale.
class TextWriter
{
public:
    static constexpr bool isReader = false;

    explicit TextWriter(std::ostream &stream) : stream_(stream), format_(stream) {}

    void item(bool value) { write(value ? 1 : 0); }
    void item(int value) { write(value); }
    void item(unsigned int value) { write(value); }
    void item(double value) { write(value); }
    void item(Color const &value) { write(value); }
    void item(Font const &value) { write(value); }
    void item(BaVec2d<double> const &value);
    void item(BaVec3d<double> const &value);
    /// A text as one word, in UTF-8.
    void item(QString const &value);
    template <class Enum>
    void list(Enum const &value, unsigned int)
    {
        write(static_cast<unsigned int>(value));
    }
    /// A record whose own text form ends with a blank already.
    template <class Record>
    void record(Record const &value)
    {
        stream_ << value;
    }
    /// An item that older forms lack.
    template <class T>
    void item(T const &value, Since, std::type_identity_t<T> const &)
    {
        item(value);
    }
    template <class T>
    void keep(T const &value, Since)
    {
        item(value);
    }
    /// The version in front of a form.
    void version(unsigned int number) { write(number); }

private:
    template <class T>
    void write(T const &value)
    {
        stream_ << value << ' ';
    }

    std::ostream &stream_;
    ClassicFormat format_;
};

/// Reads items separated by any run of white space. What cannot be read puts the stream into its failed state.
class TextReader
{
public:
    static constexpr bool isReader = true;

    explicit TextReader(std::istream &stream) : stream_(stream), format_(stream) {}

    bool good() const { return !stream_.fail(); }
    void fail() { stream_.setstate(std::ios::failbit); }

    void item(bool &value) { stream_ >> value; }
    void item(int &value) { stream_ >> value; }
    void item(unsigned int &value) { stream_ >> value; }
    void item(double &value) { stream_ >> value; }
    void item(Color &value) { stream_ >> value; }
    void item(Font &value) { stream_ >> value; }
    void item(BaVec2d<double> &value) { stream_ >> value.x >> value.y; }
    void item(BaVec3d<double> &value) { stream_ >> value.x >> value.y >> value.z; }
    void item(QString &value);
    template <class Enum>
    void list(Enum &value, unsigned int count)
    {
        unsigned int number = 0;
        stream_ >> number;
        if (number >= count)
            fail();
        else if (good())
            value = static_cast<Enum>(number);
    }
    template <class Record>
    void record(Record &value)
    {
        stream_ >> value;
    }
    /// An item that older forms lack; there it takes `older`.
    template <class T>
    void item(T &value, Since since, std::type_identity_t<T> const &older)
    {
        if (version_ >= since.version)
            item(value);
        else
            value = older;
    }
    /// An item that older forms lack; there it keeps the value it has.
    template <class T>
    void keep(T &value, Since since)
    {
        if (version_ >= since.version)
            item(value);
    }
    /// Reads the version in front of a form; 0 when there is none.
    unsigned int version();

private:
    std::istream &stream_;
    unsigned int version_ = 0;
    ClassicFormat format_;
};

} // namespace Zem::Fig2
