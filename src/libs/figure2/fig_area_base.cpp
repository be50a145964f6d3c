#include "ZemFig2AreaBase.h"

#include "ZemFig2Figure.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2Tools.h"
#include "fig_text_form.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TEXT_VERSION = 1;
constexpr int FIRST_CENTRE_ROTATION_VERSION = 6; ///< of the element block
constexpr double TOLERANCE = 1e-50;

/// The offset from the alignment point to the centre along one axis.
double pivotOffset(Alignment_t alignment, double extent)
{
    switch (alignment) {
    case ALIGN_BEGIN:
        return extent / 2.0;
    case ALIGN_END:
        return -extent / 2.0;
    case ALIGN_CENTER:
        break;
    }
    return 0.0;
}

BaVec2d<double> pivotOffset(Element const &element)
{
    return {pivotOffset(element.getPivotAlignmentX(), element.getSize().x),
            pivotOffset(element.getPivotAlignmentY(), element.getSize().y)};
}

} // namespace

AreaBase::AreaBase(Type_t type) : Element(type)
{
}

BaVec2d<double> AreaBase::getDrawingOrigin() const
{
    double const inset = getBorder().getStyle() == LineStyle::STYLE_NONE ? 0.0 : getBorder().getWidth() / 2.0;
    return getOrigin() - getSize() * 0.5 + BaVec2d<double>(inset, inset);
}

BaVec2d<double> AreaBase::getDrawingSize() const
{
    double const inset = getBorder().getStyle() == LineStyle::STYLE_NONE ? 0.0 : getBorder().getWidth();
    return getSize() - BaVec2d<double>(inset, inset);
}

/// The border as it is seen: highlighting makes it full and wide enough.
LineStyle AreaBase::getShownBorder() const
{
    LineStyle border = getBorder();
    if (isHighlighted()) {
        border.setStyle(LineStyle::STYLE_FULL);
        border.setWidth(std::max(border.getWidth(), HIGHLIGHTED_BORDER_WIDTH));
    }
    return border;
}

void AreaBase::drawBackground(Painter *painter) const
{
    painter->drawRect(getOrigin() - getSize() * 0.5, getSize(), LineStyle::null, getBackground(), Rotation(this));
}

void AreaBase::drawBorder(Painter *painter) const
{
    LineStyle border = getShownBorder();
    if (isHighlighted())
        border.setColor(getHighlightColor());
    if (border.getStyle() == LineStyle::STYLE_NONE)
        return;
    painter->drawRect(getOrigin() - getSize() * 0.5, getSize(), border, FillStyle::null, Rotation(this));
}

bool AreaBase::draw(FigureTokenInterface const *, Painter *painter, int step) const
{
    if (step == 0) {
        drawBackground(painter);
        drawBorder(painter);
    }
    return true;
}

unsigned int AreaBase::getEstimatedObjectSize() const
{
    return Element::getEstimatedObjectSize() + static_cast<unsigned int>(sizeof(AreaBase) - sizeof(Element));
}

bool AreaBase::isDataValid(StageIdentifier const &, FigureTokenInterface const *) const
{
    return true;
}

Polygon2d AreaBase::computeCoveredPolygon(bool includeBorder) const
{
    BaVec2d<double> half = getSize() * 0.5;
    LineStyle const border = getShownBorder();
    if (includeBorder && border.getStyle() != LineStyle::STYLE_NONE)
        half += BaVec2d<double>(border.getWidth(), border.getWidth()) * 0.5;
    BaVec2d<double> const centre = getOrigin();
    Polygon2d corners({{centre.x - half.x, centre.y - half.y},
                       {centre.x + half.x, centre.y - half.y},
                       {centre.x + half.x, centre.y + half.y},
                       {centre.x - half.x, centre.y + half.y}},
                      true);
    corners.rotate(centre, getAngle());
    return corners;
}

void AreaBase::computeDynamicData(StageIdentifier const &, FigureTokenInterface const *)
{
    if (hasMaximize() && getMaximize() && getFigure()) {
        setOrigin(getFigure()->getSize() * 0.5);
        setSize(getFigure()->getSize());
    }
    dragPolygon_ = computeCoveredPolygon(false);
    coveredPolygon_ = computeCoveredPolygon(true);
    updatePolygon_ = coveredPolygon_;
}

BaVec2d<double> AreaBase::getAlignmentOrigin() const
{
    return Rotation(this).applyTo(getOrigin() - pivotOffset(*this));
}

void AreaBase::setAlignmentOrigin(BaVec2d<double> const &point)
{
    BaVec2d<double> offset = pivotOffset(*this);
    if (std::abs(getAngle()) > TOLERANCE)
        offset = Tools::rotateVector(offset, getAngle());
    setOrigin(point + offset);
}

bool AreaBase::dragPointMove(int index, BaVec2d<double> const &position)
{
    static constexpr std::array<BaVec2d<double>, 4> SIGNS{{{-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}}};
    if (index < 0 || index >= 4)
        return false;
    auto const corner = static_cast<std::size_t>(index);
    BaVec2d<double> const delta = position - computeCoveredPolygon(false)[corner];
    if (std::abs(delta.x) <= TOLERANCE && std::abs(delta.y) <= TOLERANCE)
        return true;
    BaVec2d<double> const turned = Tools::rotateVector(delta, -getAngle());
    BaVec2d<double> const size(getSize().x + turned.x * SIGNS[corner].x, getSize().y + turned.y * SIGNS[corner].y);
    BaVec2d<double> const bound = hasMinimumSize() ? getMinimumSize() : BaVec2d<double>(0.0, 0.0);
    bool const widthAccepted = size.x > bound.x || size.x > getSize().x;
    bool const heightAccepted = size.y > bound.y || size.y > getSize().y;
    if (!widthAccepted || !heightAccepted)
        return false;
    // Half the way for the centre, so that the opposite corner stays.
    setOrigin(getOrigin() + delta * 0.5);
    setSize(size);
    return true;
}

void AreaBase::save(IO::OutStream *stream, int a, int b) const
{
    Element::save(stream, a, b);
}

void AreaBase::load(IO::InStream *stream, int a, int b)
{
    Element::load(stream, a, b);
    double const angle = getAngle();
    if (getBlockVersion() >= FIRST_CENTRE_ROTATION_VERSION || !(std::abs(angle) > TOLERANCE))
        return;
    // Older files turned an area about its alignment point: moving the centre keeps their look.
    setAngle(0.0);
    BaVec2d<double> const base = getAlignmentOrigin();
    Element::setOrigin(Rotation(base, angle).applyTo(getOrigin()));
    setAngle(angle);
}

std::ostream &AreaBase::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [](TextWriter &) {});
    return Element::saveToStream(stream);
}

std::istream &AreaBase::loadFromStream(std::istream &stream)
{
    loadText(stream, TEXT_VERSION, [](TextReader &) {});
    return Element::loadFromStream(stream);
}

QString AreaBase::getParameterString() const
{
    return Element::getParameterString();
}

} // namespace Zem::Fig2
