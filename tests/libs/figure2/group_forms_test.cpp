#include "crafted_element.h"
#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Group.h>
#include <ZemFig2Line.h>

#include <ZemParse.h>
#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

constexpr char ELEMENT[] = "10:89 2:20 1:5 1:31 ";

std::vector<Element *> childrenOf(Group &group)
{
    return {group.getChildBegin(), group.getChildEnd()};
}

/// The blocks of a rectangle with this id.
BlockCrafter withRectangle(BlockCrafter crafter, int id)
{
    CraftedElement element;
    element.id = id;
    return element.addTo(std::move(crafter), 10);
}

BlockCrafter groupBlocks(unsigned int version, Payload const &table)
{
    return CraftedElement().blocks(10).block(version, table);
}

TEST(GroupBlock, holdsTypesAndMaster)
{
    Group group;
    EXPECT_EQ(Support::blocksOf(Support::blockForm(group)), std::string(ELEMENT) + "2:9 ");

    group.addChild(new Rectangle);
    group.addChild(new Group);

    EXPECT_EQ(Support::blocksOf(Support::blockForm(group)),
              std::string(ELEMENT) + "2:17 " + ELEMENT + ELEMENT + "2:9 ");
}

TEST(GroupBlock, ofVersion2NamesTheMaster)
{
    Group group;
    BlockCrafter crafter = groupBlocks(2, Payload().u(2).u(1).u(1).b(true).i(6));

    Support::loadBlocks(group, withRectangle(withRectangle(crafter, 5), 6).bytes());

    ASSERT_EQ(childrenOf(group).size(), 2U);
    EXPECT_EQ(group.getMasterElement(), childrenOf(group)[1]);
    EXPECT_EQ(childrenOf(group)[0]->getParent(), &group);
    EXPECT_EQ(childrenOf(group)[0]->getType(), Element::RECTANGLE);
}

TEST(GroupBlock, ofVersion2WithoutMasterTakesTheFirstChild)
{
    Group group;
    BlockCrafter crafter = groupBlocks(2, Payload().u(2).u(1).u(1).b(false).i(6));

    Support::loadBlocks(group, withRectangle(withRectangle(crafter, 5), 6).bytes());

    EXPECT_EQ(group.getMasterElement(), childrenOf(group)[0]);
}

TEST(GroupBlock, withAMasterThatIsNotThereTakesTheFirstChild)
{
    Group group;
    BlockCrafter crafter = groupBlocks(2, Payload().u(2).u(1).u(1).b(true).i(99));

    Support::loadBlocks(group, withRectangle(withRectangle(crafter, 5), 6).bytes());

    EXPECT_EQ(group.getMasterElement(), childrenOf(group)[0]);
}

TEST(GroupBlock, withTheIdOfTheMasterTwiceTakesTheLast)
{
    Group group;
    BlockCrafter crafter = groupBlocks(2, Payload().u(3).u(1).u(1).u(1).b(true).i(6));

    Support::loadBlocks(group, withRectangle(withRectangle(withRectangle(crafter, 6), 6), 5).bytes());

    EXPECT_EQ(group.getMasterElement(), childrenOf(group)[1]);
}

TEST(GroupBlock, ofVersion1TakesTheFirstChildAsMaster)
{
    Group group;
    BlockCrafter crafter = groupBlocks(1, Payload().u(2).u(1).u(1));

    Support::loadBlocks(group, withRectangle(withRectangle(crafter, 5), 6).bytes());

    ASSERT_EQ(childrenOf(group).size(), 2U);
    EXPECT_EQ(group.getMasterElement(), childrenOf(group)[0]);
}

TEST(GroupBlock, ofAnotherVersionIsRefused)
{
    for (unsigned int version : {0U, 3U}) {
        Group group;
        std::string const bytes = groupBlocks(version, Payload().u(0).b(false).i(0)).bytes();
        EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadBlocks(group, bytes); }),
                  "cannot load figure group: wrong block version");
    }
}

