// The record of one registered token: ownership and stream form.
#include "chart_fixture.h"

#include <ZemFig2ImageData.h>
#include <ZemFig2SnapshotData.h>
#include <ZemFig2Variable.h>

#include <ZemImage.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// The header block of a record whose fields are all there.
Payload header(unsigned int version, unsigned int type)
{
    Payload payload;
    payload.u(type).s("hint").s("text");
    if (version >= 2)
        payload.i(7);
    if (version >= 3)
        payload.s("group");
    if (version >= 4)
        payload.s("5.1");
    if (version >= 5)
        payload.s("icon");
    return payload;
}

BlockCrafter recordOf(unsigned int type)
{
    return BlockCrafter().block(6, header(6, type));
}

void describe(Variable &variable)
{
    variable.typeHint = "hint";
    variable.displayText = "text";
    variable.sortIndex = 7;
    variable.groupToken = "group";
    variable.defaultFormat = "5.1";
    variable.iconId = "icon";
}

Variable described(Variable_t type)
{
    Variable variable(type);
    describe(variable);
    return variable;
}

Variable loaded(std::string const &bytes)
{
    Variable variable(VARIABLE_STRING);
    loadFrom(variable, bytes);
    return variable;
}

std::string errorOf(std::string const &bytes)
{
    Variable variable(VARIABLE_STRING);
    return loadError(variable, bytes);
}

std::string packed(Zem::Image const &picture)
{
    StructVector<unsigned char> bytes;
    picture.compressImage(&bytes);
    return {bytes.begin(), bytes.end()};
}

Image8 *greyPicture()
{
    auto *picture = new Image8(2, 1);
    picture->getRow(0)[1] = 200;
    return picture;
}

ImageColor *redPicture()
{
    auto *picture = new ImageColor(1, 1);
    picture->setPixel(0, 0, Color(255, 0, 0));
    return picture;
}

Variable imageRecord()
{
    Variable variable = described(VARIABLE_IMAGE);
    variable.image = greyPicture();
    variable.overlayImage = redPicture();
    variable.imageData = new ImageData;
    variable.imageData->addPointMask({1, "mask"});
    return variable;
}

TEST(VariableRecord, startsWithoutAnyValue)
{
    Variable const variable(VARIABLE_CHART);
    EXPECT_EQ(variable.type, VARIABLE_CHART);
    EXPECT_EQ(variable.typeHint, "");
    EXPECT_EQ(variable.modifiedCounter, 0U);
    EXPECT_EQ(variable.displayText, "");
    EXPECT_EQ(variable.sortIndex, -1);
    EXPECT_EQ(variable.groupToken, "");
    EXPECT_EQ(variable.defaultFormat, "");
    EXPECT_EQ(variable.iconId, "");
    EXPECT_EQ(variable.intValue, 0);
    EXPECT_EQ(variable.doubleValue, 0.0);
    EXPECT_FALSE(variable.unitData.hasUnit());
    EXPECT_EQ(variable.stringValue, "");
    EXPECT_EQ(variable.image, nullptr);
    EXPECT_EQ(variable.overlayImage, nullptr);
    EXPECT_EQ(variable.imageData, nullptr);
    EXPECT_EQ(variable.chartData, nullptr);
    EXPECT_EQ(variable.snapshotData, nullptr);
}

TEST(VariableRecord, copiesAllFieldsAndItsCounter)
{
    Variable variable = described(VARIABLE_DOUBLE);
    variable.modifiedCounter = 9;
    variable.intValue = 3;
    variable.doubleValue = 2.5;
    variable.unitData = UnitData(uForce);
    variable.stringValue = "value";
    Variable const copy(variable);
    EXPECT_EQ(copy.modifiedCounter, 9U);
    EXPECT_EQ(copy.intValue, 3);
    EXPECT_EQ(copy.doubleValue, 2.5);
    EXPECT_EQ(copy.unitData, UnitData(uForce));
    EXPECT_EQ(copy.stringValue, "value");
    EXPECT_EQ(blocksWith(copy), blocksWith(variable));
}

TEST(VariableRecord, copiesItsDataDeeply)
{
    Variable const variable = imageRecord();
    Variable const copy(variable);
    EXPECT_NE(copy.image, variable.image);
    EXPECT_NE(copy.overlayImage, variable.overlayImage);
    EXPECT_NE(copy.imageData, variable.imageData);
    EXPECT_EQ(packed(*copy.image), packed(*variable.image));
    EXPECT_EQ(packed(*copy.overlayImage), packed(*variable.overlayImage));
    EXPECT_EQ(copy.imageData->getPointMasks().size(), 1U);

    Variable chart(VARIABLE_CHART);
    chart.chartData = new ChartData;
    chart.chartData->addDataset(new ChartDataset("a"));
    Variable const chartCopy(chart);
    EXPECT_NE(chartCopy.chartData->getDataset("a"), chart.chartData->getDataset("a"));

    Variable snapshot(VARIABLE_SNAPSHOT);
    snapshot.snapshotData = new SnapshotData;
    snapshot.snapshotData->setDrawingMode(SnapshotData::DrawingMode{3});
    Variable const snapshotCopy(snapshot);
    EXPECT_NE(snapshotCopy.snapshotData, snapshot.snapshotData);
    EXPECT_EQ(snapshotCopy.snapshotData->getDrawingMode(), 3U);
}

