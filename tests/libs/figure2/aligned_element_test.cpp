#include "crafted_element.h"
#include "probe_elements.h"

#include <ElementForms.h>
#include <RecordingPainter.h>

#include <ZemParse.h>

namespace Zem::Fig2 {
namespace {

using Support::text;
using Support::thrownText;

constexpr double RIGHT_ANGLE = 1.5707963267948966;

/// A box of 10 x 10 about 0,0 without border.
void prepare(ProbeContent &element, BaVec2d<double> const &innerSize, double angle = 0.0)
{
    element.setSize({10, 10});
    element.setAngle(angle);
    element.innerSize = innerSize;
}

BaVec2d<double> handleOf(ProbeContent const &element)
{
    BaVec2d<double> position;
    element.hasHandle(&position);
    return position;
}

TEST(AlignedElementDefaults, areTheRequiredOnes)
{
    ProbeContent const element;

    EXPECT_TRUE(element.getAutoScale());
    EXPECT_EQ(element.getScaling(), 1.0);
    EXPECT_EQ(element.getAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(element.getAlignmentY(), ALIGN_CENTER);
    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(0, 0));
    EXPECT_EQ(handleOf(element), BaVec2d<double>(0, 0));
}

TEST(AlignedElementSetters, storeAndClearValid)
{
    ProbeContent element;
    auto const clearsValid = [&element](auto const &set) {
        element.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(element.isValid());
        set();
        EXPECT_FALSE(element.isValid());
    };

    clearsValid([&] { element.setAutoScale(false); });
    clearsValid([&] { element.setScaling(2.5); });
    clearsValid([&] { element.setAlignmentX(ALIGN_END); });
    clearsValid([&] { element.setAlignmentY(ALIGN_BEGIN); });
    clearsValid([&] { element.setInnerOrigin({3, 4}); });

    EXPECT_FALSE(element.getAutoScale());
    EXPECT_EQ(element.getScaling(), 2.5);
    EXPECT_EQ(element.getAlignmentX(), ALIGN_END);
    EXPECT_EQ(element.getAlignmentY(), ALIGN_BEGIN);
    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(3, 4));
}

TEST(AlignedElementHandle, isThereForAContentThatDoesNotFit)
{
    ProbeContent element;
    BaVec2d<double> position;

    prepare(element, {11, 5});
    EXPECT_TRUE(element.hasHandle(&position));
    prepare(element, {5, 11});
    EXPECT_TRUE(element.hasHandle(&position));
    prepare(element, {10, 10});
    EXPECT_FALSE(element.hasHandle(&position));
}

TEST(AlignedElementHandle, comparesWholeNumbers)
{
    ProbeContent element;
    BaVec2d<double> position;

    prepare(element, {10.9, 10.9});
    EXPECT_FALSE(element.hasHandle(&position));
    element.setSize({10.9, 10.9});
    element.innerSize = {11.0, 5};
    EXPECT_TRUE(element.hasHandle(&position));
}

TEST(AlignedElementHandle, liesAtTheTurnedOrigin)
{
    ProbeContent element;
    prepare(element, {100, 100}, RIGHT_ANGLE);
    element.setOrigin({50, 60});
    element.handleMove({-5, 7}); // 5,-7 turned is -7,-5: nothing, since both are below 0
    EXPECT_EQ(text(handleOf(element)), "50,60");

    element.handleMove({5, -7}); // -5,7 turned is 7,5: the offset -7,-5 lies at -5,7 on the page
    EXPECT_EQ(text(handleOf(element)), "45,67");
}

TEST(AlignedElementHandle, movesTheContentAgainstTheDrag)
{
    ProbeContent element;
    prepare(element, {100, 80});
    element.setOrigin({50, 50});
    element.update(StageIdentifier(1), nullptr, nullptr);

    element.handleDragStart();
    element.handleMove({-5, -7});
    element.handleDragEnd();

    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(5, 7));
    EXPECT_EQ(handleOf(element), BaVec2d<double>(45, 43));
    EXPECT_FALSE(element.isValid());
}

