#include "probe_elements.h"

#include <ElementForms.h>
#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Invalidator.h>
#include <ZemFig2Label.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::RecordingPainter;
using Support::TestTokens;
using Support::text;
using Elements = std::vector<Element *>;

ProbeRectangle *add(Group *group, std::string const &name = "", double x = 10, double y = 10, double edge = 4)
{
    auto *rectangle = new ProbeRectangle(name);
    rectangle->setOrigin({x, y});
    rectangle->setSize({edge, edge});
    rectangle->setBorder(LineStyle::null);
    group->addChild(rectangle);
    return rectangle;
}

Group *addGroup(Group *group)
{
    auto *child = new Group;
    group->addChild(child);
    return child;
}

TEST(FigureDefaults, areAnEmptyWhitePage)
{
    Figure const figure;

    EXPECT_EQ(figure.getTokenInterface(), nullptr);
    EXPECT_EQ(figure.getSize(), BaVec2d<double>(210, 297));
    EXPECT_EQ(figure.getBackground(), FillStyle(Color(255, 255, 255)));
    EXPECT_TRUE(figure.getSelectedElements().empty());
    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
    EXPECT_EQ(Figure::FILE_TYPE_ID, QLatin1StringView("Figure"));
    EXPECT_EQ(Figure::FILE_EXTENSION, QLatin1StringView(".fig"));
}

TEST(FigureScriptObjects, holdTheElementsButNotTheRoot)
{
    Figure figure;
    Element *element = add(figure.getRoot());

    EXPECT_EQ(figure.getScriptObject()->getTObject(), &figure);
    EXPECT_EQ(figure.getElementsScriptObject()->getParent(), figure.getScriptObject());
    EXPECT_EQ(static_cast<unsigned int>(figure.getElementsScriptObject()->getCategory()), 21U);
    EXPECT_EQ(element->getScriptObject()->getParent(), figure.getElementsScriptObject());
    EXPECT_EQ(figure.getRoot()->getScriptObject()->getParent(), nullptr);
    EXPECT_EQ(figure.getRoot()->getFigure(), &figure);
    EXPECT_EQ(figure.getElementsScriptObject()->getChildren().size(), 1U);
}

TEST(FigureSetters, storeAndNothingElse)
{
    TestTokens tokens;
    Figure figure;
    Element *element = add(figure.getRoot());
    element->update(StageIdentifier(1), nullptr, nullptr);

    figure.setSize({100, 50});
    figure.setBackground(FillStyle::null);
    figure.setTokenInterface(&tokens);

    EXPECT_EQ(figure.getSize(), BaVec2d<double>(100, 50));
    EXPECT_EQ(figure.getBackground(), FillStyle::null);
    EXPECT_EQ(figure.getTokenInterface(), &tokens);
    EXPECT_TRUE(element->isValid());
}

TEST(FigureSetRoot, takesOverTheWholeTree)
{
    Figure figure;
    add(figure.getRoot())->setSelected(true);
    auto *root = new Group;
    Group *group = addGroup(root);
    Element *leaf = add(group);

    figure.setRoot(root);

    EXPECT_EQ(figure.getRoot(), root);
    EXPECT_EQ(root->getScriptObject()->getParent(), nullptr);
    EXPECT_EQ(group->getFigure(), &figure);
    EXPECT_EQ(leaf->getFigure(), &figure);
    EXPECT_EQ(leaf->getScriptObject()->getName(), "rectangle_1");
    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSetRoot, keepsARootThatIsSetAgain)
{
    Figure figure;
    Element *element = add(figure.getRoot());

    figure.setRoot(figure.getRoot());

    EXPECT_EQ(*figure.getElementBegin(), element);
}

TEST(InvalidatorArea, addsUpUntilReset)
{
    Invalidator invalidator;
    EXPECT_TRUE(invalidator.getInvalidArea().empty());

    invalidator.invalidateArea(Polygon2d({{0, 0}, {1, 0}, {0, 1}}, true));
    invalidator.invalidateArea(Polygon2d({{5, 5}, {6, 5}, {5, 6}}, true));
    Invalidator const copy(invalidator);
    Invalidator assigned;
    assigned = invalidator;
    invalidator.reset();

    EXPECT_TRUE(invalidator.getInvalidArea().empty());
    EXPECT_EQ(text(copy.getInvalidArea()), "0,0 1,0 0,1 5,5 6,5 5,6");
    EXPECT_EQ(copy.getInvalidArea().getNumberOfParts(), 2U);
    EXPECT_EQ(assigned.getInvalidArea(), copy.getInvalidArea());
}

