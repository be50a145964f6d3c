// Where a chart has its colours from, what it covers, and when it must look again.
#include "chart_element_fixture.h"
#include "legend_fixture.h"

#include <ZemFig2Figure.h>
#include <ZemLegendHandler.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

Legend2::Legend scaleUpTo(double maximum)
{
    Legend2::Legend scale(uLength);
    scale.setFixedMinimum(0);
    scale.setFixedMaximum(maximum);
    return scale;
}

std::string hexOf(Color const &color)
{
    QString text = QStringLiteral("#");
    for (unsigned int channel : {color.getRed(), color.getGreen(), color.getBlue(), color.getAlpha()})
        text += QString::number(channel, 16).rightJustified(2, QLatin1Char('0'));
    return text.toStdString();
}

/// The colour of the value 5 on a scale.
std::string colorOn(Legend2::Legend const &scale, Legend2::Data const &data = Legend2::Data())
{
    Legend2::LegendHandler handler(&scale, &data);
    handler.setToleranceMode(false);
    return hexOf(handler.getColor(5, Color(0, 0, 0)));
}

/// Lacks what every legend has.
class EmptyLegend : public Legend
{
public:
    void getLocalLegendData(Legend2::Legend const **legend, Legend2::Data const **data) const override
    {
        *legend = nullptr;
        *data = nullptr;
    }
};

class ChartScale : public ChartTest
{
protected:
    ChartScale()
    {
        ChartParameters parameters;
        parameters.setStyle(ChartParameters::STYLE_POINTS);
        parameters.setSymbol(Symbol(Symbol::TYPE_BOX, 1, false));
        parameters.setComputeColor(true);
        auto *dataset = addDataset(data, "coloured");
        dataset->setParameters(parameters);
        dataset->addPoint(ChartPoint(0, {1, 1}, 5.0));
        data.removeDataset("a");
        for (Legend *legend : {&first, &second})
            legend->setLocalLegendData(scaleUpTo(20), Legend2::Data());
    }
    /// The fill of the one symbol, whose value is 5.
    std::string color()
    {
        update();
        Support::RecordingPainter painter;
        EXPECT_TRUE(chart.draw(&tokens, &painter, 0));
        std::string const calls = painter.transcript();
        std::size_t const fill = calls.find(" fill #");
        return fill == std::string::npos ? calls : calls.substr(fill + 6, 9);
    }

    std::string const ofDefault = colorOn(Legend2::Legend(uLength));
    std::string const upTo10 = colorOn(scaleUpTo(10));
    std::string const upTo20 = colorOn(scaleUpTo(20));
    Legend first;
    Legend second;
};

TEST_F(ChartScale, isTheDefaultWithoutAny)
{
    ASSERT_NE(ofDefault, upTo10);
    ASSERT_NE(ofDefault, upTo20);
    ASSERT_NE(upTo10, upTo20);

    EXPECT_EQ(color(), ofDefault);
}

TEST_F(ChartScale, isThatOfTheData)
{
    data.setLegendData(scaleUpTo(10), Legend2::Data());
    EXPECT_EQ(color(), upTo10);

    data.clear();
    auto *dataset = addDataset(data, "coloured", {{1, 1}});
    ChartParameters parameters;
    parameters.setSymbol(Symbol(Symbol::TYPE_BOX, 1, false));
    parameters.setComputeColor(true);
    dataset->setParameters(parameters);
    dataset->getPointBegin(0)->value = 5;
    EXPECT_EQ(color(), ofDefault);
}

TEST_F(ChartScale, takesTheLimitsOfTheDataToo)
{
    Legend2::Data limits;
    limits.setDynamicMinimum(4);
    limits.setDynamicMaximum(7);
    data.setLegendData(Legend2::Legend(uLength), limits);

    EXPECT_EQ(color(), colorOn(Legend2::Legend(uLength), limits));
    EXPECT_NE(color(), ofDefault);
}

TEST_F(ChartScale, isThatOfAConnectedLegendBeforeThatOfTheData)
{
    data.setLegendData(scaleUpTo(10), Legend2::Data());
    first.connect(&chart, QString());

    EXPECT_EQ(color(), upTo20);
}

TEST_F(ChartScale, takesTheLimitsOfALegendToo)
{
    Legend2::Data limits;
    limits.setDynamicMinimum(4);
    limits.setDynamicMaximum(7);
    first.setLocalLegendData(Legend2::Legend(uLength), limits);
    first.connect(&chart, QString());

    EXPECT_EQ(color(), colorOn(Legend2::Legend(uLength), limits));
}

TEST_F(ChartScale, isFoundWhereverTheConnectorBegins)
{
    chart.connect(&first, QString());

    EXPECT_EQ(color(), upTo20);
}

