#include "figqt_image_canvas.h"

#include "figqt_dashes.h"
#include "figqt_path_walk.h"
#include "figqt_picture_ink.h"
#include "figqt_stroker.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr double CELLS_PER_PIXEL = 8.0;
// Dashes shorter than this, in pixels, are none that could be seen.
constexpr double SHORTEST_PATTERN = 0.1;
// A box of more pixels to each side is a background, no bar: a QPainter is quicker with what encloses much.
constexpr double LARGE = 100.0;
// Beyond this, counting pixels in whole numbers is not safe.
constexpr double FAR_AWAY = 1e8;

/// Of a path without curves.
struct PartCollector
{
    std::vector<QPointF> points;
    bool closed = false;

    void moveTo(QPointF const &to) { points.push_back(to); }
    void lineTo(QPointF const &to) { points.push_back(to); }
    void curveTo(QPointF const &, QPointF const &, QPointF const &) {}
    void close() { closed = true; }
};

} // namespace

ImageCanvas::ImageCanvas(QImage *image, double pixelsPerMillimetre)
    : scale_(pixelsPerMillimetre), image_(image), ink_(image), qPainter_(image),
      painter_(&qPainter_, QTransform::fromScale(scale_, scale_)),
      coverage_(image->width(), image->height()), clips_{ClipArea(image->rect())}, batch_(&ink_, image->height())
{
}

double ImageCanvas::getCellSize() const
{
    return 1.0 / (scale_ * CELLS_PER_PIXEL);
}

void ImageCanvas::finish()
{
    settleFew();
    batch_.paint(clips_.back());
    if (!gathered_)
        return;
    ink_.setColor(*gathered_);
    coverage_.take(
        [this](int x, int y, std::span<unsigned char const> covered) { ink_.paint(x, y, covered, clips_.back()); });
    gathered_.reset();
}

/// Makes the coverage ready for more of a colour. What is translucent must not become one with what came before.
void ImageCanvas::gather(Color const &color)
{
    if (!few_.isEmpty() && few_.getStroke().color == color && color.getAlpha() == 255)
        return gatherFew();
    if (!few_.isEmpty() || !batch_.isEmpty() || (gathered_ && (*gathered_ != color || color.getAlpha() != 255)))
        finish();
    gathered_ = color;
}

/// They turn out to be more than a few.
void ImageCanvas::gatherFew()
{
    ShortLines const lines = std::exchange(few_, {});
    finish();
    gathered_ = lines.getStroke().color;
    double const width = std::min(lines.getStroke().width * scale_, FAR_AWAY);
    Stroker stroker(width, lines.getStroke().round, &coverage_);
    for (std::span<QPointF const> ends = lines.getEnds(); !ends.empty(); ends = ends.subspan(2))
        stroker.add(ends.first(2), false);
}

/// They stay a few, since something else follows.
void ImageCanvas::settleFew()
{
    if (few_.isEmpty())
        return;
    batch_.addShape(few_.getEdges(), few_.getStroke().color);
    few_.clear();
}

/// True if the line is one of a few so far.
bool ImageCanvas::joinFew(Polyline const &line, Stroke const &stroke)
{
    if (gathered_ && *gathered_ == stroke.color && stroke.color.getAlpha() == 255)
        return false;
    if (gathered_)
        finish();
    if (few_.add(line, stroke, scale_))
        return true;
    // Of the same colour they are gathered, and the line with them.
    if (!few_.isEmpty() && few_.getStroke().color == stroke.color && stroke.color.getAlpha() == 255)
        return false;
    settleFew();
    if (batch_.isFull())
        finish();
    return few_.add(line, stroke, scale_);
}

void ImageCanvas::drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill)
{
    finish();
    if (stroke && hasCurves(path))
        return painter_.drawPath(path, stroke, fill);
    if (fill)
        painter_.drawPath(path, nullptr, fill);
    if (stroke)
        strokeParts(path, *stroke);
}

void ImageCanvas::strokeParts(QPainterPath const &path, Stroke const &stroke)
{
    gather(stroke.color);
    for (int begin = 0, end = 1; end <= path.elementCount(); ++end) {
        if (end < path.elementCount() && !path.elementAt(end).isMoveTo())
            continue;
        PartCollector part;
        walkPart(path, begin, end, part);
        addLine({part.points, part.closed}, stroke);
        begin = end;
    }
}

void ImageCanvas::drawPolyline(Polyline const &line, Stroke const &stroke)
{
    if (joinFew(line, stroke))
        return;
    // A QPainter is quicker where nothing can be gathered, and exact where nothing overlaps.
    if (line.points.size() == 2 && stroke.color.getAlpha() != 255) {
        finish();
        return painter_.drawPolyline(line, stroke);
    }
    gather(stroke.color);
    addLine(line, stroke);
}

