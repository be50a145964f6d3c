// The samples of curves that legends of charts show.
#include "ZemFig2Painter.h"

#include "ZemFig2ChartParameters.h"

#include <ZemSpline.h>

#include <algorithm>
#include <array>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int CURVE_POINTS = 30;

/// Draws into one box. Places within it are shares of its width and height, from its top left corner.
class Sample
{
public:
    Sample(Painter *painter, BaVec2d<double> const &position, BaVec2d<double> const &size,
           ChartParameters const &parameters, Rotation const &rotation)
        : painter_(painter), position_(position), size_(size), rotation_(rotation), line_(parameters.getLineStyle()),
          fill_(parameters.getFillStyle()), symbol_(parameters.getSymbol()), symbolLine_(line_), symbolFill_(fill_)
    {
        line_.setWidth(limited(line_.getWidth(), size.y / 10.0, size.y / 3.0));
        symbol_.setSize(limited(symbol_.getSize(), size.y / 3.0, size.y));
        symbolLine_ = line_;
        symbolLine_.setColor(symbol_.getColor());
        symbolFill_.setColor(symbol_.getColor());
    }

    void draw(ChartParameters::Style_t style) const;

private:
    static double limited(double value, double least, double greatest)
    {
        return std::min(std::max(value, least), greatest);
    }
    BaVec2d<double> at(double x, double y) const { return {position_.x + size_.x * x, position_.y + size_.y * y}; }
    void line(BaVec2d<double> const &from, BaVec2d<double> const &to) const
    {
        painter_->drawLine(from, to, line_, rotation_);
    }
    void symbol(BaVec2d<double> const &place) const
    {
        painter_->drawSymbol(place, symbol_, symbolLine_, symbolFill_, rotation_);
    }
    void bar(double left, double height) const;
    void curve() const;
    void spike(double x, double y) const;

    Painter *painter_;
    BaVec2d<double> const position_;
    BaVec2d<double> const size_;
    Rotation const &rotation_;
    LineStyle line_;
    FillStyle fill_;
    Symbol symbol_;
    LineStyle symbolLine_;
    FillStyle symbolFill_;
};

void Sample::draw(ChartParameters::Style_t style) const
{
    switch (style) {
    case ChartParameters::STYLE_LINE:
        line(at(0.1, 0.5), at(0.9, 0.5));
        symbol(at(0.5, 0.5));
        break;
    case ChartParameters::STYLE_BARS:
        bar(1.0 / 10.0, 1.0 / 3.0);
        bar(4.0 / 10.0, 1.0);
        bar(7.0 / 10.0, 2.0 / 3.0);
        break;
    case ChartParameters::STYLE_POINTS:
        symbol(at(0.5, 0.5));
        break;
    case ChartParameters::STYLE_SPLINE:
        curve();
        break;
    case ChartParameters::STYLE_SPIKES:
        spike(1.0 / 5.0, 1.0 / 5.0);
        spike(1.0 / 2.0, 4.0 / 5.0);
        spike(4.0 / 5.0, 3.0 / 5.0);
        break;
    case ChartParameters::STYLE_X_MARKER:
        for (double y : {1.0 / 5.0, 1.0 / 2.0, 4.0 / 5.0})
            line(at(0.0, y), at(1.0, y));
        symbol(at(0.5, 0.5));
        break;
    case ChartParameters::STYLE_Y_MARKER:
        for (double x : {1.0 / 4.0, 1.0 / 2.0, 3.0 / 4.0})
            line(at(x, 1.0), at(x, 0.0));
        symbol(at(0.5, 0.5));
        break;
    }
}

/// On the base line, which is the lower edge of the box.
void Sample::bar(double left, double height) const
{
    painter_->drawRect(at(left, 1.0 - height), {size_.x * 2.0 / 10.0, size_.y * height}, line_, fill_, rotation_);
}

void Sample::curve() const
{
    std::array<BaVec2d<double>, 3> const base{at(0.1, 0.9), at(0.5, 0.1), at(0.9, 0.9)};
    Spline spline;
    for (BaVec2d<double> const &point : base)
        spline.appendPoint({point.x, point.y, 0.0});
    std::vector<BaVec3d<double>> points;
    spline.interpolatePoints(0.0, 1.0, CURVE_POINTS, &points);
    for (std::size_t i = 1; i < points.size(); ++i)
        line({points[i - 1].x, points[i - 1].y}, {points[i].x, points[i].y});
    for (BaVec2d<double> const &point : base)
        symbol(point);
}

void Sample::spike(double x, double y) const
{
    line(at(x, 1.0), at(x, y));
    symbol(at(x, y));
}

} // namespace

void Painter::drawVisualisation(BaVec2d<double> const &position, BaVec2d<double> const &size,
                                ChartParameters const &parameters, Rotation const &rotation)
{
    Sample(this, position, size, parameters, rotation).draw(parameters.getStyle());
}

} // namespace Zem::Fig2
