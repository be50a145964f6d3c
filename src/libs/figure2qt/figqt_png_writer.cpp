#include "ZemFig2QtPngWriter.h"

#include "figqt_image_canvas.h"
#include "figqt_page_check.h"
#include "figqt_page_image.h"
#include "figqt_png_encoder.h"
#include "figqt_units.h"
#include "figqt_writer_painter.h"

#include <ZemTranslate.h>

#include <QtGui/QImage>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr double MOST_PIXELS_PER_SIDE = 30'000.0;
constexpr double MOST_PIXELS = 300e6;

QString text(char const *message)
{
    return translate("Figure2Qt_err", message);
}

} // namespace

struct PngWriter::Picture
{
    Picture(QString const &fileName, double resolution) : file(fileName), dpi(resolution) {}

    int pixels(double millimetres) const
    {
        return std::max(1, static_cast<int>(std::lround(millimetres * dpi / MM_PER_INCH)));
    }
    void requirePixels(BaVec2d<double> const &size) const;

    OutputFile file;
    double dpi;
    QImage image;
    std::unique_ptr<WriterPainter> painter; // gone before the image
};

void PngWriter::Picture::requirePixels(BaVec2d<double> const &size) const
{
    double const width = size.x * dpi / MM_PER_INCH;
    double const height = size.y * dpi / MM_PER_INCH;
    if (width > 0.0 && height > 0.0 && width <= MOST_PIXELS_PER_SIDE && height <= MOST_PIXELS_PER_SIDE &&
        width * height <= MOST_PIXELS)
        return;
    throw OutputError(text("%1: a picture of %2 x %3 mm at %4 dpi has %5 x %6 pixels, too many; the most are %7 to a "
                           "side and %8 million in all")
                          .arg(file.getName())
                          .arg(size.x)
                          .arg(size.y)
                          .arg(dpi)
                          .arg(width, 0, 'g', 6)
                          .arg(height, 0, 'g', 6)
                          .arg(MOST_PIXELS_PER_SIDE)
                          .arg(MOST_PIXELS / 1e6));
}

PngWriter::PngWriter(QString const &fileName, PageOptions const &options)
{
    requireResolution(options.dpi, fileName);
    picture_ = std::make_unique<Picture>(fileName, options.dpi);
}

PngWriter::~PngWriter() = default;

Fig2::Painter &PngWriter::beginPage(BaVec2d<double> const &size)
{
    requireOpen(picture_ != nullptr, "Zem::Fig2Qt::PngWriter::beginPage", "figqt_png_writer", __LINE__);
    requireFirstPage(!picture_->painter, picture_->file.getName());
    picture_->requirePixels(size);
    picture_->image = createPageImage(picture_->pixels(size.x), picture_->pixels(size.y));
    if (picture_->image.isNull())
        throw OutputError(text("%1: not enough memory for the picture").arg(picture_->file.getName()));
    picture_->painter =
        std::make_unique<WriterPainter>(std::make_unique<ImageCanvas>(&picture_->image, picture_->dpi / MM_PER_INCH));
    return *picture_->painter;
}

void PngWriter::close()
{
    if (!picture_)
        return;
    // Whatever fails below, this writer is done, and the temporary file goes with the picture.
    std::unique_ptr<Picture> const picture = std::move(picture_);
    requirePages(picture->painter ? 1 : 0, picture->file.getName());
    picture->painter->finish();
    picture->painter.reset();
    encodePng(picture->image, picture->dpi, 0, [&](std::string_view bytes) { picture->file.write(bytes); });
    picture->file.commit();
}

} // namespace Zem::Fig2Qt
