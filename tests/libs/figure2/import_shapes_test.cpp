// Lines, rectangles, circles and polygons of older figures.
#include "import_fixture.h"

#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2Rectangle.h>

namespace Zem::Fig2 {
namespace {

using Support::oldCircle;
using Support::oldLine;
using Support::oldPolygon;
using Support::oldRectangle;
using Support::Payload;

using Point = BaVec2d<double>;

LineStyle const DASHED_RED(0.5, LineStyle::STYLE_DASHED, Color(200, 10, 20));

Symbol symbolOf(Symbol::Type type, double size)
{
    Symbol symbol(type, size, false);
    symbol.setColor(Color(200, 10, 20));
    return symbol;
}

std::unique_ptr<Line> lineWithEnds(unsigned int end1, unsigned int end2)
{
    Support::OldLineFields fields;
    fields.end1 = end1;
    fields.end2 = end2;
    return importAs<Line>(Import::OLD_LINE, oldLine(3, fields));
}

TEST(ImportLine, keepsPointsAndPen)
{
    auto const line = importAs<Line>(Import::OLD_LINE, oldLine(1));

    EXPECT_EQ(line->getPoint1(), Point(10, 20));
    EXPECT_EQ(line->getPoint2(), Point(30, 50));
    EXPECT_EQ(line->getBorder(), DASHED_RED);
    EXPECT_EQ(line->getArrowInfo(), std::make_pair(false, false));
    EXPECT_EQ(line->getSymbolInfo().first, Symbol::null);
    EXPECT_EQ(line->getSymbolInfo().second, Symbol::null);
}

TEST(ImportLine, hasEndsFromVersion2On)
{
    auto const line = importAs<Line>(Import::OLD_LINE, oldLine(2));

    EXPECT_EQ(line->getArrowInfo(), std::make_pair(true, false));
    EXPECT_EQ(line->getSymbolInfo().first, Symbol::null);
    EXPECT_EQ(line->getSymbolInfo().second, symbolOf(Symbol::TYPE_BOX, 3.0));
}

TEST(ImportLine, hasASizeOfItsSymbolsFromVersion3On)
{
    auto const line = importAs<Line>(Import::OLD_LINE, oldLine(3));

    EXPECT_EQ(line->getSymbolInfo().second, symbolOf(Symbol::TYPE_BOX, 4.0));
}

TEST(ImportLine, hasArrowAndSymbolAtTheEndThatNamesThem)
{
    auto const line = lineWithEnds(16 | 13, 32 | 16 | 0);

    EXPECT_EQ(line->getArrowInfo(), std::make_pair(false, true));
    EXPECT_EQ(line->getSymbolInfo().first, symbolOf(Symbol::TYPE_SPOT, 4.0));
    EXPECT_EQ(line->getSymbolInfo().second, symbolOf(Symbol::TYPE_CIRCLE, 4.0));
}

TEST(ImportLine, hasNoSymbolWithoutItsFlag)
{
    auto const line = lineWithEnds(5, 64 | 15);

    EXPECT_EQ(line->getArrowInfo(), std::make_pair(false, false));
    EXPECT_EQ(line->getSymbolInfo().first, Symbol::null);
    EXPECT_EQ(line->getSymbolInfo().second, Symbol::null);
}

TEST(ImportLine, withAnUnknownSymbolIsRefused)
{
    Support::OldLineFields fields;
    fields.end2 = 16 | 14;

    EXPECT_EQ(elementRefusal(Import::OLD_LINE, oldLine(3, fields)), "illegal value 30 in block");
}

TEST(ImportLine, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_LINE, OldRecords().record(4, Payload())), "wrong block version");
}

TEST(ImportPen, hasTheStyleOfToday)
{
    LineStyle::Style const styles[] = {LineStyle::STYLE_NONE, LineStyle::STYLE_FULL, LineStyle::STYLE_DASHED,
                                       LineStyle::STYLE_DOTTED, LineStyle::STYLE_DASH_DOTTED};
    for (unsigned int style = 0; style < 5; ++style) {
        Support::OldLineFields fields;
        fields.pen.style = style;
        EXPECT_EQ(importAs<Line>(Import::OLD_LINE, oldLine(1, fields))->getBorder().getStyle(), styles[style]);
    }
}

TEST(ImportPen, hasNoWidthThatIsNone)
{
    for (double width : {-0.5, std::numeric_limits<double>::quiet_NaN()}) {
        Support::OldLineFields fields;
        fields.pen.width = width;
        EXPECT_EQ(importAs<Line>(Import::OLD_LINE, oldLine(1, fields))->getBorder().getWidth(), 1.0);
    }
}

