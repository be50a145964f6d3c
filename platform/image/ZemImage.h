// ZemImage.h: pictures of grey values or colours, packed for storage, and read from and written to files.
// Several threads may read one picture; one may change it. Different pictures are independent of each other.
#pragma once

#include <ZemColor.h>
#include <ZemStructVector.h>

#include <QtCore/QString>

#include <cstddef>
#include <cstdint>

namespace Zem {

class ErrorLog;

/// A picture: rows of pixels from top to bottom, each row from left to right, one behind the other without gaps. Which
/// pixels a picture has, its class says. A picture made by a default constructor is empty, 0 by 0 pixels, and waits
/// for uncompressImage().
class Image
{
public:
    /// The numbers are those of stored pictures.
    enum Type { TYPE_IMAGE8 = 0, TYPE_IMAGE16 = 1, TYPE_IMAGE32 = 2, TYPE_COLOR = 3 };
    enum FileType { FILE_PNG, FILE_JPEG, FILE_TIFF };

    /// No picture has a longer side or more bytes of pixels: a file or packed picture that claims more is refused by its
    /// header.
    static constexpr unsigned int MAX_SIDE = 32768;
    static constexpr std::size_t MAX_BYTES = std::size_t{256} << 20;

    virtual ~Image();

    unsigned int getWidth() const noexcept { return width_; }
    unsigned int getHeight() const noexcept { return height_; }
    virtual Type getType() const noexcept = 0;
    /// Bits per pixel in memory: 8, 16, 32 or 32.
    virtual unsigned int getBpp() const noexcept = 0;
    /// Whether the alpha of the pixels means anything; only colour pictures can have one.
    bool hasAlphaChannel() const noexcept { return alphaChannel_; }

    /// A picture of the same class and size, owned by the caller; without `withPixels` its pixels are those of a new
    /// picture.
    virtual Image *copy(bool withPixels) const = 0;

    /// Replaces the bytes by a packed form without loss, alpha flag included. Throws ProgError for null.
    void compressImage(StructVector<unsigned char> *bytes) const;
    /// Takes size, pixels and alpha flag from what compressImage() made of a picture of the same class. For any other
    /// bytes it returns false, and the picture is as it was.
    bool uncompressImage(StructVector<unsigned char> const &bytes);

    /// Reads a PNG, JPEG or TIFF file, the first picture of a TIFF; what the content says counts, not the name. Grey
    /// values, those of a palette too, become an Image8 (up to 8 bit), Image16 (up to 16 bit) or Image32 (32 bit,
    /// signed or floating-point), grey values with alpha and all colours an ImageColor. The picture is the caller's.
    /// Null when there is no picture to be had: the file and the reason are then in `log` (which may be null). The two
    /// numbers are choices that none of these formats has; -1 means no choice.
    static Image *loadImage(QString const &fileName, ErrorLog *log, int first, int second);
    /// Whether the file begins as one that loadImage() reads, and then its type. Throws ProgError for null.
    static bool getFileType(QString const &fileName, FileType *type);
    /// Writes a PNG (".png") or TIFF (".tif", ".tiff") that loadImage() reads back to the same picture; an Image32 goes
    /// into a TIFF only, an empty picture nowhere. Without an alpha channel the alpha of the pixels is left out. False
    /// when that failed: the file and the reason are then in `log` (which may be null), and an existing file is as it
    /// was.
    bool saveImage(QString const &fileName, ErrorLog *log) const;

    /// The bytes of a row, getWidth() * getBpp() / 8 of them, numbers in the order of the machine. Throw ProgError
    /// below the last row.
    unsigned char const *getRowBytes(unsigned int y) const;
    unsigned char *getRowBytes(unsigned int y);

protected:
    Image() = default;
    /// Throws ProgError for a side of zero and for more than MAX_SIDE or MAX_BYTES.
    Image(unsigned int width, unsigned int height, std::size_t pixelBytes);
    Image(Image const &) = default;
    Image &operator=(Image const &) = default;

