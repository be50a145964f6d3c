// Areas as Rectangle and Ellipse show them.
#include "crafted_element.h"
#include "probe_elements.h"

#include <ElementForms.h>
#include <RecordingPainter.h>
#include <ZemFig2Figure.h>

namespace Zem::Fig2 {
namespace {

using Support::RecordingPainter;
using Support::text;
using Support::thrownText;

constexpr double RIGHT_ANGLE = 1.5707963267948966;

void place(Element &element, BaVec2d<double> const &centre, BaVec2d<double> const &size, double angle = 0.0)
{
    element.setOrigin(centre);
    element.setSize(size);
    element.setAngle(angle);
}

std::string drawn(Element const &element, int step = 0)
{
    RecordingPainter painter;
    EXPECT_TRUE(element.draw(nullptr, &painter, step));
    return painter.transcript();
}

TEST(AreaConstants, holdTheWidthOfAHighlightedBorder)
{
    EXPECT_EQ(AreaBase::HIGHLIGHTED_BORDER_WIDTH, 0.2);
}

TEST(AreaDefaults, areAThinBorderAndNoFill)
{
    Rectangle const rectangle;
    Ellipse const ellipse;

    EXPECT_EQ(rectangle.getType(), Element::RECTANGLE);
    EXPECT_EQ(ellipse.getType(), Element::ELLIPSE);
    for (Element const *element : {static_cast<Element const *>(&rectangle), static_cast<Element const *>(&ellipse)}) {
        EXPECT_EQ(element->getBorder(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
        EXPECT_EQ(element->getBorder().getCapStyle(), LineStyle::CAP_SHARP);
        EXPECT_FALSE(element->getBackground().getFilled());
        EXPECT_EQ(element->getBackground().getColor(), Color(230, 230, 230));
        EXPECT_EQ(element->getMinimumSize(), BaVec2d<double>(0, 0));
    }
}

TEST(AreaCopy, isOfTheSameClass)
{
    std::unique_ptr<Element> const rectangle(Rectangle().copy());
    std::unique_ptr<Element> const ellipse(Ellipse().copy());

    EXPECT_NE(dynamic_cast<Rectangle *>(rectangle.get()), nullptr);
    EXPECT_NE(dynamic_cast<Ellipse *>(ellipse.get()), nullptr);
}

TEST(AreaOutline, goesAroundTheCentre)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {30, 40});

    EXPECT_EQ(text(rectangle.computeCoveredPolygon(false)), "-5,0 25,0 25,40 -5,40");
}

TEST(AreaOutline, growsByTheWidthOfTheBorder)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 20});
    rectangle.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color()));

    EXPECT_EQ(text(rectangle.computeCoveredPolygon(true)), "-6,-11 6,-11 6,11 -6,11");
}

TEST(AreaOutline, ignoresABorderThatIsNotDrawn)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 20});
    rectangle.setBorder(LineStyle(2, LineStyle::STYLE_NONE, Color()));

    EXPECT_EQ(text(rectangle.computeCoveredPolygon(true)), "-5,-10 5,-10 5,10 -5,10");
}

TEST(AreaOutline, ofAHighlightedAreaHasABorderOfAFifth)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 10});
    rectangle.setBorder(LineStyle(0.1, LineStyle::STYLE_NONE, Color()));
    rectangle.setHighlighted(true);

    EXPECT_EQ(text(rectangle.computeCoveredPolygon(true)), "-5.1,-5.1 5.1,-5.1 5.1,5.1 -5.1,5.1");
    EXPECT_EQ(text(rectangle.computeCoveredPolygon(false)), "-5,-5 5,-5 5,5 -5,5");
}

TEST(AreaOutline, ofAHighlightedAreaKeepsAWiderBorder)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 10});
    rectangle.setBorder(LineStyle(2, LineStyle::STYLE_DOTTED, Color()));
    rectangle.setHighlighted(true);

    EXPECT_EQ(text(rectangle.computeCoveredPolygon(true)), "-6,-6 6,-6 6,6 -6,6");
}

TEST(AreaOutline, turnsAboutTheCentre)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 20}, RIGHT_ANGLE);

    // A right angle takes (x, y) to (y, -x).
    EXPECT_EQ(text(rectangle.computeCoveredPolygon(false)), "-10,5 -10,-5 10,-5 10,5");
}

