// figqt_fonts.h: from the fonts of elements to fonts of text units.
#pragma once

#include "figqt_font_face.h"
#include "figqt_units.h"

#include <ZemFont.h>

#include <QtGui/QFont>

#include <list>

namespace Zem::Fig2Qt {

/// A font in text units. A size that is not positive and finite counts as 1 point; sizes end at 500 points.
QFont toQFont(Font const &font);

/// A length in text units that may be the pixel size of a font.
int toFontUnits(double units);

/// The faces in use, each with its own memory of shaped texts. Not for several threads.
class Fonts
{
public:
    /// Decorations of the font are left out. Valid until clear(), or until faces by the hundred have come after it.
    FontFace &getFace(QFont const &font);
    void clear() { faces_.clear(); }

private:
    std::list<FontFace> faces_; // latest first
};

} // namespace Zem::Fig2Qt
