// fig_owned_map.h: maps from names to things that the map's owner owns.
// Layer: values. Internal to the library.
#pragma once

#include <QtCore/QString>

#include <map>
#include <memory>

namespace Zem::Fig2 {

template <class Thing>
using OwnedMap = std::map<QString, Thing *>;

/// What stands under the name, null for nothing.
template <class Thing>
Thing *findOwned(OwnedMap<Thing> const &things, QString const &name)
{
    auto const found = things.find(name);
    return found == things.end() ? nullptr : found->second;
}

/// Deletes what stood under the name. Null leaves nothing there.
template <class Thing>
void replaceOwned(OwnedMap<Thing> &things, QString const &name, std::unique_ptr<Thing> thing)
{
    if (auto const found = things.find(name); found != things.end()) {
        delete found->second;
        things.erase(found);
    }
    if (!thing)
        return;
    things.emplace(name, thing.get());
    thing.release();
}

template <class Thing>
void clearOwned(OwnedMap<Thing> &things)
{
    for (auto const &[name, thing] : things)
        delete thing;
    things.clear();
}

} // namespace Zem::Fig2
