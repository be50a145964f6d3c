// What a snapshot owns, and what its figure takes from it.
#include "snapshot_fixture.h"

namespace Zem::Fig2 {
namespace {

TEST(SnapshotTokens, areTheFrozenOnesThenThoseOfTheProject)
{
    FigureTokenContainer frozen;
    frozen.setValue(plain("b"), Value(1));
    frozen.setValue(plain("a"), Value(2));
    TokenContainer project;
    project.setValue(plain("c"), Value(3));
    project.setValue(plain("a"), Value(4));
    std::vector<TokenInfo> tokens{plain("before")};

    SnapshotTokenInterface(&frozen, &project).getTokens(&tokens);
    EXPECT_EQ(namesOf(tokens), (Names{"b", "a", "c", "a"}));
    SnapshotTokenInterface(nullptr, &project).getTokens(&tokens);
    EXPECT_EQ(namesOf(tokens), (Names{"c", "a"}));
    SnapshotTokenInterface(&frozen, nullptr).getTokens(&tokens);
    EXPECT_EQ(namesOf(tokens), (Names{"b", "a"}));
    SnapshotTokenInterface(nullptr, nullptr).getTokens(&tokens);
    EXPECT_EQ(namesOf(tokens), Names());
}

TEST(SnapshotTokens, haveTheFrozenValueOrElseThatOfTheProject)
{
    FigureTokenContainer frozen;
    frozen.setValue(plain("both"), Value(QString("frozen")));
    frozen.setValue(plain("invalid"), Value::INVALID);
    TokenContainer project;
    for (char const *name : {"both", "invalid", "project"})
        project.setValue(plain(name), Value(QString("project")));

    SnapshotTokenInterface const tokens(&frozen, &project);
    EXPECT_EQ(valueOf(tokens, "both"), "frozen");
    EXPECT_EQ(valueOf(tokens, "invalid"), "project");
    EXPECT_EQ(valueOf(tokens, "project"), "project");
    EXPECT_EQ(valueOf(tokens, "neither"), "unknown");

    SnapshotTokenInterface const alone(&frozen, nullptr);
    EXPECT_EQ(valueOf(alone, "invalid"), "invalid");
    EXPECT_EQ(valueOf(alone, "project"), "unknown");
    EXPECT_EQ(valueOf(SnapshotTokenInterface(nullptr, &project), "both"), "project");
    EXPECT_EQ(valueOf(SnapshotTokenInterface(nullptr, nullptr), "both"), "unknown");
}

TEST(SnapshotTokens, addUpTheCountersOfBothSources)
{
    class CountingContainer : public FigureTokenContainer
    {
    public:
        unsigned int getModifiedCounter(QString const &) const override { return 40; }
    };
    CountingContainer frozen;
    TokenContainer project;
    project.setValue(plain("a"), Value(1));
    project.setValue(plain("a"), Value(2));

    EXPECT_EQ(SnapshotTokenInterface(&frozen, &project).getModifiedCounter("a"), 42U);
    EXPECT_EQ(SnapshotTokenInterface(&frozen, nullptr).getModifiedCounter("a"), 40U);
    EXPECT_EQ(SnapshotTokenInterface(nullptr, &project).getModifiedCounter("a"), 2U);
    EXPECT_EQ(SnapshotTokenInterface(nullptr, nullptr).getModifiedCounter("a"), 0U);
}

TEST(SnapshotTokens, lendTheFrozenData)
{
    FigureTokenContainer frozen;
    frozen.setValue(TokenInfo(TokenInfo::TYPE_IMAGE, "image", ""), new ImageData, true);
    frozen.setValue(TokenInfo(TokenInfo::TYPE_CHART, "chart", ""), new ChartData);
    frozen.setValue(TokenInfo(TokenInfo::TYPE_SNAPSHOT, "snapshot", ""), new SnapshotData);

    SnapshotTokenInterface const tokens(&frozen, nullptr);
    EXPECT_EQ(tokens.getImage("image"), frozen.getImage("image"));
    EXPECT_EQ(tokens.getChart("chart"), frozen.getChart("chart"));
    EXPECT_EQ(tokens.getSnapshot("snapshot"), frozen.getSnapshot("snapshot"));
    EXPECT_NE(tokens.getImage("image"), nullptr);
    EXPECT_NE(tokens.getChart("chart"), nullptr);
    EXPECT_NE(tokens.getSnapshot("snapshot"), nullptr);
    tokens.releaseImage("image");
    tokens.releaseChart("chart");
    tokens.releaseSnapshot("snapshot");
}

TEST(SnapshotTokens, lendNothingWithoutAContainer)
{
    SnapshotTokenInterface const tokens(nullptr, nullptr);
    EXPECT_EQ(tokens.getImage("image"), nullptr);
    EXPECT_EQ(tokens.getChart("chart"), nullptr);
    EXPECT_EQ(tokens.getSnapshot("snapshot"), nullptr);
    EXPECT_NO_THROW(tokens.releaseImage("image"));
    EXPECT_NO_THROW(tokens.releaseChart("chart"));
    EXPECT_NO_THROW(tokens.releaseSnapshot("snapshot"));
}

/// Counts its updates and remembers the stage of the last.
class StageProbe : public Rectangle
{
public:
    Element *copy() const override { return new StageProbe(*this); }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override
    {
        ++updates;
        lastStage = stage;
        Rectangle::computeDynamicData(stage, tokens);
    }

