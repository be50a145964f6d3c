// Picture data in blocks of all versions.
#include "image_shapes_fixture.h"

#include <BlockCrafter.h>
#include <ElementForms.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2Transformation.h>
#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Support::BlockCrafter;
using Support::Payload;

constexpr unsigned int NO_LABEL = 4294967295U;

template <class Record>
std::string savedForm(Record const &record)
{
    return Support::streamOf([&](IO::OutStream &stream) { record.save(&stream); });
}

template <class Record>
std::string loadError(Record &record, std::string const &bytes)
{
    return Support::thrownText<IO::StreamException>(
        [&] { Support::readFrom(bytes, [&](IO::InStream &stream) { record.load(&stream); }); });
}

template <class Record>
void expectLoads(Record &record, BlockCrafter const &crafter)
{
    EXPECT_EQ(loadError(record, crafter.bytes()), "nothing thrown");
}

/// A point marker at 1,2 and a fixed grid without lines.
BlockCrafter &addMarks(BlockCrafter &crafter)
{
    return crafter.block(2, Payload().u(0))
        .block(2, Payload().v(1, 2))
        .block(2, Payload().u(10))
        .block(1, Payload().u(0))
        .block(2, Payload().d(1).u(1).c(0, 0, 0, 255).u(1));
}

BlockCrafter &addLook(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) { unusualLook().save(&stream); });
}

/// The fields of an object's block up to a version.
Payload objectFields(unsigned int version)
{
    Payload payload = Payload().s("part").v(3, 4).u(2).u(0).u(10);
    if (version >= 2)
        payload.s("Bolt 1");
    if (version >= 3)
        payload.u(7);
    if (version >= 4)
        payload.b(true);
    if (version >= 5)
        payload.b(false);
    return payload;
}

BlockCrafter object(unsigned int version)
{
    Payload payload = objectFields(version);
    if (version >= 9)
        payload.b(false).b(true);
    BlockCrafter crafter;
    addMarks(crafter.block(version, payload));
    return version >= 8 ? addLook(crafter) : crafter;
}

TEST(ImageDataObjectBlocks, areTheObjectItsElementsItsLookAndItsTokens)
{
    ImageDataObject made("part");
    made.setConnectorPoint({3, 4});
    made.addElement(new ImageDataPointMarker({1, 2}));
    made.addElement(new ImageDataFixedGrid);
    made.setDisplayText("Bolt 1");
    made.setLabelTemplateType(LabelElementCreator::Element_t{7});
    made.setFiltered(true);
    made.setCanBeConnectorTarget(false);
    made.setVisualisation(unusualLook());
    // 4 + 4 for the id, 4 + 6 for the text, 28, and 4 for each element.
    EXPECT_EQ(objectFields(9).b(false).b(true).bytes().size(), 8U + 10 + 28 + 4 * 2);
    EXPECT_EQ(savedForm(made), object(9).bytes());

    ImageDataObject read("other");
    read.addElement(new ImageDataPointMarker);
    read.setTokenContainer(new TokenContainer);
    expectLoads(read, object(9));
    EXPECT_EQ(savedForm(read), object(9).bytes());
    EXPECT_EQ(read.getTokenContainer(), nullptr);
}

TEST(ImageDataObjectBlocks, ofVersions7And8HaveNoTokens)
{
    ImageDataObject read("");
    expectLoads(read, object(8));
    EXPECT_EQ(read.getTokenInterface(), nullptr);
    EXPECT_EQ(contentOf(read.getVisualisation()), contentOf(unusualLook()));

    expectLoads(read, object(7));
    EXPECT_EQ(read.getDisplayText(), "Bolt 1");
    EXPECT_EQ(static_cast<int>(read.getLabelTemplateType()), 7);
    EXPECT_TRUE(read.getFiltered());
    EXPECT_FALSE(read.getCanBeConnectorTarget());
    EXPECT_EQ(read.getElementEnd() - read.getElementBegin(), 2);
    // No look is stored, and yet it has one of its own.
    EXPECT_FALSE(read.getVisualisation().isNull());
    EXPECT_EQ(read.getVisualisation(), ImageDataVisualisation(false));
}

/// An object of an older version with an integer "a" of 5 behind it, in the form of a registry or in the older one.
BlockCrafter objectWithOlderTokens(unsigned int version)
{
    BlockCrafter crafter = object(version);
    if (version == 6)
        return crafter.block(1, Payload().u(1).s("a"))
            .block(6, Payload().u(0).s("").s("").i(-1).s("").s("").s(""))
            .block(1, Payload().i(5));
    return crafter.block(1, Payload().u(1).s("a").u(1)).block(1, Payload().i(5));
}

