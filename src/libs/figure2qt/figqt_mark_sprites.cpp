#include "figqt_mark_sprites.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

MarkSprites::MarkSprites(QPainterPath const &path) : path_(path)
{
    QRectF const box = path.boundingRect();
    reach_ = static_cast<int>(std::ceil(std::max(std::abs(box.top()), std::abs(box.bottom())))) + 1;
}

void MarkSprites::paint(unsigned x, unsigned y, Sprite *sprite)
{
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
    auto const small = [](auto value) { return static_cast<std::int16_t>(value); };
    *sprite = {static_cast<std::uint32_t>(covered_.size()), small(box.left()), small(box.top()), small(box.width()),
               small(box.height())};
    for (int row = 0; row < box.height(); ++row) {
        unsigned char const *line = picture.constScanLine(row);
        covered_.insert(covered_.end(), line, line + box.width());
    }
}

} // namespace Zem::Fig2Qt
