// The persistent forms of ImageLabel.
#include "ZemFig2ImageLabel.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 2; // 2: no visibility, which all elements have
constexpr unsigned int TEXT_VERSION = 1;

} // namespace

template <class Archive, class Self>
void ImageLabel::blockFields(Archive &archive, Self &self, bool &hasContainer)
{
    archive.list(self.labelType_, ImageLabelCreator::NUMBER_OF_TYPES);
    if constexpr (Archive::isReader) {
        if (archive.version() == 1) {
            bool visible = false;
            archive.field(visible);
            self.setVisible(visible);
        }
    }
    archive.field(self.labelVisible_);
    archive.field(hasContainer);
    archive.field(self.imageElementId_);
}

void ImageLabel::save(IO::OutStream *stream, int a, int b) const
{
    LabelBase::save(stream, a, b);
    bool hasContainer = labelTokenContainer_ != nullptr;
    saveBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, *this, hasContainer); });
    if (hasContainer)
        labelTokenContainer_->save(stream);
}

void ImageLabel::load(IO::InStream *stream, int a, int b)
{
    LabelBase::load(stream, a, b);
    labelTokenContainer_.reset();
    bool hasContainer = false;
    loadBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, *this, hasContainer); });
    if (!hasContainer)
        return;
    auto container = std::make_unique<TokenContainer>();
    container->load(stream);
    labelTokenContainer_ = std::move(container);
}

template <class Archive, class Self>
void ImageLabel::textItems(Archive &archive, Self &self)
{
    archive.list(self.labelType_, ImageLabelCreator::NUMBER_OF_TYPES);
    archive.item(self.labelVisible_);
    archive.item(self.imageElementId_);
}

std::ostream &ImageLabel::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return LabelBase::saveToStream(stream);
}

std::istream &ImageLabel::loadFromStream(std::istream &stream)
{
    loadText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return LabelBase::loadFromStream(stream);
}

template <class Archive, class Self>
void ImageLabel::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_LABEL_VISIBLE, self.labelVisible_);
    archive.item(PARAM_IMAGE_ELEMENT_ID, self.imageElementId_);
}

QString ImageLabel::getParameterString() const
{
    QString parameters = LabelBase::getParameterString();
    ParameterWriter writer(parameters);
    parameterItems(writer, *this);
    return parameters;
}

void ImageLabel::createFromParameterString(QString &parameters)
{
    LabelBase::createFromParameterString(parameters);
    ParameterReader reader(parameters);
    parameterItems(reader, *this);
    invalidate();
}

} // namespace Zem::Fig2
