#include "meas_field_paint.h"

#include "meas_point_grid.h"

#include <ZemFig2Transformation.h>
#include <ZemImage.h>
#include <ZemLegendHandler.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Measurement {

namespace {

constexpr Color NOTHING{0, 0, 0, 0};
constexpr unsigned char ALPHA = 160;

struct Corner
{
    BaVec2d<double> pixel;
    double value = 0.0;
    bool usable = false;
};

double crossed(BaVec2d<double> const &a, BaVec2d<double> const &b)
{
    return a.x * b.y - a.y * b.x;
}

/// The first pixel whose centre is not below `coordinate`, bounded by the picture.
unsigned int firstPixel(double coordinate, unsigned int size)
{
    return static_cast<unsigned int>(std::clamp(std::ceil(coordinate - 0.5), 0.0, static_cast<double>(size)));
}

class FieldPainter
{
public:
    FieldPainter(Legend2::LegendHandler const &colors, ImageColor *picture) : colors_(colors), picture_(picture) {}

    /// All pixels whose centres lie in the triangle.
    void paint(Corner const &a, Corner const &b, Corner const &c)
    {
        double const area = crossed(b.pixel - a.pixel, c.pixel - a.pixel);
        if (!(std::abs(area) > 1e-12)) { // no number where the corners are too far out
            return;
        }
        auto const [top, bottom] = std::minmax({a.pixel.y, b.pixel.y, c.pixel.y});
        auto const [left, right] = std::minmax({a.pixel.x, b.pixel.x, c.pixel.x});
        unsigned int const end = firstPixel(std::nextafter(right, INFINITY), picture_->getWidth());
        unsigned int const lastRow = firstPixel(std::nextafter(bottom, INFINITY), picture_->getHeight());
        for (unsigned int y = firstPixel(top, picture_->getHeight()); y < lastRow; ++y) {
            Color *const row = picture_->getRow(y);
            for (unsigned int x = firstPixel(left, picture_->getWidth()); x < end; ++x) {
                BaVec2d<double> const p{x + 0.5, y + 0.5};
                double const weightB = crossed(p - a.pixel, c.pixel - a.pixel) / area;
                double const weightC = crossed(b.pixel - a.pixel, p - a.pixel) / area;
                if (weightB >= 0.0 && weightC >= 0.0 && weightB + weightC <= 1.0) {
                    row[x] = colorOf(a.value + weightB * (b.value - a.value) + weightC * (c.value - a.value));
                }
            }
        }
    }

private:
    Color colorOf(double value) const
    {
        Color color = colors_.getColor(value, NOTHING);
        if (color.getAlpha() != 0) {
            color = Color(color.getRed(), color.getGreen(), color.getBlue(), ALPHA);
        }
        return color;
    }

    Legend2::LegendHandler const &colors_;
    ImageColor *picture_;
};

std::vector<Corner> cornersOf(PointField const &field, std::vector<BaVec3d<double>> const &places,
                              std::vector<double> const &values, Fig2::Transformation const &transformation)
{
    std::vector<Corner> corners(places.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        corners[i].value = values[i];
        corners[i].usable =
            field.valid[i] && !std::isnan(values[i]) && transformation.computeImagePoint(places[i], &corners[i].pixel);
    }
    return corners;
}

} // namespace

std::unique_ptr<ImageColor> paintField(PointField const &field, std::vector<BaVec3d<double>> const &places,
                                       std::vector<double> const &values, Fig2::Transformation const &transformation,
                                       Legend2::LegendHandler const &colors, unsigned int width, unsigned int height)
{
    std::optional<PointGrid> const grid = PointGrid::find(field.points);
    if (!grid || width == 0 || height == 0) {
        return nullptr;
    }
    auto picture = std::make_unique<ImageColor>(width, height);
    picture->setHasAlphaChannel(true);
    for (unsigned int y = 0; y < height; ++y) {
        std::fill_n(picture->getRow(y), width, NOTHING);
    }
    std::vector<Corner> const corners = cornersOf(field, places, values, transformation);
    FieldPainter painter(colors, picture.get());
    for (std::size_t row = 0; row + 1 < grid->rows(); ++row) {
        for (std::size_t column = 0; column + 1 < grid->columns(); ++column) {
            std::array const indices{grid->at(column, row), grid->at(column + 1, row), grid->at(column + 1, row + 1),
                                     grid->at(column, row + 1)};
            bool const whole = std::all_of(indices.begin(), indices.end(), [&](int index) {
                return index != PointGrid::NONE && corners[static_cast<std::size_t>(index)].usable;
            });
            if (whole) {
                auto const corner = [&](int i) { return corners[static_cast<std::size_t>(indices[std::size_t(i)])]; };
                painter.paint(corner(0), corner(1), corner(2));
                painter.paint(corner(0), corner(2), corner(3));
            }
        }
    }
    return picture;
}

} // namespace Zem::Measurement
