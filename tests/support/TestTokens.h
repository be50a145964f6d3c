// TestTokens.h: a token interface whose values the test sets.
#pragma once

#include <ZemFig2TokenInterface.h>

#include <map>
#include <utility>

namespace Zem::Support {

/// Values by name, valid at every stage or at one. Setting a value raises the counter of its token.
class TestTokens : public Fig2::EmptyFigureTokenInterface
{
public:
    void set(QString const &name, Value const &value);
    void setAt(unsigned int stage, QString const &name, Value const &value);

    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    unsigned int getModifiedCounter(QString const &name) const override;

private:
    std::map<QString, Value> values_;
    std::map<std::pair<unsigned int, QString>, Value> stageValues_;
    std::map<QString, unsigned int> counters_;
};

} // namespace Zem::Support
