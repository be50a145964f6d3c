// The settings of Legend and the scale it shows.
#include "ZemFig2Legend.h"

#include "ZemFig2Connector.h"

#include <ZemColorMap.h>

#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr LineStyle THIN_LINE{0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)};

} // namespace

Legend::Legend() : AreaBase(LEGEND), tickBoxStyle_(THIN_LINE), tickStyle_(THIN_LINE)
{
}

void Legend::setLegendDataMode(LegendDataMode mode)
{
    legendDataMode_ = mode;
    invalidate();
}

void Legend::setTickBoxStyle(LineStyle const &style)
{
    tickBoxStyle_ = style;
    invalidate();
}

void Legend::setTickStyle(LineStyle const &style)
{
    tickStyle_ = style;
    invalidate();
}

void Legend::setBarWidth(double width)
{
    barWidth_ = width;
    invalidate();
}

void Legend::setEqualSizedBlocks(bool equal)
{
    equalSizedBlocks_ = equal;
    invalidate();
}

void Legend::setShowHistogram(bool show)
{
    showHistogram_ = show;
    invalidate();
}

void Legend::getLocalLegendData(Legend2::Legend const **legend, Legend2::Data const **data) const
{
    *legend = &localLegend_;
    *data = &localData_;
}

void Legend::setLocalLegendData(Legend2::Legend const &legend, Legend2::Data const &data)
{
    localLegend_ = legend;
    localData_ = data;
    invalidate();
}

void Legend::getLocalToleranceParams(bool *show, Legend2::ToleranceParams const **tolerance) const
{
    *show = localShowTolerances_;
    *tolerance = &localTolerance_;
}

void Legend::setLocalToleranceParams(bool show, Legend2::ToleranceParams const &tolerance)
{
    localShowTolerances_ = show;
    localTolerance_ = tolerance;
    invalidate();
}

void Legend::setLocalHistogramData(Legend2::HistogramData const &histogram)
{
    localHistogram_ = histogram;
    invalidate();
}

void Legend::clearLocalHistogramData()
{
    localHistogram_.clear();
    invalidate();
}

void Legend::convertToSnapshotMode()
{
    setLocalLegendData(legend_, legendData_);
    setLocalToleranceParams(showTolerances_, tolerance_);
    setLocalHistogramData(histogram_);
    setLegendDataMode(LEGEND_DATA_MODE_MANUAL);
}

Legend::LocalScale Legend::getLocalScale() const
{
    LocalScale local;
    getLocalLegendData(&local.legend, &local.data);
    getLocalToleranceParams(&local.showTolerances, &local.tolerance);
    local.histogram = getLocalHistogramData();
    return local;
}

/// A derived class may keep the local values elsewhere: these two bring them here and back.
void Legend::updateInternalFromLocal()
{
    LocalScale const local = getLocalScale();
    localLegend_ = *local.legend;
    localData_ = *local.data;
    localShowTolerances_ = local.showTolerances;
    localTolerance_ = *local.tolerance;
    localHistogram_ = *local.histogram;
}

void Legend::updateLocalFromInternal()
{
    setLocalLegendData(localLegend_, localData_);
    setLocalToleranceParams(localShowTolerances_, localTolerance_);
}

unsigned int Legend::getEstimatedObjectSize() const
{
    std::size_t bytes = sizeof(Legend) - sizeof(AreaBase);
    for (QString const &text : texts_)
        bytes += sizeof(QString) + static_cast<std::size_t>(text.capacity()) * sizeof(QChar);
    bytes += texts_.size() * (sizeof(BaVec2d<double>) + 2 * sizeof(double) + sizeof(int));
    return AreaBase::getEstimatedObjectSize() + static_cast<unsigned int>(bytes);
}

bool Legend::canConnectTo(Element const *target, QString const &) const
{
    return target && target->hasLegendData();
}

/// What one connected element delivers.
struct Legend::Partner
{
    bool delivered = false;
    Legend2::Legend legend;
    Legend2::Data data;
    bool showTolerances = false;
    Legend2::ToleranceParams tolerance;
    Legend2::HistogramData histogram;

    bool sameScale(Partner const &other) const
    {
        return legend == other.legend && data == other.data && tolerance == other.tolerance;
    }
};

std::vector<Legend::Partner> Legend::askPartners(FigureTokenInterface const *tokens) const
{
    std::vector<Partner> partners;
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        Element const *target = (*it)->getTarget();
        if ((*it)->getSource() != this || !target || !target->hasLegendData())
            continue;
        Partner partner;
        bool canDrawColors = false;
        partner.delivered = target->getLegendData(tokens, &partner.legend, &partner.data, &partner.showTolerances,
                                                  &partner.tolerance, &partner.histogram, &canDrawColors);
        partners.push_back(std::move(partner));
    }
    return partners;
}

