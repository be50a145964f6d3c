// ZemTokenInterface.h: a source of named values.
#pragma once

#include <ZemIdentifiers.h>
#include <ZemTokenInfo.h>
#include <ZemValue.h>

#include <QtCore/QString>

#include <vector>

namespace Zem {

/// What has happened to the tokens of a source, oldest first.
namespace ChangeLog {

enum Change_t { TOKEN_RENAMED, TOKEN_REMOVED };

/// One change of one token. A plain value.
struct Entry
{
    Change_t change = TOKEN_RENAMED;
    QString token;   ///< the name as it was
    QString newName; ///< empty for a removed token

    bool operator==(Entry const &) const = default;
};

using Log = std::vector<Entry>;

} // namespace ChangeLog

/// Base of all token sources. Numbers are in the base unit of their quantity. Asking for a token that does not exist is
/// no error. Holds no locks: whether a source may be read from several threads is its own matter.
class TokenInterface
{
public:
    virtual ~TokenInterface();

    /// Offers the tokens in `tokens`, which the caller passes in empty. Never null.
    virtual void getTokens(std::vector<TokenInfo> *tokens) const = 0;
    /// Value::UNKNOWN when there is no token of this name, Value::INVALID when it has no value with this index or at
    /// this stage. Plain tokens are asked with IndexIdentifier::NO_INDEX.
    virtual Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const = 0;
    /// A number that differs from an earlier one when the token's value at any stage may have changed since; one number
    /// for all stages. Always 0 here, for values that never change.
    virtual unsigned int getModifiedCounter(QString const &name) const;
    /// Empty here.
    virtual ChangeLog::Log getTokenChangeLog() const;

    /// Splits "name" or "name[index]" into name and index. A name is made of letters, digits and . _ - + \ ; an index
    /// is any text without brackets, but not the empty one. False, and both are left alone, when the text is no token.
    /// Without an index, `index` becomes empty. Either pointer may be null.
    static bool parseToken(QString const &text, QString *name, QString *index);

protected:
    TokenInterface() = default;
    TokenInterface(TokenInterface const &) = default;
    TokenInterface &operator=(TokenInterface const &) = default;
};

} // namespace Zem
