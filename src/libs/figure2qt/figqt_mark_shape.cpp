#include "figqt_mark_shape.h"

namespace Zem::Fig2Qt {

namespace {

bool sameTurn(QTransform const &a, QTransform const &b)
{
    return a.m11() == b.m11() && a.m12() == b.m12() && a.m21() == b.m21() && a.m22() == b.m22();
}

QTransform withoutShift(QTransform const &transform)
{
    return {transform.m11(), transform.m12(), transform.m21(), transform.m22(), 0.0, 0.0};
}

} // namespace

Mark const &MarkShape::get(Fig2::Painter::SymbolData const &data, double size, QTransform const &toPage)
{
    if (&data == data_ && size == size_ && sameTurn(toPage, turn_))
        return mark_;
    data_ = &data;
    size_ = size;
    turn_ = withoutShift(toPage);
    QPolygonF corners;
    QPointF corner(data.startX, data.startY);
    for (unsigned int i = 0; i < data.numberOfPoints; ++i) {
        corner += QPointF(data.steps[i].dx, data.steps[i].dy);
        corners.append(turn_.map(corner * size));
    }
    mark_.path = QPainterPath();
    mark_.path.addPolygon(corners);
    mark_.path.closeSubpath();
    mark_.id = ++lastId_;
    return mark_;
}

Mark const *MarkShape::getEllipse(QPointF const &radii, QTransform const &toPage)
{
    if (radii != radii_ || !sameTurn(toPage, ellipseTurn_)) {
        radii_ = radii;
        ellipseTurn_ = withoutShift(toPage);
        ellipse_ = {{}, 0};
        return nullptr;
    }
    if (ellipse_.id == 0) {
        QPainterPath path;
        path.addEllipse(QPointF(), radii.x(), radii.y());
        ellipse_ = {ellipseTurn_.map(path), ++lastId_};
    }
    return &ellipse_;
}

} // namespace Zem::Fig2Qt
