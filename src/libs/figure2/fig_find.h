// fig_find.h: looking for a pointer in a long list.
// Layer: values. Internal to the library.
#pragma once

#include <cstddef>
#include <type_traits>
#include <vector>

namespace Zem::Fig2 {

/// The place of `wanted`, the end when it is not there. Looks from both ends at once: who empties a list one by one
/// begins with the first or with the last, and finds it at once.
template <class T>
typename std::vector<T *>::const_iterator findFromEnds(std::vector<T *> const &list,
                                                       std::type_identity_t<T> const *wanted)
{
    for (std::size_t front = 0, back = list.size(); front < back; ++front, --back) {
        if (list[front] == wanted)
            return list.begin() + static_cast<std::ptrdiff_t>(front);
        if (list[back - 1] == wanted)
            return list.begin() + static_cast<std::ptrdiff_t>(back - 1);
    }
    return list.end();
}

} // namespace Zem::Fig2
