#include "figqt_clip_area.h"

#include <QtGui/QPainter>

#include <optional>

namespace Zem::Fig2Qt {

namespace {

/// The rectangle a path is, if it is one.
std::optional<QRectF> rectangleOf(QPainterPath const &path)
{
    int const count = path.elementCount();
    if (count != 4 && count != 5)
        return std::nullopt;
    auto const corner = [&path](int i) { return QPointF(path.elementAt(i)); };
    if (count == 5 && corner(0) != corner(4))
        return std::nullopt;
    for (int i = 0; i < 4; ++i) {
        if (i > 0 && !path.elementAt(i).isLineTo())
            return std::nullopt;
        QPointF const side = corner((i + 1) % 4) - corner(i);
        QPointF const next = corner((i + 2) % 4) - corner((i + 1) % 4);
        if ((side.x() != 0.0 && side.y() != 0.0) || QPointF::dotProduct(side, next) != 0.0)
            return std::nullopt;
    }
    return path.controlPointRect();
}

} // namespace

void ClipArea::cutTo(QRect const &rect)
{
    QRect const before = rect_;
    rect_ &= rect;
    if (!mask_.isNull() && !rect_.isEmpty())
        mask_ = mask_.copy(rect_.translated(-before.topLeft()));
}

ClipArea ClipArea::rows(int top, int end) const
{
    ClipArea result(*this);
    result.cutTo(QRect(rect_.left(), top, rect_.width(), end - top));
    return result;
}

ClipArea ClipArea::narrowed(QPainterPath const &path, QTransform const &toPixels) const
{
    ClipArea result(*this);
    auto const rectangle = toPixels.type() <= QTransform::TxScale ? rectangleOf(path) : std::nullopt;
    if (rectangle) {
        result.cutTo(toPixels.mapRect(*rectangle).toRect());
        return result;
    }
    QPainterPath const area = toPixels.map(path);
    result.rect_ &= area.boundingRect().toAlignedRect();
    if (result.rect_.isEmpty())
        return ClipArea(QRect());
    result.mask_ = QImage(result.rect_.size(), QImage::Format_Grayscale8);
    result.mask_.fill(0);
    QPainter painter(&result.mask_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-result.rect_.topLeft());
    painter.fillPath(area, Qt::white);
    if (!mask_.isNull()) {
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        painter.drawImage(rect_.topLeft(), mask_);
    }
    return result;
}

} // namespace Zem::Fig2Qt
