// What a chart begins with, how it is changed, and its parameter strings.
#include "chart_element_fixture.h"
#include "label_fixture.h"

#include <ZemParse.h>

#include <functional>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::loadParameters;
using Support::parameterForm;
using Support::progError;

LineStyle const INNER(0.3, LineStyle::STYLE_DASHED, Color(1, 1, 1));
LineStyle const STAGE(0.4, LineStyle::STYLE_FULL, Color(2, 2, 2));

Symbol markerSymbol()
{
    Symbol symbol(Symbol::TYPE_STAR, 7.5, true);
    symbol.setColor(Color(3, 3, 3));
    symbol.setDigits(4);
    return symbol;
}

Grid gridOf(Color const &color)
{
    Grid grid;
    grid.setLineStyle(LineStyle(0.2, LineStyle::STYLE_FULL, color));
    return grid;
}

/// All members differ from those of a new chart.
void fill(ChartBase &chart)
{
    Axis axisX(Axis::HORIZONTAL_TOP);
    axisX.setRange({1.5, 2.5});
    axisX.setRangeModeMin(Axis::RANGE_MODE_MANUAL);
    Axis axisY(Axis::VERTICAL_RIGHT);
    axisY.setVisible(false);
    chart.setAxisX(axisX);
    chart.setAxisY(axisY);
    chart.setGrid(gridOf(Color(9, 9, 9)));
    chart.setInnerBorder(INNER);
    chart.setLeftMargin(1.0 / 3.0);
    chart.setRightMargin(6.5);
    chart.setShowCurrentStage(true);
    chart.setShowPointMarkers(true);
    chart.setCurrentStageStyle(STAGE);
    chart.setPointMarkerSymbol(markerSymbol());
}

