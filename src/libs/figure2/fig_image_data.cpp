// ImageData, what an image element shows.
#include "ZemFig2ImageData.h"

#include "ZemFig2Transformation.h"
#include "fig_block.h"
#include "fig_camera_record.h"
#include "fig_items.h"

#include <ZemError.h>

#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

// 2: point masks; 3: colour scale; 4: whether there is one; 5: any transformation in place of a camera; 6: histogram
constexpr unsigned int BLOCK_VERSION = 6;
constexpr unsigned int FIRST_MASKS_VERSION = 2;
constexpr unsigned int FIRST_LEGEND_VERSION = 3;
constexpr unsigned int FIRST_LEGEND_BLOCK_VERSION = 4;
constexpr unsigned int FIRST_TRANSFORMATION_VERSION = 5;
constexpr unsigned int FIRST_HISTOGRAM_VERSION = 6;

constexpr unsigned int TRANSFORMATION_BLOCK_VERSION = 1;
constexpr unsigned int CAMERA_BLOCK_VERSION = 3; // 2: coordinate system; 3: legend colours
constexpr unsigned int MASKS_BLOCK_VERSION = 1;
constexpr unsigned int LEGEND_BLOCK_VERSION = 2; // 2: compatibility mode of the legend

// What users of these errors know them by.
constexpr unsigned int DUPLICATE_ID_LINE = 3663;
constexpr unsigned int UNKNOWN_ID_LINE = 3682;

[[noreturn]] void throwProgError(char const *function, unsigned int line, char const *text)
{
    throw ProgError(function, "fig_image_data", line, text);
}

} // namespace

ImageData::ImageData() = default;

ImageData::ImageData(Cal::Camera const &camera, Zem::Transformation const &transformation)
    : transformation_(new CameraTransformation(camera, transformation))
{
}

ImageData::ImageData(ImageData const &other) : ImageData()
{
    values_ = other.values_;
    values_.image = nullptr;
    values_.overlay = nullptr;
    pointMasks_ = other.pointMasks_;
    if (other.transformation_)
        transformation_ = other.transformation_->copy();
    for (auto const &[id, object] : other.objects_) {
        auto copied = std::make_unique<ImageDataObject>(*object);
        addObject(copied.get());
        copied.release();
    }
}

// Deliberately shares the pointers.
ImageData &ImageData::operator=(ImageData const &other) = default;

ImageData::~ImageData()
{
    clear();
    delete transformation_;
}

void ImageData::swap(ImageData &other) noexcept
{
    std::swap(values_, other.values_);
    std::swap(transformation_, other.transformation_);
    std::swap(objects_, other.objects_);
    std::swap(pointMasks_, other.pointMasks_);
}

void ImageData::setTransformation(Transformation *transformation)
{
    if (transformation == transformation_)
        return;
    delete transformation_;
    transformation_ = transformation;
}

void ImageData::setLegendData(Legend2::Legend const &legend, Legend2::Data const &data)
{
    setLegendData(legend, data, Legend2::HistogramData());
}

void ImageData::setLegendData(Legend2::Legend const &legend, Legend2::Data const &data,
                              Legend2::HistogramData const &histogram)
{
    values_.legend = legend;
    values_.legendData = data;
    values_.histogramData = histogram;
    values_.hasLegendData = true;
}

bool ImageData::getLegendData(Legend2::Legend *legend, Legend2::Data *data) const
{
    if (!values_.hasLegendData)
        return false;
    *legend = values_.legend;
    *data = values_.legendData;
    return true;
}

bool ImageData::getLegendData(Legend2::Legend *legend, Legend2::Data *data, Legend2::HistogramData *histogram) const
{
    if (!getLegendData(legend, data))
        return false;
    *histogram = values_.histogramData;
    return true;
}

void ImageData::addObject(ImageDataObject *object)
{
    if (!objects_.try_emplace(object->getId(), object).second)
        throwProgError("Zem::Fig2::ImageData::addObject", DUPLICATE_ID_LINE, "Duplicate ImageDataObject id");
}

void ImageData::removeObject(QString const &id)
{
    auto const found = objects_.find(id);
    if (found == objects_.end())
        throwProgError("Zem::Fig2::ImageData::removeObject", UNKNOWN_ID_LINE, "Object with that ID does not exist");
    delete found->second;
    objects_.erase(found);
}

ImageDataObject const *ImageData::getObject(QString const &id) const
{
    auto const found = objects_.find(id);
    return found == objects_.end() ? nullptr : found->second;
}

ImageDataObject *ImageData::getObject(QString const &id)
{
    return const_cast<ImageDataObject *>(std::as_const(*this).getObject(id));
}

void ImageData::scale(double factor)
{
    for (auto const &[id, object] : objects_) {
        object->scale(factor);
        object->setConnectorPoint(object->getConnectorPoint() * factor);
    }
    if (transformation_)
        setTransformation(new ScaledImageTransformation(transformation_, factor));
}

