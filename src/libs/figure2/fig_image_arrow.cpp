#include "fig_image_arrow.h"

#include "ZemFig2Tools.h"

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr double HEAD_WIDTHS = 5.0;               // length of a head in widths of its line
constexpr double LEAST_HEAD = 0.3;                // page millimetres
constexpr double HEAD_ANGLE = 0.3490658503988659; // 20 degrees

} // namespace

double arrowHeadLength(double lineWidth, double length)
{
    double const head = lineWidth * HEAD_WIDTHS;
    return head < LEAST_HEAD ? LEAST_HEAD : std::min(head, length);
}

BaVec2d<double> drawArrowHead(Painter *painter, BaVec2d<double> const &tip, BaVec2d<double> const &other, double length,
                              FillStyle const &fill, Rotation const &rotation, Polygon2d *head)
{
    BaVec2d<double> lineEnd;
    Tools::getArrowHead(tip, other, length, HEAD_ANGLE, head, &lineEnd);
    painter->drawPolygon(*head, LineStyle::null, fill, rotation, true);
    return lineEnd;
}

} // namespace Zem::Fig2
