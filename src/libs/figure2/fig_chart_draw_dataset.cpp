// The painting of the curves of a chart.
#include "ZemFig2Chart.h"

#include "ZemFig2Painter.h"
#include "fig_chart_projection.h"

#include <ZemLegendHandler.h>
#include <ZemSpline.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr Color FALLBACK_COLOR{0, 0, 0};
constexpr double OUTLINE_WIDTH = 0.1;
constexpr double LEAST_BAR_HEIGHT = 0.1;
constexpr double LONE_BAR_SHARE = 1.0 / 20.0; ///< of the plot, half the width of a bar without neighbours
constexpr double BAR_GAP_SHARE = 1.0 / 10.0;  ///< of the distance of two bars, on each side
constexpr unsigned int SPLINE_POINTS_PER_POINT = 10;
constexpr unsigned int MOST_DIGITS = 99; ///< a file may ask for any number

/// A bar by its top, in figure coordinates.
struct Bar
{
    double x;
    double y;
    double value;
};

} // namespace

/// Draws points of one dataset. What does not change from point to point is looked up at construction.
class ChartBase::DatasetPainter
{
public:
    DatasetPainter(ChartBase const &chart, ChartDataset const &dataset, Painter *painter);

    void draw(unsigned int first, unsigned int count);

private:
    using Point = ChartDataset::Points::const_iterator;

    void drawLine();
    void drawRun(std::vector<BaVec2d<double>> run);
    void drawBars();
    void drawBar(double left, double right, Bar const &bar, double height);
    void drawSpline();
    void drawSymbols(unsigned int first, unsigned int count);
    void drawSpikes(unsigned int first, unsigned int count);
    void drawXMarkers(unsigned int first, unsigned int count);
    void drawYMarkers(unsigned int first, unsigned int count);
    template <class Stroke>
    void drawStrokes(unsigned int first, unsigned int count, bool validOnly, Stroke const &stroke);

    template <class Visit>
    void visitPoints(unsigned int first, unsigned int count, Visit const &visit);
    bool isSymbolDue(unsigned int index) const { return index % symbolPeriod_ == 0; }
    Color colorOf(double value) const { return handler_->getColor(value, FALLBACK_COLOR); }
    void drawSymbolAt(BaVec2d<double> const &place, double value);

    ChartBase const &chart_;
    ChartDataset const &dataset_;
    ChartParameters const &parameters_;
    Painter *painter_;
    Rotation const rotation_;
    ChartProjection const project_;
    Symbol const &symbol_;
    std::uint64_t const symbolPeriod_;
    LineStyle line_;
    FillStyle fill_;
    LineStyle symbolLine_;
    FillStyle symbolFill_;
    std::optional<Legend2::LegendHandler> handler_; ///< when values choose the colours
};

ChartBase::DatasetPainter::DatasetPainter(ChartBase const &chart, ChartDataset const &dataset, Painter *painter)
    : chart_(chart), dataset_(dataset), parameters_(chart.parametersOf(&dataset)), painter_(painter), rotation_(&chart),
      project_(chart.getProjection()), symbol_(parameters_.getSymbol()),
      symbolPeriod_(std::uint64_t(symbol_.getSpacing()) + 1), line_(parameters_.getLineStyle()),
      fill_(parameters_.getFillStyle()), symbolLine_(OUTLINE_WIDTH, LineStyle::STYLE_NONE, symbol_.getColor()),
      symbolFill_(symbol_.getColor())
{
    if (!parameters_.getComputeColor())
        return;
    handler_.emplace(&chart.legend_, &chart.legendData_);
    handler_->setToleranceMode(false);
}

void ChartBase::DatasetPainter::draw(unsigned int first, unsigned int count)
{
    switch (parameters_.getStyle()) {
    case ChartParameters::STYLE_LINE:
        drawLine();
        break;
    case ChartParameters::STYLE_BARS:
        drawBars();
        break;
    case ChartParameters::STYLE_POINTS:
        drawSymbols(first, count);
        break;
    case ChartParameters::STYLE_SPLINE:
        drawSpline();
        break;
    case ChartParameters::STYLE_SPIKES:
        drawSpikes(first, count);
        break;
    case ChartParameters::STYLE_X_MARKER:
        drawXMarkers(first, count);
        break;
    case ChartParameters::STYLE_Y_MARKER:
        drawYMarkers(first, count);
        break;
    }
}

