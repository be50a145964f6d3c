// How generic charts compose their token and tell the application of it.
#include "generic_chart_fixture.h"
#include "tree_builders.h"


namespace Zem::Fig2 {
namespace {

using Names = std::vector<std::string>;

class GenericChartToken : public testing::Test
{
protected:
    GenericChartToken() { figure->setChartInterface(offer.get()); }

    /// In the figure, with a token of time, force and way.
    GenericChart *addChart(Group *group = nullptr)
    {
        auto *chart = new GenericChart;
        chart->setTokenX("time");
        chart->setData(entriesOf({"force", "way"}));
        (group ? group : figure->getRoot())->addChild(chart);
        return chart;
    }
    void update() { figure->update(StageIdentifier(1), false); }
    Calls takeCalls() { return std::exchange(calls, {}); }

    Calls calls;
    ChartTokens tokens;
    std::unique_ptr<ChartOffer> offer = std::make_unique<ChartOffer>(&calls);
    std::unique_ptr<Figure> figure = std::make_unique<Figure>(&tokens);
};

TEST_F(GenericChartToken, needsAnXTokenAndAnEntry)
{
    GenericChart chart;
    chart.setTokenX("time");
    EXPECT_EQ(chart.getToken(), "");
    chart.setData(entriesOf({"force"}));
    EXPECT_EQ(chart.getToken(), "GENERIC_CHART/time/force");
    chart.setTokenX("");
    EXPECT_EQ(chart.getToken(), "");
    chart.setTokenX("way");
    EXPECT_EQ(chart.getToken(), "GENERIC_CHART/way/force");
    chart.setData({});
    EXPECT_EQ(chart.getToken(), "");
}

TEST_F(GenericChartToken, keepsTheNamesApartWhateverTheyHold)
{
    GenericChart chart;
    chart.setTokenX("a/b");
    chart.setData(entriesOf({"c\\", "d/\\e", "f"}));

    EXPECT_EQ(chart.getToken(), "GENERIC_CHART/a\\/b/c\\\\/d\\/\\\\e/f");

    QString tokenX;
    std::vector<QString> tokensY;
    EXPECT_TRUE(ChartInterface::parseToken(chart.getToken(), &tokenX, &tokensY));
    EXPECT_EQ(tokenX, "a/b");
    EXPECT_EQ(tokensY, (std::vector<QString>{"c\\", "d/\\e", "f"}));
}

TEST_F(GenericChartToken, isToldOfByTheFirstUpdateInAFigure)
{
    addChart();
    EXPECT_EQ(takeCalls(), Calls());

    update();
    EXPECT_EQ(takeCalls(), Calls{"add GENERIC_CHART/time/force/way"});
    figure->update(StageIdentifier(1), true);
    EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(GenericChartToken, isToldOfAsItChanges)
{
    GenericChart *chart = addChart();
    update();
    takeCalls();
    EXPECT_TRUE(chart->isValid());

    chart->setData(entriesOf({"way"}));
    EXPECT_EQ(takeCalls(), (Calls{"remove GENERIC_CHART/time/force/way", "add GENERIC_CHART/time/way"}));
    EXPECT_FALSE(chart->isValid());
    update();

    chart->setTokenX("t");
    EXPECT_EQ(takeCalls(), (Calls{"remove GENERIC_CHART/time/way", "add GENERIC_CHART/t/way"}));
    EXPECT_FALSE(chart->isValid());

    chart->setTokenX("");
    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/t/way"});
    chart->setData({});
    EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(GenericChartToken, isToldOfByASetterInAFigure)
{
    auto *chart = new GenericChart;
    figure->getRoot()->addChild(chart);

    chart->setTokenX("time");
    chart->setData(entriesOf({"force"}));

    EXPECT_EQ(calls, Calls{"add GENERIC_CHART/time/force"});
}

TEST_F(GenericChartToken, isCountedForEachChart)
{
    GenericChart *first = addChart();
    GenericChart *second = addChart();
    update();
    EXPECT_EQ(takeCalls(), Calls{"add GENERIC_CHART/time/force/way"});

    first->setTokenX("");
    EXPECT_EQ(takeCalls(), Calls());
    EXPECT_EQ(offer->getChartTokens().size(), 1U);

    second->setTokenX("");
    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
}

TEST_F(GenericChartToken, isRegisteredOnceAndTakenBackOnce)
{
    GenericChart *chart = addChart();

    chart->registerToken();
    chart->registerToken();
    EXPECT_EQ(takeCalls().size(), 1U);

    chart->unregisterToken();
    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
    chart->unregisterToken();
    EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(GenericChartToken, isTakenBackWhenTheChartLeaves)
{
    GenericChart *chart = addChart();
    update();
    takeCalls();

    figure->getRoot()->removeChild(chart);

    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
    delete chart;
    EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(GenericChartToken, isTakenBackWhenTheGroupOfTheChartLeaves)
{
    Group *group = addGroup(figure->getRoot());
    addChart(addGroup(group));
    update();
    takeCalls();

    figure->getRoot()->removeChild(group);

    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
    delete group;
    EXPECT_EQ(takeCalls(), Calls());
}

TEST_F(GenericChartToken, goesToTheInterfaceOfAnotherFigure)
{
    Calls otherCalls;
    ChartOffer otherOffer(&otherCalls);
    Figure other(&tokens);
    other.setChartInterface(&otherOffer);
    GenericChart *chart = addChart();
    update();
    takeCalls();

    figure->getRoot()->removeChild(chart);
    other.getRoot()->addChild(chart);
    other.update(StageIdentifier(1), false);

    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
    EXPECT_EQ(otherCalls, Calls{"add GENERIC_CHART/time/force/way"});
}

TEST_F(GenericChartToken, isTakenBackWhenTheFigureGoes)
{
    addChart();
    update();
    takeCalls();

    figure.reset();

    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
    EXPECT_TRUE(offer->getChartTokens().empty());
}

TEST_F(GenericChartToken, isForgottenWhenTheInterfaceGoes)
{
    GenericChart *chart = addChart();
    update();
    takeCalls();

    offer.reset();

    EXPECT_EQ(takeCalls(), Calls());
    EXPECT_EQ(chart->getToken(), "GENERIC_CHART/time/force/way");
    chart->setTokenX("t");
    update();
    figure.reset();
}

TEST_F(GenericChartToken, goesToTheNextInterfaceOfItsFigure)
{
    Calls otherCalls;
    ChartOffer other(&otherCalls);
    addChart();
    update();
    takeCalls();

    figure->setChartInterface(&other);
    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
    EXPECT_EQ(otherCalls, Calls());
    update();
    EXPECT_EQ(otherCalls, Calls{"add GENERIC_CHART/time/force/way"});
    figure->setChartInterface(nullptr);
    EXPECT_EQ(otherCalls.size(), 2U);
}

TEST_F(GenericChartToken, ofACopiedFigureCountsBesideTheFirst)
{
    addChart();
    update();
    auto copy = std::make_unique<Figure>(*figure);
    copy->update(StageIdentifier(1), false);
    EXPECT_EQ(takeCalls(), Calls{"add GENERIC_CHART/time/force/way"});

    figure.reset();
    EXPECT_EQ(takeCalls(), Calls());
    copy.reset();
    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});
}

TEST_F(GenericChartToken, ofACopyIsNotRegistered)
{
    GenericChart *chart = addChart();
    update();
    takeCalls();

    std::unique_ptr<GenericChart> const copy(chart->copy());
    EXPECT_EQ(copy->getToken(), chart->getToken());
    EXPECT_TRUE(copy->isDatasetUsed("way"));
    copy->setTokenX("t");

    EXPECT_EQ(takeCalls(), Calls());
}

class GenericChartOffer : public GenericChartToken
{
protected:
    GenericChartOffer()
    {
        chart = addChart();
        offer->tokensX = {DataToken("time")};
        offer->tokensY = {DataToken("way"), DataToken("force")};
        update();
        takeCalls();
    }
    void expectChart(std::string const &tokenX, Names const &names)
    {
        EXPECT_EQ(chart->getTokenX().toStdString(), tokenX);
        EXPECT_EQ(namesOf(*chart), names);
    }

    GenericChart *chart;
};

TEST_F(GenericChartOffer, changesNothingWhileAllIsThere)
{
    offer->tokensX.emplace_back("another");
    offer->tokensY.emplace_back("another");

    offer->tokenDeleted();

    expectChart("time", {"force", "way"});
    EXPECT_EQ(takeCalls(), Calls());
    EXPECT_TRUE(chart->isValid());
}

TEST_F(GenericChartOffer, dropsEntriesThatAreGoneAndKeepsTheOrder)
{
    chart->setData(entriesOf({"d", "a", "c", "b"}));
    takeCalls();
    offer->tokensY = {DataToken("a"), DataToken("b"), DataToken("d")};

    offer->tokenDeleted();

    expectChart("time", {"d", "a", "b"});
    EXPECT_EQ(chart->getData()[1].second.getName(), "a'");
    EXPECT_FALSE(chart->isDatasetUsed("c"));
    EXPECT_EQ(takeCalls(), (Calls{"remove GENERIC_CHART/time/d/a/c/b", "add GENERIC_CHART/time/d/a/b"}));
    EXPECT_FALSE(chart->isValid());
}

TEST_F(GenericChartOffer, putsTheFirstXTokenInThePlaceOfOneThatIsGone)
{
    offer->tokensX = {DataToken("way"), DataToken("number"), DataToken("speed")};

    offer->tokenDeleted();

    // The first of a set is the least.
    expectChart("number", {"force", "way"});
    EXPECT_EQ(takeCalls(), (Calls{"remove GENERIC_CHART/time/force/way", "add GENERIC_CHART/number/force/way"}));
    EXPECT_FALSE(chart->isValid());
}

TEST_F(GenericChartOffer, leavesAnEmptyChartWithoutAnyTokens)
{
    offer->tokensX.clear();
    offer->tokenDeleted();
    expectChart("", {"force", "way"});
    EXPECT_EQ(chart->getToken(), "");
    EXPECT_EQ(takeCalls(), Calls{"remove GENERIC_CHART/time/force/way"});

    offer->tokensY.clear();
    offer->tokenDeleted();
    expectChart("", {});
    EXPECT_EQ(takeCalls(), Calls());
    EXPECT_FALSE(chart->isDatasetUsed("force"));

    offer->tokensX = {DataToken("time")};
    offer->tokenDeleted();
    expectChart("time", {});
}

TEST_F(GenericChartOffer, findsTheXTokenByItsNameAlone)
{
    DataToken token("time", QString("group"));
    token.setCategory(TokenInfo::CATEGORY_SENSOR);
    offer->tokensX = {DataToken("a"), token};

    offer->tokenDeleted();

    expectChart("time", {"force", "way"});
}

TEST_F(GenericChartOffer, findsEntriesByAllTheyHold)
{
    DataToken grouped("force", QString("left"));
    DataToken sensor("way");
    sensor.setCategory(TokenInfo::CATEGORY_SENSOR);
    chart->setData({{grouped, lookOf("1")},
                    {DataToken("force", QString("right")), lookOf("2")},
                    {DataToken("force"), lookOf("3")},
                    {sensor, lookOf("4")},
                    {DataToken("way"), lookOf("5")}});

    offer->tokensY = {sensor, DataToken("force"), DataToken("force", QString("middle")), grouped};
    offer->tokenDeleted();

    std::string looks;
    for (auto const &[token, parameters] : chart->getData())
        looks += parameters.getName().toStdString();
    EXPECT_EQ(looks, "134");
}

TEST_F(GenericChartOffer, reachesChartsInGroups)
{
    GenericChart *nested = addChart(addGroup(addGroup(figure->getRoot())));
    offer->tokensY = {DataToken("way")};

    offer->tokenDeleted();

    EXPECT_EQ(namesOf(*nested), Names{"way"});
    expectChart("time", {"way"});
}

TEST_F(GenericChartOffer, comparesManyTokens)
{
    std::vector<QString> names;
    offer->tokensY.clear();
    for (int i = 0; i < 10000; ++i) {
        names.push_back(QStringLiteral("token %1").arg(i));
        if (i % 2 == 0)
            offer->tokensY.emplace_back(names.back());
    }
    chart->setData(entriesOf(names));

    offer->tokenDeleted();

    EXPECT_EQ(chart->getData().size(), 5000U);
    EXPECT_EQ(chart->getData()[1].first.getName(), "token 2");
}

class GenericChartEntries : public testing::Test
{
protected:
    GenericChartEntries() { chart.setTokenX("time"); }

    GenericChart chart;
};

TEST_F(GenericChartEntries, drawTheDatasetsOfTheirNames)
{
    chart.setData(entriesOf({"force", "way"}));
    ChartDataset const way("way");
    ChartDataset const other("other");

    EXPECT_EQ(chart.getChartParameters(&way), &chart.getData()[1].second);
    EXPECT_EQ(chart.getChartParameters(&other), nullptr);
    EXPECT_TRUE(chart.isDatasetUsed("force"));
    EXPECT_FALSE(chart.isDatasetUsed("time"));
    EXPECT_FALSE(chart.isDatasetUsed(""));
}

TEST_F(GenericChartEntries, ofOneNameDrawAsTheFirst)
{
    Entries entries = entriesOf({"a", "b", "a"});
    entries[2].second.setName("late");
    chart.setData(entries);
    ChartDataset const dataset("a");

    EXPECT_EQ(chart.getChartParameters(&dataset)->getName(), "a'");
    EXPECT_EQ(chart.getToken(), "GENERIC_CHART/time/a/b/a");
}

TEST_F(GenericChartEntries, areFoundWithoutAnXToken)
{
    chart.setTokenX("");
    chart.setData(entriesOf({"a"}));

    EXPECT_TRUE(chart.isDatasetUsed("a"));
}

TEST_F(GenericChartEntries, areFoundQuicklyAmongMany)
{
    std::vector<QString> names;
    for (int i = 0; i < 10000; ++i)
        names.push_back(QStringLiteral("token %1").arg(i));
    chart.setData(entriesOf(names));

    for (QString const &name : names) {
        ChartDataset const dataset(name);
        ASSERT_TRUE(chart.isDatasetUsed(name));
        ASSERT_EQ(chart.getChartParameters(&dataset)->getName(), name + QLatin1Char('\''));
    }

}

TEST_F(GenericChartEntries, countInItsSize)
{
    unsigned int const empty = chart.getEstimatedObjectSize();
    EXPECT_GE(empty, sizeof(GenericChart));

    chart.setData(entriesOf({"a", "b"}));

    EXPECT_GE(chart.getEstimatedObjectSize(), empty + 2 * sizeof(GenericChart::Entry));
}

TEST_F(GenericChartEntries, chooseTheValuesThatAreShown)
{
    ChartTokens tokens;
    ChartData &data = tokens.add("GENERIC_CHART/time/a");
    addDataset(data, "a", {{1, 10}, {3, 20}});
    addDataset(data, "b", {{-100, -100}, {100, 100}});
    chart.setSize({100, 50});
    chart.setData(entriesOf({"a"}));

    chart.computeDynamicData(StageIdentifier(1), &tokens);

    EXPECT_EQ(chart.getAxisX().getRange(), BaVec2d<double>(1, 3));
    EXPECT_EQ(chart.getAxisY().getRange(), BaVec2d<double>(10, 20));
    EXPECT_EQ(tokens.onLoan(), 0);
}

class PlainChart : public GenericChartEntries
{
protected:
    PlainChart()
    {
        chart.setData(entriesOf({"a", "missing"}));
        chart.setLeftMargin(7);
        chart.setSize({30, 40});
        addDataset(data, "a");
        addDataset(data, "other");
    }

    ChartData data;
};

TEST_F(PlainChart, takesOverWhatAGenericChartShows)
{
    Chart const plain(chart, &data);

    EXPECT_EQ(plain.getType(), Element::CHART);
    EXPECT_EQ(plain.getToken(), "GENERIC_CHART/time/a/missing");
    EXPECT_EQ(plain.getLeftMargin(), 7);
    EXPECT_EQ(plain.getSize(), BaVec2d<double>(30, 40));
    EXPECT_EQ(data.getDataset("a")->getParameters().getName(), "a'");
    EXPECT_EQ(data.getDataset("other")->getParameters().getName(), "");
    EXPECT_TRUE(plain.isDatasetUsed("other"));
    EXPECT_NE(plain.getId(), chart.getId());
}

TEST_F(PlainChart, needsNoData)
{
    Chart const plain(chart, nullptr);

    EXPECT_EQ(plain.getToken(), "GENERIC_CHART/time/a/missing");
    EXPECT_EQ(data.getDataset("a")->getParameters().getName(), "");
}

} // namespace
} // namespace Zem::Fig2
