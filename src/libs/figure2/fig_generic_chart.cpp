// GenericChart, the element that composes its data from tokens on offer.
#include "ZemFig2Chart.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_value.h"

#include <ZemTranslate.h>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 6;
constexpr unsigned int TEXTS_PER_ENTRY = 2;
constexpr QLatin1StringView DESCRIPTION_SEPARATOR{" - "};

using DataToken = ChartInterface::DataToken;

QString entryKey(std::size_t index)
{
    return QString(GenericChart::PARAM_TOKENS_Y).arg(index);
}

/// The order tells tokens of one name from all others, but not from each other: it finds the first of the name.
GenericChart::DataTokens::const_iterator firstOfName(GenericChart::DataTokens const &tokens, QString const &name)
{
    DataToken first(name);
    first.setCategory(TokenInfo::CATEGORY_GENERAL);
    auto const it = tokens.lower_bound(first);
    return it != tokens.end() && it->getName() == name ? it : tokens.end();
}

/// Among tokens of one name equality decides.
bool contains(GenericChart::DataTokens const &tokens, DataToken const &token)
{
    for (auto it = firstOfName(tokens, token.getName()); it != tokens.end() && it->getName() == token.getName(); ++it) {
        if (*it == token)
            return true;
    }
    return false;
}

/// One entry of the parameter strings: those of the token and of its look.
std::vector<QString> textsOf(GenericChart::Entry const &entry)
{
    return {entry.first.getParameterString(QString()), entry.second.getParameterString(QString())};
}

GenericChart::Entry takeEntry(QString &parameters, QString const &key)
{
    std::vector<QString> texts = Parse::getStringVector(parameters, key, TEXTS_PER_ENTRY, TEXTS_PER_ENTRY);
    GenericChart::Entry entry;
    entry.first.createFromParameterString(texts[0], QString());
    entry.second.createFromParameterString(texts[1], QString());
    return entry;
}

} // namespace

GenericChart::GenericChart() : ChartBase(GENERIC_CHART)
{
}

/// The copy is in no figure, so its token is not registered.
GenericChart::GenericChart(GenericChart const &other)
    : ChartBase(other), data_(other.data_), tokenX_(other.tokenX_), entryByName_(other.entryByName_)
{
}

GenericChart::~GenericChart()
{
    unregisterToken();
}

/// Its next figure may have another interface, with which an update registers the token.
void GenericChart::leavingFigure()
{
    unregisterToken();
    invalidate();
}

void GenericChart::registerToken()
{
    ChartInterface *interface = ChartInterface::getInterface(this);
    if (!interface || tokenRegistered_ || getToken().isEmpty())
        return;
    interface->registerChartToken(getToken());
    tokenRegistered_ = true;
}

void GenericChart::unregisterToken()
{
    if (!tokenRegistered_)
        return;
    tokenRegistered_ = false;
    if (ChartInterface *interface = ChartInterface::getInterface(this))
        interface->unregisterChartToken(getToken());
}

/// The chart token changes only while it is not registered.
template <class Change>
void GenericChart::changeData(Change const &change)
{
    unregisterToken();
    change();
    updateToken();
    registerToken();
    invalidate();
}

void GenericChart::updateToken()
{
    std::vector<QString> names;
    entryByName_.clear();
    for (Entry const &entry : data_) {
        QString const &name = entry.first.getName();
        if (!entryByName_.contains(name))
            entryByName_.insert(name, names.size());
        names.push_back(name);
    }
    bool const complete = !tokenX_.isEmpty() && !data_.empty();
    setTokenName(complete ? ChartInterface::createToken(tokenX_, names) : QString());
}

void GenericChart::setData(std::vector<Entry> const &data)
{
    changeData([&] { data_ = data; });
}

void GenericChart::setTokenX(QString const &token)
{
    changeData([&] { tokenX_ = token; });
}

void GenericChart::tokenDeleted(DataTokens const &tokensX, DataTokens const &tokensY)
{
    QString tokenX = tokenX_;
    if (firstOfName(tokensX, tokenX_) == tokensX.end())
        tokenX = tokensX.empty() ? QString() : tokensX.begin()->getName();
    std::vector<Entry> data;
    std::copy_if(data_.begin(), data_.end(), std::back_inserter(data),
                 [&tokensY](Entry const &entry) { return contains(tokensY, entry.first); });
    if (tokenX == tokenX_ && data.size() == data_.size())
        return;
    changeData([&] {
        tokenX_ = tokenX;
        data_ = std::move(data);
    });
}

