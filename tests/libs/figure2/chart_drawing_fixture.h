// chart_drawing_fixture.h: a chart whose places on the page can be worked out by hand.
#pragma once

#include "chart_element_fixture.h"

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <ZemFig2Chart.h>
#include <ZemLegendHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

namespace Zem::Fig2 {

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

    ChartDataset *add(char const *id, ChartParameters const &parameters, Points const &points)
    {
        return addTo(&data, id, parameters, points);
    }

    /// The value of each point is its index.
    static ChartDataset *addTo(ChartData *target, char const *id, ChartParameters const &parameters,
                               Points const &points)
    {
        ChartDataset *dataset = addDataset(*target, QString::fromLatin1(id), points);
        dataset->setParameters(parameters);
        double value = 0.0;
        for (auto it = dataset->getPointBegin(0); it != dataset->getPointEnd(); ++it)
            it->value = value++;
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
        EXPECT_EQ(tokens.onLoan(), 0);
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
    ChartTokens tokens;
    ChartData &data = tokens.add("c");
    Chart chart;
};

} // namespace Zem::Fig2
