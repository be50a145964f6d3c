// ZemFig2ImageDataPoints.h: ImageDataPoints, the measured points and vectors on a picture.
// Layer: painting. Distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2ImageDataElement.h"

#include <limits>
#include <vector>

namespace Zem::Fig2 {

/// Points in the space and unit of the measurement, each with a vector: the only mark that goes through the
/// transformation of the picture. Without one it is not drawn; neither is a point that has no image. A vector whose
/// end leaves the visible part of the picture is cut there and has no arrow head.
class ImageDataPoints : public ImageDataElement
{
public:
    /// Sets of more points take several draw steps.
    static constexpr unsigned int VECTORS_PER_DRAW_STEP = 500;
    /// The value of a point whose colour follows from its vector; the coordinates of a point without an image.
    static constexpr double INVALID_VALUE = std::numeric_limits<double>::max();
    /// All components of a vector in one.
    static constexpr int COMBINED = -1;

    ImageDataPoints() : ImageDataElement(TYPE_POINTS) {}

    unsigned int getNumberOfPoints() const { return static_cast<unsigned int>(points_.size()); }
    /// `id` is what stands at the point when ids are drawn. `value` chooses the colour; INVALID_VALUE takes the
    /// vector's component or length instead. `visible` is false for a point that is shown only along with the hidden
    /// ones. The bits of `mask` are tested against the point mask of the visualisation.
    void addPoint(int id, BaVec3d<double> const &point, BaVec3d<double> const &vector, double value, bool visible,
                  int mask);
    void clearPoints() { points_.clear(); }

    /// The components of the vector at `index`, which must be below getNumberOfPoints(), that the visualisation shows
    /// as its number `component`; COMBINED, or any number that it has not, gives all in one. The result is whether a
    /// further component follows.
    bool computeDirection(ImageDataVisualisation const &visualisation, unsigned int index, int component,
                          BaVec3d<double> *direction) const;
    /// The value that chooses the colour of such a direction: its coordinate, or its length when it combines several.
    static double getValue(BaVec3d<double> const &direction, ImageDataVisualisation const &visualisation,
                           int component);
    /// Foot and end of the vector on the page, before rotation, and its direction; the result is that of
    /// computeDirection. Without an image, or without a transformation (null), `start` receives INVALID_VALUE in both
    /// coordinates and `end` is left alone.
    bool computeImagePoints(BaVec2d<double> const &origin, double scale, ImageDataVisualisation const &visualisation,
                            Transformation const *transformation, unsigned int index, int component,
                            BaVec2d<double> *start, BaVec2d<double> *end, BaVec3d<double> *direction) const;

    ImageDataPoints *copy() const override;
    /// Nothing: a scaled picture has a scaled transformation.
    void scale(double factor) override;
    unsigned int getNumberOfDrawSteps() const override;
    void draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &clip,
              Legend2::LegendHandler const *legend, Rotation const &rotation,
              ImageDataVisualisation const &visualisation, Transformation const *transformation,
              unsigned int step) const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

private:
    class Drawing;
    struct Point
    {
        int id = 0;
        BaVec3d<double> point;
        BaVec3d<double> vector;
        double value = INVALID_VALUE;
        bool visible = true;
        int mask = -1;
    };

    template <class Archive, class Points>
    static void blockFields(Archive &archive, Points &points);

    std::vector<Point> points_;
};

} // namespace Zem::Fig2
