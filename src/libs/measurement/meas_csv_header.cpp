#include "meas_csv_header.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>

namespace Zem::Measurement {

namespace {

constexpr qsizetype MAX_UNIT_LENGTH = 16;

/// Spellings of data loggers for units that have a name of their own.
QString usualSpelling(QString const &text)
{
    static std::array<std::pair<char const *, char const *>, 8> const WORDS = {{{"Newtons", "N"},
                                                                                {"Newton", "N"},
                                                                                {"Volts", "V"},
                                                                                {"Volt", "V"},
                                                                                {"VDC", "V"},
                                                                                {"seconds", "s"},
                                                                                {"inches", "in"},
                                                                                {"Kelvin", "K"}}};
    auto const found = std::find_if(WORDS.begin(), WORDS.end(), [&text](auto const &word) {
        return text.compare(QLatin1String(word.first), Qt::CaseInsensitive) == 0;
    });
    return found == WORDS.end() ? text : QString::fromLatin1(found->second);
}

/// Units of quantities that are not converted, as parts of compound units too.
bool isUnitWord(QString word)
{
    static QRegularExpression const exponent(QStringLiteral("[\\^]?[-+]?[0-9²³]$"));
    static QStringList const KNOWN = {
        QStringLiteral("l"),    QStringLiteral("L"),   QStringLiteral("ml"),  QStringLiteral("mL"),
        QStringLiteral("J"),    QStringLiteral("kJ"),  QStringLiteral("W"),   QStringLiteral("kW"),
        QStringLiteral("Wh"),   QStringLiteral("A"),   QStringLiteral("mA"),  QStringLiteral("bar"),
        QStringLiteral("mbar"), QStringLiteral("mol"), QStringLiteral("dB"),  QStringLiteral("Nm"),
        QStringLiteral("px"),   QStringLiteral("rpm"), QStringLiteral("ppm"), QStringLiteral("Ohm")};
    word = word.trimmed().remove(exponent);
    return word == QLatin1String("1") || KNOWN.contains(word) || findUnit(word).hasUnit();
}

/// A known unit, or one made of known ones: "mm/min", "kg/m^3".
bool isUnit(QString const &text)
{
    static QRegularExpression const operators(QStringLiteral("[/*·]"));
    if (findUnit(text).hasUnit()) {
        return true;
    }
    QStringList const words = text.split(operators);
    return !text.isEmpty() && text != QLatin1String("1") && std::all_of(words.begin(), words.end(), isUnitWord);
}

/// The text in the last pair of `open` and `close`, which must end the header; null when there is none.
QString closingBracket(QString const &header, QChar open, QChar close)
{
    qsizetype const begin = header.lastIndexOf(open);
    bool const found = header.endsWith(close) && begin > 0;
    return found ? header.sliced(begin + 1, header.size() - begin - 2).trimmed() : QString();
}

QString withoutBracket(QString const &header, QChar open)
{
    return header.left(header.lastIndexOf(open)).trimmed();
}

ColumnTitle splitAtComma(QString const &header)
{
    QString const note = closingBracket(header, QLatin1Char('('), QLatin1Char(')'));
    QString const plain = note.isNull() ? header : withoutBracket(header, QLatin1Char('('));
    qsizetype const comma = plain.lastIndexOf(QLatin1Char(','));
    QString const unit = plain.mid(comma + 1).trimmed();
    // A plain word behind a comma is more likely part of the name: "Position, left".
    static QRegularExpression const sign(QStringLiteral("[/^°%‰²³µΩ]"));
    if (comma > 0 && (isUnit(unit) || (looksLikeUnit(unit) && unit.contains(sign)))) {
        return {plain.left(comma).trimmed(), unit};
    }
    return {header, QString()};
}

} // namespace

UnitData findUnit(QString const &text)
{
    static std::array<Unit const *, 12> const QUANTITIES = {uLength,   uAngle,       uStrain,       uForce,
                                                            uStress,   uTemperature, uTime,         uFrequency,
                                                            uVelocity, uMass,        uAcceleration, uVoltage};
    QString const name = usualSpelling(text.trimmed());
    if (name.isEmpty() || name == QLatin1String("1")) {
        return {};
    }
    for (Unit const *quantity : QUANTITIES) {
        Unit::Units_t unit{};
        if (quantity->parseUnit(name, &unit)) {
            return {quantity, unit};
        }
    }
    return {};
}

UnitData findColumnUnit(QString const &columnName, QString const &text)
{
    static QRegularExpression const acceleration(QStringLiteral("^a(_?[xyz])?$|acc"),
                                                 QRegularExpression::CaseInsensitiveOption);
    Unit::Units_t unit{};
    if (acceleration.match(columnName).hasMatch() && uAcceleration->parseUnit(text, &unit)) {
        return {uAcceleration, unit};
    }
    return findUnit(text);
}

bool looksLikeUnit(QString const &text)
{
    static QRegularExpression const shape(
        QStringLiteral("^[\\p{L}°µ%‰Ω]+[0-9²³^]*([-+]?[0-9])?([/*·][\\p{L}°µ%]+[0-9²³^]*)*$"));
    return text.size() <= MAX_UNIT_LENGTH && shape.match(text).hasMatch();
}

QString plainUnitText(QString const &text)
{
    QString unit = text.trimmed();
    bool const bracketed = (unit.startsWith(QLatin1Char('[')) && unit.endsWith(QLatin1Char(']'))) ||
                           (unit.startsWith(QLatin1Char('(')) && unit.endsWith(QLatin1Char(')')));
    if (bracketed && unit.size() > 1) {
        unit = unit.sliced(1, unit.size() - 2).trimmed();
    }
    bool const none = unit == QLatin1String("-") || unit == QLatin1String("1");
    return none ? QString() : unit;
}

ColumnTitle parseColumnTitle(QString const &header)
{
    QString const text = header.simplified();
    QString const square = closingBracket(text, QLatin1Char('['), QLatin1Char(']'));
    if (!square.isNull()) {
        return {withoutBracket(text, QLatin1Char('[')), plainUnitText(square)};
    }
    QString const round = closingBracket(text, QLatin1Char('('), QLatin1Char(')'));
    if (!round.isNull() && isUnit(round)) {
        return {withoutBracket(text, QLatin1Char('(')), round};
    }
    return splitAtComma(text);
}

ColumnTitle parseVariableTitle(QString const &header)
{
    QString const text = header.simplified();
    qsizetype const blank = text.lastIndexOf(QLatin1Char(' '));
    QString const unit = text.mid(blank + 1);
    if (blank > 0 && isUnit(unit)) {
        return {text.left(blank), unit};
    }
    return parseColumnTitle(text);
}

} // namespace Zem::Measurement
