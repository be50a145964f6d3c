// Marks on a picture in blocks.
#include "generated_values.h"
#include "image_shapes_fixture.h"

#include <BlockCrafter.h>
#include <ElementForms.h>

#include <rapidcheck/gtest.h>

#include <numbers>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Support::BlockCrafter;
using Support::Payload;
using Look = ImageDataVisualisation;

std::string savedForm(ImageDataElement const &element)
{
    return Support::streamOf([&element](IO::OutStream &stream) { element.save(&stream); });
}

void loadForm(ImageDataElement &element, std::string const &bytes)
{
    Support::readFrom(bytes, [&element](IO::InStream &stream) { element.load(&stream); });
}

template <class Shape>
Shape loaded(BlockCrafter const &crafter, Shape shape = Shape())
{
    loadForm(shape, crafter.bytes());
    return shape;
}

std::string loadError(ImageDataElement &element, std::string const &bytes)
{
    std::string const before = savedForm(element);
    std::string const text = Support::thrownText<IO::StreamException>([&] { loadForm(element, bytes); });
    EXPECT_EQ(savedForm(element), before);
    return text;
}

BlockCrafter typed(unsigned int type)
{
    return BlockCrafter().block(2, Payload().u(type));
}

Payload line()
{
    return Payload().d(0.25).u(3).c(4, 5, 6, 255).u(1);
}

Payload fill()
{
    return Payload().b(true).c(7, 8, 9, 255);
}

Payload font()
{
    return Payload().s("Serif").d(8).u(1);
}

Payload polygonPayload()
{
    return Payload().v(1, 2).u(3).v(0, 0).v(4, 0).v(0, 2).b(false);
}

Payload gridPayload()
{
    return Payload().u(2).v(1, 2).v(3, 4).v(5, 6).v(7, 8);
}

/// The newest blocks of allShapes().
std::vector<std::string> allForms()
{
    Payload const arcPayload = Payload().v(1, 2).v(3, 4).v(0.5, 1.5).d(0.25);
    return {typed(0).block(2, Payload().v(1, 2)).bytes(),
            typed(1).block(3, Payload().v(1, 2).v(3, 4).u(2)).bytes(),
            typed(2).block(4, arcPayload).bytes(),
            typed(3).block(1, Payload().v(1, 2).s("ab")).block(1, font()).bytes(),
            typed(5).block(2, polygonPayload()).bytes(),
            typed(6).block(1, Payload().v(1, 2).v(3, 4)).block(2, line()).bytes(),
            typed(7).block(3, arcPayload).block(2, line()).block(1, fill()).bytes(),
            typed(8).block(2, Payload().v(1, 2).s("ab").c(7, 8, 9, 255)).block(1, font()).bytes(),
            typed(9).block(2, polygonPayload()).block(2, line()).block(1, fill()).bytes(),
            typed(10).block(1, gridPayload()).block(2, line()).bytes()};
}

TEST(ImageShapesBlocks, areTheTypeAndTheirOwn)
{
    auto const shapes = allShapes();
    auto const read = emptyShapes();
    auto const forms = allForms();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        EXPECT_EQ(savedForm(*shapes[i]), forms[i]) << i;
        loadForm(*read[i], forms[i]);
        EXPECT_EQ(savedForm(*read[i]), forms[i]) << i;
    }
}

TEST(ImageShapesBlocks, haveTheirSizes)
{
    auto const sizeOf = [](Payload const &payload) { return payload.bytes().size(); };
    EXPECT_EQ(sizeOf(polygonPayload()), 3U * 16 + 21);
    EXPECT_EQ(sizeOf(gridPayload()), 2U * 32 + 4);
}

TEST(ImageShapesBlocks, areRefusedWhereverTheyAreCut)
{
    auto const shapes = emptyShapes();
    auto const forms = allForms();
    std::size_t const header = BlockCrafter().bytes().size();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        for (std::size_t length = header; length < forms[i].size(); ++length)
            EXPECT_NE(loadError(*shapes[i], forms[i].substr(0, length)), "nothing thrown") << i << " at " << length;
    }
}

TEST(ImageShapesBlocks, ofACommonBlockOfVersion1HaveAColourInsteadOfTheType)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().c(1, 2, 3, 4)).block(2, Payload().v(1, 2));
    ImageDataPointMarker const marker = loaded<ImageDataPointMarker>(crafter);
    EXPECT_EQ(marker.getPosition(), BaVec2d<double>(1, 2));
    EXPECT_EQ(marker.getType(), ImageDataElement::TYPE_POINT_MARKER);
}

