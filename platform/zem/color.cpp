#include <ZemColor.h>
#include <ZemText.h>

#include <array>
#include <istream>
#include <ostream>

namespace Zem {

namespace {

constexpr std::size_t WORD_LENGTH = 9; // "#rrggbbaa"

int hexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

bool parseChannels(TString const &word, std::array<unsigned char, 4> *channels)
{
    if (word.size() != WORD_LENGTH || word[0] != '#') {
        return false;
    }
    for (std::size_t i = 0; i < channels->size(); ++i) {
        int const high = hexDigit(word[1 + 2 * i]);
        int const low = hexDigit(word[2 + 2 * i]);
        if (high < 0 || low < 0) {
            return false;
        }
        (*channels)[i] = static_cast<unsigned char>(high * 16 + low);
    }
    return true;
}

} // namespace

std::ostream &operator<<(std::ostream &stream, Color const &color)
{
    static constexpr char DIGITS[] = "0123456789abcdef";
    TString word("#");
    for (unsigned char channel : {color.getRed(), color.getGreen(), color.getBlue(), color.getAlpha()}) {
        word += DIGITS[channel / 16];
        word += DIGITS[channel % 16];
    }
    return stream << word;
}

std::istream &operator>>(std::istream &stream, Color &color)
{
    TString word;
    std::array<unsigned char, 4> channels{};
    if (stream >> word) {
        if (parseChannels(word, &channels)) {
            color = Color(channels[0], channels[1], channels[2], channels[3]);
        } else {
            stream.setstate(std::ios_base::failbit);
        }
    }
    return stream;
}

} // namespace Zem
