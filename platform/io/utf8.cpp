#include "utf8.h"

#include <QtCore/QStringDecoder>

namespace Zem::IO::Utf8 {

namespace {

char32_t nextCharacter(QStringView text, qsizetype *position) noexcept
{
    QChar const unit = text[(*position)++];
    if (!unit.isSurrogate()) {
        return unit.unicode();
    }
    if (unit.isHighSurrogate() && *position < text.size() && text[*position].isLowSurrogate()) {
        return QChar::surrogateToUcs4(unit, text[(*position)++]);
    }
    return QChar::ReplacementCharacter;
}

std::size_t encodedSize(char32_t character) noexcept
{
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

char *encodeCharacter(char32_t character, char *bytes) noexcept
{
    static constexpr unsigned char FIRST_BYTE[] = {0, 0x00, 0xc0, 0xe0, 0xf0};
    std::size_t const size = encodedSize(character);
    for (std::size_t i = size - 1; i > 0; --i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(0x80 | (character & 0x3f)));
        character >>= 6;
    }
    bytes[0] = static_cast<char>(static_cast<unsigned char>(FIRST_BYTE[size] | character));
    return bytes + size;
}

} // namespace

std::size_t size(QStringView text) noexcept
{
    std::size_t size = 0;
    for (qsizetype position = 0; position < text.size();) {
        size += encodedSize(nextCharacter(text, &position));
    }
    return size;
}

void encode(QStringView text, char *bytes) noexcept
{
    for (qsizetype position = 0; position < text.size();) {
        bytes = encodeCharacter(nextCharacter(text, &position), bytes);
    }
}

bool decode(char const *bytes, std::size_t size, QString *text)
{
    // Without the two flags a byte order mark would vanish, and a sequence cut off at the end would be no error.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString const decoded = decoder.decode(QByteArrayView(bytes, static_cast<qsizetype>(size)));
    if (decoder.hasError()) {
        return false;
    }
    *text = decoded;
    return true;
}

} // namespace Zem::IO::Utf8
