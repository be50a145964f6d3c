// Image elements in blocks of all versions, as texts and as parameters.
#include "crafted_element.h"
#include "image_element_fixture.h"
#include "image_fixture.h"
#include "measured_point.h"

#include <ZemFig2ImportInfo.h>

#include <ZemParse.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using Fixture::contentOf;
using Fixture::unusualLook;
using Support::BlockCrafter;
using Support::Payload;
using Point = BaVec2d<double>;

CoordinateSystem someAxes()
{
    CoordinateSystem axes;
    axes.setLength(7);
    return axes;
}

ImageConversion someConversion()
{
    ImageConversion conversion;
    conversion.setType(ImageConversion::TYPE_LIGHTEN);
    conversion.setMax(99);
    return conversion;
}

BlockCrafter &addSettings(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) {
        someAxes().save(&stream);
        someConversion().save(&stream);
    });
}

BlockCrafter &addLook(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) { unusualLook().save(&stream); });
}

/// The fields of an image's own block of a version.
Payload imageFields(unsigned int version)
{
    Payload payload;
    if (version < 9)
        payload.b(false).b(true).d(2.5).u(0).u(2).v(3, 4);
    if (version >= 4)
        payload.u(2);
    if (version >= 10)
        payload.c(1, 2, 3, 4).b(true);
    if (version >= 2 && version <= 5)
        payload.u(2).s("m1").s("m2");
    if (version >= 3 && version <= 5)
        payload.u(1).s("f1");
    return payload;
}

/// An image of a version in an element of a version that goes with it.
BlockCrafter crafted(unsigned int version, unsigned int elementVersion)
{
    CraftedElement element;
    element.pivotX = 2;
    element.pivotY = 0;
    BlockCrafter crafter = element.blocks(elementVersion);
    if (elementVersion >= 8)
        crafter.block(1, Payload().b(true).d(0.5).u(1).u(1).v(8, 9));
    crafter.block(version, imageFields(version)).block(3, Payload().s("camera"));
    addSettings(crafter);
    if (version >= 5)
        crafter.block(1, Payload().u(2).s("").s("part"));
    if (version >= 5)
        crafter.add([](IO::OutStream &stream) { ImageDataVisualisation::NONE.save(&stream); });
    addLook(crafter);
    if (version >= 8)
        crafter.block(1, Payload().u(1).u(1).s("1 1 0 "));
    return crafter;
}

std::string loadError(Image &image, std::string const &bytes)
{
    return Support::thrownText<IO::StreamException>([&] { Support::loadBlocks(image, bytes); });
}

TEST(ImageBlocks, areTheElementTheImageItsSettingsAndItsLooks)
{
    std::string const bytes = crafted(10, 10).bytes();
    Image image;
    ASSERT_EQ(loadError(image, bytes), "nothing thrown");
    EXPECT_EQ(image.getToken(), "camera");
    EXPECT_EQ(image.getOverlayMode(), ImageBase::OVERLAY_ONLY);
    EXPECT_EQ(image.getImageBackgroundColor(), Color(1, 2, 3, 4));
    EXPECT_TRUE(image.getUseImageBackgroundColor());
    EXPECT_EQ(image.getCoordinateSystem(), someAxes());
    EXPECT_EQ(image.getImageConversion(), someConversion());
    ASSERT_EQ(image.getVisualisations().size(), 2U);
    EXPECT_TRUE(image.getVisualisation("any").isNull());
    EXPECT_EQ(contentOf(image.getVisualisation("part")), contentOf(unusualLook()));
    EXPECT_EQ(image.getScaling(), 0.5);
    EXPECT_FALSE(image.isValid());
    // 4 + 4 + 1, as ever.
    EXPECT_EQ(imageFields(10).bytes().size(), 9U);
    // A text of 6 letters takes 4 + 6, its type 4, the count 4.
    EXPECT_NE(Support::blocksOf(Support::blockForm(image)).find("1:18 "), std::string::npos);

    Image again;
    ASSERT_EQ(loadError(again, Support::blockForm(image)), "nothing thrown");
    EXPECT_EQ(Support::blocksOf(Support::blockForm(again)), Support::blocksOf(bytes));
    EXPECT_EQ(Support::parameterForm(again), Support::parameterForm(image));
}

