#include "facts.h"

#include <QtCore/QStringList>

namespace Zem::Zemfig {

namespace {

constexpr int DIGITS = 12;

QString wordsOf(QString const &key)
{
    return QString(key).replace(QLatin1Char('_'), QLatin1Char(' '));
}

QString textOf(QJsonValue const &value);

/// As long as it is read at a glance, on one line.
QString shortened(QString const &text)
{
    constexpr qsizetype LONGEST = 80;
    QString const line = text.simplified();
    return line.size() <= LONGEST ? line : line.left(LONGEST) + QStringLiteral("...");
}

QString textOf(QJsonArray const &array)
{
    QStringList texts;
    for (QJsonValue const &each : array)
        texts += textOf(each);
    return texts.join(!array.isEmpty() && array.first().isDouble() ? QStringLiteral(" x ") : QStringLiteral(", "));
}

/// The name, if there is one, is what the rest is told of.
QString textOf(QJsonObject const &object)
{
    static QString const NAME = QStringLiteral("name");
    QStringList texts;
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it.key() != NAME)
            texts += wordsOf(it.key()) + QLatin1Char(' ') + shortened(textOf(it.value()));
    }
    QString const rest = texts.join(QStringLiteral(", "));
    if (!object.contains(NAME))
        return rest;
    QString const name = object[NAME].toString();
    return rest.isEmpty() ? name : name + QStringLiteral(": ") + rest;
}

QString textOf(QJsonValue const &value)
{
    if (value.isObject())
        return textOf(value.toObject());
    if (value.isArray())
        return textOf(value.toArray());
    if (value.isBool())
        return value.toBool() ? QStringLiteral("yes") : QStringLiteral("no");
    return value.isDouble() ? QString::number(value.toDouble(), 'g', DIGITS) : value.toString();
}

bool isListOfObjects(QJsonValue const &value)
{
    return value.isArray() && value.toArray().first().isObject();
}

} // namespace

void Facts::addUnlessEmpty(QString const &key, QJsonValue const &value)
{
    bool const isEmpty = value.isString()   ? value.toString().isEmpty()
                         : value.isArray()  ? value.toArray().isEmpty()
                         : value.isObject() ? value.toObject().isEmpty()
                                            : value.isNull() || value.isUndefined();
    if (!isEmpty)
        add(key, value);
}

QJsonObject Facts::toJson() const
{
    QJsonObject object;
    for (auto const &[key, value] : facts_)
        object[key] = value;
    return object;
}

QString Facts::toText() const
{
    QString text;
    for (auto const &[key, value] : facts_) {
        text += wordsOf(key) + QLatin1Char(':');
        if (isListOfObjects(value)) {
            text += QLatin1Char('\n');
            for (QJsonValue const &each : value.toArray())
                text += QStringLiteral("  ") + textOf(each) + QLatin1Char('\n');
        } else {
            text += QLatin1Char(' ') + textOf(value) + QLatin1Char('\n');
        }
    }
    return text;
}

} // namespace Zem::Zemfig
