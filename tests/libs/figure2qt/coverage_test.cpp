#include <figqt_coverage.h>
#include <figqt_stroker.h>

#include <gtest/gtest.h>

#include <map>

namespace Zem::Fig2Qt {
namespace {

/// What of each pixel is covered, row by row.
std::vector<int> taken(Coverage *coverage, int width, int height)
{
    std::vector<int> pixels(static_cast<std::size_t>(width * height));
    coverage->take([&](int x, int y, std::span<unsigned char const> covered) {
        for (std::size_t i = 0; i < covered.size(); ++i)
            pixels[static_cast<std::size_t>(y * width + x) + i] = covered[i];
    });
    return pixels;
}

void addRect(Coverage *coverage, double left, double top, double right, double bottom)
{
    coverage->addConvex(
        std::array{QPointF(left, top), QPointF(right, top), QPointF(right, bottom), QPointF(left, bottom)});
}

TEST(Coverage, isThePartOfAPixelThatLiesInTheArea)
{
    Coverage coverage(3, 2);
    addRect(&coverage, 0.5, 0.25, 2.25, 1.5);

    // Widths 1/2, 1, 1/4; heights 3/4, 1/2; of 255.
    EXPECT_EQ(taken(&coverage, 3, 2), (std::vector{96, 191, 48, 64, 128, 32}));
}

TEST(Coverage, countsWhatAreasHaveInCommonOnce)
{
    Coverage coverage(2, 1);
    addRect(&coverage, 0.0, 0.0, 1.5, 0.5);
    addRect(&coverage, 0.5, 0.0, 2.0, 0.5);
    addRect(&coverage, 0.0, 0.25, 1.0, 0.5);

    EXPECT_EQ(taken(&coverage, 2, 1), (std::vector{128, 128}));
}

TEST(Coverage, doesNotDependOnTheDirectionOfTheCorners)
{
    Coverage coverage(2, 2);
    coverage.addConvex(std::array{QPointF(0, 0), QPointF(0, 2), QPointF(2, 2)});

    // Half of the square: the pixels on the diagonal are covered half, but for the 16 steps they are seen in.
    std::vector<int> const pixels = taken(&coverage, 2, 2);
    EXPECT_NEAR(pixels[0], 128, 1);
    EXPECT_EQ(pixels[1], 0);
    EXPECT_EQ(pixels[2], 255);
    EXPECT_NEAR(pixels[3], 128, 1);
}

TEST(Coverage, beginsAnewWhenItIsTaken)
{
    Coverage coverage(2, 1);
    addRect(&coverage, 0.0, 0.0, 2.0, 1.0);
    taken(&coverage, 2, 1);

    EXPECT_TRUE(coverage.isEmpty());
    addRect(&coverage, 0.0, 0.0, 1.0, 1.0);
    EXPECT_EQ(taken(&coverage, 2, 1), (std::vector{255, 0}));
}

TEST(Coverage, leavesOutWhatIsBeyondItsBounds)
{
    Coverage coverage(4, 3);
    coverage.setBounds(QRect(1, 1, 2, 1));
    addRect(&coverage, -1e9, -1e9, 1e9, 1e9);

    EXPECT_EQ(taken(&coverage, 4, 3), (std::vector{0, 0, 0, 0, 0, 255, 255, 0, 0, 0, 0, 0}));
}

TEST(Coverage, countsBoxesLikeOtherAreas)
{
    Coverage coverage(3, 2);
    coverage.addBox({0.5, 0.25}, {2.25, 1.0});
    coverage.addBox({0.5, 0.75}, {2.25, 1.5});
    coverage.addBox({2.0, 0.25}, {2.25, 1.5});

    EXPECT_FALSE(coverage.isEmpty());
    EXPECT_EQ(taken(&coverage, 3, 2), (std::vector{96, 191, 48, 64, 128, 32}));
    EXPECT_TRUE(coverage.isEmpty());
}

TEST(Coverage, ofManyAreasInNoOrderIsTheirUnion)
{
    Coverage coverage(1, 200);
    for (int i = 0; i < 200; ++i)
        addRect(&coverage, 0.0, i * 37 % 200, 1.0, i * 37 % 200 + (i * 37 % 200 % 2 ? 0.5 : 1.0));

    std::vector<int> const pixels = taken(&coverage, 1, 200);
    for (std::size_t y = 0; y < 200; ++y)
        EXPECT_EQ(pixels[y], y % 2 ? 128 : 255) << y;
}

std::vector<int> stroked(std::vector<QPointF> const &points, double width, bool round, bool closed = false)
{
    Coverage coverage(10, 10);
    Stroker(width, round, &coverage).add(points, closed);
    return taken(&coverage, 10, 10);
}

int at(std::vector<int> const &pixels, int x, int y)
{
    return pixels[static_cast<std::size_t>(y * 10 + x)];
}

TEST(Stroker, endsAtItsPointsWhenSharp)
{
    std::vector<int> const pixels = stroked({{2, 5}, {7, 5}}, 2.0, false);

    EXPECT_EQ(at(pixels, 1, 5), 0);
    EXPECT_EQ(at(pixels, 2, 5), 255);
    EXPECT_EQ(at(pixels, 6, 4), 255);
    EXPECT_EQ(at(pixels, 7, 4), 0);
    EXPECT_EQ(at(pixels, 4, 3), 0);
}

TEST(Stroker, mitresACornerUpToFourHalfWidths)
{
    // A right angle reaches the outer corner of its pixel; one of 20 degrees would reach 5.8 half widths and is cut.
    EXPECT_EQ(at(stroked({{2, 8}, {2, 2}, {8, 2}}, 2.0, false), 1, 1), 255);
    std::vector<int> const sharp = stroked({{2, 6}, {7, 5}, {2, 4}}, 1.0, false);
    EXPECT_EQ(at(sharp, 8, 4), 0);
    EXPECT_EQ(at(sharp, 8, 5), 0);
}

TEST(Stroker, roundsCornersAndEndsByHalfTheWidth)
{
    // A disc of radius 2 covers pi square pixels of each quarter of 4 about its centre.
    std::vector<int> const pixels = stroked({{5, 5}, {5, 5}}, 4.0, true);
    int sum = 0;
    for (int const covered : pixels)
        sum += covered;
    EXPECT_NEAR(sum / 255.0, 12.566, 0.2);
    EXPECT_EQ(at(pixels, 2, 4), 0);
    EXPECT_EQ(at(pixels, 4, 4), 255);
}

TEST(Stroker, joinsTheEndsOfAClosedLine)
{
    std::vector<int> const pixels = stroked({{3, 3}, {7, 3}, {7, 7}, {3, 7}}, 2.0, false, true);

    EXPECT_EQ(at(pixels, 2, 2), 255);
    EXPECT_EQ(at(pixels, 2, 5), 255);
    EXPECT_EQ(at(pixels, 5, 5), 0);
}

} // namespace
} // namespace Zem::Fig2Qt
