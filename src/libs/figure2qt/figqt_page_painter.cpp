#include "ZemFig2QtPagePainter.h"

#include "ZemFig2QtApplication.h"
#include "figqt_canvas.h"
#include "figqt_line_collector.h"
#include "figqt_mark_shape.h"
#include "figqt_picture_cache.h"
#include "figqt_stroke.h"
#include "figqt_text_engine.h"
#include "figqt_units.h"

#include <ZemError.h>
#include <ZemImage.h>

#include <QtGui/QPolygonF>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Zem::Fig2Qt {

using Fig2::FillStyle;
using Fig2::LineStyle;
using Fig2::Rotation;
using Fig2::Symbol;

namespace {

using Vec = BaVec2d<double>;

// Beyond this no page reaches; Qt and programs that show pages fail on numbers much larger.
constexpr double FAR_AWAY = 1e5;
QRectF const EVERYWHERE(QPointF(-1e300, -1e300), QPointF(1e300, 1e300));
constexpr double DEGREES_PER_RADIAN = 180.0 / std::numbers::pi;

bool isFinite(Vec const &v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}

bool isFinite(Rotation const &rotation)
{
    return std::isfinite(rotation.getAngle()) && isFinite(rotation.getBase());
}

QPointF bounded(Vec const &v)
{
    return {std::clamp(v.x, -FAR_AWAY, FAR_AWAY), std::clamp(v.y, -FAR_AWAY, FAR_AWAY)};
}

/// Turns about `base` in the sense of Rotation.
QTransform turnAbout(Vec const &base, double angle)
{
    if (std::abs(angle) <= 1e-50)
        return {};
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    return {c, -s, s, c, base.x - base.x * c - base.y * s, base.y - base.y * c + base.x * s};
}

QTransform transformOf(Rotation const &rotation)
{
    return turnAbout(rotation.getBase(), rotation.getAngle());
}

bool isVisible(FillStyle const &fill)
{
    return fill.getFilled() && fill.getColor().getAlpha() > 0;
}

bool isUsable(QTransform const &transform)
{
    double const determinant = transform.determinant();
    return std::isfinite(determinant) && std::abs(determinant) > 1e-12 && std::isfinite(transform.dx()) &&
           std::isfinite(transform.dy());
}

/// All four corners turn the same way.
bool isConvex(std::array<QPointF, 4> const &corners)
{
    int left = 0;
    int right = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        QPointF const side = corners[(i + 1) % 4] - corners[i];
        QPointF const next = corners[(i + 2) % 4] - corners[(i + 1) % 4];
        double const turn = side.x() * next.y() - side.y() * next.x();
        left += turn < 0.0 ? 1 : 0;
        right += turn > 0.0 ? 1 : 0;
    }
    return left == 0 || right == 0;
}

bool addParts(Polygon2d const &polygon, bool closed, QPainterPath *path)
{
    path->reserve(static_cast<int>(polygon.size() + polygon.getNumberOfParts()));
    for (std::size_t i = 0; i < polygon.getNumberOfParts(); ++i) {
        auto const part = polygon.getPart(i);
        if (!std::all_of(part.begin(), part.end(), [](Vec const &point) { return isFinite(point); }))
            return false;
        for (std::size_t j = 0; j < part.size(); ++j)
            j == 0 ? path->moveTo(bounded(part[j])) : path->lineTo(bounded(part[j]));
        if (closed)
            path->closeSubpath();
    }
    return true;
}

/// The union of the parts.
QPainterPath areaOf(Polygon2d const &polygon)
{
    QPainterPath path;
    for (std::size_t i = 0; i < polygon.getNumberOfParts(); ++i) {
        auto const points = polygon.getPart(i);
        QPainterPath part;
        if (addParts(Polygon2d({points.begin(), points.end()}, true), true, &part))
            path = path.isEmpty() ? part : path.united(part);
    }
    return path;
}

Polygon2d polygonOf(QPainterPath const &path)
{
    Polygon2d result(true);
    for (QPolygonF const &polygon : path.toFillPolygons()) {
        Polygon2d part(true);
        qsizetype const count = polygon.isClosed() ? polygon.size() - 1 : polygon.size();
        for (qsizetype i = 0; i < count; ++i)
            part.addPoint({polygon[i].x(), polygon[i].y()});
        result.addPolygon(part);
    }
    return result;
}

