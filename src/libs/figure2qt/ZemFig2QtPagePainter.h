// ZemFig2QtPagePainter.h: PagePainter, what the painters of all outputs have in common.
// Layer: Qt backend. Used from the thread that draws the figure; needs a QGuiApplication.
#pragma once

#include <ZemFig2Painter.h>

#include <memory>

class QPainterPath;

namespace Zem::Fig2Qt {

class Canvas;
struct TextLayout;

/// Takes the turns and transformations out of the drawing calls and paints the result on a canvas. Fills follow the
/// even-odd rule. Whatever has a coordinate that is not finite is left out. Of a line with more points than the output
/// can show, points are left out that make no difference that could be seen there. Opaque lines, rectangles and marks
/// of one colour that follow each other may be painted as one.
class PagePainter : public Fig2::Painter
{
public:
    PagePainter(PagePainter const &) = delete;
    PagePainter &operator=(PagePainter const &) = delete;
    ~PagePainter() noexcept(false) override;

    void drawLine(BaVec2d<double> const &from, BaVec2d<double> const &to, Fig2::LineStyle const &line,
                  Fig2::Rotation const &rotation) override;
    void drawPolygon(Polygon2d const &polygon, Fig2::LineStyle const &line, Fig2::FillStyle const &fill,
                     Fig2::Rotation const &rotation, bool closed) override;
    void drawEllipse(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double angle,
                     Fig2::LineStyle const &line, Fig2::FillStyle const &fill, Fig2::Rotation const &rotation) override;
    /// The outline is the arc alone; the fill is cut off by the chord.
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

    /// A mark with an outline, and one that is not filled, is a polygon like any other.
    void drawSymbol(BaVec2d<double> const &position, Fig2::Symbol const &symbol, Fig2::LineStyle const &line,
                    Fig2::FillStyle const &fill, Fig2::Rotation const &rotation) override;

    /// The area common to all clippings, in the coordinates in force.
    bool getClipping(Polygon2d *area) override;
    void setClipping(Polygon2d const &area) override;
    using Painter::setClipping;
    /// Throws ProgError without a setClipping before.
    void resetClipping() override;

    void setDrawingNested(bool nested) override { drawingNested_ = nested; }
    bool isDrawingNested() const { return drawingNested_; }
    void pushTransformation(BaVec2d<double> const &offset, double scaling, Fig2::Rotation const &rotation) override;
    /// Throws ProgError without a pushTransformation before.
    void popTransformation() override;

protected:
    explicit PagePainter(std::unique_ptr<Canvas> canvas);
    Canvas &getCanvas() { return *canvas_; }
    /// Ends the clippings that are still in force, and paints what was put off.
    void endClippings();

private:
    struct State;

    void drawOutlineAndFill(QPainterPath const &path, Fig2::LineStyle const &line, Fig2::FillStyle const &fill);
    void drawOutline(Polygon2d const &polygon, Fig2::LineStyle const &line, Fig2::Rotation const &rotation,
                     bool closed);
    bool fillRect(Polygon2d const &polygon, Fig2::FillStyle const &fill, Fig2::Rotation const &rotation);
    bool fillConvex(Polygon2d const &polygon, Fig2::FillStyle const &fill, Fig2::Rotation const &rotation);
    void drawLayout(TextLayout const &layout, BaVec2d<double> const &position, Fig2::Rotation const &rotation);

    std::unique_ptr<Canvas> canvas_;
    std::unique_ptr<State> state_;
    bool drawingNested_ = false;
};

} // namespace Zem::Fig2Qt
