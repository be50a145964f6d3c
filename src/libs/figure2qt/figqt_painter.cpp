#include "ZemFig2QtPainter.h"

#include "figqt_qpainter_canvas.h"
#include "figqt_units.h"

#include <ZemError.h>

#include <QtGui/QPainter>

namespace Zem::Fig2Qt {

namespace {

QPainter *requireActive(QPainter *painter)
{
    if (!painter || !painter->isActive())
        throw ProgError("Zem::Fig2Qt::QtPainter::QtPainter", "figqt_painter", __LINE__, "The QPainter is not active");
    return painter;
}

QTransform resolutionOf(QPaintDevice const *device)
{
    return QTransform::fromScale(device->logicalDpiX() / MM_PER_INCH, device->logicalDpiY() / MM_PER_INCH);
}

} // namespace

QtPainter::QtPainter(QPainter *painter, QTransform const &pageToDevice)
    : PagePainter(std::make_unique<QPainterCanvas>(requireActive(painter), pageToDevice))
{
}

QtPainter::QtPainter(QPainter *painter) : QtPainter(painter, resolutionOf(requireActive(painter)->device()))
{
}

QtPainter::~QtPainter() noexcept(false)
{
    endClippings();
}

} // namespace Zem::Fig2Qt
