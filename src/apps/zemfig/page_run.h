// page_run.h: a page with the data and the stages that the user chose, for every verb that shows values.
#pragma once

#include "csv_options.h"
#include "page_source.h"

#include <ZemIdentifiers.h>

#include <memory>
#include <string>
#include <vector>

namespace Zem::Zemfig {

/// The options that name page, data and stages, until the verb runs.
struct PageArguments
{
    std::string page;
    std::string project;
    std::string data;
    std::string stage;
    CsvArguments csv;

    /// Adds them to a verb.
    void addTo(CLI::App *verb);
};

/// An open page over its data.
class PageRun
{
public:
    /// What is not chosen is taken from the page. Throws UsageError, InputError, ImportError, ProjectError.
    explicit PageRun(PageArguments const &arguments);

    PageDocument const &document() const { return document_; }
    /// The chosen ones; one without a number when the page has no data.
    std::vector<StageIdentifier> const &stages() const { return stages_; }
    /// Brings the page to a stage. Another stage is a forced update: no counter tells of it.
    Fig2::Figure *at(StageIdentifier const &stage);

private:
    std::unique_ptr<PageData> data_; ///< null for a page that brings its own; the figure looks at it and goes first
    PageDocument document_;
    std::vector<StageIdentifier> stages_;
};

} // namespace Zem::Zemfig
