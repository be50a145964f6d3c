// The persistent forms of Element.
#include "ZemFig2Element.h"

#include "ZemFig2Connector.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text.h"

#include <ZemError.h>
#include <ZemScriptObject.h>

#include <algorithm>
#include <memory>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 10; // 4: link to 3D; 5: visible; 7: maximize; 9: name; 10: system font
constexpr int FIRST_NAME_VERSION = 9;
constexpr unsigned int TEXT_VERSION = 5;   // 2: maximize; 4: name; 5: system font
constexpr unsigned int ALIGNMENTS = 3;

} // namespace

/// What stands in the block without being a member.
struct Element::BlockExtras
{
    unsigned int numberOfConnectors = 0;
    QString name;
};

template <class Archive, class Self, class Extras>
void Element::blockFields(Archive &archive, Self &self, Extras &extras)
{
    archive.field(self.id_);
    archive.field(self.origin_);
    archive.field(self.size_);
    archive.field(self.visible_, Since{5}, true);
    archive.field(self.linkTo3D_, Since{4}, false);
    archive.field(self.autoSize_);
    archive.field(self.maximize_, Since{7}, false);
    archive.field(self.angle_);
    archive.field(self.fontColor_);
    if constexpr (Archive::isReader) {
        if (archive.version() == 1)
            archive.template drop<bool>();
    }
    archive.field(self.highlightColor_);
    archive.list(self.pivotAlignmentX_, ALIGNMENTS);
    archive.list(self.pivotAlignmentY_, ALIGNMENTS);
    archive.field(self.margin_);
    archive.field(self.spacing_);
    archive.field(extras.numberOfConnectors);
    archive.keep(self.useSystemFont_, Since{10});
    archive.keep(extras.name, Since{9});
}

void Element::save(IO::OutStream *stream, int a, int b) const
{
    auto const startsHere = [this](Connector const *connector) { return connector->getSource() == this; };
    BlockExtras const extras{
        static_cast<unsigned int>(std::count_if(connectors_.begin(), connectors_.end(), startsHere)),
        getScriptObject()->getName()};
    saveBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, *this, extras); });
    border_.save(stream);
    background_.save(stream);
    Tools::save(stream, userFont_);
    for (Connector const *connector : connectors_) {
        if (startsHere(connector))
            connector->save(stream, a, b);
    }
}

void Element::load(IO::InStream *stream, int a, int b)
{
    loadWrapped("Figure_Element_err", "cannot load figure element: %1", [&] {
        BlockExtras extras{0, getScriptObject()->getName()};
        blockVersion_ = static_cast<int>(
            loadBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, *this, extras); }));
        getScriptObject()->setName(extras.name);
        if (blockVersion_ < FIRST_NAME_VERSION && extras.name.isEmpty() && figure_)
            giveName(figure_);
        valid_ = false;
        border_.load(stream);
        background_.load(stream);
        Tools::load(stream, &userFont_);
        loadConnectors(stream, extras.numberOfConnectors, a, b);
    });
}

void Element::loadConnectors(IO::InStream *stream, unsigned int count, int a, int b)
{
    for (unsigned int i = 0; i < count; ++i) {
        auto connector = std::make_unique<Connector>(Connector::Mode_t{}, this, nullptr);
        connector->load(stream, a, b);
        connectors_.push_back(connector.get());
        // From here on the destructor of the element deletes it.
        static_cast<void>(connector.release());
    }
}

template <class Archive, class Self>
void Element::textItems(Archive &archive, Self &self)
{
    archive.item(self.id_);
    archive.item(self.origin_);
    archive.item(self.size_);
    archive.item(self.visible_);
    archive.item(self.linkTo3D_);
    archive.item(self.autoSize_);
    archive.item(self.maximize_, Since{2}, false);
    archive.item(self.angle_);
    archive.item(self.fontColor_);
    archive.item(self.highlightColor_);
    archive.list(self.pivotAlignmentX_, ALIGNMENTS);
    archive.list(self.pivotAlignmentY_, ALIGNMENTS);
    archive.item(self.margin_);
    archive.item(self.spacing_);
    archive.record(self.border_);
    archive.record(self.background_);
    archive.item(self.userFont_);
    archive.keep(self.useSystemFont_, Since{5});
}

std::ostream &Element::saveToStream(std::ostream &stream) const
{
    TextWriter writer(stream);
    writer.version(TEXT_VERSION);
    textItems(writer, *this);
    writer.item(getScriptObject()->getName());
    return stream;
}

std::istream &Element::loadFromStream(std::istream &stream)
{
    TextReader reader(stream);
    unsigned int const version = reader.version();
    if (version > TEXT_VERSION) {
        reader.fail();
        return stream;
    }
    textItems(reader, *this);
    if (version < 3) {
        unsigned int dropped = 0;
        reader.item(dropped);
    }
    if (version > 3) {
        QString name = getScriptObject()->getName();
        reader.item(name);
        getScriptObject()->setName(name);
    }
    valid_ = false;
    return stream;
}