/// Calls `visit` with index, point and place of at most `count` points from `first` on.
template <class Visit>
void ChartBase::DatasetPainter::visitPoints(unsigned int first, unsigned int count, Visit const &visit)
{
    unsigned int const end = first + std::min(count, dataset_.getNumberOfPoints() - first);
    Point point = dataset_.getPointBegin(first);
    for (unsigned int i = first; i < end; ++i, ++point)
        visit(i, *point, project_(point->point));
}

void ChartBase::DatasetPainter::drawLine()
{
    // A curve without gaps is one run: its places are written once, and handed over without a copy.
    std::vector<BaVec2d<double>> run;
    run.reserve(dataset_.getNumberOfPoints());
    unsigned int drawable = 0;
    BaVec2d<double> last;
    visitPoints(0, dataset_.getNumberOfPoints(), [&](unsigned int, ChartPoint const &point, auto const &place) {
        if (point.isValid() && isOnPage(place)) {
            run.push_back(place);
            return;
        }
        if (run.empty())
            return;
        drawable += static_cast<unsigned int>(run.size());
        last = run.back();
        drawRun(run);
        run.clear();
    });
    drawable += static_cast<unsigned int>(run.size());
    // A lone measurement can be seen from one side of the plot to the other.
    if (drawable == 1) {
        double const y = run.empty() ? last.y : run.back().y;
        painter_->drawLine({project_.plotOffset.x, y}, {project_.plotOffset.x + project_.plotSize.x, y}, line_, rotation_);
    } else {
        drawRun(std::move(run));
    }
    drawSymbols(0, dataset_.getNumberOfPoints());
}

/// A polyline between two gaps; a single point makes none.
void ChartBase::DatasetPainter::drawRun(std::vector<BaVec2d<double>> run)
{
    if (run.size() > 1)
        painter_->drawPolygon(Polygon2d(std::move(run), false), line_, FillStyle::null, rotation_, false);
}

void ChartBase::DatasetPainter::drawBars()
{
    std::vector<Bar> bars;
    visitPoints(0, dataset_.getNumberOfPoints(), [&](unsigned int, ChartPoint const &point, auto const &place) {
        if (point.isValid() && isOnPage(place))
            bars.push_back({place.x, place.y, point.value});
    });
    std::stable_sort(bars.begin(), bars.end(), [](Bar const &a, Bar const &b) { return a.x < b.x; });
    double const base = project_({0.0, 0.0}).y;
    if (bars.size() == 1) {
        // A flat mark, whatever its value: there is no neighbour to compare it with.
        double const half = project_.plotSize.x * LONE_BAR_SHARE;
        drawBar(bars[0].x - half, bars[0].x + half, {bars[0].x, bars[0].y + LEAST_BAR_HEIGHT, bars[0].value},
                -LEAST_BAR_HEIGHT);
        return;
    }
    for (std::size_t i = 0; i < bars.size(); ++i) {
        Bar const &bar = bars[i];
        double const gapLeft = i > 0 ? bar.x - bars[i - 1].x : bars[1].x - bar.x;
        double const gapRight = i + 1 < bars.size() ? bars[i + 1].x - bar.x : gapLeft;
        double const left = bar.x - gapLeft * 0.5;
        double const right = bar.x + gapRight * 0.5;
        double const shrink = (right - left) * BAR_GAP_SHARE;
        bool const visible = std::abs(base - bar.y) >= LEAST_BAR_HEIGHT;
        drawBar(left + shrink, right - shrink, bar, visible ? base - bar.y : LEAST_BAR_HEIGHT);
    }
}

void ChartBase::DatasetPainter::drawBar(double left, double right, Bar const &bar, double height)
{
    if (handler_)
        fill_.setColor(colorOf(bar.value));
    painter_->drawRect({left, bar.y}, {right - left, height}, line_, fill_, rotation_);
}

