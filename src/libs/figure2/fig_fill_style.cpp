#include "ZemFig2FillStyle.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr unsigned int TEXT_VERSION = 1;

} // namespace

template <class Archive, class Self>
void FillStyle::blockFields(Archive &archive, Self &self)
{
    archive.field(self.filled_);
    archive.field(self.color_);
}

void FillStyle::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void FillStyle::load(IO::InStream *stream)
{
    FillStyle read;
    loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
    *this = read;
}

template <class Archive, class Self>
void FillStyle::textItems(Archive &archive, Self &self)
{
    archive.item(self.filled_);
    archive.item(self.color_);
}

std::ostream &operator<<(std::ostream &stream, FillStyle const &style)
{
    return saveText(stream, TEXT_VERSION, [&style](auto &archive) { FillStyle::textItems(archive, style); });
}

std::istream &operator>>(std::istream &stream, FillStyle &style)
{
    return loadRecord(stream, TEXT_VERSION, style,
                      [](auto &archive, FillStyle &read) { FillStyle::textItems(archive, read); });
}

template <class Archive, class Self>
void FillStyle::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_FILLED, self.filled_);
    archive.item(PARAM_COLOR, self.color_);
}

QString FillStyle::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    parameterItems(writer, *this);
    return parameters;
}

void FillStyle::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    parameterItems(reader, *this);
}

void FillStyle::createFromV541ParameterString(QString &parameters, QString const &prefix)
{
    V541ParameterReader reader(parameters, prefix);
    parameterItems(reader, *this);
}

} // namespace Zem::Fig2