void ImageData::clear()
{
    for (auto const &[id, object] : objects_)
        delete object;
    objects_.clear();
    pointMasks_.clear();
    values_.image = nullptr;
    values_.overlay = nullptr;
    values_.hasLegendData = false;
}

void ImageData::save(IO::OutStream *stream) const
{
    std::vector<QString> ids;
    for (auto const &[id, object] : objects_)
        ids.push_back(id);
    saveBlock(stream, BLOCK_VERSION, [&ids](auto &archive) { blockList(archive, ids); });
    for (auto const &[id, object] : objects_)
        object->save(stream);
    saveTransformation(stream);
    savePointMasks(stream);
    saveLegend(stream);
}

void ImageData::load(IO::InStream *stream)
{
    ImageData read;
    read.loadAll(stream);
    swap(read);
}

void ImageData::loadAll(IO::InStream *stream)
{
    std::vector<QString> ids;
    unsigned int const version = loadBlock(stream, BLOCK_VERSION, [&ids](auto &archive) { blockList(archive, ids); });
    for (QString const &id : ids)
        loadObject(stream, id);
    if (version >= FIRST_TRANSFORMATION_VERSION)
        loadTransformation(stream);
    else
        loadCamera(stream);
    if (version >= FIRST_MASKS_VERSION)
        loadPointMasks(stream);
    if (version >= FIRST_LEGEND_VERSION)
        loadLegend(stream, version);
}

/// Kept under the id of the list, whatever the object calls itself; of two with the same id the second stays.
void ImageData::loadObject(IO::InStream *stream, QString const &id)
{
    auto object = std::make_unique<ImageDataObject>(id);
    object->load(stream);
    object->values_.id = id;
    ImageDataObject *&place = objects_[id];
    delete place;
    place = object.release();
}

void ImageData::saveTransformation(IO::OutStream *stream) const
{
    saveBlock(stream, TRANSFORMATION_BLOCK_VERSION, [this](auto &archive) {
        archive.field(transformation_ != nullptr);
        archive.field(values_.hasCoordinateSystem);
        archive.field(values_.canDrawLegendColors);
    });
    if (transformation_)
        Transformation::saveStream(stream, transformation_);
}

void ImageData::loadTransformation(IO::InStream *stream)
{
    bool hasTransformation = false;
    loadBlock(stream, TRANSFORMATION_BLOCK_VERSION, [&](auto &archive) {
        archive.field(hasTransformation);
        archive.field(values_.hasCoordinateSystem);
        archive.field(values_.canDrawLegendColors);
    });
    if (hasTransformation)
        setTransformation(Transformation::loadStream(stream));
}

/// Older data have a camera in the place of any transformation.
void ImageData::loadCamera(IO::InStream *stream)
{
    Cal::InternalOrientation orientation;
    orientation.load(stream);
    CameraRecord record;
    loadBlock(stream, CAMERA_BLOCK_VERSION, [&](auto &archive) {
        CameraRecord::cameraFields(archive, record);
        archive.field(values_.hasCoordinateSystem, Since{2}, true);
        archive.field(values_.canDrawLegendColors, Since{3}, true);
        CameraRecord::motionFields(archive, record);
    });
    setTransformation(new CameraTransformation(record.camera(orientation), record.motion()));
}

void ImageData::savePointMasks(IO::OutStream *stream) const
{
    auto const count = static_cast<unsigned int>(pointMasks_.size());
    saveBlock(stream, MASKS_BLOCK_VERSION, [count](auto &archive) { archive.field(count); });
    for (PointMask const &mask : pointMasks_)
        mask.save(stream);
}

void ImageData::loadPointMasks(IO::InStream *stream)
{
    unsigned int count = 0;
    loadBlock(stream, MASKS_BLOCK_VERSION, [&count](auto &archive) { archive.field(count); });
    for (unsigned int i = 0; i < count; ++i) {
        PointMask mask;
        mask.load(stream);
        addPointMask(mask);
    }
}

void ImageData::saveLegend(IO::OutStream *stream) const
{
    saveBlock(stream, LEGEND_BLOCK_VERSION, [this](auto &archive) {
        archive.field(values_.hasLegendData);
        archive.field(values_.legend.getV602CompatibilityMode());
    });
    values_.legend.save(stream);
    values_.legendData.save(stream);
    values_.histogramData.save(stream);
}

void ImageData::loadLegend(IO::InStream *stream, unsigned int version)
{
    if (version >= FIRST_LEGEND_BLOCK_VERSION) {
        loadBlock(stream, LEGEND_BLOCK_VERSION, [this](BlockReader &archive) {
            archive.field(values_.hasLegendData);
            if (archive.version() >= 2)
                archive.drop<bool>(); // deliberately without effect: the version of the data decides
        });
    }
    values_.legend.load(stream);
    values_.legendData.load(stream);
    if (version >= FIRST_HISTOGRAM_VERSION)
        values_.histogramData.load(stream);
    values_.legend.setV602CompatibilityMode(version < FIRST_HISTOGRAM_VERSION);
}

} // namespace Zem::Fig2
