#include "image_packing.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <new>
#include <zlib.h>

namespace Zem {

namespace {

// Magic, version, type, flags, zero, width, height.
constexpr std::size_t HEADER_SIZE = 16;
constexpr std::array<unsigned char, 4> MAGIC{0x8a, 'Z', 'P', '\n'};
constexpr unsigned char VERSION = 1;
constexpr std::size_t VERSION_POSITION = 4;
constexpr std::size_t TYPE_POSITION = 5;
constexpr std::size_t FLAGS_POSITION = 6;
constexpr std::size_t ZERO_POSITION = 7;
constexpr std::size_t WIDTH_POSITION = 8;
constexpr std::size_t HEIGHT_POSITION = 12;
constexpr unsigned char ALPHA_FLAG = 1;

using Row = StructVector<unsigned char>;

void putNumber(std::uint32_t number, unsigned char *bytes)
{
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<unsigned char>(number >> (8 * i));
    }
}

std::uint32_t numberAt(unsigned char const *bytes)
{
    return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
}

/// The place in a pixel of the byte that comes `plane`th in storage: numbers have their lowest first, colours the red.
std::size_t placeOfPlane(Image const &image, std::size_t plane)
{
    bool const turn = std::endian::native == std::endian::big && image.getType() != Image::TYPE_COLOR;
    return turn ? image.getBpp() / 8 - 1 - plane : plane;
}

// A row is stored byte plane by byte plane, and each byte as the difference to the one on its left: neighbouring pixels
// differ little, above all in their high bytes.

void filterRow(Image const &image, unsigned int y, Row *row)
{
    std::size_t const step = image.getBpp() / 8;
    unsigned char *target = row->data();
    for (std::size_t plane = 0; plane < step; ++plane) {
        unsigned char const *source = image.getRowBytes(y) + placeOfPlane(image, plane);
        unsigned char left = 0;
        for (unsigned int x = 0; x < image.getWidth(); ++x, source += step) {
            *target++ = static_cast<unsigned char>(*source - left);
            left = *source;
        }
    }
}

void unfilterRow(Row const &row, unsigned int y, Image *image)
{
    std::size_t const step = image->getBpp() / 8;
    unsigned char const *source = row.data();
    for (std::size_t plane = 0; plane < step; ++plane) {
        unsigned char *target = image->getRowBytes(y) + placeOfPlane(*image, plane);
        unsigned char left = 0;
        for (unsigned int x = 0; x < image->getWidth(); ++x, target += step) {
            left = static_cast<unsigned char>(left + *source++);
            *target = left;
        }
    }
}

Row rowFor(Image const &image)
{
    return Row(static_cast<std::size_t>(image.getWidth()) * (image.getBpp() / 8));
}

/// Deflates at level 1: what is gained in time is worth more than the bytes.
class Deflater
{
public:
    explicit Deflater(StructVector<unsigned char> *target) : target_(target)
    {
        if (deflateInit(&stream_, 1) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Deflater() { deflateEnd(&stream_); }
    Deflater(Deflater const &) = delete;
    Deflater &operator=(Deflater const &) = delete;

    void add(Row &row)
    {
        stream_.next_in = row.data();
        stream_.avail_in = static_cast<uInt>(row.size()); // a picture has no more than 256 MiB
        while (stream_.avail_in > 0) {
            run(Z_NO_FLUSH);
        }
    }
    void finish()
    {
        while (run(Z_FINISH) != Z_STREAM_END) {
        }
    }

private:
    int run(int flush)
    {
        stream_.next_out = buffer_.data();
        stream_.avail_out = static_cast<uInt>(buffer_.size());
        int const result = deflate(&stream_, flush);
        target_->insert(target_->end(), buffer_.data(), stream_.next_out);
        return result;
    }

    StructVector<unsigned char> *target_;
    StructVector<unsigned char> buffer_ = StructVector<unsigned char>(1U << 18);
    z_stream stream_{};
};

class Inflater
{
public:
    explicit Inflater(ImageBytes bytes)
    {
        stream_.next_in = const_cast<unsigned char *>(bytes.data()); // zlib only reads it
        stream_.avail_in = static_cast<uInt>(bytes.size());
        if (inflateInit(&stream_) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Inflater() { inflateEnd(&stream_); }
    Inflater(Inflater const &) = delete;
    Inflater &operator=(Inflater const &) = delete;

    void fill(Row *row)
    {
        stream_.next_out = row->data();
        stream_.avail_out = static_cast<uInt>(row->size());
        int const result = inflate(&stream_, Z_SYNC_FLUSH);
        if ((result != Z_OK && result != Z_STREAM_END) || stream_.avail_out != 0) {
            failImage("damaged pixels");
        }
    }
    /// The stream ends here, its checksum is right, and nothing follows.
    void requireEnd()
    {
        unsigned char none = 0;
        stream_.next_out = &none;
        stream_.avail_out = 1;
        if (inflate(&stream_, Z_FINISH) != Z_STREAM_END || stream_.avail_out != 1 || stream_.avail_in != 0) {
            failImage("damaged pixels");
        }
    }

private:
    z_stream stream_{};
};

void requireHeader(ImageBytes bytes, Image::Type type)
{
    unsigned int const knownFlags = type == Image::TYPE_COLOR ? ALPHA_FLAG : 0;
    if (bytes.size() < HEADER_SIZE || bytes.size() > std::numeric_limits<uInt>::max() ||
        !std::equal(MAGIC.begin(), MAGIC.end(), bytes.begin()) || bytes[VERSION_POSITION] != VERSION ||
        bytes[TYPE_POSITION] != type || (bytes[FLAGS_POSITION] & ~knownFlags) != 0 || bytes[ZERO_POSITION] != 0) {
        failImage("no packed picture of this type");
    }
}

/// Of the size that the header tells, if what follows it can be that much.
std::unique_ptr<Image> makePictureOfHeader(ImageBytes bytes, Image::Type type)
{
    std::uint32_t const width = numberAt(bytes.data() + WIDTH_POSITION);
    std::uint32_t const height = numberAt(bytes.data() + HEIGHT_POSITION);
    if (width != 0 || height != 0) {
        std::size_t const pixelBytes = makeImage(type, 0, 0)->getBpp() / 8;
        requireImageSize(width, height, pixelBytes);
        requireExpansion(std::uint64_t{width} * height * pixelBytes, bytes.size() - HEADER_SIZE, DEFLATE_EXPANSION);
    }
    return makeImage(type, width, height);
}

} // namespace

StructVector<unsigned char> packImage(Image const &image)
{
    StructVector<unsigned char> bytes(HEADER_SIZE);
    std::copy(MAGIC.begin(), MAGIC.end(), bytes.begin());
    bytes[VERSION_POSITION] = VERSION;
    bytes[TYPE_POSITION] = static_cast<unsigned char>(image.getType());
    bytes[FLAGS_POSITION] = image.hasAlphaChannel() ? ALPHA_FLAG : 0;
    putNumber(image.getWidth(), bytes.data() + WIDTH_POSITION);
    putNumber(image.getHeight(), bytes.data() + HEIGHT_POSITION);
    Deflater deflater(&bytes);
    Row row = rowFor(image);
    for (unsigned int y = 0; y < image.getHeight(); ++y) {
        filterRow(image, y, &row);
        deflater.add(row);
    }
    deflater.finish();
    return bytes;
}

std::unique_ptr<Image> unpackImage(ImageBytes bytes, Image::Type type)
{
    requireHeader(bytes, type);
    std::unique_ptr<Image> image = makePictureOfHeader(bytes, type);
    Inflater inflater(bytes.subspan(HEADER_SIZE));
    Row row = rowFor(*image);
    for (unsigned int y = 0; y < image->getHeight(); ++y) {
        inflater.fill(&row);
        unfilterRow(row, y, image.get());
    }
    inflater.requireEnd();
    if (auto *const color = dynamic_cast<ImageColor *>(image.get())) {
        color->setHasAlphaChannel(bytes[FLAGS_POSITION] == ALPHA_FLAG);
    }
    return image;
}

} // namespace Zem