TEST(FigureInvalidators, areRegisteredOnce)
{
    Figure figure;
    Invalidator invalidator;
    figure.registerInvalidator(&invalidator);

    EXPECT_EQ(progError([&] { figure.registerInvalidator(&invalidator); }),
              "fig_figure: Invalidator already registered");
    figure.unregisterInvalidator(&invalidator);
    figure.unregisterInvalidator(&invalidator);
    figure.registerInvalidator(&invalidator);
}

class LeavingInvalidator : public Invalidator
{
public:
    LeavingInvalidator(Figure *figure, std::vector<Figure const *> *told) : figure_(figure), told_(told) {}
    void figureDeleted(Figure const *figure) override
    {
        told_->push_back(figure);
        figure_->unregisterInvalidator(this);
    }

private:
    Figure *figure_;
    std::vector<Figure const *> *told_;
};

TEST(FigureInvalidators, areAllToldOfTheEndEvenWhenTheyLeave)
{
    std::vector<Figure const *> told;
    auto figure = std::make_unique<Figure>();
    Figure const *address = figure.get();
    LeavingInvalidator first(figure.get(), &told);
    LeavingInvalidator second(figure.get(), &told);
    Invalidator plain;
    figure->registerInvalidator(&first);
    figure->registerInvalidator(&plain);
    figure->registerInvalidator(&second);

    figure.reset();

    EXPECT_EQ(told, (std::vector<Figure const *>{address, address}));
}

TEST(FigureUpdate, withoutTokenInterfaceDoesNothingAndKeepsTheWishForTheWholePage)
{
    Figure figure;
    Invalidator invalidator;
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

TEST(FigureSelection, listsTopLevelElementsInTheOrderOfSelection)
{
    Figure figure;
    Element *first = add(figure.getRoot());
    Group *group = addGroup(figure.getRoot());
    Element *leaf = add(addGroup(group));

    figure.selectElement(leaf, true);
    figure.selectElement(first, true);
    figure.selectElement(first, true);

    EXPECT_EQ(figure.getSelectedElements(), (Elements{group, first}));
    EXPECT_TRUE(group->isSelected());
    EXPECT_FALSE(leaf->isSelected());
    figure.selectElement(group, false);
    EXPECT_EQ(figure.getSelectedElements(), (Elements{first}));
}

TEST(FigureSelection, ofAnElementSetDirectlyListsItsTopLevelElement)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    Element *leaf = add(group);
    Element *other = add(group);

    leaf->setSelected(true);
    other->setSelected(true);
    EXPECT_EQ(figure.getSelectedElements(), (Elements{group}));
    leaf->setSelected(false);
    EXPECT_EQ(figure.getSelectedElements(), (Elements{group}));
    other->setSelected(false);
    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSelection, deselectsTheElementItselfToo)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    Element *leaf = add(group);
    leaf->setSelected(true);
    group->setSelected(true);

    figure.selectElement(leaf, false);

    EXPECT_FALSE(leaf->isSelected());
    EXPECT_FALSE(group->isSelected());
    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSelection, refusesInvisibleElements)
{
    Figure figure;
    Element *element = add(figure.getRoot());
    element->setVisible(false);

    figure.selectElement(element, true);

    EXPECT_FALSE(element->isSelected());
    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSelection, followsTheVisibilityOfSelectedElements)
{
    Figure figure;
    Element *element = add(figure.getRoot());
    Group *group = addGroup(figure.getRoot());
    Element *leaf = add(group);
    element->setSelected(true);
    leaf->setSelected(true);

    element->setVisible(false);
    leaf->setVisible(false);
    EXPECT_TRUE(figure.getSelectedElements().empty());
    leaf->setVisible(true);
    element->setVisible(true);

    EXPECT_EQ(figure.getSelectedElements(), (Elements{group, element}));
}

TEST(FigureSelection, ofAGroupDoesNotAskForItsVisibility)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    group->setSelected(true);

    group->setVisible(false);

    EXPECT_EQ(figure.getSelectedElements(), (Elements{group}));
}

