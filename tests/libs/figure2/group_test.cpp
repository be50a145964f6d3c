#include "tree_builders.h"

#include <RecordingPainter.h>
#include <ZemFig2Figure.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::text;

TEST(GroupAddChild, appendsOrInsertsBehindAPredecessor)
{
    Group group;
    Element *first = add(group);
    Element *last = add(group);
    auto *middle = new Rectangle;

    group.addChild(middle, first);

    EXPECT_EQ(childrenOf(group), (Elements{first, middle, last}));
    EXPECT_EQ(middle->getParent(), &group);
    EXPECT_TRUE(group.childExists(middle));
}

TEST(GroupAddChild, makesTheFirstOneTheMaster)
{
    Group group;
    EXPECT_EQ(group.getMasterElement(), nullptr);
    Element *first = add(group);
    add(group);

    EXPECT_EQ(group.getMasterElement(), first);
}

TEST(GroupAddChild, refusesAChildAndAnUnknownPredecessor)
{
    Group group;
    Element *child = add(group);
    Rectangle other;

    EXPECT_EQ(progError([&] { group.addChild(child); }), "fig_group: Element already inserted");
    EXPECT_EQ(progError([&] { group.addChild(&other, &other); }), "fig_group: Predecessor element not found");
    EXPECT_EQ(childrenOf(group), (Elements{child}));
    EXPECT_EQ(other.getParent(), nullptr);
}

TEST(GroupAddChild, givesTheFigureToAllBelow)
{
    Figure figure;
    auto *outer = new Group;
    Group *inner = addGroup(*outer);
    Element *leaf = add(*inner);

    figure.getRoot()->addChild(outer);

    EXPECT_EQ(outer->getFigure(), &figure);
    EXPECT_EQ(inner->getFigure(), &figure);
    EXPECT_EQ(leaf->getFigure(), &figure);
    EXPECT_EQ(leaf->getScriptObject()->getName(), "rectangle_2");
}

TEST(GroupAddChild, tellsTheSelectionOfTheFigure)
{
    Figure figure;
    Group *group = addGroup(*figure.getRoot());
    auto *selected = new Rectangle;
    selected->setSelected(true);

    group->addChild(selected);

    EXPECT_EQ(figure.getSelectedElements(), (Elements{group}));
}

TEST(GroupRemoveChild, givesTheElementBack)
{
    Figure figure;
    Group *group = addGroup(*figure.getRoot());
    Element *first = add(*group);
    Element *second = add(*group);
    Element *third = add(*group);
    second->setSelected(true);

    group->removeChild(second);

    EXPECT_EQ(childrenOf(*group), (Elements{first, third}));
    EXPECT_FALSE(second->isSelected());
    EXPECT_EQ(second->getParent(), nullptr);
    EXPECT_EQ(second->getFigure(), nullptr);
    EXPECT_EQ(second->getScriptObject()->getParent(), nullptr);
    delete second;
}

TEST(GroupRemoveChild, takesTheFigureFromAllBelow)
{
    Figure figure;
    Group *group = addGroup(*figure.getRoot());
    Element *leaf = add(*group);

    figure.getRoot()->removeChild(group);

    EXPECT_EQ(leaf->getFigure(), nullptr);
    delete group;
}

TEST(GroupRemoveChild, refusesAStranger)
{
    Group group;
    Rectangle stranger;

    EXPECT_EQ(progError([&] { group.removeChild(&stranger); }), "fig_group: Element is not a child element");
}

TEST(GroupRemoveChild, passesTheMasterOn)
{
    Group group;
    std::unique_ptr<Element> const first(add(group));
    std::unique_ptr<Element> const second(add(group));

    group.removeChild(first.get());
    EXPECT_EQ(group.getMasterElement(), second.get());
    group.removeChild(second.get());
    EXPECT_EQ(group.getMasterElement(), nullptr);
}

