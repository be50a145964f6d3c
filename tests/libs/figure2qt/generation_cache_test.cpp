#include <figqt_generation_cache.h>

#include <gtest/gtest.h>

#include <functional>

namespace Zem::Fig2Qt {
namespace {

using Cache = GenerationCache<int, int, std::hash<int>>;

TEST(GenerationCache, findsWhatWasInserted)
{
    Cache cache(10);
    cache.insert(1, 100, 1);

    ASSERT_TRUE(cache.find(1));
    EXPECT_EQ(*cache.find(1), 100);
    EXPECT_FALSE(cache.find(2));
}

TEST(GenerationCache, replacesAnEntryOfTheSameKey)
{
    Cache cache(10);
    cache.insert(1, 100, 1);
    cache.insert(1, 200, 1);

    EXPECT_EQ(*cache.find(1), 200);
    EXPECT_EQ(cache.size(), 1U);
}

TEST(GenerationCache, neverHoldsMoreThanTwiceItsWeight)
{
    Cache cache(10);
    for (int i = 0; i < 1000; ++i) {
        cache.insert(i, i, 2);
        EXPECT_LE(cache.size(), 10U);
    }
}

TEST(GenerationCache, keepsWhatIsAskedForAndForgetsTheRest)
{
    Cache cache(4);
    cache.insert(-1, 1, 1);
    cache.insert(-2, 2, 1);
    for (int i = 0; i < 100; ++i) {
        cache.insert(i, i, 1);
        EXPECT_TRUE(cache.find(-1)) << i;
    }

    EXPECT_FALSE(cache.find(-2));
}

TEST(GenerationCache, isEmptyAfterClear)
{
    Cache cache(10);
    cache.insert(1, 100, 1);
    cache.clear();

    EXPECT_EQ(cache.size(), 0U);
    EXPECT_FALSE(cache.find(1));
}

} // namespace
} // namespace Zem::Fig2Qt
