#include "figqt_text_recorder.h"

#include "figqt_color.h"

#include <QtGui/QTextItem>

#include <cmath>

namespace Zem::Fig2Qt {

namespace {

/// The shape with its blanks widened to `width`, as in justified lines. The same shape when its glyphs do not tell
/// where the blanks are.
std::shared_ptr<ShapedText const> stretchBlanks(std::shared_ptr<ShapedText const> const &shape, QString const &text,
                                                double width)
{
    qsizetype const blanks = text.count(QLatin1Char(' '));
    bool const clear = shape->glyphs.size() == 1 && shape->glyphs[0].glyphIndexes().size() == text.size();
    if (blanks == 0 || !clear)
        return shape;
    double const extra = (width - shape->width) / static_cast<double>(blanks);
    auto result = std::make_shared<ShapedText>(*shape);
    QList<QPointF> positions = result->glyphs[0].positions();
    double shift = 0.0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        positions[i].rx() += shift;
        shift += text[i] == QLatin1Char(' ') ? extra : 0.0;
    }
    result->glyphs[0].setPositions(positions);
    result->width = width;
    return result;
}

} // namespace

void TextRecorder::updateState(QPaintEngineState const &)
{
    // Read from the painter when something is painted.
}

void TextRecorder::drawTextItem(QPointF const &position, QTextItem const &item)
{
    TextRun run;
    run.text = item.text();
    run.rightToLeft = item.renderFlags() & QTextItem::RightToLeft;
    FontFace &face = fonts_->getFace(item.font());
    run.font = face.getFont();
    run.color = toColor(painter()->pen().color());
    run.position = painter()->transform().map(position);
    run.width = item.width();
    run.shape = face.shape(run.text, run.rightToLeft);
    if (std::abs(run.width - run.shape->width) > 1.0)
        run.shape = stretchBlanks(run.shape, run.text, run.width);
    target_->runs.push_back(std::move(run));
}

void TextRecorder::addShape(QPainterPath const &path, bool filled)
{
    TextShape shape;
    QBrush const &brush = painter()->brush();
    if (filled && brush.style() != Qt::NoBrush)
        shape.fill = toColor(brush.color());
    QPen const &pen = painter()->pen();
    if (pen.style() != Qt::NoPen) {
        shape.stroke = toColor(pen.color());
        shape.strokeWidth = pen.widthF();
    }
    shape.path = painter()->transform().map(path);
    if (shape.fill || shape.stroke)
        target_->shapes.push_back(std::move(shape));
}

void TextRecorder::drawPath(QPainterPath const &path)
{
    addShape(path, true);
}

void TextRecorder::drawRects(QRectF const *rects, int count)
{
    for (int i = 0; i < count; ++i) {
        QPainterPath path;
        path.addRect(rects[i]);
        addShape(path, true);
    }
}

void TextRecorder::drawLines(QLineF const *lines, int count)
{
    for (int i = 0; i < count; ++i) {
        QPainterPath path(lines[i].p1());
        path.lineTo(lines[i].p2());
        addShape(path, false);
    }
}

void TextRecorder::drawPolygon(QPointF const *points, int count, PolygonDrawMode mode)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
    if (mode != PolylineMode)
        path.closeSubpath();
    path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    addShape(path, mode != PolylineMode);
}

int TextDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
    case PdmHeight:
        return 1 << 24;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return UNITS_PER_INCH;
    case PdmDepth:
        return 32;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    default:
        return 0; // Qt works out the rest from these
    }
}

} // namespace Zem::Fig2Qt
