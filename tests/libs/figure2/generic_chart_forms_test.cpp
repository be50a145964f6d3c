// The stored forms of generic charts.
#include "generic_chart_fixture.h"

#include <ZemParse.h>

namespace Zem::Fig2 {
namespace {

using Names = std::vector<std::string>;
using Support::blockForm;
using Support::loadBlocks;
using Support::loadParameters;
using Support::parameterForm;
using Support::thrownText;

class GenericChartForms : public testing::Test
{
protected:
    GenericChartForms()
    {
        chart.setTokenX("time");
        Entries entries = entriesOf({"a \"b\"", "c;d=e"});
        entries[0].first.setGroups({"Left", "Top"});
        entries[0].first.setCategory(TokenInfo::CATEGORY_SENSOR);
        entries[1].second.setStyle(ChartParameters::STYLE_BARS);
        chart.setData(entries);
        chart.setLeftMargin(3);
    }
    /// Changed in everything that the forms hold.
    static void spoil(GenericChart &other)
    {
        other.setTokenX("before");
        other.setData(entriesOf({"x", "y", "z"}));
    }
    static void expectSpoilt(GenericChart const &other)
    {
        EXPECT_EQ(other.getTokenX(), "before");
        EXPECT_EQ(namesOf(other), (Names{"x", "y", "z"}));
        EXPECT_EQ(other.getToken(), "GENERIC_CHART/before/x/y/z");
        ChartDataset const dataset("z");
        EXPECT_EQ(other.getChartParameters(&dataset), &other.getData()[2].second);
    }
    void expectSame(GenericChart const &read)
    {
        EXPECT_EQ(read.getTokenX(), "time");
        EXPECT_EQ(read.getToken(), chart.getToken());
        EXPECT_EQ(namesOf(read), namesOf(chart));
        ASSERT_EQ(read.getData().size(), 2U);
        EXPECT_EQ(read.getData()[0].first, chart.getData()[0].first);
        EXPECT_EQ(read.getData()[1].second.getName(), "c;d=e'");
        EXPECT_EQ(read.getData()[1].second.getStyle(), ChartParameters::STYLE_BARS);
        EXPECT_EQ(read.getLeftMargin(), 3);
        EXPECT_TRUE(read.isDatasetUsed("c;d=e"));
        EXPECT_FALSE(read.isDatasetUsed("x"));
    }

