#include <RecordingPainter.h>

#include <ZemError.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <stdexcept>

namespace Zem::Fig2 {
namespace {

using Support::RecordingPainter;

FillStyle const RED(Color(255, 0, 0));

std::string symbolPolygon(Symbol::Type type, double size = 1.0)
{
    RecordingPainter painter;
    painter.drawSymbol({10, 20}, Symbol(type, size, false), LineStyle::null, RED, Rotation::null);
    return painter.transcript();
}

TEST(PainterRect, isAClosedPolygonOfFourCorners)
{
    RecordingPainter painter;
    painter.drawRect({1, 2}, {3, 4}, LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)), FillStyle::null,
                     Rotation({5, 5}, 0.5));
    EXPECT_EQ(painter.transcript(),
              "polygon 1,2 4,2 4,6 1,6 pen 0.1 full #000000ff sharp no fill turned 0.5 about 5,5\n");
}

TEST(PainterSymbol, isScaledAndMovedToItsPlace)
{
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_BOX, 2.0), "polygon 11,19 11,21 9,21 9,19 no pen fill #ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_PYRAMID), "polygon 10.5,20.5 9.5,20.5 10,19.5 no pen fill #ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_CHEQUE), "polygon 10.5,20 10,20.5 9.5,20 10,19.5 no pen fill #ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_TRIANGLE), "polygon 10.5,19.5 10,20.5 9.5,19.5 no pen fill #ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_HOUSE),
              "polygon 10.5,20 10.5,20.5 9.5,20.5 9.5,20 10,19.5 no pen fill #ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_HEXAGON),
              "polygon 10.5,19.75 10.5,20.25 10,20.5 9.5,20.25 9.5,19.75 10,19.5 no pen fill #ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_CROSS),
              "polygon 10.5,19.5 10.25,20 10.5,20.5 10,20.25 9.5,20.5 9.75,20 9.5,19.5 10,19.75 no pen fill "
              "#ff0000ff\n");
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_BORDER),
              "polygon 10.5,19.5 10.5,20.5 9.5,20.5 9.5,19.5 9.75,19.75 9.75,20.25 10.25,20.25 10.25,19.75 "
              "9.75,19.75 9.5,19.5 no pen fill #ff0000ff\n");
}

TEST(PainterSymbol, withoutPointsIsAnEmptyPolygon)
{
    EXPECT_EQ(symbolPolygon(Symbol::TYPE_NONE), "polygon no pen fill #ff0000ff\n");
}

/// Every outline closes on its start: the sum of its steps is nothing.
class ClosedSymbols : public testing::TestWithParam<Symbol::Type>
{
};

class PolygonPainter : public RecordingPainter
{
public:
    void drawPolygon(Polygon2d const &polygon, LineStyle const &, FillStyle const &, Rotation const &, bool) override
    {
        points = polygon.getPoints();
    }
    std::vector<BaVec2d<double>> points;
};

