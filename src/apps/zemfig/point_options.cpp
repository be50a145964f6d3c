#include "point_options.h"

#include "page_source.h"

namespace Zem::Zemfig {

namespace {

constexpr char const *POINT_GROUP = "Points (columns that are not given are told by their names)";

struct PointOptionText
{
    char const *key;
    char const *help;
};

constexpr PointOptionText COLUMN_OPTIONS[] = {
    {"x", "the column of the places along the rows of the picture"},
    {"y", "the column of the places along its columns"},
    {"z", "the column of the depth"},
    {"dx", "the column of the vectors along x"},
    {"dy", "the column of the vectors along y"},
    {"dz", "the column of the vectors along z"},
    {"id", "the column of the numbers of the points"},
    {"valid", "the column that is above 0 for points that count"},
    {"value", "the column that colours the vectors; else their length does"},
};

} // namespace

void PointArguments::addTo(CLI::App *verb)
{
    for (PointOptionText const &option : COLUMN_OPTIONS)
        verb->add_option(std::string("--") + option.key, columns[option.key], option.help)->group(POINT_GROUP);
    verb->add_flag("--moved", moved, "the picture shows the points where their vectors have taken them")
        ->group(POINT_GROUP);
    verb->add_flag("--painted", painted, "paint the values between the points, which lie on a grid")
        ->group(POINT_GROUP);
}

void PointArguments::apply(Measurement::PointOptions *options) const
{
    for (auto const &[key, column] : columns) {
        if (!column.empty())
            setPointOption(options, QString::fromStdString(key), QString::fromStdString(column));
    }
    options->moved = moved;
    options->painted = painted;
}

std::map<QString, QVariant> PointArguments::values() const
{
    std::map<QString, QVariant> values;
    for (auto const &[key, column] : columns) {
        if (!column.empty())
            values[QString::fromStdString(key)] = QString::fromStdString(column);
    }
    if (moved)
        values[QStringLiteral("moved")] = true;
    if (painted)
        values[QStringLiteral("painted")] = true;
    return values;
}

} // namespace Zem::Zemfig
