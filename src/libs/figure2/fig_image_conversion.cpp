#include "ZemFig2ImageConversion.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text.h"
#include "fig_words.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr std::array<char const *, 6> TYPE_WORDS{"normal", "lighten", "overexposed", "range", "equalize", "pseudo"};

/// An unknown word selects the plain conversion: a picture is shown all the same.
ImageConversion::Type typeOfWord(QString const &word)
{
    return valueOf<ImageConversion::Type>(TYPE_WORDS, word).value_or(ImageConversion::TYPE_NORMAL);
}

} // namespace

template <class Archive, class Self>
void ImageConversion::blockFields(Archive &archive, Self &self)
{
    archive.list(self.type_, TYPE_WORDS.size());
    archive.field(self.min_);
    archive.field(self.max_);
}

void ImageConversion::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void ImageConversion::load(IO::InStream *stream)
{
    ImageConversion read;
    loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
    *this = read;
}

std::ostream &operator<<(std::ostream &stream, ImageConversion const &conversion)
{
    TextWriter writer(stream);
    writer.item(QStringLiteral("1"));
    writer.item(wordOf(TYPE_WORDS, conversion.type_));
    writer.item(QString::number(conversion.min_));
    writer.item(QString::number(conversion.max_));
    return stream;
}

std::istream &operator>>(std::istream &stream, ImageConversion &conversion)
{
    TextReader reader(stream);
    QString version;
    reader.item(version);
    if (version != QLatin1StringView("1"))
        return stream;
    QString type;
    QString min;
    QString max;
    reader.item(type);
    reader.item(min);
    reader.item(max);
    bool minIsNumber = false;
    bool maxIsNumber = false;
    ImageConversion read;
    read.type_ = typeOfWord(type);
    read.min_ = min.toInt(&minIsNumber);
    read.max_ = max.toInt(&maxIsNumber);
    if (!minIsNumber || !maxIsNumber)
        reader.fail();
    if (reader.good())
        conversion = read;
    return stream;
}

template <class Archive, class Self>
void ImageConversion::parameterItems(Archive &archive, Self &self)
{
    archive.list(PARAM_TYPE, self.type_, TYPE_WORDS);
    archive.item(PARAM_MIN, self.min_);
    archive.item(PARAM_MAX, self.max_);
}

QString ImageConversion::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    parameterItems(writer, *this);
    return parameters;
}

void ImageConversion::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    parameterItems(reader, *this);
}

} // namespace Zem::Fig2
