#include <ZemValue.h>

#include "value_format.h"

#include <ZemTokenTools.h>
#include <ZemTranslate.h>

#include <QtCore/QLocale>

#include <cmath>

namespace Zem {

namespace {

constexpr int SIX_DIGITS = -1; // the default of QString's number formatting

/// A text for the page and what it is.
struct Shown
{
    QString text;
    ConversionErrorCode_t code = CONVERSION_OK;
};

Shown nothing()
{
    return {translate("Token_Value", "???"), CONVERSION_NO_VALUE};
}

Shown formatted(std::monostate, ValueFormat const &)
{
    return nothing();
}

Shown formatted(int number, ValueFormat const &format)
{
    if (!format.getUnitText().isEmpty()) {
        return {translate("Token_Value", "illegal unit"), CONVERSION_ILLEGAL_UNIT};
    }
    return {format.toText(number, 0)};
}

Shown formatted(double number, UnitData const &unitData, ValueFormat const &format)
{
    if (std::isnan(number) || number == TokenValue::NO_VALUE) {
        return nothing();
    }
    if (unitData.hasUnit()) {
        Unit::Units_t unit = unitData.getCurrentUnit();
        QString const &name = format.getUnitText();
        if (!name.isEmpty() && !unitData.getUnit()->parseUnit(name, &unit)) {
            return {translate("Token_Value_err", "unknown unit '%1'").arg(name), CONVERSION_UNKNOWN_UNIT};
        }
        number = unitData.getUnit()->fromBase(number, unit);
    }
    return {format.toText(number, SIX_DIGITS)};
}

Shown formatted(std::initializer_list<double> components, UnitData const &unitData, ValueFormat const &format)
{
    QStringList texts;
    for (double component : components) {
        Shown const shown = formatted(component, unitData, format);
        if (shown.code != CONVERSION_OK) {
            return shown;
        }
        texts += shown.text;
    }
    return {QStringLiteral("(%1)").arg(texts.join(QStringLiteral(", ")))};
}

Shown formatted(QString const &text, ValueFormat const &)
{
    return {text};
}

Shown formatted(bool truth, ValueFormat const &)
{
    return {truth ? translate("Token_Value", "true") : translate("Token_Value", "false")};
}

Shown formatted(QDateTime const &time, ValueFormat const &format)
{
    if (!time.isValid()) {
        return nothing();
    }
    QString const &pattern = format.getUnitText();
    return {pattern.isEmpty() ? time.toString(Qt::ISODate) : QLocale::c().toString(time, pattern)};
}

Shown formatted(FormattedText const &text, ValueFormat const &)
{
    QString richText;
    return text.getText(FormattedText::FORMAT_RICH_TEXT, &richText) ? Shown{richText} : nothing();
}

Shown formatted(BaVec2d<double> const &vector, UnitData const &unitData, ValueFormat const &format)
{
    return formatted({vector.x, vector.y}, unitData, format);
}

Shown formatted(BaVec3d<double> const &vector, UnitData const &unitData, ValueFormat const &format)
{
    return formatted({vector.x, vector.y, vector.z}, unitData, format);
}

} // namespace

QString Value::toString(QString const &format, std::pair<ConversionErrorCode_t, bool> *result) const
{
    ValueFormat const valueFormat(format);
    Shown const shown = std::visit(
        [&](auto const &data) {
            if constexpr (requires { data.unit; }) {
                return formatted(data.number, data.unit, valueFormat);
            } else {
                return formatted(data, valueFormat);
            }
        },
        data_);
    if (result) {
        *result = {shown.code, shown.code == CONVERSION_OK};
    }
    return shown.text;
}

} // namespace Zem
