// ImageDataObject, one measured thing on a picture.
#include "ZemFig2ImageData.h"

#include "ZemFig2Import.h"
#include "fig_block.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int NOT_REGISTERED_LINE = 3215; ///< what users of this error know it by

// 2: display text; 3: kind of label; 4: filter; 5: connector target; 7: no more tokens behind it; 8: look; 9: tokens
constexpr unsigned int BLOCK_VERSION = 9;
constexpr unsigned int REGISTRY_VERSION = 6; ///< below, older token data are behind the object, in it a registry
constexpr unsigned int FIRST_LOOK_VERSION = 8;

template <class Archive, class Types>
void typeList(Archive &archive, Types &types)
{
    auto count = static_cast<unsigned int>(types.size());
    archive.field(count);
    for (unsigned int i = 0; i < count; ++i) {
        if constexpr (Archive::isReader)
            types.emplace_back();
        archive.list(types[i], ImageDataElement::NUMBER_OF_TYPES);
    }
}

} // namespace

/// What the block holds beside the values.
struct ImageDataObject::Block
{
    std::vector<ImageDataElement::Type_t> types;
    unsigned int labelTemplateType = 0;
    bool hasTokenContainer = false;
    bool interfaceIsContainer = false;

    template <class Archive, class Self, class ValuesOf>
    static void fields(Archive &archive, Self &block, ValuesOf &values)
    {
        archive.field(values.id);
        archive.field(values.connectorPoint);
        typeList(archive, block.types);
        archive.field(values.displayText, Since{2}, QString());
        archive.field(block.labelTemplateType, Since{3}, static_cast<unsigned int>(-1));
        archive.field(values.filtered, Since{4}, false);
        archive.field(values.canBeConnectorTarget, Since{5}, true);
        archive.field(block.hasTokenContainer, Since{9}, false);
        archive.field(block.interfaceIsContainer, Since{9}, false);
    }
};

ImageDataObject::ImageDataObject(QString const &id)
{
    values_.id = id;
}

ImageDataObject::ImageDataObject(ImageDataObject const &other) : ImageDataObject(other.values_.id)
{
    values_ = other.values_;
    values_.displayText.clear();
    elements_.reserve(other.elements_.size());
    for (ImageDataElement const *element : other.elements_)
        elements_.push_back(element->copy());
    if (!other.tokenContainer_)
        return;
    tokenContainer_ = new TokenContainer(*other.tokenContainer_);
    if (other.values_.tokenInterface == other.tokenContainer_)
        values_.tokenInterface = tokenContainer_;
}

// Deliberately shares the pointers.
ImageDataObject &ImageDataObject::operator=(ImageDataObject const &other) = default;

ImageDataObject::~ImageDataObject()
{
    clearElements();
    delete tokenContainer_;
}

void ImageDataObject::swap(ImageDataObject &other) noexcept
{
    std::swap(values_, other.values_);
    std::swap(elements_, other.elements_);
    std::swap(tokenContainer_, other.tokenContainer_);
}

void ImageDataObject::setTokenContainer(TokenContainer *container)
{
    if (container == tokenContainer_)
        return;
    delete tokenContainer_;
    tokenContainer_ = container;
}

void ImageDataObject::addElement(ImageDataElement *element)
{
    elements_.push_back(element);
}

void ImageDataObject::removeElement(ImageDataElement *element)
{
    auto const found = std::find(elements_.begin(), elements_.end(), element);
    if (found == elements_.end())
        throw ProgError("Zem::Fig2::ImageDataObject::removeElement", "fig_image_data", NOT_REGISTERED_LINE,
                        "Element not registered");
    elements_.erase(found);
}

void ImageDataObject::clearElements()
{
    for (ImageDataElement *element : elements_)
        delete element;
    elements_.clear();
}

void ImageDataObject::clear()
{
    Values const fresh;
    values_.filtered = fresh.filtered;
    values_.canBeConnectorTarget = fresh.canBeConnectorTarget;
    values_.visualisation = fresh.visualisation;
    values_.labelTemplateType = fresh.labelTemplateType;
    clearElements();
}

unsigned int ImageDataObject::getNumberOfDrawSteps() const
{
    unsigned int steps = 0;
    for (ImageDataElement const *element : elements_)
        steps = std::max(steps, element->getNumberOfDrawSteps());
    return steps;
}

bool ImageDataObject::hasArrows() const
{
    return std::any_of(elements_.begin(), elements_.end(),
                       [](ImageDataElement const *element) { return element->hasArrows(); });
}

void ImageDataObject::scale(double factor)
{
    for (ImageDataElement *element : elements_)
        element->scale(factor);
}

void ImageDataObject::draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &clip,
                           Legend2::LegendHandler const *legend, Rotation const &rotation,
                           ImageDataVisualisation const &visualisation, Transformation const *transformation,
                           unsigned int step) const
{
    for (ImageDataElement const *element : elements_)
        element->draw(painter, origin, scale, clip, legend, rotation, visualisation, transformation, step);
}

void ImageDataObject::save(IO::OutStream *stream) const
{
    Block block;
    for (ImageDataElement const *element : elements_)
        block.types.push_back(element->getType());
    block.labelTemplateType = static_cast<unsigned int>(values_.labelTemplateType);
    block.hasTokenContainer = tokenContainer_ != nullptr;
    block.interfaceIsContainer = values_.tokenInterface == tokenContainer_;

    saveBlock(stream, BLOCK_VERSION, [&](auto &archive) { Block::fields(archive, std::as_const(block), values_); });
    for (ImageDataElement const *element : elements_)
        element->save(stream);
    values_.visualisation.save(stream);
    if (tokenContainer_)
        tokenContainer_->save(stream);
}

void ImageDataObject::load(IO::InStream *stream)
{
    ImageDataObject read{QString()};
    Block block;
    unsigned int const version =
        loadBlock(stream, BLOCK_VERSION, [&](BlockReader &reader) { Block::fields(reader, block, read.values_); });
    read.values_.labelTemplateType =
        static_cast<LabelElementCreator::Element_t>(static_cast<int>(block.labelTemplateType));
    read.loadElements(stream, block.types);
    // Older objects keep a look of their own.
    read.values_.visualisation = ImageDataVisualisation(false);
    if (version >= FIRST_LOOK_VERSION)
        read.values_.visualisation.load(stream);
    read.loadTokens(stream, block, version);
    swap(read);
}

void ImageDataObject::loadElements(IO::InStream *stream, std::vector<ImageDataElement::Type_t> const &types)
{
    for (ImageDataElement::Type_t type : types) {
        std::unique_ptr<ImageDataElement> element(ImageDataElement::create(type));
        element->load(stream);
        elements_.push_back(element.get());
        element.release();
    }
}

void ImageDataObject::loadTokens(IO::InStream *stream, Block const &block, unsigned int version)
{
    bool const isImported = version <= REGISTRY_VERSION;
    if (block.hasTokenContainer || isImported) {
        auto container = std::make_unique<TokenContainer>();
        if (version < REGISTRY_VERSION)
            Import::importTokenData(stream, container.get());
        else if (isImported)
            Import::importDataInterface(stream, container.get());
        else
            container->load(stream);
        setTokenContainer(container.release());
    }
    if (block.interfaceIsContainer || isImported)
        values_.tokenInterface = tokenContainer_;
}

} // namespace Zem::Fig2