TEST(ImageDataObjectBlocks, ofOlderVersionsTakeTheirTokensFromEitherForm)
{
    for (unsigned int version = 1; version <= 6; ++version) {
        ImageDataObject read("other");
        expectLoads(read, objectWithOlderTokens(version));
        ASSERT_NE(read.getTokenContainer(), nullptr) << version;
        EXPECT_EQ(read.getTokenInterface(), read.getTokenContainer());
        EXPECT_EQ(read.getTokenContainer()->getValue("a", IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
                  Value(5));
    }
}

TEST(ImageDataObjectBlocks, ofOlderVersionsLackTheLaterFields)
{
    for (unsigned int version = 1; version <= 6; ++version) {
        ImageDataObject read("other");
        read.setDisplayText("other");
        read.setFiltered(true);
        read.setCanBeConnectorTarget(false);
        expectLoads(read, objectWithOlderTokens(version));
        EXPECT_EQ(read.getId(), "part");
        EXPECT_EQ(read.getConnectorPoint(), (BaVec2d<double>(3, 4)));
        EXPECT_EQ(read.getElementEnd() - read.getElementBegin(), 2);
        EXPECT_EQ(read.getDisplayText(), version >= 2 ? "Bolt 1" : "");
        EXPECT_EQ(static_cast<int>(read.getLabelTemplateType()), version >= 3 ? 7 : -1);
        EXPECT_EQ(read.getFiltered(), version >= 4);
        EXPECT_EQ(read.getCanBeConnectorTarget(), version < 5);
        EXPECT_EQ(read.getVisualisation(), ImageDataVisualisation(false));
        EXPECT_FALSE(read.getVisualisation().isNull());
    }
}

TEST(ImageDataObjectBlocks, ofOlderVersionsAreRefusedWithoutTheirTokens)
{
    for (unsigned int version : {1U, 5U, 6U}) {
        ImageDataObject read("as it was");
        EXPECT_NE(loadError(read, object(version).bytes()), "nothing thrown");
        EXPECT_EQ(read.getId(), "as it was");
    }
}

TEST(ImageDataObjectBlocks, keepWhereTheValuesComeFrom)
{
    TokenContainer elsewhere;
    ImageDataObject made("part");
    auto *container = new TokenContainer;
    container->setValue({TokenInfo::TYPE_STRING, "a", "a"}, Value(QString("value")));
    made.setTokenContainer(container);
    made.setTokenInterface(container);
    ImageDataObject read("");
    ASSERT_EQ(loadError(read, savedForm(made)), "nothing thrown");
    ASSERT_NE(read.getTokenContainer(), nullptr);
    EXPECT_EQ(read.getTokenInterface(), read.getTokenContainer());
    EXPECT_EQ(
        read.getTokenInterface()->getValue("a", IndexIdentifier::NO_INDEX, StageIdentifier()).toString("", nullptr),
        "value");

    made.setTokenInterface(&elsewhere);
    ASSERT_EQ(loadError(read, savedForm(made)), "nothing thrown");
    EXPECT_NE(read.getTokenContainer(), nullptr);
    EXPECT_EQ(read.getTokenInterface(), nullptr);
}

TEST(ImageDataObjectBlocks, holdNoKindOfLabelAsTheLargestNumber)
{
    Payload const payload = Payload().s("").v(0, 0).u(0).s("").u(NO_LABEL).b(false).b(true).b(false).b(true);
    BlockCrafter crafter;
    crafter.block(9, payload).add([](IO::OutStream &stream) { ImageDataVisualisation::NONE.save(&stream); });
    EXPECT_EQ(savedForm(ImageDataObject("")), crafter.bytes());
    ImageDataObject read("");
    read.setLabelTemplateType(LabelElementCreator::Element_t{3});
    expectLoads(read, crafter);
    EXPECT_EQ(static_cast<int>(read.getLabelTemplateType()), -1);
}

TEST(ImageDataObjectBlocks, changeNothingWhenTheyAreRefused)
{
    ImageDataObject read("as it was");
    read.addElement(new ImageDataPointMarker({8, 9}));
    std::string const before = savedForm(read);
    EXPECT_EQ(loadError(read, BlockCrafter().block(10, objectFields(9)).bytes()), "wrong block version");
    EXPECT_EQ(loadError(read, BlockCrafter().block(9, Payload().s("").v(0, 0).u(1).u(11)).bytes()),
              "illegal value 11 in block");
    EXPECT_NE(loadError(read, BlockCrafter().block(9, Payload().s("").v(0, 0).u(4294967295U)).bytes()),
              "nothing thrown");
    std::string const form = object(9).bytes();
    for (std::size_t length = BlockCrafter().bytes().size(); length < form.size(); ++length)
        EXPECT_NE(loadError(read, form.substr(0, length)), "nothing thrown") << length;
    EXPECT_EQ(savedForm(read), before);
}

Legend2::Legend scaleOfForces()
{
    Legend2::Legend legend(uForce);
    legend.setUnitName("mine");
    return legend;
}

Legend2::Data someData()
{
    Legend2::Data data;
    data.setDynamicMaximum(7);
    return data;
}

Legend2::HistogramData someHistogram()
{
    Legend2::HistogramData histogram;
    histogram.addHistogram({{1.5, 3U}});
    return histogram;
}

BlockCrafter &addEmptyObject(BlockCrafter &crafter, char const *id)
{
    return crafter.add([id](IO::OutStream &stream) { ImageDataObject(id).save(&stream); });
}

/// Two objects.
BlockCrafter head(unsigned int version)
{
    BlockCrafter crafter;
    crafter.block(version, Payload().u(2).s("a").s("b"));
    addEmptyObject(crafter, "a");
    return addEmptyObject(crafter, "b");
}

Cal::InternalOrientation orientation()
{
    Cal::InternalOrientation made;
    made.setImageDistance({1000, 1000});
    return made;
}

Payload &vec(Payload &payload, double x, double y, double z)
{
    return payload.d(x).d(y).d(z);
}

/// R0 1, no offset, 1000 x 800 pixels, 100 in front of the origin.
BlockCrafter &addCamera(BlockCrafter &crafter, unsigned int innerVersion)
{
    Payload payload = Payload().d(1).i(0).i(0).u(1000).u(800);
    if (innerVersion >= 2)
        payload.b(false);
    if (innerVersion >= 3)
        payload.b(false);
    vec(vec(payload, 0, 0, 100), 0, 0, 0);
    return crafter.add([](IO::OutStream &stream) { orientation().save(&stream); }).block(innerVersion, payload);
}

BlockCrafter &addMasks(BlockCrafter &crafter)
{
    return crafter.block(1, Payload().u(2)).block(1, Payload().i(1).s("one")).block(1, Payload().i(-2).s("two"));
}

BlockCrafter &addScale(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) {
        scaleOfForces().save(&stream);
        someData().save(&stream);
    });
}

