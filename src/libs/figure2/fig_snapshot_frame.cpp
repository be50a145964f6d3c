// SnapshotFrame and Snapshot, the elements that show snapshots.
#include "ZemFig2SnapshotFrame.h"

#include "ZemFig2DataInterface.h"
#include "ZemFig2Figure.h"
#include "ZemFig2SnapshotData.h"
#include "ZemFig2TokenContainer.h"
#include "fig_block.h"
#include "fig_nesting.h"
#include "fig_parameters.h"

#include <ZemError.h>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int FRAME_BLOCK_VERSION = 4; // 2: the source; 3 alone: background colour, now in the image's block
constexpr unsigned int FRAME_SOURCE_VERSION = 2;
constexpr unsigned int FRAME_COLOR_VERSION = 3;

constexpr unsigned int SNAPSHOT_BLOCK_VERSION = 4; // 2: a number; 3: a token in its place; 4: colour scale
constexpr unsigned int SNAPSHOT_NUMBER_VERSION = 2;
constexpr unsigned int SNAPSHOT_SCALE_VERSION = 4;
/// At its place behind the area part image elements have a block of this version.
constexpr unsigned int ALIGNMENT_BLOCK_VERSION = 1;

[[noreturn]] void refuseTextForm()
{
    throw ProgError("not implemented", true);
}

unsigned int countGroupsAbove(Element const &element)
{
    unsigned int groups = 0;
    for (Group const *group = element.getParent(); group; group = group->getParent())
        ++groups;
    return groups;
}

/// What stands in front of the data of an older snapshot element.
struct SnapshotParts
{
    bool hasData = false;
    bool hasFigure = false;
    bool hasLegend = false;
};

SnapshotParts readParts(BlockReader &reader)
{
    SnapshotParts parts;
    if (reader.version() == SNAPSHOT_NUMBER_VERSION)
        reader.drop<int>();
    else
        reader.drop<QString>();
    reader.field(parts.hasData);
    reader.field(parts.hasFigure);
    reader.field(parts.hasLegend, Since{SNAPSHOT_SCALE_VERSION}, false);
    reader.drop<BaVec2d<double>>();
    reader.drop<BaVec2d<double>>();
    return parts;
}

void loadLegend(IO::InStream *stream, SnapshotData *snapshot)
{
    Legend2::Legend legend(uLength);
    Legend2::Data data;
    legend.load(stream);
    data.load(stream);
    snapshot->setLegendData(legend, data);
}

std::unique_ptr<SnapshotData> loadSnapshotData(IO::InStream *stream, SnapshotParts const &parts)
{
    DataInterface dataInterface;
    if (parts.hasData)
        dataInterface.load(stream, -1, -1);
    std::unique_ptr<Figure> figure;
    if (parts.hasFigure) {
        figure = std::make_unique<Figure>();
        figure->load(stream, -1, -1);
    }
    // Without a figure none of the tokens is in use.
    Figure const none;
    auto tokens = std::make_unique<FigureTokenContainer>(figure ? figure.get() : &none, &dataInterface);
    StageIdentifier const stage;
    if (figure) {
        figure->setTokenInterface(tokens.get());
        figure->update(stage, false);
    }
    auto snapshot = std::make_unique<SnapshotData>(stage, figure.release(), tokens.release());
    if (parts.hasLegend)
        loadLegend(stream, snapshot.get());
    return snapshot;
}

} // namespace

SnapshotFrame::SnapshotFrame() : ImageBase(SNAPSHOT_FRAME)
{
}

SnapshotFrame::SnapshotFrame(Image const *image) : ImageBase(*image), snapshotSourceId_(image->getToken())
{
    setImageBackgroundColor(Color(255, 255, 255));
    setUseImageBackgroundColor(false);
    setType(SNAPSHOT_FRAME);
}

void SnapshotFrame::setSnapshotSourceId(QString const &id)
{
    snapshotSourceId_ = id;
    setToken(id);
}

unsigned int SnapshotFrame::getEstimatedObjectSize() const
{
    return ImageBase::getEstimatedObjectSize();
}

void SnapshotFrame::save(IO::OutStream *stream, int a, int b) const
{
    ImageBase::save(stream, a, b);
    saveBlock(stream, FRAME_BLOCK_VERSION, [this](auto &archive) {
        archive.field(false);
        archive.field(snapshotSourceId_);
    });
}

void SnapshotFrame::load(IO::InStream *stream, int a, int b)
{
    ImageBase::load(stream, a, b);
    stream->openBlock();
    unsigned int const version = stream->getBlockVersion();
    if (version < 1 || version > FRAME_BLOCK_VERSION)
        throw IO::StreamException(translate("Fig_SnapshotFrame_err", "wrong block version"));
    BlockReader reader(stream, version);
    reader.drop<bool>();
    // The first frames told their source by their token alone.
    QString source = getToken();
    reader.keep(source, Since{FRAME_SOURCE_VERSION});
    setSnapshotSourceId(source);
    if (version == FRAME_COLOR_VERSION)
        loadColor(reader);
    stream->closeBlock();
}

template <class Reader>
void SnapshotFrame::loadColor(Reader &reader)
{
    Color color = getImageBackgroundColor();
    bool use = false;
    reader.field(color);
    reader.field(use);
    setImageBackgroundColor(color);
    setUseImageBackgroundColor(use);
}

std::istream &SnapshotFrame::loadFromStream(std::istream &)
{
    refuseTextForm();
}

std::ostream &SnapshotFrame::saveToStream(std::ostream &) const
{
    refuseTextForm();
}

QString SnapshotFrame::getParameterString() const
{
    QString parameters = ImageBase::getParameterString();
    ParameterWriter(parameters).item(PARAM_SNAPSHOT_SOURCE, snapshotSourceId_);
    return parameters;
}

void SnapshotFrame::createFromParameterString(QString &parameters)
{
    ImageBase::createFromParameterString(parameters);
    QString source = getToken();
    ParameterReader(parameters).item(PARAM_SNAPSHOT_SOURCE, source);
    setSnapshotSourceId(source);
}

Snapshot::Snapshot()
{
    setType(SNAPSHOT);
}

Snapshot::Snapshot(Snapshot const &other)
    : Image(other), snapshotData_(other.snapshotData_ ? std::make_unique<SnapshotData>(*other.snapshotData_) : nullptr)
{
}

Snapshot::~Snapshot() = default;

void Snapshot::load(IO::InStream *stream, int a, int b)
{
    // Unlike the data of tokens, these are read while the groups around the element are.
    NestingLevel const level(1 + countGroupsAbove(*this));
    loadWrapped<Exception>("Figure_Snapshot_err", "cannot load figure snapshot: %1", [&] { loadAll(stream, a, b); });
}

void Snapshot::loadAll(IO::InStream *stream, int a, int b)
{
    AreaBase::load(stream, a, b);
    snapshotData_.reset();
    stream->openBlock();
    unsigned int const version = stream->getBlockVersion();
    if (version == ALIGNMENT_BLOCK_VERSION) {
        loadOpenAlignment(stream);
        loadImage(stream);
        return;
    }
    if (version < 1 || version > SNAPSHOT_BLOCK_VERSION)
        throwWrongBlockVersion();
    BlockReader reader(stream, version);
    SnapshotParts const parts = readParts(reader);
    stream->closeBlock();
    snapshotData_ = loadSnapshotData(stream, parts);
}

std::istream &Snapshot::loadFromStream(std::istream &)
{
    refuseTextForm();
}

std::ostream &Snapshot::saveToStream(std::ostream &) const
{
    refuseTextForm();
}

} // namespace Zem::Fig2
