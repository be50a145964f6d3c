#include <ZemParse.h>
#include <ZemTranslate.h>
#include <ZemUnit.h>

namespace Zem {

namespace {

QString makeKey(QString const &prefix, char const *name)
{
    QString const key = QString::fromLatin1(name);
    return prefix.isEmpty() ? key : prefix + u'_' + key;
}

QString quantityKey(QString const &prefix)
{
    return makeKey(prefix, "quantity");
}

QString unitKey(QString const &prefix)
{
    return makeKey(prefix, "unit");
}

[[noreturn]] void failUnknown(char const *what, QString const &key, QString const &value)
{
    throw ParamError(
        translate("Parse_err", "parameter '%1', value '%2': %3").arg(key, value, translate("Parse_err", what)), -1);
}

UnitData readQuantity(QString &parameters, QString const &key)
{
    QString const name = Parse::getString(parameters, key);
    Unit const *const unit = Unit::getUnit(name);
    if (!name.isEmpty() && (!unit || unit->getName() != name)) {
        failUnknown("is no known quantity", key, name);
    }
    return UnitData(name.isEmpty() ? nullptr : unit);
}

UnitData withUnit(UnitData const &data, QString &parameters, QString const &key)
{
    QString const name = Parse::getString(parameters, key);
    if (!data.hasUnit() && name.isEmpty()) {
        return data;
    }
    Unit::Units_t choice{};
    if (!data.hasUnit() || !data.getUnit()->parseUnit(name, &choice)) {
        failUnknown("is no unit of the quantity", key, name);
    }
    return UnitData(data.getUnit(), choice);
}

} // namespace

QString UnitData::getParameterString(QString const &prefix) const
{
    QString const quantity = unit_ ? unit_->getName() : QString();
    return Parse::createString(quantityKey(prefix), quantity) + Parse::createString(unitKey(prefix), getUnitName());
}

void UnitData::createFromParameterString(QString &parameters, QString const &prefix)
{
    UnitData data = *this;
    QString rest = parameters;
    if (Parse::parameterExists(rest, quantityKey(prefix))) {
        data = readQuantity(rest, quantityKey(prefix));
    }
    if (Parse::parameterExists(rest, unitKey(prefix))) {
        data = withUnit(data, rest, unitKey(prefix));
    }
    *this = data;
    parameters = rest;
}

} // namespace Zem
