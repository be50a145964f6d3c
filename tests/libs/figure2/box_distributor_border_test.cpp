#include "box_distributor_fixture.h"

#include <ZemFig2TokenInterface.h>

#include <cmath>

namespace Zem::Fig2 {
namespace {

constexpr auto UP = BoxDistributor::DIRECTION_UP;

class Distribute : public BoxDistributorTest
{
protected:
    BoxDistributor distributor = makeDistributor();

    Label *add(BaVec2d<double> const &point, BaVec2d<double> const &size = {20, 6})
    {
        Label *label = makeLabel(point, size);
        distributor.addTextBox(label);
        return label;
    }
};

TEST_F(Distribute, putsASingleLabelOnTheLineNearestToItsPoint)
{
    struct
    {
        BaVec2d<double> point;
        char const *origin;
    } const rows[] = {{{30, 50}, "20,53"},
                      {{100, 70}, "110,87"},
                      {{180, 50}, "180,53"},
                      {{100, 30}, "110,13"},
                      {{185, 89}, "180,87"}};
    for (auto const &row : rows) {
        BoxDistributor single = makeDistributor();
        Label *label = makeLabel(row.point);
        single.addTextBox(label);
        single.distribute(stage);
        EXPECT_EQ(at(label), row.origin);
    }
}

TEST_F(Distribute, putsASingleLabelThereWhateverTheFocus)
{
    Label *label = add({30, 50});
    distributor.distribute(stage, {20, 50});
    EXPECT_EQ(at(label), "20,53");
}

TEST_F(Distribute, goesRoundTheCornerFromALineThatIsTaken)
{
    distributor.addFixedBox(Rect(165, 0, 35, 100));
    Label *label = add({180, 50});
    distributor.distribute(stage);
    // Down to the corner and 0.1 past the obstacle; the way up is longer.
    EXPECT_EQ(at(label), "154.9,87");
}

/// Remembers what it was last updated for.
class WatchedLabel : public Label
{
public:
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override
    {
        lastStage = stage;
        lastTokens = tokens;
        Label::computeDynamicData(stage, tokens);
    }

