#include <ElementForms.h>
#include <ZemFig2Group.h>
#include <ZemFig2Rectangle.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

/// a, g(b, empty, h(c)), d
class GroupWalk : public testing::Test
{
protected:
    GroupWalk()
    {
        root.addChild(a);
        root.addChild(g);
        g->addChild(b);
        g->addChild(empty);
        g->addChild(h);
        h->addChild(c);
        root.addChild(d);
    }

    Group root;
    Element *a = new Rectangle;
    Group *g = new Group;
    Element *b = new Rectangle;
    Group *empty = new Group;
    Group *h = new Group;
    Element *c = new Rectangle;
    Element *d = new Rectangle;
};

TEST_F(GroupWalk, visitsGroupsBeforeTheirChildrenInLayerOrder)
{
    std::vector<Element *> visited;

    for (auto it = root.getElementBegin(); it != root.getElementEnd(); ++it)
        visited.push_back(*it);

    EXPECT_EQ(visited, (std::vector<Element *>{a, g, b, empty, h, c, d}));
}

TEST_F(GroupWalk, isTheSameForConstantTrees)
{
    Group const &constant = root;
    std::vector<Element const *> visited;

    for (auto it = constant.getElementBegin(); it != constant.getElementEnd(); it++)
        visited.push_back(*it);

    EXPECT_EQ(visited, (std::vector<Element const *>{a, g, b, empty, h, c, d}));
}

TEST_F(GroupWalk, leavesOutTheGroupWhereItBegan)
{
    EXPECT_EQ(*g->getElementBegin(), b);
}

TEST_F(GroupWalk, ofAnEmptyGroupIsAtItsEnd)
{
    EXPECT_EQ(empty->getElementBegin(), empty->getElementEnd());
    EXPECT_EQ(Group::ElementIterator(), Group::ElementIterator(empty));
    EXPECT_EQ(Group::ElementConstIterator(), Group::ElementConstIterator(empty));
}

TEST_F(GroupWalk, cannotGoBeyondItsEnd)
{
    auto const atEnd = [](auto end) {
        EXPECT_EQ(progError([&] { static_cast<void>(*end); }), "libs/figure2/ZemFig2Group: end () already reached");
        EXPECT_EQ(progError([&] { static_cast<void>(end->getId()); }),
                  "libs/figure2/ZemFig2Group: end () already reached");
        EXPECT_EQ(progError([&] { ++end; }), "libs/figure2/ZemFig2Group: end () already reached");
        EXPECT_EQ(progError([&] { end++; }), "libs/figure2/ZemFig2Group: end () already reached");
    };

    atEnd(root.getElementEnd());
    atEnd(std::as_const(root).getElementEnd());
}

TEST_F(GroupWalk, stepsBehindItsFormerStateInPostfixForm)
{
    auto it = root.getElementBegin();

    EXPECT_EQ(*it++, a);
    EXPECT_EQ(*it, g);
    EXPECT_EQ(*++it, b);
    EXPECT_EQ(it->getId(), b->getId());
}

TEST_F(GroupWalk, goesOnIndependentlyInCopies)
{
    auto it = root.getElementBegin();
    ++it;
    Group::ElementIterator copy = it;
    ++copy;
    Group::ElementIterator assigned;
    assigned = it;

    EXPECT_EQ(*it, g);
    EXPECT_EQ(*copy, b);
    EXPECT_EQ(*assigned, g);
    EXPECT_EQ(assigned, it);
    EXPECT_NE(copy, it);
}

TEST_F(GroupWalk, comparesByPlace)
{
    auto first = root.getElementBegin();
    auto second = root.getElementBegin();
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);

    ++second;

    EXPECT_TRUE(first != second);
    EXPECT_TRUE(first != root.getElementEnd());
}

} // namespace
} // namespace Zem::Fig2
