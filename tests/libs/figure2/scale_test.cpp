// What is done to 100,000 elements, which would end only with the patience of the test run if each of them looked at all
// the others.
#include "probe_elements.h"

#include <BlockCrafter.h>
#include <TestTokens.h>
#include <ZemFig2Figure.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

constexpr int COUNT = 100000;

class ManyElements : public testing::Test
{
protected:
    void fill(Group *group, int count = COUNT)
    {
        for (int i = 0; i < count; ++i) {
            auto *element = new ProbeRectangle;
            element->setSize({1, 1});
            element->setOrigin({static_cast<double>(i % 1000), static_cast<double>(i) / 1000.0});
            group->addChild(element);
        }
    }

    Support::TestTokens tokens;
    Figure figure{&tokens};
    Group *root = figure.getRoot();
};

TEST_F(ManyElements, areUpdatedDrawnFromAndHit)
{
    auto *group = new Group;
    root->addChild(group);
    fill(group, COUNT / 2);
    fill(root, COUNT / 2);

    EXPECT_TRUE(figure.update(StageIdentifier(1), false));
    EXPECT_FALSE(figure.update(StageIdentifier(1), false));
    EXPECT_TRUE(figure.update(StageIdentifier(1), true));
    EXPECT_NE(figure.getElementAt({10, 10}), nullptr);
    EXPECT_FALSE(figure.isTokenUsed("any"));
}

TEST_F(ManyElements, growInAGroupOfAFigure)
{
    auto *group = new Group;
    root->addChild(group);
    group->setSelected(true);
    fill(group);

    EXPECT_EQ(group->getChildEnd() - group->getChildBegin(), COUNT);
}

TEST_F(ManyElements, areInsertedEachBehindTheLast)
{
    Element *last = new ProbeRectangle;
    root->addChild(last);
    for (int i = 1; i < COUNT; ++i) {
        auto *next = new ProbeRectangle;
        root->addChild(next, last);
        last = next;
    }

    EXPECT_EQ(*(root->getChildEnd() - 1), last);
}

TEST_F(ManyElements, areSavedAndLoaded)
{
    fill(root);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    Figure read;

    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });

    EXPECT_EQ(std::distance(read.getElementBegin(), read.getElementEnd()), COUNT);
}

TEST_F(ManyElements, areLoadedWhoseNamesRunAhead)
{
    // As after the first third of the elements was deleted.
    fill(root, COUNT);
    int number = COUNT / 2;
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
        it->getScriptObject()->setName(QStringLiteral("rectangle_%1").arg(number++));
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    Figure read;

    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });

    EXPECT_EQ(read.getElementBegin()->getScriptObject()->getName(), "rectangle_50000");
}

TEST_F(ManyElements, areCopiedWithTheirConnectors)
{
    fill(root);
    Element *before = nullptr;
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        if (before)
            before->connect(*it, "next");
        before = *it;
    }

    Figure copy(figure);

    EXPECT_TRUE(copy.update(StageIdentifier(1), false));
    EXPECT_EQ(std::distance(copy.getElementBegin(), copy.getElementEnd()), COUNT);
}

TEST_F(ManyElements, areSelectedAndDeselected)
{
    fill(root);
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
        figure.selectElement(*it, true);
    EXPECT_EQ(figure.getSelectedElements().size(), static_cast<std::size_t>(COUNT));

    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
        figure.selectElement(*it, false);

    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST_F(ManyElements, ofAGroupAreHiddenAndCleared)
{
    auto *group = new Group;
    root->addChild(group);
    fill(group);
    for (auto it = group->getChildBegin(); it != group->getChildEnd(); ++it)
        (*it)->setSelected(true);

    figure.clearSelection();
    (*(group->getChildEnd() - 1))->setSelected(true);
    for (auto it = group->getChildBegin(); it != group->getChildEnd() - 1; ++it)
        (*it)->setVisible(false);

    EXPECT_EQ(figure.getSelectedElements(), (std::vector<Element *>{group}));
}

TEST_F(ManyElements, shareOneConnectorTarget)
{
    auto *hub = new ProbeRectangle;
    root->addChild(hub);
    fill(root);
    for (auto it = root->getChildBegin() + 1; it != root->getChildEnd(); ++it)
        (*it)->connect(hub, "");

    EXPECT_TRUE(figure.update(StageIdentifier(1), false));
}

TEST_F(ManyElements, leaveTheirSharedTargetOneByOne)
{
    fill(root);
    auto *hub = new ProbeRectangle;
    root->addChild(hub);
    for (auto it = root->getChildBegin(); it != root->getChildEnd() - 1; ++it)
        (*it)->connect(hub, "");

    for (auto it = root->getChildEnd() - 1; it != root->getChildBegin(); --it)
        (*(it - 1))->disconnect(hub, "");

    EXPECT_EQ(hub->getConnectorBegin(), hub->getConnectorEnd());
}

TEST_F(ManyElements, areRemovedOneByOne)
{
    fill(root);
    while (root->getChildBegin() != root->getChildEnd()) {
        Element *last = *(root->getChildEnd() - 1);
        root->removeChild(last);
        delete last;
    }

    EXPECT_EQ(root->getMasterElement(), nullptr);
}

TEST_F(ManyElements, leaveNoEmptyGroups)
{
    for (int i = 0; i < COUNT; ++i)
        root->addChild(new Group);

    EXPECT_TRUE(figure.removeEmptyGroups());

    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
}

} // namespace
} // namespace Zem::Fig2
