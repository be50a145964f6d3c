// page_placement.h: arranging the labels of a page that point at something.
#pragma once

#include <ZemFig2Figure.h>

namespace Zem::Zemfig {

/// How labels are arranged; lengths are page millimetres.
struct Placement
{
    enum Where_t {
        AT_BORDER, ///< along the page border
        AT_ELEMENT ///< next to what they point at
    };

    Where_t where = AT_BORDER;
    double edgeDistance = 5.0; ///< from the page border to the labels
    double boxDistance = 1.0;  ///< kept free around each label
};

/// Gives every visible label that points at a place of the page (a connector point, or an element that it is connected
/// to) a new origin. The other visible elements stay, and their covered rectangles with the box distance around them
/// are kept clear, except
/// - a background: an element that covers the page within the edge distance;
/// - next to their points, an element that one of the labels points into: it is what they annotate.
///
/// The figure must be up to date for the stage, and is afterwards. Returns how many labels were arranged. Throws
/// UsageError when the edges leave no room.
int arrangeLabels(Fig2::Figure *figure, StageIdentifier const &stage, Placement const &placement);

} // namespace Zem::Zemfig