    StageIdentifier lastStage;
    FigureTokenInterface const *lastTokens = nullptr;
};

TEST_F(Distribute, updatesPlacedAndLeftLabelsForItsStageWithItsTokens)
{
    EmptyFigureTokenInterface const tokens;
    distributor.setTokenInterface(&tokens);
    WatchedLabel placed;
    WatchedLabel left;
    for (WatchedLabel *label : {&placed, &left}) {
        label->setAutoSize(false);
        label->setSize({300, 200});
    }
    // The page centre comes last, as the fifth failure.
    left.setConnectorPoint({100, 50});
    placed.setConnectorPoint({5, 5});
    distributor.addTextBox(&left);
    distributor.addTextBox(&placed);
    for (int i = 0; i < 3; ++i)
        add({5, 5}, {300, 200});

    distributor.distribute(stage, {100, 20});

    ASSERT_EQ(distributor.getTextBoxes().size(), 1u);
    EXPECT_EQ(distributor.getTextBoxes()[0]->getElement(), &left);
    for (WatchedLabel const *label : {&placed, &left}) {
        EXPECT_EQ(label->lastStage, stage);
        EXPECT_EQ(label->lastTokens, &tokens);
    }
}

TEST_F(Distribute, keepsTheBoxDistanceToTheLine)
{
    BoxDistributor distant(200.0, 100.0, 10.0, 1.0);
    Label *label = makeLabel({30, 50});
    distant.addTextBox(label);
    distant.distribute(stage);
    // The box of 22 x 8 begins at (10, 50).
    EXPECT_EQ(at(label), "21,54");
}

TEST_F(Distribute, pushesASingleLabelPastWhatIsFixed)
{
    Label *label = add({30, 50});
    distributor.addFixedBox(Rect(0, 40, 40, 30));
    distributor.distribute(stage);
    // Up by 16.1 instead of down by 20.1.
    EXPECT_EQ(at(label), "20,36.9");
}

TEST_F(Distribute, movesPlacedBoxesToTheFixedOnesAndUpdatesTheirLabels)
{
    Label *first = add({60, 50});
    Label *second = add({140, 50});
    EXPECT_FALSE(first->isValid());

    distributor.distribute(stage);

    EXPECT_TRUE(first->isValid());
    EXPECT_TRUE(second->isValid());
    EXPECT_TRUE(distributor.getTextBoxes().empty());
    // Equally far from the centre and equally large, the last is taken first.
    EXPECT_EQ(distributor.getFixedBoxes()[0]->getElement(), second);
    EXPECT_EQ(distributor.getFixedBoxes()[1]->getElement(), first);
}

TEST_F(Distribute, putsLabelsWhereTheRaysThroughTheirPointsMeetTheLines)
{
    // The middle of the points is (100, 50); the centres run straight to the sides.
    Label *left = add({60, 50});
    Label *right = add({140, 50});
    distributor.distribute(stage);
    EXPECT_EQ(at(left), "20,50");
    EXPECT_EQ(at(right), "180,50");
}

TEST_F(Distribute, takesFixedPointsIntoTheMiddle)
{
    // The middle is (100, 50); without the fixed label it would be the point itself.
    Label *fixed = makeLabel({60, 50});
    fixed->setOrigin({60, 60});
    distributor.addFixedTextBox(fixed);
    Label *label = add({140, 50});
    distributor.distribute(stage);
    EXPECT_EQ(at(label), "180,50");
    EXPECT_EQ(at(fixed), "60,60");
}

TEST_F(Distribute, putsALabelWhosePointIsTheFocusOnTheNearestLine)
{
    add({60, 50});
    add({140, 50});
    Label *middle = add({100, 50});
    distributor.distribute(stage);
    // The lower line comes before the upper one; the box starts with its corner at x = 100.
    EXPECT_EQ(at(middle), "110,87");
}

TEST_F(Distribute, takesTheMiddleOfThePageForAFocusOffIt)
{
    for (BaVec2d<double> const &focus : {BaVec2d<double>(-1, 101), {201, -1}, {std::nan(""), std::nan("")}}) {
        BoxDistributor page = makeDistributor();
        Label *label = makeLabel({140, 50});
        page.addTextBox(label);
        page.addTextBox(makeLabel({60, 50}));
        page.distribute(stage, focus);
        EXPECT_EQ(at(label), "180,50");
    }
}

TEST_F(Distribute, takesTheFarthestLabelFirst)
{
    Label *near = add({130, 50});
    Label *far = add({140, 50});
    distributor.distribute(stage, {100, 50});
    EXPECT_EQ(at(far), "180,50");
    // Both ways are 6.1 long and cross nothing: forwards, which is down.
    EXPECT_EQ(at(near), "180,56.1");
}

TEST_F(Distribute, measuresHowFarALabelIsByItsPoint)
{
    // 38 and 35 from the centre of the page; the middles of the boxes would be 28 and 45 from it.
    Label *far = add({62, 50});
    add({135, 50});
    distributor.distribute(stage, {100, 50});
    EXPECT_EQ(distributor.getFixedBoxes()[0]->getElement(), far);
}

TEST_F(Distribute, needsAMillionthOfAWayForARay)
{
    struct
    {
        double x;
        char const *origin;
    } const rows[] = {{100 + 2e-6, "180,50"}, {100 + 2e-7, "110,87"}};
    for (auto const &row : rows) {
        BoxDistributor page = makeDistributor();
        Label *label = makeLabel({row.x, 50});
        page.addTextBox(label);
        page.addTextBox(makeLabel({60, 50}));
        page.distribute(stage, {100, 50});
        EXPECT_EQ(at(label), row.origin);
    }
}

TEST_F(Distribute, takesTheLargerOfEquallyFarLabelsFirst)
{
    Label *large = add({140, 50}, {20, 8});
    Label *small = add({140, 50}, {20, 6});
    distributor.distribute(stage, {100, 50});
    EXPECT_EQ(at(large), "180,50");
    EXPECT_EQ(at(small), "180,57.1");
}

TEST_F(Distribute, doesNothingWhenTheEdgesAreWiderThanThePage)
{
    // The lines are turned round and long enough, so the page is valid.
    BoxDistributor narrow(200.0, 100.0, 60.0, 0.0);
    ASSERT_TRUE(narrow.isValid());
    Label *label = makeLabel({30, 40});
    narrow.addTextBox(label);
    narrow.distribute(stage);
    EXPECT_EQ(at(label), "40,43");
    EXPECT_EQ(narrow.getTextBoxes().size(), 1u);
    narrow.placeAtElement(stage);
    EXPECT_EQ(at(label), "40,43");
    EXPECT_FALSE(BoxDistributor(100.0, 200.0, 60.0, 0.0).canPlace());
    EXPECT_TRUE(BoxDistributor(200.0, 200.0, 60.0, 0.0).canPlace());
}

TEST_F(Distribute, surroundsNothing)
{
    distributor.distribute(stage);
    distributor.placeAtElement(stage);
    EXPECT_TRUE(distributor.getFixedBoxes().empty());
}

TEST_F(Distribute, acceptsFourFailures)
{
    for (int i = 0; i < 4; ++i)
        add({5, 5}, {300, 200});
    distributor.distribute(stage);
    EXPECT_EQ(distributor.getFixedBoxes().size(), 4u);
    EXPECT_TRUE(distributor.getTextBoxes().empty());
}

TEST_F(Distribute, endsWithTheFifthFailureInALastPass)
{
    for (int i = 0; i < 5; ++i)
        add({5, 5}, {300, 200});
    Label *first = add({130, 50});
    Label *second = add({140, 50});
    distributor.addFixedBox(Rect(0, 0, 1, 1));

    distributor.distribute(stage, {100, 50});

    EXPECT_EQ(distributor.getFixedBoxes().size(), 5u) << "the obstacle and four failures";
    EXPECT_EQ(distributor.getTextBoxes().size(), 3u) << "the fifth failure and what was not tried";
    // In the last pass the boxes do not see each other.
    EXPECT_EQ(at(first), "180,50");
    EXPECT_EQ(at(second), "180,50");
    EXPECT_TRUE(first->isValid());
}

TEST_F(Distribute, countsAPlaceWithThreeCrossingsAsAFailure)
{
    // The place to the right is taken, and three upright connector lines stand before every other one.
    distributor.addFixedBox(Rect(170, 45, 20, 10));
    for (double x : {150.0, 151.0, 152.0}) {
        Label *fixed = makeLabel({x, 5}, {1, 1});
        fixed->setOrigin({x, 95});
        distributor.addFixedTextBox(fixed);
    }
    for (int i = 0; i < 5; ++i)
        add({140.0 + i, 50});

    distributor.distribute(stage, {100, 50});

    EXPECT_EQ(distributor.getTextBoxes().size(), 1u);
}

TEST_F(Distribute, keepsClearOfFixedBoxesInTheLastPass)
{
    for (int i = 0; i < 5; ++i)
        add({5, 5}, {300, 200});
    Label *label = add({140, 50});
    distributor.addFixedBox(Rect(150, 40, 50, 12));
    distributor.distribute(stage, {100, 50});
    // The ray ends at y = 47 to 53: 5.1 down.
    EXPECT_EQ(at(label), "180,55.1");
}

TEST_F(Distribute, takesTheNearestLineInTheLastPassForAPointThatIsTheFocus)
{
    for (int i = 0; i < 5; ++i)
        add({5, 5}, {300, 200});
    Label *label = add({100, 50});
    distributor.distribute(stage, {100, 50});
    EXPECT_EQ(at(label), "110,87");
}

/// Picks a line for a single box of a square page of 100 x 100.
class FindLine : public BoxDistributorTest
{
protected:
    BoxDistributor square{100.0, 100.0, 10.0, 0.0};
    BoxDistributor::TextBox box;
    BoxDistributor::FreeLine2d *line = nullptr;

