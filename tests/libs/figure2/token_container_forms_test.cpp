// The stream form of the frozen data of a figure, today's and older ones.
#include "token_container_fixture.h"

#include <ZemFig2Tools.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// Names of tokens, of pictures and of overlays.
struct Names
{
    std::vector<char const *> entries;
    std::vector<char const *> images = {};
    std::vector<char const *> overlays = {};
};

Payload headerOf(unsigned int version, unsigned int infos, Names const &names)
{
    Payload payload;
    if (version >= 2)
        payload.u(infos);
    for (auto const *list : {&names.entries, &names.images, &names.overlays})
        payload.u(static_cast<unsigned int>(list->size()));
    for (auto const *list : {&names.entries, &names.images, &names.overlays}) {
        for (char const *name : *list)
            payload.s(name);
    }
    return payload;
}

BlockCrafter containerOf(unsigned int version, unsigned int infos, Names const &names)
{
    return BlockCrafter().block(version, headerOf(version, infos, names));
}

Payload entryBlock()
{
    return Payload().b(true);
}

BlockCrafter &addPicture(BlockCrafter &crafter, Zem::Image const &picture)
{
    return crafter.add([&](IO::OutStream &stream) { Tools::saveImage(&stream, &picture); });
}

TokenContainer valuesWith(char const *name)
{
    TokenContainer values;
    values.setValue(textInfo(name), Value(5));
    return values;
}

TEST(TokenContainerBlocks, areNamesThenDescriptionsTokensAndPictures)
{
    Image8 const picture(2, 1);
    ImageColor const overlay(1, 1);
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("t"), Value(5));
    tokens.setValue(snapshotInfo("s"), new SnapshotData);
    tokens.setValue(imageInfo("i"), imageWith(&picture, &overlay), true);
    tokens.setValue(chartInfo("c"), new ChartData);
    tokens.setValue({TokenInfo::TYPE_GROUP, "g", "group"}, Value(5));

    BlockCrafter crafter = containerOf(3, 5, {{"c", "g", "i", "s", "t"}, {"i"}, {"i"}});
    addRecords(crafter, textInfo("t"), snapshotInfo("s"), imageInfo("i"), chartInfo("c"));
    addRecords(crafter, TokenInfo(TokenInfo::TYPE_GROUP, "g", "group"));
    crafter.block(3, entryBlock());
    addRecords(crafter, chartInfo("c"), ChartData());
    crafter.block(3, entryBlock());
    addRecords(crafter, TokenInfo(TokenInfo::TYPE_GROUP, "g", "group"));
    crafter.block(3, entryBlock());
    addRecords(crafter, imageInfo("i"), ImageData());
    crafter.block(3, entryBlock());
    addRecords(crafter, snapshotInfo("s"), SnapshotData());
    crafter.block(3, entryBlock());
    addRecords(crafter, textInfo("t"), Value(5));
    addPicture(crafter, picture);
    addPicture(crafter, overlay);
    EXPECT_EQ(blocksWith(tokens), crafter.bytes());
    // Sixteen bytes for four counts.
    EXPECT_EQ(headerOf(3, 0, {}).bytes().size(), 16U);
}

TEST(TokenContainerBlocks, bringEverythingBack)
{
    Image8 const picture(2, 1);
    ImageColor const overlay(1, 1);
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("t[1]"), Value(5));
    tokens.setValue(imageInfo("i"), imageWith(&picture, &overlay), true);
    tokens.setValue(chartInfo("c"), chartWith("x"));
    tokens.setValue(snapshotInfo("s"), snapshotWith(3));

    FigureTokenContainer read;
    read.setValue(imageInfo("old"), imageWith(&picture), true);
    loadFrom(read, blocksWith(tokens));
    EXPECT_EQ(offered(read), "t[1]=text, i=image, c=chart, s=snapshot, ");
    EXPECT_EQ(valueOf(read, "t"), Value(5));
    EXPECT_EQ(read.getImage("i")->getImage()->getWidth(), 2U);
    EXPECT_EQ(read.getImage("i")->getOverlay()->getWidth(), 1U);
    EXPECT_TRUE(read.getChart("c")->datasetExists("x"));
    EXPECT_EQ(read.getSnapshot("s")->getDrawingMode(), 3U);
    EXPECT_EQ(read.getImage("old"), nullptr);
    EXPECT_EQ(valueOf(read, "old"), Value::UNKNOWN);
}

TEST(TokenContainerBlocks, leaveOutTokensThatLackTheirData)
{
    FigureTokenContainer tokens;
    for (TokenInfo const &info : {imageInfo("i"), chartInfo("c"), snapshotInfo("s")})
        tokens.setValue(info, Value(5));
    BlockCrafter crafter = containerOf(3, 3, {});
    EXPECT_EQ(blocksWith(tokens), addRecords(crafter, imageInfo("i"), chartInfo("c"), snapshotInfo("s")).bytes());
}

