// meas_point_store.h: the points of sets at stages, kept for a while.
#pragma once

#include "meas_field.h"

#include <ZemIdentifiers.h>

#include <QtCore/QHash>

#include <deque>
#include <memory>

namespace Zem::Measurement {

class ProjectTokenInterface;

/// The points of a set at a stage, with what follows from them. A plain value: it outlives a change of the project.
struct PointSetAtStage
{
    ProjectPointSet set;
    std::optional<ProjectView> view; ///< none in a damaged project
    unsigned int stage = 0;
    PointField field;
    std::vector<BaVec3d<double>> places; ///< where the pictures show them
    bool hasVectors = false;
    UnitData placeUnit;
    UnitData vectorUnit;
    QHash<int, std::size_t> indexOfId; ///< of valid points; of two with one id the first

    /// False when one of them is not there, or not valid.
    bool findPoints(std::vector<int> const &ids, std::vector<std::size_t> *indices) const;
    /// Where the vector has taken the point, if it is a displacement.
    BaVec3d<double> displaced(std::size_t index) const;
    /// Of the valid points; none when there is no such point.
    std::optional<BaVec3d<double>> middle() const;
};

/// All operations may throw ProjectError.
class PointStore
{
public:
    using Points = std::shared_ptr<PointSetAtStage const>;

    /// Neither is owned; both outlive the store. `tokens` tells the current stage.
    PointStore(ProjectContents *contents, ProjectTokenInterface const *tokens) : contents_(contents), tokens_(tokens) {}

    StageIdentifier currentStage() const;
    bool hasSet(QString const &name);
    /// Ascending stages of a set.
    std::vector<unsigned int> stages(QString const &set);
    QStringList columns(QString const &set);
    /// 0 for an unknown set.
    unsigned int modified(QString const &set);
    /// Null when the set has no points at the stage.
    Points find(QString const &set, StageIdentifier const &stage);
    /// The sets that an image shows at its stage.
    std::vector<Points> ofImage(QString const &token);
    /// Those of the column that was asked for last are kept. Good until the next call.
    PointNumbers const &numbers(PointSetAtStage const &points, QString const &column);
    PointNumbers coloring(PointSetAtStage const &points);

private:
    void refresh();
    Points read(ProjectPointSet const &set, unsigned int stage) const;
    void keep(Points const &points);

    ProjectContents *contents_;
    ProjectTokenInterface const *tokens_;
    std::int64_t revision_ = -1;
    std::deque<Points> kept_; ///< the latest last
    std::size_t keptPoints_ = 0;
    std::tuple<std::int64_t, unsigned int, QString> numbersOf_; ///< set, stage and column of `numbers_`
    PointNumbers numbers_;
};

} // namespace Zem::Measurement
