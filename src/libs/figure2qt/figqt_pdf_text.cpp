// figqt_pdf_text.cpp: text on PDF pages. Text space is millimetres at the corner of a layout, y up.

#include "figqt_number.h"
#include "figqt_pdf_canvas.h"
#include "figqt_pdf_file.h"

#include <cmath>

namespace Zem::Fig2Qt {

namespace {

// What FreeType makes of a font that has no slanted outlines: 12 degrees.
constexpr double SLANT = 0.2126;
// A glyph off by less than this, in thousandths of the em, stays where it is.
constexpr double TOLERANCE = 0.5;

double scaleOf(QTransform const &transform)
{
    return std::sqrt(std::abs(transform.determinant()));
}

double rounded(double value)
{
    return std::round(value * 1e4) / 1e4;
}

void appendCode(std::string *text, std::uint32_t code)
{
    for (std::uint32_t const byte : {code >> 8U & 0xffU, code & 0xffU}) {
        if (byte == '(' || byte == ')' || byte == '\\')
            *text += '\\';
        if (byte == '\r')
            *text += "\\r"; // would be read as a line feed
        else
            *text += static_cast<char>(byte);
    }
}

bool onOneLine(QList<QPointF> const &positions)
{
    for (QPointF const &position : positions) {
        if (position.y() != positions.first().y())
            return false;
    }
    return true;
}

/// The glyphs of the run that stand at the same height, from `first` on.
QGlyphRun nextLevel(QGlyphRun const &run, qsizetype *first)
{
    QList<QPointF> const positions = run.positions();
    qsizetype end = *first + 1;
    while (end < positions.size() && positions[end].y() == positions[*first].y())
        ++end;
    QGlyphRun level;
    level.setRawFont(run.rawFont());
    level.setGlyphIndexes(run.glyphIndexes().mid(*first, end - *first));
    level.setPositions(positions.mid(*first, end - *first));
    *first = end;
    return level;
}

} // namespace

void PdfCanvas::drawShape(TextShape const &shape, QTransform const &toPage)
{
    Stroke stroke;
    if (shape.stroke) {
        stroke.color = *shape.stroke;
        stroke.width = shape.strokeWidth * scaleOf(toPage);
    }
    drawPath(toPage.map(shape.path), shape.stroke ? &stroke : nullptr, shape.fill ? &*shape.fill : nullptr);
}

void PdfCanvas::drawText(TextLayout const &layout, QTransform const &toPage)
{
    finish();
    for (TextShape const &shape : layout.shapes)
        drawShape(shape, toPage);
    if (layout.runs.empty())
        return;
    beginText(toPage, 0.0, QPointF());
    for (TextRun const &run : layout.runs)
        drawRun(run, toPage);
    content_ += "ET\n";
}

void PdfCanvas::beginText(QTransform const &toPage, double slant, QPointF const &origin)
{
    double const scale = scaleOf(toPage);
    QTransform const turned(toPage.m11() / scale, toPage.m12() / scale, -toPage.m21() / scale, -toPage.m22() / scale,
                            toPage.dx(), toPage.dy());
    content_ += "BT\n";
    matrix(QTransform(1.0, 0.0, slant, 1.0, origin.x(), origin.y()) * turned, "Tm\n");
    textOrigin_ = origin;
}

void PdfCanvas::moveTo(QPointF const &origin)
{
    QPointF const step(rounded(origin.x() - textOrigin_.x()), rounded(origin.y() - textOrigin_.y()));
    if (step.isNull())
        return;
    point(step);
    content_ += "Td\n";
    textOrigin_ += step;
}

void PdfCanvas::drawRun(TextRun const &run, QTransform const &toPage)
{
    bool const told = fonts_->nameGlyphs(run);
    if (!told)
        content_ += "/Span<</ActualText" + pdfText(run.text) + ">>BDC\n";
    for (QGlyphRun const &glyphs : run.shape->glyphs) {
        PdfFont *font = fonts_->find(glyphs.rawFont());
        if (font)
            drawGlyphs(glyphs, font, run, toPage);
        else
            drawOutlines(glyphs, run, toPage);
    }
    if (!told)
        content_ += "EMC\n";
}

void PdfCanvas::setFont(PdfFont const &font, double size)
{
    if (state_.font == &font && state_.fontSize == size)
        return;
    state_.font = &font;
    state_.fontSize = size;
    usedFonts_[font.getResource()] = font.getObject();
    content_ += "/" + font.getResource() + " ";
    number(size);
    content_ += "Tf\n";
}

void PdfCanvas::drawGlyphs(QGlyphRun const &glyphs, PdfFont *font, TextRun const &run, QTransform const &toPage)
{
    double const scale = scaleOf(toPage);
    double const size = glyphs.rawFont().pixelSize() * scale;
    setFill(run.color);
    setFont(*font, size);
    QList<QPointF> const positions = glyphs.positions();
    bool const whole = onOneLine(positions);
    for (qsizetype first = 0; first < positions.size();) {
        QPointF const start = run.position + positions[first];
        QPointF const origin(start.x() * scale, -start.y() * scale);
        if (font->isSlantMissing()) {
            content_ += "ET\n";
            beginText(toPage, SLANT, origin);
        } else {
            moveTo(origin);
        }
        showGlyphs(font, whole ? glyphs : nextLevel(glyphs, &first));
        first = whole ? positions.size() : first;
    }
    if (font->isSlantMissing()) {
        content_ += "ET\n";
        beginText(toPage, 0.0, QPointF());
    }
}

/// The glyphs with the steps in between by which the layout departs from the advances of the font.
void PdfCanvas::showGlyphs(PdfFont *font, QGlyphRun const &glyphs)
{
    QList<quint32> const indexes = glyphs.glyphIndexes();
    QList<QPointF> const positions = glyphs.positions();
    double const toThousandths = 1000.0 / glyphs.rawFont().pixelSize();
    double pen = 0.0;
    bool plain = true;
    std::string text = "(";
    for (qsizetype i = 0; i < indexes.size(); ++i) {
        std::uint32_t const code = font->useGlyph(indexes[i]);
        double const step = std::round((positions[i].x() - positions[0].x()) * toThousandths - pen);
        if (std::abs(step) > TOLERANCE) {
            text += ')';
            appendNumber(&text, -step, 0);
            text += '(';
            pen += step;
            plain = false;
        }
        appendCode(&text, code);
        pen += font->getAdvance(code);
    }
    text += ')';
    content_ += plain ? text + "Tj\n" : "[" + text + "]TJ\n";
}

/// For fonts that cannot be embedded. A path may not stand within a text.
void PdfCanvas::drawOutlines(QGlyphRun const &glyphs, TextRun const &run, QTransform const &toPage)
{
    content_ += "ET\n";
    QList<quint32> const indexes = glyphs.glyphIndexes();
    QList<QPointF> const positions = glyphs.positions();
    for (qsizetype i = 0; i < indexes.size(); ++i) {
        QPainterPath outline = glyphs.rawFont().pathForGlyph(indexes[i]);
        outline.translate(run.position + positions[i]);
        outline.setFillRule(Qt::WindingFill);
        if (!outline.isEmpty())
            drawPath(toPage.map(outline), nullptr, &run.color);
    }
    beginText(toPage, 0.0, QPointF());
}

} // namespace Zem::Fig2Qt
