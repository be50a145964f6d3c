// The charts and legends of older figures.
#include "import_fixture.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Image.h>
#include <ZemFig2Legend.h>

namespace Zem::Fig2 {
namespace {

using Support::oldAxis;
using Support::OldAxisFields;
using Support::oldChart;
using Support::oldFigure;
using Support::oldLegend;
using Support::oldLegendData;
using Support::oldLegendDisplay;
using Support::OldLegendFields;
using Support::Payload;

using Point = BaVec2d<double>;

double const NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

LineStyle const DASHED_RED(0.5, LineStyle::STYLE_DASHED, Color(200, 10, 20));

OldRecords chartWith(OldRecords const &axisX, OldRecords const &axisY, unsigned int version = 3)
{
    return oldChart(version).add(axisX).add(axisY);
}

std::unique_ptr<Chart> importChart(unsigned int version)
{
    return importAs<Chart>(Import::OLD_CHART, chartWith(oldAxis(3), oldAxis(3), version));
}

/// The x axis of a chart.
Axis importAxis(unsigned int version, OldAxisFields const &fields = {})
{
    return importAs<Chart>(Import::OLD_CHART, chartWith(oldAxis(version, fields), oldAxis(1)))->getAxisX();
}

Axis axisAt(unsigned int place, bool horizontal)
{
    OldAxisFields fields;
    fields.place = place;
    auto const chart = importAs<Chart>(Import::OLD_CHART, chartWith(oldAxis(1, fields), oldAxis(1, fields)));
    return horizontal ? chart->getAxisX() : chart->getAxisY();
}

/// What is lost of a chart with this x axis.
std::string axisLosses(OldAxisFields const &fields)
{
    ImportReport report;
    importFigure(oldFigure({oldElementOf(Import::OLD_CHART, chartWith(oldAxis(3, fields), oldAxis(3)))}), &report);
    return losses(report);
}

TEST(ImportChart, keepsPlaceTokenAndLines)
{
    auto const chart = importChart(1);

    EXPECT_EQ(chart->getOrigin(), Point(30, 35));
    EXPECT_EQ(chart->getSize(), Point(40, 30));
    EXPECT_EQ(chart->getToken(), "curve");
    EXPECT_EQ(chart->getGrid().getLineStyle(), DASHED_RED);
    EXPECT_EQ(chart->getInnerBorder(), LineStyle(0.2, LineStyle::STYLE_FULL, Color(5, 6, 7)));
    EXPECT_EQ(chart->getBorder().getStyle(), LineStyle::STYLE_NONE);
    EXPECT_FALSE(chart->getBackground().getFilled());
    EXPECT_FALSE(chart->getShowCurrentStage());
    EXPECT_FALSE(chart->getShowPointMarkers());
}

TEST(ImportChart, hasAFrameFromVersion2On)
{
    auto const chart = importChart(2);

    EXPECT_EQ(chart->getBorder(), LineStyle(0.3, LineStyle::STYLE_DOTTED, Color(8, 9, 10)));
    EXPECT_EQ(chart->getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_FALSE(chart->getShowCurrentStage());
}

TEST(ImportChart, hasMarksFromVersion3On)
{
    Support::OldChartFields fields;
    fields.showPointMarkers = false;

    auto const both = importChart(3);
    auto const one = importAs<Chart>(Import::OLD_CHART, oldChart(3, fields).add(oldAxis(1)).add(oldAxis(1)));

    EXPECT_TRUE(both->getShowCurrentStage());
    EXPECT_TRUE(both->getShowPointMarkers());
    EXPECT_TRUE(one->getShowCurrentStage());
    EXPECT_FALSE(one->getShowPointMarkers());
}

TEST(ImportChart, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_CHART, OldRecords().record(4, Payload())), "wrong block version");
}

TEST(ImportAxis, keepsItsRange)
{
    Axis const axis = importAxis(1);

    EXPECT_EQ(axis.getRange(), Point(-1, 5));
    EXPECT_EQ(axis.getRangeModeMin(), Axis::RANGE_MODE_MANUAL);
    EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_MANUAL);
    EXPECT_EQ(axis.getTicks(), 10);
    EXPECT_EQ(axis.getDigits(), 2);
    EXPECT_EQ(axis.getLineStyle(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(axis.getFont(), Font());
    EXPECT_EQ(axis.getUnit(), UnitData(uFigure));
}

TEST(ImportAxis, mayFollowItsData)
{
    OldAxisFields fields;
    fields.automatic = true;

    Axis const axis = importAxis(1, fields);

    EXPECT_EQ(axis.getRangeModeMin(), Axis::RANGE_MODE_AUTO);
    EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_AUTO);
}

TEST(ImportAxis, hasTicksFromVersion2On)
{
    Axis const axis = importAxis(2);

    EXPECT_EQ(axis.getTicks(), 7);
    EXPECT_EQ(axis.getDigits(), 3);
    EXPECT_EQ(axis.getLineStyle(), DASHED_RED);
    EXPECT_EQ(axis.getFont(), Font());
}

TEST(ImportAxis, hasLabelsOfItsOwnFromVersion3On)
{
    OldAxisFields fields;
    fields.font.blue = 9;

    Axis const axis = importAxis(3, fields);

    EXPECT_EQ(axis.getFont(), Font("Courier", 9.0, Font::ITALIC | Font::BOLD | Font::UNDERLINE));
    EXPECT_EQ(axis.getFontColor(), Color(0, 0, 9));
    EXPECT_EQ(axis.getUnit().getUnit(), uForce);
    EXPECT_EQ(axis.getUnit().getUnitName(), "kN");
}

TEST(ImportAxis, standsOnTheSideThatItNames)
{
    EXPECT_EQ(axisAt(1, true).getType(), Axis::HORIZONTAL_TOP);
    EXPECT_EQ(axisAt(3, true).getType(), Axis::HORIZONTAL_BOTTOM);
    EXPECT_EQ(axisAt(1, false).getType(), Axis::VERTICAL_LEFT);
    EXPECT_EQ(axisAt(3, false).getType(), Axis::VERTICAL_RIGHT);
    for (bool horizontal : {true, false})
        EXPECT_TRUE(axisAt(1, horizontal).getVisible() && axisAt(3, horizontal).getVisible());
}

TEST(ImportAxis, isHiddenWhereThereIsNone)
{
    EXPECT_FALSE(axisAt(0, true).getVisible());
    EXPECT_EQ(axisAt(0, true).getType(), Axis::HORIZONTAL_BOTTOM);
    EXPECT_FALSE(axisAt(0, false).getVisible());
    EXPECT_EQ(axisAt(0, false).getType(), Axis::VERTICAL_LEFT);
}

TEST(ImportAxis, inTheCentreIsMovedToASideAndTold)
{
    OldAxisFields fields;
    fields.place = 2;

    EXPECT_EQ(axisAt(2, true).getType(), Axis::HORIZONTAL_BOTTOM);
    EXPECT_EQ(axisAt(2, false).getType(), Axis::VERTICAL_LEFT);
    EXPECT_TRUE(axisAt(2, true).getVisible());
    EXPECT_EQ(axisLosses(fields), "chart axis 1 approximated: an axis in the centre was moved to the side\n");
}

TEST(ImportAxis, ofAnUnknownPlaceIsRefused)
{
    OldAxisFields fields;
    fields.place = 4;

    EXPECT_EQ(elementRefusal(Import::OLD_CHART, oldChart(1).add(oldAxis(1, fields))), "unsupported axis type: 4");
}

TEST(ImportAxis, withARangeThatIsNoNumberFollowsItsData)
{
    for (Point range : {Point(NOT_A_NUMBER, 1.0), Point(0.0, NOT_A_NUMBER)}) {
        OldAxisFields fields;
        fields.minimum = range.x;
        fields.maximum = range.y;
        EXPECT_EQ(importAxis(3, fields).getRangeModeMin(), Axis::RANGE_MODE_AUTO);
        EXPECT_EQ(importAxis(3, fields).getRange(), Point(0, 0));
        EXPECT_EQ(axisLosses(fields), "chart axis 1 dropped: a range that is no number\n");
    }
}

TEST(ImportAxis, losesAnUnknownUnit)
{
    OldAxisFields fields;
    fields.unit = "furlong";

    EXPECT_EQ(importAxis(3, fields).getUnit(), UnitData(uFigure));
    EXPECT_EQ(axisLosses(fields), "chart axis 1 dropped: an unknown unit\n");
    fields.unit = "";
    EXPECT_EQ(axisLosses(fields), "");
}

TEST(ImportAxis, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_CHART, oldChart(1).record(4, Payload())),
              "invalid chart axis header version: 4");
}

