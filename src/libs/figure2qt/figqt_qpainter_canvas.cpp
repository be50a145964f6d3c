#include "figqt_qpainter_canvas.h"

#include "figqt_color.h"
#include "figqt_path_walk.h"
#include "figqt_picture_scaler.h"

#include <QtGui/QImage>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPen>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr qsizetype PIECE = 16;
constexpr double CELLS_PER_PIXEL = 4.0;
constexpr double MARGIN = 2.0; // in pixels of a picture: what is blended with those at the border

QPen penOf(Stroke const &stroke)
{
    QPen pen(toQColor(stroke.color), stroke.width);
    pen.setCapStyle(stroke.round ? Qt::RoundCap : Qt::FlatCap);
    pen.setJoinStyle(stroke.round ? Qt::RoundJoin : Qt::SvgMiterJoin);
    pen.setMiterLimit(MITER_LIMIT);
    if (!stroke.dashes.empty()) {
        QList<qreal> pattern;
        for (double const length : stroke.dashes)
            pattern.append(length / stroke.width);
        pen.setDashPattern(pattern);
    }
    return pen;
}

QLinearGradient gradientOf(QRectF const &rect, bool vertical, std::vector<Color> const &colors)
{
    QLinearGradient gradient(rect.topLeft(), vertical ? rect.bottomLeft() : rect.topRight());
    double const last = std::max(1.0, static_cast<double>(colors.size() - 1));
    QGradientStops stops;
    for (std::size_t i = 0; i < colors.size(); ++i)
        stops.append({static_cast<double>(i) / last, toQColor(colors[i])});
    gradient.setStops(stops);
    return gradient;
}

/// Without a copy: the picture must outlive the result.
QImage imageOf(Picture const &picture)
{
    auto const format = picture.format == Picture::GREY    ? QImage::Format_Grayscale8
                        : picture.format == Picture::COLOR ? QImage::Format_RGBX8888
                                                           : QImage::Format_RGBA8888;
    return {picture.pixels, picture.width, picture.height,
            static_cast<qsizetype>(picture.getPixelBytes()) * picture.width, format};
}

/// How many pixels a part needs on the output: no more than it has.
int pixelsFor(double part, double scale)
{
    return static_cast<int>(std::ceil(part * std::min(scale, 1.0)));
}

} // namespace

QPainterCanvas::QPainterCanvas(QPainter *painter, QTransform const &pageToDevice)
    : painter_(painter), pageToDevice_(pageToDevice * painter->transform())
{
    painter_->save();
    painter_->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter_->setTransform(pageToDevice_);
}

QPainterCanvas::~QPainterCanvas()
{
    painter_->restore();
}

double QPainterCanvas::getCellSize() const
{
    return 1.0 / (CELLS_PER_PIXEL * std::max(std::sqrt(std::abs(pageToDevice_.determinant())), 1e-6));
}

void QPainterCanvas::drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill)
{
    if (fill)
        painter_->fillPath(path, toQColor(*fill));
    if (!stroke)
        return;
    if (path.elementCount() <= 2 * PIECE || hasCurves(path))
        painter_->strokePath(path, penOf(*stroke));
    else if (stroke->color.getAlpha() == 255)
        strokeInPieces(path, *stroke);
    else
        strokeOnLayer(path, *stroke);
}

/// Qt's time for one wide line grows with the square of its points, so it gets a long one in pieces. Each piece begins
/// one segment before the end of the one before, to draw the corner between them.
void QPainterCanvas::strokeInPieces(QPainterPath const &path, Stroke const &stroke)
{
    QPen pen = penOf(stroke);
    for (QPolygonF const &line : path.toSubpathPolygons()) {
        double passed = 0.0; // in line widths, for the dashes to go on
        for (qsizetype first = 0; first + 1 < line.size(); first += PIECE) {
            qsizetype const begin = std::max<qsizetype>(0, first - 1);
            qsizetype const end = std::min(first + PIECE + 1, line.size());
            double const lead = begin < first ? QLineF(line[begin], line[first]).length() / stroke.width : 0.0;
            pen.setDashOffset(passed - lead);
            painter_->setPen(pen);
            painter_->drawPolyline(line.constData() + begin, static_cast<int>(end - begin));
            for (qsizetype i = first; i + 1 < end; ++i)
                passed += QLineF(line[i], line[i + 1]).length() / stroke.width;
        }
        if (line.size() > 2 && line.isClosed())
            painter_->drawPolyline(QPolygonF({line[line.size() - 2], line[0], line[1]}));
    }
}

