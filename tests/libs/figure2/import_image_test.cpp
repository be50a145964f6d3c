// The images of older figures and what was measured on them.
#include "import_fixture.h"

#include <ZemFig2Image.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2ImportInfo.h>
#include <ZemFig2Line.h>
#include <ZemFig2SnapshotData.h>
#include <ZemFig2Transformation.h>

#include <ZemCamera.h>
#include <ZemTokenContainer.h>

namespace Zem::Fig2 {
namespace {

using Support::oldCamera;
using Support::oldFigure;
using Support::oldImage;
using Support::oldImageData;
using Support::OldImageFields;
using Support::oldLegendData;
using Support::oldLine;
using Support::oldLook;
using Support::OldLookFields;
using Support::oldMask;
using Support::oldObject;
using Support::oldPoint;
using Support::Payload;
using Support::thrownText;

using Point = BaVec2d<double>;

LineStyle const DASHED_RED(0.5, LineStyle::STYLE_DASHED, Color(200, 10, 20));

std::unique_ptr<Image> importImage(unsigned int version, OldImageFields const &fields = {})
{
    return importAs<Image>(Import::OLD_IMAGE, oldImage(version, fields));
}

ImageDataVisualisation importLook(unsigned int version, OldLookFields const &fields = {})
{
    OldImageFields image;
    image.looks = {"bolt"};
    return importAs<Image>(Import::OLD_IMAGE, oldImage(3, image).add(oldLook(version, fields)))
        ->getVisualisation("bolt");
}

TEST(ImportImage, keepsPlaceAndToken)
{
    auto const image = importImage(1);

    EXPECT_EQ(image->getOrigin(), Point(30, 35));
    EXPECT_EQ(image->getSize(), Point(40, 30));
    EXPECT_EQ(image->getToken(), "camera");
    EXPECT_TRUE(image->getAutoScale());
    EXPECT_EQ(image->getScaling(), 1.0);
    EXPECT_EQ(image->getAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(image->getAlignmentY(), ALIGN_CENTER);
    EXPECT_EQ(image->getBorder().getStyle(), LineStyle::STYLE_NONE);
    EXPECT_EQ(image->getOverlayMode(), ImageBase::OVERLAY_IMAGE);
    EXPECT_FALSE(image->getCoordinateSystem().getVisible());
    EXPECT_TRUE(image->getVisualisations().empty());
}

TEST(ImportImage, hasScalingAndFrameFromVersion2On)
{
    auto const image = importImage(2);

    EXPECT_FALSE(image->getAutoScale());
    EXPECT_EQ(image->getScaling(), 0.5);
    EXPECT_EQ(image->getInnerOrigin(), Point(3, 4));
    EXPECT_EQ(image->getAlignmentX(), ALIGN_BEGIN);
    EXPECT_EQ(image->getAlignmentY(), ALIGN_END);
    EXPECT_EQ(image->getBorder(), DASHED_RED);
    EXPECT_EQ(image->getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_EQ(image->getOverlayMode(), ImageBase::OVERLAY_IMAGE);
}

TEST(ImportImage, hasOverlayAndAxesFromVersion3On)
{
    OldImageFields without;
    without.showOverlay = false;
    without.showAxes = false;

    EXPECT_EQ(importImage(3)->getOverlayMode(), ImageBase::OVERLAY_BOTH);
    EXPECT_TRUE(importImage(3)->getCoordinateSystem().getVisible());
    EXPECT_EQ(importImage(3, without)->getOverlayMode(), ImageBase::OVERLAY_IMAGE);
    EXPECT_FALSE(importImage(3, without)->getCoordinateSystem().getVisible());
}

TEST(ImportImage, ofTheStrainOverlayShowsIt)
{
    OldImageFields fields;
    fields.token = "IMAGE.OVERLAY_STRAIN";
    fields.showOverlay = false;

    EXPECT_EQ(importImage(2, fields)->getOverlayMode(), ImageBase::OVERLAY_BOTH);
    EXPECT_EQ(importImage(3, fields)->getOverlayMode(), ImageBase::OVERLAY_IMAGE);
}

TEST(ImportImage, remembersWhatItsTokenNamed)
{
    OldImageFields fields;
    fields.tokenType = 0;
    auto const none = importImage(1, fields);
    fields.tokenType = 2;
    auto const snapshot = importImage(1, fields);
    auto const picture = importImage(1);

    EXPECT_EQ(none->getImportInfo(), nullptr);
    EXPECT_EQ(snapshot->getImportInfo()->getTokenType(), ImageImportInfo::TOKEN_SNAPSHOT);
    EXPECT_EQ(picture->getImportInfo()->getTokenType(), ImageImportInfo::TOKEN_IMAGE);
}

TEST(ImportImage, ofAnUnknownKindOfTokenIsRefused)
{
    OldImageFields fields;
    fields.tokenType = 3;

    EXPECT_EQ(elementRefusal(Import::OLD_IMAGE, oldImage(1, fields)), "illegal value 3 in block");
}

TEST(ImportImage, ofANewerVersionIsRefused)
{
    OldImageFields fields;
    fields.looks = {""};

    EXPECT_EQ(elementRefusal(Import::OLD_IMAGE, OldRecords().record(5, Payload())), "wrong block version");
    EXPECT_EQ(elementRefusal(Import::OLD_IMAGE, oldImage(3, fields).record(3, Payload())), "wrong block version");
}

TEST(ImportLook, keepsItsLineAndLengths)
{
    ImageDataVisualisation const look = importLook(1);

    EXPECT_FALSE(look.isNull());
    EXPECT_EQ(look.getMode(), ImageDataVisualisation::MODE_YZ);
    EXPECT_EQ(look.getLineStyle(), DASHED_RED);
    EXPECT_EQ(look.getPointMarkerSize(), 12.0);
    EXPECT_EQ(look.getVectorScaling(), 3.0);
    EXPECT_EQ(look.getDrawArrows(), ImageDataVisualisation::ARROW_FIRST);
    EXPECT_TRUE(look.getDrawCombinedVectors());
    EXPECT_TRUE(look.getDrawHiddenPoints());
    EXPECT_FALSE(look.getDrawPointIds());
    EXPECT_EQ(look.getPointMask(), -1);
    EXPECT_EQ(look.getVectorLineWidth(), 1.0);
}

TEST(ImportLook, hasPointsAndWidthFromVersion2On)
{
    ImageDataVisualisation const look = importLook(2);

    EXPECT_FALSE(look.getDrawCombinedVectors());
    EXPECT_FALSE(look.getDrawHiddenPoints());
    EXPECT_TRUE(look.getDrawPointIds());
    EXPECT_EQ(look.getPointMask(), 5);
    EXPECT_EQ(look.getVectorLineWidth(), 0.25);
}

TEST(ImportLook, hasNoLengthsThatAreNone)
{
    for (double length : {-1.0, std::numeric_limits<double>::quiet_NaN()}) {
        OldLookFields fields;
        fields.scaling = length;
        fields.width = length;
        fields.markerSize = length;
        EXPECT_EQ(importLook(2, fields).getPointMarkerSize(), 20.0);
        EXPECT_EQ(importLook(2, fields).getVectorScaling(), 1.0);
        EXPECT_EQ(importLook(2, fields).getVectorLineWidth(), 1.0);
    }
}

TEST(ImportLook, withAnUnknownNumberIsRefused)
{
    OldImageFields image;
    image.looks = {""};
    OldLookFields mode;
    mode.mode = 7;
    OldLookFields arrows;
    arrows.arrows = 4;

    EXPECT_EQ(elementRefusal(Import::OLD_IMAGE, oldImage(3, image).add(oldLook(1, mode))), "illegal value 7 in block");
    EXPECT_EQ(elementRefusal(Import::OLD_IMAGE, oldImage(3, image).add(oldLook(1, arrows))),
              "illegal value 4 in block");
}

TEST(ImportLook, belongsToTheObjectOfItsId)
{
    OldImageFields fields;
    fields.looks = {"", "bolt"};
    OldLookFields other;
    other.markerSize = 5.0;

    auto const image = importAs<Image>(Import::OLD_IMAGE, oldImage(3, fields).add(oldLook(1)).add(oldLook(1, other)));

    EXPECT_EQ(image->getVisualisation("bolt").getPointMarkerSize(), 5.0);
    EXPECT_EQ(image->getVisualisation("any").getPointMarkerSize(), 12.0);
}

OldRecords imageWithSnapshot(OldRecords const &snapshot)
{
    OldImageFields fields;
    fields.hasSnapshot = true;
    return oldElementOf(Import::OLD_IMAGE, oldImage(4, fields).add(snapshot));
}

TEST(ImportSnapshot, isPutAmongTheTokensUnderANumber)
{
    DataInterface tokens;
    OldRecords const inner = oldFigure({oldElementOf(Import::OLD_LINE, oldLine(1))});

    auto const figure =
        importFigure(oldFigure({imageWithSnapshot(inner), imageWithSnapshot(oldFigure({}))}), nullptr, &tokens);

    EXPECT_EQ(childAt<Image>(*figure, 0).getToken(), "__imported_snapshot_1__");
    EXPECT_EQ(childAt<Image>(*figure, 1).getToken(), "__imported_snapshot_2__");
    EXPECT_EQ(childAt<Image>(*figure, 0).getImportInfo()->getTokenType(), ImageImportInfo::TOKEN_SNAPSHOT);
    SnapshotData const *snapshot = nullptr;
    tokens.getSnapshot("__imported_snapshot_1__", &snapshot);
    EXPECT_NO_THROW(childAt<Line>(*snapshot->getFigure(), 0));
    EXPECT_TRUE(tokens.tokenExists(Token_t("__imported_snapshot__", VARIABLE_GROUP)));
    EXPECT_EQ(tokens.getGroupToken(Token_t("__imported_snapshot_2__", VARIABLE_SNAPSHOT)), "__imported_snapshot__");
}

TEST(ImportSnapshot, hasPlacesBehindThatOfItsImage)
{
    ImportReport report;

    importFigure(oldFigure({imageWithSnapshot(oldFigure({oldElementOf(Import::OLD_LINE, oldLine(1))}))}), &report);

    EXPECT_EQ(keptPlaces(report), "page \nimage 1\npage 1/\nline 1/1\n");
}

TEST(ImportSnapshot, isRefusedBelowADepth)
{
    auto const nested = [](unsigned int depth) {
        OldRecords records = oldFigure({});
        for (unsigned int i = 0; i < depth; ++i)
            records = oldFigure({imageWithSnapshot(records)});
        return records;
    };

    // Each level takes 8 for the snapshot and 1 for its root, the page itself 1.
    EXPECT_NO_THROW(importFigure(nested(28)));
    EXPECT_EQ(thrownText<IO::StreamException>([&] { importFigure(nested(29)); }), "figure is nested too deeply");
}

/// The image data behind a picture.
template <class Look>
void withImageData(OldRecords const &records, Look const &look)
{
    OldRecords all = Support::oldTokens(1, {{"t", 4, "", "", ""}});
    all.add(Support::oldPicture(2, 0, Support::packedGrey(1, 1, "a"), true)).add(records);
    DataInterface tokens;
    readRecords(all, [&tokens](IO::InStream *stream) { Import::importTokenData(stream, &tokens); });
    look(*tokens.getTokenBegin()->second->imageData);
}

std::string dataRefusal(OldRecords const &records)
{
    return thrownText<IO::StreamException>([&] { withImageData(records, [](ImageData const &) {}); });
}

ImageDataPoints const &pointsOf(ImageDataObject const &object)
{
    return dynamic_cast<ImageDataPoints const &>(**object.getElementBegin());
}

TEST(ImportImageData, mayBeEmpty)
{
    withImageData(oldImageData(1, false, 0), [](ImageData const &data) {
        EXPECT_EQ(data.getTransformation(), nullptr);
        EXPECT_EQ(data.getObjectBegin(), data.getObjectEnd());
        EXPECT_TRUE(data.getPointMasks().empty());
        EXPECT_TRUE(data.getHasCoordinateSystem());
        EXPECT_FALSE(data.getCanDrawLegendColors());
    });
}

TEST(ImportImageData, haveACamera)
{
    withImageData(oldImageData(1, true, 0).add(oldCamera(1)), [](ImageData const &data) {
        auto const *transformation = dynamic_cast<CameraTransformation const *>(data.getTransformation());
        ASSERT_NE(transformation, nullptr);
        Cal::Camera const &camera = transformation->getCamera();
        EXPECT_EQ(camera.getR0(), 1.0);
        EXPECT_EQ(camera.getHPXOffset(), 3);
        EXPECT_EQ(camera.getHPYOffset(), -4);
        EXPECT_EQ(camera.getImageWidth(), 640U);
        EXPECT_EQ(camera.getImageHeight(), 480U);
        EXPECT_EQ(camera.getOrientation().getImageDistance(), Point(1000, 1000));
        EXPECT_EQ(camera.getOrientation().getPrincipalPoint(), Point(320, 240));
        Zem::Transformation const motion = std::unique_ptr<Transformation>(transformation->copy())->getTransformation();
        EXPECT_EQ(motion.getTranslation(), (BaVec3d<double>(1, 2, 100)));
        EXPECT_EQ(motion.getAngles(), (BaVec3d<double>(0.1, 0.2, 0.3)));
        EXPECT_TRUE(data.getHasCoordinateSystem());
        EXPECT_FALSE(data.getCanDrawLegendColors());
    });
}

TEST(ImportImageData, mayHideTheAxesFromVersion2OfTheCameraOn)
{
    withImageData(oldImageData(1, true, 0).add(oldCamera(2)), [](ImageData const &data) {
        EXPECT_FALSE(data.getHasCoordinateSystem());
        EXPECT_FALSE(data.getCanDrawLegendColors());
    });
}

TEST(ImportImageData, mayColourLabelsFromVersion3OfTheCameraOn)
{
    withImageData(oldImageData(1, true, 0).add(oldCamera(3)),
                  [](ImageData const &data) { EXPECT_TRUE(data.getCanDrawLegendColors()); });
}

TEST(ImportImageData, haveMasksFromVersion2On)
{
    withImageData(oldImageData(2, false, 0, 2).add(oldMask(1)).add(oldMask(2)), [](ImageData const &data) {
        EXPECT_EQ(data.getPointMasks(), (std::vector<PointMask>{PointMask(6, ""), PointMask(6, "edge")}));
    });
}

TEST(ImportImageData, mayHaveAScaleFromVersion3On)
{
    Legend2::Legend legend;
    Legend2::Data scale;
    withImageData(oldImageData(3, false, 0, 0, true).add(oldLegendData(2)), [&](ImageData const &data) {
        ASSERT_TRUE(data.getLegendData(&legend, &scale));
        EXPECT_EQ(legend.getUnit(), uStrain);
        EXPECT_EQ(scale.getDynamicMaximum(), 3.0);
    });
    withImageData(oldImageData(3, false, 0, 0, false),
                  [&](ImageData const &data) { EXPECT_FALSE(data.getLegendData(&legend, &scale)); });
}

TEST(ImportImageData, haveObjectsWithPoints)
{
    withImageData(oldImageData(1, false, 2)
                      .add(oldObject(1, "bolt", 2))
                      .add(oldPoint(1, 4))
                      .add(oldPoint(1, 5))
                      .add(oldObject(1, "nut", 0)),
                  [](ImageData const &data) {
                      ImageDataObject const *bolt = data.getObject("bolt");
                      ASSERT_NE(bolt, nullptr);
                      EXPECT_EQ(bolt->getConnectorPoint(), Point(12, 34));
                      EXPECT_EQ(bolt->getDisplayText(), "");
                      EXPECT_FALSE(bolt->getFiltered());
                      EXPECT_TRUE(bolt->getCanBeConnectorTarget());
                      EXPECT_EQ(pointsOf(*bolt).getNumberOfPoints(), 2U);
                      ImageDataObject const *nut = data.getObject("nut");
                      EXPECT_EQ(nut->getElementBegin(), nut->getElementEnd());
                  });
}

/// What the only point is, as its block tells.
std::string savedPoint(unsigned int version)
{
    std::string result;
    withImageData(oldImageData(1, false, 1).add(oldObject(1, "o", 1)).add(oldPoint(version, 4)),
                  [&result](ImageData const &data) {
                      result = Support::streamOf(
                          [&](IO::OutStream &stream) { pointsOf(*data.getObject("o")).save(&stream); });
                  });
    return result;
}

std::string expectedPoint(bool visible, int mask)
{
    ImageDataPoints points;
    points.addPoint(4, {1, 2, 3}, {0.5, 0.25, 0.125}, 7.5, visible, mask);
    return Support::streamOf([&points](IO::OutStream &stream) { points.save(&stream); });
}

TEST(ImportImageData, havePointsThatAreVisibleInVersion1)
{
    EXPECT_EQ(savedPoint(1), expectedPoint(true, -1));
}

TEST(ImportImageData, havePointsWithMasksFromVersion2On)
{
    EXPECT_EQ(savedPoint(2), expectedPoint(false, 9));
}

TEST(ImportImageData, haveObjectsWithTextsFromVersion2On)
{
    withImageData(oldImageData(1, false, 1).add(oldObject(2, "bolt", 0)), [](ImageData const &data) {
        EXPECT_EQ(data.getObject("bolt")->getDisplayText(), "seen bolt");
        EXPECT_FALSE(data.getObject("bolt")->getFiltered());
    });
}

TEST(ImportImageData, haveObjectsWithFlagsAndTokensFromVersion3On)
{
    OldRecords records = oldImageData(1, false, 1).add(oldObject(3, "bolt", 1, true)).add(oldPoint(1, 1));
    records.add(Support::oldTokens(1, {{"gap", 1, "", "", ""}})).add(Support::oldInteger(1, 42));

    withImageData(records, [](ImageData const &data) {
        ImageDataObject const *bolt = data.getObject("bolt");
        EXPECT_TRUE(bolt->getFiltered());
        EXPECT_FALSE(bolt->getCanBeConnectorTarget());
        ASSERT_NE(bolt->getTokenContainer(), nullptr);
        EXPECT_EQ(bolt->getTokenInterface(), bolt->getTokenContainer());
        EXPECT_EQ(bolt->getTokenContainer()->getValue("gap", IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
                  Value(42));
    });
}

TEST(ImportImageData, keepTheLaterOfTwoObjectsWithOneId)
{
    withImageData(oldImageData(1, false, 2).add(oldObject(1, "o", 0)).add(oldObject(1, "o", 1)).add(oldPoint(1, 1)),
                  [](ImageData const &data) { EXPECT_EQ(pointsOf(*data.getObject("o")).getNumberOfPoints(), 1U); });
}

TEST(ImportImageData, ofNewerVersionsAreRefused)
{
    std::string const wrapped = "cannot load figure token data: ";

    EXPECT_EQ(dataRefusal(OldRecords().record(4, Payload())), wrapped + "unhandled image data version: 4");
    EXPECT_EQ(dataRefusal(oldImageData(1, true, 0).record(4, Payload())), wrapped + "unhandled camera version: 4");
    EXPECT_EQ(dataRefusal(oldImageData(2, false, 0, 1).record(3, Payload())),
              wrapped + "unhandled image mask version: 3");
    EXPECT_EQ(dataRefusal(oldImageData(1, false, 1).record(4, Payload())),
              wrapped + "unhandled image object version: 4");
    EXPECT_EQ(dataRefusal(oldImageData(1, false, 1).add(oldObject(1, "o", 1)).record(3, Payload())),
              wrapped + "unhandled image point version: 3");
    EXPECT_EQ(dataRefusal(oldImageData(3, false, 0, 0, true).record(3, Payload())),
              wrapped + "unhandled legend data version: 3");
}

} // namespace
} // namespace Zem::Fig2
