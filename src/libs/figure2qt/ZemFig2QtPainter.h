// ZemFig2QtPainter.h: QtPainter, which draws figures on anything that a QPainter paints on.
// Layer: Qt backend. Used from the thread of its QPainter; needs a QGuiApplication.
#pragma once

#include "ZemFig2QtPagePainter.h"

#include <QtGui/QTransform>

class QPainter;

namespace Zem::Fig2Qt {

/// Draws on a QPainter of the caller's: a widget, a picture, a printer. Changes the QPainter's state and gives it back
/// as it was on destruction.
class QtPainter : public PagePainter
{
public:
    /// `painter` is active, else ProgError, and stays so until this object is gone; not owned. `pageToDevice` takes
    /// page millimetres to the coordinates of the painter.
    QtPainter(QPainter *painter, QTransform const &pageToDevice);
    /// The page from the top left corner of the device, at the resolution that the device says it has.
    explicit QtPainter(QPainter *painter);
    ~QtPainter() noexcept(false) override;
};

} // namespace Zem::Fig2Qt
