// ZemFig2LineStyle.h: LineStyle, how a line is drawn.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include <ZemColor.h>
#include <ZemStream.h>

#include <QtCore/QString>

#include <iosfwd>
#include <vector>

namespace Zem::Fig2 {

/// Width (page millimetres), dash pattern, colour and line ends.
class LineStyle
{
public:
    /// Stored in files: never renumber.
    enum Style { STYLE_NONE = 0, STYLE_FULL = 1, STYLE_DOTTED = 2, STYLE_DASHED = 3, STYLE_DASH_DOTTED = 4 };
    /// Stored in files: never renumber. Applies to line ends and corners.
    enum CapStyle { CAP_ROUND = 0, CAP_SHARP = 1 };

    static constexpr QLatin1StringView PARAM_WIDTH{"width"};
    static constexpr QLatin1StringView PARAM_COLOR{"color"};
    static constexpr QLatin1StringView PARAM_STYLE{"style"};
    static constexpr QLatin1StringView PARAM_CAP_STYLE{"cap_style"};

    /// Draws no line: width 0, style none.
    static LineStyle const null;

    /// Width 1.0, full, black, sharp.
    constexpr LineStyle() = default;
    /// The cap style stays sharp.
    constexpr LineStyle(double width, Style style, Color const &color) : width_(width), style_(style), color_(color) {}

    double getWidth() const { return width_; }
    void setWidth(double width) { width_ = width; }
    Style getStyle() const { return style_; }
    void setStyle(Style style) { style_ = style; }
    Color const &getColor() const { return color_; }
    void setColor(Color const &color) { color_ = color; }
    CapStyle getCapStyle() const { return capStyle_; }
    void setCapStyle(CapStyle capStyle) { capStyle_ = capStyle; }

    /// The five styles in numeric order.
    static std::vector<Style> getAllStyles();
    /// The word of a parameter string; empty for a number outside the enumeration.
    static QString getStyleParameterName(Style style);
    /// The word for the user, translated.
    static QString getStyleName(Style style);
    static QString getCapStyleParameterName(CapStyle capStyle);

    /// One stream block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters` and leaves members
    /// without an entry alone; it throws ParamError for a bad value, the members before it being set.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);
    /// The same for parameter strings of an older release.
    void createFromV541ParameterString(QString &parameters, QString const &prefix);
    /// Whether one of the four keys stands in `parameters`.
    static bool parameterExists(QString const &parameters, QString const &prefix);

    bool operator==(LineStyle const &) const = default;

    /// Text form; reading another version, or a damaged text, leaves the object alone.
    friend std::ostream &operator<<(std::ostream &stream, LineStyle const &style);
    friend std::istream &operator>>(std::istream &stream, LineStyle &style);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);

    double width_ = 1.0;
    Style style_ = STYLE_FULL;
    Color color_{0, 0, 0};
    CapStyle capStyle_ = CAP_SHARP;
};

inline constexpr LineStyle LineStyle::null{0.0, LineStyle::STYLE_NONE, Color(0, 0, 0)};

} // namespace Zem::Fig2
