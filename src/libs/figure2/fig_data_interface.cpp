#include "ZemFig2DataInterface.h"

#include "ZemFig2ChartData.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"
#include "fig_block.h"
#include "fig_items.h"

#include <ZemError.h>
#include <ZemImage.h>

#include <memory>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int REGISTRY_BLOCK_VERSION = 1;

[[noreturn]] void failRegistry(char const *function, unsigned int line, char const *text)
{
    throw ProgError(function, "fig_data_interface", line, text);
}

[[noreturn]] void throwTokenError(Token_t const &token)
{
    QString const text = QLatin1StringView("Token not registered: ") + token.getParameterString("token");
    failRegistry("Zem::Fig2::DataInterface::throwTokenError", __LINE__, text.toLatin1().constData());
}

void requireObject(void const *object, char const *function, char const *text)
{
    if (!object)
        failRegistry(function, __LINE__, text);
}

/// Who hands over what is there already means it to stay.
template <class Data>
void replaceData(Data *&place, Data *data)
{
    if (place == data)
        return;
    delete place;
    place = data;
}

} // namespace

DataInterface::DataInterface(DataInterface const &other) : DataInterface()
{
    for (auto const &[token, variable] : other.tokens_) {
        auto copied = std::make_unique<Variable>(*variable);
        tokens_.emplace(token, copied.get());
        copied.release();
    }
}

DataInterface &DataInterface::operator=(DataInterface const &)
{
    failRegistry("Zem::Fig2::DataInterface::operator=", __LINE__, "Assignments not allowed");
}

DataInterface::~DataInterface()
{
    clear();
}

Variable const *DataInterface::findVariable(Token_t const &token, bool searchSub) const
{
    if (auto const own = tokens_.find(token); own != tokens_.end())
        return own->second;
    if (!searchSub)
        return nullptr;
    for (DataInterface const *interface : subInterfaces_) {
        if (Variable const *found = interface->findVariable(token, true))
            return found;
    }
    return nullptr;
}

Variable const &DataInterface::requireVariable(Token_t const &token) const
{
    Variable const *found = findVariable(token, true);
    if (!found)
        throwTokenError(token);
    return *found;
}

Variable &DataInterface::requireOwnVariable(Token_t const &token)
{
    auto const found = tokens_.find(token);
    if (found == tokens_.end())
        throwTokenError(token);
    return *found->second;
}

QString DataInterface::getTokenValue(Token_t const &token, QString const &format) const
{
    return requireVariable(token).toString(format);
}

unsigned int DataInterface::getModifiedCounter(Token_t const &token) const
{
    return requireVariable(token).modifiedCounter;
}

bool DataInterface::tokenExists(Token_t const &token) const
{
    return findVariable(token, true) != nullptr;
}

std::vector<Variable_t> DataInterface::getTokenTypes(QString const &name) const
{
    std::vector<Variable_t> types;
    for (int type = VARIABLE_INTEGER; type <= VARIABLE_SEPARATOR; ++type) {
        if (tokenExists({name, static_cast<Variable_t>(type)}))
            types.push_back(static_cast<Variable_t>(type));
    }
    return types;
}

QString DataInterface::getDisplayText(Token_t const &token) const
{
    return requireVariable(token).displayText;
}

int DataInterface::getSortIndex(Token_t const &token) const
{
    return requireVariable(token).sortIndex;
}

QString DataInterface::getGroupToken(Token_t const &token) const
{
    return requireVariable(token).groupToken;
}

QString DataInterface::getTypeHint(Token_t const &token) const
{
    return requireVariable(token).typeHint;
}

double DataInterface::getDouble(QString const &name, UnitData *unit) const
{
    Variable const &variable = requireVariable({name, VARIABLE_DOUBLE});
    if (unit)
        *unit = variable.unitData;
    return variable.doubleValue;
}

