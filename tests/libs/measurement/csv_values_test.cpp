#include "csv_support.h"

#include <clocale>

using namespace Zem::Measurement;

namespace {

constexpr std::int64_t SECOND = 1000;
constexpr std::int64_t HOUR = 3600 * SECOND;
constexpr std::int64_t DAY = 24 * HOUR;

CsvOptions withType(char const *name, ColumnType_t type)
{
    CsvOptions options;
    options.columnTypes[QString::fromLatin1(name)] = type;
    return options;
}

CsvOptions withMissing(QStringList const &markers)
{
    CsvOptions options;
    options.missing = markers;
    return options;
}

} // namespace

TEST(CsvNumbers, haveAllUsualForms)
{
    CsvTable const table = parse("v,w\n7.768E-4,a\n+1.5,b\n-.25,c\n3.,d\n 12 ,e\n1e3,f\n");

    EXPECT_EQ(numbers(table, "v"), (Numbers{7.768e-4, 1.5, -0.25, 3.0, 12.0, 1000.0}));
}

TEST(CsvNumbers, areReadToTheLastBit)
{
    EXPECT_EQ(numbers(parse("v,w\n0.20060000000012224,1\n"), "v")[0], 0.20060000000012224);
}

TEST(CsvNumbers, tooSmallForADoubleAreZero)
{
    EXPECT_EQ(numbers(parse("v,w\n1e-400,1\n2.5,1\n"), "v"), (Numbers{0.0, 2.5}));
}

TEST(CsvNumbers, tooLargeForADoubleAreRefused)
{
    EXPECT_EQ(errorOf("v,w\n1e400,1\n2.5,1\n"), "a.csv:2:1: \"1e400\" is no number, as column \"v\" holds");
}

TEST(CsvNumbers, infinityIsNone)
{
    EXPECT_EQ(errorOf("v,w\n1.5,1\n2.5,1\ninf,1\n"), "a.csv:4:1: \"inf\" is no number, as column \"v\" holds");
}

TEST(CsvNumbers, doNotDependOnTheLocale)
{
    std::string const before = std::setlocale(LC_ALL, nullptr);
    char const *const german = std::setlocale(LC_ALL, "de_DE.UTF-8");

    CsvTable const table = parse("v;w\n1.5;2\n");
    std::setlocale(LC_ALL, before.c_str());

    EXPECT_EQ(numbers(table, "v"), (Numbers{1.5})) << (german ? german : "no German locale here");
}

TEST(CsvNumbers, decimalCommaCanBeGiven)
{
    CsvOptions options;
    options.decimalComma = true;

    EXPECT_EQ(numbers(parse("v;w\n5;1\n1,25;2\n", options), "v"), (Numbers{5.0, 1.25}));
}

TEST(CsvNumbers, pointsInAFileOfCommasAreRefused)
{
    EXPECT_EQ(errorOf("v;w\n1,5;1\n2,5;2\n1.234;3\n"), "a.csv:4:1: \"1.234\" is no number, as column \"v\" holds");
}

TEST(CsvIntegers, areWholeNumbersWithoutUnit)
{
    CsvTable const table = parse("n,force [kN],x\n1,2,3.0\n-4,5,6.0\n");

    EXPECT_EQ(integers(table, "n"), (Integers{1, -4}));
    EXPECT_EQ(column(table, "force").type, ColumnType_t::NUMBER);
    EXPECT_EQ(column(table, "x").type, ColumnType_t::NUMBER);
}

TEST(CsvIntegers, beyond32BitsAreNumbers)
{
    EXPECT_EQ(numbers(parse("n,m\n3000000000,1\n2,1\n"), "n"), (Numbers{3000000000.0, 2.0}));
}

TEST(CsvIntegers, canBeForced)
{
    EXPECT_EQ(integers(parse("n [kN],m\n3.0,1\n4,2\n", withType("n", ColumnType_t::INTEGER)), "n"), (Integers{3, 4}));
}

TEST(CsvIntegers, forcedOntoFractionsNameThePlace)
{
    EXPECT_EQ(errorOf("n,m\n3,1\n4.5,2\n", withType("n", ColumnType_t::INTEGER)),
              "a.csv:3:1: \"4.5\" is no integer, as column \"n\" holds");
}

