#include "ZemFig2Symbol.h"

#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 4; // 2: spacing; 4: types renumbered
constexpr unsigned int TEXT_VERSION = 1;

constexpr std::array<char const *, 14> TYPE_WORDS{"circle",   "box",   "pyramid", "cheque", "star",    "hexagon", "triangle",
                                                  "cross",    "border", "house",   "corners", "none",   "marker",  "spot"};

/// Version 3 counted "none" as 0 and every other type one higher than today.
unsigned int typeOfVersion3(unsigned int stored)
{
    return stored == 0 ? static_cast<unsigned int>(Symbol::TYPE_NONE) : stored - 1;
}

} // namespace

Symbol const Symbol::null(Symbol::TYPE_NONE, 0.0, false);

std::vector<Symbol::Type> Symbol::getAllSymbols()
{
    return {TYPE_NONE,    TYPE_CIRCLE,   TYPE_BOX,   TYPE_PYRAMID, TYPE_CHEQUE, TYPE_STAR,    TYPE_HEXAGON,
            TYPE_TRIANGLE, TYPE_CROSS,    TYPE_BORDER, TYPE_HOUSE,   TYPE_CORNERS, TYPE_MARKER,  TYPE_SPOT};
}

QString Symbol::getTypeId(Type type)
{
    return wordOf(TYPE_WORDS, type);
}

QString Symbol::getSymbolName(Type type)
{
    return translate("Figure_Symbol", getTypeId(type).toLatin1().constData());
}

Symbol::Type Symbol::getTypeFromId(QString const &id)
{
    std::optional<Type> const type = valueOf<Type>(TYPE_WORDS, id);
    if (!type)
        throw ParamError(translate("Figure_Painter_err", "unknown symbol type: %1").arg(id), -1);
    return *type;
}

namespace {

/// The block as it is stored: the type is a plain number until its version tells what it means.
struct SymbolBlock
{
    unsigned int type = 0;
    double size = 0.0;
    Color color{0, 0, 0};
    bool showValue = false;
    unsigned int digits = 2;
    unsigned int spacing = 0;

    template <class Archive, class Self>
    static void fields(Archive &archive, Self &self)
    {
        archive.field(self.type);
        archive.field(self.size);
        archive.field(self.color);
        archive.field(self.showValue);
        archive.field(self.digits);
        archive.field(self.spacing, Since{2}, 0U);
    }
};

} // namespace

void Symbol::save(IO::OutStream *stream) const
{
    SymbolBlock const block{static_cast<unsigned int>(type_), size_, color_, showValue_, digits_, spacing_};
    saveBlock(stream, BLOCK_VERSION, [&block](auto &archive) { SymbolBlock::fields(archive, block); });
    Tools::save(stream, font_);
}

void Symbol::load(IO::InStream *stream)
{
    SymbolBlock block;
    unsigned int const version =
        loadBlock(stream, BLOCK_VERSION, [&block](auto &archive) { SymbolBlock::fields(archive, block); });
    // Versions 1 and 2 were written before "none" moved to the front; only version 3 counts differently.
    unsigned int const type = version == 3 ? typeOfVersion3(block.type) : block.type;
    if (type >= TYPE_WORDS.size())
        throw IO::StreamException(translate("Fig_Block_err", "illegal value %1 in block").arg(block.type));
    Font font;
    Tools::load(stream, &font);

    type_ = static_cast<Type>(type);
    size_ = block.size;
    color_ = block.color;
    showValue_ = block.showValue;
    digits_ = block.digits;
    spacing_ = block.spacing;
    font_ = font;
}

template <class Archive, class Self>
void Symbol::textItems(Archive &archive, Self &self)
{
    archive.list(self.type_, TYPE_WORDS.size());
    archive.item(self.size_);
    archive.item(self.color_);
    archive.item(self.showValue_);
    archive.item(self.digits_);
    archive.item(self.spacing_);
}

std::ostream &operator<<(std::ostream &stream, Symbol const &symbol)
{
    return saveText(stream, TEXT_VERSION, [&symbol](auto &archive) { Symbol::textItems(archive, symbol); });
}

std::istream &operator>>(std::istream &stream, Symbol &symbol)
{
    return loadRecord(stream, TEXT_VERSION, symbol,
                      [](auto &archive, Symbol &read) { Symbol::textItems(archive, read); });
}

QString Symbol::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    writer.item(PARAM_TYPE, getTypeId(type_));
    writer.item(PARAM_SIZE, size_);
    writer.item(PARAM_COLOR, color_);
    writer.item(PARAM_SHOW_VALUE, showValue_);
    writer.item(PARAM_DIGITS, digits_);
    writer.item(PARAM_FONT, font_.getParameterString());
    writer.item(PARAM_SPACING, spacing_);
    return parameters;
}

void Symbol::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    if (reader.exists(PARAM_TYPE))
        type_ = getTypeFromId(Parse::getString(parameters, reader.key(PARAM_TYPE)));
    reader.item(PARAM_SIZE, size_, 0.0, ANY_DOUBLE);
    reader.item(PARAM_COLOR, color_);
    reader.item(PARAM_SHOW_VALUE, showValue_);
    reader.item(PARAM_DIGITS, digits_);
    reader.item(PARAM_SPACING, spacing_);
    if (!reader.exists(PARAM_FONT))
        return;
    QString const font = Parse::getString(parameters, reader.key(PARAM_FONT));
    if (!font_.createFromParameterString(font))
        throw ParamError(translate("Figure_Painter_err", "illegal symbol font: %1").arg(font), -1);
}

} // namespace Zem::Fig2
