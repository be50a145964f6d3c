#include "crafted_element.h"

#include <ElementForms.h>
#include <RecordingPainter.h>
#include <ZemFig2Polygon.h>

#include <ZemParse.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::RecordingPainter;
using Support::text;
using Support::thrownText;

constexpr double RIGHT_ANGLE = 1.5707963267948966;

/// A square of 10 with its first corner at 100,100.
void prepare(Polygon &polygon, double borderWidth = 0.1)
{
    polygon.setOrigin({100, 100});
    polygon.setPolygon(Polygon2d({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true));
    polygon.setBorder(LineStyle(borderWidth, LineStyle::STYLE_FULL, Color(0, 0, 0)));
}

void update(Polygon &polygon)
{
    polygon.update(StageIdentifier(1), nullptr, nullptr);
}

std::string drawn(Polygon const &polygon, int step = 0)
{
    RecordingPainter painter;
    EXPECT_TRUE(polygon.draw(nullptr, &painter, step));
    return painter.transcript();
}

TEST(PolygonDefaults, areNoPointsAndAThinBorder)
{
    Polygon const polygon;

    EXPECT_EQ(polygon.getType(), Element::POLYGON);
    EXPECT_TRUE(polygon.getPolygon().empty());
    EXPECT_EQ(polygon.getBorder(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(polygon.getBorder().getCapStyle(), LineStyle::CAP_SHARP);
}

TEST(PolygonPoints, clearValidWhenSet)
{
    Polygon polygon;
    update(polygon);

    polygon.setPolygon(Polygon2d({{0, 0}}, true));

    EXPECT_FALSE(polygon.isValid());
    EXPECT_EQ(polygon.getPolygon().size(), 1U);
}

TEST(PolygonAlignment, isTheOrigin)
{
    Polygon polygon;
    prepare(polygon);

    EXPECT_EQ(polygon.getAlignmentOrigin(), BaVec2d<double>(100, 100));
    polygon.setAlignmentOrigin({1, 2});
    EXPECT_EQ(polygon.getOrigin(), BaVec2d<double>(1, 2));
}

TEST(PolygonDraw, hasRoundCorners)
{
    Polygon polygon;
    prepare(polygon);
    polygon.setBackground(FillStyle(Color(1, 2, 3)));

    EXPECT_EQ(drawn(polygon), "polygon 100,100 110,100 110,110 100,110 pen 0.1 full #000000ff round fill #010203ff\n");
    EXPECT_EQ(polygon.getBorder().getCapStyle(), LineStyle::CAP_SHARP);
    EXPECT_EQ(drawn(polygon, 1), "");
}

TEST(PolygonDraw, turnsAboutTheOrigin)
{
    Polygon polygon;
    prepare(polygon);
    polygon.setAngle(0.5);

    EXPECT_EQ(drawn(polygon), "polygon 100,100 110,100 110,110 100,110 pen 0.1 full #000000ff round no fill turned 0.5 "
                              "about 100,100\n");
}

TEST(PolygonDraw, paintsNothingWithTwoPoints)
{
    Polygon polygon;
    prepare(polygon, 1.0);
    polygon.setPolygon(Polygon2d({{0, 0}, {10, 0}}, true));
    update(polygon);

    EXPECT_EQ(drawn(polygon), "");
    EXPECT_EQ(text(polygon.getDragPolygon()), "100,100 110,100");
    EXPECT_EQ(text(polygon.getCoveredPolygon()), "99,99 111,99 111,101 99,101");
}

TEST(PolygonOutline, ofNoPointsIsTheOriginThreeTimes)
{
    Polygon polygon;
    polygon.setOrigin({100, 100});
    polygon.setBorder(LineStyle(1, LineStyle::STYLE_FULL, Color()));
    update(polygon);

    EXPECT_EQ(text(polygon.getDragPolygon()), "100,100 100,100 100,100");
    EXPECT_EQ(text(polygon.computeCoveredPolygon(false)), "100,100 100,100 100,100");
    EXPECT_EQ(text(polygon.getCoveredPolygon()), "99,99 101,99 101,101 99,101");
}

TEST(PolygonOutline, reachesTheBorderWidthBeyondEachPoint)
{
    Polygon polygon;
    prepare(polygon, 1.0);
    update(polygon);

    EXPECT_EQ(text(polygon.getDragPolygon()), "100,100 110,100 110,110 100,110");
    EXPECT_EQ(text(polygon.getCoveredPolygon()), "99,99 111,99 111,111 99,111");
    EXPECT_EQ(text(polygon.getUpdatePolygon()), "99,99 111,99 111,111 99,111");
    EXPECT_EQ(text(polygon.computeCoveredPolygon(false)), "100,100 110,100 110,110 100,110");
}

TEST(PolygonOutline, ignoresABorderThatIsNotDrawn)
{
    Polygon polygon;
    prepare(polygon);
    polygon.setBorder(LineStyle(1, LineStyle::STYLE_NONE, Color()));

    EXPECT_EQ(text(polygon.computeCoveredPolygon(true)), "100,100 110,100 110,110 100,110");
}

TEST(PolygonOutline, turnsAboutTheOrigin)
{
    Polygon polygon;
    prepare(polygon, 1.0);
    polygon.setAngle(RIGHT_ANGLE);
    update(polygon);

    EXPECT_EQ(text(polygon.getDragPolygon()), "100,100 100,90 110,90 110,100");
    EXPECT_EQ(text(polygon.getCoveredPolygon()), "99,101 99,89 111,89 111,101");
}

TEST(PolygonDrag, movesOnePoint)
{
    Polygon polygon;
    prepare(polygon);
    update(polygon);

    EXPECT_TRUE(polygon.dragPointMove(1, {115, 98}));

    EXPECT_EQ(text(polygon.getPolygon()), "0,0 15,-2 10,10 0,10");
    EXPECT_EQ(polygon.getOrigin(), BaVec2d<double>(100, 100));
    EXPECT_FALSE(polygon.isValid());
}

TEST(PolygonDrag, ofTheFirstPointMovesTheOriginAndNoOtherPoint)
{
    Polygon polygon;
    prepare(polygon);
    update(polygon);

    EXPECT_TRUE(polygon.dragPointMove(0, {98, 97}));

    EXPECT_EQ(polygon.getOrigin(), BaVec2d<double>(98, 97));
    EXPECT_EQ(text(polygon.getPolygon()), "0,0 12,3 12,13 2,13");
    EXPECT_EQ(text(polygon.computeCoveredPolygon(false)), "98,97 110,100 110,110 100,110");
}

TEST(PolygonDrag, turnsTheMoveBack)
{
    Polygon polygon;
    prepare(polygon);
    polygon.setAngle(RIGHT_ANGLE);
    update(polygon); // point 1 is seen at 100,90

    EXPECT_TRUE(polygon.dragPointMove(1, {101, 90}));

    EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,1 10,10 0,10");
}

TEST(PolygonDrag, ofTheFirstPointMovesTheOriginByTheTurnedBackDelta)
{
    Polygon polygon;
    prepare(polygon);
    polygon.setAngle(RIGHT_ANGLE);
    update(polygon);

    EXPECT_TRUE(polygon.dragPointMove(0, {101, 100})); // 1,0 turned back is 0,1

    EXPECT_EQ(text(polygon.getOrigin()), "100,101");
    EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,-1 10,9 0,9");
}

TEST(PolygonDrag, thatCollapsesTheShapeIsUndone)
{
    Polygon polygon;
    polygon.setPolygon(Polygon2d({{0, 0}, {10, 0}, {5, 5}}, true));
    update(polygon);

    EXPECT_TRUE(polygon.dragPointMove(2, {5, 0}));
    EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,0 5,5");
    EXPECT_TRUE(polygon.dragPointMove(2, {5, 0.01}));
    EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,0 5,5");
    EXPECT_FALSE(polygon.isValid());
    EXPECT_TRUE(polygon.dragPointMove(2, {5, 0.02}));

    EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,0 5,0.02");
}

TEST(PolygonDrag, ofTheFirstPointThatCollapsesTheShapeIsUndone)
{
    Polygon polygon;
    polygon.setPolygon(Polygon2d({{0, 0}, {5, 5}, {10, 5}}, true));
    update(polygon);

    EXPECT_TRUE(polygon.dragPointMove(0, {0, 5}));

    EXPECT_EQ(polygon.getOrigin(), BaVec2d<double>(0, 0));
    EXPECT_EQ(text(polygon.getPolygon()), "0,0 5,5 10,5");
}

TEST(PolygonDrag, refusesAnIndexOutsideThePoints)
{
    Polygon polygon;
    prepare(polygon);
    update(polygon);

    EXPECT_EQ(progError([&] { polygon.dragPointMove(-1, {0, 0}); }), "fig_polygon: Illegal point index");
    EXPECT_EQ(progError([&] { polygon.dragPointMove(5, {0, 0}); }), "fig_polygon: Illegal point index");
}

TEST(PolygonDrag, ofTheIndexBehindTheLastMovesNothing)
{
    Polygon polygon;
    prepare(polygon);
    update(polygon);

    EXPECT_TRUE(polygon.dragPointMove(4, {0, 0}));

    EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,0 10,10 0,10");
    EXPECT_FALSE(polygon.isValid());
    Polygon empty;
    update(empty);
    EXPECT_TRUE(empty.dragPointMove(0, {5, 5}));
    EXPECT_EQ(empty.getOrigin(), BaVec2d<double>(0, 0));
}

TEST(PolygonBlock, holdsCountAndPoints)
{
    Polygon polygon;
    polygon.setPolygon(Polygon2d({{0, 0}, {10, 0}, {5, 5}}, true));

    EXPECT_EQ(Support::blocksOf(Support::blockForm(polygon)), "10:89 2:20 1:5 1:31 1:52 ");
}

TEST(PolygonBlock, isReadBack)
{
    Polygon polygon;

    Support::loadBlocks(polygon, CraftedElement().blocks(10).block(1, Support::Payload().u(2).v(1, 2).v(3, 4)).bytes());

    EXPECT_EQ(text(polygon.getPolygon()), "1,2 3,4");
    EXPECT_EQ(polygon.getOrigin(), BaVec2d<double>(10, 20));
}

TEST(PolygonBlock, withMorePointsThanItHoldsIsRefused)
{
    Polygon polygon;
    std::string const bytes =
        CraftedElement().blocks(10).block(1, Support::Payload().u(4000000000U).v(1, 2).v(3, 4)).bytes();

    EXPECT_THROW(Support::loadBlocks(polygon, bytes), IO::StreamException);
}

TEST(PolygonBlock, ofAnotherVersionIsRefused)
{
    for (unsigned int version : {0U, 2U}) {
        Polygon polygon;
        std::string const bytes = CraftedElement().blocks(10).block(version, Support::Payload().u(0)).bytes();
        EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadBlocks(polygon, bytes); }),
                  "cannot load figure polygon: wrong block version");
    }
}

