// From points of space to pixels of a picture, and the stream form of it.
#include <BlockCrafter.h>
#include <ElementForms.h>
#include <ZemCalibration.h>
#include <ZemFig2Transformation.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Point = BaVec2d<double>;

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

Cal::InternalOrientation orientation()
{
    Cal::InternalOrientation made;
    made.setImageDistance({1000, 1000});
    made.setPrincipalPoint({500, 400});
    return made;
}

Cal::Camera camera()
{
    Cal::Camera made(nullptr);
    made.setOrientation(orientation());
    made.setImageSize(1000, 800);
    return made;
}

Zem::Transformation const MOTION({0, 0, 100}, {0, 0, 0}, 1.0); ///< the camera stands 100 in front of the origin
FG::CoordinateTransformation const BINNED({100, 50}, {0.5, 0.25});

/// Ten pixels for one unit in the plane of the origin, which is seen at 500,400.
CameraTransformation plain()
{
    return {camera(), MOTION};
}

std::optional<Point> imageOf(Transformation const &transformation, BaVec3d<double> const &point)
{
    Point image;
    return transformation.computeImagePoint(point, &image) ? std::optional(image) : std::nullopt;
}

std::string blocks(Transformation const &transformation)
{
    return Support::streamOf([&](IO::OutStream &stream) { Transformation::saveStream(&stream, &transformation); });
}

std::unique_ptr<Transformation> loaded(std::string const &bytes)
{
    std::unique_ptr<Transformation> transformation;
    Support::readFrom(bytes, [&](IO::InStream &stream) { transformation.reset(Transformation::loadStream(&stream)); });
    return transformation;
}

std::string refusal(std::string const &bytes)
{
    return Support::thrownText<IO::StreamException>([&] { loaded(bytes); });
}

TEST(CameraTransformation, atFirstGivesNoPointAnImage)
{
    EXPECT_EQ(CameraTransformation().getType(), Transformation::TYPE_CAMERA);
    EXPECT_FALSE(imageOf(CameraTransformation(), {0, 0, 1}));
    EXPECT_EQ(CameraTransformation().getCoordinateTransformation(), FG::CoordinateTransformation());
}

TEST(CameraTransformation, projectsThroughItsCamera)
{
    EXPECT_EQ(imageOf(plain(), {1, 2, 0}), Point(510, 420));
    EXPECT_EQ(plain().getTransformation().getTranslation(), MOTION.getTranslation());
}

TEST(CameraTransformation, endsInTheReducedFrame)
{
    EXPECT_EQ(imageOf(CameraTransformation(camera(), MOTION, BINNED), {1, 2, 0}), Point(205, 92.5));
}

TEST(CameraTransformation, letsAVectorLeaveTheFrame)
{
    EXPECT_EQ(imageOf(plain(), {100, 0, 0}), Point(1500, 400));
    EXPECT_EQ(imageOf(plain(), {0, -100, 0}), Point(500, -600));
}

TEST(CameraTransformation, endsTenPictureSizesFromTheCornerOfTheFrame)
{
    Cal::InternalOrientation cornered = orientation();
    cornered.setPrincipalPoint({0, 0});
    Cal::Camera atCorner = camera();
    atCorner.setOrientation(cornered);
    CameraTransformation const transformation(atCorner, MOTION);

    // The larger side is 1000: 10000 pixels, 6000 along and 8000 across.
    EXPECT_EQ(imageOf(transformation, {1000, 0, 0}), Point(10000, 0));
    EXPECT_EQ(imageOf(transformation, {-600, 800, 0}), Point(-6000, 8000));
    EXPECT_FALSE(imageOf(transformation, {1000.001, 0, 0}));
    EXPECT_FALSE(imageOf(transformation, {-600, 800.001, 0}));
}

TEST(CameraTransformation, endsTenTimesTheLargerSideAway)
{
    Cal::Camera upright = camera();
    upright.setImageSize(800, 1000);
    CameraTransformation const transformation(upright, MOTION);

    // 9980,400 is nearer than 10000, though farther than 8000.
    EXPECT_EQ(imageOf(transformation, {948, 0, 0}), Point(9980, 400));
    EXPECT_FALSE(imageOf(transformation, {950, 0, 0}));
}