/// Pieces of a translucent line would show where they overlap: they are painted opaque apart, and laid over as one.
void QPainterCanvas::strokeOnLayer(QPainterPath const &path, Stroke const &stroke)
{
    double const margin = stroke.width * MITER_LIMIT;
    QRectF const painted = pageToDevice_.mapRect(path.boundingRect().adjusted(-margin, -margin, margin, margin));
    QRect const device(0, 0, painter_->device()->width(), painter_->device()->height());
    QRect const bounds = painted.toAlignedRect() & device;
    if (bounds.isEmpty())
        return;
    QImage layer(bounds.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    Stroke opaque = stroke;
    opaque.color = Color(stroke.color.getRed(), stroke.color.getGreen(), stroke.color.getBlue());
    {
        QPainter painter(&layer);
        QPainterCanvas(&painter, pageToDevice_ * QTransform::fromTranslate(-bounds.x(), -bounds.y()))
            .strokeInPieces(path, opaque);
    }
    painter_->save();
    painter_->resetTransform();
    painter_->setOpacity(stroke.color.getAlpha() / 255.0);
    painter_->drawImage(bounds.topLeft(), layer);
    painter_->restore();
}

void QPainterCanvas::drawText(TextLayout const &layout, QTransform const &toPage)
{
    painter_->setTransform(toPage * pageToDevice_);
    for (TextShape const &shape : layout.shapes) {
        if (shape.fill)
            painter_->fillPath(shape.path, toQColor(*shape.fill));
        if (shape.stroke)
            painter_->strokePath(shape.path,
                                 QPen(toQColor(*shape.stroke), shape.strokeWidth, Qt::SolidLine, Qt::FlatCap));
    }
    for (TextRun const &run : layout.runs) {
        painter_->setPen(toQColor(run.color));
        for (QGlyphRun const &glyphs : run.shape->glyphs)
            painter_->drawGlyphRun(run.position, glyphs);
    }
    painter_->setTransform(pageToDevice_);
}

void QPainterCanvas::drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                               QTransform const &toPage)
{
    painter_->setTransform(toPage * pageToDevice_);
    painter_->fillRect(rect, gradientOf(rect, vertical, colors));
    painter_->setTransform(pageToDevice_);
}

void QPainterCanvas::drawPicture(PlacedPicture const &placed)
{
    QTransform const toDevice = placed.toPage * pageToDevice_;
    // The rest would cost time, and cannot be counted in whole pixels when it is far away.
    QRectF const device(0, 0, painter_->device()->width(), painter_->device()->height());
    QRectF const part = toDevice.inverted().mapRect(device).adjusted(-MARGIN, -MARGIN, MARGIN, MARGIN) & placed.part;
    if (part.isEmpty())
        return;
    double const columnScale = std::hypot(toDevice.m11(), toDevice.m12());
    double const rowScale = std::hypot(toDevice.m21(), toDevice.m22());
    painter_->save();
    painter_->setTransform(toDevice);
    painter_->setRenderHint(QPainter::SmoothPixmapTransform, std::max(columnScale, rowScale) <= PIXELS_ARE_SEEN);
    if (std::min(columnScale, rowScale) >= 1.0) {
        painter_->drawImage(part, imageOf(placed.picture), part);
    } else {
        // A QPainter looks at four pixels only.
        Picture const reduced =
            scaled(placed.picture, part, pixelsFor(part.width(), columnScale), pixelsFor(part.height(), rowScale));
        painter_->drawImage(part, imageOf(reduced));
    }
    painter_->restore();
}

void QPainterCanvas::pushClip(QPainterPath const &area)
{
    painter_->save();
    painter_->setClipPath(area, Qt::IntersectClip);
}

void QPainterCanvas::popClip()
{
    painter_->restore();
}

} // namespace Zem::Fig2Qt
