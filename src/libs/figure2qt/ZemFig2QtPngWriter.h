// ZemFig2QtPngWriter.h: PngWriter, one page as a PNG picture.
// Layer: Qt backend. See PageWriter for threads and errors.
#pragma once

#include "ZemFig2QtPageWriter.h"

namespace Zem::Fig2Qt {

/// A picture of the page on white, at PageOptions::dpi, which the file tells as well. Refuses, before it allocates
/// anything, pictures of more than 30,000 pixels to a side or 300 million pixels. Vectors in great numbers are painted
/// on all cores. close() packs the picture on all cores, and throws std::bad_alloc when there is no memory for that.
class PngWriter : public PageWriter
{
public:
    /// Throws OutputError when the file cannot be written, or the resolution is not positive and finite.
    explicit PngWriter(QString const &fileName, PageOptions const &options = {});
    ~PngWriter() override;

    Fig2::Painter &beginPage(BaVec2d<double> const &size) override;
    void close() override;

private:
    struct Picture;
    std::unique_ptr<Picture> picture_; // null when closed
};

} // namespace Zem::Fig2Qt