TEST(CameraTransformation, measuresTheTenPictureSizesInTheFullFrame)
{
    // 9990,400 and 10000,400: the former nearer than 10000, the latter farther.
    CameraTransformation const transformation(camera(), MOTION, FG::CoordinateTransformation({0, 0}, {100, 100}));

    EXPECT_EQ(imageOf(transformation, {949, 0, 0}), Point(999000, 40000));
    EXPECT_FALSE(imageOf(transformation, {950, 0, 0}));
}

TEST(CameraTransformation, givesNoImageBehindTheCameraOrToNumbersThatAreNone)
{
    EXPECT_FALSE(imageOf(plain(), {0, 0, -100}));
    EXPECT_FALSE(imageOf(plain(), {0, 0, -101}));
    for (double none : {NOT_A_NUMBER, INFINITE, -INFINITE})
        EXPECT_FALSE(imageOf(plain(), {none, 0, 0}));
    EXPECT_FALSE(imageOf(CameraTransformation(camera(), MOTION, FG::CoordinateTransformation({0, 0}, {INFINITE, 1})),
                         {1, 2, 0}));
}

TEST(CameraTransformation, projectsTwoPointsOnlyTogether)
{
    CameraTransformation const transformation = plain();
    Point image1;
    Point image2;

    EXPECT_TRUE(transformation.computeImagePoints({0, 0, 0}, {1, 2, 0}, &image1, &image2));
    EXPECT_EQ(image1, Point(500, 400));
    EXPECT_EQ(image2, Point(510, 420));
    EXPECT_FALSE(transformation.computeImagePoints({0, 0, -100}, {1, 2, 0}, &image1, &image2));
    EXPECT_FALSE(transformation.computeImagePoints({0, 0, 0}, {1, 2, -100}, &image1, &image2));
}

TEST(CameraTransformation, takesTheCameraWithoutItsCalibration)
{
    Cal::Calibration calibration(orientation(), 1000, 800);
    CameraTransformation const transformation(Cal::Camera(&calibration), MOTION, BINNED);

    std::unique_ptr<CameraTransformation> const copy(transformation.copy());

    EXPECT_EQ(transformation.getCamera().getCalibration(), nullptr);
    EXPECT_EQ(imageOf(*copy, {1, 2, 0}), Point(205, 92.5));
    EXPECT_EQ(blocks(*copy), blocks(transformation));
}

TEST(ScaledImageTransformation, atFirstGivesNoPointAnImage)
{
    ScaledImageTransformation empty;
    Point image1;
    Point image2;

    EXPECT_EQ(empty.getType(), Transformation::TYPE_SCALED_IMAGE);
    EXPECT_FALSE(imageOf(empty, {0, 0, 1}));
    EXPECT_FALSE(empty.computeImagePoints({0, 0, 1}, {0, 0, 1}, &image1, &image2));
    EXPECT_EQ(empty.getTransformation().applyTo({1, 2, 3}), BaVec3d<double>(1, 2, 3));
    std::unique_ptr<Transformation> const copy(empty.copy());
    EXPECT_FALSE(imageOf(*copy, {0, 0, 1}));
}

TEST(ScaledImageTransformation, multipliesWhatIsWithin)
{
    CameraTransformation const inner = plain();
    ScaledImageTransformation const scaled(&inner, 0.5);
    Point image1;
    Point image2;

    EXPECT_EQ(imageOf(scaled, {1, 2, 0}), Point(255, 210));
    EXPECT_TRUE(scaled.computeImagePoints({0, 0, 0}, {1, 2, 0}, &image1, &image2));
    EXPECT_EQ(image1, Point(250, 200));
    EXPECT_EQ(image2, Point(255, 210));
    EXPECT_FALSE(imageOf(scaled, {0, 0, -100}));
    EXPECT_FALSE(scaled.computeImagePoints({0, 0, 0}, {0, 0, -100}, &image1, &image2));
}