TEST(AreaUpdate, fillsTheThreePolygons)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 20});
    rectangle.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color()));

    rectangle.computeDynamicData(StageIdentifier(1), nullptr);

    EXPECT_EQ(text(rectangle.getDragPolygon()), "-5,-10 5,-10 5,10 -5,10");
    EXPECT_EQ(text(rectangle.getCoveredPolygon()), "-6,-11 6,-11 6,11 -6,11");
    EXPECT_EQ(text(rectangle.getUpdatePolygon()), "-6,-11 6,-11 6,11 -6,11");
}

TEST(AreaUpdate, ofAMaximizedAreaFillsThePage)
{
    Figure figure;
    figure.setSize({100, 50});
    auto *area = new ProbeRectangle;
    area->setMaximize(true);
    place(*area, {1, 2}, {3, 4});
    figure.getRoot()->addChild(area);

    area->computeDynamicData(StageIdentifier(1), nullptr);
    EXPECT_EQ(area->getSize(), BaVec2d<double>(3, 4));
    area->canMaximize = true;
    area->computeDynamicData(StageIdentifier(1), nullptr);

    EXPECT_EQ(area->getOrigin(), BaVec2d<double>(50, 25));
    EXPECT_EQ(area->getSize(), BaVec2d<double>(100, 50));
}

TEST(AreaUpdate, ofAMaximizedAreaWithoutFigureKeepsItsSize)
{
    ProbeRectangle area;
    area.canMaximize = true;
    area.setMaximize(true);
    place(area, {1, 2}, {3, 4});

    area.computeDynamicData(StageIdentifier(1), nullptr);

    EXPECT_EQ(area.getSize(), BaVec2d<double>(3, 4));
}

TEST(AreaDrawing, liesWithinTheBorder)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {30, 40});
    rectangle.setBorder(LineStyle(2, LineStyle::STYLE_DASHED, Color()));

    EXPECT_EQ(rectangle.getDrawingOrigin(), BaVec2d<double>(-4, 1));
    EXPECT_EQ(rectangle.getDrawingSize(), BaVec2d<double>(28, 38));
}

TEST(AreaDrawing, isTheWholeAreaWithoutBorder)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {30, 40});
    rectangle.setBorder(LineStyle(2, LineStyle::STYLE_NONE, Color()));

    EXPECT_EQ(rectangle.getDrawingOrigin(), BaVec2d<double>(-5, 0));
    EXPECT_EQ(rectangle.getDrawingSize(), BaVec2d<double>(30, 40));
}

TEST(RectangleDraw, paintsBackgroundThenBorder)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {30, 40});
    rectangle.setBackground(FillStyle(Color(1, 2, 3)));

    EXPECT_EQ(drawn(rectangle), "polygon -5,0 25,0 25,40 -5,40 no pen fill #010203ff\n"
                                "polygon -5,0 25,0 25,40 -5,40 pen 0.1 full #000000ff sharp no fill\n");
}

TEST(RectangleDraw, turnsBothAboutTheCentre)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {2, 2}, 0.5);

    EXPECT_EQ(drawn(rectangle), "polygon 9,19 11,19 11,21 9,21 no pen no fill turned 0.5 about 10,20\n"
                                "polygon 9,19 11,19 11,21 9,21 pen 0.1 full #000000ff sharp no fill turned 0.5 about "
                                "10,20\n");
}

TEST(RectangleDraw, paintsNoBorderOfStyleNone)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {2, 2});
    rectangle.setBorder(LineStyle::null);

    EXPECT_EQ(drawn(rectangle), "polygon -1,-1 1,-1 1,1 -1,1 no pen no fill\n");
}

TEST(RectangleDraw, paintsTheBorderOfAHighlightedOneInItsColor)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {2, 2});
    rectangle.setBorder(LineStyle(0.1, LineStyle::STYLE_NONE, Color(9, 9, 9)));
    rectangle.setHighlighted(true);

    EXPECT_EQ(drawn(rectangle), "polygon -1,-1 1,-1 1,1 -1,1 no pen no fill\n"
                                "polygon -1,-1 1,-1 1,1 -1,1 pen 0.2 full #080884ff sharp no fill\n");
}

TEST(RectangleDraw, hasNothingLeftForLaterSteps)
{
    Rectangle rectangle;
    Ellipse ellipse;

    EXPECT_EQ(drawn(rectangle, 1), "");
    EXPECT_EQ(drawn(ellipse, 1), "");
}

