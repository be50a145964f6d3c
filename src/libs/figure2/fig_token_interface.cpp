#include "ZemFig2TokenInterface.h"

#include "ZemFig2Element.h"
#include "ZemFig2Figure.h"
#include "fig_element_tokens.h"
#include "fig_token_name.h"

#include <ZemError.h>

#include <map>

namespace Zem::Fig2 {

std::vector<QString> FigureTokenInterface::getTokenGrouping(QString const &) const
{
    return {};
}

QString FigureTokenInterface::getTokenGroupName(QString const &) const
{
    throw ProgError("Zem::Fig2::FigureTokenInterface::getTokenGroupName", "fig_token_interface", __LINE__,
                    "Group names not supported");
}

QString FigureTokenInterface::getTokenGroupIconId(QString const &) const
{
    return {};
}

void EmptyFigureTokenInterface::getTokens(std::vector<TokenInfo> *tokens) const
{
    tokens->clear();
}

Value EmptyFigureTokenInterface::getValue(QString, IndexIdentifier const &, StageIdentifier const &) const
{
    return Value::UNKNOWN;
}

ImageData const *EmptyFigureTokenInterface::getImage(QString const &) const
{
    return nullptr;
}

void EmptyFigureTokenInterface::releaseImage(QString const &) const
{
    throw ProgError("Zem::Fig2::EmptyFigureTokenInterface::releaseImage", "fig_token_interface", __LINE__,
                    "Image token not locked");
}

ChartData const *EmptyFigureTokenInterface::getChart(QString const &) const
{
    return nullptr;
}

void EmptyFigureTokenInterface::releaseChart(QString const &) const
{
    throw ProgError("Zem::Fig2::EmptyFigureTokenInterface::releaseChart", "fig_token_interface", __LINE__,
                    "Chart token not locked");
}

SnapshotData const *EmptyFigureTokenInterface::getSnapshot(QString const &) const
{
    return nullptr;
}

void EmptyFigureTokenInterface::releaseSnapshot(QString const &) const
{
    throw ProgError("Zem::Fig2::EmptyFigureTokenInterface::releaseSnapshot", "fig_token_interface", __LINE__,
                    "Snapshot token not locked");
}

namespace {

enum ElementToken { ELEMENT_TOKEN_SELECTED = 0 };

std::map<QString, ElementToken> const &elementTokens()
{
    static std::map<QString, ElementToken> const tokens{{TokenInfo::TOKEN_SELECTED, ELEMENT_TOKEN_SELECTED}};
    return tokens;
}

} // namespace

void registerElementTokens()
{
    elementTokens();
}

void ElementTokenInterface::getTokens(std::vector<TokenInfo> *tokens) const
{
    tokens->push_back(TokenInfo::getSelectedInfo());
}

Value ElementTokenInterface::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &) const
{
    auto const found = elementTokens().find(name);
    if (found == elementTokens().end())
        return Value::UNKNOWN;
    if (index != IndexIdentifier::NO_INDEX || found->second != ELEMENT_TOKEN_SELECTED)
        return Value::INVALID;
    return TokenInfo::getSelectedValue(element_->isSelected());
}

bool UsedTokenFilter::isFilteredOut(TokenInfo const &info) const
{
    QString name;
    if (!parseTokenName(info.getName(), &name))
        return true;
    return !figure_->isTokenUsed(name);
}

DataReferenceInterface::~DataReferenceInterface() = default;

bool DataReferenceInterface::getImageReference(QString const &, Zem::Image const **, ImageData const **) const
{
    return false;
}

bool DataReferenceInterface::getImageReference(QString const &, Zem::Image const **, Zem::ImageColor const **,
                                               ImageData const **) const
{
    return false;
}

bool DataReferenceInterface::getChartReference(QString const &, ChartData const **) const
{
    return false;
}

bool DataReferenceInterface::getSnapshotReference(QString const &, SnapshotData const **) const
{
    return false;
}

void DataReferenceInterface::releaseReferenceData(Token_t const &) const
{
}

void DataReferenceInterface::tokenNoMoreUsed(Token_t const &) const
{
}

} // namespace Zem::Fig2
