// Variable as text.
#include "ZemFig2Variable.h"

#include <ZemTokenTools.h>
#include <ZemTranslate.h>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

// A format may come from a file: it must not make texts that fill the memory.
constexpr int MAX_WIDTH = 1000;
constexpr int MAX_PRECISION = 100;

/// The format of a token in parts: sign, unit in brackets, sign, width, point, precision, each optional.
struct NumberFormat
{
    bool showSign = false;
    QString unitText;
    int width = -1;     ///< -1 for none
    int precision = -1; ///< -1 for none; as it is, it makes six digits

    explicit NumberFormat(QString format);

private:
    void takeSign(QString *format);
    void takeUnit(QString *format);
    void takeNumbers(QString const &format);
};

/// A text that is no number deliberately counts as 0.
int numberOf(QString const &digits, int limit)
{
    return std::clamp(digits.toInt(), -limit, limit);
}

NumberFormat::NumberFormat(QString format)
{
    takeSign(&format);
    takeUnit(&format);
    takeSign(&format);
    takeNumbers(format);
}

/// A minus deliberately asks for a plus sign too.
void NumberFormat::takeSign(QString *format)
{
    if (!format->startsWith(QLatin1Char('+')) && !format->startsWith(QLatin1Char('-')))
        return;
    format->remove(0, 1);
    showSign = true;
}

void NumberFormat::takeUnit(QString *format)
{
    qsizetype const open = format->indexOf(QLatin1Char('['));
    qsizetype const close = format->indexOf(QLatin1Char(']'));
    if (open < 0 || close < open)
        return;
    unitText = format->mid(open + 1, close - open - 1);
    format->remove(open, close - open + 1);
}

void NumberFormat::takeNumbers(QString const &format)
{
    qsizetype const point = format.indexOf(QLatin1Char('.'));
    if (point >= 0) {
        width = numberOf(format.left(point), MAX_WIDTH);
        precision = numberOf(format.mid(point + 1), MAX_PRECISION);
    } else if (!format.isEmpty() && format.front().isNumber()) {
        width = numberOf(format, MAX_WIDTH);
    }
}

QString formatNumber(double value, NumberFormat const &format, int precision)
{
    constexpr QLatin1Char BLANK(' ');
    if (format.showSign && value > 0.0) {
        QString const text = QStringLiteral("+%1").arg(value, 0, 'f', precision, BLANK);
        return format.width == -1 ? text : text.rightJustified(format.width, BLANK);
    }
    return QStringLiteral("%1").arg(value, format.width == -1 ? 0 : format.width, 'f', precision, BLANK);
}

QString noValue()
{
    return translate("Figure_Variable", "???");
}

QString formatInteger(int value, NumberFormat const &format)
{
    if (!format.unitText.isEmpty())
        return translate("Figure_Variable", "illegal unit");
    return formatNumber(value, format, format.precision == -1 ? 0 : format.precision);
}

QString formatDouble(double value, UnitData const &unitData, NumberFormat const &format)
{
    if (value == TokenValue::NO_VALUE)
        return noValue();
    if (Unit const *const unit = unitData.getUnit()) {
        Unit::Units_t shownUnit = unitData.getCurrentUnit();
        if (!format.unitText.isEmpty() && !unit->parseUnit(format.unitText, &shownUnit))
            return translate("Figure_Variable_err", "unknown unit '%1'").arg(format.unitText);
        value = unit->fromBase(value, shownUnit);
    }
    return formatNumber(value, format, format.precision);
}

} // namespace

QString Variable::toString(QString format) const
{
    switch (type) {
    case VARIABLE_INTEGER:
        return formatInteger(intValue, NumberFormat(format));
    case VARIABLE_DOUBLE:
        return formatDouble(doubleValue, unitData, NumberFormat(format));
    case VARIABLE_STRING:
        return stringValue;
    default:
        return noValue();
    }
}

} // namespace Zem::Fig2