std::unique_ptr<Legend> importLegend(unsigned int version, unsigned int displayVersion = 2)
{
    return importAs<Legend>(Import::OLD_LEGEND, oldLegend(version).add(oldLegendDisplay(displayVersion)));
}

std::unique_ptr<Legend> importScale(OldRecords const &data)
{
    OldLegendFields fields;
    fields.hasScale = true;
    return importAs<Legend>(Import::OLD_LEGEND, oldLegend(3, fields).add(oldLegendDisplay(1)).add(data));
}

std::string scaleRefusal(OldRecords const &data)
{
    OldLegendFields fields;
    fields.hasScale = true;
    return elementRefusal(Import::OLD_LEGEND, oldLegend(3, fields).add(oldLegendDisplay(1)).add(data));
}

OldRecords legendOf(std::string const &token)
{
    OldLegendFields fields;
    fields.token = token;
    return oldElementOf(Import::OLD_LEGEND, oldLegend(2, fields).add(oldLegendDisplay(1)));
}

OldRecords imageOf(std::string const &token)
{
    Support::OldImageFields fields;
    fields.token = token;
    return oldElementOf(Import::OLD_IMAGE, Support::oldImage(1, fields));
}

TEST(ImportLegend, keepsPlaceAndLooks)
{
    auto const legend = importLegend(1, 1);

    EXPECT_EQ(legend->getOrigin(), Point(30, 35));
    EXPECT_EQ(legend->getSize(), Point(40, 30));
    EXPECT_EQ(legend->getLegendDataMode(), Legend::LEGEND_DATA_MODE_ELEMENT);
    EXPECT_EQ(legend->getBarWidth(), 6.0);
    EXPECT_EQ(legend->getTickBoxStyle(), LineStyle(0.15, LineStyle::STYLE_FULL, Color(11, 12, 13)));
    EXPECT_EQ(legend->getTickStyle(), LineStyle(0.25, LineStyle::STYLE_DOTTED, Color(14, 15, 16)));
    EXPECT_EQ(legend->getUserFont(), Font("Courier", 7.0, Font::BOLD));
    EXPECT_EQ(legend->getFontColor(), Color(17, 18, 19));
    EXPECT_FALSE(legend->getShowHistogram());
    EXPECT_FALSE(legend->hasEqualSizedBlocks());
    EXPECT_EQ(legend->getBorder().getStyle(), LineStyle::STYLE_NONE);
}

