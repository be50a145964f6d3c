// The frozen data of a figure: what is stored under a name, and how it is filled.
#include "token_container_fixture.h"

#include <fig_token_entry.h>

#include <type_traits>
#include <utility>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

TEST(TokenContainerOfFigures, startsEmpty)
{
    FigureTokenContainer const tokens;
    EXPECT_EQ(offered(tokens), "");
    EXPECT_EQ(valueOf(tokens, "a"), Value::UNKNOWN);
    EXPECT_EQ(tokens.getImage("a"), nullptr);
    EXPECT_EQ(tokens.getChart("a"), nullptr);
    EXPECT_EQ(tokens.getSnapshot("a"), nullptr);
}

TEST(TokenContainerOfFigures, keepsWhatTheInterfaceIsByItself)
{
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("a"), Value(5));
    EXPECT_EQ(tokens.getModifiedCounter("a"), 0U);
    EXPECT_TRUE(tokens.getTokenChangeLog().empty());
    EXPECT_TRUE(tokens.getTokenGrouping("a").empty());
    EXPECT_EQ(tokens.getTokenGroupIconId("a"), "");
    EXPECT_EQ(progError([&] { tokens.getTokenGroupName("a"); }), "fig_token_interface: Group names not supported");
    tokens.releaseImage("a");
    tokens.releaseChart("a");
    tokens.releaseSnapshot("a");
}

TEST(TokenContainerOfFigures, givesItsValueAtEveryStageButWithNoIndex)
{
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("a"), Value(5));
    EXPECT_EQ(tokens.getValue("a", IndexIdentifier::NO_INDEX, StageIdentifier(7)), Value(5));
    EXPECT_EQ(tokens.getValue("a", IndexIdentifier(0), StageIdentifier(7)), Value::INVALID);
    EXPECT_EQ(tokens.getValue("b", IndexIdentifier(0), StageIdentifier(7)), Value::UNKNOWN);
}

TEST(TokenContainerOfFigures, knowsTokensByTheirBareNames)
{
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("a[3]"), Value(5));
    EXPECT_EQ(offered(tokens), "a[3]=text, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value(5));
    EXPECT_EQ(valueOf(tokens, "a[3]"), Value::UNKNOWN);
}

TEST(TokenContainerOfFigures, offersTokensInTheOrderOfTheirFirstEntry)
{
    FigureTokenContainer tokens;
    tokens.setValue({TokenInfo::TYPE_INTEGER, "b", "first"}, Value(1));
    tokens.setValue({TokenInfo::TYPE_INTEGER, "a", "second"}, Value(2));
    tokens.setValue({TokenInfo::TYPE_STRING, "b", "third"}, Value(3));
    EXPECT_EQ(offered(tokens), "b=first, a=second, ");
    EXPECT_EQ(valueOf(tokens, "b"), Value(3));
    std::vector<TokenInfo> infos;
    tokens.getTokens(&infos);
    EXPECT_EQ(infos[0].getType(), TokenInfo::TYPE_INTEGER);
}

TEST(TokenContainerOfFigures, ignoresValuesOfNamesThatAreNoToken)
{
    FigureTokenContainer tokens;
    tokens.setValue(textInfo("no token"), Value(5));
    tokens.setValue(textInfo(""), Value(5));
    EXPECT_EQ(offered(tokens), "");
    EXPECT_EQ(valueOf(tokens, "no token"), Value::UNKNOWN);
}

TEST(TokenContainerOfFigures, refusesDataOfNamesThatAreNoToken)
{
    FigureTokenContainer tokens;
    ImageData image;
    ChartData chart;
    SnapshotData snapshot;
    EXPECT_EQ(progError([&] { tokens.setValue(imageInfo("no token"), &image, true); }),
              "fig_token_container: Parsing image token name failed");
    EXPECT_EQ(progError([&] { tokens.setValue(chartInfo("no token"), &chart); }),
              "fig_token_container: Parsing chart token name failed");
    EXPECT_EQ(progError([&] { tokens.setValue(snapshotInfo("no token"), &snapshot); }),
              "fig_token_container: Parsing snapshot token name failed");
    EXPECT_EQ(offered(tokens), "");
}

