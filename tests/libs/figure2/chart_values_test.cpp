// The values that charts offer to labels.
#include "generic_chart_fixture.h"
#include "label_fixture.h"

#include <ZemTokenContainer.h>

#include <cmath>

namespace Zem::Fig2 {
namespace {

Value number(double value)
{
    return Value(value, static_cast<Unit const *>(nullptr));
}

class ChartValues : public ChartTest
{
protected:
    ChartValues()
    {
        // Between the points are two gaps.
        show({{1, 10}, {DBL_MAX, -5}, {2, 20}, {-7, DBL_MAX}, {4, 60}});
    }
    Value value(char const *token) const { return chart.getValue(stage, &data, QString::fromUtf8(token)); }
    /// The container that the data own.
    void store(char const *name, Value const &value)
    {
        if (!data.getTokenContainer())
            data.setTokenContainer(new TokenContainer);
        data.getTokenContainer()->setValue(TokenInfo(TokenInfo::TYPE_STRING, name, name), value);
    }

    Support::TestTokens ofData;
};

TEST_F(ChartValues, areStatisticsOfTheValidPoints)
{
    EXPECT_EQ(value("NAME_a"), Value(QStringLiteral("a")));
    EXPECT_EQ(value("MIN_X_a"), number(1));
    EXPECT_EQ(value("MIN_Y_a"), number(10));
    EXPECT_EQ(value("MAX_X_a"), number(4));
    EXPECT_EQ(value("MAX_Y_a"), number(60));
    EXPECT_EQ(value("AVERAGE_a"), number(30));
    // (400 + 100 + 900) / 2
    EXPECT_EQ(value("VARIANCE_a"), number(700));
    EXPECT_EQ(value("STD_DEVIATION_a"), number(std::sqrt(700)));
}

TEST_F(ChartValues, carryNoUnit)
{
    data.setUnitY(UnitData(uForce));

    EXPECT_FALSE(value("MAX_Y_a").getUnitData().hasUnit());
}

TEST_F(ChartValues, nameADatasetByItsDisplayText)
{
    data.getDataset("a")->setDisplayText("Force of the probe");

    EXPECT_EQ(value("NAME_a"), Value(QStringLiteral("Force of the probe")));
}

TEST_F(ChartValues, ofNoPointAreAnAverageOfZeroAndNothingElse)
{
    addDataset(data, "empty");
    addDataset(data, "gaps", {{DBL_MAX, 1}, {1, DBL_MAX}});

    for (QString const id : {"empty", "gaps"}) {
        for (QString const prefix : {"MIN_X_", "MIN_Y_", "MAX_X_", "MAX_Y_", "VARIANCE_", "STD_DEVIATION_"})
            EXPECT_EQ(chart.getValue(stage, &data, prefix + id), Value()) << prefix.toStdString();
        EXPECT_EQ(chart.getValue(stage, &data, "AVERAGE_" + id), number(0));
        EXPECT_EQ(chart.getValue(stage, &data, "NAME_" + id), Value(id));
    }
}

TEST_F(ChartValues, ofOnePointHaveNoVariance)
{
    show({{3, 7}, {DBL_MAX, 9}});

    EXPECT_EQ(value("AVERAGE_a"), number(7));
    EXPECT_EQ(value("MIN_X_a"), number(3));
    EXPECT_EQ(value("MAX_X_a"), number(3));
    EXPECT_EQ(value("VARIANCE_a"), Value());
    EXPECT_EQ(value("STD_DEVIATION_a"), Value());
}

TEST_F(ChartValues, ofTwoPointsHaveTheVarianceOfASample)
{
    show({{0, 1}, {1, 3}});

    // Each is 1 from the mean: 2 / (2 - 1). Of the whole population it would be 1.
    EXPECT_EQ(value("VARIANCE_a"), number(2));
    EXPECT_EQ(value("STD_DEVIATION_a"), number(std::sqrt(2)));
}

TEST_F(ChartValues, ofEqualPointsDoNotVary)
{
    show({{0, 3}, {1, 3}});

    EXPECT_EQ(value("VARIANCE_a"), number(0));
    EXPECT_EQ(value("STD_DEVIATION_a"), number(0));
}

TEST_F(ChartValues, beginWithAPrefixAsItIsWritten)
{
    for (char const *token : {"", "a", "NAME_", "NAME_b", "name_a", "MIN_a", "XMIN_X_a", "NAME_a ", "MIN_X_A"})
        EXPECT_EQ(value(token), Value()) << token;
}

TEST_F(ChartValues, areNotShadowedByAnId)
{
    addDataset(data, "MIN_X_a", {{8, 9}});
    addDataset(data, "", {{5, 6}});

    EXPECT_EQ(value("MIN_X_a"), number(1));
    EXPECT_EQ(value("MIN_X_MIN_X_a"), number(8));
    EXPECT_EQ(value("MIN_X_"), number(5));
}

TEST_F(ChartValues, holdTheUnitsOfTheAxesWithAndWithoutData)
{
    EXPECT_EQ(chart.getValue(stage, nullptr, "X_UNIT"), Value(QStringLiteral("mm")));
    data.setUnitX(UnitData(uTime));
    data.setUnitY(UnitData());
    update();

    EXPECT_EQ(chart.getValue(stage, nullptr, "X_UNIT"), Value(QStringLiteral("s")));
    EXPECT_EQ(value("X_UNIT"), Value(QStringLiteral("s")));
    EXPECT_EQ(value("Y_UNIT"), Value());
    EXPECT_EQ(chart.getValue(stage, nullptr, "MIN_X_a"), Value());
}

TEST_F(ChartValues, comeFromTheTokensOfTheDataFirst)
{
    ofData.set("MIN_X_a", Value(1000));
    ofData.set("X_UNIT", Value(QStringLiteral("never")));
    ofData.set("only", Value(2000));
    store("only", Value(1));
    store("stored", Value(3000));
    store("MAX_X_a", Value(4000));
    data.setTokenInterface(&ofData);

    EXPECT_EQ(value("MIN_X_a"), Value(1000));
    EXPECT_EQ(value("X_UNIT"), Value(QStringLiteral("mm")));
    EXPECT_EQ(value("only"), Value(2000));
    EXPECT_EQ(value("stored"), Value(3000));
    EXPECT_EQ(value("MAX_X_a"), Value(4000));
    EXPECT_EQ(value("MAX_Y_a"), number(60));
}

TEST_F(ChartValues, passOverTokensWithoutValue)
{
    ofData.setAt(2, "MIN_X_a", Value(1000)); // invalid at this stage
    ofData.setAt(2, "stored", Value(1000));
    store("stored", Value(3000));
    data.setTokenInterface(&ofData);

    EXPECT_EQ(value("MIN_X_a"), number(1));
    EXPECT_EQ(value("stored"), Value(3000));
}

TEST_F(ChartValues, areAskedForAtTheStage)
{
    ofData.setAt(2, "name", Value(2));
    data.setTokenInterface(&ofData);

    EXPECT_EQ(chart.getValue(StageIdentifier(2), &data, "name"), Value(2));
}

TEST_F(ChartValues, areKeptUntilTheNextUpdate)
{
    EXPECT_EQ(value("MAX_X_a"), number(4));
    EXPECT_EQ(value("MAX_X_b"), Value());
    show({{100, 1}});
    addDataset(data, "b", {{100, 1}});

    EXPECT_EQ(value("MAX_X_a"), number(4));
    EXPECT_EQ(chart.getValue(stage, nullptr, "MAX_X_a"), number(4));
    EXPECT_EQ(value("MAX_X_b"), Value());
    update();
    EXPECT_EQ(value("MAX_X_a"), number(100));
    EXPECT_EQ(value("MAX_X_b"), number(100));
}

TEST_F(ChartValues, areForgottenByAChartThatLosesItsToken)
{
    EXPECT_EQ(value("MAX_X_a"), number(4));
    chart.setToken("");
    update();

    EXPECT_EQ(chart.getValue(stage, nullptr, "MAX_X_a"), Value());
}

TEST_F(ChartValues, thatAreMissingWithoutDataAreNotKept)
{
    EXPECT_EQ(chart.getValue(stage, nullptr, "MAX_X_a"), Value());

    EXPECT_EQ(value("MAX_X_a"), number(4));
}

TEST_F(ChartValues, areNotCopiedWithTheChart)
{
    EXPECT_EQ(value("MAX_X_a"), number(4));
    std::unique_ptr<Chart> const copy(chart.copy());
    show({{100, 1}});

    EXPECT_EQ(copy->getValue(stage, &data, "MAX_X_a"), number(100));
}

class ChartTokenList : public ChartValues
{
protected:
    static std::string listOf(ChartBase const &chart, ChartData const *data)
    {
        std::vector<TokenInfo> tokens{{TokenInfo::TYPE_STRING, "before", "before"}};
        chart.getTokens(data, &tokens);
        std::string list;
        for (TokenInfo const &token : tokens)
            list += token.getName().toStdString() + "=" + token.getText().toStdString() + ", ";
        return list;
    }
};

constexpr char const *UNITS = "before=before, X_UNIT=unit axis x, Y_UNIT=unit axis y, ";

TEST_F(ChartTokenList, beginsWithTheUnits)
{
    EXPECT_EQ(listOf(chart, nullptr), UNITS);
    EXPECT_EQ(listOf(chart, &data), UNITS);
}

TEST_F(ChartTokenList, goesOnWithTheTokensOfTheData)
{
    ofData.set("name", Value(1));
    ofData.set("zone", Value(1));
    store("stored", Value(1));
    data.setTokenInterface(&ofData);

    EXPECT_EQ(listOf(chart, &data), UNITS + std::string("name=name, zone=zone, "));
}

TEST_F(ChartTokenList, endsWithTheStatisticsOfEachDataset)
{
    addDataset(data, "Z");
    data.setComputeStatistics(true);

    EXPECT_EQ(listOf(chart, &data),
              UNITS + std::string("NAME_Z=name, MIN_X_Z=minimum x, MIN_Y_Z=minimum y, MAX_X_Z=maximum x, "
                                  "MAX_Y_Z=maximum y, AVERAGE_Z=average, VARIANCE_Z=variance, "
                                  "STD_DEVIATION_Z=standard deviation, "
                                  "NAME_a=name, MIN_X_a=minimum x, MIN_Y_a=minimum y, MAX_X_a=maximum x, "
                                  "MAX_Y_a=maximum y, AVERAGE_a=average, VARIANCE_a=variance, "
                                  "STD_DEVIATION_a=standard deviation, "));
}

TEST_F(ChartTokenList, tellsTheKindOfEachToken)
{
    data.setComputeStatistics(true);
    std::vector<TokenInfo> list;

    chart.getTokens(&data, &list);

    ASSERT_EQ(list.size(), 10U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(static_cast<int>(list[i].getCategory()), 8);
        EXPECT_EQ(static_cast<int>(list[i].getType()), 0);
    }
    EXPECT_EQ(list[2].getType(), TokenInfo::TYPE_STRING);
    for (std::size_t i = 3; i < 10; ++i)
        EXPECT_EQ(list[i].getType(), TokenInfo::TYPE_DOUBLE) << i;
}

class GenericChartValues : public ChartTokenList
{
protected:
    GenericChartValues()
    {
        generic.setTokenX("time");
        generic.setData({{DataToken("a", std::vector<QString>{"Left", "Top"}), lookOf("A")}});
        addDataset(data, "unused", {{1, 1}, {2, 2}});
    }
    Value genericValue(char const *token) const { return generic.getValue(stage, &data, QString::fromUtf8(token)); }

