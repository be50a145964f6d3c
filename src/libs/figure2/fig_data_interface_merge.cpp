// DataInterface::merge, taking over the tokens of another registry.
#include "ZemFig2DataInterface.h"

#include "ZemFig2ChartData.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotData.h"

#include <ZemError.h>
#include <ZemImage.h>

#include <memory>

namespace Zem::Fig2 {

namespace {

std::unique_ptr<Zem::Image> copyPicture(Zem::Image const *picture)
{
    return std::unique_ptr<Zem::Image>(picture ? picture->copy(true) : nullptr);
}

std::unique_ptr<ImageColor> copyPicture(ImageColor const *picture)
{
    return std::unique_ptr<ImageColor>(picture ? picture->copy(true) : nullptr);
}

template <class Data>
std::unique_ptr<Data> copyData(Data const *data)
{
    return data ? std::make_unique<Data>(*data) : nullptr;
}

/// The setters take ownership unless they throw.
void setImageCopy(DataInterface *target, QString const &name, Zem::Image const *image, ImageColor const *overlay,
                  ImageData const *data)
{
    auto copiedImage = copyPicture(image);
    auto copiedOverlay = copyPicture(overlay);
    auto copiedData = copyData(data);
    target->setImage(name, copiedImage.get(), copiedOverlay.get(), copiedData.get());
    copiedImage.release();
    copiedOverlay.release();
    copiedData.release();
}

void setChartCopy(DataInterface *target, QString const &name, ChartData const *data)
{
    auto copied = copyData(data);
    target->setChart(name, copied.get());
    copied.release();
}

void setSnapshotCopy(DataInterface *target, QString const &name, SnapshotData const *data)
{
    auto copied = copyData(data);
    target->setSnapshot(name, copied.get());
    copied.release();
}

void keepReference(DataInterface *target, Token_t const &token)
{
    if (token.getType() == VARIABLE_IMAGE_REFERENCE)
        target->setImageReference(token.getName());
    else if (token.getType() == VARIABLE_CHART_REFERENCE)
        target->setChartReference(token.getName());
    else
        target->setSnapshotReference(token.getName());
}

Token_t resolveImage(DataInterface *target, DataInterface const &source, Token_t const &token)
{
    Zem::Image const *image = nullptr;
    ImageColor const *overlay = nullptr;
    ImageData const *data = nullptr;
    source.getImageReference(token.getName(), &image, &overlay, &data);
    if (image) {
        setImageCopy(target, token.getName(), image, overlay, data);
        source.releaseReferenceData(token);
    }
    return {token.getName(), VARIABLE_IMAGE};
}

Token_t resolveChart(DataInterface *target, DataInterface const &source, Token_t const &token)
{
    ChartData const *data = nullptr;
    source.getChartReference(token.getName(), &data);
    if (data) {
        setChartCopy(target, token.getName(), data);
        source.releaseReferenceData(token);
    }
    return {token.getName(), VARIABLE_CHART};
}

Token_t resolveSnapshot(DataInterface *target, DataInterface const &source, Token_t const &token)
{
    SnapshotData const *data = nullptr;
    source.getSnapshotReference(token.getName(), &data);
    if (data) {
        setSnapshotCopy(target, token.getName(), data);
        source.releaseReferenceData(token);
    }
    return {token.getName(), VARIABLE_SNAPSHOT};
}

/// Stores the data behind a reference. The result is the token of real data, also when nothing came back.
Token_t resolveReference(DataInterface *target, DataInterface const &source, Token_t const &token)
{
    if (token.getType() == VARIABLE_IMAGE_REFERENCE)
        return resolveImage(target, source, token);
    if (token.getType() == VARIABLE_CHART_REFERENCE)
        return resolveChart(target, source, token);
    return resolveSnapshot(target, source, token);
}

/// The result is the token under which the value stands in the target, if it came to stand there.
Token_t mergeReference(DataInterface *target, DataInterface const &source, Token_t const &token,
                       DataInterface::MergeResolveMode_t mode)
{
    if (mode == DataInterface::MERGE_RESOLVE_REFERENCE)
        return resolveReference(target, source, token);
    if (mode == DataInterface::MERGE_KEEP_REFERENCE)
        keepReference(target, token);
    return token;
}

Token_t mergeValue(DataInterface *target, DataInterface const &source, Token_t const &token, Variable const &variable,
                   DataInterface::MergeResolveMode_t mode)
{
    QString const &name = token.getName();
    switch (token.getType()) {
    case VARIABLE_INTEGER:
        target->setInt(name, variable.intValue);
        break;
    case VARIABLE_DOUBLE:
        target->setDouble(name, variable.doubleValue, variable.unitData);
        break;
    case VARIABLE_STRING:
        target->setString(name, variable.stringValue);
        break;
    case VARIABLE_IMAGE:
        setImageCopy(target, name, variable.image, variable.overlayImage, variable.imageData);
        break;
    case VARIABLE_CHART:
        setChartCopy(target, name, variable.chartData);
        break;
    case VARIABLE_SNAPSHOT:
        setSnapshotCopy(target, name, variable.snapshotData);
        break;
    case VARIABLE_GROUP:
        target->setGroup(name);
        break;
    case VARIABLE_SEPARATOR:
        target->setSeparator(name);
        break;
    case VARIABLE_IMAGE_REFERENCE:
    case VARIABLE_CHART_REFERENCE:
    case VARIABLE_SNAPSHOT_REFERENCE:
        return mergeReference(target, source, token, mode);
    }
    return token;
}

/// Each counts as a change. The type hint is deliberately not among them.
void copyDescription(DataInterface *target, Token_t const &token, Variable const &variable)
{
    target->setDisplayText(token, variable.displayText);
    target->setDefaultFormat(token, variable.defaultFormat);
    target->setGroupToken(token, variable.groupToken);
    target->setSortIndex(token, variable.sortIndex);
    target->setIconId(token, variable.iconId);
}

} // namespace

void DataInterface::merge(DataInterface const &source, bool overwrite, MergeResolveMode_t mode)
{
    // These would have to be merged into the target first, which has them still, and so on.
    if (!subInterfaces_.empty())
        throw ProgError("Zem::Fig2::DataInterface::merge", "fig_data_interface", __LINE__,
                        "Merging into an interface with sub-interfaces");
    if (&source == this)
        return;
    for (auto const &[token, variable] : source.tokens_) {
        if (overwrite && tokenExists(token))
            removeToken(token);
        if (tokenExists(token))
            continue;
        Token_t const merged = mergeValue(this, source, token, *variable, mode);
        if (tokenExists(merged))
            copyDescription(this, merged, *variable);
    }
}

} // namespace Zem::Fig2
