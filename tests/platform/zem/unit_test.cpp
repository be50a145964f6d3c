#include <ZemError.h>
#include <ZemUnit.h>

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <map>

using namespace Zem;

namespace {

Unit::Units_t unitOf(Unit const *unit, char const *name)
{
    Unit::Units_t found{};
    EXPECT_TRUE(unit->parseUnit(QString::fromUtf8(name), &found)) << name;
    return found;
}

QStringList unitNames(Unit const *unit)
{
    QStringList names;
    for (unsigned int i = 0; i < unit->getNumberOfUnits(); ++i) {
        names << unit->getUnitName(static_cast<Unit::Units_t>(i));
    }
    return names;
}

double inBase(Unit const *unit, double value, char const *name)
{
    return unit->toBase(value, unitOf(unit, name));
}

// Read while other objects of the program are still being made.
bool const lengthIsKnownEarly = Unit::getUnit("mm") == uLength && uLength->getName() == "length";

} // namespace

TEST(Unit, hasTheseQuantitiesAndUnits)
{
    EXPECT_EQ(unitNames(uLength), QStringList({"um", "mm", "cm", "m", "in", "ft"}));
    EXPECT_EQ(unitNames(uFigure), QStringList({"mm"}));
    EXPECT_EQ(unitNames(uAngle), QStringList({"rad", "deg"}));
    EXPECT_EQ(unitNames(uStrain), QStringList({"1", "%", "permille", "um/m"}));
    EXPECT_EQ(unitNames(uForce), QStringList({"N", "kN", "lbf"}));
    EXPECT_EQ(unitNames(uStress), QStringList({"MPa", "Pa", "kPa", "GPa", "psi", "ksi"}));
    EXPECT_EQ(unitNames(uTemperature), QStringList({"C", "K", "F", "R"}));
    EXPECT_EQ(unitNames(uTime), QStringList({"s", "us", "ms", "min", "h"}));
    EXPECT_EQ(unitNames(uFrequency), QStringList({"Hz", "kHz", "MHz"}));
    EXPECT_EQ(unitNames(uVelocity), QStringList({"m/s", "mm/s", "km/h"}));
    EXPECT_EQ(unitNames(uAcceleration), QStringList({"m/s^2", "g"}));
    EXPECT_EQ(unitNames(uMass), QStringList({"kg", "g", "mg", "t"}));
    EXPECT_EQ(unitNames(uVoltage), QStringList({"V", "mV", "kV"}));
}

TEST(Unit, hasABaseUnitPerQuantity)
{
    std::map<Unit const *, QString> const bases = {
        {uLength, "mm"},          {uFigure, "mm"},     {uAngle, "rad"}, {uStrain, "1"},     {uForce, "N"},
        {uStress, "MPa"},         {uTemperature, "C"}, {uTime, "s"},    {uFrequency, "Hz"}, {uVelocity, "m/s"},
        {uAcceleration, "m/s^2"}, {uMass, "kg"},       {uVoltage, "V"}};
    for (auto const &[unit, base] : bases) {
        EXPECT_EQ(unit->getUnitName(unit->getBaseUnit()), base);
    }
}

TEST(Unit, isFoundByTheNameOfItsQuantity)
{
    for (Unit const *unit : {uLength, uFigure, uAngle, uStrain, uForce, uStress, uTemperature, uTime, uFrequency,
                             uVelocity, uAcceleration, uMass, uVoltage}) {
        EXPECT_EQ(Unit::getUnit(unit->getName()), unit);
    }
}

TEST(Unit, isFoundByTheNameOfOneOfItsUnits)
{
    EXPECT_EQ(Unit::getUnit("kN"), uForce);
    EXPECT_EQ(Unit::getUnit("mm"), uLength);
    EXPECT_EQ(Unit::getUnit("g"), uMass);
    EXPECT_EQ(Unit::getUnit("m/s^2"), uAcceleration);
    EXPECT_EQ(Unit::getUnit(QString::fromUtf8("N/mm²")), uStress);
}

TEST(Unit, isNullForAnUnknownName)
{
    for (char const *name : {"", " ", "kn", "Length", "furlong", "m m m"}) {
        EXPECT_EQ(Unit::getUnit(name), nullptr) << name;
    }
}

TEST(Unit, isALengthForDataThatNameNone)
{
    EXPECT_EQ(Unit::getDefault(), uLength);
}

TEST(Unit, isKnownBeforeMainBegins)
{
    EXPECT_TRUE(lengthIsKnownEarly);
}

TEST(UnitSpelling, knowsTheUsualOnes)
{
    struct
    {
        Unit const *unit;
        char const *spelling;
        char const *name;
    } const spellings[] = {
        {uLength, "µm", "um"},
        {uLength, "μm", "um"},
        {uLength, "inch", "in"},
        {uLength, "feet", "ft"},
        {uLength, " mm ", "mm"},
        {uAngle, "°", "deg"},
        {uStrain, "‰", "permille"},
        {uStrain, "µm/m", "um/m"},
        {uStress, "N/mm²", "MPa"},
        {uStress, "N/mm2", "MPa"},
        {uStress, "N/mm^2", "MPa"},
        {uStress, "Mpa", "MPa"},
        {uTemperature, "°C", "C"},
        {uTemperature, "degC", "C"},
        {uTemperature, "deg C", "C"},
        {uTemperature, "°F", "F"},
        {uTime, "sec", "s"},
        {uTime, "µs", "us"},
        {uAcceleration, "m/s²", "m/s^2"},
        {uAcceleration, "m/s2", "m/s^2"},
    };
    for (auto const &row : spellings) {
        EXPECT_EQ(row.unit->getUnitName(unitOf(row.unit, row.spelling)), row.name) << row.spelling;
    }
}