TEST(CsvIdentifiers, withLeadingZerosStayTexts)
{
    CsvTable const table = parse("site,month,hhmm\n03161500,01,0830\n03163000,12,1200\n");

    EXPECT_EQ(texts(table, "site"), (Strings{"03161500", "03163000"}));
    EXPECT_EQ(integers(table, "month"), (Integers{1, 12}));
    EXPECT_EQ(integers(table, "hhmm"), (Integers{830, 1200}));
}

TEST(CsvIdentifiers, ofMoreDigitsThanANumberHoldsStayTexts)
{
    EXPECT_EQ(texts(parse("id,v\n12345678901234567890,1\n"), "id"), (Strings{"12345678901234567890"}));
}

TEST(CsvTexts, areColumnsOfWords)
{
    EXPECT_EQ(texts(parse("v,w\nFailure,1\nRunOut,2\n"), "v"), (Strings{"Failure", "RunOut"}));
}

TEST(CsvTexts, mayHoldANumberHereAndThere)
{
    EXPECT_EQ(texts(parse("v,w\nA1,1\n17,2\nB2,3\n"), "v"), (Strings{"A1", "17", "B2"}));
}

TEST(CsvTexts, amongNumbersAreRefusedWithTheirPlace)
{
    EXPECT_EQ(errorOf("time,\"load, N\",w\n1.5,10,a\n2.5,1O,b\n3.5,12,c\n"),
              "a.csv:3:5: \"1O\" is no number, as column \"load\" holds");
}

TEST(CsvTexts, canBeForced)
{
    EXPECT_EQ(texts(parse("v,w\n12A,1\n13,2\n14,3\n", withType("v", ColumnType_t::TEXT)), "v"),
              (Strings{"12A", "13", "14"}));
}

TEST(CsvTexts, whereANumberIsForcedAreRefused)
{
    EXPECT_EQ(errorOf("v,w\n\"a, b\",1\nc,d\n", withType("w", ColumnType_t::NUMBER)),
              "a.csv:3:3: \"d\" is no number, as column \"w\" holds");
}

TEST(CsvDates, haveAllUsualForms)
{
    // 2017-07-26 is day 17373: 47 years with 12 leap days are 17167, up to July 181, and 25 more.
    constexpr std::int64_t JULY_26 = 17373 * DAY;
    for (char const *date : {"2017-07-26", "2017/07/26", "26.07.2017", "26-07-2017", "7/26/2017", "26/7/2017"}) {
        CsvTable const table = parse(std::string("d,v\n") + date + ",1\n");
        EXPECT_EQ(integers(table, "d"), (Integers{JULY_26})) << date;
    }
}

TEST(CsvDates, mayHaveATime)
{
    CsvTable const table = parse("d,v\n2017/07/26 17:00:00,1\n2017-07-26T17:00:00.25,2\n2017-07-26T17:00:00+02:00,3\n"
                                 "2017-07-26T17:00Z,4\n");

    std::int64_t const five = 17373 * DAY + 17 * HOUR;
    EXPECT_EQ(integers(table, "d"), (Integers{five, five + 250, five - 2 * HOUR, five}));
}

TEST(CsvDates, ofADataLoggerAreMonthDayYear)
{
    CsvTable const table = parse("d,v\n10/11/2018 17:01,1\n10/13/2018 0:01,2\n");

    // 2018-10-11 is day 17815.
    EXPECT_EQ(integers(table, "d"), (Integers{17815 * DAY + 17 * HOUR + 60 * SECOND, 17817 * DAY + 60 * SECOND}));
    EXPECT_EQ(table.used.dateOrder, DateOrder_t::MONTH_DAY);
}

TEST(CsvDates, areDayMonthYearWhereNothingElseFits)
{
    CsvTable const table = parse("d,v\n13/10/2018,1\n14/10/2018,2\n");

    EXPECT_EQ(integers(table, "d"), (Integers{17817 * DAY, 17818 * DAY}));
    EXPECT_EQ(table.used.dateOrder, DateOrder_t::DAY_MONTH);
}

TEST(CsvDates, thatFitBothWaysAreNoted)
{
    CsvTable const table = parse("d,v\n3/10/2004,1\n");

    EXPECT_EQ(integers(table, "d"), (Integers{12487 * DAY})); // 2004-03-10
    EXPECT_TRUE(table.notes.contains(QStringLiteral("dates such as 3/10/2004 are read as month/day/year")));
}

