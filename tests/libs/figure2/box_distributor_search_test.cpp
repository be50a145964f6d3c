#include "box_distributor_fixture.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace Zem::Fig2 {
namespace {

constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

/// A page made at random: crowded or empty, with obstacles, fixed labels, moved sides and further lines.
struct RandomPage
{
    BaVec2d<double> size;
    double edge;
    double distance;
    std::vector<std::pair<BaVec2d<double>, BaVec2d<double>>> labels; ///< point and size
    std::vector<Rect> obstacles;
    std::vector<std::pair<BaVec2d<double>, BaVec2d<double>>> fixed; ///< point and origin
};

class Random
{
public:
    explicit Random(unsigned int seed) : engine_(seed) {}

    double number(double low, double high)
    {
        return low + (high - low) * static_cast<double>(engine_() >> 8) / 16777216.0;
    }
    std::size_t count(std::size_t below) { return engine_() % below; }
    /// On a coarse raster, so that things touch and distances are equal.
    BaVec2d<double> place(BaVec2d<double> const &size)
    {
        return {std::round(number(-5, size.x + 5)), std::round(number(-5, size.y + 5))};
    }
    RandomPage page()
    {
        RandomPage page;
        page.size = {number(60, 400), number(60, 400)};
        page.edge = number(0, 10);
        page.distance = count(2) == 0 ? 0.0 : number(0, 2);
        for (std::size_t i = count(60); i > 0; --i)
            page.labels.emplace_back(place(page.size), BaVec2d<double>(number(2, 30), number(2, 10)));
        for (std::size_t i = count(12); i > 0; --i) {
            BaVec2d<double> const corner = place(page.size);
            page.obstacles.emplace_back(corner.x, corner.y, std::round(number(-20, 60)), std::round(number(-20, 60)));
        }
        for (std::size_t i = count(6); i > 0; --i)
            page.fixed.emplace_back(place(page.size), place(page.size));
        return page;
    }

private:
    std::minstd_rand engine_;
};

class PlacementSearch : public BoxDistributorTest
{
protected:
    using Operation = void (BoxDistributor::*)(StageIdentifier const &);

    /// The origins of all labels afterwards.
    std::vector<BaVec2d<double>> placed(RandomPage const &page, BoxDistributor::Search_t search, Operation operation)
    {
        labels.clear();
        BoxDistributor distributor(page.size.x, page.size.y, page.edge, page.distance);
        distributor.setSearch(search);
        for (auto const &[point, size] : page.labels)
            distributor.addTextBox(makeLabel(point, size));
        for (auto const &[point, origin] : page.fixed) {
            Label *label = makeLabel(point);
            label->setOrigin(origin);
            distributor.addFixedTextBox(label);
        }
        for (Rect const &obstacle : page.obstacles)
            distributor.addFixedBox(obstacle);
        (distributor.*operation)(stage);
        std::vector<BaVec2d<double>> origins;
        for (auto const &label : labels)
            origins.push_back(label->getOrigin());
        return origins;
    }
    void expectSamePlaces(Operation operation)
    {
        Random random(20261121);
        for (int i = 0; i < 400; ++i) {
            RandomPage const page = random.page();
            auto const plain = placed(page, BoxDistributor::SEARCH_PLAIN, operation);
            auto const grid = placed(page, BoxDistributor::SEARCH_GRID, operation);
            ASSERT_EQ(plain.size(), grid.size());
            for (std::size_t k = 0; k < plain.size(); ++k) {
                ASSERT_EQ(std::bit_cast<std::uint64_t>(plain[k].x), std::bit_cast<std::uint64_t>(grid[k].x)) << i;
                ASSERT_EQ(std::bit_cast<std::uint64_t>(plain[k].y), std::bit_cast<std::uint64_t>(grid[k].y)) << i;
            }
        }
    }
    void expectFinitePlaces(RandomPage const &page)
    {
        for (Operation operation :
             {Operation(&BoxDistributor::distribute), Operation(&BoxDistributor::placeAtElement)}) {
            for (BaVec2d<double> const &origin : placed(page, BoxDistributor::SEARCH_GRID, operation)) {
                EXPECT_TRUE(std::isfinite(origin.x) && std::isfinite(origin.y)) << Support::text(origin);
            }
        }
    }
};

TEST_F(PlacementSearch, distributesByTheGridAsByThePlainWalk)
{
    expectSamePlaces(&BoxDistributor::distribute);
}

TEST_F(PlacementSearch, placesAtElementsByTheGridAsByThePlainWalk)
{
    expectSamePlaces(&BoxDistributor::placeAtElement);
}

TEST_F(PlacementSearch, placesLabelsThatPointNowhere)
{
    BaVec2d<double> const size(20, 6);
    expectFinitePlaces({{200, 100},
                        5,
                        1,
                        {{{NONE, NONE}, size}, {{NONE, 3}, size}, {{ENDLESS, 1}, size}, {{1e308, -1e308}, size}},
                        {},
                        {}});
}

TEST_F(PlacementSearch, placesLabelsWithoutAUsableSize)
{
    for (double extent : {NONE, ENDLESS, -ENDLESS, 1e308, -1e300, -4.0, 0.0, 5000.0}) {
        RandomPage page{{200, 100}, 5, 1, {}, {}, {}};
        for (int i = 0; i < 8; ++i)
            page.labels.push_back({{10.0 * i, 20.0}, {extent, 6}});
        expectFinitePlaces(page);
    }
}

TEST_F(PlacementSearch, placesAmongObstaclesThatAreNoRectangles)
{
    RandomPage page{{200, 100}, 5, 1, {}, {}, {}};
    for (int i = 0; i < 8; ++i)
        page.labels.push_back({{20.0 * i, 20.0}, {20, 6}});
    for (double bad : {NONE, ENDLESS, -ENDLESS, 1e308, -1e308}) {
        page.obstacles.push_back(Rect(bad, 0, 50, 50));
        page.obstacles.push_back(Rect(0, 0, bad, 50));
        page.obstacles.push_back(Rect(50, bad, 10, bad));
    }
    expectFinitePlaces(page);
}

TEST_F(PlacementSearch, placesBesideFixedLabelsThatPointNowhere)
{
    for (double bad : {NONE, ENDLESS, 1e308}) {
        RandomPage page{{200, 100}, 5, 1, {}, {}, {}};
        for (int i = 0; i < 8; ++i)
            page.labels.push_back({{20.0 * i, 20.0}, {20, 6}});
        page.fixed.push_back({{bad, bad}, {50, 50}});
        expectFinitePlaces(page);
    }
}

TEST_F(PlacementSearch, placesOnPagesAsSmallAsTheirEdges)
{
    for (double width : {1.5, 10.0, 11.42, 1e-300, -200.0, 1e150}) {
        RandomPage page{{width, 100}, 5, 1, {}, {}, {}};
        for (int i = 0; i < 8; ++i)
            page.labels.push_back({{20.0 * i, 20.0}, {20, 6}});
        expectFinitePlaces(page);
    }
}

TEST_F(PlacementSearch, placesALabelFixedOffAllNumbersWithoutMovingIt)
{
    RandomPage const page{{200, 100}, 5, 1, {{{20, 20}, {20, 6}}}, {}, {{{30, 30}, {1e300, -1e300}}}};
    auto const origins = placed(page, BoxDistributor::SEARCH_GRID, &BoxDistributor::distribute);
    EXPECT_EQ(origins[1], BaVec2d<double>(1e300, -1e300));
}

} // namespace
} // namespace Zem::Fig2
