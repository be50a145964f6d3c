#include <ZemMeasImageLabels.h>

#include "meas_statistics.h"

#include <ZemFig2Image.h>
#include <ZemFig2Painter.h>
#include <ZemLegendHandler.h>
#include <ZemParse.h>
#include <ZemStream.h>
#include <ZemTranslate.h>

#include <algorithm>
#include <cmath>
#include <istream>
#include <numbers>
#include <ostream>

namespace Zem::Measurement {

using namespace Fig2;

namespace {

constexpr unsigned int MARK_BLOCK_VERSION = 1;
constexpr unsigned int PLACE_BYTES = 24;
constexpr double CROSS_ARMS = 0.5; // in radii of the mark
constexpr double DOT = 0.4;

double distanceToSegment(BaVec2d<double> const &p, BaVec2d<double> const &a, BaVec2d<double> const &b)
{
    BaVec2d<double> const d = b - a;
    double const squared = d.x * d.x + d.y * d.y;
    double const share = squared > 0.0 ? std::clamp(((p.x - a.x) * d.x + (p.y - a.y) * d.y) / squared, 0.0, 1.0) : 0.0;
    return (p - (a + d * share)).length();
}

bool isSize(double value)
{
    return value >= 0.0 && std::isfinite(value);
}

} // namespace

/// Draws the parts of a mark.
class MeasuredLabel::Pen
{
public:
    Pen(Painter *painter, LineStyle const &line, double radius, Rotation const &rotation)
        : painter_(painter), line_(line), radius_(radius), rotation_(rotation)
    {
    }

    void circle(BaVec2d<double> const &p) const
    {
        painter_->drawEllipse(p, {radius_, radius_}, 0.0, line_, FillStyle::null, rotation_);
    }

    void cross(BaVec2d<double> const &p) const
    {
        double const arm = radius_ * CROSS_ARMS;
        line({p.x - arm, p.y}, {p.x + arm, p.y});
        line({p.x, p.y - arm}, {p.x, p.y + arm});
    }

    void dot(BaVec2d<double> const &p) const
    {
        double const r = radius_ * DOT;
        painter_->drawEllipse(p, {r, r}, 0.0, LineStyle::null, FillStyle(line_.getColor()), rotation_);
    }

    void line(BaVec2d<double> const &a, BaVec2d<double> const &b) const { painter_->drawLine(a, b, line_, rotation_); }

    void polyline(Points const &points) const
    {
        painter_->drawPolygon(Polygon2d(points, true), line_, FillStyle::null, rotation_, false);
    }

private:
    Painter *painter_;
    LineStyle line_;
    double radius_;
    Rotation rotation_;
};

MeasuredLabel::MeasuredLabel(ImageLabelCreator::Type_t type)
    : ImageLabel(type), markLine_(0.3, LineStyle::STYLE_FULL, Color(220, 40, 40))
{
}

void MeasuredLabel::setMarkSize(double size)
{
    if (!isSize(size)) {
        throw ProgError("Invalid mark size", true);
    }
    markSize_ = size;
    invalidate();
}

void MeasuredLabel::setMarkLine(LineStyle const &line)
{
    markLine_ = line;
    invalidate();
}

MeasuredLabel::Points MeasuredLabel::toPage(ImageLabelTransformation const &transformation) const
{
    Points points;
    for (BaVec3d<double> const &place : places_) {
        BaVec2d<double> point;
        if (transformation.computeImagePoint(place, &point)) {
            points.push_back(point);
        }
    }
    return points;
}

bool MeasuredLabel::intersectsElement(ImageLabelTransformation const &transformation, BaVec2d<double> const &point,
                                      Rotation const &rotation) const
{
    BaVec2d<double> const p = rotation.removeFrom(point);
    Points const points = toPage(transformation);
    for (BaVec2d<double> const &center : points) {
        if ((p - center).length() <= markSize_ + INTERSECTION_TOLERANCE) {
            return true;
        }
    }
    Points const lines = outline(points);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (distanceToSegment(p, lines[i - 1], lines[i]) <= INTERSECTION_TOLERANCE) {
            return true;
        }
    }
    return false;
}

BaVec3d<double> MeasuredLabel::computeObjectPoint() const
{
    return places_.empty() ? INVALID_POINT : places_.front();
}

bool MeasuredLabel::drawImageElement(Painter *painter, ImageLabelTransformation const &transformation,
                                     Rotation const &rotation, ImageBase const *, int) const
{
    LineStyle line = markLine_;
    if (getHighlighted()) {
        line.setColor(HIGHLIGHTED_COLOR);
    }
    drawMark(Pen(painter, line, markSize_, rotation), toPage(transformation));
    return true;
}

