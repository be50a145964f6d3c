#include "meas_point_store.h"

#include "meas_field.h"
#include "meas_view_store.h"

#include <ZemMeasTokenInterface.h>

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

bool PointSetAtStage::findPoints(std::vector<int> const &ids, std::vector<std::size_t> *indices) const
{
    indices->clear();
    for (int const id : ids) {
        auto const found = indexOfId.constFind(id);
        if (found == indexOfId.constEnd()) {
            return false;
        }
        indices->push_back(*found);
    }
    return true;
}

BaVec3d<double> PointSetAtStage::displaced(std::size_t index) const
{
    bool const isDisplacement = hasVectors && placeUnit.getUnit() == vectorUnit.getUnit();
    return isDisplacement ? field.points[index] + field.vectors[index] : field.points[index];
}

BaVec3d<double> PointSetAtStage::middle() const
{
    BaVec3d<double> sum;
    for (BaVec3d<double> const &place : places) {
        sum += place;
    }
    return sum * (1.0 / static_cast<double>(places.size()));
}

void PointStore::refresh()
{
    contents_->refresh();
    if (contents_->revision() != revision_) {
        kept_.clear();
        revision_ = contents_->revision();
    }
}

StageIdentifier PointStore::currentStage() const
{
    return tokens_->getCurrentStage();
}

bool PointStore::hasSet(QString const &name)
{
    refresh();
    return contents_->findPointSet(name) != nullptr;
}

std::vector<unsigned int> PointStore::stages(QString const &name)
{
    refresh();
    std::vector<unsigned int> stages;
    if (ProjectPointSet const *const set = contents_->findPointSet(name)) {
        std::transform(set->groups.begin(), set->groups.end(), std::back_inserter(stages),
                       [](auto const &group) { return group.first; });
    }
    return stages;
}

QStringList PointStore::columns(QString const &name)
{
    refresh();
    ProjectPointSet const *const set = contents_->findPointSet(name);
    return set ? columnsOf(*contents_, *set) : QStringList();
}

unsigned int PointStore::modified(QString const &name)
{
    refresh();
    ProjectPointSet const *const set = contents_->findPointSet(name);
    return set ? set->modified : 0;
}

PointSetAtStage const *PointStore::find(QString const &name, StageIdentifier const &stage)
{
    refresh();
    ProjectPointSet const *const set = contents_->findPointSet(name);
    if (!set || stage == StageIdentifier::NO_STAGE || !set->groups.contains(stage.getIdentifier())) {
        return nullptr;
    }
    auto const [place, isNew] = kept_.try_emplace({set->id, stage.getIdentifier()});
    PointSetAtStage &points = place->second;
    if (!isNew) {
        return &points;
    }
    Project const &project = contents_->project();
    points.stage = stage.getIdentifier();
    points.set = set;
    auto const view = std::find_if(contents_->views().begin(), contents_->views().end(),
                                   [&](ProjectView const &one) { return one.id == set->view; });
    points.view = view == contents_->views().end() ? nullptr : &*view;
    points.field = project.points(*set, points.stage);
    points.places = shownPlaces(*set, points.field);
    points.hasVectors = hasVectors(*set);
    project.pointNumbers(*set, set->columns.x, points.stage, &points.placeUnit);
    project.pointNumbers(*set, vectorColumn(*set), points.stage, &points.vectorUnit);
    for (std::size_t i = 0; i < points.field.ids.size(); ++i) {
        points.indexOfId.insert(points.field.ids[i], i);
    }
    return &points;
}

std::vector<PointSetAtStage const *> PointStore::ofImage(QString const &token)
{
    refresh();
    std::vector<PointSetAtStage const *> sets;
    std::optional<ViewAtStage> const place = findView(*contents_, token, currentStage());
    for (ProjectPointSet const &set : contents_->pointSets()) {
        PointSetAtStage const *const points =
            place && set.view == place->view->id ? find(set.name, StageIdentifier(place->stage)) : nullptr;
        if (points) {
            sets.push_back(points);
        }
    }
    return sets;
}

std::vector<double> PointStore::numbers(PointSetAtStage const &points, QString const &column, UnitData *unit)
{
    return numbersOf(contents_->project(), *points.set, points.field, column, points.stage, unit);
}

} // namespace Zem::Measurement
