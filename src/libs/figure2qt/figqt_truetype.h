// figqt_truetype.h: reads TrueType fonts and makes small ones of some of their glyphs.
#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QRawFont>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Zem::Fig2Qt {

/// The tables of one font file. Numbers in the tables are not trusted: what lies outside of them counts as empty.
class TrueTypeFont
{
public:
    /// Nothing when the font has no TrueType outlines, is damaged, or forbids embedding.
    static std::optional<TrueTypeFont> read(QRawFont const &font);

    int getUnitsPerEm() const { return unitsPerEm_; }
    int getGlyphCount() const { return glyphCount_; }
    /// In thousandths of the em; 0 for a glyph that does not exist.
    double getAdvance(std::uint32_t glyph) const;
    /// Whether the outlines themselves are bold, or slanted.
    bool isBold() const { return bold_; }
    bool isItalic() const { return italic_; }
    /// Left, bottom, right, top, and the heights above and below the base line, in thousandths of the em.
    double getBound(int index) const;
    double getAscent() const;
    double getDescent() const;

    /// A font file of these glyphs in this order, the first being number 0; parts of composed glyphs follow.
    std::string makeSubset(std::vector<std::uint32_t> glyphs) const;

private:
    std::string glyphData(std::uint32_t glyph) const;
    std::string renumberParts(std::string data, std::vector<std::uint32_t> *glyphs,
                              std::map<std::uint32_t, std::uint32_t> *numbers) const;
    std::string metricsOf(std::vector<std::uint32_t> const &glyphs) const;
    double toThousandths(int value) const { return value * 1000.0 / unitsPerEm_; }

    std::map<std::string, QByteArray> tables_;
    int unitsPerEm_ = 1000;
    int glyphCount_ = 0;
    int metricCount_ = 0;
    bool longOffsets_ = false;
    bool bold_ = false;
    bool italic_ = false;
};

} // namespace Zem::Fig2Qt
