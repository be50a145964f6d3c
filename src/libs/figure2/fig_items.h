// fig_items.h: lists of values within a stream block.
// Layer: streams. Internal to the library.
#pragma once

#include <vector>

namespace Zem::Fig2 {

/// The values of a list whose count stands elsewhere in the block. Reading grows the list value by value: a count that
/// the block does not hold costs no memory.
template <class Archive, class List>
void blockItems(Archive &archive, List &list, unsigned int count)
{
    if constexpr (Archive::isReader) {
        list.clear();
        for (unsigned int i = 0; i < count; ++i) {
            typename List::value_type value{};
            archive.field(value);
            list.push_back(value);
        }
    } else {
        for (auto const &value : list)
            archive.field(value);
    }
}

/// The count and the values of a list.
template <class Archive, class List>
void blockList(Archive &archive, List &list)
{
    auto count = static_cast<unsigned int>(list.size());
    archive.field(count);
    blockItems(archive, list, count);
}

} // namespace Zem::Fig2
