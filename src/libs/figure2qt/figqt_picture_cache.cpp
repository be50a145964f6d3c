#include "figqt_picture_cache.h"

#include <ZemImage.h>

#include <algorithm>
#include <cstring>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MOST_BYTES = std::size_t{128} << 20U;
constexpr std::size_t SAMPLES_TO_A_SIDE = 64;

/// Of pixels spread over all of the picture.
std::uint64_t samplesOf(Zem::Image const &image)
{
    std::size_t const pixelBytes = image.getBpp() / 8;
    std::size_t const rows = std::min<std::size_t>(image.getHeight(), SAMPLES_TO_A_SIDE);
    std::size_t const columns = std::min<std::size_t>(image.getWidth(), SAMPLES_TO_A_SIDE);
    std::uint64_t hash = 14695981039346656037U;
    for (std::size_t i = 0; i < rows; ++i) {
        unsigned char const *row = image.getRowBytes(static_cast<unsigned int>(i * image.getHeight() / rows));
        for (std::size_t j = 0; j < columns; ++j) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + j * image.getWidth() / columns * pixelBytes, pixelBytes);
            hash = (hash ^ pixel) * 1099511628211U;
            hash ^= hash >> 29U;
        }
    }
    return hash;
}

} // namespace

QString pictureId(QString const &cacheId, Zem::Image const &image, Fig2::ImageConversion const &conversion)
{
    if (cacheId.isEmpty())
        return {};
    QString id = cacheId;
    for (qint64 const part : {qint64{image.getType()}, qint64{image.hasAlphaChannel()}, qint64{image.getWidth()},
                              qint64{image.getHeight()}, qint64{conversion.getType()}, qint64{conversion.getMin()},
                              qint64{conversion.getMax()}, static_cast<qint64>(samplesOf(image))}) {
        id += QLatin1Char('/');
        id += QString::number(part);
    }
    return id;
}

PictureCache &PictureCache::common()
{
    static PictureCache cache(MOST_BYTES);
    return cache;
}

Picture PictureCache::convert(QString const &id, Zem::Image const &image, Fig2::ImageConversion const &conversion)
{
    if (id.isEmpty())
        return convertPicture(image, conversion);
    {
        std::scoped_lock const lock(mutex_);
        if (Picture const *picture = cache_.find(id))
            return *picture;
    }
    // Not under the lock: two threads may do the same work, but neither waits for the other's.
    Picture picture = convertPicture(image, conversion);
    if (picture.owned && picture.getBytes() <= mostBytes_) {
        std::scoped_lock const lock(mutex_);
        cache_.insert(id, picture, picture.getBytes());
    }
    return picture;
}

} // namespace Zem::Fig2Qt
