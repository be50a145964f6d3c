// Which elements come into a snapshot, where they stand there, and what comes with them.
#include "measured_point.h"
#include "snapshot_fixture.h"
#include "tree_builders.h"

#include <ZemFig2Connector.h>
#include <ZemFig2ImageInterface.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2SnapshotFilter.h>

#include <set>

namespace Zem::Fig2 {
namespace {

SnapshotAllElementFilter const ALL;

/// Leaves out what the test names, and counts how often it is asked for each element.
class ListFilter : public SnapshotElementFilter
{
public:
    std::set<Element const *> leftOut;
    mutable std::map<Element const *, int> asked;

    bool isFiltered(Element const *element) const override
    {
        ++asked[element];
        return leftOut.contains(element);
    }
};

class SnapshotMerge : public testing::Test
{
protected:
    SnapshotMerge()
    {
        source.setTokenInterface(&tokens);
        source.setSize({100, 80});
        source.setBackground(FillStyle(Color(1, 2, 3)));
    }

    std::unique_ptr<SnapshotData> freeze(SnapshotElementFilter const &filter = ALL) const
    {
        return std::make_unique<SnapshotData>(STAGE, &source, filter);
    }
    std::unique_ptr<SnapshotData> freezeWithout(std::set<Element const *> const &leftOut) const
    {
        ListFilter filter;
        filter.leftOut = leftOut;
        return freeze(filter);
    }
    /// The tree of a figure in brackets, rectangles by the x of their origins.
    static std::string treeOf(Group const &group)
    {
        std::string tree;
        for (auto it = group.getChildBegin(); it != group.getChildEnd(); ++it) {
            auto const *inner = dynamic_cast<Group const *>(*it);
            tree +=
                (tree.empty() ? "" : " ") + (inner ? "(" + treeOf(*inner) + ")" : Support::text((*it)->getOrigin().x));
        }
        return tree;
    }
    static std::string treeOf(SnapshotData &snapshot) { return treeOf(*snapshot.getFigure()->getRoot()); }