TEST(ImportPen, ofAnUnknownStyleIsRefused)
{
    Support::OldLineFields fields;
    fields.pen.style = 5;

    EXPECT_EQ(elementRefusal(Import::OLD_LINE, oldLine(1, fields)), "illegal value 5 in block");
}

TEST(ImportRectangle, standsAboutItsCentre)
{
    auto const rectangle = importAs<Rectangle>(Import::OLD_RECTANGLE, oldRectangle(1));

    EXPECT_EQ(rectangle->getOrigin(), Point(30, 35));
    EXPECT_EQ(rectangle->getSize(), Point(40, 30));
    EXPECT_EQ(rectangle->getBorder(), DASHED_RED);
    EXPECT_EQ(rectangle->getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_EQ(rectangle->getAngle(), 0.0);
}

TEST(ImportRectangle, isTurnedFromVersion2On)
{
    EXPECT_EQ(importAs<Rectangle>(Import::OLD_RECTANGLE, oldRectangle(2))->getAngle(), 0.25);
}

TEST(ImportRectangle, keepsTheColourOfABackgroundThatIsNotFilled)
{
    Support::OldAreaFields fields;
    fields.brush.filled = false;

    auto const rectangle = importAs<Rectangle>(Import::OLD_RECTANGLE, oldRectangle(1, fields));

    EXPECT_FALSE(rectangle->getBackground().getFilled());
    EXPECT_EQ(rectangle->getBackground().getColor(), Color(1, 2, 3));
}

TEST(ImportRectangle, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_RECTANGLE, OldRecords().record(3, Payload())),
              "invalid rectangle header version: 3");
}

TEST(ImportCircle, isRoundInVersion1)
{
    auto const circle = importAs<Ellipse>(Import::OLD_CIRCLE, oldCircle(1));

    EXPECT_EQ(circle->getOrigin(), Point(50, 40));
    EXPECT_EQ(circle->getSize(), Point(16, 16));
    EXPECT_EQ(circle->getAngle(), 0.0);
    EXPECT_EQ(circle->getBorder(), DASHED_RED);
    EXPECT_EQ(circle->getBackground(), FillStyle(Color(1, 2, 3)));
}

TEST(ImportCircle, hasTwoRadiiFromVersion2On)
{
    auto const circle = importAs<Ellipse>(Import::OLD_CIRCLE, oldCircle(2));

    EXPECT_EQ(circle->getOrigin(), Point(50, 40));
    EXPECT_EQ(circle->getSize(), Point(16, 10));
    EXPECT_EQ(circle->getAngle(), 0.25);
}

TEST(ImportCircle, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_CIRCLE, OldRecords().record(3, Payload())),
              "invalid circle header version: 3");
}

TEST(ImportPolygon, standsAtItsFirstPoint)
{
    auto const polygon = importAs<Polygon>(Import::OLD_POLYGON, oldPolygon(1));

    EXPECT_EQ(polygon->getOrigin(), Point(10, 10));
    EXPECT_EQ(polygon->getPolygon(), Polygon2d({{0, 0}, {20, 0}, {20, 15}}, true));
    EXPECT_EQ(polygon->getBorder(), DASHED_RED);
    EXPECT_EQ(polygon->getBackground(), FillStyle(Color(1, 2, 3)));
}

TEST(ImportPolygon, thatIsOpenIsClosedAndTold)
{
    ImportReport report;
    Support::OldPolygonFields open;
    open.closed = false;

    importFigure(Support::oldFigure({oldElementOf(Import::OLD_POLYGON, oldPolygon(2)),
                                     oldElementOf(Import::OLD_POLYGON, oldPolygon(2, open))}),
                 &report);

    EXPECT_EQ(losses(report), "polygon 2 approximated: an open line was closed\n");
}

TEST(ImportPolygon, mayHaveNoPoints)
{
    Support::OldPolygonFields fields;
    fields.points.clear();

    auto const polygon = importAs<Polygon>(Import::OLD_POLYGON, oldPolygon(1, fields));

    EXPECT_EQ(polygon->getPolygon(), Polygon2d(true));
    EXPECT_EQ(polygon->getOrigin(), Point(0, 0));
}

TEST(ImportPolygon, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_POLYGON, OldRecords().record(3, Payload())),
              "invalid polygon header version: 3");
}

} // namespace
} // namespace Zem::Fig2
