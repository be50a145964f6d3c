// Where the parts of a colour legend stand. Upright, the bar has 120 - 2 x 1 (margin) - 0.1 (border) - 0.1 (boxes)
// - 5 (title) - 1 (spacing) = 111.8 mm, and the first part begins at 1 + 0.1 = 1.1 mm.
#include "legend_fixture.h"

#include <ElementForms.h>

#include <cmath>
#include <limits>

namespace Zem::Fig2 {
namespace {

using Support::progError;

TEST_F(LegendTest, standsUprightUnlessItIsWiderThanHigh)
{
    legend.setSize({40, 40});
    EXPECT_EQ(legend.getOrientation(), 1);
    legend.setSize({40.1, 40});
    EXPECT_EQ(legend.getOrientation(), 0);
    legend.setSize({40, 40.1});
    EXPECT_EQ(legend.getOrientation(), 1);
}

TEST_F(LegendTest, takesItsTicksFromTheScale)
{
    update();

    EXPECT_EQ(legend.getTitle(), QStringLiteral("[mm]"));
    EXPECT_NEAR(legend.getColorLength(), 111.8, 1e-12);
    EXPECT_EQ(legend.getTickTexts(), (std::vector<QString>{"0.0", "5.0", "10.0"}));
    EXPECT_EQ(legend.getTickValues(), (std::vector<double>{0, 5, 10}));
    ASSERT_EQ(legend.getNumberOfTickLabels(), 3U);
    EXPECT_NEAR(legend.getTickPositions()[1], 55.9, 1e-12);
    EXPECT_NEAR(legend.getTickPositions()[2], 111.8, 1e-12);
}

TEST_F(LegendTest, keepsItsTickValuesInTheBaseUnit)
{
    Legend2::Legend inMetres = scale();
    Unit::Units_t metre{};
    ASSERT_TRUE(uLength->parseUnit("m", &metre));
    inMetres.setUnitData(UnitData(uLength, metre));
    inMetres.setFixedMaximum(10000.0);
    setLocal(inMetres);

    update();

    EXPECT_EQ(legend.getTitle(), QStringLiteral("[m]"));
    EXPECT_EQ(legend.getTickTexts(), (std::vector<QString>{"0.0", "5.0", "10.0"}));
    EXPECT_EQ(legend.getTickValues(), (std::vector<double>{0, 5000, 10000}));
}

TEST_F(LegendTest, withoutUnitHasNoTitleAndTheBarItsRoom)
{
    Legend2::Legend plain(nullptr);
    plain.setFixedMinimum(0.0);
    plain.setFixedMaximum(10.0);
    setLocal(plain);

    update();

    Rect rect;
    EXPECT_EQ(legend.getTitle(), QString());
    EXPECT_FALSE(legend.getEditTitleRect(&rect));
    EXPECT_NEAR(legend.getColorLength(), 117.8, 1e-12);
}

TEST_F(LegendTest, uprightPutsTheLabelsRightOfTheBar)
{
    update();

    Rect rect;
    ASSERT_TRUE(legend.getEditTitleRect(&rect));
    // The columns are 5 + 1 (tick) + 1 (spacing) + 8 = 15 mm wide, the title 8 mm.
    expectRect(rect, 4.6, 1.1, 8, 5);
    legend.computeLabelRect(0, &rect);
    expectRect(rect, 2, 109.3, 6, 5);
    legend.computeLabelRect(2, &rect);
    expectRect(rect, 0, -2.5, 8, 5);
    ASSERT_TRUE(legend.getMinLabelRect(&rect));
    expectRect(rect, 8.1 + 2, 7.1 + 109.3, 6, 5);
    ASSERT_TRUE(legend.getMaxLabelRect(&rect));
    expectRect(rect, 8.1, 7.1 - 2.5, 8, 5);
    ASSERT_TRUE(legend.getValueLabelRect(1, &rect));
    expectRect(rect, 8.1 + 2, 7.1 + 53.4, 6, 5);
    EXPECT_FALSE(legend.getValueLabelRect(3, &rect));
    expectVec(legend.getMinimumSize(), 17.2, 13.2);
}

TEST_F(LegendTest, centresItsColumnsUnderAWiderTitle)
{
    Legend2::Legend named = scale();
    named.setUnitName(QStringLiteral("millimetres"));
    setLocal(named);

    update();

    Rect rect;
    ASSERT_TRUE(legend.getEditTitleRect(&rect));
    expectRect(rect, 1.1, 1.1, 26, 5);
    // (26 - 15) / 2 = 5.5 mm to the right.
    ASSERT_TRUE(legend.getMaxLabelRect(&rect));
    expectRect(rect, 13.6, 4.6, 8, 5);
    expectVec(legend.getMinimumSize(), 28.2, 13.2);
}

TEST_F(LegendTest, lyingPutsTheLabelsBelowTheBar)
{
    legend.setSize({120, 40});

    update();

    // The title is no part of the length: 120 - 2 - 0.2.
    EXPECT_NEAR(legend.getColorLength(), 117.8, 1e-12);
    Rect rect;
    ASSERT_TRUE(legend.getEditTitleRect(&rect));
    expectRect(rect, 56, 1.1, 8, 5);
    legend.computeLabelRect(1, &rect);
    expectRect(rect, 55.9, 0, 6, 5);
    ASSERT_TRUE(legend.getMinLabelRect(&rect));
    // 1.1 + 5 + 1 to the bar, and 5 + 1 + 1 below its upper edge.
    expectRect(rect, 1.1 - 3, 14.1, 6, 5);
    expectVec(legend.getMinimumSize(), 10.2, 20.2);
}

TEST_F(LegendTest, lyingCentresItsBarUnderAWiderTitle)
{
    Legend2::Legend named = scale();
    named.setUnitName(QString(60, QLatin1Char('x')));
    setLocal(named);
    legend.setSize({120, 40});

    update();

    // The title is 124 mm wide, the bar 117.8: it begins at 1.1 + 3.1.
    Rect rect;
    ASSERT_TRUE(legend.getMinLabelRect(&rect));
    expectRect(rect, 4.2 - 3, 14.1, 6, 5);
    expectVec(legend.getSize(), 126.2, 40);
}

TEST_F(LegendTest, uprightHasTheExtremaBoxesAtBothEnds)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    setLocal(extrema);

