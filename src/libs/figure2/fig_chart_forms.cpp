// The persistent forms of ChartBase.
#include "ZemFig2Chart.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

#include <ZemError.h>

namespace Zem::Fig2 {

namespace {

// 3: size and 5: type of the point markers, 4: switch for them, 9: margins, 10: the markers' symbol stands behind
constexpr unsigned int BLOCK_VERSION = 10;
constexpr unsigned int FIRST_SYMBOL_VERSION = 10;
constexpr int FIRST_BLOCK_ELEMENT_VERSION = 3; ///< of the element block
constexpr unsigned int SYMBOL_TYPES = 14;

[[noreturn]] void throwNoTextForm(char const *function, unsigned int line)
{
    throw ProgError(function, "fig_chart", line, "function not implemented");
}

/// What blocks held of the point markers before there was a symbol for them.
struct OldPointMarker
{
    Symbol::Type type = Symbol::TYPE_MARKER;
    double size = 5.0;

    template <class Reader>
    void read(Reader &reader, unsigned int version)
    {
        if (version >= 5)
            reader.list(type, SYMBOL_TYPES);
        reader.keep(size, Since{3});
    }

    Symbol symbol(Color const &color) const
    {
        Symbol symbol(type, size, false);
        symbol.setColor(color);
        return symbol;
    }
};

} // namespace

template <class Archive, class Self>
void ChartBase::blockFields(Archive &archive, Self &self)
{
    archive.field(self.showCurrentStage_);
    archive.field(self.showPointMarkers_, Since{4}, false);
    archive.field(self.leftMargin_, Since{9}, 0.0);
    archive.field(self.rightMargin_, Since{9}, 0.0);
}

void ChartBase::save(IO::OutStream *stream, int a, int b) const
{
    AreaBase::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    axisX_.save(stream);
    axisY_.save(stream);
    grid_.save(stream);
    innerBorder_.save(stream);
    currentStageStyle_.save(stream);
    pointMarkerSymbol_.save(stream);
}

void ChartBase::load(IO::InStream *stream, int a, int b)
{
    AreaBase::load(stream, a, b);
    OldPointMarker marker;
    bool const hasBlock = getBlockVersion() >= FIRST_BLOCK_ELEMENT_VERSION;
    unsigned int version = 0;
    if (hasBlock) {
        version = loadBlock(stream, BLOCK_VERSION, [this, &marker](BlockReader &reader) {
            blockFields(reader, *this);
            if (reader.version() < FIRST_SYMBOL_VERSION)
                marker.read(reader, reader.version());
        });
    }
    axisX_.load(stream);
    axisY_.load(stream);
    grid_.load(stream);
    innerBorder_.load(stream);
    currentStageStyle_ = LineStyle(0.1, LineStyle::STYLE_DOTTED, Color(0, 0, 0));
    if (hasBlock)
        currentStageStyle_.load(stream);
    pointMarkerSymbol_ = marker.symbol(currentStageStyle_.getColor());
    if (version >= FIRST_SYMBOL_VERSION)
        pointMarkerSymbol_.load(stream);
}

std::ostream &ChartBase::saveToStream(std::ostream &) const
{
    throwNoTextForm("Zem::Fig2::ChartBase::saveToStream", __LINE__);
}

std::istream &ChartBase::loadFromStream(std::istream &)
{
    throwNoTextForm("Zem::Fig2::ChartBase::loadFromStream", __LINE__);
}

template <class Archive, class Self>
void ChartBase::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_SHOW_CURRENT_STAGE, self.showCurrentStage_);
    archive.item(PARAM_SHOW_POINT_MARKERS, self.showPointMarkers_);
    archive.item(PARAM_LEFT_MARGIN, self.leftMargin_);
    archive.item(PARAM_RIGHT_MARGIN, self.rightMargin_);
    archive.record(PARAM_AXIS_X, self.axisX_);
    archive.record(PARAM_AXIS_Y, self.axisY_);
    archive.record(PARAM_GRID, self.grid_);
    archive.record(PARAM_INNER_BORDER, self.innerBorder_);
    archive.record(PARAM_CURRENT_STAGE_STYLE, self.currentStageStyle_);
}

QString ChartBase::getParameterString() const
{
    QString parameters = AreaBase::getParameterString();
    ParameterWriter writer(parameters);
    parameterItems(writer, *this);
    writer.record(PARAM_POINT_MARKER_SYMBOL, pointMarkerSymbol_);
    return parameters;
}

void ChartBase::createFromParameterString(QString &parameters)
{
    AreaBase::createFromParameterString(parameters);
    ParameterReader reader(parameters);
    parameterItems(reader, *this);
    readOldPointMarker(parameters);
    reader.record(PARAM_POINT_MARKER_SYMBOL, pointMarkerSymbol_);
}

void ChartBase::readOldPointMarker(QString &parameters)
{
    ParameterReader reader(parameters);
    if (reader.exists(PARAM_CURRENT_STAGE_MARKER_SYMBOL)) {
        QString type;
        reader.item(PARAM_CURRENT_STAGE_MARKER_SYMBOL, type);
        pointMarkerSymbol_.setType(Symbol::getTypeFromId(type));
    }
    double size = pointMarkerSymbol_.getSize();
    reader.item(PARAM_CURRENT_STAGE_MARKER_SIZE, size, 0.0, ANY_DOUBLE);
    pointMarkerSymbol_.setSize(size);
}

/// The fields of the block and the records behind it, in front of what area elements write. `token` receives the chart
/// token, which stands behind them.
std::istream &ChartBase::loadOldText(std::istream &stream, QString *token)
{
    TextReader reader(stream);
    unsigned int const version = reader.version();
    if (version > BLOCK_VERSION)
        throwWrongBlockVersion();
    if (version > 0) {
        reader.item(showCurrentStage_);
        reader.item(showPointMarkers_, Since{4}, false);
        reader.item(leftMargin_, Since{9}, 0.0);
        reader.item(rightMargin_, Since{9}, 0.0);
        OldPointMarker marker;
        if (version < FIRST_SYMBOL_VERSION)
            marker.read(reader, version);
        reader.record(axisX_);
        reader.record(axisY_);
        grid_.loadFromStream(stream);
        reader.record(innerBorder_);
        reader.record(currentStageStyle_);
        pointMarkerSymbol_ = marker.symbol(currentStageStyle_.getColor());
        if (version >= FIRST_SYMBOL_VERSION)
            reader.record(pointMarkerSymbol_);
        reader.item(*token);
    }
    invalidate();
    return AreaBase::loadFromStream(stream);
}

} // namespace Zem::Fig2
