#include "AllocationPeak.h"

#include <atomic>

namespace {

std::atomic<bool> counting{false};
std::atomic<long long> held{0};
std::atomic<long long> peak{0};

void count(long long bytes)
{
    if (!counting.load(std::memory_order_relaxed))
        return;
    long long const now = held.fetch_add(bytes, std::memory_order_relaxed) + bytes;
    long long highest = peak.load(std::memory_order_relaxed);
    while (now > highest && !peak.compare_exchange_weak(highest, now, std::memory_order_relaxed)) {
    }
}

} // namespace

#ifdef __SANITIZE_ADDRESS__

// GCC has these functions in its sanitizer, but not the header that declares them.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*taken)(void const volatile *, std::size_t),
                                              void (*given)(void const volatile *));
std::size_t __sanitizer_get_allocated_size(void const volatile *place);
}

namespace {

void countTaken(void const volatile *, std::size_t size)
{
    count(static_cast<long long>(size));
}

void countGiven(void const volatile *place)
{
    count(-static_cast<long long>(__sanitizer_get_allocated_size(place)));
}

/// The sanitizer's allocator tells of all that is taken and given back.
bool const installed = __sanitizer_install_malloc_and_free_hooks(countTaken, countGiven) != 0;

} // namespace

#else

#include <cerrno>
#include <malloc.h>

// The C library's own functions stand in for those that are replaced here.
extern "C" {
void *__libc_malloc(std::size_t size) noexcept;
void *__libc_calloc(std::size_t number, std::size_t size) noexcept;
void *__libc_realloc(void *place, std::size_t size) noexcept;
void *__libc_memalign(std::size_t alignment, std::size_t size) noexcept;
void __libc_free(void *place) noexcept;
}

namespace {

long long sizeOf(void *place)
{
    return place ? static_cast<long long>(malloc_usable_size(place)) : 0;
}

void *taken(void *place)
{
    count(sizeOf(place));
    return place;
}

} // namespace

extern "C" {

void *malloc(std::size_t size) noexcept
{
    return taken(__libc_malloc(size));
}

void *calloc(std::size_t number, std::size_t size) noexcept
{
    return taken(__libc_calloc(number, size));
}

void *realloc(void *place, std::size_t size) noexcept
{
    long long const before = sizeOf(place);
    void *const moved = __libc_realloc(place, size);
    // What cannot grow stays; what shrinks to nothing is gone.
    if (moved || size == 0)
        count(sizeOf(moved) - before);
    return moved;
}

void free(void *place) noexcept
{
    count(-sizeOf(place));
    __libc_free(place);
}

void *memalign(std::size_t alignment, std::size_t size) noexcept
{
    return taken(__libc_memalign(alignment, size));
}

void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return taken(__libc_memalign(alignment, size));
}

int posix_memalign(void **place, std::size_t alignment, std::size_t size) noexcept
{
    *place = taken(__libc_memalign(alignment, size));
    return *place ? 0 : ENOMEM;
}

} // extern "C"

#endif

namespace Zem::Support {

AllocationPeak::AllocationPeak()
{
    held = 0;
    peak = 0;
    counting = true;
}

AllocationPeak::~AllocationPeak()
{
    counting = false;
}

std::size_t AllocationPeak::bytes() const
{
    return static_cast<std::size_t>(peak.load());
}

} // namespace Zem::Support
