// point_options.h: the options that say what the columns of a table of points are, for every verb that reads one.
#pragma once

#include <ZemMeasView.h>

#include <CLI/CLI.hpp>

#include <map>
#include <string>

namespace Zem::Zemfig {

/// The options as the user gave them, until the verb runs.
struct PointArguments
{
    std::map<std::string, std::string> columns;
    bool moved = false;
    bool painted = false;

    void addTo(CLI::App *verb);
    /// Hands them over.
    void apply(Measurement::PointOptions *options) const;
    /// What was given, by the keys of a page document.
    std::map<QString, QVariant> values() const;
};

} // namespace Zem::Zemfig
