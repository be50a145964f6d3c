// Update and drawing of a figure.
#include "tree_builders.h"

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Invalidator.h>
#include <ZemFig2Label.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::RecordingPainter;
using Support::TestTokens;
using Support::text;

TEST(FigureUpdate, withoutTokenInterfaceDoesNothingAndKeepsTheWishForTheWholePage)
{
    Invalidator invalidator;
    Figure figure;
    figure.registerInvalidator(&invalidator);
    figure.invalidate();

    EXPECT_FALSE(figure.update(StageIdentifier(1), false));

    EXPECT_TRUE(invalidator.getInvalidArea().empty());
    TestTokens tokens;
    figure.setTokenInterface(&tokens);
    EXPECT_FALSE(figure.update(StageIdentifier(1), false));
    EXPECT_EQ(text(invalidator.getInvalidArea()), "0,0 210,0 210,297 0,297");
}

class FigureWithTokens : public testing::Test
{
protected:
    FigureWithTokens() { figure.registerInvalidator(&invalidator); }
    bool update(bool force = false) { return figure.update(StageIdentifier(1), force); }
    std::string changedArea()
    {
        std::string const area = text(invalidator.getInvalidArea());
        invalidator.reset();
        return area;
    }

    TestTokens tokens;
    Invalidator invalidator;
    Figure figure{&tokens};
    Group *root = figure.getRoot();
};

TEST_F(FigureWithTokens, reportsOldAndNewPlaceOfAMovedElement)
{
    Element *rectangle = add(root);
    update();
    changedArea();

    rectangle->moveBy({20, 0});

    EXPECT_TRUE(update());
    EXPECT_EQ(changedArea(), "8,8 12,8 12,12 8,12 28,8 32,8 32,12 28,12");
    EXPECT_FALSE(update());
    EXPECT_EQ(changedArea(), "");
}

TEST_F(FigureWithTokens, tellsEveryInvalidator)
{
    Invalidator other;
    figure.registerInvalidator(&other);
    add(root);

    update();
    figure.unregisterInvalidator(&other);

    EXPECT_EQ(text(other.getInvalidArea()), "8,8 12,8 12,12 8,12");
    EXPECT_EQ(changedArea(), "8,8 12,8 12,12 8,12");
}

TEST_F(FigureWithTokens, reportsTheWholePageOnceInsteadOfTheElements)
{
    add(root);
    figure.setSize({50, 60});
    figure.invalidate();

    EXPECT_TRUE(update());
    EXPECT_EQ(changedArea(), "0,0 50,0 50,60 0,60");
    EXPECT_FALSE(update());
    EXPECT_EQ(changedArea(), "");
}

TEST_F(FigureWithTokens, updatesWhatHasStaleData)
{
    ProbeRectangle *stale = add(root);
    ProbeRectangle *fresh = add(root);
    update();
    stale->dataValid = false;

    EXPECT_TRUE(update());

    EXPECT_GT(stale->computed, 1);
    EXPECT_EQ(fresh->computed, 1);
}

TEST_F(FigureWithTokens, updatesEveryElementByForce)
{
    ProbeRectangle *first = add(root);
    ProbeRectangle *second = add(addGroup(root));
    update();

    EXPECT_TRUE(update(true));

    EXPECT_EQ(first->computed, 2);
    EXPECT_EQ(second->computed, 2);
    EXPECT_TRUE(first->isValid());
}

TEST_F(FigureWithTokens, spreadsStalenessAlongChainsOfConnectors)
{
    ProbeRectangle *first = add(root);
    ProbeRectangle *middle = add(root);
    ProbeRectangle *last = add(addGroup(root));
    ProbeRectangle *alone = add(root);
    first->connect(middle, "");
    last->connect(middle, "");
    update();

    first->moveBy({1, 0});
    update();

    EXPECT_EQ(first->computed, 2);
    EXPECT_EQ(middle->computed, 2);
    EXPECT_EQ(last->computed, 2);
    EXPECT_EQ(alone->computed, 1);
}

TEST_F(FigureWithTokens, survivesConnectorsInACircle)
{
    ProbeRectangle *first = add(root);
    ProbeRectangle *second = add(root);
    first->connect(second, "");
    second->connect(first, "");

    EXPECT_TRUE(update());
    EXPECT_EQ(first->computed, 1);
}

TEST_F(FigureWithTokens, updatesTypesInTheirOrder)
{
    std::string log;
    Group *group = addGroup(root);
    auto const addTyped = [&](Group *parent, char const *name, Element::Type_t type) {
        ProbeRectangle *element = add(parent, name);
        element->setType(type);
        element->log = &log;
    };
    addTyped(group, "label", Element::LABEL);
    addTyped(root, "chart", Element::CHART);
    addTyped(root, "rectangle", Element::RECTANGLE);
    addTyped(root, "generic", Element::GENERIC_CHART);
    addTyped(root, "image", Element::IMAGE);
    addTyped(root, "legend", Element::LEGEND);
    addTyped(root, "frame", Element::SNAPSHOT_FRAME);
    addTyped(root, "imagelabel", Element::IMAGE_LABEL);
    addTyped(root, "chartlegend", Element::CHART_LEGEND);
    addTyped(root, "logo", Element::LOGO);
    addTyped(root, "snapshot", Element::SNAPSHOT);

    update();

    EXPECT_EQ(log, "imagelabel legend chart generic image frame label rectangle chartlegend logo snapshot ");
}

