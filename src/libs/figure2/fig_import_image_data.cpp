// Pictures of older files and what was measured on them.
#include "ZemFig2ImageData.h"
#include "ZemFig2ImageDataPoints.h"
#include "ZemFig2Transformation.h"
#include "fig_import_data.h"
#include "fig_import_record.h"

#include <ZemCamera.h>
#include <ZemImage.h>
#include <ZemStructVector.h>
#include <ZemTokenContainer.h>
#include <ZemTransformation.h>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int PICTURE_VERSION = 3;    // 2: image data; 3: overlay
constexpr unsigned int IMAGE_DATA_VERSION = 3; // 2: masks; 3: legend data
constexpr unsigned int CAMERA_VERSION = 3;     // 2: axes of space; 3: colours of labels
constexpr unsigned int MASK_VERSION = 2;       // 2: name
constexpr unsigned int OBJECT_VERSION = 3;     // 2: text; 3: flags, tokens
constexpr unsigned int POINT_VERSION = 2;      // 2: visible, mask
constexpr unsigned int LEGEND_VERSION = 2;     // 2: classes, average, deviation
constexpr unsigned int PICTURE_TYPES = Zem::Image::TYPE_COLOR + 1;

std::unique_ptr<Zem::Image> makePicture(Zem::Image::Type type)
{
    switch (type) {
    case Zem::Image::TYPE_IMAGE8:
        return std::make_unique<Image8>();
    case Zem::Image::TYPE_IMAGE16:
        return std::make_unique<Image16>();
    case Zem::Image::TYPE_IMAGE32:
        return std::make_unique<Image32>();
    case Zem::Image::TYPE_COLOR:
        break;
    }
    return std::make_unique<ImageColor>();
}

/// The bytes of a packed picture, which the block really holds.
StructVector<unsigned char> readPacked(IO::InStream *stream, BlockReader &reader)
{
    unsigned int count = 0;
    reader.field(count);
    if (count > stream->getBytesLeft())
        throw IO::StreamException(translate("Figure_Import_err", "uncompressing image failed"));
    StructVector<unsigned char> bytes(count);
    stream->readData(bytes.data(), count);
    return bytes;
}

void unpack(StructVector<unsigned char> const &bytes, Zem::Image *picture)
{
    if (!picture->uncompressImage(bytes))
        throw IO::StreamException(translate("Figure_Import_err", "uncompressing image failed"));
}

struct OldPicture
{
    std::unique_ptr<Zem::Image> picture;
    std::unique_ptr<ImageColor> overlay;
    bool hasData = false;

    void read(IO::InStream *stream, BlockReader &reader)
    {
        Zem::Image::Type type{};
        reader.list(type, PICTURE_TYPES);
        picture = makePicture(type);
        unpack(readPacked(stream, reader), picture.get());
        reader.keep(hasData, Since{2});
        if (reader.version() < 3)
            return;
        StructVector<unsigned char> const bytes = readPacked(stream, reader);
        if (bytes.empty())
            return;
        overlay = std::make_unique<ImageColor>();
        unpack(bytes, overlay.get());
    }
};

void importCamera(IO::InStream *stream, ImageData *data)
{
    Cal::Camera camera(nullptr);
    BaVec3d<double> shift;
    BaVec3d<double> angles;
    bool hasAxes = true;
    bool drawsColors = false;
    loadRecord(stream, CAMERA_VERSION, "unhandled camera version: %1", [&](BlockReader &reader) {
        double r0 = 0.0;
        int offsetX = 0;
        int offsetY = 0;
        unsigned int width = 0;
        unsigned int height = 0;
        reader.field(r0);
        reader.field(offsetX);
        reader.field(offsetY);
        reader.field(width);
        reader.field(height);
        reader.field(shift);
        reader.field(angles);
        reader.keep(hasAxes, Since{2});
        reader.keep(drawsColors, Since{3});
        camera.setR0(r0);
        camera.setHPOffset(offsetX, offsetY);
        camera.setImageSize(width, height);
    });
    Cal::InternalOrientation orientation;
    orientation.load(stream);
    camera.setOrientation(orientation);
    data->setTransformation(new CameraTransformation(camera, Zem::Transformation(shift, angles, 1.0)));
    data->setHasCoordinateSystem(hasAxes);
    data->setCanDrawLegendColors(drawsColors);
}

void importMask(IO::InStream *stream, ImageData *data)
{
    int mask = 0;
    QString name;
    loadRecord(stream, MASK_VERSION, "unhandled image mask version: %1", [&](BlockReader &reader) {
        reader.field(mask);
        reader.keep(name, Since{2});
    });
    data->addPointMask(PointMask(mask, name));
}