TEST(TokenContainerOfFigures, holdsValuesOfPlainTypesOnly)
{
    for (int type = 0; type <= 22; ++type) {
        FigureTokenContainer tokens;
        tokens.setValue({static_cast<TokenInfo::Type_t>(type), "a", "A"}, Value(5));
        bool const isPlain = type < 7 || (type > 11 && type != 16 && type != 17);
        EXPECT_EQ(valueOf(tokens, "a"), isPlain ? Value(5) : Value::UNKNOWN) << type;
        EXPECT_EQ(tokens.getValue("a", IndexIdentifier(1), StageIdentifier()), Value::INVALID) << type;
        EXPECT_EQ(offered(tokens), "a=A, ") << type;
        EXPECT_EQ(tokens.getImage("a"), nullptr);
        EXPECT_EQ(tokens.getChart("a"), nullptr);
        EXPECT_EQ(tokens.getSnapshot("a"), nullptr);
    }
}

TEST(TokenContainerOfFigures, ownsDataUnderTheirOwnTypeOnly)
{
    FigureTokenContainer tokens;
    auto *image = new ImageData;
    auto *chart = new ChartData;
    auto *snapshot = new SnapshotData;
    tokens.setValue(imageInfo("i"), image, true);
    tokens.setValue(chartInfo("c[1]"), chart);
    tokens.setValue(snapshotInfo("s"), snapshot);
    FigureTokenContainer const &constant = tokens;
    EXPECT_EQ(tokens.getImage("i"), image);
    EXPECT_EQ(constant.getImage("i"), image);
    EXPECT_EQ(tokens.getChart("c"), chart);
    EXPECT_EQ(constant.getChart("c"), chart);
    EXPECT_EQ(tokens.getSnapshot("s"), snapshot);
    EXPECT_EQ(constant.getSnapshot("s"), snapshot);
    EXPECT_EQ(tokens.getImage("c"), nullptr);
    EXPECT_EQ(tokens.getChart("s"), nullptr);
    EXPECT_EQ(tokens.getSnapshot("i"), nullptr);
    EXPECT_EQ(valueOf(tokens, "i"), Value::UNKNOWN);
    EXPECT_EQ(offered(tokens), "i=image, c[1]=chart, s=snapshot, ");

    // Under a description of another type the data are not found.
    tokens.setValue(textInfo("x"), new ChartData);
    EXPECT_EQ(tokens.getChart("x"), nullptr);
}

TEST(TokenContainerOfFigures, ownsPrivateCopiesOfPictures)
{
    FigureTokenContainer tokens;
    {
        Image8 picture(2, 1);
        picture.getRow(0)[1] = 200;
        ImageColor overlay(1, 1);
        overlay.setPixel(0, 0, Color(1, 2, 3));
        tokens.setValue(imageInfo("a"), imageWith(&picture, &overlay), false);
        EXPECT_NE(tokens.getImage("a")->getImage(), &picture);
    }
    EXPECT_EQ(tokens.getImage("a")->getImage()->getRowBytes(0)[1], 200);
    EXPECT_EQ(tokens.getImage("a")->getOverlay()->getPixel(0, 0), Color(1, 2, 3));

    tokens.setValue(imageInfo("a"), new ImageData, true);
    EXPECT_EQ(tokens.getImage("a")->getImage(), nullptr);
    EXPECT_EQ(tokens.getImage("a")->getOverlay(), nullptr);
}

