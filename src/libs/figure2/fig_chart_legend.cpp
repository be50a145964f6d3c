#include "ZemFig2ChartLegend.h"

#include "ZemFig2Calculator.h"
#include "ZemFig2Chart.h"
#include "ZemFig2Connector.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Tools.h"
#include "fig_alignment.h"
#include "fig_loan.h"

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr double SAMPLE_PROPORTION = 3.0; ///< width to height
constexpr double NO_WRAPPING = -1.0;

using Entry = ChartLegend::Entry;

std::vector<Entry> entriesOf(GenericChart const &chart, ChartInterface *interface)
{
    std::vector<Entry> entries;
    for (auto const &[token, parameters] : chart.getData()) {
        QString const text =
            parameters.getUseDefaultName() ? interface->getLegendDescription(token, parameters) : parameters.getName();
        entries.emplace_back(text, parameters);
    }
    return entries;
}

std::vector<Entry> entriesOf(ChartData const &data)
{
    std::vector<Entry> entries;
    for (auto it = data.getDatasetBegin(); it != data.getDatasetEnd(); ++it) {
        ChartParameters const &parameters = it->second->getParameters();
        entries.emplace_back(parameters.getUseDefaultName() ? it->second->getDisplayText() : parameters.getName(),
                             parameters);
    }
    return entries;
}

} // namespace

ChartLegend::ChartLegend() : LabelBase(CHART_LEGEND)
{
}

unsigned int ChartLegend::getEstimatedObjectSize() const
{
    std::size_t bytes = sizeof(ChartLegend) - sizeof(LabelBase) + entries_.size() * sizeof(Entry);
    for (Entry const &entry : entries_)
        bytes += static_cast<std::size_t>(entry.first.size()) * sizeof(QChar);
    return LabelBase::getEstimatedObjectSize() + static_cast<unsigned int>(bytes);
}

bool ChartLegend::canConnectTo(Element const *target, QString const &) const
{
    return target && (target->getType() == CHART || target->getType() == GENERIC_CHART);
}

/// The first generic chart, or else the first chart.
ChartBase const *ChartLegend::findChart() const
{
    ChartBase const *chart = nullptr;
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        if ((*it)->getSource() != this)
            continue;
        auto const *target = dynamic_cast<ChartBase const *>((*it)->getTarget());
        if (target && target->getType() == GENERIC_CHART)
            return target;
        if (!chart)
            chart = target;
    }
    return chart;
}

std::vector<Entry> ChartLegend::collectEntries(FigureTokenInterface const *tokens) const
{
    std::vector<Entry> entries;
    ChartBase const *chart = findChart();
    if (auto const *generic = dynamic_cast<GenericChart const *>(chart)) {
        if (ChartInterface *interface = ChartInterface::getInterface(this))
            entries = entriesOf(*generic, interface);
    } else if (chart && !chart->getToken().isEmpty()) {
        if (ChartLoan const data(tokens, chart->getToken()); data)
            entries = entriesOf(*data.get());
    }
    std::stable_sort(entries.begin(), entries.end(), [](Entry const &a, Entry const &b) { return a.first < b.first; });
    return entries;
}

bool ChartLegend::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    return LabelBase::isDataValid(stage, tokens) && collectEntries(tokens) == entries_;
}

/// A text of nothing but tags is no title.
BaVec2d<double> ChartLegend::getTitleSize() const
{
    return Tools::stripRTFTags(getResolvedText()).isEmpty() ? BaVec2d<double>(0.0, 0.0) : getResolvedTextSize();
}

void ChartLegend::measureTable()
{
    tableWidth_ = tableHeight_ = 0.0;
    sampleWidth_ = sampleHeight_ = 0.0;
    if (entries_.empty())
        return;
    BaVec2d<double> greatest(0.0, 0.0);
    for (Entry const &entry : entries_) {
        BaVec2d<double> const size = Calculator::getInstance()->computeTextSize(getFont(), entry.first);
        greatest = {std::max(greatest.x, size.x), std::max(greatest.y, size.y)};
    }
    auto const rows = static_cast<double>(entries_.size());
    sampleWidth_ = greatest.y * SAMPLE_PROPORTION;
    sampleHeight_ = greatest.y;
    tableWidth_ = 2.0 * getMargin() + getSpacing() + sampleWidth_ + greatest.x;
    tableHeight_ = rows * greatest.y + (rows - 1.0) * getSpacing();
}

void ChartLegend::applySize()
{
    BaVec2d<double> minimum = getMinimumSize();
    minimum.x = std::max(minimum.x, tableWidth_);
    minimum.y += tableHeight_ + (getTitleSize().x > 0.0 ? getSpacing() : 0.0);
    setMinimumSize(minimum);
    if (!getAutoSize()) {
        setSize({std::max(getSize().x, minimum.x), std::max(getSize().y, minimum.y)});
        return;
    }
    BaVec2d<double> const alignmentOrigin = getAlignmentOrigin();
    setSize(minimum);
    setAlignmentOrigin(alignmentOrigin);
}

void ChartLegend::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    LabelBase::computeDynamicData(stage, tokens);
    entries_ = collectEntries(tokens);
    measureTable();
    applySize();
    AreaBase::computeDynamicData(stage, tokens);
    addConnectorLines(tokens);
}

/// Unlike those of a label they are shown where they leave the legend, wherever they lead to.
void ChartLegend::drawConnectors(FigureTokenInterface const *tokens, Painter *painter) const
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        BaVec2d<double> from;
        BaVec2d<double> to;
        if (computeConnectorPoints(*it, tokens, &from, &to) && !getDragPolygon().isInPolygon(to))
            painter->drawLine(from, to, getConnectorStyle(), Rotation::null);
    }
}

bool ChartLegend::draw(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    if (step != 0)
        return true;
    drawConnectors(tokens, painter);
    drawBackground(painter);
    BaVec2d<double> const title = getTitleSize();
    BaVec2d<double> room = getDrawingSize() - BaVec2d<double>(2.0 * getMargin(), 2.0 * getMargin());
    room.x -= std::max(title.x, tableWidth_);
    room.y -= title.y + tableHeight_;
    if (title.x > 0.0 && tableHeight_ > 0.0)
        room.y -= getSpacing();
    BaVec2d<double> position = getDrawingOrigin() + BaVec2d<double>(getMargin(), getMargin());
    position.x += alignedRoom(getTextAlignmentX(), std::max(room.x, 0.0));
    position.y += alignedRoom(getTextAlignmentY(), std::max(room.y, 0.0));
    if (title.x > 0.0) {
        painter->drawRichText(position + getResolvedTextOffset(), getResolvedText(), getFont(), NO_WRAPPING,
                              Rotation(this), getTextCacheId());
        position.y += title.y + getSpacing();
    }
    if (tableHeight_ > 0.0)
        drawTable(painter, position);
    drawBorder(painter);
    return true;
}

void ChartLegend::drawTable(Painter *painter, BaVec2d<double> const &position) const
{
    Rotation const rotation(this);
    BaVec2d<double> row = position;
    for (auto const &[text, parameters] : entries_) {
        painter->drawVisualisation(row, {sampleWidth_, sampleHeight_}, parameters, rotation);
        painter->drawText(row + BaVec2d<double>(sampleWidth_ + getSpacing(), 0.0), getFont(), text, getFontColor(),
                          rotation);
        row.y += sampleHeight_ + getSpacing();
    }
}

} // namespace Zem::Fig2