TEST(FigureSelection, ignoresTheRoot)
{
    Figure figure;

    figure.getRoot()->setSelected(true);
    figure.updateElementSelection(figure.getRoot());

    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSelection, isClearedAsAWhole)
{
    Figure figure;
    Element *element = add(figure.getRoot());
    Group *group = addGroup(figure.getRoot());
    Element *leaf = add(group);
    for (Element *each : Elements{element, group, leaf})
        each->setSelected(true);
    element->update(StageIdentifier(1), nullptr, nullptr);

    figure.clearSelection();

    EXPECT_TRUE(figure.getSelectedElements().empty());
    EXPECT_FALSE(element->isSelected());
    EXPECT_FALSE(group->isSelected());
    EXPECT_FALSE(leaf->isSelected());
    EXPECT_FALSE(element->isValid());
}

TEST(FigureSelection, losesAGroupWithItsLastSelectedElement)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    Group *inner = addGroup(group);
    Element *leaf = add(inner);
    leaf->setSelected(true);

    group->removeChild(inner);

    EXPECT_TRUE(figure.getSelectedElements().empty());
    delete inner;
}

TEST(FigureHit, isTheElementPaintedLast)
{
    Figure figure;
    add(figure.getRoot());
    Element *upper = add(figure.getRoot());
    TestTokens tokens;
    figure.setTokenInterface(&tokens);
    figure.update(StageIdentifier(1), false);

    EXPECT_EQ(figure.getElementAt({10, 10}), upper);
    EXPECT_EQ(figure.getElementAt({50, 50}), nullptr);
    upper->setVisible(false);
    EXPECT_NE(figure.getElementAt({10, 10}), upper);
}

TEST(FigureHit, isTheGroupAroundIt)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    Group *inner = addGroup(group);
    add(inner)->update(StageIdentifier(1), nullptr, nullptr);
    add(inner)->update(StageIdentifier(1), nullptr, nullptr);

    EXPECT_EQ(figure.getElementAt({10, 10}), group);
}

class ShyLabel : public Label
{
public:
    bool getDrawUnconnected() const override { return false; }
    bool canConnectTo(Element const *, QString const &) const override { return true; }
    bool computeConnectorPoints(Connector const *, FigureTokenInterface const *, BaVec2d<double> *,
                                BaVec2d<double> *) const override
    {
        return false;
    }
};

TEST(FigureHit, passesOverLabelsThatHideWithoutConnectors)
{
    Figure figure;
    auto *label = new ShyLabel;
    label->setAutoSize(false);
    label->setSize({4, 4});
    label->setOrigin({10, 10});
    figure.getRoot()->addChild(label);
    label->update(StageIdentifier(1), nullptr, nullptr);
    EXPECT_EQ(figure.getElementAt({10, 10}), nullptr);

    label->connect(add(figure.getRoot(), "", 100, 100), "");

    EXPECT_EQ(figure.getElementAt({10, 10}), label);
}

TEST(FigureBounds, leaveARimOfAThousandth)
{
    Figure figure;
    figure.setSize({100, 200});
    auto const touches = [&figure](double left, double top, double right, double bottom) {
        return figure.isInBounds(Polygon2d({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, true));
    };

    EXPECT_TRUE(touches(-10, -10, 0.11, 0.21));
    EXPECT_FALSE(touches(-10, -10, 0.09, 300));
    EXPECT_FALSE(touches(-10, -10, 300, 0.19));
    EXPECT_TRUE(touches(99.89, 199.79, 300, 300));
    EXPECT_FALSE(touches(99.91, -10, 300, 300));
    EXPECT_FALSE(touches(-10, 199.81, 300, 300));
}

TEST(FigureBounds, ofAnElementAreThoseOfItsOutlineWithoutBorder)
{
    Figure figure;
    Element *element = add(figure.getRoot(), "", -2, 10);
    element->setBorder(LineStyle(5, LineStyle::STYLE_FULL, Color()));

    EXPECT_FALSE(figure.isInBounds(element)); // ends at 0, within the rim
    element->moveBy({0.22, 0});
    EXPECT_TRUE(figure.isInBounds(element));
}

TEST(FigureEmptyGroups, areRemovedFromTheInsideOut)
{
    Figure figure;
    Group *outer = addGroup(figure.getRoot());
    addGroup(addGroup(outer));
    Group *kept = addGroup(figure.getRoot());
    add(kept);
    addGroup(kept);

    EXPECT_TRUE(figure.removeEmptyGroups());

    EXPECT_EQ(std::vector<Element *>(figure.getRoot()->getChildBegin(), figure.getRoot()->getChildEnd()),
              (Elements{kept}));
    EXPECT_EQ(kept->getChildEnd() - kept->getChildBegin(), 1);
    EXPECT_FALSE(figure.removeEmptyGroups());
}

TEST(FigureEmptyGroups, leaveTheRoot)
{
    Figure figure;
    addGroup(figure.getRoot());

    EXPECT_TRUE(figure.removeEmptyGroups());
    EXPECT_FALSE(figure.removeEmptyGroups());

    EXPECT_NE(figure.getRoot(), nullptr);
    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
}

TEST(FigureTokens, areUsedByAnyElement)
{
    Figure figure;
    add(figure.getRoot());
    add(addGroup(figure.getRoot()))->usedToken = "force";

    EXPECT_TRUE(figure.isTokenUsed("force"));
    EXPECT_FALSE(figure.isTokenUsed("stress"));
}

/// The first line of each element's parameters, as toString writes it.
std::string firstLines(Figure const &figure)
{
    std::string lines;
    for (QString const &line : figure.toString().split('\n')) {
        if (line.contains("type = "))
            lines += line.toStdString() + "\n";
    }
    return lines;
}

TEST(FigureToString, indentsByDepth)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    add(group);
    add(figure.getRoot());

    EXPECT_EQ(firstLines(figure), "type = \"group\"\n"
                                  "|---type = \"group\"\n"
                                  "|-------type = \"rectangle\"\n"
                                  "|---type = \"rectangle\"\n");
}

