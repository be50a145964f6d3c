// The blocks of Element, mostly seen through a Rectangle.
#include "crafted_element.h"
#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Label.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::thrownText;

constexpr double RIGHT_ANGLE = 1.5707963267948966;

class ElementBlock : public testing::TestWithParam<unsigned int>
{
};

TEST_P(ElementBlock, ofEachVersionGivesWhatItHolds)
{
    unsigned int const version = GetParam();
    Label label;
    label.getScriptObject()->setName("before");
    label.setMaximize(true);
    label.setVisible(false);
    label.setLinkTo3D(true);
    CraftedElement crafted;
    crafted.pivotX = 1;
    crafted.pivotY = 2;
    std::string const bytes = crafted.blocks(version).bytes();

    Support::readFrom(bytes, [&](IO::InStream &stream) { label.Element::load(&stream, -1, -1); });

    EXPECT_EQ(label.getBlockVersion(), static_cast<int>(version));
    EXPECT_EQ(label.getId(), 77);
    EXPECT_EQ(label.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(label.getSize(), BaVec2d<double>(30, 40));
    EXPECT_EQ(label.getVisible(), version < 5);
    EXPECT_EQ(label.getLinkTo3D(), version >= 4);
    EXPECT_TRUE(label.getAutoSize());
    EXPECT_EQ(label.getMaximize(), version >= 7);
    EXPECT_EQ(label.getAngle(), 0.0);
    EXPECT_EQ(label.getFontColor(), Color(1, 2, 3, 4));
    EXPECT_EQ(label.getHighlightColor(), Color(5, 6, 7, 8));
    EXPECT_EQ(label.getPivotAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(label.getPivotAlignmentY(), ALIGN_END);
    EXPECT_EQ(label.getMargin(), 3.5);
    EXPECT_EQ(label.getSpacing(), 4.5);
    EXPECT_EQ(label.getUseSystemFont(), version >= 10);
    EXPECT_EQ(label.getScriptObject()->getName(), version >= 9 ? "stored" : "before");
    EXPECT_EQ(label.getBorder(), LineStyle(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3)));
    EXPECT_EQ(label.getBackground(), FillStyle(Color(9, 8, 7)));
    EXPECT_EQ(label.getUserFont(), Font("Courier", 9.0, Font::BOLD));
}

INSTANTIATE_TEST_SUITE_P(Versions, ElementBlock, testing::Range(1U, 11U));

TEST(ElementBlock, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 11U}) {
        Rectangle rectangle;
        std::string const bytes = CraftedElement().blocks(version).bytes();
        EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadBlocks(rectangle, bytes); }),
                  "cannot load figure element: wrong block version");
    }
}

TEST(ElementBlock, withoutSystemFontKeepsTheOneThatWas)
{
    Label label;
    label.setUseSystemFont(true);
    std::string const bytes = CraftedElement().blocks(9).bytes();

    Support::readFrom(bytes, [&](IO::InStream &stream) { label.Element::load(&stream, -1, -1); });

    EXPECT_TRUE(label.getUseSystemFont());
}

TEST(ElementBlock, takesTheStoredIdAndLeavesTheCounterAlone)
{
    Rectangle rectangle;
    int const id = rectangle.getId();

    Support::loadBlocks(rectangle, CraftedElement().blocks(10).bytes());

    EXPECT_EQ(rectangle.getId(), 77);
    EXPECT_EQ(BareElement().getId(), id + 1);
}

TEST(ElementBlock, refusesAnAlignmentOutsideItsRange)
{
    CraftedElement wrongX;
    wrongX.pivotX = 3;
    CraftedElement wrongY;
    wrongY.pivotY = 4000000000U;
    for (CraftedElement const &crafted : {wrongX, wrongY}) {
        Rectangle rectangle;
        EXPECT_THROW(Support::loadBlocks(rectangle, crafted.blocks(10).bytes()), IO::StreamException);
    }
}

TEST(ElementBlock, refusesConnectorsThatAreNotThere)
{
    CraftedElement crafted;
    crafted.connectors = 4000000000U;
    Rectangle rectangle;

    EXPECT_THROW(Support::loadBlocks(rectangle, crafted.blocks(10).bytes()), IO::StreamException);
}

