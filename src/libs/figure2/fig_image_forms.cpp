// The persistent forms of ImageBase and Image.
#include "ZemFig2Image.h"

#include "ZemFig2ImportInfo.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_items.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

#include <utility>

namespace Zem::Fig2 {

namespace {

// 2: measurements; 3: vector fields; 4: overlay mode; 5: a look for each object; 6: no more of 2 and 3; 7: alignment of
// its own; 8: label configurations; 9: the scale stands in the block of AlignedElement; 10: background colour
constexpr unsigned int BLOCK_VERSION = 10;
constexpr unsigned int FIRST_MEASUREMENTS_VERSION = 2;
constexpr unsigned int FIRST_VECTOR_FIELDS_VERSION = 3;
constexpr unsigned int FIRST_LOOKS_VERSION = 5;
constexpr unsigned int LAST_MEASUREMENTS_VERSION = 5;
constexpr unsigned int FIRST_ALIGNMENT_VERSION = 7;
constexpr unsigned int FIRST_CONFIGURATIONS_VERSION = 8;
constexpr unsigned int FIRST_WITHOUT_SCALE = 9;

constexpr unsigned int LOOKS_BLOCK_VERSION = 1;
constexpr unsigned int CONFIGURATIONS_BLOCK_VERSION = 1;
constexpr unsigned int TEXT_VERSION = 2; // 2: background colour
constexpr unsigned int IMAGE_TEXT_VERSION = 0;

constexpr unsigned int ALIGNMENTS = 3;
constexpr std::array<char const *, 3> OVERLAY_MODE_WORDS{"both", "image", "overlay"};
constexpr auto OVERLAY_MODES = static_cast<unsigned int>(OVERLAY_MODE_WORDS.size());

constexpr QLatin1StringView ENTRY_ID{"id"};
constexpr QLatin1StringView ENTRY_LOOK{"visualisation"};

/// Label configurations, a type and a text each.
template <class Archive, class Configurations>
void configurationFields(Archive &archive, Configurations &configurations)
{
    auto count = static_cast<unsigned int>(configurations.size());
    archive.field(count);
    if constexpr (Archive::isReader) {
        for (; count > 0; --count) {
            unsigned int type = 0;
            QString text;
            archive.field(type);
            archive.field(text);
            configurations.insert_or_assign(static_cast<int>(type), text);
        }
    } else {
        for (auto const &[type, text] : configurations) {
            archive.field(static_cast<unsigned int>(type));
            archive.field(text);
        }
    }
}

} // namespace

QString ImageBase::getOverlayModeParameter(OverlayMode mode)
{
    return wordOf(OVERLAY_MODE_WORDS, mode);
}

template <class Archive, class Self>
void ImageBase::blockFields(Archive &archive, Self &self)
{
    archive.keepList(self.overlayMode_, OVERLAY_MODES, Since{4});
    archive.field(self.imageBackgroundColor_, Since{10}, Color(255, 255, 255));
    archive.field(self.useImageBackgroundColor_, Since{10}, false);
}

void ImageBase::save(IO::OutStream *stream, int a, int b) const
{
    AlignedElement::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    Tools::saveToken(stream, token_);
    coordinateSystem_.save(stream);
    imageConversion_.save(stream);

    std::vector<QString> ids;
    for (auto const &[id, visualisation] : visualisations_)
        ids.push_back(id);
    saveBlock(stream, LOOKS_BLOCK_VERSION, [&ids](auto &archive) { blockList(archive, ids); });
    for (auto const &[id, visualisation] : visualisations_)
        visualisation.save(stream);
    saveBlock(stream, CONFIGURATIONS_BLOCK_VERSION,
              [this](auto &archive) { configurationFields(archive, own_.labelConfigurations); });
}

void ImageBase::load(IO::InStream *stream, int a, int b)
{
    AlignedElement::load(stream, a, b);
    loadImage(stream);
}

void ImageBase::loadImage(IO::InStream *stream)
{
    unsigned int version = 0;
    own_ = Own();
    loadWrapped("Figure_Image_err", "cannot load figure image: %1", [&] {
        version = loadBlock(stream, BLOCK_VERSION, [this](BlockReader &reader) { readBlock(reader); });
    });
    if (version < FIRST_ALIGNMENT_VERSION) {
        setAlignmentX(getPivotAlignmentX());
        setAlignmentY(getPivotAlignmentY());
    }
    loadToken(stream);
    coordinateSystem_.load(stream);
    imageConversion_.load(stream);
    loadVisualisations(stream, version);
    if (version >= FIRST_CONFIGURATIONS_VERSION)
        loadBlock(stream, CONFIGURATIONS_BLOCK_VERSION,
                  [this](auto &archive) { configurationFields(archive, own_.labelConfigurations); });
}

/// Tokens of older elements tell what they named.
void ImageBase::loadToken(IO::InStream *stream)
{
    Variable_t type = VARIABLE_STRING;
    setToken(Tools::loadToken(stream, &type));
    bool const namedImage = type == VARIABLE_IMAGE || type == VARIABLE_IMAGE_REFERENCE;
    bool const namedSnapshot = type == VARIABLE_SNAPSHOT || type == VARIABLE_SNAPSHOT_REFERENCE;
    if (!namedImage && !namedSnapshot)
        return;
    auto *info = new ImageImportInfo;
    info->setTokenType(namedImage ? ImageImportInfo::TOKEN_IMAGE : ImageImportInfo::TOKEN_SNAPSHOT);
    setImportInfo(info);
}

template <class Reader>
void ImageBase::readBlock(Reader &reader)
{
    unsigned int const version = reader.version();
    if (version < FIRST_WITHOUT_SCALE)
        readScale(reader);
    overlayMode_ = OVERLAY_BOTH;
    blockFields(reader, *this);
    if (version >= FIRST_MEASUREMENTS_VERSION && version <= LAST_MEASUREMENTS_VERSION)
        blockList(reader, own_.measurements);
    if (version >= FIRST_VECTOR_FIELDS_VERSION && version <= LAST_MEASUREMENTS_VERSION)
        blockList(reader, own_.vectorFields);
}

/// What is stored by AlignedElement today.
template <class Reader>
void ImageBase::readScale(Reader &reader)
{
    bool autoScale = true;
    double scaling = 1.0;
    Alignment_t alignmentX = ALIGN_CENTER;
    Alignment_t alignmentY = ALIGN_CENTER;
    BaVec2d<double> innerOrigin;
    reader.field(autoScale);
    reader.template drop<bool>();
    reader.field(scaling);
    reader.list(alignmentX, ALIGNMENTS);
    reader.list(alignmentY, ALIGNMENTS);
    reader.field(innerOrigin);
    setAutoScale(autoScale);
    setScaling(scaling);
    setAlignmentX(alignmentX);
    setAlignmentY(alignmentY);
    setInnerOrigin(innerOrigin);
}

void ImageBase::loadVisualisations(IO::InStream *stream, unsigned int version)
{
    visualisations_.clear();
    std::vector<QString> ids{QString()}; // older elements had one look for all objects
    if (version >= FIRST_LOOKS_VERSION)
        loadBlock(stream, LOOKS_BLOCK_VERSION, [&ids](auto &archive) { blockList(archive, ids); });
    for (QString const &id : ids) {
        ImageDataVisualisation visualisation(false);
        visualisation.load(stream);
        setVisualisation(id, visualisation);
    }
}

std::ostream &ImageBase::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](TextWriter &writer) {
        writer.list(overlayMode_, OVERLAY_MODES);
        writer.record(coordinateSystem_);
        writer.record(imageConversion_);
        writer.item(static_cast<unsigned int>(visualisations_.size()));
        for (auto const &[id, visualisation] : visualisations_) {
            writer.item(id);
            writer.record(visualisation);
        }
        writer.item(imageBackgroundColor_);
        writer.item(useImageBackgroundColor_);
    });
    return AlignedElement::saveToStream(stream);
}