TEST(ImportLegend, hasAFrameFromVersion3On)
{
    auto const legend = importLegend(3);

    EXPECT_EQ(legend->getBorder(), DASHED_RED);
    EXPECT_EQ(legend->getBackground(), FillStyle(Color(1, 2, 3)));
}

TEST(ImportLegend, hasHistogramAndEqualBlocksFromVersion2OfItsDisplayOn)
{
    auto const legend = importLegend(1, 2);

    EXPECT_TRUE(legend->getShowHistogram());
    EXPECT_TRUE(legend->hasEqualSizedBlocks());
}

TEST(ImportLegend, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_LEGEND, OldRecords().record(4, Payload())),
              "invalid legend header version: 4");
    EXPECT_EQ(elementRefusal(Import::OLD_LEGEND, oldLegend(1).record(3, Payload())),
              "invalid legend display parameter version: 3");
    EXPECT_EQ(scaleRefusal(OldRecords().record(3, Payload())), "unhandled legend data version: 3");
}

TEST(ImportLegend, mayHaveAScaleOfItsOwn)
{
    auto const legend = importScale(oldLegendData(1));

    Legend2::Legend const *scale = nullptr;
    Legend2::Data const *data = nullptr;
    legend->getLocalLegendData(&scale, &data);
    EXPECT_EQ(legend->getLegendDataMode(), Legend::LEGEND_DATA_MODE_MANUAL);
    EXPECT_EQ(scale->getUnit(), uStrain);
    EXPECT_EQ(scale->getUnitData().getUnitName(), "%");
    EXPECT_FALSE(scale->isDiscrete());
    EXPECT_EQ(scale->getMinimum(*data), -2.0);
    EXPECT_EQ(scale->getMaximum(*data), 3.0);
    EXPECT_EQ(data->getAverage(), 0.0);
}