TEST(AlignedElementHandle, stopsAtTheEndsOfTheContent)
{
    ProbeContent element;
    prepare(element, {100, 80});

    element.handleMove({-200, -60});
    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(90, 60));
    element.handleMove({0, -60});
    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(90, 70));
    element.handleMove({10, 200});
    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(80, 0));
}

TEST(AlignedElementHandle, turnsTheMoveByAPositiveAngle)
{
    ProbeContent element;
    prepare(element, {100, 80}, RIGHT_ANGLE);

    element.handleMove({-5, -7}); // 5,7 turned is 7,-5, cut to 7,0

    EXPECT_EQ(text(element.getInnerOrigin()), "7,0");
}

TEST(AlignedElementHandle, doesNotTurnTheMoveByANegativeAngle)
{
    ProbeContent element;
    prepare(element, {100, 80}, -0.3);

    element.handleMove({-5, -7});

    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(5, 7));
}

TEST(AlignedElementHandle, leavesAContentThatFitsAtTheBeginning)
{
    ProbeContent element;
    prepare(element, {5, 5});

    element.handleMove({-1, 1});

    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(0, 0));
}

TEST(AlignedElementHandle, bringsAContentThatFitsBackToTheBeginning)
{
    ProbeContent element;
    prepare(element, {5, 5});
    element.setInnerOrigin({3, 4});

    element.handleMove({-1, 1});

    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(0, 0));
    EXPECT_EQ(handleOf(element), BaVec2d<double>(3, 4));
    EXPECT_FALSE(element.isValid());
}

TEST(AlignedElementHandle, doesNothingAtTheEndsOfADrag)
{
    ProbeContent element;
    prepare(element, {5, 5});
    element.update(StageIdentifier(1), nullptr, nullptr);

    element.handleDragStart();
    element.handleDragEnd();

    EXPECT_TRUE(element.isValid());
}

TEST(AlignedElementContent, isSeenAsFarAsTheDrawingAreaReaches)
{
    ProbeContent element;
    prepare(element, {});
    element.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color())); // leaves 8 x 8 from -4,-4

    EXPECT_EQ(element.computeInnerDrawingSize({4, 20}), BaVec2d<double>(4, 8));
    EXPECT_EQ(element.computeInnerDrawingSize({20, 4}), BaVec2d<double>(8, 4));
}

TEST(AlignedElementContent, isAlignedInTheDrawingArea)
{
    ProbeContent element;
    prepare(element, {});
    element.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color()));
    struct Row
    {
        Alignment_t alignment;
        double place;
    };
    for (Row const &row : {Row{ALIGN_BEGIN, -4}, Row{ALIGN_CENTER, -2}, Row{ALIGN_END, 0}}) {
        element.setAlignmentX(row.alignment);
        element.setAlignmentY(ALIGN_BEGIN);
        EXPECT_EQ(element.computeInnerDrawingOrigin({4, 20}), BaVec2d<double>(row.place, -4));
        element.setAlignmentX(ALIGN_BEGIN);
        element.setAlignmentY(row.alignment);
        EXPECT_EQ(element.computeInnerDrawingOrigin({20, 4}), BaVec2d<double>(-4, row.place));
    }
}

TEST(AlignedElementBlock, isBehindThoseOfTheElement)
{
    // 1 + 8 + 4 + 4 + 16
    EXPECT_EQ(Support::blocksOf(Support::blockForm(ProbeContent())), "10:89 2:20 1:5 1:31 1:33 ");
}

std::string craftedBlocks(unsigned int elementVersion, unsigned int version, unsigned int alignment = 2)
{
    return CraftedElement()
        .blocks(elementVersion)
        .block(version, Support::Payload().b(false).d(2.5).u(alignment).u(0).v(3, 4))
        .bytes();
}

