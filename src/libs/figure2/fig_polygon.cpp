#include "ZemFig2Polygon.h"

#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

#include <ZemError.h>

#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TEXT_VERSION = 1;
constexpr unsigned int MINIMUM_POINTS = 3;
constexpr double TOLERANCE = 1e-50;
constexpr double MINIMUM_EXTENT = 0.01;

bool isCollapsed(Polygon2d const &polygon)
{
    Rect const bounds(polygon);
    return bounds.width <= MINIMUM_EXTENT || bounds.height <= MINIMUM_EXTENT;
}

[[noreturn]] void throwIllegalCoordinate()
{
    throw ParamError(translate("Figure_Polygon_err", "illegal polygon coordinate format"), -1);
}

double coordinateOf(QString const &text)
{
    bool isNumber = false;
    double const number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        throwIllegalCoordinate();
    return number;
}

/// Reads "(x,y)", blanks being of no account.
BaVec2d<double> pointOf(QString const &entry)
{
    QString const text = Parse::stripBlanks(entry);
    if (text.size() < 3 || !text.startsWith(QLatin1Char('(')) || !text.endsWith(QLatin1Char(')')))
        throwIllegalCoordinate();
    QStringList const numbers = text.mid(1, text.size() - 2).split(QLatin1Char(','));
    if (numbers.size() != 2)
        throwIllegalCoordinate();
    return {coordinateOf(numbers[0].trimmed()), coordinateOf(numbers[1].trimmed())};
}

} // namespace

