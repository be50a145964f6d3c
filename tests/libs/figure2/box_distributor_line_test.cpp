#include "box_distributor_fixture.h"

#include <ZemError.h>

namespace Zem::Fig2 {
namespace {

using FreeLine = BoxDistributor::FreeLine2d;
using Obstacles = BoxDistributor::Obstacles;
using TextBox = BoxDistributor::TextBox;

constexpr auto LEFT = BoxDistributor::DIRECTION_LEFT;
constexpr auto RIGHT = BoxDistributor::DIRECTION_RIGHT;
constexpr auto UP = BoxDistributor::DIRECTION_UP;
constexpr auto DOWN = BoxDistributor::DIRECTION_DOWN;

/// A level line at y = 90 from x = 10 to 190 with boxes above it, and its neighbours at both ends.
class FreeLineTest : public BoxDistributorTest
{
protected:
    FreeLine line{{{10, 90}, {190, 90}}, UP};
    FreeLine before{{{10, 10}, {10, 90}}, RIGHT};
    FreeLine after{{{190, 10}, {190, 90}}, LEFT};
    BoxDistributor::Boxes boxes;
    bool moved = false;

    FreeLineTest()
    {
        line.setPrev(&before);
        line.setNext(&after);
        before.setPrev(&after);
        before.setNext(&line);
        after.setPrev(&line);
        after.setNext(&before);
    }
    TextBox *addObstacle(Rect const &rect)
    {
        boxes.push_back(std::make_unique<TextBox>(makeBox(rect)));
        return boxes.back().get();
    }
    /// A placed box too small to be in the way, with a connector line.
    TextBox *addConnectorLine(BaVec2d<double> const &point, BaVec2d<double> const &center, double sortKey)
    {
        TextBox *box = addObstacle(Rect(center.x - 0.5, center.y - 0.5, 1, 1));
        box->setPoint(point);
        box->setHasPoint(true);
        box->setSortKeys(sortKey, 0.0);
        return box;
    }
    static TextBox makeBox(Rect const &rect)
    {
        TextBox box;
        box.setPos(rect.p0());
        box.setSize({rect.width, rect.height});
        return box;
    }
    Obstacles obstacles() const
    {
        return {Obstacles::RULE_TOUCHING, BoxDistributor::SEARCH_GRID, {200, 100}, boxes, 0};
    }
    bool slide(TextBox *box, int dir, unsigned int depth = 3, bool choose = false)
    {
        moved = false;
        return line.findPlaceInDir(obstacles(), box, &moved, dir, depth, choose);
    }
};

TEST_F(FreeLineTest, turnsALineSoThatItRunsDownOrToTheRight)
{
    EXPECT_EQ(FreeLine({{10, 90}, {10, 10}}, LEFT).getLine(), Line2d({10, 10}, {10, 90}));
    EXPECT_EQ(FreeLine({{90, 10}, {20, 10}}, UP).getLine(), Line2d({20, 10}, {90, 10}));
    EXPECT_EQ(FreeLine({{90, 10}, {20, 10}}, UP).getLengthSquared(), 4900.0);
}

TEST_F(FreeLineTest, refusesASlantedLine)
{
    try {
        line.setLine({{0, 0}, {1, 1}});
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_NE(std::string(error.what()).find("linien muessen senkrecht oder waagerecht sein"), std::string::npos);
    }
    EXPECT_EQ(line.getLine(), Line2d({10, 90}, {190, 90}));
}

TEST_F(FreeLineTest, isUprightForTheDirectionsToTheSides)
{
    line.setDirection(LEFT);
    EXPECT_TRUE(line.isVertical());
    line.setDirection(RIGHT);
    EXPECT_TRUE(line.isVertical());
    line.setDirection(UP);
    EXPECT_FALSE(line.isVertical());
    line.setDirection(DOWN);
    EXPECT_FALSE(line.isVertical());
}

TEST_F(FreeLineTest, findsTheNearerEnd)
{
    double dist2 = 0.0;
    BaVec2d<double> edge;
    line.closestEdge({40, 50}, &dist2, &edge);
    EXPECT_EQ(edge, BaVec2d<double>(10, 90));
    EXPECT_EQ(dist2, 2500.0);
    line.closestEdge({100, 90}, &dist2, &edge);
    EXPECT_EQ(edge, BaVec2d<double>(190, 90)) << "the far end wins a tie";
    EXPECT_EQ(dist2, 8100.0);
}

TEST_F(FreeLineTest, findsTheNearestPlaceOfTheStretch)
{
    double dist2 = 0.0;
    BaVec2d<double> closest;
    line.closestPoint({40, 50}, &dist2, &closest);
    EXPECT_EQ(closest, BaVec2d<double>(40, 90));
    EXPECT_EQ(dist2, 1600.0);
    line.closestPoint({193, 94}, &dist2, &closest);
    EXPECT_EQ(closest, BaVec2d<double>(190, 90));
    EXPECT_EQ(dist2, 25.0);
    line.closestPoint({7, 86}, &dist2, &closest);
    EXPECT_EQ(closest, BaVec2d<double>(10, 90));
    EXPECT_EQ(dist2, 25.0);
}

TEST_F(FreeLineTest, putsABoxOnItsSide)
{
    Line2d const upright({100, 10}, {100, 90});
    Line2d const level({10, 60}, {190, 60});
    struct
    {
        FreeLine line;
        char const *corner;
    } const rows[] = {
        {{upright, LEFT}, "80,50"}, {{upright, RIGHT}, "100,50"}, {{level, UP}, "50,54"}, {{level, DOWN}, "50,60"}};
    for (auto const &row : rows) {
        TextBox box = makeBox({50, 50, 20, 6});
        EXPECT_TRUE(row.line.correctBoxPosition(&box));
        EXPECT_EQ(Support::text(box.getPos()), row.corner);
    }
}

TEST_F(FreeLineTest, keepsABoxWithinTheStretchAndTells)
{
    struct
    {
        double x;
        char const *corner;
        bool stays;
    } const rows[] = {{9.5, "10,84", false}, {10, "10,84", true}, {170, "170,84", true}, {170.5, "170,84", false}};
    for (auto const &row : rows) {
        TextBox box = makeBox({row.x, 0, 20, 6});
        EXPECT_EQ(line.correctBoxPosition(&box), row.stays) << row.x;
        EXPECT_EQ(Support::text(box.getPos()), row.corner);
    }
}

TEST_F(FreeLineTest, endsABoxThatIsTooLongAtTheFarEnd)
{
    TextBox box = makeBox({50, 50, 200, 6});
    EXPECT_FALSE(line.correctBoxPosition(&box));
    EXPECT_EQ(Support::text(box.getPos()), "-10,84");
    EXPECT_FALSE(line.correctBoxPosition(&box));
    EXPECT_EQ(Support::text(box.getPos()), "-10,84");
}

TEST_F(FreeLineTest, isMetWhereTheCentreOfABoxComesToItsSide)
{
    double dist2 = 0.0;
    BaVec2d<double> hit;
    // Boxes of 10 x 6: their centres run on x = 15, x = 185, y = 87 and y = 13.
    EXPECT_TRUE(before.intersects({{100, 50}, {50, 50}}, &dist2, &hit, 5, 3));
    EXPECT_EQ(hit, BaVec2d<double>(10, 47));
    EXPECT_EQ(dist2, 7225.0);
    EXPECT_TRUE(after.intersects({{100, 50}, {150, 50}}, &dist2, &hit, 5, 3));
    EXPECT_EQ(hit, BaVec2d<double>(180, 47));
    EXPECT_EQ(dist2, 7225.0);
    EXPECT_TRUE(line.intersects({{100, 50}, {100, 60}}, &dist2, &hit, 5, 3));
    EXPECT_EQ(hit, BaVec2d<double>(95, 84));
    EXPECT_EQ(dist2, 1369.0);
    EXPECT_TRUE(FreeLine({{10, 10}, {190, 10}}, DOWN).intersects({{100, 50}, {100, 40}}, &dist2, &hit, 5, 3));
    EXPECT_EQ(hit, BaVec2d<double>(95, 10));
    EXPECT_EQ(dist2, 1369.0);
}

TEST_F(FreeLineTest, answersARayBeyondTheStretchWithTheNearerEnd)
{
    double dist2 = 0.0;
    BaVec2d<double> hit;
    // The ray comes to x = 15 at y = -35.
    EXPECT_FALSE(before.intersects({{100, 50}, {50, 0}}, &dist2, &hit, 5, 3));
    EXPECT_EQ(hit, BaVec2d<double>(10, 10));
    EXPECT_EQ(dist2, 25.0 + 45.0 * 45.0);
}

TEST_F(FreeLineTest, isNeverMetByARayThatRunsAwayOrAlongIt)
{
    BaVec2d<double> const untouched(1, 2);
    for (Line2d const &ray : {Line2d({100, 50}, {150, 50}), Line2d({100, 50}, {150, 100}), Line2d({100, 50}, {100, 60}),
                              Line2d({100, 50}, {100, 50})}) {
        double dist2 = 0.0;
        BaVec2d<double> hit = untouched;
        EXPECT_FALSE(before.intersects(ray, &dist2, &hit, 5, 3));
        EXPECT_EQ(dist2, -1.0);
        EXPECT_EQ(hit, untouched);
    }
}

TEST_F(FreeLineTest, countsTheConnectorLinesThatABoxCrosses)
{
    // From (0, 0) to the centre (10, 10).
    TextBox box = makeBox({5, 5, 10, 10});
    addConnectorLine({10, 0}, {0, 10}, -1.0);
    addConnectorLine({10, 1}, {0, 11}, 0.0);
    addConnectorLine({10, 2}, {0, 12}, -1.0)->setHasPoint(false);
    addConnectorLine({20, 0}, {30, 10}, -1.0);

    EXPECT_EQ(FreeLine::calcIntersections(obstacles(), box, true), 2u);
    EXPECT_EQ(FreeLine::calcIntersections(obstacles(), box, false), 1u) << "equal keys are not sorted before";
}

TEST_F(FreeLineTest, doesNotCountLinesThatMeetAtAnEnd)
{
    TextBox box = makeBox({5, 5, 10, 10});
    addConnectorLine({0, 0}, {0, 10}, -1.0);
    addConnectorLine({5, 5}, {0, 10}, -1.0);
    addConnectorLine({20, 0}, {10, 10}, -1.0);
    addConnectorLine({-5, 5}, {5, -5}, -1.0);
    EXPECT_EQ(FreeLine::calcIntersections(obstacles(), box, true), 0u);
}

TEST_F(FreeLineTest, pushesABoxPastWhatItMeets)
{
    addObstacle({50, 80, 20, 10});
    TextBox box = makeBox({55, 0, 10, 6});

    EXPECT_TRUE(slide(&box, 1));
    EXPECT_TRUE(moved);
    EXPECT_EQ(Support::text(box.getPos()), "70.1,84");
    box.setPos({55, 0});
    EXPECT_TRUE(slide(&box, -1));
    EXPECT_EQ(Support::text(box.getPos()), "39.9,84");
}

TEST_F(FreeLineTest, leavesAFreeBox)
{
    addObstacle({50, 80, 20, 10});
    TextBox box = makeBox({70.01, 0, 10, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_FALSE(moved);
    EXPECT_EQ(Support::text(box.getPos()), "70.01,84");
}

TEST_F(FreeLineTest, pushesABoxThatOnlyTouches)
{
    addObstacle({50, 80, 20, 10});
    TextBox box = makeBox({70, 0, 10, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_TRUE(moved);
    EXPECT_EQ(Support::text(box.getPos()), "70.1,84");
}

TEST_F(FreeLineTest, takesAGapBelowTheToleranceForATouch)
{
    addObstacle({50, 80, 20, 10});
    TextBox box = makeBox({70.0 + 5e-13, 0, 10, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_TRUE(moved);
    box.setPos({70.0 + 5e-12, 0});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_FALSE(moved);
}

TEST_F(FreeLineTest, startsOverAfterEachPush)
{
    // Past the second the box meets the first.
    addObstacle({65, 80, 10, 10});
    addObstacle({50, 80, 10, 10});
    TextBox box = makeBox({52, 0, 10, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_EQ(Support::text(box.getPos()), "75.1,84");
}

TEST_F(FreeLineTest, leavesTheNearerEndWhenItMayChoose)
{
    struct
    {
        double x;
        char const *corner;
    } const rows[] = {{55, "110.1,84"}, {100, "39.9,84"}, {95, "39.9,84"}};
    addObstacle({50, 80, 60, 10});
    for (auto const &row : rows) {
        TextBox box = makeBox({row.x, 0, 10, 6});
        EXPECT_TRUE(slide(&box, 0));
        EXPECT_EQ(Support::text(box.getPos()), row.corner) << row.x;
        box.setPos({row.x, 0});
        EXPECT_TRUE(slide(&box, row.x > 60 ? 1 : -1, 3, true));
        EXPECT_EQ(Support::text(box.getPos()), row.corner) << row.x;
    }
}

TEST_F(FreeLineTest, goesNoWayAtDepth0)
{
    TextBox box = makeBox({55, 5, 10, 6});
    EXPECT_FALSE(slide(&box, 1, 0));
    EXPECT_EQ(Support::text(box.getPos()), "55,5");
}

TEST_F(FreeLineTest, hasNoWayOnWithoutNeighbours)
{
    addObstacle({150, 80, 60, 10});
    for (FreeLine *missing : {&before, &after}) {
        line.setPrev(missing == &before ? nullptr : &before);
        line.setNext(missing == &after ? nullptr : &after);
        TextBox box = makeBox({160, 0, 10, 6});
        try {
            slide(&box, 1);
            FAIL();
        } catch (ProgError const &error) {
            std::string const text = error.what();
            EXPECT_NE(text.find("<prev> oder <next> in FreeLine2d nicht gesetzt!"), std::string::npos) << text;
        }
    }
}

TEST_F(FreeLineTest, goesRoundTheCornerFromItsEnd)
{
    addObstacle({150, 70, 50, 40});
    TextBox box = makeBox({160, 0, 20, 6});

    EXPECT_TRUE(slide(&box, 1));

    // Clamped to x = 170 it is nearest to (190, 90), from where it slides up past the obstacle.
    EXPECT_EQ(Support::text(box.getPos()), "170,63.9");
}

TEST_F(FreeLineTest, goesOnToTheNeighbourNearerToItsMiddle)
{
    // From x = 60 to 190 its corner is nearer to (10, 90), its middle to (190, 90).
    addObstacle({150, 70, 50, 40});
    TextBox box = makeBox({65, 0, 130, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_EQ(Support::text(box.getPos()), "60,63.9");
}

TEST_F(FreeLineTest, stopsAtTheCornerWhenTheDepthIsUsedUp)
{
    addObstacle({150, 70, 50, 40});
    TextBox box = makeBox({160, 0, 20, 6});
    EXPECT_FALSE(slide(&box, 1, 1));
    EXPECT_EQ(Support::text(box.getPos()), "190,90");
}

TEST_F(FreeLineTest, goesOnToThePreviousLineWhenBothAreEquallyNear)
{
    // As long as the line, so that its centre is in the middle.
    after.setDirection(RIGHT);
    addObstacle({50, 80, 20, 10});
    TextBox box = makeBox({10, 0, 180, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_EQ(Support::text(box.getPos()), "10,73.9");
}

TEST_F(FreeLineTest, movesABoxThatIsTooLongOnToANeighbour)
{
    // Its end at (190, 90), the centre is at x = 90 and so nearer to (10, 90). There it stands upright enough.
    TextBox box = makeBox({50, 0, 200, 6});
    EXPECT_TRUE(slide(&box, 1));
    EXPECT_FALSE(moved);
    EXPECT_EQ(Support::text(box.getPos()), "10,84");
}

TEST_F(FreeLineTest, givesUpAfter100Pushes)
{
    for (int i = 0; i < 150; ++i)
        addObstacle({10.0 + 1.1 * i, 80, 1.05, 10});
    TextBox box = makeBox({10, 0, 0.5, 6});

    EXPECT_TRUE(slide(&box, 1));

    // The jump past obstacle i, to its end and 0.1, is one past the start of the next: the last was number 99.
    EXPECT_NEAR(box.getPos().x, 10.0 + 1.1 * 99 + 1.15, 1e-9);
    EXPECT_NE(obstacles().firstMeeting(box.getRect()), nullptr);
}

TEST_F(FreeLineTest, takesAFreePlaceAtOnce)
{
    TextBox box = makeBox({55, 0, 10, 6});
    EXPECT_EQ(line.findPlace(obstacles(), &box, 3), BoxDistributor::PLACE_GOOD);
    EXPECT_EQ(Support::text(box.getPos()), "55,84");
}

TEST_F(FreeLineTest, takesTheNearerOfTwoPlaces)
{
    struct
    {
        double x;
        char const *corner;
    } const rows[] = {{52, "39.9,84"},
                      {58, "70.1,84"},
                      {55, "70.1,84"},
                      {55 - 1.4e-14, "70.1,84"}, // the squares differ by 9e-13
                      {55 - 1e-13, "39.9,84"}};  // by 6e-12
    addObstacle({50, 80, 20, 10});
    for (auto const &row : rows) {
        TextBox box = makeBox({row.x, 84, 10, 6});
        EXPECT_EQ(line.findPlace(obstacles(), &box, 3), BoxDistributor::PLACE_GOOD);
        EXPECT_EQ(Support::text(box.getPos()), row.corner) << row.x;
    }
}

TEST_F(FreeLineTest, takesThePlaceWithFewerCrossings)
{
    addObstacle({50, 80, 20, 10});
    // Crosses the way from (60, 50) to the place on the right, at y = 70 and x = 68.2, not that to the left.
    TextBox *crossed = addConnectorLine({62, 70}, {80, 70}, -1.0);
    TextBox box = makeBox({58, 84, 10, 6});
    box.setPoint({60, 50});

    EXPECT_EQ(line.findPlace(obstacles(), &box, 3), BoxDistributor::PLACE_GOOD);
    EXPECT_EQ(Support::text(box.getPos()), "39.9,84");

    // Sorted behind the box it counts only because the first counts are equal.
    crossed->setSortKeys(1.0, 0.0);
    box.setPos({58, 84});
    EXPECT_EQ(line.findPlace(obstacles(), &box, 3), BoxDistributor::PLACE_GOOD);
    EXPECT_EQ(Support::text(box.getPos()), "39.9,84");
}

TEST_F(FreeLineTest, tellsOfAPlaceWithThreeCrossings)
{
    addObstacle({50, 80, 20, 10});
    TextBox box = makeBox({55, 84, 10, 6});
    box.setPoint({60, 50});
    for (double y : {70.0, 71.0}) {
        addConnectorLine({40, y}, {80, y}, -1.0);
        box.setPos({55, 84});
        EXPECT_EQ(line.findPlace(obstacles(), &box, 3), BoxDistributor::PLACE_GOOD);
    }
    // Counted only when all are.
    addConnectorLine({40, 72}, {80, 72}, 1.0);
    box.setPos({55, 84});
    EXPECT_EQ(line.findPlace(obstacles(), &box, 3), BoxDistributor::PLACE_CROSSED);
}

TEST_F(FreeLineTest, judgesByTheSmallerCountEvenOfTheWayNotTaken)
{
    // To the right the box runs off the line, with no depth left; to the left three lines are crossed.
    addObstacle({150, 80, 40, 10});
    for (double y : {70.0, 71.0, 72.0})
        addConnectorLine({130, y}, {160, y}, -1.0);
    TextBox box = makeBox({160, 84, 10, 6});
    box.setPoint({165, 50});

    EXPECT_EQ(line.findPlace(obstacles(), &box, 1), BoxDistributor::PLACE_GOOD);
    EXPECT_EQ(Support::text(box.getPos()), "139.9,84");
}

TEST_F(FreeLineTest, tellsWhenThereIsNoPlace)
{
    addObstacle({0, 80, 200, 20});
    TextBox box = makeBox({55, 84, 10, 6});
    EXPECT_EQ(line.findPlace(obstacles(), &box, 1), BoxDistributor::PLACE_NONE);
}

} // namespace
} // namespace Zem::Fig2
