// figqt_dashes.h: cuts lines into dashes.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>

#include <functional>
#include <span>
#include <vector>

namespace Zem::Fig2Qt {

/// Hands the dashes of one line, lengths of dash and gap in turn, to `paint` one after the other. What of the line lies
/// outside `visible` counts for the lengths but is not cut, so that the time does not follow how far away it leads. A
/// pattern without length is a full line.
void cutIntoDashes(std::span<QPointF const> points, bool closed, std::vector<double> const &pattern,
                   QRectF const &visible, std::function<void(std::span<QPointF const>)> const &paint);

} // namespace Zem::Fig2Qt
