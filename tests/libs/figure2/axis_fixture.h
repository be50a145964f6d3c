// axis_fixture.h: what the tests of axes share.
#pragma once

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <ZemFig2Axis.h>
#include <ZemFig2ChartData.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Zem::Fig2 {

inline UnitData unitOf(Unit const *quantity, char const *name)
{
    Unit::Units_t unit{};
    EXPECT_TRUE(quantity->parseUnit(QString::fromLatin1(name), &unit));
    return UnitData(quantity, unit);
}

/// 100 mm for 0 to 10 with ticks at 0, 5 and 10 and one decimal.
inline Axis axisOf(Axis::Type type)
{
    Axis axis(type);
    axis.setLength(100);
    axis.setRange({0, 10});
    axis.setTicks(2);
    axis.setDigits(1);
    return axis;
}

/// Gives it data of that unit along the axis, and of another quantity across.
inline void setDataUnit(Axis &axis, UnitData const &unit)
{
    ChartData data;
    data.setUnitX(axis.isHorizontal() ? unit : UnitData(uMass));
    data.setUnitY(axis.isHorizontal() ? UnitData(uMass) : unit);
    axis.computeDynamicData(StageIdentifier(1), &data);
}

inline Axis updated(Axis axis)
{
    axis.update(0, 0, 0);
    return axis;
}

/// What is painted at 10,20.
inline std::string drawn(Axis const &axis, Rotation const &rotation = Rotation::null)
{
    Support::RecordingPainter painter;
    axis.draw(&painter, {10, 20}, rotation);
    return painter.transcript();
}

/// The labels that are painted, each followed by a blank.
inline std::string labels(Axis const &axis)
{
    std::string all;
    std::string const calls = drawn(axis);
    for (std::size_t from = calls.find('\''); from != std::string::npos; from = calls.find('\'', from)) {
        std::size_t const to = calls.find('\'', from + 1);
        all += calls.substr(from + 1, to - from - 1) + " ";
        from = to + 1;
    }
    return all;
}

inline void expectPositions(Axis const &axis, std::vector<double> const &expected)
{
    ASSERT_EQ(axis.getTickPositions().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(axis.getTickPositions()[i], expected[i], 1e-9);
}

inline void expectNear(BaVec2d<double> const &vec, double x, double y)
{
    EXPECT_NEAR(vec.x, x, 1e-12);
    EXPECT_NEAR(vec.y, y, 1e-12);
}

/// Every character measures 2 x 5 mm.
class AxisTest : public testing::Test
{
protected:
    Support::FakeCalculator calculator;
};

} // namespace Zem::Fig2