TEST(GroupRemoveChildren, givesThoseBackThatAreWantedInTheirOrder)
{
    Figure figure;
    Group *group = addGroup(*figure.getRoot());
    Element *first = add(*group);
    Element *second = add(*group);
    Element *third = add(*group);
    Group *fourth = addGroup(group);
    Element *leaf = add(*fourth);
    second->setSelected(true);

    Elements const removed =
        group->removeChildren([&](Element const *child) { return child == fourth || child == second; });

    EXPECT_EQ(removed, (Elements{second, fourth}));
    EXPECT_EQ(childrenOf(*group), (Elements{first, third}));
    EXPECT_FALSE(second->isSelected());
    EXPECT_TRUE(figure.getSelectedElements().empty());
    EXPECT_EQ(second->getParent(), nullptr);
    EXPECT_EQ(leaf->getFigure(), nullptr);
    EXPECT_EQ(second->getScriptObject()->getParent(), nullptr);
    for (Element *element : removed)
        delete element;
}

TEST(GroupRemoveChildren, passesTheMasterToTheFirstThatStays)
{
    Group group;
    std::unique_ptr<Element> const first(add(group));
    std::unique_ptr<Element> const second(add(group));
    Element *third = add(group);
    group.removeChildren([&](Element const *child) { return child == first.get() || child == second.get(); });
    EXPECT_EQ(group.getMasterElement(), third);
    group.removeChildren([](Element const *) { return false; });
    EXPECT_EQ(childrenOf(group), Elements{third});
}

TEST(GroupRemoveChildren, changesTheOutlineOfTheGroup)
{
    Group group;
    add(group, 0, 0);
    std::unique_ptr<Element> const leaving(add(group, 100, 0));
    updateAll(group);
    group.Element::update(StageIdentifier(1), nullptr, nullptr);
    group.removeChildren([&](Element const *child) { return child == leaving.get(); });
    EXPECT_FALSE(group.isValid());
}

TEST(GroupChildren, changeTheOutlineOfTheGroup)
{
    Group group;
    add(group, 0, 0);
    std::unique_ptr<Element> const leaving(add(group, 100, 0));
    updateAll(group);
    group.Element::update(StageIdentifier(1), nullptr, nullptr);
    ASSERT_TRUE(group.isValid());

    group.removeChild(leaving.get());

    EXPECT_FALSE(group.isValid());
    group.Element::update(StageIdentifier(1), nullptr, nullptr);
    EXPECT_EQ(text(group.getDragPolygon()), "-5,-5 5,-5 5,5 -5,5");
    leaving->update(StageIdentifier(1), nullptr, nullptr);
    group.addChild(leaving.get());
    EXPECT_FALSE(group.isValid());
    group.removeChild(leaving.get());
}

