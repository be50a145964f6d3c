// page_facts.h: what there is to tell of pages, of the data that they bring along, and of projects.
#pragma once

#include "facts.h"
#include "page_document.h"

#include <ZemFig2SnapshotData.h>
#include <ZemMeasProject.h>

namespace Zem::Zemfig {

/// Size, elements by type, and the type hints of a template.
void addPageFacts(Fig2::Figure const &figure, Facts *facts);
/// Values, pictures, charts and snapshots with their sizes. `tokens` may be null.
void addTokenFacts(Fig2::FigureTokenInterface const *tokens, Facts *facts);
/// Stage and colour scale.
void addSnapshotFacts(Fig2::SnapshotData const &snapshot, Facts *facts);
/// Where a page document takes its data from.
void addSourceFacts(PageDocument const &document, Facts *facts);
/// Stages, tokens, series, views, sets of points and colour scale.
void addProjectFacts(Measurement::Project const &project, Facts *facts);

} // namespace Zem::Zemfig
