#include "project_support.h"

#include <FullDisk.h>

using namespace Zem::Measurement;

namespace {

class ProjectImport : public ProjectTest
{
protected:
    Project project{path(), OpenMode_t::CREATE};

    ImportResult import(std::string_view text, ImportOptions const &options = {})
    {
        return project.importTable(parse(text), options);
    }

    unsigned int modified(char const *name) const { return tokenOf(project, name).modified; }
};

QStringList list(std::initializer_list<char const *> words)
{
    QStringList result;
    for (char const *const word : words) {
        result << QString::fromUtf8(word);
    }
    return result;
}

} // namespace

TEST(TokenName, isMadeOfTheAllowedCharacters)
{
    EXPECT_EQ(makeTokenName(QStringLiteral("Water Temp")), QStringLiteral("Water_Temp"));
    EXPECT_EQ(makeTokenName(QStringLiteral("PT08.S1(CO)")), QStringLiteral("PT08.S1CO"));
    EXPECT_EQ(makeTokenName(QStringLiteral("Avg Wind Speed @ 3m")), QStringLiteral("Avg_Wind_Speed_3m"));
    EXPECT_EQ(makeTokenName(QStringLiteral("DU -X+\\_y")), QStringLiteral("DU_-X+\\_y"));
    EXPECT_EQ(makeTokenName(QStringLiteral("Dev0/Ai0 [1]")), QStringLiteral("Dev0Ai0_1"));
    EXPECT_EQ(makeTokenName(QStringLiteral("Pressão")), QStringLiteral("Pressão"));
    EXPECT_EQ(makeTokenName(QStringLiteral("(?)")), QString());
}

TEST_F(ProjectImport, makesAStageOfEachRow)
{
    ImportResult const result = import("force [kN],cycles,note,when\n1.5,7,x,2017-07-26\n2.5,8,y,2017-07-27\n");

    EXPECT_EQ(result.tokens, list({"force", "cycles", "note", "when"}));
    EXPECT_EQ(result.changed, result.tokens);
    EXPECT_EQ(result.stages, 2u);
    EXPECT_EQ(result.values, 8u);
    EXPECT_EQ(project.stages(), (Stages{1, 2}));
    EXPECT_EQ(valueOf(project, "force", 2), "2.5");
    EXPECT_EQ(valueOf(project, "cycles", 1), "7");
    EXPECT_EQ(valueOf(project, "note", 1), "x");
    EXPECT_EQ(valueOf(project, "when", 1), std::to_string(17373LL * 86'400'000));
}

TEST_F(ProjectImport, keepsTheUnitOfTheFile)
{
    import("force [kN],conc [mg/L],S [Mpa]\n1.5,2.5,3.5\n");

    EXPECT_EQ(tokenOf(project, "force").unit, Zem::UnitData(Zem::uForce, Zem::Unit::Units_t(1)));
    EXPECT_EQ(tokenOf(project, "force").unitText, QStringLiteral("kN"));
    EXPECT_FALSE(tokenOf(project, "conc").unit.hasUnit());
    EXPECT_EQ(tokenOf(project, "conc").unitText, QStringLiteral("mg/L"));
    EXPECT_EQ(tokenOf(project, "S").unit.getUnitName(), QStringLiteral("MPa"));
}

TEST_F(ProjectImport, keepsNumbersToTheLastBit)
{
    import("a,b\n0.20060000000012224,1e-300\n");

    EXPECT_EQ(valueOf(project, "a", 1), "0.20060000000012224");
    EXPECT_EQ(valueOf(project, "b", 1), "1e-300");
}

TEST_F(ProjectImport, storesNothingForAMissingValue)
{
    import("a,b\n1,x\n,y\n");

    EXPECT_EQ(valueOf(project, "a", 2), "-");
    EXPECT_EQ(valueOf(project, "b", 2), "y");
}

TEST_F(ProjectImport, keepsAStageWithoutAnyValue)
{
    import("a,b\n1,2\nNaN,NaN\n");

    EXPECT_EQ(project.stages(), (Stages{1, 2}));
    EXPECT_TRUE(project.values(2).empty());
}

TEST_F(ProjectImport, putsThePrefixBeforeEachName)
{
    ImportOptions options;
    options.prefix = QStringLiteral("R1.");

    EXPECT_EQ(import("load,engineering strain\n1,2\n", options).tokens, list({"R1.load", "R1.engineering_strain"}));
}