TEST(TokenContainerBlocks, ofVersion1HaveNoDescriptions)
{
    BlockCrafter crafter = containerOf(1, 0, {{"t"}});
    crafter.block(3, entryBlock());
    FigureTokenContainer read;
    loadFrom(read, addRecords(crafter, textInfo("t"), Value(5)).bytes());
    EXPECT_EQ(offered(read), "");
    EXPECT_EQ(valueOf(read, "t"), Value(5));
}

TEST(TokenContainerBlocks, knowTokensByTheNamesInFront)
{
    BlockCrafter crafter = containerOf(3, 0, {{"t"}});
    crafter.block(3, entryBlock());
    FigureTokenContainer read;
    loadFrom(read, addRecords(crafter, textInfo("other"), Value(5)).bytes());
    EXPECT_EQ(valueOf(read, "t"), Value(5));
    EXPECT_EQ(valueOf(read, "other"), Value::UNKNOWN);
}

TEST(TokenContainerBlocks, keepTheSecondOfTwoWithOneName)
{
    Image8 const picture(2, 1);
    Image8 const second(3, 1);
    BlockCrafter crafter = containerOf(3, 0, {{"i", "i"}, {"i", "i"}});
    for (int i = 0; i < 2; ++i) {
        crafter.block(3, entryBlock());
        addRecords(crafter, imageInfo("i"), ImageData());
    }
    addPicture(crafter, picture);
    addPicture(crafter, second);
    FigureTokenContainer read;
    loadFrom(read, crafter.bytes());
    EXPECT_EQ(read.getImage("i")->getImage()->getWidth(), 3U);
}

TEST(TokenContainerEntries, ofVersion1ReadLikeThoseOfToday)
{
    BlockCrafter crafter = containerOf(3, 0, {{"t"}});
    crafter.block(1, Payload().b(false));
    FigureTokenContainer read;
    loadFrom(read, addRecords(crafter, textInfo("t"), Value(5)).bytes());
    EXPECT_EQ(valueOf(read, "t"), Value(5));
}

TEST(TokenContainerEntries, ofVersion2HaveSourcesOfValuesBehindThem)
{
    BlockCrafter crafter = containerOf(3, 0, {{"i", "t"}});
    crafter.block(2, Payload().b(true).u(2).s("x").s("y").b(true));
    addRecords(crafter, imageInfo("i"), ImageData(), valuesWith("x"), valuesWith("y"));
    crafter.block(2, Payload().b(true).u(0).b(false));
    addRecords(crafter, textInfo("t"), Value(5));
    FigureTokenContainer read;
    loadFrom(read, crafter.bytes());
    EXPECT_NE(read.getImage("i"), nullptr);
    EXPECT_EQ(valueOf(read, "t"), Value(5));
}

TEST(TokenContainerEntries, ofVersion2GiveAChartItsValues)
{
    BlockCrafter crafter = containerOf(3, 0, {{"c"}});
    crafter.block(2, Payload().b(true).u(1).s("x").b(true));
    addRecords(crafter, chartInfo("c"), ChartData(), valuesWith("dropped"), valuesWith("kept"));
    FigureTokenContainer read;
    loadFrom(read, crafter.bytes());
    ChartData const *chart = read.getChart("c");
    ASSERT_NE(chart->getTokenContainer(), nullptr);
    EXPECT_EQ(chart->getTokenInterface(), chart->getTokenContainer());
    EXPECT_EQ(valueOf(*chart->getTokenInterface(), "kept"), Value(5));
    EXPECT_EQ(valueOf(*chart->getTokenInterface(), "dropped"), Value::UNKNOWN);
}

TEST(TokenContainerEntries, giveAChartWithoutValuesAnEmptyContainer)
{
    for (unsigned int version : {2U, 3U}) {
        BlockCrafter crafter = containerOf(3, 0, {{"c"}});
        crafter.block(version, version == 2 ? Payload().b(true).u(0).b(false) : entryBlock());
        FigureTokenContainer read;
        loadFrom(read, addRecords(crafter, chartInfo("c"), ChartData()).bytes());
        ChartData const *chart = read.getChart("c");
        ASSERT_NE(chart->getTokenContainer(), nullptr);
        EXPECT_EQ(chart->getTokenInterface(), chart->getTokenContainer());
        EXPECT_EQ(offered(*chart->getTokenContainer()), "");
    }
}

TEST(TokenContainerEntries, leaveAChartTheValuesThatItHas)
{
    ChartData made;
    made.setTokenContainer(new TokenContainer(valuesWith("v")));
    BlockCrafter crafter = containerOf(3, 0, {{"c"}});
    crafter.block(3, entryBlock());
    FigureTokenContainer read;
    loadFrom(read, addRecords(crafter, chartInfo("c"), made).bytes());
    EXPECT_EQ(offered(*read.getChart("c")->getTokenContainer()), "v=text, ");
    EXPECT_EQ(read.getChart("c")->getTokenInterface(), nullptr);
}

