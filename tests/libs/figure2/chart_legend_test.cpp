// The list of the curves of a chart.
#include "chart_drawing_fixture.h"

#include <ZemFig2ChartLegend.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>

namespace Zem::Fig2 {
namespace {

/// Descriptions are the names in angle brackets.
class Offer : public ChartInterface
{
public:
    void addChartToken(QString const &) override {}
    void removeChartToken(QString const &) override {}
    std::vector<DataToken> getTokensX() override { return {}; }
    std::vector<DataToken> getTokensY() override { return {}; }
    QString getTokenName(DataToken const &token) override { return token.getName(); }
    QString getTokenDescription(DataToken const &token) override { return QStringLiteral("(%1)").arg(token.getName()); }
    UnitData getTokenUnit(DataToken const &) override { return UnitData(); }
};

class ChartLegendTest : public ChartDrawingTest
{
protected:
    ChartLegendTest() : figure(&tokens)
    {
        plain = new Chart;
        prepare(plain);
        plain->setToken("c");
        figure.getRoot()->addChild(plain);
        legend = new ChartLegend;
        legend->setOrigin({300, 100});
        legend->setMargin(1.0);
        legend->setSpacing(2.0);
        legend->setText(QString());
        legend->setBorder(LineStyle::null);
        figure.getRoot()->addChild(legend);
    }

    void describe(ChartDataset *dataset, char const *text) { dataset->setDisplayText(QString::fromLatin1(text)); }

    GenericChart *addGeneric()
    {
        auto *generic = new GenericChart;
        figure.getRoot()->addChild(generic);
        ChartParameters named = looks(ChartParameters::STYLE_LINE);
        named.setName("own name");
        named.setUseDefaultName(false);
        generic->setTokenX("x");
        generic->setData({{ChartInterface::DataToken("y1"), looks(ChartParameters::STYLE_BARS)},
                          {ChartInterface::DataToken("y2"), named}});
        return generic;
    }

    std::vector<std::string> texts()
    {
        figure.update(stage, true);
        std::vector<std::string> result;
        for (auto const &[text, parameters] : legend->getEntries())
            result.push_back(text.toStdString());
        return result;
    }

    std::string drawnLegend()
    {
        Support::RecordingPainter painter;
        EXPECT_TRUE(legend->draw(&tokens, &painter, 0));
        EXPECT_EQ(tokens.onLoan(), 0);
        return painter.transcript();
    }

