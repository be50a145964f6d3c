#include "box_distributor_fixture.h"

#include <ZemFig2Rectangle.h>

#include <ZemError.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using TextBox = BoxDistributor::TextBox;

std::string linesOf(BoxDistributor const &distributor)
{
    std::ostringstream text;
    for (auto const &line : distributor.getFreeLines())
        text << Support::text(line->getLine().first) << '-' << Support::text(line->getLine().second) << ' '
             << line->getDirection() << (line->isVertical() ? " upright\n" : " level\n");
    return text.str();
}

TEST_F(BoxDistributorTest, hasALineAlongEachSideInARing)
{
    BoxDistributor const distributor = makeDistributor();

    EXPECT_TRUE(distributor.isValid());
    EXPECT_EQ(linesOf(distributor), "10,10-10,90 1 upright\n"
                                    "10,90-190,90 2 level\n"
                                    "190,10-190,90 0 upright\n"
                                    "10,10-190,10 3 level\n");
    auto const &lines = distributor.getFreeLines();
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(lines[i]->getNext(), lines[(i + 1) % 4].get());
        EXPECT_EQ(lines[i]->getPrev(), lines[(i + 3) % 4].get());
    }
    EXPECT_EQ(lines[0]->getLengthSquared(), 6400.0);
    EXPECT_EQ(lines[1]->getLengthSquared(), 32400.0);
}

TEST_F(BoxDistributorTest, isInvalidWhenASideLeavesNoLine)
{
    // The shortest line is 1.41 or 1.42 long: its square is 1.9881 or 2.0164.
    EXPECT_FALSE(BoxDistributor(200.0, 21.41, 10.0, 0.0).isValid());
    EXPECT_FALSE(BoxDistributor(21.41, 200.0, 10.0, 0.0).isValid());
    EXPECT_TRUE(BoxDistributor(200.0, 21.42, 10.0, 0.0).isValid());
    EXPECT_TRUE(BoxDistributor(200.0, 21.41, 10.0, 0.0).getFreeLines().empty());
}

TEST_F(BoxDistributorTest, isInvalidForLengthsThatAreNoNumbers)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    double const endless = std::numeric_limits<double>::infinity();
    for (double bad : {none, endless}) {
        EXPECT_FALSE(BoxDistributor(bad, 100.0, 10.0, 0.0).isValid());
        EXPECT_FALSE(BoxDistributor(100.0, bad, 10.0, 0.0).isValid());
        EXPECT_FALSE(BoxDistributor(100.0, 100.0, bad, 0.0).isValid());
        EXPECT_FALSE(BoxDistributor(100.0, 100.0, 10.0, bad).isValid());
    }
}

TEST_F(BoxDistributorTest, doesNothingWhenInvalid)
{
    BoxDistributor distributor(20.0, 20.0, 10.0, 0.0);
    Label *label = makeLabel({5, 5});
    label->setOrigin({7, 8});
    Rectangle rectangle;

    EXPECT_EQ(distributor.addTextBox(label), nullptr);
    distributor.addFixedTextBox(label);
    distributor.addFixedBox(&rectangle);
    distributor.addFixedBox(Rect(0, 0, 1, 1));
    distributor.addFreeLine2d({{0, 0}, {10, 0}}, BoxDistributor::DIRECTION_UP);
    distributor.moveSide(BoxDistributor::DIRECTION_LEFT, 3.0);
    distributor.distribute(stage);
    distributor.distribute(stage, {5, 5});
    distributor.placeAtElement(stage);

    EXPECT_EQ(at(label), "7,8");
    EXPECT_TRUE(distributor.getTextBoxes().empty());
    EXPECT_TRUE(distributor.getFixedBoxes().empty());
    EXPECT_TRUE(distributor.getFixedPoints().empty());
    EXPECT_TRUE(distributor.getFreeLines().empty());
    EXPECT_EQ(distributor.calcFocalPoint(), BaVec2d<double>(0, 0));
}

TEST_F(BoxDistributorTest, takesTheElementDistancesFromTheFirstPageOfTheProcess)
{
    double const unset = std::numeric_limits<double>::max();
    BoxDistributor::setElementDistance(unset, unset);

    BoxDistributor const first(200.0, 100.0, 10.0, 0.0);
    BoxDistributor const second(1000.0, 1000.0, 10.0, 0.0);

    EXPECT_DOUBLE_EQ(BoxDistributor::getElementDistance().x, 1.4);
    EXPECT_DOUBLE_EQ(BoxDistributor::getElementDistance().y, 0.7);
}

