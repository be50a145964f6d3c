// meas_chart_store.h: the data of charts, made when they are asked for and kept as long as they are in use.
#pragma once

#include "meas_chart_plan.h"

#include <map>

namespace Zem::Measurement {

/// Serves chart tokens. All operations may throw ProjectError, and then change nothing that was lent.
class ChartStore
{
public:
    /// `contents` is not owned and outlives the store.
    explicit ChartStore(ProjectContents *contents) : contents_(contents) {}

    /// Null for a token that stands for nothing; anything else is to be taken back.
    Fig2::ChartData const *lend(QString const &token);
    /// Throws ProgError when the token is not lent.
    void takeBack(QString const &token);
    /// 0 for a token that stands for nothing. Reads no values unless the current stage has moved.
    unsigned int modifiedCounter(QString const &token);

    /// Keeps the data of the token between uses from here on, or does not any more.
    void keep(QString const &token);
    void giveUp(QString const &token);

    /// The stage that is marked.
    void setCurrentStage(StageIdentifier const &stage) { stage_ = stage; }

    /// The points that charts of their curves name.
    void setNamedPoints(std::vector<NamedPoint> const &points);

    ProjectContents const &contents();

private:
    struct Chart
    {
        QString signature; ///< null as long as the token stands for nothing
        std::int64_t revision = -1;
        StageIdentifier stage; ///< that the counter and the data are of
        unsigned int pointsRevision = 0;
        unsigned int counter = 0;
        std::shared_ptr<Fig2::ChartData> data;
        std::vector<std::shared_ptr<Fig2::ChartData>> retired; ///< lent, but of yesterday
        unsigned int borrows = 0;
        bool kept = false;
    };

    bool isCurrent(Chart const &chart) const;
    Chart *refreshed(QString const &token);
    void follow(ChartPlan const &plan, Chart *chart);
    void moveMark(ChartPlan const &plan, Chart *chart);
    void retire(Chart *chart);
    void dropUnused(Chart *chart);

    ProjectContents *contents_;
    StageIdentifier stage_;
    std::vector<NamedPoint> points_;
    unsigned int pointsRevision_ = 0; ///< moves with the points
    std::map<QString, Chart> charts_; ///< of every token that ever stood for something: counters never run backwards
    unsigned int lastCounter_ = 0;
};

} // namespace Zem::Measurement
