#include <ZemTokenTools.h>

#include <ZemUnit.h>

#include <algorithm>
#include <iterator>

namespace Zem {

TokenInfo::Type_t TokenTools::getTokenType(Unit const *unit)
{
    if (!unit) {
        return TokenInfo::TYPE_DOUBLE;
    }
    struct
    {
        Unit const *unit;
        TokenInfo::Type_t type;
    } const types[] = {{uLength, TokenInfo::TYPE_LENGTH},
                       {uFigure, TokenInfo::TYPE_LENGTH},
                       {uAngle, TokenInfo::TYPE_ANGLE},
                       {uStrain, TokenInfo::TYPE_STRAIN},
                       {uForce, TokenInfo::TYPE_FORCE},
                       {uStress, TokenInfo::TYPE_STRESS},
                       {uTemperature, TokenInfo::TYPE_TEMPERATURE},
                       {uTime, TokenInfo::TYPE_TIME}};
    auto const *const found =
        std::find_if(std::begin(types), std::end(types), [unit](auto const &entry) { return entry.unit == unit; });
    return found == std::end(types) ? TokenInfo::TYPE_QUANTITY : found->type;
}

} // namespace Zem
