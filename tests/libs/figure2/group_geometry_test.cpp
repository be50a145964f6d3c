// Outline, hit and drag of groups.
#include "tree_builders.h"

#include <RecordingPainter.h>
#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::text;

TEST(GroupOutline, isTheHullOfTheChildren)
{
    Group group;
    ProbeRectangle *first = add(group, 0, 0);
    add(group, 20, 0);
    first->setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color()));

    EXPECT_EQ(text(group.computeCoveredPolygon(false)), "-5,-5 25,-5 25,5 -5,5");
    EXPECT_EQ(text(group.computeCoveredPolygon(true)), "-6,-6 6,-6 25,-5 25,5 6,6 -6,6");
    group.computeDynamicData(StageIdentifier(1), nullptr);
    EXPECT_EQ(text(group.getDragPolygon()), "-5,-5 25,-5 25,5 -5,5");
    EXPECT_EQ(text(group.getCoveredPolygon()), "-6,-6 6,-6 25,-5 25,5 6,6 -6,6");
    EXPECT_EQ(text(group.getUpdatePolygon()), "-6,-6 6,-6 25,-5 25,5 6,6 -6,6");
}

TEST(GroupOutline, ofFewerThanFourPointsStaysAsItIs)
{
    Group group;
    auto *bare = new BareElement;
    bare->outline = Polygon2d({{5, 5}, {0, 0}, {5, 5}}, true);
    group.addChild(bare);

    EXPECT_EQ(text(group.computeCoveredPolygon(true)), "5,5 0,0 5,5");
    EXPECT_TRUE(Group().computeCoveredPolygon(true).empty());
}

TEST(GroupCachedUpdate, gathersThePolygonsOfAllElementsBelow)
{
    Group group;
    ProbeRectangle *first = add(group, 0, 0);
    first->setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color()));
    Group *inner = addGroup(group);
    Element *deep = add(*inner, 20, 0);
    updateAll(group);
    deep->setOrigin({40, 0}); // not seen: the cached polygons count
    Polygon2d area(true);

    EXPECT_FALSE(group.update(nullptr, &area));

    EXPECT_TRUE(area.empty());
    EXPECT_EQ(text(group.getDragPolygon()), "-5,-5 25,-5 25,5 -5,5");
    EXPECT_EQ(text(group.getCoveredPolygon()), "-6,-6 6,-6 25,-5 25,5 6,6 -6,6");
    EXPECT_EQ(text(group.getUpdatePolygon()), "-6,-6 6,-6 25,-5 25,5 6,6 -6,6");
}

TEST(GroupCachedUpdate, keepsFewerThanFourPoints)
{
    Group group;
    auto *bare = new BareElement;
    bare->outline = Polygon2d({{5, 5}, {0, 0}, {5, 5}}, true);
    group.addChild(bare);
    updateAll(group);

    group.update(nullptr, nullptr);

    EXPECT_EQ(text(group.getDragPolygon()), "5,5 0,0 5,5");
}

TEST(GroupCachedUpdate, withoutElementsEmptiesThePolygons)
{
    Group group;
    std::unique_ptr<Element> const child(add(group));
    updateAll(group);
    group.removeChild(child.get());
    addGroup(group);

    group.update(nullptr, nullptr);

    EXPECT_TRUE(group.getDragPolygon().empty());
    EXPECT_TRUE(group.getCoveredPolygon().empty());
    EXPECT_TRUE(group.getUpdatePolygon().empty());
}

TEST(GroupDataValid, needsEveryChildValidAndUpToDate)
{
    Group group;
    ProbeRectangle *first = add(group);
    ProbeRectangle *second = add(group);
    EXPECT_FALSE(group.isDataValid(StageIdentifier(1), nullptr));
    updateAll(group);
    EXPECT_TRUE(group.isDataValid(StageIdentifier(1), nullptr));

    second->dataValid = false;
    EXPECT_FALSE(group.isDataValid(StageIdentifier(1), nullptr));
    second->dataValid = true;
    first->invalidate();
    EXPECT_FALSE(group.isDataValid(StageIdentifier(1), nullptr));
}

TEST(GroupHit, isThatOfAChild)
{
    Group group;
    add(group, 0, 0);
    add(group, 20, 0);
    updateAll(group);

    EXPECT_TRUE(group.isPointIn({20, 0}));
    EXPECT_FALSE(group.isPointIn({10, 0}));
}