TEST(FigureToString, putsBlanksInFrontOfTheFollowingLines)
{
    Figure figure;
    auto *bare = new BareElement;
    figure.getRoot()->addChild(bare);

    EXPECT_EQ(figure.toString().toStdString(), "type = \"group\"\n"
                                               "origin = (0, 0)\n"
                                               "visible = true\n"
                                               "highlight_color = #080884ff\n"
                                               "pivot_align_x = \"begin\"\n"
                                               "pivot_align_y = \"begin\"\n"
                                               "margin = 1\n"
                                               "spacing = 1\n"
                                               "|---type = \"logo\"\n"
                                               "|   origin = (0, 0)\n"
                                               "|   visible = true\n"
                                               "|   highlight_color = #080884ff\n");
}

TEST(FigureCopy, copiesThePageAndItsTree)
{
    TestTokens tokens;
    Figure figure(&tokens);
    Invalidator invalidator;
    figure.registerInvalidator(&invalidator);
    figure.setSize({100, 50});
    figure.setBackground(FillStyle::null);
    ProbeRectangle *first = add(figure.getRoot());
    first->connect(add(figure.getRoot()), "point");
    first->setSelected(true);
    figure.invalidate();

    Figure copy(figure);

    EXPECT_EQ(copy.getTokenInterface(), &tokens);
    EXPECT_EQ(copy.getSize(), BaVec2d<double>(100, 50));
    EXPECT_EQ(copy.getBackground(), FillStyle::null);
    EXPECT_TRUE(copy.getSelectedElements().empty());
    EXPECT_EQ(copy.toString(), figure.toString());
    EXPECT_EQ(copy.getRoot()->getScriptObject()->getParent(), nullptr);
    Element *copied = *copy.getElementBegin();
    EXPECT_EQ(copied->getFigure(), &copy);
    EXPECT_EQ(copied->getScriptObject()->getName(), "rectangle_0");
    QString point;
    EXPECT_EQ(copied->getConnectorTarget(&point)->getFigure(), &copy);
    EXPECT_EQ(point, "point");
    // The wish for the whole page is copied, the invalidator is not.
    Invalidator own;
    copy.registerInvalidator(&own);
    copy.update(StageIdentifier(1), false);
    EXPECT_EQ(text(own.getInvalidArea()), "0,0 100,0 100,50 0,50");
    EXPECT_TRUE(invalidator.getInvalidArea().empty());
}

TEST(FigureFootprint, countsTheTree)
{
    Figure figure;
    unsigned int const empty = figure.getEstimatedObjectSize();
    Element *element = add(figure.getRoot());

    EXPECT_GE(empty, sizeof(Figure) + sizeof(Group));
    EXPECT_GE(figure.getEstimatedObjectSize(), empty + element->getEstimatedObjectSize());
}

} // namespace
} // namespace Zem::Fig2