/// The first partner that delivers. False when a later one differs from it; another tolerance flag alone does not
/// count.
bool Legend::findCommonScale(std::vector<Partner> const &partners, Partner const **first)
{
    for (Partner const &partner : partners) {
        if (!partner.delivered)
            continue;
        if (!*first)
            *first = &partner;
        else if (!(*first)->sameScale(partner))
            return false;
    }
    return true;
}

/// The histogram that all partners share that have one. False when two differ; then there is none.
bool Legend::takeCommonHistogram(std::vector<Partner> const &partners)
{
    for (Partner const &partner : partners) {
        if (!partner.delivered || !partner.histogram.isValid())
            continue;
        if (!histogram_.isValid()) {
            histogram_ = partner.histogram;
        } else if (!(histogram_ == partner.histogram)) {
            histogram_.clear();
            return false;
        }
    }
    return true;
}

void Legend::resetScale()
{
    dataValid_ = false;
    legend_ = Legend2::Legend();
    legendData_ = Legend2::Data();
    showTolerances_ = false;
    tolerance_ = Legend2::ToleranceParams();
    histogram_.clear();
    usesGlobalHistogram_ = false;
}

void Legend::computeDynamicDataElement(FigureTokenInterface const *tokens)
{
    std::vector<Partner> const partners = askPartners(tokens);
    Partner const *first = nullptr;
    if (!findCommonScale(partners, &first) || !first)
        return;
    dataValid_ = true;
    legend_ = first->legend;
    legendData_ = first->data;
    showTolerances_ = first->showTolerances;
    tolerance_ = first->tolerance;
    histogram_ = first->histogram;
}

void Legend::computeDynamicData3d(FigureTokenInterface const *tokens)
{
    std::vector<Partner> const partners = askPartners(tokens);
    Partner const *first = nullptr;
    if (!findCommonScale(partners, &first))
        return;
    dataValid_ = true;
    legend_ = Legend2::ColorMap::getGlobalLegendParams();
    legendData_ = Legend2::ColorMap::getGlobalLegendData();
    showTolerances_ = Legend2::ColorMap::getToleranceMode();
    if (showTolerances_)
        tolerance_ = Legend2::ColorMap::getToleranceParams();
    usesGlobalHistogram_ = takeCommonHistogram(partners) && !histogram_.isValid();
    if (usesGlobalHistogram_)
        histogram_ = Legend2::ColorMap::getHistogramData();
}

void Legend::computeDynamicDataGlobal(FigureTokenInterface const *tokens)
{
    Partner const *first = nullptr;
    std::vector<Partner> const partners = askPartners(tokens);
    for (Partner const &partner : partners) {
        if (!partner.delivered) {
            if (legendDataMode_ == LEGEND_DATA_MODE_MANUAL)
                return;
            continue;
        }
        if (first && first->showTolerances != partner.showTolerances)
            return;
        if (!first)
            first = &partner;
    }
    LocalScale const local = getLocalScale();
    dataValid_ = true;
    legend_ = *local.legend;
    legendData_ = *local.data;
    showTolerances_ = local.showTolerances;
    tolerance_ = *local.tolerance;
    if (takeCommonHistogram(partners) && !histogram_.isValid())
        histogram_ = *local.histogram;
}

void Legend::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    resetScale();
    switch (legendDataMode_) {
    case LEGEND_DATA_MODE_ELEMENT:
        computeDynamicDataElement(tokens);
        break;
    case LEGEND_DATA_MODE_3D:
        computeDynamicData3d(tokens);
        break;
    default:
        computeDynamicDataGlobal(tokens);
    }
    layOut();
    AreaBase::computeDynamicData(stage, tokens);
    addLabelsToUpdatePolygon();
}

/// A partner that is stale may come up with another scale; the global scale changes without a word.
bool Legend::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        Element const *target = (*it)->getTarget();
        if ((*it)->getSource() == this && target && !target->isDataValid(stage, tokens))
            return false;
    }
    if (legendDataMode_ != LEGEND_DATA_MODE_3D || !dataValid_)
        return true;
    return legend_ == Legend2::ColorMap::getGlobalLegendParams() &&
           legendData_ == Legend2::ColorMap::getGlobalLegendData() &&
           showTolerances_ == Legend2::ColorMap::getToleranceMode() &&
           (!showTolerances_ || tolerance_ == Legend2::ColorMap::getToleranceParams()) &&
           (!usesGlobalHistogram_ || histogram_ == Legend2::ColorMap::getHistogramData());
}

} // namespace Zem::Fig2
