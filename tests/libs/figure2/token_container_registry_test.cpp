// The frozen data of a figure, taken from a registry of tokens.
#include "data_interface_fixture.h"
#include "token_container_fixture.h"

#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>

namespace Zem::Fig2 {
namespace {

/// A figure whose image elements make use of the names from "a" to "k" and of one that is no token.
class FillFromRegistry : public testing::Test
{
protected:
    FillFromRegistry()
    {
        for (char name = 'a'; name <= 'k'; ++name)
            use(QString(QLatin1Char(name)));
        use("no token");
        provider.image = &picture;
        provider.overlay = &overlay;
        provider.chart = &chart;
        provider.snapshot = &snapshot;
        registry.registerReferenceInterface(&provider);
    }

    void use(QString const &name)
    {
        auto *image = new Image;
        image->setToken(name);
        figure.getRoot()->addChild(image);
    }
    FigureTokenContainer fill() const { return FigureTokenContainer(&figure, &registry); }

    Figure figure;
    DataInterface registry;
    std::string log;
    Provider provider{&log};
    Image8 const picture{2, 1};
    ImageColor const overlay{1, 1};
    ChartData const chart;
    SnapshotData const snapshot;
};

TEST_F(FillFromRegistry, takesValuesWithTheirTexts)
{
    registry.setInt("a", 5);
    registry.setDouble("b", 2.5, UnitData(uForce));
    registry.setDouble("c", 3.5, UnitData());
    registry.setString("d", "value");
    registry.setDisplayText({"a", VARIABLE_INTEGER}, "A");
    registry.setInt("unused", 5);
    FigureTokenContainer const tokens = fill();
    EXPECT_EQ(offered(tokens), "a=A, b=, c=, d=, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value(5));
    EXPECT_EQ(valueOf(tokens, "b"), Value(2.5, uForce));
    EXPECT_EQ(valueOf(tokens, "c"), Value(3.5, nullptr));
    EXPECT_EQ(valueOf(tokens, "d"), Value(QString("value")));
    std::vector<TokenInfo> infos;
    tokens.getTokens(&infos);
    EXPECT_EQ(infos[0].getType(), TokenInfo::TYPE_INTEGER);
    EXPECT_EQ(infos[1].getType(), TokenInfo::TYPE_FORCE);
    EXPECT_EQ(infos[2].getType(), TokenInfo::TYPE_DOUBLE);
    EXPECT_EQ(infos[3].getType(), TokenInfo::TYPE_STRING);
}

TEST_F(FillFromRegistry, takesImagesWithBothPictures)
{
    auto *data = new ImageData;
    data->addPointMask({1, "mask"});
    registry.setImage("a", picture.copy(true), overlay.copy(true), data);
    registry.setImage("b", picture.copy(true), nullptr, nullptr);
    registry.setDisplayText({"a", VARIABLE_IMAGE}, "A");
    FigureTokenContainer const tokens = fill();
    EXPECT_EQ(offered(tokens), "a=A, b=, ");
    EXPECT_EQ(tokens.getImage("a")->getImage()->getWidth(), 2U);
    EXPECT_NE(tokens.getImage("a")->getOverlay(), nullptr);
    EXPECT_EQ(tokens.getImage("a")->getPointMasks().size(), 1U);
    EXPECT_EQ(data->getImage(), nullptr);
    EXPECT_EQ(tokens.getImage("b")->getImage()->getWidth(), 2U);
    EXPECT_EQ(tokens.getImage("b")->getOverlay(), nullptr);
}

TEST_F(FillFromRegistry, takesChartsAndSnapshots)
{
    registry.setChart("a", chartWith("x"));
    registry.setSnapshot("b", snapshotWith(3));
    FigureTokenContainer const tokens = fill();
    EXPECT_EQ(offered(tokens), "a=, b=, ");
    EXPECT_TRUE(tokens.getChart("a")->datasetExists("x"));
    EXPECT_EQ(tokens.getSnapshot("b")->getDrawingMode(), 3U);
}

TEST_F(FillFromRegistry, fetchesReferencesAndGivesThemBack)
{
    provider.servesOverlay = true;
    provider.servesChart = true;
    provider.servesSnapshot = true;
    registry.setImageReference("a");
    registry.setChartReference("b");
    registry.setSnapshotReference("c");
    FigureTokenContainer const tokens = fill();
    EXPECT_EQ(offered(tokens), "a=, b=, c=, ");
    EXPECT_EQ(log, "overlay a; release a; chart b; release b; snapshot c; release c; ");
    EXPECT_NE(tokens.getImage("a")->getImage(), &picture);
    EXPECT_EQ(tokens.getImage("a")->getImage()->getWidth(), 2U);
    EXPECT_NE(tokens.getImage("a")->getOverlay(), nullptr);
    EXPECT_NE(tokens.getChart("b"), &chart);
    EXPECT_NE(tokens.getChart("b"), nullptr);
    EXPECT_NE(tokens.getSnapshot("c"), &snapshot);
    EXPECT_NE(tokens.getSnapshot("c"), nullptr);
}

TEST_F(FillFromRegistry, copiesTheImageDataBehindAReference)
{
    ImageData data;
    data.addPointMask({1, "mask"});
    provider.imageData = &data;
    provider.servesImage = true;
    registry.setImageReference("a");
    FigureTokenContainer const tokens = fill();
    EXPECT_NE(tokens.getImage("a"), &data);
    EXPECT_EQ(tokens.getImage("a")->getPointMasks().size(), 1U);
}

TEST_F(FillFromRegistry, givesNothingBackThatNobodyServed)
{
    registry.setImageReference("a");
    registry.setChartReference("b");
    registry.setSnapshotReference("c");
    FigureTokenContainer const tokens = fill();
    // An image is there even without a picture.
    EXPECT_EQ(offered(tokens), "a=, ");
    EXPECT_EQ(tokens.getImage("a")->getImage(), nullptr);
    EXPECT_EQ(log, "overlay a; image a; chart b; snapshot c; ");
}

TEST_F(FillFromRegistry, skipsGroupsSeparatorsAndNamesThatAreNoToken)
{
    registry.setGroup("a");
    registry.setSeparator("b");
    registry.setImage("no token", picture.copy(true), nullptr, nullptr);
    EXPECT_EQ(offered(fill()), "");
}

TEST_F(FillFromRegistry, takesTheLastTypeOfANameUnderTheFirstDescription)
{
    registry.setInt("a", 5);
    registry.setString("a", "value");
    registry.setDisplayText({"a", VARIABLE_INTEGER}, "first");
    registry.setDisplayText({"a", VARIABLE_STRING}, "second");
    FigureTokenContainer const tokens = fill();
    EXPECT_EQ(offered(tokens), "a=first, ");
    EXPECT_EQ(valueOf(tokens, "a"), Value(QString("value")));
}

TEST_F(FillFromRegistry, takesItsOwnTokensOnly)
{
    DataInterface sub;
    sub.setInt("a", 5);
    registry.registerSubDataInterface(&sub);
    EXPECT_EQ(offered(fill()), "");
}

} // namespace
} // namespace Zem::Fig2