std::istream &ImageBase::loadFromStream(std::istream &stream)
{
    loadText(stream, TEXT_VERSION, [this](TextReader &reader) {
        reader.list(overlayMode_, OVERLAY_MODES);
        reader.record(coordinateSystem_);
        reader.record(imageConversion_);
        readVisualisations(reader);
        reader.keep(imageBackgroundColor_, Since{2});
        reader.keep(useImageBackgroundColor_, Since{2});
    });
    invalidate();
    return AlignedElement::loadFromStream(stream);
}

template <class Reader>
void ImageBase::readVisualisations(Reader &reader)
{
    unsigned int count = 0;
    reader.item(count);
    Visualisations read;
    for (; count > 0 && reader.good(); --count) {
        QString id;
        ImageDataVisualisation visualisation(false);
        reader.item(id);
        reader.record(visualisation);
        read.insert_or_assign(id, visualisation);
    }
    if (reader.good())
        visualisations_ = std::move(read);
}

std::ostream &Image::saveToStream(std::ostream &stream) const
{
    TextWriter(stream).version(IMAGE_TEXT_VERSION);
    return ImageBase::saveToStream(stream);
}

std::istream &Image::loadFromStream(std::istream &stream)
{
    unsigned int version = IMAGE_TEXT_VERSION;
    TextReader(stream).item(version);
    if (!stream.fail() && version != IMAGE_TEXT_VERSION)
        throwWrongBlockVersion();
    return ImageBase::loadFromStream(stream);
}

