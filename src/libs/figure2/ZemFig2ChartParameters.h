// ZemFig2ChartParameters.h: ChartVisualisation and ChartParameters, how a curve of a chart looks.
// Layer: values. Plain values, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2LineStyle.h"
#include "ZemFig2Symbol.h"

#include <ZemColor.h>
#include <ZemStream.h>

#include <QtCore/QString>

#include <iosfwd>
#include <vector>

namespace Zem::Fig2 {

/// What tells one curve from another: a symbol and the colour of symbol, line and fill.
class ChartVisualisation
{
public:
    /// A circle in black.
    ChartVisualisation() = default;
    ChartVisualisation(Symbol::Type symbolType, Color const &color) : symbolType_(symbolType), color_(color) {}

    Symbol::Type getSymbolType() const { return symbolType_; }
    Color const &getColor() const { return color_; }

    /// How many looks getVisualisation counts before it begins anew.
    static unsigned int getNumberOfVisualisations();
    /// A fixed, endless sequence: the next index has the next colour, and every so often the next symbol.
    static ChartVisualisation getVisualisation(unsigned int index);

    bool operator==(ChartVisualisation const &) const = default;
    /// By symbol, then red, green and blue; alpha takes no part.
    bool operator<(ChartVisualisation const &other) const;

private:
    static Color const _colors[];

    Symbol::Type symbolType_ = Symbol::TYPE_CIRCLE;
    Color color_{0, 0, 0};
};

/// The look of one dataset: kind of stroke, symbol, line, fill, and how it is named.
class ChartParameters
{
public:
    /// Stored in files: never renumber.
    enum Style_t {
        STYLE_LINE = 0,
        STYLE_BARS = 1,
        STYLE_POINTS = 2,
        STYLE_SPLINE = 3,
        STYLE_SPIKES = 4,
        STYLE_X_MARKER = 5,
        STYLE_Y_MARKER = 6
    };

    static constexpr QLatin1StringView PARAM_NAME{"name"};
    static constexpr QLatin1StringView PARAM_USE_DEFAULT_NAME{"use_default_name"};
    static constexpr QLatin1StringView PARAM_SHOW_GROUP_NAME{"show_group_name"};
    static constexpr QLatin1StringView PARAM_STYLE{"style"};
    static constexpr QLatin1StringView PARAM_SYMBOL{"symbol"};
    static constexpr QLatin1StringView PARAM_LINE_STYLE{"line_style"};
    static constexpr QLatin1StringView PARAM_FILL_STYLE{"fill_style"};
    static constexpr QLatin1StringView PARAM_COMPUTE_COLOR{"compute_color"};
    static constexpr QLatin1StringView PARAM_NUM_BASE_POINTS{"spline_base_points"};

    /// A full line of 0.1 mm with circles of 0.5 mm, all of one blue, named by the token, 100 base points.
    ChartParameters();
    ChartParameters(Style_t style, Symbol const &symbol, LineStyle const &lineStyle, FillStyle const &fillStyle);

    QString const &getName() const { return name_; }
    void setName(QString const &name) { name_ = name; }
    /// Whether the name is the token's, not this one's own.
    bool getUseDefaultName() const { return useDefaultName_; }
    void setUseDefaultName(bool use) { useDefaultName_ = use; }
    /// Whether the group's name follows in descriptions.
    bool getShowGroupName() const { return showGroupName_; }
    void setShowGroupName(bool show) { showGroupName_ = show; }
    Style_t getStyle() const { return style_; }
    void setStyle(Style_t style) { style_ = style; }
    Symbol const &getSymbol() const { return symbol_; }
    void setSymbol(Symbol const &symbol) { symbol_ = symbol; }
    LineStyle const &getLineStyle() const { return lineStyle_; }
    void setLineStyle(LineStyle const &lineStyle) { lineStyle_ = lineStyle; }
    FillStyle const &getFillStyle() const { return fillStyle_; }
    void setFillStyle(FillStyle const &fillStyle) { fillStyle_ = fillStyle; }
    /// Whether the value of each point chooses its colour from the chart's colour scale.
    bool getComputeColor() const { return computeColor_; }
    void setComputeColor(bool compute) { computeColor_ = compute; }
    /// For STYLE_SPLINE; 0 draws no curve.
    unsigned int getNumberOfBasePoints() const { return numberOfBasePoints_; }
    void setNumberOfBasePoints(unsigned int count) { numberOfBasePoints_ = count; }

    /// Type and colour of the symbol.
    ChartVisualisation getVisualisation() const;
    /// Sets the symbol's type, and the one colour of symbol, line and fill.
    void setVisualisation(ChartVisualisation const &visualisation);

    /// The seven styles in numeric order.
    static std::vector<Style_t> getAllStyles();
    /// The word of a parameter string; empty for a number outside the enumeration.
    static QString getStyleParameterName(Style_t style);
    /// The word for the user, translated; empty likewise.
    static QString getStyleName(Style_t style);

    /// One stream block, then symbol, line and fill. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters` and leaves members
    /// without an entry alone; it throws ParamError for a bad value, the members before it being set.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

    bool operator==(ChartParameters const &) const = default;

    /// Text form. A damaged text or one of a newer version fails the stream and leaves the object alone.
    friend std::ostream &operator<<(std::ostream &stream, ChartParameters const &parameters);
    friend std::istream &operator>>(std::istream &stream, ChartParameters &parameters);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    void readStyle(QString &parameters, QString const &key);

    QString name_;
    bool useDefaultName_ = true;
    bool showGroupName_ = false;
    Style_t style_ = STYLE_LINE;
    Symbol symbol_;
    LineStyle lineStyle_;
    FillStyle fillStyle_;
    bool computeColor_ = false;
    unsigned int numberOfBasePoints_ = 100;
};

} // namespace Zem::Fig2
