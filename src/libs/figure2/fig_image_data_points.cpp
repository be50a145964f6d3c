#include "ZemFig2ImageDataPoints.h"

#include "ZemFig2Painter.h"
#include "ZemFig2Transformation.h"
#include "fig_block.h"
#include "fig_image_arrow.h"

#include <ZemLegendHandler.h>
#include <ZemLine2d.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 2; // 2: visibility and mask
constexpr double NO_LENGTH = 1e-50;

using Axis3d = double BaVec3d<double>::*;

/// The axes of a vector that a mode shows, in the order of the component numbers.
struct ShownAxes
{
    int count;
    std::array<Axis3d, 3> axes;

    /// Null for all of them in one.
    Axis3d single(int component) const
    {
        if (count == 1)
            return axes[0];
        return component >= 0 && component < count ? axes[static_cast<std::size_t>(component)] : nullptr;
    }
};

ShownAxes const &axesOf(ImageDataVisualisation const &visualisation)
{
    constexpr Axis3d X = &BaVec3d<double>::x;
    constexpr Axis3d Y = &BaVec3d<double>::y;
    constexpr Axis3d Z = &BaVec3d<double>::z;
    static constexpr std::array<ShownAxes, 7> AXES{
        {{1, {X}}, {1, {Y}}, {1, {Z}}, {2, {X, Y}}, {2, {Y, Z}}, {2, {X, Z}}, {3, {X, Y, Z}}}};
    return AXES[visualisation.getMode()];
}

} // namespace

void ImageDataPoints::addPoint(int id, BaVec3d<double> const &point, BaVec3d<double> const &vector, double value,
                               bool visible, int mask)
{
    points_.push_back({id, point, vector, value, visible, mask});
}

bool ImageDataPoints::computeDirection(ImageDataVisualisation const &visualisation, unsigned int index, int component,
                                       BaVec3d<double> *direction) const
{
    BaVec3d<double> const &vector = points_[index].vector;
    ShownAxes const &shown = axesOf(visualisation);
    *direction = {0.0, 0.0, 0.0};
    if (Axis3d const axis = shown.single(component)) {
        direction->*axis = vector.*axis;
        return shown.count > 1 && component + 1 < shown.count;
    }
    for (int i = 0; i < shown.count; ++i) {
        Axis3d const axis = shown.single(i);
        direction->*axis = vector.*axis;
    }
    return false;
}

double ImageDataPoints::getValue(BaVec3d<double> const &direction, ImageDataVisualisation const &visualisation,
                                 int component)
{
    Axis3d const axis = axesOf(visualisation).single(component);
    return axis ? direction.*axis : std::sqrt(direction.dot(direction));
}

bool ImageDataPoints::computeImagePoints(BaVec2d<double> const &origin, double scale,
                                         ImageDataVisualisation const &visualisation,
                                         Transformation const *transformation, unsigned int index, int component,
                                         BaVec2d<double> *start, BaVec2d<double> *end, BaVec3d<double> *direction) const
{
    bool const further = computeDirection(visualisation, index, component, direction);
    BaVec3d<double> const &point = points_[index].point;
    BaVec2d<double> a;
    BaVec2d<double> b;
    if (transformation && transformation->computeImagePoints(point, point + *direction, &a, &b)) {
        *start = origin + a * scale;
        *end = origin + (a + (b - a) * visualisation.getVectorScaling()) * scale;
    } else {
        *start = {INVALID_VALUE, INVALID_VALUE};
    }
    return further;
}

ImageDataPoints *ImageDataPoints::copy() const
{
    return new ImageDataPoints(*this);
}

void ImageDataPoints::scale(double)
{
}

unsigned int ImageDataPoints::getNumberOfDrawSteps() const
{
    return static_cast<unsigned int>((points_.size() + VECTORS_PER_DRAW_STEP - 1) / VECTORS_PER_DRAW_STEP);
}

/// What all points of a step have in common. There may be very many: nothing is made anew for each.
class ImageDataPoints::Drawing
{
public:
    Drawing(ImageDataPoints const &points, Painter *painter, ImagePlacement const &placement, Rect const &clip,
            Legend2::LegendHandler const *legend, ImageDataVisualisation const &visualisation,
            Transformation const *transformation)
        : points_(points), painter_(painter), placement_(placement), clip_(clip), legend_(legend),
          visualisation_(visualisation), transformation_(transformation),
          oneColour_(visualisation.getDrawCombinedVectors() || axesOf(visualisation).count == 1),
          line_(visualisation.getVectorLineWidth(), LineStyle::STYLE_FULL, Color(0, 0, 0)), fill_(Color(0, 0, 0))
    {
    }

