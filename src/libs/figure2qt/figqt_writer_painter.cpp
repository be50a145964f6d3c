#include "figqt_writer_painter.h"

#include <ZemError.h>

namespace Zem::Fig2Qt {

WriterPainter::~WriterPainter()
{
    dropCacheIds();
}

bool WriterPainter::dropCacheIds()
{
    bool const any = !getStackedCacheId().isEmpty();
    while (!getStackedCacheId().isEmpty())
        popCacheId();
    return any;
}

void WriterPainter::finish()
{
    endClippings();
    if (dropCacheIds())
        throw ProgError("Zem::Fig2Qt::WriterPainter::finish", "figqt_writer_painter", __LINE__,
                        "Cache ID stack is not empty");
}

} // namespace Zem::Fig2Qt
