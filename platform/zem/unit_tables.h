// unit_tables.h: the fixed list of quantities, inside this library.
#pragma once

#include <ZemUnit.h>

#include <span>

namespace Zem {

/// In the order in which a unit's name is looked up.
std::span<Unit const *const> allQuantities() noexcept;

} // namespace Zem
