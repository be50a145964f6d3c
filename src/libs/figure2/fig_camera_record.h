// fig_camera_record.h: the numbers of a camera as stream blocks hold them.
// Layer: values. Internal to the library.
#pragma once

#include <ZemCamera.h>
#include <ZemTransformation.h>
#include <ZemVec.h>

namespace Zem::Fig2 {

/// What is stored of a camera beside its orientation, and of the motion into it, whose scale is 1.
struct CameraRecord
{
    double r0 = 0.0;
    int offsetX = 0;
    int offsetY = 0;
    unsigned int imageWidth = 0;
    unsigned int imageHeight = 0;
    BaVec3d<double> translation;
    BaVec3d<double> angles;

    template <class Archive, class Self>
    static void cameraFields(Archive &archive, Self &self)
    {
        archive.field(self.r0);
        archive.field(self.offsetX);
        archive.field(self.offsetY);
        archive.field(self.imageWidth);
        archive.field(self.imageHeight);
    }

    template <class Archive, class Self>
    static void motionFields(Archive &archive, Self &self)
    {
        archive.field(self.translation);
        archive.field(self.angles);
    }

    Cal::Camera camera(Cal::InternalOrientation const &orientation) const
    {
        Cal::Camera camera(nullptr);
        camera.setOrientation(orientation);
        camera.setR0(r0);
        camera.setHPOffset(offsetX, offsetY);
        camera.setImageSize(imageWidth, imageHeight);
        return camera;
    }

    Zem::Transformation motion() const { return {translation, angles, 1.0}; }
};

} // namespace Zem::Fig2
