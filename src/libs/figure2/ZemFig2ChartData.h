// ZemFig2ChartData.h: ChartPoint, ChartDataset and ChartData, what the curves of a chart hold.
// Layer: tokens. Distinct objects may be used from distinct threads.
//
// In every coordinate and in every bound of a range DBL_MAX stands for "not there".
#pragma once

#include "ZemFig2ChartMarker.h"
#include "ZemFig2ChartParameters.h"

#include <ZemColor.h>
#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemStream.h>
#include <ZemUnit.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <cfloat>
#include <map>
#include <vector>

namespace Zem {

class TokenContainer;
class TokenInterface;

namespace Fig2 {

/// A point of a curve. A plain value.
struct ChartPoint
{
    int id = -1;           ///< normally the index of its stage
    BaVec2d<double> point; ///< chart coordinates
    double value = 0.0;    ///< chooses colour and symbol size

    ChartPoint() = default;
    ChartPoint(int id_, BaVec2d<double> const &point_, double value_) : id(id_), point(point_), value(value_) {}

    /// False for a gap of the curve.
    bool isValid() const { return point.x != DBL_MAX && point.y != DBL_MAX; }

    /// One stream block. load throws IO::StreamException.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    bool operator==(ChartPoint const &) const = default;

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
};

/// One curve: points in the order in which they were added, and their look. Coordinates are in the base units of the
/// ChartData that holds it. A plain value.
class ChartDataset
{
public:
    using Points = std::vector<ChartPoint>;

    /// Empty; the display text is the id.
    explicit ChartDataset(QString const &id);

    QString const &getId() const { return id_; }
    /// A ChartData that holds the dataset keeps it under the id that it had when it was added.
    void setId(QString const &id) { id_ = id; }
    /// For legends.
    QString const &getDisplayText() const { return displayText_; }
    void setDisplayText(QString const &text) { displayText_ = text; }
    ChartParameters const &getParameters() const { return parameters_; }
    void setParameters(ChartParameters const &parameters) { parameters_ = parameters; }

    unsigned int getNumberOfPoints() const { return static_cast<unsigned int>(points_.size()); }
    /// The end for an index at or past it. Changing a point leaves the ranges as they are.
    Points::const_iterator getPointBegin(unsigned int index) const;
    Points::iterator getPointBegin(unsigned int index);
    Points::const_iterator getPointEnd() const { return points_.end(); }
    Points::iterator getPointEnd() { return points_.end(); }
    /// Takes every point; a valid one widens the ranges.
    void addPoint(ChartPoint const &point);
    bool pointExists(int id) const;

    /// Minimum and maximum of the valid points; (DBL_MAX, -DBL_MAX) without one. No pointer is null.
    void getRange(BaVec2d<double> *rangeX, BaVec2d<double> *rangeY) const;

    /// For people who look for a fault.
    QString toString() const;

    /// A stream block, one for each point, then the look. load throws IO::StreamException; the dataset then holds what
    /// was read before the fault. Ranges are taken as stored.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self, unsigned int &count);
    void loadAll(IO::InStream *stream);

    QString id_;
    Points points_;
    ChartParameters parameters_;
    BaVec2d<double> rangeX_{DBL_MAX, -DBL_MAX};
    BaVec2d<double> rangeY_{DBL_MAX, -DBL_MAX};
    QString displayText_;
};

/// All that a chart shows: datasets by id, markers, colour scale, units, and the tokens of the data. Coordinates and
/// ranges are in the base units of the quantities of both axes. Owns its datasets, its markers and its token container.
class ChartData
{
public:
    using Datasets = std::map<QString, ChartDataset *>;
    using Markers = std::vector<ChartMarker *>;

    /// Empty: no data, black info points, lengths along both axes.
    ChartData();
    /// Copies all it owns. Where the tokens came from the other's container, those of the copy come from its own.
    ChartData(ChartData const &other);
    /// Shares what the other owns and forgets, without deleting it, what this one owned: for callers that see to it
    /// that only one of the two is ever changed or deleted.
    ChartData &operator=(ChartData const &other);
    virtual ~ChartData();

    /// Takes ownership, unless it throws ProgError: for an id that is there already.
    void addDataset(ChartDataset *dataset);
    /// Deletes the dataset. Throws ProgError for an unknown id.
    void removeDataset(QString const &id);
    bool datasetExists(QString const &id) const { return datasets_.contains(id); }
    /// Never null; throws ProgError for an unknown id. The data keeps ownership.
    ChartDataset const *getDataset(QString const &id) const;
    ChartDataset *getDataset(QString const &id);
    /// In the order of the ids.
    Datasets::const_iterator getDatasetBegin() const { return datasets_.begin(); }
    Datasets::iterator getDatasetBegin() { return datasets_.begin(); }
    Datasets::const_iterator getDatasetEnd() const { return datasets_.end(); }
    Datasets::iterator getDatasetEnd() { return datasets_.end(); }

