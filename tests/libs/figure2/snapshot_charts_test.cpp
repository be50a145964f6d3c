// What a snapshot keeps of the chart interface of its source.
#include "snapshot_fixture.h"

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

/// A chart of way and force, the way measured left, over the time; the time is offered in a group.
class SnapshotCharts : public testing::Test
{
protected:
    SnapshotCharts()
    {
        live.tokensX = {DataToken("stage"), DataToken("time", QString("clock"))};
        figure.setChartInterface(&live);
        addGenericChart(figure, "time", {DataToken("way", QString("left")), DataToken("force")});
    }

    static std::string saved(SnapshotChartInterface const &charts)
    {
        return Support::streamOf([&](IO::OutStream &stream) { charts.save(&stream); });
    }
    static void load(SnapshotChartInterface &charts, std::string const &bytes)
    {
        Support::readFrom(bytes, [&](IO::InStream &stream) { charts.load(&stream); });
    }
    static std::string legendText(SnapshotChartInterface &charts, DataToken const &token, bool withGroup)
    {
        ChartParameters parameters;
        parameters.setShowGroupName(withGroup);
        return charts.getLegendDescription(token, parameters).toStdString();
    }
    static void expectAnswers(SnapshotChartInterface &charts)
    {
        DataToken const way("way", QString("left"));
        ChartParameters proposal;
        EXPECT_EQ(charts.getTokenName(way), "live name way of left");
        EXPECT_EQ(charts.getTokenDescription(way), "live description way of left");
        EXPECT_EQ(legendText(charts, way, false), "live legend way of left");
        EXPECT_EQ(legendText(charts, way, true), "live legend with group way of left");
        EXPECT_EQ(charts.getTokenUnit(way), UnitData(uLength));
        ASSERT_TRUE(charts.getDefaultParameters(way, &proposal));
        EXPECT_EQ(proposal.getStyle(), ChartParameters::STYLE_BARS);

        EXPECT_EQ(charts.getTokenUnit(DataToken("force")), UnitData());
        EXPECT_FALSE(charts.getDefaultParameters(DataToken("force"), &proposal));
        EXPECT_EQ(charts.getTokenDescription(DataToken("time", QString("clock"))), "live description time of clock");
        EXPECT_EQ(charts.getTokenDescription(DataToken("time")), "live description time");
    }

    LiveCharts live;
    Figure figure;
};

TEST_F(SnapshotCharts, areOfferedAsFarAsTheyAreShown)
{
    SnapshotChartInterface charts(&figure);
    EXPECT_EQ(charts.getTokensX(), std::vector<DataToken>{DataToken("time", QString("clock"))});
    EXPECT_EQ(charts.getTokensY(), (std::vector<DataToken>{DataToken("force"), DataToken("way", QString("left"))}));
}

TEST_F(SnapshotCharts, answerAsTheirSourceDid)
{
    SnapshotChartInterface charts(&figure);
    expectAnswers(charts);
}

TEST_F(SnapshotCharts, knowAnXTokenThatIsNotOfferedByItsName)
{
    live.tokensX.clear();
    SnapshotChartInterface charts(&figure);
    EXPECT_EQ(charts.getTokensX(), std::vector<DataToken>{DataToken("time")});
    EXPECT_EQ(charts.getTokenDescription(DataToken("time")), "live description time");
}

TEST_F(SnapshotCharts, haveTheFirstOfTheXTokensWithTheName)
{
    live.tokensX = {DataToken("time", QString("b")), DataToken("time", QString("a"))};
    SnapshotChartInterface charts(&figure);
    EXPECT_EQ(charts.getTokensX(), std::vector<DataToken>{DataToken("time", QString("b"))});
}

TEST_F(SnapshotCharts, keepTokensApartThatDifferInTheirGroupsOnly)
{
    addGenericChart(figure, "", {DataToken("way", QString("right")), DataToken("way", QString("left"))});
    SnapshotChartInterface charts(&figure);
    EXPECT_EQ(namesOf(charts.getTokensY()), (Names{"force", "way", "way"}));
    EXPECT_EQ(charts.getTokenDescription(DataToken("way", QString("right"))), "live description way of right");
    EXPECT_EQ(charts.getTokenDescription(DataToken("way", QString("left"))), "live description way of left");
}

TEST_F(SnapshotCharts, keepTokensApartThatDifferInTheirCategoryOnly)
{
    DataToken strain("way");
    strain.setCategory(TokenInfo::CATEGORY_STRAIN);
    DataToken point("way");
    point.setCategory(TokenInfo::CATEGORY_POINT);
    addGenericChart(figure, "", {strain, point});
    EXPECT_EQ(namesOf(SnapshotChartInterface(&figure).getTokensY()), (Names{"force", "way", "way", "way"}));
}

TEST_F(SnapshotCharts, answerForAnotherTokenOfTheSameName)
{
    SnapshotChartInterface charts(&figure);
    EXPECT_EQ(charts.getTokenDescription(DataToken("way")), "live description way of left");
    EXPECT_EQ(charts.getTokenDescription(DataToken("way", {"a", "b"})), "live description way of left");
}

TEST_F(SnapshotCharts, answerForATokenThatIsKnownInAnotherCategoryOnly)
{
    DataToken strain("strain");
    strain.setCategory(TokenInfo::CATEGORY_STRAIN);
    addGenericChart(figure, "", {strain});
    SnapshotChartInterface charts(&figure);
    EXPECT_EQ(charts.getTokenDescription(DataToken("strain")), "live description strain");
}

