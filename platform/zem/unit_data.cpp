#include <ZemError.h>
#include <ZemText.h>
#include <ZemUnit.h>

#include <istream>
#include <ostream>

namespace Zem {

namespace {

/// Finds what the two words of the text form name.
bool resolve(QString const &quantity, QString const &unitName, UnitData *data)
{
    if (quantity.isEmpty()) {
        *data = UnitData();
        return unitName.isEmpty();
    }
    Unit const *unit = Unit::getUnit(quantity);
    Unit::Units_t current{};
    if (!unit || !unit->parseUnit(unitName, &current)) {
        return false;
    }
    *data = UnitData(unit, current);
    return true;
}

} // namespace

UnitData::UnitData(Unit const *unit) noexcept : unit_(unit), currentUnit_(unit ? unit->getBaseUnit() : Unit::Units_t{})
{
}

UnitData::UnitData(Unit const *unit, Unit::Units_t currentUnit) : unit_(unit)
{
    setCurrentUnit(currentUnit);
}

void UnitData::setCurrentUnit(Unit::Units_t unit)
{
    if (!unit_ || unit >= unit_->getNumberOfUnits()) {
        throw ProgError("Zem::UnitData::setCurrentUnit", "unit_data", __LINE__, "the quantity has no such unit");
    }
    currentUnit_ = unit;
}

QString UnitData::getUnitName() const
{
    return unit_ ? unit_->getUnitName(currentUnit_) : QString();
}

std::ostream &operator<<(std::ostream &stream, UnitData const &data)
{
    QString const quantity = data.hasUnit() ? data.getUnit()->getName() : QString();
    return stream << tokenize(TString(quantity), true) << TString(" ") << tokenize(TString(data.getUnitName()), true);
}

std::istream &operator>>(std::istream &stream, UnitData &data)
{
    TString quantity;
    TString unitName;
    UnitData found;
    if (stream >> quantity >> unitName) {
        if (resolve(untokenize(quantity, true).toQString(), untokenize(unitName, true).toQString(), &found)) {
            data = found;
        } else {
            stream.setstate(std::ios_base::failbit);
        }
    }
    return stream;
}

} // namespace Zem