TEST_F(BoxDistributorTest, keepsElementDistancesThatWereSetBefore)
{
    BoxDistributor::setElementDistance(3.0, 4.0);
    BoxDistributor const distributor = makeDistributor();
    EXPECT_EQ(BoxDistributor::getElementDistance(), BaVec2d<double>(3, 4));
}

TEST_F(BoxDistributorTest, fitsAFurtherLineBetweenTheLastAndTheFirst)
{
    BoxDistributor distributor = makeDistributor();

    distributor.addFreeLine2d({{150, 50}, {50, 50}}, BoxDistributor::DIRECTION_DOWN);

    auto const &lines = distributor.getFreeLines();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[4]->getLine(), Line2d({50, 50}, {150, 50}));
    EXPECT_EQ(lines[3]->getNext(), lines[4].get());
    EXPECT_EQ(lines[4]->getPrev(), lines[3].get());
    EXPECT_EQ(lines[4]->getNext(), lines[0].get());
    EXPECT_EQ(lines[0]->getPrev(), lines[4].get());
}

TEST_F(BoxDistributorTest, refusesASlantedLineAndStaysAsItWas)
{
    BoxDistributor distributor = makeDistributor();
    EXPECT_THROW(distributor.addFreeLine2d({{0, 0}, {10, 1}}, BoxDistributor::DIRECTION_UP), ProgError);
    EXPECT_EQ(distributor.getFreeLines().size(), 4u);
}

TEST_F(BoxDistributorTest, putsATextBoxAtThePointOfItsLabel)
{
    BoxDistributor distributor(200.0, 100.0, 10.0, 1.5);
    Label *label = makeLabel({30, 40});

    distributor.addTextBox(label);

    TextBox const &box = *distributor.getTextBoxes().at(0);
    EXPECT_EQ(box.getElement(), label);
    EXPECT_TRUE(box.hasPoint());
    EXPECT_EQ(box.getPoint(), BaVec2d<double>(30, 40));
    EXPECT_EQ(box.getRect(), Rect(30, 40, 23, 9));
    EXPECT_EQ(box.getOffset(), BaVec2d<double>(11.5, 4.5));
    EXPECT_EQ(box.getCenter(), BaVec2d<double>(41.5, 44.5));
    EXPECT_EQ(box.getMinEdgeFree(), 10.0);
    EXPECT_EQ(box.getMinBoxDist(), 1.5);
    EXPECT_EQ(at(label), "41.5,44.5");
}

TEST_F(BoxDistributorTest, countsAVisibleBorderToTheSizeOfABox)
{
    BoxDistributor distributor = makeDistributor();
    Label *label = makeLabel({30, 40});
    label->setBorder(LineStyle(0.5, LineStyle::STYLE_DOTTED, Color(0, 0, 0)));
    distributor.addTextBox(label);
    label->setBorder(LineStyle(0.5, LineStyle::STYLE_NONE, Color(0, 0, 0)));
    distributor.addTextBox(label);

    EXPECT_EQ(distributor.getTextBoxes()[0]->getRect(), Rect(30, 40, 20.5, 6.5));
    EXPECT_EQ(distributor.getTextBoxes()[1]->getRect(), Rect(30, 40, 20, 6));
}

TEST_F(BoxDistributorTest, takesTheMiddleForACoordinateOffThePage)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    struct
    {
        BaVec2d<double> point;
        char const *expected;
    } const rows[] = {{{-0.5, 40}, "100,40"},  {{200.5, 40}, "100,40"}, {{30, -2}, "30,50"},   {{30, 100.5}, "30,50"},
                      {{200, 100}, "200,100"}, {{none, 40}, "100,40"},  {{30, none}, "30,50"}, {{-1, 40}, "0,0"},
                      {{0, 40}, "0,40"},       {{30, 0}, "30,0"}};
    for (auto const &row : rows) {
        BoxDistributor distributor = makeDistributor();
        distributor.addTextBox(makeLabel(row.point));
        EXPECT_EQ(Support::text(distributor.getTextBoxes()[0]->getPoint()), row.expected);
    }
}

