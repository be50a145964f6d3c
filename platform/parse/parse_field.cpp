#include "parse_field.h"

#include <ZemParse.h>
#include <ZemTranslate.h>

#include <QtCore/QStringTokenizer>

#include <charconv>
#include <cmath>

namespace Zem::ParseDetail {

namespace {

constexpr qsizetype SHOWN_CHARACTERS = 60;

template <class Number>
bool fromCharacters(QStringView text, Number *number)
{
    QByteArray const bytes = text.trimmed().toLatin1();
    char const *const end = bytes.constData() + bytes.size();
    auto const result = std::from_chars(bytes.constData(), end, *number);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

void Field::fail(char const *what) const
{
    QString const shown = value.size() > SHOWN_CHARACTERS
                              ? value.first(SHOWN_CHARACTERS).toString() + QStringLiteral("...")
                              : value.toString();
    throw ParamError(translate("Parse_err", "parameter '%1', value '%2': %3")
                         .arg(key.toString(), shown, translate("Parse_err", what)),
                     static_cast<int>(position));
}

void failMissing(QString const &key)
{
    throw ParamError(translate("Parse_err", "parameter '%1' is missing").arg(key), -1);
}

bool toNumber(QStringView text, long long *number)
{
    return fromCharacters(text, number);
}

bool toNumber(QStringView text, double *number)
{
    return fromCharacters(text, number) && std::isfinite(*number);
}

bool toNumbers(QStringView text, std::span<double> numbers)
{
    std::size_t count = 0;
    for (QStringView part : qTokenize(text, u',')) {
        if (count == numbers.size() || !toNumber(part, &numbers[count])) {
            return false;
        }
        ++count;
    }
    return count == numbers.size();
}

bool toTuple(QStringView text, std::span<double> numbers)
{
    text = text.trimmed();
    return text.size() >= 2 && text.startsWith(u'(') && text.endsWith(u')') &&
           toNumbers(text.sliced(1, text.size() - 2), numbers);
}

bool toHexColor(QStringView text, Color *color)
{
    text = text.trimmed();
    if ((text.size() != 7 && text.size() != 9) || !text.startsWith(u'#')) {
        return false;
    }
    QByteArray const digits = text.sliced(1).toLatin1();
    unsigned char channels[4] = {0, 0, 0, 255};
    for (qsizetype i = 0; i < digits.size() / 2; ++i) {
        char const *const first = digits.constData() + 2 * i;
        auto const result = std::from_chars(first, first + 2, channels[i], 16);
        if (result.ec != std::errc() || result.ptr != first + 2) {
            return false;
        }
    }
    *color = Color(channels[0], channels[1], channels[2], channels[3]);
    return true;
}

double readDouble(Field const &field, QStringView text, double min, double max)
{
    double number = 0;
    if (!toNumber(text, &number)) {
        field.fail("is no number");
    }
    if (!(number >= min && number <= max)) {
        field.fail("is out of range");
    }
    return number;
}

long long readInteger(Field const &field, QStringView text, long long min, long long max)
{
    long long number = 0;
    if (!toNumber(text, &number)) {
        field.fail("is no integer");
    }
    if (number < min || number > max) {
        field.fail("is out of range");
    }
    return number;
}

} // namespace Zem::ParseDetail
