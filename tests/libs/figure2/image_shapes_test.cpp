// Marks on a picture: their members, how they are scaled and drawn.
#include "image_shapes_fixture.h"

#include <gtest/gtest.h>

#include <numbers>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Look = ImageDataVisualisation;

constexpr char const *PLAIN = " pen 1 full #010203ff sharp";
constexpr char const *DASHED = " pen 0.25 dashed #040506ff sharp";

TEST(ImageShapes, haveTheTypeThatFilesHold)
{
    unsigned int const types[] = {0, 1, 2, 3, 5, 6, 7, 8, 9, 10};
    auto const shapes = allShapes();
    auto const empty = emptyShapes();
    ASSERT_EQ(shapes.size(), 10U);
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        EXPECT_EQ(static_cast<unsigned int>(shapes[i]->getType()), types[i]);
        EXPECT_EQ(static_cast<unsigned int>(empty[i]->getType()), types[i]);
    }
}

TEST(ImageShapes, areDrawnInOneStepAndOnlyLinesHaveArrows)
{
    for (auto const &shape : allShapes()) {
        EXPECT_EQ(shape->getNumberOfDrawSteps(), 1U);
        EXPECT_EQ(shape->hasArrows(), shape->getType() == ImageDataElement::TYPE_LINE);
    }
}

TEST(ImageShapes, areCopiedWhole)
{
    for (auto const &shape : allShapes()) {
        std::unique_ptr<ImageDataElement> const copy(shape->copy());
        EXPECT_EQ(copy->getType(), shape->getType());
        EXPECT_EQ(drawn(*copy, unusualLook()), drawn(*shape, unusualLook()));
    }
}

TEST(ImageShapes, areTurnedWithThePicture)
{
    for (auto const &shape : allShapes()) {
        std::string const calls = drawn(*shape, plainLook(), Rotation({1, 2}, 0.5));
        EXPECT_NE(calls.find(" turned 0.5 about 1,2\n"), std::string::npos) << calls;
        EXPECT_EQ(calls.find("sharp\n"), std::string::npos) << calls;
    }
}