void MeasuredLabel::save(IO::OutStream *stream, int a, int b) const
{
    ImageLabel::save(stream, a, b);
    auto const count = static_cast<unsigned int>(places_.size());
    stream->beginBlock(8 + 4 + PLACE_BYTES * count, MARK_BLOCK_VERSION);
    stream->writeDouble(markSize_);
    stream->writeUInt(count);
    for (BaVec3d<double> const &place : places_) {
        IO::writeVec3d(stream, place);
    }
    stream->endBlock();
    markLine_.save(stream);
}

void MeasuredLabel::load(IO::InStream *stream, int a, int b)
{
    ImageLabel::load(stream, a, b);
    stream->openBlock();
    if (stream->getBlockVersion() != MARK_BLOCK_VERSION) {
        throw IO::StreamException(translate("Fig_BlockVersion_Error", "wrong block version"));
    }
    double size = 0.0;
    stream->readDouble(&size);
    if (!isSize(size)) {
        throw IO::StreamException(translate("Meas_ImageLabel", "a mark has no size"));
    }
    unsigned int count = 0;
    stream->readUInt(&count);
    std::vector<BaVec3d<double>> places;
    for (unsigned int i = 0; i < count; ++i) { // a count that the block does not hold costs no memory
        BaVec3d<double> place;
        IO::readVec3d(stream, &place);
        places.push_back(place);
    }
    stream->closeBlock();
    markSize_ = size;
    places_ = std::move(places);
    markLine_.load(stream);
}

QString MeasuredLabel::getParameterString() const
{
    return ImageLabel::getParameterString() + Parse::createDouble(PARAM_MARK_SIZE, markSize_) +
           markLine_.getParameterString(PARAM_MARK_LINE);
}

void MeasuredLabel::createFromParameterString(QString &parameters)
{
    ImageLabel::createFromParameterString(parameters);
    if (Parse::parameterExists(parameters, PARAM_MARK_SIZE)) {
        markSize_ = Parse::getDouble(parameters, PARAM_MARK_SIZE, 0.0, std::numeric_limits<double>::max());
    }
    markLine_.createFromParameterString(parameters, PARAM_MARK_LINE);
}

std::ostream &MeasuredLabel::saveToStream(std::ostream &stream) const
{
    ImageLabel::saveToStream(stream);
    QString const size = QString::number(markSize_, 'g', 17); // whatever locale the stream has
    return stream << size.toStdString() << ' ' << markLine_;
}

std::istream &MeasuredLabel::loadFromStream(std::istream &stream)
{
    ImageLabel::loadFromStream(stream);
    std::string size;
    stream >> size;
    bool isNumber = false;
    double const number = QString::fromStdString(size).toDouble(&isNumber);
    if (!isNumber || !isSize(number)) {
        throw IO::StreamException(QStringLiteral("'%1' is no size of a mark").arg(QString::fromStdString(size)));
    }
    markSize_ = number;
    return stream >> markLine_;
}

void PointLabel::drawMark(Pen const &pen, Points const &points) const
{
    for (BaVec2d<double> const &point : points) {
        pen.circle(point);
        pen.cross(point);
    }
}

void InfoLabel::drawMark(Pen const &pen, Points const &points) const
{
    for (BaVec2d<double> const &point : points) {
        pen.dot(point);
    }
}

StagePointLabel::Points StagePointLabel::outline(Points const &points) const
{
    return points.empty() ? points : Points(points.begin() + 1, points.end());
}

void StagePointLabel::drawMark(Pen const &pen, Points const &points) const
{
    Points const way = outline(points);
    if (way.size() > 1) {
        pen.polyline(way);
    }
    std::for_each(way.begin(), way.end(), [&](BaVec2d<double> const &point) { pen.dot(point); });
    if (!points.empty()) {
        pen.circle(points.front());
    }
}

BaVec3d<double> LineLabel::computeObjectPoint() const
{
    return getPlaces().size() == 2 ? (getPlaces()[0] + getPlaces()[1]) * 0.5 : INVALID_POINT;
}

void LineLabel::drawMark(Pen const &pen, Points const &points) const
{
    if (points.size() != 2) {
        return; // one of its ends has no image
    }
    pen.line(points[0], points[1]);
    pen.dot(points[0]);
    pen.dot(points[1]);
}

BaVec3d<double> AngleLabel::computeObjectPoint() const
{
    return getPlaces().size() == 3 ? getPlaces()[1] : INVALID_POINT;
}