TEST_F(ChartScale, mayComeFromTwoLegendsThatAgree)
{
    first.connect(&chart, QString());
    chart.connect(&second, QString());

    EXPECT_EQ(color(), upTo20);
}

TEST_F(ChartScale, isTheDefaultWhenTwoLegendsDiffer)
{
    data.setLegendData(scaleUpTo(10), Legend2::Data());
    first.connect(&chart, QString());
    second.connect(&chart, QString());

    second.setLocalLegendData(scaleUpTo(10), Legend2::Data());
    EXPECT_EQ(color(), ofDefault);

    Legend2::Data average;
    average.setAverage(1);
    second.setLocalLegendData(scaleUpTo(20), average);
    EXPECT_EQ(color(), ofDefault);

    second.setLocalLegendData(scaleUpTo(20), Legend2::Data());
    EXPECT_EQ(color(), upTo20);
}

TEST_F(ChartScale, isTheDefaultBesideALegendOfTolerances)
{
    first.connect(&chart, QString());
    first.setLocalToleranceParams(true, Legend2::ToleranceParams());

    EXPECT_EQ(color(), ofDefault);
}

TEST_F(ChartScale, isWhatALegendShowsThatWasNeverGivenOne)
{
    Legend follower;
    ScalePartner partner;
    partner.legend = scaleUpTo(10);
    follower.connect(&partner, QString());
    follower.connect(&chart, QString());
    partner.delivers = true;
    follower.computeDynamicData(stage, &tokens);

    EXPECT_EQ(color(), upTo10);
}

TEST_F(ChartScale, cannotComeFromALegendWithoutParameters)
{
    EmptyLegend broken;
    broken.connect(&chart, QString());

    EXPECT_EQ(progError([this] { update(); }), "fig_chart: parameter vectors not set");

    EXPECT_EQ(tokens.lent(), 1);
    EXPECT_EQ(tokens.onLoan(), 0);
}

TEST_F(ChartScale, needsNoLegendBehindAConflict)
{
    EmptyLegend broken;
    second.setLocalLegendData(scaleUpTo(10), Legend2::Data());
    first.connect(&chart, QString());
    second.connect(&chart, QString());
    broken.connect(&chart, QString());

    EXPECT_EQ(color(), ofDefault);
}

TEST_F(ChartScale, comesFromNoOtherElements)
{
    Label label;
    label.connect(&chart, QString());
    data.setLegendData(scaleUpTo(10), Legend2::Data());

    EXPECT_EQ(color(), upTo10);
}

class ChartLegendData : public ChartScale
{
protected:
    bool ask(Legend2::HistogramData *outHistogram)
    {
        return chart.getLegendData(&tokens, &legend, &legendData, &showTolerances, &tolerance, outHistogram, &canDraw);
    }

    Legend2::Legend legend = scaleUpTo(3);
    Legend2::Data legendData;
    bool showTolerances = true;
    Legend2::ToleranceParams tolerance;
    Legend2::HistogramData histogram;
    bool canDraw = false;
};

TEST_F(ChartLegendData, areThoseOfTheData)
{
    Legend2::Data average;
    average.setAverage(3);
    Legend2::HistogramData counts;
    ASSERT_TRUE(counts.addHistogram({{1.0, 2}}));
    data.setLegendData(scaleUpTo(10), average, counts);
    tolerance.setTitle(QStringLiteral("left over"));

    EXPECT_TRUE(ask(&histogram));

    EXPECT_EQ(legend, scaleUpTo(10));
    EXPECT_EQ(legendData, average);
    EXPECT_EQ(histogram, counts);
    EXPECT_FALSE(showTolerances);
    EXPECT_EQ(tolerance, Legend2::ToleranceParams());
    EXPECT_TRUE(canDraw);
    EXPECT_TRUE(ask(nullptr));
}

TEST_F(ChartLegendData, areMissingWithoutScaleOrData)
{
    EXPECT_FALSE(ask(&histogram));
    chart.setToken("unknown");
    EXPECT_FALSE(ask(&histogram));

    EXPECT_EQ(legend, scaleUpTo(3));
    EXPECT_TRUE(showTolerances);
}

class ChartCover : public ChartTest
{
protected:
    ChartCover()
    {
        chart.setOrigin({50, 50});
        chart.setSize({20, 20});
        label.setConnectorStyle(LineStyle(4, LineStyle::STYLE_FULL, Color(0, 0, 0)));
        label.setOrigin({100, 50});
    }
    std::string covered()
    {
        update();
        return Support::text(chart.getCoveredPolygon());
    }

    Label label;
};