TEST(ImageShapes, beginWithTheirDefaults)
{
    EXPECT_EQ(ImageDataPointMarker::DEFAULT_POINT_MARKER_SIZE, 20.0);
    EXPECT_EQ(ImageDataPointMarker().getPosition(), BaVec2d<double>(0, 0));
    EXPECT_EQ(ImageDataLine({1, 2}, {3, 4}).getUseArrows(), Look::ARROW_BOTH);
    EXPECT_EQ(ImageDataEllipse().getSegment(), BaVec2d<double>(0, 2 * std::numbers::pi));
    EXPECT_EQ(ImageDataFixedEllipse().getAngle(), 0.0);
    EXPECT_EQ(ImageDataText().getFont(), Font("Liberation Sans", 12.0, 0));
    EXPECT_TRUE(ImageDataPolygon().getClosed());
    EXPECT_EQ(ImageDataFixedLine().getLineStyle(), LineStyle(1.0, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(ImageDataFixedEllipse().getFillStyle(), FillStyle());
    EXPECT_EQ(ImageDataFixedText().getColor(), Color(0, 0, 0));
    EXPECT_TRUE(ImageDataFixedPolygon().getClosed());
    EXPECT_TRUE(ImageDataFixedGrid().getLines().empty());
}

TEST(ImageDataPointMarkerDrawing, isACrossOfTheMarkerSize)
{
    Look look = plainLook();
    look.setPointMarkerSize(6.0);

    // At 10 + 0.5 * 2, 20 + 0.5 * 4, with arms of 0.5 * 6.
    EXPECT_EQ(drawn(ImageDataPointMarker({2, 4}), look),
              std::string("line 14,22 8,22") + PLAIN + "\nline 11,25 11,19" + PLAIN + "\n");
}

TEST(ImageDataLineDrawing, isAPlainLineWhereTheLookHasNoArrows)
{
    EXPECT_EQ(drawn(ImageDataLine({2, 4}, {20, 0}), plainLook()), std::string("line 11,22 21,22") + PLAIN + "\n");
}

/// From 11,22 to 21,22 with heads of 5 mm: corners 5 cos 20° = 4.69846 along and 5 sin 20° = 1.7101 aside, the line
/// ending 0.95 * 5 = 4.75 from the tip.
std::string drawnArrows(Look::ArrowMode_t ofElement, Look::ArrowMode_t ofLook)
{
    ImageDataLine line({2, 4}, {20, 0});
    line.setUseArrows(ofElement);
    Look look = plainLook();
    look.setDrawArrows(ofLook);
    return drawn(line, look);
}

std::string const FIRST_HEAD = "polygon 15.6985,23.7101 11,22 15.6985,20.2899 no pen fill #010203ff\n";
std::string const SECOND_HEAD = "polygon 16.3015,20.2899 21,22 16.3015,23.7101 no pen fill #010203ff\n";

TEST(ImageDataLineDrawing, hasTheArrowsOfTheLineOnceTheLookHasAny)
{
    std::string const pen = std::string(PLAIN) + "\n";
    for (Look::ArrowMode_t look : {Look::ARROW_FIRST, Look::ARROW_SECOND, Look::ARROW_BOTH}) {
        EXPECT_EQ(drawnArrows(Look::ARROW_NONE, look), "line 11,22 21,22" + pen);
        EXPECT_EQ(drawnArrows(Look::ARROW_FIRST, look), FIRST_HEAD + "line 15.75,22 21,22" + pen);
        EXPECT_EQ(drawnArrows(Look::ARROW_SECOND, look), SECOND_HEAD + "line 11,22 16.25,22" + pen);
        EXPECT_EQ(drawnArrows(Look::ARROW_BOTH, look), FIRST_HEAD + SECOND_HEAD + "line 15.75,22 16.25,22" + pen);
    }
    EXPECT_EQ(drawnArrows(Look::ARROW_BOTH, Look::ARROW_NONE), "line 11,22 21,22" + pen);
}

/// Where a line with an arrow at its start, 11,22, begins.
std::string lineBehindArrow(double lineWidth, double pixels)
{
    ImageDataLine line({2, 4}, {pixels, 0});
    line.setUseArrows(Look::ARROW_FIRST);
    Look look = plainLook();
    look.setLineStyle(LineStyle(lineWidth, LineStyle::STYLE_FULL, Color(1, 2, 3)));
    look.setDrawArrows(Look::ARROW_BOTH);
    std::string const calls = drawn(line, look);
    std::size_t const begin = calls.find("line ");
    return calls.substr(begin, calls.find(" pen", begin) - begin);
}

TEST(ImageDataLineDrawing, limitsAHeadToTheLineUnlessItIsTheSmallestOne)
{
    // 2 mm long: a head of 5 mm becomes one of 2, which takes 1.9 of it.
    EXPECT_EQ(lineBehindArrow(1.0, 4), "line 12.9,22 13,22");
    // A head of 0.25 mm becomes one of 0.3, also on a line of 0.1: 0.285 of it.
    EXPECT_EQ(lineBehindArrow(0.05, 4), "line 11.285,22 13,22");
    EXPECT_EQ(lineBehindArrow(0.05, 0.2), "line 11.285,22 11.1,22");
    // 0.35 is not the smallest: it is limited to 0.1.
    EXPECT_EQ(lineBehindArrow(0.07, 0.2), "line 11.095,22 11.1,22");
}

TEST(ImageDataFixedLineDrawing, isItsOwnLineWithoutArrows)
{
    Look look = plainLook();
    look.setDrawArrows(Look::ARROW_BOTH);
    EXPECT_EQ(drawn(ImageDataFixedLine({2, 4}, {20, 0}, dashedLine()), look),
              std::string("line 11,22 21,22") + DASHED + "\n");
}

TEST(ImageDataEllipseDrawing, isWholeOrAnArc)
{
    ImageDataEllipse ellipse({2, 4}, {6, 8});
    ellipse.setAngle(0.25);
    EXPECT_EQ(drawn(ellipse, plainLook()), std::string("ellipse 11,22 radii 3,4 angle 0.25") + PLAIN + " no fill\n");

    ellipse.setSegment({0.5, 1.5});
    EXPECT_EQ(drawn(ellipse, plainLook()),
              std::string("segment 11,22 radii 3,4 from 0.5 to 1.5 angle 0.25") + PLAIN + " no fill\n");
}

TEST(ImageDataEllipseDrawing, isAnArcWhenOneEndDiffers)
{
    ImageDataEllipse ellipse({2, 4}, {6, 8});
    ellipse.setSegment({1e-40, 2 * std::numbers::pi});
    EXPECT_EQ(drawn(ellipse, plainLook()).substr(0, 8), "segment ");
    ellipse.setSegment({0, 6.25});
    EXPECT_EQ(drawn(ellipse, plainLook()).substr(0, 8), "segment ");
    ellipse.setSegment({1e-51, 2 * std::numbers::pi});
    EXPECT_EQ(drawn(ellipse, plainLook()).substr(0, 8), "ellipse ");
}

TEST(ImageDataFixedEllipseDrawing, hasItsOwnLineAndFill)
{
    EXPECT_EQ(drawn(fixedArc(), plainLook()),
              std::string("segment 10.5,21 radii 1.5,2 from 0.5 to 1.5 angle 0.25") + DASHED + " fill #070809ff\n");
}

TEST(ImageDataTextDrawing, hasAScaledFontAndTheColourOfTheMarks)
{
    EXPECT_EQ(drawn(ImageDataText({2, 4}, Font("Serif", 8.0, 1), "ab"), plainLook()),
              "text 11,22 'ab' font Serif 4 1 #010203ff\n");
}

TEST(ImageDataFixedTextDrawing, hasItsOwnColour)
{
    EXPECT_EQ(drawn(fixedText(), plainLook()), "text 10.5,21 'ab' font Serif 4 1 #070809ff\n");
}

TEST(ImageDataPolygonDrawing, isRelativeToItsPosition)
{
    ImageDataPolygon polygon({2, 4}, triangle());
    EXPECT_EQ(drawn(polygon, plainLook()), std::string("polygon 11,22 13,22 11,23") + PLAIN + " no fill\n");
    polygon.setClosed(false);
    EXPECT_EQ(drawn(polygon, plainLook()), std::string("polyline 11,22 13,22 11,23") + PLAIN + " no fill\n");
}

TEST(ImageDataPolygonDrawing, isNothingBelow3Points)
{
    Polygon2d const two({{0, 0}, {4, 0}}, true);
    EXPECT_EQ(drawn(ImageDataPolygon({2, 4}, two), plainLook()), "");
    EXPECT_EQ(drawn(ImageDataFixedPolygon({2, 4}, two, dashedLine(), FillStyle()), plainLook()), "");
}

TEST(ImageDataFixedPolygonDrawing, hasItsOwnLineAndFill)
{
    EXPECT_EQ(drawn(fixedTriangle(), plainLook()),
              std::string("polyline 10.5,21 12.5,21 10.5,22") + DASHED + " fill #070809ff\n");
}

TEST(ImageDataFixedGridDrawing, hasLinesBetweenPlaces)
{
    EXPECT_EQ(drawn(fixedGrid(), plainLook()),
              std::string("line 10.5,21 11.5,22") + DASHED + "\nline 12.5,23 13.5,24" + DASHED + "\n");
}

TEST(ImageShapesScaling, multipliesCoordinatesAndFontsButNeitherWidthsNorAngles)
{
    Look look = plainLook();
    look.setPointMarkerSize(6.0);
    std::string const plain = std::string(PLAIN);
    std::string const dashed = std::string(DASHED);
    std::string const expected[] = {"line 15,24 9,24" + plain + "\nline 12,27 12,21" + plain + "\n",
                                    "line 12,24 18,32" + plain + "\n",
                                    "segment 12,24 radii 6,8 from 0.5 to 1.5 angle 0.25" + plain + " no fill\n",
                                    "text 12,24 'ab' font Serif 16 1 #010203ff\n",
                                    "polyline 12,24 20,24 12,28" + plain + " no fill\n",
                                    "line 12,24 18,32" + dashed + "\n",
                                    "segment 12,24 radii 6,8 from 0.5 to 1.5 angle 0.25" + dashed + " fill #070809ff\n",
                                    "text 12,24 'ab' font Serif 16 1 #070809ff\n",
                                    "polyline 12,24 20,24 12,28" + dashed + " fill #070809ff\n",
                                    "line 12,24 16,28" + dashed + "\nline 20,32 24,36" + dashed + "\n"};
    auto const shapes = allShapes();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        shapes[i]->scale(4.0);
        EXPECT_EQ(drawn(*shapes[i], look), expected[i]);
    }
}

} // namespace
} // namespace Zem::Fig2
