// ZemTokenFilter.h: chooses which tokens are taken over from a source.
#pragma once

#include <ZemTokenInfo.h>

namespace Zem {

/// The choice, made token by token. It is asked on the thread that reads the source; whether one filter serves several
/// threads is its own matter.
class TokenFilter
{
public:
    virtual ~TokenFilter();
    /// True means that the token is skipped.
    virtual bool isFilteredOut(TokenInfo const &info) const = 0;

protected:
    TokenFilter() = default;
    TokenFilter(TokenFilter const &) = default;
    TokenFilter &operator=(TokenFilter const &) = default;
};

/// Skips nothing. May be asked from any thread.
class TokenAllPassFilter : public TokenFilter
{
public:
    TokenAllPassFilter() = default;
    ~TokenAllPassFilter() override;
    bool isFilteredOut(TokenInfo const &info) const override;
};

} // namespace Zem
