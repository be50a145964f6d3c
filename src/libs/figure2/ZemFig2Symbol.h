// ZemFig2Symbol.h: Symbol, a small mark at a point.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include <ZemColor.h>
#include <ZemFont.h>
#include <ZemStream.h>

#include <QtCore/QString>

#include <iosfwd>
#include <vector>

namespace Zem::Fig2 {

/// Shape, size (page millimetres, the edge of the unit shape) and colour of a mark, and how a chart writes the value
/// beside it.
class Symbol
{
public:
    /// Stored in files: never renumber.
    enum Type {
        TYPE_CIRCLE = 0,
        TYPE_BOX = 1,
        TYPE_PYRAMID = 2,
        TYPE_CHEQUE = 3,
        TYPE_STAR = 4,
        TYPE_HEXAGON = 5,
        TYPE_TRIANGLE = 6,
        TYPE_CROSS = 7,
        TYPE_BORDER = 8,
        TYPE_HOUSE = 9,
        TYPE_CORNERS = 10,
        TYPE_NONE = 11,
        TYPE_MARKER = 12,
        TYPE_SPOT = 13
    };

    static constexpr QLatin1StringView PARAM_TYPE{"type"};
    static constexpr QLatin1StringView PARAM_SIZE{"size"};
    static constexpr QLatin1StringView PARAM_COLOR{"color"};
    static constexpr QLatin1StringView PARAM_SHOW_VALUE{"show_value"};
    static constexpr QLatin1StringView PARAM_DIGITS{"digits"};
    static constexpr QLatin1StringView PARAM_FONT{"font"};
    static constexpr QLatin1StringView PARAM_SPACING{"spacing"};

    /// No symbol: type none, size 0.
    static Symbol const null;

    /// A circle of size 0, black, no value, 2 digits, the default font, spacing 0.
    Symbol() = default;
    Symbol(Type type, double size, bool showValue) : type_(type), size_(size), showValue_(showValue) {}

    Type getType() const { return type_; }
    void setType(Type type) { type_ = type; }
    double getSize() const { return size_; }
    void setSize(double size) { size_ = size; }
    Color const &getColor() const { return color_; }
    void setColor(Color const &color) { color_ = color; }
    bool getShowValue() const { return showValue_; }
    void setShowValue(bool showValue) { showValue_ = showValue; }
    /// Decimals of the value.
    unsigned int getDigits() const { return digits_; }
    void setDigits(unsigned int digits) { digits_ = digits; }
    Font const &getFont() const { return font_; }
    void setFont(Font const &font) { font_ = font; }
    /// How many points of a curve have no symbol between two that have one.
    unsigned int getSpacing() const { return spacing_; }
    void setSpacing(unsigned int spacing) { spacing_ = spacing; }

    /// All types in the order for the user: none first, then by number.
    static std::vector<Type> getAllSymbols();
    /// The word of a parameter string; empty for a number outside the enumeration.
    static QString getTypeId(Type type);
    /// The word for the user, translated.
    static QString getSymbolName(Type type);
    /// Throws ParamError for an unknown word.
    static Type getTypeFromId(QString const &id);

    /// One stream block and the font's block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`; reading leaves members without an entry alone and throws ParamError.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

    bool operator==(Symbol const &) const = default;

    /// Text form, without the font; reading another version, or a damaged text, leaves the object alone.
    friend std::ostream &operator<<(std::ostream &stream, Symbol const &symbol);
    friend std::istream &operator>>(std::istream &stream, Symbol &symbol);

private:
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);

    Type type_ = TYPE_CIRCLE;
    double size_ = 0.0;
    Color color_{0, 0, 0};
    bool showValue_ = false;
    unsigned int digits_ = 2;
    Font font_;
    unsigned int spacing_ = 0;
};

} // namespace Zem::Fig2