    int updates = 0;
    StageIdentifier lastStage;
};

class SnapshotOwner : public testing::Test
{
protected:
    /// A figure with a label of the token "a" and a probe.
    Figure *makeFigure()
    {
        auto *figure = new Figure;
        addLabel(*figure, "$a$");
        probe = new StageProbe;
        figure->getRoot()->addChild(probe);
        return figure;
    }
    static FigureTokenContainer *makeTokens(char const *value = "frozen")
    {
        auto *tokens = new FigureTokenContainer;
        tokens->setValue(plain("a"), Value(QString::fromLatin1(value)));
        return tokens;
    }
    static std::string textIn(SnapshotData &snapshot)
    {
        return static_cast<Label *>(childOf(*snapshot.getFigure()))->getResolvedText().toStdString();
    }

    Support::FakeCalculator calculator;
    StageProbe *probe = nullptr;
};

TEST_F(SnapshotOwner, isEmptyAtFirst)
{
    SnapshotData snapshot;
    Legend2::Legend legend;
    Legend2::Data data;
    EXPECT_EQ(snapshot.getFigure(), nullptr);
    EXPECT_EQ(std::as_const(snapshot).getFigure(), nullptr);
    EXPECT_EQ(snapshot.getTokenContainer(), nullptr);
    EXPECT_EQ(snapshot.getProjectTokenContainer(), nullptr);
    EXPECT_EQ(snapshot.getStage(), StageIdentifier());
    EXPECT_FALSE(snapshot.getLegendData(&legend, &data));
    EXPECT_FALSE(snapshot.showTolerances());
    EXPECT_EQ(snapshot.getDrawingMode(), 0U);
    EXPECT_EQ(snapshot.getToleranceParams(), Legend2::ToleranceParams());
    EXPECT_EQ(snapshot.getHistogramData(), Legend2::HistogramData());
}

TEST_F(SnapshotOwner, keepsTheDrawingModeAsANumber)
{
    SnapshotData snapshot;
    snapshot.setDrawingMode(SnapshotData::DrawingMode{4000000000U});
    EXPECT_EQ(snapshot.getDrawingMode(), 4000000000U);
}

TEST_F(SnapshotOwner, namesThePictureOfASnapshotOfOne)
{
    EXPECT_EQ(SnapshotData::TOKEN_SNAPSHOT_IMAGE, QLatin1StringView("Zem_SnapData_SnapshotImageToken"));
}

TEST_F(SnapshotOwner, ofAFigureAndTokensShowsThese)
{
    Figure *figure = makeFigure();
    FigureTokenContainer *tokens = makeTokens();
    SnapshotData snapshot(STAGE, figure, tokens);

    EXPECT_EQ(snapshot.getTokenContainer(), tokens);
    EXPECT_EQ(snapshot.getStage(), STAGE);
    EXPECT_EQ(snapshot.getFigure(), figure);
    EXPECT_EQ(textIn(snapshot), "frozen");
    EXPECT_EQ(figure->getChartInterface(), nullptr);
}

TEST_F(SnapshotOwner, ofAFigureKeepsTheAnswersOfItsChartInterface)
{
    auto live = std::make_unique<LiveCharts>();
    Figure *figure = makeFigure();
    addGenericChart(*figure, "time", {DataToken("way")});
    figure->setChartInterface(live.get());

    SnapshotData const snapshot(STAGE, figure, makeTokens());
    live.reset();

    ASSERT_NE(figure->getChartInterface(), nullptr);
    EXPECT_EQ(figure->getChartInterface()->getTokenDescription(DataToken("way")), "live description way");
}

TEST_F(SnapshotOwner, mayHaveNeitherFigureNorTokens)
{
    SnapshotData snapshot(STAGE, nullptr, nullptr);
    EXPECT_EQ(snapshot.getFigure(), nullptr);
    EXPECT_EQ(snapshot.getTokenContainer(), nullptr);
    SnapshotData const copy(snapshot);
    EXPECT_EQ(copy.getFigure(), nullptr);
}

class SystemFont : public SnapshotOwner
{
protected:
    SystemFont() { Font::setSystemLabelFont(Font("Then", 9.0, Font::BOLD)); }
    ~SystemFont() override { Font::setSystemLabelFont(before_); }

private:
    Font const before_ = Font::getSystemLabelFont();
};

TEST_F(SystemFont, isKeptAsItWas)
{
    auto *figure = new Figure;
    Label *system = addLabel(*figure, "a");
    system->setUseSystemFont(true);
    Label *own = addLabel(*figure, "b");
    own->setFont(Font("Own", 7.0, 0));

    SnapshotData const snapshot(STAGE, figure, nullptr);
    Font::setSystemLabelFont(Font("Now", 11.0, 0));

    EXPECT_EQ(system->getFont(), Font("Then", 9.0, Font::BOLD));
    EXPECT_FALSE(system->getUseSystemFont());
    EXPECT_EQ(own->getFont(), Font("Own", 7.0, 0));
}

TEST_F(SnapshotOwner, ofAPictureShowsItInTheResolutionOfTheScreen)
{
    Image8 const picture(192, 96);
    ImageConversion conversion;
    conversion.setMin(7);
    SnapshotData snapshot(STAGE, &picture, conversion);

    Figure *figure = snapshot.getFigure();
    // Ninety-six dots per inch.
    EXPECT_NEAR(figure->getSize().x, 50.8, 1e-12);
    EXPECT_NEAR(figure->getSize().y, 25.4, 1e-12);
    EXPECT_EQ(figure->getBackground(), FillStyle(Color(255, 255, 255)));
    ASSERT_EQ(numberOfChildren(*figure), 1U);
    auto const *image = dynamic_cast<Image const *>(childOf(*figure));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->getToken(), SnapshotData::TOKEN_SNAPSHOT_IMAGE);
    EXPECT_EQ(image->getSize(), figure->getSize());
    EXPECT_EQ(image->getOrigin(), figure->getSize() * 0.5);
    EXPECT_EQ(image->getInnerOrigin(), BaVec2d<double>(0, 0));
    EXPECT_NEAR(image->getScaling(), 25.4 / 96.0, 1e-12);
    EXPECT_EQ(image->getImageConversion().getMin(), conversion.getMin());

