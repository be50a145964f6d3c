#include "meas_csv_cells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

namespace Zem::Measurement {

namespace {

constexpr std::size_t MIN_IDENTIFIER_DIGITS = 5; // 0830 may be a time of day
constexpr std::size_t MAX_EXACT_DIGITS = 15;     // that a double holds for certain
constexpr std::size_t MAX_NUMBER_LENGTH = 128;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isAllDigits(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

bool hasNegativeExponent(std::string_view text)
{
    std::size_t const e = text.find_first_of("eE");
    return e != std::string_view::npos && text.substr(e + 1).starts_with('-');
}

std::optional<double> parsePlainNumber(std::string_view text)
{
    double value = 0.0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size()) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range && hasNegativeExponent(text)) {
        return 0.0;
    }
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

/// Reads the digits at the front of `text` away: `minDigits` to `maxDigits` of them.
std::optional<int> takeDigits(std::string_view &text, std::size_t minDigits, std::size_t maxDigits)
{
    std::size_t count = 0;
    int value = 0;
    while (count < text.size() && count < maxDigits && isDigit(text[count])) {
        value = 10 * value + (text[count] - '0');
        ++count;
    }
    if (count < minDigits) {
        return std::nullopt;
    }
    text.remove_prefix(count);
    return value;
}

bool take(std::string_view &text, char c)
{
    if (!text.starts_with(c)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

struct DateFields
{
    std::array<int, 3> values{};
    char separator = 0;
    bool yearFirst = false;
};

/// Three groups of digits with one of the separators between them, four digits at one end for the year.
std::optional<DateFields> takeDate(std::string_view &text)
{
    std::size_t const first = std::min(text.find_first_not_of("0123456789"), text.size());
    if (first == text.size() || (first != 4 && first != 2 && first != 1)) {
        return std::nullopt;
    }
    DateFields fields;
    fields.separator = text[first];
    fields.yearFirst = first == 4;
    bool const known = fields.separator == '-' || fields.separator == '/' || (fields.separator == '.' && first != 4);
    if (!known) {
        return std::nullopt;
    }
    auto const a = takeDigits(text, first, first);
    auto const b = take(text, fields.separator) ? takeDigits(text, 1, 2) : std::nullopt;
    bool const more = b && take(text, fields.separator);
    auto const c = !more ? std::nullopt : fields.yearFirst ? takeDigits(text, 1, 2) : takeDigits(text, 4, 4);
    if (!a || !c) {
        return std::nullopt;
    }
    fields.values = {*a, *b, *c};
    return fields;
}

std::optional<std::int64_t> daysSinceEpoch(DateFields const &fields, DateOrder_t order)
{
    auto [a, b, c] = fields.values;
    if (!fields.yearFirst) {
        bool const monthFirst = fields.separator == '/' && order == DateOrder_t::MONTH_DAY;
        std::tie(a, b, c) = monthFirst ? std::tuple(c, a, b) : std::tuple(c, b, a);
    }
    std::chrono::year_month_day const date{std::chrono::year(a), std::chrono::month(static_cast<unsigned int>(b)),
                                           std::chrono::day(static_cast<unsigned int>(c))};
    if (!date.ok()) {
        return std::nullopt;
    }
    return std::chrono::sys_days(date).time_since_epoch().count();
}

/// The fraction of a second behind its point or comma, in milliseconds; digits beyond are dropped.
int takeFraction(std::string_view &text)
{
    int milliseconds = 0;
    int scale = 100;
    while (!text.empty() && isDigit(text.front())) {
        milliseconds += scale * (text.front() - '0');
        scale /= 10;
        text.remove_prefix(1);
    }
    return milliseconds;
}

/// h:mm[:ss[.fraction]] in milliseconds.
std::optional<std::int64_t> takeTime(std::string_view &text)
{
    auto const hour = takeDigits(text, 1, 2);
    auto const minute = hour && take(text, ':') ? takeDigits(text, 2, 2) : std::nullopt;
    if (!minute) {
        return std::nullopt;
    }
    std::optional<int> second = 0;
    int milliseconds = 0;
    if (take(text, ':')) {
        second = takeDigits(text, 2, 2);
        if (take(text, '.') || take(text, ',')) {
            milliseconds = takeFraction(text);
        }
    }
    if (!second || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    return ((*hour * 60LL + *minute) * 60 + *second) * 1000 + milliseconds;
}

/// Z, +hh:mm, +hhmm or nothing: the minutes to take off for UTC.
std::optional<int> takeZone(std::string_view &text)
{
    if (text.empty() || take(text, 'Z')) {
        return 0;
    }
    int const sign = text.front() == '-' ? -1 : 1;
    if (!take(text, '+') && !take(text, '-')) {
        return std::nullopt;
    }
    auto const hours = takeDigits(text, 2, 2);
    take(text, ':');
    auto const minutes = takeDigits(text, 2, 2);
    if (!hours || !minutes || *hours > 14 || *minutes > 59) {
        return std::nullopt;
    }
    return sign * (*hours * 60 + *minutes);
}

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view BLANKS = " \t\r\n\f\v";
    std::size_t const first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

std::optional<CellNumber> parseNumber(std::string_view cell, bool decimalComma)
{
    std::string_view text = trimmed(cell);
    bool const plus = take(text, '+');
    std::string_view const unsignedText = text.substr(!plus && text.starts_with('-') ? 1 : 0);
    // from_chars would also read "nan" and "inf", which are no measured values.
    bool const startsLikeNumber =
        !unsignedText.empty() &&
        (isDigit(unsignedText.front()) || unsignedText.front() == '.' || (decimalComma && unsignedText.front() == ','));
    if (!startsLikeNumber) {
        return std::nullopt;
    }
    std::array<char, MAX_NUMBER_LENGTH> buffer;
    if (decimalComma) {
        if (text.size() > buffer.size() || text.find('.') != std::string_view::npos) {
            return std::nullopt;
        }
        std::replace_copy(text.begin(), text.end(), buffer.begin(), ',', '.');
        text = std::string_view(buffer.data(), text.size());
    }
    std::optional<double> const value = parsePlainNumber(text);
    if (!value) {
        return std::nullopt;
    }
    return CellNumber{*value, isAllDigits(unsignedText)};
}

std::optional<std::int64_t> parseDateTime(std::string_view cell, DateOrder_t order)
{
    constexpr std::int64_t MINUTE = 60'000;
    constexpr std::int64_t DAY = 24 * 60 * MINUTE;
    std::string_view text = trimmed(cell);
    auto const fields = takeDate(text);
    auto const days = fields ? daysSinceEpoch(*fields, order) : std::nullopt;
    if (!days) {
        return std::nullopt;
    }
    if (text.empty()) {
        return *days * DAY;
    }
    auto const time = take(text, ' ') || take(text, 'T') ? takeTime(text) : std::nullopt;
    auto const zone = time ? takeZone(text) : std::nullopt;
    if (!zone || !text.empty()) {
        return std::nullopt;
    }
    return *days * DAY + *time - *zone * MINUTE;
}

bool isSlashDate(std::string_view cell)
{
    std::string_view text = trimmed(cell);
    auto const fields = takeDate(text);
    return fields && fields->separator == '/' && !fields->yearFirst;
}

bool isMissingWord(std::string_view cell)
{
    constexpr std::array<std::string_view, 8> WORDS = {"nan", "na", "n/a", "#n/a", "null", "none", "-", "--"};
    return std::any_of(WORDS.begin(), WORDS.end(), [cell](auto word) { return equalsIgnoringCase(cell, word); });
}

bool isIdentifier(std::string_view cell)
{
    if (!isAllDigits(cell)) {
        return false;
    }
    return cell.size() > MAX_EXACT_DIGITS || (cell.front() == '0' && cell.size() >= MIN_IDENTIFIER_DIGITS);
}

} // namespace Zem::Measurement
