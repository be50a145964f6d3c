#include "meas_contents.h"

namespace Zem::Measurement {

namespace {

template <class Key, class Item>
Item const *find(QHash<Key, std::size_t> const &places, std::vector<Item> const &items, Key const &key)
{
    auto const place = places.constFind(key);
    return place == places.constEnd() ? nullptr : &items[*place];
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
    tokens_ = std::move(tokens);
    series_ = std::move(series);
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

} // namespace Zem::Measurement
