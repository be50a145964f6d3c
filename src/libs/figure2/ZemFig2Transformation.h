// ZemFig2Transformation.h: Transformation and its kinds, which take points of space to pixels of a picture.
// Layer: services. Used from the thread that owns the figure; const operations from several.
#pragma once

#include <ZemCamera.h>
#include <ZemCoordinateTransformation.h>
#include <ZemStream.h>
#include <ZemTransformation.h>
#include <ZemVec.h>

#include <memory>

namespace Zem::Fig2 {

/// What lets points, vectors, coordinate systems and labels be drawn over a picture. Points have the unit of the
/// measurement, results are pixels from the corner of the picture. Not the rigid motion Zem::Transformation.
class Transformation
{
public:
    /// Stored in files: never renumber.
    enum Type_t { TYPE_CAMERA = 0, TYPE_SCALED_IMAGE = 1, TYPE_IMAGE_LABEL = 2 /* never in a file */ };

    virtual ~Transformation() = default;
    /// A deep copy, which the caller owns.
    virtual Transformation *copy() const = 0;
    /// The rigid motion in force, from space into the camera.
    virtual Zem::Transformation getTransformation() = 0;
    /// False when the point has no image; `image` is then undefined.
    virtual bool computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const = 0;
    /// False when either of the points has none.
    virtual bool computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2,
                                    BaVec2d<double> *image1, BaVec2d<double> *image2) const = 0;
    /// The blocks behind the type. load throws IO::StreamException and then changes nothing.
    virtual void load(IO::InStream *stream);
    virtual void save(IO::OutStream *stream) const;

    Type_t getType() const { return type_; }

    /// Writes the type and the blocks of `transformation`, which is not null.
    static void saveStream(IO::OutStream *stream, Transformation const *transformation);
    /// The caller owns the result. Throws IO::StreamException.
    static Transformation *loadStream(IO::InStream *stream);

protected:
    explicit Transformation(Type_t type) : type_(type) {}
    Transformation(Transformation const &) = default;
    Transformation &operator=(Transformation const &) = default;

private:
    Type_t type_;
};

/// A calibrated camera, where it stood, and the window of its sensor that the picture shows.
class CameraTransformation : public Transformation
{
public:
    /// A camera without calibration: no point has an image.
    CameraTransformation();
    /// `transformation` takes points of space into the camera.
    CameraTransformation(Cal::Camera const &camera, Zem::Transformation const &transformation);
    CameraTransformation(Cal::Camera const &camera, Zem::Transformation const &transformation,
                         FG::CoordinateTransformation const &coordinateTransformation);
    CameraTransformation(CameraTransformation const &other);
    CameraTransformation &operator=(CameraTransformation const &other) = default;

    Cal::Camera const &getCamera() const { return camera_; }
    FG::CoordinateTransformation const &getCoordinateTransformation() const { return coordinateTransformation_; }

    CameraTransformation *copy() const override;
    Zem::Transformation getTransformation() override { return transformation_; }
    /// Points outside the camera's domain have an image as far as ten times the larger side of the frame from its
    /// corner, so that a vector can leave the frame.
    bool computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const override;
    bool computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2, BaVec2d<double> *image1,
                            BaVec2d<double> *image2) const override;
    /// The scale of the rigid motion is not stored: it is read as 1.
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

private:
    bool computeFullFramePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const;

    Cal::Camera camera_;
    Zem::Transformation transformation_;
    FG::CoordinateTransformation coordinateTransformation_;
};

/// Another transformation for a picture that has been scaled.
class ScaledImageTransformation : public Transformation
{
public:
    /// Scaled pictures of scaled pictures nested deeper than this are refused when a file is read.
    static constexpr unsigned int MAXIMUM_DEPTH = 256;

    /// Without a transformation no point has an image.
    ScaledImageTransformation();
    /// Keeps a copy of `transformation`, which may be null. `scale`: pixels of the scaled picture for one of the other.
    ScaledImageTransformation(Transformation const *transformation, double scale);
    /// A deep copy.
    ScaledImageTransformation(ScaledImageTransformation const &other);
    /// Not deep: both then hold the same transformation, until one of them loads or is assigned another.
    ScaledImageTransformation &operator=(ScaledImageTransformation const &other) = default;

    ScaledImageTransformation *copy() const override;
    /// That of the transformation within, points being scaled first; the identity without one.
    Zem::Transformation getTransformation() override;
    bool computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const override;
    bool computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2, BaVec2d<double> *image1,
                            BaVec2d<double> *image2) const override;
    void load(IO::InStream *stream) override;
    void save(IO::OutStream *stream) const override;

private:
    std::shared_ptr<Transformation> transformation_;
    double scale_;
};

} // namespace Zem::Fig2
