// The persistent forms of Legend.
#include "ZemFig2Legend.h"

#include "ZemFig2Axis.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

#include <map>

namespace Zem::Fig2 {

namespace {

// 2: local scale; 3: outline of the boxes; 4: equal blocks; 5: three sources of the scale; 6: size rule; 7: histogram
// and tolerances
constexpr unsigned int BLOCK_VERSION = 7;
constexpr unsigned int TEXT_VERSION = 1;
constexpr unsigned int FIRST_LOCAL_VERSION = 2;
constexpr unsigned int FIRST_TICK_BOX_VERSION = 3;
constexpr unsigned int FIRST_MODE_VERSION = 5;
constexpr unsigned int FIRST_SIZE_RULE_VERSION = 6;
constexpr unsigned int FIRST_HISTOGRAM_VERSION = 7;
constexpr unsigned int NUMBER_OF_MODES = 5; ///< two more than there are words

constexpr std::array<char const *, 3> MODE_WORDS{"element", "3d", "manual"};

/// Modes beyond are written as the last one.
QString wordOf(Legend::LegendDataMode mode)
{
    return wordOf(MODE_WORDS, std::min(mode, Legend::LEGEND_DATA_MODE_MANUAL));
}

/// The first legends carried an axis.
void dropAxis(IO::InStream *stream)
{
    Axis(Axis::VERTICAL_LEFT).load(stream);
}

} // namespace

template <class Archive, class Self, class Flag>
void Legend::blockFields(Archive &archive, Self &self, Flag &showTolerances)
{
    if constexpr (Archive::isReader) {
        if (archive.version() < FIRST_MODE_VERSION) {
            bool fromElement = false;
            archive.field(fromElement);
            self.legendDataMode_ = fromElement ? LEGEND_DATA_MODE_ELEMENT : LEGEND_DATA_MODE_MANUAL;
        } else {
            archive.list(self.legendDataMode_, NUMBER_OF_MODES);
        }
        if (archive.version() == 1)
            archive.field(self.unitTitle_);
    } else {
        archive.list(self.legendDataMode_, NUMBER_OF_MODES);
    }
    archive.field(self.equalSizedBlocks_, Since{4}, false);
    archive.field(self.barWidth_);
    archive.field(self.showHistogram_, Since{FIRST_HISTOGRAM_VERSION}, false);
    archive.field(showTolerances, Since{FIRST_HISTOGRAM_VERSION}, false);
}

/// Unlike other elements the legend's own block comes before that of the area.
void Legend::save(IO::OutStream *stream, int a, int b) const
{
    LocalScale const local = getLocalScale();
    saveBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, *this, local.showTolerances); });
    AreaBase::save(stream, a, b);
    tickStyle_.save(stream);
    tickBoxStyle_.save(stream);
    local.legend->save(stream);
    local.data->save(stream);
    local.tolerance->save(stream);
    local.histogram->save(stream);
}

void Legend::load(IO::InStream *stream, int a, int b)
{
    updateInternalFromLocal();
    loadWrapped("Figure_Legend_err", "cannot load figure legend: %1", [&] {
        unsigned int const version = loadBlock(
            stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this, localShowTolerances_); });
        AreaBase::load(stream, a, b);
        if (version == 1)
            dropAxis(stream);
        tickStyle_.load(stream);
        if (version >= FIRST_TICK_BOX_VERSION)
            tickBoxStyle_.load(stream);
        loadLocalScale(stream, version);
        legacyResize_ = version < FIRST_SIZE_RULE_VERSION;
    });
    updateLocalFromInternal();
}

void Legend::loadLocalScale(IO::InStream *stream, unsigned int version)
{
    if (version >= FIRST_LOCAL_VERSION) {
        localLegend_.load(stream);
        localData_.load(stream);
    }
    localTolerance_ = Legend2::ToleranceParams();
    localHistogram_.clear();
    if (version >= FIRST_HISTOGRAM_VERSION) {
        localTolerance_.load(stream);
        localHistogram_.load(stream);
    }
}

template <class Archive, class Self>
void Legend::textItems(Archive &archive, Self &self)
{
    archive.list(self.legendDataMode_, NUMBER_OF_MODES);
    archive.item(self.equalSizedBlocks_);
    archive.item(self.barWidth_);
    archive.item(self.showHistogram_);
    archive.record(self.tickStyle_);
    archive.record(self.tickBoxStyle_);
}

namespace {

void writeHistogram(TextWriter &writer, Legend2::HistogramData const &histogram)
{
    std::map<double, unsigned int> counts;
    histogram.getHistogram(&counts);
    writer.item(static_cast<unsigned int>(counts.size()));
    for (auto const &[value, count] : counts) {
        writer.item(value);
        writer.item(count);
    }
}

void readHistogram(TextReader &reader, Legend2::HistogramData *histogram)
{
    std::map<double, unsigned int> counts;
    unsigned int left = 0;
    reader.item(left);
    for (; left > 0 && reader.good(); --left) {
        double value = 0.0;
        unsigned int count = 0;
        reader.item(value);
        reader.item(count);
        if (reader.good())
            counts.insert_or_assign(value, count);
    }
    histogram->clear();
    if (reader.good() && !histogram->addHistogram(counts))
        reader.fail();
}

/// Reads entries as one word of a text form.
template <class Read>
void readParameters(TextReader &reader, Read const &read)
{
    QString parameters;
    reader.item(parameters);
    if (!reader.good())
        return;
    try {
        read(parameters);
    } catch (ParamError const &) {
        reader.fail();
    }
}

} // namespace