    Support::FakeCalculator calculator;
    LiveTokens tokens;
    Figure source;
};

TEST_F(SnapshotMerge, beginsWithAPageLikeThatOfTheSource)
{
    add(source.getRoot(), "", 10);
    auto const snapshot = freeze();
    EXPECT_EQ(snapshot->getStage(), STAGE);
    EXPECT_EQ(snapshot->getFigure()->getSize(), BaVec2d<double>(100, 80));
    EXPECT_EQ(snapshot->getFigure()->getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_NE(snapshot->getTokenContainer(), nullptr);
    EXPECT_NE(snapshot->getFigure()->getTokenInterface(), nullptr);
    EXPECT_EQ(snapshot->getFigure()->getChartInterface(), nullptr);
}

TEST_F(SnapshotMerge, takesCopiesOfAllElementsInTheirOrder)
{
    add(source.getRoot(), "", 1);
    Group *group = addGroup(source.getRoot());
    add(group, "", 2);
    add(addGroup(group), "", 3);
    add(source.getRoot(), "", 4);

    auto const snapshot = freeze();

    EXPECT_EQ(treeOf(*snapshot), "1 (2 (3)) 4");
    EXPECT_EQ(treeOf(*source.getRoot()), "1 (2 (3)) 4");
    for (auto it = snapshot->getFigure()->getElementBegin(); it != snapshot->getFigure()->getElementEnd(); ++it)
        EXPECT_EQ(it->getFigure(), snapshot->getFigure());
    EXPECT_NE(childOf(*snapshot->getFigure()), childOf(source));
}

TEST_F(SnapshotMerge, keepsTheConnectorsAmongTheElements)
{
    ProbeRectangle *from = add(source.getRoot(), "", 1);
    ProbeRectangle *to = add(addGroup(source.getRoot()), "", 2);
    from->connect(to, "point");
    auto const snapshot = freeze();
    Figure &figure = *snapshot->getFigure();
    Element *copiedTo = *static_cast<Group *>(childOf(figure, 1))->getChildBegin();
    EXPECT_EQ(connectorsOf(childOf(figure)), (std::vector<Ends>{{childOf(figure), copiedTo, "point"}}));
}

TEST_F(SnapshotMerge, leavesOutWhatIsFiltered)
{
    add(source.getRoot(), "", 1);
    Element const *out = add(source.getRoot(), "", 2);
    add(source.getRoot(), "", 3);
    EXPECT_EQ(treeOf(*freezeWithout({out})), "1 3");
}

TEST_F(SnapshotMerge, asksTheFilterForTheElementsOfTheSource)
{
    Element const *first = add(source.getRoot(), "", 1);
    Group *group = addGroup(source.getRoot());
    Element const *second = add(group, "", 2);
    ListFilter filter;
    freeze(filter);
    EXPECT_EQ(filter.asked, (std::map<Element const *, int>{{first, 1}, {second, 1}}));
}

TEST_F(SnapshotMerge, leavesOutElementsWithinGroups)
{
    Group *group = addGroup(source.getRoot());
    add(group, "", 1);
    Element const *out = add(group, "", 2);
    Group *inner = addGroup(group);
    Element const *innerOut = add(inner, "", 3);
    add(inner, "", 4);
    EXPECT_EQ(treeOf(*freezeWithout({out, innerOut})), "(1 (4))");
}

TEST_F(SnapshotMerge, leavesOutAGroupWithAllThatIsInIt)
{
    Group *group = addGroup(source.getRoot());
    add(group, "", 1);
    Group *inner = addGroup(group);
    add(addGroup(inner), "", 2);
    EXPECT_EQ(treeOf(*freezeWithout({inner})), "(1)");
}

TEST_F(SnapshotMerge, leavesOutGroupsThatBecomeEmpty)
{
    Group *group = addGroup(source.getRoot());
    Element const *out = add(addGroup(addGroup(group)), "", 1);
    add(addGroup(group), "", 2);
    Group *gone = addGroup(source.getRoot());
    Element const *goneToo = add(addGroup(gone), "", 3);
    add(source.getRoot(), "", 4);
    EXPECT_EQ(treeOf(*freezeWithout({out, goneToo})), "((2)) 4");
}

TEST_F(SnapshotMerge, leavesOutGroupsThatWereEmptyBefore)
{
    addGroup(addGroup(source.getRoot()));
    Group *group = addGroup(source.getRoot());
    addGroup(group);
    add(group, "", 1);
    EXPECT_EQ(treeOf(*freeze()), "(1)");
}

TEST_F(SnapshotMerge, doesNotAskForAGroupOfTheTopLevelItself)
{
    Group *group = addGroup(source.getRoot());
    add(group, "", 1);
    EXPECT_EQ(treeOf(*freezeWithout({group})), "(1)");
}

TEST_F(SnapshotMerge, keepsTheMasterOfAFilteredGroup)
{
    Group *group = addGroup(source.getRoot());
    Element const *out = add(group, "", 1);
    add(group, "", 2);
    Element *master = add(group, "", 3);
    group->setMasterElement(master);
    auto const kept = freezeWithout({out});
    EXPECT_EQ(static_cast<Group *>(childOf(*kept->getFigure()))->getMasterElement()->getOrigin().x, 3);
    auto const replaced = freezeWithout({out, master});
    EXPECT_EQ(static_cast<Group *>(childOf(*replaced->getFigure()))->getMasterElement()->getOrigin().x, 2);
}

TEST_F(SnapshotMerge, ofNothingIsAnEmptyPage)
{
    EXPECT_EQ(treeOf(*freeze()), "");
}

TEST_F(SnapshotMerge, movesElementsButNoGroups)
{
    add(source.getRoot(), "", 1, 2);
    add(addGroup(source.getRoot()), "", 10, 20);
    auto *line = new Line;
    line->setOrigin({5, 6});
    source.getRoot()->addChild(line);
    auto const snapshot = freeze();

    snapshot->merge(STAGE, &source, {100, 200}, ALL);

    EXPECT_EQ(treeOf(*snapshot), "1 (10) 5 101 (10) 105");
    EXPECT_EQ(childOf(*snapshot->getFigure(), 3)->getOrigin(), BaVec2d<double>(101, 202));
    EXPECT_EQ(childOf(*snapshot->getFigure(), 5)->getOrigin(), BaVec2d<double>(105, 206));
}

TEST_F(SnapshotMerge, movesValidConnectorPoints)
{
    addLabel(source, "with")->setConnectorPoint({10, 20});
    addLabel(source, "without");
    auto const snapshot = freeze();
    snapshot->merge(STAGE, &source, {5, 7}, ALL);
    auto const pointOf = [&](std::size_t index) {
        return static_cast<Label *>(childOf(*snapshot->getFigure(), index))->getConnectorPoint();
    };
    EXPECT_EQ(pointOf(0), BaVec2d<double>(10, 20));
    EXPECT_EQ(pointOf(2), BaVec2d<double>(15, 27));
    EXPECT_EQ(pointOf(3), LabelBase::INVALID_POINT);
}

TEST_F(SnapshotMerge, movesConnectorPointsOfTheTopLevelOnly)
{
    auto *measured = new MeasuredPoint;
    measured->setConnectorPoint({10, 20});
    source.getRoot()->addChild(measured);
    auto *inGroup = new Label;
    inGroup->setConnectorPoint({30, 40});
    addGroup(source.getRoot())->addChild(inGroup);
    auto const snapshot = freeze();
    snapshot->merge(STAGE, &source, {5, 7}, ALL);
    Figure &figure = *snapshot->getFigure();
    EXPECT_EQ(static_cast<LabelBase *>(childOf(figure, 2))->getConnectorPoint(), BaVec2d<double>(15, 27));
    auto const *group = static_cast<Group const *>(childOf(figure, 3));
    EXPECT_EQ(static_cast<Label const *>(*group->getChildBegin())->getConnectorPoint(), BaVec2d<double>(30, 40));
}

TEST_F(SnapshotMerge, updatesTheFigureAgain)
{
    addLabel(source, "$a$");
    tokens.set("a", Value(QString("first")));
    auto const snapshot = freeze();
    auto const textOf = [&](std::size_t index) {
        return static_cast<Label *>(childOf(*snapshot->getFigure(), index))->getResolvedText().toStdString();
    };
    EXPECT_EQ(textOf(0), "first");
    snapshot->merge(STAGE, &source, {0, 0}, ALL);
    EXPECT_EQ(textOf(1), "first");
}

TEST_F(SnapshotMerge, needsAFigureToMergeInto)
{
    SnapshotData empty;
    EXPECT_EQ(Support::progError([&] {
                  empty.merge(STAGE, &source, {0, 0}, ALL);
              }),
              "fig_snapshot_data: Snapshot figure not set");
}

TEST_F(SnapshotMerge, takesTheValuesOfTheStage)
{
    tokens.setAt(2, "a", Value(QString("second")));
    tokens.setAt(3, "a", Value(QString("third")));
    tokens.set("unused", Value(QString("all the same")));
    auto const snapshot = freeze();
    EXPECT_EQ(valueOf(*snapshot->getTokenContainer(), "a"), "third");
    EXPECT_EQ(valueOf(*snapshot->getTokenContainer(), "unused"), "all the same");
    snapshot->merge(StageIdentifier(2), &source, {0, 0}, ALL);
    EXPECT_EQ(valueOf(*snapshot->getTokenContainer(), "a"), "second");
}

TEST_F(SnapshotMerge, takesNoValuesWithoutAContainerOrASource)
{
    tokens.set("a", Value(1));
    add(source.getRoot(), "", 1);
    SnapshotData snapshot(STAGE, new Figure, nullptr);
    snapshot.merge(STAGE, &source, {0, 0}, ALL);
    EXPECT_EQ(snapshot.getTokenContainer(), nullptr);
    EXPECT_EQ(treeOf(snapshot), "1");

    source.setTokenInterface(nullptr);
    std::vector<TokenInfo> frozen;
    freeze()->getTokenContainer()->getTokens(&frozen);
    EXPECT_TRUE(frozen.empty());
}

TEST_F(SnapshotMerge, takesImagesChartsAndSnapshotsAlong)
{
    Image8 const picture(4, 3);
    tokens.images["camera"].setImage(&picture);
    tokens.charts["curve"].addDataset(new ChartDataset("a"));
    tokens.snapshots["before"].setDrawingMode(SnapshotData::DrawingMode{5});
    auto const snapshot = freeze();
    FigureTokenContainer &frozen = *snapshot->getTokenContainer();
    EXPECT_EQ(frozen.getImage("camera")->getImage()->getWidth(), 4U);
    EXPECT_TRUE(frozen.getChart("curve")->datasetExists("a"));
    EXPECT_EQ(frozen.getSnapshot("before")->getDrawingMode(), 5U);
}

/// The elements show data that the source lends without listing them.
class UnlistedData : public SnapshotMerge
{
protected:
    UnlistedData()
    {
        tokens.listsData = false;
        tokens.images["camera"].setImage(&picture);
        tokens.images["camera"].setOverlay(&overlay);
        tokens.charts["curve"].addDataset(new ChartDataset("a"));
        tokens.charts["GENERIC_CHART/the time/way"].addDataset(new ChartDataset("way"));
        tokens.snapshots["before"].setDrawingMode(SnapshotData::DrawingMode{5});
        tokens.charts["not shown"];
        add<Image>("camera");
        add<Image>("before");
        add<Image>("nowhere");
        add<Image>("no token");
        add<Image>("");
        Group *group = addGroup(source.getRoot());
        auto *chart = new Chart;
        chart->setToken("curve");
        group->addChild(chart);
        addGenericChart(source, "the time", {DataToken("way")});
    }
    template <class Shown>
    void add(char const *token)
    {
        auto *element = new Shown;
        element->setToken(QString::fromLatin1(token));
        source.getRoot()->addChild(element);
    }
    static Names tokensOf(SnapshotData const &snapshot)
    {
        std::vector<TokenInfo> frozen;
        snapshot.getTokenContainer()->getTokens(&frozen);
        return namesOf(frozen);
    }

    Image8 const picture{4, 3};
    ImageColor const overlay{5, 3};
};

TEST_F(UnlistedData, areTakenAlongAsFarAsTheyAreShown)
{
    auto const snapshot = freeze();
    FigureTokenContainer &frozen = *snapshot->getTokenContainer();
    EXPECT_EQ(tokensOf(*snapshot), (Names{"camera", "before", "curve", "GENERIC_CHART/the time/way"}));
    ASSERT_NE(frozen.getImage("camera"), nullptr);
    EXPECT_EQ(frozen.getImage("camera")->getImage()->getWidth(), 4U);
    EXPECT_NE(frozen.getImage("camera")->getImage(), &picture);
    EXPECT_EQ(frozen.getImage("camera")->getOverlay()->getWidth(), 5U);
    EXPECT_NE(frozen.getImage("camera")->getOverlay(), &overlay);
    EXPECT_EQ(frozen.getSnapshot("before")->getDrawingMode(), 5U);
    EXPECT_TRUE(frozen.getChart("curve")->datasetExists("a"));
    EXPECT_TRUE(frozen.getChart("GENERIC_CHART/the time/way")->datasetExists("way"));
}

TEST_F(UnlistedData, ofElementsThatStayOutAreLeftThere)
{
    EXPECT_EQ(tokensOf(*freezeWithout({childOf(source, 0)})), (Names{"before", "curve", "GENERIC_CHART/the time/way"}));
}

TEST_F(UnlistedData, areBorrowedOnceForAllThatShowThem)
{
    for (int i = 0; i < 10; ++i)
        add<Image>("camera");
    freeze();
    // A picture, a snapshot, two charts.
    EXPECT_EQ(tokens.lent, 4);
}

TEST_F(UnlistedData, areRenewedByTheNextMerge)
{
    auto const snapshot = freeze();
    tokens.charts["curve"].addDataset(new ChartDataset("b"));
    snapshot->merge(STAGE, &source, {0, 0}, ALL);
    EXPECT_TRUE(snapshot->getTokenContainer()->getChart("curve")->datasetExists("b"));
    EXPECT_EQ(tokensOf(*snapshot), (Names{"camera", "before", "curve", "GENERIC_CHART/the time/way"}));
}

TEST_F(UnlistedData, areTakenAsListedWhereTheyAreListed)
{
    tokens.listsData = true;
    auto const snapshot = freeze();
    std::vector<TokenInfo> frozen;
    snapshot->getTokenContainer()->getTokens(&frozen);
    ASSERT_EQ(frozen.size(), 4U);
    for (TokenInfo const &info : frozen)
        EXPECT_EQ(info.getText(), QStringLiteral("the ") + info.getName());
}

TEST_F(SnapshotMerge, ofItsOwnElementsDoublesThem)
{
    Image8 const picture(4, 3);
    tokens.images["camera"].setImage(&picture);
    add(source.getRoot(), "", 1);
    auto const snapshot = freeze();
    ImageData const *before = snapshot->getTokenContainer()->getImage("camera");
    snapshot->merge(STAGE, snapshot->getFigure(), {10, 0}, ALL);
    EXPECT_EQ(treeOf(*snapshot), "1 11");
    EXPECT_EQ(snapshot->getTokenContainer()->getImage("camera"), before);
}

TEST_F(SnapshotMerge, joinsChartData)
{
    LiveCharts live;
    source.setChartInterface(&live);
    addGenericChart(source, "time", {DataToken("way")});
    Figure second;
    second.setChartInterface(&live);
    addGenericChart(second, "time", {DataToken("force")});

    SnapshotData snapshot(STAGE, &source, ALL);
    ChartInterface *charts = snapshot.getFigure()->getChartInterface();
    snapshot.merge(STAGE, &second, {0, 0}, ALL);

    EXPECT_EQ(snapshot.getFigure()->getChartInterface(), charts);
    EXPECT_EQ(namesOf(charts->getTokensY()), (Names{"force", "way"}));
}

TEST_F(SnapshotMerge, bringsChartDataToASnapshotWithout)
{
    LiveCharts live;
    Figure second;
    second.setChartInterface(&live);
    addGenericChart(second, "time", {DataToken("force")});
    auto const snapshot = freeze();
    snapshot->merge(STAGE, &second, {0, 0}, ALL);
    ASSERT_NE(snapshot->getFigure()->getChartInterface(), nullptr);
    EXPECT_EQ(namesOf(snapshot->getFigure()->getChartInterface()->getTokensY()), Names{"force"});
}

TEST_F(SnapshotMerge, keepsTheSystemFont)
{
    Font const before = Font::getSystemLabelFont();
    Font::setSystemLabelFont(Font("Then", 9.0, Font::BOLD));
    addLabel(source, "a")->setUseSystemFont(true);
    auto *inGroup = new Label;
    inGroup->setUseSystemFont(true);
    addGroup(source.getRoot())->addChild(inGroup);
    auto const snapshot = freeze();
    Font::setSystemLabelFont(before);
    EXPECT_EQ(childOf(*snapshot->getFigure())->getFont(), Font("Then", 9.0, Font::BOLD));
    EXPECT_FALSE(childOf(*snapshot->getFigure())->getUseSystemFont());
    auto const *group = static_cast<Group const *>(childOf(*snapshot->getFigure(), 1));
    EXPECT_EQ((*group->getChildBegin())->getFont(), Font("Then", 9.0, Font::BOLD));
    EXPECT_TRUE(childOf(source)->getUseSystemFont());
}

/// A legend that shows strains from -2 on, as the image that it is connected to has them.
class MergedLegend : public SnapshotMerge
{
protected:
    MergedLegend()
    {
        Legend2::Legend scale(uStrain);
        scale.setFixedMinimum(-2.0);
        tokens.images["camera"].setImage(&picture);
        tokens.images["camera"].setLegendData(scale, Legend2::Data());
        image->setToken("camera");
        legend->setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    }
    void place(Group *group)
    {
        group->addChild(image);
        group->addChild(legend);
        legend->connect(image, "");
        source.update(STAGE, true);
    }

    Image8 const picture{4, 3};
    Image *image = new Image;
    Legend *legend = new Legend;
};

TEST_F(MergedLegend, keepsItsScaleByItself)
{
    place(source.getRoot());
    ASSERT_EQ(legend->getShownLegend().getFixedMinimum(), -2.0);
    auto const snapshot = freezeWithout({image});
    auto const *copied = dynamic_cast<Legend const *>(childOf(*snapshot->getFigure()));
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->getLegendDataMode(), Legend::LEGEND_DATA_MODE_MANUAL);
    EXPECT_EQ(copied->getShownLegend().getFixedMinimum(), -2.0);
    EXPECT_EQ(legend->getLegendDataMode(), Legend::LEGEND_DATA_MODE_ELEMENT);
}

TEST_F(MergedLegend, inAGroupStaysWithItsImage)
{
    place(addGroup(source.getRoot()));
    auto const snapshot = freeze();
    auto const *copied =
        dynamic_cast<Legend const *>(static_cast<Group *>(childOf(*snapshot->getFigure()))->getChildBegin()[1]);
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->getLegendDataMode(), Legend::LEGEND_DATA_MODE_ELEMENT);
    EXPECT_EQ(copied->getShownLegend().getFixedMinimum(), -2.0);
}

/// Has values for the measured thing "P1".
class Measurements : public ImageInterface
{
public:
    QString getImageElementName(QString const &id) const override { return id; }
    ImageLabel *createImageLabel(QString const &) const override { return nullptr; }
    bool updateImageElement(ImageLabel *) const override { return true; }
    bool configureImageLabel(ImageLabel *) const override { return false; }
    void importImageElementVisualisation(ImageLabel *, ImageDataVisualisation const &) const override {}
    TokenInterface const *getTokenInterface(QString const &id) const override
    {
        return id == QStringLiteral("P1") ? &values : nullptr;
    }
    bool getObjectPoint(QString const &, BaVec2d<double> const &, BaVec3d<double> *) const override { return false; }
    void measurementsChanged(QString const &) override {}

