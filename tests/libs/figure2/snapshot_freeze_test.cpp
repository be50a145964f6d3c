// A frozen figure looks as it did, with nothing left of what it was made of.
#include "flat_transformation.h"
#include "measured_point.h"
#include "snapshot_fixture.h"

#include <ZemFig2ChartLegend.h>
#include <ZemFig2Connector.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2ImageInterface.h>
#include <ZemFig2Legend.h>
#include <ZemFig2SnapshotFilter.h>
#include <ZemFig2SnapshotFrame.h>

namespace Zem::Fig2 {
namespace {

class FrozenFigure : public testing::Test
{
protected:
    FrozenFigure()
    {
        figure->setTokenInterface(tokens.get());
        figure->setChartInterface(charts.get());
    }

    template <class Kind>
    Kind *add(BaVec2d<double> const &origin, BaVec2d<double> const &size)
    {
        auto *element = new Kind;
        element->setOrigin(origin);
        element->setSize(size);
        figure->getRoot()->addChild(element);
        return element;
    }
    void addDataset(QString const &token, char const *id)
    {
        auto *dataset = new ChartDataset(QString::fromLatin1(id));
        for (int i = 0; i < 5; ++i)
            dataset->addPoint(ChartPoint(i, {1.0 * i, 0.5 * i * i}, 0.0));
        tokens->charts[token].addDataset(dataset);
    }
    void addCharts()
    {
        addDataset("curve", "a");
        Chart *chart = add<Chart>({50, 40}, {80, 60});
        chart->setToken("curve");
        addDataset("GENERIC_CHART/time/way/force", "way");
        addDataset("GENERIC_CHART/time/way/force", "force");
        charts->tokensX = {DataToken("time")};
        GenericChart *generic =
            addGenericChart(*figure, "time", {DataToken("way", QString("left")), DataToken("force")});
        generic->setOrigin({150, 40});
        generic->setSize({80, 60});
        add<ChartLegend>({150, 90}, {80, 30})->connect(generic, "");
        Label *label = addLabel(*figure, "$X_VALUE$");
        label->connect(generic, "");
    }
    void addImage()
    {
        ImageData &data = tokens->images["camera"];
        data.setImage(&picture);
        data.setTransformation(new FlatTransformation);
        auto *points = new ImageDataPoints;
        for (int i = 0; i < 10; ++i)
            points->addPoint(i, {3.0 * i, 2.0 * i, 0}, {2, 1, 0}, 0.1 * i, true, -1);
        auto *object = new ImageDataObject("field");
        object->addElement(points);
        data.addObject(object);
        Legend2::Legend scale(uLength);
        scale.setFixedMaximum(5.0);
        data.setLegendData(scale, Legend2::Data());
        image = add<Image>({50, 150}, {80, 60});
        image->setToken("camera");
        add<Legend>({110, 150}, {20, 60})->connect(image, "");
        Label *label = addLabel(*figure, "$stage$");
        label->setOrigin({50, 200});
        label->setConnectorPoint({60, 150});
        tokens->set("stage", Value(QString("stage-three")));
    }
    void addMeasuredPoint()
    {
        figure->setImageInterface(measurements.get());
        auto *label = new MeasuredPoint;
        label->point = {10, 5, 0};
        label->setText("$x$");
        label->setImageElementId("P1");
        label->setOrigin({150, 180});
        figure->getRoot()->addChild(label);
        label->connect(image, "");
    }
    /// Twice: some elements need what others have computed.
    std::string drawnLive()
    {
        figure->update(STAGE, true);
        figure->update(STAGE, true);
        return drawn(*figure);
    }
    std::unique_ptr<SnapshotData> freeze() const
    {
        return std::make_unique<SnapshotData>(STAGE, figure.get(), SnapshotAllElementFilter());
    }
    /// The figure first: it gives back what it uses.
    void destroyAll()
    {
        figure.reset();
        charts.reset();
        measurements.reset();
        tokens.reset();
    }

