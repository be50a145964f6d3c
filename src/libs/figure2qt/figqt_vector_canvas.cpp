#include "figqt_vector_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MOST_MARKS = 1U << 20U;

// As many things alike, one after the other, are a chart, and no vectors.
constexpr int MANY_ALIKE = 8;

bool isSliver(Polyline const &line, Stroke const &stroke)
{
    return line.points.size() == 2 && !line.closed && stroke.dashes.empty() && stroke.color.getAlpha() == 255 &&
           (line.points[0].x() == line.points[1].x() || line.points[0].y() == line.points[1].y());
}

/// Whether ranges that both lie in one cell touch.
bool inOneCell(double begin, double end, double otherBegin, double otherEnd)
{
    return std::floor(std::min(begin, otherBegin) / VectorCanvas::CELL) ==
           std::floor(std::max(end, otherEnd) / VectorCanvas::CELL);
}

bool touch(double begin, double end, double otherBegin, double otherEnd)
{
    return begin <= otherEnd && otherBegin <= end;
}

} // namespace

void VectorCanvas::drawPolyline(Polyline const &line, Stroke const &stroke)
{
    if (mixLine(line, stroke))
        return;
    if (!mix_.isEmpty())
        finish();
    // Where translucent lines cross, two are seen.
    if (!stroke_ || *stroke_ != stroke || dense_ != line.thinned || stroke.color.getAlpha() != 255) {
        finish();
        stroke_ = stroke;
        dense_ = line.thinned;
    }
    if (!isSliver(line, stroke)) {
        appendSliver();
        return appendLine(line, dense_, &path_);
    }
    QRectF const box = QRectF(line.points[0], line.points[1]).normalized();
    if (extendSliver(box))
        return;
    appendSliver();
    sliver_ = box;
}

void VectorCanvas::fillRect(QRectF const &rect, Color const &fill)
{
    if (!mix_.isEmpty() || !fill_ || *fill_ != fill || fill.getAlpha() != 255) {
        finish();
        fill_ = fill;
    }
    if (extendSliver(rect))
        return;
    appendSliver();
    sliver_ = rect;
}

/// True if the box and the last one go on in each other within one column, or row, of cells.
bool VectorCanvas::extendSliver(QRectF const &box)
{
    if (!sliver_)
        return false;
    QRectF &last = *sliver_;
    bool const column = inOneCell(last.left(), last.right(), box.left(), box.right()) &&
                        touch(last.top(), last.bottom(), box.top(), box.bottom());
    bool const row = inOneCell(last.top(), last.bottom(), box.top(), box.bottom()) &&
                     touch(last.left(), last.right(), box.left(), box.right());
    // An upright line and a level one are not one line.
    bool const alike = fill_ || (last.width() == 0.0) == (box.width() == 0.0);
    if ((!column && !row) || !alike)
        return false;
    last = QRectF(QPointF(std::min(last.left(), box.left()), std::min(last.top(), box.top())),
                  QPointF(std::max(last.right(), box.right()), std::max(last.bottom(), box.bottom())));
    if (stroke_ && column)
        last = QRectF(last.center().x(), last.top(), 0.0, last.height());
    else if (stroke_)
        last = QRectF(last.left(), last.center().y(), last.width(), 0.0);
    return true;
}

void VectorCanvas::appendSliver()
{
    if (!sliver_)
        return;
    if (fill_) {
        appendRect(*sliver_, &path_);
    } else {
        std::array const ends{sliver_->topLeft(), sliver_->bottomRight()};
        appendLine({ends}, dense_, &path_);
    }
    sliver_.reset();
}

void VectorCanvas::drawMark(Mark const &mark, QPointF const &at, Color const &fill)
{
    if (mixMark(mark, at, fill))
        return;
    if (!mix_.isEmpty() || stroke_ || fill_ || mark.id != mark_.id || places_.size() >= MOST_MARKS)
        finish();
    if (mark.id != mark_.id)
        mark_ = mark;
    places_.push_back({at, fill});
}

