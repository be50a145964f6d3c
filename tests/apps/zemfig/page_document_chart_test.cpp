// Charts in page documents.
#include "page_document_fixture.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Group.h>
#include <ZemScriptObject.h>

#include <gtest/gtest.h>

namespace Zem::Zemfig {
namespace {

using namespace Fig2;

template <class Kind>
Kind const &found(PageDocument const &document, char const *name)
{
    Element const *element = find(document, name);
    EXPECT_NE(element, nullptr);
    return dynamic_cast<Kind const &>(*element);
}

char const *const CHART = R"(
[[element]]
type = "generic_chart"
name = "force over time"
size = [100, 80]
token_x = "time/1"
axis_x = { range_mode_min = "manual", range = [0, 5], line_style = { width = 0.2 } }
axis_y = { type = "vertical_right", visible = false, unit = { quantity = "force", unit = "kN" } }
grid = { line_style = { style = "none" } }
show_current_stage = true
point_marker_symbol = { type = "cross", size = 2 }

[[element.curve]]
token = "force"
groups = ["series 1", "left"]
category = "sensor"
style = "spline"
spline_base_points = 7
symbol = { type = "none", font = { family = "Serif", size = 7 } }
line_style = { width = 0.4, color = "#ff0000" }

[[element.curve]]
token = "force \\ 2"
name = "the other"
use_default_name = false
)";

TEST(PageDocumentChart, readsAxesAndCurves)
{
    PageDocument const document = parse(CHART);
    ASSERT_EQ(problemsOf(CHART), "");
    auto const &chart = found<GenericChart>(document, "force over time");
    EXPECT_EQ(chart.getTokenX(), QStringLiteral("time/1"));
    EXPECT_EQ(chart.getToken(), QStringLiteral("GENERIC_CHART/time\\/1/force/force \\\\ 2"));
    EXPECT_EQ(chart.getAxisX().getRangeModeMin(), Axis::RANGE_MODE_MANUAL);
    EXPECT_EQ(chart.getAxisX().getRange(), BaVec2d<double>(0, 5));
    EXPECT_EQ(chart.getAxisX().getLineStyle().getWidth(), 0.2);
    EXPECT_EQ(chart.getAxisY().getType(), Axis::VERTICAL_RIGHT);
    EXPECT_EQ(chart.getAxisY().getUnit().getUnitName(), QStringLiteral("kN"));
    EXPECT_EQ(chart.getGrid().getLineStyle().getStyle(), LineStyle::STYLE_NONE);
    EXPECT_TRUE(chart.getShowCurrentStage());
    EXPECT_EQ(chart.getPointMarkerSymbol().getType(), Symbol::TYPE_CROSS);

    ASSERT_EQ(chart.getData().size(), 2U);
    auto const &[token, looks] = chart.getData()[0];
    EXPECT_EQ(token.getGroups(), (std::vector<QString>{QStringLiteral("series 1"), QStringLiteral("left")}));
    EXPECT_EQ(token.getCategory(), TokenInfo::CATEGORY_SENSOR);
    EXPECT_EQ(looks.getStyle(), ChartParameters::STYLE_SPLINE);
    EXPECT_EQ(looks.getNumberOfBasePoints(), 7U);
    EXPECT_EQ(looks.getSymbol().getType(), Symbol::TYPE_NONE);
    EXPECT_EQ(looks.getSymbol().getFont().getFamily(), QStringLiteral("Serif"));
    EXPECT_EQ(looks.getLineStyle().getColor(), Color(255, 0, 0));
    EXPECT_EQ(chart.getData()[1].first.getCategory(), TokenInfo::CATEGORY_UNDEFINED);
    EXPECT_EQ(chart.getData()[1].second.getName(), QStringLiteral("the other"));
    EXPECT_FALSE(chart.getData()[1].second.getUseDefaultName());
}

TEST(PageDocumentChart, keepsAChartThroughWriting)
{
    PageDocument const document = parse(CHART);
    QString const written = writePageDocument(*document.figure);
    PageDocument const again = parsePageDocument(written.toUtf8(), QStringLiteral("again"));

    ASSERT_TRUE(again.problems.empty()) << again.problems[0].toString().toStdString() << written.toStdString();
    EXPECT_EQ(found<GenericChart>(again, "force over time").getParameterString(),
              found<GenericChart>(document, "force over time").getParameterString());
    EXPECT_EQ(written.count(QStringLiteral("[[element.curve]]")), 2);
    EXPECT_FALSE(written.contains(QStringLiteral("chart_dataset")));
}

TEST(PageDocumentChart, keepsChartsInGroupsAndTheirConnectors)
{
    PageDocument const document = parse(R"(
[[element]]
type = "group"
name = "g"
[[element.children]]
type = "generic_chart"
name = "c"
token_x = "stage"
[[element.children.curve]]
token = "y"
[[element]]
type = "chart_legend"
name = "l"
connect = ["c"]
[[element]]
type = "chart"
name = "plain"
token = "GENERIC_CHART/stage/y"
)");
    ASSERT_TRUE(document.problems.empty());
    EXPECT_EQ(found<Chart>(document, "plain").getToken(), QStringLiteral("GENERIC_CHART/stage/y"));

    QString const written = writePageDocument(*document.figure);
    PageDocument const again = parsePageDocument(written.toUtf8(), QStringLiteral("again"));

    ASSERT_TRUE(again.problems.empty()) << written.toStdString();
    EXPECT_EQ(found<GenericChart>(again, "c").getData(), found<GenericChart>(document, "c").getData());
    EXPECT_EQ(found<Element>(again, "l").getConnectorTarget(nullptr), &found<Element>(again, "c"));
}

TEST(PageDocumentChart, tellsWhatIsWrongWithACurve)
{
    EXPECT_EQ(problemsOf(R"(
[[element]]
type = "generic_chart"
name = "c"
[[element.curve]]
tokn = "y"
[[element.curve]]
token = 3
[[element.curve]]
token = "y"
style = "lines"
groups = "a"
line_style = { width = "wide" }
)"),
              "p.toml:5: a curve wants a 'token', the name of what it shows\n"
              "p.toml:6: unknown key 'tokn' in a curve of generic chart 'c' (did you mean 'token'?)\n"
              "p.toml:8: 'token' wants a text, not a number\n"
              "p.toml:11: a curve of generic chart 'c': unknown chart style: lines\n"
              "p.toml:12: 'groups' wants a list of texts\n"
              "p.toml:13: 'line_style_width' wants a number, not a text\n");
}

TEST(PageDocumentChart, takesACurveThatShowsNothing)
{
    PageDocument const document =
        parse("[[element]]\ntype = \"generic_chart\"\nname = \"c\"\n[[element.curve]]\ntoken = \"\"\n");

    EXPECT_TRUE(document.problems.empty());
    ASSERT_NE(find(document, "c"), nullptr);
    EXPECT_EQ(static_cast<GenericChart const *>(find(document, "c"))->getData().size(), 1U);
}

TEST(PageDocumentChart, otherElementsHaveNoCurves)
{
    EXPECT_EQ(problemsOf(R"(
[[element]]
type = "chart"
name = "c"
[[element.curve]]
token = "y"
)"),
              "p.toml:5: chart 'c' has no curves\n");
    EXPECT_EQ(problemsOf(R"(
[[element]]
type = "generic_chart"
name = "c"
curve = [3]
)"),
              "p.toml:5: a curve wants a table, not a number\n");
}

} // namespace
} // namespace Zem::Zemfig
