#include "meas_csv_source.h"

#include <cctype>
#include <cstring>

namespace Zem::Measurement {

namespace {

constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";

bool isContinuation(unsigned char byte)
{
    return (byte & 0xC0u) == 0x80u;
}

/// Length of the well-formed UTF-8 sequence at the start of `bytes`, 0 when there is none: overlong forms, surrogates
/// and everything above U+10FFFF are none.
std::size_t sequenceLength(std::string_view bytes)
{
    auto const at = [bytes](std::size_t i) { return static_cast<unsigned char>(i < bytes.size() ? bytes[i] : 0); };
    unsigned char const first = at(0);
    if (first < 0x80) {
        return 1;
    }
    if (!isContinuation(at(1))) {
        return 0;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        return 2;
    }
    if ((first & 0xF0u) == 0xE0u) {
        bool const allowed = (first != 0xE0 || at(1) >= 0xA0) && (first != 0xED || at(1) < 0xA0);
        return allowed && isContinuation(at(2)) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        bool const allowed = (first != 0xF0 || at(1) >= 0x90) && (first != 0xF4 || at(1) < 0x90);
        return allowed && isContinuation(at(2)) && isContinuation(at(3)) ? 4 : 0;
    }
    return 0;
}

/// Offset of the first byte that is no UTF-8, npos when there is none.
std::size_t findBadUtf8(std::string_view text)
{
    constexpr std::uint64_t HIGH_BITS = 0x8080808080808080u;
    for (std::size_t i = 0; i < text.size();) {
        std::uint64_t eight = 0;
        if (i + sizeof eight <= text.size()) {
            std::memcpy(&eight, text.data() + i, sizeof eight);
            if ((eight & HIGH_BITS) == 0) {
                i += sizeof eight;
                continue;
            }
        }
        std::size_t const length = sequenceLength(text.substr(i, 4));
        if (length == 0) {
            return i;
        }
        i += length;
    }
    return std::string_view::npos;
}

bool isControl(unsigned char byte)
{
    bool const blank = byte == '\t' || byte == '\n' || byte == '\r' || byte == '\f' || byte == '\v';
    return (byte < 0x20 && !blank) || (byte >= 0x7F && byte < 0xA0);
}

QString byteName(char byte)
{
    return QStringLiteral("0x%1").arg(static_cast<unsigned char>(byte), 2, 16, QLatin1Char('0'));
}

} // namespace

CsvSource::CsvSource(QByteArray const &content, QString const &fileName, std::optional<CsvEncoding_t> encoding)
    : fileName_(fileName), text_(content.constData(), static_cast<std::size_t>(content.size()))
{
    if (text_.starts_with("\xFF\xFE") || text_.starts_with("\xFE\xFF")) {
        fail(QStringLiteral("this is UTF-16 text; save it as UTF-8"));
    }
    bool const marked = text_.starts_with(UTF8_MARK);
    if (marked) {
        text_.remove_prefix(UTF8_MARK.size());
    }
    requireText();
    encoding_ = encoding.value_or(CsvEncoding_t::UTF8);
    if (encoding_ == CsvEncoding_t::UTF8) {
        checkUtf8(marked || encoding.has_value());
    }
    if (encoding_ == CsvEncoding_t::LATIN1) {
        checkLatin1();
    }
}

void CsvSource::requireText() const
{
    std::size_t const nul = text_.find('\0');
    if (nul != std::string_view::npos) {
        failAt(nul, QStringLiteral("a NUL byte: this is no text file"));
    }
    std::size_t const first = text_.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        fail(QStringLiteral("the file is empty"));
    }
    bool const tag = text_[first] == '<' && text_.find('>', first) != std::string_view::npos;
    if (tag && (text_.substr(first, 5) == "<?xml" || std::isalpha(static_cast<unsigned char>(text_[first + 1])) != 0)) {
        failAt(first, QStringLiteral("this is a marked-up document (XML or HTML), no table"));
    }
}

void CsvSource::checkUtf8(bool forced)
{
    std::size_t const bad = findBadUtf8(text_);
    if (bad == std::string_view::npos) {
        return;
    }
    if (forced) {
        failAt(bad, QStringLiteral("byte %1 is no valid UTF-8").arg(byteName(text_[bad])));
    }
    encoding_ = CsvEncoding_t::LATIN1;
}

void CsvSource::checkLatin1() const
{
    for (std::size_t i = 0; i < text_.size(); ++i) {
        if (isControl(static_cast<unsigned char>(text_[i]))) {
            failAt(i, QStringLiteral("byte %1 is neither UTF-8 nor Latin-1 text").arg(byteName(text_[i])));
        }
    }
}

QString CsvSource::decode(std::string_view bytes) const
{
    auto const size = static_cast<qsizetype>(bytes.size());
    return encoding_ == CsvEncoding_t::UTF8 ? QString::fromUtf8(bytes.data(), size)
                                            : QString::fromLatin1(bytes.data(), size);
}

bool CsvSource::nextLine(std::size_t &offset, CsvLine &line) const
{
    if (offset >= text_.size()) {
        return false;
    }
    std::size_t end = text_.find_first_of("\r\n", offset);
    if (end == std::string_view::npos) {
        end = text_.size();
    }
    std::size_t const terminator = end == text_.size() ? 0 : text_.substr(end).starts_with("\r\n") ? 2 : 1;
    line.offset = offset;
    line.text = text_.substr(offset, end - offset);
    line.raw = text_.substr(offset, end - offset + terminator);
    offset = end + terminator;
    return true;
}

void CsvSource::fail(QString const &reason) const
{
    throw ImportError(QStringLiteral("%1: %2").arg(fileName_, reason));
}

void CsvSource::failAt(std::size_t offset, QString const &reason) const
{
    unsigned int number = 1;
    std::size_t next = 0;
    CsvLine line;
    while (nextLine(next, line) && next <= offset && next < text_.size()) {
        ++number;
    }
    std::string_view const before = line.text.substr(0, offset < line.offset ? 0 : offset - line.offset);
    throw ImportError(
        QStringLiteral("%1:%2:%3: %4").arg(fileName_).arg(number).arg(decode(before).size() + 1).arg(reason));
}

} // namespace Zem::Measurement