TEST(ImportLegend, hasClassesAndStatisticsFromVersion2OfItsScaleOn)
{
    auto const legend = importScale(oldLegendData(2));

    Legend2::Legend const *scale = nullptr;
    Legend2::Data const *data = nullptr;
    legend->getLocalLegendData(&scale, &data);
    EXPECT_TRUE(scale->isDiscrete());
    EXPECT_EQ(scale->getNumberOfClasses(), 12U);
    EXPECT_EQ(data->getAverage(), 0.5);
    EXPECT_EQ(data->getSigmaValue(), 0.75);
}

TEST(ImportLegend, hasNoMoreThan1000Classes)
{
    EXPECT_NO_THROW(importScale(oldLegendData(2, "mm", 1000)));
    EXPECT_FALSE([] {
        Legend2::Legend const *scale = nullptr;
        Legend2::Data const *data = nullptr;
        auto const legend = importScale(oldLegendData(2, "mm", 0));
        legend->getLocalLegendData(&scale, &data);
        return scale->isDiscrete();
    }());
    EXPECT_EQ(scaleRefusal(oldLegendData(2, "mm", 1001)), "illegal value 1001 in block");
}

TEST(ImportLegend, isConnectedToWhatHasItsToken)
{
    auto const figure = importFigure(oldFigure({legendOf("b"), imageOf("a"), imageOf("b"), imageOf("b")}));

    EXPECT_EQ(childAt<Legend>(*figure, 0).getConnectorTarget(nullptr), &childAt<Image>(*figure, 2));
}

TEST(ImportLegend, mayShowTheColoursOfAChart)
{
    auto const figure = importFigure(
        oldFigure({oldElementOf(Import::OLD_CHART, chartWith(oldAxis(1), oldAxis(1))), legendOf("curve")}));

    EXPECT_EQ(childAt<Legend>(*figure, 1).getConnectorTarget(nullptr), &childAt<Chart>(*figure, 0));
}

TEST(ImportLegend, ofTheStrainOverlayIsConnectedToItsImage)
{
    auto const figure =
        importFigure(oldFigure({legendOf("LEGEND.OVERLAY_STRAIN"), imageOf("a"), imageOf("IMAGE.OVERLAY_STRAIN")}));

    EXPECT_EQ(childAt<Legend>(*figure, 0).getConnectorTarget(nullptr), &childAt<Image>(*figure, 2));
}

TEST(ImportLegend, losesATokenThatNothingHas)
{
    ImportReport report;

    auto const figure = importFigure(oldFigure({imageOf("a"), legendOf("LEGEND.OVERLAY_STRAIN")}), &report);

    EXPECT_EQ(childAt<Legend>(*figure, 1).getConnectorTarget(nullptr), nullptr);
    EXPECT_EQ(losses(report), "legend 2 dropped: the element whose colours it shows is not there\n");
}

} // namespace
} // namespace Zem::Fig2
