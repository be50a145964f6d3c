#include "ZemFig2Painter.h"

#include <ZemError.h>

#include <cmath>
#include <exception>

namespace Zem::Fig2 {

namespace {

using SymbolData = Painter::SymbolData;

// The shapes by Symbol::Type. The outline of the frame symbol runs along the outer square and back along the inner
// one, for an even-odd fill; marker and spot reach outside the unit square.
constexpr std::array<SymbolData, 14> SYMBOLS{{
    // circle
    {16, 0, -0.5, {{{0.19, 0.04}, {0.16, 0.11}, {0.11, 0.16}, {0.04, 0.19}, {-0.04, 0.19}, {-0.11, 0.16},
                    {-0.16, 0.11}, {-0.19, 0.04}, {-0.19, -0.04}, {-0.16, -0.11}, {-0.11, -0.16}, {-0.04, -0.19},
                    {0.04, -0.19}, {0.11, -0.16}, {0.16, -0.11}, {0.19, -0.04}}}},
    // box
    {4, -0.5, -0.5, {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}}},
    // pyramid
    {3, 0, -0.5, {{{0.5, 1}, {-1, 0}, {0.5, -1}}}},
    // cheque
    {4, 0, -0.5, {{{0.5, 0.5}, {-0.5, 0.5}, {-0.5, -0.5}, {0.5, -0.5}}}},
    // star
    {10, 0, -0.5, {{{0.15, 0.33}, {0.36, 0.04}, {-0.26, 0.26}, {0.08, 0.35}, {-0.33, -0.19}, {-0.33, 0.19},
                    {0.08, -0.35}, {-0.26, -0.26}, {0.36, -0.04}, {0.15, -0.33}}}},
    // hexagon
    {6, 0, -0.5, {{{0.5, 0.25}, {0, 0.5}, {-0.5, 0.25}, {-0.5, -0.25}, {0, -0.5}, {0.5, -0.25}}}},
    // triangle
    {3, -0.5, -0.5, {{{1, 0}, {-0.5, 1}, {-0.5, -1}}}},
    // cross
    {8, 0, -0.25, {{{0.5, -0.25}, {-0.25, 0.5}, {0.25, 0.5}, {-0.5, -0.25}, {-0.5, 0.25}, {0.25, -0.5},
                    {-0.25, -0.5}, {0.5, 0.25}}}},
    // border
    {10, -0.5, -0.5, {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}, {0.25, 0.25}, {0, 0.5}, {0.5, 0}, {0, -0.5}, {-0.5, 0},
                       {-0.25, -0.25}}}},
    // house
    {5, 0, -0.5, {{{0.5, 0.5}, {0, 0.5}, {-1, 0}, {0, -0.5}, {0.5, -0.5}}}},
    // corners
    {12, 0, -0.5, {{{0.25, 0.07}, {0.18, 0.18}, {0.07, 0.25}, {-0.07, 0.25}, {-0.18, 0.18}, {-0.25, 0.07},
                    {-0.25, -0.07}, {-0.18, -0.18}, {-0.07, -0.25}, {0.07, -0.25}, {0.18, -0.18}, {0.25, -0.07}}}},
    // none
    {0, 0, -0.5, {}},
    // marker
    {12, -0.1, 0, {{{-0.5, -0.5}, {0.1, -0.1}, {0.5, 0.5}, {0.5, -0.5}, {0.1, 0.1}, {-0.5, 0.5}, {0.5, 0.5},
                    {-0.1, 0.1}, {-0.5, -0.5}, {-0.5, 0.5}, {-0.1, -0.1}, {0.5, -0.5}}}},
    // spot
    {12, -0.05, -0.05, {{{0, -0.5}, {0.1, 0}, {0, 0.5}, {0.5, 0}, {0, 0.1}, {-0.5, 0}, {0, 0.5}, {-0.1, 0},
                         {0, -0.5}, {-0.5, 0}, {0, -0.1}, {0.5, 0}}}},
}};

} // namespace

Painter::~Painter() noexcept(false)
{
    // While another error is on its way, a second one would end the program and hide the first.
    if (!cacheIdStack_.empty() && std::uncaught_exceptions() == 0)
        throw ProgError("Zem::Fig2::Painter::~Painter", "fig_painter", __LINE__, "Cache ID stack is not empty");
}

void Painter::setClipping(Rect const &rect, Rotation const &rotation)
{
    Polygon2d area(true);
    for (BaVec2d<double> const &corner : {rect.p0(), rect.p1(), rect.p2(), rect.p3()})
        area.addPoint(std::abs(rotation.getAngle()) >= 1e-50 ? rotation.applyTo(corner) : corner);
    setClipping(area);
}

void Painter::drawSymbol(BaVec2d<double> const &position, Symbol const &symbol, LineStyle const &line,
                         FillStyle const &fill, Rotation const &rotation)
{
    SymbolData const *data = getSymbolData(symbol);
    if (!data)
        return;
    Polygon2d polygon(true);
    BaVec2d<double> point(data->startX, data->startY);
    for (unsigned int i = 0; i < data->numberOfPoints; ++i) {
        point += BaVec2d<double>(data->steps[i].dx, data->steps[i].dy);
        polygon.addPoint(position + point * symbol.getSize());
    }
    drawPolygon(polygon, line, fill, rotation, true);
}

void Painter::drawRect(BaVec2d<double> const &corner, BaVec2d<double> const &size, LineStyle const &line,
                       FillStyle const &fill, Rotation const &rotation)
{
    Polygon2d polygon(true);
    polygon.addPoint(corner);
    polygon.addPoint({corner.x + size.x, corner.y});
    polygon.addPoint(corner + size);
    polygon.addPoint({corner.x, corner.y + size.y});
    drawPolygon(polygon, line, fill, rotation, true);
}

void Painter::drawArrowHead(BaVec2d<double> const &tip, double length, double openingAngle, Rotation const &rotation,
                            Color const &color)
{
    // The arc tangent is deliberate: heads drawn so stand in reports already.
    double const half = std::atan(openingAngle / 2.0) * length;
    Polygon2d polygon(true);
    polygon.addPoint(tip);
    polygon.addPoint({tip.x - half, tip.y + length});
    polygon.addPoint({tip.x + half, tip.y + length});
    drawPolygon(polygon, LineStyle::null, FillStyle(color), rotation, true);
}

void Painter::pushCacheId(QString const &id)
{
    cacheIdStack_.push_back(id);
}

void Painter::popCacheId()
{
    if (cacheIdStack_.empty())
        throw ProgError("Zem::Fig2::Painter::popCacheId", "fig_painter", __LINE__, "Cache ID stack is empty");
    cacheIdStack_.pop_back();
}

QString Painter::getStackedCacheId() const
{
    QString stacked;
    for (QString const &id : cacheIdStack_) {
        if (&id != &cacheIdStack_.front())
            stacked += QLatin1Char('_');
        stacked += id;
    }
    return stacked;
}

Painter::SymbolData const *Painter::getSymbolData(Symbol const &symbol) const
{
    auto const index = static_cast<std::size_t>(symbol.getType());
    return index < SYMBOLS.size() ? &SYMBOLS[index] : nullptr;
}

} // namespace Zem::Fig2
