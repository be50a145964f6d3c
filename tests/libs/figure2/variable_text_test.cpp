// The value of a registered token as text.
#include <ZemFig2Variable.h>

#include <ZemTokenTools.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

QString integerAs(int value, char const *format)
{
    Variable variable(VARIABLE_INTEGER);
    variable.intValue = value;
    return variable.toString(format);
}

QString doubleAs(double value, char const *format, UnitData const &unit = UnitData())
{
    Variable variable(VARIABLE_DOUBLE);
    variable.doubleValue = value;
    variable.unitData = unit;
    return variable.toString(format);
}

UnitData centimetres()
{
    Unit::Units_t unit{};
    uLength->parseUnit("cm", &unit);
    return UnitData(uLength, unit);
}

TEST(VariableText, ofIntegersHasNoDigitsBehindThePoint)
{
    EXPECT_EQ(integerAs(42, ""), "42");
    EXPECT_EQ(integerAs(42, "5"), "   42");
    EXPECT_EQ(integerAs(42, "1"), "42");
    EXPECT_EQ(integerAs(-42, "+5"), "  -42");
    EXPECT_EQ(integerAs(42, "+5"), "  +42");
    EXPECT_EQ(integerAs(2147483647, ""), "2147483647");
}

TEST(VariableText, ofIntegersTakesAPrecisionLikeOthers)
{
    EXPECT_EQ(integerAs(42, ".2"), "42.00");
    EXPECT_EQ(integerAs(42, "7.1"), "   42.0");
}

TEST(VariableText, ofIntegersKnowsNoUnit)
{
    EXPECT_EQ(integerAs(42, "[mm]"), "illegal unit");
    EXPECT_EQ(integerAs(42, "+[mm]5.1"), "illegal unit");
    EXPECT_EQ(integerAs(42, "[]"), "42");
}

TEST(VariableText, ofDoublesHasSixDigitsWithoutAPrecision)
{
    EXPECT_EQ(doubleAs(2.5, ""), "2.500000");
    EXPECT_EQ(doubleAs(2.5, "10"), "  2.500000");
}

TEST(VariableText, showsASignOfPositiveNumbersOnDemand)
{
    EXPECT_EQ(doubleAs(2.5, "+5.1"), " +2.5");
    EXPECT_EQ(doubleAs(-2.5, "+5.1"), " -2.5");
    EXPECT_EQ(doubleAs(0, "+5.1"), "  0.0");
    EXPECT_EQ(doubleAs(2.5, "+.1"), "+2.5");
    EXPECT_EQ(doubleAs(2.5, "+3.1"), "+2.5");
    EXPECT_EQ(doubleAs(2.5, "+"), "+2.500000");
}

TEST(VariableText, takesAMinusForAPlus)
{
    EXPECT_EQ(doubleAs(2.5, "-5.1"), " +2.5");
    EXPECT_EQ(doubleAs(-2.5, "-5.1"), " -2.5");
    EXPECT_EQ(doubleAs(2.5, "-+5.1"), " +2.5");
    // A third one belongs to the number: a width below zero fills on the right.
    EXPECT_EQ(doubleAs(-2.5, "++-6.1"), "-2.5  ");
}

TEST(VariableText, isInTheUnitOfTheFormat)
{
    EXPECT_EQ(doubleAs(25, "[cm].1", UnitData(uLength)), "2.5");
    EXPECT_EQ(doubleAs(25, "[cm]", UnitData(uLength)), "2.500000");
    EXPECT_EQ(doubleAs(25, "+[cm]6.1", UnitData(uLength)), "  +2.5");
    EXPECT_EQ(doubleAs(25, "[cm]+6.1", UnitData(uLength)), "  +2.5");
    EXPECT_EQ(doubleAs(25, "6[cm].1", UnitData(uLength)), "   2.5");
}

TEST(VariableText, isInTheCurrentUnitWithoutOneInTheFormat)
{
    EXPECT_EQ(doubleAs(25, ".1", centimetres()), "2.5");
    EXPECT_EQ(doubleAs(25, "[].1", centimetres()), "2.5");
    EXPECT_EQ(doubleAs(25, "[mm].1", centimetres()), "25.0");
}

TEST(VariableText, tellsOfAnUnknownUnitOnlyWhereThereIsAQuantity)
{
    EXPECT_EQ(doubleAs(25, "[kN].1", UnitData(uLength)), "unknown unit 'kN'");
    EXPECT_EQ(doubleAs(25, "[kN].1"), "25.0");
    EXPECT_EQ(doubleAs(25, "[nonsense].1"), "25.0");
}

TEST(VariableText, takesAFailedNumberForZero)
{
    EXPECT_EQ(doubleAs(2.7, "."), "3");
    EXPECT_EQ(doubleAs(2.7, "x.y"), "3");
    EXPECT_EQ(doubleAs(2.7, "5x"), "2.700000");
    EXPECT_EQ(doubleAs(2.7, "x5"), "2.700000");
    EXPECT_EQ(doubleAs(2.7, "5.1.2"), "    3");
}

TEST(VariableText, needsBracketsInTheirOrder)
{
    EXPECT_EQ(doubleAs(2.5, "]mm[", UnitData(uLength)), "2.500000");
    EXPECT_EQ(doubleAs(2.5, "]mm[9.1", UnitData(uLength)), "2.5");
    EXPECT_EQ(doubleAs(2.5, "[mm", UnitData(uLength)), "2.500000");
    EXPECT_EQ(doubleAs(2.5, "mm]", UnitData(uLength)), "2.500000");
}

TEST(VariableText, ofNoValueIsThreeQuestionMarks)
{
    EXPECT_EQ(doubleAs(TokenValue::NO_VALUE, ".1", UnitData(uLength)), "???");
    for (int type = VARIABLE_IMAGE; type <= VARIABLE_SEPARATOR; ++type)
        EXPECT_EQ(Variable(static_cast<Variable_t>(type)).toString(".1"), "???");
}

TEST(VariableText, ofStringsIgnoresTheFormat)
{
    Variable variable(VARIABLE_STRING);
    variable.stringValue = "as it is";
    EXPECT_EQ(variable.toString("+[mm]20.3"), "as it is");
}

TEST(VariableText, staysReadableWhateverTheFormatAsks)
{
    EXPECT_EQ(doubleAs(2.5, "2000000000.1").size(), 1000);
    EXPECT_EQ(doubleAs(2.5, "+2000000000.1").size(), 1000);
    EXPECT_EQ(doubleAs(2.5, ".2000000000").size(), 102);
}

} // namespace
} // namespace Zem::Fig2
