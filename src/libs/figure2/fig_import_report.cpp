#include "ZemFig2ImportReport.h"

#include <ZemTranslate.h>

#include <algorithm>

namespace Zem::Fig2 {

std::size_t ImportReport::count(ImportEntry::Outcome outcome) const
{
    return static_cast<std::size_t>(std::count_if(
        entries_.begin(), entries_.end(), [outcome](ImportEntry const &entry) { return entry.outcome == outcome; }));
}

QString ImportReport::getOutcomeName(ImportEntry::Outcome outcome)
{
    switch (outcome) {
    case ImportEntry::KEPT:
        return translate("Figure_Import", "kept");
    case ImportEntry::APPROXIMATED:
        return translate("Figure_Import", "approximated");
    case ImportEntry::DROPPED:
        return translate("Figure_Import", "dropped");
    }
    return {};
}

} // namespace Zem::Fig2
