// ZemFig2CoordinateSystem.h: CoordinateSystem, the axes x, y and z drawn into a picture.
// Layer: services. A plain value, copied freely; drawn on the thread that owns the figure.
#pragma once

#include <ZemFont.h>
#include <ZemStream.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <array>
#include <iosfwd>

namespace Zem {
class Color;
class Rect;
} // namespace Zem

namespace Zem::Fig2 {

class Painter;
class Rotation;
class Transformation;

/// Three arrows with letters at the place where a point of space is seen.
class CoordinateSystem
{
public:
    static constexpr QLatin1StringView PARAM_ORIGIN{"origin"};
    static constexpr QLatin1StringView PARAM_VISIBLE{"visible"};
    static constexpr QLatin1StringView PARAM_TEXT_VISIBLE{"text_visible"};
    static constexpr QLatin1StringView PARAM_LENGTH{"length"};
    static constexpr QLatin1StringView PARAM_WIDTH{"width"};
    static constexpr QLatin1StringView PARAM_FONT{"font"};

    /// A point of space, in the unit of the measurement.
    BaVec3d<double> const &getOrigin() const { return origin_; }
    void setOrigin(BaVec3d<double> const &origin) { origin_ = origin; }
    bool getVisible() const { return visible_; }
    void setVisible(bool visible) { visible_ = visible; }
    /// Whether the axes have letters.
    bool getTextVisible() const { return textVisible_; }
    void setTextVisible(bool textVisible) { textVisible_ = textVisible; }
    /// Of the axes in space, in the unit of the measurement.
    double getLength() const { return length_; }
    void setLength(double length) { length_ = length; }
    /// Of the lines, page millimetres.
    double getWidth() const { return width_; }
    void setWidth(double width) { width_ = width; }
    Font const &getFont() const { return font_; }
    void setFont(Font const &font) { font_ = font; }

    /// Draws the axes over a picture whose corner is at `position` and whose pixels are `scale` page millimetres wide,
    /// the axis whose end is farthest from the camera first. An axis without an image, or that crosses the border of
    /// `clip` (page millimetres), is left out. `rotation` turns all but the letters, which keep upright at the turned
    /// ends. Without a transformation (null) nothing is drawn.
    void draw(Painter *painter, BaVec2d<double> const &position, double scale, Rect const &clip,
              Transformation const *transformation, Rotation const &rotation) const;

    /// A block and that of the font. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters` and leaves members
    /// without an entry alone; it throws ParamError for a bad value, the members before it being set.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

    bool operator==(CoordinateSystem const &) const = default;

    /// Text form; reading another version, or a damaged text, leaves the object alone.
    friend std::ostream &operator<<(std::ostream &stream, CoordinateSystem const &system);
    friend std::istream &operator>>(std::istream &stream, CoordinateSystem &system);

private:
    struct AxisRecord;

    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);

    std::array<AxisRecord, 3> sortedAxes(Transformation const &transformation) const;
    void drawVector(Painter *painter, BaVec2d<double> const &start, BaVec2d<double> const &end, QString const &text,
                    Rect const &clip, Color const &color, Rotation const &rotation) const;
    void drawLetter(Painter *painter, BaVec2d<double> const &start, BaVec2d<double> const &tip, QString const &text,
                    Color const &color) const;

    BaVec3d<double> origin_{0.0, 0.0, 0.0};
    bool visible_ = false;
    bool textVisible_ = true;
    double length_ = 20.0;
    double width_ = 0.5;
    Font font_{Font::DEFAULT_FONT_SANS, 12.0, 0};
};

} // namespace Zem::Fig2
