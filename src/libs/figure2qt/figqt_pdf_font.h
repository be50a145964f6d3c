// figqt_pdf_font.h: the fonts of a PDF file.
#pragma once

#include "figqt_text_layout.h"
#include "figqt_truetype.h"

#include <QtGui/QRawFont>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zem::Fig2Qt {

class PdfFile;

/// One font of the file, of which only the glyphs in use are embedded, with the texts they stand for, so that the text
/// of a page can be searched and copied.
class PdfFont
{
public:
    PdfFont(TrueTypeFont trueType, QRawFont const &font, int number, int object);

    std::string const &getResource() const { return resource_; }
    int getObject() const { return object_; }
    /// The font file has no bold or slanted outlines, though that is what was asked for.
    bool isBoldMissing() const { return boldMissing_; }
    bool isSlantMissing() const { return slantMissing_; }

    /// The number of the glyph in the file.
    std::uint32_t useGlyph(std::uint32_t glyph);
    /// In thousandths of the em.
    double getAdvance(std::uint32_t code) const { return codes_[code].advance; }
    /// Says what a glyph stands for. False when it already stands for another text.
    bool setText(std::uint32_t code, QString const &text);
    bool hasText(std::uint32_t code, QChar character) const;

    void write(PdfFile *file) const;

private:
    struct Code
    {
        std::uint32_t glyph;
        double advance;
        QString text;
    };

    std::string descriptor(int fontFile) const;
    std::string widths() const;
    std::string unicodeMap() const;

    TrueTypeFont trueType_;
    std::string resource_;
    std::string name_;
    int object_;
    bool boldMissing_;
    bool slantMissing_;
    std::vector<Code> codes_;
    std::unordered_map<std::uint32_t, std::uint32_t> codeOf_;
};

/// All fonts of a file.
class PdfFonts
{
public:
    explicit PdfFonts(PdfFile *file) : file_(file) {}

    /// Null for a font that cannot be embedded; its glyphs are drawn as outlines.
    PdfFont *find(QRawFont const &font);
    void write() const;

    /// Tells the fonts what the glyphs of a run stand for. False when the glyphs do not tell the text: then it must be
    /// written beside them.
    bool nameGlyphs(TextRun const &run);

private:
    struct RawFontHash
    {
        std::size_t operator()(QRawFont const &font) const { return qHash(font); }
    };

    PdfFile *file_;
    std::vector<std::unique_ptr<PdfFont>> fonts_;
    std::map<QByteArray, PdfFont *> byFile_;
    std::unordered_map<QRawFont, PdfFont *, RawFontHash> byRawFont_;
};

} // namespace Zem::Fig2Qt
