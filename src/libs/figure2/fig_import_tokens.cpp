// The tokens of older files, in the older of their two forms.
#include "ZemFig2ChartData.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"
#include "fig_import_data.h"
#include "fig_import_record.h"
#include "fig_importer.h"

#include <ZemError.h>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TOKEN_DATA_VERSION = 2; // 2: text, type hint, group
constexpr unsigned int BOOL_VERSION = 2;       // 2: format
constexpr unsigned int INTEGER_VERSION = 2;    // 2: format
constexpr unsigned int DOUBLE_VERSION = 3;     // 2: unit; 3: format
constexpr unsigned int STRING_VERSION = 2;     // 2: format
constexpr unsigned int CHART_VERSION = 3;      // 2: texts of the curves; 3: units

/// A token of the list in front of all values.
struct OldToken
{
    QString name;
    Import::OldVar_t type = Import::OLD_VAR_BOOL;
    QString displayText;
    QString typeHint;
    QString group;

    void read(BlockReader &reader)
    {
        reader.field(name);
        reader.list(type, Import::NUMBER_OF_OLD_VARS);
        reader.keep(displayText, Since{2});
        reader.keep(typeHint, Since{2});
        reader.keep(group, Since{2});
    }
};

/// Puts what each token holds into a registry.
class TokenReader
{
public:
    TokenReader(IO::InStream *stream, DataInterface *tokens, ImportReport *report, QString const &place)
        : stream_(stream), tokens_(tokens), report_(report), place_(place)
    {
    }

    void read(OldToken const &token)
    {
        Token_t const key(token.name, Import::convertVariableType(token.type));
        readValue(token);
        if (!token.displayText.isEmpty())
            tokens_->setDisplayText(key, token.displayText);
        if (!token.typeHint.isEmpty())
            tokens_->setTypeHint(key, token.typeHint);
        if (!token.group.isEmpty())
            tokens_->setGroupToken(key, token.group);
        if (!format_.isEmpty())
            tokens_->setDefaultFormat(key, format_);
        format_.clear();
        if (report_)
            report_->add({QStringLiteral("token"), place_ + token.name, ImportEntry::KEPT, QString()});
    }

private:
    void readValue(OldToken const &token);

    /// A record of one value and its format.
    template <class T>
    T readPlain(unsigned int newest, char const *text)
    {
        T value{};
        loadRecord(stream_, newest, text, [&](BlockReader &reader) {
            reader.field(value);
            reader.keep(format_, Since{2});
        });
        return value;
    }

    void readDouble(QString const &name)
    {
        double value = 0.0;
        QString unit;
        loadRecord(stream_, DOUBLE_VERSION, "unhandled DOUBLE variable version: %1", [&](BlockReader &reader) {
            reader.field(value);
            reader.keep(unit, Since{2});
            reader.keep(format_, Since{3});
        });
        tokens_->setDouble(name, value, unitDataOf(unit));
    }

    IO::InStream *stream_;
    DataInterface *tokens_;
    ImportReport *report_;
    QString place_;
    QString format_;
};

void TokenReader::readValue(OldToken const &token)
{
    QString const &name = token.name;
    switch (token.type) {
    case Import::OLD_VAR_BOOL:
        tokens_->setString(name, readPlain<bool>(BOOL_VERSION, "unhandled BOOL variable version: %1")
                                     ? translate("Figure_Variable", "true")
                                     : translate("Figure_Variable", "false"));
        return;
    case Import::OLD_VAR_INTEGER:
        return tokens_->setInt(name, readPlain<int>(INTEGER_VERSION, "unhandled INTEGER variable version: %1"));
    case Import::OLD_VAR_DOUBLE:
        return readDouble(name);
    case Import::OLD_VAR_STRING:
        return tokens_->setString(name, readPlain<QString>(STRING_VERSION, "unhandled STRING variable version: %1"));
    case Import::OLD_VAR_IMAGE:
        return importPicture(stream_, name, tokens_);
    case Import::OLD_VAR_CHART:
        return tokens_->setChart(name, importChartData(stream_).release());
    case Import::OLD_VAR_SNAPSHOT:
        return tokens_->setSnapshot(name, importSnapshotData(stream_, report_, place_ + name).release());
    case Import::OLD_VAR_IMAGE_REFERENCE:
        return tokens_->setImageReference(name);
    case Import::OLD_VAR_CHART_REFERENCE:
        return tokens_->setChartReference(name);
    case Import::OLD_VAR_SNAPSHOT_REFERENCE:
        return tokens_->setSnapshotReference(name);
    case Import::OLD_VAR_GROUP:
        return tokens_->setGroup(name);
    case Import::OLD_VAR_SEPARATOR:
        return tokens_->setSeparator(name);
    }
}

void readTokens(IO::InStream *stream, DataInterface *tokens, ImportReport *report, QString const &place)
{
    ImportDepth const depth(ImportDepth::TOKENS);
    std::vector<OldToken> list;
    loadRecord(stream, TOKEN_DATA_VERSION, nullptr, [&list](BlockReader &archive) {
        unsigned int count = 0;
        archive.field(count);
        for (unsigned int i = 0; i < count; ++i) {
            OldToken token;
            token.read(archive);
            list.push_back(std::move(token));
        }
    });
    TokenReader reader(stream, tokens, report, place);
    for (OldToken const &token : list)
        reader.read(token);
}

/// A curve of a chart record.
void readDataset(BlockReader &reader, ChartData *data)
{
    QString id;
    unsigned int count = 0;
    reader.field(id);
    reader.field(count);
    auto dataset = std::make_unique<ChartDataset>(id);
    for (unsigned int i = 0; i < count; ++i) {
        BaVec2d<double> point;
        reader.field(point);
        dataset->addPoint(ChartPoint(static_cast<int>(i), point, 0.0));
    }
    QString text = id;
    reader.keep(text, Since{2});
    dataset->setDisplayText(text);
    // Of two curves with the same id the later one stays.
    if (data->datasetExists(id))
        data->removeDataset(id);
    data->addDataset(dataset.get());
    dataset.release();
}

/// Data that name no quantity are lengths.
UnitData unitOfAxis(QString const &name)
{
    UnitData const unit = unitDataOf(name);
    return unit.hasUnit() ? unit : UnitData(uLength);
}

} // namespace

UnitData unitDataOf(QString const &name)
{
    Unit const *quantity = Unit::getUnit(name);
    if (!quantity)
        return {};
    Unit::Units_t unit = quantity->getBaseUnit();
    quantity->parseUnit(name, &unit);
    return UnitData(quantity, unit);
}

std::unique_ptr<ChartData> importChartData(IO::InStream *stream)
{
    auto data = std::make_unique<ChartData>();
    QString unitX;
    QString unitY;
    loadRecord(stream, CHART_VERSION, "unhandled chart version: %1", [&](BlockReader &reader) {
        unsigned int count = 0;
        reader.field(count);
        for (unsigned int i = 0; i < count; ++i)
            readDataset(reader, data.get());
        reader.keep(unitX, Since{3});
        reader.keep(unitY, Since{3});
    });
    data->setUnitX(unitOfAxis(unitX));
    data->setUnitY(unitOfAxis(unitY));
    data->setComputeStatistics(true);
    return data;
}

void importTokens(IO::InStream *stream, DataInterface *tokens, ImportReport *report, QString const &place)
{
    loadWrapped("Figure_TokenData_err", "cannot load figure token data: %1",
                [&] { readTokens(stream, tokens, report, place); });
}

} // namespace Zem::Fig2
