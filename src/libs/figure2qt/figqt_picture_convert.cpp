#include "figqt_picture.h"
#include "figqt_picture_tones.h"

#include <ZemImage.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Zem::Fig2Qt {

using Fig2::ImageConversion;

namespace {

constexpr Color SATURATED(255, 0, 0);
constexpr Color NOTHING(0, 0, 0, 0);
constexpr std::size_t STEPS = 65536; // in which floating-point numbers are looked at, from black to white

/// What becomes of each number: shades of grey, or colours if there are any.
struct Palette
{
    Tones greys;
    std::vector<Color> colors;
    bool alpha = false;
};

std::size_t pixelsOf(Zem::Image const &image)
{
    return static_cast<std::size_t>(image.getWidth()) * image.getHeight();
}

std::vector<Color> withColors(Tones const &tones)
{
    std::vector<Color> colors(tones.size());
    std::transform(tones.begin(), tones.end(), colors.begin(),
                   [](unsigned char tone) { return Color(tone, tone, tone); });
    return colors;
}

Palette paletteOf(ImageConversion const &conversion, Histogram const &histogram, unsigned int most, unsigned int white)
{
    Palette palette;
    if (!histogram.empty())
        palette.greys = equalizedTones(histogram);
    if (palette.greys.empty())
        palette.greys = tonesOf(conversion, static_cast<std::size_t>(white) + 1, white);
    if (conversion.getType() == ImageConversion::TYPE_PSEUDO) {
        for (unsigned char const tone : palette.greys)
            palette.colors.push_back(pseudoColors()[tone]);
    }
    if (conversion.getType() == ImageConversion::TYPE_OVEREXPOSED && most >= white) {
        palette.colors = withColors(palette.greys);
        palette.colors.back() = SATURATED;
    }
    return palette;
}

/// `numberOf` takes a pixel to its place in the palette.
template <class Pixel, class NumberOf>
Picture painted(PixelImage<Pixel> const &image, Palette const &palette, NumberOf const &numberOf)
{
    std::size_t const count = pixelsOf(image);
    auto const format = palette.colors.empty() ? Picture::GREY : palette.alpha ? Picture::ALPHA : Picture::COLOR;
    unsigned char *bytes = nullptr;
    Picture picture =
        makePicture(format, static_cast<int>(image.getWidth()), static_cast<int>(image.getHeight()), &bytes);
    Pixel const *pixel = image.getRow(0);
    if (format == Picture::GREY) {
        for (std::size_t i = 0; i < count; ++i)
            bytes[i] = palette.greys[numberOf(pixel[i])];
        return picture;
    }
    auto *colors = reinterpret_cast<Color *>(bytes);
    for (std::size_t i = 0; i < count; ++i)
        colors[i] = palette.colors[numberOf(pixel[i])];
    return picture;
}

template <class Pixel>
Picture convertNumbers(PixelImage<Pixel> const &image, ImageConversion const &conversion)
{
    std::size_t const count = pixelsOf(image);
    Pixel const *pixel = image.getRow(0);
    Pixel most = 0;
    for (std::size_t i = 0; i < count; ++i)
        most = std::max(most, pixel[i]);
    unsigned int const white = whiteOf(most);
    Histogram histogram;
    if (conversion.getType() == ImageConversion::TYPE_EQUALIZE) {
        histogram.resize(static_cast<std::size_t>(white) + 1);
        std::for_each(pixel, pixel + count, [&histogram](Pixel number) { ++histogram[number]; });
    }
    return painted(image, paletteOf(conversion, histogram, most, white), [](Pixel number) { return number; });
}

Picture convert(Image8 const &image, ImageConversion const &conversion)
{
    bool const same =
        conversion.getType() == ImageConversion::TYPE_NORMAL ||
        (conversion.getType() == ImageConversion::TYPE_RANGE && conversion.getMin() == 0 && conversion.getMax() == 255);
    if (!same)
        return convertNumbers(image, conversion);
    return {Picture::GREY, static_cast<int>(image.getWidth()), static_cast<int>(image.getHeight()), image.getRow(0),
            nullptr};
}

/// Takes floating-point numbers to whole steps between the number that is black and the one that is white.
class FloatSteps
{
public:
    /// Behind the steps: for numbers without end, and for what is no number.
    static constexpr std::size_t ENDLESS = STEPS;
    static constexpr std::size_t NO_NUMBER = STEPS + 1;

    FloatSteps(double black, double white) : black_(black), white_(white), scale_((STEPS - 1) / (white - black)) {}