    GenericChart generic;
};

TEST_F(GenericChartValues, areOfItsOwnDatasetsOnly)
{
    data.setComputeStatistics(true);

    EXPECT_EQ(genericValue("MAX_X_a"), number(4));
    EXPECT_EQ(genericValue("MAX_X_unused"), Value());
    EXPECT_EQ(genericValue("NAME_unused"), Value());
    EXPECT_EQ(listOf(generic, &data).find("unused"), std::string::npos);
    EXPECT_NE(listOf(generic, &data).find("MAX_X_a"), std::string::npos);
}

TEST_F(GenericChartValues, nameADatasetWithItsGroups)
{
    data.getDataset("a")->setDisplayText("Force");

    EXPECT_EQ(genericValue("NAME_a"), Value(QStringLiteral("Force - Left - Top")));
    EXPECT_EQ(generic.getDatasetDescription(data.getDataset("unused")), "unused");
}

TEST_F(GenericChartValues, beginWithThatOfTheXAxis)
{
    std::vector<TokenInfo> list;

    generic.getTokens(nullptr, &list);

    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].getName(), "X_VALUE");
    EXPECT_EQ(list[0].getText(), "value axis x");
    EXPECT_EQ(static_cast<int>(list[0].getCategory()), 0);
    EXPECT_EQ(static_cast<int>(list[0].getType()), 0);
    EXPECT_EQ(list[1].getName(), "X_UNIT");
    EXPECT_EQ(list[2].getName(), "Y_UNIT");
}

