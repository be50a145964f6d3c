#include "page_tokens.h"

#include <ZemFig2Figure.h>

namespace Zem::Zemfig {

using namespace Fig2;

void ForwardedTokens::getTokens(std::vector<TokenInfo> *tokens) const
{
    source_->getTokens(tokens);
}

Value ForwardedTokens::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const
{
    return source_->getValue(name, index, stage);
}

unsigned int ForwardedTokens::getModifiedCounter(QString const &name) const
{
    return source_->getModifiedCounter(name);
}

ImageData const *ForwardedTokens::getImage(QString const &token) const
{
    return source_->getImage(token);
}

void ForwardedTokens::releaseImage(QString const &token) const
{
    source_->releaseImage(token);
}

ChartData const *ForwardedTokens::getChart(QString const &token) const
{
    return source_->getChart(token);
}

void ForwardedTokens::releaseChart(QString const &token) const
{
    source_->releaseChart(token);
}

SnapshotData const *ForwardedTokens::getSnapshot(QString const &token) const
{
    return source_->getSnapshot(token);
}

void ForwardedTokens::releaseSnapshot(QString const &token) const
{
    source_->releaseSnapshot(token);
}

void TokensWithSnippets::getTokens(std::vector<TokenInfo> *tokens) const
{
    ForwardedTokens::getTokens(tokens);
    for (auto const &[name, snippet] : snippets_)
        tokens->push_back(TokenInfo(TokenInfo::TYPE_SNAPSHOT, name, name));
}

SnapshotData const *TokensWithSnippets::getSnapshot(QString const &token) const
{
    auto const found = snippets_.find(token);
    return found == snippets_.end() ? ForwardedTokens::getSnapshot(token) : found->second.get();
}

void TokensWithSnippets::releaseSnapshot(QString const &token) const
{
    if (!snippets_.contains(token))
        ForwardedTokens::releaseSnapshot(token);
}

void ShownTokens::getTokens(std::vector<TokenInfo> *tokens) const
{
    ForwardedTokens::getTokens(tokens);
    std::erase_if(*tokens, [this](TokenInfo const &info) { return !figure_->isTokenUsed(info.getName()); });
}

} // namespace Zem::Zemfig