    update();

    // Each end takes 5 (box) + 5 (text) + 0.1.
    EXPECT_NEAR(legend.getColorLength(), 91.6, 1e-12);
    Rect rect;
    ASSERT_TRUE(legend.getMaxColorRect(&rect));
    expectRect(rect, 1.1, 7.1, 5, 5);
    ASSERT_TRUE(legend.getMinColorRect(&rect));
    expectRect(rect, 1.1, 113.9, 5, 5);
    ASSERT_TRUE(legend.getMaxLabelRect(&rect));
    expectRect(rect, 8.1, 17.2 - 2.5, 8, 5);
    // 2.2 + 6 (title) + 20.2 + 5 (the least bar).
    expectVec(legend.getMinimumSize(), 17.2, 33.4);
}

TEST_F(LegendTest, lyingTakesTheRoomOfOneExtremumForBoth)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    setLocal(extrema);
    legend.setSize({120, 40});

    update();

    // 117.8 - 5 - 8 ("10.0") - 0.1.
    EXPECT_NEAR(legend.getColorLength(), 104.7, 1e-12);
    Rect rect;
    ASSERT_TRUE(legend.getMinColorRect(&rect));
    expectRect(rect, 1.1, 7.1, 5, 5);
    ASSERT_TRUE(legend.getMaxColorRect(&rect));
    expectRect(rect, 113.9, 7.1, 5, 5);
    // 2.2 + 13.1 + 5.
    expectVec(legend.getMinimumSize(), 20.3, 20.2);
}

TEST_F(LegendTest, lyingTakesTheWiderTextOfBothExtrema)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    extrema.setFixedMinimum(-1000.0);
    setLocal(extrema);
    legend.setSize({120, 40});

    update();

    // 117.8 - 5 - 14 ("-1000.0") - 0.1.
    EXPECT_NEAR(legend.getColorLength(), 98.7, 1e-12);
}

TEST_F(LegendTest, lyingHasNarrowerExtremaBoxesWhenTextsAreNarrowerThanTheBarIsThick)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    setLocal(extrema);
    legend.setBarWidth(20);
    legend.setSize({120, 60});

    update();

    // Both share 20 + 8 + 0.1.
    Rect rect;
    ASSERT_TRUE(legend.getMinColorRect(&rect));
    expectRect(rect, 1.1, 7.1, 14.05, 20);
}

