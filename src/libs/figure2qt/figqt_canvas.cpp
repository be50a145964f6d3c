#include "figqt_canvas.h"

namespace Zem::Fig2Qt {

void Canvas::drawPolyline(Polyline const &line, Stroke const &stroke)
{
    QPainterPath path(line.points.front());
    path.reserve(static_cast<int>(line.points.size()) + 1);
    for (QPointF const &point : line.points.subspan(1))
        path.lineTo(point);
    if (line.closed)
        path.closeSubpath();
    drawPath(path, &stroke, nullptr);
}

void Canvas::drawMark(Mark const &mark, QPointF const &at, Color const &fill)
{
    drawPath(mark.path.translated(at), nullptr, &fill);
}

void Canvas::fillConvex(std::span<QPointF const> corners, Color const &fill)
{
    QPainterPath path(corners.front());
    for (QPointF const &corner : corners.subspan(1))
        path.lineTo(corner);
    path.closeSubpath();
    drawPath(path, nullptr, &fill);
}

void Canvas::fillRect(QRectF const &rect, Color const &fill)
{
    QPainterPath path;
    path.addRect(rect);
    drawPath(path, nullptr, &fill);
}

} // namespace Zem::Fig2Qt
