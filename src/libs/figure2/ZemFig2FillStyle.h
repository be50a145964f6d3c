// ZemFig2FillStyle.h: FillStyle, how an area is filled.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include <ZemColor.h>
#include <ZemStream.h>

#include <QtCore/QString>

#include <iosfwd>

namespace Zem::Fig2 {

/// Whether an area is filled, and with which colour.
class FillStyle
{
public:
    static constexpr QLatin1StringView PARAM_FILLED{"filled"};
    static constexpr QLatin1StringView PARAM_COLOR{"color"};

    /// Not filled, black.
    static FillStyle const null;

    /// Not filled, black.
    constexpr FillStyle() = default;
    /// Filled with the colour.
    explicit constexpr FillStyle(Color const &color) : filled_(true), color_(color) {}

    bool getFilled() const { return filled_; }
    void setFilled(bool filled) { filled_ = filled; }
    Color const &getColor() const { return color_; }
    void setColor(Color const &color) { color_ = color; }

    /// One stream block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`; reading leaves members without an entry alone and throws ParamError.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);
    /// The same for parameter strings of an older release.
    void createFromV541ParameterString(QString &parameters, QString const &prefix);

    bool operator==(FillStyle const &) const = default;

    /// Text form; reading another version, or a damaged text, leaves the object alone.
    friend std::ostream &operator<<(std::ostream &stream, FillStyle const &style);
    friend std::istream &operator>>(std::istream &stream, FillStyle &style);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);

    bool filled_ = false;
    Color color_{0, 0, 0};
};

inline constexpr FillStyle FillStyle::null{};

} // namespace Zem::Fig2
