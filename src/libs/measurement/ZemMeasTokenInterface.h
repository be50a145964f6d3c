// ZemMeasTokenInterface.h: the values of a measurement project as tokens for figures.
#pragma once

#include <ZemFig2TokenInterface.h>
#include <ZemMeasProject.h>

#include <QtCore/QHash>

#include <deque>
#include <map>
#include <memory>

namespace Zem::Measurement {

class ChartStore;
class PointStatistics;
class ProjectContents;
class ViewStore;

/// Hands out the values of a project, in the base unit and with the unit of the file for display. Two tokens come on
/// top: "stage", the number of the stage, and "stage.count", how many there are, at whatever stage is asked.
///
/// Stages that were asked for lately are kept; what changes in the project, by this process or another one, is seen
/// nevertheless. A token's counter moves when and only when one of its values has changed. Snapshots are not stored, so
/// none is lent.
///
/// The points of a set give statistics at each stage: "set.column.count", ".min", ".max", ".mean" and ".sigma" of the
/// valid points, for each column of numbers, and for "length", the lengths of the vectors.
///
/// Images are lent by the name of their view, at the current stage, or by "view.12" at stage 12: the picture, the
/// overlay, and each point set of the view as an object of its name, by the camera of the view. A view without any
/// picture is shown on a blank one. The colour scale of the process is for the values of the first set that has any;
/// its limits are those of all stages, its histogram that of the stage. An image's counter moves when what it shows may
/// have changed. Without a current stage, and for unknown names, nothing is lent.
///
/// Charts are lent by chart token, see ProjectChartInterface. Each known y is a dataset with the name of its token; y
/// that do not belong to the same stages or rows as x are empty ones, and a token of which x or all y are unknown lends
/// nothing. Points stand in the order of the stages or rows, with that index as their id; gaps stand for what is
/// missing. Numbers are in the base unit, moments along x in seconds from the first one. Against "stage" a series is
/// drawn over the numbers of its rows, the first being 1. The colour scale spans all y; a single value makes none.
///
/// A chart's counter moves when and only when what it shows has changed. Its data live as long as they are lent or
/// their chart token is registered with a ProjectChartInterface; only its own tokens and series are read.
///
/// All operations may throw ProjectError. To be used from the thread that made the project.
class ProjectTokenInterface : public Fig2::EmptyFigureTokenInterface
{
public:
    /// `project` is not owned and outlives the interface.
    explicit ProjectTokenInterface(Project const *project);
    ~ProjectTokenInterface() override;
    ProjectTokenInterface(ProjectTokenInterface const &) = delete;
    ProjectTokenInterface &operator=(ProjectTokenInterface const &) = delete;

    /// The stage whose pictures are shown and that charts over stages mark; none at the start. To be told before
    /// figures are updated for a stage.
    void setCurrentStage(StageIdentifier const &stage) const;
    StageIdentifier const &getCurrentStage() const;

    void getTokens(std::vector<TokenInfo> *tokens) const override;
    /// INVALID with any index.
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    /// 0 for a token that does not exist.
    unsigned int getModifiedCounter(QString const &name) const override;
    Fig2::ImageData const *getImage(QString const &token) const override;
    /// Throws ProgError for a token that is not lent.
    void releaseImage(QString const &token) const override;
    Fig2::ChartData const *getChart(QString const &token) const override;
    /// Throws ProgError for a token that is not lent.
    void releaseChart(QString const &token) const override;

private:
    friend class ProjectChartInterface;
    friend class ProjectImageInterface;
    using StageValues = QHash<std::int64_t, Value>; ///< by token id

    ChartStore &charts() const;
    ProjectContents *contents() const { return contents_.get(); }
    void refresh() const;
    bool hasStage(StageIdentifier const &stage) const;
    Value builtInValue(QString const &name, StageIdentifier const &stage) const;
    StageValues const &valuesOf(unsigned int stage) const;
    Value toValue(StageValue const &stored) const;

    std::unique_ptr<ProjectContents> contents_;
    std::unique_ptr<ChartStore> charts_;
    std::unique_ptr<ViewStore> views_;
    std::unique_ptr<PointStatistics> statistics_;
    mutable std::int64_t stageValuesRevision_ = -1;
    mutable std::map<unsigned int, StageValues> stageValues_;
    mutable std::deque<unsigned int> stageOrder_; ///< stages in stageValues_, the oldest first
};

} // namespace Zem::Measurement
