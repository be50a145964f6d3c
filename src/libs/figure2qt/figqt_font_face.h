// figqt_font_face.h: a font in text units, which turns texts into glyphs.
#pragma once

#include "figqt_generation_cache.h"
#include "figqt_text_layout.h"

#include <QtGui/QRawFont>

#include <cstddef>
#include <unordered_map>

namespace Zem::Fig2Qt {

struct StringHash
{
    std::size_t operator()(QString const &text) const { return qHash(text); }
};

/// Shapes texts and keeps what it has shaped. Texts of plain ASCII are composed of the glyphs and kerning of pairs seen
/// before, as soon as all of their pairs are known: numbers, which change with every label, need no shaping then.
class FontFace
{
public:
    /// `font` is sized in pixels, which are text units, and has no underline.
    explicit FontFace(QFont const &font);

    QFont const &getFont() const { return font_; }
    double getAscent() const { return ascent_; }
    double getDescent() const { return descent_; }
    double getLeading() const { return leading_; }
    /// Where a line under, and one through the text lies below the base line, and its width.
    double getUnderlinePosition() const { return underlinePosition_; }
    double getStrikeOutPosition() const { return -ascent_ / 3.0; }
    double getLineWidth() const { return lineWidth_; }

    std::shared_ptr<ShapedText const> shape(QString const &text, bool rightToLeft = false);
    /// Whether all glyphs come from this font and none from a substitute.
    bool isComplete(ShapedText const &shape) const;
    /// How far the last glyph reaches beyond its advance, as slanted ones do; 0 for a shape of several fonts.
    double getOverhang(ShapedText const &shape);

private:
    struct Glyph
    {
        quint32 index = 0;
        double advance = -1.0; ///< at the end of a text; negative when unknown
    };
    static constexpr int FIRST = 0x20;
    static constexpr int COUNT = 0x7f - FIRST;

    std::shared_ptr<ShapedText const> compose(QString const &text) const;
    std::shared_ptr<ShapedText const> shapeInFull(QString const &text, bool rightToLeft) const;
    void learn(QString const &text, ShapedText const &shape);
    std::size_t pairOf(QChar first, QChar second) const;

    QFont font_;
    QRawFont rawFont_;
    double ascent_;
    double descent_;
    double leading_;
    double underlinePosition_;
    double lineWidth_;
    std::vector<Glyph> glyphs_;
    std::unordered_map<quint32, double> overhangs_;
    std::vector<float> pairAdvances_; // advance of the first glyph before the second; negative when unknown
    GenerationCache<QString, std::shared_ptr<ShapedText const>, StringHash> shapes_;
};

} // namespace Zem::Fig2Qt