TEST_F(LegendTest, hasNoExtremaBoxesUnlessTheScaleUsesThem)
{
    update();

    Rect rect;
    EXPECT_FALSE(legend.getMinColorRect(&rect));
    EXPECT_FALSE(legend.getMaxColorRect(&rect));
}

TEST_F(LegendTest, growsToItsLeastSize)
{
    legend.setSize({16, 100});

    update();

    expectVec(legend.getSize(), 17.2, 100);
    expectVec(legend.getOrigin(), 50, 70);
}

TEST_F(LegendTest, growsByTheLeastThatIsMissing)
{
    legend.setSize({17.2 - 1e-6, 100});

    update();

    expectVec(legend.getSize(), 17.2, 100);
}

TEST_F(LegendTest, growsAgainstItsPivot)
{
    legend.setSize({16, 100});
    legend.setPivotAlignmentX(ALIGN_CENTER);
    update();
    expectVec(legend.getOrigin(), 49.4, 70);

    legend.setOrigin({50, 70});
    legend.setSize({16, 100});
    legend.setPivotAlignmentX(ALIGN_END);
    update();
    expectVec(legend.getOrigin(), 48.8, 70);
}

TEST_F(LegendTest, growsDownwardsAgainstItsPivot)
{
    // A lying one needs 20.2 in height.
    legend.setSize({120, 10});
    legend.setPivotAlignmentY(ALIGN_CENTER);
    update();
    expectVec(legend.getOrigin(), 50, 64.9);

    legend.setOrigin({50, 70});
    legend.setSize({120, 10});
    legend.setPivotAlignmentY(ALIGN_END);
    update();
    expectVec(legend.getOrigin(), 50, 59.8);
}

TEST_F(LegendTest, makesItsShorterSideTheLeastOneWithAutoSize)
{
    legend.setAutoSize(true);

    update();
    expectVec(legend.getSize(), 17.2, 120);

    legend.setSize({120, 40});
    update();
    expectVec(legend.getSize(), 120, 20.2);
}

TEST_F(LegendTest, takesTheWidthOfASquareForItsShorterSide)
{
    legend.setAutoSize(true);
    legend.setSize({40, 40});

    update();

    expectVec(legend.getSize(), 17.2, 40);
}

TEST_F(LegendTest, thatGrowsIntoALyingOneIsLaidOutAsSuch)
{
    // As an upright one it needs 17.2 x 13.2, as the lying one that this makes of it 20.2 in height, and so it stands.
    legend.setSize({10, 10});

    update();

    expectVec(legend.getSize(), 17.2, 20.2);
    EXPECT_EQ(legend.getOrientation(), 1);
    EXPECT_NEAR(legend.getColorLength(), 12.0, 1e-12);
    legend.invalidate();
    update();
    expectVec(legend.getSize(), 17.2, 20.2);
    EXPECT_NEAR(legend.getColorLength(), 12.0, 1e-12);
}

TEST_F(LegendTest, thinsOutLabelsFromTheFirstUpward)
{
    // Five labels on 11.8 mm: the second meets the first, the fourth the last.
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(4);
    setLocal(classes);
    legend.setSize({19, 20});

    update();

    EXPECT_NEAR(legend.getColorLength(), 11.8, 1e-12);
    EXPECT_EQ(legend.getDrawTexts(), (std::vector<bool>{true, false, true, false, true}));
    Rect rect;
    EXPECT_FALSE(legend.getValueLabelRect(1, &rect));
}

TEST_F(LegendTest, measuresEachLabelAgainstTheLastThatStayedOn)
{
    // Nine labels, each 2.75 mm, 5 mm high: every second one stays.
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(8);
    setLocal(classes);
    legend.setSize({19, 30.2});

    update();

    EXPECT_NEAR(legend.getColorLength(), 22, 1e-12);
    EXPECT_EQ(legend.getDrawTexts(), (std::vector<bool>{true, false, true, false, true, false, true, false, true}));
}

TEST_F(LegendTest, dropsLabelsThatMeetALastOneThatIsOff)
{
    // Three texts on 117.8 mm; the last, 160 mm wide, reaches over both others.
    Legend2::ToleranceParams params = tolerance();
    params.setText(Legend2::TOLERANCE_FAIL_HIGH, QString(80, QLatin1Char('x')));
    legend.setLocalToleranceParams(true, params);
    legend.setSize({120, 40});

    update();

    EXPECT_EQ(legend.getDrawTexts(), (std::vector<bool>{true, false, false}));
}