void AngleLabel::drawMark(Pen const &pen, Points const &points) const
{
    constexpr int ARC_STEPS = 24;
    constexpr double ARC_SHARE = 0.4; // of the shorter leg
    if (points.size() != 3) {
        return;
    }
    pen.polyline(points);
    BaVec2d<double> const a = points[0] - points[1];
    BaVec2d<double> const b = points[2] - points[1];
    double const radius = std::min(a.length(), b.length()) * ARC_SHARE;
    double const start = std::atan2(a.y, a.x);
    double const sweep = std::remainder(std::atan2(b.y, b.x) - start, 2.0 * std::numbers::pi);
    Points arc;
    for (int i = 0; i <= ARC_STEPS; ++i) {
        double const angle = start + sweep * i / ARC_STEPS;
        arc.push_back(points[1] + BaVec2d<double>{std::cos(angle), std::sin(angle)} * radius);
    }
    pen.polyline(arc);
}

void DisplacementFieldLabel::setVisualisation(ImageDataVisualisation const &visualisation)
{
    visualisation_ = visualisation;
    invalidate();
}

void DisplacementFieldLabel::setField(ImageDataPoints const &points, std::vector<double> const &values)
{
    points_ = points;
    values_ = values;
}

bool DisplacementFieldLabel::drawImageElement(Painter *painter, ImageLabelTransformation const &transformation,
                                              Rotation const &rotation, ImageBase const *image, int step) const
{
    Legend2::LegendHandler const colors(&image->getComputedLegend(), &image->getComputedLegendData());
    Rect const clip(image->computeImageDrawingOrigin(), image->computeImageDrawingSize());
    auto const index = static_cast<unsigned int>(step);
    // The transformation gives places of the page already.
    points_.draw(painter, {0.0, 0.0}, 1.0, clip, &colors, rotation, visualisation_, &transformation, index);
    return index + 1 >= points_.getNumberOfDrawSteps();
}

bool DisplacementFieldLabel::getLegendData(Legend2::Data *data) const
{
    if (values_.empty()) {
        return false;
    }
    *data = statisticsOf(values_);
    return true;
}

bool DisplacementFieldLabel::getHistogramData(double minimum, double maximum, Legend2::HistogramData *histogram) const
{
    constexpr int INTERVALS = 10;
    double const step = (maximum - minimum) / INTERVALS;
    bool const isRange = step > 0.0 && std::isfinite(step);
    std::map<double, unsigned int> counts;
    for (double const value : values_) {
        if (isRange && value >= minimum && value <= maximum) {
            int const interval = std::min(static_cast<int>((value - minimum) / step), INTERVALS - 1);
            ++counts[minimum + (interval + 0.5) * step];
        }
    }
    histogram->clear();
    return !counts.empty() && histogram->addHistogram(counts);
}

void DisplacementFieldLabel::save(IO::OutStream *stream, int a, int b) const
{
    MeasuredLabel::save(stream, a, b);
    visualisation_.save(stream);
    points_.save(stream);
}

void DisplacementFieldLabel::load(IO::InStream *stream, int a, int b)
{
    MeasuredLabel::load(stream, a, b);
    visualisation_.load(stream);
    points_.load(stream);
}

QString DisplacementFieldLabel::getParameterString() const
{
    return MeasuredLabel::getParameterString() + visualisation_.getParameterString(PARAM_VISUALISATION);
}

void DisplacementFieldLabel::createFromParameterString(QString &parameters)
{
    MeasuredLabel::createFromParameterString(parameters);
    visualisation_.createFromParameterString(parameters, PARAM_VISUALISATION);
}

namespace {

template <class Label>
class Creator : public ImageLabelCreator
{
public:
    Creator(Type_t type, char const *name) : ImageLabelCreator(type), name_(name) {}

    ImageLabel *create() const override { return new Label; }
    QString getDisplayName() const override { return translate("Meas_ImageLabel", name_); }

private:
    char const *name_;
};

template <class Label>
void registerCreator(ImageLabelCreator::Type_t type, char const *name)
{
    if (!ImageLabelCreator::getCreators().contains(type)) {
        new Creator<Label>(type, name); // the registry keeps it
    }
}

} // namespace

void registerImageLabels()
{
    registerCreator<PointLabel>(ImageLabelCreator::TYPE_POINT, "point");
    registerCreator<LineLabel>(ImageLabelCreator::TYPE_LINE, "line");
    registerCreator<AngleLabel>(ImageLabelCreator::TYPE_ANGLE, "angle");
    registerCreator<DisplacementFieldLabel>(ImageLabelCreator::TYPE_DISPLACEMENT_FIELD, "displacement field");
    registerCreator<InfoLabel>(ImageLabelCreator::TYPE_INFO_LABEL, "info label");
    registerCreator<StagePointLabel>(ImageLabelCreator::TYPE_STAGE_POINT, "stage point");
}

} // namespace Zem::Measurement
