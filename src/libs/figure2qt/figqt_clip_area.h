// figqt_clip_area.h: where a picture may be painted on.
#pragma once

#include <QtCore/QRect>
#include <QtGui/QImage>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

namespace Zem::Fig2Qt {

/// A rectangle of pixels, and how much of each of them is open when that is not all of it.
class ClipArea
{
public:
    explicit ClipArea(QRect const &picture) : rect_(picture) {}

    /// What of this area lies in the path as well, by its fill rule. A rectangle along the axes is rounded to whole
    /// pixels, as a QPainter does it.
    ClipArea narrowed(QPainterPath const &path, QTransform const &toPixels) const;

    /// What of it lies in some rows of the picture.
    ClipArea rows(int top, int end) const;

    QRect const &getRect() const { return rect_; }
    bool isRectangle() const { return mask_.isNull(); }
    /// 255 for an open pixel. The pixel lies in the rectangle, which is not all there is.
    unsigned char openAt(int x, int y) const { return mask_.constScanLine(y - rect_.y())[x - rect_.x()]; }

private:
    void cutTo(QRect const &rect);

    QRect rect_;
    QImage mask_; // of the rectangle, Format_Grayscale8; null when all is open
};

} // namespace Zem::Fig2Qt