    std::size_t number() const
    {
        std::size_t i = 0;
        while (i < square.getFreeLines().size() && square.getFreeLines()[i].get() != line)
            ++i;
        return i;
    }
};

TEST_F(FindLine, keepsTheEarlierOfTwoLinesEquallyFar)
{
    // A box without extent meets the lower and the right line in their common corner.
    square.findFreeLine2d({{50, 50}, {60, 60}}, &box, &line);
    EXPECT_EQ(number(), 1u);
    EXPECT_EQ(Support::text(box.getPos()), "90,90");
}

TEST_F(FindLine, takesTheNearestOfTheLinesThatAreMet)
{
    square.addFreeLine2d({{20, 70}, {80, 70}}, UP);
    square.findFreeLine2d({{50, 50}, {50, 60}}, &box, &line);
    EXPECT_EQ(number(), 4u);
    EXPECT_EQ(Support::text(box.getPos()), "50,70");
}

TEST_F(FindLine, keepsTheEarlierLineWhenAnotherIsNearerByARounding)
{
    // Two units in the last place of 70: the squared distances, about 400, differ by 1.1e-12.
    double const nearer = std::nextafter(std::nextafter(70.0, 0.0), 0.0);
    square.addFreeLine2d({{20, 70}, {80, 70}}, UP);
    square.addFreeLine2d({{20, nearer}, {80, nearer}}, UP);
    square.findFreeLine2d({{50, 50}, {50, 60}}, &box, &line);
    EXPECT_EQ(number(), 4u);
}

TEST_F(FindLine, takesALaterLineThatIsNearerByMoreThanARounding)
{
    // The squared distances differ by 4e-11.
    square.addFreeLine2d({{20, 70}, {80, 70}}, UP);
    square.addFreeLine2d({{20, 70 - 1e-12}, {80, 70 - 1e-12}}, UP);
    square.findFreeLine2d({{50, 50}, {50, 60}}, &box, &line);
    EXPECT_EQ(number(), 5u);
}

TEST_F(FindLine, takesTheLineMissedLeastWhenNoneIsMet)
{
    // The left line comes to x = 70; the ray to the lower left passes the lower line at x = 37.7, beyond its stretch.
    square.moveSide(BoxDistributor::DIRECTION_LEFT, 60.0);
    box.setSize({10, 6});
    box.setPos({40, 80});
    box.setPoint({40, 80});
    square.findFreeLine2d({{50, 50}, {40, 80}}, &box, &line);
    EXPECT_EQ(number(), 1u);
    // It stays where it was until it is put on the line.
    EXPECT_EQ(Support::text(box.getPos()), "70,84");
}

TEST_F(FindLine, takesTheLineNearestToThePointWhenTheRayMeetsNone)
{
    box.setPoint({50, 20});
    square.findFreeLine2d({{50, 20}, {50, 20}}, &box, &line);
    EXPECT_EQ(number(), 3u);
    EXPECT_EQ(Support::text(box.getPos()), "10,10");
}

TEST_F(FindLine, takesTheClosestLineWithoutARay)
{
    box.setPos({30, 40});
    box.setPoint({85, 50});
    square.findClosestFreeLine2d(&box, &line);
    EXPECT_EQ(number(), 2u);
    EXPECT_EQ(Support::text(box.getPos()), "90,40");
}

} // namespace
} // namespace Zem::Fig2