    void requireRow(unsigned int y) const;
    void setAlphaChannel(bool alphaChannel) noexcept { alphaChannel_ = alphaChannel; }
    /// Exchanges everything with a picture of the same class.
    virtual void swap(Image &other) noexcept;

private:
    virtual unsigned char const *bytesOfPixels() const noexcept = 0;

    unsigned int width_ = 0;
    unsigned int height_ = 0;
    bool alphaChannel_ = false;
};

/// The pixels of a picture.
template <class PixelType>
class PixelImage : public Image
{
public:
    using Pixel = PixelType;

    unsigned int getBpp() const noexcept override { return 8 * sizeof(Pixel); }

    /// getWidth() pixels, valid as long as the picture keeps its size. Throw ProgError below the last row.
    Pixel const *getRow(unsigned int y) const
    {
        requireRow(y);
        return pixels_.data() + static_cast<std::size_t>(y) * getWidth();
    }
    Pixel *getRow(unsigned int y)
    {
        requireRow(y);
        return pixels_.data() + static_cast<std::size_t>(y) * getWidth();
    }

protected:
    PixelImage() = default;
    PixelImage(unsigned int width, unsigned int height)
        : Image(width, height, sizeof(Pixel)), pixels_(static_cast<std::size_t>(width) * height)
    {
    }

    void swap(Image &other) noexcept override
    {
        Image::swap(other);
        pixels_.swap(static_cast<PixelImage &>(other).pixels_);
    }

private:
    unsigned char const *bytesOfPixels() const noexcept override
    {
        return reinterpret_cast<unsigned char const *>(pixels_.data());
    }

    StructVector<Pixel> pixels_;
};

/// Grey values from 0, black, to 255, white.
class Image8 : public PixelImage<std::uint8_t>
{
public:
    Image8() = default;
    /// Black. Throws ProgError for a side of zero and for more than MAX_SIDE or MAX_BYTES.
    Image8(unsigned int width, unsigned int height) : PixelImage(width, height) {}

    Type getType() const noexcept override { return TYPE_IMAGE8; }
    Image8 *copy(bool withPixels) const override;
};

/// Grey values from 0, black, to 65535. Cameras of 10 or 12 bit use the lower part of that range.
class Image16 : public PixelImage<std::uint16_t>
{
public:
    Image16() = default;
    /// Black. Throws ProgError for a side of zero and for more than MAX_SIDE or MAX_BYTES.
    Image16(unsigned int width, unsigned int height) : PixelImage(width, height) {}

    Type getType() const noexcept override { return TYPE_IMAGE16; }
    Image16 *copy(bool withPixels) const override;
};

/// Grey values of any range in single precision; negative, infinite and NaN are possible.
class Image32 : public PixelImage<float>
{
public:
    Image32() = default;
    /// Zero. Throws ProgError for a side of zero and for more than MAX_SIDE or MAX_BYTES.
    Image32(unsigned int width, unsigned int height) : PixelImage(width, height) {}

    Type getType() const noexcept override { return TYPE_IMAGE32; }
    Image32 *copy(bool withPixels) const override;
};

/// Colours with straight alpha: the channels are not multiplied by it.
class ImageColor : public PixelImage<Color>
{
public:
    ImageColor() = default;
    /// Opaque black, without an alpha channel. Throws ProgError for a side of zero and for more than MAX_SIDE or MAX_BYTES.
    ImageColor(unsigned int width, unsigned int height) : PixelImage(width, height) {}

    Type getType() const noexcept override { return TYPE_COLOR; }
    ImageColor *copy(bool withPixels) const override;

    /// Sets the flag alone: the pixels keep their alpha.
    void setHasAlphaChannel(bool alphaChannel) noexcept { setAlphaChannel(alphaChannel); }

    /// Both throw ProgError outside the picture.
    Color getPixel(unsigned int x, unsigned int y) const;
    void setPixel(unsigned int x, unsigned int y, Color const &color);

    /// Takes size and pixels from a JPEG, grey ones included; there is no alpha channel then. For any other bytes it
    /// returns false, and the picture is as it was.
    bool readJPEGFromBuffer(StructVector<unsigned char> const &bytes);
};

} // namespace Zem
