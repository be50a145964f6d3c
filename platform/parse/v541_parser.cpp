#include <ZemV541Parser.h>

#include "parse_field.h"

#include <array>
#include <cmath>

namespace Zem {

using namespace ParseDetail;

namespace {

constexpr QChar QUOTE = u'"';
constexpr QChar ESCAPE = u'\\';

/// Where the entry that begins at `begin` ends: behind its semicolon, or at the end of the string.
qsizetype endOfEntry(QStringView parameters, qsizetype begin)
{
    bool quoted = false;
    for (qsizetype i = begin; i < parameters.size(); ++i) {
        QChar const c = parameters[i];
        if (c == QUOTE) {
            quoted = !quoted;
        } else if (quoted && c == ESCAPE) {
            ++i;
        } else if (!quoted && c == u';') {
            return i + 1;
        }
    }
    return parameters.size();
}

bool findOldEntry(QStringView parameters, QString const &key, Field *field)
{
    for (qsizetype begin = 0; begin < parameters.size();) {
        qsizetype const end = endOfEntry(parameters, begin);
        QStringView entry = parameters.sliced(begin, end - begin);
        qsizetype const equals = entry.indexOf(u'=');
        if (equals >= 0 && entry.first(equals).trimmed() == key) {
            QStringView value = entry.sliced(equals + 1);
            value = (value.endsWith(u';') ? value.chopped(1) : value).trimmed();
            *field = {key, value, begin, end - begin, positionIn(parameters, value)};
            return true;
        }
        begin = end;
    }
    return false;
}

QString readOldText(Field const &field)
{
    if (!field.value.startsWith(QUOTE)) {
        return field.value.toString();
    }
    QString text;
    for (qsizetype i = 1; i < field.value.size(); ++i) {
        QChar c = field.value[i];
        if (c == QUOTE) {
            if (i + 1 < field.value.size()) {
                field.fail("goes on behind its end");
            }
            return text;
        }
        if (c == ESCAPE && ++i < field.value.size()) {
            c = field.value[i] == u'n' ? QChar(u'\n') : field.value[i];
        }
        text += c;
    }
    field.fail("has no closing quote");
}

bool toChannel(double number, unsigned char *channel)
{
    if (!(number >= 0 && number <= 255) || number != std::floor(number)) {
        return false;
    }
    *channel = static_cast<unsigned char>(number);
    return true;
}

Color readOldColor(Field const &field)
{
    std::array<double, 4> numbers{0, 0, 0, 255};
    std::array<unsigned char, 4> channels{};
    bool good = toNumbers(field.value, std::span(numbers).first(3)) || toNumbers(field.value, numbers);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        good = good && toChannel(numbers[i], &channels[i]);
    }
    if (!good) {
        field.fail("is no colour");
    }
    return Color(channels[0], channels[1], channels[2], channels[3]);
}

template <class Read>
auto take(QString &parameters, QString const &key, Read read)
{
    return consume(parameters, key, findOldEntry, read);
}

} // namespace

bool V541Parser::parameterExists(QString const &parameters, QString const &key)
{
    Field field;
    return findOldEntry(parameters, key, &field);
}

bool V541Parser::getBool(QString &parameters, QString const &key)
{
    return take(parameters, key, [](Field const &field) {
        bool const truth = field.value == u"true" || field.value == u"1";
        if (!truth && field.value != u"false" && field.value != u"0") {
            field.fail("is neither true nor false");
        }
        return truth;
    });
}

double V541Parser::getDouble(QString &parameters, QString const &key, double min, double max)
{
    return take(parameters, key, [=](Field const &field) { return readDouble(field, field.value, min, max); });
}

QString V541Parser::getString(QString &parameters, QString const &key)
{
    return take(parameters, key, readOldText);
}

Color V541Parser::getColor(QString &parameters, QString const &key)
{
    return take(parameters, key, readOldColor);
}

BaVec2d<double> V541Parser::getVec2d(QString &parameters, QString const &key)
{
    return take(parameters, key, [](Field const &field) {
        std::array<double, 2> numbers{};
        if (!toNumbers(field.value, numbers)) {
            field.fail("is no pair of numbers");
        }
        return BaVec2d<double>(numbers[0], numbers[1]);
    });
}

} // namespace Zem