void ImageCanvas::addLine(Polyline const &line, Stroke const &stroke)
{
    pixels_.clear();
    for (QPointF const &point : line.points)
        pixels_.emplace_back(std::clamp(point.x() * scale_, -FAR_AWAY, FAR_AWAY),
                             std::clamp(point.y() * scale_, -FAR_AWAY, FAR_AWAY));
    if (!stroke.dashes.empty())
        return addDashes(pixels_, line.closed, stroke);
    Stroker(std::min(stroke.width * scale_, FAR_AWAY), stroke.round, &coverage_).add(pixels_, line.closed);
}

void ImageCanvas::addDashes(std::vector<QPointF> const &points, bool closed, Stroke const &stroke)
{
    double const width = std::min(stroke.width * scale_, FAR_AWAY);
    Stroker stroker(width, stroke.round, &coverage_);
    std::vector<double> pattern;
    double total = 0.0;
    for (double const length : stroke.dashes) {
        pattern.push_back(std::min(length * scale_, FAR_AWAY));
        total += pattern.back();
    }
    if (total < SHORTEST_PATTERN)
        return stroker.add(points, closed);
    double const margin = width * MITER_LIMIT;
    cutIntoDashes(points, closed, pattern, QRectF(clips_.back().getRect()).adjusted(-margin, -margin, margin, margin),
                  [&stroker](std::span<QPointF const> dash) { stroker.add(dash, false); });
}

void ImageCanvas::fillRect(QRectF const &rect, Color const &fill)
{
    if (std::min(rect.width(), rect.height()) * scale_ > LARGE) {
        QPainterPath box;
        box.addRect(rect);
        return drawPath(box, nullptr, &fill);
    }
    gather(fill);
    auto const pixels = [this](double place) { return std::clamp(place * scale_, -FAR_AWAY, FAR_AWAY); };
    QRectF area(QPointF(pixels(rect.left()), pixels(rect.top())), QPointF(pixels(rect.right()), pixels(rect.bottom())));
    // However narrow a bar is, it is seen, and among many of them the one that reaches furthest.
    if (area.width() < Coverage::FINEST)
        area = QRectF(area.center().x() - Coverage::FINEST / 2.0, area.top(), Coverage::FINEST, area.height());
    coverage_.addBox(area.topLeft(), area.bottomRight());
}

void ImageCanvas::drawMark(Mark const &mark, QPointF const &at, Color const &fill)
{
    if (!isSmall(mark))
        return Canvas::drawMark(mark, at, fill);
    settleFew();
    if (gathered_ || mark.id != markId_ || batch_.isFull())
        finish();
    if (mark.id != markId_)
        batch_.setMark(QTransform::fromScale(scale_, scale_).map(mark.path));
    markId_ = mark.id;
    batch_.addMark(at * scale_, fill);
}

void ImageCanvas::fillConvex(std::span<QPointF const> corners, Color const &fill)
{
    pixels_.clear();
    for (QPointF const &corner : corners)
        pixels_.push_back(corner * scale_);
    auto const [left, right] = std::minmax_element(pixels_.begin(), pixels_.end(),
                                                   [](QPointF const &a, QPointF const &b) { return a.x() < b.x(); });
    auto const [top, bottom] = std::minmax_element(pixels_.begin(), pixels_.end(),
                                                   [](QPointF const &a, QPointF const &b) { return a.y() < b.y(); });
    if (std::max(right->x() - left->x(), bottom->y() - top->y()) > SmallShape::LARGEST)
        return Canvas::fillConvex(corners, fill);
    settleFew();
    if (gathered_ || batch_.isFull())
        finish();
    edges_.clear();
    appendEdges(pixels_, &edges_);
    batch_.addShape(edges_, fill);
}

bool ImageCanvas::isSmall(Mark const &mark) const
{
    QRectF const box = mark.path.controlPointRect();
    double const reach = std::max({-box.left(), box.right(), -box.top(), box.bottom()});
    return reach * scale_ <= MarkSprites::LARGEST / 2.0;
}

void ImageCanvas::drawText(TextLayout const &layout, QTransform const &toPage)
{
    finish();
    painter_.drawText(layout, toPage);
}

void ImageCanvas::drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                            QTransform const &toPage)
{
    finish();
    painter_.drawStrip(rect, vertical, colors, toPage);
}

void ImageCanvas::drawPicture(PlacedPicture const &placed)
{
    finish();
    QTransform const toPixels = placed.toPage * QTransform::fromScale(scale_, scale_);
    bool const upright = toPixels.m12() == 0.0 && toPixels.m21() == 0.0 && toPixels.m11() > 0.0 && toPixels.m22() > 0.0;
    if (upright)
        layPicture(placed.picture, placed.part, toPixels, clips_.back(), image_);
    else
        painter_.drawPicture(placed);
}

void ImageCanvas::pushClip(QPainterPath const &area)
{
    finish();
    painter_.pushClip(area);
    clips_.push_back(clips_.back().narrowed(area, QTransform::fromScale(scale_, scale_)));
    coverage_.setBounds(clips_.back().getRect());
}

void ImageCanvas::popClip()
{
    finish();
    painter_.popClip();
    clips_.pop_back();
    coverage_.setBounds(clips_.back().getRect());
}

} // namespace Zem::Fig2Qt
