#include "ZemFig2ElementAttributes.h"

#include <algorithm>

namespace Zem::Fig2 {

ElementAttributes::ElementAttributes(bool filtered) : filtered_(filtered)
{
    if (!filtered)
        used_ = {ALIGNMENT, ANGLE, BACKGROUND, BORDER, CONNECTOR, FONT, FONT_COLOR, GEOMETRY, MARGIN, SPACING};
}

bool ElementAttributes::hasCommonAttributes(ElementAttributes const &other) const
{
    return std::any_of(used_.begin(), used_.end(), [&other](QString const &name) { return other.isUsed(name); });
}

} // namespace Zem::Fig2
