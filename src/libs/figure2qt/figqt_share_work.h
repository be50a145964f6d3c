// figqt_share_work.h: one piece of work on several threads.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

namespace Zem::Fig2Qt {

/// Calls `work()` once on each of up to `most` threads, this one included, with as many as the machine has. Each call
/// takes pieces until there are none; it must not throw. Where no further thread can be had, fewer do.
template <class Work>
void shareWork(std::size_t most, Work const &work)
{
    std::size_t const threads = std::min<std::size_t>(most, std::max(1U, std::thread::hardware_concurrency()));
    std::vector<std::thread> helpers;
    try {
        for (std::size_t i = 1; i < threads; ++i)
            helpers.emplace_back(work);
    } catch (std::exception const &) {
        // Fewer will do.
    }
    work();
    for (std::thread &helper : helpers)
        helper.join();
}

/// Pieces to be taken by several threads, each once.
class Pieces
{
public:
    explicit Pieces(std::size_t count) : count_(count) {}

    /// The next piece, or false when there is none.
    bool take(std::size_t *piece)
    {
        *piece = next_.fetch_add(1, std::memory_order_relaxed);
        return *piece < count_;
    }

private:
    std::size_t const count_;
    std::atomic<std::size_t> next_{0};
};

} // namespace Zem::Fig2Qt
