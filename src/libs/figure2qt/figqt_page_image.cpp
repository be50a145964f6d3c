#include "figqt_page_image.h"

#include <cstdlib>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t LARGE_PAGE = std::size_t{2} << 20U;

/// In large pages of memory, where the system has them: a picture of 35 MB takes 8,500 small ones, and drawing that
/// goes down the picture finds each of its rows on another one.
void *allocate(std::size_t bytes)
{
    void *memory = std::aligned_alloc(LARGE_PAGE, (bytes + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE);
#ifdef __linux__
    if (memory)
        madvise(memory, bytes, MADV_HUGEPAGE); // may be refused, and then changes nothing
#endif
    return memory;
}

} // namespace

QImage createPageImage(int width, int height)
{
    qsizetype const rowBytes = qsizetype{4} * width;
    void *memory = allocate(static_cast<std::size_t>(rowBytes * height));
    if (!memory)
        return {};
    QImage image(static_cast<uchar *>(memory), width, height, rowBytes, QImage::Format_RGB32, std::free, memory);
    if (image.isNull())
        std::free(memory);
    else
        image.fill(Qt::white);
    return image;
}

} // namespace Zem::Fig2Qt
