// ZemFig2Rectangle.h: the plain shapes Rectangle and Ellipse.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2AreaBase.h"

namespace Zem::Fig2 {

/// A rectangle with a full black border of 0.1, not filled.
class Rectangle : public AreaBase
{
public:
    Rectangle();
    Rectangle(Rectangle const &) = default;
    Rectangle &operator=(Rectangle const &) = default;

    Element *copy() const override;
    bool isTokenUsed(QString const &token) const override;
};

/// The ellipse inside the rectangle, with the same defaults. Highlighting does not change its look.
class Ellipse : public AreaBase
{
public:
    Ellipse();
    Ellipse(Ellipse const &) = default;
    Ellipse &operator=(Ellipse const &) = default;

    Element *copy() const override;
    bool isTokenUsed(QString const &token) const override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
};

} // namespace Zem::Fig2
