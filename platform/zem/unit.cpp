#include <ZemError.h>
#include <ZemUnit.h>

#include "unit_tables.h"

#include <cmath>

namespace Zem {

namespace {

struct Alias
{
    QLatin1StringView spelling;
    QLatin1StringView name;
};

// Other spellings, both as plainSpelling() leaves them.
constexpr Alias ALIASES[] = {
    {QLatin1StringView("inch"), QLatin1StringView("in")},
    {QLatin1StringView("\""), QLatin1StringView("in")},
    {QLatin1StringView("feet"), QLatin1StringView("ft")},
    {QLatin1StringView("foot"), QLatin1StringView("ft")},
    {QLatin1StringView("degC"), QLatin1StringView("C")},
    {QLatin1StringView("degF"), QLatin1StringView("F")},
    {QLatin1StringView("degR"), QLatin1StringView("R")},
    {QLatin1StringView("N/mm2"), QLatin1StringView("MPa")},
    {QLatin1StringView("Mpa"), QLatin1StringView("MPa")},
    {QLatin1StringView("sec"), QLatin1StringView("s")},
    {QLatin1StringView("hr"), QLatin1StringView("h")},
    {QLatin1StringView("lb/in2"), QLatin1StringView("psi")},
    {QLatin1StringView("lbf/in2"), QLatin1StringView("psi")},
    {QLatin1StringView("ustrain"), QLatin1StringView("um/m")},
    {QLatin1StringView("microstrain"), QLatin1StringView("um/m")},
    {QLatin1StringView("mm/m"), QLatin1StringView("permille")},
};

/// Without blanks, and with one plain spelling for signs that keyboards and fonts treat differently.
QString plainSpelling(QString const &name)
{
    QString plain;
    plain.reserve(name.size());
    for (QChar c : name) {
        switch (c.unicode()) {
        case 0x00B5: // micro sign
        case 0x03BC: // Greek mu
            plain += QLatin1Char('u');
            break;
        case 0x00B0:
            plain += QLatin1String("deg");
            break;
        case 0x00B2:
            plain += QLatin1Char('2');
            break;
        case 0x2030:
            plain += QLatin1String("permille");
            break;
        default:
            if (!c.isSpace() && c != QLatin1Char('^')) {
                plain += c;
            }
        }
    }
    return plain;
}

QString nameOfSpelling(QString const &spelling)
{
    QString const plain = plainSpelling(spelling);
    for (Alias const &alias : ALIASES) {
        if (plain == alias.spelling) {
            return alias.name;
        }
    }
    return plain;
}

} // namespace

Unit const *Unit::getUnit(QString const &name)
{
    for (Unit const *unit : allQuantities()) {
        if (name == QLatin1String(unit->name_)) {
            return unit;
        }
    }
    Units_t unused{};
    for (Unit const *unit : allQuantities()) {
        if (unit->parseUnit(name, &unused)) {
            return unit;
        }
    }
    return nullptr;
}

Unit const *Unit::getDefault() noexcept
{
    return uLength;
}

QString Unit::getUnitName(Units_t unit) const
{
    return QString::fromLatin1(form(unit).name);
}

bool Unit::parseUnit(QString const &name, Units_t *unit) const
{
    QString const wanted = nameOfSpelling(name);
    for (unsigned int i = 0; i < getNumberOfUnits(); ++i) {
        if (plainSpelling(QString::fromLatin1(forms_[i].name)) == wanted) {
            *unit = static_cast<Units_t>(i);
            return true;
        }
    }
    return false;
}

double Unit::convert(double value, Units_t from, Units_t to) const
{
    UnitForm const &source = form(from);
    UnitForm const &target = form(to);
    if (from == to) {
        return value;
    }
    // One product and one quotient of whole numbers: a round value stays round.
    double const numerator = source.numerator * target.denominator;
    double const denominator = source.denominator * target.numerator;
    double const shifted = value + source.shift;
    double const product = shifted * numerator;
    double const scaled = std::isfinite(product) ? product / denominator : shifted * (numerator / denominator);
    return scaled - target.shift;
}

UnitForm const &Unit::form(Units_t unit) const
{
    if (unit >= getNumberOfUnits()) {
        throw ProgError("Zem::Unit::form", "unit", __LINE__, "the quantity has no such unit");
    }
    return forms_[unit];
}

} // namespace Zem
