#include "csv_support.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <random>

using namespace Zem::Measurement;
using namespace std::string_view_literals;

TEST(CsvErrors, aRowTooShortIsNamed)
{
    EXPECT_EQ(errorOf("a,b,c\n1,2,3\n4,5\n6,7,8\n"), "a.csv:3:4: this row has 2 cells, the first one 3");
}

TEST(CsvErrors, aRowTooLongIsNamed)
{
    EXPECT_EQ(errorOf("a,b\n1,2\n3,4,5\n6,7\n"), "a.csv:3:5: this row has 3 cells, the first one 2");
}

TEST(CsvErrors, aRowTooLongBehindQuotedLineEndsIsNamedByItsFirstLine)
{
    EXPECT_EQ(errorOf("a,b\n\"x\ny\",2\n1,2\n\"1,1\",2,3\n4,5\n"), "a.csv:5:9: this row has 3 cells, the first one 2");
}

TEST(CsvErrors, aRowTooLongInAlignedColumnsIsNamed)
{
    EXPECT_EQ(errorOf("1 2\n3 4\n5  6 7\n8 9\n"), "a.csv:3:6: this row has 3 cells, the first one 2");
}

TEST(CsvErrors, aQuoteInAnUnquotedCellIsNamed)
{
    EXPECT_EQ(errorOf("a,b\nx,y\"z\"\n").substr(0, 40), "a.csv:2:4: a quote inside a cell: quotes");
}

TEST(CsvErrors, textBehindAClosingQuoteIsNamed)
{
    EXPECT_EQ(errorOf("a,b\n\"x\"y,1\n").substr(0, 30), "a.csv:2:4: a quote inside a ce");
}

TEST(CsvErrors, aQuoteNeverClosedIsNamedWhereItOpens)
{
    EXPECT_EQ(errorOf("a,b\n1,x\n2, \"y\n3,z\n"), "a.csv:3:3: a quote is opened here and never closed");
}

TEST(CsvErrors, aNulByteIsNamed)
{
    EXPECT_EQ(errorOf("a,b\n1,\0\n"sv), "a.csv:2:3: a NUL byte: this is no text file");
}

TEST(CsvErrors, anEmptyFileIsNamed)
{
    EXPECT_EQ(errorOf(""), "a.csv: the file is empty");
    EXPECT_EQ(errorOf("\n \r\n"), "a.csv: the file is empty");
}

TEST(CsvErrors, commentsAloneAreNoTable)
{
    EXPECT_EQ(errorOf("# one\n# two\n"), "a.csv: there is no table in the file");
}

TEST(CsvErrors, namesWithoutValuesAreNoTable)
{
    EXPECT_EQ(errorOf("a,b\n"), "a.csv: the table has no row of values");
}

TEST(CsvErrors, markupIsNoTable)
{
    EXPECT_EQ(errorOf("<?xml version=\"1.0\"?>\n<a>1,2</a>\n"),
              "a.csv:1:1: this is a marked-up document (XML or HTML), no table");
    EXPECT_EQ(errorOf("\n<ParameterList>\n</ParameterList>\n").substr(0, 19), "a.csv:2:1: this is ");
}

TEST(CsvErrors, moreColumnsThanAnyTableHasAreRefused)
{
    EXPECT_EQ(errorOf("a" + std::string(10'000, ',') + "b\n"), "a.csv: the table has 10001 columns, more than 10000");
}

TEST(CsvErrors, aMissingFileIsNamed)
{
    try {
        readCsv(QStringLiteral("/no/such/file.csv"));
        FAIL() << "read a file that is not there";
    } catch (ImportError const &error) {
        EXPECT_EQ(error.getText(), QStringLiteral("/no/such/file.csv: No such file or directory"));
    }
}

TEST(CsvErrors, columnsCountCharacters)
{
    EXPECT_EQ(errorOf("t\xC3\xA4g,v\n1,2\n\xC3\xA4\xC3\xB6,3\n4,5\n"),
              "a.csv:3:1: \"\xC3\xA4\xC3\xB6\" is no number, as column \"t\xC3\xA4g\" holds");
    EXPECT_EQ(errorOf("w,v\nx,2\n\xC3\xA4\xC3\xB6,z\ny,5\n"), "a.csv:3:4: \"z\" is no number, as column \"v\" holds");
}

TEST(CsvFiles, areReadFromDisk)
{
    QTemporaryDir const folder;
    QString const name = folder.filePath(QStringLiteral("values.csv"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a,b\n1,2\n");
    file.close();

    CsvTable const table = readCsv(name);

    EXPECT_EQ(integers(table, "b"), (Integers{2}));
    EXPECT_EQ(table.fileName, name);
}

/// Whatever bytes come in: a table with vectors of equal length, or an ImportError.
TEST(CsvFuzz, anyBytesGiveATableOrAnError)
{
    std::string_view const alphabet = "aZ01.,;\t|\" \r\n#*-+eE%/:()[]{}<>\xC3\xA4\xE3='N";
    std::mt19937 random(20240501);
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    std::uniform_int_distribution<std::size_t> length(0, 120);
    for (int round = 0; round < 20000; ++round) {
        std::string text(length(random), ' ');
        std::generate(text.begin(), text.end(), [&] { return alphabet[letter(random)]; });
        try {
            CsvTable const table = parse(text);
            for (CsvColumn const &column : table.columns) {
                for (std::size_t row = 0; row < table.rowCount(); ++row) {
                    column.isMissing(row);
                }
                std::size_t const cells = column.numbers.size() + column.integers.size() + column.texts.size();
                ASSERT_EQ(cells, column.type == ColumnType_t::EMPTY ? 0 : table.rowCount()) << text;
            }
        } catch (ImportError const &error) {
            ASSERT_TRUE(error.getText().startsWith(QLatin1String("a.csv:"))) << text;
        }
    }
}
