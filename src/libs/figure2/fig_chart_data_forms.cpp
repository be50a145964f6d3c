#include "ZemFig2ChartData.h"

#include "ZemFig2Import.h"
#include "fig_block.h"
#include "fig_items.h"

#include <ZemTokenContainer.h>

#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

// 2: position of a marker; 3: ranges that the data ask for; 4: whether there is a colour scale; 5: statistics; 6:
// whether markers are supported; 7: values of the marker; 8: which ranges there are; 9: a token registry in place of
// older token data; 10: neither; 11: token container; 12: marker list and two flags for markers; 13: no more markers
// within the block; 14: histogram
constexpr unsigned int BLOCK_VERSION = 14;
constexpr unsigned int REGISTRY_VERSION = 9;
constexpr unsigned int FIRST_POSITION_VERSION = 2;
constexpr unsigned int FIRST_SUPPORT_VERSION = 6;
constexpr unsigned int FIRST_VALUES_VERSION = 7;
constexpr unsigned int LAST_MARKER_FIELDS_VERSION = 12;

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
    archive.field(values.hasAxisXRange, Since{8}, false);
    archive.field(values.hasAxisYRange, Since{8}, false);
    archive.field(values.axisXRange, Since{3}, {DBL_MAX, DBL_MAX});
    archive.field(values.axisYRange, Since{3}, {DBL_MAX, DBL_MAX});
    archive.field(values.supportsStageMarkers, Since{12}, true);
    archive.field(values.supportsPointMarkers, Since{12}, true);
    if constexpr (Archive::isReader)
        markerFields(archive, block, values);
    archive.field(values.hasLegendData, Since{4}, false);
    archive.field(values.computeStatistics, Since{5}, true);
    archive.field(block.hasTokenContainer, Since{11}, false);
    archive.field(block.interfaceIsContainer, Since{11}, false);
}

/// Version 12 has all three flags for markers, and deliberately this one counts.
void ChartData::Block::markerFields(BlockReader &reader, Block &block, Values &values)
{
    unsigned int const version = reader.version();
    if (version > LAST_MARKER_FIELDS_VERSION)
        return;
    if (version >= FIRST_SUPPORT_VERSION) {
        reader.field(values.supportsStageMarkers);
        values.supportsPointMarkers = values.supportsStageMarkers;
    }
    if (version >= FIRST_POSITION_VERSION)
        reader.field(block.markerPosition);
    if (version >= FIRST_VALUES_VERSION)
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
    unsigned int const version =
        loadBlock(stream, BLOCK_VERSION, [&](BlockReader &reader) { Block::fields(reader, block, values_); });
    for (QString const &id : block.ids)
        loadDataset(stream, id);
    if (version >= 12)
        ChartMarker::load(stream, &markers_);
    addLegacyMarkers(block);
    values_.legend.load(stream);
    values_.legendData.load(stream);
    if (version >= 14)
        values_.histogramData.load(stream);
    if (version <= REGISTRY_VERSION)
        importTokens(stream, version);
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

/// What older data had in place of a token container.
void ChartData::importTokens(IO::InStream *stream, unsigned int version)
{
    auto container = std::make_unique<TokenContainer>();
    if (version < REGISTRY_VERSION)
        Import::importTokenData(stream, container.get());
    else
        Import::importDataInterface(stream, container.get());
    setTokenContainer(container.release());
    values_.tokenInterface = tokenContainer_;
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