TEST(ImageShapesBlocks, areRefusedFromTheFirstUnknownVersionOn)
{
    unsigned int const newest[] = {2, 3, 4, 1, 2, 2, 3, 2, 2, 1};
    auto const shapes = emptyShapes();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        for (unsigned int version : {0U, newest[i] + 1}) {
            BlockCrafter crafter = typed(static_cast<unsigned int>(shapes[i]->getType()));
            std::string const text = loadError(*shapes[i], crafter.block(version, Payload()).bytes());
            EXPECT_NE(text.find("wrong block version"), std::string::npos) << i << ": " << text;
        }
    }
}

TEST(ImageShapesBlocks, areRefusedWithTheTextsOfTheirKinds)
{
    std::string const version = "wrong block version";
    std::string const texts[] = {"cannot load figure image data point marker: " + version,
                                 "cannot load figure image data line: " + version,
                                 version,
                                 "cannot load figure image data text: " + version,
                                 version,
                                 "cannot load figure image data fixed line: " + version,
                                 version,
                                 "cannot load figure image data text: " + version,
                                 version,
                                 version};
    auto const shapes = emptyShapes();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        BlockCrafter crafter = typed(0);
        EXPECT_EQ(loadError(*shapes[i], crafter.block(9, Payload()).bytes()), texts[i]) << i;
    }
}

TEST(ImageShapesBlocks, tellOfACommonBlockThatIsNewer)
{
    ImageDataEllipse ellipse;
    EXPECT_EQ(loadError(ellipse, BlockCrafter().block(3, Payload().u(2)).bytes()),
              "cannot load figure image data element: wrong block version");
    ImageDataLine line;
    EXPECT_EQ(loadError(line, BlockCrafter().block(3, Payload().u(1)).bytes()),
              "cannot load figure image data line: cannot load figure image data element: wrong block version");
}

TEST(ImageShapesBlocks, ofALineBelowVersion3HaveBothArrows)
{
    for (unsigned int version : {1U, 2U}) {
        ImageDataLine const read = loaded(typed(1).block(version, Payload().v(1, 2).v(3, 4)), lineWithSecondArrow());
        EXPECT_EQ(read.getDelta(), BaVec2d<double>(3, 4));
        EXPECT_EQ(read.getUseArrows(), Look::ARROW_BOTH);
    }
}

TEST(ImageShapesBlocks, ofALineWithAnUnknownArrowModeAreRefused)
{
    ImageDataLine line;
    EXPECT_EQ(loadError(line, typed(1).block(3, Payload().v(1, 2).v(3, 4).u(4)).bytes()),
              "cannot load figure image data line: illegal value 4 in block");
}

TEST(ImageShapesBlocks, ofAFixedLineOfVersion2ReadLikeVersion1)
{
    auto const read = loaded<ImageDataFixedLine>(typed(6).block(2, Payload().v(1, 2).v(3, 4)).block(2, line()));
    EXPECT_EQ(read.getStart(), BaVec2d<double>(1, 2));
    EXPECT_EQ(read.getLineStyle(), dashedLine());
}

TEST(ImageShapesBlocks, ofAnEllipseOfVersion1AreWhole)
{
    ImageDataEllipse const read =
        loaded(typed(2).block(1, Payload().v(1, 2).v(3, 4)), arc(ImageDataEllipse({9, 9}, {9, 9})));
    EXPECT_EQ(read.getCenter(), BaVec2d<double>(1, 2));
    EXPECT_EQ(read.getRadii(), BaVec2d<double>(3, 4));
    EXPECT_EQ(read.getSegment(), BaVec2d<double>(0, 2 * std::numbers::pi));
    EXPECT_EQ(read.getAngle(), 0.0);
}

TEST(ImageShapesBlocks, ofAnEllipseOfVersions2And3HaveASegmentAndNoAngle)
{
    Payload const payload = Payload().v(1, 2).v(3, 4).v(0.5, 1.5);
    for (unsigned int version : {2U, 3U}) {
        BlockCrafter crafter = typed(2);
        crafter.block(version, payload);
        if (version == 3)
            crafter.block(1, Payload().v(8, 8).d(8)); // a rotation
        ImageDataEllipse const read = loaded(crafter, arc(ImageDataEllipse({9, 9}, {9, 9})));
        EXPECT_EQ(read.getSegment(), BaVec2d<double>(0.5, 1.5));
        EXPECT_EQ(read.getAngle(), 0.0);
    }
    ImageDataEllipse ellipse;
    EXPECT_NE(loadError(ellipse, typed(2).block(3, payload).bytes()), "nothing thrown");
}