QString Element::getParameterString() const
{
    QString parameters;
    ParameterWriter writer(parameters);
    writer.item(PARAM_TYPE, getTypeParameterName(type_));
    writer.item(PARAM_ORIGIN, origin_);
    writer.item(PARAM_VISIBLE, visible_);
    if (hasSize())
        writer.item(PARAM_SIZE, size_);
    if (canLinkTo3D())
        writer.item(PARAM_LINK_TO_3D, linkTo3D_);
    if (hasAutoSize())
        writer.item(PARAM_AUTO_SIZE, autoSize_);
    if (hasMaximize())
        writer.item(PARAM_MAXIMIZE, maximize_);
    if (hasAngle())
        writer.item(PARAM_ANGLE, angle_);
    if (hasBorder())
        writer.record(PARAM_BORDER, border_);
    if (hasBackground())
        writer.record(PARAM_BACKGROUND, background_);
    if (hasFont()) {
        parameters += Parse::getParameterString(PARAM_FONT, userFont_);
        writer.item(PARAM_FONT_COLOR, fontColor_);
        writer.item(PARAM_USE_SYSTEM_FONT, useSystemFont_);
    }
    writer.item(PARAM_HIGHLIGHT_COLOR, highlightColor_);
    if (hasPivotAlignment()) {
        writer.item(PARAM_PIVOT_ALIGNMENT_X, pivotAlignmentX_);
        writer.item(PARAM_PIVOT_ALIGNMENT_Y, pivotAlignmentY_);
        // Margin and spacing go with the pivot alignment, deliberately: readers of the string expect them there.
        writer.item(PARAM_MARGIN, margin_);
        writer.item(PARAM_SPACING, spacing_);
    }
    return parameters;
}

namespace {

void readType(QString const &name, Element::Type_t *type)
{
    if (!Element::getTypeFromParameterName(name, type))
        throw ParamError(translate("Figure_Element_err", "unknown element type '%1'").arg(name), -1);
}

void requireParameter(bool supported, char const *text)
{
    if (!supported)
        throw ParamError(translate("Figure_err", text), -1);
}

} // namespace

/// The part that both parameter formats read in the same way, but for "maximize".
template <class Reader>
void Element::readCommonParameters(Reader &reader)
{
    if (reader.exists(PARAM_TYPE)) {
        QString name;
        reader.item(PARAM_TYPE, name);
        readType(name, &type_);
    }
    reader.item(PARAM_ORIGIN, origin_);
    reader.item(PARAM_ANGLE, angle_);
    if (reader.exists(PARAM_SIZE)) {
        requireParameter(hasSize(), "element does not have a size");
        reader.item(PARAM_SIZE, size_);
    }
    reader.item(PARAM_VISIBLE, visible_);
    reader.item(PARAM_LINK_TO_3D, linkTo3D_);
    reader.item(PARAM_AUTO_SIZE, autoSize_);
}

template <class Reader>
void Element::readFrameParameters(Reader &reader, QString &parameters)
{
    reader.item(PARAM_FONT_COLOR, fontColor_);
    reader.item(PARAM_HIGHLIGHT_COLOR, highlightColor_);
    for (QLatin1StringView key : {PARAM_PIVOT_ALIGNMENT_X, PARAM_PIVOT_ALIGNMENT_Y}) {
        if (reader.exists(key))
            requireParameter(hasPivotAlignment(), "element does not have a pivot alignment point");
        reader.item(key, key == PARAM_PIVOT_ALIGNMENT_X ? pivotAlignmentX_ : pivotAlignmentY_);
    }
    reader.item(PARAM_MARGIN, margin_, 0.0, ANY_DOUBLE);
    reader.item(PARAM_SPACING, spacing_, 0.0, ANY_DOUBLE);
    border_.createFromParameterString(parameters, PARAM_BORDER);
    background_.createFromParameterString(parameters, PARAM_BACKGROUND);
}

void Element::createFromParameterString(QString &parameters)
{
    ParameterReader reader(parameters);
    readCommonParameters(reader);
    reader.item(PARAM_MAXIMIZE, maximize_);
    readFrameParameters(reader, parameters);
    Parse::createFromParameterString(parameters, PARAM_FONT, &userFont_);
    reader.item(PARAM_USE_SYSTEM_FONT, useSystemFont_);
    valid_ = false;
}

void Element::createFromV541ParameterString(QString &parameters)
{
    V541ParameterReader reader(parameters);
    readCommonParameters(reader);
    readFrameParameters(reader, parameters);
    if (reader.exists(PARAM_FONT)) {
        QString const font = V541Parser::getString(parameters, PARAM_FONT);
        if (!userFont_.createFromParameterString(font))
            throw ParamError(translate("Figure_Element_err", "illegal font '%1'").arg(font), -1);
    }
    reader.item(PARAM_USE_SYSTEM_FONT, useSystemFont_);
    valid_ = false;
}

} // namespace Zem::Fig2