int DataInterface::getInt(QString const &name) const
{
    return requireVariable({name, VARIABLE_INTEGER}).intValue;
}

QString DataInterface::getString(QString const &name) const
{
    return requireVariable({name, VARIABLE_STRING}).stringValue;
}

void DataInterface::getImage(QString const &name, Zem::Image const **image, Zem::ImageColor const **overlay,
                             ImageData const **data) const
{
    Variable const &variable = requireVariable({name, VARIABLE_IMAGE});
    *image = variable.image;
    *overlay = variable.overlayImage;
    *data = variable.imageData;
}

void DataInterface::getChart(QString const &name, ChartData const **data) const
{
    *data = requireVariable({name, VARIABLE_CHART}).chartData;
}

void DataInterface::getSnapshot(QString const &name, SnapshotData const **data) const
{
    *data = requireVariable({name, VARIABLE_SNAPSHOT}).snapshotData;
}

void DataInterface::addVariable(Token_t const &token, Variable *variable)
{
    if (findVariable(token, false) == variable)
        return;
    Token_t const key = token; // it may be part of the record that goes
    if (tokenExists(key))
        removeToken(key);
    tokens_.emplace(key, variable);
}

void DataInterface::removeToken(Token_t const &token)
{
    delete &requireOwnVariable(token);
    tokens_.erase(token);
}

void DataInterface::clear()
{
    for (auto const &[token, variable] : tokens_)
        delete variable;
    tokens_.clear();
}

void DataInterface::setModified(Token_t const &token)
{
    ++requireOwnVariable(token).modifiedCounter;
}

/// Counted always, also when the value stays the same.
template <class Field, class Value>
void DataInterface::setDescription(Token_t const &token, Field Variable::*field, Value const &value)
{
    Variable &variable = requireOwnVariable(token);
    variable.*field = value;
    ++variable.modifiedCounter;
}

void DataInterface::setDisplayText(Token_t const &token, QString const &text)
{
    setDescription(token, &Variable::displayText, text);
}

void DataInterface::setSortIndex(Token_t const &token, int index)
{
    setDescription(token, &Variable::sortIndex, index);
}

void DataInterface::setGroupToken(Token_t const &token, QString const &group)
{
    setDescription(token, &Variable::groupToken, group);
}

void DataInterface::setDefaultFormat(Token_t const &token, QString const &format)
{
    setDescription(token, &Variable::defaultFormat, format);
}

void DataInterface::setIconId(Token_t const &token, QString const &id)
{
    setDescription(token, &Variable::iconId, id);
}

void DataInterface::setTypeHint(Token_t const &token, QString const &hint)
{
    setDescription(token, &Variable::typeHint, hint);
}

/// `change` gets the record, a new one when there is none, and tells whether it changed it. A new one is not counted.
template <class Change>
void DataInterface::setValue(Token_t const &token, Change const &change)
{
    if (auto const found = tokens_.find(token); found != tokens_.end()) {
        if (change(*found->second))
            ++found->second->modifiedCounter;
        return;
    }
    auto variable = std::make_unique<Variable>(token.getType());
    change(*variable);
    tokens_.emplace(token, variable.get());
    variable.release();
}

void DataInterface::setInt(QString const &name, int value)
{
    setValue({name, VARIABLE_INTEGER},
             [value](Variable &variable) { return std::exchange(variable.intValue, value) != value; });
}

void DataInterface::setDouble(QString const &name, double value, UnitData const &unit)
{
    setValue({name, VARIABLE_DOUBLE}, [&](Variable &variable) {
        bool const differs = variable.doubleValue != value || !(variable.unitData == unit);
        variable.doubleValue = value;
        variable.unitData = unit;
        return differs;
    });
}

void DataInterface::setDouble(QString const &name, double value, Unit const *unit)
{
    setDouble(name, value, UnitData(unit));
}