TEST(ChartDefaults, areAFramedPlotWithAxesAtTheLeftAndBelow)
{
    Chart const chart;
    GenericChart const generic;
    for (ChartBase const *base : {static_cast<ChartBase const *>(&chart), static_cast<ChartBase const *>(&generic)}) {
        EXPECT_EQ(base->getToken(), "");
        EXPECT_EQ(base->getAxisX().getType(), Axis::HORIZONTAL_BOTTOM);
        EXPECT_EQ(base->getAxisY().getType(), Axis::VERTICAL_LEFT);
        EXPECT_EQ(base->getGrid().getLineStyle(), LineStyle(0.1, LineStyle::STYLE_DOTTED, Color(8, 8, 132)));
        EXPECT_EQ(base->getInnerBorder(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
        EXPECT_EQ(base->getInnerBorder().getCapStyle(), static_cast<LineStyle::CapStyle>(1));
        EXPECT_EQ(base->getLeftMargin(), 0.0);
        EXPECT_EQ(base->getRightMargin(), 0.0);
        EXPECT_FALSE(base->getShowCurrentStage());
        EXPECT_FALSE(base->getShowPointMarkers());
        EXPECT_EQ(base->getCurrentStageStyle(), LineStyle(0.1, LineStyle::STYLE_DOTTED, Color(0, 0, 0)));
        EXPECT_EQ(base->getCurrentStageStyle().getCapStyle(), static_cast<LineStyle::CapStyle>(1));
        EXPECT_EQ(base->getPointMarkerSymbol(), Symbol(static_cast<Symbol::Type>(12), 5.0, false));
        EXPECT_EQ(base->getBorder(), LineStyle(0.1, LineStyle::STYLE_NONE, Color(0, 0, 0)));
        EXPECT_FALSE(base->isValid());
    }
    EXPECT_EQ(static_cast<int>(chart.getType()), 5);
    EXPECT_EQ(static_cast<int>(generic.getType()), 6);
    EXPECT_TRUE(generic.getData().empty());
    EXPECT_EQ(generic.getTokenX(), "");
}

TEST(ChartDefaults, placeNothingBeforeTheFirstUpdate)
{
    Chart const chart;

    EXPECT_EQ(chart.getFigureCoordinates({5, DBL_MAX}), BaVec2d<double>(0, 0));
}

TEST(ChartDefaults, tellWhatAChartCanDo)
{
    Chart const chart;

    EXPECT_TRUE(chart.hasMaximize() && chart.hasBackground() && chart.hasFont() && chart.hasLegendData());
    EXPECT_TRUE(chart.hasSize() && chart.hasMinimumSize() && chart.hasAngle() && chart.hasBorder());
    EXPECT_TRUE(chart.hasFontColor() && chart.hasPivotAlignment());
    EXPECT_FALSE(chart.hasAutoSize() || chart.canLinkTo3D() || chart.hasMargin() || chart.hasSpacing());
    EXPECT_TRUE(chart.isDatasetUsed("any"));
}

TEST(ChartDefaults, areThoseOfCreatedElements)
{
    for (auto type : {Element::CHART, Element::GENERIC_CHART}) {
        std::unique_ptr<Element> const element(Element::create(type));

        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->getType(), type);
        EXPECT_NE(dynamic_cast<ChartBase *>(element.get()), nullptr);
    }
}

TEST(ChartToken, isUsedByItsChartAlone)
{
    Chart chart;
    chart.setToken("force");

    EXPECT_TRUE(chart.isTokenUsed("force"));
    EXPECT_FALSE(chart.isTokenUsed("Force"));
    EXPECT_FALSE(chart.isTokenUsed(""));
}

TEST(ChartSetters, keepWhatTheyAreGiven)
{
    Chart chart;

    fill(chart);

    EXPECT_EQ(chart.getAxisX().getType(), Axis::HORIZONTAL_TOP);
    EXPECT_EQ(chart.getAxisX().getRange(), BaVec2d<double>(1.5, 2.5));
    EXPECT_FALSE(chart.getAxisY().getVisible());
    EXPECT_EQ(chart.getGrid().getLineStyle().getColor(), Color(9, 9, 9));
    EXPECT_EQ(chart.getInnerBorder(), INNER);
    EXPECT_EQ(chart.getLeftMargin(), 1.0 / 3.0);
    EXPECT_EQ(chart.getRightMargin(), 6.5);
    EXPECT_TRUE(chart.getShowCurrentStage());
    EXPECT_TRUE(chart.getShowPointMarkers());
    EXPECT_EQ(chart.getCurrentStageStyle(), STAGE);
    EXPECT_EQ(chart.getPointMarkerSymbol(), markerSymbol());
}

TEST(ChartSetters, callForAnUpdate)
{
    std::vector<std::function<void(Chart &)>> const setters{
        [](Chart &chart) { chart.setAxisX(chart.getAxisX()); },
        [](Chart &chart) { chart.setAxisY(chart.getAxisY()); },
        [](Chart &chart) { chart.setGrid(chart.getGrid()); },
        [](Chart &chart) { chart.setInnerBorder(chart.getInnerBorder()); },
        [](Chart &chart) { chart.setLeftMargin(0); },
        [](Chart &chart) { chart.setRightMargin(0); },
        [](Chart &chart) { chart.setShowCurrentStage(false); },
        [](Chart &chart) { chart.setShowPointMarkers(false); },
        [](Chart &chart) { chart.setCurrentStageStyle(chart.getCurrentStageStyle()); },
        [](Chart &chart) { chart.setPointMarkerSymbol(chart.getPointMarkerSymbol()); },
        [](Chart &chart) { chart.setToken(""); },
        [](Chart &chart) { loadParameters(chart, ""); },
    };
    Chart chart;
    for (std::size_t i = 0; i < setters.size(); ++i) {
        chart.update(StageIdentifier(1), nullptr, nullptr);
        ASSERT_TRUE(chart.isValid());

        setters[i](chart);

        EXPECT_FALSE(chart.isValid()) << i;
    }
}

TEST(ChartSize, growsWithItsToken)
{
    Chart chart;
    unsigned int const empty = chart.getEstimatedObjectSize();
    EXPECT_GE(empty, sizeof(Chart));

    chart.setToken(QString(1000, QLatin1Char('x')));

    EXPECT_GE(chart.getEstimatedObjectSize(), empty + 2000);
}

TEST(ChartCopy, hasAllButTheConnectors)
{
    Chart chart;
    fill(chart);
    chart.setToken("force");
    Label label;
    label.connect(&chart, QString());

    std::unique_ptr<Chart> const copy(chart.copy());

    EXPECT_EQ(parameterForm(*copy), parameterForm(chart));
    EXPECT_EQ(copy->getConnectorBegin(), copy->getConnectorEnd());
    EXPECT_NE(copy->getId(), chart.getId());
}

/// The entries of ChartBase, as they are written.
std::string entriesOf(ChartBase const &chart)
{
    QString const text = Parse::createBool("show_current_stage", chart.getShowCurrentStage()) +
                         Parse::createBool("show_point_markers", chart.getShowPointMarkers()) +
                         Parse::createDouble("left_margin", chart.getLeftMargin()) +
                         Parse::createDouble("right_margin", chart.getRightMargin()) +
                         chart.getAxisX().getParameterString("axis_x") + chart.getAxisY().getParameterString("axis_y") +
                         chart.getGrid().getParameterString("grid") +
                         chart.getInnerBorder().getParameterString("inner_border") +
                         chart.getCurrentStageStyle().getParameterString("current_stage_style") +
                         chart.getPointMarkerSymbol().getParameterString("point_marker_symbol");
    return text.toStdString();
}

TEST(ChartParameterString, listsTheMembersBehindThoseOfAreas)
{
    Chart chart;
    fill(chart);
    chart.setToken("a \"b\"");

    EXPECT_EQ(parameterForm(chart), chart.AreaBase::getParameterString().toStdString() + entriesOf(chart) +
                                        Parse::createString("token", "a \"b\"").toStdString());
}

TEST(ChartParameterString, isReadBackExactly)
{
    Chart chart;
    fill(chart);
    chart.setToken("force");
    chart.setSize({12.5, 1.0 / 7.0});
    Chart read;

    EXPECT_EQ(loadParameters(read, parameterForm(chart)), "");

    EXPECT_EQ(parameterForm(read), parameterForm(chart));
    EXPECT_EQ(read.getPointMarkerSymbol(), markerSymbol());
    EXPECT_EQ(read.getToken(), "force");
}

TEST(ChartParameterString, leavesAloneWhatItDoesNotName)
{
    Chart chart;
    fill(chart);
    chart.setToken("force");
    std::string const before = parameterForm(chart);

    EXPECT_EQ(loadParameters(chart, Parse::createInt("other", 1).toStdString()),
              Parse::createInt("other", 1).toStdString());

    EXPECT_EQ(parameterForm(chart), before);
}

TEST(ChartParameterString, mayNameThePointMarkerAsOlderReleasesDid)
{
    Chart chart;

    EXPECT_EQ(
        loadParameters(chart, (Parse::createString("current_stage_marker_symbol", Symbol::getTypeId(Symbol::TYPE_BOX)) +
                               Parse::createDouble("current_stage_marker_size", 2.5))
                                  .toStdString()),
        "");

    EXPECT_EQ(chart.getPointMarkerSymbol(), Symbol(Symbol::TYPE_BOX, 2.5, false));
    EXPECT_EQ(parameterForm(chart).find("current_stage_marker"), std::string::npos);
}

TEST(ChartParameterString, mayNameOneOfTheOlderEntries)
{
    Chart chart;
    loadParameters(chart, Parse::createDouble("current_stage_marker_size", 2.5).toStdString());
    EXPECT_EQ(chart.getPointMarkerSymbol(), Symbol(Symbol::TYPE_MARKER, 2.5, false));

    loadParameters(
        chart, Parse::createString("current_stage_marker_symbol", Symbol::getTypeId(Symbol::TYPE_STAR)).toStdString());
    EXPECT_EQ(chart.getPointMarkerSymbol(), Symbol(Symbol::TYPE_STAR, 2.5, false));
}

TEST(ChartParameterString, prefersTodaysPointMarker)
{
    Chart chart;

    loadParameters(chart, (Symbol(Symbol::TYPE_CROSS, 3, false).getParameterString("point_marker_symbol") +
                           Parse::createString("current_stage_marker_symbol", Symbol::getTypeId(Symbol::TYPE_BOX)) +
                           Parse::createDouble("current_stage_marker_size", 2.5))
                              .toStdString());

    EXPECT_EQ(chart.getPointMarkerSymbol(), Symbol(Symbol::TYPE_CROSS, 3, false));
}

TEST(ChartParameterString, withABadValueIsRefused)
{
    Chart chart;
    for (char const *key : {"show_current_stage", "left_margin", "axis_x_type", "current_stage_marker_symbol",
                            "current_stage_marker_size"}) {
        std::string const text = Parse::createString(key, "no such thing").toStdString();
        EXPECT_THROW(loadParameters(chart, text), ParamError) << key;
    }
}

TEST(ChartText, isNotWritten)
{
    Chart const chart;
    GenericChart const generic;

    EXPECT_EQ(progError([&] { Support::textForm(chart); }), "fig_chart: function not implemented");
    EXPECT_EQ(progError([&] { Support::textForm(generic); }), "fig_chart: function not implemented");
}

TEST(ChartText, isNotReadByGenericCharts)
{
    GenericChart generic;

    EXPECT_EQ(progError([&] { Support::loadText(generic, "10 "); }), "fig_chart: function not implemented");
}

/// The text of an older release: version, switches, margins, what is `between`, the records and the token.
std::string oldText(std::string const &head, bool withSymbol)
{
    Chart filled;
    fill(filled);
    std::ostringstream stream;
    stream << head << filled.getAxisX() << filled.getAxisY();
    filled.getGrid().saveToStream(stream);
    stream << INNER << STAGE;
    if (withSymbol)
        stream << Symbol(Symbol::TYPE_STAR, 7.5, false);
    TestArea area;
    area.setOrigin({7, 8});
    stream << "force " << Support::textForm(area);
    return stream.str();
}

Chart readText(std::string const &text)
{
    Chart chart;
    fill(chart);
    chart.setToken("before");
    EXPECT_TRUE(Support::loadText(chart, text));
    EXPECT_EQ(chart.getToken(), "force");
    EXPECT_EQ(chart.getOrigin(), BaVec2d<double>(7, 8));
    EXPECT_EQ(chart.getInnerBorder(), INNER);
    EXPECT_EQ(chart.getCurrentStageStyle(), STAGE);
    EXPECT_EQ(chart.getAxisX().getRange(), BaVec2d<double>(1.5, 2.5));
    return chart;
}

TEST(ChartText, ofToday)
{
    Chart const chart = readText(oldText("10 1 0 4.5 5.5 ", true));

    EXPECT_TRUE(chart.getShowCurrentStage());
    EXPECT_FALSE(chart.getShowPointMarkers());
    EXPECT_EQ(chart.getLeftMargin(), 4.5);
    EXPECT_EQ(chart.getRightMargin(), 5.5);
    EXPECT_EQ(chart.getPointMarkerSymbol().getType(), Symbol::TYPE_STAR);
    EXPECT_EQ(chart.getPointMarkerSymbol().getSize(), 7.5);
}

TEST(ChartText, ofOlderReleasesLacksWhatCameLater)
{
    Chart const ninth = readText(oldText("9 0 1 4.5 5.5 1 2.5 ", false));
    EXPECT_FALSE(ninth.getShowCurrentStage());
    EXPECT_TRUE(ninth.getShowPointMarkers());
    EXPECT_EQ(ninth.getRightMargin(), 5.5);
    EXPECT_EQ(ninth.getPointMarkerSymbol().getType(), Symbol::TYPE_BOX);
    EXPECT_EQ(ninth.getPointMarkerSymbol().getSize(), 2.5);
    EXPECT_EQ(ninth.getPointMarkerSymbol().getColor(), Color(2, 2, 2));

    Chart const fourth = readText(oldText("4 0 1 2.5 ", false));
    EXPECT_TRUE(fourth.getShowPointMarkers());
    EXPECT_EQ(fourth.getLeftMargin(), 0.0);
    EXPECT_EQ(fourth.getPointMarkerSymbol().getType(), Symbol::TYPE_MARKER);
    EXPECT_EQ(fourth.getPointMarkerSymbol().getSize(), 2.5);

    Chart const first = readText(oldText("1 1 ", false));
    EXPECT_TRUE(first.getShowCurrentStage());
    EXPECT_FALSE(first.getShowPointMarkers());
    EXPECT_EQ(first.getPointMarkerSymbol().getSize(), 5.0);
}

TEST(ChartText, thatIsNewerOrDamagedIsRefused)
{
    Chart chart;

    EXPECT_EQ(Support::thrownText<IO::StreamException>([&] { Support::loadText(chart, "11 1 1 0 0 "); }),
              "wrong block version");
    EXPECT_FALSE(Support::loadText(chart, ""));
    EXPECT_FALSE(Support::loadText(chart, "10 1 1 0 "));
    EXPECT_FALSE(Support::loadText(chart, oldText("9 0 1 4.5 5.5 14 2.5 ", false)));
}

} // namespace
} // namespace Zem::Fig2
