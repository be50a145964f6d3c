// ZemMutex.h: a lock that tells who misuses it.
#pragma once

#include <QtCore/QMutex>

#include <atomic>
#include <thread>

namespace Zem {

/// A lock for one thread at a time, not recursive. Misuse is a ProgError. May be used from any thread.
class Mutex
{
public:
    Mutex() = default;
    Mutex(Mutex const &) = delete;
    Mutex &operator=(Mutex const &) = delete;

    /// Waits for the lock. Throws ProgError when this thread holds it already, instead of waiting for ever.
    void lock();
    /// Gives the lock back. The arguments name the caller: its qualified function, source file and line. Throws
    /// ProgError with them, and changes nothing, when this thread does not hold the lock.
    void unlock(char const *function, char const *file, unsigned int line);

private:
    QMutex mutex_;
    std::atomic<std::thread::id> owner_{};
};

} // namespace Zem
