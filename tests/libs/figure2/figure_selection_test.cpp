// Selection, hit test and bounds of a figure.
#include "tree_builders.h"

#include <TestTokens.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>

namespace Zem::Fig2 {
namespace {

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

TEST(FigureSelection, losesAGroupThatLeavesWithASelectedElementInIt)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    Element *leaf = add(addGroup(group));
    leaf->setSelected(true);
    group->setSelected(true);

    figure.getRoot()->removeChild(group);

    EXPECT_TRUE(figure.getSelectedElements().empty());
    EXPECT_TRUE(leaf->isSelected());
    delete group;
}

TEST(FigureSelection, keepsAGroupWhileAnotherElementOfItIsSelected)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    std::unique_ptr<Element> const leaving(add(group));
    Element *staying = add(addGroup(group));
    leaving->setSelected(true);
    staying->setSelected(true);

    group->removeChild(leaving.get());

    EXPECT_EQ(figure.getSelectedElements(), (Elements{group}));
}

TEST(FigureSelection, losesAGroupThatIsReplaced)
{
    Figure figure;
    Group *top = addGroup(figure.getRoot());
    Group *inner = addGroup(top);
    add(inner)->setSelected(true);

    top->replaceChild(inner, new Group);
    EXPECT_TRUE(figure.getSelectedElements().empty());
    top->setSelected(true);
    figure.getRoot()->replaceChild(top, new Group);

    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSelection, losesAGroupWhoseSelectedElementsAreLoadedAnew)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    std::string const empty = Support::streamOf([](IO::OutStream &stream) { Group().save(&stream, -1, -1); });
    add(group)->setSelected(true);

    Support::readFrom(empty, [group](IO::InStream &stream) { group->load(&stream, -1, -1); });

    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSelection, losesAnEmptyGroupThatIsRemoved)
{
    Figure figure;
    addGroup(figure.getRoot())->setSelected(true);

    EXPECT_TRUE(figure.removeEmptyGroups());

    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureHit, isTheElementPaintedLast)
{
    Figure figure;
    add(figure.getRoot());
    Element *upper = add(figure.getRoot());
    Support::TestTokens tokens;
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

TEST(FigureHit, isALabelWithoutConnectorsToo)
{
    Figure figure;
    auto *label = new Label;
    label->setAutoSize(false);
    label->setSize({4, 4});
    label->setOrigin({10, 10});
    figure.getRoot()->addChild(label);
    label->update(StageIdentifier(1), nullptr, nullptr);

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

} // namespace
} // namespace Zem::Fig2
