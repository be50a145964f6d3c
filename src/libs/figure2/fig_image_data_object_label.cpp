#include "ZemFig2ImageDataObjectLabel.h"

#include "ZemFig2Image.h"

#include <ZemLegendHandler.h>
#include <ZemTranslate.h>

namespace Zem::Fig2 {

ImageDataObjectLabel::ImageDataObjectLabel()
    : ImageLabel(ImageLabelCreator::TYPE_IMPORTED_IMAGE_DATA), object_(QString())
{
}

Element *ImageDataObjectLabel::copy() const
{
    return new ImageDataObjectLabel(*this);
}

void ImageDataObjectLabel::save(IO::OutStream *stream, int a, int b) const
{
    ImageLabel::save(stream, a, b);
    object_.save(stream);
}

void ImageDataObjectLabel::load(IO::InStream *stream, int a, int b)
{
    ImageLabel::load(stream, a, b);
    object_.load(stream);
}

bool ImageDataObjectLabel::intersectsElement(ImageLabelTransformation const &, BaVec2d<double> const &,
                                             Rotation const &) const
{
    return false;
}

/// As the image draws its own objects: marks are picture pixels, or points of space that become some.
bool ImageDataObjectLabel::drawImageElement(Painter *painter, ImageLabelTransformation const &transformation,
                                            Rotation const &rotation, ImageBase const *image, int step) const
{
    BaVec2d<double> const origin = image->computeImageDrawingOrigin();
    Legend2::LegendHandler const legend(&image->getComputedLegend(), &image->getComputedLegendData());
    bool const hasOwnLook = !(object_.getVisualisation() == ImageDataVisualisation::NONE);
    ImageDataVisualisation const look =
        hasOwnLook ? object_.getVisualisation() : image->getVisualisation(object_.getId());
    auto const place = static_cast<unsigned int>(step);
    object_.draw(painter, origin - image->getInnerOrigin(), image->getScaling(),
                 Rect(origin, image->computeImageDrawingSize()), &legend, rotation, look,
                 transformation.getPictureTransformation(), place);
    return place + 1 >= object_.getNumberOfDrawSteps();
}

ImageDataObjectLabelCreator::ImageDataObjectLabelCreator() : ImageLabelCreator(TYPE_IMPORTED_IMAGE_DATA)
{
}

ImageLabel *ImageDataObjectLabelCreator::create() const
{
    return new ImageDataObjectLabel;
}

QString ImageDataObjectLabelCreator::getDisplayName() const
{
    return translate("Fig_ImageDataObjectLabel", "imported image data");
}

} // namespace Zem::Fig2
