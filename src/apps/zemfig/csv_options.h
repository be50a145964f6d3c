// csv_options.h: the options that say how a CSV file is to be read, for every verb that reads one.
#pragma once

#include "page_source.h"

#include <CLI/CLI.hpp>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Zem::Zemfig {

/// The options as the user gave them, until the verb runs.
struct CsvArguments
{
    std::map<std::string, std::string> values;
    std::vector<std::string> missing;
    std::vector<std::string> units;

    /// Adds the options to a verb: all of them, or those for reading a file apart from what its rows stand for.
    void addTo(CLI::App *verb);
    void addReadingTo(CLI::App *verb);
    /// Column and unit of each --unit. Throws UsageError for one that is no NAME=UNIT.
    std::vector<std::pair<QString, QString>> unitPairs() const;
    /// Hands them over. Throws UsageError for a value that does not fit.
    void apply(DataChoice *choice) const;
    /// The same to a table of a page. Throws UsageError for more than one text for missing values.
    void addTo(SourceTable *source) const;
};

} // namespace Zem::Zemfig
