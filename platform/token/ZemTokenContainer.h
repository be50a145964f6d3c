// ZemTokenContainer.h: a token source that holds its values itself.
#pragma once

#include <ZemTokenInterface.h>

#include <QtCore/QHash>

namespace Zem {

class TokenFilter;

/// One value per token name, the same at every stage. Tokens are offered in the order in which they were first set. Not
/// thread-safe: use it from one thread at a time.
class TokenContainer : public TokenInterface
{
public:
    TokenContainer();
    TokenContainer(TokenContainer const &);
    TokenContainer &operator=(TokenContainer const &);
    /// A copy of what `source` (never null) has at `stage` and the filter passes. Tokens whose name is no token text
    /// are skipped. Values with an index are not taken over.
    TokenContainer(TokenInterface const *source, TokenFilter const &filter, StageIdentifier const &stage);
    ~TokenContainer() override;

    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    /// 0 for an unknown token, 1 after its first value, and one more whenever a different value is set.
    unsigned int getModifiedCounter(QString const &name) const override;

    /// Adds or replaces the token that `info` names, addressed by its bare name. Throws ProgError when the name is no
    /// token text.
    void setValue(TokenInfo const &info, Value const &value);

    /// One block with the number of tokens, then info and value of each. Throw IO::StreamException. load() replaces all
    /// tokens, or nothing when it fails; a token that it changes counts as modified.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    struct Token
    {
        TokenInfo info;
        Value value;
        unsigned int modifiedCounter = 1;
    };

    void set(QString const &name, TokenInfo const &info, Value const &value);
    Token const *find(QString const &name) const;
    void countChangesSince(TokenContainer const &before);

    std::vector<Token> tokens_;
    QHash<QString, std::size_t> indices_; // by bare name
};

} // namespace Zem
