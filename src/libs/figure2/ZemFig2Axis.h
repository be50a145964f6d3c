// ZemFig2Axis.h: Axis, one scale of a chart.
// Layer: services. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2LineStyle.h"

#include <ZemColor.h>
#include <ZemFont.h>
#include <ZemIdentifiers.h>
#include <ZemStream.h>
#include <ZemUnit.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <iosfwd>
#include <vector>

namespace Zem::Fig2 {

class ChartData;
class Painter;
class RangeCalculator;
class Rotation;

/// A scale: what the user chose, and what the last update worked out from it. Lengths and positions are page
/// millimetres.
///
/// The chart sets range, length and unit of the data, calls update, reads how much room the axis needs, and draws it.
/// Everything derived is empty before the first update, and not saved. A plain value.
class Axis
{
public:
    // Stored in files: never renumber.
    /// Where the axis stands beside the chart.
    enum Type : unsigned int { HORIZONTAL_TOP = 0, HORIZONTAL_BOTTOM = 1, VERTICAL_LEFT = 2, VERTICAL_RIGHT = 3 };
    /// Where one end of the range comes from.
    enum RangeMode : unsigned int {
        RANGE_MODE_MANUAL = 0, ///< the user
        RANGE_MODE_AUTO = 1,   ///< the values shown
        RANGE_MODE_OPTIMUM = 2 ///< the range that the data names, or else the values shown
    };
    /// Where the number of decimals comes from.
    enum DigitsMode : unsigned int {
        DIGITS_MODE_MANUAL = 0, ///< getDigits()
        DIGITS_MODE_AUTO = 1,   ///< the ticks
        DIGITS_MODE_3D = 2      ///< the application's global scale
    };

    static constexpr QLatin1StringView PARAM_TYPE{"type"};
    static constexpr QLatin1StringView PARAM_LENGTH{"length"};
    static constexpr QLatin1StringView PARAM_RANGE_MODE_MIN{"range_mode_min"};
    static constexpr QLatin1StringView PARAM_RANGE_MODE_MAX{"range_mode_max"};
    static constexpr QLatin1StringView PARAM_VISIBLE{"visible"};
    static constexpr QLatin1StringView PARAM_RANGE{"range"};
    static constexpr QLatin1StringView PARAM_LINE_STYLE{"line_style"};
    static constexpr QLatin1StringView PARAM_TICK_LENGTH{"tick_length"};
    static constexpr QLatin1StringView PARAM_TICKS{"ticks"};
    static constexpr QLatin1StringView PARAM_DIGITS{"digits"};
    static constexpr QLatin1StringView PARAM_DIGITS_MODE{"digits_mode"};
    static constexpr QLatin1StringView PARAM_FONT{"font"};
    static constexpr QLatin1StringView PARAM_FONT_COLOR{"font_color"};
    static constexpr QLatin1StringView PARAM_UNIT{"unit"};

    /// The gap between a tick and its label.
    static constexpr double SPACING = 0.1;

    explicit Axis(Type type) : type_(type) {}

    Type getType() const { return type_; }
    void setType(Type type) { type_ = type; }
    bool isHorizontal() const { return type_ == HORIZONTAL_TOP || type_ == HORIZONTAL_BOTTOM; }
    /// The extent along the axis.
    double getLength() const { return length_; }
    void setLength(double length) { length_ = length; }
    RangeMode getRangeModeMin() const { return rangeModeMin_; }
    void setRangeModeMin(RangeMode mode) { rangeModeMin_ = mode; }
    RangeMode getRangeModeMax() const { return rangeModeMax_; }
    void setRangeModeMax(RangeMode mode) { rangeModeMax_ = mode; }
    /// Whether the chart is to show the axis; draw does not ask.
    bool getVisible() const { return visible_; }
    void setVisible(bool visible) { visible_ = visible; }
    /// Minimum and maximum in the base unit of the data.
    BaVec2d<double> const &getRange() const { return range_; }
    void setRange(BaVec2d<double> const &range) { range_ = range; }
    /// How the ticks are drawn.
    LineStyle const &getLineStyle() const { return lineStyle_; }
    void setLineStyle(LineStyle const &lineStyle) { lineStyle_ = lineStyle; }
    /// 0 for labels without ticks.
    double getTickLength() const { return tickLength_; }
    void setTickLength(double tickLength) { tickLength_ = tickLength; }
    /// At most so many intervals between ticks; below 1 it means 50.
    int getTicks() const { return ticks_; }
    void setTicks(int ticks) { ticks_ = ticks; }
    DigitsMode getDigitsMode() const { return digitsMode_; }
    void setDigitsMode(DigitsMode mode) { digitsMode_ = mode; }
    int getDigits() const { return digits_; }
    void setDigits(int digits) { digits_ = digits; }
    Font const &getFont() const { return font_; }
    void setFont(Font const &font) { font_ = font; }
    Color const &getFontColor() const { return fontColor_; }
    void setFontColor(Color const &color) { fontColor_ = color; }
    /// What the user chose for the labels; it counts for data of the same quantity.
    UnitData const &getUnit() const { return unit_; }
    void setUnit(UnitData const &unit) { unit_ = unit; }
    /// Takes the unit along the axis from the data, not null: its quantity, and the unit in which it is shown without a
    /// choice of the user. The same for every stage.
    void computeDynamicData(StageIdentifier const &stage, ChartData const *data);

