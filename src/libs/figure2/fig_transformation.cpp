#include "ZemFig2Transformation.h"

#include "fig_block.h"
#include "fig_camera_record.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TYPE_BLOCK_VERSION = 1;
constexpr unsigned int BASE_BLOCK_VERSION = 1;
constexpr unsigned int CAMERA_BLOCK_VERSION = 4; // 4: the reduced frame
constexpr unsigned int SCALED_IMAGE_BLOCK_VERSION = 1;

constexpr double MOST_PICTURE_SIZES = 10.0;

/// Counts how deep the scaled picture that is being read lies within others.
class LoadDepth
{
public:
    LoadDepth()
    {
        if (depth_ >= ScaledImageTransformation::MAXIMUM_DEPTH)
            throw IO::StreamException(translate("Figure_err", "scaled pictures nested too deeply"));
        ++depth_;
    }
    ~LoadDepth() { --depth_; }
    LoadDepth(LoadDepth const &) = delete;
    LoadDepth &operator=(LoadDepth const &) = delete;

private:
    static thread_local unsigned int depth_;
};

thread_local unsigned int LoadDepth::depth_ = 0;

bool isFinite(BaVec2d<double> const &point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

Transformation *copyOf(Transformation const *transformation)
{
    return transformation ? transformation->copy() : nullptr;
}

std::unique_ptr<Transformation> createTransformation(unsigned int type)
{
    switch (type) {
    case Transformation::TYPE_CAMERA:
        return std::make_unique<CameraTransformation>();
    case Transformation::TYPE_SCALED_IMAGE:
        return std::make_unique<ScaledImageTransformation>();
    default:
        throw IO::StreamException(translate("Figure_err", "unhandled point transformation type"));
    }
}

template <class Archive, class Record>
void cameraBlock(Archive &archive, Record &record)
{
    CameraRecord::cameraFields(archive, record);
    CameraRecord::motionFields(archive, record);
}

} // namespace

void Transformation::save(IO::OutStream *stream) const
{
    saveBlock(stream, BASE_BLOCK_VERSION, [](auto &archive) { archive.field(false); });
}

void Transformation::load(IO::InStream *stream)
{
    loadBlock(stream, BASE_BLOCK_VERSION, [](BlockReader &archive) { archive.drop<bool>(); });
}

void Transformation::saveStream(IO::OutStream *stream, Transformation const *transformation)
{
    saveBlock(stream, TYPE_BLOCK_VERSION,
              [type = static_cast<unsigned int>(transformation->type_)](auto &archive) { archive.field(type); });
    transformation->save(stream);
}

Transformation *Transformation::loadStream(IO::InStream *stream)
{
    unsigned int type = 0;
    loadBlock(stream, TYPE_BLOCK_VERSION, [&type](BlockReader &archive) { archive.field(type); });
    std::unique_ptr<Transformation> transformation = createTransformation(type);
    transformation->load(stream);
    return transformation.release();
}

CameraTransformation::CameraTransformation() : Transformation(TYPE_CAMERA), camera_(nullptr)
{
}

CameraTransformation::CameraTransformation(Cal::Camera const &camera, Zem::Transformation const &transformation)
    : CameraTransformation(camera, transformation, FG::CoordinateTransformation())
{
}

CameraTransformation::CameraTransformation(Cal::Camera const &camera, Zem::Transformation const &transformation,
                                           FG::CoordinateTransformation const &coordinateTransformation)
    : Transformation(TYPE_CAMERA), camera_(camera, false), transformation_(transformation),
      coordinateTransformation_(coordinateTransformation)
{
}

CameraTransformation::CameraTransformation(CameraTransformation const &other)
    : CameraTransformation(other.camera_, other.transformation_, other.coordinateTransformation_)
{
}

CameraTransformation *CameraTransformation::copy() const
{
    return new CameraTransformation(*this);
}

bool CameraTransformation::computeFullFramePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const
{
    if (camera_.computeImagePointChecked(transformation_, point, *image))
        return true;
    if (!camera_.computeImagePointUnchecked(transformation_, point, *image))
        return false;
    double const farthest = MOST_PICTURE_SIZES * std::max(camera_.getImageWidth(), camera_.getImageHeight());
    return image->dot(*image) <= farthest * farthest;
}

