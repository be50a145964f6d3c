// figqt_qpainter_canvas.h: a canvas on a QPainter.
#pragma once

#include "figqt_canvas.h"

class QPainter;

namespace Zem::Fig2Qt {

class QPainterCanvas : public Canvas
{
public:
    /// `painter` is not owned.
    QPainterCanvas(QPainter *painter, QTransform const &pageToDevice);
    ~QPainterCanvas() override;

    double getCellSize() const override;
    void drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill) override;
    void drawText(TextLayout const &layout, QTransform const &toPage) override;
    void drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                   QTransform const &toPage) override;
    void drawPicture(PlacedPicture const &placed) override;
    void pushClip(QPainterPath const &area) override;
    void popClip() override;

private:
    void strokeInPieces(QPainterPath const &path, Stroke const &stroke);
    void strokeOnLayer(QPainterPath const &path, Stroke const &stroke);

    QPainter *painter_;
    QTransform const pageToDevice_;
};

} // namespace Zem::Fig2Qt
