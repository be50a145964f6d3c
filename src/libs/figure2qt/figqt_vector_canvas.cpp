#include "figqt_vector_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MOST_MARKS = 1U << 20U;

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
    if (!fill_ || *fill_ != fill || fill.getAlpha() != 255) {
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
    if (stroke_ || fill_ || mark.id != mark_.id || places_.size() >= MOST_MARKS)
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

void VectorCanvas::finish()
{
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
