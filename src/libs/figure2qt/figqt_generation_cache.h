// figqt_generation_cache.h: a cache that forgets what has not been asked for lately.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <utility>

namespace Zem::Fig2Qt {

/// Two generations: what is found moves to the young one; when that has reached its weight, it becomes the old one and
/// the old one is forgotten. Bounded by twice the weight, without a list to keep in order. Not for several threads.
template <class Key, class Value, class Hash>
class GenerationCache
{
public:
    explicit GenerationCache(std::size_t weightLimit) : weightLimit_(weightLimit) {}

    /// Null when unknown. Valid until the next call.
    Value const *find(Key const &key)
    {
        if (auto it = young_.find(key); it != young_.end())
            return &it->second.value;
        auto node = old_.extract(key);
        return node.empty() ? nullptr : &insert(std::move(node.key()), std::move(node.mapped()));
    }

    /// Replaces what is there. `weight` counts against the limit.
    Value const &insert(Key key, Value value, std::size_t weight)
    {
        return insert(std::move(key), Entry{std::move(value), weight});
    }

    void clear()
    {
        young_.clear();
        old_.clear();
        weight_ = 0;
    }

    std::size_t size() const { return young_.size() + old_.size(); }

private:
    struct Entry
    {
        Value value;
        std::size_t weight;
    };
    using Generation = std::unordered_map<Key, Entry, Hash>;

    Value const &insert(Key key, Entry entry)
    {
        if (weight_ + entry.weight > weightLimit_) {
            old_ = std::exchange(young_, {});
            weight_ = 0;
        }
        weight_ += entry.weight;
        return young_.insert_or_assign(std::move(key), std::move(entry)).first->second.value;
    }

    std::size_t const weightLimit_;
    std::size_t weight_ = 0;
    Generation young_;
    Generation old_;
};

} // namespace Zem::Fig2Qt
