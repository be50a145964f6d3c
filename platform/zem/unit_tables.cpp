// The quantities and their units. Names are stored in files: append, never rename or reorder.
#include "unit_tables.h"

#include <cmath>

namespace Zem {

namespace {

constexpr Unit::Units_t index(unsigned int position)
{
    return static_cast<Unit::Units_t>(position);
}

// One pound force in newton is 4.4482216152605 exactly, one square inch 645.16 square millimetres.
constexpr double POUND_FORCE_E13 = 44482216152605.0;

constexpr UnitForm LENGTH[] = {{"um", 1, 1000}, {"mm"}, {"cm", 10}, {"m", 1000}, {"in", 254, 10}, {"ft", 3048, 10}};
constexpr UnitForm FIGURE[] = {{"mm"}};
constexpr UnitForm ANGLE[] = {{"rad"}, {"deg", M_PI, 180}};
constexpr UnitForm STRAIN[] = {{"1"}, {"%", 1, 100}, {"permille", 1, 1000}, {"um/m", 1, 1000000}};
constexpr UnitForm FORCE[] = {{"N"}, {"kN", 1000}, {"lbf", POUND_FORCE_E13, 1e13}};
constexpr UnitForm STRESS[] = {{"MPa"},
                               {"Pa", 1, 1000000},
                               {"kPa", 1, 1000},
                               {"GPa", 1000},
                               {"psi", POUND_FORCE_E13, 645.16e13},
                               {"ksi", POUND_FORCE_E13, 645.16e10}};
constexpr UnitForm TEMPERATURE[] = {{"C"}, {"K", 1, 1, -273.15}, {"F", 5, 9, -32}, {"R", 5, 9, -491.67}};
constexpr UnitForm TIME[] = {{"s"}, {"us", 1, 1000000}, {"ms", 1, 1000}, {"min", 60}, {"h", 3600}};
constexpr UnitForm FREQUENCY[] = {{"Hz"}, {"kHz", 1000}, {"MHz", 1000000}};
constexpr UnitForm VELOCITY[] = {{"m/s"}, {"mm/s", 1, 1000}, {"km/h", 5, 18}};
constexpr UnitForm ACCELERATION[] = {{"m/s^2"}, {"g", 980665, 100000}};
constexpr UnitForm MASS[] = {{"kg"}, {"g", 1, 1000}, {"mg", 1, 1000000}, {"t", 1000}};
constexpr UnitForm VOLTAGE[] = {{"V"}, {"mV", 1, 1000}, {"kV", 1000}};

constexpr Unit LENGTH_UNIT("length", LENGTH, index(1));
constexpr Unit FIGURE_UNIT("figure", FIGURE, index(0));
constexpr Unit ANGLE_UNIT("angle", ANGLE, index(0));
constexpr Unit STRAIN_UNIT("strain", STRAIN, index(0));
constexpr Unit FORCE_UNIT("force", FORCE, index(0));
constexpr Unit STRESS_UNIT("stress", STRESS, index(0));
constexpr Unit TEMPERATURE_UNIT("temperature", TEMPERATURE, index(0));
constexpr Unit TIME_UNIT("time", TIME, index(0));
constexpr Unit FREQUENCY_UNIT("frequency", FREQUENCY, index(0));
constexpr Unit VELOCITY_UNIT("velocity", VELOCITY, index(0));
constexpr Unit ACCELERATION_UNIT("acceleration", ACCELERATION, index(0));
constexpr Unit MASS_UNIT("mass", MASS, index(0));
constexpr Unit VOLTAGE_UNIT("voltage", VOLTAGE, index(0));

// The order decides what a text that several quantities know means: "mm" is a length and "g" a mass.
constexpr Unit const *QUANTITIES[] = {&LENGTH_UNIT, &FIGURE_UNIT,       &ANGLE_UNIT,  &STRAIN_UNIT,    &FORCE_UNIT,
                                      &STRESS_UNIT, &TEMPERATURE_UNIT,  &TIME_UNIT,   &FREQUENCY_UNIT, &VELOCITY_UNIT,
                                      &MASS_UNIT,   &ACCELERATION_UNIT, &VOLTAGE_UNIT};

} // namespace

constinit Unit const *const uLength = &LENGTH_UNIT;
constinit Unit const *const uFigure = &FIGURE_UNIT;
constinit Unit const *const uAngle = &ANGLE_UNIT;
constinit Unit const *const uStrain = &STRAIN_UNIT;
constinit Unit const *const uForce = &FORCE_UNIT;
constinit Unit const *const uStress = &STRESS_UNIT;
constinit Unit const *const uTemperature = &TEMPERATURE_UNIT;
constinit Unit const *const uTime = &TIME_UNIT;
constinit Unit const *const uFrequency = &FREQUENCY_UNIT;
constinit Unit const *const uVelocity = &VELOCITY_UNIT;
constinit Unit const *const uAcceleration = &ACCELERATION_UNIT;
constinit Unit const *const uMass = &MASS_UNIT;
constinit Unit const *const uVoltage = &VOLTAGE_UNIT;

std::span<Unit const *const> allQuantities() noexcept
{
    return QUANTITIES;
}

} // namespace Zem