Polygon::Polygon() : Element(POLYGON)
{
    setBorder(LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
}

void Polygon::setPolygon(Polygon2d const &polygon)
{
    polygon_ = polygon;
    invalidate();
}

QString Polygon::getCoordinateString(BaVec2d<double> const &point)
{
    return QStringLiteral("(%1, %2)").arg(point.x, 0, 'g').arg(point.y, 0, 'g');
}

Element *Polygon::copy() const
{
    return new Polygon(*this);
}

unsigned int Polygon::getEstimatedObjectSize() const
{
    return Element::getEstimatedObjectSize() +
           static_cast<unsigned int>(sizeof(Polygon) - sizeof(Element) + polygon_.size() * sizeof(BaVec2d<double>));
}

bool Polygon::isTokenUsed(QString const &) const
{
    return false;
}

bool Polygon::isDataValid(StageIdentifier const &, FigureTokenInterface const *) const
{
    return true;
}

void Polygon::setAlignmentOrigin(BaVec2d<double> const &point)
{
    setOrigin(getOrigin() + point - getAlignmentOrigin());
}

BaVec2d<double> Polygon::getAlignmentOrigin() const
{
    return getOrigin();
}

/// The points on the page before the rotation.
Polygon2d Polygon::movedPolygon() const
{
    Polygon2d moved = polygon_;
    for (std::size_t i = 0; i < moved.size(); ++i)
        moved[i] += getOrigin();
    return moved;
}

/// The same; without points the origin three times, so that the element can be found.
Polygon2d Polygon::outlinePolygon() const
{
    return polygon_.empty() ? Polygon2d({getOrigin(), getOrigin(), getOrigin()}, true) : movedPolygon();
}

void Polygon::turn(Polygon2d *outline) const
{
    if (std::abs(getAngle()) > TOLERANCE)
        outline->rotate(getOrigin(), getAngle());
}

bool Polygon::draw(FigureTokenInterface const *, Painter *painter, int step) const
{
    if (step == 0 && polygon_.size() >= MINIMUM_POINTS) {
        LineStyle border = getBorder();
        border.setCapStyle(LineStyle::CAP_ROUND);
        painter->drawPolygon(movedPolygon(), border, getBackground(), Rotation(this), true);
    }
    return true;
}

void Polygon::computeDynamicData(StageIdentifier const &, FigureTokenInterface const *)
{
    dragPolygon_ = outlinePolygon();
    turn(&dragPolygon_);
    coveredPolygon_ = computeCoveredPolygon(true);
    updatePolygon_ = coveredPolygon_;
}

Polygon2d Polygon::computeCoveredPolygon(bool includeBorder) const
{
    Polygon2d outline = outlinePolygon();
    if (includeBorder && getBorder().getStyle() != LineStyle::STYLE_NONE) {
        double const width = getBorder().getWidth();
        Polygon2d corners(true);
        for (BaVec2d<double> const &point : outline.getPoints()) {
            for (BaVec2d<double> const &step : {BaVec2d<double>(-width, -width), BaVec2d<double>(width, -width),
                                                BaVec2d<double>(width, width), BaVec2d<double>(-width, width)})
                corners.addPoint(point + step);
        }
        outline = corners.getConvexHull();
    }
    turn(&outline);
    return outline;
}

void Polygon::movePoint(std::size_t index, BaVec2d<double> const &delta)
{
    if (index >= polygon_.size())
        return;
    if (index > 0) {
        polygon_[index] += delta;
        return;
    }
    // The first point moves with the origin; the others are shifted back, so that the shape stays.
    setOrigin(getOrigin() + delta);
    for (std::size_t i = 1; i < polygon_.size(); ++i)
        polygon_[i] -= delta;
}

bool Polygon::dragPointMove(int index, BaVec2d<double> const &position)
{
    if (index < 0 || static_cast<std::size_t>(index) > polygon_.size())
        throw ProgError("Zem::Fig2::Polygon::dragPointMove", "fig_polygon", __LINE__, "Illegal point index");
    auto const place = static_cast<std::size_t>(index);
    if (place < dragPolygon_.size()) {
        BaVec2d<double> delta = position - dragPolygon_[place];
        if (std::abs(getAngle()) > TOLERANCE)
            delta = Tools::rotateVector(delta, -getAngle());
        BaVec2d<double> const oldOrigin = getOrigin();
        Polygon2d const oldPolygon = polygon_;
        movePoint(place, delta);
        if (isCollapsed(polygon_)) {
            setOrigin(oldOrigin);
            polygon_ = oldPolygon;
        }
    }
    invalidate();
    return true;
}

void Polygon::save(IO::OutStream *stream, int a, int b) const
{
    Element::save(stream, a, b);
    Tools::save(stream, polygon_);
}

void Polygon::load(IO::InStream *stream, int a, int b)
{
    loadWrapped("Figure_Polygon_err", "cannot load figure polygon: %1", [&] {
        Element::load(stream, a, b);
        Tools::load(stream, &polygon_);
    });
}

std::ostream &Polygon::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](TextWriter &writer) {
        writer.item(static_cast<unsigned int>(polygon_.size()));
        for (BaVec2d<double> const &point : polygon_.getPoints())
            writer.item(point);
    });
    return Element::saveToStream(stream);
}

std::istream &Polygon::loadFromStream(std::istream &stream)
{
    polygon_.clear();
    loadText(stream, TEXT_VERSION, [this](TextReader &reader) {
        unsigned int count = 0;
        reader.item(count);
        for (unsigned int i = 0; i < count && reader.good(); ++i) {
            BaVec2d<double> point;
            reader.item(point);
            if (reader.good())
                polygon_.addPoint(point);
        }
    });
    return Element::loadFromStream(stream);
}

QString Polygon::getParameterString() const
{
    return Element::getParameterString() + Parse::createVec2dVector(PARAM_POLYGON, polygon_.getPoints());
}

void Polygon::createFromParameterString(QString &parameters)
{
    Element::createFromParameterString(parameters);
    if (!Parse::parameterExists(parameters, PARAM_POLYGON))
        return;
    Polygon2d read(true);
    for (QString const &entry : Parse::getStringVector(parameters, PARAM_POLYGON, MINIMUM_POINTS, ANY_COUNT))
        read.addPoint(pointOf(entry));
    setPolygon(read);
}

} // namespace Zem::Fig2
