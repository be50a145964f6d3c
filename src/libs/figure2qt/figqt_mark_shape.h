// figqt_mark_shape.h: the outline of a symbol, as it is on the page.
#pragma once

#include "figqt_canvas.h"

#include <ZemFig2Painter.h>

namespace Zem::Fig2Qt {

/// Keeps the mark that was asked for last: the symbols of a chart come one after the other.
class MarkShape
{
public:
    /// Scaled and turned, but not moved, by `toPage`. Valid until the next call.
    Mark const &get(Fig2::Painter::SymbolData const &data, double size, QTransform const &toPage);

private:
    Mark mark_{{}, 0};
    Fig2::Painter::SymbolData const *data_ = nullptr;
    double size_ = 0.0;
    QTransform turn_;
};

} // namespace Zem::Fig2Qt
