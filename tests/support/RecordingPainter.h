// RecordingPainter.h: a Painter that writes one readable line per call.
#pragma once

#include <ZemFig2Painter.h>

#include <string>
#include <vector>

namespace Zem::Support {

/// Numbers with up to six digits; a pen as "pen width style #rrggbbaa cap", "no pen" for style none; a fill as
/// "fill #rrggbbaa" or "no fill"; a picture as its width and height; a rotation only when its angle is not 0.
class RecordingPainter : public Fig2::Painter
{
public:
    void drawLine(BaVec2d<double> const &from, BaVec2d<double> const &to, Fig2::LineStyle const &line,
                  Fig2::Rotation const &rotation) override;
    void drawPolygon(Polygon2d const &polygon, Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                     Fig2::Rotation const &rotation, bool closed) override;
    void drawEllipse(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double angle,
                     Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                     Fig2::Rotation const &rotation) override;
    void drawEllipseSegment(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double startAngle,
                            double endAngle, double angle, Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                            Fig2::Rotation const &rotation) override;
    void drawText(BaVec2d<double> const &position, Font const &font, QString const &text, Color const &color,
                  Fig2::Rotation const &rotation) override;
    void drawRichText(BaVec2d<double> const &position, QString const &text, Font const &font, double width,
                      Fig2::Rotation const &rotation, int cacheId) override;
    void drawImage(BaVec2d<double> const &position, BaVec2d<double> const &size, Zem::Image const *image,
                   ImageColor const *overlay, BaVec2d<double> const &innerOrigin, double scaling,
                   QString const &cacheId, Fig2::ImageConversion const &conversion,
                   Fig2::Rotation const &rotation) override;
    void drawColors(BaVec2d<double> const &position, BaVec2d<double> const &size, bool vertical,
                    std::vector<Color> const &colors, Fig2::Rotation const &rotation) override;
    bool getClipping(Polygon2d *area) override;
    void setClipping(Polygon2d const &area) override;
    using Painter::setClipping;
    void resetClipping() override;
    void setDrawingNested(bool nested) override;
    void pushTransformation(BaVec2d<double> const &offset, double scaling, Fig2::Rotation const &rotation) override;
    void popTransformation() override;

    /// All calls, each line ending with a line feed.
    std::string transcript() const;
    std::vector<std::string> const &calls() const { return calls_; }
    void clear() { calls_.clear(); }

private:
    void record(std::string const &call, Fig2::Rotation const &rotation);

    std::vector<std::string> calls_;
    std::vector<Polygon2d> clippings_;
};

std::string text(double number);
std::string text(BaVec2d<double> const &point);
std::string text(Polygon2d const &polygon);

} // namespace Zem::Support
