// FigureTokenContainer::scaleImage, a smaller picture for an image element.
#include "ZemFig2Connector.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2LabelBase.h"
#include "fig_owned_map.h"
#include "fig_token_entry.h"

#include <ZemError.h>
#include <ZemImage.h>

#include <algorithm>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr double MM_PER_INCH = 25.4;

[[noreturn]] void failScaling(unsigned int line, char const *text)
{
    throw ProgError("Zem::Fig2::FigureTokenContainer::scaleImage", "fig_token_container", line, text);
}

/// How many times as wide and high a picture in the element has `maxDpi`.
double ratioOf(Zem::Image const &image, BaVec2d<double> const &size, double maxDpi)
{
    double const dpiX = image.getWidth() * MM_PER_INCH / size.x;
    double const dpiY = image.getHeight() * MM_PER_INCH / size.y;
    return std::min(maxDpi / dpiY, maxDpi / dpiX);
}

std::unique_ptr<Zem::Image> scaled(Zem::Image const *image, FigureTokenContainer::ImageScaler const &scaler,
                                   double ratio)
{
    std::unique_ptr<Zem::Image> result(scaler.scale(image, ratio));
    if (!result)
        failScaling(__LINE__, "Scaled image must not be NULL");
    return result;
}

std::unique_ptr<ImageColor> scaledOverlay(ImageColor const *overlay, FigureTokenContainer::ImageScaler const &scaler,
                                          double ratio)
{
    std::unique_ptr<Zem::Image> result(scaler.scale(overlay, ratio));
    auto *const color = dynamic_cast<ImageColor *>(result.get());
    if (!color)
        failScaling(__LINE__, "Overlay must be a colored image");
    (void)result.release();
    return std::unique_ptr<ImageColor>(color);
}

/// The same part of the picture stays in view.
void fitElement(ImageBase *element, double ratio)
{
    if (element->getAutoScale())
        return;
    BaVec2d<double> const origin = element->getInnerOrigin();
    double const before = element->getScaling();
    element->setScaling(before / ratio);
    double const factor = ratio * element->getScaling();
    element->setInnerOrigin({origin.x / before * factor, origin.y / before * factor});
}

void fitLabels(ImageBase *element, double ratio)
{
    for (auto it = element->getConnectorBegin(); it != element->getConnectorEnd(); ++it) {
        auto *label = dynamic_cast<LabelBase *>((*it)->getSource());
        if (!label)
            label = dynamic_cast<LabelBase *>((*it)->getTarget());
        if (!label || !label->hasConnectorPoint())
            continue;
        BaVec2d<double> const &point = label->getConnectorPoint();
        label->setConnectorPoint({point.x / ratio, point.y / ratio});
    }
}

} // namespace

void FigureTokenContainer::scaleImage(ImageBase *element, ImageScaler const &scaler, double maxDpi)
{
    QString const name = element->getToken();
    Entry *const entry = findOwned(entries_, name);
    Zem::Image const *const image = findOwned(images_, name);
    if (!entry || !image)
        return;
    double const ratio = ratioOf(*image, element->getSize(), maxDpi);
    if (!(ratio > 0.0 && ratio < 1.0)) // an element without an extent has no resolution either
        return;

    auto smaller = scaled(image, scaler, ratio);
    ImageColor *const overlay = findOwned(overlays_, name);
    auto smallerOverlay = overlay ? scaledOverlay(overlay, scaler, ratio) : nullptr;
    entry->setImage(smaller.get());
    replaceOwned(images_, name, std::move(smaller));
    if (overlay) // the image data point at it and are deliberately not told
        *overlay = std::move(*smallerOverlay);
    fitElement(element, ratio);
    entry->getImageData()->scale(ratio);
    fitLabels(element, ratio);
}

} // namespace Zem::Fig2
