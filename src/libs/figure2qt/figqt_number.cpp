#include "figqt_number.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace Zem::Fig2Qt {

namespace {

constexpr std::int64_t POWERS[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};

} // namespace

void appendNumber(std::string *text, double value, int decimals)
{
    std::int64_t const scale = POWERS[decimals];
    std::int64_t scaled = std::llround(value * static_cast<double>(scale));
    if (scaled < 0) {
        text->push_back('-');
        scaled = -scaled;
    }
    char digits[24];
    char const *end = std::to_chars(digits, digits + sizeof digits, scaled / scale).ptr;
    text->append(static_cast<char const *>(digits), end);
    std::int64_t fraction = scaled % scale;
    if (fraction == 0)
        return;
    text->push_back('.');
    for (std::int64_t place = scale / 10; fraction != 0; place /= 10) {
        text->push_back(static_cast<char>('0' + fraction / place));
        fraction %= place;
    }
}

} // namespace Zem::Fig2Qt
