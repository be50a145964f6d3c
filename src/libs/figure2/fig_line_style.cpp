#include "ZemFig2LineStyle.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 2; // 2: cap style
constexpr unsigned int TEXT_VERSION = 1;

constexpr std::array<char const *, 5> STYLE_WORDS{"none", "full", "dotted", "dashed", "dash dotted"};
constexpr std::array<char const *, 2> CAP_WORDS{"round", "sharp"};

} // namespace

std::vector<LineStyle::Style> LineStyle::getAllStyles()
{
    return {STYLE_NONE, STYLE_FULL, STYLE_DOTTED, STYLE_DASHED, STYLE_DASH_DOTTED};
}

QString LineStyle::getStyleParameterName(Style style)
{
    return wordOf(STYLE_WORDS, style);
}

QString LineStyle::getStyleName(Style style)
{
    return translate("Figure_LineStyle", getStyleParameterName(style).toLatin1().constData());
}

QString LineStyle::getCapStyleParameterName(CapStyle capStyle)
{
    return wordOf(CAP_WORDS, capStyle);
}

template <class Archive, class Self>
void LineStyle::blockFields(Archive &archive, Self &self)
{
    archive.field(self.width_);
    archive.list(self.style_, STYLE_WORDS.size());
    archive.field(self.color_);
    archive.keepList(self.capStyle_, CAP_WORDS.size(), Since{2});
}

void LineStyle::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void LineStyle::load(IO::InStream *stream)
{
    LineStyle read = *this;
    loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
    // Old files hold negative widths for lines that were never set up.
    if (read.width_ < 0.0)
        read.width_ = 1.0;
    *this = read;
}

template <class Archive, class Self>
void LineStyle::textItems(Archive &archive, Self &self)
{
    archive.item(self.width_);
    archive.list(self.style_, STYLE_WORDS.size());
    archive.item(self.color_);
    archive.list(self.capStyle_, CAP_WORDS.size());
}

std::ostream &operator<<(std::ostream &stream, LineStyle const &style)
{
    return saveText(stream, TEXT_VERSION, [&style](auto &archive) { LineStyle::textItems(archive, style); });
}

std::istream &operator>>(std::istream &stream, LineStyle &style)
{
    return loadRecord(stream, TEXT_VERSION, style,
                      [](auto &archive, LineStyle &read) { LineStyle::textItems(archive, read); });
}

template <class Archive, class Self>
void LineStyle::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_WIDTH, self.width_, 0.0, ANY_DOUBLE);
    archive.item(PARAM_COLOR, self.color_);
    archive.list(PARAM_STYLE, self.style_, STYLE_WORDS);
    archive.list(PARAM_CAP_STYLE, self.capStyle_, CAP_WORDS);
}

QString LineStyle::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    parameterItems(writer, *this);
    return parameters;
}

void LineStyle::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    parameterItems(reader, *this);
}

void LineStyle::createFromV541ParameterString(QString &parameters, QString const &prefix)
{
    V541ParameterReader reader(parameters, prefix);
    reader.item(PARAM_WIDTH, width_, 0.0, ANY_DOUBLE);
    reader.item(PARAM_COLOR, color_);
    if (reader.exists(PARAM_STYLE)) {
        QString const word = V541Parser::getString(parameters, reader.key(PARAM_STYLE));
        style_ = requireValueOf<Style>(STYLE_WORDS, word, "Figure_Painter_err", "unknown line style");
    }
    if (reader.exists(PARAM_CAP_STYLE)) {
        QString const word = V541Parser::getString(parameters, reader.key(PARAM_CAP_STYLE));
        capStyle_ = requireValueOf<CapStyle>(CAP_WORDS, word, "Figure_Painter_err", "unknown cap style");
    }
}

bool LineStyle::parameterExists(QString const &parameters, QString const &prefix)
{
    for (QLatin1StringView key : {PARAM_WIDTH, PARAM_COLOR, PARAM_STYLE, PARAM_CAP_STYLE}) {
        if (Parse::parameterExists(parameters, parameterKey(prefix, key)))
            return true;
    }
    return false;
}

} // namespace Zem::Fig2
