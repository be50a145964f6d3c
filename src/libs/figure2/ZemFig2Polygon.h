// ZemFig2Polygon.h: Polygon, a closed free-form shape.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Element.h"

namespace Zem::Fig2 {

/// The points are kept relative to the origin; the first point is the one that is dragged with it.
class Polygon : public Element
{
public:
    static constexpr QLatin1StringView PARAM_POLYGON{"polygon"};

    /// Without points, with a full black border of 0.1.
    Polygon();
    Polygon(Polygon const &) = default;
    Polygon &operator=(Polygon const &) = default;

    /// Relative to the origin, before the rotation.
    Polygon2d const &getPolygon() const { return polygon_; }
    void setPolygon(Polygon2d const &polygon);

    /// The form of a point in parameter strings, "(x, y)".
    static QString getCoordinateString(BaVec2d<double> const &point);

    Element *copy() const override;
    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &token) const override;
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    Polygon2d computeCoveredPolygon(bool includeBorder) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// A newer version of the text form throws IO::StreamException.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// Always true; a drag that would collapse the shape is undone. Throws ProgError for an index below 0 or above the
    /// number of points; the index equal to that number moves nothing.
    bool dragPointMove(int index, BaVec2d<double> const &position) override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    void setAlignmentOrigin(BaVec2d<double> const &point) override;
    BaVec2d<double> getAlignmentOrigin() const override;
    bool hasAngle() const override { return true; }
    bool hasBackground() const override { return true; }
    bool hasBorder() const override { return true; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

private:
    Polygon2d movedPolygon() const;
    Polygon2d outlinePolygon() const;
    void turn(Polygon2d *outline) const;
    void movePoint(std::size_t index, BaVec2d<double> const &delta);

    Polygon2d polygon_{true};
};

} // namespace Zem::Fig2
