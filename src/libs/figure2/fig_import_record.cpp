#include "fig_import_record.h"

#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int OLD_LINE_STYLES = Import::OLD_LINE_DASH_DOTTED + 1;
constexpr unsigned int OLD_ALIGNMENTS = Import::OLD_AL_RIGHT + 1;
constexpr unsigned int OLD_FONT_FLAGS = 2 * Import::OLD_FONT_STRIKEOUT - 1;

unsigned int &importDepth()
{
    thread_local unsigned int depth = 0;
    return depth;
}

} // namespace

void throwImportError(char const *text, unsigned int number)
{
    throw IO::StreamException(translate("Figure_Import_err", text).arg(number));
}

ImportDepth::ImportDepth(Weight weight) : weight_(weight)
{
    if (importDepth() + weight > LIMIT)
        throw IO::StreamException(translate("Figure_Import_err", "figure is nested too deeply"));
    importDepth() += weight;
}

ImportDepth::~ImportDepth()
{
    importDepth() -= weight_;
}

void OldPen::read(BlockReader &reader)
{
    reader.field(width);
    reader.list(style, OLD_LINE_STYLES);
    reader.field(color);
}

LineStyle OldPen::lineStyle() const
{
    static constexpr LineStyle::Style STYLES[OLD_LINE_STYLES] = {LineStyle::STYLE_NONE, LineStyle::STYLE_FULL,
                                                                 LineStyle::STYLE_DASHED, LineStyle::STYLE_DOTTED,
                                                                 LineStyle::STYLE_DASH_DOTTED};
    return LineStyle(lengthOr(width, LineStyle().getWidth()), STYLES[style], color);
}

void OldBrush::read(BlockReader &reader)
{
    reader.field(filled);
    reader.field(color);
}

FillStyle OldBrush::fillStyle() const
{
    FillStyle style(color);
    style.setFilled(filled);
    return style;
}

void OldFont::read(BlockReader &reader)
{
    reader.field(family);
    reader.field(size);
    reader.field(flags);
    reader.field(color);
}

Font OldFont::font() const
{
    Font font;
    if (!family.isEmpty())
        font.setFamily(family);
    if (std::isfinite(size) && size > 0.0)
        font.setSize(size);
    // The flags have kept their values.
    font.setStyle(flags & OLD_FONT_FLAGS);
    return font;
}

void OldFrame::read(BlockReader &reader)
{
    reader.field(corner);
    reader.field(size);
}

void OldAlignment::read(BlockReader &reader)
{
    reader.list(value, OLD_ALIGNMENTS);
}

} // namespace Zem::Fig2