TEST(EllipseDraw, isOneCallWithBorderAndBackground)
{
    Ellipse ellipse;
    place(ellipse, {10, 20}, {30, 40}, 0.5);
    ellipse.setBackground(FillStyle(Color(1, 2, 3)));

    EXPECT_EQ(drawn(ellipse), "ellipse 10,20 radii 15,20 angle 0 pen 0.1 full #000000ff sharp fill #010203ff "
                              "turned 0.5 about 10,20\n");
}

TEST(EllipseDraw, doesNotShowHighlighting)
{
    Ellipse ellipse;
    place(ellipse, {0, 0}, {2, 4});
    std::string const plain = drawn(ellipse);

    ellipse.setHighlighted(true);

    EXPECT_EQ(drawn(ellipse), plain);
}

TEST(AreaAlignment, isTheChosenPointOfTheRectangle)
{
    struct Row
    {
        Alignment_t x, y;
        BaVec2d<double> point;
    };
    for (Row const &row : {Row{ALIGN_BEGIN, ALIGN_BEGIN, {-5, 0}}, Row{ALIGN_CENTER, ALIGN_BEGIN, {10, 0}},
                           Row{ALIGN_END, ALIGN_BEGIN, {25, 0}}, Row{ALIGN_BEGIN, ALIGN_CENTER, {-5, 20}},
                           Row{ALIGN_CENTER, ALIGN_CENTER, {10, 20}}, Row{ALIGN_END, ALIGN_CENTER, {25, 20}},
                           Row{ALIGN_BEGIN, ALIGN_END, {-5, 40}}, Row{ALIGN_CENTER, ALIGN_END, {10, 40}},
                           Row{ALIGN_END, ALIGN_END, {25, 40}}}) {
        Rectangle rectangle;
        place(rectangle, {10, 20}, {30, 40});
        rectangle.setPivotAlignmentX(row.x);
        rectangle.setPivotAlignmentY(row.y);
        EXPECT_EQ(rectangle.getAlignmentOrigin(), row.point);
        rectangle.setAlignmentOrigin({0, 0});
        EXPECT_EQ(rectangle.getOrigin(), BaVec2d<double>(10, 20) - row.point);
    }
}

TEST(AreaAlignment, turnsWithTheArea)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {30, 40}, RIGHT_ANGLE);

    // The offset -15,-20 becomes -20,15.
    EXPECT_EQ(text(rectangle.getAlignmentOrigin()), "-10,35");
    rectangle.setAlignmentOrigin({0, 0});
    EXPECT_EQ(text(rectangle.getOrigin()), "20,-15");
    EXPECT_EQ(text(rectangle.getAlignmentOrigin()), "0,0");
}

struct DragRow
{
    int index;
    BaVec2d<double> position;
    BaVec2d<double> size;
    BaVec2d<double> origin;
};

TEST(AreaDrag, keepsTheOppositeCorner)
{
    for (DragRow const &row : {DragRow{0, {-8, -7}, {13, 12}, {-1.5, -1}}, DragRow{1, {8, -7}, {13, 12}, {1.5, -1}},
                               DragRow{2, {8, 8}, {13, 13}, {1.5, 1.5}}, DragRow{3, {-8, 7}, {13, 12}, {-1.5, 1}}}) {
        Rectangle rectangle;
        place(rectangle, {0, 0}, {10, 10});
        Polygon2d const before = rectangle.computeCoveredPolygon(false);

        EXPECT_TRUE(rectangle.dragPointMove(row.index, row.position));

        EXPECT_EQ(rectangle.getSize(), row.size);
        EXPECT_EQ(rectangle.getOrigin(), row.origin);
        auto const opposite = static_cast<std::size_t>(row.index + 2) % 4;
        EXPECT_EQ(rectangle.computeCoveredPolygon(false)[opposite], before[opposite]);
    }
}

TEST(AreaDrag, ofATurnedAreaTurnsTheMoveBack)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 10}, RIGHT_ANGLE); // corner 0 lies at -5,5

    EXPECT_TRUE(rectangle.dragPointMove(0, {-6, 7}));

    // -1,2 turned back is -2,-1; corner 0 grows against it.
    EXPECT_EQ(text(rectangle.getSize()), "12,11");
    EXPECT_EQ(text(rectangle.getOrigin()), "-0.5,1");
    EXPECT_EQ(text(rectangle.computeCoveredPolygon(false)[0]), "-6,7");
    EXPECT_EQ(text(rectangle.computeCoveredPolygon(false)[2]), "5,-5");
}