    /// Works out ticks, labels and the room they need. A left axis becomes at least `minWidthLeft` wide and a right one
    /// `minWidthRight`; `digits` is the number of decimals of the global scale. Throws ProgError for a range with a
    /// bound that is NaN, and for a type outside the enumeration; then everything derived is as before.
    void update(double minWidthLeft, double minWidthRight, int digits);

    /// Width and height that ticks, labels and their overhang need.
    BaVec2d<double> const &getMinimumSize() const { return minimumSize_; }
    /// The length along the axis and the room that is needed across it.
    BaVec2d<double> getSize() const;
    /// The range in getVisibleUnit().
    BaVec2d<double> const &getVisibleRange() const { return visibleRange_; }
    UnitData const &getVisibleUnit() const { return visibleUnit_; }
    /// Ascending distances from the end of the axis at which the values begin: the left end or the lower one.
    std::vector<double> const &getTickPositions() const { return tickPositions_; }
    /// How far the first and the last label may reach beyond the ticks.
    double getMargin() const { return margin_; }

    /// Draws ticks and labels, `origin` being the top left corner of the axis. A label without room goes with its tick.
    void draw(Painter *painter, BaVec2d<double> const &origin, Rotation const &rotation) const;

    /// The words of parameter strings; empty for a number outside the enumeration.
    static QString getTypeName(Type type);
    static QString getRangeModeName(RangeMode mode);
    static QString getDigitsModeName(DigitsMode mode);
    /// Throw ParamError for an unknown word.
    static RangeMode getRangeModeFromName(QString const &name);
    static DigitsMode getDigitsModeFromName(QString const &name);

    /// A block of its own, then those of line style, font and unit. load throws IO::StreamException and then changes
    /// nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Text form. A newer version throws IO::StreamException; a damaged text leaves the axis alone.
    std::ostream &saveToStream(std::ostream &stream) const;
    std::istream &loadFromStream(std::istream &stream);

    /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters` and leaves members
    /// without an entry alone; it throws ParamError for a bad value, the members before it being set.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

    /// Bytes.
    unsigned int getEstimatedObjectSize() const;

private:
    UnitData computeUnitData() const;
    BaVec2d<double> computeVisibleRange(UnitData const &unit) const;
    int computeDigits(int digits) const;
    void updateHorizontal(int digits);
    void updateVertical(double minWidthLeft, double minWidthRight, int digits);
    void takeTicks(RangeCalculator const &calculator, UnitData const &unit, double margin);
    void drawHorizontal(Painter *painter, BaVec2d<double> const &origin, Rotation const &rotation) const;
    void drawVertical(Painter *painter, BaVec2d<double> const &origin, Rotation const &rotation) const;

    template <class Archive, class Self>
    static void rangeModeFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void digitsFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    void loadAll(IO::InStream *stream);

    Type type_;
    double length_ = 0.0;
    RangeMode rangeModeMin_ = RANGE_MODE_AUTO;
    RangeMode rangeModeMax_ = RANGE_MODE_AUTO;
    bool visible_ = true;
    BaVec2d<double> range_{0.0, 0.0};
    LineStyle lineStyle_{0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)};
    double tickLength_ = 3.0;
    int ticks_ = 10;
    DigitsMode digitsMode_ = DIGITS_MODE_MANUAL;
    int digits_ = 2;
    Font font_;
    Color fontColor_{0, 0, 0};
    UnitData unit_{uFigure};
    UnitData dataUnit_{uFigure};

    // Derived; one text, flag and position per tick.
    BaVec2d<double> minimumSize_{0.0, 0.0};
    BaVec2d<double> visibleRange_{0.0, 0.0};
    UnitData visibleUnit_{uFigure};
    std::vector<QString> texts_;
    std::vector<bool> drawTexts_;
    std::vector<double> tickPositions_;
    double margin_ = 0.0;
};

std::ostream &operator<<(std::ostream &stream, Axis const &axis);
std::istream &operator>>(std::istream &stream, Axis &axis);

} // namespace Zem::Fig2