TEST(ScaledImageTransformation, ofAnotherMultipliesBothScales)
{
    CameraTransformation const innermost = plain();
    ScaledImageTransformation const inner(&innermost, 2);
    ScaledImageTransformation outer(&inner, 3);

    EXPECT_EQ(imageOf(outer, {1, 2, 0}), Point(3060, 2520));
    EXPECT_EQ(outer.getTransformation().getScale(), 6.0);
    EXPECT_EQ(outer.getTransformation().getTranslation(), BaVec3d<double>(0, 0, 100));
}

TEST(ScaledImageTransformation, givesNoImageByAScaleThatIsNone)
{
    CameraTransformation const inner = plain();
    Point image1;
    Point image2;
    for (double scale : {NOT_A_NUMBER, INFINITE}) {
        ScaledImageTransformation const scaled(&inner, scale);
        EXPECT_FALSE(imageOf(scaled, {1, 2, 0}));
        EXPECT_FALSE(scaled.computeImagePoints({1, 2, 0}, {3, 4, 0}, &image1, &image2));
    }

    // The origin is seen at 500,400, the other point far away; either alone is enough for a refusal.
    ScaledImageTransformation const large(&inner, std::numeric_limits<double>::max() / 1000);
    EXPECT_TRUE(large.computeImagePoints({0, 0, 0}, {0, 0, 0}, &image1, &image2));
    EXPECT_FALSE(large.computeImagePoints({0, 0, 0}, {100, 0, 0}, &image1, &image2));
    EXPECT_FALSE(large.computeImagePoints({100, 0, 0}, {0, 0, 0}, &image1, &image2));
}

TEST(ScaledImageTransformation, keepsACopyOfWhatItIsGiven)
{
    auto inner = std::make_unique<CameraTransformation>(plain());
    auto scaled = std::make_unique<ScaledImageTransformation>(inner.get(), 0.5);
    inner.reset();
    std::unique_ptr<Transformation> const copy(scaled->copy());
    ScaledImageTransformation const copied(*scaled);
    scaled.reset();

    EXPECT_EQ(imageOf(*copy, {1, 2, 0}), Point(255, 210));
    EXPECT_EQ(imageOf(copied, {1, 2, 0}), Point(255, 210));
}

TEST(ScaledImageTransformation, sharesWhatIsAssigned)
{
    CameraTransformation const inner = plain();
    ScaledImageTransformation assigned;
    {
        ScaledImageTransformation const scaled(&inner, 0.5);
        assigned = scaled;
        EXPECT_EQ(imageOf(scaled, {1, 2, 0}), imageOf(assigned, {1, 2, 0}));
    }
    EXPECT_EQ(imageOf(assigned, {1, 2, 0}), Point(255, 210));
}

TEST(ScaledImageTransformation, thatLoadsLeavesTheOneItWasSharedWith)
{
    CameraTransformation const inner = plain();
    ScaledImageTransformation const scaled(&inner, 0.5);
    ScaledImageTransformation assigned;
    assigned = scaled;
    std::string const empty =
        Support::streamOf([](IO::OutStream &stream) { ScaledImageTransformation().save(&stream); });

    Support::readFrom(empty, [&](IO::InStream &stream) { assigned.load(&stream); });

    EXPECT_FALSE(imageOf(assigned, {1, 2, 0}));
    EXPECT_EQ(imageOf(scaled, {1, 2, 0}), Point(255, 210));
}

Payload cameraPayload()
{
    return Payload().d(0.5).i(3).i(-4).u(1000).u(800).d(1).d(2).d(3).d(0.1).d(0.2).d(0.3);
}

CameraTransformation fullTransformation()
{
    Cal::Camera full = camera();
    full.setR0(0.5);
    full.setHPOffset(3, -4);
    return {full, Zem::Transformation({1, 2, 3}, {0.1, 0.2, 0.3}, 7.0), BINNED};
}

/// The blocks of fullTransformation() in an older or newer version, without its last one.
BlockCrafter crafted(unsigned int version)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().u(0)).block(1, Payload().b(false)).block(version, cameraPayload());
    crafter.add([](IO::OutStream &stream) { orientation().save(&stream); });
    return crafter;
}