TEST(ElementBlock, hasTheDeclaredSizes)
{
    Rectangle rectangle;
    // 85 + 4 of the empty name; 20 of a border; 5 of a background; 4 + 15 + 8 + 4 of the font.
    EXPECT_EQ(Support::blocksOf(Support::blockForm(rectangle)), "10:89 2:20 1:5 1:31 ");

    rectangle.getScriptObject()->setName(QString::fromUtf8("Rähmchen"));

    // Nine bytes in UTF-8.
    EXPECT_EQ(Support::blocksOf(Support::blockForm(rectangle)), "10:98 2:20 1:5 1:31 ");
}

TEST(ElementBlock, isWrittenInItsOrderOfFields)
{
    CraftedElement crafted;
    std::string const bytes = crafted.blocks(10).bytes();
    BareElement element;
    Support::loadBlocks(element, bytes);

    EXPECT_EQ(Support::blockForm(element), bytes);
}

TEST(ElementBlock, isFollowedByTheConnectorsThatBeginHere)
{
    ProbeRectangle first;
    ProbeRectangle second;
    first.connect(&second, "ab");
    second.connect(&first, "c");

    // One connector: 8, an empty name and one of two characters.
    EXPECT_EQ(Support::blocksOf(Support::blockForm(first)), "10:89 2:20 1:5 1:31 1:18 ");
    EXPECT_EQ(Support::blocksOf(Support::blockForm(second)), "10:89 2:20 1:5 1:31 1:17 ");
}

TEST(ElementBlock, givesConnectorsWithoutTarget)
{
    ProbeRectangle first;
    ProbeRectangle second;
    first.connect(&second, "ab");
    Rectangle read;

    Support::loadBlocks(read, Support::blockForm(first));

    ASSERT_EQ(read.getConnectorEnd() - read.getConnectorBegin(), 1);
    Connector const *connector = *read.getConnectorBegin();
    EXPECT_EQ(connector->getSource(), &read);
    EXPECT_EQ(connector->getTarget(), nullptr);
    EXPECT_EQ(connector->getTargetId(), second.getId());
    EXPECT_EQ(connector->getTargetName(), "ab");
}

TEST(ElementBlock, clearsValid)
{
    Rectangle rectangle;
    rectangle.update(StageIdentifier(1), nullptr, nullptr);

    Support::loadBlocks(rectangle, CraftedElement().blocks(10).bytes());

    EXPECT_FALSE(rectangle.isValid());
}

TEST(ElementBlockBeforeVersion6, turnsAnAreaAboutItsAlignmentPoint)
{
    CraftedElement crafted; // 30 x 40 about 10,20: the pivot, top left, is -5,0
    crafted.angle = RIGHT_ANGLE;
    Rectangle rectangle;

    Support::loadBlocks(rectangle, crafted.blocks(5).bytes());

    // The centre lies 15,20 from the pivot; turned by a right angle that is 20,-15.
    EXPECT_NEAR(rectangle.getOrigin().x, 15, 1e-12);
    EXPECT_NEAR(rectangle.getOrigin().y, -15, 1e-12);
    EXPECT_EQ(rectangle.getAngle(), RIGHT_ANGLE);
}

TEST(ElementBlockBeforeVersion6, isSavedAsVersion10WithTheNewOrigin)
{
    CraftedElement crafted;
    crafted.angle = 0.5;
    Rectangle rectangle;
    Support::loadBlocks(rectangle, crafted.blocks(5).bytes());
    Rectangle again;

    Support::loadBlocks(again, Support::blockForm(rectangle));

    EXPECT_EQ(again.getBlockVersion(), 10);
    EXPECT_EQ(again.getOrigin(), rectangle.getOrigin());
    EXPECT_NE(again.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(again.getAngle(), 0.5);
}

TEST(ElementBlockBeforeVersion6, leavesWhatIsNotTurnedOrNoArea)
{
    Rectangle straight;
    Support::loadBlocks(straight, CraftedElement().blocks(5).bytes());
    CraftedElement turned;
    turned.angle = 0.5;
    BareElement noArea;
    Support::loadBlocks(noArea, turned.blocks(5).bytes());
    Rectangle newer;
    Support::loadBlocks(newer, turned.blocks(6).bytes());

    EXPECT_EQ(straight.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(noArea.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(newer.getOrigin(), BaVec2d<double>(10, 20));
}

} // namespace
} // namespace Zem::Fig2
