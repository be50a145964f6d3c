// ZemFig2ImageConversion.h: ImageConversion, how picture intensities are turned into grey values.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include <ZemStream.h>

#include <QtCore/QString>

#include <compare>
#include <iosfwd>

namespace Zem::Fig2 {

/// The kind of conversion and the intensity range it works on. This record only carries the wish: what happens to the
/// pixels is up to the Painter.
class ImageConversion
{
public:
    /// Stored in files: never renumber.
    enum Type {
        TYPE_NORMAL = 0,
        TYPE_LIGHTEN = 1,
        TYPE_OVEREXPOSED = 2,
        TYPE_RANGE = 3,
        TYPE_EQUALIZE = 4,
        TYPE_PSEUDO = 5
    };

    static constexpr QLatin1StringView PARAM_TYPE{"type"};
    static constexpr QLatin1StringView PARAM_MIN{"min"};
    static constexpr QLatin1StringView PARAM_MAX{"max"};

    /// Equals the default: normal, 0 to 255.
    static ImageConversion const null;

    constexpr ImageConversion() = default;

    Type getType() const { return type_; }
    void setType(Type type) { type_ = type; }
    int getMin() const { return min_; }
    void setMin(int min) { min_ = min; }
    int getMax() const { return max_; }
    void setMax(int max) { max_ = max; }

    /// One stream block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`; reading leaves members without an entry alone and throws ParamError.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

    bool operator==(ImageConversion const &) const = default;
    /// Orders by type, then minimum, then maximum.
    auto operator<=>(ImageConversion const &) const = default;

    /// Text form: four words. An unknown type word selects type normal.
    friend std::ostream &operator<<(std::ostream &stream, ImageConversion const &conversion);
    friend std::istream &operator>>(std::istream &stream, ImageConversion &conversion);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);

    Type type_ = TYPE_NORMAL;
    int min_ = 0;
    int max_ = 255;
};

inline constexpr ImageConversion ImageConversion::null{};

} // namespace Zem::Fig2
