#include "ZemFig2Import.h"

#include "ZemFig2DataInterface.h"
#include "ZemFig2ImportReport.h"
#include "ZemFig2RichText.h"
#include "ZemFig2Template.h"
#include "fig_import_data.h"
#include "fig_import_record.h"
#include "fig_importer.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>
#include <ZemTokenTools.h>

#include <memory>

namespace Zem::Fig2 {

bool Import::canImportFile(IO::InStream *stream)
{
    return stream->isOfType(FILE_TYPE);
}

bool Import::canImportFile(std::vector<char> const &head)
{
    return QByteArrayView(head.data(), static_cast<qsizetype>(head.size())).contains(QByteArrayView(FILE_TYPE));
}

FigureTemplate *Import::importTemplate(IO::InStream *stream)
{
    return importTemplate(stream, nullptr);
}

FigureTemplate *Import::importTemplate(IO::InStream *stream, ImportReport *report, DataInterface *tokens)
{
    if (!canImportFile(stream))
        throw IO::StreamException(translate("Figure_Import_err", "invalid file type '%1'").arg(stream->getFileType()));
    if (tokens)
        return Importer(report, tokens, QString()).importFigureTemplate(stream).release();
    DataInterface own;
    std::unique_ptr<FigureTemplate> figure = Importer(report, &own, QString()).importFigureTemplate(stream);
    if (report && own.getTokenBegin() != own.getTokenEnd())
        report->add({QStringLiteral("figure"), QString(), ImportEntry::DROPPED,
                     translate("Figure_Import", "a page does not hold the data of its tokens")});
    return figure.release();
}

FigureTemplate *Import::importTemplateStream(IO::InStream *stream)
{
    DataInterface tokens;
    return Importer(nullptr, &tokens, QString()).importFigureTemplate(stream).release();
}

Element *Import::importElement(IO::InStream *stream)
{
    DataInterface tokens;
    return Importer(nullptr, &tokens, QString()).importElement(stream).release();
}

void Import::importTokenData(IO::InStream *stream, TokenContainer *container)
{
    DataInterface tokens;
    importTokenData(stream, &tokens);
    convertDataInterface(&tokens, container);
}

void Import::importDataInterface(IO::InStream *stream, TokenContainer *container)
{
    DataInterface tokens;
    importDataInterface(stream, &tokens);
    convertDataInterface(&tokens, container);
}

void Import::importTokenData(IO::InStream *stream, DataInterface *dataInterface)
{
    importTokens(stream, dataInterface, nullptr, QString());
}

void Import::importDataInterface(IO::InStream *stream, DataInterface *dataInterface)
{
    loadWrapped("Figure_TokenData_err", "cannot load figure token data: %1", [stream, dataInterface] {
        ImportDepth const depth(ImportDepth::TOKENS);
        dataInterface->load(stream, -1, -1);
    });
}

void Import::skipTokenData(IO::InStream *stream)
{
    DataInterface dropped;
    importTokenData(stream, &dropped);
}

void Import::skipDataInterface(IO::InStream *stream)
{
    DataInterface dropped;
    importDataInterface(stream, &dropped);
}

namespace {

/// False when the variable is no plain value.
bool plainValue(Variable const &variable, TokenInfo::Type_t *type, Value *value)
{
    switch (variable.type) {
    case VARIABLE_INTEGER:
        *type = TokenInfo::TYPE_INTEGER;
        *value = Value(variable.intValue);
        return true;
    case VARIABLE_DOUBLE:
        *type = TokenTools::getTokenType(variable.unitData.getUnit());
        *value = Value(variable.doubleValue, variable.unitData);
        return true;
    case VARIABLE_STRING:
        *type = TokenInfo::TYPE_STRING;
        *value = Value(variable.stringValue);
        return true;
    case VARIABLE_IMAGE:
    case VARIABLE_CHART:
    case VARIABLE_IMAGE_REFERENCE:
    case VARIABLE_CHART_REFERENCE:
    case VARIABLE_GROUP:
    case VARIABLE_SNAPSHOT:
    case VARIABLE_SNAPSHOT_REFERENCE:
    case VARIABLE_SEPARATOR:
        return false;
    }
    throw ProgError("Zem::Fig2::Import::convertDataInterface", "fig_import", __LINE__, "Unhandled variable type");
}

} // namespace

void Import::convertDataInterface(DataInterface const *dataInterface, TokenContainer *container)
{
    for (auto it = dataInterface->getTokenBegin(); it != dataInterface->getTokenEnd(); ++it) {
        auto const &[token, variable] = *it;
        TokenInfo::Type_t type{};
        Value value;
        QString name;
        if (!plainValue(*variable, &type, &value) || !TokenInterface::parseToken(token.getName(), &name, nullptr))
            continue;
        QString const &text = variable->displayText.isEmpty() ? token.getName() : variable->displayText;
        container->setValue(TokenInfo(type, token.getName(), text), value);
    }
}

Variable_t Import::convertVariableType(OldVar_t type)
{
    switch (type) {
    case OLD_VAR_BOOL:
        return VARIABLE_STRING; // the word for it
    case OLD_VAR_INTEGER:
    case OLD_VAR_DOUBLE:
    case OLD_VAR_STRING:
    case OLD_VAR_IMAGE:
    case OLD_VAR_CHART:
    case OLD_VAR_IMAGE_REFERENCE:
    case OLD_VAR_CHART_REFERENCE:
    case OLD_VAR_GROUP:
    case OLD_VAR_SNAPSHOT:
    case OLD_VAR_SNAPSHOT_REFERENCE:
    case OLD_VAR_SEPARATOR:
        return static_cast<Variable_t>(type - 1);
    }
    throw ProgError("Zem::Fig2::Import::convertVariableType", "fig_import", __LINE__, "Illegal variable type");
}

QString Import::convertUnformattedLabelText(QString const &text)
{
    if (RTFTools::isRichText(text)) {
        QString const body =
            RTFTools::stripTags(RTFTools::stripTags(text, QStringLiteral("html")), QStringLiteral("body"));
        return RTFTools::convertToQt4(body);
    }
    bool const isRich = text.contains(QLatin1Char('<')) || text.contains(QLatin1Char('&'));
    return isRich ? text : RTFTools::convertText(text);
}

} // namespace Zem::Fig2
