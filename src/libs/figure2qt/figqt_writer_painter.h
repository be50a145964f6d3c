// figqt_writer_painter.h: the painter of a writer's page.
#pragma once

#include "ZemFig2QtPagePainter.h"
#include "figqt_canvas.h"

namespace Zem::Fig2Qt {

class WriterPainter : public PagePainter
{
public:
    explicit WriterPainter(std::unique_ptr<Canvas> canvas) : PagePainter(std::move(canvas)) { setMode(0); }
    /// Cache ids that a drawing left on the stack when it failed are no further error.
    ~WriterPainter() override;

    /// Closes what the drawing left open; no more drawing after it. Throws ProgError for cache ids left on the stack.
    void finish();

private:
    bool dropCacheIds();
};

} // namespace Zem::Fig2Qt
