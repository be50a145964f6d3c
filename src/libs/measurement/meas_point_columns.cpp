#include <ZemMeasView.h>

#include <ZemParse.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace Zem::Measurement {

namespace {

struct Role
{
    char const *key;
    QString PointColumns::*column;
    std::initializer_list<char const *> names; ///< as files have them, in small letters and without blanks
};

Role const ROLES[] = {
    {"x", &PointColumns::x, {"x", "coordinatex", "xcoordinate", "positionx", "xposition", "posx", "xpos"}},
    {"y", &PointColumns::y, {"y", "coordinatey", "ycoordinate", "positiony", "yposition", "posy", "ypos"}},
    {"z", &PointColumns::z, {"z", "coordinatez", "zcoordinate", "positionz", "zposition", "posz", "zpos"}},
    {"dx", &PointColumns::dx, {"dx", "u", "displacementx", "xdisplacement", "velocityx", "vx"}},
    {"dy", &PointColumns::dy, {"dy", "v", "displacementy", "ydisplacement", "velocityy", "vy"}},
    {"dz", &PointColumns::dz, {"dz", "w", "displacementz", "zdisplacement", "velocityz", "vz"}},
    {"id", &PointColumns::id, {"id", "pointid", "point", "subsetid"}},
    {"valid", &PointColumns::valid, {"valid", "chc"}},
    {"value", &PointColumns::value, {}},
};

QString plainName(QString const &name)
{
    QString plain;
    std::copy_if(name.begin(), name.end(), std::back_inserter(plain), [](QChar c) { return c.isLetterOrNumber(); });
    return plain.toLower();
}

bool holdsNumbers(CsvColumn const &column)
{
    return column.type == ColumnType_t::NUMBER || column.type == ColumnType_t::INTEGER;
}

PointColumns fromOrder(CsvTable const &table)
{
    PointColumns columns;
    constexpr std::array<QString PointColumns::*, 4> ORDER{&PointColumns::x, &PointColumns::y, &PointColumns::dx,
                                                           &PointColumns::dy};
    if (table.columns.size() < ORDER.size() ||
        !std::all_of(table.columns.begin(), table.columns.begin() + ORDER.size(), holdsNumbers)) {
        return columns;
    }
    for (std::size_t i = 0; i < ORDER.size(); ++i) {
        columns.*ORDER[i] = table.columns[i].name;
    }
    return columns;
}

} // namespace

PointColumns detectPointColumns(CsvTable const &table)
{
    if (table.used.headerRow == false && table.used.columnNames.isEmpty()) {
        return fromOrder(table);
    }
    PointColumns columns;
    for (CsvColumn const &column : table.columns) {
        QString const name = plainName(column.name);
        for (Role const &role : ROLES) {
            bool const fits = std::any_of(role.names.begin(), role.names.end(),
                                          [&](char const *known) { return name == QLatin1String(known); });
            if (fits && holdsNumbers(column) && (columns.*role.column).isEmpty()) {
                columns.*role.column = column.name;
            }
        }
    }
    return columns;
}

QString PointColumns::getParameterString() const
{
    QString parameters;
    for (Role const &role : ROLES) {
        if (!(this->*role.column).isEmpty()) {
            parameters += Parse::createString(QLatin1String(role.key), this->*role.column);
        }
    }
    return parameters;
}

void PointColumns::createFromParameterString(QString &parameters)
{
    QString rest = parameters;
    PointColumns read;
    for (Role const &role : ROLES) {
        QLatin1String const key(role.key);
        if (Parse::parameterExists(rest, key)) {
            read.*role.column = Parse::getString(rest, key);
        }
    }
    *this = read;
    parameters = rest;
}

} // namespace Zem::Measurement
