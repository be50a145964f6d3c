// ZemFig2ImageDataShapes.h: the marks on a picture that look as its visualisation says, and the bases of all marks.
// Layer: painting. Distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2ImageDataElement.h"

#include <ZemFont.h>
#include <ZemPolygon2d.h>

#include <QtCore/QString>

#include <numbers>

namespace Zem::Fig2 {

/// A cross.
class ImageDataPointMarker : public ImageDataShape
{
public:
    /// Half the length of the cross, picture pixels.
    static constexpr double DEFAULT_POINT_MARKER_SIZE = 20.0;

    ImageDataPointMarker() : ImageDataPointMarker({0.0, 0.0}) {}
    explicit ImageDataPointMarker(BaVec2d<double> const &position)
        : ImageDataShape(TYPE_POINT_MARKER), position_(position)
    {
    }

    ImageDataPointMarker *copy() const override;
    void scale(double factor) override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    BaVec2d<double> const &getPosition() const { return position_; }

private:
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    BaVec2d<double> position_;
};

/// What lines have in common: a start and the way to the end.
class ImageDataLineBase : public ImageDataShape
{
public:
    void scale(double factor) override;

    BaVec2d<double> const &getStart() const { return start_; }
    BaVec2d<double> const &getDelta() const { return delta_; }

protected:
    ImageDataLineBase(Type_t type, BaVec2d<double> const &start, BaVec2d<double> const &delta)
        : ImageDataShape(type), start_(start), delta_(delta)
    {
    }
    template <class Archive, class Self>
    static void lineFields(Archive &archive, Self &self)
    {
        archive.field(self.start_);
        archive.field(self.delta_);
    }

private:
    BaVec2d<double> start_;
    BaVec2d<double> delta_;
};

/// A line with arrows at the ends of its choice, as long as the visualisation wants arrows at all.
class ImageDataLine : public ImageDataLineBase
{
public:
    using ArrowMode_t = ImageDataVisualisation::ArrowMode_t;

    ImageDataLine() : ImageDataLine({0.0, 0.0}, {0.0, 0.0}) {}
    /// Arrows at both ends; the end is at `start` plus `delta`.
    ImageDataLine(BaVec2d<double> const &start, BaVec2d<double> const &delta)
        : ImageDataLineBase(TYPE_LINE, start, delta)
    {
    }

    ImageDataLine *copy() const override;
    bool hasArrows() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    ArrowMode_t getUseArrows() const { return arrows_; }
    void setUseArrows(ArrowMode_t arrows) { arrows_ = arrows; }

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    ArrowMode_t arrows_ = ImageDataVisualisation::ARROW_BOTH;
};

/// What ellipses have in common. Angles are radians in the sense of Rotation.
class ImageDataEllipseBase : public ImageDataShape
{
public:
    static constexpr BaVec2d<double> FULL{0.0, 2.0 * std::numbers::pi};

    void scale(double factor) override;

    BaVec2d<double> const &getCenter() const { return center_; }
    BaVec2d<double> const &getRadii() const { return radii_; }
    /// The angles at which the arc begins and ends; FULL is a whole ellipse.
    BaVec2d<double> const &getSegment() const { return segment_; }
    void setSegment(BaVec2d<double> const &segment) { segment_ = segment; }
    /// The turn of the ellipse about its centre.
    double getAngle() const { return angle_; }
    void setAngle(double angle) { angle_ = angle; }

protected:
    ImageDataEllipseBase(Type_t type, BaVec2d<double> const &center, BaVec2d<double> const &radii)
        : ImageDataShape(type), center_(center), radii_(radii)
    {
    }
    /// Segment and angle came with different versions of each kind.
    template <class Archive, class Self, class Version>
    static void ellipseFields(Archive &archive, Self &self, Version segmentSince, Version angleSince)
    {
        archive.field(self.center_);
        archive.field(self.radii_);
        archive.field(self.segment_, segmentSince, FULL);
        archive.field(self.angle_, angleSince, 0.0);
    }
    void drawEllipse(Painter *painter, ImagePlacement const &placement, LineStyle const &line,
                     FillStyle const &fill) const;

private:
    BaVec2d<double> center_;
    BaVec2d<double> radii_;
    BaVec2d<double> segment_ = FULL;
    double angle_ = 0.0;
};

/// An ellipse or an arc, not filled.
class ImageDataEllipse : public ImageDataEllipseBase
{
public:
    ImageDataEllipse() : ImageDataEllipse({0.0, 0.0}, {0.0, 0.0}) {}
    ImageDataEllipse(BaVec2d<double> const &center, BaVec2d<double> const &radii)
        : ImageDataEllipseBase(TYPE_ELLIPSE, center, radii)
    {
    }

