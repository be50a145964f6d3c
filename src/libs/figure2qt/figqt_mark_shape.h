// figqt_mark_shape.h: the outlines of symbols and dots, as they are on the page.
#pragma once

#include "figqt_canvas.h"

#include <ZemFig2Painter.h>

namespace Zem::Fig2Qt {

/// Keeps the marks that were asked for last: the symbols of a chart come one after the other, as do the dots of a field
/// of vectors.
class MarkShape
{
public:
    /// Scaled and turned, but not moved, by `toPage`. Valid until the next call.
    Mark const &get(Fig2::Painter::SymbolData const &data, double size, QTransform const &toPage);
    /// Likewise an ellipse about the origin. Null when the one before was another: a single one is no mark.
    Mark const *getEllipse(QPointF const &radii, QTransform const &toPage);

private:
    std::uint64_t lastId_ = 0;
    Mark mark_{{}, 0};
    Fig2::Painter::SymbolData const *data_ = nullptr;
    double size_ = 0.0;
    QTransform turn_;
    Mark ellipse_{{}, 0};
    QPointF radii_;
    QTransform ellipseTurn_;
};

} // namespace Zem::Fig2Qt
