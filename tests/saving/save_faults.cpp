// A library to be preloaded: it counts the steps in which a program changes files of one folder, and stops the program
// at one of them, or lets steps fail as the system would.
//
// SAVE_FAULTS_FOLDER   the folder, without a slash at its end
// SAVE_FAULTS          MODE:STEP:ERROR, the first step being 1
//                      before, after  the program is killed before or after the step
//                      once, ever     that step, or that one and all later ones, fail with the number ERROR
//                      short          from that step on a write takes one byte less than half of what it is given
//                      none           nothing happens
// SAVE_FAULTS_LOG      a file outside the folder, to which the name of each step is appended
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

enum class Mode { None, Before, After, Once, Ever, Short };

struct Plan
{
    Mode mode = Mode::None;
    long step = 0;
    int error = EIO;
    std::string_view folder;
    char const *log = nullptr;
};

Mode modeOf(std::string_view text)
{
    constexpr std::string_view NAMES[] = {"none", "before", "after", "once", "ever", "short"};
    for (int i = 0; i < 6; ++i) {
        if (text.substr(0, text.find(':')) == NAMES[i])
            return static_cast<Mode>(i);
    }
    return Mode::None;
}

Plan const &plan()
{
    static Plan const made = [] {
        Plan read;
        char const *const folder = std::getenv("SAVE_FAULTS_FOLDER");
        char const *const faults = std::getenv("SAVE_FAULTS");
        read.log = std::getenv("SAVE_FAULTS_LOG");
        if (!folder || !faults)
            return read;
        read.folder = folder;
        read.mode = modeOf(faults);
        char const *const colon = std::strchr(faults, ':');
        if (colon)
            std::sscanf(colon, ":%ld:%d", &read.step, &read.error);
        return read;
    }();
    return made;
}

bool isWatched(std::string_view path)
{
    std::string_view const folder = plan().folder;
    return !folder.empty() && path.substr(0, folder.size()) == folder &&
           (path.size() == folder.size() || path[folder.size()] == '/');
}

bool isWatched(int file)
{
    if (plan().folder.empty())
        return false;
    char link[64];
    char path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    long const size = ::syscall(SYS_readlinkat, AT_FDCWD, link, path, sizeof path);
    return size > 0 && isWatched(std::string_view(path, static_cast<std::size_t>(size)));
}

/// The programs that are tested name files of the folder by absolute paths.
bool isWatchedPath(char const *path)
{
    return isWatched(std::string_view(path));
}

void note(char const *name)
{
    if (!plan().log)
        return;
    long const file = ::syscall(SYS_openat, AT_FDCWD, plan().log, O_WRONLY | O_APPEND | O_CREAT, 0600);
    ::syscall(SYS_write, file, name, std::strlen(name));
    ::syscall(SYS_write, file, "\n", 1);
    ::syscall(SYS_close, file);
}

/// One step: from the plan follows whether it runs, and what comes after it.
class Step
{
public:
    Step(bool watched, char const *name) : watched_(watched)
    {
        static long count = 0;
        if (!watched_)
            return;
        number_ = ++count;
        note(name);
        if (plan().mode == Mode::Before && number_ == plan().step)
            ::syscall(SYS_kill, ::getpid(), SIGKILL);
    }
    ~Step()
    {
        if (watched_ && plan().mode == Mode::After && number_ == plan().step)
            ::syscall(SYS_kill, ::getpid(), SIGKILL);
    }
    Step(Step const &) = delete;
    Step &operator=(Step const &) = delete;

    bool fails() const
    {
        bool const failing = watched_ && ((plan().mode == Mode::Once && number_ == plan().step) ||
                                          (plan().mode == Mode::Ever && number_ >= plan().step));
        if (failing)
            errno = plan().error;
        return failing;
    }
    std::size_t sizeOf(std::size_t size) const
    {
        bool const cut = watched_ && plan().mode == Mode::Short && number_ >= plan().step && size > 3;
        return cut ? size / 2 - 1 : size;
    }

private:
    bool watched_;
    long number_ = 0;
};

int openStep(char const *path, int flags, mode_t mode)
{
    Step const step((flags & O_CREAT) != 0 && isWatchedPath(path), "create");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

} // namespace

// What follows takes the place of the system's functions.
extern "C" {

int open(char const *path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    int const result = openStep(path, flags, va_arg(more, mode_t));
    va_end(more);
    return result;
}

int open64(char const *path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    int const result = openStep(path, flags | O_LARGEFILE, va_arg(more, mode_t));
    va_end(more);
    return result;
}

ssize_t write(int file, void const *bytes, size_t size)
{
    Step const step(isWatched(file), "write");
    return step.fails() ? -1 : ::syscall(SYS_write, file, bytes, step.sizeOf(size));
}

ssize_t pwrite64(int file, void const *bytes, size_t size, off_t place)
{
    Step const step(isWatched(file), "write");
    return step.fails() ? -1 : ::syscall(SYS_pwrite64, file, bytes, step.sizeOf(size), place);
}

ssize_t pwrite(int file, void const *bytes, size_t size, off_t place)
{
    return pwrite64(file, bytes, size, place);
}

int ftruncate64(int file, off_t size)
{
    Step const step(isWatched(file), "truncate");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_ftruncate, file, size));
}

int ftruncate(int file, off_t size)
{
    return ftruncate64(file, size);
}

int fsync(int file)
{
    Step const step(isWatched(file), "sync");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_fsync, file));
}

int fdatasync(int file)
{
    Step const step(isWatched(file), "sync");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_fdatasync, file));
}

int fchmod(int file, mode_t mode)
{
    Step const step(isWatched(file), "mode");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_fchmod, file, mode));
}

/// A file is closed even when that fails.
int close(int file)
{
    Step const step(isWatched(file), "close");
    int const result = static_cast<int>(::syscall(SYS_close, file));
    return step.fails() ? -1 : result;
}

int rename(char const *from, char const *to)
{
    Step const step(isWatchedPath(to), "rename");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

int unlink(char const *path)
{
    Step const step(isWatchedPath(path), "remove");
    return step.fails() ? -1 : static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

} // extern "C"
