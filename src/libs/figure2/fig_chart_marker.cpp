#include "ZemFig2ChartMarker.h"

#include "ZemFig2Painter.h"
#include "fig_block.h"
#include "fig_chart_projection.h"
#include "fig_items.h"

#include <cmath>
#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int LIST_VERSION = 1;
constexpr unsigned int BASE_VERSION = 1;
constexpr unsigned int LINE_VERSION = 2; // 2: no values beside the x
constexpr unsigned int POINTS_VERSION = 1;
constexpr unsigned int NAMED_POINT_VERSION = 1;
constexpr unsigned int TYPES = 3;

template <class Archive, class List>
void typeFields(Archive &archive, List &types)
{
    auto count = static_cast<unsigned int>(types.size());
    archive.field(count);
    if constexpr (Archive::isReader) {
        for (unsigned int i = 0; i < count; ++i)
            archive.list(types.emplace_back(), TYPES);
    } else {
        for (ChartMarker::Type_t type : types)
            archive.list(type, TYPES);
    }
}

std::unique_ptr<ChartMarker> createMarker(ChartMarker::Type_t type)
{
    switch (type) {
    case ChartMarker::TYPE_LINE:
        return std::make_unique<LineChartMarker>();
    case ChartMarker::TYPE_POINTS:
        return std::make_unique<PointsChartMarker>();
    case ChartMarker::TYPE_NAMED_POINT:
        break;
    }
    return std::make_unique<NamedPointChartMarker>();
}

/// Draws within the plot rectangle as long as it lives.
class PlotClipping
{
public:
    PlotClipping(Painter *painter, BaVec2d<double> const &offset, BaVec2d<double> const &size, Rotation const &rotation)
        : painter_(painter)
    {
        painter_->setClipping(Rect(offset, size), rotation);
    }
    ~PlotClipping() { painter_->resetClipping(); }
    PlotClipping(PlotClipping const &) = delete;
    PlotClipping &operator=(PlotClipping const &) = delete;

private:
    Painter *painter_;
};

/// A solid symbol in its own colour.
void drawSolidSymbol(Painter *painter, BaVec2d<double> const &position, Symbol const &symbol, Rotation const &rotation)
{
    LineStyle const line(0.1, LineStyle::STYLE_FULL, symbol.getColor());
    painter->drawSymbol(position, symbol, line, FillStyle(symbol.getColor()), rotation);
}

} // namespace

ChartMarkerFrame::~ChartMarkerFrame() = default;

ChartMarker::~ChartMarker() = default;

void ChartMarker::load(IO::InStream *stream)
{
    // The object is of its type already.
    loadBlock(stream, BASE_VERSION, [](BlockReader &reader) { reader.drop<unsigned int>(); });
}

void ChartMarker::save(IO::OutStream *stream) const
{
    saveBlock(stream, BASE_VERSION, [this](auto &archive) { archive.list(type_, TYPES); });
}

void ChartMarker::save(IO::OutStream *stream, std::vector<ChartMarker *> const &markers)
{
    std::vector<Type_t> types;
    for (ChartMarker const *marker : markers)
        types.push_back(marker->getType());
    saveBlock(stream, LIST_VERSION, [&types](auto &archive) { typeFields(archive, types); });
    for (ChartMarker const *marker : markers)
        marker->save(stream);
}

void ChartMarker::load(IO::InStream *stream, std::vector<ChartMarker *> *markers)
{
    markers->clear();
    std::vector<Type_t> types;
    loadBlock(stream, LIST_VERSION, [&types](auto &archive) { typeFields(archive, types); });
    for (Type_t type : types) {
        std::unique_ptr<ChartMarker> marker = createMarker(type);
        marker->load(stream);
        markers->push_back(marker.get());
        marker.release();
    }
}

LineChartMarker *LineChartMarker::copy() const
{
    return new LineChartMarker(*this);
}

void LineChartMarker::draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
                           BaVec2d<double> const &size) const
{
    if (!chart->getShowCurrentStage())
        return;
    double const x = chart->getFigureCoordinates({x_, 0.0}).x;
    if (!std::isfinite(x))
        return;
    Rotation const rotation = chart->getRotation();
    PlotClipping const clipping(painter, offset, size, rotation);
    painter->drawLine({x, offset.y}, {x, offset.y + size.y}, chart->getCurrentStageStyle(), rotation);
}

void LineChartMarker::load(IO::InStream *stream)
{
    ChartMarker::load(stream);
    loadBlock(stream, LINE_VERSION, [this](BlockReader &reader) {
        reader.field(x_);
        std::vector<double> dropped;
        if (reader.version() == 1)
            blockList(reader, dropped);
    });
}

void LineChartMarker::save(IO::OutStream *stream) const
{
    ChartMarker::save(stream);
    saveBlock(stream, LINE_VERSION, [this](auto &archive) { archive.field(x_); });
}

PointsChartMarker::PointsChartMarker(std::vector<BaVec2d<double>> points)
    : ChartMarker(TYPE_POINTS), points_(std::move(points))
{
}

PointsChartMarker *PointsChartMarker::copy() const
{
    return new PointsChartMarker(*this);
}

void PointsChartMarker::draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
                             BaVec2d<double> const &size) const
{
    if (!chart->getShowPointMarkers())
        return;
    Rotation const rotation = chart->getRotation();
    PlotClipping const clipping(painter, offset, size, rotation);
    for (BaVec2d<double> const &point : points_) {
        BaVec2d<double> const place = chart->getFigureCoordinates(point);
        if (isOnPage(place))
            drawSolidSymbol(painter, place, chart->getPointMarkerSymbol(), rotation);
    }
}

void PointsChartMarker::load(IO::InStream *stream)
{
    ChartMarker::load(stream);
    loadBlock(stream, POINTS_VERSION, [this](auto &archive) { blockList(archive, points_); });
}

void PointsChartMarker::save(IO::OutStream *stream) const
{
    ChartMarker::save(stream);
    saveBlock(stream, POINTS_VERSION, [this](auto &archive) { blockList(archive, points_); });
}

NamedPointChartMarker *NamedPointChartMarker::copy() const
{
    return new NamedPointChartMarker(*this);
}

void NamedPointChartMarker::draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
                                 BaVec2d<double> const &size) const
{
    BaVec2d<double> const position = chart->getFigureCoordinates(point_);
    if (!isOnPage(position))
        return;
    Rotation const rotation = chart->getRotation();
    PlotClipping const clipping(painter, offset, size, rotation);
    drawSolidSymbol(painter, position, symbol_, rotation);
    if (name_.isEmpty())
        return;
    double const distance = symbol_.getSize() * 0.5;
    painter->drawText(position + BaVec2d<double>(distance, distance), symbol_.getFont(), name_, symbol_.getColor(),
                      rotation);
}

template <class Archive, class Self>
void NamedPointChartMarker::blockFields(Archive &archive, Self &self)
{
    archive.field(self.point_);
    archive.field(self.name_);
}

void NamedPointChartMarker::load(IO::InStream *stream)
{
    ChartMarker::load(stream);
    loadBlock(stream, NAMED_POINT_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    symbol_.load(stream);
}

void NamedPointChartMarker::save(IO::OutStream *stream) const
{
    ChartMarker::save(stream);
    saveBlock(stream, NAMED_POINT_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    symbol_.save(stream);
}

} // namespace Zem::Fig2