    std::vector<TokenInfo> tokens;
    snapshot.getTokenContainer()->getTokens(&tokens);
    ASSERT_EQ(tokens.size(), 1U);
    EXPECT_EQ(tokens[0].getType(), 11U);
    EXPECT_EQ(tokens[0].getName(), SnapshotData::TOKEN_SNAPSHOT_IMAGE);
    ImageData const *data = snapshot.getTokenContainer()->getImage(SnapshotData::TOKEN_SNAPSHOT_IMAGE);
    ASSERT_NE(data->getImage(), nullptr);
    EXPECT_NE(data->getImage(), &picture);
    EXPECT_EQ(data->getImage()->getWidth(), 192U);
}

TEST_F(SnapshotOwner, updatesItsFigureOnceForItsStage)
{
    SnapshotData snapshot(STAGE, makeFigure(), makeTokens());
    EXPECT_EQ(probe->updates, 0);
    snapshot.getFigure();
    std::as_const(snapshot).getFigure();
    EXPECT_EQ(probe->updates, 1);
    EXPECT_EQ(probe->lastStage, STAGE);
    probe->invalidate();
    snapshot.getFigure();
    EXPECT_EQ(probe->updates, 1);
}

TEST_F(SnapshotOwner, givesANewFigureItsInterfacesAndUpdatesIt)
{
    LiveCharts live;
    Figure *first = makeFigure();
    first->setChartInterface(&live);
    SnapshotData snapshot(STAGE, first, makeTokens());
    ChartInterface *charts = first->getChartInterface();
    FigureTokenInterface const *tokens = first->getTokenInterface();
    snapshot.getFigure();

    Figure *second = makeFigure();
    second->setChartInterface(&live);
    snapshot.setFigure(second);

    EXPECT_EQ(second->getChartInterface(), charts);
    EXPECT_EQ(second->getTokenInterface(), tokens);
    EXPECT_EQ(probe->updates, 0);
    EXPECT_EQ(snapshot.getFigure(), second);
    EXPECT_EQ(probe->updates, 1);
    EXPECT_EQ(textIn(snapshot), "frozen");

    probe->invalidate();
    snapshot.setFigure(second);
    EXPECT_EQ(snapshot.getFigure(), second);
    EXPECT_EQ(probe->updates, 2);
    snapshot.setFigure(nullptr);
    EXPECT_EQ(snapshot.getFigure(), nullptr);
}

TEST_F(SnapshotOwner, withoutTokensLeavesAFigureWithoutInterfaces)
{
    LiveTokens live;
    LiveCharts charts;
    Figure *figure = makeFigure();
    figure->setTokenInterface(&live);
    figure->setChartInterface(&charts);
    SnapshotData snapshot;
    snapshot.setFigure(figure);
    EXPECT_EQ(figure->getTokenInterface(), nullptr);
    EXPECT_EQ(figure->getChartInterface(), nullptr);
}

TEST_F(SnapshotOwner, looksIntoTheTokensOfTheProjectToo)
{
    SnapshotData snapshot(STAGE, makeFigure(), new FigureTokenContainer);
    FigureTokenInterface const *before = snapshot.getFigure()->getTokenInterface();
    EXPECT_EQ(textIn(snapshot), "???");

    auto *project = new TokenContainer;
    project->setValue(plain("a"), Value(QString("project")));
    snapshot.setProjectTokenContainer(project);

    EXPECT_EQ(snapshot.getProjectTokenContainer(), project);
    EXPECT_EQ(textIn(snapshot), "project");
    EXPECT_NE(snapshot.getFigure()->getTokenInterface(), nullptr);
    EXPECT_NE(before, nullptr);

    snapshot.setProjectTokenContainer(project);
    EXPECT_EQ(snapshot.getProjectTokenContainer(), project);
    snapshot.setProjectTokenContainer(nullptr);
    EXPECT_EQ(snapshot.getProjectTokenContainer(), nullptr);
    EXPECT_EQ(textIn(snapshot), "???");
}

TEST_F(SnapshotOwner, takesTokensOfTheProjectWithoutAFigure)
{
    SnapshotData snapshot;
    snapshot.setProjectTokenContainer(new TokenContainer);
    snapshot.setFigure(makeFigure());
    EXPECT_NE(snapshot.getFigure()->getTokenInterface(), nullptr);
}

class SnapshotScale : public testing::Test
{
protected:
    SnapshotScale()
    {
        legend.setFixedMinimum(-2.0);
        data.setDynamicMaximum(7.0);
        tolerance.setTitle("limits");
        histogram.addHistogram({{1.5, 3U}});
    }