void importPoint(IO::InStream *stream, ImageDataPoints *points)
{
    loadRecord(stream, POINT_VERSION, "unhandled image point version: %1", [points](BlockReader &reader) {
        int id = 0;
        BaVec3d<double> point;
        BaVec3d<double> vector;
        double value = 0.0;
        bool visible = true;
        int mask = -1;
        reader.field(id);
        reader.field(point);
        reader.field(vector);
        reader.field(value);
        reader.keep(visible, Since{2});
        reader.keep(mask, Since{2});
        points->addPoint(id, point, vector, value, visible, mask);
    });
}

struct OldObject
{
    QString id;
    BaVec2d<double> connectorPoint{0.0, 0.0};
    unsigned int numberOfPoints = 0;
    QString displayText;
    bool filtered = false;
    bool canBeConnectorTarget = true;
    bool hasTokens = false;

    void read(BlockReader &reader)
    {
        reader.field(id);
        reader.field(connectorPoint);
        reader.field(numberOfPoints);
        reader.keep(displayText, Since{2});
        reader.keep(filtered, Since{3});
        reader.keep(canBeConnectorTarget, Since{3});
        reader.keep(hasTokens, Since{3});
    }

    std::unique_ptr<ImageDataObject> make() const
    {
        auto object = std::make_unique<ImageDataObject>(id);
        object->setConnectorPoint(connectorPoint);
        object->setDisplayText(displayText);
        object->setFiltered(filtered);
        object->setCanBeConnectorTarget(canBeConnectorTarget);
        return object;
    }
};

void importObjectTokens(IO::InStream *stream, ImageDataObject *object)
{
    auto container = std::make_unique<TokenContainer>();
    Import::importTokenData(stream, container.get());
    object->setTokenInterface(container.get());
    object->setTokenContainer(container.release());
}

void importObject(IO::InStream *stream, ImageData *data)
{
    OldObject record;
    loadRecord(stream, OBJECT_VERSION, "unhandled image object version: %1",
               [&record](BlockReader &reader) { record.read(reader); });
    std::unique_ptr<ImageDataObject> object = record.make();
    auto points = std::make_unique<ImageDataPoints>();
    for (unsigned int i = 0; i < record.numberOfPoints; ++i)
        importPoint(stream, points.get());
    if (points->getNumberOfPoints() > 0)
        object->addElement(points.release());
    if (record.hasTokens)
        importObjectTokens(stream, object.get());
    // Of two objects with the same id the later one stays.
    if (data->objectExists(record.id))
        data->removeObject(record.id);
    data->addObject(object.get());
    object.release();
}

} // namespace

std::unique_ptr<ImageData> importImageData(IO::InStream *stream)
{
    bool hasCamera = false;
    bool hasLegend = false;
    unsigned int objects = 0;
    unsigned int masks = 0;
    loadRecord(stream, IMAGE_DATA_VERSION, "unhandled image data version: %1", [&](BlockReader &reader) {
        reader.field(hasCamera);
        reader.field(objects);
        reader.keep(masks, Since{2});
        reader.keep(hasLegend, Since{3});
    });
    auto data = std::make_unique<ImageData>();
    if (hasCamera)
        importCamera(stream, data.get());
    for (unsigned int i = 0; i < masks; ++i)
        importMask(stream, data.get());
    for (unsigned int i = 0; i < objects; ++i)
        importObject(stream, data.get());
    if (hasLegend) {
        Legend2::Legend legend(uLength);
        Legend2::Data legendData;
        importLegendData(stream, &legend, &legendData);
        data->setLegendData(legend, legendData);
    }
    return data;
}

void importLegendData(IO::InStream *stream, Legend2::Legend *legend, Legend2::Data *data)
{
    loadRecord(stream, LEGEND_VERSION, "unhandled legend data version: %1", [&](BlockReader &reader) {
        QString unit;
        double minimum = 0.0;
        double maximum = 0.0;
        unsigned int classes = 0;
        double average = 0.0;
        double deviation = 0.0;
        reader.field(unit);
        reader.field(minimum);
        reader.field(maximum);
        if (reader.version() >= 2)
            reader.list(classes, Legend2::Legend::MAX_CLASSES + 1);
        reader.keep(average, Since{2});
        reader.keep(deviation, Since{2});

        legend->setUnitData(unitDataOf(unit));
        if (classes > 0) {
            legend->setScaleMode(Legend2::SCALE_MODE_DISCRETE);
            legend->setNumberOfClasses(classes);
        }
        data->setDynamicMinimum(minimum);
        data->setDynamicMaximum(maximum);
        data->setAverage(average);
        data->setSigmaValue(deviation);
    });
}

void importPicture(IO::InStream *stream, QString const &name, DataInterface *tokens)
{
    OldPicture picture;
    loadRecord(stream, PICTURE_VERSION, "unknown image version: %1",
               [&](BlockReader &reader) { picture.read(stream, reader); });
    std::unique_ptr<ImageData> data;
    if (picture.hasData)
        data = importImageData(stream);
    tokens->setImage(name, picture.picture.release(), picture.overlay.release(), data.release());
}

} // namespace Zem::Fig2
