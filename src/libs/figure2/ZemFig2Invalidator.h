// ZemFig2Invalidator.h: Invalidator, which gathers the page regions that changed.
// Layer: document. Used from the thread that owns the figure.
#pragma once

#include <ZemPolygon2d.h>

namespace Zem::Fig2 {

class Figure;

/// Registered with a Figure, it is told what must be redrawn and keeps it until reset. Used as it is or derived from;
/// the figure does not own it.
class Invalidator
{
public:
    Invalidator() = default;
    Invalidator(Invalidator const &) = default;
    Invalidator &operator=(Invalidator const &) = default;
    virtual ~Invalidator();

    /// The figure goes away; it may be unregistered from here. Does nothing here.
    virtual void figureDeleted(Figure const *figure);

    void invalidateArea(Polygon2d const &area) { invalidArea_.addPolygon(area); }
    /// Page millimetres; the union of all parts.
    Polygon2d const &getInvalidArea() const { return invalidArea_; }
    void reset() { invalidArea_ = Polygon2d(true); }

private:
    Polygon2d invalidArea_{true};
};

} // namespace Zem::Fig2
