// ZemFig2QtSvgWriter.h: SvgWriter, one page as an SVG drawing.
// Layer: Qt backend. See PageWriter for threads and errors.
#pragma once

#include "ZemFig2QtPageWriter.h"

namespace Zem::Fig2Qt {

/// The user unit is a millimetre. Text stays text, every word of it at the place and of the length that was measured;
/// its fonts are named, not embedded.
class SvgWriter : public PageWriter
{
public:
    /// Throws OutputError when the file cannot be written, or PageOptions::pictureDpi is not positive and finite.
    explicit SvgWriter(QString const &fileName, PageOptions const &options = {});
    ~SvgWriter() override;

    Fig2::Painter &beginPage(BaVec2d<double> const &size) override;
    void close() override;

private:
    struct Drawing;
    std::unique_ptr<Drawing> drawing_; // null when closed
};

} // namespace Zem::Fig2Qt