/// The scale stands there as its parameters.
std::ostream &Legend::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](TextWriter &writer) {
        textItems(writer, *this);
        LocalScale const local = getLocalScale();
        writer.item(local.legend->getParameterString());
        writer.item(local.data->getParameterString());
        writer.item(local.showTolerances);
        writer.item(local.tolerance->getParameterString());
        writeHistogram(writer, *local.histogram);
    });
    return AreaBase::saveToStream(stream);
}

std::istream &Legend::loadFromStream(std::istream &stream)
{
    updateInternalFromLocal();
    loadText(stream, TEXT_VERSION, [this](TextReader &reader) {
        textItems(reader, *this);
        readParameters(reader, [this](QString &text) { localLegend_.createFromParameterString(text); });
        readParameters(reader, [this](QString &text) { localData_.createFromParameterString(text); });
        reader.item(localShowTolerances_);
        readParameters(reader, [this](QString &text) { localTolerance_.createFromParameterString(text); });
        readHistogram(reader, &localHistogram_);
    });
    updateLocalFromInternal();
    return AreaBase::loadFromStream(stream);
}

QString Legend::getParameterString(bool withData) const
{
    QString parameters = AreaBase::getParameterString();
    ParameterWriter writer(parameters);
    LocalScale const local = getLocalScale();
    writer.item(PARAM_LEGEND_DATA_MODE, wordOf(legendDataMode_));
    writer.item(PARAM_EQUAL_SIZED_BLOCKS, equalSizedBlocks_);
    writer.item(PARAM_BAR_WIDTH, barWidth_);
    writer.record(PARAM_TICK_BOX, tickBoxStyle_);
    writer.record(PARAM_TICK_LINE, tickStyle_);
    parameters += local.legend->getParameterString();
    if (withData)
        parameters += local.data->getParameterString();
    parameters += local.tolerance->getParameterString();
    writer.item(PARAM_SHOW_TOLERANCES, local.showTolerances);
    writer.item(PARAM_SHOW_HISTOGRAM, showHistogram_);
    return parameters;
}

namespace {

Legend::LegendDataMode modeOf(QString const &word)
{
    std::optional<Legend::LegendDataMode> const mode = valueOf<Legend::LegendDataMode>(MODE_WORDS, word);
    if (!mode)
        throw ParamError(translate("Figure_err", "unknown legend data mode '%1'").arg(word), -1);
    return *mode;
}

} // namespace

/// Of both keys the older one, which nothing writes any more, is read last.
template <class Reader>
void Legend::readOwnParameters(Reader &reader)
{
    if (reader.exists(PARAM_LEGEND_DATA_MODE)) {
        QString word;
        reader.item(PARAM_LEGEND_DATA_MODE, word);
        legendDataMode_ = modeOf(word);
    }
    if (reader.exists(PARAM_USE_DATA_FROM_ELEMENT)) {
        bool fromElement = false;
        reader.item(PARAM_USE_DATA_FROM_ELEMENT, fromElement);
        legendDataMode_ = fromElement ? LEGEND_DATA_MODE_ELEMENT : LEGEND_DATA_MODE_MANUAL;
    }
    reader.item(PARAM_EQUAL_SIZED_BLOCKS, equalSizedBlocks_);
    reader.item(PARAM_BAR_WIDTH, barWidth_);
    reader.item(PARAM_SHOW_TOLERANCES, localShowTolerances_);
    reader.item(PARAM_SHOW_HISTOGRAM, showHistogram_);
}

void Legend::createFromParameterString(QString &parameters)
{
    updateInternalFromLocal();
    AreaBase::createFromParameterString(parameters);
    ParameterReader reader(parameters);
    readOwnParameters(reader);
    reader.record(PARAM_TICK_BOX, tickBoxStyle_);
    reader.record(PARAM_TICK_LINE, tickStyle_);
    localLegend_.createFromParameterString(parameters);
    localData_.createFromParameterString(parameters);
    localTolerance_.createFromParameterString(parameters);
    updateLocalFromInternal();
}

/// There were no tolerances in that release.
void Legend::createFromV541ParameterString(QString &parameters)
{
    updateInternalFromLocal();
    AreaBase::createFromV541ParameterString(parameters);
    V541ParameterReader reader(parameters);
    readOwnParameters(reader);
    tickBoxStyle_.createFromV541ParameterString(parameters, PARAM_TICK_BOX);
    tickStyle_.createFromV541ParameterString(parameters, PARAM_TICK_LINE);
    localLegend_.createFromV541ParameterString(parameters);
    localData_.createFromV541ParameterString(parameters);
    updateLocalFromInternal();
}

} // namespace Zem::Fig2
