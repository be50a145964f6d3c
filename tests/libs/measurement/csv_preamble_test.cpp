#include "csv_support.h"

using namespace Zem::Measurement;

TEST(CsvComments, beforeTheHeaderAreSkipped)
{
    CsvTable const table = parse("***\n*** Deformed image: ./a, b.tiff \n***\nX,Y\n6.1E+01,9.7100E+02\n");

    EXPECT_EQ(names(table), (Strings{"X", "Y"}));
    EXPECT_EQ(numbers(table, "X"), (Numbers{61.0}));
    EXPECT_EQ(table.preamble.size(), 3);
    EXPECT_EQ(table.used.commentPrefix, QStringLiteral("***"));
}

TEST(CsvComments, amidTheRowsAreSkipped)
{
    CsvTable const table = parse("# one\na,b\n1,2\n# two\n3,4\n");

    EXPECT_EQ(integers(table, "a"), (Integers{1, 3}));
    EXPECT_EQ(table.lines, (std::vector<unsigned int>{3, 5}));
}

TEST(CsvComments, aHashInTheFirstColumnIsNoneWhenTheFileBeginsWithoutOne)
{
    EXPECT_EQ(texts(parse("id,v\n#1,2\n#2,3\n"), "id"), (Strings{"#1", "#2"}));
}

TEST(CsvComments, prefixCanBeGiven)
{
    CsvOptions options;
    options.commentPrefix = QStringLiteral("!");

    EXPECT_EQ(integers(parse("a,b\n1,2\n! note\n3,4\n", options), "b"), (Integers{2, 4}));
}

TEST(CsvComments, canBeDenied)
{
    CsvOptions options;
    options.commentPrefix = QString();

    EXPECT_EQ(names(parse("# a,b\n1,2\n", options)), (Strings{"# a", "b"}));
}

TEST(CsvComments, theLastOneMayHoldTheNames)
{
    CsvTable const table = parse("# x\ty\tu\n9.4118e-01\t5.9e+01\tnan\n2.8e+00\t5.9e+01\t1.5\n");

    EXPECT_EQ(names(table), (Strings{"x", "y", "u"}));
    EXPECT_TRUE(column(table, "u").isMissing(0));
    EXPECT_EQ(numbers(table, "u")[1], 1.5);
    EXPECT_EQ(table.lines, (std::vector<unsigned int>{2, 3}));
}

TEST(CsvComments, theLastOneOfManyMayHoldTheNames)
{
    CsvTable const table = parse("# Title: x\n# Columns:\n# 1. period; with words\n#\n# Period;TOA;split/half\n"
                                 "2020-06-01T12:00:00.0/2020-06-01T12:01:00.0;18.0699;0.5\n");

    EXPECT_EQ(names(table), (Strings{"Period", "TOA", "split/half"}));
    EXPECT_EQ(column(table, "Period").type, ColumnType_t::TEXT);
    EXPECT_EQ(numbers(table, "TOA"), (Numbers{18.0699}));
}

TEST(CsvTitles, aLineOfOneCellIsPassedOver)
{
    CsvTable const table =
        parse("\xEF\xBB\xBF\"Plot Title: Creek Water\"\n\"Date Time, GMT-04:00\",\"Abs Pres, psi (S/N: "
              "1)\"\n2017/07/26 17:00:00,13.8246\n");

    EXPECT_EQ(names(table), (Strings{"Date Time, GMT-04:00", "Abs Pres"}));
    EXPECT_EQ(unitOf(table, "Abs Pres"), "psi");
    EXPECT_EQ(table.preamble, (QStringList{QStringLiteral("\"Plot Title: Creek Water\"")}));
    EXPECT_EQ(table.used.preambleLines, 1u);
}

TEST(CsvTitles, mayBeFilledUpWithEmptyCells)
{
    CsvTable const table = parse("Plot Title: X,,\nwhen,temp,conc\n10/11/2018 17:01,9.37,15.72\n");

    EXPECT_EQ(names(table), (Strings{"when", "temp", "conc"}));
}

TEST(CsvTitles, mayBeARecordInBraces)
{
    CsvTable const table =
        parse("{'temperature':534.67, 'engineering_strain_rate':0.01 }\ntime, load, strain\n9.9e+00,1.1e-06,"
              "9.1e+00\n");

    EXPECT_EQ(names(table), (Strings{"time", "load", "strain"}));
    EXPECT_EQ(table.rowCount(), 1u);
}

TEST(CsvTitles, mayBeKeysWithValues)
{
    CsvTable const table = parse("Operator;JS\nDate;2019-05-01\ntime;force;path\n1,5;2,5;3,5\n");

    EXPECT_EQ(names(table), (Strings{"time", "force", "path"}));
    EXPECT_EQ(table.preamble.size(), 2);
}

