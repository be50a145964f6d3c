#include "box_distributor_fixture.h"

namespace Zem::Fig2 {
namespace {

/// Labels of 20 x 6, 1 to the side of their points and 2 above or below.
class PlaceAtElement : public BoxDistributorTest
{
protected:
    BoxDistributor distributor = makeDistributor();

    Label *add(BaVec2d<double> const &point, BaVec2d<double> const &size = {20, 6})
    {
        Label *label = makeLabel(point, size);
        distributor.addTextBox(label);
        return label;
    }
    /// Where the first of labels at these points goes.
    std::string placeOfFirst(std::initializer_list<BaVec2d<double>> points)
    {
        std::vector<Label *> added;
        for (BaVec2d<double> const &point : points)
            added.push_back(add(point));
        distributor.placeAtElement(stage);
        return at(added.front());
    }
    /// Takes the first place around (100, 50), so that the second tells the order: above the point for neighbours to
    /// the sides, else to the left of it.
    void blockFirstPlace() { distributor.addFixedBox(Rect(80, 43, 2, 1)); }
    static constexpr char const *ABOVE = "100,45";
    static constexpr char const *LEFT = "89,50";
};

TEST_F(PlaceAtElement, putsALabelToTheUpperLeftOfItsPoint)
{
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "89,45");
    EXPECT_TRUE(label->isValid());
    EXPECT_TRUE(distributor.getTextBoxes().empty());
}

TEST_F(PlaceAtElement, keepsTheBoxDistanceAroundALabel)
{
    BoxDistributor distant(200.0, 100.0, 10.0, 1.5);
    Label *label = makeLabel({100, 50});
    distant.addTextBox(label);
    distant.placeAtElement(stage);
    // The box of 23 x 9 ends at (99, 48).
    EXPECT_EQ(at(label), "87.5,43.5");
}

TEST_F(PlaceAtElement, goesToTheSideWithoutNeighbours)
{
    blockFirstPlace();
    EXPECT_EQ(placeOfFirst({{100, 50}}), LEFT);
}

TEST_F(PlaceAtElement, goesAboveBetweenNeighboursToTheSides)
{
    blockFirstPlace();
    EXPECT_EQ(placeOfFirst({{100, 50}, {160, 50}}), ABOVE);
}

TEST_F(PlaceAtElement, goesToTheSideBetweenNeighboursAboveAndBelow)
{
    blockFirstPlace();
    EXPECT_EQ(placeOfFirst({{100, 50}, {110, 70}}), LEFT);
}

TEST_F(PlaceAtElement, goesToTheSideWhenTheNeighboursBalance)
{
    blockFirstPlace();
    // Together the ways are (60 - 59, 0 + 1), not more sideways than upright.
    EXPECT_EQ(placeOfFirst({{100, 50}, {160, 50}, {41, 51}}), LEFT);
}

TEST_F(PlaceAtElement, takesTheFormerNearestAsSecondNeighbour)
{
    blockFirstPlace();
    // (100, 70) replaced (160, 50): together 60 sideways and 20 upright.
    EXPECT_EQ(placeOfFirst({{100, 50}, {160, 50}, {100, 70}}), ABOVE);
}

TEST_F(PlaceAtElement, doesNotLookForTheSecondNearest)
{
    blockFirstPlace();
    // (100, 70) came first and was never replaced.
    EXPECT_EQ(placeOfFirst({{100, 50}, {100, 70}, {160, 50}}), LEFT);
}

TEST_F(PlaceAtElement, keepsTheEarlierOfEquallyNearNeighbours)
{
    blockFirstPlace();
    // (100, 90) replaced nothing: 40 sideways alone.
    EXPECT_EQ(placeOfFirst({{100, 50}, {140, 50}, {100, 90}}), ABOVE);
}

TEST_F(PlaceAtElement, triesTheEightPlacesInTheirOrder)
{
    // Each further place is blocked by a spot that lies in it and in none of those behind it.
    struct Place
    {
        Rect spot;
        char const *origin;
    };
    Place const toTheSides[] = {{{80, 43, 1, 1}, "89,45"},   {{80, 48.5, 1, 1}, "89,50"}, {{80, 56, 1, 1}, "89,55"},
                                {{118, 43, 1, 1}, "111,45"}, {{118, 49, 1, 1}, "111,50"}, {{118, 56, 1, 1}, "111,55"},
                                {{99, 44, 2, 1}, "100,45"},  {{99, 54, 2, 1}, "100,55"}};
    Place const aboveAndBelow[] = {{{80, 43, 1, 1}, "89,45"},     {{100, 43, 0.5, 1}, "100,45"},
                                   {{115, 43, 1, 1}, "111,45"},   {{80, 55, 1, 1}, "89,55"},
                                   {{100, 55, 0.5, 1}, "100,55"}, {{115, 55, 1, 1}, "111,55"},
                                   {{80, 49.5, 1, 1}, "89,50"},   {{115, 49.5, 1, 1}, "111,50"}};
    for (bool sideways : {false, true}) {
        for (std::size_t blocked = 0; blocked < 8; ++blocked) {
            auto const &places = sideways ? aboveAndBelow : toTheSides;
            BoxDistributor page = makeDistributor();
            for (std::size_t i = 0; i < blocked; ++i)
                page.addFixedBox(places[i].spot);
            Label *label = makeLabel({100, 50});
            page.addTextBox(label);
            if (sideways)
                page.addTextBox(makeLabel({180, 50}, {1, 1}));
            page.placeAtElement(stage);
            EXPECT_EQ(at(label), places[blocked].origin) << sideways << blocked;
        }
    }
}

TEST_F(PlaceAtElement, pushesABoxWhereThatIsCheapest)
{
    // To the left it costs 5 times the way from (100, 50) to (29.9, 45), 351; up 11 times that to (100, 41.9), 89; down
    // 12 times that to (100, 58.1), 97.
    distributor.addFixedBox(Rect(40, 45, 120, 10));
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "100,41.9");
}

