#include "ZemFig2ChartData.h"

#include "fig_block.h"
#include "fig_items.h"

#include <ZemTokenContainer.h>

#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

/// 11: token container; 12: marker list and two flags for markers; 13: no more markers within the block; 14: histogram.
constexpr unsigned int BLOCK_VERSION = 14;
/// Files with older blocks carry an older token registry, which has no reader.
constexpr unsigned int OLDEST_VERSION = 10;

} // namespace

/// What the block holds beside the values.
struct ChartData::Block
{
    std::vector<QString> ids;
    bool hasTokenContainer = false;
    bool interfaceIsContainer = false;
    double markerPosition = DBL_MAX;
    std::vector<double> markerValues;

    template <class Archive, class Self, class ValuesOf>
    static void fields(Archive &archive, Self &block, ValuesOf &values);
    static void markerFields(BlockReader &reader, Block &block, Values &values);
};

template <class Archive, class Self, class ValuesOf>
void ChartData::Block::fields(Archive &archive, Self &block, ValuesOf &values)
{
    blockList(archive, block.ids);
    auto infoPoints = static_cast<unsigned int>(values.infoPoints.size());
    archive.field(infoPoints);
    archive.field(values.infoPointColor);
    blockItems(archive, values.infoPoints, infoPoints);
    archive.field(values.hasAxisXRange);
    archive.field(values.hasAxisYRange);
    archive.field(values.axisXRange);
    archive.field(values.axisYRange);
    archive.field(values.supportsStageMarkers, Since{12}, true);
    archive.field(values.supportsPointMarkers, Since{12}, true);
    if constexpr (Archive::isReader)
        markerFields(archive, block, values);
    archive.field(values.hasLegendData);
    archive.field(values.computeStatistics);
    archive.field(block.hasTokenContainer, Since{11}, false);
    archive.field(block.interfaceIsContainer, Since{11}, false);
}

/// Up to version 12. That version has all three flags for markers, and deliberately this one counts.
void ChartData::Block::markerFields(BlockReader &reader, Block &block, Values &values)
{
    if (reader.version() > 12)
        return;
    reader.field(values.supportsStageMarkers);
    values.supportsPointMarkers = values.supportsStageMarkers;
    reader.field(block.markerPosition);
    blockList(reader, block.markerValues);
}

void ChartData::save(IO::OutStream *stream) const
{
    Block block;
    for (auto const &[id, dataset] : datasets_)
        block.ids.push_back(id);
    block.hasTokenContainer = tokenContainer_ != nullptr;
    block.interfaceIsContainer = values_.tokenInterface == tokenContainer_;

    saveBlock(stream, BLOCK_VERSION, [&](auto &archive) { Block::fields(archive, std::as_const(block), values_); });
    for (auto const &[id, dataset] : datasets_)
        dataset->save(stream);
    ChartMarker::save(stream, markers_);
    values_.legend.save(stream);
    values_.legendData.save(stream);
    values_.histogramData.save(stream);
    values_.unitX.save(stream);
    values_.unitY.save(stream);
    if (tokenContainer_)
        tokenContainer_->save(stream);
}

void ChartData::load(IO::InStream *stream)
{
    loadWrapped("Figure_ChartData_err", "cannot load figure chart data: %1", [&] { loadAll(stream); });
}

void ChartData::loadAll(IO::InStream *stream)
{
    clear();
    setTokenContainer(nullptr);
    values_.tokenInterface = nullptr;

    Block block;
    unsigned int const version = loadBlock(stream, BLOCK_VERSION, [&](BlockReader &reader) {
        if (reader.version() < OLDEST_VERSION)
            throwWrongBlockVersion();
        Block::fields(reader, block, values_);
    });
    for (QString const &id : block.ids)
        loadDataset(stream, id);
    if (version >= 12)
        ChartMarker::load(stream, &markers_);
    addLegacyMarkers(block);
    values_.legend.load(stream);
    values_.legendData.load(stream);
    if (version >= 14)
        values_.histogramData.load(stream);
    values_.unitX.load(stream);
    values_.unitY.load(stream);
    loadTokens(stream, block);
}

/// Stored under the id of the list, whatever the dataset calls itself; of two with the same id the second stays.
void ChartData::loadDataset(IO::InStream *stream, QString const &id)
{
    auto dataset = std::make_unique<ChartDataset>(id);
    dataset->load(stream);
    ChartDataset *&place = datasets_[id];
    delete place;
    place = dataset.release();
}

void ChartData::addLegacyMarkers(Block const &block)
{
    if (block.markerPosition == DBL_MAX || block.markerValues.empty())
        return;
    std::vector<BaVec2d<double>> points;
    for (double value : block.markerValues)
        points.emplace_back(block.markerPosition, value);
    addMarker(new LineChartMarker(block.markerPosition));
    addMarker(new PointsChartMarker(std::move(points)));
}

void ChartData::loadTokens(IO::InStream *stream, Block const &block)
{
    if (block.hasTokenContainer) {
        auto container = std::make_unique<TokenContainer>();
        container->load(stream);
        setTokenContainer(container.release());
    }
    if (block.interfaceIsContainer)
        values_.tokenInterface = tokenContainer_;
}

} // namespace Zem::Fig2
