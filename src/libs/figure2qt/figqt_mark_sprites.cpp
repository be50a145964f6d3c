#include "figqt_mark_sprites.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <algorithm>

namespace Zem::Fig2Qt {

MarkSprites::Sprite const &MarkSprites::get(unsigned x, unsigned y)
{
    Sprite &sprite = sprites_[y * 16U + x];
    if (sprite.width > 0)
        return sprite;
    // A sixteenth stands for all places within it: the shape goes to the middle of them.
    QPainterPath const shape = path_.translated((x + 0.5) / 16.0, (y + 0.5) / 16.0);
    QRect box = shape.boundingRect().toAlignedRect() | QRect(0, 0, 1, 1);
    box.setWidth((box.width() + 1) / 2 * 2); // pixels are painted in pairs
    QImage picture(box.size(), QImage::Format_Grayscale8);
    picture.fill(0);
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-box.topLeft());
        painter.fillPath(shape, Qt::white);
    }
    sprite.left = box.left();
    sprite.top = box.top();
    sprite.width = box.width();
    for (int row = 0; row < box.height(); ++row) {
        unsigned char const *line = picture.constScanLine(row);
        sprite.covered.insert(sprite.covered.end(), line, line + box.width());
    }
    return sprite;
}

} // namespace Zem::Fig2Qt