    Support::TestTokens values;
};

class MergedImageLabel : public SnapshotMerge
{
protected:
    MergedImageLabel()
    {
        measurements.values.setAt(3, "x", Value(QString("at 3")));
        measurements.values.setAt(2, "x", Value(QString("at 2")));
        source.setImageInterface(&measurements);
        source.getRoot()->addChild(image);
        label->setImageElementId("P1");
        label->setLabelVisible(false);
    }
    void addConnected(Group *group)
    {
        group->addChild(label);
        label->connect(image, "");
    }
    /// The label of the snapshot, which lies beside the image or in a group there.
    static MeasuredPoint *labelIn(SnapshotData &snapshot)
    {
        Figure &figure = *snapshot.getFigure();
        for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
            if (auto *found = dynamic_cast<MeasuredPoint *>(*it))
                return found;
        }
        return nullptr;
    }

    Measurements measurements;
    Image *image = new Image;
    MeasuredPoint *label = new MeasuredPoint;
};

TEST_F(MergedImageLabel, keepsTheValuesOfTheStage)
{
    addConnected(source.getRoot());
    auto const snapshot = freeze();
    ASSERT_NE(labelIn(*snapshot)->getTokenContainer(), nullptr);
    EXPECT_EQ(valueOf(*labelIn(*snapshot)->getTokenContainer(), "x"), "at 3");
    EXPECT_FALSE(labelIn(*snapshot)->getLabelVisible());
    EXPECT_EQ(label->getTokenContainer(), nullptr);
}