TEST(TokenContainerOfFigures, takesDataThatItHoldsAlready)
{
    FigureTokenContainer tokens;
    Image8 const picture(2, 1);
    ImageData *image = imageWith(&picture);
    ChartData *chart = chartWith("x");
    SnapshotData *snapshot = snapshotWith(3);
    for (int i = 0; i < 2; ++i) {
        tokens.setValue(imageInfo("i"), image, true);
        tokens.setValue(chartInfo("c"), chart);
        tokens.setValue(snapshotInfo("s"), snapshot);
    }
    EXPECT_EQ(tokens.getImage("i"), image);
    EXPECT_EQ(image->getImage()->getWidth(), 2U);
    EXPECT_TRUE(tokens.getChart("c")->datasetExists("x"));
    EXPECT_EQ(tokens.getSnapshot("s")->getDrawingMode(), 3U);
}

TEST(TokenContainerOfFigures, replacesDataOfOneKindByThoseOfAnother)
{
    FigureTokenContainer tokens;
    tokens.setValue(chartInfo("a"), new ChartData);
    tokens.setValue(snapshotInfo("a"), new SnapshotData);
    EXPECT_EQ(tokens.getChart("a"), nullptr);
    EXPECT_NE(tokens.getSnapshot("a"), nullptr);
    EXPECT_EQ(offered(tokens), "a=chart, ");
}

TEST(TokenContainerEntry, handsOutDataOfItsOwnTypeOnly)
{
    std::string const file = "libs/figure2/ZemFig2TokenContainer: ";
    FigureTokenContainer::Entry entry(textInfo("a"), Value(5));
    EXPECT_EQ(progError([&] { entry.getImageData(); }), file + "Wrong entry type, image data expected");
    EXPECT_EQ(progError([&] { entry.getChartData(); }), file + "Wrong entry type, chart data expected");
    EXPECT_EQ(progError([&] { entry.getSnapshotData(); }), file + "Wrong entry type, snapshot data expected");
    EXPECT_EQ(progError([&] { entry.setImage(nullptr); }), file + "Wrong entry type for adding images");
    EXPECT_EQ(progError([&] { entry.setOverlay(nullptr); }), file + "Wrong entry type for adding overlays");

    auto chart = std::make_unique<ChartData>();
    ChartData const *given = chart.get();
    EXPECT_EQ(FigureTokenContainer::Entry(chartInfo("c"), std::move(chart)).getChartData(), given);
}

TEST(FrozenImage, doesNotDependOnTheInterfaceOfItsObjects)
{
    FigureTokenContainer tokens;
    {
        LiveTokens live;
        live.infos = {textInfo("v")};
        live.set("v", Value(5));
        auto *data = new ImageData;
        auto *object = new ImageDataObject("o");
        object->setTokenInterface(&live);
        data->addObject(object);
        data->addObject(new ImageDataObject("without"));
        tokens.setValue(imageInfo("a"), data, true);
    }
    ImageDataObject const *object = tokens.getImage("a")->getObject("o");
    EXPECT_EQ(object->getTokenInterface(), object->getTokenContainer());
    EXPECT_EQ(valueOf(*object->getTokenInterface(), "v"), Value(5));
    EXPECT_EQ(tokens.getImage("a")->getObject("without")->getTokenInterface(), nullptr);
    EXPECT_EQ(tokens.getImage("a")->getObject("without")->getTokenContainer(), nullptr);
}

TEST(FrozenImage, keepsTheContainersOfItsObjects)
{
    LiveTokens live;
    FigureTokenContainer tokens;
    auto *data = new ImageData;
    auto *object = new ImageDataObject("o");
    auto *container = new TokenContainer;
    object->setTokenInterface(&live);
    object->setTokenContainer(container);
    data->addObject(object);
    tokens.setValue(imageInfo("a"), data, true);
    EXPECT_EQ(object->getTokenInterface(), &live);
    EXPECT_EQ(object->getTokenContainer(), container);
}

