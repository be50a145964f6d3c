// ZemFig2QtPdfWriter.h: PdfWriter, pages in a PDF file.
// Layer: Qt backend. See PageWriter for threads and errors.
#pragma once

#include "ZemFig2QtPageWriter.h"

namespace Zem::Fig2Qt {

/// Any number of pages of any size up to 5 m. Fonts are embedded, reduced to the characters in use; text can be
/// searched and copied. Characters of fonts other than TrueType are drawn as outlines.
class PdfWriter : public PageWriter
{
public:
    /// Throws OutputError when the file cannot be written, or PageOptions::pictureDpi is not positive and finite.
    explicit PdfWriter(QString const &fileName, PageOptions const &options = {});
    ~PdfWriter() override;

    Fig2::Painter &beginPage(BaVec2d<double> const &size) override;
    void close() override;

private:
    struct Document;
    std::unique_ptr<Document> document_; // null when closed
};

} // namespace Zem::Fig2Qt
