// How elements come into a SnapshotData, and how its page is cut.
#include "ZemFig2SnapshotData.h"

#include "ZemFig2Chart.h"
#include "ZemFig2ChartData.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2ImageInterface.h"
#include "ZemFig2ImageLabel.h"
#include "ZemFig2Legend.h"
#include "ZemFig2SnapshotInterface.h"
#include "ZemFig2TokenContainer.h"
#include "fig_loan.h"
#include "fig_token_name.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>
#include <ZemTokenFilter.h>

#include <QtCore/QSet>

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

/// Calls `act` with the element and, for a group, with all that stand below it.
template <class Act>
void forEachOf(Element *element, Act const &act)
{
    act(element);
    if (auto *group = dynamic_cast<Group *>(element))
        std::for_each(group->getElementBegin(), group->getElementEnd(), act);
}

std::vector<ImageLabel *> imageLabelsOf(Element *child)
{
    std::vector<ImageLabel *> labels;
    forEachOf(child, [&labels](Element *element) {
        if (auto *label = dynamic_cast<ImageLabel *>(element))
            labels.push_back(label);
    });
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

/// Takes over what elements show and what the source lends without listing it, as hosts do with the charts that they
/// make on demand.
class UnlistedTokens
{
public:
    UnlistedTokens(FigureTokenInterface const *source, FigureTokenContainer *target) : source_(source), target_(target)
    {
        std::vector<TokenInfo> infos;
        source->getTokens(&infos);
        for (TokenInfo const &info : infos)
            done_.insert(info.getName());
    }

    void take(Element const *element)
    {
        if (auto const *chart = dynamic_cast<ChartBase const *>(element))
            takeChart(chart->getToken());
        else if (auto const *image = dynamic_cast<ImageBase const *>(element))
            takeImage(image->getToken());
    }

private:
    bool isToBeTaken(QString const &token)
    {
        if (!parseTokenName(token, nullptr) || done_.contains(token))
            return false;
        done_.insert(token);
        return true;
    }

    void takeChart(QString const &token)
    {
        if (!isToBeTaken(token))
            return;
        if (ChartLoan const chart(source_, token); chart)
            target_->setValue(TokenInfo(TokenInfo::TYPE_CHART, token, token), new ChartData(*chart.get()));
    }

    void takeImage(QString const &token)
    {
        if (!isToBeTaken(token))
            return;
        if (ImageLoan const image(source_, token); image) {
            auto copy = std::make_unique<ImageData>(*image.get());
            copy->setImage(image->getImage());
            copy->setOverlay(image->getOverlay());
            target_->setValue(TokenInfo(TokenInfo::TYPE_IMAGE, token, token), copy.release(), true);
            return;
        }
        if (SnapshotLoan const snapshot(source_, token); snapshot)
            target_->setValue(TokenInfo(TokenInfo::TYPE_SNAPSHOT, token, token), new SnapshotData(*snapshot.get()));
    }

    FigureTokenInterface const *source_;
    FigureTokenContainer *target_;
    QSet<QString> done_;
};

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
    std::vector<Element *> taken;
    for (std::unique_ptr<Element> &child : copied.children) {
        if (!filterChild(child.get(), copied.originals, filter)) {
            child.reset();
            continue;
        }
        taken.push_back(child.get());
        adoptElement(std::move(child), stage, source, offset);
    }
    takeTokens(stage, source->getTokenInterface(), taken);
    if (source->getChartInterface())
        freezeCharts(source);
    switchSystemFontOff(figure_.get());
    figureUpdated_ = false;
}

/// A snapshot that takes its own elements once more has their data already.
void SnapshotData::takeTokens(StageIdentifier const &stage, FigureTokenInterface const *source,
                              std::vector<Element *> const &elements)
{
    if (!tokenContainer_ || !source || source == tokenInterface_.get())
        return;
    tokenContainer_->merge(stage, source, TokenAllPassFilter());
    UnlistedTokens unlisted(source, tokenContainer_.get());
    for (Element *element : elements)
        forEachOf(element, [&unlisted](Element const *each) { unlisted.take(each); });
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