TEST(TransformationBlocks, ofACamera)
{
    BlockCrafter expected = crafted(4);
    expected.add([](IO::OutStream &stream) { BINNED.writeBlock(&stream); });

    EXPECT_EQ(blocks(fullTransformation()), expected.bytes());
    EXPECT_EQ(Support::blocksOf(expected.bytes()), "1:4 1:1 4:72 1:72 1:32 ");
}

TEST(TransformationBlocks, ofAScaledImage)
{
    CameraTransformation const inner = plain();
    ScaledImageTransformation const scaled(&inner, 0.5);
    BlockCrafter expected;
    expected.block(1, Payload().u(1)).block(1, Payload().b(false)).block(1, Payload().b(true).d(0.5));
    expected.add([&](IO::OutStream &stream) { Transformation::saveStream(&stream, &inner); });

    EXPECT_EQ(blocks(scaled), expected.bytes());
    EXPECT_EQ(blocks(ScaledImageTransformation()), BlockCrafter()
                                                       .block(1, Payload().u(1))
                                                       .block(1, Payload().b(false))
                                                       .block(1, Payload().b(false).d(INFINITE))
                                                       .bytes());
}

TEST(TransformationBlocks, areReadAsTheyWereWritten)
{
    CameraTransformation const inner = fullTransformation();
    ScaledImageTransformation const scaled(&inner, 2.5);
    ScaledImageTransformation const empty(nullptr, 3);
    for (Transformation const *written :
         {static_cast<Transformation const *>(&inner), static_cast<Transformation const *>(&scaled),
          static_cast<Transformation const *>(&empty)}) {
        std::unique_ptr<Transformation> const read = loaded(blocks(*written));

        EXPECT_EQ(read->getType(), written->getType());
        EXPECT_EQ(blocks(*read), blocks(*written));
    }
}

TEST(TransformationBlocks, readTheMotionOfACameraWithoutAScale)
{
    std::unique_ptr<Transformation> const read = loaded(blocks(fullTransformation()));

    EXPECT_EQ(read->getTransformation().getTranslation(), BaVec3d<double>(1, 2, 3));
    EXPECT_EQ(read->getTransformation().getAngles(), BaVec3d<double>(0.1, 0.2, 0.3));
    EXPECT_EQ(read->getTransformation().getScale(), 1.0);
}

TEST(TransformationBlocks, ofOlderCamerasHaveNoReducedFrame)
{
    for (unsigned int version : {1U, 2U, 3U}) {
        std::string const bytes = crafted(version).block(9, Payload().u(77)).bytes();
        CameraTransformation read;
        unsigned int next = 0;
        Support::readFrom(bytes, [&](IO::InStream &stream) {
            std::unique_ptr<Transformation> const base(Transformation::loadStream(&stream));
            read = dynamic_cast<CameraTransformation &>(*base);
            stream.openBlock();
            stream.readUInt(&next);
        });

        EXPECT_EQ(next, 77U);
        EXPECT_EQ(read.getCoordinateTransformation(), FG::CoordinateTransformation());
        EXPECT_EQ(read.getCamera().getR0(), 0.5);
        EXPECT_EQ(read.getCamera().getHPXOffset(), 3);
        EXPECT_EQ(read.getCamera().getHPYOffset(), -4);
        EXPECT_EQ(read.getCamera().getImageWidth(), 1000U);
        EXPECT_EQ(read.getCamera().getImageHeight(), 800U);
        EXPECT_EQ(read.getCamera().getOrientation(), orientation());
    }
}

TEST(TransformationBlocks, ofAReaderDoNotKeepItsFormerReducedFrame)
{
    std::string const withoutType = BlockCrafter()
                                        .block(1, Payload().b(true))
                                        .block(3, cameraPayload())
                                        .add([](IO::OutStream &stream) { orientation().save(&stream); })
                                        .bytes();
    CameraTransformation read(camera(), MOTION, BINNED);

    Support::readFrom(withoutType, [&](IO::InStream &stream) { read.load(&stream); });

    EXPECT_EQ(read.getCoordinateTransformation(), FG::CoordinateTransformation());
}

