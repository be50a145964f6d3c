// meas_point_store.h: the points of sets at stages, kept as long as the project stays as it is.
#pragma once

#include "meas_contents.h"

#include <ZemIdentifiers.h>

#include <QtCore/QHash>

namespace Zem::Measurement {

class ProjectTokenInterface;

/// The points of a set at a stage, with what follows from them.
struct PointSetAtStage
{
    ProjectPointSet const *set = nullptr;
    ProjectView const *view = nullptr;
    unsigned int stage = 0;
    PointField field;
    std::vector<BaVec3d<double>> places; ///< where the pictures show them
    bool hasVectors = false;
    UnitData placeUnit;
    UnitData vectorUnit;
    QHash<int, std::size_t> indexOfId;

    /// False when one of them is not there, or not valid.
    bool findPoints(std::vector<int> const &ids, std::vector<std::size_t> *indices) const;
    /// Where the vector has taken the point, if it is a displacement.
    BaVec3d<double> displaced(std::size_t index) const;
    BaVec3d<double> middle() const;
};

/// All operations may throw ProjectError. Pointers are good until the project changes.
class PointStore
{
public:
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
    PointSetAtStage const *find(QString const &set, StageIdentifier const &stage);
    /// The sets that an image shows at its stage.
    std::vector<PointSetAtStage const *> ofImage(QString const &token);
    /// By point.
    std::vector<double> numbers(PointSetAtStage const &points, QString const &column, UnitData *unit);

private:
    void refresh();

    ProjectContents *contents_;
    ProjectTokenInterface const *tokens_;
    std::int64_t revision_ = -1;
    std::map<std::pair<std::int64_t, unsigned int>, PointSetAtStage> kept_;
};

} // namespace Zem::Measurement
