// How the marks on a picture look: defaults, names, equality.
#include "image_fixture.h"

#include <ElementForms.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Look = ImageDataVisualisation;

TEST(ImageDataVisualisation, showsAllComponentsInARedLineAtFirst)
{
    Look const look(false);

    EXPECT_FALSE(look.isNull());
    EXPECT_EQ(look.getMode(), Look::MODE_XYZ);
    EXPECT_EQ(look.getLineStyle(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(180, 56, 56)));
    EXPECT_EQ(look.getPointMarkerSize(), 20.0);
    EXPECT_EQ(look.getVectorScaling(), 1.0);
    EXPECT_EQ(look.getVectorLineWidth(), 1.0);
    EXPECT_EQ(look.getDrawArrows(), Look::ARROW_BOTH);
    EXPECT_TRUE(look.getDrawCombinedVectors());
    EXPECT_TRUE(look.getDrawHiddenPoints());
    EXPECT_FALSE(look.getDrawPointIds());
    EXPECT_FALSE(look.getUseFixedPointIdColor());
    EXPECT_EQ(look.getPointIdFont(), Font("Liberation Sans", 12.0, 0));
    EXPECT_EQ(look.getPointIdColor(), Color(56, 180, 56));
    EXPECT_EQ(look.getPointMask(), -1);
}

TEST(ImageDataVisualisation, isNullAsToldAndNoneIsNull)
{
    EXPECT_TRUE(Look(true).isNull());
    EXPECT_TRUE(Look::NONE.isNull());
    EXPECT_EQ(Look::NONE.getMode(), Look::MODE_XYZ);
    Look look(true);
    look.setNull(false);
    EXPECT_EQ(contentOf(look), contentOf(Look(false)));
}

TEST(ImageDataVisualisation, keepsWhatItIsGiven)
{
    Look const look = unusualLook();

    EXPECT_EQ(look.getMode(), Look::MODE_YZ);
    EXPECT_EQ(look.getLineStyle().getWidth(), 0.25);
    EXPECT_EQ(look.getPointMarkerSize(), 7.5);
    EXPECT_EQ(look.getVectorScaling(), 2.5);
    EXPECT_EQ(look.getVectorLineWidth(), 0.5);
    EXPECT_EQ(look.getDrawArrows(), Look::ARROW_SECOND);
    EXPECT_FALSE(look.getDrawCombinedVectors());
    EXPECT_FALSE(look.getDrawHiddenPoints());
    EXPECT_TRUE(look.getDrawPointIds());
    EXPECT_TRUE(look.getUseFixedPointIdColor());
    EXPECT_EQ(look.getPointIdFont(), Font("Serif", 9.5, 3));
    EXPECT_EQ(look.getPointIdColor(), Color(4, 5, 6));
    EXPECT_EQ(look.getPointMask(), 6);
}

TEST(ImageDataVisualisation, takesItsMaskUnderTwoNames)
{
    Look look(false);
    look.setMask(9);
    EXPECT_EQ(look.getPointMask(), 9);
}

TEST(ImageDataVisualisation, isCopiedWhole)
{
    Look const copy(unusualLook());
    Look assigned(true);
    assigned = copy;

    EXPECT_EQ(contentOf(copy), contentOf(unusualLook()));
    EXPECT_EQ(contentOf(assigned), contentOf(unusualLook()));
}

TEST(ImageDataVisualisation, refusesANegativeVectorScalingAndKeepsTheOldOne)
{
    Look look = unusualLook();
    EXPECT_EQ(Support::thrownText<ProgError>([&] { look.setVectorScaling(-1e-9); }), "Invalid scaling value (<0)");
    EXPECT_EQ(look.getVectorScaling(), 2.5);
    look.setVectorScaling(0.0);
    EXPECT_EQ(look.getVectorScaling(), 0.0);
}

TEST(ImageDataVisualisation, refusesANegativeVectorLineWidthAndKeepsTheOldOne)
{
    Look look = unusualLook();
    EXPECT_EQ(Support::thrownText<ProgError>([&] { look.setVectorLineWidth(-1e-9); }), "Invalid line width value (<0)");
    EXPECT_EQ(look.getVectorLineWidth(), 0.5);
    look.setVectorLineWidth(0.0);
    EXPECT_EQ(look.getVectorLineWidth(), 0.0);
}

