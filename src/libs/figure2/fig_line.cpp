#include "ZemFig2Line.h"

#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 3; // 2: first point; 3: arrows and symbols
constexpr unsigned int TEXT_VERSION = 1;

constexpr double TOLERANCE = 1e-50;
constexpr double ARROW_LENGTHS_PER_WIDTH = 10.0;
constexpr double MINIMUM_ARROW_LENGTH = 0.3;
constexpr double ARROW_ANGLE = 0.3490658503988659; ///< 20 degrees
constexpr double ARROW_OUTLINE_WIDTHS = 3.0;
constexpr double HIT_DISTANCE = 2.0;
constexpr double SHORT_LINE = 0.1; ///< below this length a line is hit like a point
constexpr double RIGHT_ANGLE = 1.5707963267948966;

void addSquare(BaVec2d<double> const &centre, double halfEdge, Polygon2d *outline)
{
    outline->addPoint({centre.x - halfEdge, centre.y - halfEdge});
    outline->addPoint({centre.x + halfEdge, centre.y - halfEdge});
    outline->addPoint({centre.x + halfEdge, centre.y + halfEdge});
    outline->addPoint({centre.x - halfEdge, centre.y + halfEdge});
}

BaVec2d<double> unitVector(BaVec2d<double> const &vector)
{
    double const length = vector.length();
    return length < TOLERANCE ? BaVec2d<double>(0.0, 0.0) : vector * (1.0 / length);
}

} // namespace

Line::Line() : Element(LINE)
{
}

void Line::setPoint1(BaVec2d<double> const &point)
{
    point1_ = point;
    Element::setOrigin(point);
}

void Line::setPoint2(BaVec2d<double> const &point)
{
    point2_ = point;
    invalidate();
}

void Line::setArrowInfo(std::pair<bool, bool> const &arrows)
{
    arrows_ = arrows;
    invalidate();
}

void Line::setSymbolInfo(std::pair<Symbol, Symbol> const &symbols)
{
    symbols_ = symbols;
    invalidate();
}

Element *Line::copy() const
{
    return new Line(*this);
}

unsigned int Line::getEstimatedObjectSize() const
{
    return Element::getEstimatedObjectSize() + static_cast<unsigned int>(sizeof(Line) - sizeof(Element));
}

bool Line::isTokenUsed(QString const &) const
{
    return false;
}

bool Line::isDataValid(StageIdentifier const &, FigureTokenInterface const *) const
{
    return true;
}

void Line::setOrigin(BaVec2d<double> const &origin)
{
    BaVec2d<double> const delta = origin - getOrigin();
    point1_ = origin;
    point2_ += delta;
    Element::setOrigin(origin);
}

void Line::setAlignmentOrigin(BaVec2d<double> const &point)
{
    setOrigin(point);
}

BaVec2d<double> Line::getAlignmentOrigin() const
{
    return getOrigin();
}

Polygon2d Line::computeArrow(End end, BaVec2d<double> *base) const
{
    double length = ARROW_LENGTHS_PER_WIDTH * getBorder().getWidth();
    if (length < MINIMUM_ARROW_LENGTH)
        length = MINIMUM_ARROW_LENGTH;
    else
        length = std::min(length, (point2_ - point1_).length());
    Polygon2d arrow(true);
    BaVec2d<double> arrowBase;
    Tools::getArrowHead(pointAt(end), pointAt(end == FIRST_END ? SECOND_END : FIRST_END), length, ARROW_ANGLE, &arrow,
                        &arrowBase);
    if (base)
        *base = arrowBase;
    return arrow;
}

bool Line::draw(FigureTokenInterface const *, Painter *painter, int step) const
{
    if (step != 0)
        return true;
    FillStyle const fill(getBorder().getColor());
    LineStyle const edge(0.0, LineStyle::STYLE_NONE, getBorder().getColor());
    Rotation const rotation(this);
    for (End end : {FIRST_END, SECOND_END}) {
        if (symbolAt(end).getType() != Symbol::TYPE_NONE && !hasArrow(end))
            painter->drawSymbol(pointAt(end), symbolAt(end), edge, fill, rotation);
    }
    // The line itself stops inside the arrow heads.
    BaVec2d<double> ends[2] = {point1_, point2_};
    for (End end : {FIRST_END, SECOND_END}) {
        if (hasArrow(end))
            painter->drawPolygon(computeArrow(end, &ends[end]), edge, fill, rotation, true);
    }
    painter->drawLine(ends[0], ends[1], getBorder(), rotation);
    return true;
}

void Line::addEndOutline(End end, Polygon2d *outline) const
{
    if (hasArrow(end)) {
        Polygon2d const arrow = computeArrow(end, nullptr);
        for (BaVec2d<double> const &point : arrow.getPoints())
            addSquare(point, ARROW_OUTLINE_WIDTHS * getBorder().getWidth(), outline);
    } else if (symbolAt(end).getType() != Symbol::TYPE_NONE) {
        addSquare(pointAt(end), symbolAt(end).getSize(), outline);
    }
}

