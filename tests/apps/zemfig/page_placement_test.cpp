#include <page_placement.h>

#include <ZemFig2AreaBase.h>
#include <ZemFig2BoxDistributor.h>
#include <ZemFig2Group.h>
#include <ZemFig2Label.h>
#include <ZemFig2TokenInterface.h>

#include <gtest/gtest.h>

namespace Zem::Zemfig {
namespace {

using namespace Fig2;

/// Stands in for a chart, which labels may be connected to.
class ChartArea : public AreaBase
{
public:
    ChartArea() : AreaBase(CHART) {}
    Element *copy() const override { return new ChartArea(*this); }
    bool isTokenUsed(QString const &) const override { return false; }
};

/// A page of 200 x 100; labels of 20 x 6 are put along lines 10 inside it.
class ArrangeLabels : public testing::Test
{
protected:
    StageIdentifier const stage{1};
    EmptyFigureTokenInterface const tokens;
    Figure figure{&tokens};
    Placement placement{Placement::AT_BORDER, 10.0, 0.0};

    ArrangeLabels()
    {
        figure.setSize({200, 100});
        BoxDistributor::setElementDistance(1.0, 2.0);
    }
    Label *addLabel(BaVec2d<double> const &point, Group *group = nullptr)
    {
        auto *label = new Label;
        label->setAutoSize(false);
        label->setSize({20, 6});
        label->setOrigin({50, 5});
        label->setConnectorPoint(point);
        (group ? group : figure.getRoot())->addChild(label);
        return label;
    }
    ChartArea *addChart(BaVec2d<double> const &origin, BaVec2d<double> const &size)
    {
        auto *chart = new ChartArea;
        chart->setOrigin(origin);
        chart->setSize(size);
        figure.getRoot()->addChild(chart);
        return chart;
    }
    int arrange()
    {
        figure.update(stage, true);
        return arrangeLabels(&figure, stage, placement);
    }
};

TEST_F(ArrangeLabels, movesALabelThatIsConnectedToAnElement)
{
    Label *label = addLabel(LabelBase::INVALID_POINT);
    label->connect(addChart({180, 50}, {4, 4}), QString());
    addLabel({20, 50});

    EXPECT_EQ(arrange(), 2);

    // The middle of the points is (100, 50): straight to the right, where the chart is in the way: y = 48 to 52.
    EXPECT_EQ(label->getOrigin(), BaVec2d<double>(180, 55.1));
}

TEST_F(ArrangeLabels, leavesALabelConnectedToAnElementOffThePage)
{
    Label *label = addLabel(LabelBase::INVALID_POINT);
    label->connect(addChart({280, 50}, {4, 4}), QString());

    EXPECT_EQ(arrange(), 0);
    EXPECT_EQ(label->getOrigin(), BaVec2d<double>(50, 5));
}

TEST_F(ArrangeLabels, movesLabelsInGroupsAndKeepsClearOfTheirNeighboursAlone)
{
    auto *group = new Group;
    figure.getRoot()->addChild(group);
    Label *label = addLabel({180, 50}, group);
    // The outline of the group reaches over the place of the label, its children do not.
    addLabel(LabelBase::INVALID_POINT, group)->setOrigin({190, 95});
    addLabel(LabelBase::INVALID_POINT, group)->setOrigin({190, 5});

    EXPECT_EQ(arrange(), 1);
    EXPECT_EQ(label->getOrigin(), BaVec2d<double>(180, 53));
}

TEST_F(ArrangeLabels, passesOverABackgroundThatCoversThePageWithinItsEdges)
{
    Label *label = addLabel({180, 50});
    ChartArea *background = addChart({100, 50}, {180, 80});
    arrange();
    EXPECT_EQ(label->getOrigin(), BaVec2d<double>(180, 53));

    // A little smaller it is in the way.
    background->setSize({179, 80});
    arrange();
    EXPECT_NE(label->getOrigin(), BaVec2d<double>(180, 53));
}

TEST_F(ArrangeLabels, leavesTheFigureUpToDate)
{
    Label *label = addLabel({180, 50});
    arrange();
    EXPECT_TRUE(label->isValid());
    EXPECT_FALSE(figure.update(stage, false));
}

} // namespace
} // namespace Zem::Zemfig
