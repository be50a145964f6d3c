// page_tokens.h: token interfaces around those of the data.
#pragma once

#include <ZemFig2Snippet.h>
#include <ZemFig2TokenInterface.h>

#include <map>
#include <memory>

namespace Zem::Zemfig {

/// Hands on everything that another interface has.
class ForwardedTokens : public Fig2::FigureTokenInterface
{
public:
    /// Not owned, and outlives this one.
    explicit ForwardedTokens(Fig2::FigureTokenInterface const *tokens) : source_(tokens) {}

    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    unsigned int getModifiedCounter(QString const &name) const override;
    Fig2::ImageData const *getImage(QString const &token) const override;
    void releaseImage(QString const &token) const override;
    Fig2::ChartData const *getChart(QString const &token) const override;
    void releaseChart(QString const &token) const override;
    Fig2::SnapshotData const *getSnapshot(QString const &token) const override;
    void releaseSnapshot(QString const &token) const override;

private:
    Fig2::FigureTokenInterface const *source_;
};

/// Lends frozen pages too, by name.
class TokensWithSnippets : public ForwardedTokens
{
public:
    using Snippets = std::map<QString, std::unique_ptr<Fig2::Snippet>>;

    TokensWithSnippets(std::unique_ptr<Fig2::FigureTokenInterface> tokens, Snippets snippets)
        : ForwardedTokens(tokens.get()), tokens_(std::move(tokens)), snippets_(std::move(snippets))
    {
    }

    /// The names of the snippets behind all others.
    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Fig2::SnapshotData const *getSnapshot(QString const &token) const override;
    void releaseSnapshot(QString const &token) const override;

private:
    std::unique_ptr<Fig2::FigureTokenInterface> tokens_;
    Snippets snippets_;
};

/// Offers only the tokens that a figure shows.
class ShownTokens : public ForwardedTokens
{
public:
    ShownTokens(Fig2::FigureTokenInterface const *tokens, Fig2::Figure const *figure)
        : ForwardedTokens(tokens), figure_(figure)
    {
    }

    void getTokens(std::vector<TokenInfo> *tokens) const override;

private:
    Fig2::Figure const *figure_;
};

} // namespace Zem::Zemfig
