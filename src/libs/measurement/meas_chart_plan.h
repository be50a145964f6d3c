// meas_chart_plan.h: what a chart token stands for in a project, and the data made of it.
#pragma once

#include "meas_contents.h"
#include "meas_named_point.h"

#include <ZemFig2ChartData.h>
#include <ZemIdentifiers.h>

#include <memory>
#include <optional>

namespace Zem::Measurement {

/// Whether a token may stand along that axis.
bool isChartX(ProjectToken const &token);
bool isChartY(ProjectToken const &token);

/// A named point and where it lies in a chart.
struct NamedPlace
{
    BaVec2d<double> place;
    NamedPoint point;

    bool operator==(NamedPlace const &) const = default;
};

/// Where the current stage and the named points lie in a chart.
struct ChartMark
{
    std::optional<double> x;
    std::vector<BaVec2d<double>> points;
    std::vector<NamedPlace> named;

    bool operator==(ChartMark const &) const = default;
};

void setMark(ChartMark const &mark, Fig2::ChartData *data);

/// Good until the next refresh of the contents.
class ChartPlan
{
public:
    /// None when the text is no chart token, or when x or all y are unknown. Of `points` those on its curves are taken.
    static std::optional<ChartPlan> make(ProjectContents const &contents, QString const &chartToken,
                                         std::vector<NamedPoint> const &points);

    /// Equal texts mean equal data.
    QString signature() const;
    /// Whether there is something to be marked at a stage, beside the named points.
    bool hasStages() const;
    /// Throws ProjectError.
    std::unique_ptr<Fig2::ChartData> build() const;
    /// `data` are those that build() made.
    ChartMark markAt(StageIdentifier const &stage, Fig2::ChartData const &data) const;

private:
    struct Ranges;

    /// One axis: the stage itself with neither pointer, the values of a token, or a series with both pointers set.
    struct Source
    {
        ProjectToken const *token = nullptr;
        ProjectSeries const *series = nullptr;

        bool isSeries() const { return series != nullptr; }
        bool isBuiltInStage() const { return token == nullptr; }
        QString signature() const;
    };

    explicit ChartPlan(ProjectContents const &contents) : contents_(&contents) {}

    static std::optional<Source> find(ProjectContents const &contents, QString const &name);
    bool belongsToX(Source const &y) const;
    std::vector<double> read(Source const &source) const;
    std::vector<double> stageNumbers() const;
    void fill(Source const &y, std::vector<double> const &x, Fig2::ChartDataset *dataset, Ranges *ranges) const;
    void setUnits(Fig2::ChartData *data) const;
    void markStage(std::size_t index, Fig2::ChartData const &data, ChartMark *mark) const;
    std::optional<std::size_t> indexOfStage(unsigned int stage) const;
    std::optional<std::size_t> indexOf(unsigned int number, Source const &y) const;
    std::vector<NamedPlace> placesOf(Source const &y, Fig2::ChartData const &data) const;

    ProjectContents const *contents_;
    Source x_;
    std::vector<Source> ys_;
    std::vector<NamedPoint> points_;
};

} // namespace Zem::Measurement
