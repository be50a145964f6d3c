// ZemTokenTools.h: small services around tokens.
#pragma once

#include <ZemTokenInfo.h>

#include <limits>

namespace Zem {

namespace TokenValue {

/// Stands for the absence of a number.
inline constexpr double NO_VALUE = std::numeric_limits<double>::max();

} // namespace TokenValue

/// Tells the types of tokens. All operations may be called from any thread.
class TokenTools
{
public:
    TokenTools() = delete;

    /// The type of a token whose number has this unit: TYPE_DOUBLE for null, TYPE_QUANTITY for one without its own
    /// type.
    static TokenInfo::Type_t getTokenType(Unit const *unit);
};

} // namespace Zem
