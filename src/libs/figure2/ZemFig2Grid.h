// ZemFig2Grid.h: Grid, the lines that continue the ticks of two axes across a chart.
// Layer: services. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2LineStyle.h"

#include <ZemStream.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <iosfwd>

namespace Zem::Fig2 {

class Axis;
class Painter;
class Rotation;

/// The look of the lines. A plain value.
class Grid
{
public:
    static constexpr QLatin1StringView PARAM_LINE_STYLE{"line_style"};

    LineStyle const &getLineStyle() const { return lineStyle_; }
    void setLineStyle(LineStyle const &lineStyle) { lineStyle_ = lineStyle; }

    /// Draws a line at each tick of the updated axes but the first and the last, over the rectangle at `origin` of
    /// `size` (page millimetres). Labels that have no room do not matter.
    void draw(Painter *painter, BaVec2d<double> const &origin, BaVec2d<double> const &size, Axis const *axisX,
              Axis const *axisY, Rotation const &rotation) const;

    /// The block of the line style. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Text form. A newer version throws IO::StreamException; a damaged text leaves the grid alone.
    std::ostream &saveToStream(std::ostream &stream) const;
    std::istream &loadFromStream(std::istream &stream);

    /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters`; it throws ParamError
    /// for a bad value.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);

private:
    LineStyle lineStyle_{0.1, LineStyle::STYLE_DOTTED, Color(8, 8, 132)};
};

} // namespace Zem::Fig2