TEST(CsvTitles, aHeaderTooShortForItsRowsIsNone)
{
    EXPECT_EQ(errorOf("a,b\n1,2,3\n4,5,6\n"), "a.csv:2:5: this row has 3 cells, the first one 2");
}

TEST(CsvTitles, theirNumberCanBeGiven)
{
    CsvOptions options;
    options.preambleLines = 2;

    EXPECT_EQ(names(parse("x,y\n1,2\na,b\n3,4\n", options)), (Strings{"a", "b"}));
}

namespace {

char const *const INSTRUMENT_HEADER = "LabVIEW Measurement\t\n"
                                      "Separator\tTab\n"
                                      "Decimal_Separator\t,\n"
                                      "Time\t09:51:39,1970510124996275989\n"
                                      "***End_of_Header***\t\n"
                                      "\t\n"
                                      "Channels\t2\t\t\n"
                                      "Samples\t10\t10\t\n"
                                      "Y_Unit_Label\tNewtons\tm/s^2\t\n"
                                      "Delta_X\t3,906250E-5\t3,906250E-5\t\n"
                                      "***End_of_Header***\t\t\t\n"
                                      "X_Value\tExcitation (Trigger)\tResponse (Trigger)\tComment\n";

} // namespace

TEST(CsvHeaderBlock, endsAtItsLastMarker)
{
    CsvTable const table = parse(std::string(INSTRUMENT_HEADER) + "\t0,914018\t1,204792\n\t0,537321\t1,208403\n");

    EXPECT_EQ(names(table), (Strings{"X_Value", "Excitation (Trigger)", "Response (Trigger)", "Comment"}));
    EXPECT_EQ(numbers(table, "Response (Trigger)"), (Numbers{1.204792, 1.208403}));
    EXPECT_EQ(table.used.preambleLines, 11u);
}

TEST(CsvHeaderBlock, namesUnitsDelimiterAndDecimalSign)
{
    CsvTable const table = parse(std::string(INSTRUMENT_HEADER) + "\t1\t2\n");

    EXPECT_EQ(unitOf(table, "Excitation (Trigger)"), "N");
    EXPECT_EQ(unitOf(table, "Response (Trigger)"), "m/s^2");
    EXPECT_EQ(table.used.decimalComma, true);
    EXPECT_EQ(table.used.delimiter, '\t');
}

TEST(CsvHeaderBlock, letsRowsEndEarly)
{
    CsvTable const table = parse(std::string(INSTRUMENT_HEADER) + "0\t1,5\t2\tOK\n1\t2,5\t3\n\n");

    EXPECT_EQ(texts(table, "Comment"), (Strings{"OK", "(missing)"}));
    EXPECT_EQ(numbers(table, "Excitation (Trigger)"), (Numbers{1.5, 2.5}));
}

TEST(CsvHeaderBlock, keepsColumnsWithoutValues)
{
    CsvTable const table = parse(std::string(INSTRUMENT_HEADER) + "\t0,9\t1,2\n");

    EXPECT_EQ(column(table, "X_Value").type, ColumnType_t::EMPTY);
    EXPECT_EQ(column(table, "Comment").type, ColumnType_t::EMPTY);
    EXPECT_TRUE(table.notes.contains(QStringLiteral("no values in: \"X_Value\", \"Comment\"")));
}

TEST(CsvHeaderBlock, withoutDecimalSignIsReadByTheNumbers)
{
    CsvTable const table =
        parse("Time\t09:54:07,284627\n***End_of_Header***\t\nX_Value\tax\tX_Value\tay\tComment\n"
              "0.000000\t-0.008807\t0.000000\t-0.028189\n0.000250\t-0.025979\t0.000250\t-0.031060\n");

    EXPECT_EQ(names(table), (Strings{"X_Value", "ax", "X_Value_2", "ay", "Comment"}));
    EXPECT_EQ(numbers(table, "ax"), (Numbers{-0.008807, -0.025979}));
}

TEST(CsvVariables, nameColumnsAndUnits)
{
    CsvTable const table =
        parse("TITLE=\"E:\\2CM\\Run.vec\" VARIABLES=\"X mm\", \"U m/s\", \"CHC\", DATASETAUXDATA "
              "Application=\"PIV\" ZONE I=63, J=63, F=POINT\n0.312480, -0.000000, -1\n0.624960, 0.5, 1\n");

    EXPECT_EQ(names(table), (Strings{"X", "U", "CHC"}));
    EXPECT_EQ(unitOf(table, "X"), "mm");
    EXPECT_EQ(unitOf(table, "U"), "m/s");
    EXPECT_EQ(integers(table, "CHC"), (Integers{-1, 1}));
    EXPECT_EQ(table.rowCount(), 2u);
}