    std::size_t operator()(float number) const
    {
        if (std::isnan(number))
            return NO_NUMBER;
        if (number == std::numeric_limits<float>::infinity())
            return ENDLESS;
        if (white_ == black_)
            return number > white_ ? STEPS - 1 : 0;
        return static_cast<std::size_t>(std::clamp((number - black_) * scale_, 0.0, static_cast<double>(STEPS - 1)) +
                                        0.5);
    }

private:
    double black_;
    double white_;
    double scale_; // steps for one; not in use where both are the same
};

FloatSteps stepsOf(Image32 const &image, ImageConversion const &conversion)
{
    if (conversion.getType() == ImageConversion::TYPE_RANGE)
        return {static_cast<double>(conversion.getMin()), static_cast<double>(conversion.getMax())};
    float least = std::numeric_limits<float>::max();
    float most = std::numeric_limits<float>::lowest();
    float const *pixel = image.getRow(0);
    for (std::size_t i = 0; i < pixelsOf(image); ++i) {
        if (!std::isfinite(pixel[i]))
            continue;
        least = std::min(least, pixel[i]);
        most = std::max(most, pixel[i]);
    }
    return {std::min(least, most), most};
}

/// What the steps are, they are between black and white: so a range is all of them.
ImageConversion overAllSteps(ImageConversion conversion)
{
    conversion.setMin(0);
    conversion.setMax(STEPS - 1);
    return conversion;
}

Picture convert(Image32 const &image, ImageConversion const &conversion)
{
    FloatSteps const stepOf = stepsOf(image, conversion);
    Histogram counts(STEPS + 2);
    float const *pixel = image.getRow(0);
    for (std::size_t i = 0; i < pixelsOf(image); ++i)
        ++counts[stepOf(pixel[i])];
    bool const endless = counts[FloatSteps::ENDLESS] > 0;
    bool const holes = counts[FloatSteps::NO_NUMBER] > 0;
    bool const marked = endless && conversion.getType() == ImageConversion::TYPE_OVEREXPOSED;
    Histogram histogram;
    if (conversion.getType() == ImageConversion::TYPE_EQUALIZE)
        histogram.assign(counts.begin(), counts.begin() + STEPS);
    Palette palette = paletteOf(overAllSteps(conversion), histogram, 0, STEPS - 1);
    if ((holes || marked) && palette.colors.empty())
        palette.colors = withColors(palette.greys);
    // What has no end is as bright as the brightest.
    bool const negative =
        conversion.getType() == ImageConversion::TYPE_RANGE && conversion.getMin() > conversion.getMax();
    palette.greys.push_back(negative ? palette.greys.front() : palette.greys.back());
    if (!palette.colors.empty()) {
        palette.colors.push_back(marked ? SATURATED : negative ? palette.colors.front() : palette.colors.back());
        palette.colors.push_back(NOTHING);
        palette.alpha = holes;
    }
    return painted(image, palette, stepOf);
}

unsigned char brightnessOf(Color const &color)
{
    return static_cast<unsigned char>((77 * color.getRed() + 151 * color.getGreen() + 28 * color.getBlue() + 128) /
                                      256);
}

/// `convertColor` changes the colour alone.
template <class ConvertColor>
Picture repainted(ImageColor const &image, ConvertColor const &convertColor)
{
    unsigned char *bytes = nullptr;
    Picture const as = asPicture(image);
    Picture picture = makePicture(as.format, as.width, as.height, &bytes);
    auto *to = reinterpret_cast<Color *>(bytes);
    Color const *from = image.getRow(0);
    for (std::size_t i = 0; i < pixelsOf(image); ++i) {
        Color const color = convertColor(from[i]);
        to[i] = Color(color.getRed(), color.getGreen(), color.getBlue(), from[i].getAlpha());
    }
    return picture;
}

Picture equalized(ImageColor const &image)
{
    Histogram histogram(256);
    Color const *pixel = image.getRow(0);
    for (std::size_t i = 0; i < pixelsOf(image); ++i) {
        if (!image.hasAlphaChannel() || pixel[i].getAlpha() > 0)
            ++histogram[brightnessOf(pixel[i])];
    }
    Tones const tones = equalizedTones(histogram);
    if (tones.empty())
        return asPicture(image);
    return repainted(image, [&tones](Color const &color) {
        int const before = brightnessOf(color);
        int const after = tones[static_cast<std::size_t>(before)];
        auto const scaled = [before, after](int channel) {
            return static_cast<unsigned char>(before == 0 ? after
                                                          : std::min((channel * after + before / 2) / before, 255));
        };
        return Color(scaled(color.getRed()), scaled(color.getGreen()), scaled(color.getBlue()));
    });
}

Picture convert(ImageColor const &image, ImageConversion const &conversion)
{
    switch (conversion.getType()) {
    case ImageConversion::TYPE_LIGHTEN:
    case ImageConversion::TYPE_RANGE: {
        Tones const tones = tonesOf(conversion, 256, 255);
        return repainted(image, [&tones](Color const &color) {
            return Color(tones[color.getRed()], tones[color.getGreen()], tones[color.getBlue()]);
        });
    }
    case ImageConversion::TYPE_OVEREXPOSED:
        return repainted(image, [](Color const &color) {
            return std::max({color.getRed(), color.getGreen(), color.getBlue()}) == 255 ? SATURATED : color;
        });
    case ImageConversion::TYPE_EQUALIZE:
        return equalized(image);
    case ImageConversion::TYPE_PSEUDO:
        return repainted(image, [](Color const &color) { return pseudoColors()[brightnessOf(color)]; });
    default:
        return asPicture(image);
    }
}

} // namespace

Picture makePicture(Picture::Format format, int width, int height, unsigned char **pixels)
{
    Picture picture{format, width, height, nullptr, nullptr};
    auto const bytes = std::make_shared<std::vector<unsigned char>>(picture.getBytes());
    *pixels = bytes->data();
    picture.pixels = bytes->data();
    picture.owned = bytes;
    return picture;
}

Picture asPicture(ImageColor const &image)
{
    return {image.hasAlphaChannel() ? Picture::ALPHA : Picture::COLOR, static_cast<int>(image.getWidth()),
            static_cast<int>(image.getHeight()), image.getRowBytes(0), nullptr};
}

Picture convertPicture(Zem::Image const &image, ImageConversion const &conversion)
{
    switch (image.getType()) {
    case Zem::Image::TYPE_IMAGE8:
        return convert(static_cast<Image8 const &>(image), conversion);
    case Zem::Image::TYPE_IMAGE16:
        return convertNumbers(static_cast<Image16 const &>(image), conversion);
    case Zem::Image::TYPE_IMAGE32:
        return convert(static_cast<Image32 const &>(image), conversion);
    case Zem::Image::TYPE_COLOR:
        break;
    }
    return convert(static_cast<ImageColor const &>(image), conversion);
}

} // namespace Zem::Fig2Qt
