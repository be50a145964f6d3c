#include <ZemOS.h>

#include <QtCore/QDir>

#include <algorithm>
#include <cstddef>
#include <malloc.h>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace Zem {

namespace {

/// The kernel refuses a mapping of no bytes.
std::size_t mappedSize(unsigned int size)
{
    return std::max<std::size_t>(size, 1);
}

} // namespace

QString OS::convertSeparators(QString const &fileName)
{
    return QDir::toNativeSeparators(fileName);
}

unsigned int OS::getpagesize()
{
    return static_cast<unsigned int>(::sysconf(_SC_PAGESIZE));
}

void *OS::allocVirtualMemory(unsigned int size)
{
    void *memory = ::mmap(nullptr, mappedSize(size), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return memory;
}

void *OS::reallocVirtualMemory(void *memory, unsigned int oldSize, unsigned int newSize)
{
    if (!memory) {
        return allocVirtualMemory(newSize);
    }
    void *moved = ::mremap(memory, mappedSize(oldSize), mappedSize(newSize), MREMAP_MAYMOVE);
    if (moved == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return moved;
}

void OS::freeVirtualMemory(void *memory, unsigned int size)
{
    if (memory) {
        ::munmap(memory, mappedSize(size));
    }
}

void NewHandler::freeMemory()
{
    ::malloc_trim(0);
}

} // namespace Zem
