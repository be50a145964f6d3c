// figqt_canvas.h: what an output device must be able to paint.
#pragma once

#include "figqt_picture.h"
#include "figqt_text_layout.h"

#include <ZemColor.h>
#include <ZemVec.h>

#include <QtCore/QRectF>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

#include <cstdint>
#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// How an outline is drawn, in page millimetres.
struct Stroke
{
    double width = 0.0; ///< above 0
    Color color;
    bool round = false;         ///< round ends and corners, else ends cut off at the points and mitred corners
    std::vector<double> dashes; ///< lengths of dash and gap in turn; empty for a full line

    bool operator==(Stroke const &) const = default;
};

/// The mitre of a corner reaches no further than this many half line widths.
inline constexpr double MITER_LIMIT = 4.0;

/// Points joined by straight lines, one at least.
struct Polyline
{
    std::span<QPointF const> points;
    bool closed = false;  ///< back to the first point
    bool thinned = false; ///< points were left out of it: it is dense, and no better than getCellSize()
};

/// A shape that is painted at many places.
struct Mark
{
    QPainterPath path; ///< about the origin
    std::uint64_t id;  ///< the same only for the same path
};

/// A picture that comes to the page.
struct PlacedPicture
{
    Picture picture;
    QRectF part;       ///< what shows of it, in its pixels, not empty and within it
    QTransform toPage; ///< its pixels to the page: a turn, a stretching and a shift
    QString id;        ///< the same only for the same picture; empty for an unknown one
};

/// A page that can be painted on, in page millimetres, y down. All numbers that come here are finite.
class Canvas
{
public:
    Canvas() = default;
    Canvas(Canvas const &) = delete;
    Canvas &operator=(Canvas const &) = delete;
    virtual ~Canvas() = default;

    /// What differs by less than this cannot be told apart on the output.
    virtual double getCellSize() const = 0;
    /// Fill by the rule of the path, then outline; either may be null.
    virtual void drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill) = 0;
    /// A line alone. It may be put off, and opaque lines of one colour be painted as one, until anything else is
    /// painted or finish() is called.
    virtual void drawPolyline(Polyline const &line, Stroke const &stroke);
    /// The mark filled, about `at`. May be put off likewise.
    virtual void drawMark(Mark const &mark, QPointF const &at, Color const &fill);
    /// A filled convex area without curves, three corners at least. May be put off, but keeps its order.
    virtual void fillConvex(std::span<QPointF const> corners, Color const &fill);
    /// A filled rectangle along the axes of the page, not empty. May be put off likewise.
    virtual void fillRect(QRectF const &rect, Color const &fill);
    /// `toPage` takes text units to the page: a turn, a scaling and a shift.
    virtual void drawText(TextLayout const &layout, QTransform const &toPage) = 0;
    /// The colours run evenly along the rectangle, from its top or left. `toPage` as above.
    virtual void drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                           QTransform const &toPage) = 0;
    /// Enlarged pixels are seen as such from PIXELS_ARE_SEEN on.
    virtual void drawPicture(PlacedPicture const &placed) = 0;
    /// Narrows what follows to the area, by its fill rule, until the matching popClip.
    virtual void pushClip(QPainterPath const &area) = 0;
    virtual void popClip() = 0;
    /// Paints what was put off. Called at the end of the page.
    virtual void finish() {}
};

} // namespace Zem::Fig2Qt
