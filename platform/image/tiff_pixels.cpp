#include "tiff_pixels.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Zem {

namespace {

/// `count` samples of a row, `step` apart from the `first` on.
struct SampleRow
{
    unsigned char const *bytes;
    unsigned int bits;
    std::size_t first;
    std::size_t step;
    unsigned int count;
};

template <class Unsigned, class Take>
void eachWhole(SampleRow const &row, Take const &take)
{
    unsigned char const *source = row.bytes + row.first * sizeof(Unsigned);
    for (unsigned int i = 0; i < row.count; ++i, source += row.step * sizeof(Unsigned)) {
        Unsigned sample;
        std::memcpy(&sample, source, sizeof sample);
        take(i, std::uint32_t{sample});
    }
}

/// Samples packed without gaps, their highest bit first.
std::uint32_t packedSample(SampleRow const &row, std::size_t number)
{
    std::uint32_t sample = 0;
    for (std::size_t bit = number * row.bits; bit < (number + 1) * row.bits; ++bit) {
        sample = sample << 1 | (row.bytes[bit / 8] >> (7 - bit % 8) & 1U);
    }
    return sample;
}

/// Calls take(number of the pixel, sample).
template <class Take>
void eachSample(SampleRow const &row, Take const &take)
{
    switch (row.bits) {
    case 8:
        return eachWhole<std::uint8_t>(row, take);
    case 16:
        return eachWhole<std::uint16_t>(row, take);
    case 32:
        return eachWhole<std::uint32_t>(row, take);
    default:
        for (unsigned int i = 0; i < row.count; ++i) {
            take(i, packedSample(row, row.first + i * row.step));
        }
    }
}

std::uint32_t largestSample(unsigned int bits)
{
    return 0xffffffffU >> (32 - bits);
}

/// From the full range of the samples to 0 ... 255, to the nearest.
unsigned char toByte(std::uint32_t sample, std::uint32_t largest)
{
    return static_cast<unsigned char>((sample * 255 + largest / 2) / largest);
}

void storeBytes(SampleRow const &row, bool fromWhite, std::uint8_t *pixels)
{
    std::uint32_t const largest = largestSample(row.bits);
    eachSample(row, [&](unsigned int i, std::uint32_t sample) {
        pixels[i] = toByte(fromWhite ? largest - sample : sample, largest);
    });
}

void storeGreyPalette(SampleRow const &row, std::array<Color, 256> const &palette, std::uint8_t *pixels)
{
    eachSample(row, [&](unsigned int i, std::uint32_t index) { pixels[i] = palette[index & 0xff].getRed(); });
}

/// Fewer than 16 bits stay the numbers that they are.
void storeWords(SampleRow const &row, bool fromWhite, std::uint16_t *pixels)
{
    std::uint32_t const largest = largestSample(row.bits);
    eachSample(row, [&](unsigned int i, std::uint32_t sample) {
        pixels[i] = static_cast<std::uint16_t>(fromWhite ? largest - sample : sample);
    });
}

void storeFloats(SampleRow const &row, TiffLayout::Samples samples, float *pixels)
{
    unsigned int const unused = 32 - row.bits;
    eachSample(row, [&](unsigned int i, std::uint32_t sample) {
        switch (samples) {
        case TiffLayout::Samples::UNSIGNED:
            pixels[i] = static_cast<float>(sample);
            break;
        case TiffLayout::Samples::SIGNED:
            pixels[i] = static_cast<float>(static_cast<std::int32_t>(sample << unused) >> unused);
            break;
        case TiffLayout::Samples::FLOAT:
            pixels[i] = std::bit_cast<float>(sample);
            break;
        }
    });
}

enum class Channel { RED, GREEN, BLUE, ALPHA, GREY };

Color with(Color const &old, Channel channel, unsigned char value)
{
    switch (channel) {
    case Channel::RED:
        return {value, old.getGreen(), old.getBlue(), old.getAlpha()};
    case Channel::GREEN:
        return {old.getRed(), value, old.getBlue(), old.getAlpha()};
    case Channel::BLUE:
        return {old.getRed(), old.getGreen(), value, old.getAlpha()};
    case Channel::ALPHA:
        return {old.getRed(), old.getGreen(), old.getBlue(), value};
    case Channel::GREY:
        break;
    }
    return {value, value, value, old.getAlpha()};
}

void storeChannel(SampleRow const &row, bool fromWhite, Channel channel, Color *pixels)
{
    std::uint32_t const largest = largestSample(row.bits);
    eachSample(row, [&](unsigned int i, std::uint32_t sample) {
        pixels[i] = with(pixels[i], channel, toByte(fromWhite ? largest - sample : sample, largest));
    });
}

void storeColors(TiffLayout const &layout, SampleRow row, unsigned int sample, Color *pixels)
{
    if (layout.alpha != TiffLayout::Alpha::NONE && sample == layout.alphaSample) {
        storeChannel(row, false, Channel::ALPHA, pixels);
    } else if (sample >= layout.colors()) {
        return;
    } else if (layout.meaning == TiffLayout::Meaning::PALETTE) {
        eachSample(row, [&](unsigned int i, std::uint32_t index) { pixels[i] = layout.palette[index & 0xff]; });
    } else if (layout.meaning == TiffLayout::Meaning::RGB) {
        storeChannel(row, false, static_cast<Channel>(sample), pixels);
    } else {
        storeChannel(row, layout.meaning == TiffLayout::Meaning::GREY_FROM_WHITE, Channel::GREY, pixels);
    }
}

/// The pixels of a picture of that class, from (x, y) on.
template <class Picture>
auto *pixelsAt(Image *picture, unsigned int x, unsigned int y)
{
    return static_cast<Picture *>(picture)->getRow(y) + x;
}

} // namespace

