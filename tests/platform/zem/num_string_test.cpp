#include <ZemNumString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using Zem::NumString;

namespace {

std::vector<QString> sorted(std::vector<QString> const &names)
{
    std::vector<NumString> order(names.begin(), names.end());
    std::sort(order.begin(), order.end());
    std::vector<QString> result;
    for (NumString const &name : order) {
        result.push_back(name.getName());
    }
    return result;
}

} // namespace

TEST(NumString, ordersEmbeddedNumbersByValue)
{
    EXPECT_EQ(sorted({"stage 10", "stage 9", "stage 100", "stage"}),
              (std::vector<QString>{"stage", "stage 9", "stage 10", "stage 100"}));
}

TEST(NumString, ordersTheTextAroundTheNumbersByCodeUnit)
{
    EXPECT_EQ(sorted({"b1", "a2", "a1b", "a1a", "2", "a"}), (std::vector<QString>{"2", "a", "a1a", "a1b", "a2", "b1"}));
}

TEST(NumString, comparesNumbersLargerThanAnyInteger)
{
    EXPECT_TRUE(NumString("99999999999999999999999998") < NumString("99999999999999999999999999"));
    EXPECT_TRUE(NumString("99999999999999999999999999") < NumString("100000000000000000000000000"));
}

TEST(NumString, ordersNamesThatDifferOnlyInLeadingZeros)
{
    EXPECT_TRUE(NumString("a01") < NumString("a1"));
    EXPECT_FALSE(NumString("a1") < NumString("a01"));
    EXPECT_TRUE(NumString("a01z") < NumString("a2"));
    EXPECT_TRUE(NumString("a0") < NumString("a1"));
}

TEST(NumString, isNotBeforeItself)
{
    for (char const *name : {"", "a", "007", "x1y2"}) {
        EXPECT_FALSE(NumString(name) < NumString(name)) << name;
    }
}