    Legend2::Legend legend{uStrain};
    Legend2::Data data;
    Legend2::ToleranceParams tolerance;
    Legend2::HistogramData histogram;
    Legend2::Legend readLegend;
    Legend2::Data readData;
};

TEST_F(SnapshotScale, isWholeWithTolerancesAndHistogram)
{
    SnapshotData snapshot;
    snapshot.setLegendData(legend, data, true, tolerance, histogram);
    EXPECT_TRUE(snapshot.getLegendData(&readLegend, &readData));
    EXPECT_EQ(readLegend, legend);
    EXPECT_EQ(readData, data);
    EXPECT_TRUE(snapshot.showTolerances());
    EXPECT_EQ(snapshot.getToleranceParams(), tolerance);
    EXPECT_EQ(snapshot.getHistogramData(), histogram);
}

TEST_F(SnapshotScale, withoutTolerancesResetsThese)
{
    SnapshotData snapshot;
    snapshot.setLegendData(legend, data, true, tolerance, histogram);
    snapshot.setLegendData(legend, data);
    EXPECT_TRUE(snapshot.getLegendData(&readLegend, &readData));
    EXPECT_FALSE(snapshot.showTolerances());
    EXPECT_EQ(snapshot.getToleranceParams(), Legend2::ToleranceParams());
    EXPECT_EQ(snapshot.getHistogramData(), Legend2::HistogramData());
}

TEST_F(SnapshotScale, isCopiedAlsoWhenThereIsNone)
{
    SnapshotData with;
    with.setLegendData(legend, data, true, tolerance, histogram);
    SnapshotData snapshot;
    snapshot.copyLegendData(with);
    EXPECT_TRUE(snapshot.getLegendData(&readLegend, &readData));
    EXPECT_TRUE(snapshot.showTolerances());
    EXPECT_EQ(snapshot.getHistogramData(), histogram);
    snapshot.copyLegendData(SnapshotData());
    EXPECT_FALSE(snapshot.getLegendData(&readLegend, &readData));
    EXPECT_FALSE(snapshot.showTolerances());
}

class CopiedSnapshot : public SnapshotOwner
{
protected:
    /// A snapshot with one of everything.
    std::unique_ptr<SnapshotData> makeSnapshot()
    {
        LiveCharts live;
        Figure *figure = makeFigure();
        addGenericChart(*figure, "time", {DataToken("way")});
        figure->setChartInterface(&live);
        auto snapshot = std::make_unique<SnapshotData>(STAGE, figure, makeTokens());
        auto *project = new TokenContainer;
        project->setValue(plain("p"), Value(5));
        snapshot->setProjectTokenContainer(project);
        snapshot->setDrawingMode(SnapshotData::DrawingMode{6});
        snapshot->setLegendData(Legend2::Legend(uStrain), Legend2::Data(), true, Legend2::ToleranceParams(),
                                Legend2::HistogramData());
        return snapshot;
    }
    static void expectWhole(SnapshotData &copy)
    {
        Legend2::Legend legend;
        Legend2::Data data;
        EXPECT_EQ(textIn(copy), "frozen");
        EXPECT_EQ(valueOf(*copy.getFigure()->getTokenInterface(), "p"), "5");
        ASSERT_NE(copy.getFigure()->getChartInterface(), nullptr);
        EXPECT_EQ(copy.getFigure()->getChartInterface()->getTokenDescription(DataToken("way")), "live description way");
        EXPECT_EQ(copy.getStage(), STAGE);
        EXPECT_EQ(copy.getDrawingMode(), 6U);
        EXPECT_TRUE(copy.getLegendData(&legend, &data));
        EXPECT_EQ(legend.getUnit(), uStrain);
        EXPECT_TRUE(copy.showTolerances());
    }
};

TEST_F(CopiedSnapshot, livesOnWithoutTheOriginal)
{
    auto original = makeSnapshot();
    std::string const bytes = saved(*original);
    SnapshotData copy(*original);
    EXPECT_NE(copy.getTokenContainer(), original->getTokenContainer());
    EXPECT_NE(copy.getProjectTokenContainer(), original->getProjectTokenContainer());
    EXPECT_NE(copy.getFigure(), original->getFigure());
    EXPECT_NE(copy.getFigure()->getChartInterface(), original->getFigure()->getChartInterface());
    original.reset();
    expectWhole(copy);
}

TEST_F(CopiedSnapshot, byAssignmentLivesOnWithoutTheOriginal)
{
    auto original = makeSnapshot();
    SnapshotData copy(STAGE, makeFigure(), makeTokens("before"));
    EXPECT_EQ(&(copy = *original), &copy);
    original.reset();
    expectWhole(copy);
    SnapshotData &same = copy;
    copy = same;
    expectWhole(copy);
}

TEST_F(CopiedSnapshot, leavesTheOriginalAsItWas)
{
    auto const original = makeSnapshot();
    {
        SnapshotData copy(*original);
        copy = SnapshotData();
        EXPECT_EQ(copy.getFigure(), nullptr);
    }
    expectWhole(*original);
}

TEST_F(CopiedSnapshot, isUpdatedByItself)
{
    auto const original = makeSnapshot();
    original->getFigure();
    SnapshotData copy(*original);
    auto *copiedProbe = static_cast<StageProbe *>(childOf(*copy.getFigure(), 1));
    EXPECT_EQ(copiedProbe->updates, probe->updates + 1);
}

} // namespace
} // namespace Zem::Fig2
