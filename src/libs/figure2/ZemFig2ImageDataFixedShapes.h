// ZemFig2ImageDataFixedShapes.h: the marks on a picture that have a look of their own.
// Layer: painting. Distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2ImageDataShapes.h"

#include <utility>
#include <vector>

namespace Zem::Fig2 {

/// A line without arrows.
class ImageDataFixedLine : public ImageDataLineBase
{
public:
    ImageDataFixedLine() : ImageDataFixedLine({0.0, 0.0}, {0.0, 0.0}, LineStyle()) {}
    ImageDataFixedLine(BaVec2d<double> const &start, BaVec2d<double> const &delta, LineStyle const &lineStyle)
        : ImageDataLineBase(TYPE_FIXED_LINE, start, delta), lineStyle_(lineStyle)
    {
    }

    ImageDataFixedLine *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    LineStyle const &getLineStyle() const { return lineStyle_; }

private:
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    LineStyle lineStyle_;
};

/// An ellipse or an arc.
class ImageDataFixedEllipse : public ImageDataEllipseBase
{
public:
    ImageDataFixedEllipse() : ImageDataFixedEllipse({0.0, 0.0}, {0.0, 0.0}, LineStyle(), FillStyle()) {}
    ImageDataFixedEllipse(BaVec2d<double> const &center, BaVec2d<double> const &radii, LineStyle const &lineStyle,
                          FillStyle const &fillStyle)
        : ImageDataEllipseBase(TYPE_FIXED_ELLIPSE, center, radii), lineStyle_(lineStyle), fillStyle_(fillStyle)
    {
    }

    ImageDataFixedEllipse *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    LineStyle const &getLineStyle() const { return lineStyle_; }
    FillStyle const &getFillStyle() const { return fillStyle_; }

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    LineStyle lineStyle_;
    FillStyle fillStyle_;
};

/// A line of text.
class ImageDataFixedText : public ImageDataTextBase
{
public:
    ImageDataFixedText() : ImageDataFixedText({0.0, 0.0}, Font(), Color(), QString()) {}
    ImageDataFixedText(BaVec2d<double> const &position, Font const &font, Color const &color, QString const &text)
        : ImageDataTextBase(TYPE_FIXED_TEXT, position, font, text), color_(color)
    {
    }

    ImageDataFixedText *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    Color const &getColor() const { return color_; }

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    Color color_;
};

/// A polygon or a polyline.
class ImageDataFixedPolygon : public ImageDataPolygonBase
{
public:
    ImageDataFixedPolygon() : ImageDataFixedPolygon({0.0, 0.0}, Polygon2d(), LineStyle(), FillStyle()) {}
    ImageDataFixedPolygon(BaVec2d<double> const &position, Polygon2d const &polygon, LineStyle const &lineStyle,
                          FillStyle const &fillStyle)
        : ImageDataPolygonBase(TYPE_FIXED_POLYGON, position, polygon), lineStyle_(lineStyle), fillStyle_(fillStyle)
    {
    }

    ImageDataFixedPolygon *copy() const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    LineStyle const &getLineStyle() const { return lineStyle_; }
    FillStyle const &getFillStyle() const { return fillStyle_; }

private:
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    LineStyle lineStyle_;
    FillStyle fillStyle_;
};

/// Many lines of one look.
class ImageDataFixedGrid : public ImageDataShape
{
public:
    /// Both ends of a line; the second is a place, not a way, deliberately unlike that of other lines.
    using Line = std::pair<BaVec2d<double>, BaVec2d<double>>;

    ImageDataFixedGrid() : ImageDataFixedGrid({}, LineStyle()) {}
    ImageDataFixedGrid(std::vector<Line> lines, LineStyle const &lineStyle)
        : ImageDataShape(TYPE_FIXED_GRID), lines_(std::move(lines)), lineStyle_(lineStyle)
    {
    }

    ImageDataFixedGrid *copy() const override;
    void scale(double factor) override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    std::vector<Line> const &getLines() const { return lines_; }
    LineStyle const &getLineStyle() const { return lineStyle_; }

private:
    void drawShape(Painter *painter, ImagePlacement const &placement,
                   ImageDataVisualisation const &visualisation) const override;

    std::vector<Line> lines_;
    LineStyle lineStyle_;
};

} // namespace Zem::Fig2
