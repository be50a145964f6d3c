// ZemText.h: text in the standard streams: words, and number formats that no locale can change.
// Functions may be called from any thread; a stream, and what is made for it, is used from one thread at a time.
#pragma once

#include <QtCore/QString>

#include <ios>
#include <iosfwd>
#include <locale>
#include <string>

namespace Zem {

/// For its lifetime a stream uses the classic locale, plain decimal numbers with 17 digits (enough for each double to
/// read back to the same bits), no field width, and skips white space before a word. The destructor restores what was.
/// The stream is not owned and outlives this object.
class ClassicLocale
{
public:
    explicit ClassicLocale(std::basic_ios<char> &stream);
    ~ClassicLocale();
    ClassicLocale(ClassicLocale const &) = delete;
    ClassicLocale &operator=(ClassicLocale const &) = delete;

private:
    std::basic_ios<char> &stream_;
    std::locale locale_;
    std::ios_base::fmtflags flags_;
    std::streamsize precision_;
    char fill_;
};

/// A byte string that the standard streams read and write as one word. Texts are UTF-8 by convention.
class TString : public std::string
{
public:
    using std::string::string;
    TString() = default;
    TString(std::string const &bytes) : std::string(bytes) {}
    TString(std::string &&bytes) noexcept : std::string(std::move(bytes)) {}
    /// The text as UTF-8.
    explicit TString(QString const &text);

    /// The bytes read as UTF-8; what is none becomes U+FFFD.
    QString toQString() const;
};

/// The bytes as they are: only a text without white space reads back as the same word, see tokenize().
std::ostream &operator<<(std::ostream &stream, TString const &text);
/// The next run of bytes other than blank, tab, line feed, vertical tab, form feed and carriage return.
std::istream &operator>>(std::istream &stream, TString &text);

/// Makes one word without white space of any text, so that a text stream can hold it; untokenize() gives back the
/// same bytes. With `markEmpty` the empty text becomes a word too, without it stays empty.
TString tokenize(TString const &text, bool markEmpty);
/// The exact inverse of tokenize() called with the same flag. A word that tokenize() never writes is read leniently:
/// an unknown escape stands for itself.
TString untokenize(TString const &word, bool markEmpty);

/// Makes plain text safe inside rich text: escapes "&", "<" and ">". With `keepLayout` blanks become "&nbsp;" and
/// line feeds "<br>", so that the text is shown as it stands.
QString tokenizeRT(QString const &text, bool keepLayout);

} // namespace Zem