    /// Takes ownership.
    void addMarker(ChartMarker *marker);
    /// Deletes the markers.
    void clearMarkers();
    Markers::const_iterator getChartMarkerBegin() const { return markers_.begin(); }
    Markers::const_iterator getChartMarkerEnd() const { return markers_.end(); }

    /// The colour scale of the chart; without a histogram the present one is cleared.
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data);
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data,
                       Legend2::HistogramData const &histogram);
    /// False, and null pointers, when there is no colour scale. The data keeps ownership. No argument is null.
    bool getLegendData(Legend2::Legend const **legend, Legend2::Data const **data) const;
    bool getLegendData(Legend2::Legend const **legend, Legend2::Data const **data,
                       Legend2::HistogramData const **histogram) const;
    /// Sets a colour scale in the unit of y with the extremes, average and population deviation of all y.
    void computeLegendData();

    TokenInterface const *getTokenInterface() const { return values_.tokenInterface; }
    /// Not owned, unless it is the token container.
    void setTokenInterface(TokenInterface const *tokens) { values_.tokenInterface = tokens; }
    TokenContainer const *getTokenContainer() const { return tokenContainer_; }
    TokenContainer *getTokenContainer() { return tokenContainer_; }
    /// Takes ownership and deletes the one before. Leaves the token interface as it is.
    void setTokenContainer(TokenContainer *container);

    /// Whether a chart offers statistics of the datasets as tokens.
    bool getComputeStatistics() const { return values_.computeStatistics; }
    void setComputeStatistics(bool compute) { values_.computeStatistics = compute; }
    std::vector<BaVec2d<double>> const &getInfoPoints() const { return values_.infoPoints; }
    std::vector<BaVec2d<double>> &getInfoPoints() { return values_.infoPoints; }
    Color const &getInfoPointColor() const { return values_.infoPointColor; }
    void setInfoPointColor(Color const &color) { values_.infoPointColor = color; }
    /// The units in which the axes are labelled. All numbers of the data are in the base units of these quantities.
    UnitData const &getUnitX() const { return values_.unitX; }
    void setUnitX(UnitData const &unit) { values_.unitX = unit; }
    UnitData const &getUnitY() const { return values_.unitY; }
    void setUnitY(UnitData const &unit) { values_.unitY = unit; }
    /// Ranges that the data ask for (minimum, maximum).
    bool getHasAxisXRange() const { return values_.hasAxisXRange; }
    void setHasAxisXRange(bool has) { values_.hasAxisXRange = has; }
    bool getHasAxisYRange() const { return values_.hasAxisYRange; }
    void setHasAxisYRange(bool has) { values_.hasAxisYRange = has; }
    BaVec2d<double> const &getAxisXRange() const { return values_.axisXRange; }
    void setAxisXRange(BaVec2d<double> const &range) { values_.axisXRange = range; }
    BaVec2d<double> const &getAxisYRange() const { return values_.axisYRange; }
    void setAxisYRange(BaVec2d<double> const &range) { values_.axisYRange = range; }
    /// Whether an editor may offer to mark the current stage, and single points. The marks themselves are a
    /// LineChartMarker and a PointsChartMarker, which the application puts into the data for each stage.
    bool getSupportsStageMarkers() const { return values_.supportsStageMarkers; }
    void setSupportsStageMarkers(bool supports) { values_.supportsStageMarkers = supports; }
    bool getSupportsPointMarkers() const { return values_.supportsPointMarkers; }
    void setSupportsPointMarkers(bool supports) { values_.supportsPointMarkers = supports; }

    /// Deletes datasets and markers and drops the colour scale; all else stays.
    void clear();

    /// The datasets' texts, a line feed before each. For people who look for a fault.
    QString toString() const;

    /// A stream block, then the parts. load replaces everything; it throws IO::StreamException, and the data then hold
    /// what was read before the fault.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    /// What is copied by assignment.
    struct Values
    {
        bool hasLegendData = false;
        Legend2::Legend legend{uLength};
        Legend2::Data legendData;
        Legend2::HistogramData histogramData;
        TokenInterface const *tokenInterface = nullptr;
        bool computeStatistics = false;
        std::vector<BaVec2d<double>> infoPoints;
        Color infoPointColor{0, 0, 0};
        UnitData unitX{uLength};
        UnitData unitY{uLength};
        bool hasAxisXRange = false;
        bool hasAxisYRange = false;
        BaVec2d<double> axisXRange{DBL_MAX, DBL_MAX};
        BaVec2d<double> axisYRange{DBL_MAX, DBL_MAX};
        bool supportsStageMarkers = false;
        bool supportsPointMarkers = false;
    };
    struct Block;

    void clearDatasets();
    void copyOwned(ChartData const &other);
    void loadAll(IO::InStream *stream);
    void loadDataset(IO::InStream *stream, QString const &id);
    void addLegacyMarkers(Block const &block);
    void importTokens(IO::InStream *stream, unsigned int version);
    void loadTokens(IO::InStream *stream, Block const &block);

    Values values_;
    Datasets datasets_;
    Markers markers_;
    TokenContainer *tokenContainer_ = nullptr;
};

} // namespace Fig2
} // namespace Zem
