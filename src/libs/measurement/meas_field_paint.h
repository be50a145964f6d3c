// meas_field_paint.h: values of points painted between them.
#pragma once

#include <ZemMeasView.h>

#include <memory>

namespace Zem {
class ImageColor;
}
namespace Zem::Legend2 {
class LegendHandler;
}
namespace Zem::Fig2 {
class Transformation;
}

namespace Zem::Measurement {

/// Paints `values` (by point of the field; NaN for none) over the cells of the field's grid all of whose corners are
/// valid, have a value and an image; between them the value is linear in each half of a cell. The points are at
/// `places`. Half transparent where painted, transparent elsewhere. Null when the points lie on no grid.
std::unique_ptr<ImageColor> paintField(PointField const &field, std::vector<BaVec3d<double>> const &places,
                                       std::vector<double> const &values, Fig2::Transformation const &transformation,
                                       Legend2::LegendHandler const &colors, unsigned int width, unsigned int height);

} // namespace Zem::Measurement
