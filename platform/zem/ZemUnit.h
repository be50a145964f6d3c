// ZemUnit.h: physical quantities, their units, and the choice of one for display.
#pragma once

#include <QtCore/QString>

#include <iosfwd>
#include <span>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

/// How one unit of a quantity relates to the base unit: base = (value + shift) * numerator / denominator. The numbers
/// are kept apart so that each factor is exact.
struct UnitForm
{
    char const *name;
    double numerator = 1.0;
    double denominator = 1.0;
    double shift = 0.0;
};

/// A quantity, such as a length, with its units. Values are kept in the base unit everywhere; another unit is for
/// display. The quantities are fixed, immutable and live as long as the program: compare them by address, and read them
/// from any thread.
class Unit
{
public:
    /// The index of a unit within its quantity; valid below getNumberOfUnits().
    enum Units_t : unsigned int {};

    constexpr Unit(char const *name, std::span<UnitForm const> forms, Units_t base) noexcept
        : name_(name), forms_(forms), base_(base)
    {
    }
    Unit(Unit const &) = delete;
    Unit &operator=(Unit const &) = delete;

    /// The quantity of this name ("length"), or else the one that has a unit of this name ("kN"), case sensitive. Null
    /// when there is none. "mm" is a length and "g" a mass.
    static Unit const *getUnit(QString const &name);
    /// The quantity of data that names none: a length.
    static Unit const *getDefault() noexcept;

    QString getName() const { return QString::fromLatin1(name_); }
    unsigned int getNumberOfUnits() const noexcept { return static_cast<unsigned int>(forms_.size()); }
    Units_t getBaseUnit() const noexcept { return base_; }
    /// Throws ProgError when `unit` is none of this quantity, as do the conversions.
    QString getUnitName(Units_t unit) const;

    /// Finds a unit of this quantity by its name or a usual other spelling ("um" or "µm", "N/mm²", "°C"), case
    /// sensitive; blanks do not count. False, and `unit` is left alone, when there is none.
    bool parseUnit(QString const &name, Units_t *unit) const;

    /// The value itself, bit for bit, when both units are the same.
    double convert(double value, Units_t from, Units_t to) const;
    double toBase(double value, Units_t from) const { return convert(value, from, base_); }
    double fromBase(double value, Units_t to) const { return convert(value, base_, to); }

private:
    UnitForm const &form(Units_t unit) const;

    char const *name_;
    std::span<UnitForm const> forms_;
    Units_t base_;
};

extern Unit const *const uLength;       ///< mm; um, cm, m, in, ft
extern Unit const *const uFigure;       ///< mm on the page
extern Unit const *const uAngle;        ///< rad; deg
extern Unit const *const uStrain;       ///< 1; %, permille, um/m
extern Unit const *const uForce;        ///< N; kN, lbf
extern Unit const *const uStress;       ///< MPa; Pa, kPa, GPa, psi, ksi
extern Unit const *const uTemperature;  ///< C; K, F, R
extern Unit const *const uTime;         ///< s; us, ms, min, h
extern Unit const *const uFrequency;    ///< Hz; kHz, MHz
extern Unit const *const uVelocity;     ///< m/s; mm/s, km/h
extern Unit const *const uAcceleration; ///< m/s^2; g
extern Unit const *const uMass;         ///< kg; g, mg, t
extern Unit const *const uVoltage;      ///< V; mV, kV

/// A quantity, or none, with the unit chosen for its display. A number kept beside it is always in the base unit.
/// Refers to the quantity without owning it. A plain value; several threads may read it.
class UnitData
{
public:
    /// No quantity.
    UnitData() noexcept = default;
    /// The quantity in its base unit. Null means none.
    explicit UnitData(Unit const *unit) noexcept;
    /// Throws ProgError when the unit is none of the quantity.
    UnitData(Unit const *unit, Unit::Units_t currentUnit);

    bool hasUnit() const noexcept { return unit_ != nullptr; }
    /// Null when there is none.
    Unit const *getUnit() const noexcept { return unit_; }
    /// 0 when there is no quantity.
    Unit::Units_t getCurrentUnit() const noexcept { return currentUnit_; }
    /// Throws ProgError when there is no quantity or `unit` is none of it.
    void setCurrentUnit(Unit::Units_t unit);
    /// The name of the current unit, empty when there is no quantity.
    QString getUnitName() const;

    bool operator==(UnitData const &) const = default;

    // The record knows its forms, the libraries above know the formats: this pair is part of libZemIO ...
    /// One block. Throws IO::StreamException.
    void save(IO::OutStream *stream) const;
    /// Throws IO::StreamException and leaves this alone when the block names an unknown quantity or unit.
    void load(IO::InStream *stream);

    // ... and this pair is part of libZemParse.
    /// The entries of quantity and unit with keys that begin with `prefix`.
    QString getParameterString(QString const &prefix) const;
    /// Consumes those entries; without them this is left alone. Throws ParamError for an unknown quantity or unit.
    void createFromParameterString(QString &parameters, QString const &prefix);

private:
    Unit const *unit_ = nullptr;
    Unit::Units_t currentUnit_{};
};

/// The words "quantity unit", two empty words (see tokenize()) when there is no quantity; no blank at either end.
std::ostream &operator<<(std::ostream &stream, UnitData const &data);
/// Sets failbit and leaves the data alone when the quantity or the unit is unknown.
std::istream &operator>>(std::istream &stream, UnitData &data);

} // namespace Zem
