// placement_options.h: the options that say how labels are arranged, for every verb that does so.
#pragma once

#include "page_placement.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace Zem::Zemfig {

/// The options as the user gave them, until the verb runs.
struct PlacementArguments
{
    std::string where;
    Placement distances;

    /// Adds the options to a verb. Without --place nothing is arranged.
    void addTo(CLI::App *verb);
    std::optional<Placement> placement() const;
};

} // namespace Zem::Zemfig