BlockCrafter &addHistogram(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) { someHistogram().save(&stream); });
}

std::string imageOf(ImageData const &data, BaVec3d<double> const &point)
{
    BaVec2d<double> image;
    if (!data.getTransformation() || !data.getTransformation()->computeImagePoint(point, &image))
        return "none";
    return Support::text(image.x) + "," + Support::text(image.y);
}

/// What hasLegendData says, and then what it holds, as the copies tell.
bool hasScale(ImageData const &data, Legend2::HistogramData *histogram)
{
    Legend2::Legend legend;
    Legend2::Data scale;
    if (!data.getLegendData(&legend, &scale, histogram))
        return false;
    EXPECT_EQ(legend.getUnitName(), "mine");
    EXPECT_EQ(scale, someData());
    return true;
}

bool compatibilityModeOf(ImageData const &data)
{
    Legend2::Legend legend;
    Legend2::Data scale;
    EXPECT_TRUE(data.getLegendData(&legend, &scale));
    return legend.getV602CompatibilityMode();
}

BlockCrafter newest()
{
    BlockCrafter crafter = head(6);
    crafter.block(1, Payload().b(true).b(false).b(true)).add([](IO::OutStream &stream) {
        Cal::Camera camera(nullptr);
        camera.setOrientation(orientation());
        camera.setImageSize(1000, 800);
        CameraTransformation const transformation(camera, Zem::Transformation({0, 0, 100}, {0, 0, 0}, 1.0));
        Transformation::saveStream(&stream, &transformation);
    });
    addMasks(crafter).block(2, Payload().b(true).b(false));
    return addHistogram(addScale(crafter));
}

