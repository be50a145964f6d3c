#include "csv_support.h"

using namespace Zem::Measurement;

namespace {

struct TitleCase
{
    char const *name;
    char const *header;
    char const *columnName;
    char const *unitText;
    char const *unit;
};

class CsvTitle : public testing::TestWithParam<TitleCase>
{
};

} // namespace

TEST_P(CsvTitle, isTakenApart)
{
    CsvTable const table = parse(std::string("x\t") + GetParam().header + "\n1\t2.5\n");

    ASSERT_EQ(table.columns.size(), 2u);
    EXPECT_EQ(table.columns[1].name.toStdString(), GetParam().columnName);
    EXPECT_EQ(table.columns[1].unitText.toStdString(), GetParam().unitText);
    EXPECT_EQ(table.columns[1].unit.getUnitName().toStdString(), GetParam().unit);
    EXPECT_EQ(table.columns[1].header.toStdString(), GetParam().header);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, CsvTitle,
    testing::Values(TitleCase{"Square", "force [kN]", "force", "kN", "kN"},
                    TitleCase{"Round", "force (kN)", "force", "kN", "kN"},
                    TitleCase{"Comma", "force, kN", "force", "kN", "kN"},
                    TitleCase{"CommaWithNote", "Water Temp, °C (LGR S/N: 10246242)", "Water Temp", "°C", "C"},
                    TitleCase{"Feet", "Sensor Depth, feet (LGR S/N: 1)", "Sensor Depth", "feet", "ft"},
                    TitleCase{"UnknownAfterComma", "DO conc, mg/L (LGR S/N: 1)", "DO conc", "mg/L", ""},
                    TitleCase{"Percent", "DO Percent Sat, % (LGR S/N: 1)", "DO Percent Sat", "%", "%"},
                    TitleCase{"UnknownInSquare", "Direct Normal [W/m^2]", "Direct Normal", "W/m^2", ""},
                    TitleCase{"RoundInName", "Temp CM22 (tracker) [deg C]", "Temp CM22 (tracker)", "deg C", "C"},
                    TitleCase{"NoUnitInRound", "CO(GT)", "CO(GT)", "", ""},
                    TitleCase{"NoUnitAfterBlank", "Excitation (Trigger)", "Excitation (Trigger)", "", ""},
                    TitleCase{"NoUnitAfterComma", "Date Time, GMT-04:00", "Date Time, GMT-04:00", "", ""},
                    TitleCase{"WordAfterComma", "Position, left", "Position, left", "", ""},
                    TitleCase{"Dimensionless", "Cycles N [-]", "Cycles N", "", ""},
                    TitleCase{"Mpa", "Stress S [Mpa]", "Stress S", "Mpa", "MPa"},
                    TitleCase{"CompoundInRound", "speed (mm/min)", "speed", "mm/min", ""},
                    TitleCase{"Voltage", "Battery [VDC]", "Battery", "VDC", "V"}),
    [](auto const &row) { return row.param.name; });

TEST(CsvUnitsRow, belowTheHeaderIsFound)
{
    CsvTable const table = parse("time,force,ratio\ns,kN,-\n0.5,10.5,1\n1.5,11.5,2\n");

    EXPECT_EQ(unitOf(table, "time"), "s");
    EXPECT_EQ(unitOf(table, "force"), "kN");
    EXPECT_EQ(unitOf(table, "ratio"), "");
    EXPECT_EQ(numbers(table, "force"), (Numbers{10.5, 11.5}));
    EXPECT_EQ(table.used.unitsRow, true);
}

TEST(CsvUnitsRow, mayHaveBrackets)
{
    EXPECT_EQ(unitOf(parse("time,force\n[s],[N]\n0.5,1\n"), "force"), "N");
}

TEST(CsvUnitsRow, isNoRowOfWordsAmongNumbers)
{
    EXPECT_EQ(errorOf("a,b\nERR,ERR\n1,2\n3,4\n"), "a.csv:2:1: \"ERR\" is no number, as column \"a\" holds");
}

TEST(CsvUnitsRow, canBeForced)
{
    CsvOptions options;
    options.unitsRow = true;

    CsvTable const table = parse("a,b\nfurlong,fortnight\n1,2\n", options);

    EXPECT_EQ(column(table, "a").unitText, QStringLiteral("furlong"));
    EXPECT_FALSE(column(table, "a").unit.hasUnit());
    EXPECT_EQ(numbers(table, "a"), (Numbers{1.0}));
}

TEST(CsvUnitsRow, canBeDenied)
{
    CsvOptions options;
    options.unitsRow = false;

    EXPECT_EQ(texts(parse("a,b\ns,kN\nx,y\nz,1\n", options), "a"), (Strings{"s", "x", "z"}));
}

