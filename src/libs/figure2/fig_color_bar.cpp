#include "ZemFig2ColorBar.h"

#include "ZemFig2Painter.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 3; // 2: one width, minimum length; 3: whether there is a value
constexpr unsigned int TEXT_VERSION = 1;
constexpr double DEFAULT_LENGTH = 10.0;
constexpr double SYMBOL_SHARE_OF_LENGTH = 0.125;

constexpr std::array<char const *, 4> SIDE_WORDS{"top", "bottom", "left", "right"};

} // namespace

void ColorBar::setValue(double value, bool valid)
{
    value_ = value;
    valueValid_ = valid;
}

BaVec2d<double> ColorBar::computeMinimumSize() const
{
    double length = minimumLength_;
    if (useVariableLength_)
        length = std::max(DEFAULT_LENGTH, minimumLength_);
    // Deliberately not turned with the strip: a bar at the top is `width` wide and `length` high.
    BaVec2d<double> const size =
        isHorizontal() ? BaVec2d<double>(width_, length) : BaVec2d<double>(length, width_);
    return size + BaVec2d<double>(border_.getWidth(), border_.getWidth());
}

/// The strip with its own axes: along it, and across it from side to side.
struct ColorBar::Strip
{
    bool horizontal;
    BaVec2d<double> corner;
    double length;
    double thickness;

    BaVec2d<double> vector(double along, double across) const
    {
        return horizontal ? BaVec2d<double>(along, across) : BaVec2d<double>(across, along);
    }
    BaVec2d<double> at(double along, double across) const { return corner + vector(along, across); }
};

ColorBar::Strip ColorBar::layOutStrip(BaVec2d<double> const &position, BaVec2d<double> const &size) const
{
    Strip strip{isHorizontal(), position, 0.0, 0.0};
    double const room = strip.horizontal ? size.x : size.y;
    strip.thickness = strip.horizontal ? size.y : size.x;
    strip.length = useVariableLength_ ? room : minimumLength_;
    if (strip.length < room)
        strip.corner = strip.at((room - strip.length) * 0.5, 0.0);
    return strip;
}

void ColorBar::draw(Painter *painter, BaVec2d<double> const &position, BaVec2d<double> const &size,
                    Rotation const &rotation) const
{
    Strip const strip = layOutStrip(position, size);
    double const middle = strip.length * 0.5;
    if (background_.getFilled())
        painter->drawRect(strip.corner, strip.vector(strip.length, strip.thickness), border_, background_, rotation);
    drawValue(painter, strip, rotation);
    if (border_.getStyle() != LineStyle::STYLE_NONE)
        painter->drawLine(strip.at(middle, 0.0), strip.at(middle, strip.thickness), border_, rotation);
    if (!valueValid_)
        return;
    double const symbolSize = std::min(strip.thickness / 3.0, strip.length * SYMBOL_SHARE_OF_LENGTH);
    // The sign stands at the end that the value points to, clear of the rim by its own size.
    double const sign = value_ < 0.0 ? -1.0 : 1.0;
    drawSymbol(painter, strip.at(middle + sign * (middle - symbolSize), strip.thickness * 0.5), symbolSize,
               value_ < 0.0 ? SYMBOL_MINUS : SYMBOL_PLUS, rotation);
}

double ColorBar::computeValueLength(double length, double largest) const
{
    double const half = length * 0.5;
    double const valueLength = value_ / largest * half;
    return std::isnan(valueLength) ? 0.0 : std::clamp(valueLength, std::min(-half, half), std::max(-half, half));
}

void ColorBar::drawValue(Painter *painter, Strip const &strip, Rotation const &rotation) const
{
    double const largest = std::max(std::abs(range_.x), std::abs(range_.y));
    if (!valueValid_ || largest == 0.0)
        return;
    double const valueLength = computeValueLength(strip.length, largest);
    double const begin = strip.length * 0.5 + std::min(valueLength, 0.0);
    painter->drawRect(strip.at(begin, 0.0), strip.vector(std::abs(valueLength), strip.thickness), LineStyle::null,
                      FillStyle(color_), rotation);
}

/// A plus of two strokes or a minus of one, `size` wide about `position`.
void ColorBar::drawSymbol(Painter *painter, BaVec2d<double> const &position, double size, Symbol symbol,
                          Rotation const &rotation) const
{
    BaVec2d<double> const across(size * 0.5, 0.0);
    BaVec2d<double> const along(0.0, size * 0.5);
    painter->drawLine(position - across, position + across, border_, rotation);
    if (symbol == SYMBOL_PLUS)
        painter->drawLine(position - along, position + along, border_, rotation);
}

template <class Archive, class Self>
void ColorBar::blockFields(Archive &archive, Self &self)
{
    archive.field(self.range_);
    archive.field(self.value_);
    archive.field(self.color_);
    archive.field(self.width_);
    if constexpr (Archive::isReader) {
        // Version 1 held a width for each axis.
        if (archive.version() == 1)
            archive.template drop<double>();
    }
    archive.field(self.useVariableLength_);
    archive.field(self.minimumLength_, Since{2}, 0.0);
    archive.list(self.side_, SIDE_WORDS.size());
    archive.field(self.valueValid_, Since{3}, true);
}

void ColorBar::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    border_.save(stream);
    background_.save(stream);
}

void ColorBar::load(IO::InStream *stream)
{
    loadWrapped("Figure_ColorBar_err", "cannot load figure color bar: %1", [&] {
        ColorBar read;
        loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        read.border_.load(stream);
        read.background_.load(stream);
        *this = read;
    });
}

template <class Archive, class Self>
void ColorBar::textItems(Archive &archive, Self &self)
{
    archive.item(self.range_);
    archive.item(self.value_);
    archive.item(self.color_);
    archive.item(self.width_);
    archive.item(self.useVariableLength_);
    archive.item(self.minimumLength_);
    archive.list(self.side_, SIDE_WORDS.size());
    archive.item(self.valueValid_);
    archive.record(self.border_);
    archive.record(self.background_);
}

std::ostream &operator<<(std::ostream &stream, ColorBar const &bar)
{
    return saveText(stream, TEXT_VERSION, [&bar](auto &archive) { ColorBar::textItems(archive, bar); });
}

std::istream &operator>>(std::istream &stream, ColorBar &bar)
{
    return loadRecord(stream, TEXT_VERSION, bar,
                      [](auto &archive, ColorBar &read) { ColorBar::textItems(archive, read); });
}

template <class Archive, class Self>
void ColorBar::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_RANGE, self.range_);
    archive.item(PARAM_VALUE, self.value_);
    archive.item(PARAM_VALUE_VALID, self.valueValid_);
    archive.item(PARAM_COLOR, self.color_);
    archive.item(PARAM_WIDTH, self.width_);
    archive.item(PARAM_VARIABLE_LENGTH, self.useVariableLength_);
    archive.item(PARAM_MINIMUM_LENGTH, self.minimumLength_);
    archive.word(PARAM_SIDE, self.side_, SIDE_WORDS, "Figure_ColorBar_err", "unknown color bar side");
    archive.record(PARAM_BORDER, self.border_);
    archive.record(PARAM_BACKGROUND, self.background_);
}

QString ColorBar::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    parameterItems(writer, *this);
    return parameters;
}

void ColorBar::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    parameterItems(reader, *this);
}

} // namespace Zem::Fig2
