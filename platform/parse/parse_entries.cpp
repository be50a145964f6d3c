#include "parse_entries.h"

#include <ZemError.h>

#include <algorithm>

namespace Zem::ParseDetail {

namespace {

constexpr QChar QUOTE = u'"';
constexpr QChar ESCAPE = u'\\';

struct Escape
{
    char16_t character;
    char16_t letter;
};
// The letter for the escape character is no escape character itself: this keeps nested strings short.
constexpr Escape ESCAPES[] = {{u'\\', u'b'}, {u'"', u'q'}, {u'\n', u'n'}, {u'\r', u'r'}};

bool isBadInKey(QChar c)
{
    return c == u'=' || c == QUOTE || c == u'\n' || c == u'\r';
}

QStringView withoutLeadingBlanks(QStringView text)
{
    auto const first = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    return text.sliced(first - text.begin());
}

/// False when the line is no entry of this key.
bool readLine(QStringView line, QStringView key, QStringView *value)
{
    QStringView rest = withoutLeadingBlanks(line);
    if (!rest.startsWith(key)) {
        return false;
    }
    rest = withoutLeadingBlanks(rest.sliced(key.size()));
    if (!rest.startsWith(u'=')) {
        return false;
    }
    *value = rest.sliced(1).trimmed();
    return true;
}

QChar unescaped(QChar letter)
{
    for (Escape const &escape : ESCAPES) {
        if (letter == escape.letter) {
            return escape.character;
        }
    }
    return letter; // \" and \\ as people may write them
}

/// Cuts a quoted text off the front of `rest`, which begins with the quote.
QString takeQuoted(Field const &field, QStringView *rest)
{
    QString text;
    for (qsizetype i = 1; i < rest->size(); ++i) {
        QChar c = rest->at(i);
        if (c == QUOTE) {
            *rest = rest->sliced(i + 1);
            return text;
        }
        if (c == ESCAPE && ++i < rest->size()) {
            c = unescaped(rest->at(i));
        }
        text += c;
    }
    field.fail("has no closing quote");
}

/// Cuts off what stands before the next comma or closing bracket outside parentheses.
QString takeBare(QStringView *rest)
{
    int depth = 0;
    qsizetype end = 0;
    for (; end < rest->size(); ++end) {
        QChar const c = rest->at(end);
        if (depth <= 0 && (c == u',' || c == u']')) {
            break;
        }
        depth += c == u'(' ? 1 : c == u')' ? -1 : 0;
    }
    QString const text = rest->first(end).trimmed().toString();
    *rest = rest->sliced(end);
    return text;
}

QString takeItem(Field const &field, QStringView *rest)
{
    bool const isQuoted = rest->startsWith(QUOTE);
    QString const item = isQuoted ? takeQuoted(field, rest) : takeBare(rest);
    if (item.isEmpty() && !isQuoted) {
        field.fail("is no list");
    }
    *rest = withoutLeadingBlanks(*rest);
    return item;
}

void requireEnd(Field const &field, QStringView rest)
{
    if (!rest.isEmpty()) {
        field.fail("goes on behind its end");
    }
}

} // namespace

bool findEntry(QStringView parameters, QString const &key, Field *field)
{
    for (qsizetype begin = 0; begin < parameters.size();) {
        qsizetype const lineEnd = parameters.indexOf(u'\n', begin);
        qsizetype const end = lineEnd < 0 ? parameters.size() : lineEnd + 1;
        QStringView value;
        if (readLine(parameters.sliced(begin, end - begin), key, &value)) {
            *field = {key, value, begin, end - begin, positionIn(parameters, value)};
            return true;
        }
        begin = end;
    }
    return false;
}

QString makeEntry(QString const &key, QString const &value)
{
    if (key.isEmpty() || key.trimmed().size() != key.size() || std::any_of(key.begin(), key.end(), isBadInKey)) {
        throw ProgError("Zem::Parse", "parse_entries", __LINE__, "bad parameter key");
    }
    return key + QStringLiteral(" = ") + value + u'\n';
}

QString quote(QString const &text)
{
    QString quoted;
    quoted.reserve(text.size() + text.size() / 8 + 2);
    quoted += QUOTE;
    for (QChar c : text) {
        auto const *const escape =
            std::find_if(std::begin(ESCAPES), std::end(ESCAPES), [c](Escape const &e) { return c == e.character; });
        if (escape == std::end(ESCAPES)) {
            quoted += c;
        } else {
            quoted += ESCAPE;
            quoted += QChar(escape->letter);
        }
    }
    quoted += QUOTE;
    return quoted;
}

QString readText(Field const &field)
{
    if (!field.value.startsWith(QUOTE)) {
        return field.value.toString();
    }
    QStringView rest = field.value;
    QString const text = takeQuoted(field, &rest);
    requireEnd(field, rest);
    return text;
}

std::vector<QString> readTexts(Field const &field)
{
    QStringView rest = field.value;
    if (!rest.startsWith(u'[')) {
        field.fail("is no list");
    }
    rest = withoutLeadingBlanks(rest.sliced(1));
    std::vector<QString> texts;
    while (!rest.startsWith(u']') || !texts.empty()) {
        texts.push_back(takeItem(field, &rest));
        if (rest.startsWith(u']')) {
            break;
        }
        if (!rest.startsWith(u',')) {
            field.fail("is no list");
        }
        rest = withoutLeadingBlanks(rest.sliced(1));
    }
    requireEnd(field, rest.sliced(1));
    return texts;
}

} // namespace Zem::ParseDetail