TEST(AlignedElementBlock, isReadFromElementVersion8On)
{
    for (unsigned int version : {8U, 10U}) {
        ProbeContent element;
        Support::loadBlocks(element, craftedBlocks(version, 1));
        EXPECT_FALSE(element.getAutoScale());
        EXPECT_EQ(element.getScaling(), 2.5);
        EXPECT_EQ(element.getAlignmentX(), ALIGN_END);
        EXPECT_EQ(element.getAlignmentY(), ALIGN_BEGIN);
        EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(3, 4));
    }
}

TEST(AlignedElementBlock, isNotInOlderFiles)
{
    ProbeContent element;

    Support::loadBlocks(element, CraftedElement().blocks(7).bytes());

    EXPECT_TRUE(element.getAutoScale());
    EXPECT_EQ(element.getScaling(), 1.0);
}

TEST(AlignedElementBlock, ofAnotherVersionIsRefused)
{
    for (unsigned int version : {0U, 2U}) {
        ProbeContent element;
        EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadBlocks(element, craftedBlocks(10, version)); }),
                  "wrong block version");
    }
}

TEST(AlignedElementBlock, refusesAnAlignmentOutsideItsRange)
{
    ProbeContent element;

    EXPECT_THROW(Support::loadBlocks(element, craftedBlocks(10, 1, 3)), IO::StreamException);
}

TEST(AlignedElementText, standsInFrontOfTheArea)
{
    ProbeContent element;
    element.setAutoScale(false);
    element.setScaling(2.5);
    element.setAlignmentX(ALIGN_END);
    element.setInnerOrigin({3, 4});
    std::string const form = Support::textForm(element);

    EXPECT_EQ(form.substr(0, form.find(" 5 ")), "1 0 2.5 2 1 3 4 1");
    ProbeContent read;
    EXPECT_TRUE(Support::loadText(read, form));
    EXPECT_EQ(Support::textForm(read), form);
}

TEST(AlignedElementText, ofANewerVersionIsRefused)
{
    ProbeContent element;

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadText(element, "2 0 "); }), "wrong block version");
}

TEST(AlignedElementParameters, standBehindThoseOfTheElement)
{
    ProbeContent element;
    element.setInnerOrigin({3, 4});
    std::string const form = Support::parameterForm(element);

    EXPECT_EQ(form.substr(form.find("spacing")), "spacing = 1\n"
                                                 "auto_scale = true\n"
                                                 "scaling = 1\n"
                                                 "align_x = \"center\"\n"
                                                 "align_y = \"center\"\n"
                                                 "image_origin = (3, 4)\n");
}

TEST(AlignedElementParameters, areReadWhereTheyExist)
{
    ProbeContent element;

    EXPECT_EQ(Support::loadParameters(element, "scaling = -2.5\nalign_x = \"begin\"\n"), "");
    EXPECT_EQ(element.getScaling(), -2.5);
    EXPECT_EQ(element.getAlignmentX(), ALIGN_BEGIN);
    EXPECT_EQ(element.getAlignmentY(), ALIGN_CENTER);
    EXPECT_EQ(Support::loadParameters(element, "auto_scale = false\nalign_y = \"end\"\nimage_origin = (1, 2)\n"), "");
    EXPECT_FALSE(element.getAutoScale());
    EXPECT_EQ(element.getAlignmentY(), ALIGN_END);
    EXPECT_EQ(element.getInnerOrigin(), BaVec2d<double>(1, 2));
}

TEST(AlignedElementParameters, readTheScalingLast)
{
    ProbeContent element;

    EXPECT_THROW(Support::loadParameters(element, "scaling = \"x\"\nauto_scale = false\nalign_y = \"end\"\n"),
                 ParamError);

    EXPECT_FALSE(element.getAutoScale());
    EXPECT_EQ(element.getAlignmentY(), ALIGN_END);
    EXPECT_EQ(element.getScaling(), 1.0);
}

} // namespace
} // namespace Zem::Fig2