/// What of the part is not beyond all pages. Empty when none of it can be shown.
QRectF shownPart(QRectF const &part, QTransform const &toPage)
{
    if (part.isEmpty() || !isUsable(toPage))
        return {};
    QRectF const page(QPointF(-FAR_AWAY, -FAR_AWAY), QPointF(FAR_AWAY, FAR_AWAY));
    return part & toPage.inverted().mapRect(page);
}

} // namespace

struct PagePainter::State
{
    QTransform toPage;
    double scale = 1.0;
    bool usable = true; // false while a transformation is in force that takes everything to a point or to nowhere
    std::vector<std::pair<QTransform, double>> outer;
    std::vector<QPainterPath> clips;
    std::vector<QRectF> visible; // the box about what each clip leaves
    LineCollector lines;
    MarkShape mark;
};

PagePainter::PagePainter(std::unique_ptr<Canvas> canvas) : canvas_(std::move(canvas)), state_(std::make_unique<State>())
{
    requireGuiApplication();
}

PagePainter::~PagePainter() noexcept(false) = default;

void PagePainter::drawOutlineAndFill(QPainterPath const &path, LineStyle const &line, FillStyle const &fill)
{
    auto const stroke = toStroke(line, state_->scale);
    bool const filled = isVisible(fill);
    if (state_->usable && !path.isEmpty() && (stroke || filled))
        canvas_->drawPath(path, stroke ? &*stroke : nullptr, filled ? &fill.getColor() : nullptr);
}

void PagePainter::drawLine(Vec const &from, Vec const &to, LineStyle const &line, Rotation const &rotation)
{
    auto const stroke = toStroke(line, state_->scale);
    if (!stroke || !state_->usable || !isFinite(from) || !isFinite(to) || !isFinite(rotation))
        return;
    QTransform const toPage = transformOf(rotation) * state_->toPage;
    std::array const points{toPage.map(bounded(from)), toPage.map(bounded(to))};
    canvas_->drawPolyline({points}, *stroke);
}

void PagePainter::drawPolygon(Polygon2d const &polygon, LineStyle const &line, FillStyle const &fill,
                              Rotation const &rotation, bool closed)
{
    if (!isFinite(rotation))
        return;
    if (!isVisible(fill))
        return drawOutline(polygon, line, rotation, closed);
    if (!toStroke(line, state_->scale) && (fillRect(polygon, fill, rotation) || fillConvex(polygon, fill, rotation)))
        return;
    QPainterPath path;
    if (addParts(polygon, closed, &path))
        drawOutlineAndFill((transformOf(rotation) * state_->toPage).map(path), line, fill);
}

void PagePainter::drawOutline(Polygon2d const &polygon, LineStyle const &line, Rotation const &rotation, bool closed)
{
    auto const stroke = toStroke(line, state_->scale);
    if (!stroke || !state_->usable)
        return;
    double const margin = stroke->width * MITER_LIMIT;
    QRectF const visible = state_->visible.empty() ? EVERYWHERE : state_->visible.back();
    LineCollector::Grid const grid{canvas_->getCellSize(), visible.adjusted(-margin, -margin, margin, margin),
                                   !stroke->dashes.empty()};
    if (!state_->lines.collect(polygon, transformOf(rotation) * state_->toPage, grid))
        return;
    for (Polyline const &part : state_->lines.getLines(closed))
        canvas_->drawPolyline(part, *stroke);
}

/// False for what is none along the axes of the page.
bool PagePainter::fillRect(Polygon2d const &polygon, FillStyle const &fill, Rotation const &rotation)
{
    if (polygon.size() != 4 || polygon.getNumberOfParts() != 1 || !state_->usable)
        return false;
    QTransform const toPage = transformOf(rotation) * state_->toPage;
    std::array<QPointF, 4> corners;
    for (std::size_t i = 0; i < 4; ++i) {
        if (!isFinite(polygon[i]))
            return false;
        corners[i] = toPage.map(bounded(polygon[i]));
    }
    if (corners[0].y() != corners[1].y() || corners[1].x() != corners[2].x() || corners[2].y() != corners[3].y() ||
        corners[3].x() != corners[0].x())
        return false;
    QRectF const rect = QRectF(corners[0], corners[2]).normalized();
    if (!rect.isEmpty())
        canvas_->fillRect(rect, fill.getColor());
    return true;
}

