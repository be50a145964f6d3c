#include "figqt_fonts.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MAX_FACES = 200;

QFont::Weight weightOf(unsigned int style)
{
    if (style & Font::BLACK)
        return QFont::Black;
    if (style & Font::BOLD)
        return QFont::Bold;
    if (style & Font::DEMI_BOLD)
        return QFont::DemiBold;
    return style & Font::LIGHT ? QFont::Light : QFont::Normal;
}

} // namespace

int toFontUnits(double units)
{
    if (!std::isfinite(units) || units <= 0.0)
        units = UNITS_PER_POINT;
    return static_cast<int>(std::lround(std::clamp(units, 1.0, static_cast<double>(MAX_FONT_UNITS))));
}

QFont toQFont(Font const &font)
{
    QFont result(font.getFamily());
    result.setPixelSize(toFontUnits(std::min(font.getSize(), 1e6) * UNITS_PER_POINT));
    result.setWeight(weightOf(font.getStyle()));
    result.setItalic(font.getStyle() & Font::ITALIC);
    result.setUnderline(font.getStyle() & Font::UNDERLINE);
    result.setStrikeOut(font.getStyle() & Font::STRIKEOUT);
    result.setHintingPreference(QFont::PreferNoHinting);
    result.setStyleHint(QFont::SansSerif);
    return result;
}

FontFace &Fonts::getFace(QFont const &font)
{
    QFont plain = font;
    plain.setUnderline(false);
    plain.setStrikeOut(false);
    plain.setOverline(false);
    auto const found = std::find_if(faces_.begin(), faces_.end(),
                                    [&plain](FontFace const &face) { return face.getFont() == plain; });
    if (found != faces_.end()) {
        faces_.splice(faces_.begin(), faces_, found);
        return faces_.front();
    }
    if (faces_.size() == MAX_FACES)
        faces_.pop_back();
    return faces_.emplace_front(plain);
}

} // namespace Zem::Fig2Qt
