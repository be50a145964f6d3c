// picture_support.h: small pictures.
#pragma once

#include "page_support.h"

#include <ZemImage.h>

#include <initializer_list>

namespace Zem::Support {

/// Row by row.
template <class AnyImage>
AnyImage imageOf(unsigned int width, std::initializer_list<typename AnyImage::Pixel> pixels)
{
    AnyImage image(width, static_cast<unsigned int>(pixels.size()) / width);
    std::copy(pixels.begin(), pixels.end(), image.getRow(0));
    return image;
}

inline Fig2::ImageConversion conversionOf(Fig2::ImageConversion::Type type, int min = 0, int max = 255)
{
    Fig2::ImageConversion conversion;
    conversion.setType(type);
    conversion.setMin(min);
    conversion.setMax(max);
    return conversion;
}

/// All of the picture, its corner at `position`, as it is.
inline void drawWhole(Fig2::Painter &painter, Image const &image, Vec const &position, double scaling,
                      Fig2::Rotation const &rotation = Fig2::Rotation::null, ImageColor const *overlay = nullptr)
{
    painter.drawImage(position, {image.getWidth() * scaling, image.getHeight() * scaling}, &image, overlay, {0, 0},
                      scaling, {}, Fig2::ImageConversion::null, rotation);
}

} // namespace Zem::Support
