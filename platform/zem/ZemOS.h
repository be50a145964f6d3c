// ZemOS.h: services of the operating system: file names for people, memory in pages.
#pragma once

#include <QtCore/QString>

namespace Zem {

/// Sizes are bytes. All operations may be called from any thread.
class OS
{
public:
    /// The file name with the separators that the user of this system expects, for messages.
    static QString convertSeparators(QString const &fileName);

    static unsigned int getpagesize();

    /// Memory in whole pages straight from the system, zeroed, at least one page even for a `size` of 0 bytes. The
    /// caller owns it and gives it back by freeVirtualMemory(). Throws std::bad_alloc when there is none.
    static void *allocVirtualMemory(unsigned int size);
    /// Changes the size; the contents up to the smaller size stay, a grown part is zeroed beyond the old last page. The
    /// address may change. A null `memory` is allocated. Throws std::bad_alloc and leaves the memory alone when there
    /// is not enough.
    static void *reallocVirtualMemory(void *memory, unsigned int oldSize, unsigned int newSize);
    /// `size` is what the memory was last allocated with. Null is ignored.
    static void freeVirtualMemory(void *memory, unsigned int size);
};

/// What to do when memory runs short. May be called from any thread.
class NewHandler
{
public:
    /// Hands unused memory of the heap back to the system.
    static void freeMemory();
};

} // namespace Zem