TEST_F(ChartCover, isItsOutline)
{
    EXPECT_EQ(covered(), "40,40 60,40 60,60 40,60");
}

TEST_F(ChartCover, reachesToALabelAsWideAsItsLine)
{
    label.connect(&chart, QString());

    EXPECT_EQ(covered(), "40,40 60,40 100,48 100,52 60,60 40,60");
    // What must be redrawn, and where it can be dragged, is the chart alone.
    EXPECT_EQ(Support::text(chart.getUpdatePolygon()), "40,40 60,40 60,60 40,60");
    EXPECT_EQ(Support::text(chart.getDragPolygon()), "40,40 60,40 60,60 40,60");
}

TEST_F(ChartCover, reachesToALabelAcrossTheLineToIt)
{
    // 40 mm to the right and 30 below: 2 mm across the line are 1.2 and 1.6.
    label.setOrigin({90, 80});
    label.connect(&chart, QString());

    EXPECT_EQ(covered(), "40,40 60,40 91.2,78.4 88.8,81.6 40,60");
}

TEST_F(ChartCover, reachesToALabelWhereverTheConnectorBegins)
{
    chart.connect(&label, QString());

    EXPECT_EQ(covered(), "40,40 60,40 100,48 100,52 60,60 40,60");
}

TEST_F(ChartCover, reachesToAllItsLabels)
{
    Label below;
    below.setOrigin({50, 100});
    below.setConnectorStyle(LineStyle(2, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    label.connect(&chart, QString());
    below.connect(&chart, QString());

    EXPECT_EQ(covered(), "40,40 60,40 100,48 100,52 51,100 49,100 40,60");
}

TEST_F(ChartCover, isNotWidenedByALabelAtItsOrigin)
{
    chart.setSize({0, 0});
    chart.setOrigin({0, 0});
    label.setOrigin({-0.9e-50, 0});
    label.connect(&chart, QString());

    update();

    for (BaVec2d<double> const &point : chart.getCoveredPolygon().getPoints())
        EXPECT_LT(point.length(), 1e-40);
}

TEST_F(ChartCover, isWidenedByALabelVeryNearItsOrigin)
{
    chart.setSize({0, 0});
    chart.setOrigin({0, 0});
    label.setOrigin({-2e-50, 0});
    label.connect(&chart, QString());

    update();

    double top = 0;
    for (BaVec2d<double> const &point : chart.getCoveredPolygon().getPoints())
        top = std::min(top, point.y);
    EXPECT_NEAR(top, -2, 1e-9);
}

TEST_F(ChartCover, reachesToPlainLabelsOnly)
{
    label.setType(Element::IMAGE_LABEL);
    label.connect(&chart, QString());

    EXPECT_EQ(covered(), "40,40 60,40 60,60 40,60");
}

class ChartValidity : public ChartTest
{
protected:
    bool isDataValid() const { return chart.isDataValid(stage, &tokens); }
};

TEST_F(ChartValidity, endsWhenTheDataChange)
{
    EXPECT_FALSE(isDataValid());
    update();
    EXPECT_TRUE(isDataValid());

    tokens.touch("force");

    EXPECT_FALSE(isDataValid());
    update();
    EXPECT_TRUE(isDataValid());
}

TEST_F(ChartValidity, needsNoData)
{
    chart.setToken("unknown");
    EXPECT_TRUE(isDataValid());
    chart.setToken("");
    EXPECT_TRUE(isDataValid());
    chart.setToken("force");
    EXPECT_FALSE(isDataValid());
    EXPECT_TRUE(chart.isDataValid(stage, nullptr));
}

TEST_F(ChartValidity, endsWhenTheDataCome)
{
    chart.setToken("later");
    update();
    EXPECT_TRUE(isDataValid());

    tokens.add("later");

    EXPECT_FALSE(isDataValid());
}

TEST_F(ChartValidity, leadsToAnUpdateInTheFigure)
{
    Figure figure(&tokens);
    Chart *shown = chart.copy();
    figure.getRoot()->addChild(shown);
    EXPECT_TRUE(figure.update(stage, false));
    EXPECT_FALSE(figure.update(stage, false));

    show({{0, 0}, {1, 1}});
    tokens.touch("force");

    EXPECT_TRUE(figure.update(stage, false));
    EXPECT_EQ(shown->getAxisX().getRange(), BaVec2d<double>(0, 1));
}

TEST_F(ChartValidity, isUnharmedByMissingTokens)
{
    chart.computeDynamicData(stage, nullptr);

    EXPECT_EQ(Support::text(chart.getDragPolygon()), "10,20 122.1,20 122.1,80.6 10,80.6");
}

} // namespace
} // namespace Zem::Fig2
