// fig_token_name.h: under which name the data of a token are kept.
// Layer: tokens. Internal to the library.
#pragma once

#include "ZemFig2ChartInterface.h"

#include <ZemTokenInterface.h>

namespace Zem::Fig2 {

/// The bare name of a token text; false when it is no token. What ChartInterface composes is a name as a whole,
/// whatever characters the names within it have.
inline bool parseTokenName(QString const &text, QString *name)
{
    if (!ChartInterface::isGenericChartToken(text))
        return TokenInterface::parseToken(text, name, nullptr);
    if (name)
        *name = text;
    return true;
}

} // namespace Zem::Fig2
