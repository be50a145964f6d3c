#include <ZemText.h>

#include <istream>
#include <ostream>
#include <string_view>

namespace Zem {

namespace {

// Each escaped byte and the letter that stands for it behind a backslash. Stored in files.
struct Escape
{
    char byte;
    char letter;
};
constexpr Escape ESCAPES[] = {{'\\', '\\'}, {' ', 's'},  {'\t', 't'}, {'\n', 'n'},
                              {'\v', 'v'},  {'\f', 'f'}, {'\r', 'r'}, {'\0', '0'}};
constexpr std::string_view EMPTY_WORD = "\\e";

char letterOf(char byte)
{
    for (Escape const &escape : ESCAPES) {
        if (escape.byte == byte) {
            return escape.letter;
        }
    }
    return 0;
}

char const *byteOf(char letter)
{
    for (Escape const &escape : ESCAPES) {
        if (escape.letter == letter) {
            return &escape.byte;
        }
    }
    return nullptr;
}

} // namespace

ClassicLocale::ClassicLocale(std::basic_ios<char> &stream)
    : stream_(stream), locale_(stream.imbue(std::locale::classic())),
      flags_(stream.flags(std::ios_base::dec | std::ios_base::skipws)), precision_(stream.precision(17)),
      fill_(stream.fill(' '))
{
    stream.width(0);
}

ClassicLocale::~ClassicLocale()
{
    stream_.fill(fill_);
    stream_.precision(precision_);
    stream_.flags(flags_);
    stream_.imbue(locale_);
}

TString::TString(QString const &text) : std::string(text.toStdString())
{
}

QString TString::toQString() const
{
    return QString::fromStdString(*this);
}

std::ostream &operator<<(std::ostream &stream, TString const &text)
{
    ClassicLocale const classic(stream);
    return stream << static_cast<std::string const &>(text);
}

std::istream &operator>>(std::istream &stream, TString &text)
{
    ClassicLocale const classic(stream);
    return stream >> static_cast<std::string &>(text);
}

TString tokenize(TString const &text, bool markEmpty)
{
    if (text.empty() && markEmpty) {
        return TString(std::string(EMPTY_WORD));
    }
    TString word;
    word.reserve(text.size());
    for (char byte : text) {
        char const letter = letterOf(byte);
        if (letter) {
            word += '\\';
        }
        word += letter ? letter : byte;
    }
    return word;
}

TString untokenize(TString const &word, bool markEmpty)
{
    if (markEmpty && word == EMPTY_WORD) {
        return {};
    }
    TString text;
    text.reserve(word.size());
    for (std::size_t i = 0; i < word.size(); ++i) {
        char const *byte = word[i] == '\\' && i + 1 < word.size() ? byteOf(word[i + 1]) : nullptr;
        text += byte ? *byte : word[i];
        i += byte ? 1 : 0;
    }
    return text;
}

QString tokenizeRT(QString const &text, bool keepLayout)
{
    QString result = text;
    // The ampersand first: the others bring new ones.
    result.replace(QLatin1Char('&'), QLatin1String("&amp;"));
    result.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    result.replace(QLatin1Char('>'), QLatin1String("&gt;"));
    if (keepLayout) {
        result.replace(QLatin1Char(' '), QLatin1String("&nbsp;"));
        result.replace(QLatin1Char('\n'), QLatin1String("<br>"));
    }
    return result;
}

} // namespace Zem