    class Measurements : public ImageInterface
    {
    public:
        Measurements() { values.set("x", Value(QString("ten-millimetres"))); }
        QString getImageElementName(QString const &id) const override { return id; }
        ImageLabel *createImageLabel(QString const &) const override { return nullptr; }
        bool updateImageElement(ImageLabel *) const override { return true; }
        bool configureImageLabel(ImageLabel *) const override { return false; }
        void importImageElementVisualisation(ImageLabel *, ImageDataVisualisation const &) const override {}
        TokenInterface const *getTokenInterface(QString const &) const override { return &values; }
        bool getObjectPoint(QString const &, BaVec2d<double> const &, BaVec3d<double> *) const override
        {
            return false;
        }
        void measurementsChanged(QString const &) override {}

    private:
        Support::TestTokens values;
    };

    Support::FakeCalculator calculator;
    Image8 const picture{40, 30};
    std::unique_ptr<LiveTokens> tokens = std::make_unique<LiveTokens>();
    std::unique_ptr<LiveCharts> charts = std::make_unique<LiveCharts>();
    std::unique_ptr<Measurements> measurements = std::make_unique<Measurements>();
    std::unique_ptr<Figure> figure = std::make_unique<Figure>();
    Image *image = nullptr;
};

TEST_F(FrozenFigure, looksAsItDid)
{
    addCharts();
    addImage();
    addMeasuredPoint();
    std::string const live = drawnLive();
    for (char const *part : {"live legend way of left", "live&nbsp;description&nbsp;time", "stage-three",
                             "ten-millimetres", "image ", "colors ", "ellipse "})
        ASSERT_NE(live.find(part), std::string::npos) << part << "\n" << live;

    auto const snapshot = freeze();
    destroyAll();

    EXPECT_EQ(drawn(*snapshot->getFigure()), live);
}

TEST_F(FrozenFigure, looksAsItDidWithDataThatAreNotListed)
{
    addCharts();
    addImage();
    tokens->listsData = false;
    std::string const live = drawnLive();
    auto const snapshot = freeze();
    destroyAll();
    EXPECT_EQ(drawn(*snapshot->getFigure()), live);
}

TEST_F(FrozenFigure, looksAsItDidFromAStream)
{
    addCharts();
    addImage();
    tokens->images["camera"].setTransformation(nullptr); // the one of the test cannot be stored
    std::string const live = drawnLive();
    std::string const bytes = saved(*freeze());
    destroyAll();
    SnapshotData snapshot;
    load(snapshot, bytes);
    EXPECT_EQ(drawn(*snapshot.getFigure()), live);
}

TEST_F(FrozenFigure, looksAsItDidFrozenTwice)
{
    addCharts();
    addImage();
    addMeasuredPoint();
    std::string const live = drawnLive();
    auto const snapshot = freeze();
    destroyAll();
    SnapshotData const again(STAGE, snapshot->getFigure(), SnapshotAllElementFilter());
    EXPECT_EQ(drawn(*again.getFigure()), live);
}

/// The calls between the first "nested" and the last "not nested".
std::string nestedIn(std::string const &calls)
{
    std::size_t const begin = calls.find("nested\n") + 7;
    return calls.substr(begin, calls.rfind("not nested\n") - begin);
}

TEST_F(FrozenFigure, isShownByAFrameInAnother)
{
    addCharts();
    drawnLive();
    auto const snapshot = freeze();
    destroyAll();
    LiveTokens outer;
    outer.snapshots.emplace("frozen", *snapshot);
    Figure page(&outer);
    page.setSize({420, 594});
    auto *frame = new SnapshotFrame;
    frame->setSnapshotSourceId("frozen");
    frame->setOrigin({105, 148.5});
    frame->setSize({210, 297});
    page.getRoot()->addChild(frame);
    page.update(STAGE, true);

    std::string const calls = drawn(page);

    EXPECT_NE(calls.find("transform 0,0 scaling 1\nnested\n"), std::string::npos);
    for (char const *text : {"live legend way of left", "live&nbsp;description&nbsp;time"})
        EXPECT_NE(nestedIn(calls).find(text), std::string::npos) << text;

    // And by a frame in a snapshot of that page.
    auto const second = std::make_unique<SnapshotData>(STAGE, &page, SnapshotAllElementFilter());
    outer.snapshots.clear();
    EXPECT_EQ(drawn(*second->getFigure()), calls);
    EXPECT_EQ(drawn(*SnapshotData(*second).getFigure()), calls);
}

} // namespace
} // namespace Zem::Fig2