TEST(VariableRecord, sharesItsDataOnAssignment)
{
    Variable owner(VARIABLE_CHART);
    owner.chartData = new ChartData;
    owner.modifiedCounter = 4;
    Variable other(VARIABLE_STRING);
    other = owner;
    EXPECT_EQ(other.chartData, owner.chartData);
    EXPECT_EQ(other.modifiedCounter, 4U);
    other.type = VARIABLE_STRING; // one owner is enough
}

TEST(VariableRecord, ownsDataOfItsOwnTypeOnly)
{
    ChartData chart;
    {
        Variable variable(VARIABLE_STRING);
        variable.chartData = &chart;
    }
    EXPECT_FALSE(chart.datasetExists("a")); // still alive
}

TEST(VariableBlocks, holdTheDescriptionInItsOrder)
{
    Variable variable = described(VARIABLE_STRING);
    variable.stringValue = "value";
    EXPECT_EQ(blocksWith(variable), recordOf(2).block(1, Payload().s("value")).bytes());
    // Five strings and eight bytes.
    EXPECT_EQ(header(6, 2).bytes().size(), 5 * 4 + 4 + 4 + 5 + 3 + 4 + 8U);

    Variable const read = loaded(blocksWith(variable));
    EXPECT_EQ(read.type, VARIABLE_STRING);
    EXPECT_EQ(read.typeHint, "hint");
    EXPECT_EQ(read.displayText, "text");
    EXPECT_EQ(read.sortIndex, 7);
    EXPECT_EQ(read.groupToken, "group");
    EXPECT_EQ(read.defaultFormat, "5.1");
    EXPECT_EQ(read.iconId, "icon");
    EXPECT_EQ(read.stringValue, "value");
}

TEST(VariableBlocks, ofOlderVersionsLackTheLaterFields)
{
    Payload const value = Payload().s("value");
    auto const read = [&](unsigned int version) {
        // The types were counted one higher.
        return loaded(BlockCrafter().block(version, header(version, 3)).block(1, value).bytes());
    };
    EXPECT_EQ(read(1).type, VARIABLE_STRING);
    EXPECT_EQ(read(1).typeHint, "hint");
    EXPECT_EQ(read(1).displayText, "text");
    EXPECT_EQ(read(1).sortIndex, -1);
    EXPECT_EQ(read(1).stringValue, "value");
    EXPECT_EQ(read(2).sortIndex, 7);
    EXPECT_EQ(read(2).groupToken, "");
    EXPECT_EQ(read(3).groupToken, "group");
    EXPECT_EQ(read(3).defaultFormat, "");
    EXPECT_EQ(read(4).defaultFormat, "5.1");
    EXPECT_EQ(read(4).iconId, "");
    EXPECT_EQ(read(5).iconId, "icon");
    EXPECT_EQ(read(5).type, VARIABLE_STRING);
}

TEST(VariableBlocks, ofOlderVersionsCountABooleanAsFirstType)
{
    for (unsigned int version = 1; version <= 5; ++version) {
        Variable const yes =
            loaded(BlockCrafter().block(version, header(version, 0)).block(1, Payload().b(true)).bytes());
        EXPECT_EQ(yes.type, VARIABLE_STRING);
        EXPECT_EQ(yes.stringValue, "true");
        Variable const no =
            loaded(BlockCrafter().block(version, header(version, 0)).block(1, Payload().b(false)).bytes());
        EXPECT_EQ(no.stringValue, "false");
    }
    EXPECT_EQ(loaded(recordOf(0).block(1, Payload().i(5)).bytes()).intValue, 5);
    // The last of them was the separator, one beyond today's.
    EXPECT_EQ(loaded(BlockCrafter().block(5, header(5, 11)).bytes()).type, VARIABLE_SEPARATOR);
}

TEST(VariableBlocks, ofIntegersHoldTheNumber)
{
    Variable variable = described(VARIABLE_INTEGER);
    variable.intValue = -42;
    EXPECT_EQ(blocksWith(variable), recordOf(0).block(1, Payload().i(-42)).bytes());
    EXPECT_EQ(loaded(blocksWith(variable)).intValue, -42);
}

