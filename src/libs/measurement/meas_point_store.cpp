#include "meas_point_store.h"

#include "meas_view_store.h"

#include <ZemMeasTokenInterface.h>

#include <algorithm>
#include <iterator>

namespace Zem::Measurement {

namespace {

constexpr std::size_t MAX_KEPT_POINTS = 2000000; // some hundred megabytes

} // namespace

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

std::optional<BaVec3d<double>> PointSetAtStage::middle() const
{
    BaVec3d<double> sum;
    std::size_t count = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (field.valid[i]) {
            sum += places[i];
            ++count;
        }
    }
    return count == 0 ? std::nullopt : std::optional(sum * (1.0 / static_cast<double>(count)));
}

void PointStore::refresh()
{
    contents_->refresh();
    if (contents_->revision() != revision_) {
        kept_.clear();
        keptPoints_ = 0;
        numbersOf_ = {};
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

PointStore::Points PointStore::find(QString const &name, StageIdentifier const &stage)
{
    refresh();
    ProjectPointSet const *const set = contents_->findPointSet(name);
    if (!set || stage == StageIdentifier::NO_STAGE || !set->groups.contains(stage.getIdentifier())) {
        return nullptr;
    }
    auto const kept = std::find_if(kept_.begin(), kept_.end(), [&](Points const &points) {
        return points->set.id == set->id && points->stage == stage.getIdentifier();
    });
    if (kept != kept_.end()) {
        return *kept;
    }
    Points points = read(*set, stage.getIdentifier());
    keep(points);
    return points;
}

PointStore::Points PointStore::read(ProjectPointSet const &set, unsigned int stage) const
{
    auto points = std::make_shared<PointSetAtStage>();
    points->stage = stage;
    points->set = set;
    auto const view = std::find_if(contents_->views().begin(), contents_->views().end(),
                                   [&](ProjectView const &one) { return one.id == set.view; });
    points->view = view == contents_->views().end() ? std::nullopt : std::optional(*view);
    points->field = contents_->project().points(set, stage);
    points->places = shownPlaces(set, points->field);
    points->hasVectors = Measurement::hasVectors(set);
    points->placeUnit = unitOf(*contents_, set, set.columns.x, stage);
    points->vectorUnit = unitOf(*contents_, set, vectorColumn(set), stage);
    for (std::size_t i = 0; i < points->field.ids.size(); ++i) {
        if (points->field.valid[i] && !points->indexOfId.contains(points->field.ids[i])) {
            points->indexOfId.insert(points->field.ids[i], i);
        }
    }
    return points;
}

/// The latest points are kept in any case, others as long as all of them are not too many.
void PointStore::keep(Points const &points)
{
    kept_.push_back(points);
    keptPoints_ += points->field.points.size();
    while (keptPoints_ > MAX_KEPT_POINTS && kept_.size() > 1) {
        keptPoints_ -= kept_.front()->field.points.size();
        kept_.pop_front();
    }
}

std::vector<PointStore::Points> PointStore::ofImage(QString const &token)
{
    refresh();
    std::vector<QString> names; // each look at a set may find the project changed, and its contents replaced
    std::optional<ViewAtStage> const place = findView(*contents_, token, currentStage());
    for (ProjectPointSet const &set : contents_->pointSets()) {
        if (place && set.view == place->view->id) {
            names.push_back(set.name);
        }
    }
    std::vector<Points> sets;
    StageIdentifier const stage = place ? StageIdentifier(place->stage) : StageIdentifier::NO_STAGE;
    for (QString const &name : names) {
        if (Points points = find(name, stage)) {
            sets.push_back(std::move(points));
        }
    }
    return sets;
}

PointNumbers const &PointStore::numbers(PointSetAtStage const &points, QString const &column)
{
    std::tuple const wanted{points.set.id, points.stage, column};
    if (numbersOf_ != wanted) {
        numbersOf_ = {};
        numbers_ = numbersOf(*contents_, points.set, points.field, column, points.stage);
        numbersOf_ = wanted;
    }
    return numbers_;
}

PointNumbers PointStore::coloring(PointSetAtStage const &points)
{
    return coloringOf(*contents_, points.set, points.field, points.stage);
}

} // namespace Zem::Measurement