TEST(ImageDataBlocks, areTheObjectsTheTransformationTheMasksAndTheScale)
{
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation());
    camera.setImageSize(1000, 800);
    ImageData made(camera, Zem::Transformation({0, 0, 100}, {0, 0, 0}, 1.0));
    made.addObject(new ImageDataObject("b"));
    made.addObject(new ImageDataObject("a"));
    made.setHasCoordinateSystem(false);
    made.setCanDrawLegendColors(true);
    made.addPointMask({1, "one"});
    made.addPointMask({-2, "two"});
    made.setLegendData(scaleOfForces(), someData(), someHistogram());
    EXPECT_EQ(savedForm(made), newest().bytes());

    ImageData read;
    read.addObject(new ImageDataObject("gone"));
    expectLoads(read, newest());
    EXPECT_EQ(savedForm(read), newest().bytes());
    EXPECT_EQ(imageOf(read, {2, 3, 0}), "20,30");
}

TEST(ImageDataBlocks, areShortForNothing)
{
    BlockCrafter crafter;
    crafter.block(6, Payload().u(0))
        .block(1, Payload().b(false).b(true).b(false))
        .block(1, Payload().u(0))
        .block(2, Payload().b(false).b(false))
        .add([](IO::OutStream &stream) {
            Legend2::Legend(uLength).save(&stream);
            Legend2::Data().save(&stream);
            Legend2::HistogramData().save(&stream);
        });
    EXPECT_EQ(savedForm(ImageData()), crafter.bytes());
    ImageData read;
    expectLoads(read, newest());
    expectLoads(read, crafter);
    EXPECT_EQ(savedForm(read), crafter.bytes());
}

TEST(ImageDataBlocks, ofVersion1AreACameraAlone)
{
    ImageData read;
    read.setHasCoordinateSystem(false);
    BlockCrafter crafter = head(1);
    expectLoads(read, addCamera(crafter, 1));
    EXPECT_TRUE(read.objectExists("a"));
    EXPECT_EQ(imageOf(read, {2, 3, 0}), "20,30");
    EXPECT_TRUE(read.getHasCoordinateSystem());
    EXPECT_TRUE(read.getCanDrawLegendColors());
    EXPECT_TRUE(read.getPointMasks().empty());
    Legend2::HistogramData histogram;
    EXPECT_FALSE(hasScale(read, &histogram));
}

TEST(ImageDataBlocks, ofVersion2HaveMasks)
{
    ImageData read;
    BlockCrafter crafter = head(2);
    expectLoads(read, addMasks(addCamera(crafter, 1)));
    ASSERT_EQ(read.getPointMasks().size(), 2U);
    EXPECT_EQ(read.getPointMasks()[1], PointMask(-2, "two"));
}

TEST(ImageDataBlocks, ofVersion3HaveAScaleThatDoesNotCount)
{
    ImageData read;
    BlockCrafter crafter = head(3);
    expectLoads(read, addScale(addMasks(addCamera(crafter, 1))));
    Legend2::HistogramData histogram;
    EXPECT_FALSE(hasScale(read, &histogram));
}

TEST(ImageDataBlocks, areRefusedWithNewerPartsOfTheirOwn)
{
    auto const withParts = [](unsigned int transformation, unsigned int masks, unsigned int legend) {
        BlockCrafter crafter = head(6);
        crafter.block(transformation, Payload().b(false).b(true).b(false));
        crafter.block(masks, Payload().u(0)).block(legend, Payload().b(true).b(false));
        return addHistogram(addScale(crafter)).bytes();
    };
    ImageData read;
    EXPECT_EQ(loadError(read, withParts(1, 1, 2)), "nothing thrown");
    EXPECT_EQ(loadError(read, withParts(2, 1, 2)), "wrong block version");
    EXPECT_EQ(loadError(read, withParts(1, 2, 2)), "wrong block version");
    EXPECT_EQ(loadError(read, withParts(1, 1, 3)), "wrong block version");
}

TEST(ImageDataBlocks, ofEveryVersionEndWhereTheNextBegin)
{
    for (unsigned int version = 1; version <= 5; ++version) {
        SCOPED_TRACE(version);
        BlockCrafter crafter = head(version);
        if (version < 5)
            addCamera(crafter, 1);
        else
            crafter.block(1, Payload().b(false).b(true).b(false));
        if (version >= 2)
            addMasks(crafter);
        if (version >= 4)
            crafter.block(1, Payload().b(true));
        if (version >= 3)
            addScale(crafter);
        addEmptyObject(crafter, "behind");
        ImageDataObject behind("");
        auto const loadBoth = [&](IO::InStream &stream) {
            ImageData().load(&stream);
            behind.load(&stream);
        };
        Support::readFrom(crafter.bytes(), loadBoth);
        EXPECT_EQ(behind.getId(), "behind");
    }
}

