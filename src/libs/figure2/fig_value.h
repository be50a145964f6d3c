// fig_value.h: whether a token had a value.
// Layer: tokens. Internal to the library.
#pragma once

#include <ZemValue.h>

namespace Zem::Fig2 {

/// False for the answers of a token that does not exist, or not at this index or stage.
inline bool hasValue(Value const &value)
{
    return value != Value::UNKNOWN && value != Value::INVALID;
}

} // namespace Zem::Fig2