TEST_F(ProjectImport, refusesAPrefixThatIsNoTokenText)
{
    ImportOptions options;
    options.prefix = QStringLiteral("R 1:");

    EXPECT_EQ(errorOf([&] { import("a\n1\n", options); }),
              "a.csv: the prefix \"R 1:\" holds more than letters, digits and . _ - + \\");
}

TEST_F(ProjectImport, makesNamesThatFallTogetherUnique)
{
    EXPECT_EQ(import("CO(GT),COGT,(?)\n1,2,3\n").tokens, list({"COGT", "COGT_2", "column3"}));
}

TEST_F(ProjectImport, leavesTheNamesOfBuiltInTokensAlone)
{
    EXPECT_EQ(import("stage,stage.count\n1,2\n").tokens, list({"stage_2", "stage.count_2"}));
}

TEST_F(ProjectImport, takesStagesFromAColumn)
{
    ImportOptions options;
    options.stageColumn = QStringLiteral("no");

    ImportResult const result = import("no,v\n30,a\n10,b\n0,c\n", options);

    EXPECT_EQ(result.tokens, list({"v"}));
    EXPECT_EQ(project.stages(), (Stages{0, 10, 30}));
    EXPECT_EQ(valueOf(project, "v", 10), "b");
}

TEST_F(ProjectImport, canBeginAtAnyStage)
{
    ImportOptions options;
    options.firstStage = 0;
    import("v\n5\n6\n", options);

    EXPECT_EQ(project.stages(), (Stages{0, 1}));
}

TEST_F(ProjectImport, refusesAStageColumnThatIsNotThere)
{
    ImportOptions options;
    options.stageColumn = QStringLiteral("nr");

    EXPECT_EQ(errorOf([&] { import("no,v\n1,a\n", options); }),
              "a.csv: there is no column \"nr\" of whole numbers for the stages");
}

TEST_F(ProjectImport, refusesStagesThatAreNoStageNumbers)
{
    ImportOptions options;
    options.stageColumn = QStringLiteral("no");

    EXPECT_EQ(errorOf([&] { import("no,v\n1,a\n-2,b\n", options); }), "a.csv:3: -2 cannot be the number of a stage");
    EXPECT_EQ(errorOf([&] { import("no,v\n1,a\n,b\n", options); }), "a.csv:3: the number of the stage is missing");
    EXPECT_EQ(errorOf([&] { import("no,v\n1,a\n2,b\n1,c\n", options); }), "a.csv:4: stage 1 stands in line 2 already");
    EXPECT_TRUE(project.tokens().empty());
}

TEST_F(ProjectImport, refusesMoreRowsThanThereAreStageNumbers)
{
    ImportOptions options;
    options.firstStage = 4294967294u; // the last one: the next number means no stage

    EXPECT_EQ(errorOf([&] { import("v\n5\n6\n", options); }), "a.csv:3: 4294967295 cannot be the number of a stage");
}

TEST_F(ProjectImport, ofTheSameTableChangesNothing)
{
    import("a,b\n1,x\n2,y\n");
    std::int64_t const before = project.revision();

    ImportResult const result = import("a,b\n1,x\n2,y\n");

    EXPECT_TRUE(result.changed.isEmpty());
    EXPECT_EQ(modified("a"), 1u);
    EXPECT_EQ(project.revision(), before);
}

TEST_F(ProjectImport, movesTheCountersOfChangedTokensOnly)
{
    import("a,b\n1,x\n2,y\n");

    ImportResult const result = import("a,b\n1,x\n3,y\n");

    EXPECT_EQ(result.changed, list({"a"}));
    EXPECT_EQ(modified("a"), 2u);
    EXPECT_EQ(modified("b"), 1u);
    EXPECT_EQ(valueOf(project, "a", 2), "3");
}

TEST_F(ProjectImport, aValueThatComesOrGoesIsAChange)
{
    import("a,b\n1,x\n,y\n");
    import("a,b\n1,x\n2,y\n");
    EXPECT_EQ(modified("a"), 2u);

    import("a,b\n,x\n2,y\n");
    EXPECT_EQ(modified("a"), 3u);
    EXPECT_EQ(valueOf(project, "a", 1), "-");
}