TEST(TransformationBlocks, ofAnUnknownTypeAreRefused)
{
    for (unsigned int type : {2U, 3U, 4294967295U}) {
        EXPECT_EQ(refusal(BlockCrafter().block(1, Payload().u(type)).bytes()), "unhandled point transformation type");
    }
}

TEST(TransformationBlocks, ofUnknownVersionsAreRefused)
{
    BlockCrafter typeBlock;
    typeBlock.block(2, Payload().u(0));
    BlockCrafter baseBlock;
    baseBlock.block(1, Payload().u(0)).block(2, Payload().b(false));
    BlockCrafter scaledBlock;
    scaledBlock.block(1, Payload().u(1)).block(1, Payload().b(false)).block(2, Payload().b(false).d(1));
    for (std::string const &bytes :
         {typeBlock.bytes(), baseBlock.bytes(), crafted(5).bytes(), crafted(0).bytes(), scaledBlock.bytes()})
        EXPECT_EQ(refusal(bytes), "wrong block version");
}

TEST(TransformationBlocks, areRefusedAfterEveryTruncationAndChangeNothing)
{
    CameraTransformation const inner = fullTransformation();
    ScaledImageTransformation const scaled(&inner, 2.5);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { scaled.save(&stream); });
    CameraTransformation const before = plain();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        ScaledImageTransformation read(&before, 0.5);
        EXPECT_THROW(Support::readFrom(bytes.substr(0, length), [&](IO::InStream &stream) { read.load(&stream); }),
                     IO::StreamException)
            << length;
        EXPECT_EQ(imageOf(read, {1, 2, 0}), Point(255, 210));
    }
}

TEST(TransformationBlocks, ofADamagedCameraChangeNothing)
{
    std::string const bytes = Support::streamOf([](IO::OutStream &stream) { fullTransformation().save(&stream); });
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        CameraTransformation read = plain();
        EXPECT_THROW(Support::readFrom(bytes.substr(0, length), [&](IO::InStream &stream) { read.load(&stream); }),
                     IO::StreamException)
            << length;
        EXPECT_EQ(blocks(read), blocks(plain()));
    }
}

TEST(TransformationBlocks, ofNumbersThatAreNoneGiveNoPointAnImage)
{
    for (double none : {NOT_A_NUMBER, INFINITE, 0.0}) {
        BlockCrafter crafter;
        crafter.block(1, Payload().u(0)).block(1, Payload().b(false));
        crafter.block(3, Payload()
                             .d(none)
                             .i(-2147483647)
                             .i(2147483647)
                             .u(4294967295U)
                             .u(4294967295U)
                             .d(none)
                             .d(2)
                             .d(3)
                             .d(none)
                             .d(0)
                             .d(0));
        crafter.add([](IO::OutStream &stream) { orientation().save(&stream); });

        EXPECT_FALSE(imageOf(*loaded(crafter.bytes()), {1, 2, 0}));
    }
}

/// Scaled pictures of scaled pictures; without a transformation in the innermost.
std::string nested(unsigned int depth)
{
    std::string bytes = BlockCrafter().bytes();
    std::size_t const header = bytes.size();
    auto const level = [header](bool hasInner) {
        return BlockCrafter()
            .block(1, Payload().u(1))
            .block(1, Payload().b(false))
            .block(1, Payload().b(hasInner).d(1))
            .bytes()
            .substr(header);
    };
    std::string const outer = level(true);
    for (unsigned int i = 1; i < depth; ++i)
        bytes += outer;
    return bytes + level(false);
}

TEST(TransformationBlocks, nestedTooDeeplyAreRefused)
{
    EXPECT_EQ(blocks(*loaded(nested(256))), nested(256));
    EXPECT_EQ(refusal(nested(257)), "scaled pictures nested too deeply");
    EXPECT_EQ(refusal(nested(100000)), "scaled pictures nested too deeply");
    // A refusal does not count for what is read next.
    EXPECT_EQ(blocks(*loaded(nested(256))), nested(256));
}

} // namespace
} // namespace Zem::Fig2