GenericChart::Entry const *GenericChart::findEntry(QString const &name) const
{
    auto const found = entryByName_.find(name);
    return found == entryByName_.end() ? nullptr : &data_[*found];
}

ChartParameters const *GenericChart::getChartParameters(ChartDataset const *dataset) const
{
    Entry const *entry = findEntry(dataset->getId());
    return entry ? &entry->second : nullptr;
}

QString GenericChart::getDatasetDescription(ChartDataset const *dataset) const
{
    QString description = ChartBase::getDatasetDescription(dataset);
    if (Entry const *entry = findEntry(dataset->getId())) {
        for (QString const &group : entry->first.getGroups())
            description += DESCRIPTION_SEPARATOR + group;
    }
    return description;
}

void GenericChart::getTokens(ChartData const *data, std::vector<TokenInfo> *tokens) const
{
    tokens->emplace_back(TokenInfo::CATEGORY_GENERAL, TokenInfo::TYPE_STRING, TOKEN_VALUE_AXIS_X,
                         translate("Figure_Chart_Token", "value axis x"));
    ChartBase::getTokens(data, tokens);
}

Value GenericChart::getValue(StageIdentifier const &stage, ChartData const *data, QString const &token) const
{
    Value const value = ChartBase::getValue(stage, data, token);
    if (hasValue(value) || token != TOKEN_VALUE_AXIS_X || tokenX_.isEmpty())
        return value;
    ChartInterface *interface = ChartInterface::getInterface(this);
    return interface ? Value(interface->getTokenDescription(DataToken(tokenX_))) : value;
}

void GenericChart::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    registerToken();
    ChartBase::computeDynamicData(stage, tokens);
}

unsigned int GenericChart::getEstimatedObjectSize() const
{
    std::size_t bytes = sizeof(GenericChart) - sizeof(ChartBase) + data_.size() * sizeof(Entry);
    bytes += static_cast<std::size_t>(tokenX_.size()) * sizeof(QChar);
    for (auto const &[token, parameters] : data_)
        bytes += static_cast<std::size_t>(token.getName().size() + parameters.getName().size()) * sizeof(QChar);
    return ChartBase::getEstimatedObjectSize() + static_cast<unsigned int>(bytes);
}

template <class Archive, class Text>
void GenericChart::blockFields(Archive &archive, Text &tokenX, unsigned int &count)
{
    archive.field(tokenX);
    archive.field(count);
}

void GenericChart::save(IO::OutStream *stream, int a, int b) const
{
    ChartBase::save(stream, a, b);
    auto count = static_cast<unsigned int>(data_.size());
    saveBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, tokenX_, count); });
    for (auto const &[token, parameters] : data_) {
        token.save(stream);
        parameters.save(stream);
    }
}

void GenericChart::load(IO::InStream *stream, int a, int b)
{
    unregisterToken();
    loadWrapped("Figure_Chart_err", "cannot load figure chart: %1", [&] { loadAll(stream, a, b); });
    registerToken();
}

void GenericChart::loadAll(IO::InStream *stream, int a, int b)
{
    ChartBase::load(stream, a, b);
    QString tokenX;
    std::vector<Entry> data;
    unsigned int count = 0;
    loadBlock(stream, BLOCK_VERSION, [&](auto &archive) { blockFields(archive, tokenX, count); });
    for (unsigned int i = 0; i < count; ++i) {
        Entry &entry = data.emplace_back();
        entry.first.load(stream);
        entry.second.load(stream);
    }
    // Only now, so that tokens and entries agree whatever becomes of the stream.
    tokenX_ = tokenX;
    data_ = std::move(data);
    updateToken();
}

QString GenericChart::getParameterString() const
{
    QString parameters = ChartBase::getParameterString();
    ParameterWriter(parameters).item(PARAM_TOKEN_X, tokenX_);
    for (std::size_t i = 0; i < data_.size(); ++i)
        parameters += Parse::createStringVector(entryKey(i), textsOf(data_[i]));
    return parameters;
}

void GenericChart::createFromParameterString(QString &parameters)
{
    ChartBase::createFromParameterString(parameters);
    QString tokenX = tokenX_;
    ParameterReader(parameters).item(PARAM_TOKEN_X, tokenX);
    std::vector<Entry> data;
    while (Parse::parameterExists(parameters, entryKey(data.size())))
        data.push_back(takeEntry(parameters, entryKey(data.size())));
    changeData([&] {
        tokenX_ = tokenX;
        if (!data.empty())
            data_ = std::move(data);
    });
}

} // namespace Zem::Fig2
