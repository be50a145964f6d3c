#include <ZemValue.h>

#include <ZemError.h>

#include <cmath>

namespace Zem {

namespace {

bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool same(BaVec2d<double> const &a, BaVec2d<double> const &b)
{
    return same(a.x, b.x) && same(a.y, b.y);
}

bool same(BaVec3d<double> const &a, BaVec3d<double> const &b)
{
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}

} // namespace

constinit Value const Value::UNKNOWN{Missing{}, TYPE_UNKNOWN};
constinit Value const Value::INVALID{Missing{}, TYPE_INVALID};

template <class Vector>
bool Value::Quantity<Vector>::operator==(Quantity const &other) const
{
    return same(number, other.number) && unit == other.unit;
}

Value::Value(Type_t type) : type_(type), data_(zeroOf(type))
{
}

Value::Data Value::zeroOf(Type_t type)
{
    switch (type) {
    case TYPE_INTEGER:
        return 0;
    case TYPE_DOUBLE:
        return Number{};
    case TYPE_STRING:
        return QString();
    case TYPE_BOOLEAN:
        return false;
    case TYPE_DATE_TIME:
        return QDateTime();
    case TYPE_VECTOR_2D:
        return Vec2d{};
    case TYPE_VECTOR_3D:
        return Vec3d{};
    case TYPE_FORMATTED_TEXT:
        return FormattedText();
    case TYPE_UNKNOWN:
    case TYPE_INVALID:
        break;
    }
    return std::monostate();
}

Value::Value(double value, Unit const *unit) : Value(value, UnitData(unit))
{
}

Value::Value(double value, UnitData const &unit) : type_(TYPE_DOUBLE), data_(Number{value, unit})
{
}

Value Value::fromBool(bool value)
{
    return Value(TYPE_BOOLEAN, std::in_place_type<bool>, value);
}

Value Value::fromDateTime(QDateTime const &time)
{
    return Value(TYPE_DATE_TIME, std::in_place_type<QDateTime>, time);
}

Value Value::fromVec2d(BaVec2d<double> const &vector, Unit const *unit)
{
    return fromVec2d(vector, UnitData(unit));
}

Value Value::fromVec2d(BaVec2d<double> const &vector, UnitData const &unit)
{
    return Value(TYPE_VECTOR_2D, std::in_place_type<Vec2d>, Vec2d{vector, unit});
}

Value Value::fromVec3d(BaVec3d<double> const &vector, Unit const *unit)
{
    return fromVec3d(vector, UnitData(unit));
}

Value Value::fromVec3d(BaVec3d<double> const &vector, UnitData const &unit)
{
    return Value(TYPE_VECTOR_3D, std::in_place_type<Vec3d>, Vec3d{vector, unit});
}

Value Value::fromFormattedText(FormattedText const &text)
{
    return Value(TYPE_FORMATTED_TEXT, std::in_place_type<FormattedText>, text);
}

template <class T>
T const &Value::get(char const *operation) const
{
    T const *const data = std::get_if<T>(&data_);
    if (!data) {
        throw ProgError(operation, "value", __LINE__, "the value is of another type");
    }
    return *data;
}

int Value::getInt() const
{
    return get<int>("Zem::Value::getInt");
}

double Value::getDouble() const
{
    return get<Number>("Zem::Value::getDouble").number;
}

QString Value::getString() const
{
    return get<QString>("Zem::Value::getString");
}

bool Value::getBool() const
{
    return get<bool>("Zem::Value::getBool");
}

QDateTime Value::getDateTime() const
{
    return get<QDateTime>("Zem::Value::getDateTime");
}

BaVec2d<double> Value::getVec2d() const
{
    return get<Vec2d>("Zem::Value::getVec2d").number;
}

BaVec3d<double> Value::getVec3d() const
{
    return get<Vec3d>("Zem::Value::getVec3d").number;
}

FormattedText Value::getFormattedText() const
{
    return get<FormattedText>("Zem::Value::getFormattedText");
}

UnitData Value::getUnitData() const
{
    return std::visit(
        [](auto const &data) {
            if constexpr (requires { data.unit; }) {
                return UnitData(data.unit);
            } else {
                return UnitData();
            }
        },
        data_);
}

bool Value::operator==(Value const &other) const
{
    return type_ == other.type_ && data_ == other.data_;
}

} // namespace Zem
