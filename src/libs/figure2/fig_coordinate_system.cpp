#include "ZemFig2CoordinateSystem.h"

#include "ZemFig2Calculator.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Tools.h"
#include "ZemFig2Transformation.h"
#include "fig_motion.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

#include <ZemColorMap.h>
#include <ZemLine2d.h>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 3; // 2: letters; 3: a width in place of three line styles
constexpr unsigned int TEXT_VERSION = 1;

constexpr double SMALLEST_HEAD = 0.3;
constexpr double HEAD_WIDTHS = 5.0;
constexpr double HEAD_ANGLE = 0.3490658503988659; // 20 degrees

/// How far in front of the camera a point lies, by nothing but the composition of motions: what takes the origin to the
/// point and then into the camera has the point's place in the camera as its translation.
double depthOf(BaVec3d<double> const &point, Zem::Transformation motion)
{
    motion.prepend(Zem::Transformation(point, {0.0, 0.0, 0.0}, 1.0));
    return motion.getTranslation().z;
}

BaVec2d<double> directionOf(BaVec2d<double> const &vector)
{
    double const length = vector.length();
    return length > 0.0 ? vector / length : vector;
}

/// From the tip of a vector to the centre of a letter of this size that does not touch it: to where the vector, carried
/// on, leaves a box about the tip, and the larger half side more.
double letterDistance(BaVec2d<double> const &direction, BaVec2d<double> const &size)
{
    double const halfDiagonal = size.length() * 0.5;
    BaVec2d<double> border;
    bool const leaves =
        Rect(size * -0.5, size).intersect(LineSegment2d({0.0, 0.0}, direction * size.length()), &border);
    return (leaves ? border.length() : halfDiagonal) + std::max(size.x, size.y) * 0.5;
}

} // namespace

/// One of the axes.
struct CoordinateSystem::AxisRecord
{
    QString letter;
    Color color;
    BaVec3d<double> end;
    double sortValue = 0.0;
};

/// Drawn one after the other, each axis covers those behind it.
std::array<CoordinateSystem::AxisRecord, 3> CoordinateSystem::sortedAxes(Transformation const &transformation) const
{
    std::array<AxisRecord, 3> axes{AxisRecord{translate("Figure_CoordinateSystem", "x"), Legend2::color_axis_x,
                                              origin_ + BaVec3d(length_, 0.0, 0.0)},
                                   AxisRecord{translate("Figure_CoordinateSystem", "y"), Legend2::color_axis_y,
                                              origin_ + BaVec3d(0.0, length_, 0.0)},
                                   AxisRecord{translate("Figure_CoordinateSystem", "z"), Legend2::color_axis_z,
                                              origin_ + BaVec3d(0.0, 0.0, length_)}};
    Zem::Transformation const motion = motionOf(transformation);
    for (AxisRecord &axis : axes)
        axis.sortValue = -depthOf(axis.end, motion);
    // Without depths the letters keep their order.
    if (std::all_of(axes.begin(), axes.end(), [](AxisRecord const &axis) { return std::isfinite(axis.sortValue); })) {
        std::stable_sort(axes.begin(), axes.end(),
                         [](AxisRecord const &a, AxisRecord const &b) { return a.sortValue < b.sortValue; });
    }
    return axes;
}

void CoordinateSystem::draw(Painter *painter, BaVec2d<double> const &position, double scale, Rect const &clip,
                            Transformation const *transformation, Rotation const &rotation) const
{
    if (!visible_ || !transformation)
        return;
    for (AxisRecord const &axis : sortedAxes(*transformation)) {
        BaVec2d<double> start;
        BaVec2d<double> end;
        if (transformation->computeImagePoints(origin_, axis.end, &start, &end))
            drawVector(painter, position + start * scale, position + end * scale, axis.letter, clip, axis.color,
                       rotation);
    }
}

void CoordinateSystem::drawVector(Painter *painter, BaVec2d<double> const &start, BaVec2d<double> const &end,
                                  QString const &text, Rect const &clip, Color const &color,
                                  Rotation const &rotation) const
{
    if (clip.intersect(LineSegment2d(start, end), nullptr))
        return;
    double const headLength = std::min(std::max(SMALLEST_HEAD, HEAD_WIDTHS * width_), (end - start).length());
    Polygon2d head(true);
    BaVec2d<double> shaftEnd;
    Tools::getArrowHead(end, start, headLength, HEAD_ANGLE, &head, &shaftEnd);
    painter->drawLine(start, shaftEnd, LineStyle(width_, LineStyle::STYLE_FULL, color), rotation);
    painter->drawPolygon(head, LineStyle::null, FillStyle(color), rotation, true);
    if (textVisible_)
        drawLetter(painter, rotation.applyTo(start), rotation.applyTo(end), text, color);
}

void CoordinateSystem::drawLetter(Painter *painter, BaVec2d<double> const &start, BaVec2d<double> const &tip,
                                  QString const &text, Color const &color) const
{
    BaVec2d<double> const size = Calculator::getInstance()->computeTextSize(font_, text);
    BaVec2d<double> const direction = directionOf(tip - start);
    BaVec2d<double> const centre = tip + direction * letterDistance(direction, size);
    painter->drawText(centre - size * 0.5, font_, text, color, Rotation::null);
}

template <class Archive, class Self>
void CoordinateSystem::blockFields(Archive &archive, Self &self)
{
    archive.field(self.origin_);
    archive.field(self.visible_);
    archive.field(self.textVisible_, Since{2}, true);
    archive.field(self.length_);
    archive.field(self.width_, Since{3}, 0.5);
}

void CoordinateSystem::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    Tools::save(stream, font_);
}

void CoordinateSystem::load(IO::InStream *stream)
{
    loadWrapped("Figure_CoordinateSystem_err", "cannot load figure coordinate system: %1", [&] {
        CoordinateSystem read;
        unsigned int const version =
            loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        if (version < 3) {
            // Each axis had its own style; deliberately the last one's width is kept.
            LineStyle style;
            for (int axis = 0; axis < 3; ++axis)
                style.load(stream);
            read.width_ = style.getWidth();
        }
        Tools::load(stream, &read.font_);
        *this = read;
    });
}

template <class Archive, class Self>
void CoordinateSystem::textItems(Archive &archive, Self &self)
{
    archive.item(self.origin_);
    archive.item(self.visible_);
    archive.item(self.textVisible_);
    archive.item(self.length_);
    archive.item(self.width_);
    archive.item(self.font_);
}

std::ostream &operator<<(std::ostream &stream, CoordinateSystem const &system)
{
    return saveText(stream, TEXT_VERSION, [&system](auto &archive) { CoordinateSystem::textItems(archive, system); });
}

std::istream &operator>>(std::istream &stream, CoordinateSystem &system)
{
    return loadRecord(stream, TEXT_VERSION, system,
                      [](auto &archive, CoordinateSystem &read) { CoordinateSystem::textItems(archive, read); });
}

template <class Archive, class Self>
void CoordinateSystem::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_ORIGIN, self.origin_);
    archive.item(PARAM_VISIBLE, self.visible_);
    archive.item(PARAM_TEXT_VISIBLE, self.textVisible_);
    archive.item(PARAM_LENGTH, self.length_);
    archive.item(PARAM_WIDTH, self.width_);
    archive.item(PARAM_FONT, self.font_);
}

QString CoordinateSystem::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    parameterItems(writer, *this);
    return parameters;
}

void CoordinateSystem::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    parameterItems(reader, *this);
}

} // namespace Zem::Fig2
