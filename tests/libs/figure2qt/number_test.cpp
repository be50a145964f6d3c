#include <figqt_number.h>

#include <gtest/gtest.h>

#include <clocale>

namespace Zem::Fig2Qt {
namespace {

std::string number(double value, int decimals)
{
    std::string text = "x";
    appendNumber(&text, value, decimals);
    return text.substr(1);
}

TEST(Number, isAsShortAsItsRoundingAllows)
{
    EXPECT_EQ(number(0.0, 4), "0");
    EXPECT_EQ(number(-0.0, 4), "0");
    EXPECT_EQ(number(1.5, 4), "1.5");
    EXPECT_EQ(number(-1.25, 4), "-1.25");
    EXPECT_EQ(number(100.0, 4), "100");
    EXPECT_EQ(number(1.00005, 4), "1.0001");
    EXPECT_EQ(number(0.0004, 3), "0");
    EXPECT_EQ(number(-0.0004, 3), "0");
    EXPECT_EQ(number(0.0306, 4), "0.0306");
    EXPECT_EQ(number(2.834645669291, 9), "2.834645669");
    EXPECT_EQ(number(12345678.9, 1), "12345678.9");
}

TEST(Number, doesNotDependOnTheLocale)
{
    std::string const before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");

    EXPECT_EQ(number(1.5, 2), "1.5");

    std::setlocale(LC_NUMERIC, before.c_str());
}

} // namespace
} // namespace Zem::Fig2Qt