TEST(FrozenImage, takesValuesThatBelongToNoStage)
{
    LiveTokens live;
    live.infos = {textInfo("v")};
    live.setAt(3, "v", Value(5));
    live.setAt(StageIdentifier::NO_STAGE.getIdentifier(), "v", Value(6));
    FigureTokenContainer tokens;
    auto *chart = new ChartData;
    chart->setTokenInterface(&live);
    tokens.setValue(chartInfo("a"), chart);
    EXPECT_EQ(valueOf(*chart->getTokenInterface(), "v"), Value(6));
}

TEST(FrozenChart, doesNotDependOnItsInterface)
{
    FigureTokenContainer tokens;
    {
        LiveTokens live;
        live.infos = {textInfo("v")};
        live.set("v", Value(5));
        auto *chart = new ChartData;
        chart->setTokenInterface(&live);
        tokens.setValue(chartInfo("a"), chart);
    }
    ChartData const *chart = tokens.getChart("a");
    EXPECT_EQ(chart->getTokenInterface(), chart->getTokenContainer());
    EXPECT_EQ(valueOf(*chart->getTokenInterface(), "v"), Value(5));

    tokens.setValue(chartInfo("b"), new ChartData);
    EXPECT_EQ(tokens.getChart("b")->getTokenContainer(), nullptr);
}

