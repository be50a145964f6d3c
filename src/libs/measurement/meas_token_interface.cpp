#include <ZemMeasTokenInterface.h>

#include "meas_chart_store.h"
#include "meas_contents.h"
#include "meas_names.h"
#include "meas_point_statistics.h"
#include "meas_view_store.h"

#include <ZemTokenTools.h>

#include <QtCore/QDateTime>

#include <algorithm>
#include <limits>

namespace Zem::Measurement {

namespace {

constexpr std::size_t MAX_KEPT_STAGES = 16;

TokenInfo::Type_t typeOf(ProjectToken const &token)
{
    switch (token.type) {
    case ColumnType_t::INTEGER:
        return TokenInfo::TYPE_INTEGER;
    case ColumnType_t::NUMBER:
        return TokenTools::getTokenType(token.unit.getUnit());
    case ColumnType_t::DATE_TIME:
        return TokenInfo::TYPE_DATE_TIME;
    default:
        return TokenInfo::TYPE_STRING;
    }
}

Value numberValue(double number, UnitData const &unit)
{
    if (!unit.hasUnit()) {
        return {number, nullptr};
    }
    return {unit.getUnit()->toBase(number, unit.getCurrentUnit()), unit};
}

/// Integers are stored with 32 bits only; anything else is damage that one value has to bear.
Value integerValue(std::int64_t number)
{
    using Limits = std::numeric_limits<int>;
    bool const fits = number >= Limits::min() && number <= Limits::max();
    return fits ? Value(static_cast<int>(number)) : Value::INVALID;
}

} // namespace

ProjectTokenInterface::ProjectTokenInterface(Project const *project)
    : contents_(std::make_unique<ProjectContents>(project)), charts_(std::make_unique<ChartStore>(contents_.get())),
      views_(std::make_unique<ViewStore>(contents_.get())),
      statistics_(std::make_unique<PointStatistics>(contents_.get()))
{
}

ProjectTokenInterface::~ProjectTokenInterface() = default;

ChartStore &ProjectTokenInterface::charts() const
{
    return *charts_;
}

void ProjectTokenInterface::setCurrentStage(StageIdentifier const &stage) const
{
    charts_->setCurrentStage(stage);
    views_->setCurrentStage(stage);
}

StageIdentifier const &ProjectTokenInterface::getCurrentStage() const
{
    return views_->currentStage();
}

void ProjectTokenInterface::refresh() const
{
    contents_->refresh();
    if (contents_->revision() == stageValuesRevision_) {
        return;
    }
    stageValues_.clear();
    stageOrder_.clear();
    stageValuesRevision_ = contents_->revision();
}

void ProjectTokenInterface::getTokens(std::vector<TokenInfo> *tokens) const
{
    refresh();
    tokens->emplace_back(TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_INTEGER, STAGE_TOKEN, QStringLiteral("Stage"));
    tokens->emplace_back(TokenInfo::CATEGORY_PROJECT, TokenInfo::TYPE_INTEGER, STAGE_COUNT_TOKEN,
                         QStringLiteral("Number of stages"));
    for (ProjectToken const &token : contents_->tokens()) {
        tokens->emplace_back(TokenInfo::CATEGORY_STAGE, typeOf(token), token.name, displayText(token));
    }
    statistics_->getTokens(tokens);
    for (ProjectView const &view : contents_->views()) {
        tokens->emplace_back(TokenInfo::CATEGORY_IMAGE, TokenInfo::TYPE_IMAGE, view.name, view.name);
    }
}

Value ProjectTokenInterface::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const
{
    refresh();
    bool const builtIn = isBuiltIn(name);
    ProjectToken const *const token = contents_->findToken(name);
    if (!builtIn && !token && !statistics_->findSet(name)) {
        return Value::UNKNOWN;
    }
    if (index != IndexIdentifier::NO_INDEX) {
        return Value::INVALID;
    }
    if (builtIn) {
        return builtInValue(name, stage);
    }
    if (!token) {
        return statistics_->getValue(name, stage.getIdentifier());
    }
    if (!hasStage(stage)) {
        return Value::INVALID;
    }
    return valuesOf(stage.getIdentifier()).value(token->id, Value::INVALID);
}

unsigned int ProjectTokenInterface::getModifiedCounter(QString const &name) const
{
    refresh();
    if (name == STAGE_TOKEN) {
        return contents_->stagesModified();
    }
    if (name == STAGE_COUNT_TOKEN) {
        return static_cast<unsigned int>(contents_->stages().size());
    }
    if (ProjectToken const *const token = contents_->findToken(name)) {
        return token->modified;
    }
    if (ProjectPointSet const *const set = statistics_->findSet(name)) {
        return set->modified;
    }
    unsigned int const image = views_->modifiedCounter(name);
    return image != 0 ? image : charts_->modifiedCounter(name);
}

Fig2::ImageData const *ProjectTokenInterface::getImage(QString const &token) const
{
    return views_->lend(token);
}

void ProjectTokenInterface::releaseImage(QString const &token) const
{
    views_->takeBack(token);
}

Fig2::ChartData const *ProjectTokenInterface::getChart(QString const &token) const
{
    return charts_->lend(token);
}

void ProjectTokenInterface::releaseChart(QString const &token) const
{
    charts_->takeBack(token);
}

bool ProjectTokenInterface::hasStage(StageIdentifier const &stage) const
{
    std::vector<unsigned int> const &stages = contents_->stages();
    return std::binary_search(stages.begin(), stages.end(), stage.getIdentifier());
}

Value ProjectTokenInterface::builtInValue(QString const &name, StageIdentifier const &stage) const
{
    if (name == STAGE_COUNT_TOKEN) {
        return integerValue(static_cast<std::int64_t>(contents_->stages().size()));
    }
    return hasStage(stage) ? integerValue(stage.getIdentifier()) : Value::INVALID;
}

ProjectTokenInterface::StageValues const &ProjectTokenInterface::valuesOf(unsigned int stage) const
{
    auto const kept = stageValues_.find(stage);
    if (kept != stageValues_.end()) {
        return kept->second;
    }
    StageValues values;
    for (StageValue const &stored : contents_->project().values(stage)) {
        values.insert(stored.token, toValue(stored));
    }
    if (stageOrder_.size() == MAX_KEPT_STAGES) {
        stageValues_.erase(stageOrder_.front());
        stageOrder_.pop_front();
    }
    stageOrder_.push_back(stage);
    return stageValues_[stage] = std::move(values);
}

Value ProjectTokenInterface::toValue(StageValue const &stored) const
{
    ProjectToken const *const token = contents_->findToken(stored.token);
    if (!token) {
        return Value::INVALID; // stored since the last look; it shows at the next one
    }
    if (double const *const number = std::get_if<double>(&stored.value)) {
        return numberValue(*number, token->unit);
    }
    if (QString const *const text = std::get_if<QString>(&stored.value)) {
        return Value(*text);
    }
    std::int64_t const whole = std::get<std::int64_t>(stored.value);
    return token->type == ColumnType_t::DATE_TIME ? Value::fromDateTime(QDateTime::fromMSecsSinceEpoch(whole, Qt::UTC))
                                                  : integerValue(whole);
}

} // namespace Zem::Measurement
