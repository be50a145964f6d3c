// ZemTokenFilter.h: chooses which tokens are taken over from a source.
#pragma once

#include <ZemTokenInfo.h>

namespace Zem {

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

/// Skips nothing.
class TokenAllPassFilter : public TokenFilter
{
public:
    TokenAllPassFilter() = default;
    ~TokenAllPassFilter() override;
    bool isFilteredOut(TokenInfo const &info) const override;
};

} // namespace Zem
