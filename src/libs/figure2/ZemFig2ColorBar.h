// ZemFig2ColorBar.h: ColorBar, a signed value shown as a bar on one side of a label.
// Layer: painting. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2LineStyle.h"
#include "ZemFig2Rotation.h"

#include <ZemColor.h>
#include <ZemStream.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <iosfwd>

namespace Zem::Fig2 {

class Painter;

/// The bar grows from the middle of a strip; a value as large as the larger end of the range fills half of it. Positive
/// values grow towards higher coordinates. Lengths are page millimetres.
class ColorBar
{
public:
    /// Stored in files: never renumber.
    enum Side_t { SIDE_TOP = 0, SIDE_BOTTOM = 1, SIDE_LEFT = 2, SIDE_RIGHT = 3 };

    static constexpr QLatin1StringView PARAM_RANGE{"range"};
    static constexpr QLatin1StringView PARAM_VALUE{"value"};
    static constexpr QLatin1StringView PARAM_VALUE_VALID{"value_valid"};
    static constexpr QLatin1StringView PARAM_COLOR{"color"};
    static constexpr QLatin1StringView PARAM_WIDTH{"width"};
    static constexpr QLatin1StringView PARAM_VARIABLE_LENGTH{"variable_length"};
    static constexpr QLatin1StringView PARAM_MINIMUM_LENGTH{"minimum_length"};
    static constexpr QLatin1StringView PARAM_SIDE{"side"};
    static constexpr QLatin1StringView PARAM_BORDER{"border"};
    static constexpr QLatin1StringView PARAM_BACKGROUND{"background"};

    /// The values of the two ends of the strip, minimum and maximum.
    BaVec2d<double> const &getRange() const { return range_; }
    void setRange(BaVec2d<double> const &range) { range_ = range; }
    double getValue() const { return value_; }
    bool isValueValid() const { return valueValid_; }
    void setValue(double value, bool valid);
    Color const &getColor() const { return color_; }
    void setColor(Color const &color) { color_ = color; }
    /// The thickness of the strip.
    double getWidth() const { return width_; }
    void setWidth(double width) { width_ = width; }
    /// Whether the strip follows the length of the label.
    bool getUseVariableLength() const { return useVariableLength_; }
    void setUseVariableLength(bool use) { useVariableLength_ = use; }
    double getMinimumLength() const { return minimumLength_; }
    void setMinimumLength(double length) { minimumLength_ = length; }
    Side_t getSide() const { return side_; }
    void setSide(Side_t side) { side_ = side; }
    LineStyle const &getBorder() const { return border_; }
    void setBorder(LineStyle const &border) { border_ = border; }
    FillStyle const &getBackground() const { return background_; }
    void setBackground(FillStyle const &background) { background_ = background; }

    /// Whether the strip runs along x, at the top or the bottom of its label.
    bool isHorizontal() const { return side_ == SIDE_TOP || side_ == SIDE_BOTTOM; }
    BaVec2d<double> computeMinimumSize() const;
    /// Draws the strip into the box with its top left corner at `position`, before the rotation.
    void draw(Painter *painter, BaVec2d<double> const &position, BaVec2d<double> const &size,
              Rotation const &rotation) const;

    /// One stream block and those of border and background. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);
    /// Named parameters under `prefix`; reading leaves members without an entry alone and throws ParamError.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

    bool operator==(ColorBar const &) const = default;

    /// Text form; reading another version, or a damaged text, leaves the object alone.
    friend std::ostream &operator<<(std::ostream &stream, ColorBar const &bar);
    friend std::istream &operator>>(std::istream &stream, ColorBar &bar);

private:
    /// The sign of the value.
    enum Symbol { SYMBOL_PLUS = 0, SYMBOL_MINUS = 1 };
    struct Strip;

    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);
    Strip layOutStrip(BaVec2d<double> const &position, BaVec2d<double> const &size) const;
    void drawValue(Painter *painter, Strip const &strip, Rotation const &rotation) const;
    void drawSymbol(Painter *painter, BaVec2d<double> const &position, double size, Symbol symbol,
                    Rotation const &rotation) const;
    double computeValueLength(double length, double largest) const;

    BaVec2d<double> range_{0.0, 0.0};
    double value_ = 0.0;
    bool valueValid_ = false;
    Color color_{0, 0, 0};
    double width_ = 0.0;
    bool useVariableLength_ = true;
    double minimumLength_ = 0.0;
    Side_t side_ = SIDE_BOTTOM;
    LineStyle border_;
    FillStyle background_;
};

} // namespace Zem::Fig2
