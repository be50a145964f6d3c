#include <ZemTokenTools.h>
#include <ZemValue.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Zem;

namespace {

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

std::string shown(Value const &value, char const *format)
{
    return value.toString(q(format), nullptr).toStdString();
}

std::string shown(double value, char const *format)
{
    return shown(Value(value, nullptr), format);
}

UnitData unitData(Unit const *unit, char const *name)
{
    Unit::Units_t choice{};
    EXPECT_TRUE(unit->parseUnit(q(name), &choice));
    return UnitData(unit, choice);
}

} // namespace

TEST(ValueText, hasSixDigitsWithoutAPrecision)
{
    EXPECT_EQ(shown(2.5, ""), "2.500000");
    EXPECT_EQ(shown(2.5, "12"), "    2.500000");
}

TEST(ValueText, hasNoDecimalsForAnIntegerUnlessAskedFor)
{
    EXPECT_EQ(shown(Value(42), ""), "42");
    EXPECT_EQ(shown(Value(42), "5"), "   42");
    EXPECT_EQ(shown(Value(42), "0.2"), "42.00");
    EXPECT_EQ(shown(Value(42), "+"), "+42");
    EXPECT_EQ(shown(Value(0), "+"), "0");
}

TEST(ValueText, takesWidthAndPrecision)
{
    EXPECT_EQ(shown(2.5, "5.1"), "  2.5");
    EXPECT_EQ(shown(2.5, "."), "3"); // width 0 and precision 0; half goes up here
    EXPECT_EQ(shown(1234.567, "3.1"), "1234.6");
    EXPECT_EQ(shown(2.5, "x.y"), "3");
}

TEST(ValueText, putsASignOnlyBeforeNumbersAboveZero)
{
    EXPECT_EQ(shown(2.5, "+5.1"), " +2.5");
    EXPECT_EQ(shown(-2.5, "+5.1"), " -2.5");
    EXPECT_EQ(shown(0, "+5.1"), "  0.0");
    EXPECT_EQ(shown(2.5, "-5.1"), " +2.5");
}

TEST(ValueText, takesTheSignOnBothSidesOfTheUnit)
{
    EXPECT_EQ(shown(Value(1500, uLength), "[m]+6.2"), " +1.50");
    EXPECT_EQ(shown(Value(1500, uLength), "+[m]6.2"), " +1.50");
    EXPECT_EQ(shown(Value(1500, uLength), "+[m]-6.2"), " +1.50");
}

TEST(ValueText, isInTheCurrentUnitUnlessAnotherIsAskedFor)
{
    Value const length(1500, unitData(uLength, "m"));
    EXPECT_EQ(shown(length, "0.3"), "1.500");
    EXPECT_EQ(shown(length, "[cm]0.1"), "150.0");
    EXPECT_EQ(shown(Value(1500, uLength), "0.0"), "1500");
}

TEST(ValueText, tellsAnUnknownUnitAndIgnoresOneWithoutAQuantity)
{
    std::pair<ConversionErrorCode_t, bool> result;
    EXPECT_EQ(Value(1.0, uLength).toString(q("[kN]0.1"), &result), q("unknown unit 'kN'"));
    EXPECT_EQ(result, std::make_pair(CONVERSION_UNKNOWN_UNIT, false));
    EXPECT_EQ(Value(1.0, nullptr).toString(q("[kN]0.1"), &result), q("1.0"));
    EXPECT_EQ(result, std::make_pair(CONVERSION_OK, true));
    EXPECT_EQ(Value(1).toString(q("[mm]"), &result), q("illegal unit"));
    EXPECT_EQ(result, std::make_pair(CONVERSION_ILLEGAL_UNIT, false));
}

TEST(ValueText, keepsBracketsThatCloseBeforeTheyOpen)
{
    EXPECT_EQ(shown(Value(7), "]5["), "7");
    EXPECT_EQ(shown(Value(7), "]5.1["), "7"); // width 0 and precision 0, both unreadable
}

TEST(ValueText, asksForValuesThatAreMissing)
{
    std::pair<ConversionErrorCode_t, bool> result;
    EXPECT_EQ(Value(TokenValue::NO_VALUE, uLength).toString(q("5.1"), &result), q("???"));
    EXPECT_EQ(result, std::make_pair(CONVERSION_NO_VALUE, false));
    EXPECT_EQ(shown(std::numeric_limits<double>::quiet_NaN(), ""), "???");
    EXPECT_EQ(shown(Value::UNKNOWN, ""), "???");
    EXPECT_EQ(shown(Value::INVALID, ""), "???");
    EXPECT_EQ(shown(Value(Value::TYPE_DATE_TIME), ""), "???");
    EXPECT_EQ(shown(Value(Value::TYPE_FORMATTED_TEXT), ""), "???");
}

TEST(ValueText, ignoresTheFormatOfTextsAndTruthValues)
{
    EXPECT_EQ(shown(Value(q("a[b]")), "+[mm]8.2"), "a[b]");
    EXPECT_EQ(shown(Value::fromBool(true), "[mm]8"), "true");
    EXPECT_EQ(shown(Value::fromBool(false), ""), "false");
    EXPECT_EQ(shown(Value::fromFormattedText(FormattedText(q("<b>x</b>"))), "8.2"), "<b>x</b>");
}

TEST(ValueText, showsAPointInTimeInIsoFormOrByPattern)
{
    Value const time = Value::fromDateTime(QDateTime(QDate(2024, 3, 5), QTime(14, 30, 9), Qt::UTC));
    EXPECT_EQ(shown(time, ""), "2024-03-05T14:30:09Z");
    EXPECT_EQ(shown(time, "[dd.MM.yyyy]"), "05.03.2024");
    EXPECT_EQ(shown(time, "[d MMM yy hh:mm]"), "5 Mar 24 14:30");
}

TEST(ValueText, formatsEachComponentOfAVector)
{
    EXPECT_EQ(shown(Value::fromVec2d({1500, -20}, unitData(uLength, "m")), "+0.2"), "(+1.50, -0.02)");
    EXPECT_EQ(shown(Value::fromVec3d({1, 2, 3}, uLength), "[cm]5.1"), "(  0.1,   0.2,   0.3)");
    EXPECT_EQ(shown(Value::fromVec2d({1, TokenValue::NO_VALUE}, uLength), ""), "???");
}

TEST(ValueText, limitsWidthAndPrecision)
{
    EXPECT_EQ(shown(2.5, "2000000000").size(), 1000u);
    EXPECT_EQ(shown(2.5, "+2000000000.1").size(), 1000u);
    EXPECT_EQ(shown(2.5, "0.2000000000").size(), 102u);
    EXPECT_EQ(shown(Value(5), "+--2000000000.0").size(), 2u); // "+5": a sign needs no negative width
    EXPECT_EQ(shown(-5.0, "+--2000000000.0").size(), 1000u);
}