TEST(ImageDataVisualisation, callsARefusalFatal)
{
    auto const isFatal = [](auto const &refused) {
        try {
            refused();
        } catch (ProgError const &error) {
            return error.isFatal();
        }
        return false;
    };

    EXPECT_TRUE(isFatal([] { Look(false).setVectorScaling(-1.0); }));
    EXPECT_TRUE(isFatal([] { Look(false).setVectorLineWidth(-1.0); }));
}

TEST(ImageDataVisualisation, takesAnyMarkerSize)
{
    Look look(false);
    look.setPointMarkerSize(-3.0);
    EXPECT_EQ(look.getPointMarkerSize(), -3.0);
}

TEST(ImageDataVisualisationModes, haveAWordAndANameInTheOrderOfTheirNumbers)
{
    char const *const words[] = {"x", "y", "z", "xy", "yz", "xz", "xyz"};
    char const *const names[] = {"x", "y", "z", "x and y", "y and z", "x and z", "x, y and z"};
    std::vector<Look::Mode_t> const modes = Look::getAllModes();
    ASSERT_EQ(modes.size(), 7U);
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(static_cast<unsigned int>(modes[i]), i);
        EXPECT_EQ(Look::getParameterModeName(modes[i]), words[i]);
        EXPECT_EQ(Look::getModeName(modes[i]), names[i]);
    }
}

TEST(ImageDataVisualisationModes, outsideTheEnumerationHaveNoName)
{
    EXPECT_EQ(Look::getParameterModeName(Look::Mode_t(7)), "");
    EXPECT_EQ(Look::getModeName(Look::Mode_t(7)), "");
}

TEST(ImageDataVisualisationArrows, areFoundByTheirNames)
{
    char const *const names[] = {"none", "first", "second", "both"};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(Look::getArrowModeName(Look::ArrowMode_t(i)), names[i]);
        EXPECT_EQ(Look::getArrowModeByName(names[i]), Look::ArrowMode_t(i));
    }
}

TEST(ImageDataVisualisationArrows, ofAnUnknownNameAreRefused)
{
    for (char const *name : {"", "third", "Both", "0"}) {
        try {
            Look::getArrowModeByName(name);
            FAIL() << name;
        } catch (ParamError const &error) {
            EXPECT_EQ(error.getText(), "unknown arrow mode");
            EXPECT_EQ(error.getPosition(), -1);
        }
    }
}

TEST(ImageDataVisualisationEquality, holdsBetweenAllNullRecords)
{
    Look look = unusualLook();
    look.setNull(true);
    EXPECT_EQ(look, Look::NONE);
    EXPECT_NE(unusualLook(), Look::NONE);
    EXPECT_NE(Look(false), Look::NONE);
}

TEST(ImageDataVisualisationEquality, isLostWithEachMemberThatIsCompared)
{
    void (*const changes[])(Look &) = {[](Look &look) { look.setNull(true); },
                                       [](Look &look) { look.setMode(Look::MODE_XZ); },
                                       [](Look &look) { look.setLineStyle(LineStyle()); },
                                       [](Look &look) { look.setPointMarkerSize(7.25); },
                                       [](Look &look) { look.setVectorScaling(2.25); },
                                       [](Look &look) { look.setDrawArrows(Look::ARROW_FIRST); },
                                       [](Look &look) { look.setDrawCombinedVectors(true); },
                                       [](Look &look) { look.setDrawPointIds(false); },
                                       [](Look &look) { look.setUseFixedPointIdColor(false); },
                                       [](Look &look) { look.setPointIdFont(Font()); },
                                       [](Look &look) { look.setPointIdColor(Color(4, 5, 6, 7)); },
                                       [](Look &look) { look.setPointMask(7); }};
    for (auto const &change : changes) {
        Look look = unusualLook();
        change(look);
        EXPECT_NE(look, unusualLook()) << contentOf(look);
        EXPECT_FALSE(look == unusualLook()) << contentOf(look);
    }
}

TEST(ImageDataVisualisationEquality, isDeliberatelyBlindForLineWidthAndHiddenPoints)
{
    Look look = unusualLook();
    look.setVectorLineWidth(9.0);
    look.setDrawHiddenPoints(true);
    EXPECT_EQ(look, unusualLook());
    EXPECT_NE(contentOf(look), contentOf(unusualLook()));
}

} // namespace
} // namespace Zem::Fig2
