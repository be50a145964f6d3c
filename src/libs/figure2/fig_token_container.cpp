#include "ZemFig2TokenContainer.h"

#include "ZemFig2ChartData.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"
#include "fig_owned_map.h"
#include "fig_token_entry.h"
#include "fig_token_name.h"

#include <ZemError.h>
#include <ZemImage.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

QString requireName(TokenInfo const &info, char const *text)
{
    QString name;
    if (!parseTokenName(info.getName(), &name))
        throw ProgError("Zem::Fig2::FigureTokenContainer::setValue", "fig_token_container", __LINE__, text);
    return name;
}

template <class Picture>
std::unique_ptr<Picture> copyPixels(Picture const *picture)
{
    return std::unique_ptr<Picture>(picture ? picture->copy(true) : nullptr);
}

} // namespace

FigureTokenContainer::ImageScaler::~ImageScaler() = default;

FigureTokenContainer::~FigureTokenContainer()
{
    clear();
}

void FigureTokenContainer::clear()
{
    tokenInfos_.clear();
    clearOwned(entries_);
    clearOwned(images_);
    clearOwned(overlays_);
}

void FigureTokenContainer::getTokens(std::vector<TokenInfo> *tokens) const
{
    *tokens = tokenInfos_;
}

Value FigureTokenContainer::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &) const
{
    Entry const *entry = findOwned(entries_, name);
    if (!entry)
        return Value::UNKNOWN;
    return index == IndexIdentifier::NO_INDEX ? entry->getValue() : Value::INVALID;
}

ImageData const *FigureTokenContainer::getImage(QString const &token) const
{
    Entry const *entry = findOwned(entries_, token);
    return entry && entry->isImage() ? entry->getImageData() : nullptr;
}

ImageData *FigureTokenContainer::getImage(QString const &token)
{
    return const_cast<ImageData *>(std::as_const(*this).getImage(token));
}

ChartData const *FigureTokenContainer::getChart(QString const &token) const
{
    Entry const *entry = findOwned(entries_, token);
    return entry && entry->isChart() ? entry->getChartData() : nullptr;
}

ChartData *FigureTokenContainer::getChart(QString const &token)
{
    return const_cast<ChartData *>(std::as_const(*this).getChart(token));
}

SnapshotData const *FigureTokenContainer::getSnapshot(QString const &token) const
{
    Entry const *entry = findOwned(entries_, token);
    return entry && entry->isSnapshot() ? entry->getSnapshotData() : nullptr;
}

SnapshotData *FigureTokenContainer::getSnapshot(QString const &token)
{
    return const_cast<SnapshotData *>(std::as_const(*this).getSnapshot(token));
}

void FigureTokenContainer::releaseImage(QString const &) const
{
}

void FigureTokenContainer::releaseChart(QString const &) const
{
}

void FigureTokenContainer::releaseSnapshot(QString const &) const
{
}

/// A token that is replaced deliberately keeps the description that it came with.
void FigureTokenContainer::setEntry(QString const &name, std::unique_ptr<Entry> entry)
{
    if (Entry *before = findOwned(entries_, name))
        before->leaveTo(*entry);
    else
        tokenInfos_.push_back(entry->getInfo());
    replaceOwned(entries_, name, std::move(entry));
}

void FigureTokenContainer::setValue(TokenInfo const &info, Value const &value)
{
    QString name;
    if (parseTokenName(info.getName(), &name))
        setEntry(name, std::make_unique<Entry>(info, value));
}

void FigureTokenContainer::setValue(TokenInfo const &info, ImageData *data, bool)
{
    QString const name = requireName(info, "Parsing image token name failed");
    // Copied first: they may be those that the container holds already.
    auto image = copyPixels(data->getImage());
    auto overlay = copyPixels(data->getOverlay());
    data->setImage(image.get());
    data->setOverlay(overlay.get());
    replaceOwned(images_, name, std::move(image));
    replaceOwned(overlays_, name, std::move(overlay));
    setEntry(name, std::make_unique<Entry>(info, std::unique_ptr<ImageData>(data)));
}

void FigureTokenContainer::setValue(TokenInfo const &info, ChartData *data)
{
    QString const name = requireName(info, "Parsing chart token name failed");
    setEntry(name, std::make_unique<Entry>(info, std::unique_ptr<ChartData>(data)));
}

void FigureTokenContainer::setValue(TokenInfo const &info, SnapshotData *data)
{
    QString const name = requireName(info, "Parsing snapshot token name failed");
    setEntry(name, std::make_unique<Entry>(info, std::unique_ptr<SnapshotData>(data)));
}

void FigureTokenContainer::deleteToken(QString const &name)
{
    replaceOwned(entries_, name, std::unique_ptr<Entry>());
    auto const found = std::find_if(tokenInfos_.begin(), tokenInfos_.end(),
                                    [&name](TokenInfo const &info) { return info.getName() == name; });
    if (found != tokenInfos_.end())
        tokenInfos_.erase(found);
}

} // namespace Zem::Fig2