TEST_F(FigureWithTokens, visitsImageLabelsWithStaleDataTwice)
{
    ProbeRectangle *label = add(root);
    label->setType(Element::IMAGE_LABEL);
    label->dataValid = false;

    update();

    EXPECT_EQ(label->computed, 2);
}

TEST_F(FigureWithTokens, updatesGroupsAfterTheirChildren)
{
    Group *outer = addGroup(root);
    Group *inner = addGroup(outer);
    Element *leaf = add(inner);
    add(inner, "", 30, 10);
    update();

    leaf->moveBy({-5, 0});
    update();

    EXPECT_EQ(text(inner->getDragPolygon()), "3,8 32,8 32,12 3,12");
    EXPECT_EQ(text(outer->getDragPolygon()), "3,8 32,8 32,12 3,12");
    EXPECT_TRUE(outer->isValid());
}

TEST_F(FigureWithTokens, leavesGroupsWithoutChangesAlone)
{
    Group *changed = addGroup(root);
    Group *quiet = addGroup(root);
    Element *leaf = add(changed);
    add(quiet, "", 100, 100);
    update();
    changedArea();

    leaf->moveBy({1, 0});
    update();

    EXPECT_EQ(changedArea().find("98"), std::string::npos);
}

TEST_F(FigureWithTokens, findsAChangeWithoutAreaWithoutTellingAnyone)
{
    ProbeRectangle *element = add(root);
    element->withoutArea = true;

    EXPECT_FALSE(update());
    EXPECT_EQ(changedArea(), "");
    EXPECT_EQ(element->computed, 1);
}

class BoastingRectangle : public Rectangle
{
public:
    bool update(StageIdentifier const &, FigureTokenInterface const *, Polygon2d *) override { return true; }
};

TEST_F(FigureWithTokens, refusesAChangeWithoutPolygon)
{
    root->addChild(new BoastingRectangle);

    EXPECT_EQ(progError([&] { update(); }), "fig_figure: Modified, but no polygon");
}

TEST_F(FigureWithTokens, drawsConnectorLinesUnderTheElements)
{
    auto *rectangle = new Rectangle;
    rectangle->setOrigin({10, 10});
    rectangle->setSize({2, 2});
    root->addChild(rectangle);
    auto *label = new Label;
    label->setConnectorPoint({30, 10});
    label->setAutoSize(false);
    label->setSize({4, 4});
    label->setOrigin({10, 10});
    root->addChild(label);
    update();
    RecordingPainter painter;

    figure.draw(&painter);

    std::vector<std::string> const &calls = painter.calls();
    ASSERT_GE(calls.size(), 5U);
    EXPECT_EQ(calls[0], "polygon 0,0 210,0 210,297 0,297 no pen fill #ffffffff");
    EXPECT_EQ(calls[1], "line 12,10 29,10 pen 0.1 full #000000ff sharp");
    EXPECT_EQ(calls[2], "ellipse 30,10 radii 1,1 angle 0 pen 0.1 full #000000ff sharp no fill");
    EXPECT_EQ(calls[3], "polygon 9,9 11,9 11,11 9,11 no pen no fill");
}

TEST_F(FigureWithTokens, drawsEachElementToItsEndInLayerOrder)
{
    std::string log;
    ProbeRectangle *first = add(root, "a");
    ProbeRectangle *second = add(addGroup(root), "b");
    ProbeRectangle *third = add(root, "c");
    second->steps = 3;
    for (ProbeRectangle *element : {first, second, third})
        element->log = &log;
    RecordingPainter painter;

    figure.draw(&painter);

    EXPECT_EQ(log, "a0 b0 b1 b2 c0 ");
}

TEST_F(FigureWithTokens, drawsInvisibleElementsToo)
{
    std::string log;
    ProbeRectangle *element = add(root, "a");
    element->log = &log;
    element->setVisible(false);
    RecordingPainter painter;

    figure.draw(&painter);

    EXPECT_EQ(log, "a0 ");
}

TEST_F(FigureWithTokens, drawsAResolvedLabel)
{
    Support::FakeCalculator calculator;
    tokens.set("part.length", Value(12.5, uLength));
    auto *label = new Label;
    label->setText("L = $+10.2[mm]part.length$");
    root->addChild(label);
    update();
    RecordingPainter painter;

    figure.draw(&painter);

    // Ten characters with a sign: four blanks in front of "+12.50".
    EXPECT_NE(painter.transcript().find("'L&nbsp;=&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;+12.50'"), std::string::npos)
        << painter.transcript();
}

TEST(FigureDraw, paintsBackgroundOnlyWithoutTokenInterface)
{
    Figure figure;
    add(figure.getRoot());
    RecordingPainter painter;

    figure.draw(&painter);

    EXPECT_EQ(painter.transcript(), "polygon 0,0 210,0 210,297 0,297 no pen fill #ffffffff\n");
}

TEST(FigureDraw, paintsNoBackgroundThatIsNotFilled)
{
    Figure figure;
    figure.setBackground(FillStyle::null);
    RecordingPainter painter;

    figure.draw(&painter);
    figure.drawBackground(&painter);

    EXPECT_EQ(painter.transcript(), "");
}

} // namespace
} // namespace Zem::Fig2
