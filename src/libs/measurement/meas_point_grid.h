// meas_point_grid.h: points in rows and columns.
#pragma once

#include <ZemVec.h>

#include <optional>
#include <vector>

namespace Zem::Measurement {

/// The places of points that an analysis with fixed steps has left; some may be missing.
class PointGrid
{
public:
    /// Stands where there is no point.
    static constexpr int NONE = -1;

    /// By x and y. None when the points lie in less than two rows or columns, or too loosely to be a grid.
    static std::optional<PointGrid> find(std::vector<BaVec3d<double>> const &points);

    std::size_t columns() const { return columns_; }
    std::size_t rows() const { return rows_; }
    /// Index of the point there; of two at one place the later one.
    int at(std::size_t column, std::size_t row) const { return indices_[row * columns_ + column]; }

private:
    PointGrid(std::size_t columns, std::size_t rows) : columns_(columns), rows_(rows), indices_(columns * rows, NONE) {}

    std::size_t columns_;
    std::size_t rows_;
    std::vector<int> indices_;
};

} // namespace Zem::Measurement
