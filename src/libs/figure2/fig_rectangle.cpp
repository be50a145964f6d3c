#include "ZemFig2Rectangle.h"

#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"

namespace Zem::Fig2 {

namespace {

LineStyle const &shapeBorder()
{
    static constexpr LineStyle border(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0));
    return border;
}

} // namespace

Rectangle::Rectangle() : AreaBase(RECTANGLE)
{
    setBorder(shapeBorder());
}

Element *Rectangle::copy() const
{
    return new Rectangle(*this);
}

bool Rectangle::isTokenUsed(QString const &) const
{
    return false;
}

Ellipse::Ellipse() : AreaBase(ELLIPSE)
{
    setBorder(shapeBorder());
}

Element *Ellipse::copy() const
{
    return new Ellipse(*this);
}

bool Ellipse::isTokenUsed(QString const &) const
{
    return false;
}

bool Ellipse::draw(FigureTokenInterface const *, Painter *painter, int step) const
{
    if (step == 0)
        painter->drawEllipse(getOrigin(), getSize() * 0.5, 0.0, getBorder(), getBackground(), Rotation(this));
    return true;
}

} // namespace Zem::Fig2