TEST(ImageDataBlocks, ofVersion4SayMoreOfCameraAndScale)
{
    for (unsigned int innerVersion : {1U, 2U, 3U}) {
        ImageData read;
        BlockCrafter crafter = head(4);
        addMasks(addCamera(crafter, innerVersion)).block(1, Payload().b(true));
        expectLoads(read, addScale(crafter));
        EXPECT_EQ(imageOf(read, {2, 3, 0}), "20,30");
        EXPECT_EQ(read.getHasCoordinateSystem(), innerVersion < 2);
        EXPECT_EQ(read.getCanDrawLegendColors(), innerVersion < 3);
        Legend2::HistogramData histogram = someHistogram();
        EXPECT_TRUE(hasScale(read, &histogram));
        EXPECT_FALSE(histogram.isValid());
    }
}

TEST(ImageDataBlocks, ofVersion5HaveNoHistogram)
{
    ImageData read;
    BlockCrafter crafter = head(5);
    crafter.block(1, Payload().b(false).b(true).b(false));
    addMasks(crafter).block(1, Payload().b(true));
    expectLoads(read, addScale(crafter));
    EXPECT_EQ(imageOf(read, {2, 3, 0}), "none");
    Legend2::HistogramData histogram = someHistogram();
    EXPECT_TRUE(hasScale(read, &histogram));
    EXPECT_FALSE(histogram.isValid());
}

TEST(ImageDataBlocks, decideTheCompatibilityModeByTheirVersionAlone)
{
    for (bool stored : {false, true}) {
        ImageData read;
        BlockCrafter old = head(5);
        old.block(1, Payload().b(false).b(true).b(false));
        addMasks(old).block(2, Payload().b(true).b(stored));
        expectLoads(read, addScale(old));
        EXPECT_TRUE(compatibilityModeOf(read));

        BlockCrafter now = head(6);
        now.block(1, Payload().b(false).b(true).b(false));
        addMasks(now).block(2, Payload().b(true).b(stored));
        now.add([](IO::OutStream &stream) {
            Legend2::Legend legend(uLength);
            legend.setV602CompatibilityMode(true);
            legend.save(&stream);
            Legend2::Data().save(&stream);
        });
        expectLoads(read, addHistogram(now));
        EXPECT_FALSE(compatibilityModeOf(read));
    }
}

TEST(ImageDataBlocks, keepObjectsUnderTheIdsOfTheList)
{
    BlockCrafter crafter;
    crafter.block(6, Payload().u(2).s("a").s("a"));
    addEmptyObject(addEmptyObject(crafter, "x"), "y");
    crafter.block(1, Payload().b(false).b(true).b(false))
        .block(1, Payload().u(0))
        .block(2, Payload().b(false).b(false));
    addHistogram(addScale(crafter));
    ImageData read;
    expectLoads(read, crafter);
    ASSERT_TRUE(read.objectExists("a"));
    EXPECT_EQ(read.getObject("a")->getId(), "a");
    EXPECT_EQ(std::distance(read.getObjectBegin(), read.getObjectEnd()), 1);
    EXPECT_TRUE(ImageData(read).objectExists("a"));
}

TEST(ImageDataBlocks, changeNothingWhenTheyAreRefused)
{
    ImageData read;
    read.addObject(new ImageDataObject("as it was"));
    std::string const before = savedForm(read);
    EXPECT_EQ(loadError(read, head(7).bytes()), "wrong block version");
    EXPECT_EQ(loadError(read, head(0).bytes()), "wrong block version");
    EXPECT_NE(loadError(read, BlockCrafter().block(6, Payload().u(4294967295U)).bytes()), "nothing thrown");
    BlockCrafter newerCamera = head(4);
    EXPECT_EQ(loadError(read, addCamera(newerCamera, 4).bytes()), "wrong block version");
    BlockCrafter newerTransformation = head(6);
    EXPECT_EQ(loadError(read, newerTransformation.block(2, Payload().b(false).b(true).b(false)).bytes()),
              "wrong block version");
    std::string const form = newest().bytes();
    for (std::size_t length = BlockCrafter().bytes().size(); length < form.size(); ++length)
        EXPECT_NE(loadError(read, form.substr(0, length)), "nothing thrown") << length;
    EXPECT_EQ(savedForm(read), before);
}

} // namespace
} // namespace Zem::Fig2
