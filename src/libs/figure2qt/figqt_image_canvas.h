// figqt_image_canvas.h: a canvas on a picture of its own.
#pragma once

#include "figqt_canvas.h"
#include "figqt_coverage.h"
#include "figqt_ink.h"
#include "figqt_ink_batch.h"
#include "figqt_qpainter_canvas.h"
#include "figqt_short_lines.h"

#include <QtGui/QPainter>

#include <optional>

namespace Zem::Fig2Qt {

/// Straight lines, rectangles and small marks go into the pixels by our own means, however many there are; all else
/// through a QPainter.
class ImageCanvas : public Canvas
{
public:
    /// `image` is of Format_RGB32, is not owned and must stay the only copy of itself.
    ImageCanvas(QImage *image, double pixelsPerMillimetre);

    double getCellSize() const override;
    void drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill) override;
    void drawPolyline(Polyline const &line, Stroke const &stroke) override;
    void drawMark(Mark const &mark, QPointF const &at, Color const &fill) override;
    void fillConvex(std::span<QPointF const> corners, Color const &fill) override;
    void fillRect(QRectF const &rect, Color const &fill) override;
    void drawText(TextLayout const &layout, QTransform const &toPage) override;
    void drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                   QTransform const &toPage) override;
    void drawPicture(PlacedPicture const &placed) override;
    void pushClip(QPainterPath const &area) override;
    void popClip() override;
    void finish() override;

private:
    void gather(Color const &color);
    bool joinFew(Polyline const &line, Stroke const &stroke);
    void gatherFew();
    void settleFew();
    void strokeParts(QPainterPath const &path, Stroke const &stroke);
    void addLine(Polyline const &line, Stroke const &stroke);
    void addDashes(std::vector<QPointF> const &points, bool closed, Stroke const &stroke);
    bool isSmall(Mark const &mark) const;

    double const scale_;
    QImage *image_;
    Ink ink_;
    QPainter qPainter_;
    QPainterCanvas painter_; // gone before its QPainter
    Coverage coverage_;
    std::optional<Color> gathered_; // the colour of what is in the coverage
    std::vector<ClipArea> clips_;   // the last is in force
    std::vector<QPointF> pixels_;
    std::vector<Edge> edges_;
    ShortLines few_; // after what is in the batch
    InkBatch batch_;
    std::uint64_t markId_ = 0; // of the marks' shape
};

} // namespace Zem::Fig2Qt