TEST(PolygonText, standsInFrontOfTheElement)
{
    Polygon polygon;
    polygon.setPolygon(Polygon2d({{0, 0}, {10, 0.5}}, true));

    EXPECT_EQ(Support::textForm(polygon),
              "1 2 0 0 10 0.5 5 " + std::to_string(polygon.getId()) +
                  " 0 0 0 0 1 0 0 0 0 #000000ff #080884ff 0 0 1 1 "
                  "1 0.10000000000000001 1 #000000ff 1 1 0 #e6e6e6ff Liberation\\sSans 12 0 0 \\e ");
}

TEST(PolygonText, replacesThePoints)
{
    Polygon polygon;
    polygon.setPolygon(Polygon2d({{7, 8}}, true));
    Polygon read;
    prepare(read);

    EXPECT_TRUE(Support::loadText(read, Support::textForm(polygon)));

    EXPECT_EQ(text(read.getPolygon()), "7,8");
    EXPECT_EQ(Support::textForm(read), Support::textForm(polygon));
}

TEST(PolygonText, ofANewerVersionIsRefusedAndLeavesNoPoints)
{
    Polygon polygon;
    prepare(polygon);

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadText(polygon, "2 0 "); }), "wrong block version");
    EXPECT_TRUE(polygon.getPolygon().empty());
}

