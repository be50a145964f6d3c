#include "figqt_font_face.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QTextLayout>
#include <QtGui/QTextOption>

#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t SHAPE_CACHE_CHARACTERS = 1U << 18U;
constexpr double ENDLESS = 1 << 24;
constexpr float UNKNOWN = -1.0F;

bool isPlain(QString const &text)
{
    for (QChar const character : text) {
        if (character.unicode() < 0x20 || character.unicode() >= 0x7f)
            return false;
    }
    return !text.isEmpty();
}

/// The place that Qt's painting gives to an underline: kept off the text, but within the descent.
double paintedUnderlinePosition(QFontMetricsF const &metrics)
{
    double const offset = metrics.underlinePos();
    double const raised = std::ceil(offset) + 0.5;
    return offset <= metrics.descent() ? std::min(raised, metrics.descent() - 0.5) : raised;
}

} // namespace

FontFace::FontFace(QFont const &font)
    : font_(font), rawFont_(QRawFont::fromFont(font)), shapes_(SHAPE_CACHE_CHARACTERS)
{
    QFontMetricsF const metrics(font);
    ascent_ = metrics.ascent();
    descent_ = metrics.descent();
    leading_ = metrics.leading();
    underlinePosition_ = paintedUnderlinePosition(metrics);
    lineWidth_ = metrics.lineWidth();
    glyphs_.resize(COUNT);
    pairAdvances_.assign(static_cast<std::size_t>(COUNT) * COUNT, UNKNOWN);
}

std::shared_ptr<ShapedText const> FontFace::shape(QString const &text, bool rightToLeft)
{
    if (rightToLeft)
        return shapeInFull(text, true);
    if (auto const *known = shapes_.find(text))
        return *known;
    std::shared_ptr<ShapedText const> result = compose(text);
    if (!result) {
        result = shapeInFull(text, false);
        learn(text, *result);
    }
    return shapes_.insert(text, std::move(result), static_cast<std::size_t>(text.size()) + 16);
}

bool FontFace::isComplete(ShapedText const &shape) const
{
    for (QGlyphRun const &run : shape.glyphs) {
        if (run.rawFont() != rawFont_)
            return false;
    }
    return true;
}

double FontFace::getOverhang(ShapedText const &shape)
{
    if (shape.glyphs.size() != 1 || !isComplete(shape))
        return 0.0;
    quint32 const glyph = shape.glyphs[0].glyphIndexes().last();
    auto const [it, isNew] = overhangs_.try_emplace(glyph, 0.0);
    if (isNew)
        it->second = std::max(0.0, rawFont_.boundingRect(glyph).right() -
                                       rawFont_.advancesForGlyphIndexes(QList<quint32>{glyph}).first().x());
    return it->second;
}

std::size_t FontFace::pairOf(QChar first, QChar second) const
{
    return static_cast<std::size_t>(first.unicode() - FIRST) * COUNT +
           static_cast<std::size_t>(second.unicode() - FIRST);
}

/// Null when a glyph or a pair has not been seen yet.
std::shared_ptr<ShapedText const> FontFace::compose(QString const &text) const
{
    if (!isPlain(text))
        return nullptr;
    QList<quint32> indexes(text.size());
    QList<QPointF> positions(text.size());
    double x = 0.0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        Glyph const &glyph = glyphs_[static_cast<std::size_t>(text[i].unicode() - FIRST)];
        bool const last = i + 1 == text.size();
        double const advance =
            last ? glyph.advance : static_cast<double>(pairAdvances_[pairOf(text[i], text[i + 1])]);
        if (advance < 0.0)
            return nullptr;
        indexes[i] = glyph.index;
        positions[i] = QPointF(x, 0.0);
        x += advance;
    }
    auto result = std::make_shared<ShapedText>();
    QGlyphRun run;
    run.setRawFont(rawFont_);
    run.setGlyphIndexes(indexes);
    run.setPositions(positions);
    result->glyphs.push_back(run);
    result->width = x;
    return result;
}

std::shared_ptr<ShapedText const> FontFace::shapeInFull(QString const &text, bool rightToLeft) const
{
    QTextLayout layout(text, font_);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(rightToLeft ? line.naturalTextWidth() : ENDLESS);
    layout.endLayout();

    auto result = std::make_shared<ShapedText>();
    result->width = line.horizontalAdvance();
    for (QGlyphRun run : layout.glyphRuns()) {
        QList<QPointF> positions = run.positions();
        for (QPointF &position : positions)
            position -= QPointF(line.x(), line.ascent());
        run.setPositions(positions);
        result->glyphs.push_back(run);
    }
    return result;
}

/// Takes in what a text of one glyph per character tells. A ligature leaves its pairs unknown for ever.
void FontFace::learn(QString const &text, ShapedText const &shape)
{
    if (!isPlain(text) || shape.glyphs.size() != 1 || !isComplete(shape))
        return;
    QList<quint32> const indexes = shape.glyphs[0].glyphIndexes();
    QList<QPointF> const positions = shape.glyphs[0].positions();
    QList<quint32> const nominal = rawFont_.glyphIndexesForString(text);
    if (indexes != nominal || indexes.size() != text.size())
        return;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool const last = i + 1 == text.size();
        double const advance = (last ? shape.width : positions[i + 1].x()) - positions[i].x();
        Glyph &glyph = glyphs_[static_cast<std::size_t>(text[i].unicode() - FIRST)];
        glyph.index = indexes[i];
        if (last)
            glyph.advance = advance;
        else
            pairAdvances_[pairOf(text[i], text[i + 1])] = static_cast<float>(advance);
    }
}

} // namespace Zem::Fig2Qt
