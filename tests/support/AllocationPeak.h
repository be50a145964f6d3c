// AllocationPeak.h: how much memory a piece of code holds at its peak.
#pragma once

#include <cstddef>

namespace Zem::Support {

/// Counts what the process allocates, by malloc and operator new alike and on all threads, as long as it lives. One at
/// a time; AllocationPeak.cpp must be among the sources of the test program itself, where it takes the place of malloc.
class AllocationPeak
{
public:
    AllocationPeak();
    ~AllocationPeak();
    AllocationPeak(AllocationPeak const &) = delete;
    AllocationPeak &operator=(AllocationPeak const &) = delete;

    /// The most bytes that were held at once, beyond those that were held at construction.
    std::size_t bytes() const;
};

} // namespace Zem::Support