TEST_F(BoxDistributorTest, takesARectangleAsItIs)
{
    BoxDistributor distributor(200.0, 100.0, 10.0, 1.5);
    distributor.addFixedBox(Rect(10, 20, 30, 40));

    TextBox const &box = *distributor.getFixedBoxes().at(0);
    EXPECT_EQ(box.getRect(), Rect(10, 20, 30, 40));
    EXPECT_EQ(box.getPos(), BaVec2d<double>(10, 20));
    EXPECT_EQ(box.getElement(), nullptr);
    EXPECT_FALSE(box.hasPoint());
    EXPECT_EQ(box.getMinBoxDist(), 0.0);
}

TEST_F(BoxDistributorTest, turnsARectangleOfNegativeExtentsRound)
{
    BoxDistributor distributor = makeDistributor();
    distributor.addFixedBox(Rect(40, 60, -30, -40));
    EXPECT_EQ(distributor.getFixedBoxes().at(0)->getRect(), Rect(10, 20, 30, 40));
}

TEST_F(BoxDistributorTest, surroundsAFixedElementWithTheBoxDistance)
{
    BoxDistributor distributor(200.0, 100.0, 10.0, 1.5);
    Rectangle rectangle;
    rectangle.setOrigin({50, 40});
    rectangle.setSize({10, 8});
    rectangle.setBorder(LineStyle::null);
    Label *label = makeLabel({30, 40});
    label->setOrigin({70, 30});

    distributor.addFixedBox(&rectangle);
    distributor.addFixedBox(label);

    EXPECT_EQ(distributor.getFixedBoxes()[0]->getRect(), Rect(43.5, 34.5, 13, 11));
    EXPECT_EQ(distributor.getFixedBoxes()[0]->getElement(), nullptr);
    EXPECT_EQ(distributor.getFixedBoxes()[1]->getRect(), Rect(58.5, 25.5, 23, 9));
    EXPECT_EQ(distributor.getFixedBoxes()[1]->getElement(), label);
    EXPECT_FALSE(distributor.getFixedBoxes()[1]->hasPoint());
    EXPECT_TRUE(distributor.getFixedPoints().empty());
}

TEST_F(BoxDistributorTest, keepsAFixedLabelWhereItIsToTheLastBit)
{
    BoxDistributor distributor(200.0, 100.0, 10.0, 0.3);
    Label *label = makeLabel({30, 40}, {0.7, 1.1});
    BaVec2d<double> const origin(70.1, 30.7);
    label->setOrigin(origin);

    distributor.addFixedBox(label);
    distributor.addFixedTextBox(label);
    distributor.distribute(stage);

    EXPECT_EQ(label->getOrigin(), origin);
}

TEST_F(BoxDistributorTest, remembersThePointOfAFixedLabel)
{
    BoxDistributor distributor = makeDistributor();
    distributor.addFixedTextBox(makeLabel({250, 40}));
    distributor.addFixedTextBox(makeLabel(LabelBase::INVALID_POINT));

    EXPECT_TRUE(distributor.getFixedBoxes()[0]->hasPoint());
    EXPECT_TRUE(distributor.getFixedBoxes()[1]->hasPoint());
    EXPECT_EQ(distributor.getFixedPoints(), (std::vector<BaVec2d<double>>{{250, 40}, {0, 0}}));
}

TEST_F(BoxDistributorTest, findsTheMiddleOfAllPoints)
{
    BoxDistributor distributor = makeDistributor();
    distributor.addTextBox(makeLabel({30, 40}));
    distributor.addTextBox(makeLabel({60, 20}));
    distributor.addFixedTextBox(makeLabel({90, 90}));
    distributor.addFixedBox(makeLabel({1, 1}));

    EXPECT_EQ(distributor.calcFocalPoint(), BaVec2d<double>(60, 50));
}

TEST_F(BoxDistributorTest, hasNoMiddleOfNoPoints)
{
    BoxDistributor const distributor = makeDistributor();
    EXPECT_TRUE(std::isnan(distributor.calcFocalPoint().x));
    EXPECT_TRUE(std::isnan(distributor.calcFocalPoint().y));
}

