#include <ZemError.h>
#include <ZemMutex.h>

namespace Zem {

void Mutex::lock()
{
    // Only this thread can have stored its own id, so a stale value of another one does no harm.
    if (owner_.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
        throw ProgError("Zem::Mutex::lock", "mutex", __LINE__, "already locked by this thread");
    }
    mutex_.lock();
    owner_.store(std::this_thread::get_id(), std::memory_order_relaxed);
}

void Mutex::unlock(char const *function, char const *file, unsigned int line)
{
    if (owner_.load(std::memory_order_relaxed) != std::this_thread::get_id()) {
        throw ProgError(function, file, line, "unlock of a mutex that this thread has not locked");
    }
    owner_.store(std::thread::id(), std::memory_order_relaxed);
    mutex_.unlock();
}

} // namespace Zem
