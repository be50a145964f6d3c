// chart_drawing_fixture.h: a chart whose places on the page can be worked out by hand.
#pragma once

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <ZemFig2Chart.h>
#include <ZemFig2TokenInterface.h>
#include <ZemLegendHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>

namespace Zem::Fig2 {

/// Lends chart data that the test owns, and counts what is lent.
class LendingTokens : public EmptyFigureTokenInterface
{
public:
    ChartData const *getChart(QString const &token) const override
    {
        auto const found = charts.find(token);
        if (found == charts.end())
            return nullptr;
        ++lent;
        return found->second;
    }
    void releaseChart(QString const &) const override { --lent; }

    std::map<QString, ChartData const *> charts;
    mutable int lent = 0;
};

/// 0 to 10 with labels at 0.0, 5.0 and 10.0.
inline Axis handAxis(Axis::Type type)
{
    Axis axis(type);
    axis.setRangeModeMin(Axis::RANGE_MODE_MANUAL);
    axis.setRangeModeMax(Axis::RANGE_MODE_MANUAL);
    axis.setRange({0, 10});
    axis.setTicks(2);
    axis.setDigits(1);
    return axis;
}

/// Every character measures 2 x 5 mm. A label "10.0" is 8 mm wide: the x axis overhangs by 4 mm on each side and is
/// 5 + 0.1 + 3 high, the y axis is 8 + 0.1 + 3 wide and overhangs by 2.5 mm. What is left of the chart is a plot from
/// 10,20 to 210,120, in which a unit is 20 mm along x and 10 mm along y.
class ChartDrawingTest : public testing::Test
{
protected:
    ChartDrawingTest()
    {
        prepare(&chart);
        chart.setToken("c");
        tokens.charts["c"] = &data;
    }

    static void prepare(ChartBase *element)
    {
        element->setOrigin({106.45, 72.8});
        element->setSize({215.1, 110.6});
        element->setAxisX(handAxis(Axis::HORIZONTAL_BOTTOM));
        element->setAxisY(handAxis(Axis::VERTICAL_LEFT));
    }

    /// A box of 2 mm without a line in style, black; a full line of 0.3 mm in blue; a green fill.
    static ChartParameters looks(ChartParameters::Style_t style, Symbol::Type symbol = Symbol::TYPE_BOX)
    {
        return {style, Symbol(symbol, 2.0, false), LineStyle(0.3, LineStyle::STYLE_FULL, Color(0, 0, 255)),
                FillStyle(Color(0, 255, 0))};
    }

    ChartDataset *add(char const *id, ChartParameters const &parameters, std::initializer_list<BaVec2d<double>> points)
    {
        auto *dataset = new ChartDataset(QString::fromLatin1(id));
        dataset->setParameters(parameters);
        int index = 0;
        for (BaVec2d<double> const &point : points) {
            dataset->addPoint({index, point, static_cast<double>(index)});
            ++index;
        }
        data.addDataset(dataset);
        return dataset;
    }

    void update(ChartBase *element) { element->computeDynamicData(stage, &tokens); }

    /// All that is painted until the chart has finished, in one step.
    std::string drawn(ChartBase *element = nullptr)
    {
        ChartBase *drawing = element ? element : &chart;
        update(drawing);
        Support::RecordingPainter painter;
        EXPECT_TRUE(drawing->draw(&tokens, &painter, 0));
        EXPECT_EQ(tokens.lent, 0);
        return painter.transcript();
    }

    /// What is painted within clippings, the clippings themselves left out.
    std::string curves()
    {
        update(&chart);
        Support::RecordingPainter painter;
        EXPECT_TRUE(chart.draw(&tokens, &painter, 0));
        return clipped(painter);
    }

    static std::string clipped(Support::RecordingPainter const &painter)
    {
        std::string inside;
        bool in = false;
        for (std::string const &call : painter.calls()) {
            if (call.starts_with("clip "))
                in = true;
            else if (call == "unclip")
                in = false;
            else if (in)
                inside += call + "\n";
        }
        return inside;
    }

    /// A box symbol as the painter gets it, from its upper right corner on.
    static std::string box(double x, double y, char const *color = "#000000ff")
    {
        auto const text = [](BaVec2d<double> const &place) { return Support::text(place); };
        return "polygon " + text({x + 1, y - 1}) + " " + text({x + 1, y + 1}) + " " + text({x - 1, y + 1}) + " " +
               text({x - 1, y - 1}) + " no pen fill " + color + "\n";
    }

    StageIdentifier const stage{1};
    Support::FakeCalculator calculator;
    ChartData data;
    LendingTokens tokens;
    Chart chart;
};

} // namespace Zem::Fig2