    Offer offer;
    Figure figure;
    Chart *plain;
    ChartLegend *legend;
};

using Texts = std::vector<std::string>;

TEST_F(ChartLegendTest, listsTheDatasetsOfAChartByTheirTexts)
{
    describe(add("a", looks(ChartParameters::STYLE_LINE), {}), "second");
    describe(add("b", looks(ChartParameters::STYLE_LINE), {}), "first");
    ChartParameters named = looks(ChartParameters::STYLE_BARS);
    named.setName("named");
    named.setUseDefaultName(false);
    describe(add("c", named, {}), "not shown");
    legend->connect(plain, QString());
    EXPECT_EQ(texts(), (Texts{"first", "named", "second"}));
    EXPECT_EQ(legend->getEntries()[1].second, named);
    EXPECT_EQ(tokens.onLoan(), 0);
}

TEST_F(ChartLegendTest, listsTheCurvesOfAGenericChart)
{
    figure.setChartInterface(&offer);
    legend->connect(addGeneric(), QString());
    EXPECT_EQ(texts(), (Texts{"(y1)", "own name"}));
}

TEST_F(ChartLegendTest, aGenericChartGoesBeforeAChart)
{
    figure.setChartInterface(&offer);
    add("a", looks(ChartParameters::STYLE_LINE), {});
    legend->connect(plain, QString());
    legend->connect(addGeneric(), QString());
    EXPECT_EQ(texts(), (Texts{"(y1)", "own name"}));
}

TEST_F(ChartLegendTest, ofTwoChartsTheFirstIsListed)
{
    addDataset(tokens.add("d"), "b");
    auto *second = new Chart;
    second->setToken("d");
    figure.getRoot()->addChild(second);
    add("a", looks(ChartParameters::STYLE_LINE), {});
    legend->connect(plain, QString());
    legend->connect(second, QString());
    EXPECT_EQ(texts(), Texts{"a"});
}

TEST_F(ChartLegendTest, entriesOfOneTextKeepTheOrderOfTheirIds)
{
    for (unsigned int i = 0; i < 40; ++i) {
        ChartParameters parameters = looks(ChartParameters::STYLE_LINE);
        parameters.setNumberOfBasePoints(i);
        std::string const id = std::to_string(100 + i);
        describe(add(id.c_str(), parameters, {}), i % 2 == 0 ? "even" : "odd");
    }
    legend->connect(plain, QString());
    figure.update(stage, true);
    for (unsigned int i = 0; i < 40; ++i)
        EXPECT_EQ(legend->getEntries()[i].second.getNumberOfBasePoints(), i < 20 ? 2 * i : 2 * (i - 20) + 1);
}

TEST_F(ChartLegendTest, aGenericChartWithoutAnInterfaceHasNoEntries)
{
    legend->connect(addGeneric(), QString());
    EXPECT_EQ(texts(), Texts{});
}

TEST_F(ChartLegendTest, withoutAPartnerThereIsOnlyTheTitle)
{
    legend->setText("Title");
    EXPECT_EQ(texts(), Texts{});
    // 5 characters of 2 x 5 mm, a margin of 1 mm; one spacing below the title.
    EXPECT_EQ(legend->getSize(), BaVec2d<double>(10 + 2, 5 + 2 + 2));
    EXPECT_EQ(drawnLegend().find("clip"), std::string::npos);
    EXPECT_NE(drawnLegend().find("'Title'"), std::string::npos);
}

TEST_F(ChartLegendTest, connectsToChartsOnly)
{
    Label label;
    Rectangle rectangle;
    EXPECT_TRUE(legend->canConnectTo(plain, QString()));
    EXPECT_TRUE(legend->canConnectTo(addGeneric(), QString()));
    EXPECT_FALSE(legend->canConnectTo(&label, QString()));
    EXPECT_FALSE(legend->canConnectTo(&rectangle, QString()));
    EXPECT_FALSE(legend->canConnectTo(nullptr, QString()));
}

TEST_F(ChartLegendTest, growsToItsTable)
{
    describe(add("a", looks(ChartParameters::STYLE_LINE), {}), "ab");
    describe(add("b", looks(ChartParameters::STYLE_LINE), {}), "abcd");
    legend->connect(plain, QString());
    figure.update(stage, true);
    // Samples of 15 x 5 mm, the longest text 8 mm: 2 * 1 + 2 + 15 + 8; two rows and the spacing between them. The
    // label's own least size is its margin.
    EXPECT_EQ(legend->getMinimumSize(), BaVec2d<double>(27, 2 + 12));
    EXPECT_EQ(legend->getSize(), BaVec2d<double>(27, 14));
}

TEST_F(ChartLegendTest, aTitleAddsASpacing)
{
    legend->setText("A title that is long");
    describe(add("a", looks(ChartParameters::STYLE_LINE), {}), "ab");
    legend->connect(plain, QString());
    figure.update(stage, true);
    // Blanks are written as &nbsp; and count six characters in this measure: 16 letters and 4 * 6 characters.
    EXPECT_EQ(legend->getMinimumSize(), BaVec2d<double>(80 + 2, 5 + 2 + 5 + 2));
}

TEST_F(ChartLegendTest, keepsASizeThatIsLargerWithoutAutoSize)
{
    legend->setAutoSize(false);
    legend->setSize({100, 5});
    describe(add("a", looks(ChartParameters::STYLE_LINE), {}), "ab");
    legend->connect(plain, QString());
    figure.update(stage, true);
    EXPECT_EQ(legend->getSize(), BaVec2d<double>(100, 7));
}

TEST_F(ChartLegendTest, canBeGrippedWhereItHasGrown)
{
    describe(add("a", looks(ChartParameters::STYLE_LINE), {}), "abcd");
    legend->connect(plain, QString());
    figure.update(stage, true);
    // 27 x 7 mm about 300,100.
    EXPECT_TRUE(legend->getDragPolygon().isInPolygon({313, 103}));
}

TEST_F(ChartLegendTest, growsAboutItsAlignmentPoint)
{
    legend->setPivotAlignmentX(ALIGN_BEGIN);
    legend->setPivotAlignmentY(ALIGN_BEGIN);
    legend->setAlignmentOrigin({300, 100});
    describe(add("a", looks(ChartParameters::STYLE_LINE), {}), "abcd");
    legend->connect(plain, QString());
    figure.update(stage, true);
    EXPECT_EQ(legend->getAlignmentOrigin(), BaVec2d<double>(300, 100));
    EXPECT_EQ(legend->getOrigin(), BaVec2d<double>(313.5, 103.5));
}

class ChartLegendDrawTest : public ChartLegendTest
{
protected:
    ChartLegendDrawTest()
    {
        legend->setAutoSize(false);
        describe(add("a", looks(ChartParameters::STYLE_POINTS), {}), "ab");
        describe(add("b", looks(ChartParameters::STYLE_POINTS), {}), "cd");
        legend->connect(plain, QString());
        // From 250,50 to 350,150.
        legend->setSize({100, 100});
    }