TEST(CsvDates, orderCanBeGiven)
{
    CsvOptions options;
    options.dateOrder = DateOrder_t::DAY_MONTH;

    EXPECT_EQ(integers(parse("d,v\n3/10/2004,1\n", options), "d"), (Integers{12694 * DAY})); // 2004-10-03
}

TEST(CsvDates, outOfTheCalendarAreRefused)
{
    EXPECT_EQ(errorOf("d,v\n2019-02-28,1\n2019-02-29,2\n"),
              "a.csv:3:1: \"2019-02-29\" is no date, as column \"d\" holds");
}

TEST(CsvDates, withThePointsOfAYearInFrontAreRefused)
{
    EXPECT_EQ(errorOf("d,v\n2019-02-28,1\n2019.03.01,2\n"),
              "a.csv:3:1: \"2019.03.01\" is no date, as column \"d\" holds");
}

TEST(CsvDates, areNoFurtherFromUtcThanFourteenHours)
{
    EXPECT_EQ(errorOf("d,v\n2019-02-28 10:00+14:00,1\n2019-02-28 10:00+15:00,2\n"),
              "a.csv:3:1: \"2019-02-28 10:00+15:00\" is no date, as column \"d\" holds");
}

TEST(CsvDates, besideTimesStaySeparate)
{
    CsvTable const table = parse("Date,Time,T\n3/10/2004,18:00:00,13.6\n");

    EXPECT_EQ(column(table, "Date").type, ColumnType_t::DATE_TIME);
    EXPECT_EQ(texts(table, "Time"), (Strings{"18:00:00"}));
}

TEST(CsvMissing, emptyCellsHoldNoValue)
{
    CsvTable const table = parse("a,b,c,d\n1,2.5,x,2019-01-01\n,,,\n,3.5,,\n2,,y,\n");

    EXPECT_EQ(table.rowCount(), 3u);
    EXPECT_EQ(integers(table, "a"), (Integers{1, NONE, 2}));
    EXPECT_TRUE(column(table, "b").isMissing(2));
    EXPECT_FALSE(column(table, "b").isMissing(1));
    EXPECT_EQ(texts(table, "c"), (Strings{"x", "(missing)", "y"}));
    EXPECT_TRUE(column(table, "d").isMissing(1));
}

TEST(CsvMissing, usualWordsCountAmongNumbers)
{
    CsvTable const table = parse("a,b\n1,x\nNaN,x\nn/a,x\n-,x\n2,x\n");

    EXPECT_EQ(integers(table, "a"), (Integers{1, NONE, NONE, NONE, 2}));
}

TEST(CsvMissing, usualWordsAreTextsAmongTexts)
{
    EXPECT_EQ(texts(parse("a,b\nNA,1\nDE,2\n"), "a"), (Strings{"NA", "DE"}));
}

TEST(CsvMissing, aNumberCanBeChosen)
{
    CsvTable const table = parse("a,b\n-200,1.5\n3,-200.0\n", withMissing({QStringLiteral("-200")}));

    EXPECT_EQ(integers(table, "a"), (Integers{NONE, 3}));
    EXPECT_TRUE(column(table, "b").isMissing(1));
}

TEST(CsvMissing, aNumberIsKnownInADecimalCommaFile)
{
    CsvTable const table = parse("a;b\n-99,5;1\n2,5;2\n", withMissing({QStringLiteral("-99.5")}));

    EXPECT_TRUE(column(table, "a").isMissing(0));
}

TEST(CsvMissing, aTextCanBeChosen)
{
    CsvTable const table = parse("a,b\nlost,1\n3,lost\n4,2\n", withMissing({QStringLiteral("lost")}));

    EXPECT_EQ(integers(table, "a"), (Integers{NONE, 3, 4}));
    EXPECT_EQ(integers(table, "b"), (Integers{1, NONE, 2}));
}

TEST(CsvMissing, aLikelyNumberIsNotedAndKept)
{
    CsvTable const table = parse("t,v\n1,-7999.0\n2,-7999.0\n3,-373.4\n4,-7999.0\n");

    EXPECT_EQ(numbers(table, "v")[0], -7999.0);
    EXPECT_TRUE(table.notes.contains(QStringLiteral(
        "-7999 stands again and again, far from all other values, in: \"v\"; if it marks missing values, say so")));
}
