#include "figqt_embedded_picture.h"

#include "figqt_deflate.h"
#include "figqt_picture_scaler.h"
#include "figqt_png_encoder.h"
#include "figqt_units.h"

#include <QtCore/QCryptographicHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace Zem::Fig2Qt {

namespace {

// Camera pictures are mostly noise, which higher levels search for nothing.
constexpr int COMPRESSION_LEVEL = 3;
constexpr std::size_t FILTERS = 4; // as they are, difference to the left, to above, to the mean of both
constexpr double FAR_AWAY = 1e5;
constexpr double SMALL_SHARE = 0.5;

int pixelsFor(double part, double millimetres, double dpi)
{
    return std::max(1, static_cast<int>(std::min(std::ceil(part), std::ceil(part * millimetres * dpi / MM_PER_INCH))));
}

bool isOnPage(QRectF const &box)
{
    return box.left() >= -FAR_AWAY && box.right() <= FAR_AWAY && box.top() >= -FAR_AWAY && box.bottom() <= FAR_AWAY;
}

QRectF partFor(PlacedPicture const &placed)
{
    QRectF const all = placed.picture.getRect();
    QRectF const whole = QRectF(placed.part.toAlignedRect()) & all;
    bool const small = whole.width() * whole.height() < SMALL_SHARE * all.width() * all.height();
    QRectF const part = small ? whole : all;
    return isOnPage(placed.toPage.mapRect(part)) ? part : placed.part;
}

/// A row by each filter, the number of the filter in front.
class FilteredRow
{
public:
    FilteredRow(std::size_t rowBytes, std::size_t pixelBytes) : pixelBytes_(pixelBytes), before_(rowBytes + pixelBytes)
    {
        for (std::size_t i = 0; i < FILTERS; ++i) {
            rows_[i].resize(rowBytes + 1);
            rows_[i][0] = static_cast<unsigned char>(i);
        }
    }

    std::vector<unsigned char> const &filter(unsigned char const *row)
    {
        std::size_t const count = rows_[0].size() - 1;
        unsigned char const *above = before_.data() + pixelBytes_;
        std::copy(row, row + count, rows_[0].begin() + 1);
        for (std::size_t i = 0; i < std::min(pixelBytes_, count); ++i)
            filterByte(i, row[i], 0, above[i]);
        for (std::size_t i = pixelBytes_; i < count; ++i)
            rows_[1][i + 1] = static_cast<unsigned char>(row[i] - row[i - pixelBytes_]);
        for (std::size_t i = pixelBytes_; i < count; ++i)
            rows_[2][i + 1] = static_cast<unsigned char>(row[i] - above[i]);
        for (std::size_t i = pixelBytes_; i < count; ++i)
            rows_[3][i + 1] = static_cast<unsigned char>(row[i] - (row[i - pixelBytes_] + above[i]) / 2);
        std::copy(row, row + count, before_.begin() + static_cast<std::ptrdiff_t>(pixelBytes_));
        return *std::min_element(rows_.begin(), rows_.end(),
                                 [](auto const &a, auto const &b) { return sizeOf(a) < sizeOf(b); });
    }

private:
    void filterByte(std::size_t i, int value, int left, int above)
    {
        rows_[1][i + 1] = static_cast<unsigned char>(value - left);
        rows_[2][i + 1] = static_cast<unsigned char>(value - above);
        rows_[3][i + 1] = static_cast<unsigned char>(value - (left + above) / 2);
    }

    /// How far the bytes are from 0, up or down: few of them pack well.
    static std::uint64_t sizeOf(std::vector<unsigned char> const &row)
    {
        std::uint64_t sum = 0;
        for (std::size_t i = 1; i < row.size(); ++i)
            sum += static_cast<std::uint64_t>(std::min<unsigned>(row[i], 256U - row[i]));
        return sum;
    }

    std::size_t pixelBytes_;
    std::vector<unsigned char> before_;
    std::array<std::vector<unsigned char>, FILTERS> rows_;
};

std::string words(std::initializer_list<std::uint32_t> values)
{
    std::string bytes;
    for (std::uint32_t const value : values) {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<char>(value >> shift & 0xffU));
    }
    return bytes;
}

} // namespace

Excerpt excerptOf(PlacedPicture const &placed, double dpi)
{
    QTransform const &toPage = placed.toPage;
    QRectF const part = partFor(placed);
    return {part, pixelsFor(part.width(), std::hypot(toPage.m11(), toPage.m12()), dpi),
            pixelsFor(part.height(), std::hypot(toPage.m21(), toPage.m22()), dpi)};
}

Picture cutOut(Picture const &picture, Excerpt const &excerpt)
{
    if (excerpt.part == picture.getRect() && excerpt.width == picture.width && excerpt.height == picture.height)
        return picture;
    return scaled(picture, excerpt.part, excerpt.width, excerpt.height);
}

std::string packRows(unsigned char const *bytes, std::size_t rowBytes, std::size_t rows, std::size_t pixelBytes)
{
    FilteredRow filtered(rowBytes, pixelBytes);
    std::string all;
    all.reserve((rowBytes + 1) * rows);
    for (std::size_t y = 0; y < rows; ++y) {
        std::vector<unsigned char> const &row = filtered.filter(bytes + y * rowBytes);
        all.append(reinterpret_cast<char const *>(row.data()), row.size());
    }
    return deflated(all, COMPRESSION_LEVEL);
}

ColorPlanes planesOf(Picture const &picture)
{
    ColorPlanes planes;
    std::size_t const count = picture.getBytes() / 4;
    planes.colors.resize(count * 3);
    for (std::size_t i = 0; i < count; ++i)
        std::copy_n(picture.pixels + 4 * i, 3, planes.colors.begin() + static_cast<std::ptrdiff_t>(3 * i));
    if (picture.format != Picture::ALPHA)
        return planes;
    planes.alpha.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        planes.alpha[i] = picture.pixels[4 * i + 3];
    if (std::all_of(planes.alpha.begin(), planes.alpha.end(), [](unsigned char alpha) { return alpha == 255; }))
        planes.alpha.clear();
    return planes;
}

std::string pngOf(Picture const &picture)
{
    constexpr char GREY = 0;
    constexpr char RGB = 2;
    constexpr char RGB_ALPHA = 6;
    auto const width = static_cast<std::size_t>(picture.width);
    auto const height = static_cast<std::size_t>(picture.height);
    std::string header = words({static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)});
    std::string rows;
    if (picture.format == Picture::COLOR) {
        header += {8, RGB, 0, 0, 0};
        rows = packRows(planesOf(picture).colors.data(), 3 * width, height, 3);
    } else {
        header += {8, picture.format == Picture::GREY ? GREY : RGB_ALPHA, 0, 0, 0};
        rows = packRows(picture.pixels, picture.getPixelBytes() * width, height, picture.getPixelBytes());
    }
    return pngSignature() + pngChunk("IHDR", header) + pngChunk("IDAT", rows) + pngChunk("IEND", {});
}

QByteArray fingerprintOf(Picture const &picture)
{
    QCryptographicHash hash(QCryptographicHash::Blake2b_256);
    std::string const head =
        words({static_cast<std::uint32_t>(picture.format), static_cast<std::uint32_t>(picture.width),
               static_cast<std::uint32_t>(picture.height)});
    hash.addData(QByteArrayView(head.data(), static_cast<qsizetype>(head.size())));
    hash.addData(QByteArrayView(picture.pixels, static_cast<qsizetype>(picture.getBytes())));
    return hash.result();
}

} // namespace Zem::Fig2Qt
