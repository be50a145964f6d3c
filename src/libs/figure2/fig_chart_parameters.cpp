#include "ZemFig2ChartParameters.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

#include <tuple>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 5; // 2: a count dropped; 3: name; 4: default name; 5: group name
constexpr unsigned int TEXT_VERSION = 2;  // 2: group name
constexpr char const *ERROR_CONTEXT = "Figure_ChartData_err";

constexpr Color CURVE_COLOR{56, 56, 180};

constexpr std::array<char const *, 7> STYLE_WORDS{"line", "bars", "points", "spline", "spikes", "x_marker", "y_marker"};
// "lines" is deliberately not the word of the parameter.
constexpr std::array<char const *, 7> STYLE_NAMES{"lines",  "bars",     "points",  "spline",
                                                  "spikes", "x marker", "y marker"};

/// "No symbol", the first of all, tells nothing apart.
unsigned int numberOfUsedSymbols()
{
    return static_cast<unsigned int>(Symbol::getAllSymbols().size()) - 1;
}

} // namespace

Color const ChartVisualisation::_colors[] = {
    Color(0, 0, 128),   Color(176, 176, 8),   Color(180, 56, 56), Color(0, 255, 255), Color(240, 210, 0),
    Color(255, 0, 255), Color(100, 150, 250), Color(0, 255, 0),   Color(255, 0, 0),   Color(255, 255, 255)}; // the end

namespace {

unsigned int countToWhite(Color const *colors)
{
    unsigned int count = 0;
    while (!(colors[count] == Color(255, 255, 255)))
        ++count;
    return count;
}

} // namespace

unsigned int ChartVisualisation::getNumberOfVisualisations()
{
    return countToWhite(_colors) * numberOfUsedSymbols();
}

ChartVisualisation ChartVisualisation::getVisualisation(unsigned int index)
{
    unsigned int const symbols = numberOfUsedSymbols();
    unsigned int const total = getNumberOfVisualisations();
    // Deliberate: the total itself is not wrapped.
    if (index > total)
        index %= total;
    unsigned int symbol = index / symbols;
    if (symbol >= symbols)
        symbol = 0;
    return ChartVisualisation(Symbol::getAllSymbols()[symbol + 1], _colors[index % countToWhite(_colors)]);
}

bool ChartVisualisation::operator<(ChartVisualisation const &other) const
{
    auto const key = [](ChartVisualisation const &look) {
        return std::make_tuple(look.symbolType_, look.color_.getRed(), look.color_.getGreen(), look.color_.getBlue());
    };
    return key(*this) < key(other);
}

ChartParameters::ChartParameters()
    : symbol_(Symbol::TYPE_CIRCLE, 0.5, false), lineStyle_(0.1, LineStyle::STYLE_FULL, CURVE_COLOR),
      fillStyle_(CURVE_COLOR)
{
    symbol_.setColor(CURVE_COLOR);
}

ChartParameters::ChartParameters(Style_t style, Symbol const &symbol, LineStyle const &lineStyle,
                                 FillStyle const &fillStyle)
    : style_(style), symbol_(symbol), lineStyle_(lineStyle), fillStyle_(fillStyle)
{
}

ChartVisualisation ChartParameters::getVisualisation() const
{
    return ChartVisualisation(symbol_.getType(), symbol_.getColor());
}

void ChartParameters::setVisualisation(ChartVisualisation const &visualisation)
{
    symbol_.setType(visualisation.getSymbolType());
    symbol_.setColor(visualisation.getColor());
    lineStyle_.setColor(visualisation.getColor());
    fillStyle_.setColor(visualisation.getColor());
}

std::vector<ChartParameters::Style_t> ChartParameters::getAllStyles()
{
    return {STYLE_LINE, STYLE_BARS, STYLE_POINTS, STYLE_SPLINE, STYLE_SPIKES, STYLE_X_MARKER, STYLE_Y_MARKER};
}

QString ChartParameters::getStyleParameterName(Style_t style)
{
    return wordOf(STYLE_WORDS, style);
}

QString ChartParameters::getStyleName(Style_t style)
{
    auto const index = static_cast<unsigned int>(style);
    return index < STYLE_NAMES.size() ? translate("Figure_ChartParameters", STYLE_NAMES[index]) : QString();
}