QString ImageBase::getParameterString() const
{
    QString parameters = AlignedElement::getParameterString();
    ParameterWriter writer(parameters);
    writer.item(PARAM_TOKEN, token_);
    writer.record(PARAM_IMAGE_CONVERSION, imageConversion_);
    writer.list(PARAM_OVERLAY_MODE, overlayMode_, OVERLAY_MODE_WORDS);
    writer.record(PARAM_IMAGE_COORD_SYSTEM, coordinateSystem_);
    std::vector<QString> entries;
    for (auto const &[id, visualisation] : visualisations_)
        entries.push_back(Parse::createString(ENTRY_ID, id) +
                          Parse::createString(ENTRY_LOOK, visualisation.getParameterString(QString())));
    parameters += Parse::createStringVector(PARAM_VISUALISATIONS, entries);
    writer.item(PARAM_IMAGE_BACKGROUND_COLOR, imageBackgroundColor_);
    writer.item(PARAM_USE_IMAGE_BACKGROUND_COLOR, useImageBackgroundColor_);
    return parameters;
}

void ImageBase::createFromParameterString(QString &parameters)
{
    AlignedElement::createFromParameterString(parameters);
    ParameterReader reader(parameters);
    reader.list(PARAM_OVERLAY_MODE, overlayMode_, OVERLAY_MODE_WORDS);
    if (reader.exists(PARAM_TOKEN))
        token_ = Tools::getToken(parameters, PARAM_TOKEN);
    reader.record(PARAM_IMAGE_CONVERSION, imageConversion_);
    reader.record(PARAM_IMAGE_COORD_SYSTEM, coordinateSystem_);
    if (reader.exists(PARAM_VISUALISATIONS))
        takeVisualisations(Parse::getStringVector(parameters, PARAM_VISUALISATIONS, 0, ANY_COUNT));
    reader.item(PARAM_IMAGE_BACKGROUND_COLOR, imageBackgroundColor_);
    reader.item(PARAM_USE_IMAGE_BACKGROUND_COLOR, useImageBackgroundColor_);
    invalidate();
}

void ImageBase::takeVisualisations(std::vector<QString> const &entries)
{
    Visualisations read;
    for (QString entry : entries) {
        QString const id = Parse::getString(entry, ENTRY_ID);
        QString look = Parse::getString(entry, ENTRY_LOOK);
        ImageDataVisualisation visualisation(false);
        visualisation.createFromParameterString(look, QString());
        read.insert_or_assign(id, visualisation);
    }
    visualisations_ = std::move(read);
}

} // namespace Zem::Fig2
