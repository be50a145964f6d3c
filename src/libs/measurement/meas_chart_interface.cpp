#include <ZemMeasChartInterface.h>

#include "meas_chart_look.h"
#include "meas_chart_store.h"
#include "meas_names.h"

#include <algorithm>

namespace Zem::Measurement {

using namespace Fig2;

namespace {

using DataToken = ChartInterface::DataToken;

DataToken offerOf(QString const &name, QString const &group, TokenInfo::Category_t category)
{
    DataToken token = group.isEmpty() ? DataToken(name) : DataToken(name, group);
    token.setCategory(category);
    return token;
}

/// Tokens first, then series, each in the order in which they came in.
template <class Accept>
void offer(ProjectContents const &contents, Accept const &accept, std::vector<DataToken> *offered)
{
    for (ProjectToken const &token : contents.tokens()) {
        if (accept(token)) {
            offered->push_back(offerOf(token.name, groupOf(token.name), TokenInfo::CATEGORY_STAGE));
        }
    }
    for (ProjectSeries const &series : contents.series()) {
        if (accept(series)) {
            offered->push_back(offerOf(series.name, series.group, TokenInfo::CATEGORY_PROJECT));
        }
    }
}

ProjectToken const *find(ProjectContents const &contents, QString const &name)
{
    ProjectToken const *const token = contents.findToken(name);
    return token ? token : contents.findSeries(name);
}

QString titleOf(ProjectContents const &contents, QString const &name)
{
    ProjectToken const *const token = find(contents, name);
    return token ? displayText(*token) : name == STAGE_TOKEN ? QStringLiteral("Stage") : name;
}

QString groupIn(ProjectContents const &contents, QString const &name)
{
    ProjectSeries const *const series = contents.findSeries(name);
    return series ? series->group : groupOf(name);
}

bool isTitleShared(ProjectContents const &contents, QString const &name, QString const &title)
{
    auto const shares = [&](ProjectToken const &other) {
        return other.name != name && isChartY(other) && displayText(other) == title;
    };
    return std::any_of(contents.tokens().begin(), contents.tokens().end(), shares) ||
           std::any_of(contents.series().begin(), contents.series().end(), shares);
}

} // namespace

ProjectChartInterface::ProjectChartInterface(ProjectTokenInterface const *tokens) : tokens_(tokens)
{
}

ProjectChartInterface::~ProjectChartInterface()
{
    for (QString const &token : getChartTokens()) {
        tokens_->charts().giveUp(token);
    }
}

void ProjectChartInterface::setCurrentStage(StageIdentifier const &stage)
{
    tokens_->setCurrentStage(stage);
}

void ProjectChartInterface::setNamedPoints(std::vector<NamedPoint> const &points)
{
    tokens_->charts().setNamedPoints(points);
}

void ProjectChartInterface::addChartToken(QString const &token)
{
    tokens_->charts().keep(token);
}

void ProjectChartInterface::removeChartToken(QString const &token)
{
    tokens_->charts().giveUp(token);
}

std::vector<DataToken> ProjectChartInterface::getTokensX()
{
    std::vector<DataToken> offered{offerOf(STAGE_TOKEN, {}, TokenInfo::CATEGORY_STAGE)};
    offer(tokens_->charts().contents(), isChartX, &offered);
    return offered;
}

std::vector<DataToken> ProjectChartInterface::getTokensY()
{
    std::vector<DataToken> offered;
    offer(tokens_->charts().contents(), isChartY, &offered);
    return offered;
}

QString ProjectChartInterface::getTokenName(DataToken const &token)
{
    return token.getName();
}

QString ProjectChartInterface::getTokenDescription(DataToken const &token)
{
    return titleOf(tokens_->charts().contents(), token.getName());
}

QString ProjectChartInterface::getLegendDescription(DataToken const &token, ChartParameters const &parameters)
{
    ProjectContents const &contents = tokens_->charts().contents();
    QString const &name = token.getName();
    QString const title = titleOf(contents, name);
    QString const group = groupIn(contents, name);
    bool const showGroup = parameters.getShowGroupName() || isTitleShared(contents, name, title);
    return showGroup && !group.isEmpty() ? QStringLiteral("%1 - %2").arg(title, group) : title;
}

UnitData ProjectChartInterface::getTokenUnit(DataToken const &token)
{
    ProjectToken const *const known = find(tokens_->charts().contents(), token.getName());
    if (!known) {
        return {};
    }
    return known->type == ColumnType_t::DATE_TIME ? UnitData(uTime) : known->unit;
}

bool ProjectChartInterface::getDefaultParameters(DataToken const &token, ChartParameters *parameters) const
{
    std::vector<DataToken> offered;
    offer(tokens_->charts().contents(), isChartY, &offered);
    auto const found = std::find_if(offered.begin(), offered.end(),
                                    [&token](DataToken const &each) { return each.getName() == token.getName(); });
    if (found == offered.end()) {
        return false;
    }
    proposeLook(static_cast<std::size_t>(found - offered.begin()), parameters);
    return true;
}

} // namespace Zem::Measurement
