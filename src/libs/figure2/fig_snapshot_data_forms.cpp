// How a SnapshotData is kept in streams.
#include "ZemFig2SnapshotData.h"

#include "ZemFig2DataInterface.h"
#include "ZemFig2SnapshotInterface.h"
#include "ZemFig2TokenContainer.h"
#include "fig_block.h"
#include "fig_nesting.h"

#include <ZemTokenContainer.h>

namespace Zem::Fig2 {

namespace {

// 2: colour scale; 3: with or without a figure; 4: drawing mode; 5: a container in place of the registry; 6: charts;
// 7: tokens of the project; 8: stage; 9: tolerances and histogram; 10: compatibility mode of the legend
constexpr unsigned int BLOCK_VERSION = 10;
constexpr unsigned int FIRST_SCALE_VERSION = 2;
constexpr unsigned int FIRST_CONTAINER_VERSION = 5;
constexpr unsigned int FIRST_TOLERANCE_VERSION = 9;

} // namespace

/// The block in front of the parts.
struct SnapshotData::Header
{
    unsigned int version = BLOCK_VERSION;
    bool hasLegendData = false;
    bool showTolerances = false;
    bool v602CompatibilityMode = false;
    bool hasFigure = false;
    bool hasTokens = false;
    bool hasProjectTokens = false;
    bool hasChartInterface = false;
    unsigned int drawingMode = 0;
    unsigned int stage = StageIdentifier().getIdentifier();
};

template <class Archive, class Self>
void SnapshotData::headerFields(Archive &archive, Self &header)
{
    bool unused = true;
    archive.field(unused);
    archive.field(header.hasLegendData, Since{FIRST_SCALE_VERSION}, false);
    archive.field(header.showTolerances, Since{FIRST_TOLERANCE_VERSION}, false);
    archive.field(header.v602CompatibilityMode, Since{10}, false);
    archive.field(header.hasFigure, Since{3}, true);
    archive.field(header.hasTokens);
    archive.field(header.hasProjectTokens, Since{7}, false);
    archive.field(header.hasChartInterface, Since{6}, false);
    archive.field(header.drawingMode, Since{4}, 0);
    archive.field(header.stage, Since{8}, StageIdentifier().getIdentifier());
}

void SnapshotData::save(IO::OutStream *stream) const
{
    // What load would refuse must not replace a good file.
    NestingLevel const level;
    Header header;
    header.hasLegendData = scale_.hasLegendData;
    header.showTolerances = scale_.showTolerances;
    header.v602CompatibilityMode = scale_.legend.getV602CompatibilityMode();
    header.hasFigure = figure_ != nullptr;
    header.hasTokens = tokenContainer_ != nullptr;
    header.hasProjectTokens = projectTokenContainer_ != nullptr;
    header.hasChartInterface = chartInterface_ != nullptr;
    header.drawingMode = drawingMode_;
    header.stage = stage_.getIdentifier();
    saveBlock(stream, BLOCK_VERSION, [&header](auto &archive) { headerFields(archive, header); });
    if (figure_)
        figure_->save(stream, -1, -1);
    if (tokenContainer_)
        tokenContainer_->save(stream);
    if (projectTokenContainer_)
        projectTokenContainer_->save(stream);
    if (chartInterface_)
        chartInterface_->save(stream);
    scale_.legend.save(stream);
    scale_.data.save(stream);
    scale_.tolerance.save(stream);
    scale_.histogram.save(stream);
}

void SnapshotData::load(IO::InStream *stream)
{
    NestingLevel const level;
    clear();
    Header header;
    header.version = loadBlock(stream, BLOCK_VERSION, [&header](auto &archive) { headerFields(archive, header); });
    stage_ = StageIdentifier(header.stage);
    drawingMode_ = DrawingMode{header.drawingMode};
    loadWrapped<Exception>("Figure_SnapshotData_err", "cannot load snapshot elements: %1",
                           [&] { loadParts(stream, header); });
    loadScale(stream, header);
}

void SnapshotData::clear()
{
    figure_.reset();
    chartInterface_.reset();
    tokenInterface_.reset();
    projectTokenContainer_.reset();
    tokenContainer_.reset();
    scale_ = Scale();
    figureUpdated_ = false;
}

void SnapshotData::loadParts(IO::InStream *stream, Header const &header)
{
    if (header.hasFigure) {
        figure_ = std::make_unique<Figure>();
        figure_->load(stream, -1, -1);
    }
    if (header.hasTokens)
        loadTokens(stream, header);
    if (header.hasProjectTokens) {
        projectTokenContainer_ = std::make_unique<TokenContainer>();
        projectTokenContainer_->load(stream);
    }
    if (header.hasChartInterface) {
        chartInterface_ = std::make_unique<SnapshotChartInterface>();
        chartInterface_->load(stream);
    }
    renewTokenInterface();
    connectFigure();
}

void SnapshotData::loadTokens(IO::InStream *stream, Header const &header)
{
    if (header.version >= FIRST_CONTAINER_VERSION) {
        tokenContainer_ = std::make_unique<FigureTokenContainer>();
        tokenContainer_->load(stream);
        return;
    }
    DataInterface dataInterface;
    dataInterface.load(stream, -1, -1);
    // Without a figure none of the tokens is in use.
    Figure const none;
    tokenContainer_ = std::make_unique<FigureTokenContainer>(figure_ ? figure_.get() : &none, &dataInterface);
}

/// What follows goes by the version alone, whether there is a scale or not.
void SnapshotData::loadScale(IO::InStream *stream, Header const &header)
{
    if (header.version < FIRST_SCALE_VERSION)
        return;
    scale_.hasLegendData = header.hasLegendData;
    scale_.showTolerances = header.showTolerances;
    scale_.legend.load(stream);
    scale_.legend.setV602CompatibilityMode(header.v602CompatibilityMode);
    scale_.data.load(stream);
    if (header.version < FIRST_TOLERANCE_VERSION)
        return;
    scale_.tolerance.load(stream);
    scale_.histogram.load(stream);
}

} // namespace Zem::Fig2