TEST(ImageBlocks, below9WinOverTheScaleInFrontOfThem)
{
    Image image;
    ASSERT_EQ(loadError(image, crafted(8, 10).bytes()), "nothing thrown");
    EXPECT_FALSE(image.getAutoScale());
    EXPECT_EQ(image.getScaling(), 2.5);
    EXPECT_EQ(image.getAlignmentX(), ALIGN_BEGIN);
    EXPECT_EQ(image.getAlignmentY(), ALIGN_END);
    EXPECT_EQ(image.getInnerOrigin(), Point(3, 4));

    ASSERT_EQ(loadError(image, crafted(9, 10).bytes()), "nothing thrown");
    EXPECT_TRUE(image.getAutoScale());
    EXPECT_EQ(image.getScaling(), 0.5);
    EXPECT_EQ(image.getAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(image.getInnerOrigin(), Point(8, 9));
}

TEST(ImageBlocks, ofEveryOlderVersionAreRead)
{
    for (unsigned int version = 1; version <= 9; ++version) {
        SCOPED_TRACE(version);
        Image image;
        image.setImageBackgroundColor(Color(9, 9, 9));
        image.setUseImageBackgroundColor(true);
        image.setOverlayMode(ImageBase::OVERLAY_IMAGE);
        image.setVisualisation("gone", ImageDataVisualisation(true));
        ASSERT_EQ(loadError(image, crafted(version, version < 7 ? 7 : 10).bytes()), "nothing thrown");
        EXPECT_EQ(image.getToken(), "camera");
        EXPECT_EQ(image.getOverlayMode(), version >= 4 ? ImageBase::OVERLAY_ONLY : ImageBase::OVERLAY_BOTH);
        EXPECT_EQ(image.getImageBackgroundColor(), Color(255, 255, 255));
        EXPECT_FALSE(image.getUseImageBackgroundColor());
        EXPECT_EQ(image.getCoordinateSystem(), someAxes());
        EXPECT_EQ(image.getImageConversion(), someConversion());
        std::vector<QString> const none;
        EXPECT_EQ(image.getImportedMeasurements(),
                  version >= 2 && version <= 5 ? (std::vector<QString>{"m1", "m2"}) : none);
        EXPECT_EQ(image.getImportedVectorFields(), version >= 3 && version <= 5 ? std::vector<QString>{"f1"} : none);
        EXPECT_EQ(std::unique_ptr<Image>(image.copy())->getImportedMeasurements(), none);
        EXPECT_EQ(std::unique_ptr<Image>(image.copy())->getImportedVectorFields(), none);
        EXPECT_EQ(image.getVisualisations().size(), version >= 5 ? 2U : 1U);
        std::string const configured = "1:18 "; // the block of one label configuration
        EXPECT_EQ(Support::blocksOf(Support::blockForm(image)).find(configured) != std::string::npos, version >= 8);
        EXPECT_EQ(contentOf(image.getVisualisation(version >= 5 ? "part" : "")), contentOf(unusualLook()));
    }
}

TEST(ImageBlocks, below7AreAlignedAsTheElementIs)
{
    Image image;
    ASSERT_EQ(loadError(image, crafted(6, 7).bytes()), "nothing thrown");
    EXPECT_EQ(image.getAlignmentX(), ALIGN_END);
    EXPECT_EQ(image.getAlignmentY(), ALIGN_BEGIN);
    ASSERT_EQ(loadError(image, crafted(7, 10).bytes()), "nothing thrown");
    EXPECT_EQ(image.getAlignmentX(), ALIGN_BEGIN);
    EXPECT_EQ(image.getAlignmentY(), ALIGN_END);
}

TEST(ImageBlocks, countTheirImportedTextsInTheirSize)
{
    Image old;
    Image image;
    ASSERT_EQ(loadError(old, crafted(5, 7).bytes()), "nothing thrown");
    ASSERT_EQ(loadError(image, crafted(6, 7).bytes()), "nothing thrown");
    // Three texts of two letters.
    EXPECT_EQ(old.getEstimatedObjectSize(), image.getEstimatedObjectSize() + 12);
}

/// An image with a token of an older form, which has a type.
BlockCrafter craftedWithType(unsigned int tokenVersion, unsigned int type)
{
    BlockCrafter crafter = CraftedElement().blocks(10);
    crafter.block(1, Payload().b(true).d(0.5).u(1).u(1).v(8, 9)).block(10, imageFields(10));
    crafter.block(tokenVersion, Payload().s("camera").u(type));
    return addSettings(crafter).block(1, Payload().u(0)).block(1, Payload().u(0));
}

TEST(ImageBlocks, keepWhatATokenWithAStoredTypeNamed)
{
    for (unsigned int version : {1U, 2U}) {
        for (unsigned int type = 0; type <= 10; ++type) {
            Image image;
            EXPECT_EQ(loadError(image, craftedWithType(version, type).bytes()), "nothing thrown");
            EXPECT_EQ(image.getToken(), "camera");
            bool const namedImage = type == 3 || type == 5;
            bool const namedSnapshot = type == 8 || type == 9;
            ASSERT_EQ(image.getImportInfo() != nullptr, namedImage || namedSnapshot) << type;
            if (!image.getImportInfo())
                continue;
            EXPECT_EQ(image.getImportInfo()->getTokenType(), namedImage ? 1U : 2U) << type;
        }
    }
}

TEST(ImageBlocks, keepNothingOfATokenWithoutAStoredType)
{
    Image image;
    EXPECT_EQ(loadError(image, crafted(10, 10).bytes()), "nothing thrown");
    EXPECT_EQ(image.getImportInfo(), nullptr);
}

TEST(ImageBlocks, areRefusedWithTheTextOfImages)
{
    auto const withBlock = [](unsigned int version, Payload const &payload) {
        BlockCrafter crafter = CraftedElement().blocks(10);
        crafter.block(1, Payload().b(true).d(0.5).u(1).u(1).v(8, 9));
        return crafter.block(version, payload).bytes();
    };
    Image image;
    EXPECT_EQ(loadError(image, withBlock(11, imageFields(10))), "cannot load figure image: wrong block version");
    EXPECT_EQ(loadError(image, withBlock(0, imageFields(10))), "cannot load figure image: wrong block version");
    EXPECT_EQ(loadError(image, withBlock(9, Payload().u(3))), "cannot load figure image: illegal value 3 in block");
    EXPECT_NE(loadError(image, withBlock(5, imageFields(5).u(1))), "nothing thrown");
    Payload manyMeasurements = Payload().b(false).b(true).d(2.5).u(0).u(2).v(3, 4);
    EXPECT_NE(loadError(image, withBlock(2, manyMeasurements.u(4294967295U))), "nothing thrown");

    std::string const form = crafted(10, 10).bytes();
    for (std::size_t length = BlockCrafter().bytes().size(); length < form.size(); ++length) {
        Image fresh;
        EXPECT_NE(loadError(fresh, form.substr(0, length)), "nothing thrown") << length;
    }
}

TEST(ImageBlocks, areRefusedWithNewerListsOfLooksOrConfigurations)
{
    auto const withLists = [](unsigned int looksVersion, unsigned int configurationsVersion) {
        BlockCrafter crafter = CraftedElement().blocks(10);
        crafter.block(1, Payload().b(true).d(0.5).u(1).u(1).v(8, 9)).block(10, imageFields(10));
        crafter.block(3, Payload().s("camera"));
        addSettings(crafter).block(looksVersion, Payload().u(0)).block(configurationsVersion, Payload().u(0));
        return crafter.bytes();
    };
    Image image;
    EXPECT_EQ(loadError(image, withLists(1, 1)), "nothing thrown");
    EXPECT_EQ(loadError(image, withLists(2, 1)), "wrong block version");
    EXPECT_EQ(loadError(image, withLists(1, 2)), "wrong block version");
}

TEST(ImageBlocks, bringTheColourOfItsMessages)
{
    Image image;
    ASSERT_EQ(loadError(image, crafted(10, 10).bytes()), "nothing thrown");
    Support::RecordingPainter painter;
    EXPECT_TRUE(image.draw(nullptr, &painter, 0));
    EXPECT_NE(painter.transcript().find(" 0 #01020304\n"), std::string::npos) << painter.transcript();
}

TEST(ImageBlocks, replaceWhatWasImported)
{
    Image image;
    ASSERT_EQ(loadError(image, crafted(5, 7).bytes()), "nothing thrown");
    ASSERT_EQ(image.getImportedMeasurements().size(), 2U);
    ASSERT_EQ(loadError(image, crafted(10, 10).bytes()), "nothing thrown");
    EXPECT_TRUE(image.getImportedMeasurements().empty());
    EXPECT_TRUE(image.getImportedVectorFields().empty());
    ASSERT_EQ(loadError(image, crafted(7, 10).bytes()), "nothing thrown");
    MeasuredPoint label;
    EXPECT_FALSE(image.getImageLabelConfiguration(&label));
}

TEST(ImageLabelConfigurations, configureLabelsOfTheirType)
{
    MeasuredPoint configured;
    configured.setImageElementId("P7");
    configured.setMargin(3.5);
    Image image;
    MeasuredPoint label;
    EXPECT_FALSE(image.getImageLabelConfiguration(&label));
    image.setImageLabelConfiguration(&configured);
    EXPECT_TRUE(image.getImageLabelConfiguration(&label));
    EXPECT_EQ(label.getImageElementId(), "P7");
    EXPECT_EQ(label.getMargin(), 3.5);
    MeasuredPoint other(ImageLabelCreator::TYPE_LINE);
    EXPECT_FALSE(image.getImageLabelConfiguration(&other));

    other.setMargin(7.0);
    image.setImageLabelConfiguration(&other);
    label.setMargin(0.0);
    EXPECT_TRUE(image.getImageLabelConfiguration(&label));
    EXPECT_EQ(label.getMargin(), 3.5);
}

TEST(ImageLabelConfigurations, countInTheSizeOfTheImage)
{
    MeasuredPoint const configured;
    std::ostringstream text;
    configured.saveToStream(text);
    Image image;
    auto const empty = image.getEstimatedObjectSize();
    image.setImageLabelConfiguration(&configured);
    EXPECT_EQ(image.getEstimatedObjectSize(), empty + 4 + 2 * text.str().size());
}

TEST(ImageLabelConfigurations, areStoredInBlocksAndNotCopied)
{
    MeasuredPoint configured;
    configured.setImageElementId("ä 7");
    Image image;
    image.setImageLabelConfiguration(&configured);
    Image read;
    ASSERT_EQ(loadError(read, Support::blockForm(image)), "nothing thrown");
    MeasuredPoint label;
    EXPECT_TRUE(read.getImageLabelConfiguration(&label));
    EXPECT_EQ(label.getImageElementId(), "ä 7");

    std::unique_ptr<Image> const copied(image.copy());
    EXPECT_FALSE(copied->getImageLabelConfiguration(&label));
    EXPECT_EQ(image.getEstimatedObjectSize(),
              copied->getEstimatedObjectSize() + 4 +
                  2 * static_cast<unsigned int>(Support::textForm(configured).size() - 1));
}

template <class Record>
std::string textOf(Record const &record)
{
    std::ostringstream stream;
    stream << record;
    return stream.str();
}

Image unusualImage()
{
    Image image;
    image.setToken("camera");
    image.setCoordinateSystem(someAxes());
    image.setImageConversion(someConversion());
    image.setOverlayMode(ImageBase::OVERLAY_IMAGE);
    image.setVisualisation("", ImageDataVisualisation::NONE);
    image.setVisualisation("the part", unusualLook());
    image.setImageBackgroundColor(Color(1, 2, 3, 4));
    image.setUseImageBackgroundColor(true);
    image.setScaling(2.5);
    return image;
}

/// What stands behind the image's own part in the text form.
std::string baseText(Image const &image)
{
    std::ostringstream stream;
    image.AlignedElement::saveToStream(stream);
    return stream.str();
}

TEST(ImageText, isTheImageBeforeTheElementWithoutTheToken)
{
    Image const image = unusualImage();
    std::string const looks = "2 \\e " + textOf(ImageDataVisualisation::NONE) + "the\\spart " + textOf(unusualLook());
    std::string const text = Support::textForm(image);
    EXPECT_EQ(text, "0 2 1 " + textOf(someAxes()) + textOf(someConversion()) + looks + textOf(Color(1, 2, 3, 4)) +
                        " 1 " + baseText(image));
    EXPECT_EQ(text.find("camera"), std::string::npos);

    Image read;
    read.setToken("kept");
    read.setVisualisation("gone", ImageDataVisualisation(false));
    EXPECT_TRUE(Support::loadText(read, text));
    EXPECT_EQ(read.getToken(), "kept");
    EXPECT_EQ(Support::textForm(read), text);
    EXPECT_EQ(read.getVisualisations().size(), 2U);
}

TEST(ImageText, ofVersion1HasNoBackground)
{
    Image image;
    image.setImageBackgroundColor(Color(1, 2, 3));
    image.setUseImageBackgroundColor(true);
    std::string const text = "0 1 2 " + textOf(someAxes()) + textOf(someConversion()) + "0 " + baseText(unusualImage());
    EXPECT_TRUE(Support::loadText(image, text));
    EXPECT_EQ(image.getOverlayMode(), ImageBase::OVERLAY_ONLY);
    EXPECT_EQ(image.getScaling(), 2.5);
    EXPECT_EQ(image.getImageBackgroundColor(), Color(1, 2, 3));
    EXPECT_TRUE(image.getUseImageBackgroundColor());
}

TEST(ImageText, ofAnotherVersionIsRefused)
{
    std::string const text = Support::textForm(unusualImage());
    Image image;
    auto const error = [&](std::string const &damaged) {
        return Support::thrownText<IO::StreamException>([&] { Support::loadText(image, damaged); });
    };
    EXPECT_EQ(error("1" + text.substr(1)), "wrong block version");
    EXPECT_EQ(error("0 3" + text.substr(3)), "wrong block version");
    EXPECT_FALSE(Support::loadText(image, ""));
    EXPECT_FALSE(Support::loadText(image, "0 2 3 "));
    EXPECT_FALSE(Support::loadText(image, text.substr(0, text.size() / 2)));
    EXPECT_EQ(image.getVisualisations().size(), 0U);
}

std::string tail(Image const &image)
{
    std::string const all = Support::parameterForm(image);
    return all.substr(all.find("token = "));
}

TEST(ImageParameters, standBehindThoseOfTheElementInTheirOrder)
{
    EXPECT_EQ(tail(Image()), "token = \"\"\n"
                             "image_conversion_type = \"normal\"\n"
                             "image_conversion_min = 0\n"
                             "image_conversion_max = 255\n"
                             "overlay_mode = \"both\"\n" +
                                 CoordinateSystem().getParameterString("image_cs").toStdString() +
                                 "visualisations = []\n"
                                 "image_background_color = #ffffffff\n"
                                 "use_image_background_color = false\n");
}

TEST(ImageParameters, readWhatTheyWrite)
{
    Image const image = unusualImage();
    std::string const text = Support::parameterForm(image);
    Image read;
    read.setVisualisation("gone", ImageDataVisualisation(false));
    EXPECT_EQ(Support::loadParameters(read, text), "");
    EXPECT_EQ(Support::parameterForm(read), text);
    EXPECT_EQ(read.getVisualisations().size(), 2U);
    EXPECT_EQ(contentOf(read.getVisualisation("the part")), contentOf(unusualLook()));
    EXPECT_FALSE(read.isValid());
}

TEST(ImageParameters, leaveAloneWhatHasNoEntry)
{
    Image image = unusualImage();
    std::string const before = Support::parameterForm(image);
    EXPECT_EQ(Support::loadParameters(image, ""), "");
    EXPECT_EQ(Support::parameterForm(image), before);
    Support::loadParameters(image, "image_conversion_max = 7\nimage_cs_visible = true\n");
    EXPECT_EQ(image.getImageConversion().getMax(), 7);
    EXPECT_EQ(image.getImageConversion().getType(), ImageConversion::TYPE_LIGHTEN);
    EXPECT_TRUE(image.getCoordinateSystem().getVisible());
    Support::loadParameters(image, "visualisations = []\n");
    EXPECT_TRUE(image.getVisualisations().empty());
}

TEST(ImageParameters, beginEachLookWithTheDefaults)
{
    QString const entry =
        Parse::createString("id", "part") + Parse::createString("visualisation", "vector_scaling = 3\n");
    QString const common = Parse::createString("id", "") + Parse::createString("visualisation", "mode = \"x\"\n");
    QString text = Parse::createStringVector("visualisations", {common, entry});
    Image image;
    image.setVisualisation("part", unusualLook());
    image.createFromParameterString(text);
    EXPECT_EQ(image.getVisualisation("part").getVectorScaling(), 3);
    EXPECT_EQ(image.getVisualisation("part").getMode(), ImageDataVisualisation::MODE_XYZ);
    EXPECT_EQ(image.getVisualisation("other").getMode(), ImageDataVisualisation::MODE_X);
}

TEST(ImageParameters, areRefusedWithBadValues)
{
    for (char const *text : {"overlay_mode = \"none\"\n", "image_conversion_type = \"no\"\n",
                             "visualisations = [\"x\"]\n", "use_image_background_color = 7\n"}) {
        Image image;
        EXPECT_THROW(Support::loadParameters(image, text), ParamError) << text;
    }
}

} // namespace
} // namespace Zem::Fig2