TEST(PolygonText, withMorePointsThanItHoldsFailsTheStream)
{
    Polygon polygon;

    EXPECT_FALSE(Support::loadText(polygon, "1 4000000000 1 2 3"));
    EXPECT_EQ(text(polygon.getPolygon()), "1,2");
}

TEST(PolygonParameters, endWithThePoints)
{
    Polygon polygon;
    polygon.setPolygon(Polygon2d({{0, 0}, {10, 0.5}, {5, -5}}, true));

    EXPECT_EQ(Support::parameterForm(polygon), "type = \"polygon\"\n"
                                               "origin = (0, 0)\n"
                                               "visible = true\n"
                                               "angle = 0\n"
                                               "border_width = 0.1\n"
                                               "border_color = #000000ff\n"
                                               "border_style = \"full\"\n"
                                               "border_cap_style = \"sharp\"\n"
                                               "background_filled = false\n"
                                               "background_color = #e6e6e6ff\n"
                                               "highlight_color = #080884ff\n"
                                               "polygon = [(0, 0), (10, 0.5), (5, -5)]\n");
}

TEST(PolygonParameters, takePointsAsVectorsOrTexts)
{
    Polygon polygon;

    Support::loadParameters(polygon, "polygon = [(1, 2), (3, 4), (5, 6)]\n");
    EXPECT_EQ(text(polygon.getPolygon()), "1,2 3,4 5,6");
    Support::loadParameters(polygon, "polygon = [\" ( 1 , 2 ) \", \"(3,4)\", \"(5.5,-6)\"]\n");
    EXPECT_EQ(text(polygon.getPolygon()), "1,2 3,4 5.5,-6");
    EXPECT_FALSE(polygon.isValid());
}

