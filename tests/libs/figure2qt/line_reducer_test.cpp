#include <figqt_dashes.h>
#include <figqt_line_reducer.h>

#include <gtest/gtest.h>

#include <cmath>

namespace Zem::Fig2Qt {
namespace {

using Points = std::vector<QPointF>;

QRectF const EVERYWHERE(-1e6, -1e6, 2e6, 2e6);

Points reduced(Points const &points, QRectF const &visible = EVERYWHERE)
{
    Points result;
    LineReducer reducer(1.0, visible, &result);
    reducer.add(points);
    reducer.finish();
    return result;
}

TEST(LineReducer, keepsALineWithoutTwoPointsToACell)
{
    Points const line{{0.5, 0.5}, {3.5, 7.5}, {1.5, 20.5}, {9.5, 3.5}};

    EXPECT_EQ(reduced(line), line);
}

TEST(LineReducer, keepsTheExtremesOfAColumnAndTheEndsOfTheLine)
{
    EXPECT_EQ(reduced({{0.1, 5}, {0.2, 9}, {0.3, 2}, {0.4, 6}}), (Points{{0.1, 5}, {0.1, 2}, {0.4, 9}, {0.4, 6}}));
}

TEST(LineReducer, keepsTheExtremesOfARow)
{
    EXPECT_EQ(reduced({{5, 0.1}, {9, 0.2}, {2, 0.3}, {6, 0.4}}), (Points{{5, 0.1}, {2, 0.1}, {9, 0.4}, {6, 0.4}}));
}

TEST(LineReducer, takesTwoPointsForEachOfManyFullColumns)
{
    Points line;
    for (int i = 0; i < 10'000; ++i)
        line.emplace_back(i * 0.01, i % 2 ? 100.0 : 0.0);

    // 100 columns, and the first and the last point.
    EXPECT_LE(reduced(line).size(), 202U);
    EXPECT_GE(reduced(line).size(), 200U);
}

TEST(LineReducer, keepsFromWhereTheLineGoesOnFurtherThanToTheNextCell)
{
    Points const result = reduced({{0.1, 0.5}, {0.2, 9}, {0.3, 2}, {0.4, 4}, {50.5, 4}});

    EXPECT_EQ(result[result.size() - 2], QPointF(0.4, 4));
    EXPECT_EQ(result.back(), QPointF(50.5, 4));
}

TEST(LineReducer, keepsTheEndsOfWhatIsOnOneSideOfTheVisible)
{
    QRectF const visible(0, 0, 10, 10);
    Points const line{{5, 5}, {20, 5}, {25, 30}, {30, -20}, {22, 6}, {5.5, 6.5}};

    EXPECT_EQ(reduced(line, visible), (Points{{5, 5}, {20, 5}, {22, 6}, {5.5, 6.5}}));
}

TEST(LineReducer, keepsAllThatCrossesTheVisible)
{
    QRectF const visible(0, 0, 10, 10);
    Points const line{{-5, 5}, {15, 6}, {15, 20}, {5, 15}, {-5, 5}};

    EXPECT_EQ(reduced(line, visible), line);
}

TEST(LineReducer, givesOnePointForOneAndTheEndsForEqualOnes)
{
    EXPECT_EQ(reduced({{3, 4}}), (Points{{3, 4}}));
    EXPECT_EQ(reduced(Points(1000, QPointF(3, 4))).size(), 2U);
    EXPECT_TRUE(reduced({}).empty());
}

std::vector<Points> dashesOf(Points const &line, std::vector<double> const &pattern, bool closed = false,
                             QRectF const &visible = EVERYWHERE)
{
    std::vector<Points> dashes;
    cutIntoDashes(line, closed, pattern, visible,
                  [&dashes](std::span<QPointF const> dash) { dashes.emplace_back(dash.begin(), dash.end()); });
    return dashes;
}

TEST(Dashes, goOnRoundCorners)
{
    EXPECT_EQ(dashesOf({{0, 0}, {3, 0}, {3, 10}}, {2, 2, 4, 2}),
              (std::vector<Points>{{{0, 0}, {2, 0}}, {{3, 1}, {3, 5}}, {{3, 7}, {3, 9}}}));
    EXPECT_EQ(dashesOf({{0, 0}, {3, 0}, {3, 3}}, {4, 1}),
              (std::vector<Points>{{{0, 0}, {3, 0}, {3, 1}}, {{3, 2}, {3, 3}}}));
}

TEST(Dashes, goBackToTheFirstPointOfAClosedLine)
{
    EXPECT_EQ(dashesOf({{0, 0}, {4, 0}}, {1, 5}, true), (std::vector<Points>{{{0, 0}, {1, 0}}, {{2, 0}, {1, 0}}}));
}

TEST(Dashes, countTheLengthThatIsNotVisible)
{
    // 1000 of the pattern of 3 are 333 of them and 1: the gap begins with the visible part.
    std::vector<Points> const dashes = dashesOf({{-1000, 5}, {8, 5}}, {1, 2}, false, QRectF(0, 0, 10, 10));

    EXPECT_EQ(dashes, (std::vector<Points>{{{2, 5}, {3, 5}}, {{5, 5}, {6, 5}}}));
}

TEST(Dashes, ofAnEmptyPatternAreTheLine)
{
    EXPECT_EQ(dashesOf({{0, 0}, {3, 0}}, {0, 0}), (std::vector<Points>{{{0, 0}, {3, 0}}}));
}

} // namespace
} // namespace Zem::Fig2Qt
