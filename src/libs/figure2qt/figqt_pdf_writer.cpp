#include "ZemFig2QtPdfWriter.h"

#include "figqt_number.h"
#include "figqt_page_check.h"
#include "figqt_pdf_canvas.h"
#include "figqt_pdf_file.h"
#include "figqt_pdf_font.h"
#include "figqt_pdf_pictures.h"
#include "figqt_units.h"
#include "figqt_writer_painter.h"

#include <cmath>
#include <utility>

namespace Zem::Fig2Qt {

namespace {

// The format's limit of 14,400 points, a little over 5 m.
constexpr double LARGEST_PAGE = 5080.0;

/// Cut off, not rounded: the slightest excess makes programs that show PDF add a column of pixels.
std::string points(double millimetres)
{
    std::string result;
    appendNumber(&result, std::floor(millimetres * 72.0 / MM_PER_INCH * 1e4) / 1e4, 4);
    return result;
}

std::string dateEntry(QDateTime const &date)
{
    return "/CreationDate(D:" + date.toUTC().toString(QStringLiteral("yyyyMMddHHmmss")).toStdString() + "Z)";
}

} // namespace

struct PdfWriter::Document
{
    Document(QString const &fileName, PageOptions const &pageOptions)
        : file(fileName), fonts(&file), pictures(&file, pageOptions.pictureDpi), options(pageOptions),
          catalog(file.reserve()), pageTree(file.reserve())
    {
    }

    void endPage();
    int writeInfo();

    PdfFile file;
    PdfFonts fonts;
    PdfPictures pictures;
    PageOptions options;
    int catalog;
    int pageTree;
    std::string pages; // references
    int pageCount = 0;
    BaVec2d<double> size;
    PdfCanvas *canvas = nullptr; // the painter's
    std::unique_ptr<WriterPainter> painter;
};

PdfWriter::PdfWriter(QString const &fileName, PageOptions const &options)
{
    requireResolution(options.pictureDpi, fileName);
    document_ = std::make_unique<Document>(fileName, options);
}

PdfWriter::~PdfWriter() = default;

void PdfWriter::Document::endPage()
{
    if (!painter)
        return;
    painter->finish();
    int const page = file.reserve();
    int const content = file.reserve();
    file.writeStream(content, "", canvas->getContent());
    file.writeObject(page, "<</Type/Page/Parent " + reference(pageTree) + "/MediaBox[0 0 " + points(size.x) + " " +
                               points(size.y) + "]/Contents " + reference(content) + "/Resources " +
                               canvas->getResources() + ">>");
    pages += reference(page) + " ";
    ++pageCount;
    canvas = nullptr;
    painter.reset();
}

int PdfWriter::Document::writeInfo()
{
    int const info = file.reserve();
    std::string entries = "<</Producer(libZemFigure2)";
    if (!options.title.isEmpty())
        entries += "/Title" + pdfText(options.title);
    if (options.creationDate)
        entries += dateEntry(*options.creationDate);
    file.writeObject(info, entries + ">>");
    return info;
}

Fig2::Painter &PdfWriter::beginPage(BaVec2d<double> const &size)
{
    requireOpen(document_ != nullptr, "Zem::Fig2Qt::PdfWriter::beginPage", "figqt_pdf_writer", __LINE__);
    requirePageSize(size, LARGEST_PAGE, document_->file.getName());
    document_->endPage();
    document_->size = size;
    auto canvas = std::make_unique<PdfCanvas>(&document_->file, &document_->fonts, &document_->pictures, size.y);
    document_->canvas = canvas.get();
    document_->painter = std::make_unique<WriterPainter>(std::move(canvas));
    return *document_->painter;
}

void PdfWriter::close()
{
    if (!document_)
        return;
    // Whatever fails below, this writer is done, and the temporary file goes with the document.
    std::unique_ptr<Document> const document = std::move(document_);
    document->endPage();
    requirePages(document->pageCount, document->file.getName());
    document->fonts.write();
    document->file.writeObject(document->pageTree, "<</Type/Pages/Count " + std::to_string(document->pageCount) +
                                                       "/Kids[" + document->pages + "]>>");
    document->file.writeObject(document->catalog, "<</Type/Catalog/Pages " + reference(document->pageTree) + ">>");
    document->file.finish(document->catalog, document->writeInfo());
}

} // namespace Zem::Fig2Qt
