#include "decimal.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace Zem::Legend2 {

namespace {

// The powers that a double holds exactly.
constexpr int EXACT_POWERS = 23;
constexpr std::array<double, EXACT_POWERS> POWERS{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                  1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Multiples stay two steps of a double apart, and exact as products with a factor below ten.
constexpr double MAX_INDEX = 0x1p48;

double parsedDecimal(double whole, int exponent)
{
    std::string const text = std::to_string(static_cast<long long>(whole)) + 'e' + std::to_string(exponent);
    double value = 0.0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range && exponent > 0) {
        return std::copysign(std::numeric_limits<double>::infinity(), whole);
    }
    return value;
}

} // namespace

double decimal(double whole, int exponent)
{
    if (whole == 0.0) {
        return 0.0;
    }
    if (exponent >= 0 && exponent < EXACT_POWERS) {
        return whole * POWERS[static_cast<std::size_t>(exponent)];
    }
    if (exponent < 0 && -exponent < EXACT_POWERS) {
        return whole / POWERS[static_cast<std::size_t>(-exponent)];
    }
    return parsedDecimal(whole, exponent);
}

bool Grid::findIndices(double minimum, double maximum, long long *first, long long *last) const
{
    double const width = step();
    double const low = minimum / width;
    double const high = maximum / width;
    if (!(width > 0.0) || !(std::abs(low) < MAX_INDEX) || !(std::abs(high) < MAX_INDEX)) {
        return false;
    }
    *first = static_cast<long long>(std::ceil(low));
    *last = static_cast<long long>(std::floor(high));
    // The quotients are rounded: each index may be one off.
    if (valueAt(*first) < minimum) {
        ++*first;
    } else if (valueAt(*first - 1) >= minimum) {
        --*first;
    }
    if (valueAt(*last) > maximum) {
        --*last;
    } else if (valueAt(*last + 1) <= maximum) {
        ++*last;
    }
    return *first <= *last;
}

} // namespace Zem::Legend2
