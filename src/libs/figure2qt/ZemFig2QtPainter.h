// ZemFig2QtPainter.h: QtPainter, a figure's Painter on a QPainter.
// Layer: painting. Used from one thread, after a QGuiApplication was made.
#pragma once

#include "ZemFig2QtTextLayout.h"

#include <ZemFig2Painter.h>

#include <QtGui/QPainter>

#include <vector>

namespace Zem::Fig2Qt {

/// Paints on anything that a QPainter can paint on. One unit of the QPainter is a page millimetre: the caller has scaled
/// it. What has a coordinate that is not finite is left out.
class QtPainter : public Fig2::Painter
{
public:
    /// Neither is owned. `layouts` may serve several painters, as it does for the pages of a document.
    QtPainter(QPainter *painter, TextLayoutCache *layouts);

    void drawLine(BaVec2d<double> const &from, BaVec2d<double> const &to, Fig2::LineStyle const &line,
                  Fig2::Rotation const &rotation) override;
    void drawPolygon(Polygon2d const &polygon, Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                     Fig2::Rotation const &rotation, bool closed) override;
    void drawEllipse(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double angle,
                     Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                     Fig2::Rotation const &rotation) override;
    /// The fill is what lies between the arc and its chord.
    void drawEllipseSegment(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double startAngle,
                            double endAngle, double angle, Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                            Fig2::Rotation const &rotation) override;
    void drawText(BaVec2d<double> const &position, Font const &font, QString const &text, Color const &color,
                  Fig2::Rotation const &rotation) override;
    void drawRichText(BaVec2d<double> const &position, QString const &text, Font const &font, double width,
                      Fig2::Rotation const &rotation, int cacheId) override;
    void drawColors(BaVec2d<double> const &position, BaVec2d<double> const &size, bool vertical,
                    std::vector<Color> const &colors, Fig2::Rotation const &rotation) override;
    bool getClipping(Polygon2d *area) override;
    void setClipping(Polygon2d const &area) override;
    using Painter::setClipping;
    void resetClipping() override;
    void setDrawingNested(bool nested) override { nested_ = nested; }
    bool isDrawingNested() const { return nested_; }
    void pushTransformation(BaVec2d<double> const &offset, double scaling, Fig2::Rotation const &rotation) override;
    void popTransformation() override;

private:
    void drawPath(QPainterPath const &path, Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                  Fig2::Rotation const &rotation);
    void strokeInPieces(std::vector<BaVec2d<double>> const &points, bool closed);

    QPainter *painter_;
    TextLayoutCache *layouts_;
    std::vector<Polygon2d> clippings_;
    bool nested_ = false;
};

} // namespace Zem::Fig2Qt