TEST(UnitSpelling, leavesTheResultAloneWhenUnknown)
{
    auto unit = static_cast<Unit::Units_t>(2);
    EXPECT_FALSE(uLength->parseUnit("kN", &unit));
    EXPECT_FALSE(uLength->parseUnit("MM", &unit));
    EXPECT_FALSE(uLength->parseUnit("", &unit));
    EXPECT_EQ(unit, 2u);
}

TEST(UnitConversion, isExactForRoundNumbers)
{
    EXPECT_EQ(inBase(uLength, 1, "um"), 0.001);
    EXPECT_EQ(inBase(uLength, 1, "cm"), 10);
    EXPECT_EQ(inBase(uLength, 1, "m"), 1000);
    EXPECT_EQ(inBase(uLength, 1, "in"), 25.4);
    EXPECT_EQ(inBase(uLength, 1, "ft"), 304.8);
    EXPECT_EQ(inBase(uAngle, 180, "deg"), M_PI);
    EXPECT_EQ(inBase(uStrain, 5, "%"), 0.05);
    EXPECT_EQ(inBase(uStrain, 5, "permille"), 0.005);
    EXPECT_EQ(inBase(uStrain, 5, "um/m"), 5e-6);
    EXPECT_EQ(inBase(uForce, 2.5, "kN"), 2500);
    EXPECT_EQ(inBase(uForce, 1, "lbf"), 4.4482216152605);
    EXPECT_EQ(inBase(uStress, 1, "Pa"), 1e-6);
    EXPECT_EQ(inBase(uStress, 1, "kPa"), 1e-3);
    EXPECT_EQ(inBase(uStress, 1, "GPa"), 1000);
    EXPECT_EQ(inBase(uTime, 1, "us"), 1e-6);
    EXPECT_EQ(inBase(uTime, 1, "ms"), 1e-3);
    EXPECT_EQ(inBase(uTime, 2, "min"), 120);
    EXPECT_EQ(inBase(uTime, 1, "h"), 3600);
    EXPECT_EQ(inBase(uFrequency, 1, "kHz"), 1000);
    EXPECT_EQ(inBase(uFrequency, 1, "MHz"), 1e6);
    EXPECT_EQ(inBase(uVelocity, 1, "mm/s"), 1e-3);
    EXPECT_EQ(inBase(uVelocity, 36, "km/h"), 10);
    EXPECT_EQ(inBase(uAcceleration, 1, "g"), 9.80665);
    EXPECT_EQ(inBase(uMass, 1, "g"), 1e-3);
    EXPECT_EQ(inBase(uMass, 1, "mg"), 1e-6);
    EXPECT_EQ(inBase(uMass, 1, "t"), 1000);
    EXPECT_EQ(inBase(uVoltage, 1, "mV"), 1e-3);
    EXPECT_EQ(inBase(uVoltage, 1, "kV"), 1000);
}

TEST(UnitConversion, takesPoundsPerSquareInchFromTheirDefinition)
{
    EXPECT_DOUBLE_EQ(inBase(uStress, 1, "psi"), 4.4482216152605 / (25.4 * 25.4));
    EXPECT_DOUBLE_EQ(inBase(uStress, 1, "ksi"), 1000 * 4.4482216152605 / (25.4 * 25.4));
}

TEST(UnitConversion, knowsTheZerosOfTheTemperatures)
{
    EXPECT_EQ(inBase(uTemperature, 273.15, "K"), 0);
    EXPECT_EQ(inBase(uTemperature, 32, "F"), 0);
    EXPECT_EQ(inBase(uTemperature, 212, "F"), 100);
    EXPECT_EQ(inBase(uTemperature, 491.67, "R"), 0);
    EXPECT_EQ(uTemperature->fromBase(100, unitOf(uTemperature, "F")), 212);
    EXPECT_EQ(uTemperature->fromBase(0, unitOf(uTemperature, "K")), 273.15);
    EXPECT_DOUBLE_EQ(uTemperature->convert(300, unitOf(uTemperature, "K"), unitOf(uTemperature, "R")), 540);
}

TEST(UnitConversion, goesDirectlyBetweenTwoUnits)
{
    EXPECT_EQ(uLength->convert(7, unitOf(uLength, "um"), unitOf(uLength, "m")), 7e-6);
    EXPECT_EQ(uLength->convert(1, unitOf(uLength, "ft"), unitOf(uLength, "in")), 12);
    EXPECT_EQ(uStress->convert(3, unitOf(uStress, "GPa"), unitOf(uStress, "Pa")), 3e9);
}

TEST(UnitConversion, toTheSameUnitKeepsEachBit)
{
    for (double value : {0.1, -0.0, 1e308, 5e-324, std::numeric_limits<double>::infinity()}) {
        double const same = uStress->convert(value, unitOf(uStress, "psi"), unitOf(uStress, "psi"));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(same), std::bit_cast<std::uint64_t>(value));
    }
}

TEST(UnitConversion, doesNotOverflowOnTheWay)
{
    EXPECT_DOUBLE_EQ(inBase(uStress, 1e300, "psi"), 1e300 * inBase(uStress, 1, "psi"));
}

TEST(UnitConversion, refusesAUnitOfAnotherQuantity)
{
    auto const none = static_cast<Unit::Units_t>(6);
    EXPECT_THROW(uLength->convert(1, none, uLength->getBaseUnit()), ProgError);
    EXPECT_THROW(uLength->fromBase(1, none), ProgError);
    EXPECT_THROW(uLength->getUnitName(none), ProgError);
}
