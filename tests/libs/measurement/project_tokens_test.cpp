#include "project_support.h"

#include <ZemMeasTokenInterface.h>

#include <QtCore/QDateTime>

using namespace Zem::Measurement;
using Zem::IndexIdentifier;
using Zem::StageIdentifier;
using Zem::TokenInfo;
using Zem::Value;

namespace {

class ProjectTokens : public ProjectTest
{
protected:
    Project project{path(), OpenMode_t::CREATE};
    ProjectTokenInterface tokens{&project};

    void import(std::string_view text) { project.importTable(parse(text)); }

    Value value(char const *name, unsigned int stage) const
    {
        return tokens.getValue(QString::fromLatin1(name), IndexIdentifier::NO_INDEX, StageIdentifier(stage));
    }

    unsigned int counter(char const *name) const { return tokens.getModifiedCounter(QString::fromLatin1(name)); }
};

} // namespace

TEST_F(ProjectTokens, listBuiltInOnesAndThoseOfTheProject)
{
    import("force [kN],n,note,when,conc [mg/L]\n1.5,7,x,2017-07-26,3.5\n");
    std::vector<TokenInfo> list;

    tokens.getTokens(&list);

    std::vector<TokenInfo> const expected = {
        {TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_INTEGER, QStringLiteral("stage"), QStringLiteral("Stage")},
        {TokenInfo::CATEGORY_PROJECT, TokenInfo::TYPE_INTEGER, QStringLiteral("stage.count"),
         QStringLiteral("Number of stages")},
        {TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_FORCE, QStringLiteral("force"), QStringLiteral("force")},
        {TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_INTEGER, QStringLiteral("n"), QStringLiteral("n")},
        {TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_STRING, QStringLiteral("note"), QStringLiteral("note")},
        {TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_DATE_TIME, QStringLiteral("when"), QStringLiteral("when")},
        {TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_DOUBLE, QStringLiteral("conc"), QStringLiteral("conc [mg/L]")}};
    EXPECT_EQ(list, expected);
}

TEST_F(ProjectTokens, giveNumbersInTheBaseUnitAndShowTheUnitOfTheFile)
{
    import("force [kN],T [F]\n1.5,212\n");

    EXPECT_EQ(value("force", 1).getDouble(), 1500.0);
    EXPECT_EQ(value("force", 1).getUnitData().getUnitName(), QStringLiteral("kN"));
    EXPECT_DOUBLE_EQ(value("T", 1).getDouble(), 100.0);
}

TEST_F(ProjectTokens, giveValuesOfEachType)
{
    import("v,n,note,when\n1.5,7,x,2017-07-26 17:00:00\n");

    EXPECT_EQ(value("v", 1), Value(1.5, nullptr));
    EXPECT_EQ(value("n", 1), Value(7));
    EXPECT_EQ(value("note", 1), Value(QStringLiteral("x")));
    EXPECT_EQ(value("when", 1).getDateTime(), QDateTime(QDate(2017, 7, 26), QTime(17, 0), Qt::UTC));
}

TEST_F(ProjectTokens, areUnknownWithoutAToken)
{
    import("a\n1\n");

    EXPECT_EQ(value("b", 1), Value::UNKNOWN);
    EXPECT_EQ(tokens.getValue(QStringLiteral("b"), IndexIdentifier(0), StageIdentifier(1)), Value::UNKNOWN);
    EXPECT_EQ(tokens.getModifiedCounter(QStringLiteral("b")), 0u);
}

TEST_F(ProjectTokens, areInvalidWithoutAValueAtTheStage)
{
    import("a,b\n1,x\n,y\n");

    EXPECT_EQ(value("a", 2), Value::INVALID);
    EXPECT_EQ(value("a", 3), Value::INVALID);
    EXPECT_EQ(tokens.getValue(QStringLiteral("a"), IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
              Value::INVALID);
}

TEST_F(ProjectTokens, areInvalidWithAnIndex)
{
    import("a\n1\n");

    EXPECT_EQ(tokens.getValue(QStringLiteral("a"), IndexIdentifier(0), StageIdentifier(1)), Value::INVALID);
    EXPECT_EQ(tokens.getValue(QStringLiteral("stage"), IndexIdentifier(0), StageIdentifier(1)), Value::INVALID);
}

TEST_F(ProjectTokens, tellTheStage)
{
    import("a\n1\n2\n");

    EXPECT_EQ(value("stage", 2), Value(2));
    EXPECT_EQ(value("stage", 3), Value::INVALID);
    EXPECT_EQ(value("stage.count", 1), Value(2));
    EXPECT_EQ(tokens.getValue(QStringLiteral("stage.count"), IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
              Value(2));
}

TEST_F(ProjectTokens, lendNothing)
{
    import("a\n1\n");

    EXPECT_EQ(tokens.getImage(QStringLiteral("a")), nullptr);
    EXPECT_EQ(tokens.getChart(QStringLiteral("a")), nullptr);
    EXPECT_EQ(tokens.getSnapshot(QStringLiteral("a")), nullptr);
}

TEST_F(ProjectTokens, followTheProjectAndMoveTheCounterOfWhatChanged)
{
    import("a,b\n1,x\n2,y\n");
    EXPECT_EQ(value("a", 2), Value(2));
    unsigned int const a = counter("a");
    unsigned int const b = counter("b");

    import("a,b\n1,x\n5,y\n");

    EXPECT_EQ(value("a", 2), Value(5));
    EXPECT_NE(counter("a"), a);
    EXPECT_EQ(counter("b"), b);
}

TEST_F(ProjectTokens, keepTheirCountersWhenNothingChanged)
{
    import("a,b\n1,x\n2,y\n");
    std::vector<unsigned int> const before = {counter("a"), counter("b"), counter("stage"), counter("stage.count")};

    import("a,b\n1,x\n2,y\n");

    EXPECT_EQ((std::vector<unsigned int>{counter("a"), counter("b"), counter("stage"), counter("stage.count")}),
              before);
}

TEST_F(ProjectTokens, moveTheCountersOfTheStagesWithTheStages)
{
    import("a\n1\n2\n");
    unsigned int const stage = counter("stage");
    unsigned int const count = counter("stage.count");

    import("b\n1\n2\n3\n");

    EXPECT_NE(counter("stage"), stage);
    EXPECT_NE(counter("stage.count"), count);
    EXPECT_EQ(counter("a"), 1u);
}

TEST_F(ProjectTokens, followChangesByAnotherConnection)
{
    import("a\n1\n2\n");
    EXPECT_EQ(value("a", 2), Value(2));
    unsigned int const before = counter("a");

    Project(path(), OpenMode_t::WRITE).importTable(parse("a\n1\n7\n"));
    while (counter("a") == before) { // up to a millisecond late
    }

    EXPECT_EQ(value("a", 2), Value(7));
}

TEST_F(ProjectTokens, areRightForMoreStagesThanAreKept)
{
    std::string text = "a,b\n";
    for (int row = 1; row <= 50; ++row) {
        text += std::to_string(row * row) + ",x\n";
    }
    import(text);

    for (int round = 0; round < 2; ++round) {
        for (unsigned int stage = 1; stage <= 50; ++stage) {
            EXPECT_EQ(value("a", stage), Value(static_cast<int>(stage * stage)));
        }
    }
}

TEST_F(ProjectTokens, bearAnIntegerThatIsTooLarge)
{
    CsvTable table = parse("a\n1\n2\n");
    table.columns[0].integers[1] = 1LL << 40;
    project.importTable(table);

    EXPECT_EQ(value("a", 1), Value(1));
    EXPECT_EQ(value("a", 2), Value::INVALID);
}
