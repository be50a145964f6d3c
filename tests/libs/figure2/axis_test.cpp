// What an axis works out, and what it paints.
#include "axis_fixture.h"

#include <ElementForms.h>

#include <cfloat>
#include <limits>

namespace Zem::Fig2 {
namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

TEST_F(AxisTest, startsWithItsDefaults)
{
    Axis const axis(Axis::VERTICAL_RIGHT);

    EXPECT_EQ(axis.getType(), Axis::VERTICAL_RIGHT);
    EXPECT_EQ(axis.getLength(), 0.0);
    EXPECT_EQ(axis.getRangeModeMin(), Axis::RANGE_MODE_AUTO);
    EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_AUTO);
    EXPECT_TRUE(axis.getVisible());
    EXPECT_EQ(axis.getRange(), BaVec2d<double>(0, 0));
    EXPECT_EQ(axis.getLineStyle(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(axis.getTickLength(), 3.0);
    EXPECT_EQ(axis.getTicks(), 10);
    EXPECT_EQ(axis.getDigitsMode(), Axis::DIGITS_MODE_MANUAL);
    EXPECT_EQ(axis.getDigits(), 2);
    EXPECT_EQ(axis.getFont(), Font(Font::DEFAULT_FONT_SANS, 12.0, 0));
    EXPECT_EQ(axis.getFontColor(), Color(0, 0, 0));
    EXPECT_EQ(axis.getUnit(), UnitData(uFigure));
    EXPECT_EQ(Axis::SPACING, 0.1);
}

TEST_F(AxisTest, paintsNothingBeforeItsFirstUpdate)
{
    for (auto type : {Axis::HORIZONTAL_TOP, Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT, Axis::VERTICAL_RIGHT})
        EXPECT_EQ(drawn(axisOf(type)), "");
}

TEST_F(AxisTest, hasASizeBeforeItsFirstUpdate)
{
    EXPECT_EQ(axisOf(Axis::VERTICAL_LEFT).getSize(), BaVec2d<double>(0, 100));
    EXPECT_EQ(axisOf(Axis::HORIZONTAL_TOP).getSize(), BaVec2d<double>(100, 0));
}

TEST_F(AxisTest, leavesRoomForTheLabelsAtItsEnds)
{
    // "10.0" is 8 mm wide: 92 mm are left for the ticks, with 4 mm at each end.
    for (auto type : {Axis::HORIZONTAL_TOP, Axis::HORIZONTAL_BOTTOM}) {
        Axis const axis = updated(axisOf(type));

        EXPECT_EQ(axis.getMargin(), 4.0);
        expectPositions(axis, {4, 50, 96});
        expectNear(axis.getMinimumSize(), 8, 8.1); // 5 + 0.1 + 3
        expectNear(axis.getSize(), 100, 8.1);
        EXPECT_EQ(axis.getVisibleRange(), BaVec2d<double>(0, 10));
        EXPECT_EQ(axis.getVisibleUnit(), UnitData(uFigure));
    }
}

TEST_F(AxisTest, leavesHalfALineAtTheEndsWhenUpright)
{
    for (auto type : {Axis::VERTICAL_LEFT, Axis::VERTICAL_RIGHT}) {
        Axis const axis = updated(axisOf(type));

        EXPECT_EQ(axis.getMargin(), 2.5);
        expectPositions(axis, {2.5, 50, 97.5});
        expectNear(axis.getMinimumSize(), 11.1, 5); // 8 + 0.1 + 3
        expectNear(axis.getSize(), 11.1, 100);
    }
}

TEST_F(AxisTest, takesTheWidthReservedForItsSide)
{
    Axis left = axisOf(Axis::VERTICAL_LEFT);
    Axis right = axisOf(Axis::VERTICAL_RIGHT);

    left.update(30, 40, 0);
    right.update(30, 40, 0);

    expectNear(left.getMinimumSize(), 30, 5);
    expectNear(right.getMinimumSize(), 40, 5);
}

TEST_F(AxisTest, doesNotShrinkToAWidthReservedForItsSide)
{
    Axis left = axisOf(Axis::VERTICAL_LEFT);

    left.update(5, 50, 0);

    expectNear(left.getMinimumSize(), 11.1, 5);
}

TEST_F(AxisTest, paintsTicksAboveTheLabelsAtTheBottom)
{
    EXPECT_EQ(drawn(updated(axisOf(Axis::HORIZONTAL_BOTTOM))),
              "line 14,20 14,23 pen 0.1 full #000000ff sharp\n"
              "text 11,23.1 '0.0' font Liberation Sans 12 0 #000000ff\n"
              "line 60,20 60,23 pen 0.1 full #000000ff sharp\n"
              "text 57,23.1 '5.0' font Liberation Sans 12 0 #000000ff\n"
              "line 106,20 106,23 pen 0.1 full #000000ff sharp\n"
              "text 102,23.1 '10.0' font Liberation Sans 12 0 #000000ff\n");
}

TEST_F(AxisTest, paintsTicksBelowTheLabelsAtTheTop)
{
    EXPECT_EQ(drawn(updated(axisOf(Axis::HORIZONTAL_TOP))), "line 14,25.1 14,28.1 pen 0.1 full #000000ff sharp\n"
                                                            "text 11,20 '0.0' font Liberation Sans 12 0 #000000ff\n"
                                                            "line 60,25.1 60,28.1 pen 0.1 full #000000ff sharp\n"
                                                            "text 57,20 '5.0' font Liberation Sans 12 0 #000000ff\n"
                                                            "line 106,25.1 106,28.1 pen 0.1 full #000000ff sharp\n"
                                                            "text 102,20 '10.0' font Liberation Sans 12 0 #000000ff\n");
}

TEST_F(AxisTest, paintsLabelsUpwardsToTheRightOfItsTicks)
{
    EXPECT_EQ(drawn(updated(axisOf(Axis::VERTICAL_RIGHT))),
              "line 10,117.5 13,117.5 pen 0.1 full #000000ff sharp\n"
              "text 13.1,115 '0.0' font Liberation Sans 12 0 #000000ff\n"
              "line 10,70 13,70 pen 0.1 full #000000ff sharp\n"
              "text 13.1,67.5 '5.0' font Liberation Sans 12 0 #000000ff\n"
              "line 10,22.5 13,22.5 pen 0.1 full #000000ff sharp\n"
              "text 13.1,20 '10.0' font Liberation Sans 12 0 #000000ff\n");
}

TEST_F(AxisTest, paintsLabelsThatEndAtTheTicksOnTheLeft)
{
    EXPECT_EQ(drawn(updated(axisOf(Axis::VERTICAL_LEFT))), "line 18.1,117.5 21.1,117.5 pen 0.1 full #000000ff sharp\n"
                                                           "text 12,115 '0.0' font Liberation Sans 12 0 #000000ff\n"
                                                           "line 18.1,70 21.1,70 pen 0.1 full #000000ff sharp\n"
                                                           "text 12,67.5 '5.0' font Liberation Sans 12 0 #000000ff\n"
                                                           "line 18.1,22.5 21.1,22.5 pen 0.1 full #000000ff sharp\n"
                                                           "text 10,20 '10.0' font Liberation Sans 12 0 #000000ff\n");
}

TEST_F(AxisTest, paintsInItsOwnStyle)
{
    Axis axis = axisOf(Axis::HORIZONTAL_BOTTOM);
    axis.setLineStyle(LineStyle(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3)));
    axis.setFont(Font(QStringLiteral("Serif"), 9.0, Font::BOLD));
    axis.setFontColor(Color(4, 5, 6));
    axis.setRange({5, 5});

    EXPECT_EQ(drawn(updated(axis)), "line 13,20 13,23 pen 0.5 dashed #010203ff sharp\n"
                                    "text 10,23.1 '5.0' font Serif 9 2 #040506ff\n"
                                    "line 107,20 107,23 pen 0.5 dashed #010203ff sharp\n"
                                    "text 104,23.1 '5.0' font Serif 9 2 #040506ff\n");
}

TEST_F(AxisTest, paintsEverythingTurned)
{
    Support::RecordingPainter painter;

    updated(axisOf(Axis::VERTICAL_LEFT)).draw(&painter, {10, 20}, Rotation({1, 2}, 0.5));

    ASSERT_EQ(painter.calls().size(), 6U);
    for (std::string const &call : painter.calls())
        EXPECT_NE(call.find(" turned 0.5 about 1,2"), std::string::npos) << call;
}

TEST_F(AxisTest, paintsLabelsAloneForTicksWithoutLength)
{
    for (auto type : {Axis::HORIZONTAL_TOP, Axis::VERTICAL_RIGHT}) {
        Axis axis = axisOf(type);
        axis.setTickLength(0);

        std::string const transcript = drawn(updated(axis));

        EXPECT_EQ(transcript.find("line"), std::string::npos);
        EXPECT_EQ(labels(updated(axis)), "0.0 5.0 10.0 ");
    }
}

TEST_F(AxisTest, dropsTheTickOfALabelWithoutRoom)
{
    // Labels of 8 mm at 1, 2 and 3, of which 20 mm for 2.8 are 7.1 mm apart: that of 2 has no room.
    Axis axis(Axis::HORIZONTAL_BOTTOM);
    axis.setLength(28);
    axis.setRange({0.6, 3.4});

    axis.update(0, 0, 0);

    expectPositions(axis, {4 + 20 * 0.4 / 2.8, 14, 4 + 20 * 2.4 / 2.8});
    EXPECT_EQ(labels(axis), "1.00 3.00 ");
    EXPECT_EQ(drawn(axis).find("line 24,"), std::string::npos);
}

TEST_F(AxisTest, keepsOneTickWhenItIsShorterThanItsLabels)
{
    // "0.0" takes 6 mm of 5.
    Axis axis = axisOf(Axis::HORIZONTAL_BOTTOM);
    axis.setLength(5);

    axis.update(0, 0, 0);

    expectPositions(axis, {3});
    expectNear(axis.getMinimumSize(), 6, 8.1);
}

TEST_F(AxisTest, keepsOneTickWhenItIsLowerThanALine)
{
    Axis axis = axisOf(Axis::VERTICAL_LEFT);
    axis.setLength(4);

    axis.update(0, 0, 0);

    EXPECT_EQ(labels(axis), "0.0 ");
}

TEST_F(AxisTest, takesItsDecimalsFromItsMode)
{
    Axis axis = axisOf(Axis::VERTICAL_LEFT);
    axis.setDigits(5);
    std::vector<std::pair<Axis::DigitsMode, std::string>> const expected{
        {Axis::DIGITS_MODE_MANUAL, "0.00000 5.00000 10.00000 "},
        {Axis::DIGITS_MODE_AUTO, "0 5 10 "},
        {Axis::DIGITS_MODE_3D, "0.000 5.000 10.000 "},
        {Axis::DigitsMode(9), "0 5 10 "}};

    for (auto const &[mode, texts] : expected) {
        axis.setDigitsMode(mode);
        axis.update(0, 0, 3);
        EXPECT_EQ(labels(axis), texts);
    }
}

TEST_F(AxisTest, has50IntervalsWithoutALimit)
{
    for (int limit : {0, -1}) {
        Axis axis(Axis::HORIZONTAL_TOP);
        axis.setLength(1000);
        axis.setRange({0, 100});
        axis.setTicks(limit);

        axis.update(0, 0, 0);

        EXPECT_EQ(axis.getTickPositions().size(), 51U);
    }
}

TEST_F(AxisTest, showsDataInTheUnitThatTheUserChose)
{
    for (auto type : {Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT}) {
        Axis axis = axisOf(type);
        axis.setRange({0, 2000});
        setDataUnit(axis, UnitData(uLength));
        axis.setUnit(unitOf(uLength, "m"));

        axis.update(0, 0, 0);

        EXPECT_EQ(axis.getVisibleUnit(), unitOf(uLength, "m"));
        EXPECT_EQ(axis.getVisibleRange(), BaVec2d<double>(0, 2));
        EXPECT_EQ(labels(axis), "0.0 1.0 2.0 ");
    }
}

TEST_F(AxisTest, keepsTheQuantityOfItsData)
{
    Axis axis = axisOf(Axis::HORIZONTAL_BOTTOM);
    axis.setRange({0, 20});
    setDataUnit(axis, unitOf(uLength, "cm"));
    axis.setUnit(unitOf(uForce, "kN"));

    axis.update(0, 0, 0);

    EXPECT_EQ(axis.getVisibleUnit(), unitOf(uLength, "cm"));
    EXPECT_EQ(axis.getVisibleRange(), BaVec2d<double>(0, 2));
}

TEST_F(AxisTest, showsPlainNumbersOfDataWithoutAUnit)
{
    Axis axis = axisOf(Axis::HORIZONTAL_BOTTOM);
    setDataUnit(axis, UnitData());
    axis.setUnit(unitOf(uLength, "m"));

    axis.update(0, 0, 0);

    EXPECT_FALSE(axis.getVisibleUnit().hasUnit());
    EXPECT_EQ(axis.getVisibleRange(), BaVec2d<double>(0, 10));
}

TEST_F(AxisTest, hasNoTicksForAReversedRange)
{
    for (auto type : {Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT}) {
        Axis axis = axisOf(type);
        axis.setRange({10, 0});

        axis.update(0, 0, 0);

        expectPositions(axis, {});
        EXPECT_EQ(drawn(axis), "");
        expectNear(axis.getMinimumSize(), type == Axis::VERTICAL_LEFT ? 3.1 : 0.0,
                   type == Axis::VERTICAL_LEFT ? 5.0 : 3.1);
    }
}

TEST_F(AxisTest, labelsBothEndsOfARangeWithoutExtent)
{
    Axis axis = axisOf(Axis::VERTICAL_RIGHT);
    axis.setRange({5, 5});

    axis.update(0, 0, 0);

    expectPositions(axis, {2.5, 97.5});
    EXPECT_EQ(labels(axis), "5.0 5.0 ");
}

TEST_F(AxisTest, takesInfiniteEndsForTheGreatestNumbers)
{
    for (double end : {INF, DBL_MAX}) {
        for (auto type : {Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT}) {
            Axis axis = axisOf(type);
            axis.setRange({-end, end});

            axis.update(0, 0, 0);

            EXPECT_EQ(axis.getVisibleRange(), BaVec2d<double>(-DBL_MAX, DBL_MAX));
            for (double position : axis.getTickPositions())
                EXPECT_TRUE(position >= -1e-9 && position <= axis.getLength() + 1e-9) << position;
        }
    }
}

TEST_F(AxisTest, convertsTheGreatestNumbersToFiniteOnes)
{
    Axis axis = axisOf(Axis::VERTICAL_LEFT);
    axis.setRange({0, DBL_MAX});
    setDataUnit(axis, unitOf(uLength, "um"));

    axis.update(0, 0, 0);

    EXPECT_EQ(axis.getVisibleRange(), BaVec2d<double>(0, DBL_MAX));
}

TEST_F(AxisTest, staysAsItWasForARangeThatIsNoNumber)
{
    for (auto type : {Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT}) {
        Axis axis = updated(axisOf(type));
        std::string const before = drawn(axis);
        axis.setRange({0, NOT_A_NUMBER});

        EXPECT_THROW(axis.update(0, 0, 0), ProgError);

        EXPECT_EQ(drawn(axis), before);
    }
}

TEST_F(AxisTest, boundsItsTicksWhateverIsAskedFor)
{
    for (auto type : {Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT}) {
        for (double length : {1e9, DBL_MAX, INF}) {
            Axis axis = axisOf(type);
            axis.setLength(length);
            axis.setTicks(std::numeric_limits<int>::max());
            axis.setDigits(std::numeric_limits<int>::max());

            axis.update(0, 0, 0);

            EXPECT_LE(axis.getTickPositions().size(), 10001U);
        }
    }
}

TEST_F(AxisTest, hasAtMostOneTickForALengthThatIsNoNumber)
{
    for (double length : {NOT_A_NUMBER, -INF, -DBL_MAX, 0.0}) {
        for (auto type : {Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT}) {
            Axis axis = axisOf(type);
            axis.setLength(length);

            axis.update(0, 0, 0);

            EXPECT_LE(axis.getTickPositions().size(), 1U);
        }
    }
}

TEST_F(AxisTest, refusesATypeOutsideTheEnumeration)
{
    Axis axis(Axis::Type(4));

    EXPECT_EQ(Support::progError([&axis] { axis.update(0, 0, 0); }), "fig_axis: Illegal axis type");
}

TEST_F(AxisTest, copiesWhatItWorkedOut)
{
    Axis const axis = updated(axisOf(Axis::VERTICAL_LEFT));
    Axis other(Axis::HORIZONTAL_TOP);

    other = axis;

    EXPECT_EQ(drawn(other), drawn(axis));
}

TEST_F(AxisTest, growsWithItsTicks)
{
    Axis const axis = axisOf(Axis::VERTICAL_LEFT);

    EXPECT_GE(axis.getEstimatedObjectSize(), sizeof(Axis));
    EXPECT_GE(updated(axis).getEstimatedObjectSize(), sizeof(Axis) + 3 * (sizeof(double) + sizeof(QString)));
}

} // namespace
} // namespace Zem::Fig2