/// False for what is not known to be convex.
bool PagePainter::fillConvex(Polygon2d const &polygon, FillStyle const &fill, Rotation const &rotation)
{
    std::size_t const count = polygon.size();
    if (count < 3 || count > 4 || polygon.getNumberOfParts() != 1 || !state_->usable)
        return false;
    QTransform const toPage = transformOf(rotation) * state_->toPage;
    std::array<QPointF, 4> corners;
    for (std::size_t i = 0; i < count; ++i) {
        if (!isFinite(polygon[i]))
            return false;
        corners[i] = toPage.map(bounded(polygon[i]));
    }
    if (count == 4 && !isConvex(corners))
        return false;
    canvas_->fillConvex(std::span(corners).first(count), fill.getColor());
    return true;
}

void PagePainter::drawSymbol(Vec const &position, Symbol const &symbol, LineStyle const &line, FillStyle const &fill,
                             Rotation const &rotation)
{
    SymbolData const *data = getSymbolData(symbol);
    if (!data || !isVisible(fill) || toStroke(line, state_->scale))
        return Painter::drawSymbol(position, symbol, line, fill, rotation);
    if (!state_->usable || !isFinite(position) || !isFinite(rotation) || !std::isfinite(symbol.getSize()))
        return;
    QTransform const toPage = transformOf(rotation) * state_->toPage;
    canvas_->drawMark(state_->mark.get(*data, std::clamp(symbol.getSize(), -FAR_AWAY, FAR_AWAY), toPage),
                      toPage.map(bounded(position)), fill.getColor());
}

void PagePainter::drawEllipse(Vec const &centre, Vec const &radii, double angle, LineStyle const &line,
                              FillStyle const &fill, Rotation const &rotation)
{
    if (!isFinite(centre) || !isFinite(radii) || !std::isfinite(angle) || !isFinite(rotation))
        return;
    QPointF const bound(std::abs(bounded(radii).x()), std::abs(bounded(radii).y()));
    QTransform const toPage = turnAbout(centre, angle) * transformOf(rotation) * state_->toPage;
    if (state_->usable && isVisible(fill) && !toStroke(line, state_->scale)) {
        if (Mark const *dot = state_->mark.getEllipse(bound, toPage))
            return canvas_->drawMark(*dot, toPage.map(bounded(centre)), fill.getColor());
    }
    QPainterPath path;
    path.addEllipse(bounded(centre), bound.x(), bound.y());
    drawOutlineAndFill(toPage.map(path), line, fill);
}

void PagePainter::drawEllipseSegment(Vec const &centre, Vec const &radii, double startAngle, double endAngle,
                                     double angle, LineStyle const &line, FillStyle const &fill,
                                     Rotation const &rotation)
{
    double const sweep = endAngle - startAngle;
    if (!std::isfinite(startAngle) || !std::isfinite(sweep) || !isFinite(centre) || !isFinite(radii) ||
        !std::isfinite(angle) || !isFinite(rotation))
        return;
    if (std::abs(sweep) >= 2.0 * std::numbers::pi)
        return drawEllipse(centre, radii, angle, line, fill, rotation);
    QPointF const bound = bounded(radii);
    QPointF const half(std::abs(bound.x()), std::abs(bound.y()));
    QRectF const frame(bounded(centre) - half, bounded(centre) + half);
    double const start = std::remainder(startAngle, 2.0 * std::numbers::pi) * DEGREES_PER_RADIAN;
    QPainterPath path;
    path.arcMoveTo(frame, start);
    path.arcTo(frame, start, sweep * DEGREES_PER_RADIAN);
    drawOutlineAndFill((turnAbout(centre, angle) * transformOf(rotation) * state_->toPage).map(path), line, fill);
}

void PagePainter::drawLayout(TextLayout const &layout, Vec const &position, Rotation const &rotation)
{
    if (!state_->usable || !isFinite(position) || !isFinite(rotation))
        return;
    QPointF const corner = bounded(position);
    canvas_->drawText(layout, QTransform::fromScale(MM_PER_UNIT, MM_PER_UNIT) *
                                  QTransform::fromTranslate(corner.x(), corner.y()) * transformOf(rotation) *
                                  state_->toPage);
}

void PagePainter::drawText(Vec const &position, Font const &font, QString const &text, Color const &color,
                           Rotation const &rotation)
{
    drawLayout(*TextEngine::forThisThread().layOutPlain(text, font, color), position, rotation);
}