template <class Archive, class Self>
void ChartParameters::blockFields(Archive &archive, Self &self)
{
    archive.field(self.name_, Since{3}, QString());
    archive.field(self.useDefaultName_, Since{4}, true);
    archive.field(self.showGroupName_, Since{5}, false);
    archive.list(self.style_, STYLE_WORDS.size());
    archive.field(self.computeColor_);
    archive.field(self.numberOfBasePoints_);
    if constexpr (Archive::isReader) {
        if (archive.version() == 1)
            archive.template drop<unsigned int>();
    }
}

void ChartParameters::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    symbol_.save(stream);
    lineStyle_.save(stream);
    fillStyle_.save(stream);
}

void ChartParameters::load(IO::InStream *stream)
{
    loadWrapped(ERROR_CONTEXT, "cannot load figure chart parameters: %1", [&] {
        ChartParameters read;
        loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        read.symbol_.load(stream);
        read.lineStyle_.load(stream);
        read.fillStyle_.load(stream);
        *this = read;
    });
}

template <class Archive, class Self>
void ChartParameters::textItems(Archive &archive, Self &self)
{
    archive.item(self.name_);
    archive.item(self.useDefaultName_);
    archive.item(self.showGroupName_, Since{2}, false);
    archive.list(self.style_, STYLE_WORDS.size());
    archive.item(self.computeColor_);
    archive.item(self.numberOfBasePoints_);
    archive.record(self.symbol_);
    archive.record(self.lineStyle_);
    archive.record(self.fillStyle_);
}

std::ostream &operator<<(std::ostream &stream, ChartParameters const &parameters)
{
    return saveText(stream, TEXT_VERSION,
                    [&parameters](auto &archive) { ChartParameters::textItems(archive, parameters); });
}

std::istream &operator>>(std::istream &stream, ChartParameters &parameters)
{
    TextReader reader(stream);
    unsigned int const version = reader.version();
    if (version < 1 || version > TEXT_VERSION) {
        reader.fail();
        return stream;
    }
    ChartParameters read = parameters;
    ChartParameters::textItems(reader, read);
    if (reader.good())
        parameters = read;
    return stream;
}

QString ChartParameters::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    writer.item(PARAM_NAME, name_);
    writer.item(PARAM_USE_DEFAULT_NAME, useDefaultName_);
    writer.item(PARAM_SHOW_GROUP_NAME, showGroupName_);
    writer.item(PARAM_STYLE, getStyleParameterName(style_));
    writer.record(PARAM_SYMBOL, symbol_);
    writer.record(PARAM_LINE_STYLE, lineStyle_);
    writer.record(PARAM_FILL_STYLE, fillStyle_);
    writer.item(PARAM_COMPUTE_COLOR, computeColor_);
    writer.item(PARAM_NUM_BASE_POINTS, numberOfBasePoints_);
    return parameters;
}

// Deliberately another order than that of writing: it decides which of several bad values is reported.
void ChartParameters::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    if (reader.exists(PARAM_STYLE))
        readStyle(parameters, reader.key(PARAM_STYLE));
    reader.item(PARAM_NAME, name_);
    reader.item(PARAM_USE_DEFAULT_NAME, useDefaultName_);
    reader.item(PARAM_SHOW_GROUP_NAME, showGroupName_);
    reader.item(PARAM_COMPUTE_COLOR, computeColor_);
    reader.item(PARAM_NUM_BASE_POINTS, numberOfBasePoints_);
    reader.record(PARAM_SYMBOL, symbol_);
    reader.record(PARAM_LINE_STYLE, lineStyle_);
    reader.record(PARAM_FILL_STYLE, fillStyle_);
}

void ChartParameters::readStyle(QString &parameters, QString const &key)
{
    QString const word = Parse::getString(parameters, key);
    for (Style_t style : getAllStyles()) {
        if (word == getStyleParameterName(style)) {
            style_ = style;
            return;
        }
    }
    throw ParamError(translate(ERROR_CONTEXT, "unknown chart style: %1").arg(word), -1);
}

} // namespace Zem::Fig2