TEST_F(SnapshotCharts, answerForAnUnknownTokenByItsName)
{
    SnapshotChartInterface charts(&figure);
    ChartParameters parameters;
    DataToken const unknown("zebra", QString("left"));
    EXPECT_EQ(charts.getTokenName(unknown), "zebra");
    EXPECT_EQ(charts.getTokenDescription(unknown), "zebra");
    EXPECT_EQ(legendText(charts, unknown, true), "zebra");
    EXPECT_EQ(charts.getTokenUnit(unknown), UnitData());
    EXPECT_FALSE(charts.getDefaultParameters(unknown, &parameters));
}

TEST_F(SnapshotCharts, askForWhatTheyDoNotKnowYet)
{
    SnapshotChartInterface charts(&figure);
    Figure second;
    LiveCharts other;
    other.word = "other";
    second.setChartInterface(&other);
    addGenericChart(second, "force", {DataToken("force"), DataToken("speed")});

    charts.merge(&second);

    EXPECT_EQ(charts.getTokenDescription(DataToken("force")), "live description force");
    EXPECT_EQ(charts.getTokenDescription(DataToken("speed")), "other description speed");
    EXPECT_EQ(namesOf(charts.getTokensX()), (Names{"force", "time"}));
    EXPECT_EQ(namesOf(charts.getTokensY()), (Names{"force", "speed", "way"}));

    int const asked = live.asked;
    charts.merge(&figure);
    EXPECT_EQ(live.asked, asked);
}

TEST_F(SnapshotCharts, needAChartInterface)
{
    Figure const without;
    EXPECT_EQ(Support::thrownText<ProgError>([&] {
                  SnapshotChartInterface charts(&without);
              }).find("Zem::Fig2::SnapshotChartInterface::merge (fig_snapshot_data:"),
              0U);
    EXPECT_EQ(Support::progError([&] { SnapshotChartInterface charts(&without); }),
              "fig_snapshot_data: Figure chart interface not set");
    SnapshotChartInterface charts;
    EXPECT_THROW(charts.merge(&without), ProgError);
}

TEST_F(SnapshotCharts, takeNoNoticeOfTokensInUse)
{
    SnapshotChartInterface charts;
    charts.registerChartToken("GENERIC_CHART/a/b");
    charts.unregisterChartToken("GENERIC_CHART/a/b");
    EXPECT_TRUE(charts.getChartTokens().empty());
}

TEST_F(SnapshotCharts, areCopiedWithoutTheirFigures)
{
    auto charts = std::make_unique<SnapshotChartInterface>(&figure);
    charts->registerChartToken("GENERIC_CHART/a/b");
    Figure shown;
    shown.setChartInterface(charts.get());
    SnapshotChartInterface copy(*charts);
    charts.reset();
    expectAnswers(copy);
    EXPECT_TRUE(copy.getChartTokens().empty());
}

TEST_F(SnapshotCharts, comeBackFromAStream)
{
    SnapshotChartInterface charts;
    Figure other;
    other.setChartInterface(&live);
    addGenericChart(other, "", {DataToken("gone")});
    SnapshotChartInterface read(&other);

    load(read, saved(SnapshotChartInterface(&figure)));

    expectAnswers(read);
    EXPECT_EQ(namesOf(read.getTokensX()), Names{"time"});
    EXPECT_EQ(namesOf(read.getTokensY()), (Names{"force", "way"}));
    EXPECT_EQ(read.getTokenDescription(DataToken("gone")), "gone");
}

/// The blocks of one token, "way", with what is told about it.
BlockCrafter craftedTable(unsigned int tableVersion, unsigned int count, unsigned int answersVersion)
{
    ChartParameters proposal;
    proposal.setStyle(ChartParameters::STYLE_POINTS);
    BlockCrafter crafter;
    crafter.block(tableVersion, Payload().u(count));
    crafter.add([](IO::OutStream &stream) { DataToken("way").save(&stream); });
    crafter.block(answersVersion, Payload().b(true).b(false).s("name").s("described").s("short").s("long").b(true));
    return crafter.add([&proposal](IO::OutStream &stream) {
        UnitData(uLength).save(&stream);
        proposal.save(&stream);
    });
}

TEST_F(SnapshotCharts, areReadFieldByField)
{
    SnapshotChartInterface charts;
    load(charts, craftedTable(1, 1, 1).bytes());
    DataToken const way("way");
    ChartParameters proposal;
    EXPECT_EQ(charts.getTokensX(), std::vector<DataToken>{way});
    EXPECT_TRUE(charts.getTokensY().empty());
    EXPECT_EQ(charts.getTokenName(way), "name");
    EXPECT_EQ(charts.getTokenDescription(way), "described");
    EXPECT_EQ(legendText(charts, way, false), "short");
    EXPECT_EQ(legendText(charts, way, true), "long");
    EXPECT_EQ(charts.getTokenUnit(way), UnitData(uLength));
    ASSERT_TRUE(charts.getDefaultParameters(way, &proposal));
    EXPECT_EQ(proposal.getStyle(), ChartParameters::STYLE_POINTS);
    EXPECT_EQ(saved(charts), craftedTable(1, 1, 1).bytes());
}

TEST_F(SnapshotCharts, refuseDamageAndKeepWhatTheyKnow)
{
    SnapshotChartInterface charts(&figure);
    for (BlockCrafter const &damaged :
         {craftedTable(2, 1, 1), craftedTable(0, 1, 1), craftedTable(1, 1, 2), craftedTable(1, 4294967295U, 1)})
        EXPECT_THROW(load(charts, damaged.bytes()), IO::StreamException);
    expectAnswers(charts);
}

} // namespace
} // namespace Zem::Fig2
