#include "meas_contents.h"

#include <algorithm>

namespace Zem::Measurement {

namespace {

template <class Key, class Item>
Item const *find(QHash<Key, std::size_t> const &places, std::vector<Item> const &items, Key const &key)
{
    auto const place = places.constFind(key);
    return place == places.constEnd() ? nullptr : &items[*place];
}

/// There are few of these.
template <class Item>
Item const *findByName(std::vector<Item> const &items, QString const &name)
{
    auto const found = std::find_if(items.begin(), items.end(), [&](Item const &item) { return item.name == name; });
    return found == items.end() ? nullptr : &*found;
}

} // namespace

void ProjectContents::refresh()
{
    std::int64_t const revision = project_->revision();
    if (revision == revision_) {
        return;
    }
    std::vector<unsigned int> stages = project_->stages();
    std::vector<ProjectToken> tokens = project_->tokens();
    std::vector<ProjectSeries> series = project_->series();
    std::vector<ProjectView> views = project_->views();
    std::vector<ProjectPointSet> pointSets = project_->pointSets();
    tokens_ = std::move(tokens);
    series_ = std::move(series);
    views_ = std::move(views);
    pointSets_ = std::move(pointSets);
    stagesModified_ += stages == stages_ ? 0 : 1;
    stages_ = std::move(stages);
    tokenByName_.clear();
    tokenById_.clear();
    seriesByName_.clear();
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        tokenByName_.insert(tokens_[i].name, i);
        tokenById_.insert(tokens_[i].id, i);
    }
    for (std::size_t i = 0; i < series_.size(); ++i) {
        seriesByName_.insert(series_[i].name, i);
    }
    revision_ = revision;
}

ProjectToken const *ProjectContents::findToken(QString const &name) const
{
    return find(tokenByName_, tokens_, name);
}

ProjectToken const *ProjectContents::findToken(std::int64_t id) const
{
    return find(tokenById_, tokens_, id);
}

ProjectSeries const *ProjectContents::findSeries(QString const &name) const
{
    return find(seriesByName_, series_, name);
}

ProjectView const *ProjectContents::findView(QString const &name) const
{
    return findByName(views_, name);
}

ProjectPointSet const *ProjectContents::findPointSet(QString const &name) const
{
    return findByName(pointSets_, name);
}

} // namespace Zem::Measurement