TEST(AddTokens, takesTheValuesOfAStage)
{
    LiveTokens live;
    live.infos = {textInfo("a"), textInfo("b[1]"), textInfo("dropped"), textInfo("no token"), imageInfo("i")};
    live.setAt(3, "a", Value(1));
    live.setAt(4, "a", Value(2));
    live.set("b", Value(3));
    live.set("dropped", Value(4));
    FigureTokenContainer tokens;
    tokens.addTokens(StageIdentifier(4), &live, NameFilter("dropped"));
    // What has no plain value is offered without one.
    EXPECT_EQ(offered(tokens), "a=text, b[1]=text, i=image, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value(2));
    EXPECT_EQ(valueOf(tokens, "b"), Value(3));
    EXPECT_EQ(tokens.getImage("i"), nullptr);
}

/// An interface with tokens of each kind.
class FillFromTokens : public testing::Test
{
protected:
    FillFromTokens()
    {
        imageData.setImage(&picture);
        imageData.setOverlay(&overlay);
        live.infos = {textInfo("a"), imageInfo("i[2]"), chartInfo("c"), snapshotInfo("s"), textInfo("no token")};
        live.setAt(3, "a", Value(1));
        live.images["i"] = &imageData;
        live.charts["c"] = chart.get();
        live.snapshots["s"] = snapshot.get();
    }

    Image8 const picture{2, 1};
    ImageColor const overlay{1, 1};
    ImageData imageData;
    std::unique_ptr<ChartData> const chart{chartWith("x")};
    std::unique_ptr<SnapshotData> const snapshot{snapshotWith(3)};
    LiveTokens live;
};

TEST_F(FillFromTokens, copiesValuesAndDataOfEachKind)
{
    FigureTokenContainer tokens;
    tokens.merge(StageIdentifier(3), &live, TokenAllPassFilter());
    EXPECT_EQ(offered(tokens), "a=text, i[2]=image, c=chart, s=snapshot, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value(1));
    EXPECT_NE(tokens.getImage("i"), &imageData);
    EXPECT_NE(tokens.getImage("i")->getImage(), &picture);
    EXPECT_EQ(tokens.getImage("i")->getImage()->getWidth(), 2U);
    EXPECT_NE(tokens.getImage("i")->getOverlay(), &overlay);
    EXPECT_NE(tokens.getImage("i")->getOverlay(), nullptr);
    EXPECT_NE(tokens.getChart("c"), chart.get());
    EXPECT_TRUE(tokens.getChart("c")->datasetExists("x"));
    EXPECT_NE(tokens.getSnapshot("s"), snapshot.get());
    EXPECT_EQ(tokens.getSnapshot("s")->getDrawingMode(), 3U);
}

TEST_F(FillFromTokens, takesOnlyWhatTheFilterLetsPass)
{
    FigureTokenContainer const tokens(StageIdentifier(3), &live, NameFilter("c"));
    EXPECT_EQ(offered(tokens), "a=text, i[2]=image, s=snapshot, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value(1));
}

TEST_F(FillFromTokens, asksAtTheStage)
{
    FigureTokenContainer const tokens(StageIdentifier(4), &live, TokenAllPassFilter());
    EXPECT_EQ(valueOf(tokens, "a"), valueOf(live, "a"));
    EXPECT_NE(valueOf(tokens, "a"), Value(1));
}

TEST_F(FillFromTokens, leavesOutDataThatAreNotThereAndTypesWithoutAny)
{
    live.images.clear();
    live.charts.clear();
    live.snapshots.clear();
    for (int type = 7; type <= 10; ++type)
        live.infos.push_back({static_cast<TokenInfo::Type_t>(type), QString("t%1").arg(type), "T"});
    FigureTokenContainer const tokens(StageIdentifier(3), &live, TokenAllPassFilter());
    EXPECT_EQ(offered(tokens), "a=text, ");
}

TEST_F(FillFromTokens, copiesItAsAWholeAndDeeply)
{
    FigureTokenContainer const tokens(StageIdentifier(3), &live, TokenAllPassFilter());
    FigureTokenContainer const copy(tokens);
    EXPECT_EQ(offered(copy), offered(tokens));
    EXPECT_EQ(valueOf(copy, "a"), Value(1));
    EXPECT_NE(copy.getImage("i"), tokens.getImage("i"));
    EXPECT_NE(copy.getImage("i")->getImage(), tokens.getImage("i")->getImage());
    EXPECT_EQ(copy.getImage("i")->getImage()->getWidth(), 2U);
    EXPECT_NE(copy.getChart("c"), tokens.getChart("c"));
    EXPECT_NE(copy.getSnapshot("s"), tokens.getSnapshot("s"));
}

TEST_F(FillFromTokens, sharesItOnAssignment)
{
    FigureTokenContainer const tokens(StageIdentifier(3), &live, TokenAllPassFilter());
    FigureTokenContainer other;
    other = tokens;
    EXPECT_EQ(other.getImage("i"), tokens.getImage("i"));
    EXPECT_EQ(other.getChart("c"), tokens.getChart("c"));
    EXPECT_EQ(offered(other), offered(tokens));
    other = FigureTokenContainer(); // forgets what it shared
    EXPECT_EQ(offered(other), "");
}

TEST_F(FillFromTokens, mayMergeAContainerIntoItself)
{
    FigureTokenContainer tokens(StageIdentifier(3), &live, TokenAllPassFilter());
    tokens.merge(StageIdentifier(), &tokens, TokenAllPassFilter());
    EXPECT_EQ(offered(tokens), "a=text, i[2]=image, c=chart, s=snapshot, ");
    EXPECT_EQ(tokens.getImage("i")->getImage()->getWidth(), 2U);
    EXPECT_TRUE(tokens.getChart("c")->datasetExists("x"));
}

TEST_F(FillFromTokens, mayForgetTokens)
{
    FigureTokenContainer tokens(StageIdentifier(3), &live, TokenAllPassFilter());
    tokens.deleteToken("a");
    tokens.deleteToken("c");
    EXPECT_EQ(offered(tokens), "i[2]=image, s=snapshot, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value::UNKNOWN);
    EXPECT_EQ(tokens.getChart("c"), nullptr);
    tokens.deleteToken("unknown");

    // By the full name only the description goes, by the bare name only the data.
    tokens.deleteToken("i[2]");
    EXPECT_EQ(offered(tokens), "s=snapshot, ");
    EXPECT_NE(tokens.getImage("i"), nullptr);
    tokens.deleteToken("i");
    EXPECT_EQ(tokens.getImage("i"), nullptr);
}

} // namespace
} // namespace Zem::Fig2