bool CameraTransformation::computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const
{
    if (!computeFullFramePoint(point, image))
        return false;
    *image = coordinateTransformation_.computeReducedFrameCoordinates(*image);
    return isFinite(*image);
}

bool CameraTransformation::computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2,
                                              BaVec2d<double> *image1, BaVec2d<double> *image2) const
{
    return computeImagePoint(point1, image1) && computeImagePoint(point2, image2);
}

void CameraTransformation::save(IO::OutStream *stream) const
{
    Transformation::save(stream);
    CameraRecord const record{
        camera_.getR0(),          camera_.getHPXOffset(),           camera_.getHPYOffset(),     camera_.getImageWidth(),
        camera_.getImageHeight(), transformation_.getTranslation(), transformation_.getAngles()};
    saveBlock(stream, CAMERA_BLOCK_VERSION, [&record](auto &archive) { cameraBlock(archive, record); });
    camera_.getOrientation().save(stream);
    coordinateTransformation_.writeBlock(stream);
}

void CameraTransformation::load(IO::InStream *stream)
{
    Transformation::load(stream);
    CameraRecord record;
    unsigned int const version =
        loadBlock(stream, CAMERA_BLOCK_VERSION, [&record](auto &archive) { cameraBlock(archive, record); });
    Cal::InternalOrientation orientation;
    orientation.load(stream);
    FG::CoordinateTransformation coordinateTransformation;
    if (version >= 4)
        coordinateTransformation.readBlock(stream);

    *this = CameraTransformation(record.camera(orientation), record.motion(), coordinateTransformation);
}

ScaledImageTransformation::ScaledImageTransformation()
    : Transformation(TYPE_SCALED_IMAGE), scale_(std::numeric_limits<double>::infinity())
{
}

ScaledImageTransformation::ScaledImageTransformation(Transformation const *transformation, double scale)
    : Transformation(TYPE_SCALED_IMAGE), transformation_(copyOf(transformation)), scale_(scale)
{
}

ScaledImageTransformation::ScaledImageTransformation(ScaledImageTransformation const &other)
    : ScaledImageTransformation(other.transformation_.get(), other.scale_)
{
}

ScaledImageTransformation *ScaledImageTransformation::copy() const
{
    return new ScaledImageTransformation(transformation_.get(), scale_);
}

Zem::Transformation ScaledImageTransformation::getTransformation()
{
    if (!transformation_)
        return {};
    Zem::Transformation motion = transformation_->getTransformation();
    motion.prepend(Zem::Transformation({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, scale_));
    return motion;
}

bool ScaledImageTransformation::computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const
{
    if (!transformation_ || !transformation_->computeImagePoint(point, image))
        return false;
    *image *= scale_;
    return isFinite(*image);
}

bool ScaledImageTransformation::computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2,
                                                   BaVec2d<double> *image1, BaVec2d<double> *image2) const
{
    if (!transformation_ || !transformation_->computeImagePoints(point1, point2, image1, image2))
        return false;
    *image1 *= scale_;
    *image2 *= scale_;
    return isFinite(*image1) && isFinite(*image2);
}

void ScaledImageTransformation::save(IO::OutStream *stream) const
{
    Transformation::save(stream);
    bool const hasTransformation = transformation_ != nullptr;
    saveBlock(stream, SCALED_IMAGE_BLOCK_VERSION, [&](auto &archive) {
        archive.field(hasTransformation);
        archive.field(scale_);
    });
    if (transformation_)
        saveStream(stream, transformation_.get());
}

void ScaledImageTransformation::load(IO::InStream *stream)
{
    LoadDepth const depth;
    Transformation::load(stream);
    bool hasTransformation = false;
    double scale = 0.0;
    loadBlock(stream, SCALED_IMAGE_BLOCK_VERSION, [&](BlockReader &archive) {
        archive.field(hasTransformation);
        archive.field(scale);
    });
    std::shared_ptr<Transformation> read(hasTransformation ? loadStream(stream) : nullptr);
    transformation_ = std::move(read);
    scale_ = scale;
}

} // namespace Zem::Fig2