TEST(GroupBlock, skipsUnknownTypes)
{
    Group group;
    BlockCrafter crafter = groupBlocks(2, Payload().u(4).u(15).u(1).u(4000000000U).u(1).b(false).i(0));

    Support::loadBlocks(group, withRectangle(withRectangle(crafter, 5), 6).bytes());

    ASSERT_EQ(childrenOf(group).size(), 2U);
    EXPECT_EQ(childrenOf(group)[1]->getId(), 6);
}

TEST(GroupBlock, ofAChildOfAnUnknownTypeIsNotWritten)
{
    Group group;
    auto *strange = new Rectangle;
    strange->setType(static_cast<Element::Type_t>(99));
    group.addChild(strange);
    group.addChild(new Rectangle);

    EXPECT_EQ(Support::blocksOf(Support::blockForm(group)), std::string(ELEMENT) + "2:17 " + ELEMENT);
    Group read;
    Support::loadBlocks(read, Support::blockForm(group));
    EXPECT_EQ(childrenOf(read).size(), 1U);
}

TEST(GroupBlock, withMoreChildrenThanItHoldsIsRefused)
{
    Group group;

    EXPECT_THROW(Support::loadBlocks(group, groupBlocks(2, Payload().u(4000000000U).u(1).b(false).i(0)).bytes()),
                 IO::StreamException);
}

TEST(GroupBlock, replacesTheChildrenThatWere)
{
    Group group;
    group.addChild(new Line);
    group.addChild(new Line);

    Support::loadBlocks(group, groupBlocks(2, Payload().u(0).b(false).i(0)).bytes());

    EXPECT_TRUE(childrenOf(group).empty());
    EXPECT_EQ(group.getMasterElement(), nullptr);
}

std::string nested(unsigned int depth)
{
    BlockCrafter crafter;
    for (unsigned int i = 0; i <= depth; ++i) {
        crafter = CraftedElement().addTo(std::move(crafter), 10);
        Payload table;
        table.u(i < depth ? 1 : 0);
        if (i < depth)
            table.u(Element::GROUP);
        crafter.block(2, table.b(false).i(0));
    }
    return crafter.bytes();
}

TEST(GroupDepth, reaches256LevelsBelowTheRoot)
{
    Group root;

    Support::loadBlocks(root, nested(256));

    EXPECT_EQ(std::distance(root.getElementBegin(), root.getElementEnd()), 256);
}

TEST(GroupDepth, beyond256LevelsIsRefused)
{
    Group root;

    EXPECT_NE(thrownText<IO::StreamException>([&] {
                  Support::loadBlocks(root, nested(257));
              }).find("groups nested too deeply"),
              std::string::npos);
}

TEST(GroupDepth, thatCouldNotBeReadBackIsNotWritten)
{
    Group root;
    Group *deepest = &root;
    for (int i = 0; i < 257; ++i) {
        auto *group = new Group;
        deepest->addChild(group);
        deepest = group;
    }

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::blockForm(root); }), "groups nested too deeply");
}

constexpr unsigned int UNKNOWN_TYPE = 99; ///< of its elements the table of the children is all there is

/// A group with a group behind elements of an unknown type, and in that one more such elements.
std::string crowded(unsigned int above, unsigned int below)
{
    BlockCrafter crafter = CraftedElement().addTo(BlockCrafter(), 10);
    Payload table;
    table.u(above + 1);
    for (unsigned int i = 0; i < above; ++i)
        table.u(UNKNOWN_TYPE);
    crafter.block(2, table.u(Element::GROUP).b(false).i(0));
    crafter = CraftedElement().addTo(std::move(crafter), 10);
    Payload inner;
    inner.u(below);
    for (unsigned int i = 0; i < below; ++i)
        inner.u(UNKNOWN_TYPE);
    return crafter.block(2, inner.b(false).i(0)).bytes();
}

