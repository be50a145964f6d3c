#include "csv_support.h"

using namespace Zem::Measurement;
using namespace std::string_view_literals;

TEST(CsvDelimiter, commaIsDetected)
{
    CsvTable const table = parse("a,b\n1.5,2.5\n3.5,4.5\n");

    EXPECT_EQ(names(table), (Strings{"a", "b"}));
    EXPECT_EQ(numbers(table, "a"), (Numbers{1.5, 3.5}));
    EXPECT_EQ(numbers(table, "b"), (Numbers{2.5, 4.5}));
    EXPECT_EQ(table.used.delimiter, ',');
}

TEST(CsvDelimiter, blanksOfAHeaderDoNotSplitTheOnlyColumn)
{
    CsvTable const table = parse("force [kN]\n1.5\n2.5\n");

    EXPECT_EQ(names(table), (Strings{"force"}));
    EXPECT_EQ(numbers(table, "force"), (Numbers{1.5, 2.5}));
    EXPECT_EQ(numbers(parse("force [kN]\n1\n"), "force"), (Numbers{1}));
}

TEST(CsvDelimiter, semicolonWithDecimalCommaIsDetected)
{
    CsvTable const table = parse("a;b\n1,5;2,25\n3,5;4,75\n");

    EXPECT_EQ(numbers(table, "a"), (Numbers{1.5, 3.5}));
    EXPECT_EQ(numbers(table, "b"), (Numbers{2.25, 4.75}));
    EXPECT_EQ(table.used.delimiter, ';');
    EXPECT_EQ(table.used.decimalComma, true);
}

TEST(CsvDelimiter, semicolonWithDecimalCommaIsDetectedWithoutHeader)
{
    EXPECT_EQ(numbers(parse("1,5;2,25\n3,5;4,75\n"), "column2"), (Numbers{2.25, 4.75}));
}

TEST(CsvDelimiter, tabIsDetected)
{
    CsvTable const table = parse("a name\tb, with comma\n1.5\t2.5\n");

    EXPECT_EQ(names(table), (Strings{"a name", "b, with comma"}));
    EXPECT_EQ(table.used.delimiter, '\t');
}

TEST(CsvDelimiter, barIsDetected)
{
    EXPECT_EQ(numbers(parse("a|b\n1.5|2.5\n"), "b"), (Numbers{2.5}));
}

TEST(CsvDelimiter, columnsAlignedByBlanksAreDetected)
{
    CsvTable const table = parse(" 16  16 -0.2660  0.0000 51.1181\n 32  16 -0.2141  5.3176 46.4536\n");

    EXPECT_EQ(names(table), (Strings{"column1", "column2", "column3", "column4", "column5"}));
    EXPECT_EQ(integers(table, "column1"), (Integers{16, 32}));
    EXPECT_EQ(numbers(table, "column3"), (Numbers{-0.2660, -0.2141}));
    EXPECT_EQ(table.used.delimiter, ' ');
}

TEST(CsvDelimiter, blanksBehindCommasBelongToTheCommas)
{
    CsvTable const table = parse("0.5, -0.5, 1\n0.75, -0.75, 2\n");

    EXPECT_EQ(table.used.delimiter, ',');
    EXPECT_EQ(numbers(table, "column2"), (Numbers{-0.5, -0.75}));
}

TEST(CsvDelimiter, alignedColumnsMayHaveDecimalCommas)
{
    CsvTable const table = parse("10,5 11,5\n12,5 13,5\n");

    EXPECT_EQ(numbers(table, "column2"), (Numbers{11.5, 13.5}));
}

TEST(CsvDelimiter, aBlankInDatesSeparatesNothing)
{
    CsvTable const table = parse("when,force\n2017/07/26 17:00:00,1.5\n2017/07/26 17:30:00,2.5\n");

    EXPECT_EQ(table.columns.size(), 2u);
    EXPECT_EQ(column(table, "when").type, ColumnType_t::DATE_TIME);
}

TEST(CsvDelimiter, aSingleColumnNeedsNone)
{
    EXPECT_EQ(numbers(parse("force [kN]\n1.5\n2.5\n"), "force"), (Numbers{1.5, 2.5}));
}

TEST(CsvDelimiter, canBeGiven)
{
    CsvOptions options;
    options.delimiter = ';';

    EXPECT_EQ(texts(parse("a,b;c,d\nx,1;y,2\n", options), "c,d"), (Strings{"y,2"}));
}

TEST(CsvQuotes, encloseDelimitersQuotesAndLineEnds)
{
    CsvTable const table = parse("note,\"force, [kN]\"\n\"a \"\"b\"\", c\",1.5\n\"two\nlines\",2.5\n");

    EXPECT_EQ(texts(table, "note"), (Strings{"a \"b\", c", "two\nlines"}));
    EXPECT_EQ(table.lines, (std::vector<unsigned int>{2, 3}));
}

TEST(CsvQuotes, encloseNumbersToo)
{
    EXPECT_EQ(numbers(parse("a,b\n\"1.5\",\"2.5\"\n"), "b"), (Numbers{2.5}));
}

TEST(CsvQuotes, giveAnEmptyCellWhenEmpty)
{
    EXPECT_EQ(texts(parse("a,b\n\"\",x\ny,z\n"), "a"), (Strings{"(missing)", "y"}));
}

