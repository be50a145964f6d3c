#include "fig_token_entry.h"

#include "ZemFig2ChartData.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"
#include "fig_block.h"
#include "fig_items.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>

#include <utility>

namespace Zem::Fig2 {

namespace {

// 2: other sources of values behind the data; 3: no more of these
constexpr unsigned int ENTRY_BLOCK_VERSION = 3;
constexpr unsigned int VERSION_WITH_SOURCES = 2;

void requireKind(bool isOfKind, char const *function, char const *text)
{
    if (!isOfKind)
        throw ProgError(function, "libs/figure2/ZemFig2TokenContainer", __LINE__, text);
}

/// Copies the values of a live interface, so that the data no longer depend on it.
template <class Source>
void detachFromLiveTokens(Source *source)
{
    if (!source->getTokenInterface() || source->getTokenContainer())
        return;
    auto values =
        std::make_unique<TokenContainer>(source->getTokenInterface(), TokenAllPassFilter(), StageIdentifier::NO_STAGE);
    source->setTokenInterface(values.get());
    source->setTokenContainer(values.release());
}

void giveTokenContainer(ChartData *chart, std::unique_ptr<TokenContainer> container)
{
    chart->setTokenInterface(container.get());
    chart->setTokenContainer(container.release());
}

/// What the block of an entry tells beside the token.
struct EntryBlock
{
    bool unused = true;
    std::vector<QString> sources;
    bool hasChartSource = false;

    static void read(BlockReader &reader, EntryBlock &block)
    {
        reader.field(block.unused);
        if (reader.version() != VERSION_WITH_SOURCES)
            return;
        blockList(reader, block.sources);
        reader.field(block.hasChartSource);
    }
};

} // namespace

FigureTokenContainer::Entry::Entry(TokenInfo const &info, Value const &value)
    : info_(info), value_(isPlain(info) ? value : Value::UNKNOWN)
{
}

FigureTokenContainer::Entry::Entry(TokenInfo const &info, std::unique_ptr<ImageData> data)
    : info_(info), imageData_(std::move(data))
{
    for (auto it = imageData_->getObjectBegin(); it != imageData_->getObjectEnd(); ++it)
        detachFromLiveTokens(it->second);
}

FigureTokenContainer::Entry::Entry(TokenInfo const &info, std::unique_ptr<ChartData> data)
    : info_(info), chartData_(std::move(data))
{
    detachFromLiveTokens(chartData_.get());
}

FigureTokenContainer::Entry::Entry(TokenInfo const &info, std::unique_ptr<SnapshotData> data)
    : info_(info), snapshotData_(std::move(data))
{
}

FigureTokenContainer::Entry::~Entry() = default;

bool FigureTokenContainer::Entry::isPlain(TokenInfo const &info)
{
    switch (info.getType()) {
    case TokenInfo::TYPE_GROUP:
    case TokenInfo::TYPE_SEPARATOR:
    case TokenInfo::TYPE_HEADLINE:
    case TokenInfo::TYPE_PLACEHOLDER:
    case TokenInfo::TYPE_IMAGE:
    case TokenInfo::TYPE_CHART:
    case TokenInfo::TYPE_SNAPSHOT:
        return false;
    default:
        return true;
    }
}

ImageData *FigureTokenContainer::Entry::getImageData() const
{
    requireKind(isImage(), "Zem::Fig2::FigureTokenContainer::Entry::getImageData",
                "Wrong entry type, image data expected");
    return imageData_.get();
}

ChartData *FigureTokenContainer::Entry::getChartData() const
{
    requireKind(isChart(), "Zem::Fig2::FigureTokenContainer::Entry::getChartData",
                "Wrong entry type, chart data expected");
    return chartData_.get();
}

SnapshotData *FigureTokenContainer::Entry::getSnapshotData() const
{
    requireKind(isSnapshot(), "Zem::Fig2::FigureTokenContainer::Entry::getSnapshotData",
                "Wrong entry type, snapshot data expected");
    return snapshotData_.get();
}

void FigureTokenContainer::Entry::setImage(Zem::Image const *image)
{
    requireKind(isImage() && imageData_, "Zem::Fig2::FigureTokenContainer::Entry::setImage",
                "Wrong entry type for adding images");
    imageData_->setImage(image);
}

void FigureTokenContainer::Entry::setOverlay(ImageColor const *overlay)
{
    requireKind(isImage() && imageData_, "Zem::Fig2::FigureTokenContainer::Entry::setOverlay",
                "Wrong entry type for adding overlays");
    imageData_->setOverlay(overlay);
}

void FigureTokenContainer::Entry::leaveTo(Entry const &other)
{
    if (imageData_ == other.imageData_)
        (void)imageData_.release();
    if (chartData_ == other.chartData_)
        (void)chartData_.release();
    if (snapshotData_ == other.snapshotData_)
        (void)snapshotData_.release();
}

bool FigureTokenContainer::Entry::isComplete() const
{
    if (isImage())
        return imageData_ != nullptr;
    if (isChart())
        return chartData_ != nullptr;
    return !isSnapshot() || snapshotData_;
}

void FigureTokenContainer::Entry::save(IO::OutStream *stream) const
{
    // The flag means nothing any more.
    saveBlock(stream, ENTRY_BLOCK_VERSION, [](auto &archive) { archive.field(true); });
    info_.save(stream);
    if (isImage())
        imageData_->save(stream);
    else if (isChart())
        chartData_->save(stream);
    else if (isSnapshot())
        snapshotData_->save(stream);
    else if (isPlain())
        value_.save(stream);
}

std::unique_ptr<FigureTokenContainer::Entry> FigureTokenContainer::Entry::load(IO::InStream *stream)
{
    EntryBlock block;
    loadBlock(stream, ENTRY_BLOCK_VERSION, [&block](BlockReader &reader) { EntryBlock::read(reader, block); });
    TokenInfo info;
    info.load(stream);
    auto entry = std::make_unique<Entry>(info, Value::UNKNOWN);
    entry->loadData(stream);

    for (std::size_t i = 0; i < block.sources.size(); ++i)
        TokenContainer().load(stream);
    if (block.hasChartSource && entry->chartData_) {
        auto container = std::make_unique<TokenContainer>();
        container->load(stream);
        giveTokenContainer(entry->chartData_.get(), std::move(container));
    }
    if (entry->chartData_ && !entry->chartData_->getTokenContainer())
        giveTokenContainer(entry->chartData_.get(), std::make_unique<TokenContainer>());
    return entry;
}

void FigureTokenContainer::Entry::loadData(IO::InStream *stream)
{
    if (isImage()) {
        imageData_ = std::make_unique<ImageData>();
        imageData_->load(stream);
    } else if (isChart()) {
        chartData_ = std::make_unique<ChartData>();
        chartData_->load(stream);
    } else if (isSnapshot()) {
        snapshotData_ = std::make_unique<SnapshotData>();
        snapshotData_->load(stream);
    } else if (isPlain()) {
        value_.load(stream);
    }
}

} // namespace Zem::Fig2
