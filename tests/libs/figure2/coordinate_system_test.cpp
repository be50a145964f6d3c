// The axes of a coordinate system, drawn into a picture.
#include "flat_transformation.h"

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <ZemFig2CoordinateSystem.h>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace Zem::Fig2 {
namespace {

constexpr double PI = std::numbers::pi;
Rect const NO_CLIP(-1e6, -1e6, 2e6, 2e6);

/// The origin is seen at 500,400, ten pixels for one unit around it; the camera stands 100 in front of it.
CameraTransformation cameraAbove()
{
    Cal::InternalOrientation orientation;
    orientation.setImageDistance({1000, 1000});
    orientation.setPrincipalPoint({500, 400});
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(1000, 800);
    return {camera, Zem::Transformation({0, 0, 100}, {0, 0, 0}, 1.0)};
}

class CoordinateSystemTest : public testing::Test
{
protected:
    CoordinateSystemTest() { system.setVisible(true); }

    /// At 10,20 with pixels of 0.1 mm.
    std::string drawn(Transformation const &transformation, Rect const &clip = NO_CLIP,
                      Rotation const &rotation = Rotation::null) const
    {
        Support::RecordingPainter painter;
        system.draw(&painter, {10, 20}, 0.1, clip, &transformation, rotation);
        return painter.transcript();
    }

    /// The letters in the order in which they are drawn.
    std::string letters(Transformation const &transformation, Rect const &clip = NO_CLIP) const
    {
        std::string found;
        std::string const calls = drawn(transformation, clip);
        for (std::size_t place = calls.find("text "); place != std::string::npos;
             place = calls.find("text ", place + 1))
            found += calls[calls.find('\'', place) + 1];
        return found;
    }

    Support::FakeCalculator calculator; ///< letters are 2 mm wide and 5 mm high
    CoordinateSystem system;
};

// Heads are 2.5 mm long with 20 degrees to each side: 2.5 cos = 2.34923, 2.5 sin = 0.85505; shafts end 0.95 * 2.5 mm
// behind the tip.
std::string const X_ARROW = "line 60,60 77.625,60 pen 0.5 full #d62728ff sharp\n"
                            "polygon 77.6508,59.1449 80,60 77.6508,60.8551 no pen fill #d62728ff\n";
std::string const Y_ARROW = "line 60,60 60,77.625 pen 0.5 full #2ca02cff sharp\n"
                            "polygon 60.8551,77.6508 60,80 59.1449,77.6508 no pen fill #2ca02cff\n";
std::string const Z_ARROW = "line 60,60 60,60 pen 0.5 full #1f77b4ff sharp\n"
                            "polygon 60,60 60,60 60,60 no pen fill #1f77b4ff\n";
// Beside x: 1 to the side of the box, 2.5 more. Below y: 2.5 and 2.5 more. z points away from the camera.
std::string const X_LETTER = "text 82.5,57.5 'x' font Liberation Sans 12 0 #d62728ff\n";
std::string const Y_LETTER = "text 59,82.5 'y' font Liberation Sans 12 0 #2ca02cff\n";
std::string const Z_LETTER = "text 59,57.5 'z' font Liberation Sans 12 0 #1f77b4ff\n";

TEST_F(CoordinateSystemTest, drawsThreeArrowsWithLettersTheFarthestFirst)
{
    EXPECT_EQ(drawn(cameraAbove()), Z_ARROW + Z_LETTER + X_ARROW + X_LETTER + Y_ARROW + Y_LETTER);
}

TEST_F(CoordinateSystemTest, drawsNothingWhileInvisible)
{
    system.setVisible(false);

    EXPECT_EQ(drawn(cameraAbove()), "");
}

TEST_F(CoordinateSystemTest, drawsNothingWithoutATransformation)
{
    Support::RecordingPainter painter;

    system.draw(&painter, {10, 20}, 0.1, NO_CLIP, nullptr, Rotation::null);

    EXPECT_EQ(painter.transcript(), "");
}

TEST_F(CoordinateSystemTest, leavesLettersOut)
{
    system.setTextVisible(false);

    EXPECT_EQ(drawn(cameraAbove()), Z_ARROW + X_ARROW + Y_ARROW);
}

TEST_F(CoordinateSystemTest, beginsAtItsOrigin)
{
    system.setOrigin({-10, 5, 0});
    system.setTextVisible(false);

    EXPECT_NE(drawn(cameraAbove()).find("line 50,65 67.625,65 pen 0.5 full #d62728ff sharp\n"), std::string::npos);
}

TEST_F(CoordinateSystemTest, sortsItsAxesByTheDepthOfTheirEnds)
{
    // About x by 30 degrees: depths 0, 10 and 17.3; by 150: 0, 10, -17.3; by -30: 0, -10, 17.3; about y by -30: 10, 0,
    // 17.3.
    EXPECT_EQ(letters(FlatTransformation({{}, {PI / 6, 0, 0}, 1})), "zyx");
    EXPECT_EQ(letters(FlatTransformation({{}, {5 * PI / 6, 0, 0}, 1})), "yxz");
    EXPECT_EQ(letters(FlatTransformation({{}, {-PI / 6, 0, 0}, 1})), "zxy");
    EXPECT_EQ(letters(FlatTransformation({{}, {0, -PI / 6, 0}, 1})), "zxy");
}

TEST_F(CoordinateSystemTest, sortsByDepthWhereverItsOriginIs)
{
    system.setOrigin({1000, -1000, 5});

    EXPECT_EQ(letters(FlatTransformation({{7, 8, 9}, {PI / 6, 0, 0}, 1})), "zyx");
}

TEST_F(CoordinateSystemTest, sortsByDepthInAScaledPicture)
{
    FlatTransformation const flat({{0, 0, 50}, {5 * PI / 6, 0, 0}, 1});

    EXPECT_EQ(letters(ScaledImageTransformation(&flat, 0.5)), "yxz");
}

TEST_F(CoordinateSystemTest, keepsTheOrderOfItsLettersWithoutDepths)
{
    double const none = std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(letters(FlatTransformation({{0, 0, none}, {}, 1})), "xyz");
    // All ends as far as each other.
    EXPECT_EQ(letters(FlatTransformation({{}, {}, 0})), "xyz");
}

TEST_F(CoordinateSystemTest, leavesOutAnAxisThatHasNoImageAlone)
{
    FlatTransformation flat({{}, {}, 0});
    flat.hide([](BaVec3d<double> const &point) { return point.y > 0; });

    EXPECT_EQ(letters(flat), "xz");
}

TEST_F(CoordinateSystemTest, leavesOutAllWhenTheOriginHasNoImage)
{
    FlatTransformation flat;
    flat.hide([](BaVec3d<double> const &point) { return point == BaVec3d<double>(); });

    EXPECT_EQ(drawn(flat), "");
    EXPECT_EQ(drawn(ScaledImageTransformation()), "");
}

TEST_F(CoordinateSystemTest, leavesOutAnAxisThatCrossesTheBorderOfTheClip)
{
    // From 60,60 to 80,60, to 60,80 and nowhere.
    EXPECT_EQ(letters(cameraAbove(), Rect(50, 50, 20, 100)), "zy");
    EXPECT_EQ(letters(cameraAbove(), Rect(50, 50, 100, 20)), "zx");
    EXPECT_EQ(letters(cameraAbove(), Rect(50, 50, 30, 100)), "zy"); // the tip on the border
    // All outside: the border is not crossed.
    EXPECT_EQ(letters(cameraAbove(), Rect(0, 0, 10, 10)), "zxy");
}

TEST_F(CoordinateSystemTest, givesAShortVectorAHeadOfItsOwnLength)
{
    // The axis x is 0.2 mm long; 0.2 cos = 0.187939, 0.2 sin = 0.068404; the shaft ends 0.19 behind the tip.
    system.setLength(2);
    system.setWidth(0.02);
    system.setTextVisible(false);

    EXPECT_EQ(drawn(FlatTransformation({{}, {}, 0}))
                  .find("line 10,20 10.01,20 pen 0.02 full #d62728ff sharp\n"
                        "polygon 10.0121,19.9316 10.2,20 10.0121,20.0684 no pen fill #d62728ff\n"),
              0U);
}

TEST_F(CoordinateSystemTest, givesAThinVectorASmallestHead)
{
    // 0.3 and not 5 * 0.02: the shaft ends 0.285 behind the tip at 12,20.
    system.setWidth(0.02);

    EXPECT_EQ(drawn(FlatTransformation({{}, {}, 0})).find("line 10,20 11.715,20 pen 0.02"), 0U);
}

TEST_F(CoordinateSystemTest, movesTheLetterAlongASlantedVectorOutOfTheBox)
{
    // Along (0.8, 0.6) from 10,20: the tip is at 11.6,21.2. The vector leaves the box at its side, 1 / 0.8 = 1.25
    // away; 2.5 more make 3.75: the centre is at 14.6,23.45.
    class Slanted : public ScaledImageTransformation
    {
    public:
        bool computeImagePoints(BaVec3d<double> const &, BaVec3d<double> const &end, BaVec2d<double> *image1,
                                BaVec2d<double> *image2) const override
        {
            *image1 = {0, 0};
            *image2 = {16, 12};
            return end.x > 0;
        }
    };

    EXPECT_NE(drawn(Slanted()).find("text 13.6,20.95 'x'"), std::string::npos);
}

TEST_F(CoordinateSystemTest, turnsItsArrowsAndKeepsLettersUprightAtTheirEnds)
{
    // A quarter turn about the corner takes x,y to y,-x: x runs upwards from 60,-60 to 60,-80.
    std::string const calls = drawn(cameraAbove(), NO_CLIP, Rotation({0, 0}, PI / 2));

    EXPECT_NE(calls.find("line 60,60 77.625,60 pen 0.5 full #d62728ff sharp turned 1.5708 about 0,0\n"
                         "polygon 77.6508,59.1449 80,60 77.6508,60.8551 no pen fill #d62728ff turned 1.5708 about 0,0\n"
                         "text 59,-87.5 'x' font Liberation Sans 12 0 #d62728ff\n"),
              std::string::npos)
        << calls;
}

TEST_F(CoordinateSystemTest, putsLettersBeyondTheTurnedEnds)
{
    // Half a turn about the corner: x runs to the left from -60,-60 to -80,-60, the letter's centre is at -83.5,-60.
    EXPECT_NE(drawn(cameraAbove(), NO_CLIP, Rotation({0, 0}, PI)).find("text -84.5,-62.5 'x' "), std::string::npos);
}

TEST_F(CoordinateSystemTest, drawsWithItsWidthAndFont)
{
    system.setWidth(1);
    system.setFont(Font("Arial", 8, Font::BOLD));
    std::string const calls = drawn(cameraAbove());

    // The head is 5 mm long, its base 4.75 mm behind the tip.
    EXPECT_NE(calls.find("line 60,60 75.25,60 pen 1 full #d62728ff sharp\n"), std::string::npos) << calls;
    EXPECT_NE(calls.find("text 82.5,57.5 'x' font Arial 8 2 #d62728ff\n"), std::string::npos) << calls;
}

TEST_F(CoordinateSystemTest, leavesOutWhatIsNowhere)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    system.setOrigin({none, 0, 0});
    EXPECT_EQ(drawn(cameraAbove()), "");
    system.setOrigin({});
    system.setLength(none);
    EXPECT_EQ(drawn(cameraAbove()), "");
}

} // namespace
} // namespace Zem::Fig2
