// ZemFig2ImageDataElement.h: ImageDataElement, a mark on a picture.
// Layer: painting. Distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2ImageDataVisualisation.h"
#include "ZemFig2Rotation.h"

#include <ZemRect.h>
#include <ZemStream.h>
#include <ZemVec.h>

namespace Zem::Legend2 {
class LegendHandler;
}

namespace Zem::Fig2 {

class Painter;
class Transformation;

/// One drawable mark. Marks take their look from the ImageDataVisualisation that they are drawn with; those called
/// Fixed have a look of their own.
class ImageDataElement
{
public:
    /// Stored in files: never renumber.
    enum Type_t {
        TYPE_POINT_MARKER = 0,
        TYPE_LINE = 1,
        TYPE_ELLIPSE = 2,
        TYPE_TEXT = 3,
        TYPE_POINTS = 4,
        TYPE_POLYGON = 5,
        TYPE_FIXED_LINE = 6,
        TYPE_FIXED_ELLIPSE = 7,
        TYPE_FIXED_TEXT = 8,
        TYPE_FIXED_POLYGON = 9,
        TYPE_FIXED_GRID = 10
    };
    static constexpr unsigned int NUMBER_OF_TYPES = TYPE_FIXED_GRID + 1;

    /// An empty element of the type, owned by the caller; null for an unknown type.
    static ImageDataElement *create(Type_t type);

    virtual ~ImageDataElement();
    /// The caller owns the copy.
    virtual ImageDataElement *copy() const = 0;
    /// Multiplies all picture coordinates, lengths and font sizes; line widths and angles stay.
    virtual void scale(double factor) = 0;
    virtual bool hasArrows() const;
    virtual unsigned int getNumberOfDrawSteps() const;
    /// Draws one of the steps. The picture has its corner at `origin` (page millimetres) and `scale` millimetres to a
    /// pixel; `clip` is its visible part on the page. `legend` and `transformation` may be null.
    virtual void draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &clip,
                      Legend2::LegendHandler const *legend, Rotation const &rotation,
                      ImageDataVisualisation const &visualisation, Transformation const *transformation,
                      unsigned int step) const = 0;
    /// A block of the type, then those of the kind. Both throw IO::StreamException; load then changes nothing.
    virtual void load(IO::InStream *stream);
    virtual void save(IO::OutStream *stream) const;

    Type_t getType() const { return type_; }

protected:
    explicit ImageDataElement(Type_t type) : type_(type) {}
    ImageDataElement(ImageDataElement const &) = default;
    ImageDataElement &operator=(ImageDataElement const &) = default;

private:
    Type_t type_;
};

/// How the pixels of a picture come to lie on the page.
struct ImagePlacement
{
    BaVec2d<double> origin; ///< page millimetres
    double scale;           ///< millimetres to a pixel
    Rotation rotation;

    BaVec2d<double> toPage(BaVec2d<double> const &pixel) const { return origin + pixel * scale; }
};

/// A mark in picture pixels, drawn in one step and without clip, legend and transformation.
class ImageDataShape : public ImageDataElement
{
public:
    void draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &clip,
              Legend2::LegendHandler const *legend, Rotation const &rotation,
              ImageDataVisualisation const &visualisation, Transformation const *transformation,
              unsigned int step) const final;

protected:
    using ImageDataElement::ImageDataElement;

private:
    virtual void drawShape(Painter *painter, ImagePlacement const &placement,
                           ImageDataVisualisation const &visualisation) const = 0;
};

} // namespace Zem::Fig2