TEST(GroupDraw, paintsNothing)
{
    Group group;
    add(group);
    Support::RecordingPainter painter;

    EXPECT_TRUE(group.draw(nullptr, &painter, 0));
    EXPECT_EQ(painter.transcript(), "");
}

TEST(GroupDrag, scalesEveryElementFromTheFarSide)
{
    Group group;
    ProbeRectangle *left = add(group, 0, 0);   // -5..5
    ProbeRectangle *right = add(group, 20, 0); // 15..25; the group spans -5..25
    updateAll(group);
    ASSERT_EQ(text(group.getDragPolygon()), "-5,-5 25,-5 25,5 -5,5");

    EXPECT_TRUE(group.dragPointMove(2, {31, 10})); // by 6,5

    // A third of the way from the far side for the right edge of the left one, two thirds for the left edge of the
    // right one; the lower edges follow fully.
    EXPECT_EQ(text(left->computeCoveredPolygon(false)), "-5,-5 7,-5 7,10 -5,10");
    EXPECT_EQ(text(right->computeCoveredPolygon(false)), "19,-5 31,-5 31,10 19,10");
}

TEST(GroupDrag, reachesElementsInGroupsBelow)
{
    Group group;
    add(group, 0, 0);
    Group *inner = addGroup(group);
    ProbeRectangle *deep = add(*inner, 20, 0);
    updateAll(group);

    EXPECT_TRUE(group.dragPointMove(1, {25, -15})); // the upper edge by -10

    EXPECT_EQ(text(deep->computeCoveredPolygon(false)), "15,-15 25,-15 25,5 15,5");
}

TEST(GroupDrag, leavesADirectionWithoutExtentAlone)
{
    Group group;
    auto *first = new Line;
    first->setPoint2({10, 0});
    group.addChild(first);
    auto *second = new Line;
    second->setPoint1({20, 0});
    second->setPoint2({30, 0});
    second->setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color())); // so that the group is not too thin
    group.addChild(second);
    updateAll(group);
    ASSERT_EQ(text(group.getDragPolygon()), "0,0 30,0");

    EXPECT_TRUE(group.dragPointMove(1, {60, 7}));

    EXPECT_EQ(first->getPoint2(), BaVec2d<double>(20, 0));
    EXPECT_EQ(second->getPoint1(), BaVec2d<double>(40, 0));
    EXPECT_EQ(second->getPoint2(), BaVec2d<double>(60, 0));
}

TEST(GroupDrag, thatMakesTheGroupTooNarrowIsUndone)
{
    Group group;
    add(group, 0, 0);
    add(group, 20, 0);
    auto *polygon = new Polygon;
    polygon->setPolygon(Polygon2d({{0, 0}, {20, 0}, {10, 5}}, true));
    group.addChild(polygon);
    auto *line = new Line;
    line->setPoint2({3, 4});
    group.addChild(line);
    updateAll(group);
    std::vector<std::string> const before = formsBelow(group);

    EXPECT_FALSE(group.dragPointMove(2, {-4.5, 5})); // 0.5 wide

    EXPECT_EQ(formsBelow(group), before);
}

TEST(GroupDrag, thatAnElementRefusesIsUndone)
{
    Group group;
    add(group, 0, 0);
    ProbeRectangle *stubborn = add(group, 20, 0);
    ProbeRectangle *neverAsked = add(group, 0, 0);
    stubborn->draggable = false;
    int asked = 0;
    neverAsked->onDrag = [&asked] { ++asked; };
    updateAll(group);
    std::vector<std::string> const before = formsBelow(group);

    EXPECT_FALSE(group.dragPointMove(2, {40, 10}));

    EXPECT_EQ(formsBelow(group), before);
    EXPECT_EQ(asked, 0);
}

TEST(GroupDrag, thatFailsIsUndoneToo)
{
    Group group;
    add(group, 0, 0);
    ProbeRectangle *failing = add(group, 20, 0);
    failing->onDrag = [] { throw ProgError("probe", "probe", 1, "broken"); };
    updateAll(group);
    std::vector<std::string> const before = formsBelow(group);

    EXPECT_EQ(progError([&] { group.dragPointMove(2, {40, 10}); }), "probe: broken");

    EXPECT_EQ(formsBelow(group), before);
}

TEST(GroupDrag, outsideTheOutlineIsRefused)
{
    Group group;
    add(group);
    updateAll(group);

    EXPECT_FALSE(group.dragPointMove(4, {0, 0}));
    EXPECT_FALSE(group.dragPointMove(-1, {0, 0}));
}

} // namespace
} // namespace Zem::Fig2
