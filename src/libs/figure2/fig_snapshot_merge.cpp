// How elements come into a SnapshotData, and how its page is cut.
#include "ZemFig2SnapshotData.h"

#include "ZemFig2ImageInterface.h"
#include "ZemFig2ImageLabel.h"
#include "ZemFig2Legend.h"
#include "ZemFig2SnapshotInterface.h"
#include "ZemFig2TokenContainer.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>
#include <ZemTokenFilter.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace Zem::Fig2 {

namespace {

using Originals = std::unordered_map<Element const *, Element const *>;

/// A copy of the figure's elements without their root, each a unit of its own, and the element that each was made of.
struct CopiedElements
{
    std::vector<std::unique_ptr<Element>> children;
    Originals originals;

    explicit CopiedElements(Figure const &source)
    {
        std::map<Element const *, Element *> copies;
        std::unique_ptr<Group> const root(source.getRoot()->clone(&copies));
        for (auto const &[original, copy] : copies)
            originals.emplace(copy, original);
        for (Element *child : root->removeChildren([](Element const *) { return true; }))
            children.emplace_back(child);
    }
};

bool isEmptyGroup(Element const *element)
{
    auto const *group = dynamic_cast<Group const *>(element);
    return group && group->getChildBegin() == group->getChildEnd();
}

bool isLeftOut(Element const *copy, Originals const &originals, SnapshotElementFilter const &filter)
{
    auto const original = originals.find(copy);
    return original != originals.end() && filter.isFiltered(original->second);
}

/// The groups of a subtree, each behind those that it holds.
std::vector<Group *> groupsFromInside(Group *group)
{
    std::vector<Group *> groups{group};
    for (auto it = group->getElementBegin(); it != group->getElementEnd(); ++it) {
        if (auto *inner = dynamic_cast<Group *>(*it))
            groups.push_back(inner);
    }
    std::reverse(groups.begin(), groups.end());
    return groups;
}

/// Deletes what is left out below the group, and the groups that this leaves empty.
void filterBelow(Group *group, Originals const &originals, SnapshotElementFilter const &filter)
{
    for (Group *each : groupsFromInside(group)) {
        auto const removed = each->removeChildren(
            [&](Element const *element) { return isEmptyGroup(element) || isLeftOut(element, originals, filter); });
        // The last first: so each takes its connectors from the ends of the lists of those before it.
        for (auto it = removed.rbegin(); it != removed.rend(); ++it)
            delete *it;
    }
}

/// Whether something of a child is left.
bool filterChild(Element *child, Originals const &originals, SnapshotElementFilter const &filter)
{
    auto *group = dynamic_cast<Group *>(child);
    if (!group)
        return !isLeftOut(child, originals, filter);
    filterBelow(group, originals, filter);
    return !isEmptyGroup(group);
}

std::vector<ImageLabel *> imageLabelsOf(Element *child)
{
    std::vector<ImageLabel *> labels;
    auto const collect = [&labels](Element *element) {
        if (auto *label = dynamic_cast<ImageLabel *>(element))
            labels.push_back(label);
    };
    collect(child);
    if (auto *group = dynamic_cast<Group *>(child))
        std::for_each(group->getElementBegin(), group->getElementEnd(), collect);
    return labels;
}

/// Gives the label values of its own, so that it keeps them when the measurement is gone.
void freezeLabel(ImageLabel *label, StageIdentifier const &stage, Figure const &source)
{
    if (label->getVisible() && label->getConnectorBegin() == label->getConnectorEnd()) {
        // Without its image nothing is left of it but the box.
        if (label->hasLabel())
            label->setLabelVisible(true);
        label->setTokenContainer(nullptr);
        return;
    }
    if (label->getTokenContainer() || !source.getImageInterface())
        return;
    TokenInterface const *tokens = source.getImageInterface()->getTokenInterface(label->getImageElementId());
    if (tokens)
        label->setTokenContainer(new TokenContainer(tokens, TokenAllPassFilter(), stage));
}

void moveConnectorPoint(Element *element, BaVec2d<double> const &delta)
{
    auto *label = dynamic_cast<LabelBase *>(element);
    if (label && label->hasConnectorPoint())
        label->setConnectorPoint(label->getConnectorPoint() + delta);
}

} // namespace

/// The element becomes one of the snapshot's own.
void SnapshotData::adoptElement(std::unique_ptr<Element> child, StageIdentifier const &stage, Figure const *source,
                                BaVec2d<double> const &offset)
{
    Element *element = child.release();
    figure_->getRoot()->addChild(element);
    for (ImageLabel *label : imageLabelsOf(element))
        freezeLabel(label, stage, *source);
    if (auto *legend = dynamic_cast<Legend *>(element); legend && element->getType() == Element::LEGEND)
        legend->convertToSnapshotMode();
    // Deliberately not the elements within groups either.
    if (element->getType() != Element::GROUP)
        element->setOrigin(element->getOrigin() + offset);
    moveConnectorPoint(element, offset);
}

void SnapshotData::merge(StageIdentifier const &stage, Figure const *source, BaVec2d<double> const &offset,
                         SnapshotElementFilter const &filter)
{
    if (!figure_)
        throw ProgError("Zem::Fig2::SnapshotData::merge", "fig_snapshot_data", __LINE__, "Snapshot figure not set");
    CopiedElements copied(*source);
    for (std::unique_ptr<Element> &child : copied.children) {
        if (filterChild(child.get(), copied.originals, filter))
            adoptElement(std::move(child), stage, source, offset);
        else
            child.reset();
    }
    // A snapshot that takes its own elements once more has their data already.
    FigureTokenInterface const *tokens = source->getTokenInterface();
    if (tokenContainer_ && tokens && tokens != tokenInterface_.get())
        tokenContainer_->merge(stage, tokens, TokenAllPassFilter());
    if (source->getChartInterface())
        freezeCharts(source);
    switchSystemFontOff(figure_.get());
    figureUpdated_ = false;
}

/// So that a later change of the system font leaves the snapshot as it was.
void SnapshotData::switchSystemFontOff(Figure *figure)
{
    if (!figure)
        return;
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        if (!it->hasFont() || !it->getUseSystemFont())
            continue;
        it->setFont(Font::getSystemLabelFont());
        it->setUseSystemFont(false);
    }
}

void SnapshotData::crop(Rect const &rect)
{
    if (!figure_)
        return;
    BaVec2d<double> const page = figure_->getSize();
    BaVec2d<double> const origin(std::max(rect.x, 0.0), std::max(rect.y, 0.0));
    // Nothing is left of a page on which the rectangle does not lie.
    figure_->setSize({std::max(std::min(rect.width, page.x - origin.x), 0.0),
                      std::max(std::min(rect.height, page.y - origin.y), 0.0)});
    for (auto it = figure_->getElementBegin(); it != figure_->getElementEnd(); ++it) {
        if (it->getType() != Element::GROUP)
            it->setOrigin(it->getOrigin() - origin);
        if (it->getType() == Element::LABEL)
            moveConnectorPoint(*it, origin * -1.0);
    }
    figureUpdated_ = false;
}

} // namespace Zem::Fig2