    GenericChart chart;
};

TEST_F(GenericChartForms, listAnEntryUnderItsNumber)
{
    auto const entryText = [this](char const *key, std::size_t index) {
        auto const &[token, parameters] = chart.getData()[index];
        return Parse::createStringVector(key, {token.getParameterString(""), parameters.getParameterString("")});
    };

    EXPECT_EQ(chart.getParameterString(), chart.ChartBase::getParameterString() +
                                              Parse::createString("token_x", "time") + entryText("chart_dataset_0", 0) +
                                              entryText("chart_dataset_1", 1));
}

TEST_F(GenericChartForms, ofParametersAreReadBackExactly)
{
    GenericChart read;
    spoil(read);

    EXPECT_EQ(loadParameters(read, parameterForm(chart)), "");

    expectSame(read);
    EXPECT_EQ(parameterForm(read), parameterForm(chart));
}

TEST_F(GenericChartForms, ofParametersLeaveAloneWhatTheyDoNotName)
{
    std::string const before = parameterForm(chart);
    loadParameters(chart, "");
    EXPECT_EQ(parameterForm(chart), before);

    loadParameters(chart, Parse::createString("token_x", "t").toStdString());
    EXPECT_EQ(chart.getToken(), "GENERIC_CHART/t/a \"b\"/c;d=e");
}

TEST_F(GenericChartForms, ofParametersEndAtTheFirstGap)
{
    GenericChart read;
    QString const entry = Parse::createStringVector(
        "chart_dataset_0", {DataToken("n").getParameterString(""), ChartParameters().getParameterString("")});
    std::string const third = Parse::createStringVector("chart_dataset_2", {"", ""}).toStdString();

    EXPECT_EQ(loadParameters(read, entry.toStdString() + third), third);

    EXPECT_EQ(namesOf(read), Names{"n"});
}

TEST_F(GenericChartForms, ofParametersWithABadEntryChangeNoEntries)
{
    spoil(chart);
    for (std::vector<QString> const &texts : {std::vector<QString>{""},
                                              {"", "", ""},
                                              {Parse::createInt("groups", 7), ""},
                                              {"", Parse::createString("style", "nothing")}}) {
        std::string const text = Parse::createStringVector("chart_dataset_0", texts).toStdString();

        EXPECT_THROW(loadParameters(chart, text), ParamError) << text;

        expectSpoilt(chart);
    }
}

TEST_F(GenericChartForms, ofBlocksAreReadBackExactly)
{
    GenericChart read;
    spoil(read);

    loadBlocks(read, blockForm(chart));

    expectSame(read);
    EXPECT_EQ(blockForm(read), blockForm(chart));
}

TEST_F(GenericChartForms, ofBlocksHoldTokenAndNumberOfEntries)
{
    GenericChart plain;
    plain.setTokenX("time");
    std::string const base = Support::streamOf([](IO::OutStream &stream) { BaseBlocks().save(&stream, -1, -1); });

    // A text has its length in front.
    EXPECT_EQ(Support::blocksOf(blockForm(plain)), Support::blocksOf(base) + "6:12 ");
}

TEST_F(GenericChartForms, ofBlocksOfEachVersionAreTheSame)
{
    for (unsigned int version = 1; version <= 6; ++version) {
        GenericChart read;
        spoil(read);

        loadBlocks(read, craftedGeneric(version, 2, chart.getData()).bytes());

        EXPECT_EQ(read.getToken(), chart.getToken()) << version;
        EXPECT_EQ(namesOf(read), namesOf(chart));
    }
}

TEST_F(GenericChartForms, ofBlocksMayHoldNoEntries)
{
    spoil(chart);

    loadBlocks(chart, craftedGeneric(6, 0, {}).bytes());

    EXPECT_EQ(chart.getToken(), "");
    EXPECT_EQ(chart.getTokenX(), "time");
    EXPECT_FALSE(chart.isDatasetUsed("x"));
}

TEST_F(GenericChartForms, ofANewerBlockAreRefused)
{
    spoil(chart);

    EXPECT_EQ(thrownText<IO::StreamException>([this] { loadBlocks(chart, craftedGeneric(7, 0, {}).bytes()); }),
              "cannot load figure chart: wrong block version");

    EXPECT_EQ(namesOf(chart), (Names{"x", "y", "z"}));
}

TEST_F(GenericChartForms, thatClaimMoreEntriesThanThereAreAreRefused)
{
    for (unsigned int count : {3U, 4294967295U}) {
        GenericChart read;
        spoil(read);

        std::string const error = thrownText<IO::StreamException>(
            [&] { loadBlocks(read, craftedGeneric(6, count, chart.getData()).bytes()); });

        EXPECT_EQ(error.find("cannot load figure chart: cannot load figure generic chart data token: "), 0U) << error;
        EXPECT_EQ(namesOf(read), (Names{"x", "y", "z"}));
        ChartDataset const dataset("z");
        EXPECT_EQ(read.getChartParameters(&dataset), &read.getData()[2].second);
    }
}

TEST_F(GenericChartForms, thatEndTooEarlyLeaveTheEntriesAsTheyWere)
{
    std::string const bytes = blockForm(chart);
    std::size_t const header = Support::streamOf([](IO::OutStream &) {}).size();
    for (std::size_t size = header; size < bytes.size(); size += 11) {
        GenericChart read;
        spoil(read);

        std::string const error = thrownText<IO::StreamException>([&] { loadBlocks(read, bytes.substr(0, size)); });

        EXPECT_EQ(error.find("cannot load figure chart: "), 0U) << size;
        expectSpoilt(read);
    }
}

class GenericChartLoad : public GenericChartForms
{
protected:
    GenericChartLoad()
    {
        figure.setChartInterface(&offer);
        shown = new GenericChart;
        figure.getRoot()->addChild(shown);
        spoil(*shown);
        calls.clear();
    }

    Calls calls;
    ChartOffer offer{&calls};
    Figure figure;
    GenericChart *shown;
};

TEST_F(GenericChartLoad, exchangesTheTokenInUse)
{
    loadBlocks(*shown, blockForm(chart));

    EXPECT_EQ(calls, (Calls{"remove GENERIC_CHART/before/x/y/z", "add GENERIC_CHART/time/a \"b\"/c;d=e"}));
}

TEST_F(GenericChartLoad, thatFailsTakesTheTokenBackUntilTheNextUpdate)
{
    EXPECT_THROW(loadBlocks(*shown, craftedGeneric(7, 0, {}).bytes()), IO::StreamException);
    EXPECT_EQ(calls, Calls{"remove GENERIC_CHART/before/x/y/z"});

    shown->computeDynamicData(StageIdentifier(1), nullptr);
    EXPECT_EQ(calls.back(), "add GENERIC_CHART/before/x/y/z");
    EXPECT_EQ(offer.getChartTokens().size(), 1U);
}

TEST_F(GenericChartLoad, ofAFigureRegistersItsCharts)
{
    loadBlocks(*shown, blockForm(chart));
    std::string const bytes = Support::streamOf([this](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    Figure read;
    read.setChartInterface(&offer);
    calls.clear();

    Support::readFrom(bytes, [&read](IO::InStream &stream) { read.load(&stream, -1, -1); });
    EXPECT_EQ(read.toString(), figure.toString());
    ChartTokens tokens;
    read.setTokenInterface(&tokens);
    read.update(StageIdentifier(1), false);

    // It is in use already.
    EXPECT_EQ(calls, Calls());
    figure.getRoot()->removeChild(shown);
    EXPECT_EQ(calls, Calls());
    delete shown;
}

TEST_F(GenericChartLoad, ofParametersExchangesTheTokenInUse)
{
    loadParameters(*shown, parameterForm(chart));

    EXPECT_EQ(calls, (Calls{"remove GENERIC_CHART/before/x/y/z", "add GENERIC_CHART/time/a \"b\"/c;d=e"}));
}

} // namespace
} // namespace Zem::Fig2
