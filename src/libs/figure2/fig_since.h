// fig_since.h: Since, the version of a form that brought one of its fields.
// Layer: streams. Internal to the library.
#pragma once

namespace Zem::Fig2 {

/// Forms of an older version do not hold the field.
struct Since
{
    unsigned int version;
};

} // namespace Zem::Fig2
