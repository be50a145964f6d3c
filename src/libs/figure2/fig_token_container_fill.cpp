// FigureTokenContainer, filled from token interfaces and from a registry.
#include "ZemFig2ChartData.h"
#include "ZemFig2DataInterface.h"
#include "ZemFig2Figure.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"
#include "fig_loan.h"
#include "fig_token_entry.h"
#include "fig_token_name.h"

#include <ZemImage.h>
#include <ZemTokenTools.h>

namespace Zem::Fig2 {

namespace {

/// Calls `take` with each token that the filter lets pass and its bare name.
template <class Source, class Take>
void forEachToken(Source const *source, TokenFilter const &filter, Take const &take)
{
    std::vector<TokenInfo> infos;
    source->getTokens(&infos);
    for (TokenInfo const &info : infos) {
        QString name;
        if (!filter.isFilteredOut(info) && parseTokenName(info.getName(), &name))
            take(info, name);
    }
}

} // namespace

// The constructors delegate, so that what they have made goes when they fail.
FigureTokenContainer::FigureTokenContainer(StageIdentifier const &stage, FigureTokenInterface const *source,
                                           TokenFilter const &filter)
    : FigureTokenContainer()
{
    merge(stage, source, filter);
}

FigureTokenContainer::FigureTokenContainer(FigureTokenContainer const &other) : FigureTokenContainer()
{
    merge(StageIdentifier::NO_STAGE, &other, TokenAllPassFilter());
}

void FigureTokenContainer::addTokens(StageIdentifier const &stage, TokenInterface const *source,
                                     TokenFilter const &filter)
{
    forEachToken(source, filter, [&](TokenInfo const &info, QString const &name) {
        setValue(info, source->getValue(name, IndexIdentifier::NO_INDEX, stage));
    });
}

void FigureTokenContainer::merge(StageIdentifier const &stage, FigureTokenInterface const *source,
                                 TokenFilter const &filter)
{
    forEachToken(source, filter, [&](TokenInfo const &info, QString const &name) {
        if (info.getType() == TokenInfo::TYPE_IMAGE)
            mergeImage(info, name, source);
        else if (info.getType() == TokenInfo::TYPE_CHART)
            mergeCopy<ChartLoan>(info, name, source);
        else if (info.getType() == TokenInfo::TYPE_SNAPSHOT)
            mergeCopy<SnapshotLoan>(info, name, source);
        else if (Entry::isPlain(info))
            setValue(info, source->getValue(name, IndexIdentifier::NO_INDEX, stage));
    });
}

void FigureTokenContainer::mergeImage(TokenInfo const &info, QString const &name, FigureTokenInterface const *source)
{
    ImageLoan const borrowed(source, name);
    if (borrowed)
        setImageCopy(info, borrowed.get(), borrowed->getImage(), borrowed->getOverlay());
}

template <class DataLoan>
void FigureTokenContainer::mergeCopy(TokenInfo const &info, QString const &name, FigureTokenInterface const *source)
{
    DataLoan const borrowed(source, name);
    setCopy(info, borrowed.get());
}

/// `data` may be null; then there is nothing to set.
template <class Data>
void FigureTokenContainer::setCopy(TokenInfo const &info, Data const *data)
{
    if (data)
        setValue(info, new Data(*data));
}

/// `data` may be null; then only the pictures are set.
void FigureTokenContainer::setImageCopy(TokenInfo const &info, ImageData const *data, Zem::Image const *image,
                                        ImageColor const *overlay)
{
    auto copied = data ? std::make_unique<ImageData>(*data) : std::make_unique<ImageData>();
    copied->setImage(image);
    copied->setOverlay(overlay);
    setValue(info, copied.release(), true);
}

FigureTokenContainer::FigureTokenContainer(Figure const *figure, DataInterface const *dataInterface)
    : FigureTokenContainer()
{
    for (auto it = dataInterface->getTokenBegin(); it != dataInterface->getTokenEnd(); ++it) {
        // A registry takes any name; what is no token text can be no token here.
        QString const &name = it->first.getName();
        if (parseTokenName(name, nullptr) && figure->isTokenUsed(name))
            takeVariable(*dataInterface, it->first, *it->second);
    }
}

void FigureTokenContainer::takeVariable(DataInterface const &registry, Token_t const &token, Variable const &variable)
{
    auto const describe = [&](TokenInfo::Type_t type) {
        return TokenInfo(type, token.getName(), variable.displayText);
    };
    Unit const *const unit = variable.unitData.getUnit();
    switch (token.getType()) {
    case VARIABLE_INTEGER:
        setValue(describe(TokenInfo::TYPE_INTEGER), Value(variable.intValue));
        break;
    case VARIABLE_DOUBLE:
        setValue(describe(TokenTools::getTokenType(unit)), Value(variable.doubleValue, unit));
        break;
    case VARIABLE_STRING:
        setValue(describe(TokenInfo::TYPE_STRING), Value(variable.stringValue));
        break;
    case VARIABLE_IMAGE:
        setImageCopy(describe(TokenInfo::TYPE_IMAGE), variable.imageData, variable.image, variable.overlayImage);
        break;
    case VARIABLE_CHART:
        setCopy(describe(TokenInfo::TYPE_CHART), variable.chartData);
        break;
    case VARIABLE_SNAPSHOT:
        setCopy(describe(TokenInfo::TYPE_SNAPSHOT), variable.snapshotData);
        break;
    case VARIABLE_IMAGE_REFERENCE:
        takeImageReference(registry, token, describe(TokenInfo::TYPE_IMAGE));
        break;
    case VARIABLE_CHART_REFERENCE:
        takeReference(registry, token, describe(TokenInfo::TYPE_CHART), &DataInterface::getChartReference);
        break;
    case VARIABLE_SNAPSHOT_REFERENCE:
        takeReference(registry, token, describe(TokenInfo::TYPE_SNAPSHOT), &DataInterface::getSnapshotReference);
        break;
    case VARIABLE_GROUP:
    case VARIABLE_SEPARATOR:
        break;
    }
}

/// Only what a provider has served is given back to it.
void FigureTokenContainer::takeImageReference(DataInterface const &registry, Token_t const &token,
                                              TokenInfo const &info)
{
    Zem::Image const *image = nullptr;
    ImageColor const *overlay = nullptr;
    ImageData const *data = nullptr;
    bool const isServed = registry.getImageReference(token.getName(), &image, &overlay, &data);
    setImageCopy(info, data, image, overlay);
    if (isServed)
        registry.releaseReferenceData(token);
}

template <class Data>
void FigureTokenContainer::takeReference(DataInterface const &registry, Token_t const &token, TokenInfo const &info,
                                         bool (DataInterface::*fetch)(QString const &, Data const **) const)
{
    Data const *data = nullptr;
    bool const isServed = (registry.*fetch)(token.getName(), &data);
    setCopy(info, data);
    if (isServed)
        registry.releaseReferenceData(token);
}

} // namespace Zem::Fig2