TEST_F(GenericChartValues, describeTheXTokenInTheWordsOfTheApplication)
{
    Calls calls;
    ChartOffer offer(&calls);
    Figure figure;
    EXPECT_EQ(genericValue("X_VALUE"), Value());
    auto *shown = new GenericChart(generic);
    figure.getRoot()->addChild(shown);
    EXPECT_EQ(shown->getValue(stage, &data, "X_VALUE"), Value());

    figure.setChartInterface(&offer);

    EXPECT_EQ(shown->getValue(stage, &data, "X_VALUE"), Value(QStringLiteral("the time")));
    EXPECT_EQ(shown->getValue(stage, nullptr, "X_VALUE"), Value(QStringLiteral("the time")));
    EXPECT_EQ(shown->getValue(stage, nullptr, "X_VALUES"), Value());
    shown->setTokenX("");
    EXPECT_EQ(shown->getValue(stage, nullptr, "X_VALUE"), Value());
}

TEST_F(GenericChartValues, haveTheXValueFromTheDataFirst)
{
    ofData.set("X_VALUE", Value(QStringLiteral("own")));
    data.setTokenInterface(&ofData);

    EXPECT_EQ(genericValue("X_VALUE"), Value(QStringLiteral("own")));
}

class ChartLabel : public ChartValues
{
protected:
    ChartLabel()
    {
        label.setAutoSize(false);
        label.setOrigin({200, 50.3});
        label.setSize({20, 10});
        label.connect(&chart, QString());
        update();
    }
    std::string resolved(char const *text)
    {
        label.setText(QString::fromUtf8(text));
        label.computeDynamicData(stage, &tokens);
        return label.resolveTokensInText(stage, &tokens, QString::fromUtf8(text)).toStdString();
    }
    bool isLabelValid() const { return label.isDataValid(stage, &tokens); }

