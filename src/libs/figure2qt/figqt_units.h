// figqt_units.h: the units in which text is laid out.
#pragma once

namespace Zem::Fig2Qt {

// Text is laid out on an imaginary device so fine that rounding the pixel size of a font, which Qt does, changes
// nothing that can be seen, and is then scaled to the page. So what is measured is what is painted, at every resolution.
inline constexpr int UNITS_PER_POINT = 128;
inline constexpr int UNITS_PER_INCH = 72 * UNITS_PER_POINT;
inline constexpr double MM_PER_INCH = 25.4;
inline constexpr double MM_PER_UNIT = MM_PER_INCH / UNITS_PER_INCH;

/// FreeType refuses fonts of more than 65535 pixels.
inline constexpr int MAX_FONT_UNITS = 500 * UNITS_PER_POINT;

} // namespace Zem::Fig2Qt
