// Variable, the record of one registered token: ownership and stream form.
#include "ZemFig2Variable.h"

#include "ZemFig2ChartData.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"
#include "fig_block.h"
#include "fig_picture.h"

#include <ZemError.h>
#include <ZemImage.h>

#include <memory>

namespace Zem::Fig2 {

namespace {

// 2: sort index; 3: group; 4: format; 5: icon; 6: types renumbered
constexpr unsigned int RECORD_BLOCK_VERSION = 6;
constexpr unsigned int FIRST_WITHOUT_BOOLEAN = 6; ///< before, a boolean type was counted as 0
constexpr unsigned int BOOLEAN_BLOCK_VERSION = 1;
constexpr unsigned int INTEGER_BLOCK_VERSION = 1;
constexpr unsigned int DOUBLE_BLOCK_VERSION = 2; // 2: the unit behind the block
constexpr unsigned int STRING_BLOCK_VERSION = 1;
constexpr unsigned int IMAGE_BLOCK_VERSION = 2; // 2: whether there is an image, overlay
constexpr unsigned int FIRST_WITH_OVERLAY = 2;

constexpr unsigned int TYPES = VARIABLE_SEPARATOR + 1;

template <class Archive>
constexpr unsigned int countTypes([[maybe_unused]] Archive const &archive)
{
    if constexpr (Archive::isReader)
        return archive.version() < FIRST_WITHOUT_BOOLEAN ? TYPES + 1 : TYPES;
    else
        return TYPES;
}

template <class Archive, class Self>
void recordFields(Archive &archive, Self &self)
{
    archive.list(self.type, countTypes(archive));
    archive.field(self.typeHint);
    archive.field(self.displayText);
    archive.field(self.sortIndex, Since{2}, -1);
    archive.field(self.groupToken, Since{3}, QString());
    archive.field(self.defaultFormat, Since{4}, QString());
    archive.field(self.iconId, Since{5}, QString());
}

/// What stands in the block of a picture token.
struct ImageRecord
{
    PackedPicture picture;
    PackedPicture overlay;
    bool hasPicture = true;
    bool hasOverlay = false;
    bool hasData = false;
};

unsigned int sizeOfBytes(bool isThere, PackedPicture const &packed)
{
    return isThere ? 4 + static_cast<unsigned int>(packed.bytes.size()) : 0;
}

void writeBytes(IO::OutStream *stream, bool isThere, PackedPicture const &packed)
{
    if (!isThere)
        return;
    auto const count = static_cast<unsigned int>(packed.bytes.size());
    stream->writeUInt(count);
    stream->writeData(packed.bytes.data(), count);
}

void readBytes(IO::InStream *stream, bool isThere, char const *failure, PackedPicture *packed)
{
    if (!isThere)
        return;
    unsigned int count = 0;
    stream->readUInt(&count);
    if (count > stream->getBytesLeft())
        throw IO::StreamException(translate("Figure_Variable_err", failure));
    packed->bytes.resize(count);
    stream->readData(packed->bytes.data(), count);
}

constexpr char const *NO_IMAGE = "loading image from figure stream failed";
constexpr char const *NO_OVERLAY = "loading overlay image from figure stream failed";

ImageRecord readImageRecord(IO::InStream *stream)
{
    ImageRecord record;
    loadBlock(stream, IMAGE_BLOCK_VERSION, [&](BlockReader &reader) {
        reader.field(record.picture.type);
        reader.keep(record.hasPicture, Since{FIRST_WITH_OVERLAY});
        reader.keep(record.hasOverlay, Since{FIRST_WITH_OVERLAY});
        reader.field(record.hasData);
        readBytes(stream, record.hasPicture, NO_IMAGE, &record.picture);
        readBytes(stream, record.hasOverlay, NO_OVERLAY, &record.overlay);
    });
    record.overlay.type = Zem::Image::TYPE_COLOR;
    return record;
}

std::unique_ptr<Zem::Image> requirePicture(PackedPicture const &packed, char const *failure)
{
    std::unique_ptr<Zem::Image> picture = unpackPicture(packed);
    if (!picture)
        throw IO::StreamException(translate("Figure_Variable_err", failure));
    return picture;
}

/// Data that the record is known by are there when it is saved.
template <class Data>
Data const &requireData(Data const *data, char const *text)
{
    if (!data)
        throw ProgError("Zem::Fig2::Variable::save", "fig_variable", __LINE__, text);
    return *data;
}

/// Loads data of a kind that have just been made, and gives them to their owner also when they are damaged half way.
template <class Data>
void loadData(IO::InStream *stream, Data *&place)
{
    place = new Data;
    place->load(stream);
}

} // namespace

Variable::Variable(Variable const &other)
    : type(other.type), typeHint(other.typeHint), modifiedCounter(other.modifiedCounter),
      displayText(other.displayText), sortIndex(other.sortIndex), groupToken(other.groupToken),
      defaultFormat(other.defaultFormat), iconId(other.iconId), intValue(other.intValue),
      doubleValue(other.doubleValue), unitData(other.unitData), stringValue(other.stringValue),
      image(other.image ? other.image->copy(true) : nullptr),
      overlayImage(other.overlayImage ? other.overlayImage->copy(true) : nullptr),
      imageData(other.imageData ? new ImageData(*other.imageData) : nullptr),
      chartData(other.chartData ? new ChartData(*other.chartData) : nullptr),
      snapshotData(other.snapshotData ? new SnapshotData(*other.snapshotData) : nullptr)
{
}

Variable::~Variable()
{
    deleteData();
}

void Variable::deleteData()
{
    if (type == VARIABLE_IMAGE) {
        delete image;
        delete overlayImage;
        delete imageData;
    }
    if (type == VARIABLE_CHART)
        delete chartData;
    if (type == VARIABLE_SNAPSHOT)
        delete snapshotData;
    image = nullptr;
    overlayImage = nullptr;
    imageData = nullptr;
    chartData = nullptr;
    snapshotData = nullptr;
}

void Variable::save(IO::OutStream *stream) const
{
    saveBlock(stream, RECORD_BLOCK_VERSION, [this](auto &archive) { recordFields(archive, *this); });
    switch (type) {
    case VARIABLE_INTEGER:
        saveBlock(stream, INTEGER_BLOCK_VERSION, [this](auto &archive) { archive.field(intValue); });
        break;
    case VARIABLE_DOUBLE:
        saveBlock(stream, DOUBLE_BLOCK_VERSION, [this](auto &archive) { archive.field(doubleValue); });
        unitData.save(stream);
        break;
    case VARIABLE_STRING:
        saveBlock(stream, STRING_BLOCK_VERSION, [this](auto &archive) { archive.field(stringValue); });
        break;
    case VARIABLE_IMAGE:
        saveImage(stream);
        break;
    case VARIABLE_CHART:
        requireData(chartData, "ChartData must not be NULL").save(stream);
        break;
    case VARIABLE_SNAPSHOT:
        requireData(snapshotData, "Snapshot must not be NULL").save(stream);
        break;
    default: // references, groups and separators hold nothing
        break;
    }
}

void Variable::saveImage(IO::OutStream *stream) const
{
    constexpr unsigned int SIZE_WITHOUT_BYTES = 7;
    PackedPicture const picture = image ? packPicture(*image) : PackedPicture();
    PackedPicture const overlay = overlayImage ? packPicture(*overlayImage) : PackedPicture();
    bool const hasPicture = image != nullptr;
    bool const hasOverlay = overlayImage != nullptr;

    stream->beginBlock(SIZE_WITHOUT_BYTES + sizeOfBytes(hasPicture, picture) + sizeOfBytes(hasOverlay, overlay),
                       IMAGE_BLOCK_VERSION);
    stream->writeUInt(picture.type);
    stream->writeBool(hasPicture);
    stream->writeBool(hasOverlay);
    stream->writeBool(imageData != nullptr);
    writeBytes(stream, hasPicture, picture);
    writeBytes(stream, hasOverlay, overlay);
    stream->endBlock();
    if (imageData)
        imageData->save(stream);
}

void Variable::load(IO::InStream *stream)
{
    deleteData();
    Variable header(VARIABLE_STRING);
    header.modifiedCounter = modifiedCounter;
    unsigned int const version =
        loadBlock(stream, RECORD_BLOCK_VERSION, [&header](auto &archive) { recordFields(archive, header); });
    bool const wasBoolean = version < FIRST_WITHOUT_BOOLEAN && header.type == 0;
    if (wasBoolean)
        header.type = VARIABLE_STRING;
    else if (version < FIRST_WITHOUT_BOOLEAN)
        header.type = static_cast<Variable_t>(header.type - 1);
    *this = header; // neither owns data now

    if (wasBoolean)
        loadBoolean(stream);
    else
        loadValue(stream);
}

void Variable::loadBoolean(IO::InStream *stream)
{
    bool value = false;
    loadBlock(stream, BOOLEAN_BLOCK_VERSION, [&value](auto &archive) { archive.field(value); });
    stringValue = value ? translate("Figure_Variable", "true") : translate("Figure_Variable", "false");
}

void Variable::loadValue(IO::InStream *stream)
{
    switch (type) {
    case VARIABLE_INTEGER:
        loadBlock(stream, INTEGER_BLOCK_VERSION, [this](auto &archive) { archive.field(intValue); });
        break;
    case VARIABLE_DOUBLE:
        loadDouble(stream);
        break;
    case VARIABLE_STRING:
        loadBlock(stream, STRING_BLOCK_VERSION, [this](auto &archive) { archive.field(stringValue); });
        break;
    case VARIABLE_IMAGE:
        loadImage(stream);
        break;
    case VARIABLE_CHART:
        loadData(stream, chartData);
        break;
    case VARIABLE_SNAPSHOT:
        loadData(stream, snapshotData);
        break;
    default: // references, groups and separators hold nothing
        break;
    }
}

void Variable::loadDouble(IO::InStream *stream)
{
    QString unitName;
    unsigned int const version = loadBlock(stream, DOUBLE_BLOCK_VERSION, [&](BlockReader &reader) {
        reader.field(doubleValue);
        if (reader.version() < DOUBLE_BLOCK_VERSION)
            reader.field(unitName);
    });
    if (version < DOUBLE_BLOCK_VERSION)
        unitData = UnitData(Unit::getUnit(unitName));
    else
        unitData.load(stream);
}

void Variable::loadImage(IO::InStream *stream)
{
    ImageRecord const record = readImageRecord(stream);
    if (record.hasPicture)
        image = requirePicture(record.picture, NO_IMAGE).release();
    if (record.hasOverlay)
        overlayImage = static_cast<ImageColor *>(requirePicture(record.overlay, NO_OVERLAY).release());
    if (record.hasData)
        loadData(stream, imageData);
}

} // namespace Zem::Fig2