    TestLabel label;
};

TEST_F(ChartLabel, findsTheValuesOfItsChart)
{
    EXPECT_EQ(resolved("$NAME_a$ $X_UNIT$"), "a&nbsp;mm");
    EXPECT_EQ(resolved("$.1MAX_Y_a$"), "60.0");
    EXPECT_EQ(resolved("$NAME_b$"), "???");
}

TEST_F(ChartLabel, findsThemInTheTokensFirst)
{
    tokens.set("NAME_a", Value(QStringLiteral("other")));
    tokens.setAt(2, "X_UNIT", Value(QStringLiteral("other")));

    EXPECT_EQ(resolved("$NAME_a$ $X_UNIT$"), "other&nbsp;mm");
}

TEST_F(ChartLabel, findsThemInItsFirstChartThatHasThem)
{
    TestChart other;
    other.setToken("other");
    addDataset(tokens.add("other"), "b", {{1, 1}});
    label.connect(&other, QString());

    EXPECT_EQ(resolved("$NAME_a$ $NAME_b$"), "a&nbsp;b");
}

TEST_F(ChartLabel, becomesInvalidWithTheDataOfItsChart)
{
    resolved("$NAME_a$");
    EXPECT_TRUE(isLabelValid());

    tokens.touch("force");

    EXPECT_FALSE(isLabelValid());
    resolved("$NAME_a$");
    EXPECT_TRUE(isLabelValid());
}