TEST_P(ClosedSymbols, endAtTheirStart)
{
    static std::map<Symbol::Type, BaVec2d<double>> const starts{
        {Symbol::TYPE_BOX, {-0.5, -0.5}},    {Symbol::TYPE_TRIANGLE, {-0.5, -0.5}}, {Symbol::TYPE_CROSS, {0, -0.25}},
        {Symbol::TYPE_BORDER, {-0.5, -0.5}}, {Symbol::TYPE_MARKER, {-0.1, 0}},      {Symbol::TYPE_SPOT, {-0.05, -0.05}}};
    static std::map<Symbol::Type, std::size_t> const sizes{
        {Symbol::TYPE_CIRCLE, 16}, {Symbol::TYPE_BOX, 4},   {Symbol::TYPE_PYRAMID, 3},  {Symbol::TYPE_CHEQUE, 4},
        {Symbol::TYPE_STAR, 10},   {Symbol::TYPE_HEXAGON, 6}, {Symbol::TYPE_TRIANGLE, 3}, {Symbol::TYPE_CROSS, 8},
        {Symbol::TYPE_BORDER, 10}, {Symbol::TYPE_HOUSE, 5}, {Symbol::TYPE_CORNERS, 12}, {Symbol::TYPE_MARKER, 12},
        {Symbol::TYPE_SPOT, 12}};
    PolygonPainter painter;
    painter.drawSymbol({0, 0}, Symbol(GetParam(), 1, false), LineStyle::null, RED, Rotation::null);

    auto const start = starts.contains(GetParam()) ? starts.at(GetParam()) : BaVec2d<double>(0, -0.5);
    ASSERT_EQ(painter.points.size(), sizes.at(GetParam()));
    EXPECT_NEAR(painter.points.back().x, start.x, 1e-12);
    EXPECT_NEAR(painter.points.back().y, start.y, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(PainterSymbol, ClosedSymbols,
                         testing::Values(Symbol::TYPE_CIRCLE, Symbol::TYPE_BOX, Symbol::TYPE_PYRAMID,
                                         Symbol::TYPE_CHEQUE, Symbol::TYPE_STAR, Symbol::TYPE_HEXAGON,
                                         Symbol::TYPE_TRIANGLE, Symbol::TYPE_CROSS, Symbol::TYPE_BORDER,
                                         Symbol::TYPE_HOUSE, Symbol::TYPE_CORNERS, Symbol::TYPE_MARKER,
                                         Symbol::TYPE_SPOT));

TEST(PainterSymbol, hasTheShapesWithManyPoints)
{
    auto const tenfold = [](Symbol::Type type) {
        PolygonPainter painter;
        painter.drawSymbol({0, 0}, Symbol(type, 10, false), LineStyle::null, RED, Rotation::null);
        return Support::text(Polygon2d(painter.points, true));
    };
    EXPECT_EQ(tenfold(Symbol::TYPE_CIRCLE),
              "1.9,-4.6 3.5,-3.5 4.6,-1.9 5,0 4.6,1.9 3.5,3.5 1.9,4.6 0,5 -1.9,4.6 -3.5,3.5"
              " -4.6,1.9 -5,0 -4.6,-1.9 -3.5,-3.5 -1.9,-4.6 0,-5");
    EXPECT_EQ(tenfold(Symbol::TYPE_STAR),
              "1.5,-1.7 5.1,-1.3 2.5,1.3 3.3,4.8 0,2.9 -3.3,4.8 -2.5,1.3 -5.1,-1.3 -1.5,-1.7"
              " 0,-5");
    EXPECT_EQ(tenfold(Symbol::TYPE_CORNERS),
              "2.5,-4.3 4.3,-2.5 5,0 4.3,2.5 2.5,4.3 0,5 -2.5,4.3 -4.3,2.5 -5,0 -4.3,-2.5"
              " -2.5,-4.3 0,-5");
    EXPECT_EQ(tenfold(Symbol::TYPE_MARKER),
              "-6,-5 -5,-6 0,-1 5,-6 6,-5 1,0 6,5 5,6 0,1 -5,6 -6,5 -1,0");
    EXPECT_EQ(tenfold(Symbol::TYPE_SPOT),
              "-0.5,-5.5 0.5,-5.5 0.5,-0.5 5.5,-0.5 5.5,0.5 0.5,0.5 0.5,5.5 -0.5,5.5 -0.5,0.5"
              " -5.5,0.5 -5.5,-0.5 -0.5,-0.5");
}

TEST(PainterSymbol, ofAnUnknownTypeDrawsNothing)
{
    EXPECT_EQ(symbolPolygon(Symbol::Type(14)), "");
    EXPECT_EQ(symbolPolygon(Symbol::Type(15)), "");
}

TEST(PainterSymbol, reachesOutsideTheUnitSquareForMarkerAndSpot)
{
    auto const extent = [](Symbol::Type type) {
        PolygonPainter painter;
        painter.drawSymbol({0, 0}, Symbol(type, 1, false), LineStyle::null, RED, Rotation::null);
        double largest = 0.0;
        for (BaVec2d<double> const &point : painter.points)
            largest = std::max({largest, std::abs(point.x), std::abs(point.y)});
        return largest;
    };
    EXPECT_NEAR(extent(Symbol::TYPE_MARKER), 0.6, 1e-12);
    EXPECT_NEAR(extent(Symbol::TYPE_SPOT), 0.55, 1e-12);
    EXPECT_NEAR(extent(Symbol::TYPE_CORNERS), 0.5, 1e-12);
}

TEST(PainterArrowHead, takesTheArcTangent)
{
    RecordingPainter painter;
    painter.drawArrowHead({10, 10}, 4.0, 2.0, Rotation::null, Color(0, 0, 255));
    // atan(1) * 4 = pi
    EXPECT_EQ(painter.transcript(), "polygon 10,10 6.85841,14 13.1416,14 no pen fill #0000ffff\n");
}

TEST(PainterClipping, byARectanglePassesItsCorners)
{
    RecordingPainter painter;
    painter.setClipping(Rect(1, 2, 3, 4), Rotation::null);
    painter.setClipping(Rect(0, 0, 2, 0), Rotation({0, 0}, 3.141592653589793));
    EXPECT_EQ(painter.transcript(), "clip 1,2 4,2 4,6 1,6\nclip 0,0 -2,0 -2,0 0,0\n");
}

TEST(PainterCacheIds, areJoinedFromBottomToTop)
{
    RecordingPainter painter;
    EXPECT_EQ(painter.getStackedCacheId(), "");
    painter.pushCacheId("a");
    EXPECT_EQ(painter.getStackedCacheId(), "a");
    painter.pushCacheId("b");
    EXPECT_EQ(painter.getStackedCacheId(), "a_b");
    painter.popCacheId();
    painter.popCacheId();
    EXPECT_THROW(painter.popCacheId(), ProgError);
}

TEST(PainterCacheIds, leftBehindAreAProgramError)
{
    auto *painter = new RecordingPainter;
    painter->pushCacheId("a");
    try {
        delete painter;
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().contains("Cache ID stack is not empty"));
        EXPECT_TRUE(error.getText().contains("fig_painter"));
    }
}

TEST(PainterCacheIds, areCopiedWithTheMode)
{
    RecordingPainter painter;
    painter.pushCacheId("a");
    painter.setMode(7);
    RecordingPainter copy(painter);
    painter.popCacheId();
    EXPECT_EQ(copy.getStackedCacheId(), "a");
    EXPECT_EQ(copy.getMode(), 7);
    copy.popCacheId();
}

TEST(PainterCacheIds, onAnEmptyStackCannotBeTakenAway)
{
    RecordingPainter painter;
    try {
        painter.popCacheId();
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().endsWith("Cache ID stack is empty")) << error.what();
        EXPECT_TRUE(error.getText().contains("fig_painter")) << error.what();
    }
}

TEST(PainterCacheIds, leftBehindDoNotHideAnErrorOnItsWay)
{
    EXPECT_THROW(
        {
            RecordingPainter painter;
            painter.pushCacheId("a");
            throw std::runtime_error("first");
        },
        std::runtime_error);
}

TEST(PainterMode, is1UntilSet)
{
    RecordingPainter painter;
    EXPECT_EQ(painter.getMode(), 1);
    painter.setMode(0);
    EXPECT_EQ(painter.getMode(), 0);
}

} // namespace
} // namespace Zem::Fig2