    /// The sample of STYLE_POINTS in a box of 15 x 5 mm: the symbol of 2 mm in the middle, with the line of 0.5 mm.
    static std::string sample(double x, double y)
    {
        auto const text = [](double a, double b) { return Support::text(BaVec2d<double>(a, b)); };
        return "polygon " + text(x + 8.5, y + 1.5) + " " + text(x + 8.5, y + 3.5) + " " + text(x + 6.5, y + 3.5) + " " +
               text(x + 6.5, y + 1.5) + " pen 0.5 full #000000ff sharp fill #000000ff\n";
    }
    static std::string text(double x, double y, char const *content)
    {
        return "text " + Support::text(BaVec2d<double>(x, y)) + " '" + content +
               "' font Liberation Sans 12 0 #000000ff\n";
    }
};

std::string const BACKGROUND = "polygon 250,50 350,50 350,150 250,150 no pen no fill\n";

TEST_F(ChartLegendDrawTest, drawsARowForEachEntry)
{
    figure.update(stage, true);
    std::string const calls = drawnLegend();
    std::string const expected =
        BACKGROUND + sample(251, 51) + text(268, 51, "ab") + sample(251, 58) + text(268, 58, "cd");
    EXPECT_TRUE(calls.ends_with(expected)) << calls;
}

TEST_F(ChartLegendDrawTest, drawsItsBorderLast)
{
    legend->setBorder(LineStyle(0.2, LineStyle::STYLE_FULL, Color(1, 2, 3)));
    figure.update(stage, true);
    std::string const calls = drawnLegend();
    EXPECT_TRUE(calls.ends_with("polygon 250,50 350,50 350,150 250,150 pen 0.2 full #010203ff sharp "
                                "no fill\n"))
        << calls;
}

TEST_F(ChartLegendDrawTest, isStaleAsLongAsItsTitleIsNotResolved)
{
    legend->setText("$nothing$");
    figure.update(stage, true);
    EXPECT_FALSE(legend->isDataValid(stage, &tokens));
}

TEST_F(ChartLegendDrawTest, distributesSurplusRoomByTheAlignmentOfTheText)
{
    legend->setTextAlignmentX(ALIGN_END);
    legend->setTextAlignmentY(ALIGN_CENTER);
    figure.update(stage, true);
    // The table takes 2 + 2 + 15 + 4 across, 12 along: 98 - 23 = 75 and 98 - 12 = 86 are left.
    std::string const calls = drawnLegend();
    EXPECT_TRUE(calls.ends_with(sample(326, 94) + text(343, 94, "ab") + sample(326, 101) + text(343, 101, "cd")))
        << calls;
}

TEST_F(ChartLegendDrawTest, theTitleStandsOneSpacingAboveTheTable)
{
    legend->setText("T");
    legend->setTextAlignmentY(ALIGN_END);
    figure.update(stage, true);
    // 98 - 5 - 12 - 2 are left.
    std::string const calls = drawnLegend();
    EXPECT_NE(calls.find("richtext 251,130 'T'"), std::string::npos) << calls;
    EXPECT_TRUE(calls.ends_with(sample(251, 137) + text(268, 137, "ab") + sample(251, 144) + text(268, 144, "cd")))
        << calls;
}

TEST_F(ChartLegendDrawTest, theWiderOfTitleAndTableTakesItsRoom)
{
    legend->setText("TTTTTTTTTTTTTTTTTTTT");
    legend->setTextAlignmentX(ALIGN_END);
    figure.update(stage, true);
    // 98 - 20 * 2 are left.
    std::string const calls = drawnLegend();
    EXPECT_NE(calls.find("richtext 309,51 "), std::string::npos) << calls;
    EXPECT_TRUE(calls.ends_with(sample(309, 58) + text(326, 58, "ab") + sample(309, 65) + text(326, 65, "cd")))
        << calls;
}

TEST_F(ChartLegendDrawTest, theTitleKeepsTheOffsetOfItsText)
{
    calculator.setOffset({3, 4});
    legend->setText("T");
    figure.update(stage, true);
    std::string const calls = drawnLegend();
    EXPECT_NE(calls.find("richtext 254,55 'T'"), std::string::npos) << calls;
    EXPECT_TRUE(calls.ends_with(sample(251, 65) + text(268, 65, "cd"))) << calls;
}

TEST_F(ChartLegendDrawTest, connectorsDoNotTurnWithTheLegend)
{
    legend->setAngle(0.5);
    legend->setConnectorStyle(LineStyle(0.3, LineStyle::STYLE_DASHED, Color(1, 2, 3)));
    figure.update(stage, true);
    std::string const calls = drawnLegend();
    ASSERT_TRUE(calls.starts_with("line ")) << calls;
    EXPECT_TRUE(calls.substr(0, calls.find('\n')).ends_with(" pen 0.3 dashed #010203ff sharp")) << calls;
}

TEST_F(ChartLegendDrawTest, aTitleOfTagsOnlyIsNone)
{
    legend->setText("<b></b>");
    figure.update(stage, true);
    EXPECT_EQ(drawnLegend().find("richtext"), std::string::npos);
}

TEST_F(ChartLegendDrawTest, withoutRoomTheTableStartsAtTheMargin)
{
    legend->setTextAlignmentX(ALIGN_END);
    legend->setSize({23, 14});
    legend->setMargin(3);
    figure.update(stage, true);
    // Raised to 6 + 2 + 15 + 4 across; the table's width counts the margins too, so no room is left.
    EXPECT_EQ(legend->getSize().x, 27.0);
    std::string const calls = drawnLegend();
    double const left = 300 - 13.5 + 3;
    EXPECT_NE(calls.find(text(left + 17, legend->getDrawingOrigin().y + 3, "ab")), std::string::npos) << calls;
}

TEST_F(ChartLegendDrawTest, connectorsAreDrawnToWhatLiesOutside)
{
    figure.update(stage, true);
    // From the middle of the legend to that of the chart: it leaves the legend at its left edge.
    EXPECT_TRUE(drawnLegend().starts_with("line 250,"));
    plain->setOrigin({301, 101});
    figure.update(stage, true);
    EXPECT_FALSE(drawnLegend().starts_with("line"));
}

TEST_F(ChartLegendDrawTest, theUpdatePolygonHoldsTheConnectorLines)
{
    figure.update(stage, true);
    EXPECT_TRUE(legend->getUpdatePolygon().isInPolygon({200, 86}));
}

TEST_F(ChartLegendDrawTest, laterStepsDrawNothing)
{
    figure.update(stage, true);
    Support::RecordingPainter painter;
    EXPECT_TRUE(legend->draw(&tokens, &painter, 1));
    EXPECT_TRUE(painter.calls().empty());
}

TEST_F(ChartLegendDrawTest, isStaleWhenAnEntryChanges)
{
    figure.update(stage, true);
    EXPECT_TRUE(legend->isDataValid(stage, &tokens));
    data.getDataset("a")->setDisplayText("other");
    EXPECT_FALSE(legend->isDataValid(stage, &tokens));
    figure.update(stage, true);
    EXPECT_TRUE(legend->isDataValid(stage, &tokens));
    data.getDataset("b")->setParameters(looks(ChartParameters::STYLE_BARS));
    EXPECT_FALSE(legend->isDataValid(stage, &tokens));
    EXPECT_EQ(tokens.onLoan(), 0);
}

TEST_F(ChartLegendTest, aCopyHasNoPartnerAndEqualSettings)
{
    legend->setText("T");
    std::unique_ptr<Element> const copy(legend->copy());
    EXPECT_EQ(copy->getParameterString(), legend->getParameterString());
    EXPECT_EQ(copy->getConnectorBegin(), copy->getConnectorEnd());
    EXPECT_EQ(copy->getType(), Element::CHART_LEGEND);
}

TEST_F(ChartLegendTest, isMadeByItsTypeAndUsesItsSpacing)
{
    std::unique_ptr<Element> const made(Element::create(Element::CHART_LEGEND));
    ASSERT_NE(dynamic_cast<ChartLegend *>(made.get()), nullptr);
    EXPECT_TRUE(made->getSpacingUsed());
}

} // namespace
} // namespace Zem::Fig2
