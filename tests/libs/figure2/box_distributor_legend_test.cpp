#include "box_distributor_fixture.h"

#include <ZemFig2Legend.h>

namespace Zem::Fig2 {
namespace {

/// A legend of 20 x 30 on a page of 200 x 100, looked for within 10 of the border.
class LegendAtBorder : public testing::Test
{
protected:
    Legend legend;
    double shift = -7.0;
    BoxDistributor::Direction_t side = BoxDistributor::DIRECTION_LEFT;

    LegendAtBorder()
    {
        legend.setSize({20, 30});
        legend.setBorder(LineStyle::null);
    }
    bool find(BaVec2d<double> const &origin, bool vertical, bool isShown = true)
    {
        legend.setOrigin(origin);
        return BoxDistributor::legendAtBorder({200, 100}, &legend, isShown, vertical, 10.0, &shift, &side);
    }
};

TEST_F(LegendAtBorder, isFoundAtEachSide)
{
    struct
    {
        BaVec2d<double> origin;
        bool vertical;
        double shift;
        BoxDistributor::Direction_t side;
    } const rows[] = {{{20, 50}, false, 30.0, BoxDistributor::DIRECTION_LEFT},
                      {{180, 50}, false, 30.0, BoxDistributor::DIRECTION_RIGHT},
                      {{100, 25}, true, 40.0, BoxDistributor::DIRECTION_UP},
                      {{100, 75}, true, 40.0, BoxDistributor::DIRECTION_DOWN}};
    for (auto const &row : rows) {
        EXPECT_TRUE(find(row.origin, row.vertical));
        EXPECT_EQ(shift, row.shift);
        EXPECT_EQ(side, row.side);
    }
}

TEST_F(LegendAtBorder, isNotFoundFartherInside)
{
    EXPECT_FALSE(find({20.01, 50}, false));
    EXPECT_FALSE(find({179.99, 50}, false));
    EXPECT_FALSE(find({100, 25.01}, true));
    EXPECT_FALSE(find({100, 74.99}, true));
    EXPECT_EQ(shift, -7.0);
}

TEST_F(LegendAtBorder, isFoundFartherInsideByARounding)
{
    EXPECT_TRUE(find({20.0 + 5e-13, 50}, false));
    EXPECT_TRUE(find({180.0 - 5e-13, 50}, false));
    EXPECT_FALSE(find({20.0 + 5e-12, 50}, false));
    EXPECT_FALSE(find({180.0 - 5e-12, 50}, false));
}

TEST_F(LegendAtBorder, isLookedForAlongOneAxis)
{
    EXPECT_FALSE(find({100, 25}, false));
    EXPECT_FALSE(find({20, 50}, true));
}

TEST_F(LegendAtBorder, prefersTheBeginningOfAPageThatItFills)
{
    legend.setSize({190, 90});
    EXPECT_TRUE(find({100, 50}, false));
    EXPECT_EQ(side, BoxDistributor::DIRECTION_LEFT);
    EXPECT_EQ(shift, 195.0);
}

TEST_F(LegendAtBorder, isNotFoundWhenItDoesNotShow)
{
    EXPECT_FALSE(find({20, 50}, false, false));
    EXPECT_EQ(shift, -7.0);
}

TEST_F(LegendAtBorder, countsWithItsBorder)
{
    legend.setBorder(LineStyle(0.5, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_TRUE(find({20.25, 50}, false));
    EXPECT_EQ(shift, 30.5);
}

TEST_F(LegendAtBorder, keepsLabelsOffWhenTheSideIsMoved)
{
    BoxDistributor distributor(200.0, 100.0, 5.0, 0.0);
    ASSERT_TRUE(find({180, 50}, false));
    distributor.moveSide(side, shift);
    EXPECT_EQ(distributor.getFreeLines()[2]->getLine(), Line2d({165, 5}, {165, 95}));
}

} // namespace
} // namespace Zem::Fig2
