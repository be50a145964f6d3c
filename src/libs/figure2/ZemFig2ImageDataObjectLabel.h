// ZemFig2ImageDataObjectLabel.h: ImageDataObjectLabel, an image label that keeps its marks itself, and its creator.
// Layer: labels. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2ImageData.h"
#include "ZemFig2ImageLabel.h"

namespace Zem::Fig2 {

/// A measured thing of an older file, of which only its marks are left. Its label leads nowhere.
class ImageDataObjectLabel : public ImageLabel
{
public:
    /// With an object without marks, whose id is empty.
    ImageDataObjectLabel();
    ImageDataObjectLabel(ImageDataObjectLabel const &) = default;

    /// The marks and their look; with ImageDataVisualisation::NONE that of the image for the object's id. Who changes
    /// the object invalidates the label.
    ImageDataObject const &getImageDataObject() const { return object_; }
    ImageDataObject &getImageDataObject() { return object_; }

    Element *copy() const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    bool intersectsElement(ImageLabelTransformation const &transformation, BaVec2d<double> const &point,
                           Rotation const &rotation) const override;
    BaVec3d<double> computeObjectPoint() const override { return INVALID_POINT; }
    bool drawImageElement(Painter *painter, ImageLabelTransformation const &transformation, Rotation const &rotation,
                          ImageBase const *image, int step) const override;

private:
    ImageDataObject object_;
};

class ImageDataObjectLabelCreator : public ImageLabelCreator
{
public:
    ImageDataObjectLabelCreator();

    ImageLabel *create() const override;
    QString getDisplayName() const override;
};

} // namespace Zem::Fig2
