// figqt_number.h: numbers in page languages.
#pragma once

#include <string>

namespace Zem::Fig2Qt {

/// Appends the shortest decimal form of the value rounded to `decimals` places, 0 to 9, independent of the locale. The
/// value is finite and below 1e9 in size.
void appendNumber(std::string *text, double value, int decimals);

} // namespace Zem::Fig2Qt