TEST(GroupReplaceChild, takesPlaceAndMasterOfTheOldOne)
{
    Figure figure;
    Group &group = *figure.getRoot();
    Element *first = add(group);
    Element *old = add(group);
    Element *last = add(group);
    group.setMasterElement(old);
    old->setSelected(true);
    auto *fresh = new ProbeRectangle;

    group.replaceChild(old, fresh);

    EXPECT_EQ(childrenOf(group), (Elements{first, fresh, last}));
    EXPECT_EQ(group.getMasterElement(), fresh);
    EXPECT_EQ(fresh->getParent(), &group);
    EXPECT_EQ(fresh->getFigure(), &figure);
    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(GroupReplaceChild, refusesAStranger)
{
    Group group;
    add(group);
    Rectangle stranger;
    Rectangle fresh;

    EXPECT_EQ(progError([&] { group.replaceChild(&stranger, &fresh); }), "fig_group: Element is not a child element");
}

TEST(GroupReplaceChild, byItselfChangesNothing)
{
    Group group;
    Element *child = add(group);

    group.replaceChild(child, child);

    EXPECT_EQ(childrenOf(group), (Elements{child}));
}

/// Two elements of a group, one of which is replaced.
class ReplacedElement : public testing::Test
{
protected:
    Group group;
    ProbeRectangle *other = add(group);
    ProbeRectangle *old = add(group);
    ProbeRectangle *fresh = new ProbeRectangle;

    /// The connectors of the new element, which are those of the other one too.
    std::vector<Ends> replaced()
    {
        group.replaceChild(old, fresh);
        EXPECT_EQ(connectorsOf(other), connectorsOf(fresh));
        return connectorsOf(fresh);
    }
};

TEST_F(ReplacedElement, handsOnConnectorsThatLeadToIt)
{
    other->connect(old, "point");
    EXPECT_EQ(replaced(), (std::vector<Ends>{{other, fresh, "point"}}));
}

TEST_F(ReplacedElement, handsOnConnectorsThatBeginAtIt)
{
    old->connect(other, "point");
    EXPECT_EQ(replaced(), (std::vector<Ends>{{fresh, other, "point"}}));
}

TEST_F(ReplacedElement, hasConnectorsWithoutNamesTurnedTowardsTheNewOne)
{
    old->connect(other, "");
    EXPECT_EQ(replaced(), (std::vector<Ends>{{other, fresh, ""}}));
}

TEST_F(ReplacedElement, losesWhatTheNewOneDoesNotAccept)
{
    old->connect(other, "point");
    other->connect(old, "kept");
    fresh->refusedPoint = "point";
    EXPECT_EQ(replaced(), (std::vector<Ends>{{other, fresh, "kept"}}));
}

TEST(GroupReplaceChild, ofAGroupDropsConnectorsFromWithinIt)
{
    Group group;
    Group *old = addGroup(group);
    ProbeRectangle *inside = add(*old);
    inside->connect(old, "");
    auto *fresh = new ProbeRectangle;

    group.replaceChild(old, fresh);

    EXPECT_TRUE(connectorsOf(fresh).empty());
}

TEST(GroupMaster, descendsToAnElementThatIsNoGroup)
{
    Group outer;
    Group *inner = addGroup(outer);
    add(*inner, 3, 4);
    Element *master = add(*inner, 5, 6);
    inner->setMasterElement(master);
    add(outer);

    EXPECT_EQ(outer.getMasterElement(), master);
    EXPECT_EQ(outer.getOrigin(), BaVec2d<double>(5, 6));
}

TEST(GroupMaster, clearsValidWhenSet)
{
    Group group;
    Element *child = add(group);
    group.Element::update(StageIdentifier(1), nullptr, nullptr);

    group.setMasterElement(child);

    EXPECT_FALSE(group.isValid());
}

TEST(GroupOrigin, isThatOfTheMaster)
{
    Group group;
    add(group, 1, 2);
    Element *master = add(group, 3, 4);
    group.setMasterElement(master);
    master->setPivotAlignmentX(ALIGN_END);
    master->setPivotAlignmentY(ALIGN_CENTER);

    EXPECT_EQ(group.getOrigin(), BaVec2d<double>(3, 4));
    EXPECT_EQ(group.getAlignmentOrigin(), BaVec2d<double>(8, 4));
}

TEST(GroupOrigin, movesEveryElementBelow)
{
    Group group;
    Element *master = add(group, 1, 2);
    Group *inner = addGroup(group);
    Element *deep = add(*inner, 10, 20);

    group.setOrigin({2, 4});
    EXPECT_EQ(master->getOrigin(), BaVec2d<double>(2, 4));
    EXPECT_EQ(deep->getOrigin(), BaVec2d<double>(11, 22));
    group.moveBy({-1, 0});
    EXPECT_EQ(deep->getOrigin(), BaVec2d<double>(10, 22));
    group.setAlignmentOrigin({0, 0}); // the pivot of the master, at -4,-1, moves there
    EXPECT_EQ(master->getOrigin(), BaVec2d<double>(5, 5));
    EXPECT_EQ(deep->getOrigin(), BaVec2d<double>(14, 23));
}

TEST(GroupOrigin, clearsValidWhenMoved)
{
    Group group;
    add(group);
    group.Element::update(StageIdentifier(1), nullptr, nullptr);

    group.setOrigin({1, 1});

    EXPECT_FALSE(group.isValid());
}

TEST(GroupOrigin, ofAnEmptyGroupIsRefused)
{
    Group group;

    EXPECT_EQ(progError([&] { static_cast<void>(group.getOrigin()); }), "fig_group: Group does not have any children");
    EXPECT_EQ(progError([&] { group.setOrigin({0, 0}); }), "fig_group: Empty group");
    EXPECT_EQ(progError([&] { static_cast<void>(group.getAlignmentOrigin()); }), "fig_group: Group has no elements");
    EXPECT_EQ(progError([&] { group.moveBy({1, 1}); }), "fig_group: Group does not have any children");
}

TEST(GroupLayers, swapNeighbours)
{
    Group group;
    Element *a = add(group);
    Element *b = add(group);
    Element *c = add(group);

    group.layerUp(a);
    EXPECT_EQ(childrenOf(group), (Elements{b, a, c}));
    group.layerDown(c);
    EXPECT_EQ(childrenOf(group), (Elements{b, c, a}));
}

TEST(GroupLayers, goToTheEnds)
{
    Group group;
    Element *a = add(group);
    Element *b = add(group);
    Element *c = add(group);

    group.layerTop(a);
    EXPECT_EQ(childrenOf(group), (Elements{b, c, a}));
    group.layerBottom(c);
    EXPECT_EQ(childrenOf(group), (Elements{c, b, a}));
}

TEST(GroupLayers, tellWhatIsPossible)
{
    Group group;
    Element *a = add(group);
    Element *b = add(group);

    EXPECT_TRUE(group.canLayerUp(a));
    EXPECT_FALSE(group.canLayerDown(a));
    EXPECT_FALSE(group.canLayerUp(b));
    EXPECT_TRUE(group.canLayerDown(b));
}

TEST(GroupLayers, endAtTopAndBottom)
{
    Group group;
    Element *a = add(group);
    Element *b = add(group);

    EXPECT_EQ(progError([&] { group.layerUp(b); }), "fig_group: Element layer can't be changed");
    EXPECT_EQ(progError([&] { group.layerTop(b); }), "fig_group: Element layer can't be changed");
    EXPECT_EQ(progError([&] { group.layerDown(a); }), "fig_group: Element layer can't be changed");
    EXPECT_EQ(progError([&] { group.layerBottom(a); }), "fig_group: Element layer can't be changed");
    EXPECT_EQ(childrenOf(group), (Elements{a, b}));
}

TEST(GroupLayers, refuseAnEmptyGroupAndAStranger)
{
    Group empty;
    Group group;
    add(group);
    Rectangle stranger;
    auto const all = [&stranger](Group &where) {
        return std::vector<std::string>{
            progError([&] { where.canLayerUp(&stranger); }), progError([&] { where.canLayerDown(&stranger); }),
            progError([&] { where.layerUp(&stranger); }),    progError([&] { where.layerDown(&stranger); }),
            progError([&] { where.layerTop(&stranger); }),   progError([&] { where.layerBottom(&stranger); })};
    };

    EXPECT_EQ(all(empty), std::vector<std::string>(6, "fig_group: Empty group"));
    EXPECT_EQ(all(group), std::vector<std::string>(6, "fig_group: Child element not found"));
}

TEST(GroupLayers, leaveValidAlone)
{
    Group group;
    Element *a = add(group);
    add(group);
    updateAll(group);
    group.Element::update(StageIdentifier(1), nullptr, nullptr);

    group.layerUp(a);
    group.layerDown(a);
    group.layerTop(a);
    group.layerBottom(a);

    EXPECT_TRUE(group.isValid());
}

TEST(GroupCopy, copiesChildrenWithoutTies)
{
    Group group;
    ProbeRectangle *first = add(group, 1, 1);
    ProbeRectangle *second = add(group, 2, 2);
    first->connect(second, "");
    group.setMasterElement(second);

    std::unique_ptr<Group> const copy(dynamic_cast<Group *>(group.copy()));

    ASSERT_EQ(childrenOf(*copy).size(), 2U);
    EXPECT_EQ(formsBelow(*copy), formsBelow(group));
    EXPECT_EQ(copy->getMasterElement(), childrenOf(*copy)[1]);
    for (Element *child : childrenOf(*copy)) {
        EXPECT_EQ(child->getParent(), copy.get());
        EXPECT_TRUE(connectorsOf(child).empty());
        EXPECT_FALSE(group.childExists(child));
    }
}

TEST(GroupCopy, findsAMasterInAGroupBelow)
{
    Group group;
    add(group, 1, 1);
    Group *inner = addGroup(group);
    add(*inner, 2, 2);
    Element *deep = add(*inner, 3, 3);
    inner->setMasterElement(deep);
    group.setMasterElement(inner);
    std::unique_ptr<Group> const byChild(dynamic_cast<Group *>(group.copy()));
    group.setMasterElement(deep);
    std::unique_ptr<Group> const byPlace(dynamic_cast<Group *>(group.copy()));

    EXPECT_EQ(byChild->getOrigin(), BaVec2d<double>(3, 3));
    EXPECT_EQ(byPlace->getOrigin(), BaVec2d<double>(3, 3));
    EXPECT_NE(byPlace->getMasterElement(), deep);
}

TEST(GroupClone, keepsTheConnectorsWithinTheTree)
{
    Group outside;
    ProbeRectangle *stranger = add(outside);
    Group group;
    ProbeRectangle *first = add(group);
    Group *inner = addGroup(group);
    ProbeRectangle *second = add(*inner);
    first->connect(second, "kept");
    first->connect(stranger, "dropped");
    std::map<Element const *, Element *> copies;

    std::unique_ptr<Group> const clone(group.clone(&copies));

    ASSERT_EQ(copies.size(), 3U);
    EXPECT_EQ(connectorsOf(copies.at(first)), (std::vector<Ends>{{copies.at(first), copies.at(second), "kept"}}));
    EXPECT_EQ(connectorsOf(copies.at(second)), connectorsOf(copies.at(first)));
    EXPECT_EQ(copies.at(inner)->getParent(), clone.get());
    std::unique_ptr<Group> const withoutMap(group.clone(nullptr));
    EXPECT_EQ(formsBelow(*withoutMap), formsBelow(group));
}

class Watched : public Rectangle
{
public:
    explicit Watched(int *deleted) : deleted_(deleted) {}
    ~Watched() override { ++*deleted_; }

private:
    int *deleted_;
};

TEST(GroupDestructor, deletesItsChildrenButNotThoseOfOthers)
{
    int deleted = 0;
    int kept = 0;
    std::unique_ptr<Element> managed(new Watched(&kept));
    managed->setExternallyManaged(true);
    {
        Figure figure;
        Group *group = addGroup(*figure.getRoot());
        group->addChild(new Watched(&deleted));
        group->addChild(managed.get());
        managed->setSelected(true);
    }

    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(kept, 0);
    EXPECT_EQ(managed->getParent(), nullptr);
    EXPECT_EQ(managed->getFigure(), nullptr);
    managed->setSelected(false);
}

TEST(GroupFootprint, countsTheChildren)
{
    Group group;
    unsigned int const empty = group.getEstimatedObjectSize();
    Element *child = add(group);

    EXPECT_GE(empty, sizeof(Group));
    EXPECT_GE(group.getEstimatedObjectSize(), empty + child->getEstimatedObjectSize());
}

} // namespace
} // namespace Zem::Fig2
