// fig_token_entry.h: FigureTokenContainer::Entry, one token that a container holds.
// Layer: tokens. Internal to the library.
#pragma once

#include "ZemFig2TokenContainer.h"

#include <memory>

namespace Zem::Fig2 {

/// The type of the token tells what the entry holds: a plain value, an image, a chart, a snapshot, or nothing.
class FigureTokenContainer::Entry
{
public:
    /// What is no plain token has no value.
    Entry(TokenInfo const &info, Value const &value);
    /// Each takes ownership. Values that the data took from a live interface are copied.
    Entry(TokenInfo const &info, std::unique_ptr<ImageData> data);
    Entry(TokenInfo const &info, std::unique_ptr<ChartData> data);
    Entry(TokenInfo const &info, std::unique_ptr<SnapshotData> data);
    ~Entry();
    Entry(Entry const &) = delete;
    Entry &operator=(Entry const &) = delete;

    TokenInfo const &getInfo() const { return info_; }
    Value const &getValue() const { return value_; }
    bool isImage() const { return info_.getType() == TokenInfo::TYPE_IMAGE; }
    bool isChart() const { return info_.getType() == TokenInfo::TYPE_CHART; }
    bool isSnapshot() const { return info_.getType() == TokenInfo::TYPE_SNAPSHOT; }
    /// False for the types of tokens that carry no data.
    bool isPlain() const { return isPlain(info_); }
    static bool isPlain(TokenInfo const &info);

    /// Null when there are none. Each throws ProgError for a token of another type.
    ImageData *getImageData() const;
    ChartData *getChartData() const;
    SnapshotData *getSnapshotData() const;
    /// The pictures stay the caller's. Throw ProgError for an entry without an image.
    void setImage(Zem::Image const *image);
    void setOverlay(ImageColor const *overlay);

    /// Gives up the data that the other entry owns now.
    void leaveTo(Entry const &other);

    /// Whether the entry has the data that its type promises; without these it is not stored.
    bool isComplete() const;
    void save(IO::OutStream *stream) const;
    /// Throws IO::StreamException.
    static std::unique_ptr<Entry> load(IO::InStream *stream);

private:
    void loadData(IO::InStream *stream);

    TokenInfo info_;
    Value value_;
    std::unique_ptr<ImageData> imageData_;
    std::unique_ptr<ChartData> chartData_;
    std::unique_ptr<SnapshotData> snapshotData_;
};

} // namespace Zem::Fig2