void VectorCanvas::drawPicture(PlacedPicture const &placed)
{
    finish();
    // A file has whole pixels, and often more of the picture than shows here.
    bool const clipped = placed.part != placed.picture.getRect();
    if (clipped) {
        QPainterPath area;
        area.addRect(placed.part);
        pushClip(placed.toPage.map(area));
    }
    writePicture(placed);
    if (clipped)
        popClip();
}

/// Makes room for more in the mix.
void VectorCanvas::prepareMix()
{
    if (mix_.isEmpty() || mix_.isFull())
        finish();
}

/// True if the line belongs to things of several looks.
bool VectorCanvas::mixLine(Polyline const &line, Stroke const &stroke)
{
    bool const single = line.points.size() == 2 && !line.closed && stroke.dashes.empty();
    // Slivers alone are bars and the like, of which many may become one.
    if (!single || stroke.color.getAlpha() != 255 || (mix_.isEmpty() && (stroke_ == stroke || isSliver(line, stroke))))
        return false;
    alike_ = lastWasLine_ && lastStroke_ == stroke ? alike_ + 1 : 0;
    lastWasLine_ = true;
    lastStroke_ = stroke;
    if (alike_ >= MANY_ALIKE)
        return false;
    prepareMix();
    LookBatch::Group *group = mix_.addLine(line.points[0], line.points[1], stroke);
    if (group)
        appendLine(line, false, &group->path);
    return group != nullptr;
}

bool VectorCanvas::mixMark(Mark const &mark, QPointF const &at, Color const &fill)
{
    if (mix_.isEmpty() || fill.getAlpha() != 255 || (mixMark_.id != 0 && mixMark_.id != mark.id))
        return false;
    alike_ = lastWasLine_ ? 0 : alike_ + 1;
    lastWasLine_ = false;
    if (alike_ >= MANY_ALIKE)
        return false;
    prepareMix();
    LookBatch::Group *group = mix_.addMark(mark.path.boundingRect().translated(at), fill);
    if (!group)
        return false;
    mixMark_ = mark;
    group->places.push_back(at);
    return true;
}

void VectorCanvas::fillConvex(std::span<QPointF const> corners, Color const &fill)
{
    if (fill.getAlpha() == 255) {
        prepareMix();
        lastWasLine_ = false;
        alike_ = 0;
        if (LookBatch::Group *group = mix_.addArea(corners, fill))
            return appendArea(corners, &group->path);
    }
    Canvas::fillConvex(corners, fill);
}

/// All in one direction, so that what two of them share is filled.
void VectorCanvas::appendArea(std::span<QPointF const> corners, std::string *path) const
{
    double area = 0.0;
    QPointF last = corners.back();
    for (QPointF const &corner : corners) {
        area += last.x() * corner.y() - last.y() * corner.x();
        last = corner;
    }
    if (area >= 0.0)
        return appendLine({corners, true}, false, path);
    std::vector<QPointF> const turned(corners.rbegin(), corners.rend());
    appendLine({turned, true}, false, path);
}

void VectorCanvas::writeMix()
{
    Mark const mark = std::exchange(mixMark_, {{}, 0});
    for (LookBatch::Group const &group : mix_.take()) {
        if (group.outlined) {
            writeLines(group.path, false, group.stroke);
        } else if (!group.path.empty()) {
            writeRects(group.path, group.color);
        } else {
            std::vector<PlacedMark> places;
            for (QPointF const &at : group.places)
                places.push_back({at, group.color});
            writeMarks(mark, places);
        }
    }
}

void VectorCanvas::finish()
{
    if (!mix_.isEmpty())
        return writeMix();
    appendSliver();
    // What is written may come back here.
    std::string const path = std::exchange(path_, {});
    auto const stroke = std::exchange(stroke_, {});
    auto const fill = std::exchange(fill_, {});
    std::vector<PlacedMark> const places = std::exchange(places_, {});
    if (stroke)
        writeLines(path, dense_, *stroke);
    else if (fill)
        writeRects(path, *fill);
    else if (!places.empty())
        writeMarks(mark_, withoutHidden(mark_, places, CELL));
}

} // namespace Zem::Fig2Qt
