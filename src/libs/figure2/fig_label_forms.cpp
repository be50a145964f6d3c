// The persistent forms of LabelBase.
#include "ZemFig2LabelBase.h"

#include "ZemFig2ImportHook.h"
#include "ZemFig2RichText.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 7; // 2: connector style; 3: expand width; 5: connector point; 7: template name
constexpr unsigned int TEXT_VERSION = 3;  // 3: template name
constexpr unsigned int FIRST_RICH_TEXT_VERSION = 4;
constexpr unsigned int FIRST_QT4_VERSION = 6;
constexpr unsigned int FIRST_QT4_TEXT_VERSION = 2;
constexpr unsigned int ALIGNMENTS = 3;

} // namespace

template <class Archive, class Self>
void LabelBase::blockFields(Archive &archive, Self &self)
{
    archive.field(self.text_);
    archive.field(self.colorBarVisible_);
    archive.list(self.textAlignmentX_, ALIGNMENTS);
    archive.list(self.textAlignmentY_, ALIGNMENTS);
    archive.field(self.expandWidth_, Since{3}, false);
    archive.field(self.connectorPoint_, Since{5}, INVALID_POINT);
    archive.field(self.templateName_, Since{7}, QString());
}

void LabelBase::save(IO::OutStream *stream, int a, int b) const
{
    AreaBase::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    colorBar_.save(stream);
    connectorStyle_.save(stream);
}

void LabelBase::load(IO::InStream *stream, int a, int b)
{
    loadWrapped("Figure_Label_err", "cannot load figure label: %1", [&] {
        AreaBase::load(stream, a, b);
        unsigned int const version =
            loadBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
        colorBar_.load(stream);
        if (version >= 2)
            connectorStyle_.load(stream);
        convertLoadedText(version);
    });
}

/// Brings a text of an older block up to date.
void LabelBase::convertLoadedText(unsigned int version)
{
    QString text = text_;
    if (version < FIRST_RICH_TEXT_VERSION) {
        if (RTFTools::isRichText(text))
            text = RTFTools::stripTags(RTFTools::stripTags(text, QStringLiteral("html")), QStringLiteral("body"));
        else
            text = RTFTools::convertText(text);
    }
    text = ImportHook::callConvertLabelText(this, text);
    if (version < FIRST_QT4_VERSION)
        text = RTFTools::convertToQt4(text);
    setText(text);
}

template <class Archive, class Self>
void LabelBase::textItems(Archive &archive, Self &self)
{
    archive.item(self.text_);
    archive.item(self.colorBarVisible_);
    archive.list(self.textAlignmentX_, ALIGNMENTS);
    archive.list(self.textAlignmentY_, ALIGNMENTS);
    archive.item(self.expandWidth_);
    archive.item(self.connectorPoint_);
    archive.record(self.colorBar_);
    archive.record(self.connectorStyle_);
    archive.keep(self.templateName_, Since{3});
}

std::ostream &LabelBase::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    return AreaBase::saveToStream(stream);
}

std::istream &LabelBase::loadFromStream(std::istream &stream)
{
    unsigned int const version = loadText(stream, TEXT_VERSION, [this](auto &archive) { textItems(archive, *this); });
    QString const text = ImportHook::callConvertLabelText(this, text_);
    setText(version < FIRST_QT4_TEXT_VERSION ? RTFTools::convertToQt4(text) : text);
    return AreaBase::loadFromStream(stream);
}

template <class Archive, class Self>
void LabelBase::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_COLOR_BAR_VISIBLE, self.colorBarVisible_);
    archive.item(PARAM_ALIGN_X, self.textAlignmentX_);
    archive.item(PARAM_ALIGN_Y, self.textAlignmentY_);
    archive.item(PARAM_EXPAND_WIDTH, self.expandWidth_);
    archive.item(PARAM_CONNECTOR_POINT, self.connectorPoint_);
    archive.record(PARAM_COLOR_BAR, self.colorBar_);
    archive.record(PARAM_CONNECTOR_STYLE, self.connectorStyle_);
    archive.item(PARAM_TEMPLATE_NAME, self.templateName_);
}

QString LabelBase::getParameterString() const
{
    QString parameters = AreaBase::getParameterString();
    ParameterWriter writer(parameters);
    writer.item(PARAM_TEXT, text_);
    parameterItems(writer, *this);
    return parameters;
}

void LabelBase::createFromParameterString(QString &parameters)
{
    AreaBase::createFromParameterString(parameters);
    ParameterReader reader(parameters);
    if (reader.exists(PARAM_TEXT)) {
        reader.item(PARAM_TEXT, text_);
        tokensParsed_ = false;
    }
    parameterItems(reader, *this);
    invalidate();
}

} // namespace Zem::Fig2
