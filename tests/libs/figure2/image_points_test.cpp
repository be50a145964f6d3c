// Points with vectors on a picture: which are drawn, how, in which steps, and their blocks.
#include "flat_transformation.h"
#include "image_fixture.h"

#include <BlockCrafter.h>
#include <ElementForms.h>
#include <RecordingPainter.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemLegendHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace Zem::Fig2 {
namespace {

using Look = ImageDataVisualisation;
using Points = ImageDataPoints;
using Support::BlockCrafter;
using Support::Payload;
using Vec3 = BaVec3d<double>;

constexpr double NONE = Points::INVALID_VALUE;
constexpr int ALL = Points::COMBINED;

/// Vectors 0.05 mm wide in #b43838 (the head then has the least length of 0.3), combined, without ids.
Look thinLook()
{
    Look look(false);
    look.setVectorLineWidth(0.05);
    return look;
}

class ImagePointsTest : public testing::Test
{
protected:
    /// With the corner of the picture at 10,20 and 0.5 mm to a pixel; points of space are seen at their x and y.
    std::string drawn(Look const &look, unsigned int step = 0, Legend2::LegendHandler const *legend = nullptr) const
    {
        Support::RecordingPainter painter;
        points.draw(&painter, {10, 20}, 0.5, clip, legend, Rotation::null, look, &flat, step);
        return painter.transcript();
    }

    void add(Vec3 const &point, Vec3 const &vector, double value = NONE, bool visible = true, int mask = -1)
    {
        points.addPoint(++lastId, point, vector, value, visible, mask);
    }

