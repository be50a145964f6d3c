#include "page_toml_values.h"

#include <ZemParse.h>

#include <QtCore/QRegularExpression>

#include <cmath>

namespace Zem::Zemfig {

QString textOf(std::string_view view)
{
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

int lineOf(toml::node const &node)
{
    return static_cast<int>(node.source().begin.line);
}

/// The name of a TOML type for people.
QString typeOf(toml::node const &node)
{
    switch (node.type()) {
    case toml::node_type::table:
        return QStringLiteral("a table");
    case toml::node_type::array:
        return QStringLiteral("a list");
    case toml::node_type::string:
        return QStringLiteral("a text");
    case toml::node_type::integer:
    case toml::node_type::floating_point:
        return QStringLiteral("a number");
    case toml::node_type::boolean:
        return QStringLiteral("true or false");
    default:
        return QStringLiteral("a date or time");
    }
}

bool readNumber(toml::node const &node, double *number)
{
    if (!node.is_number())
        return false;
    *number = node.is_integer() ? static_cast<double>(node.as_integer()->get()) : node.as_floating_point()->get();
    return std::isfinite(*number);
}

bool readVector(toml::node const &node, BaVec2d<double> *vector)
{
    toml::array const *array = node.as_array();
    return array && array->size() == 2 && readNumber((*array)[0], &vector->x) && readNumber((*array)[1], &vector->y);
}

namespace {

QString number(Parameter const &parameter, toml::node const &node, QString *expected)
{
    *expected = QStringLiteral("a number");
    double value = 0.0;
    if (!readNumber(node, &value))
        return {};
    // Whole numbers go as such: some parameters take nothing else.
    if (node.is_integer())
        return QStringLiteral("%1 = %2\n").arg(parameter.key).arg(node.as_integer()->get());
    return Parse::createDouble(parameter.key, value);
}

QString color(Parameter const &parameter, toml::node const &node, QString *expected)
{
    static QRegularExpression const form(QStringLiteral("\\A#([0-9a-fA-F]{6}|[0-9a-fA-F]{8})\\z"));
    *expected = QStringLiteral("a colour as \"#rrggbb\" or \"#rrggbbaa\"");
    if (!node.is_string())
        return {};
    QString const text = textOf(node.as_string()->get());
    return form.match(text).hasMatch() ? QStringLiteral("%1 = %2\n").arg(parameter.key, text) : QString();
}

QString vector(Parameter const &parameter, toml::node const &node, QString *expected)
{
    *expected = QStringLiteral("two numbers as [x, y]");
    BaVec2d<double> value;
    return readVector(node, &value) ? Parse::createVec2d(parameter.key, value) : QString();
}

QString spaceVector(Parameter const &parameter, toml::node const &node, QString *expected)
{
    *expected = QStringLiteral("three numbers as [x, y, z]");
    toml::array const *array = node.as_array();
    BaVec3d<double> value;
    if (!array || array->size() != 3 || !readNumber((*array)[0], &value.x) || !readNumber((*array)[1], &value.y) ||
        !readNumber((*array)[2], &value.z))
        return {};
    return Parse::createVec3dString(parameter.key, value);
}

QString vectorList(Parameter const &parameter, toml::node const &node, QString *expected)
{
    *expected = QStringLiteral("a list of points as [[x, y], [x, y], ...]");
    toml::array const *array = node.as_array();
    if (!array)
        return {};
    std::vector<BaVec2d<double>> points;
    for (toml::node const &item : *array) {
        BaVec2d<double> point;
        if (!readVector(item, &point))
            return {};
        points.push_back(point);
    }
    return Parse::createVec2dVector(parameter.key, points);
}

} // namespace

QString makeEntry(Parameter const &parameter, toml::node const &node, QString *expected)
{
    switch (parameter.kind) {
    case ParameterKind::Bool:
        *expected = QStringLiteral("true or false");
        return node.is_boolean() ? Parse::createBool(parameter.key, node.as_boolean()->get()) : QString();
    case ParameterKind::Number:
        return number(parameter, node, expected);
    case ParameterKind::Text:
        *expected = QStringLiteral("a text");
        return node.is_string() ? Parse::createString(parameter.key, textOf(node.as_string()->get())) : QString();
    case ParameterKind::Color:
        return color(parameter, node, expected);
    case ParameterKind::Vector:
        return vector(parameter, node, expected);
    case ParameterKind::SpaceVector:
        return spaceVector(parameter, node, expected);
    case ParameterKind::VectorList:
        return vectorList(parameter, node, expected);
    }
    return {};
}

} // namespace Zem::Zemfig