TEST_F(PlaceAtElement, countsTheFirstPlacesCheaper)
{
    // To the left 5 times the way to (59.9, 45), 202; up 11 times that to (100, 26.9), 254.
    distributor.addFixedBox(Rect(70, 30, 60, 40));
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "59.9,45");
}

TEST_F(PlaceAtElement, weighsThePlacesBy5To12)
{
    // To the left 5 times the way to (59.9, 45), 202.05; up 11 times 17.4, 191.4, or 19.4, 213.4.
    struct
    {
        double half;
        char const *origin;
    } const rows[] = {{14.3, "100,32.6"}, {16.3, "59.9,45"}};
    for (auto const &row : rows) {
        BoxDistributor page = makeDistributor();
        page.addFixedBox(Rect(70, 50 - row.half, 60, 2 * row.half));
        Label *label = makeLabel({100, 50});
        page.addTextBox(label);
        page.placeAtElement(stage);
        EXPECT_EQ(at(label), row.origin);
    }
}

TEST_F(PlaceAtElement, leavesAGapOnEachSide)
{
    struct
    {
        Rect obstacle;
        BaVec2d<double> point;
        char const *origin;
    } const rows[] = {{{140, 0, 60, 100}, {170, 50}, "129.9,45"},
                      {{0, 0, 60, 100}, {25, 50}, "70.1,45"},
                      {{0, 40, 200, 60}, {100, 50}, "100,36.9"},
                      {{0, 0, 200, 60}, {100, 50}, "100,63.1"}};
    for (auto const &row : rows) {
        BoxDistributor page = makeDistributor();
        page.addFixedBox(row.obstacle);
        Label *label = makeLabel(row.point);
        page.addTextBox(label);
        page.placeAtElement(stage);
        EXPECT_EQ(at(label), row.origin);
    }
}

TEST_F(PlaceAtElement, addsUpTheCostOfEachPush)
{
    // To the left past both: 5 times the ways to (59.9, 45) and (39.9, 45), 202 + 302; up 254.
    distributor.addFixedBox(Rect(70, 30, 60, 40));
    distributor.addFixedBox(Rect(50, 40, 10, 15));
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "100,26.9");
}

TEST_F(PlaceAtElement, givesUpAPlaceAtTheThirdOverlap)
{
    // Walls leave only the ways to the sides, which end at the third wall.
    distributor.addFixedBox(Rect(70, 0, 60, 100));
    distributor.addFixedBox(Rect(45, 0, 10, 100));
    distributor.addFixedBox(Rect(140, 0, 10, 100));
    distributor.addFixedBox(Rect(165, 0, 10, 100));
    BoxDistributor blocked = distributor;
    Label *label = add({100, 50});
    Label *stuck = makeLabel({100, 50});
    blocked.addFixedBox(Rect(20, 0, 10, 100));
    blocked.addTextBox(stuck);

    distributor.placeAtElement(stage);
    blocked.placeAtElement(stage);

    // 70 - 20.1 = 49.9 meets the second wall, 45 - 20.1 = 24.9 is free.
    EXPECT_EQ(at(label), "34.9,45");
    EXPECT_EQ(at(stuck), "89,45") << "the upper left place, as no other is valid";
}

