// figqt_picture.h: pictures as they are shown, of 8 bits a channel.
#pragma once

#include <ZemFig2ImageConversion.h>

#include <QtCore/QRectF>
#include <QtCore/QString>

#include <cstddef>
#include <memory>
#include <vector>

namespace Zem {
class Image;
class ImageColor;
} // namespace Zem

namespace Zem::Fig2Qt {

/// Pixels row by row from the top left without gaps. A plain value; copies share the pixels.
struct Picture
{
    enum Format {
        GREY,  ///< a byte
        COLOR, ///< red, green, blue and one that means nothing
        ALPHA  ///< red, green, blue and alpha, which is straight
    };

    Format format = GREY;
    int width = 0;
    int height = 0;
    unsigned char const *pixels = nullptr;
    std::shared_ptr<std::vector<unsigned char> const> owned; ///< null when the pixels are somebody else's

    std::size_t getPixelBytes() const { return format == GREY ? 1 : 4; }
    std::size_t getBytes() const { return getPixelBytes() * static_cast<std::size_t>(width) * height; }
    unsigned char const *getRow(int y) const
    {
        return pixels + getPixelBytes() * static_cast<std::size_t>(width) * static_cast<std::size_t>(y);
    }
    QRectF getRect() const { return {0.0, 0.0, static_cast<double>(width), static_cast<double>(height)}; }
};

/// With pixels of its own, which are left in `pixels` to be filled.
Picture makePicture(Picture::Format format, int width, int height, unsigned char **pixels);

/// What the conversion makes of a picture that is not empty; docs/decisions/picture-conversions.md tells it. The pixels
/// may be those of the image itself, and must not outlive it then. Throws std::bad_alloc.
Picture convertPicture(Zem::Image const &image, Fig2::ImageConversion const &conversion);

/// The colours as they are, with their alpha when the image has one. The pixels are those of the image.
Picture asPicture(ImageColor const &image);

/// Tells what is shown of pictures that come under the same cache id from each other: by conversion, kind, size, and
/// some of the pixels, since projects next to each other may use one id for different pictures. Empty for an empty
/// cache id.
QString pictureId(QString const &cacheId, Zem::Image const &image, Fig2::ImageConversion const &conversion);

} // namespace Zem::Fig2Qt