TEST_F(LegendTest, dropsTheLastLabelWhenItMeetsTheFirst)
{
    // The boxes of the extrema leave the bar its least length of 5 mm: the labels about its ends touch.
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    extrema.setMaxTicks(1);
    setLocal(extrema);
    legend.setSize({20, 30});

    update();

    EXPECT_EQ(legend.getColorLength(), 5.0);
    EXPECT_EQ(legend.getDrawTexts(), (std::vector<bool>{true, false}));
}

TEST_F(LegendTest, spreadsBlocksOfOneSizeEvenly)
{
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(2);
    classes.setColorMode(Legend2::COLOR_MODE_LOGARITHMIC);
    classes.setFixedMinimum(1.0);
    classes.setFixedMaximum(100.0);
    setLocal(classes);

    update();
    // 1, 10, 100 at their values' places.
    EXPECT_NEAR(legend.getTickPositions()[1], 111.8 * 9.0 / 99.0, 1e-9);

    legend.setEqualSizedBlocks(true);
    update();
    EXPECT_NEAR(legend.getTickPositions()[1], 55.9, 1e-9);
    EXPECT_EQ(legend.getTickPositions()[2], 111.8);
}

TEST_F(LegendTest, endsItsLastBlockAtTheEndOfTheBarToTheLastBit)
{
    // The eleventh part of the length, taken eleven times, is not the length.
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(11);
    setLocal(classes);
    legend.setEqualSizedBlocks(true);

    update();

    EXPECT_EQ(legend.getTickPositions().back(), legend.getColorLength());
}

TEST_F(LegendTest, keepsTheRoomOfLinesThatAreNotDrawn)
{
    legend.setBorder(LineStyle(0.3, LineStyle::STYLE_NONE, Color(0, 0, 0)));
    legend.setTickBoxStyle(LineStyle(0.5, LineStyle::STYLE_NONE, Color(0, 0, 0)));

    update();

    // 120 - 2 - 0.3 - 0.5 - 6.
    EXPECT_NEAR(legend.getColorLength(), 111.2, 1e-12);
}

TEST_F(LegendTest, knowsTheBlocksOfADiscreteScale)
{
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(2);
    setLocal(classes);
    Rect rect;

    update();

    ASSERT_TRUE(legend.getColorBoxRect(0, &rect));
    expectRect(rect, 1.1, 63, 5, 55.9);
    ASSERT_TRUE(legend.getColorBoxRect(1, &rect));
    expectRect(rect, 1.1, 7.1, 5, 55.9);
    EXPECT_FALSE(legend.getColorBoxRect(2, &rect));
    EXPECT_EQ(legend.getLUTIndexForLabelIndex(0), 0);
    EXPECT_EQ(legend.getLUTIndexForLabelIndex(1), 1);
    EXPECT_EQ(legend.getLUTIndexForLabelIndex(3), -1);
}

TEST_F(LegendTest, ofAContinuousScaleHasNoBlocks)
{
    Rect rect;

    update();

    EXPECT_FALSE(legend.getColorBoxRect(0, &rect));
    EXPECT_EQ(legend.getLUTIndexForLabelIndex(0), -1);
}

TEST_F(LegendTest, inToleranceDisplayHasALineForEachText)
{
    legend.setLocalToleranceParams(true, tolerance());

    update();

    EXPECT_EQ(legend.getTitle(), QStringLiteral("[Test]"));
    // Without the spacing behind the title: 120 - 2 - 0.2 - 5.
    EXPECT_NEAR(legend.getColorLength(), 112.8, 1e-12);
    EXPECT_EQ(legend.getTickTexts(), (std::vector<QString>{"bad", "good"}));
    EXPECT_EQ(legend.getTickValues(), std::vector<double>(3, std::numeric_limits<double>::max()));
    EXPECT_NEAR(legend.getTickPositions()[1], 56.4, 1e-12);
    Rect rect;
    legend.computeLabelRect(0, &rect);
    expectRect(rect, 2, 112.8 - 28.2 - 2.5, 6, 5);
    ASSERT_TRUE(legend.getColorBoxRect(1, &rect));
    expectRect(rect, 1.1, 6.1, 5, 56.4);
    EXPECT_FALSE(legend.getMinLabelRect(&rect));
    EXPECT_EQ(legend.getLUTIndexForLabelIndex(1), 1);
}

