#include "ZemFig2ImageLabelCreator.h"

#include "ZemFig2ImageLabel.h"
#include "fig_block.h"
#include "fig_words.h"

#include <ZemError.h>

#include <memory>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

constexpr std::array<char const *, ImageLabelCreator::NUMBER_OF_TYPES> TYPE_IDS{
    "unknown",    "point",       "line",           "angle",       "displacement_field", "imported_image_data",
    "info_label", "strain_grid", "strain_section", "stage_point", "dof_origin"};

[[noreturn]] void fail(char const *function, unsigned int line, char const *text, ImageLabelCreator::Type_t type)
{
    throw ProgError(function, "fig_image_label", line, QString::fromLatin1(text).arg(type).toLatin1().constData());
}

} // namespace

/// Never destroyed: a creator may be destroyed later than any other object of the process.
ImageLabelCreator::Creators &ImageLabelCreator::_creators()
{
    static auto *const creators = new Creators;
    return *creators;
}

ImageLabelCreator::Creators const &ImageLabelCreator::getCreators()
{
    return _creators();
}

ImageLabelCreator::ImageLabelCreator(Type_t type) : type_(type)
{
    if (!_creators().emplace(type, this).second)
        fail("Zem::Fig2::ImageLabelCreator::ImageLabelCreator", __LINE__,
             "Duplicate element creator registered for element type %1", type);
}

ImageLabelCreator::~ImageLabelCreator() noexcept(false)
{
    if (_creators().erase(type_) == 0)
        fail("Zem::Fig2::ImageLabelCreator::~ImageLabelCreator", __LINE__, "Creator not registered for element type %1",
             type_);
}

void ImageLabelCreator::destroyCreators()
{
    while (!_creators().empty())
        delete _creators().begin()->second;
}

ImageLabel *ImageLabelCreator::create(Type_t type)
{
    auto const creator = _creators().find(type);
    if (creator == _creators().end())
        fail("Zem::Fig2::ImageLabelCreator::create", __LINE__, "No image label creator found for element type %1",
             type);
    return creator->second->create();
}

void ImageLabelCreator::save(IO::OutStream *stream, ImageLabel const *label)
{
    saveBlock(stream, BLOCK_VERSION, [label](auto &archive) { archive.list(label->getLabelType(), NUMBER_OF_TYPES); });
    label->save(stream, 0, 0);
}

ImageLabel *ImageLabelCreator::load(IO::InStream *stream)
{
    Type_t type = TYPE_UNKNOWN;
    loadBlock(stream, BLOCK_VERSION, [&type](BlockReader &archive) { archive.list(type, NUMBER_OF_TYPES); });
    std::unique_ptr<ImageLabel> label(create(type));
    label->load(stream, 0, 0);
    return label.release();
}

QString ImageLabelCreator::getLabelTypeId(Type_t type)
{
    return wordOf(TYPE_IDS, type);
}

ImageLabelCreator::Type_t ImageLabelCreator::parseLabelTypeId(QString const &id)
{
    std::optional<Type_t> const type = valueOf<Type_t>(TYPE_IDS, id);
    if (!type)
        throw ParamError(translate("Figure_ImageLabel_err", "unknown image label type '%1'").arg(id), -1);
    return *type;
}

} // namespace Zem::Fig2