TEST(VariableBlocks, ofDoublesHaveTheUnitBehindThem)
{
    Variable variable = described(VARIABLE_DOUBLE);
    variable.doubleValue = 2.5;
    variable.unitData = UnitData(uForce);
    BlockCrafter crafter = recordOf(1).block(2, Payload().d(2.5));
    EXPECT_EQ(blocksWith(variable), addRecords(crafter, UnitData(uForce)).bytes());
    Variable const read = loaded(blocksWith(variable));
    EXPECT_EQ(read.doubleValue, 2.5);
    EXPECT_EQ(read.unitData, UnitData(uForce));
}

TEST(VariableBlocks, ofOlderDoublesNameTheUnit)
{
    auto const read = [](char const *unit) { return loaded(recordOf(1).block(1, Payload().d(2.5).s(unit)).bytes()); };
    EXPECT_EQ(read("force").doubleValue, 2.5);
    EXPECT_EQ(read("force").unitData, UnitData(uForce));
    EXPECT_FALSE(read("no such unit").unitData.hasUnit());
    EXPECT_FALSE(read("").unitData.hasUnit());
}

TEST(VariableBlocks, ofImagesHoldBothPicturesAndThenTheImageData)
{
    Variable const variable = imageRecord();
    std::string const grey = packed(*variable.image);
    std::string const red = packed(*variable.overlayImage);
    Payload const block = Payload().u(0).b(true).b(true).b(true).s(grey).s(red);
    EXPECT_EQ(block.bytes().size(), 7 + 4 + grey.size() + 4 + red.size());
    BlockCrafter crafter = recordOf(3).block(2, block);
    EXPECT_EQ(blocksWith(variable), addRecords(crafter, *variable.imageData).bytes());

    Variable const read = loaded(blocksWith(variable));
    EXPECT_EQ(read.image->getType(), Zem::Image::TYPE_IMAGE8);
    EXPECT_EQ(packed(*read.image), grey);
    EXPECT_EQ(packed(*read.overlayImage), red);
    EXPECT_EQ(read.imageData->getPointMasks().size(), 1U);
    EXPECT_EQ(read.imageData->getImage(), nullptr);
}

TEST(VariableBlocks, ofImagesTellEachKind)
{
    Zem::Image *const pictures[] = {new Image8(1, 1), new Image16(1, 1), new Image32(1, 1), new ImageColor(1, 1)};
    for (unsigned int kind = 0; kind < 4; ++kind) {
        Variable variable = described(VARIABLE_IMAGE);
        variable.image = pictures[kind];
        std::string const bytes =
            recordOf(3).block(2, Payload().u(kind).b(true).b(false).b(false).s(packed(*pictures[kind]))).bytes();
        EXPECT_EQ(blocksWith(variable), bytes);
        EXPECT_EQ(loaded(bytes).image->getType(), kind);
        EXPECT_EQ(loaded(bytes).overlayImage, nullptr);
        EXPECT_EQ(loaded(bytes).imageData, nullptr);
    }
}

TEST(VariableBlocks, ofOlderImagesHoldAPictureAndNoOverlay)
{
    std::unique_ptr<Image8> const picture(greyPicture());
    std::string const grey = packed(*picture);
    Variable const bare = loaded(recordOf(3).block(1, Payload().u(0).b(false).s(grey)).bytes());
    EXPECT_EQ(packed(*bare.image), grey);
    EXPECT_EQ(bare.overlayImage, nullptr);
    EXPECT_EQ(bare.imageData, nullptr);

    BlockCrafter crafter = recordOf(3).block(1, Payload().u(0).b(true).s(grey));
    EXPECT_NE(loaded(addRecords(crafter, ImageData()).bytes()).imageData, nullptr);
}

TEST(VariableBlocks, ofImagesWithoutAPictureAreKept)
{
    std::string const bytes = recordOf(3).block(2, Payload().u(0).b(false).b(false).b(false)).bytes();
    Variable const read = loaded(bytes);
    EXPECT_EQ(read.image, nullptr);
    EXPECT_EQ(blocksWith(read), bytes);
    // The kind of a picture that is not there does not count.
    EXPECT_EQ(loaded(recordOf(3).block(2, Payload().u(9).b(false).b(false).b(false)).bytes()).image, nullptr);
}

TEST(VariableBlocks, ofDamagedPicturesAreRefused)
{
    char const *const noImage = "loading image from figure stream failed";
    char const *const noOverlay = "loading overlay image from figure stream failed";
    std::unique_ptr<Image8> const picture(greyPicture());
    std::string const grey = packed(*picture);
    auto const imageError = [](Payload const &payload) { return errorOf(recordOf(3).block(2, payload).bytes()); };
    EXPECT_EQ(imageError(Payload().u(4).b(true).b(false).b(false).s(grey)), noImage);
    EXPECT_EQ(imageError(Payload().u(1).b(true).b(false).b(false).s(grey)), noImage);
    EXPECT_EQ(imageError(Payload().u(0).b(true).b(false).b(false).s("no picture")), noImage);
    EXPECT_EQ(imageError(Payload().u(0).b(true).b(false).b(false).u(4294967295U)), noImage);
    // An overlay is a colour picture, whatever the image is.
    EXPECT_EQ(imageError(Payload().u(0).b(true).b(true).b(false).s(grey).s(grey)), noOverlay);
    EXPECT_EQ(imageError(Payload().u(0).b(true).b(true).b(false).s(grey).u(100)), noOverlay);
}

