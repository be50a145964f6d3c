#include <ZemMeasTokenInterface.h>

#include <ZemTokenTools.h>

#include <QtCore/QDateTime>

#include <algorithm>
#include <limits>

namespace Zem::Measurement {

namespace {

constexpr std::size_t MAX_KEPT_STAGES = 16;

QString stageToken()
{
    return QStringLiteral("stage");
}

QString stageCountToken()
{
    return QStringLiteral("stage.count");
}

bool isBuiltIn(QString const &name)
{
    return name == stageToken() || name == stageCountToken();
}

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

/// A unit that cannot be converted is at least shown.
QString displayText(ProjectToken const &token)
{
    bool const plainUnit = !token.unitText.isEmpty() && !token.unit.hasUnit();
    return plainUnit ? QStringLiteral("%1 [%2]").arg(token.title, token.unitText) : token.title;
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

ProjectTokenInterface::ProjectTokenInterface(Project const *project) : project_(project)
{
}

void ProjectTokenInterface::refresh() const
{
    std::int64_t const revision = project_->revision();
    if (revision == revision_) {
        return;
    }
    std::vector<unsigned int> stages = project_->stages();
    tokens_ = project_->tokens();
    tokenByName_.clear();
    tokenById_.clear();
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        tokenByName_.insert(tokens_[i].name, i);
        tokenById_.insert(tokens_[i].id, i);
    }
    stageValues_.clear();
    stageOrder_.clear();
    stagesModified_ += stages == stages_ ? 0 : 1;
    stages_ = std::move(stages);
    revision_ = revision;
}

void ProjectTokenInterface::getTokens(std::vector<TokenInfo> *tokens) const
{
    refresh();
    tokens->emplace_back(TokenInfo::CATEGORY_STAGE, TokenInfo::TYPE_INTEGER, stageToken(), QStringLiteral("Stage"));
    tokens->emplace_back(TokenInfo::CATEGORY_PROJECT, TokenInfo::TYPE_INTEGER, stageCountToken(),
                         QStringLiteral("Number of stages"));
    for (ProjectToken const &token : tokens_) {
        tokens->emplace_back(TokenInfo::CATEGORY_STAGE, typeOf(token), token.name, displayText(token));
    }
}

Value ProjectTokenInterface::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const
{
    refresh();
    bool const builtIn = isBuiltIn(name);
    auto const token = tokenByName_.constFind(name);
    if (!builtIn && token == tokenByName_.constEnd()) {
        return Value::UNKNOWN;
    }
    if (index != IndexIdentifier::NO_INDEX) {
        return Value::INVALID;
    }
    if (builtIn) {
        return builtInValue(name, stage);
    }
    if (!hasStage(stage)) {
        return Value::INVALID;
    }
    return valuesOf(stage.getIdentifier()).value(tokens_[*token].id, Value::INVALID);
}

unsigned int ProjectTokenInterface::getModifiedCounter(QString const &name) const
{
    refresh();
    if (name == stageToken()) {
        return stagesModified_;
    }
    if (name == stageCountToken()) {
        return static_cast<unsigned int>(stages_.size());
    }
    auto const token = tokenByName_.constFind(name);
    return token == tokenByName_.constEnd() ? 0 : tokens_[*token].modified;
}

bool ProjectTokenInterface::hasStage(StageIdentifier const &stage) const
{
    return std::binary_search(stages_.begin(), stages_.end(), stage.getIdentifier());
}

Value ProjectTokenInterface::builtInValue(QString const &name, StageIdentifier const &stage) const
{
    if (name == stageCountToken()) {
        return integerValue(static_cast<std::int64_t>(stages_.size()));
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
    for (StageValue const &stored : project_->values(stage)) {
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
    auto const found = tokenById_.constFind(stored.token);
    if (found == tokenById_.constEnd()) {
        return Value::INVALID; // stored since the last look; it shows at the next one
    }
    ProjectToken const &token = tokens_[*found];
    if (double const *const number = std::get_if<double>(&stored.value)) {
        return numberValue(*number, token.unit);
    }
    if (QString const *const text = std::get_if<QString>(&stored.value)) {
        return Value(*text);
    }
    std::int64_t const whole = std::get<std::int64_t>(stored.value);
    return token.type == ColumnType_t::DATE_TIME ? Value::fromDateTime(QDateTime::fromMSecsSinceEpoch(whole, Qt::UTC))
                                                 : integerValue(whole);
}

} // namespace Zem::Measurement