TEST(CsvUnits, ofAColumnCanBeGiven)
{
    CsvOptions options;
    options.columnUnits[QStringLiteral("load")] = QStringLiteral("lbf");

    EXPECT_EQ(unitOf(parse("load,x\n1,2\n", options), "load"), "lbf");
}

TEST(CsvUnits, ofAnUnknownColumnAreRefused)
{
    CsvOptions options;
    options.columnUnits[QStringLiteral("laod")] = QStringLiteral("lbf");

    EXPECT_EQ(errorOf("load,x\n1,2\n", options), "a.csv: there is no column \"laod\"");
}

TEST(CsvUnits, gIsAMassExceptBelowAnAcceleration)
{
    CsvTable const table = parse("sample [g],Acceleration [g],ax [g]\n1.5,2.5,3.5\n");

    EXPECT_EQ(column(table, "sample").unit.getUnit(), Zem::uMass);
    EXPECT_EQ(column(table, "Acceleration").unit.getUnit(), Zem::uAcceleration);
    EXPECT_EQ(column(table, "ax").unit.getUnit(), Zem::uAcceleration);
}

TEST(CsvHeader, missingGivesNumberedNames)
{
    CsvTable const table = parse("1,2.5\n3,4.5\n");

    EXPECT_EQ(names(table), (Strings{"column1", "column2"}));
    EXPECT_EQ(table.used.headerRow, false);
    EXPECT_EQ(table.lines, (std::vector<unsigned int>{1, 2}));
}

TEST(CsvHeader, doubleNamesAreMadeUnique)
{
    EXPECT_EQ(names(parse("X,A,X,X\n1,2,3,4\n")), (Strings{"X", "A", "X_2", "X_3"}));
}

TEST(CsvHeader, unnamedColumnsWithValuesAreNumbered)
{
    EXPECT_EQ(names(parse(",a\n1,2\n3,4\n")), (Strings{"column1", "a"}));
}

TEST(CsvHeader, ofNumericCodesIsToldFromValues)
{
    CsvTable const table = parse("94255\t2018\t7008\t0\n1\t1\t-20.5\t12\n1\t2\t-21.3\t12\n1\t3\t-26.0\t12\n");

    EXPECT_EQ(names(table), (Strings{"94255", "2018", "7008", "0"}));
    EXPECT_EQ(numbers(table, "7008"), (Numbers{-20.5, -21.3, -26.0}));
}

TEST(CsvHeader, wholeNumbersAboveFractionsAreValues)
{
    EXPECT_EQ(numbers(parse("0,0\n1,0.52\n2,0.71\n3,0.9\n"), "column2"), (Numbers{0.0, 0.52, 0.71, 0.9}));
}

TEST(CsvHeader, canBeForcedOntoNumbers)
{
    CsvOptions options;
    options.headerRow = true;

    EXPECT_EQ(names(parse("400,500\n1,2\n", options)), (Strings{"400", "500"}));
}

TEST(CsvHeader, canBeDenied)
{
    CsvOptions options;
    options.headerRow = false;

    EXPECT_EQ(texts(parse("a,b\nc,d\n", options), "column1"), (Strings{"a", "c"}));
}

TEST(CsvHeader, namesCanBeGiven)
{
    CsvOptions options;
    options.columnNames = {QStringLiteral("x"), QString(), QStringLiteral("u")};

    EXPECT_EQ(names(parse("16 16 0.5\n32 16 0.6\n", options)), (Strings{"x", "column2", "u"}));
}

TEST(CsvHeader, moreNamesThanColumnsAreRefused)
{
    CsvOptions options;
    options.columnNames = {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("u")};

    EXPECT_EQ(errorOf("1,2\n3,4\n", options), "a.csv: there are 2 columns, fewer than names given");
}

TEST(CsvTypeRow, isSkippedAndItsTextsMayHoldNumbers)
{
    CsvTable const table =
        parse("agency\tpeak_cd\tyear\n5s\t33s\t10n\nUSGS\t5\t2001\nUSGS\t5\t2002\nUSGS\t2,5,8\t2003\n");

    EXPECT_EQ(texts(table, "peak_cd"), (Strings{"5", "5", "2,5,8"}));
    EXPECT_EQ(integers(table, "year"), (Integers{2001, 2002, 2003}));
    EXPECT_EQ(table.lines[0], 3u);
}

TEST(CsvUnit, ofOneIsStrainWhenItIsGivenAndNoneInAHeader)
{
    CsvOptions options;
    options.columnUnits["e"] = QStringLiteral("1");

    CsvTable const table = parse("e,n [1]\n0.5,3.5\n", options);

    EXPECT_EQ(table.columns[0].unit, Zem::UnitData(Zem::uStrain));
    EXPECT_FALSE(table.columns[1].unit.hasUnit());
}