    ImageDataEllipse *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;
};

/// What texts have in common. The size of the font is in points at one millimetre to a pixel.
class ImageDataTextBase : public ImageDataShape
{
public:
    void scale(double factor) override;

    /// Top left corner of the text.
    BaVec2d<double> const &getPosition() const { return position_; }
    Font const &getFont() const { return font_; }
    QString const &getText() const { return text_; }

protected:
    ImageDataTextBase(Type_t type, BaVec2d<double> const &position, Font const &font, QString const &text)
        : ImageDataShape(type), position_(position), font_(font), text_(text)
    {
    }
    template <class Archive, class Self>
    static void textFields(Archive &archive, Self &self)
    {
        archive.field(self.position_);
        archive.field(self.text_);
    }
    void loadFont(IO::InStream *stream);
    void saveFont(IO::OutStream *stream) const;
    void drawText(Painter *painter, ImagePlacement const &placement, Color const &color) const;

private:
    BaVec2d<double> position_;
    Font font_;
    QString text_;
};

/// A line of text in the colour of the marks.
class ImageDataText : public ImageDataTextBase
{
public:
    ImageDataText() : ImageDataText({0.0, 0.0}, Font(), QString()) {}
    ImageDataText(BaVec2d<double> const &position, Font const &font, QString const &text)
        : ImageDataTextBase(TYPE_TEXT, position, font, text)
    {
    }

    ImageDataText *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

private:
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;
};

/// What polygons have in common: points relative to a position. Fewer than 3 points are not drawn.
class ImageDataPolygonBase : public ImageDataShape
{
public:
    void scale(double factor) override;

    BaVec2d<double> const &getPosition() const { return position_; }
    Polygon2d const &getPolygon() const { return polygon_; }
    /// Whether a line leads from the last point to the first.
    bool getClosed() const { return closed_; }
    void setClosed(bool closed) { closed_ = closed; }

protected:
    ImageDataPolygonBase(Type_t type, BaVec2d<double> const &position, Polygon2d const &polygon)
        : ImageDataShape(type), position_(position), polygon_(polygon)
    {
    }
    void drawPolygon(Painter *painter, ImagePlacement const &placement, LineStyle const &line,
                     FillStyle const &fill) const;
    void savePolygon(IO::OutStream *stream) const;
    /// Reads the block; those below `closedSince` hold closed polygons.
    void loadPolygon(IO::InStream *stream, unsigned int closedSince);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self, unsigned int closedSince);

    BaVec2d<double> position_;
    Polygon2d polygon_;
    bool closed_ = true;
};

/// A polygon, not filled.
class ImageDataPolygon : public ImageDataPolygonBase
{
public:
    ImageDataPolygon() : ImageDataPolygon({0.0, 0.0}, Polygon2d()) {}
    ImageDataPolygon(BaVec2d<double> const &position, Polygon2d const &polygon)
        : ImageDataPolygonBase(TYPE_POLYGON, position, polygon)
    {
    }

    ImageDataPolygon *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

private:
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;
};

} // namespace Zem::Fig2
