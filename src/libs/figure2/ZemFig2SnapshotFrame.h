// ZemFig2SnapshotFrame.h: SnapshotFrame, the element that shows a snapshot, and Snapshot, the one of older files.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Image.h"

#include <memory>

namespace Zem::Fig2 {

/// Shows the snapshot that the token interface lends under the id of its source.
class SnapshotFrame : public ImageBase
{
public:
    static constexpr QLatin1StringView PARAM_SNAPSHOT_SOURCE{"snapshot_source"};

    SnapshotFrame();
    SnapshotFrame(SnapshotFrame const &) = default;
    /// What the image has in common with it, on a white background that is not shown. Its source has the image's token.
    explicit SnapshotFrame(Image const *image);

    /// Always the token of the element too, unless that was set alone.
    QString const &getSnapshotSourceId() const { return snapshotSourceId_; }
    void setSnapshotSourceId(QString const &id);

    SnapshotFrame *copy() const override { return new SnapshotFrame(*this); }
    unsigned int getEstimatedObjectSize() const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// Both throw ProgError: there is no text form.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;

private:
    template <class Reader>
    void loadColor(Reader &reader);

    QString snapshotSourceId_;
};

/// An image element of older files that has its snapshot inside. What is saved of it is an image element without one.
class Snapshot : public Image
{
public:
    Snapshot();
    Snapshot(Snapshot const &other);
    ~Snapshot() override;

    /// Owned here; null for none.
    SnapshotData const *getSnapshotData() const { return snapshotData_.get(); }

    Snapshot *copy() const override { return new Snapshot(*this); }
    /// Reads an older element with its snapshot, and as well what save has written.
    void load(IO::InStream *stream, int a, int b) override;
    /// Both throw ProgError: there is no text form.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;

private:
    void loadAll(IO::InStream *stream, int a, int b);

    std::unique_ptr<SnapshotData> snapshotData_;
};

} // namespace Zem::Fig2