TEST_F(ChartLabel, staysInvalidWithoutItsValue)
{
    resolved("$NAME_b$");

    EXPECT_FALSE(isLabelValid());
}

TEST_F(ChartLabel, ofAChartWithoutDataStillHasTheUnits)
{
    chart.setToken("unknown");
    update();

    EXPECT_EQ(resolved("$X_UNIT$ $NAME_a$"), "mm&nbsp;???");
}

TEST_F(ChartLabel, asksItsChartOnlyWithTokens)
{
    EXPECT_EQ(label.resolveTokensInText(stage, nullptr, "$X_UNIT$"), "???");
}

TEST_F(ChartLabel, isJoinedToTheMiddleOfItsChart)
{
    BaVec2d<double> from;
    BaVec2d<double> to;
    label.computeDynamicData(stage, &tokens);

    EXPECT_TRUE(label.computeConnectorPoints(*label.getConnectorBegin(), &tokens, &from, &to));

    expectAt(from, 190, 50.3);
    expectAt(to, 66.05, 50.3);
    EXPECT_TRUE(label.isConnectorVisible(&tokens));
}

TEST_F(ChartLabel, answersForItsChart)
{
    BaVec2d<double> from;
    BaVec2d<double> to;
    label.computeDynamicData(stage, &tokens);

    EXPECT_TRUE(chart.computeConnectorPoints(*label.getConnectorBegin(), &tokens, &from, &to));

    expectAt(from, 190, 50.3);
    expectAt(to, 66.05, 50.3);
}

/// Answers as the partner of a chart.
class Answering : public TestArea
{
public:
    bool computeConnectorPoints(Connector const *, FigureTokenInterface const *, BaVec2d<double> *from,
                                BaVec2d<double> *to) const override
    {
        *from = {1, 2};
        *to = {3, 4};
        return true;
    }
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

TEST(ChartConnector, isAnsweredByThePartnerAtEitherEnd)
{
    TestChart chart;
    Answering source;
    Answering target;
    for (Connector const *connector : {source.connect(&chart, QString()), chart.connect(&target, QString())}) {
        BaVec2d<double> from;
        BaVec2d<double> to;
        EXPECT_TRUE(chart.computeConnectorPoints(connector, nullptr, &from, &to));
        EXPECT_EQ(from, BaVec2d<double>(1, 2));
        EXPECT_EQ(to, BaVec2d<double>(3, 4));
    }
}

TEST(ChartConnector, betweenChartsHasNoPoints)
{
    TestChart chart;
    TestChart other;
    Connector const *connector = chart.connect(&other, QString());
    BaVec2d<double> from(7, 7);
    BaVec2d<double> to(8, 8);

    EXPECT_FALSE(chart.computeConnectorPoints(connector, nullptr, &from, &to));
    EXPECT_FALSE(other.computeConnectorPoints(connector, nullptr, &from, &to));
    EXPECT_EQ(from, BaVec2d<double>(7, 7));
    EXPECT_EQ(to, BaVec2d<double>(8, 8));
}

} // namespace
} // namespace Zem::Fig2
