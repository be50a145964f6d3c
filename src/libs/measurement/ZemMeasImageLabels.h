// ZemMeasImageLabels.h: the image labels of measured points: what they mark in pictures.
// Used from the thread that owns the figure.
#pragma once

#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2ImageDataVisualisation.h>
#include <ZemFig2ImageLabel.h>
#include <ZemFig2LineStyle.h>

#include <vector>

namespace Zem::Measurement {

/// Marks places of space. A ProjectImageInterface sets them at every update; they are stored with the label, so that a
/// page shows its marks without the project. The connector ends at the first place.
class MeasuredLabel : public Fig2::ImageLabel
{
public:
    static constexpr QLatin1StringView PARAM_MARK_SIZE{"mark_size"};
    static constexpr QLatin1StringView PARAM_MARK_LINE{"mark_line"};

    /// In the unit of the measurement; empty when there is nothing to be marked.
    std::vector<BaVec3d<double>> const &getPlaces() const { return places_; }
    void setPlaces(std::vector<BaVec3d<double>> const &places) { places_ = places; }
    /// Radius of the marks, page millimetres. Setting throws ProgError for a negative one.
    double getMarkSize() const { return markSize_; }
    void setMarkSize(double size);
    Fig2::LineStyle const &getMarkLine() const { return markLine_; }
    void setMarkLine(Fig2::LineStyle const &line);

    /// A mark is hit on its lines and within its circles.
    bool intersectsElement(Fig2::ImageLabelTransformation const &transformation, BaVec2d<double> const &point,
                           Fig2::Rotation const &rotation) const override;
    BaVec3d<double> computeObjectPoint() const override;
    bool drawImageElement(Fig2::Painter *painter, Fig2::ImageLabelTransformation const &transformation,
                          Fig2::Rotation const &rotation, Fig2::ImageBase const *image, int step) const override;
    /// The blocks of the label, then one of the marks and that of their line. load throws IO::StreamException.
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// Without the places: they come with the next update.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;

protected:
    explicit MeasuredLabel(Fig2::ImageLabelCreator::Type_t type);
    MeasuredLabel(MeasuredLabel const &) = default;

    using Points = std::vector<BaVec2d<double>>;

    /// How the mark is drawn of the places that have an image, in page millimetres.
    class Pen;
    virtual void drawMark(Pen const &pen, Points const &points) const = 0;
    /// The lines of the mark, as the points that they join.
    virtual Points outline(Points const &points) const { return points; }

private:
    Points toPage(Fig2::ImageLabelTransformation const &transformation) const;

    std::vector<BaVec3d<double>> places_;
    double markSize_ = 1.2;
    Fig2::LineStyle markLine_;
};

/// A circle with a cross at one point.
class PointLabel : public MeasuredLabel
{
public:
    PointLabel() : MeasuredLabel(Fig2::ImageLabelCreator::TYPE_POINT) {}
    PointLabel *copy() const override { return new PointLabel(*this); }

private:
    void drawMark(Pen const &pen, Points const &points) const override;
};

/// A dot at one point: what is told of it matters, not the mark.
class InfoLabel : public MeasuredLabel
{
public:
    InfoLabel() : MeasuredLabel(Fig2::ImageLabelCreator::TYPE_INFO_LABEL) {}
    InfoLabel *copy() const override { return new InfoLabel(*this); }

private:
    void drawMark(Pen const &pen, Points const &points) const override;
};

/// The way of one point through the stages: the first place is that of the present stage, the others are the way.
class StagePointLabel : public MeasuredLabel
{
public:
    StagePointLabel() : MeasuredLabel(Fig2::ImageLabelCreator::TYPE_STAGE_POINT) {}
    StagePointLabel *copy() const override { return new StagePointLabel(*this); }

private:
    void drawMark(Pen const &pen, Points const &points) const override;
    Points outline(Points const &points) const override;
};

/// A line from one point to another, with a dot at each.
class LineLabel : public MeasuredLabel
{
public:
    LineLabel() : MeasuredLabel(Fig2::ImageLabelCreator::TYPE_LINE) {}
    LineLabel *copy() const override { return new LineLabel(*this); }
    /// The middle of the line.
    BaVec3d<double> computeObjectPoint() const override;

private:
    void drawMark(Pen const &pen, Points const &points) const override;
};

/// Two legs and the arc between them; the vertex is the second of three points.
class AngleLabel : public MeasuredLabel
{
public:
    AngleLabel() : MeasuredLabel(Fig2::ImageLabelCreator::TYPE_ANGLE) {}
    AngleLabel *copy() const override { return new AngleLabel(*this); }
    BaVec3d<double> computeObjectPoint() const override;

private:
    void drawMark(Pen const &pen, Points const &points) const override;
};

/// All vectors of a point set, with a look of their own, in the colours of the image's scale.
class DisplacementFieldLabel : public MeasuredLabel
{
public:
    static constexpr QLatin1StringView PARAM_VISUALISATION{"field"};

    DisplacementFieldLabel() : MeasuredLabel(Fig2::ImageLabelCreator::TYPE_DISPLACEMENT_FIELD) {}
    DisplacementFieldLabel *copy() const override { return new DisplacementFieldLabel(*this); }

    Fig2::ImageDataVisualisation const &getVisualisation() const { return visualisation_; }
    void setVisualisation(Fig2::ImageDataVisualisation const &visualisation);
    /// The vectors, and the values by which they are coloured; empty for their lengths.
    void setField(Fig2::ImageDataPoints const &points, std::vector<double> const &values);

    bool drawImageElement(Fig2::Painter *painter, Fig2::ImageLabelTransformation const &transformation,
                          Fig2::Rotation const &rotation, Fig2::ImageBase const *image, int step) const override;
    bool hasLegendData() const override { return true; }
    using ImageLabel::getLegendData;
    bool getLegendData(Legend2::Data *data) const override;
    bool getHistogramData(double minimum, double maximum, Legend2::HistogramData *histogram) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;

private:
    void drawMark(Pen const &, Points const &) const override {}
    Points outline(Points const &) const override { return {}; }

    Fig2::ImageDataPoints points_;
    std::vector<double> values_;
    Fig2::ImageDataVisualisation visualisation_{false};
};

/// Makes the creators of these labels, unless they are there: figures that hold such labels can be loaded from here on.
/// ImageLabelCreator::destroyCreators deletes them at the end.
void registerImageLabels();

} // namespace Zem::Measurement