void storeTiffRow(TiffLayout const &layout, unsigned char const *row, unsigned int plane, unsigned int x,
                  unsigned int y, unsigned int count, Image *picture)
{
    bool const fromWhite = layout.meaning == TiffLayout::Meaning::GREY_FROM_WHITE;
    SampleRow samples{row, layout.bits, 0, layout.pixelSteps, count};
    switch (layout.type) {
    case Image::TYPE_IMAGE8:
        if (layout.meaning == TiffLayout::Meaning::PALETTE) {
            return storeGreyPalette(samples, layout.palette, pixelsAt<Image8>(picture, x, y));
        }
        return storeBytes(samples, fromWhite, pixelsAt<Image8>(picture, x, y));
    case Image::TYPE_IMAGE16:
        return storeWords(samples, fromWhite, pixelsAt<Image16>(picture, x, y));
    case Image::TYPE_IMAGE32:
        return storeFloats(samples, layout.samples, pixelsAt<Image32>(picture, x, y));
    case Image::TYPE_COLOR:
        break;
    }
    if (layout.separate) {
        return storeColors(layout, samples, plane, pixelsAt<ImageColor>(picture, x, y));
    }
    for (samples.first = 0; samples.first < layout.pixelSteps; ++samples.first) {
        storeColors(layout, samples, static_cast<unsigned int>(samples.first), pixelsAt<ImageColor>(picture, x, y));
    }
}

void divideByAlpha(ImageColor *picture)
{
    auto const divided = [](Color const &color) {
        unsigned int const alpha = color.getAlpha();
        auto const channel = [&](unsigned int value) {
            return static_cast<unsigned char>(alpha == 0 ? 0 : std::min((value * 255 + alpha / 2) / alpha, 255U));
        };
        return Color(channel(color.getRed()), channel(color.getGreen()), channel(color.getBlue()), color.getAlpha());
    };
    for (unsigned int y = 0; y < picture->getHeight(); ++y) {
        Color *const row = picture->getRow(y);
        std::transform(row, row + picture->getWidth(), row, divided);
    }
}

std::unique_ptr<Image> orientImage(std::unique_ptr<Image> picture, unsigned int orientation)
{
    if (orientation < 2 || orientation > 8) {
        return picture;
    }
    bool const turned = orientation >= 5; // rows are columns
    bool const mirrored = orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    bool const flipped = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    unsigned int const width = turned ? picture->getHeight() : picture->getWidth();
    unsigned int const height = turned ? picture->getWidth() : picture->getHeight();
    std::size_t const pixelBytes = picture->getBpp() / 8;
    std::unique_ptr<Image> oriented = makeImage(picture->getType(), width, height);
    for (unsigned int y = 0; y < height; ++y) {
        unsigned int const row = flipped ? height - 1 - y : y;
        unsigned char *target = oriented->getRowBytes(y);
        for (unsigned int x = 0; x < width; ++x, target += pixelBytes) {
            unsigned int const column = mirrored ? width - 1 - x : x;
            unsigned char const *source = turned ? picture->getRowBytes(column) + row * pixelBytes
                                                 : picture->getRowBytes(row) + column * pixelBytes;
            std::memcpy(target, source, pixelBytes);
        }
    }
    return oriented;
}

} // namespace Zem
