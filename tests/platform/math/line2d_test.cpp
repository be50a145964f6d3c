#include <ZemLine2d.h>

#include "points.h"

using Zem::Line2d;
using Zem::LineSegment2d;

namespace {

Point const UNTOUCHED(77, 77);

/// The crossing, UNTOUCHED when there is none.
template <class Shape>
Point crossingOf(Shape const &a, Shape const &b)
{
    Point crossing = UNTOUCHED;
    bool const meets = a.intersect(b, &crossing);
    EXPECT_EQ(meets, crossing != UNTOUCHED);
    EXPECT_EQ(a.intersect(b, nullptr), meets);
    return crossing;
}

} // namespace

TEST(Line2d, measuresPositiveDistanceOnTheLeftWithYUpwards)
{
    Line2d const line({0, 0}, {5, 0});
    EXPECT_EQ(line.signedDistance({100, 3}), 3);
    EXPECT_EQ(line.signedDistance({-100, -3}), -3);
    EXPECT_EQ(line.signedDistance({2, 0}), 0);
    EXPECT_EQ(Line2d({0, 0}, {3, 4}).signedDistance({4, -3}), -5);
}

TEST(Line2d, givesTheFootOfThePerpendicular)
{
    EXPECT_THAT(Line2d({0, 0}, {1, 1}).perpend({2, 0}), IsNear(1, 1));
    EXPECT_THAT(Line2d({0, 3}, {1, 3}).perpend({-50, 9}), IsNear(-50, 3));
}

TEST(Line2d, meetsAnotherBeyondThePointsThatGiveIt)
{
    EXPECT_THAT(crossingOf(Line2d({0, 0}, {1, 0}), Line2d({10, 5}, {10, 4})), IsNear(10, 0));
}

TEST(Line2d, doesNotMeetAParallelOne)
{
    EXPECT_EQ(crossingOf(Line2d({0, 0}, {1, 2}), Line2d({1, 0}, {2, 2})), UNTOUCHED);
    EXPECT_EQ(crossingOf(Line2d({0, 0}, {1, 2}), Line2d({0, 0}, {1, 2})), UNTOUCHED);
}

TEST(Line2d, ofEqualPointsIsThatPoint)
{
    Line2d const line({1, 1}, {1, 1});
    EXPECT_EQ(line.signedDistance({4, 5}), 5);
    EXPECT_EQ(line.perpend({4, 5}), Point(1, 1));
    EXPECT_EQ(crossingOf(line, Line2d({0, 1}, {2, 1})), UNTOUCHED);
}

TEST(Line2d, withoutNumbersMeetsNothing)
{
    EXPECT_EQ(crossingOf(Line2d({NOT_A_NUMBER, 0}, {1, 0}), Line2d({0, 1}, {0, 2})), UNTOUCHED);
    EXPECT_EQ(crossingOf(Line2d({0, 0}, {INFINITE, 0}), Line2d({0, 1}, {0, 2})), UNTOUCHED);
}

TEST(LineSegment2d, meetsAnotherWhereTheyCross)
{
    EXPECT_THAT(crossingOf(LineSegment2d({0, 0}, {4, 4}), LineSegment2d({0, 2}, {2, 0})), IsNear(1, 1));
}

TEST(LineSegment2d, doesNotReachBeyondItsEnds)
{
    EXPECT_EQ(crossingOf(LineSegment2d({0, 0}, {4, 4}), LineSegment2d({0, 20}, {20, 0})), UNTOUCHED);
    EXPECT_EQ(crossingOf(LineSegment2d({0, 0}, {4, 4}), LineSegment2d({3, 0}, {4, 1})), UNTOUCHED);
}

TEST(LineSegment2d, meetsWhatItTouches)
{
    EXPECT_EQ(crossingOf(LineSegment2d({0, 0}, {2, 0}), LineSegment2d({1, 0}, {1, 5})), Point(1, 0));
    EXPECT_EQ(crossingOf(LineSegment2d({0, 0}, {2, 0}), LineSegment2d({2, 0}, {3, 5})), Point(2, 0));
    EXPECT_EQ(crossingOf(LineSegment2d({1, 5}, {1, 0}), LineSegment2d({0, 0}, {2, 0})), Point(1, 0));
}

TEST(LineSegment2d, meetsOneOnTheSameLineNearestToItsFirstPoint)
{
    LineSegment2d const segment({0, 0}, {10, 0});
    EXPECT_EQ(crossingOf(segment, LineSegment2d({8, 0}, {3, 0})), Point(3, 0));
    EXPECT_EQ(crossingOf(segment, LineSegment2d({5, 0}, {30, 0})), Point(5, 0));
    EXPECT_EQ(crossingOf(segment, LineSegment2d({-5, 0}, {30, 0})), Point(0, 0));
    EXPECT_EQ(crossingOf(segment, LineSegment2d({11, 0}, {30, 0})), UNTOUCHED);
}

TEST(LineSegment2d, canBeASinglePoint)
{
    LineSegment2d const point({1, 1}, {1, 1});
    EXPECT_EQ(crossingOf(point, LineSegment2d({0, 0}, {2, 2})), Point(1, 1));
    EXPECT_EQ(crossingOf(LineSegment2d({0, 0}, {2, 2}), point), Point(1, 1));
    EXPECT_EQ(crossingOf(point, point), Point(1, 1));
    EXPECT_EQ(crossingOf(point, LineSegment2d({0, 0}, {2, 3})), UNTOUCHED);
}

TEST(LineSegment2d, overlapsWhatItMeets)
{
    LineSegment2d const segment({0, 0}, {4, 0});
    EXPECT_TRUE(segment.overlap({{2, -1}, {2, 1}}));
    EXPECT_FALSE(segment.overlap({{2, 1}, {2, 2}}));
}

TEST(LineSegment2d, withoutNumbersMeetsNothing)
{
    LineSegment2d const segment({-9, -9}, {9, 9});
    for (double odd : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
        EXPECT_EQ(crossingOf(segment, LineSegment2d({odd, 0}, {0, 0})), UNTOUCHED) << odd;
        EXPECT_EQ(crossingOf(LineSegment2d({0, 5}, {0, odd}), segment), UNTOUCHED) << odd;
    }
}

TEST(LineSegment2d, givesNoCrossingThatIsNotANumber)
{
    double const huge = std::numeric_limits<double>::max();
    Point crossing;
    LineSegment2d({-huge, -huge}, {huge, huge}).intersect({{-huge, huge}, {huge, -huge}}, &crossing);
    EXPECT_EQ(crossing, Point());
}
