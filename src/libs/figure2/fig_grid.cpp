#include "ZemFig2Grid.h"

#include "ZemFig2Axis.h"
#include "ZemFig2Painter.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TEXT_VERSION = 1;

/// Calls `drawAt` with the distance of each inner tick; the outermost lie on the border of the chart.
template <class DrawAt>
void forInnerTicks(Axis const &axis, DrawAt const &drawAt)
{
    std::vector<double> const &positions = axis.getTickPositions();
    for (std::size_t i = 1; i + 1 < positions.size(); ++i)
        drawAt(positions[i]);
}

} // namespace

void Grid::draw(Painter *painter, BaVec2d<double> const &origin, BaVec2d<double> const &size, Axis const *axisX,
                Axis const *axisY, Rotation const &rotation) const
{
    forInnerTicks(*axisX, [&](double position) {
        double const x = origin.x + position - axisX->getMargin();
        painter->drawLine({x, origin.y + size.y}, {x, origin.y}, lineStyle_, rotation);
    });
    forInnerTicks(*axisY, [&](double position) {
        double const y = origin.y + axisY->getLength() - position - axisY->getMargin();
        painter->drawLine({origin.x + size.x, y}, {origin.x, y}, lineStyle_, rotation);
    });
}

void Grid::save(IO::OutStream *stream) const
{
    lineStyle_.save(stream);
}

void Grid::load(IO::InStream *stream)
{
    lineStyle_.load(stream);
}

std::ostream &Grid::saveToStream(std::ostream &stream) const
{
    return saveText(stream, TEXT_VERSION, [this](TextWriter &writer) { writer.record(lineStyle_); });
}

std::istream &Grid::loadFromStream(std::istream &stream)
{
    loadText(stream, TEXT_VERSION, [this](TextReader &reader) { reader.record(lineStyle_); });
    return stream;
}

QString Grid::getParameterString(QString const &prefix) const
{
    return lineStyle_.getParameterString(parameterKey(prefix, PARAM_LINE_STYLE));
}

void Grid::createFromParameterString(QString &parameters, QString const &prefix)
{
    lineStyle_.createFromParameterString(parameters, parameterKey(prefix, PARAM_LINE_STYLE));
}

} // namespace Zem::Fig2