TEST_F(LegendTest, inToleranceDisplayLiesWithItsTextsBelow)
{
    legend.setSize({120, 40});
    legend.setLocalToleranceParams(true, tolerance());

    update();

    EXPECT_NEAR(legend.getColorLength(), 117.8, 1e-12);
    Rect rect;
    ASSERT_TRUE(legend.getColorBoxRect(1, &rect));
    expectRect(rect, 1.1 + 58.9, 7.1, 58.9, 5);
    // In the middle of the first half, 5 + 1 below the upper edge of the bar, which has no ticks.
    ASSERT_TRUE(legend.getValueLabelRect(0, &rect));
    expectRect(rect, 1.1 + 29.45 - 3, 13.1, 6, 5);
}

TEST_F(LegendTest, inToleranceDisplayWithoutTextsHasItsTitleOnly)
{
    Legend2::ToleranceParams silent = tolerance();
    silent.setText(Legend2::TOLERANCE_FAIL_LOW, QString());
    silent.setText(Legend2::TOLERANCE_PASS, QString());
    legend.setLocalToleranceParams(true, silent);

    update();

    EXPECT_EQ(legend.getTitle(), QStringLiteral("[Test]"));
    EXPECT_EQ(legend.getNumberOfTickLabels(), 0U);
    EXPECT_TRUE(legend.getTickPositions().empty());
}

TEST_F(LegendTest, withoutAScaleSaysSoAndHasNoTicks)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);

    update();

    EXPECT_FALSE(legend.isScaleValid());
    EXPECT_EQ(legend.getTitle(), QStringLiteral("[invalid]"));
    EXPECT_TRUE(legend.getTickPositions().empty());
    EXPECT_EQ(progError([this] {
                  Rect rect;
                  legend.computeLabelRect(0, &rect);
              }),
              "fig_legend: Invalid data index");
}

TEST_F(LegendTest, refusesLabelsThatDoNotExist)
{
    update();

    EXPECT_EQ(progError([this] {
                  Rect rect;
                  legend.computeLabelRect(3, &rect);
              }),
              "fig_legend: Invalid data index");
}

TEST_F(LegendTest, asksForRepaintOfLabelsThatReachOut)
{
    // Without title and margin the upper label begins 2.5 mm above the bar.
    Legend2::Legend plain = scale();
    plain.setUnitData(UnitData());
    setLocal(plain);
    legend.setMargin(0);

    update();

    EXPECT_NEAR(Rect(legend.getUpdatePolygon()).y, 10 + 0.1 - 2.5, 1e-12);
    EXPECT_NEAR(Rect(legend.getCoveredPolygon()).y, 10, 1e-12);
}

TEST_F(LegendTest, asksForRepaintOfTurnedLabelsThatReachOut)
{
    Legend2::Legend plain = scale();
    plain.setUnitData(UnitData());
    setLocal(plain);
    legend.setMargin(0);
    legend.setAngle(std::acos(0.0));

    update();

    // Turned by a right angle it covers -10 to 110, and the labels reach 2.4 mm farther at both ends.
    Rect const repainted(legend.getUpdatePolygon());
    EXPECT_NEAR(repainted.x, -12.4, 1e-9);
    EXPECT_NEAR(repainted.width, 124.8, 1e-9);
    EXPECT_NEAR(repainted.y, 50, 1e-9);
    EXPECT_NEAR(repainted.height, 40, 1e-9);
}

TEST_F(LegendTest, survivesLimitsAndSizesThatAreNoNumbers)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinity = std::numeric_limits<double>::infinity();
    for (double minimum : {nan, -infinity, 0.0, 20.0, -1e308}) {
        for (double maximum : {nan, infinity, 10.0, 0.0, 1e308}) {
            for (double width : {5.0, nan, infinity, -3.0, 0.0}) {
                Legend2::Legend dynamic(uLength);
                Legend2::Data data;
                data.setDynamicMinimum(minimum);
                data.setDynamicMaximum(maximum);
                dynamic.setUseExtremaColors(true);
                dynamic.setMaxTicks(100000);
                legend.setLocalLegendData(dynamic, data);
                legend.setBarWidth(width);
                legend.setSize({width, 30});
                EXPECT_NE(drawn(), "");
            }
        }
    }
}

} // namespace
} // namespace Zem::Fig2
