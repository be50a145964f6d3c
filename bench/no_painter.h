// no_painter.h: a painter that does nothing, so that what is measured is the drawing alone.
#pragma once

#include <ZemFig2Painter.h>

#include <benchmark/benchmark.h>

namespace Zem::Fig2 {

class NoPainter : public Painter
{
public:
    void drawLine(BaVec2d<double> const &, BaVec2d<double> const &, LineStyle const &, Rotation const &) override {}
    void drawPolygon(Polygon2d const &polygon, LineStyle const &, FillStyle const &, Rotation const &, bool) override
    {
        benchmark::DoNotOptimize(polygon.getPoints().data());
    }
    void drawEllipse(BaVec2d<double> const &, BaVec2d<double> const &, double, LineStyle const &, FillStyle const &,
                     Rotation const &) override
    {
    }
    void drawEllipseSegment(BaVec2d<double> const &, BaVec2d<double> const &, double, double, double,
                            LineStyle const &, FillStyle const &, Rotation const &) override
    {
    }
    void drawText(BaVec2d<double> const &, Font const &, QString const &, Color const &, Rotation const &) override {}
    void drawRichText(BaVec2d<double> const &, QString const &, Font const &, double, Rotation const &, int) override
    {
    }
    void drawImage(BaVec2d<double> const &, BaVec2d<double> const &, Zem::Image const *, ImageColor const *,
                   BaVec2d<double> const &, double, QString const &, ImageConversion const &, Rotation const &) override
    {
    }
    void drawColors(BaVec2d<double> const &, BaVec2d<double> const &, bool, std::vector<Color> const &,
                    Rotation const &) override
    {
    }
    bool getClipping(Polygon2d *) override { return false; }
    void setClipping(Polygon2d const &) override {}
    void resetClipping() override {}
    void setDrawingNested(bool) override {}
    void pushTransformation(BaVec2d<double> const &, double, Rotation const &) override {}
    void popTransformation() override {}
    void drawSymbol(BaVec2d<double> const &position, Symbol const &, LineStyle const &, FillStyle const &fill,
                    Rotation const &) override
    {
        benchmark::DoNotOptimize(position);
        benchmark::DoNotOptimize(fill);
    }
};

} // namespace Zem::Fig2