    Rect clip{10, 20, 100, 100};
    FlatTransformation flat;
    Points points;
    int lastId = 0;
};

std::string dot(std::string const &place, std::string const &colour = "#b43838ff")
{
    return "ellipse " + place + " radii 0.025,0.025 angle 0 no pen fill " + colour + "\n";
}

// A head of 0.3 mm with 20 degrees to each side: 0.3 cos = 0.281908, 0.3 sin = 0.102606; the shaft ends 0.285 mm behind
// the tip.
std::string rightwardsTo20(std::string const &colour = "#b43838ff")
{
    return "polygon 19.7181,29.8974 20,30 19.7181,30.1026 no pen fill " + colour + "\n" +
           "line 15,30 19.715,30 pen 0.05 full " + colour + " sharp\n";
}

TEST_F(ImagePointsTest, areADotAndAnArrow)
{
    add({10, 20, 5}, {10, 0, 3});
    EXPECT_EQ(drawn(thinLook()), dot("15,30") + rightwardsTo20());
}

TEST_F(ImagePointsTest, areNotDrawnWithoutATransformation)
{
    add({10, 20, 5}, {10, 0, 3});
    Support::RecordingPainter painter;
    points.draw(&painter, {10, 20}, 0.5, clip, nullptr, Rotation::null, thinLook(), nullptr, 0);
    EXPECT_EQ(painter.transcript(), "");
}

TEST_F(ImagePointsTest, turnWithTheElement)
{
    add({10, 20, 0}, {0, 0, 0});
    Support::RecordingPainter painter;
    points.draw(&painter, {10, 20}, 0.5, clip, nullptr, Rotation({1, 2}, 0.5), thinLook(), &flat, 0);
    EXPECT_EQ(painter.transcript(),
              "ellipse 15,30 radii 0.025,0.025 angle 0 no pen fill #b43838ff turned 0.5 about 1,2\n");
}

TEST_F(ImagePointsTest, areADotWithoutLength)
{
    add({10, 20, 5}, {0, 0, 3});
    EXPECT_EQ(drawn(thinLook()), dot("15,30"));
}

TEST_F(ImagePointsTest, stretchTheVectorOnThePicture)
{
    add({10, 20, 5}, {5, 0, 0});
    Look look = thinLook();
    look.setVectorScaling(2.0);
    EXPECT_EQ(drawn(look), dot("15,30") + rightwardsTo20());
    look.setVectorScaling(0.0);
    EXPECT_EQ(drawn(look), dot("15,30"));
}

TEST_F(ImagePointsTest, cutAVectorAtTheRimAndGiveItNoHead)
{
    add({10, 20, 0}, {1000, 0, 0});
    EXPECT_EQ(drawn(thinLook()), dot("15,30") + "line 15,30 110,30 pen 0.05 full #b43838ff sharp\n");
}

TEST_F(ImagePointsTest, areADotOnTheRimWhereTheVectorLeadsOut)
{
    add({200, 20, 0}, {10, 0, 0}); // from 110,30, on the right rim
    EXPECT_EQ(drawn(thinLook()), dot("110,30"));
}

TEST_F(ImagePointsTest, whoseFootIsOutsideAreNotDrawn)
{
    add({-10, 20, 0}, {20, 0, 0});
    EXPECT_EQ(drawn(thinLook()), "");
}

TEST_F(ImagePointsTest, withoutAnImageAreLeftOut)
{
    add({10, 20, 0}, {10, 0, 0});
    add({10, 20, 0}, {0, 0, 0});
    flat.hide([](Vec3 const &point) { return point.x == 20; });
    EXPECT_EQ(drawn(thinLook()), dot("15,30"));
}

TEST_F(ImagePointsTest, leaveOutALengthThatIsNoNumber)
{
    add({10, 20, 0}, {std::numeric_limits<double>::infinity(), 0, 0});
    add({10, 20, 0}, {std::numeric_limits<double>::quiet_NaN(), 0, 0});
    clip = Rect(-1e300, -1e300, 2e300, 2e300);
    EXPECT_EQ(drawn(thinLook()).find("line"), std::string::npos);
}

TEST_F(ImagePointsTest, showHiddenOnesOnDemand)
{
    add({10, 20, 0}, {0, 0, 0}, NONE, false);
    Look look = thinLook();
    EXPECT_EQ(drawn(look), dot("15,30"));
    look.setDrawHiddenPoints(false);
    EXPECT_EQ(drawn(look), "");
}

TEST_F(ImagePointsTest, areChosenByTheirMasks)
{
    add({10, 20, 0}, {0, 0, 0}, NONE, true, 5);
    add({20, 20, 0}, {0, 0, 0}, NONE, true, 0);
    Look look = thinLook();
    EXPECT_EQ(drawn(look), dot("15,30") + dot("20,30"));
    look.setPointMask(4);
    EXPECT_EQ(drawn(look), dot("15,30"));
    look.setPointMask(6); // one of its bits is enough
    EXPECT_EQ(drawn(look), dot("15,30"));
    look.setPointMask(2);
    EXPECT_EQ(drawn(look), "");
}

TEST_F(ImagePointsTest, haveHeadsOfFiveWidthsButNoLongerThanThemselves)
{
    add({10, 20, 0}, {10, 0, 0});
    add({10, 20, 0}, {2, 0, 0});
    Look look = thinLook();
    look.setVectorLineWidth(0.5);
    // 2.5 mm: 2.5 cos = 2.34923, 2.5 sin = 0.85505, shaft 2.375 behind; then 1 mm, the whole length.
    std::string const pen = " pen 0.5 full #b43838ff sharp\n";
    std::string const dotted = "ellipse 15,30 radii 0.25,0.25 angle 0 no pen fill #b43838ff\n";
    EXPECT_EQ(drawn(look), dotted + "polygon 17.6508,29.1449 20,30 17.6508,30.8551 no pen fill #b43838ff\n" +
                               "line 15,30 17.625,30" + pen + dotted +
                               "polygon 15.0603,29.658 16,30 15.0603,30.342 no pen fill #b43838ff\n" +
                               "line 15,30 15.05,30" + pen);
}

TEST_F(ImagePointsTest, haveALeastHeadEvenWhenItIsLongerThanTheVector)
{
    add({10, 20, 0}, {0.2, 0, 0});
    // The vector is 0.1 mm long and ends at 15.1: the head begins at 14.8181, the shaft ends at 14.815.
    EXPECT_EQ(drawn(thinLook()), dot("15,30") +
                                     "polygon 14.8181,29.8974 15.1,30 14.8181,30.1026 no pen fill #b43838ff\n" +
                                     "line 15,30 14.815,30 pen 0.05 full #b43838ff sharp\n");
}

TEST_F(ImagePointsTest, limitAHeadThatIsJustAboveTheLeast)
{
    add({10, 20, 0}, {0.2, 0, 0});
    Look look = thinLook();
    look.setVectorLineWidth(0.0625); // a head of 0.3125 mm at a vector of 0.1 mm, which ends 0.095 mm before the tip
    EXPECT_NE(drawn(look).find("line 15,30 15.005,30 pen 0.0625 "), std::string::npos);
}

TEST_F(ImagePointsTest, haveHeadsWhateverTheArrowModeSays)
{
    add({10, 20, 5}, {10, 0, 3});
    Look look = thinLook();
    look.setDrawArrows(Look::ARROW_NONE);
    EXPECT_EQ(drawn(look), dot("15,30") + rightwardsTo20());
}

TEST_F(ImagePointsTest, showTheirIdsBesideTheDot)
{
    add({10, 20, 0}, {0, 0, 0});
    Look look = thinLook();
    look.setDrawPointIds(true);
    look.setPointIdFont(Font("Serif", 9, 0));
    look.setPointIdColor(Color(1, 2, 3));
    EXPECT_EQ(drawn(look), dot("15,30") + "text 15.025,30.025 '1' font Serif 9 0 #b43838ff\n");
    look.setUseFixedPointIdColor(true);
    EXPECT_EQ(drawn(look), dot("15,30") + "text 15.025,30.025 '1' font Serif 9 0 #010203ff\n");
}

TEST_F(ImagePointsTest, haveOneDotOneIdAndAVectorForEachComponent)
{
    add({10, 20, 0}, {10, 0, 0});
    Look look = thinLook();
    look.setMode(Look::MODE_XY);
    look.setDrawCombinedVectors(false);
    look.setDrawPointIds(true);
    look.setPointIdFont(Font("Serif", 9, 0));
    look.setPointIdColor(Color(1, 2, 3));
    // The second vector has no length. Several colours meet in the point, so that the id has its own.
    EXPECT_EQ(drawn(look), dot("15,30") + "text 15.025,30.025 '1' font Serif 9 0 #010203ff\n" + rightwardsTo20());
    look.setMode(Look::MODE_X);
    EXPECT_EQ(drawn(look), dot("15,30") + "text 15.025,30.025 '1' font Serif 9 0 #b43838ff\n" + rightwardsTo20());
}

TEST_F(ImagePointsTest, drawTheComponentsInTheirOrder)
{
    add({10, 20, 0}, {10, 10, 0});
    Look look = thinLook();
    look.setMode(Look::MODE_XYZ);
    look.setDrawCombinedVectors(false);
    EXPECT_EQ(drawn(look), dot("15,30") + rightwardsTo20() +
                               "polygon 15.1026,34.7181 15,35 14.8974,34.7181 no pen fill #b43838ff\n" +
                               "line 15,30 15,34.715 pen 0.05 full #b43838ff sharp\n");
}

TEST_F(ImagePointsTest, goOnToTheNextComponentWhereOneHasNoImage)
{
    flat.hide([](Vec3 const &point) { return point.x != 10; });
    add({10, 20, 0}, {3, 10, 0});
    Look look = thinLook();
    look.setMode(Look::MODE_XY);
    look.setDrawCombinedVectors(false);
    EXPECT_EQ(drawn(look), dot("15,30") + "polygon 15.1026,34.7181 15,35 14.8974,34.7181 no pen fill #b43838ff\n" +
                               "line 15,30 15,34.715 pen 0.05 full #b43838ff sharp\n");
}

TEST_F(ImagePointsTest, takeTheirColourFromTheLegend)
{
    Legend2::Legend scale(uLength);
    scale.setFixedMinimum(0);
    scale.setFixedMaximum(1);
    scale.setUseExtremaColors(true);
    scale.setMinColor(Color(1, 1, 1));
    scale.setMaxColor(Color(9, 9, 9));
    Legend2::Data const data;
    Legend2::LegendHandler const legend(&scale, &data);

    add({10, 20, 0}, {0, 0, 0}, -5);   // its own value
    add({20, 20, 0}, {0, 0, 7}, NONE); // the length of its vector
    EXPECT_EQ(drawn(thinLook(), 0, &legend), dot("15,30", "#010101ff") + dot("20,30", "#090909ff"));

    Look look = thinLook();
    look.setMode(Look::MODE_Z);
    points.clearPoints();
    add({10, 20, 0}, {0, 0, -7});
    EXPECT_EQ(drawn(look, 0, &legend), dot("15,30", "#010101ff"));
}

TEST_F(ImagePointsTest, withoutAColourOnTheLegendAreBlack)
{
    Legend2::Legend scale(uLength);
    scale.setFixedMinimum(0);
    scale.setFixedMaximum(1);
    scale.setMinColorInvalid();
    Legend2::Data const data;
    Legend2::LegendHandler const legend(&scale, &data);
    add({10, 20, 0}, {0, 0, 0}, -5);
    EXPECT_EQ(drawn(thinLook(), 0, &legend), dot("15,30", "#000000ff"));
}

TEST_F(ImagePointsTest, takeAStepForEach500)
{
    EXPECT_EQ(points.getNumberOfDrawSteps(), 0U);
    for (int i = 0; i < 500; ++i)
        add({1.0 * i, 0, 0}, {0, 0, 0});
    EXPECT_EQ(points.getNumberOfDrawSteps(), 1U);
    add({500, 0, 0}, {0, 0, 0});
    EXPECT_EQ(points.getNumberOfDrawSteps(), 2U);
    EXPECT_EQ(points.getNumberOfPoints(), 501U);

    clip = Rect(0, 0, 1000, 1000);
    auto const dots = [&](unsigned int step) {
        std::string const calls = drawn(thinLook(), step);
        return std::count(calls.begin(), calls.end(), '\n');
    };
    EXPECT_EQ(dots(0), 500);
    EXPECT_EQ(drawn(thinLook(), 1), dot("260,20"));
    EXPECT_EQ(dots(2), 0);
    EXPECT_EQ(dots(std::numeric_limits<unsigned int>::max()), 0);
}

TEST_F(ImagePointsTest, haveNoArrowsToAskFor)
{
    EXPECT_FALSE(points.hasArrows());
    EXPECT_EQ(points.getType(), ImageDataElement::TYPE_POINTS);
}

TEST_F(ImagePointsTest, stayInSpaceWhenThePictureIsScaled)
{
    add({10, 20, 5}, {10, 0, 3});
    std::string const before = drawn(thinLook());
    points.scale(3.0);
    EXPECT_EQ(drawn(thinLook()), before);
}

TEST_F(ImagePointsTest, areCopiedAndCleared)
{
    add({10, 20, 5}, {10, 0, 3});
    std::unique_ptr<ImageDataElement> const copied(points.copy());
    points.clearPoints();
    EXPECT_EQ(points.getNumberOfPoints(), 0U);
    EXPECT_EQ(dynamic_cast<Points &>(*copied).getNumberOfPoints(), 1U);
}

/// The components of (2, 3, 6) as "x y z", with a plus when a further one follows.
std::string direction(Look::Mode_t mode, int component)
{
    Points points;
    points.addPoint(1, {0, 0, 0}, {2, 3, 6}, NONE, true, -1);
    Look look(false);
    look.setMode(mode);
    Vec3 found(9, 9, 9);
    bool const further = points.computeDirection(look, 0, component, &found);
    return Support::text(found.x) + " " + Support::text(found.y) + " " + Support::text(found.z) + (further ? " +" : "");
}

TEST(ImagePointDirection, ofASingleComponentIsAlwaysTheSame)
{
    for (int component : {-1, 0, 1, 2, 3}) {
        EXPECT_EQ(direction(Look::MODE_X, component), "2 0 0");
        EXPECT_EQ(direction(Look::MODE_Y, component), "0 3 0");
        EXPECT_EQ(direction(Look::MODE_Z, component), "0 0 6");
    }
}

TEST(ImagePointDirection, ofSeveralComponentsIsOneAfterTheOther)
{
    std::string const xy[] = {"2 3 0", "2 0 0 +", "0 3 0", "2 3 0", "2 3 0"};
    std::string const yz[] = {"0 3 6", "0 3 0 +", "0 0 6", "0 3 6", "0 3 6"};
    std::string const xz[] = {"2 0 6", "2 0 0 +", "0 0 6", "2 0 6", "2 0 6"};
    std::string const xyz[] = {"2 3 6", "2 0 0 +", "0 3 0 +", "0 0 6", "2 3 6"};
    for (int component = -1; component <= 3; ++component) {
        auto const i = static_cast<std::size_t>(component + 1);
        EXPECT_EQ(direction(Look::MODE_XY, component), xy[i]);
        EXPECT_EQ(direction(Look::MODE_YZ, component), yz[i]);
        EXPECT_EQ(direction(Look::MODE_XZ, component), xz[i]);
        EXPECT_EQ(direction(Look::MODE_XYZ, component), xyz[i]);
    }
}

TEST(ImagePointValue, isACoordinateOrTheLength)
{
    auto const value = [](Look::Mode_t mode, int component) {
        Look look(false);
        look.setMode(mode);
        return Points::getValue({2, 3, 6}, look, component);
    };
    EXPECT_EQ(value(Look::MODE_X, ALL), 2);
    EXPECT_EQ(value(Look::MODE_Y, 2), 3);
    EXPECT_EQ(value(Look::MODE_Z, 0), 6);
    EXPECT_EQ(value(Look::MODE_XZ, 0), 2);
    EXPECT_EQ(value(Look::MODE_XZ, 1), 6);
    EXPECT_EQ(value(Look::MODE_XZ, 2), 7);
    EXPECT_EQ(value(Look::MODE_XYZ, 2), 6);
    EXPECT_EQ(value(Look::MODE_XYZ, 3), 7);
    EXPECT_EQ(value(Look::MODE_XY, ALL), 7);
}

TEST_F(ImagePointsTest, withoutAnImageHaveNoPlaceOnThePage)
{
    add({10, 20, 0}, {10, 4, 0});
    BaVec2d<double> start;
    BaVec2d<double> end(7, 8);
    Vec3 way;
    Look look(false);
    look.setMode(Look::MODE_XY);
    EXPECT_TRUE(points.computeImagePoints({10, 20}, 0.5, look, &flat, 0, 0, &start, &end, &way));
    EXPECT_EQ(start, BaVec2d<double>(15, 30));
    EXPECT_EQ(end, BaVec2d<double>(20, 30));
    EXPECT_EQ(way, Vec3(10, 0, 0));
    EXPECT_FALSE(points.computeImagePoints({10, 20}, 0.5, look, nullptr, 0, 1, &start, &end, &way));
    EXPECT_EQ(start, BaVec2d<double>(NONE, NONE));
    EXPECT_EQ(end, BaVec2d<double>(20, 30));
    EXPECT_EQ(way, Vec3(0, 4, 0));
}

std::string savedForm(Points const &points)
{
    return Support::streamOf([&](IO::OutStream &stream) { points.save(&stream); });
}

std::string loadError(Points &points, std::string const &bytes)
{
    return Support::thrownText<IO::StreamException>(
        [&] { Support::readFrom(bytes, [&](IO::InStream &stream) { points.load(&stream); }); });
}

BlockCrafter typed()
{
    return BlockCrafter().block(2, Payload().u(4));
}

Payload &vec(Payload &payload, double x, double y, double z)
{
    return payload.d(x).d(y).d(z);
}

Payload twoPoints(bool withMasks)
{
    Payload payload;
    payload.u(2);
    vec(vec(payload.i(-7), 1, 2, 3), 4, 5, 6).d(0.5);
    if (withMasks)
        payload.b(false).i(12);
    vec(vec(payload.i(8), 7, 8, 9), 0, 0, 1).d(NONE);
    if (withMasks)
        payload.b(true).i(-1);
    return payload;
}

TEST(ImagePointsBlocks, holdPointAfterPoint)
{
    Points points;
    points.addPoint(-7, {1, 2, 3}, {4, 5, 6}, 0.5, false, 12);
    points.addPoint(8, {7, 8, 9}, {0, 0, 1}, NONE, true, -1);
    std::string const form = typed().block(2, twoPoints(true)).bytes();
    EXPECT_EQ(twoPoints(true).bytes().size(), 2U * 65 + 4);
    EXPECT_EQ(savedForm(points), form);
    Points read;
    read.addPoint(1, {}, {}, 0, true, 0);
    EXPECT_EQ(loadError(read, form), "nothing thrown");
    EXPECT_EQ(savedForm(read), form);
}

TEST(ImagePointsBlocks, ofVersion1AreVisibleUnderEveryMask)
{
    Points read;
    EXPECT_EQ(loadError(read, typed().block(1, twoPoints(false)).bytes()), "nothing thrown");
    Points points;
    points.addPoint(-7, {1, 2, 3}, {4, 5, 6}, 0.5, true, -1);
    points.addPoint(8, {7, 8, 9}, {0, 0, 1}, NONE, true, -1);
    EXPECT_EQ(savedForm(read), savedForm(points));
}

TEST(ImagePointsBlocks, changeNothingWhenTheyAreRefused)
{
    Points points;
    points.addPoint(-7, {1, 2, 3}, {4, 5, 6}, 0.5, false, 12);
    std::string const before = savedForm(points);
    EXPECT_EQ(loadError(points, typed().block(3, twoPoints(true)).bytes()), "wrong block version");
    EXPECT_EQ(loadError(points, typed().block(0, twoPoints(true)).bytes()), "wrong block version");
    EXPECT_NE(loadError(points, typed().block(2, Payload().u(4294967295U)).bytes()), "nothing thrown");
    std::string const form = typed().block(2, twoPoints(true)).bytes();
    for (std::size_t length = BlockCrafter().bytes().size(); length < form.size(); ++length)
        EXPECT_NE(loadError(points, form.substr(0, length)), "nothing thrown") << length;
    EXPECT_EQ(savedForm(points), before);
}

TEST(ImageDataElementCreation, knowsEveryType)
{
    for (unsigned int number = 0; number < ImageDataElement::NUMBER_OF_TYPES; ++number) {
        auto const type = static_cast<ImageDataElement::Type_t>(number);
        std::unique_ptr<ImageDataElement> const element(ImageDataElement::create(type));
        ASSERT_NE(element, nullptr) << number;
        EXPECT_EQ(element->getType(), type);
    }
    EXPECT_EQ(ImageDataElement::create(static_cast<ImageDataElement::Type_t>(11)), nullptr);
}

} // namespace
} // namespace Zem::Fig2
