#include "figqt_pdf_font.h"

#include "figqt_number.h"
#include "figqt_pdf_file.h"

#include <algorithm>
#include <cstdio>

namespace Zem::Fig2Qt {

namespace {

constexpr std::uint32_t MISSING_GLYPH = 0;
constexpr std::size_t ENTRIES_PER_SECTION = 100; // the format allows no more

std::string numbers(std::initializer_list<double> values)
{
    std::string result;
    for (double const value : values) {
        appendNumber(&result, value, 2);
        result += ' ';
    }
    return result;
}

/// Six letters mark a subset.
std::string subsetTag(int number)
{
    std::string tag(6, 'A');
    for (std::size_t i = tag.size(); i-- > 0; number /= 26)
        tag[i] = static_cast<char>('A' + number % 26);
    return tag + '+';
}

std::string fileName(QRawFont const &font)
{
    std::string result;
    for (QChar const character : QString(font.familyName() + QLatin1Char('-') + font.styleName())) {
        if (character.unicode() < 0x7f && (character.isLetterOrNumber() || character == QLatin1Char('-')))
            result += static_cast<char>(character.unicode());
    }
    return result;
}

std::string hexadecimal(std::uint32_t value)
{
    char digits[12];
    std::snprintf(digits, sizeof digits, "<%04X>", value);
    return digits;
}

std::vector<QString> charactersOf(QString const &text)
{
    std::vector<QString> result;
    for (char32_t const character : text.toStdU32String())
        result.push_back(QString::fromUcs4(&character, 1));
    return result;
}

/// What each glyph stands for; glyphs that do not belong to one character each take what lies between their neighbours,
/// as ligatures do. Empty when that leaves a glyph without a text, or a text without a glyph.
std::vector<QString> textsOfGlyphs(QRawFont const &font, QList<quint32> const &glyphs, QString const &text)
{
    std::vector<QString> const characters = charactersOf(text);
    QList<quint32> const nominal = font.glyphIndexesForString(text);
    if (nominal.size() != static_cast<qsizetype>(characters.size()))
        return {};
    std::vector<QString> result;
    qsizetype place = 0;
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
        qsizetype end = place + 1;
        if (place >= nominal.size())
            return {};
        if (nominal[place] != glyphs[i])
            end = i + 1 == glyphs.size() ? nominal.size() : nominal.indexOf(glyphs[i + 1], place + 1);
        if (end < 0)
            return {};
        QString piece;
        for (; place < end; ++place)
            piece += characters[static_cast<std::size_t>(place)];
        result.push_back(piece);
    }
    return place == nominal.size() ? result : std::vector<QString>();
}

} // namespace

PdfFont::PdfFont(TrueTypeFont trueType, QRawFont const &font, int number, int object)
    : trueType_(std::move(trueType)), resource_(std::string("F") += std::to_string(number)),
      name_(subsetTag(number) + fileName(font)), object_(object),
      boldMissing_(font.weight() >= QFont::DemiBold && !trueType_.isBold()),
      slantMissing_(font.style() != QFont::StyleNormal && !trueType_.isItalic())
{
    useGlyph(MISSING_GLYPH);
}

std::uint32_t PdfFont::useGlyph(std::uint32_t glyph)
{
    auto const [it, isNew] = codeOf_.try_emplace(glyph, static_cast<std::uint32_t>(codes_.size()));
    if (isNew)
        codes_.push_back({glyph, trueType_.getAdvance(glyph), {}});
    return it->second;
}

bool PdfFont::setText(std::uint32_t code, QString const &text)
{
    QString &known = codes_[code].text;
    if (known.isEmpty())
        known = text;
    return known == text;
}

bool PdfFont::hasText(std::uint32_t code, QChar character) const
{
    QString const &text = codes_[code].text;
    return text.size() == 1 && text[0] == character;
}

std::string PdfFont::descriptor(int fontFile) const
{
    return "<</Type/FontDescriptor/FontName/" + name_ + "/Flags 4/FontBBox[" +
           numbers({trueType_.getBound(0), trueType_.getBound(1), trueType_.getBound(2), trueType_.getBound(3)}) +
           "]/ItalicAngle " + (trueType_.isItalic() ? "-12" : "0") + "/Ascent " + numbers({trueType_.getAscent()}) +
           "/Descent " + numbers({trueType_.getDescent()}) + "/CapHeight " + numbers({trueType_.getAscent()}) +
           "/StemV " + (trueType_.isBold() ? "140" : "80") + "/FontFile2 " + reference(fontFile) + ">>";
}

