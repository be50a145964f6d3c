// ZemFig2ChartMarker.h: ChartMarker and its kinds, marks on top of all curves of a chart.
// Layer: painting. Distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2LineStyle.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2Symbol.h"

#include <ZemStream.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <limits>
#include <vector>

namespace Zem::Fig2 {

class Painter;

/// What a marker asks of the chart on which it is drawn.
class ChartMarkerFrame
{
public:
    virtual ~ChartMarkerFrame();

    /// Where a point of the chart lies on the page (millimetres).
    virtual BaVec2d<double> getFigureCoordinates(BaVec2d<double> const &point) const = 0;
    /// The turn of the chart, with which a marker clips and draws.
    virtual Rotation getRotation() const = 0;
    /// Whether the current stage is marked, and with which line.
    virtual bool getShowCurrentStage() const = 0;
    virtual LineStyle const &getCurrentStageStyle() const = 0;
    /// Whether single points are marked, and with which symbol.
    virtual bool getShowPointMarkers() const = 0;
    virtual Symbol const &getPointMarkerSymbol() const = 0;

protected:
    ChartMarkerFrame() = default;
    ChartMarkerFrame(ChartMarkerFrame const &) = default;
    ChartMarkerFrame &operator=(ChartMarkerFrame const &) = default;
};

/// Something in chart coordinates that is drawn within the plot rectangle. Owned by the ChartData that holds it.
class ChartMarker
{
public:
    /// Stored in files: never renumber.
    enum Type_t { TYPE_LINE = 0, TYPE_POINTS = 1, TYPE_NAMED_POINT = 2 };

    virtual ~ChartMarker();
    /// The caller owns the copy.
    virtual ChartMarker *copy() const = 0;
    /// Draws what lies within the plot rectangle from `offset` of `size` (page millimetres). No pointer is null.
    virtual void draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
                      BaVec2d<double> const &size) const = 0;
    /// A block of the type, then those of the kind. Both throw IO::StreamException.
    virtual void load(IO::InStream *stream);
    virtual void save(IO::OutStream *stream) const;

    Type_t getType() const { return type_; }

    /// A block of all types, then the markers.
    static void save(IO::OutStream *stream, std::vector<ChartMarker *> const &markers);
    /// Empties `markers` without deleting what it points at, and fills it with markers that the caller owns. Throws
    /// IO::StreamException; `markers` then holds those before the fault.
    static void load(IO::InStream *stream, std::vector<ChartMarker *> *markers);

protected:
    explicit ChartMarker(Type_t type) : type_(type) {}
    ChartMarker(ChartMarker const &) = default;
    ChartMarker &operator=(ChartMarker const &) = default;

private:
    Type_t type_;
};

/// The current stage: a line across the plot at an x.
class LineChartMarker : public ChartMarker
{
public:
    LineChartMarker() : LineChartMarker(0.0) {}
    explicit LineChartMarker(double x) : ChartMarker(TYPE_LINE), x_(x) {}

    LineChartMarker *copy() const override;
    void draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
              BaVec2d<double> const &size) const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    double getX() const { return x_; }

private:
    double x_;
};

/// A symbol at each of some points.
class PointsChartMarker : public ChartMarker
{
public:
    PointsChartMarker() : ChartMarker(TYPE_POINTS) {}
    explicit PointsChartMarker(std::vector<BaVec2d<double>> points);

    PointsChartMarker *copy() const override;
    void draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
              BaVec2d<double> const &size) const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    std::vector<BaVec2d<double>> const &getPoints() const { return points_; }

private:
    std::vector<BaVec2d<double>> points_;
};

/// A symbol with a name beside it; in every chart, no switch hides it.
class NamedPointChartMarker : public ChartMarker
{
public:
    /// At infinity, without a name, with a symbol of size 0.
    NamedPointChartMarker() : ChartMarker(TYPE_NAMED_POINT) {}

    NamedPointChartMarker *copy() const override;
    void draw(Painter *painter, ChartMarkerFrame const *chart, BaVec2d<double> const &offset,
              BaVec2d<double> const &size) const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

    BaVec2d<double> const &getPoint() const { return point_; }
    void setPoint(BaVec2d<double> const &point) { point_ = point; }
    QString const &getName() const { return name_; }
    void setName(QString const &name) { name_ = name; }
    Symbol const &getSymbol() const { return symbol_; }
    void setSymbol(Symbol const &symbol) { symbol_ = symbol; }

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);

    BaVec2d<double> point_{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    QString name_;
    Symbol symbol_;
};

} // namespace Zem::Fig2