TEST_F(BoxDistributorTest, narrowsThePageFromEachSide)
{
    struct
    {
        BoxDistributor::Direction_t side;
        char const *lines;
    } const rows[] = {{BoxDistributor::DIRECTION_LEFT, "15,10-15,90 1 upright\n15,90-190,90 2 level\n"
                                                       "190,10-190,90 0 upright\n15,10-190,10 3 level\n"},
                      {BoxDistributor::DIRECTION_RIGHT, "10,10-10,90 1 upright\n10,90-185,90 2 level\n"
                                                        "185,10-185,90 0 upright\n10,10-185,10 3 level\n"},
                      {BoxDistributor::DIRECTION_UP, "10,15-10,90 1 upright\n10,90-190,90 2 level\n"
                                                     "190,15-190,90 0 upright\n10,15-190,15 3 level\n"},
                      {BoxDistributor::DIRECTION_DOWN, "10,10-10,85 1 upright\n10,85-190,85 2 level\n"
                                                       "190,10-190,85 0 upright\n10,10-190,10 3 level\n"}};
    for (auto const &row : rows) {
        BoxDistributor distributor = makeDistributor();
        distributor.moveSide(row.side, 5.0);
        EXPECT_EQ(linesOf(distributor), row.lines);
    }
}

TEST_F(BoxDistributorTest, turnsALineRoundThatIsCutByMoreThanItsLength)
{
    BoxDistributor distributor = makeDistributor();
    distributor.moveSide(BoxDistributor::DIRECTION_LEFT, 190.0);
    EXPECT_EQ(distributor.getFreeLines()[1]->getLine(), Line2d({190, 90}, {200, 90}));
    EXPECT_EQ(distributor.getFreeLines()[1]->getLengthSquared(), 100.0);
}

TEST_F(BoxDistributorTest, copiesBoxesAndLines)
{
    auto original = std::make_unique<BoxDistributor>(200.0, 100.0, 10.0, 0.0);
    original->addTextBox(makeLabel({30, 40}));
    original->addFixedTextBox(makeLabel({50, 60}));
    original->addFreeLine2d({{20, 50}, {80, 50}}, BoxDistributor::DIRECTION_DOWN);
    BoxDistributor copy(*original);
    BoxDistributor assigned(20.0, 20.0, 10.0, 0.0);
    assigned = *original;
    std::string const lines = linesOf(*original);
    original.reset();

    for (BoxDistributor *each : {&copy, &assigned}) {
        EXPECT_TRUE(each->isValid());
        EXPECT_EQ(linesOf(*each), lines);
        EXPECT_EQ(corners(each->getTextBoxes()), "30,40");
        EXPECT_EQ(each->getFixedPoints(), (std::vector<BaVec2d<double>>{{50, 60}}));
        auto const &ring = each->getFreeLines();
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(ring[i]->getNext(), ring[(i + 1) % 5].get());
            EXPECT_EQ(ring[i]->getPrev(), ring[(i + 4) % 5].get());
        }
        each->distribute(stage);
        EXPECT_TRUE(each->getTextBoxes().empty());
    }
}

TEST_F(BoxDistributorTest, ordersBoxesByTheFirstKeyAndThenTheSecond)
{
    TextBox low;
    TextBox high;
    low.setSortKeys(1.0, 9.0);
    high.setSortKeys(2.0, 0.0);
    EXPECT_TRUE(TextBox()(low, high));
    EXPECT_FALSE(TextBox()(high, low));
    high.setSortKeys(1.0, 10.0);
    EXPECT_TRUE(TextBox()(low, high));
    EXPECT_FALSE(TextBox()(high, low));
    EXPECT_FALSE(TextBox()(low, low));
}

TEST_F(BoxDistributorTest, movesALabelWithItsBox)
{
    Label *label = makeLabel({0, 0});
    TextBox box;
    box.setSize({4, 2});
    box.setElement(label);
    box.setPos({5, 6});
    EXPECT_EQ(at(label), "5,6");
    box.setOffset({1, 2});
    EXPECT_EQ(at(label), "6,8");
    box.setPosX(10);
    EXPECT_EQ(at(label), "11,8");
    box.setPosY(20);
    EXPECT_EQ(at(label), "11,22");
    EXPECT_EQ(box.getRect(), Rect(10, 20, 4, 2));
}

} // namespace
} // namespace Zem::Fig2
