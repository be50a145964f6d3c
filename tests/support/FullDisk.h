// FullDisk.h: a medium that takes no more.
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace Zem::Support {

/// Makes the system refuse to write files beyond a size, as a full disk does, while it lives.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit const limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(FullDisk const &) = delete;
    FullDisk &operator=(FullDisk const &) = delete;

private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

} // namespace Zem::Support