TEST_F(PlaceAtElement, doesNotCountATouchAsOverlap)
{
    // The first place is x = 79 to 99, y = 42 to 48.
    distributor.addFixedBox(Rect(69, 42, 10, 6));
    distributor.addFixedBox(Rect(79, 32, 20, 10));
    distributor.addFixedBox(Rect(79, 48, 20, 10));
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "89,45");
}

TEST_F(PlaceAtElement, staysOnThePage)
{
    Label *left = add({5, 50});
    Label *upperRight = add({195, 3});
    Label *low = add({100, 95});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(left), "16,45");
    // Sideways: above nothing fits, below and left of (195, 3) is the fourth place.
    EXPECT_EQ(at(upperRight), "184,8");
    EXPECT_EQ(at(low), "89,90");
}

TEST_F(PlaceAtElement, mayReachThePageBorder)
{
    Label *label = add({21, 8});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "10,3");
}

TEST_F(PlaceAtElement, mayReachTheFarPageBorders)
{
    struct
    {
        Rect obstacle;
        BaVec2d<double> point;
        char const *origin;
    } const rows[] = {{{0, 0, 200, 93.9}, {179, 92}, "168,97"}, {{0, 0, 179.9, 100}, {179, 50}, "190,45"}};
    for (auto const &row : rows) {
        BoxDistributor page = makeDistributor();
        page.addFixedBox(row.obstacle);
        Label *label = makeLabel(row.point);
        page.addTextBox(label);
        page.placeAtElement(stage);
        EXPECT_EQ(at(label), row.origin);
    }
}

TEST_F(PlaceAtElement, goesToTheUpperLeftWhenNoPlaceIsValid)
{
    distributor.addFixedBox(Rect(0, 0, 200, 100));
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "89,45");
}

TEST_F(PlaceAtElement, keepsClearOfThePointsOfOthers)
{
    // The square around (90, 45) lies in the first place and in that above the point; right above is free.
    add({90, 45});
    Label *label = add({100, 50});
    distributor.placeAtElement(stage);
    EXPECT_EQ(at(label), "111,45");
}

TEST_F(PlaceAtElement, surroundsThePointsOfFixedBoxesFirst)
{
    distributor.addFixedTextBox(makeLabel({150, 80}));
    distributor.addFixedBox(Rect(1, 2, 3, 4));
    add({60, 50});
    add({100, 50});
    distributor.placeAtElement(stage);

    // The focal point is (103.3, 60): the text boxes are sorted (100, 50), (60, 50).
    auto const &boxes = distributor.getFixedBoxes();
    ASSERT_EQ(boxes.size(), 7u);
    EXPECT_EQ(boxes[1]->getRect(), Rect(1, 2, 3, 4));
    EXPECT_EQ(boxes[2]->getRect(), Rect(149, 79, 2, 2));
    EXPECT_EQ(boxes[3]->getRect(), Rect(99, 49, 2, 2));
    EXPECT_EQ(boxes[4]->getRect(), Rect(59, 49, 2, 2));
    EXPECT_EQ(boxes[2]->getMinBoxDist(), 0.1);
    EXPECT_EQ(boxes[2]->getMinEdgeFree(), 0.1);
    EXPECT_FALSE(boxes[2]->hasPoint());
    EXPECT_EQ(boxes[2]->getElement(), nullptr);
}

TEST_F(PlaceAtElement, placesTheFarthestAndThenTheSmallestFirst)
{
    Label *smallest = add({60, 50}, {20, 5});
    Label *large = add({140, 50}, {20, 7});
    Label *far = add({100, 90});
    add({100, 10});
    distributor.placeAtElement(stage);
    // All points have the focal point (100, 50), 40 away.
    auto const &boxes = distributor.getFixedBoxes();
    EXPECT_EQ(boxes[4]->getElement(), smallest);
    EXPECT_NE(boxes[5]->getElement(), far) << "of equal ones the last";
    EXPECT_EQ(boxes[6]->getElement(), far);
    EXPECT_EQ(boxes[7]->getElement(), large);
}

} // namespace
} // namespace Zem::Fig2
