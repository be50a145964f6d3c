// The lines behind a chart.
#include "axis_fixture.h"

#include <ElementForms.h>
#include <ZemFig2Grid.h>

#include <ZemParse.h>

namespace Zem::Fig2 {
namespace {

LineStyle const STYLE(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3));

/// Over 92 x 95 mm at 10,20.
std::string drawnGrid(Grid const &grid, Axis const &axisX, Axis const &axisY, Rotation const &rotation = Rotation::null)
{
    Support::RecordingPainter painter;
    grid.draw(&painter, {10, 20}, {92, 95}, &axisX, &axisY, rotation);
    return painter.transcript();
}

class GridTest : public AxisTest
{
protected:
    Axis axisX = updated(axisOf(Axis::HORIZONTAL_BOTTOM)); ///< ticks at 4, 50 and 96, margin 4
    Axis axisY = updated(axisOf(Axis::VERTICAL_LEFT));     ///< ticks at 2.5, 50 and 97.5, margin 2.5
    Grid grid;
};

TEST_F(GridTest, isDottedBlueAtFirst)
{
    EXPECT_EQ(grid.getLineStyle(), LineStyle(0.1, LineStyle::STYLE_DOTTED, Color(8, 8, 132)));
}

TEST_F(GridTest, hasALineAtEachInnerTick)
{
    EXPECT_EQ(drawnGrid(grid, axisX, axisY), "line 56,115 56,20 pen 0.1 dotted #080884ff sharp\n"
                                             "line 102,67.5 10,67.5 pen 0.1 dotted #080884ff sharp\n");
}

TEST_F(GridTest, hasALineWhereALabelHasNoRoom)
{
    Axis crowded(Axis::HORIZONTAL_BOTTOM);
    crowded.setLength(28);
    crowded.setRange({0.6, 3.4});
    crowded.update(0, 0, 0); // the tick of 2 at 14, margin 4

    EXPECT_EQ(drawnGrid(grid, crowded, axisOf(Axis::VERTICAL_LEFT)),
              "line 20,115 20,20 pen 0.1 dotted #080884ff sharp\n");
}

TEST_F(GridTest, isEmptyWithoutInnerTicks)
{
    axisX.setRange({5, 5});
    axisX.update(0, 0, 0);
    axisY.setLength(4);
    axisY.update(0, 0, 0);

    EXPECT_EQ(drawnGrid(grid, axisX, axisY), "");
    EXPECT_EQ(drawnGrid(grid, axisOf(Axis::HORIZONTAL_TOP), axisOf(Axis::VERTICAL_RIGHT)), "");
}

TEST_F(GridTest, isDrawnInItsStyleAndTurned)
{
    grid.setLineStyle(STYLE);

    EXPECT_EQ(drawnGrid(grid, axisX, axisY, Rotation({1, 2}, 0.5)),
              "line 56,115 56,20 pen 0.5 dashed #010203ff sharp turned 0.5 about 1,2\n"
              "line 102,67.5 10,67.5 pen 0.5 dashed #010203ff sharp turned 0.5 about 1,2\n");
}

TEST_F(GridTest, isStoredAsItsLineStyle)
{
    grid.setLineStyle(STYLE);

    std::string const bytes = Support::streamOf([this](IO::OutStream &stream) { grid.save(&stream); });
    Grid read;
    Support::readFrom(bytes, [&read](IO::InStream &stream) { read.load(&stream); });

    EXPECT_EQ(bytes, Support::streamOf([](IO::OutStream &stream) { STYLE.save(&stream); }));
    EXPECT_EQ(read.getLineStyle(), STYLE);
}

TEST_F(GridTest, hasATextForm)
{
    grid.setLineStyle(STYLE);
    std::stringstream stream;
    Grid read;

    grid.saveToStream(stream);

    EXPECT_EQ(stream.str(), "1 1 0.5 3 #010203ff 1 ");
    EXPECT_TRUE(read.loadFromStream(stream));
    EXPECT_EQ(read.getLineStyle(), STYLE);
}

TEST_F(GridTest, readsNothingOfTextVersion0)
{
    std::istringstream stream("0 1 0.5 3 #010203ff 1 ");

    grid.loadFromStream(stream);

    EXPECT_EQ(grid.getLineStyle(), Grid().getLineStyle());
    std::string next;
    stream >> next;
    EXPECT_EQ(next, "1");
}

TEST_F(GridTest, refusesANewerText)
{
    std::istringstream stream("2 1 0.5 3 #010203ff 1 ");

    EXPECT_EQ(Support::thrownText<IO::StreamException>([&] { grid.loadFromStream(stream); }), "wrong block version");
}

TEST_F(GridTest, passesItsParametersToTheLineStyle)
{
    grid.setLineStyle(STYLE);
    Grid read;

    for (QString const &prefix : {QString(), QStringLiteral("grid")}) {
        QString const inner = prefix.isEmpty() ? QStringLiteral("line_style") : QStringLiteral("grid_line_style");
        QString parameters = grid.getParameterString(prefix);
        EXPECT_EQ(parameters, STYLE.getParameterString(inner));

        read.createFromParameterString(parameters, prefix);

        EXPECT_EQ(read.getLineStyle(), STYLE);
        EXPECT_EQ(parameters, QString());
    }
}

} // namespace
} // namespace Zem::Fig2
