// The one place that knows every concrete element.
#include "ZemFig2Element.h"

#include "ZemFig2Chart.h"
#include "ZemFig2ChartLegend.h"
#include "ZemFig2Group.h"
#include "ZemFig2Image.h"
#include "ZemFig2Label.h"
#include "ZemFig2Legend.h"
#include "ZemFig2Line.h"
#include "ZemFig2Logo.h"
#include "ZemFig2Polygon.h"
#include "ZemFig2Rectangle.h"
#include "ZemFig2SnapshotFrame.h"

#include <ZemError.h>

namespace Zem::Fig2 {

Element *Element::create(Type_t type)
{
    switch (type) {
    case LINE:
        return new Line;
    case RECTANGLE:
        return new Rectangle;
    case ELLIPSE:
        return new Ellipse;
    case POLYGON:
        return new Polygon;
    case LABEL:
        return new Label;
    case CHART:
        return new Chart;
    case GENERIC_CHART:
        return new GenericChart;
    case LEGEND:
        return new Legend;
    case CHART_LEGEND:
        return new ChartLegend;
    case IMAGE:
        return new Image;
    case LOGO:
        return new Logo;
    case GROUP:
        return new Group;
    case IMAGE_LABEL:
        throw ProgError("Zem::Fig2::Element::create", "fig_element", __LINE__,
                        "Image labels cannot be created this way");
    case SNAPSHOT:
        return new Snapshot;
    case SNAPSHOT_FRAME:
        return new SnapshotFrame;
    }
    return nullptr;
}

} // namespace Zem::Fig2