void ChartBase::DatasetPainter::drawSpline()
{
    if (parameters_.getNumberOfBasePoints() != 0) {
        Spline spline;
        visitPoints(0, dataset_.getNumberOfPoints(), [&](unsigned int, ChartPoint const &point, auto const &place) {
            if (point.isValid() && isOnPage(place))
                spline.appendPoint({place.x, place.y, 0.0});
        });
        unsigned int const points = spline.getNumberOfPoints();
        std::vector<BaVec3d<double>> curve;
        if (points > 1)
            spline.interpolatePoints(0.0, 1.0, SPLINE_POINTS_PER_POINT * points, &curve);
        for (std::size_t i = 1; i < curve.size(); ++i)
            painter_->drawLine({curve[i - 1].x, curve[i - 1].y}, {curve[i].x, curve[i].y}, line_, rotation_);
    }
    drawSymbols(0, dataset_.getNumberOfPoints());
}

void ChartBase::DatasetPainter::drawSymbols(unsigned int first, unsigned int count)
{
    if (symbol_.getType() == Symbol::TYPE_NONE)
        return;
    visitPoints(first, count, [&](unsigned int i, ChartPoint const &point, auto const &place) {
        if (point.isValid() && isSymbolDue(i) && isOnPage(place))
            drawSymbolAt(place, point.value);
    });
}

void ChartBase::DatasetPainter::drawSymbolAt(BaVec2d<double> const &place, double value)
{
    if (handler_)
        symbolFill_.setColor(colorOf(value));
    chart_.drawSymbol(painter_, place, value, symbol_, symbolLine_, symbolFill_, rotation_);
}

/// A line for each point, which `stroke` draws, and a symbol on it.
template <class Stroke>
void ChartBase::DatasetPainter::drawStrokes(unsigned int first, unsigned int count, bool validOnly,
                                            Stroke const &stroke)
{
    bool const hasSymbol = symbol_.getType() != Symbol::TYPE_NONE;
    visitPoints(first, count, [&](unsigned int i, ChartPoint const &point, auto const &place) {
        if (!isSymbolDue(i) || (validOnly && !point.isValid()) || !isOnPage(place))
            return;
        if (handler_)
            line_.setColor(colorOf(point.value));
        stroke(point, place);
        if (hasSymbol)
            drawSymbolAt(place, point.value);
    });
}

void ChartBase::DatasetPainter::drawSpikes(unsigned int first, unsigned int count)
{
    drawStrokes(first, count, true, [this](ChartPoint const &point, BaVec2d<double> const &place) {
        painter_->drawLine(place, project_({point.point.x, 0.0}), line_, rotation_);
    });
}

// Markers stand for one coordinate. The other may be missing: its place is then that of the limit.

void ChartBase::DatasetPainter::drawXMarkers(unsigned int first, unsigned int count)
{
    double const left = project_.plotOffset.x;
    double const right = left + project_.plotSize.x;
    drawStrokes(first, count, false, [this, left, right](ChartPoint const &, BaVec2d<double> const &place) {
        painter_->drawLine({left, place.y}, {right, place.y}, line_, rotation_);
    });
}

void ChartBase::DatasetPainter::drawYMarkers(unsigned int first, unsigned int count)
{
    double const top = project_.plotOffset.y;
    double const bottom = top + project_.plotSize.y;
    drawStrokes(first, count, false, [this, top, bottom](ChartPoint const &, BaVec2d<double> const &place) {
        painter_->drawLine({place.x, top}, {place.x, bottom}, line_, rotation_);
    });
}

void ChartBase::drawDataset(ChartDataset const &dataset, Painter *painter, unsigned int first, unsigned int count) const
{
    if (first >= dataset.getNumberOfPoints())
        return;
    BaVec2d<double> size;
    BaVec2d<double> offset;
    getSizeAndOffset(&size, &offset);
    painter->setClipping(Rect(offset, size), Rotation(this));
    DatasetPainter(*this, dataset, painter).draw(first, count);
    painter->resetClipping();
}

void ChartBase::drawSymbol(Painter *painter, BaVec2d<double> const &position, double value, Symbol const &symbol,
                           LineStyle const &line, FillStyle const &fill, Rotation const &rotation) const
{
    painter->drawSymbol(position, symbol, line, fill, rotation);
    if (!symbol.getShowValue())
        return;
    double const distance = symbol.getSize() * 0.5;
    QString const text =
        QStringLiteral("%1").arg(value, 0, 'f', static_cast<int>(std::min(symbol.getDigits(), MOST_DIGITS)));
    painter->drawText(position + BaVec2d<double>(distance, distance), symbol.getFont(), text, symbol.getColor(),
                      rotation);
}

} // namespace Zem::Fig2
