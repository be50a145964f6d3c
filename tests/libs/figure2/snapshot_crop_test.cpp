// A snapshot is cut to a part of its page.
#include "measured_point.h"
#include "snapshot_fixture.h"
#include "tree_builders.h"

#include <ZemFig2SnapshotFilter.h>

namespace Zem::Fig2 {
namespace {

class SnapshotCrop : public testing::Test
{
protected:
    SnapshotCrop()
    {
        source.setTokenInterface(&tokens);
        source.setSize({100, 80});
        addLabel(source, "point")->setConnectorPoint({50, 60});
        addLabel(source, "none");
        add(addGroup(source.getRoot()), "", 70, 30);
        snapshot = freeze();
    }
    std::unique_ptr<SnapshotData> freeze() const
    {
        return std::make_unique<SnapshotData>(STAGE, &source, SnapshotAllElementFilter());
    }
    BaVec2d<double> size() const { return snapshot->getFigure()->getSize(); }
    BaVec2d<double> originOf(std::size_t index) const { return childOf(*snapshot->getFigure(), index)->getOrigin(); }

    Support::FakeCalculator calculator;
    LiveTokens tokens;
    Figure source;
    std::unique_ptr<SnapshotData> snapshot;
};

TEST_F(SnapshotCrop, movesElementsAndConnectorPoints)
{
    BaVec2d<double> const before = originOf(0);
    snapshot->crop(Rect(10, 20, 30, 40));
    EXPECT_EQ(size(), BaVec2d<double>(30, 40));
    EXPECT_EQ(originOf(0), before - BaVec2d<double>(10, 20));
    EXPECT_EQ(originOf(2), BaVec2d<double>(60, 10));
    auto const *label = static_cast<Label const *>(childOf(*snapshot->getFigure()));
    EXPECT_EQ(label->getConnectorPoint(), BaVec2d<double>(40, 40));
    EXPECT_FALSE(static_cast<Label const *>(childOf(*snapshot->getFigure(), 1))->hasConnectorPoint());
}

TEST_F(SnapshotCrop, movesTheConnectorPointsOfLabelsInGroupsButNotOfImageLabels)
{
    auto *inGroup = new Label;
    inGroup->setConnectorPoint({50, 60});
    addGroup(source.getRoot())->addChild(inGroup);
    auto *measured = new MeasuredPoint;
    measured->setConnectorPoint({50, 60});
    source.getRoot()->addChild(measured);
    snapshot = freeze();
    BaVec2d<double> const before = originOf(4);
    snapshot->crop(Rect(10, 20, 30, 40));
    Figure &figure = *snapshot->getFigure();
    auto const *group = static_cast<Group const *>(childOf(figure, 3));
    EXPECT_EQ(static_cast<Label const *>(*group->getChildBegin())->getConnectorPoint(), BaVec2d<double>(40, 40));
    EXPECT_EQ(originOf(4), before - BaVec2d<double>(10, 20));
    EXPECT_EQ(static_cast<LabelBase *>(childOf(figure, 4))->getConnectorPoint(), BaVec2d<double>(50, 60));
}

TEST_F(SnapshotCrop, beginsOnThePage)
{
    snapshot->crop(Rect(-10, -20, 30, 40));
    EXPECT_EQ(size(), BaVec2d<double>(30, 40));
    EXPECT_EQ(originOf(2), BaVec2d<double>(70, 30));
}

TEST_F(SnapshotCrop, endsOnThePage)
{
    snapshot->crop(Rect(90, 70, 30, 40));
    EXPECT_EQ(size(), BaVec2d<double>(10, 10));
    EXPECT_EQ(originOf(2), BaVec2d<double>(-20, -40));
}

TEST_F(SnapshotCrop, treatsEachAxisByItself)
{
    snapshot->crop(Rect(-10, 70, 110, 40));
    EXPECT_EQ(size(), BaVec2d<double>(100, 10));
    EXPECT_EQ(originOf(2), BaVec2d<double>(70, -40));
}

TEST_F(SnapshotCrop, besideThePageLeavesNothing)
{
    snapshot->crop(Rect(150, 10, 30, 40));
    EXPECT_EQ(size(), BaVec2d<double>(0, 40));
}

TEST_F(SnapshotCrop, leavesThePageUpToDate)
{
    snapshot->getFigure();
    snapshot->crop(Rect(10, 20, 30, 40));
    for (auto it = snapshot->getFigure()->getElementBegin(); it != snapshot->getFigure()->getElementEnd(); ++it)
        EXPECT_TRUE(it->isValid());
}

TEST_F(SnapshotCrop, ofNoFigureDoesNothing)
{
    SnapshotData empty;
    EXPECT_NO_THROW(empty.crop(Rect(1, 2, 3, 4)));
}

} // namespace
} // namespace Zem::Fig2
