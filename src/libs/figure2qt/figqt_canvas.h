// figqt_canvas.h: what an output device must be able to paint.
#pragma once

#include "figqt_text_layout.h"

#include <ZemColor.h>
#include <ZemVec.h>

#include <QtCore/QRectF>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

#include <vector>

namespace Zem::Fig2Qt {

/// How an outline is drawn, in page millimetres.
struct Stroke
{
    double width = 0.0; ///< above 0
    Color color;
    bool round = false;          ///< round ends and corners, else ends cut off at the points and mitred corners
    std::vector<double> dashes;  ///< lengths of dash and gap in turn; empty for a full line

    bool operator==(Stroke const &) const = default;
};

/// The mitre of a corner reaches no further than this many half line widths.
inline constexpr double MITER_LIMIT = 4.0;

/// A page that can be painted on, in page millimetres, y down. All numbers that come here are finite.
class Canvas
{
public:
    Canvas() = default;
    Canvas(Canvas const &) = delete;
    Canvas &operator=(Canvas const &) = delete;
    virtual ~Canvas() = default;

    /// Fill by the rule of the path, then outline; either may be null.
    virtual void drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill) = 0;
    /// `toPage` takes text units to the page: a turn, a scaling and a shift.
    virtual void drawText(TextLayout const &layout, QTransform const &toPage) = 0;
    /// The colours run evenly along the rectangle, from its top or left. `toPage` as above.
    virtual void drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                           QTransform const &toPage) = 0;
    /// Narrows what follows to the area, by its fill rule, until the matching popClip.
    virtual void pushClip(QPainterPath const &area) = 0;
    virtual void popClip() = 0;
};

} // namespace Zem::Fig2Qt
