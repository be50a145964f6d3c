// The samples of curves in legends.
#include <RecordingPainter.h>
#include <ZemFig2ChartParameters.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace Zem::Fig2 {
namespace {

/// The sample in a box of 60 x 30 mm at 100,200: lines of 3 to 10 mm, symbols of 10 to 30 mm.
std::string sample(ChartParameters::Style_t style, double lineWidth = 5.0, double symbolSize = 20.0)
{
    ChartParameters parameters(style, Symbol(Symbol::TYPE_BOX, symbolSize, false),
                               LineStyle(lineWidth, LineStyle::STYLE_DASHED, Color(0, 0, 255)),
                               FillStyle(Color(0, 255, 0)));
    Symbol symbol = parameters.getSymbol();
    symbol.setColor(Color(255, 0, 0));
    parameters.setSymbol(symbol);
    Support::RecordingPainter painter;
    painter.drawVisualisation({100, 200}, {60, 30}, parameters, Rotation::null);
    return painter.transcript();
}

std::string line(char const *places, char const *width = "5")
{
    return std::string("line ") + places + " pen " + width + " dashed #0000ffff sharp\n";
}

/// A box from its upper right corner on, in the colour of the symbol.
std::string box(double x, double y, double size = 20.0, char const *width = "5")
{
    double const half = size / 2.0;
    std::string corners;
    for (BaVec2d<double> const &corner : {BaVec2d<double>(half, -half), BaVec2d<double>(half, half),
                                          BaVec2d<double>(-half, half), BaVec2d<double>(-half, -half)})
        corners += " " + Support::text(BaVec2d<double>(x, y) + corner);
    return "polygon" + corners + " pen " + width + " dashed #ff0000ff sharp fill #ff0000ff\n";
}

TEST(PainterVisualisation, aLineCarriesItsSymbolInTheMiddle)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_LINE), line("106,215 154,215") + box(130, 215));
}

TEST(PainterVisualisation, barsStandOnTheLowerEdge)
{
    std::string const look = " pen 5 dashed #0000ffff sharp fill #00ff00ff\n";
    EXPECT_EQ(sample(ChartParameters::STYLE_BARS), "polygon 106,220 118,220 118,230 106,230" + look +
                                                       "polygon 124,200 136,200 136,230 124,230" + look +
                                                       "polygon 142,210 154,210 154,230 142,230" + look);
}

TEST(PainterVisualisation, pointsAreOneSymbol)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_POINTS), box(130, 215));
}

TEST(PainterVisualisation, aSplineRunsThroughThreeSymbols)
{
    std::string const calls = sample(ChartParameters::STYLE_SPLINE);
    EXPECT_TRUE(calls.starts_with("line 106,227 "));
    EXPECT_TRUE(
        calls.ends_with(" 154,227 pen 5 dashed #0000ffff sharp\n" + box(106, 227) + box(130, 203) + box(154, 227)));
    EXPECT_GT(std::count(calls.begin(), calls.end(), '\n'), 10);
}

TEST(PainterVisualisation, spikesCarrySymbolsOnTop)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_SPIKES), line("112,230 112,206") + box(112, 206) + line("130,230 130,224") +
                                                         box(130, 224) + line("148,230 148,218") + box(148, 218));
}

TEST(PainterVisualisation, xMarkersAreThreeLinesAcross)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_X_MARKER),
              line("100,206 160,206") + line("100,215 160,215") + line("100,224 160,224") + box(130, 215));
}

TEST(PainterVisualisation, yMarkersAreThreeLinesUpwards)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_Y_MARKER),
              line("115,230 115,200") + line("130,230 130,200") + line("145,230 145,200") + box(130, 215));
}

TEST(PainterVisualisation, thinLinesAndSmallSymbolsGrowWithTheBox)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_LINE, 0.1, 0.5), line("106,215 154,215", "3") + box(130, 215, 10, "3"));
}

TEST(PainterVisualisation, wideLinesAndLargeSymbolsShrinkToTheBox)
{
    EXPECT_EQ(sample(ChartParameters::STYLE_LINE, 99, 99), line("106,215 154,215", "10") + box(130, 215, 30, "10"));
}

TEST(PainterVisualisation, turnsWithTheLegend)
{
    Support::RecordingPainter painter;
    for (ChartParameters::Style_t style : ChartParameters::getAllStyles()) {
        ChartParameters parameters;
        parameters.setStyle(style);
        painter.drawVisualisation({0, 0}, {3, 1}, parameters, Rotation({1, 2}, 0.5));
    }
    for (std::string const &call : painter.calls())
        EXPECT_TRUE(call.ends_with(" turned 0.5 about 1,2")) << call;
}

} // namespace
} // namespace Zem::Fig2