TEST(PolygonParameters, refuseOtherCoordinates)
{
    for (char const *coordinate : {"1,2", "(1,2", "1,2)", "()", "(1)", "(1,2,3)", "(a,b)", "(1,)", "(inf,1)", "("}) {
        Polygon polygon;
        prepare(polygon);
        std::string const parameters =
            std::string("origin = (7, 7)\npolygon = [\"(1,2)\", \"") + coordinate + "\", \"(5,6)\"]\n";
        EXPECT_EQ(thrownText<ParamError>([&] { Support::loadParameters(polygon, parameters); }),
                  "illegal polygon coordinate format")
            << coordinate;
        EXPECT_EQ(polygon.getOrigin(), BaVec2d<double>(7, 7));
        EXPECT_EQ(text(polygon.getPolygon()), "0,0 10,0 10,10 0,10");
    }
}

TEST(PolygonParameters, refuseFewerThanThreePoints)
{
    Polygon polygon;

    EXPECT_THROW(Support::loadParameters(polygon, "polygon = [(1, 2), (3, 4)]\n"), ParamError);
    EXPECT_THROW(Support::loadParameters(polygon, "polygon = []\n"), ParamError);
}

TEST(PolygonCoordinate, isAPairOfShortNumbers)
{
    EXPECT_EQ(Polygon::getCoordinateString({1.5, -2}), "(1.5, -2)");
    EXPECT_EQ(Polygon::getCoordinateString({1.0 / 3.0, 1e20}), "(0.333333, 1e+20)");
}

TEST(PolygonCopy, holdsThePoints)
{
    Polygon polygon;
    prepare(polygon);

    std::unique_ptr<Element> const copy(polygon.copy());

    EXPECT_NE(dynamic_cast<Polygon *>(copy.get()), nullptr);
    EXPECT_EQ(Support::parameterForm(*copy), Support::parameterForm(polygon));
}

} // namespace
} // namespace Zem::Fig2