void PagePainter::drawRichText(Vec const &position, QString const &text, Font const &font, double width,
                               Rotation const &rotation, int)
{
    // Layouts are kept by their content, so the cache id, which elements may share after a copy, is not needed.
    drawLayout(*TextEngine::forThisThread().layOutRich(text, font, width), position, rotation);
}

void PagePainter::drawImage(Vec const &position, Vec const &size, Zem::Image const *image, ImageColor const *overlay,
                            Vec const &innerOrigin, double scaling, QString const &cacheId,
                            Fig2::ImageConversion const &conversion, Rotation const &rotation)
{
    if (!image || !isFinite(position) || !isFinite(size) || !isFinite(innerOrigin) || !isFinite(rotation) ||
        !(scaling > 0.0 && size.x > 0.0 && size.y > 0.0))
        return;
    QTransform const toPage =
        QTransform::fromTranslate(-innerOrigin.x, -innerOrigin.y) * QTransform::fromScale(scaling, scaling) *
        QTransform::fromTranslate(position.x, position.y) * transformOf(rotation) * state_->toPage;
    QSizeF const pixels(image->getWidth(), image->getHeight());
    QRectF const wanted(innerOrigin.x, innerOrigin.y, size.x / scaling, size.y / scaling);
    QRectF const part = shownPart(wanted & QRectF(QPointF(), pixels), toPage);
    if (part.isEmpty())
        return;
    QString const id = pictureId(cacheId, *image, conversion);
    canvas_->drawPicture({PictureCache::common().convert(id, *image, conversion), part, toPage, id});
    if (!overlay || overlay->getWidth() == 0)
        return;
    QTransform const stretch =
        QTransform::fromScale(pixels.width() / overlay->getWidth(), pixels.height() / overlay->getHeight());
    Picture const colors = asPicture(*overlay);
    canvas_->drawPicture({colors, stretch.inverted().mapRect(part) & colors.getRect(), stretch * toPage,
                          pictureId(cacheId, *overlay, Fig2::ImageConversion::null)});
}

void PagePainter::drawColors(Vec const &position, Vec const &size, bool vertical, std::vector<Color> const &colors,
                             Rotation const &rotation)
{
    if (colors.empty() || !state_->usable || !isFinite(position) || !isFinite(size) || !isFinite(rotation))
        return;
    QRectF const rect = QRectF(bounded(position), bounded(position + size)).normalized();
    if (!rect.isEmpty())
        canvas_->drawStrip(rect, vertical, colors, transformOf(rotation) * state_->toPage);
}

bool PagePainter::getClipping(Polygon2d *area)
{
    if (state_->clips.empty())
        return false;
    QPainterPath common = state_->clips.front();
    for (std::size_t i = 1; i < state_->clips.size(); ++i)
        common = common.intersected(state_->clips[i]);
    if (area)
        *area = polygonOf(state_->toPage.inverted().map(common));
    return true;
}

void PagePainter::setClipping(Polygon2d const &area)
{
    state_->clips.push_back(state_->toPage.map(areaOf(area)));
    QRectF const box = state_->clips.back().boundingRect();
    state_->visible.push_back(state_->visible.empty() ? box : box & state_->visible.back());
    canvas_->pushClip(state_->clips.back());
}

void PagePainter::resetClipping()
{
    if (state_->clips.empty())
        throw ProgError("Zem::Fig2Qt::PagePainter::resetClipping", "figqt_page_painter", __LINE__,
                        "No clipping is in force");
    canvas_->popClip();
    state_->visible.pop_back();
    state_->clips.pop_back();
}

void PagePainter::endClippings()
{
    while (!state_->clips.empty())
        resetClipping();
    canvas_->finish();
}

void PagePainter::pushTransformation(Vec const &offset, double scaling, Rotation const &rotation)
{
    state_->outer.emplace_back(state_->toPage, state_->scale);
    state_->toPage = QTransform::fromScale(scaling, scaling) * QTransform::fromTranslate(offset.x, offset.y) *
                     transformOf(rotation) * state_->toPage;
    state_->scale *= std::abs(scaling);
    state_->usable = isUsable(state_->toPage);
}

void PagePainter::popTransformation()
{
    if (state_->outer.empty())
        throw ProgError("Zem::Fig2Qt::PagePainter::popTransformation", "figqt_page_painter", __LINE__,
                        "No transformation is in force");
    std::tie(state_->toPage, state_->scale) = state_->outer.back();
    state_->outer.pop_back();
    state_->usable = isUsable(state_->toPage);
}

} // namespace Zem::Fig2Qt
