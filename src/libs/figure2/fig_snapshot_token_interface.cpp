#include "ZemFig2SnapshotInterface.h"

#include "ZemFig2TokenContainer.h"
#include "fig_value.h"

#include <ZemTokenContainer.h>

namespace Zem::Fig2 {

void SnapshotTokenInterface::getTokens(std::vector<TokenInfo> *tokens) const
{
    tokens->clear();
    if (tokens_)
        tokens_->getTokens(tokens);
    if (!projectTokens_)
        return;
    std::vector<TokenInfo> more;
    projectTokens_->getTokens(&more);
    tokens->insert(tokens->end(), more.begin(), more.end());
}

Value SnapshotTokenInterface::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const
{
    Value value = Value::UNKNOWN;
    if (tokens_)
        value = tokens_->getValue(name, index, stage);
    if (projectTokens_ && !hasValue(value))
        value = projectTokens_->getValue(name, index, stage);
    return value;
}

unsigned int SnapshotTokenInterface::getModifiedCounter(QString const &name) const
{
    unsigned int const own = tokens_ ? tokens_->getModifiedCounter(name) : 0;
    return own + (projectTokens_ ? projectTokens_->getModifiedCounter(name) : 0);
}

ImageData const *SnapshotTokenInterface::getImage(QString const &token) const
{
    return tokens_ ? std::as_const(*tokens_).getImage(token) : nullptr;
}

void SnapshotTokenInterface::releaseImage(QString const &token) const
{
    if (tokens_)
        tokens_->releaseImage(token);
}

ChartData const *SnapshotTokenInterface::getChart(QString const &token) const
{
    return tokens_ ? std::as_const(*tokens_).getChart(token) : nullptr;
}

void SnapshotTokenInterface::releaseChart(QString const &token) const
{
    if (tokens_)
        tokens_->releaseChart(token);
}

SnapshotData const *SnapshotTokenInterface::getSnapshot(QString const &token) const
{
    return tokens_ ? std::as_const(*tokens_).getSnapshot(token) : nullptr;
}

void SnapshotTokenInterface::releaseSnapshot(QString const &token) const
{
    if (tokens_)
        tokens_->releaseSnapshot(token);
}

} // namespace Zem::Fig2