TEST_F(MergedImageLabel, inAGroupKeepsThemToo)
{
    addConnected(addGroup(source.getRoot()));
    auto const snapshot = freeze();
    ASSERT_NE(labelIn(*snapshot)->getTokenContainer(), nullptr);
    EXPECT_EQ(valueOf(*labelIn(*snapshot)->getTokenContainer(), "x"), "at 3");
}

TEST_F(MergedImageLabel, thatIsHiddenKeepsThemToo)
{
    source.getRoot()->addChild(label);
    label->setVisible(false);
    auto const snapshot = freeze();
    ASSERT_NE(labelIn(*snapshot)->getTokenContainer(), nullptr);
    EXPECT_FALSE(labelIn(*snapshot)->getLabelVisible());
}

TEST_F(MergedImageLabel, keepsItsOwnValues)
{
    auto *own = new TokenContainer;
    own->setValue(plain("x"), Value(QString("own")));
    label->setTokenContainer(own);
    addConnected(source.getRoot());
    auto const snapshot = freeze();
    EXPECT_EQ(valueOf(*labelIn(*snapshot)->getTokenContainer(), "x"), "own");
}

TEST_F(MergedImageLabel, withoutAnyConnectorShowsItsBoxWithoutValues)
{
    label->setTokenContainer(new TokenContainer);
    source.getRoot()->addChild(label);
    auto const snapshot = freeze();
    EXPECT_TRUE(labelIn(*snapshot)->getLabelVisible());
    EXPECT_EQ(labelIn(*snapshot)->getTokenContainer(), nullptr);
    EXPECT_FALSE(label->getLabelVisible());
    EXPECT_NE(label->getTokenContainer(), nullptr);
}

TEST_F(MergedImageLabel, whoseImageStaysOutShowsItsBoxWithoutValues)
{
    addConnected(source.getRoot());
    auto const snapshot = freezeWithout({image});
    EXPECT_TRUE(labelIn(*snapshot)->getLabelVisible());
    EXPECT_EQ(labelIn(*snapshot)->getTokenContainer(), nullptr);
}

TEST_F(MergedImageLabel, ofAClassWithoutABoxIsTakenOver)
{
    label->withLabel = false;
    source.getRoot()->addChild(label);
    EXPECT_NO_THROW(freeze());
}

TEST_F(MergedImageLabel, ofAnUnknownThingOrWithoutMeasurementsHasNoValues)
{
    addConnected(source.getRoot());
    label->setImageElementId("unknown");
    EXPECT_EQ(labelIn(*freeze())->getTokenContainer(), nullptr);
    label->setImageElementId("P1");
    source.setImageInterface(nullptr);
    EXPECT_EQ(labelIn(*freeze())->getTokenContainer(), nullptr);
}

} // namespace
} // namespace Zem::Fig2