    void draw(unsigned int index)
    {
        Vector vector{index, visualisation_.getDrawCombinedVectors() ? COMBINED : 0, {}, {}, {}};
        bool markerDrawn = false;
        for (bool further = true; further; ++vector.component) {
            further =
                points_.computeImagePoints(placement_.origin, placement_.scale, visualisation_, transformation_, index,
                                           vector.component, &vector.start, &vector.end, &vector.direction);
            if (!isInside(vector.start))
                continue;
            takeColour(vector);
            if (!markerDrawn)
                drawMarker(vector);
            markerDrawn = true;
            drawVector(vector);
        }
    }

private:
    struct Vector
    {
        unsigned int index;
        int component;
        BaVec2d<double> start;
        BaVec2d<double> end;
        BaVec3d<double> direction;
    };

    bool isInside(BaVec2d<double> const &start) const
    {
        return start.x != INVALID_VALUE && start.y != INVALID_VALUE && clip_.intersects(start);
    }

    void takeColour(Vector const &vector)
    {
        Color colour = visualisation_.getLineStyle().getColor();
        if (legend_) {
            double const own = points_.points_[vector.index].value;
            double const value =
                own != INVALID_VALUE ? own : getValue(vector.direction, visualisation_, vector.component);
            colour = legend_->getColor(value, Color(0, 0, 0));
        }
        line_.setColor(colour);
        fill_.setColor(colour);
    }

    void drawMarker(Vector const &vector)
    {
        double const radius = visualisation_.getVectorLineWidth() * 0.5;
        painter_->drawEllipse(vector.start, {radius, radius}, 0.0, LineStyle::null, fill_, placement_.rotation);
        if (!visualisation_.getDrawPointIds())
            return;
        bool const asVector = !visualisation_.getUseFixedPointIdColor() && oneColour_;
        painter_->drawText(vector.start + BaVec2d<double>(radius, radius), visualisation_.getPointIdFont(),
                           QString::number(points_.points_[vector.index].id),
                           asVector ? line_.getColor() : visualisation_.getPointIdColor(), placement_.rotation);
    }

    void drawVector(Vector const &vector)
    {
        BaVec2d<double> end = vector.end;
        bool const clipped = clip_.intersect(LineSegment2d(vector.start, vector.end), &end);
        double const length = (end - vector.start).length();
        if (!(length > NO_LENGTH) || !std::isfinite(length))
            return;
        if (!clipped)
            end = drawArrowHead(painter_, end, vector.start, arrowHeadLength(line_.getWidth(), length), fill_,
                                placement_.rotation, &head_);
        painter_->drawLine(vector.start, end, line_, placement_.rotation);
    }

    ImageDataPoints const &points_;
    Painter *painter_;
    ImagePlacement placement_;
    Rect const &clip_;
    Legend2::LegendHandler const *legend_;
    ImageDataVisualisation const &visualisation_;
    Transformation const *transformation_;
    bool oneColour_;
    LineStyle line_;
    FillStyle fill_;
    Polygon2d head_{true};
};

void ImageDataPoints::draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &clip,
                           Legend2::LegendHandler const *legend, Rotation const &rotation,
                           ImageDataVisualisation const &visualisation, Transformation const *transformation,
                           unsigned int step) const
{
    if (!transformation)
        return;
    Drawing drawing(*this, painter, ImagePlacement{origin, scale, rotation}, clip, legend, visualisation,
                    transformation);
    int const mask = visualisation.getPointMask();
    std::size_t const first = std::size_t{step} * VECTORS_PER_DRAW_STEP;
    std::size_t const end = std::min(first + VECTORS_PER_DRAW_STEP, points_.size());
    for (std::size_t i = first; i < end; ++i) {
        Point const &point = points_[i];
        bool const shown = point.visible || visualisation.getDrawHiddenPoints();
        if (shown && (mask == -1 || (point.mask & mask) != 0))
            drawing.draw(static_cast<unsigned int>(i));
    }
}

template <class Archive, class Points>
void ImageDataPoints::blockFields(Archive &archive, Points &points)
{
    auto count = static_cast<unsigned int>(points.size());
    archive.field(count);
    // No room is made for the count: a wrong one ends at the end of the block.
    for (unsigned int i = 0; i < count; ++i) {
        if constexpr (Archive::isReader)
            points.emplace_back();
        auto &point = points[i];
        archive.field(point.id);
        archive.field(point.point);
        archive.field(point.vector);
        archive.field(point.value);
        archive.field(point.visible, Since{2}, true);
        archive.field(point.mask, Since{2}, -1);
    }
}

void ImageDataPoints::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, points_); });
}

void ImageDataPoints::load(IO::InStream *stream)
{
    ImageDataPoints read;
    read.ImageDataElement::load(stream);
    loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read.points_); });
    *this = std::move(read);
}

} // namespace Zem::Fig2