void DataInterface::setString(QString const &name, QString const &value)
{
    setValue({name, VARIABLE_STRING},
             [&value](Variable &variable) { return std::exchange(variable.stringValue, value) != value; });
}

void DataInterface::setImage(QString const &name, Zem::Image const *image, Zem::ImageColor const *overlay,
                             ImageData const *data)
{
    requireObject(image, "Zem::Fig2::DataInterface::setImage", "Image must not be NULL");
    setValue({name, VARIABLE_IMAGE}, [&](Variable &variable) {
        replaceData(variable.image, const_cast<Zem::Image *>(image));
        replaceData(variable.overlayImage, const_cast<Zem::ImageColor *>(overlay));
        replaceData(variable.imageData, const_cast<ImageData *>(data));
        return true;
    });
}

void DataInterface::setChart(QString const &name, ChartData *data)
{
    requireObject(data, "Zem::Fig2::DataInterface::setChart", "ChartData must not be NULL");
    setValue({name, VARIABLE_CHART}, [data](Variable &variable) {
        replaceData(variable.chartData, data);
        return true;
    });
}

void DataInterface::setSnapshot(QString const &name, SnapshotData *data)
{
    requireObject(data, "Zem::Fig2::DataInterface::setSnapshot", "Snapshot must not be NULL");
    setValue({name, VARIABLE_SNAPSHOT}, [data](Variable &variable) {
        replaceData(variable.snapshotData, data);
        return true;
    });
}

/// A token without a value of its own is as good as changed each time.
void DataInterface::setBare(QString const &name, Variable_t type)
{
    setValue({name, type}, [](Variable const &) { return true; });
}

void DataInterface::setImageReference(QString const &name)
{
    setBare(name, VARIABLE_IMAGE_REFERENCE);
}

void DataInterface::setChartReference(QString const &name)
{
    setBare(name, VARIABLE_CHART_REFERENCE);
}

void DataInterface::setSnapshotReference(QString const &name)
{
    setBare(name, VARIABLE_SNAPSHOT_REFERENCE);
}

void DataInterface::setGroup(QString const &name)
{
    setBare(name, VARIABLE_GROUP);
}

void DataInterface::setSeparator(QString const &name)
{
    setBare(name, VARIABLE_SEPARATOR);
}

QString DataInterface::toString() const
{
    QString text;
    for (auto const &[token, variable] : tokens_) {
        QString const type = getVariableDisplayName(token.getType());
        text += QLatin1StringView("Token: token='") + token.getName() + QLatin1Char('\'');
        text += QLatin1StringView(", type=") + (type.isEmpty() ? QStringLiteral("(unknown)") : type);
        text += QLatin1StringView(", value='") + variable->toString(".2") + QLatin1Char('\'');
        text += QLatin1StringView(", text='") + variable->displayText + QLatin1Char('\'');
        text += QStringLiteral(", sort_index='%1'").arg(variable->sortIndex);
        text += QLatin1StringView(", group='") + variable->groupToken + QLatin1StringView("'\n");
    }
    return text;
}

void DataInterface::save(IO::OutStream *stream, int, int) const
{
    std::vector<QString> names;
    for (auto const &[token, variable] : tokens_)
        names.push_back(token.getName());
    saveBlock(stream, REGISTRY_BLOCK_VERSION, [&names](auto &archive) { blockList(archive, names); });
    for (auto const &[token, variable] : tokens_)
        variable->save(stream);
}

void DataInterface::load(IO::InStream *stream, int, int)
{
    clear();
    std::vector<QString> names;
    loadBlock(stream, REGISTRY_BLOCK_VERSION, [&names](auto &archive) { blockList(archive, names); });
    for (QString const &name : names) {
        auto variable = std::make_unique<Variable>(VARIABLE_STRING);
        variable->load(stream);
        // Of two with one name and type the second stays.
        Variable *&place = tokens_[{name, variable->type}];
        delete place;
        place = variable.release();
    }
}

} // namespace Zem::Fig2