TEST(GroupSize, isReadUpToAMillionElementsInAll)
{
    Group root;

    Support::loadBlocks(root, crowded(400000, 599999));
    // Each file is counted from the beginning.
    Support::loadBlocks(root, crowded(400000, 599999));

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadBlocks(root, crowded(400000, 600000)); }),
              "cannot load figure group: cannot load figure group: more than 1000000 elements");
    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadBlocks(root, crowded(1000000, 0)); }),
              "cannot load figure group: more than 1000000 elements");
}

TEST(GroupSize, isWrittenUpToAMillionElementsInAll)
{
    Group root;
    auto *inner = new Group;
    root.addChild(inner);
    auto const add = [](Group *group, unsigned int count) {
        for (unsigned int i = 0; i < count; ++i) {
            auto *element = new ProbeRectangle;
            element->setType(static_cast<Element::Type_t>(UNKNOWN_TYPE));
            group->addChild(element);
        }
    };
    add(&root, 400000);
    add(inner, 599999);
    EXPECT_NO_THROW(Support::blockForm(root));

    add(inner, 1);

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::blockForm(root); }), "more than 1000000 elements");
}

TEST(GroupText, doesNotExist)
{
    Group group;
    std::stringstream stream;

    EXPECT_EQ(thrownText<ProgError>([&] { group.saveToStream(stream); }), "not implemented");
    EXPECT_EQ(thrownText<ProgError>([&] { group.loadFromStream(stream); }), "not implemented");
    EXPECT_EQ(stream.str(), "");
}

TEST(GroupParameters, holdNoChildren)
{
    Group group;
    group.addChild(new Rectangle);

    EXPECT_EQ(Support::parameterForm(group), "type = \"group\"\n"
                                             "origin = (0, 0)\n"
                                             "visible = true\n"
                                             "highlight_color = #080884ff\n"
                                             "pivot_align_x = \"begin\"\n"
                                             "pivot_align_y = \"begin\"\n"
                                             "margin = 1\n"
                                             "spacing = 1\n");
}

TEST(GroupParameters, moveTheGroupByItsOrigin)
{
    Group group;
    auto *first = new Rectangle;
    auto *second = new Rectangle;
    group.addChild(first);
    group.addChild(second);
    second->setOrigin({5, 5});

    EXPECT_EQ(Support::loadParameters(group, "origin = (1, 2)\n"), "");

    EXPECT_EQ(first->getOrigin(), BaVec2d<double>(1, 2));
    EXPECT_EQ(second->getOrigin(), BaVec2d<double>(6, 7));
}

TEST(GroupParameters, goToEveryChild)
{
    Group group;
    auto *first = new Rectangle;
    auto *inner = new Group;
    auto *second = new Rectangle;
    group.addChild(first);
    group.addChild(inner);
    inner->addChild(second);

    std::string const rest = Support::loadParameters(group, "border_width = 3\nangle = 0.5\n");

    EXPECT_EQ(rest, "border_width = 3\nangle = 0.5\n");
    for (Element const *element : {first, second}) {
        EXPECT_EQ(element->getBorder().getWidth(), 3.0);
        EXPECT_EQ(element->getAngle(), 0.5);
    }
}

TEST(GroupParameters, ofAGroupMakeNoGroupsOfTheChildren)
{
    Group group;
    auto *child = new Rectangle;
    group.addChild(child);

    Support::loadParameters(group, Support::parameterForm(group));

    EXPECT_EQ(child->getType(), Element::RECTANGLE);
}

TEST(GroupParameters, withAnOriginNeedAChild)
{
    Group group;

    EXPECT_EQ(Support::progError([&] { Support::loadParameters(group, "origin = (1, 2)\n"); }),
              "fig_group: Empty group");
    Support::loadParameters(group, "angle = 1\n");
}

} // namespace
} // namespace Zem::Fig2