TEST(ImageShapesBlocks, ofAFixedEllipseOfVersion2EndWithARotation)
{
    Payload const payload = Payload().v(1, 2).v(3, 4).v(0.5, 1.5).d(0.25);
    for (unsigned int version : {1U, 2U}) {
        BlockCrafter crafter = typed(7);
        crafter.block(version, payload).block(2, line()).block(1, fill());
        ImageDataFixedEllipse ellipse;
        if (version == 2) {
            EXPECT_NE(loadError(ellipse, crafter.bytes()), "nothing thrown");
            crafter.block(1, Payload().v(8, 8).d(8));
        }
        EXPECT_EQ(savedForm(loaded<ImageDataFixedEllipse>(crafter)), savedForm(fixedArc())) << version;
    }
}

TEST(ImageShapesBlocks, ofAFixedTextOfVersion1AreBlack)
{
    ImageDataFixedText const read = loaded(typed(8).block(1, Payload().v(1, 2).s("ab")).block(1, font()), fixedText());
    EXPECT_EQ(read.getColor(), Color(0, 0, 0));
    EXPECT_EQ(read.getText(), "ab");
    EXPECT_EQ(read.getFont(), Font("Serif", 8.0, 1));
}

TEST(ImageShapesBlocks, ofAPolygonOfVersion1AreClosed)
{
    ImageDataPolygon const read = loaded(typed(5).block(1, Payload().v(1, 2).u(3).v(0, 0).v(4, 0).v(0, 2)),
                                         opened(ImageDataPolygon({9, 9}, Polygon2d())));
    EXPECT_TRUE(read.getClosed());
    EXPECT_EQ(read.getPolygon(), triangle());
}

TEST(ImageShapesBlocks, ofAFixedPolygonOfVersion1HaveTheFlagAlready)
{
    BlockCrafter crafter = typed(9);
    crafter.block(1, polygonPayload()).block(2, line()).block(1, fill());
    EXPECT_EQ(savedForm(loaded<ImageDataFixedPolygon>(crafter)), savedForm(fixedTriangle()));
}

TEST(ImageShapesBlocks, believeNoCount)
{
    ImageDataPolygon polygon;
    ImageDataFixedPolygon fixedPolygon;
    ImageDataFixedGrid grid;
    ImageDataText text;
    for (unsigned int count : {4U, 4294967295U}) {
        Payload const points = Payload().v(1, 2).u(count).v(0, 0).v(4, 0).v(0, 2).b(true);
        Payload const lines = Payload().u(count).v(1, 2).v(3, 4);
        EXPECT_NE(loadError(polygon, typed(5).block(2, points).bytes()), "nothing thrown");
        EXPECT_NE(loadError(fixedPolygon, typed(9).block(2, points).bytes()), "nothing thrown");
        EXPECT_NE(loadError(grid, typed(10).block(1, lines).bytes()), "nothing thrown");
        EXPECT_NE(loadError(text, typed(3).block(1, Payload().v(1, 2).u(count)).bytes()), "nothing thrown");
    }
}

RC_GTEST_PROP(ImageShapesInBlocks, areKept, ())
{
    using namespace Generated;
    auto const font = [] { return Font(*anyText(), *anyLength(), *rc::gen::inRange(0U, 128U)); };
    ImageDataFixedEllipse ellipse(*anyPoint(), *anyPoint(), *anyLineStyle(), *anyFillStyle());
    ellipse.setSegment(*anyPoint());
    ellipse.setAngle(*anyDouble());
    ImageDataFixedText const text(*anyPoint(), font(), *anyColor(), *anyText());
    Polygon2d const points(*rc::gen::container<std::vector<BaVec2d<double>>>(anyPoint()), true);
    ImageDataFixedPolygon polygon(*anyPoint(), points, *anyLineStyle(), *anyFillStyle());
    polygon.setClosed(*rc::gen::arbitrary<bool>());
    ImageDataFixedGrid const grid(
        *rc::gen::container<std::vector<ImageDataFixedGrid::Line>>(rc::gen::pair(anyPoint(), anyPoint())),
        *anyLineStyle());

    RC_ASSERT(savedForm(throughBlock(ellipse)) == savedForm(ellipse));
    RC_ASSERT(savedForm(throughBlock(text)) == savedForm(text));
    RC_ASSERT(throughBlock(polygon).getPolygon() == points);
    RC_ASSERT(savedForm(throughBlock(polygon)) == savedForm(polygon));
    RC_ASSERT(throughBlock(grid).getLines() == grid.getLines());
    RC_ASSERT(savedForm(throughBlock(grid)) == savedForm(grid));
}

} // namespace
} // namespace Zem::Fig2
