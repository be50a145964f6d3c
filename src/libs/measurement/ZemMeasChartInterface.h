// ZemMeasChartInterface.h: what the charts of a figure may show of a measurement project.
#pragma once

#include <ZemFig2ChartInterface.h>
#include <ZemIdentifiers.h>
#include <ZemMeasNamedPoint.h>
#include <ZemMeasTokenInterface.h>

namespace Zem::Measurement {

/// Offers the tokens and series of a project to charts. Along x: "stage", tokens and series of numbers, and those of
/// moments; along y: tokens and series of numbers. Each stands in the group that its name begins with, up to the last
/// point, or in that of its series. The data come from the ProjectTokenInterface, which keeps them as long as a chart
/// token is registered here.
///
/// All operations may throw ProjectError. To be used from the thread that made the project.
class ProjectChartInterface : public Fig2::ChartInterface
{
public:
    /// `tokens` is not owned and outlives the interface.
    explicit ProjectChartInterface(ProjectTokenInterface const *tokens);
    ~ProjectChartInterface() override;

    /// As that of the ProjectTokenInterface. Charts over stages mark the stage with a line at its x and a point on each
    /// curve: the counters of chart tokens move where the mark moves.
    void setCurrentStage(StageIdentifier const &stage);

    /// The points that charts name, where they show the curve; none at the start. Points that their curve does not have
    /// are left out. The counters of the chart tokens that show something else from here on move.
    void setNamedPoints(std::vector<NamedPoint> const &points);

    void addChartToken(QString const &token) override;
    void removeChartToken(QString const &token) override;
    std::vector<DataToken> getTokensX() override;
    std::vector<DataToken> getTokensY() override;
    QString getTokenName(DataToken const &token) override;
    /// The title, with a unit that cannot be converted; the name of a token that has gone.
    QString getTokenDescription(DataToken const &token) override;
    /// The title, and the group where `parameters` ask for it or another token on offer has the same title.
    QString getLegendDescription(DataToken const &token, Fig2::ChartParameters const &parameters) override;
    /// Seconds for moments: charts show the time that has passed since the first of them.
    UnitData getTokenUnit(DataToken const &token) override;
    /// A line in the colour that the place of the token among all y tokens gives it. False for a token that has gone.
    bool getDefaultParameters(DataToken const &token, Fig2::ChartParameters *parameters) const override;

private:
    ProjectTokenInterface const *tokens_;
};

} // namespace Zem::Measurement
