#include "TestTokens.h"

namespace Zem::Support {

void TestTokens::set(QString const &name, Value const &value)
{
    values_.insert_or_assign(name, value);
    ++counters_[name];
}

void TestTokens::setAt(unsigned int stage, QString const &name, Value const &value)
{
    stageValues_.insert_or_assign({stage, name}, value);
    ++counters_[name];
}

void TestTokens::getTokens(std::vector<TokenInfo> *tokens) const
{
    tokens->clear();
    for (auto const &[name, counter] : counters_)
        tokens->emplace_back(TokenInfo::TYPE_STRING, name, name);
}

Value TestTokens::getValue(QString name, IndexIdentifier const &, StageIdentifier const &stage) const
{
    auto const atStage = stageValues_.find({stage.getIdentifier(), name});
    if (atStage != stageValues_.end())
        return atStage->second;
    auto const anywhere = values_.find(name);
    if (anywhere != values_.end())
        return anywhere->second;
    return counters_.contains(name) ? Value::INVALID : Value::UNKNOWN;
}

unsigned int TestTokens::getModifiedCounter(QString const &name) const
{
    auto const found = counters_.find(name);
    return found == counters_.end() ? 0 : found->second;
}

} // namespace Zem::Support
