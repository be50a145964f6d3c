// ZemFig2AreaBase.h: AreaBase, the base of all elements that fill a rectangle.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Element.h"

namespace Zem::Fig2 {

/// A rectangle on the page: the origin is its centre, the size its extent before the rotation about the centre. The
/// border lies inside the size while drawing, its width outside for the covered polygon.
class AreaBase : public Element
{
public:
    /// A highlighted element's border is at least this wide.
    static constexpr double HIGHLIGHTED_BORDER_WIDTH = 0.2;

    /// The top left corner and the extent of what lies within the border, before the rotation.
    BaVec2d<double> getDrawingOrigin() const;
    BaVec2d<double> getDrawingSize() const;
    void drawBackground(Painter *painter) const;
    void drawBorder(Painter *painter) const;

    unsigned int getEstimatedObjectSize() const override;
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    Polygon2d computeCoveredPolygon(bool includeBorder) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// A newer version of the text form throws IO::StreamException.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    /// Moves a corner; the opposite corner stays. False when the rectangle would become too small.
    bool dragPointMove(int index, BaVec2d<double> const &position) override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    void setAlignmentOrigin(BaVec2d<double> const &point) override;
    BaVec2d<double> getAlignmentOrigin() const override;
    bool hasSize() const override { return true; }
    bool hasMinimumSize() const override { return true; }
    BaVec2d<double> getMinimumSize() const override { return minimumSize_; }
    bool hasAngle() const override { return true; }
    bool hasBackground() const override { return true; }
    bool hasBorder() const override { return true; }
    bool hasPivotAlignment() const override { return true; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

protected:
    explicit AreaBase(Type_t type);
    AreaBase(AreaBase const &) = default;
    AreaBase &operator=(AreaBase const &) = default;

    void setMinimumSize(BaVec2d<double> const &size) { minimumSize_ = size; }

private:
    LineStyle getShownBorder() const;

    BaVec2d<double> minimumSize_{0.0, 0.0};
};

} // namespace Zem::Fig2
