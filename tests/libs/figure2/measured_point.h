// measured_point.h: an image label as an application has it, a measured point with a mark, and its creator.
#pragma once

#include <ZemFig2ImageLabel.h>
#include <ZemFig2Painter.h>

#include <ZemHistogramData.h>
#include <ZemLegendData.h>

#include <optional>
#include <string>

namespace Zem::Fig2 {

/// The mark is a circle of radius 1 about the point, drawn once in each of its steps.
class MeasuredPoint : public ImageLabel
{
public:
    explicit MeasuredPoint(ImageLabelCreator::Type_t type = ImageLabelCreator::TYPE_POINT) : ImageLabel(type) {}
    MeasuredPoint(MeasuredPoint const &) = default;

    BaVec3d<double> point = INVALID_POINT;
    int steps = 1;
    bool withLabel = true;
    bool unconnected = false; ///< drawn without a visible connector
    TokenInterface const *further = nullptr; ///< not owned
    DrawingPriority_t priority = DEFAULT_DRAWING_PRIORITY;
    std::optional<Legend2::Data> legendData;
    std::optional<Legend2::HistogramData> histogram;

    Element *copy() const override { return new MeasuredPoint(*this); }
    bool hasLabel() const override { return withLabel; }
    bool getDrawUnconnected() const override { return unconnected; }
    bool intersectsElement(ImageLabelTransformation const &transformation, BaVec2d<double> const &where,
                           Rotation const &rotation) const override
    {
        BaVec2d<double> centre;
        return transformation.computeImagePoint(point, &centre) &&
               (rotation.applyTo(centre) - where).length() <= INTERSECTION_TOLERANCE;
    }
    DrawingPriority_t getDrawingPriority() override { return priority; }
    TokenInterface const *getTokenInterface() const override { return further; }
    BaVec3d<double> computeObjectPoint() const override { return point; }
    bool hasLegendData() const override { return legendData.has_value() || histogram.has_value(); }
    using ImageLabel::getLegendData;
    bool getLegendData(Legend2::Data *data) const override
    {
        if (legendData)
            *data = *legendData;
        return legendData.has_value();
    }
    bool getHistogramData(double, double, Legend2::HistogramData *data) const override
    {
        if (histogram)
            *data = *histogram;
        return histogram.has_value();
    }
    bool drawImageElement(Painter *painter, ImageLabelTransformation const &transformation, Rotation const &rotation,
                          ImageBase const *, int step) const override
    {
        BaVec2d<double> centre;
        if (transformation.computeImagePoint(point, &centre))
            painter->drawEllipse(centre, {1.0, 1.0}, 0.0, LineStyle(), FillStyle::null, rotation);
        return step + 1 >= steps;
    }
};

/// Registered as long as it lives.
class MeasuredPointCreator : public ImageLabelCreator
{
public:
    explicit MeasuredPointCreator(Type_t type = TYPE_POINT) : ImageLabelCreator(type) {}

    ImageLabel *create() const override { return new MeasuredPoint(getType()); }
    QString getDisplayName() const override { return QStringLiteral("measured point"); }
};

} // namespace Zem::Fig2
