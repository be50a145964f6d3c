// ZemMeasNamedPoint.h: points of curves that charts mark with a name.
#pragma once

#include <ZemFig2Symbol.h>

#include <QtCore/QString>

namespace Zem::Measurement {

/// Which point of a curve is meant. Gaps are none; of several that are equally high or low it is the first.
enum class PointPlace_t {
    MAXIMUM,
    MINIMUM,
    FIRST,
    LAST,
    NUMBER ///< that of a stage or row
};

/// Wherever a chart shows the curve, the point is marked and its name stands beside it. A plain value;
/// several threads may read it.
struct NamedPoint
{
    /// A circle of 2 mm and a font of 8 points.
    NamedPoint();

    QString name;  ///< empty for the symbol alone
    QString token; ///< token or series that the curve shows along y
    PointPlace_t place = PointPlace_t::MAXIMUM;
    unsigned int number = 0; ///< for NUMBER: the stage of a token, the row of a series counted from 1
    Fig2::Symbol symbol;     ///< its colour and font are also those of the name

    bool operator==(NamedPoint const &) const = default;
};

} // namespace Zem::Measurement