std::string PdfFont::widths() const
{
    std::string result;
    for (Code const &code : codes_)
        result += numbers({code.advance});
    return result;
}

std::string PdfFont::unicodeMap() const
{
    std::vector<std::string> entries;
    for (std::size_t i = 0; i < codes_.size(); ++i) {
        if (codes_[i].text.isEmpty())
            continue;
        std::string entry = hexadecimal(static_cast<std::uint32_t>(i)) + " <";
        for (QChar const character : codes_[i].text)
            entry += hexadecimal(character.unicode()).substr(1, 4);
        entries.push_back(entry + ">\n");
    }
    std::string result = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CIDSystemInfo <</Registry "
                         "(Adobe) /Ordering (UCS) /Supplement 0>> def\n/CMapName /Adobe-Identity-UCS def\n/CMapType 2 "
                         "def\n1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    for (std::size_t first = 0; first < entries.size(); first += ENTRIES_PER_SECTION) {
        std::size_t const last = std::min(entries.size(), first + ENTRIES_PER_SECTION);
        result += std::to_string(last - first) + " beginbfchar\n";
        for (std::size_t i = first; i < last; ++i)
            result += entries[i];
        result += "endbfchar\n";
    }
    return result + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

void PdfFont::write(PdfFile *file) const
{
    int const descendant = file->reserve();
    int const descriptorObject = file->reserve();
    int const fontFile = file->reserve();
    int const toUnicode = file->reserve();
    file->writeObject(object_, "<</Type/Font/Subtype/Type0/BaseFont/" + name_ +
                                   "/Encoding/Identity-H/DescendantFonts[" + reference(descendant) + "]/ToUnicode " +
                                   reference(toUnicode) + ">>");
    file->writeObject(descendant,
                      "<</Type/Font/Subtype/CIDFontType2/BaseFont/" + name_ +
                          "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/CIDToGIDMap/Identity"
                          "/FontDescriptor " +
                          reference(descriptorObject) + "/W[0[" + widths() + "]]>>");
    file->writeObject(descriptorObject, descriptor(fontFile));
    std::vector<std::uint32_t> glyphs;
    for (Code const &code : codes_)
        glyphs.push_back(code.glyph);
    std::string const subset = trueType_.makeSubset(glyphs);
    file->writeStream(fontFile, "/Length1 " + std::to_string(subset.size()), subset);
    file->writeStream(toUnicode, "", unicodeMap());
}

PdfFont *PdfFonts::find(QRawFont const &font)
{
    if (auto const known = byRawFont_.find(font); known != byRawFont_.end())
        return known->second;
    // The checksum in the head tells files of the same name apart; sizes of one font share a file.
    QByteArray const identity = font.familyName().toUtf8() + '\n' + font.styleName().toUtf8() + '\n' +
                                QByteArray::number(font.weight()) + '\n' + QByteArray::number(font.style()) + '\n' +
                                font.fontTable("head");
    auto const [it, isNew] = byFile_.try_emplace(identity, nullptr);
    if (isNew) {
        if (auto trueType = TrueTypeFont::read(font)) {
            int const number = static_cast<int>(fonts_.size()) + 1;
            fonts_.push_back(std::make_unique<PdfFont>(std::move(*trueType), font, number, file_->reserve()));
            it->second = fonts_.back().get();
        }
    }
    return byRawFont_[font] = it->second;
}

void PdfFonts::write() const
{
    for (auto const &font : fonts_)
        font->write(file_);
}

bool PdfFonts::nameGlyphs(TextRun const &run)
{
    if (run.rightToLeft || run.shape->glyphs.size() != 1)
        return false;
    QGlyphRun const &glyphRun = run.shape->glyphs[0];
    PdfFont *font = find(glyphRun.rawFont());
    if (!font)
        return true;
    QList<quint32> const glyphs = glyphRun.glyphIndexes();
    bool known = glyphs.size() == run.text.size();
    for (qsizetype i = 0; known && i < glyphs.size(); ++i)
        known = font->hasText(font->useGlyph(glyphs[i]), run.text[i]);
    if (known)
        return true;
    std::vector<QString> const texts = textsOfGlyphs(glyphRun.rawFont(), glyphs, run.text);
    bool clear = !texts.empty();
    for (std::size_t i = 0; i < texts.size(); ++i)
        clear &= font->setText(font->useGlyph(glyphs[static_cast<qsizetype>(i)]), texts[i]);
    return clear;
}

} // namespace Zem::Fig2Qt