/// The alpha of the pixel of a picture that stood in a container of the version.
unsigned char alphaOf(unsigned int version, bool hasAlphaChannel, Names const &names = {{"i"}, {"i"}})
{
    ImageColor picture(2, 2);
    for (unsigned int i = 0; i < 4; ++i)
        picture.setPixel(i % 2, i / 2, Color(1, 2, 3, 7));
    picture.setHasAlphaChannel(hasAlphaChannel);
    BlockCrafter crafter = containerOf(version, 0, names);
    crafter.block(3, entryBlock());
    addRecords(crafter, imageInfo("i"), ImageData());
    FigureTokenContainer read;
    loadFrom(read, addPicture(crafter, picture).bytes());
    ImageData const *data = read.getImage("i");
    auto const &found = dynamic_cast<ImageColor const &>(data->getOverlay() ? *data->getOverlay() : *data->getImage());
    for (unsigned int i = 0; i < 4; ++i)
        EXPECT_EQ(found.getPixel(i % 2, i / 2), Color(1, 2, 3, found.getPixel(0, 0).getAlpha()));
    return found.getPixel(0, 0).getAlpha();
}

TEST(TokenContainerPictures, ofOlderVersionsAreOpaqueWithoutAnAlphaChannel)
{
    EXPECT_EQ(alphaOf(1, false), 255);
    EXPECT_EQ(alphaOf(2, false), 255);
    EXPECT_EQ(alphaOf(2, true), 7);
    EXPECT_EQ(alphaOf(3, false), 7);
    EXPECT_EQ(alphaOf(2, false, {{"i"}, {}, {"i"}}), 7); // not so overlays
}

TEST(TokenContainerPictures, ofOlderVersionsMayBeGrey)
{
    BlockCrafter crafter = containerOf(2, 0, {{}, {"i"}});
    FigureTokenContainer read;
    EXPECT_EQ(loadError(read, addPicture(crafter, Image16(1, 1)).bytes()), "nothing thrown");
}

TEST(TokenContainerPictures, needNoToken)
{
    BlockCrafter crafter = containerOf(3, 0, {{}, {"i"}, {"o"}});
    addPicture(crafter, Image8(2, 1));
    addPicture(crafter, ImageColor(1, 1));
    FigureTokenContainer read;
    loadFrom(read, crafter.bytes());
    EXPECT_EQ(blocksWith(read), crafter.bytes());
}

TEST(TokenContainerPictures, ofSomethingElseAreRefused)
{
    Image8 const picture(2, 1);
    FigureTokenContainer tokens;
    tokens.setValue(imageInfo("i"), imageWith(&picture), true);
    tokens.setValue(textInfo("i"), Value(5)); // the picture stays
    std::string const bytes = blocksWith(tokens);
    FigureTokenContainer read;
    EXPECT_EQ(progError([&] { loadFrom(read, bytes); }),
              "libs/figure2/ZemFig2TokenContainer: Wrong entry type for adding images");
    EXPECT_EQ(valueOf(read, "i"), Value(5)); // what was read so far

    BlockCrafter crafter = containerOf(3, 0, {{"i"}, {}, {"i"}});
    crafter.block(3, entryBlock());
    addRecords(crafter, textInfo("i"), Value(5));
    addPicture(crafter, ImageColor(1, 1));
    EXPECT_EQ(progError([&] { loadFrom(read, crafter.bytes()); }),
              "libs/figure2/ZemFig2TokenContainer: Wrong entry type for adding overlays");
}

TEST(TokenContainerPictures, overOthersAreColoured)
{
    BlockCrafter crafter = containerOf(3, 0, {{}, {}, {"o"}});
    FigureTokenContainer read;
    EXPECT_EQ(loadError(read, addPicture(crafter, Image8(1, 1)).bytes()),
              "loading overlay image from figure stream failed");
}

TEST(TokenContainerBlocks, ofNewerVersionsAreRefused)
{
    FigureTokenContainer read;
    read.setValue(textInfo("old"), Value(5));
    EXPECT_EQ(loadError(read, containerOf(4, 0, {}).bytes()), "wrong block version");
    EXPECT_EQ(offered(read), "");
    EXPECT_EQ(loadError(read, containerOf(3, 0, {{"t"}}).block(4, entryBlock()).bytes()), "wrong block version");
}

TEST(TokenContainerBlocks, damagedHalfWayKeepWhatWasReadSoFar)
{
    BlockCrafter crafter = containerOf(3, 1, {{"a", "b"}});
    addRecords(crafter, textInfo("a"));
    crafter.block(3, entryBlock());
    addRecords(crafter, textInfo("a"), Value(5));
    FigureTokenContainer read;
    EXPECT_NE(loadError(read, crafter.bytes()), "nothing thrown");
    EXPECT_EQ(offered(read), "a=text, ");
    EXPECT_EQ(valueOf(read, "a"), Value(5));
}

} // namespace
} // namespace Zem::Fig2
