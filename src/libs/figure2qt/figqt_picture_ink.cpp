#include "figqt_picture_ink.h"

#include "figqt_picture_scaler.h"

#include <array>
#include <cstdint>

namespace Zem::Fig2Qt {

namespace {

constexpr std::uint32_t OPAQUE = 0xff000000U;

std::uint32_t roundedOf(float value)
{
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(value + 0.5F));
}

void storeGreys(float const *row, std::size_t count, std::uint32_t *to)
{
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t const grey = roundedOf(row[i]);
        to[i] = OPAQUE | grey << 16U | grey << 8U | grey;
    }
}

void storeColors(float const *row, std::size_t count, std::uint32_t *to)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = OPAQUE | roundedOf(row[4 * i]) << 16U | roundedOf(row[4 * i + 1]) << 8U | roundedOf(row[4 * i + 2]);
}

/// Red, green, blue, multiplied by alpha, and alpha.
std::array<float, 4> channelsAt(float const *row, std::size_t at, Picture::Format format)
{
    if (format == Picture::GREY)
        return {row[at], row[at], row[at], 255.0F};
    float const *pixel = row + 4 * at;
    return {pixel[0], pixel[1], pixel[2], format == Picture::ALPHA ? pixel[3] : 255.0F};
}

void blend(std::array<float, 4> const &above, float share, std::uint32_t *pixel)
{
    float const below = 1.0F - share * above[3] / 255.0F;
    std::uint32_t result = OPAQUE;
    for (std::size_t c = 0; c < 3; ++c) {
        std::uint32_t const shift = 16U - 8U * static_cast<std::uint32_t>(c);
        auto const before = static_cast<float>(*pixel >> shift & 0xffU);
        result |= roundedOf(share * above[c] + below * before) << shift;
    }
    *pixel = result;
}

class PictureRows
{
public:
    PictureRows(PictureScaler *scaler, Picture::Format format, ClipArea const &clip, QImage *page)
        : scaler_(scaler), format_(format), clip_(clip), pixels_(reinterpret_cast<std::uint32_t *>(page->bits())),
          stride_(page->bytesPerLine() / 4), count_(static_cast<std::size_t>(scaler->getWidth()))
    {
    }

    void lay(int y)
    {
        float const *row = scaler_->takeRow(y);
        std::uint32_t *to = pixels_ + y * stride_ + scaler_->getLeft();
        if (format_ == Picture::ALPHA || !clip_.isRectangle() || scaler_->getRowCovered(y) < 1.0F)
            return blendRow(row, y, 0, count_, to);
        std::uint32_t const first = to[0];
        std::uint32_t const last = to[count_ - 1];
        if (format_ == Picture::GREY)
            storeGreys(row, count_, to);
        else
            storeColors(row, count_, to);
        // Columns at the border of the part are covered in part, too.
        to[0] = first;
        to[count_ - 1] = last;
        blendRow(row, y, 0, 1, to);
        if (count_ > 1)
            blendRow(row, y, count_ - 1, count_, to);
    }

private:
    void blendRow(float const *row, int y, std::size_t first, std::size_t end, std::uint32_t *to) const
    {
        float const rowShare = scaler_->getRowCovered(y);
        for (std::size_t i = first; i < end; ++i) {
            int const x = scaler_->getLeft() + static_cast<int>(i);
            float share = rowShare * scaler_->getColumnCovered(x);
            if (!clip_.isRectangle())
                share *= static_cast<float>(clip_.openAt(x, y)) / 255.0F;
            blend(channelsAt(row, i, format_), share, to + i);
        }
    }

    PictureScaler *scaler_;
    Picture::Format format_;
    ClipArea const &clip_;
    std::uint32_t *pixels_;
    qsizetype stride_;
    std::size_t count_;
};

} // namespace

void layPicture(Picture const &picture, QRectF const &part, QTransform const &toPixels, ClipArea const &clip,
                QImage *page)
{
    QRect const open = clip.getRect();
    if (open.isEmpty())
        return;
    QRectF const shown = toPixels.mapRect(part);
    PictureAxis const columns({picture.width, toPixels.m11(), toPixels.dx(), shown.left(), shown.right()}, open.left(),
                              open.right() + 1);
    PictureAxis const rows({picture.height, toPixels.m22(), toPixels.dy(), shown.top(), shown.bottom()}, open.top(),
                           open.bottom() + 1);
    if (columns.getFirst() == columns.getEnd() || rows.getFirst() == rows.getEnd())
        return;
    PictureScaler scaler(picture, columns, rows);
    PictureRows to(&scaler, picture.format, clip, page);
    for (int y = rows.getFirst(); y < rows.getEnd(); ++y)
        to.lay(y);
}

} // namespace Zem::Fig2Qt