TEST(VariableBlocks, ofChartsAndSnapshotsAreFollowedByTheData)
{
    Variable chart = described(VARIABLE_CHART);
    chart.chartData = new ChartData;
    chart.chartData->addDataset(new ChartDataset("a"));
    BlockCrafter chartBlocks = recordOf(4);
    EXPECT_EQ(blocksWith(chart), addRecords(chartBlocks, *chart.chartData).bytes());
    EXPECT_TRUE(loaded(blocksWith(chart)).chartData->datasetExists("a"));

    Variable snapshot = described(VARIABLE_SNAPSHOT);
    snapshot.snapshotData = new SnapshotData;
    snapshot.snapshotData->setDrawingMode(SnapshotData::DrawingMode{3});
    BlockCrafter snapshotBlocks = recordOf(8);
    EXPECT_EQ(blocksWith(snapshot), addRecords(snapshotBlocks, *snapshot.snapshotData).bytes());
    EXPECT_EQ(loaded(blocksWith(snapshot)).snapshotData->getDrawingMode(), 3U);
}

TEST(VariableBlocks, ofReferencesGroupsAndSeparatorsAreTheHeaderAlone)
{
    for (unsigned int type : {5U, 6U, 7U, 9U, 10U}) {
        EXPECT_EQ(blocksWith(described(Variable_t(type))), recordOf(type).bytes());
        EXPECT_EQ(loaded(recordOf(type).bytes()).type, type);
    }
}

TEST(VariableBlocks, withoutTheDataOfTheirTypeAreNotWritten)
{
    EXPECT_EQ(progError([] { blocksWith(Variable(VARIABLE_CHART)); }), "fig_variable: ChartData must not be NULL");
    EXPECT_EQ(progError([] { blocksWith(Variable(VARIABLE_SNAPSHOT)); }), "fig_variable: Snapshot must not be NULL");
}

TEST(VariableBlocks, ofNewerVersionsAreRefused)
{
    char const *const wrong = "wrong block version";
    EXPECT_EQ(errorOf(BlockCrafter().block(7, header(6, 2)).bytes()), wrong);
    EXPECT_EQ(errorOf(recordOf(0).block(2, Payload().i(1)).bytes()), wrong);
    EXPECT_EQ(errorOf(recordOf(1).block(3, Payload().d(1)).bytes()), wrong);
    EXPECT_EQ(errorOf(recordOf(2).block(2, Payload().s("")).bytes()), wrong);
    EXPECT_EQ(errorOf(recordOf(3).block(3, Payload().u(0).b(false).b(false).b(false)).bytes()), wrong);
    EXPECT_EQ(errorOf(BlockCrafter().block(5, header(5, 0)).block(2, Payload().b(true)).bytes()), wrong);
}

TEST(VariableBlocks, ofATypeThatThereIsNotAreRefused)
{
    EXPECT_EQ(errorOf(recordOf(11).bytes()), "illegal value 11 in block");
    EXPECT_EQ(errorOf(BlockCrafter().block(5, header(5, 12)).bytes()), "illegal value 12 in block");
}

TEST(VariableBlocks, replaceWhatTheRecordHeld)
{
    Variable variable(imageRecord());
    variable.modifiedCounter = 6;
    variable.intValue = 8;
    loadFrom(variable, recordOf(2).block(1, Payload().s("value")).bytes());
    EXPECT_EQ(variable.type, VARIABLE_STRING);
    EXPECT_EQ(variable.image, nullptr);
    EXPECT_EQ(variable.overlayImage, nullptr);
    EXPECT_EQ(variable.imageData, nullptr);
    EXPECT_EQ(variable.intValue, 0);
    EXPECT_EQ(variable.modifiedCounter, 6U);
}

TEST(VariableBlocks, damagedHalfWayLeaveNothingBehind)
{
    std::string const image = blocksWith(imageRecord());
    EXPECT_NE(errorOf(image.substr(0, image.size() - 10)), "nothing thrown");
    BlockCrafter chart = recordOf(4);
    addRecords(chart, ChartData());
    EXPECT_NE(errorOf(chart.bytes().substr(0, chart.bytes().size() - 10)), "nothing thrown");
}

} // namespace
} // namespace Zem::Fig2