TEST_F(ProjectImport, anotherUnitIsAChange)
{
    import("a [kN],b\n1.5,x\n");
    import("a [N],b\n1.5,x\n");

    EXPECT_EQ(modified("a"), 2u);
    EXPECT_EQ(tokenOf(project, "a").unit.getUnitName(), QStringLiteral("N"));
}

TEST_F(ProjectImport, anotherTypeIsAChange)
{
    import("a,b\n1,x\n2,y\n");
    import("a,b\n1.5,x\nNaN,y\n");

    EXPECT_EQ(modified("a"), 2u);
    EXPECT_EQ(valueOf(project, "a", 1), "1.5");
    EXPECT_EQ(valueOf(project, "a", 2), "-");
}

TEST_F(ProjectImport, aColumnThatFellEmptyKeepsItsTypeAndLosesItsValues)
{
    import("a,b\n1.5,x\n2.5,y\n");
    import("a,b\n,x\n,y\n");

    EXPECT_EQ(tokenOf(project, "a").type, ColumnType_t::NUMBER);
    EXPECT_EQ(valueOf(project, "a", 1), "-");
    EXPECT_EQ(modified("a"), 2u);
}

TEST_F(ProjectImport, ofFewerRowsDropsTheStagesThatHeldNothingElse)
{
    import("a\n1\n2\n3\n");
    import("b\n1\n2\n");

    import("a\n1\n");

    EXPECT_EQ(project.stages(), (Stages{1, 2}));
    EXPECT_EQ(valueOf(project, "b", 2), "2");
}

TEST_F(ProjectImport, ofOtherTokensLeavesTheRestAlone)
{
    import("a\n1\n2\n");
    import("b\n5\n6\n7\n");

    EXPECT_EQ(modified("a"), 1u);
    EXPECT_EQ(valueOf(project, "a", 2), "2");
    EXPECT_EQ(project.stages(), (Stages{1, 2, 3}));
}

TEST_F(ProjectImport, thatFailsHalfwayStoresNothing)
{
    import("a,b\n1,x\n2,y\n");
    executeRaw(path(),
               "CREATE TRIGGER no_c BEFORE INSERT ON token WHEN NEW.name = 'c' BEGIN SELECT RAISE(ABORT, 'no c'); END");

    std::string const error = errorOf([&] { import("a,b,c\n5,v,1\n6,w,2\n7,w,2\n"); });

    EXPECT_EQ(error, path().toStdString() + ": no c");
    EXPECT_EQ(valueOf(project, "a", 2), "2");
    EXPECT_EQ(modified("a"), 1u);
    EXPECT_EQ(project.stages(), (Stages{1, 2}));
    EXPECT_EQ(import("a,b\n5,v\n").changed, list({"a", "b"}));
}

TEST_F(ProjectImport, onAFullDiskStoresNothing)
{
    import("a,b\n1,x\n2,y\n");
    std::string big = "a,text\n";
    for (int row = 0; row < 2000; ++row) {
        big += std::to_string(row) + "," + std::string(200, 'z') + "\n";
    }
    CsvTable const table = parse(big);

    std::string const error = [&] {
        Zem::Support::FullDisk const full(static_cast<rlim_t>(content(path()).size()));
        return errorOf([&] { project.importTable(table); });
    }();

    EXPECT_TRUE(error.starts_with(path().toStdString() + ": ")) << error;
    EXPECT_EQ(valueOf(project, "a", 2), "2");
    EXPECT_EQ(project.stages(), (Stages{1, 2}));
    EXPECT_EQ(Project(path(), OpenMode_t::READ).tokens().size(), 2u);
}

TEST_F(ProjectImport, isSeenByAnotherConnection)
{
    Project const other(path(), OpenMode_t::READ);
    std::int64_t const before = other.revision();

    import("a\n1\n");
    while (other.revision() == before) { // up to a millisecond late
    }

    EXPECT_EQ(other.stages(), (Stages{1}));
}

TEST_F(ProjectImport, waitsForAnotherWriterToFinish)
{
    Project second(path(), OpenMode_t::WRITE);
    import("a\n1\n");
    second.importTable(parse("b\n2\n"));
    import("c\n3\n");

    EXPECT_EQ(second.tokens().size(), 3u);
}