TEST(CsvQuotes, theLastLineNeedsNoLineEnd)
{
    EXPECT_EQ(texts(parse("a,b\n1,x\n2,\"y\""), "b"), (Strings{"x", "y"}));
}

TEST(CsvLineEnds, mayBeCarriageReturns)
{
    CsvTable const table = parse("a;b\r1,5;2\r3,5;4\r");

    EXPECT_EQ(numbers(table, "a"), (Numbers{1.5, 3.5}));
    EXPECT_EQ(table.lines, (std::vector<unsigned int>{2, 3}));
}

TEST(CsvLineEnds, mayBePairs)
{
    CsvTable const table = parse("a,b\r\n1,x\r\n\r\n3,y\r\n");

    EXPECT_EQ(texts(table, "b"), (Strings{"x", "y"}));
    EXPECT_EQ(table.lines, (std::vector<unsigned int>{2, 4}));
}

TEST(CsvEncoding, byteOrderMarkIsNoPartOfTheFirstName)
{
    CsvTable const table = parse("\xEF\xBB\xBF"
                                 "time,\xC2\xB0\n1,2\n");

    EXPECT_EQ(names(table), (Strings{"time", "\xC2\xB0"}));
    EXPECT_EQ(table.used.encoding, CsvEncoding_t::UTF8);
}

TEST(CsvEncoding, whatIsNoUtf8IsLatin1)
{
    CsvTable const table = parse("Press\xE3o,Temperatura (\xB0"
                                 "C)\n1.5,20.5\n");

    EXPECT_EQ(names(table), (Strings{"Press\xC3\xA3o", "Temperatura"}));
    EXPECT_EQ(unitOf(table, "Temperatura"), "C");
    EXPECT_EQ(table.used.encoding, CsvEncoding_t::LATIN1);
}

TEST(CsvEncoding, canBeForcedToLatin1)
{
    CsvOptions options;
    options.encoding = CsvEncoding_t::LATIN1;

    EXPECT_EQ(names(parse("\xC3\xA9,b\n1,2\n", options))[0], "\xC3\x83\xC2\xA9");
}

TEST(CsvEncoding, forcedUtf8NamesThePlaceOfABadByte)
{
    CsvOptions options;
    options.encoding = CsvEncoding_t::UTF8;

    EXPECT_EQ(errorOf("a,b\n1,\xC3\xA9\xE3\n", options), "a.csv:2:4: byte 0xe3 is no valid UTF-8");
}

TEST(CsvEncoding, byteOrderMarkForbidsLatin1)
{
    EXPECT_EQ(errorOf("\xEF\xBB\xBF"
                      "a,b\n1,\xFF\n"),
              "a.csv:2:3: byte 0xff is no valid UTF-8");
}

TEST(CsvEncoding, controlBytesAreNoLatin1)
{
    EXPECT_EQ(errorOf("a,b\n1,\xE3\x93\n"), "a.csv:2:4: byte 0x93 is neither UTF-8 nor Latin-1 text");
}

TEST(CsvEncoding, overlongFormsAndSurrogatesAreNoUtf8)
{
    CsvOptions options;
    options.encoding = CsvEncoding_t::UTF8;
    for (std::string const bad : {"\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF0\x80\x80\xAF", "\xF4\x90\x80\x80",
                                  "\xF5\x80\x80\x80", "\x80", "\xE2\x82"}) {
        EXPECT_NE(errorOf("a,b\n1," + bad, options).find("a.csv:2:3: byte 0x"), std::string::npos) << bad;
    }
}

TEST(CsvEncoding, utf16IsRefused)
{
    EXPECT_EQ(errorOf("\xFF\xFE"
                      "a\0,\0"sv),
              "a.csv: this is UTF-16 text; save it as UTF-8");
}

TEST(CsvRows, emptyOnesAreLeftOutAndCounted)
{
    CsvTable const table = parse("a,b,,\r\n1,2,,\r\n,,,\r\n,,,\r\n");

    EXPECT_EQ(names(table), (Strings{"a", "b"}));
    EXPECT_EQ(table.rowCount(), 1u);
    EXPECT_TRUE(table.notes.contains(QStringLiteral("2 rows of empty cells left out")));
    EXPECT_TRUE(table.notes.contains(QStringLiteral("column 3 has no name and no value: left out")));
}

TEST(CsvRows, mayEndWithADelimiterMoreThanTheHeader)
{
    EXPECT_EQ(integers(parse("a,b\n1,2,\n3,4,\n"), "b"), (Integers{2, 4}));
}

TEST(CsvOptionsUsed, readTheSameTableAgain)
{
    for (char const *text : {"a;b\n1,5;2\n", "# x\ty\n1.5\t2\n", "Title\na [kN],b\n1,2\n", "1 2\n3 4\n",
                             "K\tV\n***End_of_Header***\nX\tY\n\t0,5\n"}) {
        CsvTable const first = parse(text);
        CsvTable const second = parse(text, first.used);

        EXPECT_EQ(first.used, second.used) << text;
        EXPECT_EQ(names(first), names(second)) << text;
        EXPECT_EQ(first.lines, second.lines) << text;
        EXPECT_EQ(first.preamble, second.preamble) << text;
    }
}