Polygon2d Line::computeCoveredPolygon(bool includeBorder) const
{
    bool const widened = includeBorder && getBorder().getStyle() != LineStyle::STYLE_NONE;
    double const half = widened ? getBorder().getWidth() / 2.0 : 0.0;
    BaVec2d<double> const u = unitVector(point2_ - point1_);
    BaVec2d<double> const n = BaVec2d<double>(u.y, -u.x) * half;
    Polygon2d outline({point1_ + n, point1_ - n, point2_ - n, point2_ + n}, true);
    if (includeBorder) {
        addEndOutline(FIRST_END, &outline);
        addEndOutline(SECOND_END, &outline);
    }
    outline.rotate(getOrigin(), getAngle());
    return outline;
}

void Line::computeDynamicData(StageIdentifier const &, FigureTokenInterface const *)
{
    dragPolygon_ = computeCoveredPolygon(false);
    coveredPolygon_ = computeCoveredPolygon(true);
    updatePolygon_ = coveredPolygon_;
}

bool Line::dragPointMove(int index, BaVec2d<double> const &position)
{
    if (index == 0 || index == 1) {
        BaVec2d<double> const place = Rotation(this).applyTo(point2_);
        setPoint1(position);
        point2_ = Rotation(this).removeFrom(place);
        invalidate();
    } else if (index == 2 || index == 3) {
        setPoint2(Rotation(this).removeFrom(position));
    }
    return true;
}

bool Line::isPointIn(BaVec2d<double> const &point) const
{
    BaVec2d<double> const along = point2_ - point1_;
    if (along.length() < SHORT_LINE)
        return (point - point1_).length() < HIT_DISTANCE;
    BaVec2d<double> const n = Tools::rotateVector(unitVector(along) * HIT_DISTANCE, RIGHT_ANGLE);
    Polygon2d strip({point1_ - n, point1_ + n, point2_ + n, point2_ - n}, true);
    strip.rotate(getOrigin(), getAngle());
    return strip.isInPolygon(point);
}

template <class Archive, class Self>
void Line::blockFields(Archive &archive, Self &self)
{
    if constexpr (Archive::isReader) {
        // Version 1 held one point only; the other was the origin.
        if (archive.version() == 1)
            self.point1_ = self.getOrigin();
    }
    archive.keep(self.point1_, Since{2});
    archive.field(self.point2_);
    archive.field(self.arrows_.first, Since{3}, false);
    archive.field(self.arrows_.second, Since{3}, false);
}

void Line::save(IO::OutStream *stream, int a, int b) const
{
    Element::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    symbols_.first.save(stream);
    symbols_.second.save(stream);
}

void Line::load(IO::InStream *stream, int a, int b)
{
    loadWrapped("Figure_Line_err", "cannot load figure line: %1", [&] {
        Element::load(stream, a, b);
        stream->openBlock();
        unsigned int const version = stream->getBlockVersion();
        if (version > BLOCK_VERSION)
            throwWrongBlockVersion();
        if (version < 1)
            throw IO::StreamException(translate("Figure_Line_err", "invalid block version"));
        BlockReader reader(stream, version);
        blockFields(reader, *this);
        stream->closeBlock();
        Element::setOrigin(point1_);
        if (version < 3)
            return;
        symbols_.first.load(stream);
        symbols_.second.load(stream);
    });
}

template <class Archive, class Self>
void Line::textItems(Archive &archive, Self &self)
{
    archive.item(self.point1_);
    archive.item(self.point2_);
    archive.item(self.arrows_.first);
    archive.item(self.arrows_.second);
    archive.record(self.symbols_.first);
    archive.record(self.symbols_.second);
}

std::ostream &Line::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return Element::saveToStream(stream);
}

std::istream &Line::loadFromStream(std::istream &stream)
{
    loadText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return Element::loadFromStream(stream);
}

template <class Archive, class Self>
void Line::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_POINT2, self.point2_);
    archive.item(PARAM_ARROW_1, self.arrows_.first);
    archive.item(PARAM_ARROW_2, self.arrows_.second);
    archive.record(PARAM_SYMBOL_1, self.symbols_.first);
    archive.record(PARAM_SYMBOL_2, self.symbols_.second);
}

QString Line::getParameterString() const
{
    QString parameters = Element::getParameterString();
    ParameterWriter writer(parameters);
    writer.item(PARAM_POINT1, point1_);
    parameterItems(writer, *this);
    return parameters;
}

void Line::createFromParameterString(QString &parameters)
{
    ParameterReader reader(parameters);
    if (reader.exists(PARAM_POINT1)) {
        reader.item(PARAM_POINT1, point1_);
        Element::setOrigin(point1_);
    }
    parameterItems(reader, *this);
    if (reader.exists(PARAM_ORIGIN)) {
        BaVec2d<double> origin;
        reader.item(PARAM_ORIGIN, origin);
        setOrigin(origin);
    }
    Element::createFromParameterString(parameters);
}

} // namespace Zem::Fig2
