// ZemFig2Painter.h: Painter, the abstract drawing target.
// Layer: painting. Used from the thread that draws the figure.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2ImageConversion.h"
#include "ZemFig2LineStyle.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2Symbol.h"

#include <ZemFont.h>
#include <ZemPolygon2d.h>
#include <ZemRect.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <array>
#include <vector>

namespace Zem {
class Image;
class ImageColor;
} // namespace Zem

namespace Zem::Fig2 {

class ChartParameters;

/// Where every element and every style draws. The application derives from it for a screen, a printer or a file.
/// All positions and sizes are page millimetres, x to the right, y down; every primitive takes a Rotation, so that a
/// turned element need not turn its points itself. Fonts are in points. Nothing handed to a call is kept by it.
class Painter
{
public:
    /// 0 draws everything at once, 1 (the default) spreads long contents over draw steps. Further values are the
    /// application's.
    using Mode_t = int;

    /// A symbol as a closed polygon in a unit square about the origin: point i is the start plus the steps up to and
    /// including i.
    struct SymbolData
    {
        /// The way from one point to the next.
        struct Step
        {
            double dx = 0.0;
            double dy = 0.0;
        };
        unsigned int numberOfPoints; ///< 0 to 16
        double startX;
        double startY;
        std::array<Step, 16> steps;
    };

    Painter() = default;
    Painter(Painter const &) = default;
    Painter &operator=(Painter const &) = default;
    /// Throws ProgError when a cache id was left on the stack.
    virtual ~Painter() noexcept(false);

    virtual void drawLine(BaVec2d<double> const &from, BaVec2d<double> const &to, LineStyle const &line,
                          Rotation const &rotation) = 0;
    /// Outline and even-odd fill. `closed` is true for shapes, false for an open polyline. LineStyle::null draws no
    /// outline, FillStyle::null no fill.
    virtual void drawPolygon(Polygon2d const &polygon, LineStyle const &line, FillStyle const &fill,
                             Rotation const &rotation, bool closed) = 0;
    /// A full ellipse turned by `angle` (radians) about its centre.
    virtual void drawEllipse(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double angle,
                             LineStyle const &line, FillStyle const &fill, Rotation const &rotation) = 0;
    /// An arc of such an ellipse from `startAngle` to `endAngle` (radians, in the sense of Rotation, 0 to the right).
    virtual void drawEllipseSegment(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double startAngle,
                                    double endAngle, double angle, LineStyle const &line, FillStyle const &fill,
                                    Rotation const &rotation) = 0;
    /// A single line of plain text with its top left corner at `position`.
    virtual void drawText(BaVec2d<double> const &position, Font const &font, QString const &text, Color const &color,
                          Rotation const &rotation) = 0;
    /// Formatted text with its top left corner at `position`, wrapped at `width`, -1.0 meaning no wrapping. The same
    /// `cacheId` always comes with the same text, font and width: a laid-out text may be kept under it.
    virtual void drawRichText(BaVec2d<double> const &position, QString const &text, Font const &font, double width,
                              Rotation const &rotation, int cacheId) = 0;
    /// The part of a picture that shows within the rectangle: its pixel `innerOrigin`, which may lie between pixels,
    /// comes to lie at `position`, and a pixel is `scaling` millimetres wide. `conversion` is for the picture alone;
    /// `overlay`, which may be null, covers the whole picture whatever its own size, blended by its alpha. The same
    /// `cacheId` always comes with the same picture and overlay: what was made of their pixels may be kept under it and
    /// the conversion.
    virtual void drawImage(BaVec2d<double> const &position, BaVec2d<double> const &size, Zem::Image const *image,
                           ImageColor const *overlay, BaVec2d<double> const &innerOrigin, double scaling,
                           QString const &cacheId, ImageConversion const &conversion, Rotation const &rotation) = 0;
    /// A continuous strip, the colours spread evenly along it from the top or from the left.
    virtual void drawColors(BaVec2d<double> const &position, BaVec2d<double> const &size, bool vertical,
                            std::vector<Color> const &colors, Rotation const &rotation) = 0;

    /// Whether a clipping area is in force; then `area` receives it.
    virtual bool getClipping(Polygon2d *area) = 0;
    /// Narrows drawing to a polygon, within what is in force already; undone by resetClipping.
    virtual void setClipping(Polygon2d const &area) = 0;
    /// The same with a turned rectangle.
    virtual void setClipping(Rect const &rect, Rotation const &rotation);
    /// Ends the clipping of the last setClipping.
    virtual void resetClipping() = 0;

    /// True while the elements of a nested figure are drawn.
    virtual void setDrawingNested(bool nested) = 0;
    /// All following drawing is scaled by `scaling`, moved to `offset` (page millimetres) and turned by `rotation`, the
    /// turn of the framing element; undone by popTransformation.
    virtual void pushTransformation(BaVec2d<double> const &offset, double scaling, Rotation const &rotation) = 0;
    virtual void popTransformation() = 0;

    /// The symbol's shape, symbol.getSize() wide, about `position`.
    virtual void drawSymbol(BaVec2d<double> const &position, Symbol const &symbol, LineStyle const &line,
                            FillStyle const &fill, Rotation const &rotation);

    /// The sample of a curve's look within the box of `size` at `position`, for legends. Lines and symbols grow and
    /// shrink with the box.
    void drawVisualisation(BaVec2d<double> const &position, BaVec2d<double> const &size,
                           ChartParameters const &parameters, Rotation const &rotation);
    void drawRect(BaVec2d<double> const &corner, BaVec2d<double> const &size, LineStyle const &line,
                  FillStyle const &fill, Rotation const &rotation);
    /// A filled triangle with its point at `tip`, opening towards higher y over `length`; `openingAngle` in radians.
    void drawArrowHead(BaVec2d<double> const &tip, double length, double openingAngle, Rotation const &rotation,
                       Color const &color);

    Mode_t getMode() const { return mode_; }
    void setMode(Mode_t mode) { mode_ = mode; }

    /// A stack of names under which nested things are cached apart from the same ids in another figure.
    void pushCacheId(QString const &id);
    /// Throws ProgError on an empty stack.
    void popCacheId();
    /// All names from bottom to top, joined by an underscore.
    QString getStackedCacheId() const;

protected:
    /// Null for a type outside the enumeration.
    SymbolData const *getSymbolData(Symbol const &symbol) const;

private:
    Mode_t mode_ = 1;
    std::vector<QString> cacheIdStack_;
};

} // namespace Zem::Fig2
