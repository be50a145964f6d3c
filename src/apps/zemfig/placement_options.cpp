#include "placement_options.h"

namespace Zem::Zemfig {

namespace {

constexpr double LARGEST_DISTANCE = 1000.0;

} // namespace

void PlacementArguments::addTo(CLI::App *verb)
{
    std::string const group = "Arranging the labels that point at something";
    verb->add_option("--place", where, "border: along the page border; element: next to their points")
        ->group(group)
        ->check(CLI::IsMember({"border", "element"}));
    verb->add_option("--edge-distance", distances.edgeDistance, "between the page border and the labels, in mm")
        ->group(group)
        ->capture_default_str()
        ->check(CLI::Range(0.0, LARGEST_DISTANCE));
    verb->add_option("--box-distance", distances.boxDistance, "kept free around each label, in mm")
        ->group(group)
        ->capture_default_str()
        ->check(CLI::Range(0.0, LARGEST_DISTANCE));
}

std::optional<Placement> PlacementArguments::placement() const
{
    if (where.empty())
        return std::nullopt;
    Placement placement = distances;
    placement.where = where == "border" ? Placement::AT_BORDER : Placement::AT_ELEMENT;
    return placement;
}

} // namespace Zem::Zemfig