TEST(AreaDrag, toTheSamePlaceChangesNothing)
{
    Rectangle rectangle;
    place(rectangle, {0, 0}, {10, 10});
    rectangle.update(StageIdentifier(1), nullptr, nullptr);

    EXPECT_TRUE(rectangle.dragPointMove(2, {5, 5}));

    EXPECT_TRUE(rectangle.isValid());
}

TEST(AreaDrag, toNoWidthIsRefused)
{
    for (bool bounded : {false, true}) {
        ProbeRectangle rectangle;
        rectangle.boundedSize = bounded;
        place(rectangle, {0, 0}, {10, 10});

        EXPECT_FALSE(rectangle.dragPointMove(2, {-5, 5}));
        EXPECT_FALSE(rectangle.dragPointMove(2, {5, -5}));

        EXPECT_EQ(rectangle.getSize(), BaVec2d<double>(10, 10));
        EXPECT_EQ(rectangle.getOrigin(), BaVec2d<double>(0, 0));
        EXPECT_TRUE(rectangle.dragPointMove(2, {-4.5, 5}));
    }
}

TEST(AreaDrag, stopsAboveTheMinimumSize)
{
    ProbeRectangle rectangle;
    rectangle.setMinimumSize({8, 8});
    place(rectangle, {0, 0}, {10, 10});

    EXPECT_FALSE(rectangle.dragPointMove(2, {3, 5}));  // a width of 8 is not above 8
    EXPECT_TRUE(rectangle.dragPointMove(2, {3.5, 5})); // 8.5
    EXPECT_EQ(rectangle.getSize(), BaVec2d<double>(8.5, 10));
}

TEST(AreaDrag, ofATooSmallAreaMayOnlyGrow)
{
    ProbeRectangle rectangle;
    rectangle.setMinimumSize({8, 8});
    place(rectangle, {0, 0}, {4, 4});

    EXPECT_FALSE(rectangle.dragPointMove(2, {1, 3}));
    EXPECT_FALSE(rectangle.dragPointMove(2, {3, 2})); // the height neither grows nor is large enough
    EXPECT_TRUE(rectangle.dragPointMove(2, {3, 3}));
    EXPECT_EQ(rectangle.getSize(), BaVec2d<double>(5, 5));
}

TEST(AreaDrag, withoutMinimumSizeIgnoresIt)
{
    ProbeRectangle rectangle;
    rectangle.boundedSize = false;
    rectangle.setMinimumSize({8, 8});
    place(rectangle, {0, 0}, {10, 10});

    EXPECT_TRUE(rectangle.dragPointMove(2, {-4, -4}));
    EXPECT_EQ(rectangle.getSize(), BaVec2d<double>(1, 1));
}

TEST(AreaText, puts1InFrontOfTheElement)
{
    Rectangle rectangle;
    place(rectangle, {10, 20}, {30, 40}, 0.5);
    std::string const expected = "1 5 " + std::to_string(rectangle.getId()) +
                                 " 10 20 30 40 1 0 0 0 0.5 #000000ff #080884ff 0 0 1 1 "
                                 "1 0.10000000000000001 1 #000000ff 1 1 0 #e6e6e6ff Liberation\\sSans 12 0 0 \\e ";

    EXPECT_EQ(Support::textForm(rectangle), expected);
    Ellipse ellipse;
    EXPECT_TRUE(Support::loadText(ellipse, expected));
    EXPECT_EQ(Support::textForm(ellipse), expected);
}

TEST(AreaText, ofANewerVersionIsRefused)
{
    Rectangle rectangle;

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadText(rectangle, "2 5 1 "); }), "wrong block version");
}

TEST(AreaBlocks, areThoseOfTheElement)
{
    EXPECT_EQ(Support::blocksOf(Support::blockForm(Rectangle())), "10:89 2:20 1:5 1:31 ");
    EXPECT_EQ(Support::blocksOf(Support::blockForm(Ellipse())), "10:89 2:20 1:5 1:31 ");
}

} // namespace
} // namespace Zem::Fig2
