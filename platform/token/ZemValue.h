// ZemValue.h: the value of a token, a number, text, time or vector that knows its type.
#pragma once

#include <ZemFormattedText.h>
#include <ZemUnit.h>
#include <ZemVec.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <concepts>
#include <utility>
#include <variant>

namespace Zem {

/// What Value::toString() has to say about its result.
enum ConversionErrorCode_t {
    CONVERSION_OK = 0,
    CONVERSION_ILLEGAL_UNIT = 1, ///< a unit was asked for, and the type has none
    CONVERSION_UNKNOWN_UNIT = 2, ///< the quantity has no such unit
    CONVERSION_NO_VALUE = 3      ///< there is nothing to show
};

/// A value together with its type. Numbers with a unit are kept in the base unit of their quantity; the unit that
/// UnitData names is for display. A NaN equals a NaN, so that a missing number does not look like a change for ever. A
/// plain value, cheap to copy; several threads may read it.
class Value
{
public:
    using FormattedText = Zem::FormattedText;

    /// Stored in files and compared by number: never renumber.
    enum Type_t {
        TYPE_UNKNOWN = 0,
        TYPE_INTEGER = 1,
        TYPE_DOUBLE = 2,
        TYPE_STRING = 3,
        TYPE_INVALID = 4,
        TYPE_BOOLEAN = 5,
        TYPE_DATE_TIME = 6,
        TYPE_VECTOR_2D = 7,
        TYPE_VECTOR_3D = 8,
        TYPE_FORMATTED_TEXT = 9
    };

    static Value const UNKNOWN; ///< the token does not exist here
    static Value const INVALID; ///< the token exists, but not with this index or at this stage

    /// UNKNOWN.
    constexpr Value() noexcept {}
    /// The type's zero: 0, an empty text, false, no point in time, (0, 0).
    explicit Value(Type_t type);
    explicit Value(int value) : type_(TYPE_INTEGER), data_(value) {}
    /// `value` in the base unit of `unit`, shown in it too; null for a bare number.
    Value(double value, Unit const *unit);
    /// `value` in the base unit of the quantity, shown in its current unit.
    Value(double value, UnitData const &unit);
    explicit Value(QString const &text) : type_(TYPE_STRING), data_(text) {}

    // A bool would be taken for an int, and a double without a unit would lose its fraction.
    template <typename T>
    requires(std::same_as<T, bool> || std::floating_point<T>) explicit Value(T) = delete;

    static Value fromBool(bool value);
    static Value fromDateTime(QDateTime const &time);
    /// Components in the base unit of `unit`, which may be null.
    static Value fromVec2d(BaVec2d<double> const &vector, Unit const *unit);
    static Value fromVec2d(BaVec2d<double> const &vector, UnitData const &unit);
    static Value fromVec3d(BaVec3d<double> const &vector, Unit const *unit);
    static Value fromVec3d(BaVec3d<double> const &vector, UnitData const &unit);
    static Value fromFormattedText(FormattedText const &text);

    Type_t getType() const noexcept { return type_; }

    /// Each throws ProgError for a value of another type.
    int getInt() const;
    /// In the base unit.
    double getDouble() const;
    QString getString() const;
    bool getBool() const;
    QDateTime getDateTime() const;
    /// In the base unit.
    BaVec2d<double> getVec2d() const;
    BaVec3d<double> getVec3d() const;
    FormattedText getFormattedText() const;
    /// The unit of a number or a vector; hasUnit() is false for a bare one and for all other types.
    UnitData getUnitData() const;

    /// The value as text for a page; never throws. `format` is sign, unit in brackets, sign, width, point, precision,
    /// all optional: "+[mm]8.2". Either sign puts a plus before positive numbers. Width is limited to 1000 characters
    /// and precision to 100 digits. Without a precision integers have no decimals and other numbers six. Texts and
    /// truth values ignore the format; a point in time is in ISO form, or as the pattern in the brackets says,
    /// "[dd.MM.yyyy hh:mm]", with English names; vectors are "(x, y)" with each component formatted. What cannot be
    /// shown becomes a text that says so. `result`, if not null, receives the code and whether the returned text shows
    /// the value.
    QString toString(QString const &format, std::pair<ConversionErrorCode_t, bool> *result) const;

    bool operator==(Value const &other) const;

    /// One block, followed by those of the unit or of the formatted text. Both throw IO::StreamException; a failed load
    /// leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    template <class Vector>
    struct Quantity
    {
        Vector number;
        UnitData unit;
        bool operator==(Quantity const &other) const;
    };
    using Number = Quantity<double>;
    using Vec2d = Quantity<BaVec2d<double>>;
    using Vec3d = Quantity<BaVec3d<double>>;
    using Data = std::variant<std::monostate, int, Number, QString, bool, QDateTime, Vec2d, Vec3d, FormattedText>;

    struct Missing
    {
    };
    constexpr Value(Missing, Type_t type) noexcept : type_(type) {}
    template <class T>
    Value(Type_t type, std::in_place_type_t<T> kind, T const &data) : type_(type), data_(kind, data)
    {
    }

    static Data zeroOf(Type_t type);

    template <class T>
    T const &get(char const *operation) const;

    Type_t type_ = TYPE_UNKNOWN;
    Data data_;
};

} // namespace Zem
