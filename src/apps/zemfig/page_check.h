// page_check.h: what a page asks of its data that these do not have.
#pragma once

#include "page_source.h"

namespace Zem::Zemfig {

/// Adds what is missing or out of place to the problems of the document, which has a figure. The figure looks at the
/// data from then on, at their last stage.
void checkAgainst(PageData &data, QString const &fileName, PageDocument *document);

} // namespace Zem::Zemfig
